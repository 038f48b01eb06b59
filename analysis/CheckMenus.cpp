#include "analysis/Checks.h"
#include "analysis/MenuPaths.h"
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
        : m_model(model), m_plan(plan), m_report(report), m_meant(model, plan), m_seen(plan.ToolCount()) {}

    void Check() {
        for (const auto& [first, second] : m_plan.DoubleTitles())
            m_report.Add(Rule::DuplicateTitle, second->At("ActionItem"),
                         second->Named() + " is defined twice, by " + second->provider->Named() + " and " +
                             first->provider->Named() + ", so the application doesn't start (457)",
                         "remove this MenuItem; entries only need Path=\"" + std::string(first->key) + "\"",
                         {{first->At("ActionItem"), "the first one"}});
        for (const Placing& placing : m_plan.Placings())
            CheckPlacing(placing);
        CountPaths();
        for (const auto& [name, bar] : m_plan.Bars())
            CheckBar(bar);
        for (Provider& item : m_model.items)
            CheckContextMenu(item);
        CheckCommands();
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
            m_report.Add(entry.IsTitle() ? Rule::ReservedName : Rule::NameOfHost, entry.At("ActionItem"),
                         "the host has something named " + Quoted(entry.key) +
                             (entry.IsTitle() ? " itself, so the application doesn't start"
                                              : " itself, which this entry shows in place of the command"),
                         "give the action another name, such as " + Quoted("My" + std::string(entry.action->name)));
        else if (placing.withoutRoot)
            ReportWithoutRoot(entry);
        else if (placing.otherTool)
            m_report.Add(Rule::DuplicateTitle, entry.At("ActionItem"),
                         "the action of " + entry.Named() + " has an entry already, " + Quoted(placing.tool->name) +
                             ", and can't open this menu, so the application doesn't start",
                         "add an ActionItem for the title alone, and name it here");
        else if (!entry.IsButton() && !placing.rank)
            ReportOverflow(placing);
        else if (!placing.bar)
            ReportLost(placing);
        else if (placing.owner && entry.IsTitle() && placing.owner->key != entry.key)
            ReportTitleBehind(placing);
        else if (placing.owner && entry.IsButton() && !EqualText(placing.owner->key, entry.key))
            m_report
                .Add(Rule::SharedPosition, entry.At("PositionOrder"),
                     entry.Named() + " shares the PositionOrder " + OrderText(entry) + " with " +
                         placing.owner->Named() + ", so it is put in front of all buttons",
                     "write PositionOrder=\"" + FreeButtonOrder(placing) + "\", or another that is free",
                     {{placing.owner->At("PositionOrder"), "the other one"}})
                .edits = {OrderEdit(entry, FreeButtonOrder(placing))};
    }

    void ReportWithoutRoot(const Entry& entry) {
        const std::string_view path = entry.path;
        if (!m_model.complete || !m_paths.insert(FoldText(path)).second)
            return;
        m_report.Add(Rule::PathWithoutRoot, entry.At("Path"),
                     "no menu " + Quoted(path.substr(0, path.find('.'))) + " is there when " + Quoted(path) +
                         " is made for " + entry.Named() + ", so the application doesn't start (91)",
                     TitleCure(path));
        if (!m_plan.TitleOf(path)) // else the Path is right, and the title comes too late
            AddPathEdit(entry);
    }

    // A title that shares its rank is made behind all others, and what is below its submenus before.
    [[nodiscard]] std::string TitleCure(std::string_view path) {
        const Entry* root = m_plan.TitleOf(path.substr(0, path.find('.')));
        const Placing* placing = root && m_plan.TitleOf(path) ? m_plan.PlacingOf(*root) : nullptr;
        if (!placing || !placing->owner)
            return m_meant.Cure(path);
        return "give " + root->Named() + " a rank of its own, such as PositionOrder=\"" + FreeOrder(*placing) + "\"";
    }

    void ReportOverflow(const Placing& placing) {
        const Entry* title = placing.title;
        constexpr Double largest = 2147;
        if (title && static_cast<Double>(title->positionOrder) > largest)
            m_report.Add(Rule::PositionOverflow, title->At("PositionOrder"),
                         "the PositionOrder " + OrderText(*title) + " of " + title->Named() +
                             " makes the ranks of its entries too large, so the application doesn't start (6)",
                         "write a free number of 2147 or less");
        else
            m_report.Add(Rule::PositionOverflow, placing.entry->At("PositionOrder"),
                         "the PositionOrder " + OrderText(*placing.entry) + " of " + placing.entry->Named() +
                             " makes its rank too large, so the application doesn't start (6)",
                         "write a smaller number, below 10000");
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
                         entry.Named() + " doesn't appear, as its action has lost another place, " +
                             Quoted(lost.entry->key) + ", to " + Quoted(lost.owner->key),
                         "write PositionOrder=\"" + FreeOrder(lost) + "\" at that other place",
                         {{lost.entry->At("PositionOrder"),
                           lost.entry->Named() + ", whose rank " + lost.owner->Named() + " has"}});
            return;
        }
        const Entry& owner = *placing.owner;
        if (AreTitlesAtFault(placing, *m_plan.PlacingOf(owner)))
            return; // told with the titles
        std::string cure = "write PositionOrder=\"" + FreeOrder(placing) + "\"";
        if (EqualText(owner.key, entry.key))
            cure += ", or remove it";
        m_report
            .Add(Rule::VanishingEntry, entry.At("PositionOrder"),
                 entry.Named() + " doesn't appear: " + owner.Named() + " has its rank " + ToText(*placing.rank) + ". " +
                     RankText(placing),
                 cure, {{owner.At("PositionOrder"), "the other one, of " + owner.provider->Named()}})
            .edits = {OrderEdit(entry, FreeOrder(placing))};
    }

    // Of what a rank is made, as far as one needs it to see why two meet.
    [[nodiscard]] static std::string RankText(const Placing& placing) {
        const Entry& entry = *placing.entry;
        const Entry& owner = *placing.owner;
        if (entry.positionOrder != owner.positionOrder && EqualText(entry.path, owner.path))
            return "Of " + OrderText(entry) + " and " + OrderText(owner) + " two decimals count";
        if (!EqualText(entry.path, owner.path))
            return "Submenus share one numbering with the menu bar: order of the title x 1000000 + own x 100";
        return "Both have the PositionOrder " + OrderText(entry);
    }

    // An order behind that of the place's owner and before whatever follows it in the menu.
    [[nodiscard]] std::string FreeOrder(const Placing& placing) {
        if (m_ranks.empty())
            for (const Placing& each : m_plan.Placings())
                if (each.rank)
                    m_ranks.insert(*each.rank);
        const bool isTopTitle = placing.entry->IsTitle() && placing.entry->path.empty();
        // Of a title on the menu bar the whole number counts.
        const Double order =
            isTopTitle ? static_cast<Double>(*placing.rank) : static_cast<Double>(placing.entry->positionOrder);
        const Double factor = isTopTitle ? 1 : 100;
        const auto next = m_ranks.upper_bound(*placing.rank);
        const Double room = next == m_ranks.end() ? 1000000 : static_cast<Double>(*next) - *placing.rank;
        for (const Double step : {5.0, 1.0, 0.5, 0.1, 0.01})
            if (step * factor < room && (!isTopTitle || step >= 1))
                return ToText(static_cast<Single>(order + step));
        for (Double step = 1;; step += 1) // no room there: wherever there is some
            if (!m_ranks.contains(*placing.rank + static_cast<Long>(step * factor)))
                return ToText(static_cast<Single>(order + step));
    }

    // With as many digits as the others have, as toolbars are sorted by the text.
    [[nodiscard]] std::string FreeButtonOrder(const Placing& placing) {
        const Entry& entry = *placing.entry;
        std::set<std::string> taken;
        for (const Placing& each : m_plan.Placings())
            if (each.entry->IsButton() && EqualText(each.entry->path, entry.path))
                taken.insert(OrderText(*each.entry));
        const std::string order = OrderText(entry);
        for (int step = 1; step < 1000; ++step) {
            std::string free = ToText(static_cast<Single>(static_cast<Double>(entry.positionOrder) + step));
            if (free.size() == order.size() && !taken.contains(free))
                return free;
        }
        return order + ".5";
    }

    static Edit OrderEdit(const Entry& entry, const std::string& order) {
        return ValueEdit(*entry.provider->file, *entry.element->Find("PositionOrder"), order);
    }

    void ReportTitleBehind(const Placing& placing) {
        const Entry& title = *placing.entry;
        const Entry& owner = *placing.owner;
        std::vector<Note> notes{{owner.At("PositionOrder"), "the other one, of " + owner.provider->Named()}};
        for (const Placing& other : m_plan.Placings())
            if (!other.bar && other.owner && (other.title == &title || other.title == placing.owner) &&
                AreTitlesAtFault(other, *m_plan.PlacingOf(*other.owner)))
                notes.push_back(
                    {other.entry->At("PositionOrder"), other.entry->Named() + " doesn't appear because of it"});
        const bool isRounded = title.positionOrder != owner.positionOrder;
        m_report
            .Add(Rule::SharedPosition, title.At("PositionOrder"),
                 title.Named() + " shares the rank " + ToText(*placing.rank) + " with " + owner.Named() +
                     (isRounded && title.path.empty()
                          ? ": orders of the menu bar are rounded to whole numbers, so it comes last"
                          : ", so it comes after all others"),
                 "write PositionOrder=\"" + FreeOrder(placing) + "\"", std::move(notes))
            .edits = {OrderEdit(title, FreeOrder(placing))};
    }

    void CheckBar(const Bar& bar) {
        const bool toolbar = bar.name.starts_with(toolbarPrefix);
        if (!toolbar && bar.title)
            CheckSubmenuOrder(bar);
        if (toolbar)
            CheckToolbarOrder(bar);
        else if (!bar.title && !bar.ofHost &&
                 (!EqualText(bar.name, "View.Toolbars") || (bar.firstAsked && !bar.firstAsked->IsButton())))
            ReportPlaceholder(bar);
        else if (bar.title && bar.slots.empty() && m_model.complete && !m_pathMap.contains(bar.name) &&
                 !m_meant.IsAskedFor(bar.name))
            ReportEmpty(bar);
        for (const Slot& slot : bar.slots) {
            if (slot.entries.empty())
                continue;
            const Entry& entry = *slot.entries.front();
            Seen& seen = m_seen[slot.tool->number];
            const bool isNew = seen.bar != &bar;
            if (isNew)
                seen = {&bar, &entry};
            if (!isNew && !AreRivals(*seen.entry, entry))
                ReportTwice(entry, *seen.entry);
        }
    }

    void ReportEmpty(const Bar& bar) {
        const Entry& title = *bar.title;
        std::vector<Note> notes;
        std::string cure = "write Path=\"" + bar.name + "\" at an entry, or remove the title";
        if (const auto inactive = InactiveEntryOf(m_model, bar.name)) {
            notes.push_back(
                {inactive->file->At(inactive->element->At("Path")), "an entry of a file that isn't active"});
            cure = "write Active=\"True\" in " + Quoted(inactive->file->name) + ", which has entries for it";
        } else if (const Bar* toolbar = m_plan.FindBar(toolbarPrefix + bar.name)) {
            const Entry& button = *toolbar->slots.front().entries.front();
            notes.push_back({button.At("Path"), "a button with this Path, which is on a toolbar of that name"});
            cure = "write Type=\"MenuItem\" for " + button.Named() + ", or remove the title";
        }
        m_report.Add(Rule::TitleWithoutEntries, title.At("ActionItem"),
                     "no entry has the Path " + Quoted(bar.name) + ", so " + title.Named() + " opens an empty menu",
                     cure, std::move(notes));
    }

    void ReportTwice(const Entry& second, const Entry& first) {
        const bool isButton = second.IsButton();
        Finding& finding = m_report.Add(
            Rule::DuplicateEntry, second.At("PositionOrder"),
            second.Named() + " appears twice" +
                (first.provider == second.provider ? std::string()
                                                   : ": " + first.provider->Named() + " has it at " + OrderText(first) +
                                                         ", " + second.provider->Named() + " at " + OrderText(second)),
            isButton ? "remove one of both"
                     : "write PositionOrder=\"" + OrderText(first) + "\" to share one place, or remove one",
            {{first.At("PositionOrder"), "the first one"}});
        if (!isButton && first.provider != second.provider)
            finding.edits = {OrderEdit(second, OrderText(first))};
    }

    // The entries of a path that no title has; where a title has no place, it has a finding of its own. Toolbars ask
    // for "View" without naming it.
    void ReportPlaceholder(const Bar& bar) {
        if (!m_model.complete || !bar.firstAsked || m_plan.TitleOf(bar.name) ||
            IsOfHost(bar.firstAsked->IsButton() ? "View" : bar.name))
            return;
        const Entry& entry = *bar.firstAsked;
        if (entry.IsButton()) {
            m_report.Add(Rule::PathWithoutTitle, entry.At("Path"),
                         "there is no title \"View\", so the menu that shows and hides toolbars can't be reached",
                         "add an ActionItem \"View\" and <MenuItem Type=\"MenuTitle\" ActionItem=\"View\" "
                         "PositionOrder=\"200\" Caption=\"#View\"/>");
            return;
        }
        const int otherCount = m_pathMap[bar.name] - 1;
        const std::string others =
            otherCount <= 0 ? "" : " and " + std::to_string(otherCount) + (otherCount == 1 ? " other" : " others");
        if (bar.name.empty()) {
            for (const Placing& placing : m_plan.Placings())
                if (placing.entry->path.empty() && !placing.entry->IsTitle() && !placing.entry->IsButton())
                    m_report.Add(Rule::PathWithoutTitle, placing.entry->At("Path"),
                                 placing.entry->Named() + " has no Path, so it is in no menu and never appears",
                                 m_meant.Cure({}));
            return;
        }
        std::vector<Note> notes;
        if (const auto inactive = InactiveTitle(m_model, bar.name))
            notes.push_back(
                {inactive->file->At(inactive->element->At("ActionItem")), "the title, in a file that isn't active"});
        const Tool* tool = m_plan.FindTool(bar.name);
        const Entry* command = tool && tool->maker && !tool->maker->IsTitle() ? tool->maker : nullptr;
        if (command)
            notes.push_back({command->At("Type"), "the command"});
        m_report.Add(Rule::PathWithoutTitle, entry.At("Path"),
                     (command ? Quoted(bar.name) + " is a command and opens no menu, so "
                              : "no title has the key " + Quoted(bar.name) + ", so ") +
                         entry.Named() + others + (otherCount <= 0 ? " never appears" : " never appear"),
                     command ? "write Path=\"" + std::string(command->path) +
                                   "\", the menu of that command, or make it a "
                                   "MenuTitle without Action"
                             : m_meant.Cure(bar.name),
                     std::move(notes));
        AddPathEdit(entry);
    }

    // A title of the file that a host brings for an application without one of the root object, and without which that
    // doesn't start.
    [[nodiscard]] bool IsOfHost(std::string_view title) const {
        return (EqualText(title, "File") || EqualText(title, "View") || EqualText(title, "Window")) &&
               std::none_of(m_model.services.begin(), m_model.services.end(),
                            [](const Provider& service) { return EqualText(service.progID, frameworkProgID); });
    }

    // Of the finding that has been added last.
    void AddPathEdit(const Entry& entry) {
        const auto meant = entry.path.empty() ? std::nullopt : m_meant.Meant(entry.path);
        if (!meant)
            return;
        for (Provider* provider : m_model.MenuProviders())
            for (const Entry& each : provider->entries)
                if (!each.IsButton() && !each.IsOfContextMenu() && EqualText(each.path, entry.path))
                    m_report.Last().edits.push_back(ValueEdit(*provider->file, *each.element->Find("Path"), *meant));
    }

    void CheckToolbarOrder(const Bar& bar) {
        const Entry* before = nullptr;
        for (const Slot& slot : bar.slots) {
            const Entry* entry = slot.entries.front();
            if (m_plan.PlacingOf(*entry)->owner)
                continue; // has a finding of its own
            if (before && before->positionOrder > entry->positionOrder) {
                m_report.Add(Rule::ToolbarOrder, entry->At("PositionOrder"),
                             entry->Named() + " comes after " + before->Named() +
                                 ": toolbars are sorted by text, in which " + Quoted(OrderText(*before)) +
                                 " comes before " + Quoted(OrderText(*entry)),
                             "number the buttons with equally many digits, such as 10, 20, 30 or 110, 120, 130",
                             {{before->At("PositionOrder"), "the other one"}});
                m_report.Last().edits = NumberButtons(bar);
                return;
            }
            before = entry;
        }
    }

    // All buttons of the toolbar, in the order of their numbers.
    static std::vector<Edit> NumberButtons(const Bar& bar) {
        std::vector<const Entry*> buttons;
        for (const Slot& slot : bar.slots)
            for (const Entry* entry : slot.entries.All())
                buttons.push_back(entry);
        std::stable_sort(buttons.begin(), buttons.end(), [](const Entry* first, const Entry* second) {
            return first->positionOrder < second->positionOrder;
        });
        constexpr std::size_t few = 9;
        constexpr std::size_t many = 90;
        std::vector<Edit> edits;
        if (buttons.size() > many)
            return edits;
        std::size_t order = buttons.size() <= few ? 0 : 90;
        for (const Entry* button : buttons)
            edits.push_back(OrderEdit(*button, std::to_string(order += 10)));
        return edits;
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
                             entry.Named() + " comes before " + Quoted(lowest->entry->key) + ", as its order " +
                                 OrderText(entry) + " isn't above " + OrderText(*bar.title) + ", that of " +
                                 bar.title->Named(),
                             "write PositionOrder=\"" +
                                 ToText(static_cast<Single>(static_cast<Double>(bar.title->positionOrder) +
                                                            std::max<Double>(entry.positionOrder, 1))) +
                                 "\", and more for what is to follow it; corvane arrange does it",
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
                             "the PositionOrder of " + entry.Named() +
                                 " makes its rank too large, so the application doesn't start (6)",
                             "write a smaller number, below 10000");
                continue;
            }
            const auto [it, isNew] = ranks.emplace(*rank, &entry);
            if (!isNew)
                m_report.Add(Rule::VanishingEntry, entry.At("PositionOrder"),
                             entry.Named() + " and " + it->second->Named() + " have one rank, " + ToText(*rank) +
                                 ", in the context menu of " + Quoted(item.name) +
                                 ": one comes twice, the other not at all",
                             "write PositionOrder=\"" + FreeContextOrder(item, entry) + "\"",
                             {{it->second->At("PositionOrder"), "the other one"}});
            if (!isNew)
                m_report.Last().edits = {OrderEdit(entry, FreeContextOrder(item, entry))};
        }
    }

    static std::string FreeContextOrder(const Provider& item, const Entry& entry) {
        std::set<Long> ranks;
        for (const Entry& each : item.entries)
            if (each.IsOfContextMenu())
                if (const auto rank = ContextRank(each))
                    ranks.insert(*rank);
        const bool isTitle = entry.type == MenuType::fwContextMenuTitle;
        const Long rank = *ContextRank(entry);
        const auto next = ranks.upper_bound(rank);
        const Double room = next == ranks.end() ? 1000000 : static_cast<Double>(*next) - rank;
        for (const Double step : {5.0, 1.0, 0.5, 0.1, 0.01})
            if (step * (isTitle ? 1 : 100) < room && (!isTitle || step >= 1))
                return ToText(static_cast<Single>(static_cast<Double>(entry.positionOrder) + step));
        return ToText(static_cast<Single>(static_cast<Double>(*ranks.rbegin()) / (isTitle ? 1 : 100) + 10));
    }

    // What a tool stands for: who answers, and whether anybody does.
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
                                 provider->Named() + " and " + Quoted(command.service->provider->name) + " share " +
                                     entry.Named() + ", and the one read last, " + Quoted(provider->name) +
                                     ", alone answers it",
                                 "give the action another name, or let one of both services have it",
                                 {{command.service->At("ActionItem"), "the other one"}});
                command.service = &entry;
            }
        for (const Command* command : order)
            if (!command->answered && m_model.complete)
                m_report.Add(
                    Rule::EntryWithoutProcedure,
                    command->first->provider->file->At(command->first->action->element->At()),
                    "the ActionItem of " + command->first->Named() + " has no Action, so choosing it does nothing",
                    "write Action=\"On" + std::string(command->first->action->name) + "\", the procedure to call");
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

    Model& m_model;
    const MenuPlan& m_plan;
    Report& m_report;
    MenuPaths m_meant;
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
    std::set<Long> m_ranks;                                                   // of all places in menus
};

} // namespace

void CheckMenus(Model& model, const MenuPlan& plan, Report& report) {
    MenuCheck(model, plan, report).Check();
}

} // namespace corvane::check
