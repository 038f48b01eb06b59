#include "adapters/common/Nearest.h"
#include "analysis/Checks.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <map>
#include <set>

namespace corvane::check {

namespace {

constexpr const char* toolbarPrefix = "Toolbars.";

std::string OrderText(const Entry& entry) {
    return ToText(entry.positionOrder);
}

class MenuCheck {
public:
    MenuCheck(Model& model, const MenuPlan& plan, Report& report)
        : m_model(model), m_plan(plan), m_report(report), m_seen(plan.ToolCount()) {}

    void Check() {
        for (const auto& [first, second] : m_plan.DoubleTitles())
            m_report.Add(Rule::DuplicateTitle, second->At("ActionItem"), "there is " + first->Named() + " already",
                         "define it in one place; the others only use its Path",
                         {{first->At("ActionItem"), "the first one"}});
        for (const Placing& placing : m_plan.Placings())
            CheckPlacing(placing);
        CountPaths();
        for (const auto& [name, bar] : m_plan.Bars())
            CheckBar(bar);
        for (Provider& item : m_model.items)
            CheckContextMenu(item);
        CheckCommands();
        CheckEffects();
        CheckWindowList();
    }

private:
    void CountPaths() {
        std::pair<const std::string_view, int>* path = nullptr; // mostly that of the entry before
        for (const Placing& placing : m_plan.Placings()) {
            const Entry& entry = *placing.entry;
            if (entry.IsButton())
                continue;
            if (!path || path->first != entry.path)
                path = &*m_pathMap.try_emplace(entry.path).first;
            ++path->second;
        }
    }

    void CheckPlacing(const Placing& placing) {
        const Entry& entry = *placing.entry;
        if (placing.reserved)
            m_report.Add(Rule::ReservedName, entry.At("ActionItem"),
                         "the host has something of the name " + Quoted(entry.key) + " itself",
                         "give the action another name");
        else if (placing.withoutRoot)
            ReportWithoutRoot(entry);
        else if (placing.otherTool)
            m_report.Add(Rule::DuplicateTitle, entry.At("ActionItem"),
                         "the action of " + entry.Named() + " belongs to another entry, " + Quoted(placing.tool->name) +
                             ", and the menu of the title is there already",
                         "give the title an action of its own");
        else if (!entry.IsButton() && !placing.rank)
            ReportOverflow(placing);
        else if (!placing.bar)
            ReportLost(placing);
        else if (placing.owner && entry.IsTitle() && placing.owner->key != entry.key)
            ReportTitleBehind(placing);
        else if (placing.owner && entry.IsButton() && !EqualText(placing.owner->key, entry.key))
            m_report.Add(Rule::SharedPosition, entry.At("PositionOrder"),
                         entry.Named() + " comes before all others, because " + placing.owner->Named() +
                             " has the same order, " + OrderText(entry),
                         "give it another PositionOrder", {{placing.owner->At("PositionOrder"), "the other one"}});
    }

    void ReportWithoutRoot(const Entry& entry) {
        const std::string_view path = entry.path;
        if (!m_model.complete || !m_paths.insert(FoldText(path)).second)
            return;
        m_report.Add(Rule::PathWithoutRoot, entry.At("Path"),
                     "there is nothing below " + Quoted(path.substr(0, path.find('.'))) + " when the menu " +
                         Quoted(path) + " is created",
                     WriteInstead(TitleKeys(), path, "define titles for all parts of the Path"));
    }

    void ReportOverflow(const Placing& placing) {
        const Entry* title = placing.title;
        constexpr Double largest = 2147;
        if (title && static_cast<Double>(title->positionOrder) > largest)
            m_report.Add(Rule::PositionOverflow, title->At("PositionOrder"),
                         title->Named() + " has entries, and their ranks are too large with the order " +
                             OrderText(*title),
                         "write 2147 or less");
        else
            m_report.Add(Rule::PositionOverflow, placing.entry->At("PositionOrder"),
                         "the rank of " + placing.entry->Named() + " is too large with the order " +
                             OrderText(*placing.entry),
                         "write a smaller one");
    }

    // Titles of one rank, whose entries may then have one rank, too.
    [[nodiscard]] static bool AreTitlesAtFault(const Placing& placing, const Placing& owner) {
        return placing.title && owner.title && placing.title != owner.title && placing.title->path.empty() &&
               owner.title->path.empty() && placing.title->positionOrder == owner.title->positionOrder;
    }

    void ReportLost(const Placing& placing) {
        const Entry& entry = *placing.entry;
        if (!placing.owner) {
            const Placing& lost = *m_plan.LostPlaceOf(*entry.action);
            m_report.Add(Rule::VanishingEntry, entry.At("PositionOrder"),
                         entry.Named() + " doesn't appear, as its action has lost another place",
                         "give that place another PositionOrder",
                         {{lost.entry->At("PositionOrder"),
                           lost.entry->Named() + ", whose rank " + lost.owner->Named() + " has"}});
            return;
        }
        const Entry& owner = *placing.owner;
        if (AreTitlesAtFault(placing, *m_plan.PlacingOf(owner)))
            return; // told with the titles
        std::string cure = "give it another PositionOrder";
        if (EqualText(owner.key, entry.key))
            cure += ", or remove it";
        m_report.Add(Rule::VanishingEntry, entry.At("PositionOrder"),
                     entry.Named() + " doesn't appear, because " + owner.Named() + " has the same rank, " +
                         ToText(*placing.rank),
                     cure, {{owner.At("PositionOrder"), "the other one"}});
    }

    void ReportTitleBehind(const Placing& placing) {
        const Entry& title = *placing.entry;
        std::vector<Note> notes{{placing.owner->At("PositionOrder"), "the other one"}};
        for (const Placing& other : m_plan.Placings())
            if (!other.bar && other.owner && (other.title == &title || other.title == placing.owner) &&
                AreTitlesAtFault(other, *m_plan.PlacingOf(*other.owner)))
                notes.push_back(
                    {other.entry->At("PositionOrder"), other.entry->Named() + " doesn't appear because of it"});
        m_report.Add(Rule::SharedPosition, title.At("PositionOrder"),
                     title.Named() + " comes after all others, because " + placing.owner->Named() +
                         " has the same rank",
                     "give it another PositionOrder", std::move(notes));
    }

    void CheckBar(const Bar& bar) {
        const bool toolbar = bar.name.starts_with(toolbarPrefix);
        if (!toolbar && bar.title)
            CheckSubmenuOrder(bar);
        if (toolbar)
            CheckToolbarOrder(bar);
        else if (!bar.title && !bar.ofHost && !EqualText(bar.name, "View.Toolbars"))
            ReportPlaceholder(bar);
        else if (bar.title && bar.slots.empty() && m_model.complete && !IsAskedFor(bar.name))
            m_report.Add(Rule::TitleWithoutEntries, bar.title->At("ActionItem"),
                         "there is nothing below " + bar.title->Named(),
                         "give an entry this Path, or remove the title");
        for (const Slot& slot : bar.slots) {
            if (slot.entries.empty())
                continue;
            const Entry& entry = *slot.entries.front();
            Seen& seen = m_seen[slot.tool->number];
            const bool isNew = seen.bar != &bar;
            if (isNew)
                seen = {&bar, &entry};
            if (!isNew && !AreRivals(*seen.entry, entry))
                m_report.Add(Rule::DuplicateEntry, entry.At("PositionOrder"), entry.Named() + " is there twice",
                             entry.IsButton() ? "remove one of them" : "give both one PositionOrder, or remove one",
                             {{seen.entry->At("PositionOrder"), "the first one"}});
        }
    }

    // Whether a Path is that of the title, or is meant to be: the mistake is the entry's then, and has a finding.
    [[nodiscard]] bool IsAskedFor(std::string_view title) {
        if (m_pathMap.contains(title))
            return true;
        if (!m_askedRead)
            ReadAsked();
        return m_asked.contains(FoldText(title));
    }

    void ReadAsked() {
        m_askedRead = true;
        const std::vector<std::string> titles = TitleKeys();
        std::set<std::string> titleSet;
        for (const std::string& title : titles)
            titleSet.insert(FoldText(title));
        for (const auto& file : m_model.files)
            if (file->active)
                for (const Element& element : std::span(file->root, 1 + file->root->below))
                    if (std::string path = FoldText(element.Value("Path")); m_asked.insert(path).second)
                        if (const auto nearest = titleSet.contains(path) ? std::nullopt : Nearest(titles, path))
                            m_asked.insert(FoldText(*nearest));
    }

    // The entries of a path that no title has. Toolbars ask for "View" without naming it.
    void ReportPlaceholder(const Bar& bar) {
        if (!m_model.complete || !bar.firstAsked)
            return;
        const Entry& entry = *bar.firstAsked;
        if (entry.IsButton()) {
            m_report.Add(Rule::PathWithoutTitle, entry.At("Path"),
                         "the menu that shows and hides toolbars needs a title \"View\"", "define one");
            return;
        }
        const int otherCount = m_pathMap[bar.name] - 1;
        const std::string others =
            otherCount == 0 ? "" : " and " + std::to_string(otherCount) + (otherCount == 1 ? " other" : " others");
        m_report.Add(Rule::PathWithoutTitle, entry.At("Path"),
                     "there is no title " + Quoted(bar.name) + ", so " + entry.Named() + others +
                         (otherCount == 0 ? " stays" : " stay") + " hidden",
                     WriteInstead(TitleKeys(), bar.name, PathCure(bar.name)));
    }

    static std::string PathCure(std::string path) {
        if (path.find_first_of("/\\>") == std::string::npos)
            return "define the title in one of the services";
        std::replace_if(
            path.begin(), path.end(), [](char c) { return c == '/' || c == '\\' || c == '>'; }, '.');
        return "write its parts with points between them, as in " + Quoted(path);
    }

    void CheckToolbarOrder(const Bar& bar) {
        const Entry* before = nullptr;
        for (const Slot& slot : bar.slots) {
            const Entry* entry = slot.entries.front();
            if (m_plan.PlacingOf(*entry)->owner)
                continue; // has a finding of its own
            if (before && before->positionOrder > entry->positionOrder) {
                m_report.Add(Rule::ToolbarOrder, entry->At("PositionOrder"),
                             entry->Named() + " comes after " + before->Named() + ", because the text " +
                                 Quoted(OrderText(*before)) + " comes before " + Quoted(OrderText(*entry)),
                             "write orders with the same number of digits",
                             {{before->At("PositionOrder"), "the other one"}});
                return;
            }
            before = entry;
        }
    }

    // A title is placed no later than the first thing below it, whose rank comes from the title's order alone.
    void CheckSubmenuOrder(const Bar& bar) {
        const Placing* lowest = nullptr; // of what is further down
        for (auto it = bar.slots.rbegin(); it != bar.slots.rend(); ++it) {
            const Placing* placing = it->entries.empty() ? nullptr : m_plan.PlacingOf(*it->entries.front());
            if (!placing || !placing->rank || placing->owner)
                continue;
            const Entry& entry = *placing->entry;
            if (lowest && entry.IsTitle() && *lowest->rank < *placing->rank)
                m_report.Add(Rule::SubmenuOrder, entry.At("PositionOrder"),
                             entry.Named() + " comes before " + lowest->entry->Named() + ", because its order, " +
                                 OrderText(entry) + ", isn't above " + OrderText(*bar.title) + ", the order of " +
                                 bar.title->Named(),
                             "write a higher one, and for the entries after it, too",
                             {{lowest->entry->At("PositionOrder"), "what comes after it"}});
            if (!lowest || *placing->rank < *lowest->rank)
                lowest = placing;
        }
    }

    // Two services that both want to answer.
    [[nodiscard]] static bool AreRivals(const Entry& first, const Entry& second) {
        return first.provider != second.provider && first.provider->kind == ProviderKind::Service &&
               second.provider->kind == ProviderKind::Service && !first.action->procedure.empty() &&
               !second.action->procedure.empty();
    }

    void CheckContextMenu(const Provider& item) {
        std::map<Long, const Entry*> ranks;
        for (const Entry& entry : item.entries) {
            if (!entry.IsOfContextMenu())
                continue;
            const std::optional<Long> rank = ContextRank(entry);
            if (!rank) {
                m_report.Add(Rule::PositionOverflow, entry.At("PositionOrder"),
                             "the rank of " + entry.Named() + " is too large", "write a smaller one");
                continue;
            }
            const auto [it, isNew] = ranks.emplace(*rank, &entry);
            if (!isNew)
                m_report.Add(Rule::VanishingEntry, entry.At("PositionOrder"),
                             "in the context menu of " + item.Named() + ", " + entry.Named() + " and " +
                                 it->second->Named() +
                                 " have one rank: one of both may come twice and the other not at all",
                             "give it another PositionOrder", {{it->second->At("PositionOrder"), "the other one"}});
        }
    }

    // What a tool represents: who answers, and whether anyone does.
    struct Command {
        const Entry* first = nullptr;
        const Entry* service = nullptr; // that answers
        bool answered = false;
    };

    void CheckCommands() {
        m_commands.resize(m_plan.ToolCount());
        std::vector<const Command*> order;
        order.reserve(m_model.entries);
        for (Provider* provider : m_model.MenuProviders())
            for (const Entry& entry : provider->entries) {
                if (entry.IsTitle() || entry.type == MenuType::fwContextMenuTitle)
                    continue;
                Command& command = CommandOf(entry);
                if (!command.first) {
                    command.first = &entry;
                    order.push_back(&command);
                }
                const bool answers = !entry.action->procedure.empty();
                command.answered |= answers;
                if (!answers || provider->kind != ProviderKind::Service)
                    continue;
                if (command.service && AreRivals(*command.service, entry))
                    m_report.Add(Rule::SharedCommand, entry.At("ActionItem"),
                                 entry.Named() + " is one of " + command.service->provider->Named() +
                                     ", too, which then never answers",
                                 "give the action another name, or let one of both services have it",
                                 {{command.service->At("ActionItem"), "the other one"}});
                command.service = &entry;
            }
        for (const Command* command : order)
            if (!command->answered && m_model.complete)
                m_report.Add(Rule::EntryWithoutProcedure,
                             command->first->provider->file->At(command->first->action->element->At()),
                             "the action of " + command->first->Named() + " has no procedure", "name one as Action");
    }

    // Actions that are in context menus alone have tools that the plan doesn't know, unless one is called the same.
    [[nodiscard]] Command& CommandOf(const Entry& entry) {
        const Tool* tool = m_plan.ToolOf(*entry.action);
        if (tool)
            return m_commands[tool->number];
        const std::string name = "Context." + entry.provider->name + "." + std::string(entry.key);
        tool = m_plan.FindTool(name);
        return tool ? m_commands[tool->number] : m_contextCommands[name];
    }

    void CheckEffects() {
        for (Provider* provider : m_model.MenuProviders())
            for (const Entry& entry : provider->entries) {
                if (entry.IsOfContextMenu() && provider->kind != ProviderKind::ExplorerItem)
                    m_report.Add(Rule::NoEffect, entry.At("Type"), provider->Named() + " has no context menu",
                                 "move it to an explorer item, or use MenuItem");
                for (const char* attribute : {"ShortCutKey", "Separator"})
                    if (entry.IsButton() && !entry.element->Value(attribute).empty())
                        m_report.Add(Rule::NoEffect, entry.At(attribute),
                                     std::string("a button of a toolbar has no ") + attribute, "remove it");
            }
    }

    void CheckWindowList() {
        for (const Window& window : m_model.windows) {
            if (!BooleanOf(*window.element, "IsMDIChild", true) || BooleanOf(*window.element, "IsModal", false))
                continue;
            if (!m_plan.TitleOf("Window") && m_model.complete)
                m_report.Add(Rule::MissingWindowList, window.file->At(window.element->At()),
                             "the window " + Quoted(window.name) + " is listed nowhere while it is open",
                             "define a title of the action \"Window\" on the menu bar");
            return;
        }
    }

    [[nodiscard]] std::vector<std::string> TitleKeys() {
        std::vector<std::string> keys;
        for (const auto& [name, bar] : m_plan.Bars())
            if (bar.title)
                keys.push_back(bar.name);
        return keys;
    }

    Model& m_model;
    const MenuPlan& m_plan;
    Report& m_report;
    // The bar that has had a tool last, and as what.
    struct Seen {
        const Bar* bar = nullptr;
        const Entry* entry = nullptr;
    };
    std::vector<Seen> m_seen;        // by the numbers of tools, as the next
    std::vector<Command> m_commands; // of tools that the plan knows
    std::unordered_map<std::string, Command, TextHash, TextEqual> m_contextCommands;
    std::set<std::string> m_paths;                                            // folded, that have been reported
    std::unordered_map<std::string_view, int, TextHash, TextEqual> m_pathMap; // how many entries have a path
    std::set<std::string> m_asked; // all that is written as a Path, folded, and the titles next to it
    bool m_askedRead = false;
};

} // namespace

void CheckMenus(Model& model, const MenuPlan& plan, Report& report) {
    MenuCheck(model, plan, report).Check();
}

} // namespace corvane::check
