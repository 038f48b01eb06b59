// Where every entry of menus and toolbars is placed, worked out from the definitions as the library's MenuManager
// does it from its records: nothing of an application is run, and a place that would stop the start stops nothing here.
#pragma once

#include "analysis/Model.h"
#include "corvane/base/TextIndex.h"

#include <map>
#include <memory>
#include <set>
#include <unordered_map>

namespace corvane::check {

// What represents an action in the bars. Tools are distinguished without regard to case.
struct Tool {
    std::string_view name;
    std::size_t number; // among all tools of the plan, from 0
    // Whose shortcut it has; nothing for the host's and the library's own.
    const Entry* maker = nullptr;
};

// The entries that share a place. Mostly it is one, which then needs no memory of its own.
class Sharing {
public:
    [[nodiscard]] bool empty() const { return !m_first; }
    [[nodiscard]] const Entry* front() const { return m_first; }
    [[nodiscard]] std::span<const Entry* const> All() const {
        return m_all ? std::span<const Entry* const>(*m_all) : std::span<const Entry* const>(&m_first, m_first ? 1 : 0);
    }
    void push_back(const Entry* entry) {
        if (!m_first) {
            m_first = entry;
            return;
        }
        if (!m_all)
            m_all = std::make_unique<std::vector<const Entry*>>(1, m_first);
        m_all->push_back(entry);
    }

private:
    const Entry* m_first = nullptr;
    std::unique_ptr<std::vector<const Entry*>> m_all; // nothing while it is one
};

// One place in a bar. The first entry gives it its texts, others share it. What the library puts there has none.
struct Slot {
    explicit Slot(const Tool* ofTool, const Entry* entry = nullptr) : tool(ofTool) {
        if (entry)
            entries.push_back(entry);
    }

    const Tool* tool;
    Sharing entries;
};

struct Bar {
    std::string name;
    std::vector<Slot> slots;
    const Entry* title = nullptr;      // that opens it
    const Entry* firstAsked = nullptr; // whose path made it, as a placeholder or a toolbar
    bool ofHost = false;               // there before any definition is read
};

struct TextLess {
    using is_transparent = void;
    bool operator()(std::string_view left, std::string_view right) const noexcept {
        return CompareText(left, right) < 0;
    }
};

struct Placing {
    const Entry* entry = nullptr;
    // Of an entry or title in menus; nothing when it is too large.
    std::optional<Long> rank;
    // The title whose order is part of the rank; nothing for the menu bar and for a path that no title has.
    const Entry* title = nullptr;
    // Who has the rank, or a button's text of path and order; nothing when it is this one.
    const Entry* owner = nullptr;
    const Tool* tool = nullptr; // nothing while no rank lets it be placed
    const Bar* bar = nullptr;   // in which it is; nothing when it is nowhere
    // What stops the start, or takes a tool of the host.
    bool reserved = false;    // the host has a bar or tool of that name
    bool withoutRoot = false; // nothing is where its path begins
    bool otherTool = false;   // a title whose menu is there already, under another tool than its action's
};

class MenuPlan {
public:
    explicit MenuPlan(Model& model);
    MenuPlan(const MenuPlan&) = delete; // its parts point to one another
    MenuPlan& operator=(const MenuPlan&) = delete;

    // In the order in which the definitions are read, those of context menus left out.
    [[nodiscard]] const std::pmr::vector<Placing>& Placings() const { return m_placings; }
    [[nodiscard]] const Placing* PlacingOf(const Entry& entry) const;
    [[nodiscard]] const std::map<std::string, Bar, TextLess>& Bars() const { return m_bars; }
    [[nodiscard]] const Bar* FindBar(std::string_view name) const;
    // The title that the ranks of a path go by.
    [[nodiscard]] const Entry* TitleOf(std::string_view path) const;
    // Two titles of one key, the second of which stops the start.
    struct TitlePair {
        const Entry* first;
        const Entry* second;
    };
    [[nodiscard]] const std::vector<TitlePair>& DoubleTitles() const { return m_doubleTitles; }
    // The tool of an action that has a place in a menu or toolbar; nothing for others, and for one without a name.
    [[nodiscard]] const Tool* ToolOf(const Action& action) const {
        const Tool* tool = m_byAction[action.number];
        return tool && !tool->name.empty() ? tool : nullptr;
    }
    [[nodiscard]] const Tool* FindTool(std::string_view name) const;
    [[nodiscard]] std::size_t ToolCount() const { return m_allTools.size(); }
    // Whether any entry of the action has lost its own place to another; the library then places none of them.
    [[nodiscard]] const Placing* LostPlaceOf(const Action& action) const;

private:
    void ReadTitles(Model& model);
    void Rank(Placing& placing);
    void Share(Placing& placing, const Placing& owner);
    void ShareRanks();
    void ShareButton(Placing& placing);
    void Build();

    Bar& AddBar(std::string_view name, const Entry* asking);
    Bar* Find(std::string_view name);
    const Tool* AddTool(std::string_view name);
    Bar* EntryBar(std::string_view path, const Placing& placing);
    Bar* ParentBar(std::string_view path, const Placing& placing);
    void NameTool(Placing& placing);
    void PlaceMenu(Placing& placing);
    void PlaceEntry(Placing& placing, Bar& bar);
    void PlaceTitle(Placing& placing);
    void PlaceButton(Placing& placing);
    static Slot* SlotOf(Bar& bar, const Tool* tool);

    std::pmr::vector<Placing> m_placings;    // space is made for all at once, so they stay where they are
    std::pmr::vector<Placing*> m_byEntry;    // by their numbers, as the next two by those of actions
    std::pmr::vector<const Placing*> m_lost; // of each action one that has lost its place
    std::pmr::vector<const Tool*> m_byAction;
    std::unordered_map<std::string_view, const Entry*, TextHash, TextEqual> m_titles; // by key
    std::vector<TitlePair> m_doubleTitles;
    std::pmr::vector<Placing*> m_menu;                   // by rank, the owners first and then alone
    std::map<std::string, Placing*, TextLess> m_buttons; // by position key
    std::vector<Placing*> m_shared;                      // in the order of reading
    std::map<std::string, Bar, TextLess> m_bars;
    std::pmr::deque<Tool> m_allTools;
    TextIndex<const Tool*> m_tools;
    std::deque<std::string> m_names; // of tools that the definitions don't hold
    // Entries of one path mostly follow one another, so what was found last is looked at first.
    const Placing* m_lastRanked = nullptr;
    Bar* m_lastBar = nullptr;
};

// The rank in the context menu of an explorer item.
[[nodiscard]] std::optional<Long> ContextRank(const Entry& entry);

} // namespace corvane::check
