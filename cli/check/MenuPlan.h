// Where every entry of menus and toolbars comes to stand, worked out from the definitions as the library's MenuManager
// does it from its records: nothing of an application is run, and a place that would stop the start stops nothing here.
#pragma once

#include "cli/check/Model.h"
#include "corvane/base/Text.h"

#include <map>
#include <set>
#include <unordered_map>
#include <unordered_set>

namespace corvane::check {

// One place in a bar. The first entry gives it its texts, others share it. What the library puts there has none.
struct Slot {
    std::string_view sTool;
    std::vector<const Entry*> aEntries;
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
    std::string_view sTool;
    const Bar* pBar = nullptr; // in which it stands; nothing when it stands nowhere
    // What stops the start, or takes a tool of the host.
    bool bReserved = false;    // the host has a bar or tool of that name
    bool bWithoutRoot = false; // nothing stands where its path begins
    bool bOtherTool = false;   // a title whose menu is there already, under another tool than its action's
};

class MenuPlan {
public:
    explicit MenuPlan(Model& oModel);

    // In the order in which the definitions are read, those of context menus left out.
    [[nodiscard]] const std::deque<Placing>& Placings() const { return m_aPlacings; }
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
    // The tool of an action that has a place in a menu or toolbar; empty for others.
    [[nodiscard]] std::string_view ToolOf(const Action& oAction) const { return m_aTools[oAction.iNumber]; }
    // Whether any entry of the action has lost its own place to another; the library then places none of them.
    [[nodiscard]] const Placing* LostPlaceOf(const Action& oAction) const;

private:
    void ReadTitles(Model& oModel);
    void Rank(Placing& oPlacing) const;
    void File(Placing& oPlacing);
    void Build();

    Bar& AddBar(const std::string& sName, const Entry* pAsking);
    Bar* Find(std::string_view sName);
    std::string_view AddTool(std::string_view sName);
    Bar* EntryBar(const std::string& sPath, const Placing& oPlacing);
    Bar* ParentBar(const std::string& sPath, const Placing& oPlacing);
    void NameTool(Placing& oPlacing);
    void PlaceMenu(Placing& oPlacing);
    void PlaceEntry(Placing& oPlacing, Bar& oBar);
    void PlaceTitle(Placing& oPlacing);
    void PlaceButton(Placing& oPlacing);
    static Slot* SlotOf(Bar& oBar, std::string_view sTool);

    std::deque<Placing> m_aPlacings;
    std::vector<Placing*> m_aByEntry;       // by their numbers, as the next two by those of actions
    std::vector<const Placing*> m_aLost;    // of each action one that has lost its place
    std::vector<std::string_view> m_aTools; // of each action
    std::unordered_map<std::string_view, const Entry*, TextHash, TextEqual> m_mapTitles; // by key
    std::vector<TitlePair> m_aDoubleTitles;
    std::unordered_map<Long, Placing*> m_mapMenu;           // by rank
    std::map<std::string, Placing*, TextLess> m_mapButtons; // by position key
    std::vector<Placing*> m_aShared;
    std::map<std::string, Bar, TextLess> m_mapBars;
    std::unordered_set<std::string_view, TextHash, TextEqual> m_setTools;
    std::deque<std::string> m_aNames; // of tools that the definitions don't hold
};

// The rank in the context menu of an explorer item.
[[nodiscard]] std::optional<Long> ContextRank(const MenuItemDef& oDef);

} // namespace corvane::check
