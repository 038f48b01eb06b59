// Attributes without effect where they stand, and commands of the root object that do nothing.
#include "adapters/common/Nearest.h"
#include "analysis/Checks.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <array>
#include <map>

namespace corvane::check {

namespace {

constexpr const char* frameworkProgId = "Corvane.Framework";

bool IsSeparator(const Entry& entry, std::string_view where) {
    return EqualText(entry.element->Value("Separator"), where);
}

class EffectCheck {
public:
    EffectCheck(Model& model, const MenuPlan& plan, const Code& code, Report& report)
        : m_model(model), m_plan(plan), m_code(code), m_report(report) {
        const auto isOfMenus = [](const Finding& finding) {
            return finding.rule == Rule::PathWithoutTitle || finding.rule == Rule::VanishingEntry ||
                   finding.rule == Rule::UnreadFile;
        };
        m_isWhole = model.complete && std::none_of(report.Findings().begin(), report.Findings().end(), isOfMenus);
    }

    void Check() {
        for (Provider* provider : m_model.MenuProviders())
            for (const Entry& entry : provider->entries)
                CheckEntry(*provider, entry);
        CheckTitleActions();
        for (const auto& [name, bar] : m_plan.Bars())
            if (!bar.name.starts_with("Toolbars.") && !EqualText(bar.name, "Main"))
                CheckSeparators(bar);
        for (const Provider& item : m_model.items)
            CheckContextSeparators(item);
        for (const Window& window : m_model.windows)
            CheckWindow(window);
    }

private:
    Finding& Idle(const Entry& entry, std::string_view attribute, std::string text, std::string cure) {
        return m_report.Add(Rule::NoEffect, entry.At(attribute), std::move(text), std::move(cure));
    }

    void Remove(const Entry& entry, const char* attribute, std::string text) {
        Idle(entry, attribute, std::move(text), std::string("remove ") + attribute).edits = {
            RemovalEdit(*entry.provider->file, *entry.element->Find(attribute))};
    }

    void CheckEntry(const Provider& provider, const Entry& entry) {
        if (entry.IsOfContextMenu() && provider.kind != ProviderKind::ExplorerItem) {
            Idle(entry, "Type", provider.Named() + " has no context menu, so " + entry.Named() + " never appears",
                 "move it to the Menus of an ExplorerItem, or write Type=\"" +
                     std::string(entry.type == MenuType::fwContextMenuTitle ? "MenuTitle" : "MenuItem") + "\"");
            return;
        }
        if (entry.IsOfContextMenu() && !entry.path.empty())
            Remove(entry, "Path",
                   "all entries of a context menu are in the menu itself, so the Path of " + Quoted(entry.key) +
                       " has no effect");
        if (entry.IsButton()) {
            if (!entry.ShortCutKey().empty())
                CheckButtonShortcut(entry);
            if (!entry.element->Value("Separator").empty())
                Remove(entry, "Separator", "a toolbar has no separators, so there is no line beside " + entry.Named());
        } else if (!entry.element->Value("Tip").empty()) {
            CheckTip(entry);
        }
        if (entry.IsTitle() && entry.path.empty() && (IsSeparator(entry, "Before") || IsSeparator(entry, "After")))
            Remove(entry, "Separator", "a menu bar has no separators, so there is no line beside " + entry.Named());
    }

    void CheckButtonShortcut(const Entry& entry) {
        const Tool* tool = m_plan.ToolOf(*entry.action);
        const Entry* maker = tool ? tool->maker : nullptr;
        const bool hasPlace = maker && !maker->IsButton();
        const std::string keys(entry.ShortCutKey());
        if (hasPlace && maker->ShortCutKey().empty())
            Idle(entry, "ShortCutKey", "a button has no shortcut of its own, so " + Quoted(keys) + " does nothing",
                 "move ShortCutKey=\"" + keys + "\" to " + maker->Named())
                .notes = {{maker->At("ActionItem"), "the place of the action in a menu"}};
        else if (hasPlace)
            Remove(entry, "ShortCutKey",
                   "a button has no shortcut of its own; the one of " + maker->Named() + ", " +
                       Quoted(maker->ShortCutKey()) + ", is what counts");
        else
            Idle(entry, "ShortCutKey", "a button has no shortcut of its own, so " + Quoted(keys) + " does nothing",
                 "give the action a MenuItem of Type=\"MenuItem\" with ShortCutKey=\"" + keys + "\"");
    }

    void CheckTip(const Entry& entry) {
        const bool hasDescription = !entry.action->element->Value("Description").empty();
        std::string text = "only buttons of toolbars show a Tip, so that of " + entry.Named() + " is never shown";
        const Attribute& tip = *entry.element->Find("Tip");
        if (hasDescription) {
            Remove(entry, "Tip", std::move(text));
            return;
        }
        const File& file = *entry.provider->file;
        Idle(entry, "Tip", std::move(text), "write it as Description of the ActionItem " + Quoted(entry.action->name))
            .edits = {RemovalEdit(file, tip), SetEdit(file, *entry.action->element, "Description", tip.Value())};
    }

    // A click on a title opens its menu and nothing else.
    void CheckTitleActions() {
        for (Provider* provider : m_model.MenuProviders()) {
            if (std::none_of(provider->entries.begin(), provider->entries.end(), [](const Entry& entry) {
                    return (entry.IsTitle() || entry.type == MenuType::fwContextMenuTitle) &&
                           !entry.action->procedure.empty();
                }))
                continue;
            std::map<const Action*, std::pair<bool, const Entry*>> uses; // whether a command, and the title
            for (const Entry& entry : provider->entries) {
                const bool isTitle = entry.IsTitle() || entry.type == MenuType::fwContextMenuTitle;
                if (entry.action->procedure.empty())
                    continue;
                auto& [isCommand, title] = uses[entry.action];
                isCommand |= !isTitle;
                if (isTitle && !title)
                    title = &entry;
            }
            for (const Action& action : provider->actions)
                if (const auto use = uses.find(&action);
                    use != uses.end() && !use->second.first && !IsDefaultAction(*provider, action))
                    m_report
                        .Add(Rule::NoEffect, provider->file->At(action.element->At("Action")),
                             Quoted(action.procedure) + " is never called, as a click on " +
                                 use->second.second->Named() + " only opens its menu",
                             "remove Action, or give the command an entry of its own in the menu")
                        .edits = {RemovalEdit(*provider->file, *action.element->Find("Action"))};
        }
    }

    static bool IsDefaultAction(const Provider& provider, const Action& action) {
        return provider.kind == ProviderKind::ExplorerItem &&
               EqualText(provider.element->Value("DefaultAction"), action.name);
    }

    // Entries stand behind those of the files when a plug-in or the host adds them at run time.
    [[nodiscard]] bool MayGrow(const std::string& menu) const {
        const bool hasFramework =
            std::any_of(m_model.services.begin(), m_model.services.end(),
                        [](const Provider& service) { return EqualText(service.progID, frameworkProgId); });
        const auto IsAmong = [&](std::initializer_list<const char*> names) {
            return std::any_of(names.begin(), names.end(), [&](const char* name) { return EqualText(name, menu); });
        };
        return IsAmong({"Tools", "Help", "View"}) || (!hasFramework && IsAmong({"File", "Window"})) ||
               m_code.Holds("AddMenu");
    }

    void CheckSeparators(const Bar& bar) {
        const Entry* before = nullptr;
        bool isFirst = true;
        for (const Slot& slot : bar.slots) {
            const Entry* entry = slot.entries.front(); // nothing for what the library puts there
            if (slot.entries.All().size() > 1)
                CheckSharedSeparators(slot);
            if (entry && !IsAdopted(*entry))
                CheckLine(*entry, before, isFirst);
            isFirst = false;
            before = entry;
        }
        if (before && IsSeparator(*before, "After") && m_isWhole && !IsAdopted(*before) && !MayGrow(bar.name))
            Remove(*before, "Separator", before->Named() + " is the last of its menu, so the line is drawn at the end");
    }

    // Whose line is drawn where the placeholder was made; it has neighbours that the order doesn't tell.
    [[nodiscard]] bool IsAdopted(const Entry& entry) const {
        const Placing* placing = m_plan.PlacingOf(entry);
        return entry.IsTitle() && (!placing || placing->owner);
    }

    void CheckLine(const Entry& entry, const Entry* before, bool isFirst) {
        if (!IsSeparator(entry, "Before"))
            return;
        if (isFirst && !m_isWhole)
            return;
        if (isFirst)
            Remove(entry, "Separator", entry.Named() + " is the first of its menu, so the line is drawn above it all");
        else if (before && IsSeparator(*before, "After"))
            m_report
                .Add(Rule::NoEffect, entry.At("Separator"),
                     "there are two lines between " + Quoted(before->key) + " and " + Quoted(entry.key) +
                         ", as both ask for one",
                     "remove Separator from one of both", {{before->At("Separator"), "the other one"}})
                .edits = {RemovalEdit(*entry.provider->file, *entry.element->Find("Separator"))};
    }

    // The first who asks for a place draws its lines; a later one only that behind the menu.
    void CheckSharedSeparators(const Slot& slot) {
        const auto entries = slot.entries.All();
        for (const Entry* entry : entries.subspan(1)) {
            if (entry->IsTitle() || entry->element->Value("Separator").empty())
                continue;
            const Entry& first = *entries.front();
            const bool isAfter = IsSeparator(*entry, "After");
            if (EqualText(entry->element->Value("Separator"), first.element->Value("Separator")) && !isAfter)
                continue; // said twice, drawn once
            m_report
                .Add(Rule::NoEffect, entry->At("Separator"),
                     entry->Named() + " shares the place of " + first.provider->Named() +
                         (isAfter ? ", so its line comes at the end of the menu, with nothing behind it"
                                  : ", which alone draws lines, so this one doesn't appear"),
                     isAfter ? "remove Separator here; write it at the first of both"
                             : "write Separator=\"" + std::string(entry->element->Value("Separator")) +
                                   "\" at the first of both",
                     {{first.At("ActionItem"), "the first of both"}})
                .edits = {RemovalEdit(*entry->provider->file, *entry->element->Find("Separator"))};
        }
    }

    void CheckContextSeparators(const Provider& item) {
        std::map<Long, const Entry*> ranks;
        for (const Entry& entry : item.entries)
            if (entry.IsOfContextMenu())
                if (const auto rank = ContextRank(entry))
                    ranks.emplace(*rank, &entry);
        const Entry* before = nullptr;
        for (const auto& [rank, entry] : ranks) {
            CheckLine(*entry, before, before == nullptr);
            before = entry;
        }
        if (before && IsSeparator(*before, "After") && !m_code.Holds("AddContextMenu"))
            Remove(*before, "Separator",
                   before->Named() + " is the last of its context menu, so the line is drawn at the end");
    }

    void CheckWindow(const Window& window) {
        const Element& element = *window.element;
        const std::string type(element.Value("Type"));
        const auto Report = [&](const char* attribute, std::string text, std::string cure) -> Finding& {
            return m_report.Add(Rule::NoEffect, window.file->At(element.At(attribute)), std::move(text),
                                std::move(cure));
        };
        if (element.Find("IsApplyCommandShown") && BooleanOf(element, "IsApplyCommandShown", true) &&
            (EqualText(type, "Wizard") || EqualText(type, "SaveDialog")))
            Report("IsApplyCommandShown",
                   "a window of Type " + type + " has no command Apply, whatever IsApplyCommandShown says",
                   "remove IsApplyCommandShown, or write Type=\"Dialog\"")
                .edits = {RemovalEdit(*window.file, *element.Find("IsApplyCommandShown"))};
        if (BooleanOf(element, "IsModal", false) && EqualText(element.Value("State"), "Minimized"))
            Report("State",
                   "the window " + Quoted(window.name) + " is modal and opens minimized: everything waits for a " +
                       "window that can't be seen",
                   "write State=\"Normal\"")
                .edits = {ValueEdit(*window.file, *element.Find("State"), "Normal")};
        for (const auto& [opening, smallest] :
             {std::pair{"DefPageWidth", "PageWidth"}, std::pair{"DefPageHeight", "PageHeight"}})
            if (const auto least = SizeOf(element, smallest), first = SizeOf(element, opening);
                least && first && *first != 0 && *first < *least)
                Report(opening,
                       std::string(opening) + " " + std::to_string(*first) + " is less than " + smallest + " " +
                           std::to_string(*least) + ", below which the window can't go",
                       std::string("write ") + opening + "=\"" + std::to_string(*least) + "\", or a smaller " +
                           smallest);
    }

    static std::optional<Long> SizeOf(const Element& element, const char* attribute) {
        const Attribute* size = element.Find(attribute);
        return size && !size->IsBad() ? std::optional(ToLong(Variant(size->Value()))) : std::nullopt;
    }

    Model& m_model;
    const MenuPlan& m_plan;
    const Code& m_code;
    Report& m_report;
    bool m_isWhole; // no entry is missing for another mistake, so the first and the last of a menu are known
};

class RootCheck {
public:
    RootCheck(Model& model, const MenuPlan& plan, Report& report) : m_model(model), m_plan(plan), m_report(report) {}

    void Check() {
        for (const Provider& service : m_model.services)
            if (EqualText(service.progID, frameworkProgId))
                for (const Action& action : service.actions)
                    CheckAction(service, action);
    }

private:
    void CheckAction(const Provider& service, const Action& action) {
        static const std::vector<std::string> windowCommands{"TileHorizontally", "TileVertically", "Cascade",
                                                             "ArrangeIcons", "CloseAll"};
        const Element& element = *action.element;
        const std::string name(action.name);
        if (EqualText(action.procedure, "WindowAction") && !IsAmong(windowCommands, name)) {
            Name(service, action,
                 "WindowAction goes by the Name of its action and knows no " + Quoted(name) +
                     ", so the command does nothing",
                 windowCommands);
        } else if (EqualText(action.procedure, "ViewToolbars") && !m_plan.FindBar("Toolbars." + name)) {
            std::vector<std::string> toolbars;
            for (const auto& [key, bar] : m_plan.Bars())
                if (bar.name.starts_with("Toolbars."))
                    toolbars.push_back(bar.name.substr(9));
            Name(service, action,
                 "ViewToolbars goes by the Name of its action, and there is no toolbar " + Quoted(name) +
                     ", so the command fails",
                 toolbars);
        } else if (EqualText(action.procedure, "EnableStatusBar") && !BooleanOf(element, "Checked", false)) {
            m_report
                .Add(Rule::RootCommand, service.file->At(element.At("Checked")),
                     "the status bar is shown at the start and " + Quoted(name) +
                         " isn't checked, so the first click seems to do nothing",
                     "write Checked=\"True\"")
                .edits = {SetEdit(*service.file, element, "Checked", "True")};
        }
    }

    static bool IsAmong(const std::vector<std::string>& names, const std::string& name) {
        return std::any_of(names.begin(), names.end(), [&](const std::string& each) { return EqualText(each, name); });
    }

    // The name is also that by which entries refer to the action.
    void Name(const Provider& service, const Action& action, std::string text, const std::vector<std::string>& names) {
        const auto nearest = Nearest(names, action.name);
        std::string all;
        for (const std::string& name : names)
            all += (all.empty() ? "" : name == names.back() ? " or " : ", ") + Quoted(name);
        Finding& finding =
            m_report.Add(Rule::RootCommand, service.file->At(action.element->At("Name")), std::move(text),
                         nearest       ? "write " + Quoted(*nearest) + " here and in its MenuItems"
                         : all.empty() ? "remove the action: no service has a toolbar"
                                       : "write " + all);
        if (!nearest)
            return;
        finding.edits = {ValueEdit(*service.file, *action.element->Find("Name"), *nearest)};
        for (const Entry& entry : service.entries)
            if (entry.action == &action)
                finding.edits.push_back(ValueEdit(*service.file, *entry.element->Find("ActionItem"), *nearest));
    }

    Model& m_model;
    const MenuPlan& m_plan;
    Report& m_report;
};

} // namespace

void CheckEffects(Model& model, const MenuPlan& plan, const Code& code, Report& report) {
    EffectCheck(model, plan, code, report).Check();
    RootCheck(model, plan, report).Check();
}

} // namespace corvane::check
