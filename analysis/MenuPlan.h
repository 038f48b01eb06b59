// Where every entry of menus and toolbars comes to stand, worked out from the definitions as the library's MenuManager
// does it from its records: nothing of an application is run, and a place that would stop the start stops nothing here.
#pragma once

#include "analysis/Model.h"
#include "corvane/base/TextIndex.h"

#include <map>
#include <set>
#include <unordered_map>

namespace corvane::check {

// What stands for an action in the bars. Tools are told apart without regard to case.
struct Tool {
    std::string_view sName;
    std::size_t iNumber; // among all tools of the plan, from 0
};

// The entries that share a place. Mostly it is one, which then needs no memory of its own.
class Sharing {
public:
    [[nodiscard]] bool empty() const { return !m_pFirst; }
    [[nodiscard]] const Entry* front() const { return m_pFirst; }
    [[nodiscard]] std::span<const Entry* const> All() const {
        return m_aAll.empty() ? std::span(&m_pFirst, m_pFirst ? 1 : 0) : std::span(m_aAll);
    }
    void push_back(const Entry* pEntry) {
        if (!m_pFirst) {
            m_pFirst = pEntry;
            return;
        }
        if (m_aAll.empty())
            m_aAll.push_back(m_pFirst);
        m_aAll.push_back(pEntry);
    }

private:
    const Entry* m_pFirst = nullptr;
    std::vector<const Entry*> m_aAll; // nothing while it is one
};

// One place in a bar. The first entry gives it its texts, others share it. What the library puts there has none.
struct Slot {
    explicit Slot(const Tool* pOfTool, const Entry* pEntry = nullptr) : pTool(pOfTool) {
        if (pEntry)
            aEntries.push_back(pEntry);
    }

    const Tool* pTool;
    Sharing aEntries;
};

struct Bar {
    std::string sName;
    std::vector<Slot> aSlots;
    const Entry* pTitle = nullptr;      // that opens it
    const Entry* pFirstAsked = nullptr; // whose path made it, as a placeholder or a toolbar
    bool bOfHost = false;               // there before any definition is read
};

struct TextLess {
    using is_transparent = void;
    bool operator()(std::string_view sLeft, std::string_view sRight) const noexcept {
        return CompareText(sLeft, sRight) < 0;
    }
};

struct Placing {
    const Entry* pEntry = nullptr;
    // Of an entry or title in menus; nothing when it is too large.
    std::optional<Long> oRank;
    // The title whose order is part of the rank; nothing for the menu bar and for a path that no title has.
    const Entry* pTitle = nullptr;
    // Who has the rank, or a button's text of path and order; nothing when it is this one.
    const Entry* pOwner = nullptr;
    const Tool* pTool = nullptr; // nothing while no rank lets it be placed
    const Bar* pBar = nullptr;   // in which it stands; nothing when it stands nowhere
    // What stops the start, or takes a tool of the host.
    bool bReserved = false;    // the host has a bar or tool of that name
    bool bWithoutRoot = false; // nothing stands where its path begins
    bool bOtherTool = false;   // a title whose menu is there already, under another tool than its action's
};

class MenuPlan {
public:
    explicit MenuPlan(Model& oModel);
    MenuPlan(const MenuPlan&) = delete; // its parts point to one another
    MenuPlan& operator=(const MenuPlan&) = delete;

    // In the order in which the definitions are read, those of context menus left out.
    [[nodiscard]] const std::vector<Placing>& Placings() const { return m_aPlacings; }
    [[nodiscard]] const Placing* PlacingOf(const Entry& oEntry) const;
    [[nodiscard]] const std::map<std::string, Bar, TextLess>& Bars() const { return m_mapBars; }
    [[nodiscard]] const Bar* FindBar(std::string_view sName) const;
    // The title that the ranks of a path go by.
    [[nodiscard]] const Entry* TitleOf(std::string_view sPath) const;
    // Two titles of one key, the second of which stops the start.
    struct TitlePair {
        const Entry* pFirst;
        const Entry* pSecond;
    };
    [[nodiscard]] const std::vector<TitlePair>& DoubleTitles() const { return m_aDoubleTitles; }
    // The tool of an action that has a place in a menu or toolbar; nothing for others, and for one without a name.
    [[nodiscard]] const Tool* ToolOf(const Action& oAction) const {
        const Tool* pTool = m_aByAction[oAction.iNumber];
        return pTool && !pTool->sName.empty() ? pTool : nullptr;
    }
    [[nodiscard]] const Tool* FindTool(std::string_view sName) const;
    [[nodiscard]] std::size_t ToolCount() const { return m_aTools.size(); }
    // Whether any entry of the action has lost its own place to another; the library then places none of them.
    [[nodiscard]] const Placing* LostPlaceOf(const Action& oAction) const;

private:
    void ReadTitles(Model& oModel);
    void Rank(Placing& oPlacing);
    void Share(Placing& oPlacing, const Placing& oOwner);
    void ShareRanks();
    void ShareButton(Placing& oPlacing);
    void Build();

    Bar& AddBar(std::string_view sName, const Entry* pAsking);
    Bar* Find(std::string_view sName);
    const Tool* AddTool(std::string_view sName);
    Bar* EntryBar(std::string_view sPath, const Placing& oPlacing);
    Bar* ParentBar(std::string_view sPath, const Placing& oPlacing);
    void NameTool(Placing& oPlacing);
    void PlaceMenu(Placing& oPlacing);
    void PlaceEntry(Placing& oPlacing, Bar& oBar);
    void PlaceTitle(Placing& oPlacing);
    void PlaceButton(Placing& oPlacing);
    static Slot* SlotOf(Bar& oBar, const Tool* pTool);

    std::vector<Placing> m_aPlacings;    // room is made for all at once, so they stay where they are
    std::vector<Placing*> m_aByEntry;    // by their numbers, as the next two by those of actions
    std::vector<const Placing*> m_aLost; // of each action one that has lost its place
    std::vector<const Tool*> m_aByAction;
    std::unordered_map<std::string_view, const Entry*, TextHash, TextEqual> m_mapTitles; // by key
    std::vector<TitlePair> m_aDoubleTitles;
    std::vector<Placing*> m_aMenu;                          // by rank, the owners first and then alone
    std::map<std::string, Placing*, TextLess> m_mapButtons; // by position key
    std::vector<Placing*> m_aShared;                        // in the order of reading
    std::map<std::string, Bar, TextLess> m_mapBars;
    std::deque<Tool> m_aTools;
    TextIndex<const Tool*> m_oTools;
    std::deque<std::string> m_aNames; // of tools that the definitions don't hold
    // Entries of one path mostly follow one another, so what was found last is looked at first.
    const Placing* m_pLastRanked = nullptr;
    Bar* m_pLastBar = nullptr;
};

// The rank in the context menu of an explorer item.
[[nodiscard]] std::optional<Long> ContextRank(const Entry& oEntry);

} // namespace corvane::check
