#include "analysis/Explain.h"

#include "adapters/common/Nearest.h"
#include "analysis/Application.h"
#include "analysis/ExplainForm.h"
#include "analysis/MenuPlan.h"

#include <algorithm>

namespace corvane::check {

namespace {

std::string LineText(const Place& place) {
    return place.file + ":" + std::to_string(place.at.line) + ":" + std::to_string(place.at.column);
}

std::string Ordinal(std::size_t n) {
    const bool teen = n % 100 >= 11 && n % 100 <= 13;
    const char* letters = teen || n % 10 > 3 || n % 10 == 0 ? "th" : n % 10 == 1 ? "st" : n % 10 == 2 ? "nd" : "rd";
    return std::to_string(n) + letters;
}

std::string ContextBar(const Provider& item) {
    return "Context." + item.name;
}

constexpr std::string_view toolbarsPath = "Toolbars.";

// "Standard" of "Toolbars.Standard".
std::string_view ToolbarOf(std::string_view bar) {
    return bar.substr(toolbarsPath.size());
}

// "File", "Toolbars.Standard": how a bar is spoken of.
std::string BarText(const std::string& name) {
    if (name == "Main")
        return "the menu bar";
    if (name.starts_with(toolbarsPath))
        return "the toolbar " + Quoted(ToolbarOf(name));
    return "the menu " + Quoted(name);
}

class Explainer {
public:
    Explainer(Model& model, std::string item) : m_model(model), m_plan(model), m_item(std::move(item)) {}

    Explanation Run() {
        for (Provider* provider : m_model.MenuProviders()) {
            for (const Entry& entry : provider->entries)
                if (Is(entry.key) || Is(ToolOf(entry)))
                    ExplainEntry(entry);
            ExplainContextMenu(*provider);
        }
        for (const auto& [name, bar] : m_plan.Bars())
            if (Is(bar.name) || (bar.name.starts_with(toolbarsPath) && Is(ToolbarOf(bar.name))))
                ExplainBar(bar);
        for (const Window& window : m_model.windows)
            if (Is(window.name) || std::any_of(window.pages.begin(), window.pages.end(),
                                               [&](const Provider* page) { return Is(page->progID); }))
                ExplainWindow(window);
        for (Provider& item : m_model.items)
            if (Is(item.name) || Is(item.progID))
                ExplainItem(item);
        for (Provider& service : m_model.services)
            if (Is(service.name) || Is(service.progID))
                ExplainService(service);
        if (m_text.empty())
            ExplainAction();
        if (!m_text.empty())
            return {m_text, {}};
        return {{}, NearestNames()};
    }

private:
    bool Is(std::string_view name) {
        m_names.emplace_back(name);
        return EqualText(name, m_item);
    }

    void Heading(const std::string& text) { m_text += (m_text.empty() ? "" : "\n") + text + "\n"; }
    void Field(const std::string& name, const std::string& text) {
        constexpr std::size_t width = 12;
        m_text += "  " + name + std::string(name.size() < width ? width - name.size() : 1, ' ') + text + "\n";
    }

    [[nodiscard]] std::string ToolOf(const Entry& entry) const {
        const Tool* tool = m_plan.ToolOf(*entry.action);
        return tool ? std::string(tool->name) : ContextBar(*entry.provider) + "." + std::string(entry.key);
    }

    void ExplainEntry(const Entry& entry) {
        std::string heading = entry.Named().substr(4); // without "the "
        Heading(heading);
        Field("defined", LineText(entry.provider->file->At(entry.element->At())) + ", by " + entry.provider->Named());
        ExplainProcedure(entry);
        if (const std::string tool = ToolOf(entry); !EqualText(tool, entry.key))
            Field("tool", Quoted(tool) + ", under which it is found and chosen");
        Field("position", ToText(entry.positionOrder) + ", position key " + Quoted(entry.PositionKey()));
        if (const Placing* placing = m_plan.PlacingOf(entry)) {
            ExplainRank(*placing);
            ExplainPlace(*placing);
        } else {
            const auto rank = ContextRank(entry);
            const bool title = entry.type == MenuType::fwContextMenuTitle;
            Field("rank", rank ? std::to_string(*rank) + " = " + ToText(entry.positionOrder) +
                                     (title ? ", rounded, because it is a title" : " x 100")
                               : "too large");
            Field("place", "in the context menu of " + entry.provider->Named());
        }
        ExplainShown(entry);
    }

    void ExplainProcedure(const Entry& entry) {
        const Action& action = *entry.action;
        std::string text = Quoted(action.name) + ", " + LineText(entry.provider->file->At(entry.action->element->At()));
        const bool title = entry.type == MenuType::fwMenuTitle || entry.type == MenuType::fwContextMenuTitle;
        if (!action.procedure.empty())
            text += ", calls " + std::string(action.procedure) + (action.PassesItself() ? " with itself" : "");
        else if (!title)
            text += ", calls nothing";
        Field("action", text);
    }

    void ExplainRank(const Placing& placing) {
        const Entry& entry = *placing.entry;
        const std::string order = ToText(entry.positionOrder);
        if (entry.type == MenuType::fwToolbarItem) {
            Field("order", "by the text " + Quoted(entry.PositionKey()));
            return;
        }
        std::string text = placing.rank ? std::to_string(*placing.rank) : std::string("too large");
        const std::string_view path = entry.path;
        if (path.empty() && entry.type == MenuType::fwMenuTitle)
            text += ", its order";
        else if (placing.title)
            text += " = " + ToText(placing.title->positionOrder) + " x 1000000 + " + order + " x 100; " +
                    ToText(placing.title->positionOrder) + " is the order of " + placing.title->Named() + ", " +
                    LineText(placing.title->At("PositionOrder"));
        else
            text += " = 500 x 1000000 + " + order + " x 100; there is no title " + Quoted(path);
        Field("rank", text);
    }

    void ExplainPlace(const Placing& placing) {
        if (!placing.bar) {
            std::string why = "nowhere";
            if (placing.owner)
                why += ", because " + placing.owner->Named() + " has the same rank, " +
                       LineText(placing.owner->At("PositionOrder"));
            Field("place", why + "; corvane check says more");
            return;
        }
        const auto& slots = placing.bar->slots;
        const auto it = std::find_if(slots.begin(), slots.end(), [&](const Slot& slot) {
            const auto entries = slot.entries.All();
            return std::find(entries.begin(), entries.end(), placing.entry) != entries.end();
        });
        const auto place = static_cast<std::size_t>(it - slots.begin());
        std::string text =
            Ordinal(place + 1) + " of " + std::to_string(slots.size()) + " in " + BarText(placing.bar->name);
        if (place > 0)
            text += ", after " + Quoted(slots[place - 1].tool->name);
        if (place + 1 < slots.size())
            text += (place > 0 ? " and before " : ", before ") + Quoted(slots[place + 1].tool->name);
        if (!placing.bar->title && !placing.bar->ofHost && !placing.bar->name.starts_with(toolbarsPath))
            text += "; the menu is a hidden placeholder, because its title isn't defined";
        Field("place", text);
        for (const Entry* other : it->entries.All())
            if (other != placing.entry)
                Field("shared", "with " + other->provider->Named() + ", " + LineText(other->At("ActionItem")));
    }

    // When a user sees it.
    void ExplainShown(const Entry& entry) {
        const Action& action = *entry.action;
        std::string text;
        switch (entry.provider->kind) {
        case ProviderKind::Service:
            text = "from the start";
            break;
        case ProviderKind::ExplorerItem:
            text = entry.IsOfContextMenu() ? "when a user opens the context menu of such an item"
                                           : "while such an item is the active one of the explorer";
            break;
        case ProviderKind::Page:
        case ProviderKind::PreferencePage:
            text = "while " + entry.provider->Named() + " is in front in the active window";
            break;
        }
        if (!BooleanOf(*action.element, "Visible", true))
            text += ", once a procedure calls SetVisible(true): the definition says Visible=\"False\"";
        if (!BooleanOf(*action.element, "Enabled", true))
            text += ", disabled until a procedure calls SetEnabled(true)";
        Field("shown", text);
    }

    void ExplainContextMenu(Provider& item) {
        const bool hasMenu =
            std::any_of(item.entries.begin(), item.entries.end(), [](const Entry& o) { return o.IsOfContextMenu(); });
        if (item.kind != ProviderKind::ExplorerItem || !hasMenu || !Is(ContextBar(item)))
            return;
        Heading("context menu of " + item.Named());
        Field("defined", LineText(item.file->At(item.element->At())));
        std::vector<const Entry*> entries;
        for (const Entry& entry : item.entries)
            if (entry.IsOfContextMenu())
                entries.push_back(&entry);
        std::stable_sort(entries.begin(), entries.end(), [](const Entry* a, const Entry* b) {
            return ContextRank(*a).value_or(0) < ContextRank(*b).value_or(0);
        });
        for (const Entry* entry : entries)
            Field(std::to_string(ContextRank(*entry).value_or(0)),
                  Quoted(entry->key) + ", " + LineText(entry->At("ActionItem")));
    }

    void ExplainBar(const Bar& bar) {
        Heading(BarText(bar.name).substr(4));
        if (bar.title)
            Field("defined", "by " + bar.title->Named() + ", " + LineText(bar.title->At("ActionItem")));
        else if (bar.ofHost)
            Field("defined", "by the host");
        else if (bar.firstAsked)
            Field("created", "for " + bar.firstAsked->Named() + ", " + LineText(bar.firstAsked->At("Path")) +
                                 (bar.name.starts_with(toolbarsPath) ? "" : "; its title isn't defined"));
        std::size_t place = 0;
        for (const Slot& slot : bar.slots) {
            ++place;
            if (slot.entries.empty()) {
                Field(std::to_string(place), Quoted(slot.tool->name) + ", created by the library");
                continue;
            }
            const Placing& placing = *m_plan.PlacingOf(*slot.entries.front());
            Field(std::to_string(place), Quoted(slot.tool->name) + ", " +
                                             (placing.rank ? "rank " + std::to_string(*placing.rank)
                                                           : "text " + Quoted(placing.entry->PositionKey())) +
                                             ", " + LineText(placing.entry->At("PositionOrder")));
        }
    }

    void ExplainWindow(const Window& window) {
        Heading("window " + Quoted(window.name));
        Field("defined", LineText(window.file->At(window.element->At())));
        Field("shown", "when a procedure calls WindowManager::OpenWindow(" + Quoted(window.name) + ", ...)");
        for (const Provider* page : window.pages)
            Field("page",
                  Quoted(page->name) + ", " + page->progID + ", " + LineText(page->file->At(page->element->At())));
    }

    void ExplainItem(Provider& item) {
        Heading("explorer item " + Quoted(item.name));
        Field("defined", LineText(item.file->At(item.element->At())));
        const std::string_view type = item.element->Value("Type");
        const std::string_view parent = item.element->Value("Parent");
        if (parent.empty() && !EqualText(type, "Default"))
            Field("place", "as a tab of its own, in order of PositionOrder, here " +
                               ToText(Variant(item.element->Find("PositionOrder") ? item.element->Value("PositionOrder")
                                                                                  : "0")));
        else
            Field("place", parent.empty() ? "nowhere, because it has no Parent" : "below " + Quoted(parent));
        if (EqualText(type, "Folder"))
            Field("created",
                  item.progID.empty() ? "by the library, as a plain name" : "by the library, from " + item.progID);
        else
            Field("created", "by the object above it, which provides its children");
        if (const auto action = item.element->Value("DefaultAction"); !action.empty())
            Field("dblclick", "fires " + Quoted(action));
        Field("shown", "when a procedure calls ExplorerManager::Populate, and its parent is open");
    }

    void ExplainService(const Provider& service) {
        Heading("service " + Quoted(service.name));
        Field("defined", LineText(service.file->At(service.element->At())));
        Field("created", "from " + service.progID);
        Field("contains", std::to_string(service.actions.size()) + " actions, " +
                              std::to_string(service.entries.size()) + " places");
        if (BooleanOf(*service.element, "IsStartService", false))
            Field("start", "its method Start is called when all services are initialized");
    }

    // By the action's name alone, in all services, items and pages.
    void ExplainAction() {
        for (Provider* provider : m_model.MenuProviders())
            for (const Action& action : provider->actions) {
                if (!Is(action.name))
                    continue;
                bool placed = false;
                for (const Entry& entry : provider->entries)
                    if (entry.action == &action) {
                        ExplainEntry(entry);
                        placed = true;
                    }
                if (!placed) {
                    Heading("action " + Quoted(action.name));
                    Field("defined", LineText(provider->file->At(action.element->At())) + ", by " + provider->Named());
                    Field("place", "nowhere: no MenuItem of its provider refers to it");
                }
            }
    }

    [[nodiscard]] std::vector<std::string> NearestNames() const {
        std::vector<std::string> names = m_names;
        std::sort(names.begin(), names.end());
        names.erase(std::unique(names.begin(), names.end()), names.end());
        if (const auto nearest = Nearest(names, m_item))
            return {*nearest};
        // Else what contains it.
        std::erase_if(
            names, [&](const std::string& name) { return FoldText(name).find(FoldText(m_item)) == std::string::npos; });
        return names;
    }

    Model& m_model;
    MenuPlan m_plan;
    std::string m_item;
    std::string m_text;
    std::vector<std::string> m_names;
};

} // namespace

Explanation Explain(const std::string& application, const std::string& item) {
    if (IsFormItem(item))
        return ExplainFormItem(application, item);
    Report report;
    Model model;
    ReadApplication(model, application, report);
    BuildModel(model, report);
    return Explainer(model, item).Run();
}

} // namespace corvane::check
