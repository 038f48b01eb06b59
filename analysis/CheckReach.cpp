// Things that can never be seen or reached: kinds of explorer items, windows and pages.
#include "analysis/Checks.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <unordered_map>

namespace corvane::check {

namespace {

bool IsOfType(const Provider& item, std::string_view type) {
    return EqualText(item.element->Value("Type"), type);
}

std::string_view ParentOf(const Provider& item) {
    return item.element->Value("Parent");
}

bool IsTab(const Provider& item) {
    return ParentOf(item).empty() && !IsOfType(item, "Default");
}

// One node for each object that the parent hands out.
bool IsKindOfObjects(const Provider& item) {
    return IsOfType(item, "Default") || (IsOfType(item, "FolderChild") && !ParentOf(item).empty());
}

std::string WrittenOrder(const Element& element) {
    return std::string(element.Value("PositionOrder"));
}

class ItemReach {
public:
    ItemReach(Model& model, Report& report) : m_model(model), m_report(report) {
        for (Provider& item : model.items)
            if (!item.name.empty())
                m_items.emplace(item.name, &item);
    }

    void Check() {
        std::unordered_map<const Provider*, const Provider*> kinds; // by parent, the first kind of objects
        for (Provider& item : m_model.items) {
            const auto parent = m_items.find(ParentOf(item));
            if (parent != m_items.end() && !ParentOf(item).empty()) {
                CheckParent(item, *parent->second);
                if (IsKindOfObjects(item))
                    CheckKind(item, *parent->second, kinds);
            }
            CheckObject(item);
        }
        CheckTabs();
        CheckOrderBelow();
    }

private:
    void CheckParent(const Provider& item, const Provider& parent) {
        if (IsOfType(parent, "Default") && &item != &parent)
            m_report.Add(Rule::UnreachableItem, item.At("Parent"),
                         item.Named() + " is shown nowhere, as its Parent " + Quoted(parent.name) +
                             " is of Type Default, which shows nothing below it",
                         "write Type=\"FolderChild\" for " + Quoted(parent.name) + ", or name another Parent",
                         {{parent.At("Type"), "the Type of " + Quoted(parent.name)}});
    }

    // All children of an object go to each kind, and the second one fails on keys that are taken.
    void CheckKind(const Provider& item, const Provider& parent,
                   std::unordered_map<const Provider*, const Provider*>& kinds) {
        if (IsOfType(parent, "Default") || (IsOfType(parent, "Folder") && parent.progID.empty()))
            return;
        const auto [first, isNew] = kinds.try_emplace(&parent, &item);
        if (!isNew)
            m_report.Add(Rule::TwoChildKinds, item.At("Type"),
                         Quoted(parent.name) + " gets every child twice, as " + Quoted(first->second->name) +
                             " and as " + Quoted(item.name) + ", so the explorer isn't filled (457)",
                         "leave one kind of Type Default or FolderChild below " + Quoted(parent.name) +
                             "; put the other below a Folder of its own",
                         {{first->second->At("Type"), "the first kind"}});
    }

    // A folder that is only a name has no procedures.
    void CheckObject(const Provider& item) {
        const bool isMadeHere = IsOfType(item, "Folder") || IsTab(item);
        if (!isMadeHere && !item.progID.empty())
            Without(item, "ProgID",
                    "the objects of Type " + std::string(item.element->Value("Type")) +
                        " are made by the parent's object, so this class is never made");
        if (!isMadeHere || !item.progID.empty())
            return;
        for (const Action& action : item.actions)
            if (!action.procedure.empty()) {
                m_report.Add(Rule::NoObject, item.file->At(action.element->At("Action")),
                             "the folder " + Quoted(item.name) + " has no object that could answer " +
                                 Quoted(action.procedure) + ", so choosing " + Quoted(action.name) + " fails (438)",
                             "write ProgID=\"Library.Class\" for " + Quoted(item.name) + ", or remove its actions",
                             {{item.file->At(item.element->At()), "the folder without a ProgID"}});
                return;
            }
    }

    void Without(const Provider& item, std::string_view attribute, const std::string& why) {
        m_report
            .Add(Rule::NoEffect, item.At(attribute), std::string(attribute) + " has no effect here: " + why,
                 "remove " + std::string(attribute))
            .edits = {RemovalEdit(*item.file, *item.element->Find(attribute))};
    }

    void CheckTabs() {
        std::vector<const Provider*> tabs;
        for (const Provider& item : m_model.items)
            if (IsTab(item))
                tabs.push_back(&item);
        CheckOrders(tabs, m_report);
    }

    // Below a parent the kinds stand in the order in which they are read.
    void CheckOrderBelow() {
        std::unordered_map<std::string_view, const Provider*, TextHash, TextEqual> last; // by parent
        for (const Provider& item : m_model.items) {
            if (ParentOf(item).empty() || !item.element->Find("PositionOrder"))
                continue;
            const auto [before, isNew] = last.try_emplace(ParentOf(item), &item);
            if (!isNew && NumberOf(*before->second->element) > NumberOf(*item.element))
                m_report.Add(Rule::NoEffect, item.At("PositionOrder"),
                             item.Named() + " comes after " + Quoted(before->second->name) +
                                 ": PositionOrder orders tabs alone; below a Parent the order of the files counts",
                             "move the ExplorerItem in front of " + Quoted(before->second->name),
                             {{before->second->At("PositionOrder"), "what comes before it"}});
            before->second = &item;
        }
    }

    Model& m_model;
    Report& m_report;
    std::unordered_map<std::string_view, Provider*, TextHash, TextEqual> m_items; // by name

public:
    static double NumberOf(const Element& element) {
        const Attribute* order = element.Find("PositionOrder");
        return order && !order->IsBad() ? static_cast<double>(ToSingle(Variant(order->Value()))) : 0;
    }

    static void ReportPages(const std::vector<const Provider*>& pages, Report& report) {
        std::vector<Edit> edits;
        int order = 0;
        for (const Provider* page : pages)
            edits.push_back(SetEdit(*page->file, *page->element, "PositionOrder", std::to_string(order += 10)));
        report
            .Add(Rule::NoOrder, pages[1]->file->At(pages[1]->element->At()),
                 pages[1]->Named() + " and " + pages[0]->Named() +
                     " have no PositionOrder, so the pages come as they are written",
                 "write PositionOrder=\"10\", \"20\" and so on, so that the order is said",
                 {{pages[0]->file->At(pages[0]->element->At()), "the first of them"}})
            .edits = std::move(edits);
    }

    // Of pages of one window, or of tabs. Those of one file without any order are in the order in which they are
    // written.
    static void CheckOrders(const std::vector<const Provider*>& providers, Report& report) {
        if (std::none_of(providers.begin(), providers.end(), [](const Provider* provider) {
                return provider->element->Find("PositionOrder") != nullptr;
            })) {
            if (providers.size() > 1 && providers.front()->kind == ProviderKind::Page)
                ReportPages(providers, report);
            const auto second = std::find_if(providers.begin(), providers.end(), [&](const Provider* provider) {
                return provider->file != providers.front()->file;
            });
            if (second != providers.end())
                report.Add(Rule::NoOrder, (*second)->file->At((*second)->element->At()),
                           "the tabs have no PositionOrder, so they are in the order in which the files are read",
                           "write PositionOrder=\"10\", \"20\" and so on",
                           {{providers[0]->file->At(providers[0]->element->At()), "the first of them"}});
            return;
        }
        for (std::size_t i = 1; i < providers.size(); ++i)
            for (std::size_t j = 0; j < i; ++j) {
                const Provider& first = *providers[j];
                const Provider& second = *providers[i];
                if (NumberOf(*first.element) != NumberOf(*second.element))
                    continue;
                const bool isMissing = !second.element->Find("PositionOrder");
                const Provider& at = isMissing || first.element->Find("PositionOrder") ? second : first;
                const Provider& other = &at == &second ? first : second;
                report.Add(Rule::SharedPosition, at.file->At(at.element->At("PositionOrder")),
                           at.Named() + " and " + other.Named() + " both have the PositionOrder " +
                               (WrittenOrder(*second.element).empty() ? "0" : WrittenOrder(*second.element)) +
                               (at.kind == ProviderKind::Page ? ", so the one that is written first comes first"
                                                              : ", so the one whose file is read first comes first"),
                           "give it a PositionOrder of its own, such as \"" +
                               ToText(static_cast<Single>(NumberOf(*providers.back()->element) + 10)) + "\"",
                           {{other.file->At(other.element->At("PositionOrder")), "the other one"}});
                return;
            }
    }
};

// Pages that are chosen by what they are called.
void CheckCaptions(const std::vector<const Provider*>& pages, const std::string& where, Report& report) {
    for (std::size_t i = 1; i < pages.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            if (!pages[i]->name.empty() && EqualText(pages[j]->name, pages[i]->name))
                report.Add(Rule::SameCaption, pages[i]->At("Caption"),
                           "two pages of " + where + " have the Caption " + Quoted(pages[i]->name) +
                               ", so users can't tell them apart",
                           "give one of both another Caption", {{pages[j]->At("Caption"), "the other one"}});
}

void CheckWindow(const Window& window, Report& report) {
    const bool isWizard = EqualText(window.element->Value("Type"), "Wizard");
    if (window.pages.empty())
        report.Add(
            Rule::WindowWithoutPages, window.file->At(window.element->At()),
            "the window " + Quoted(window.name) + " has no Page, so it " +
                (isWizard ? "opens as a wizard without a step" : "opens empty"),
            "add <Page PageProgID=\"Library.Class\" Caption=\"...\" IsOptional=\"False\" IsResizable=\"True\"/>");
    ItemReach::CheckOrders({window.pages.begin(), window.pages.end()}, report);
    if (!isWizard)
        CheckCaptions({window.pages.begin(), window.pages.end()}, "the window " + Quoted(window.name), report);
}

// The first window that may be hidden by another one.
void CheckWindowList(const Model& model, const MenuPlan& plan, Report& report) {
    for (const Window& window : model.windows) {
        if (!BooleanOf(*window.element, "IsMDIChild", true) || BooleanOf(*window.element, "IsModal", false))
            continue;
        if (!plan.TitleOf("Window") && model.complete)
            report.Add(Rule::MissingWindowList, window.file->At(window.element->At()),
                       "no file has a menu \"Window\", so open windows such as " + Quoted(window.name) +
                           " are listed only where the host brings one",
                       "add a MenuTitle of an ActionItem \"Window\" to have a list everywhere");
        return;
    }
}

// A modal window keeps users from the menus for as long as it is open.
void CheckModal(const Window& window, Report& report) {
    if (!BooleanOf(*window.element, "IsModal", false))
        return;
    for (const Provider* page : window.pages)
        if (!page->entries.empty())
            report.Add(Rule::NoEffect, page->file->At(page->entries.front().element->At()),
                       page->Named() + " has entries in menus, which can't be chosen while its window " +
                           Quoted(window.name) + " is open, as it is modal",
                       "write IsModal=\"False\", or put a button into the page instead",
                       {{window.file->At(window.element->At("IsModal")), "the window is modal"}});
}

void CheckPreferences(const Model& model, Report& report) {
    std::vector<const Provider*> pages;
    for (const Provider& page : model.preferencePages)
        pages.push_back(&page);
    CheckCaptions(pages, "the preferences", report);
    for (const Provider& page : model.preferencePages)
        if (!page.entries.empty())
            report.Add(Rule::NoEffect, page.file->At(page.entries.front().element->At()),
                       "the " + std::string(page.entries.size() == 1 ? "entry" : "entries") +
                           " of the preference page " + Quoted(page.name.empty() ? page.progID : page.name) +
                           (page.entries.size() == 1 ? " never appears" : " never appear") +
                           ": menus of preference pages aren't built",
                       "move it to the Menus of the Service or of a window's Page");
}

void CheckContextTitles(const Model& model, const Code& code, Report& report) {
    for (const Provider& item : model.items)
        for (const Entry& entry : item.entries)
            if (entry.type == MenuType::fwContextMenuTitle && !code.Holds("AddContextMenu"))
                report.Add(Rule::TitleWithoutEntries, entry.At("Type"),
                           "the submenu " + Quoted(entry.key) + " of " + item.Named() +
                               " stays empty: files can't fill it, only AddContextMenu of a plug-in can",
                           "write Type=\"ContextMenuItem\" for its entries beside it, and remove this title");
}

// A title that a service has and a page declares again goes with the page.
void CheckPageTitles(Model& model, const MenuPlan& plan, Report& report) {
    for (const Provider& page : model.pages)
        for (const Entry& entry : page.entries) {
            if (!entry.IsTitle())
                continue;
            const Entry* title = plan.TitleOf(entry.key);
            if (!title || title == &entry || title->provider->kind != ProviderKind::Service)
                continue;
            report.Add(Rule::RedeclaredTitle, entry.At("ActionItem"),
                       page.Named() + " declares the title " + Quoted(entry.key) +
                           " again: when the page leaves the front, the whole menu goes with it",
                       "remove this MenuItem; entries of the page only need Path=\"" + std::string(entry.key) + "\"",
                       {{title->At("ActionItem"), "the title of " + title->provider->Named()}});
        }
}

bool IsNamedBy(const Code& code, std::string_view name) {
    return std::any_of(code.Libraries().begin(), code.Libraries().end(),
                       [&](const Code::Library& library) { return Code::Names(library).contains(std::string(name)); });
}

// Actions that are nowhere to be chosen: no place names them, no double click, and no text of a plug-in.
void CheckUnused(const Model& model, const Code& code, Report& report) {
    const auto Check = [&](const Provider& provider) {
        std::size_t written = 0;
        for (const Element& group : provider.element->Children())
            if (group.name == "Menus")
                for (const Element& place : group.Children())
                    written += place.name == "MenuItem" ? 1 : 0;
        if (written == 0 || written != provider.entries.size())
            return; // all are for code, or one that isn't usable is meant for it
        std::vector<bool> placed(provider.actions.size());
        for (const Entry& entry : provider.entries)
            placed[static_cast<std::size_t>(entry.action - provider.actions.data())] = true;
        for (const Action& action : provider.actions) {
            if (placed[static_cast<std::size_t>(&action - provider.actions.data())])
                continue;
            const bool isNavigation =
                EqualText(provider.progID, frameworkProgID) && EqualText(action.name, "Navigation");
            if (isNavigation || action.name.empty() || action.procedure.empty() ||
                EqualText(provider.element->Value("DefaultAction"), action.name) || IsNamedBy(code, action.name))
                continue;
            report.Add(Rule::UnusedAction, provider.file->At(action.element->At("Name")),
                       "no menu, toolbar or context menu has the action " + Quoted(action.name) + " of " +
                           provider.Named() + ", so users can't choose it",
                       "add a MenuItem with ActionItem=" + Quoted(action.name) + ", or remove the action");
        }
    };
    for (const auto* providers : {&model.services, &model.items, &model.pages})
        for (const Provider& provider : *providers)
            Check(provider);
}

// Whether every plug-in is there, and none changes the state of anything by that function: "SetVisible" in C++, which
// the linker knows behind its length, and ".Visible" in Python.
bool NothingSets(const Model& model, const Code& code, const std::string& property) {
    const auto& libraries = code.Libraries();
    const auto IsThere = [&](const Provider& service) {
        const std::string_view progID(service.progID);
        return EqualText(progID, frameworkProgID) ||
               std::any_of(libraries.begin(), libraries.end(), [&](const Code::Library& library) {
                   return EqualText(library.name, progID.substr(0, progID.find('.')));
               });
    };
    return code.IsThere() && std::all_of(model.services.begin(), model.services.end(), IsThere) &&
           !code.Links("10Set" + property) && !code.Links("." + property) && !IsNamedBy(code, property);
}

// Actions whose entries never appear, or are never enabled. The library enables the root object's own.
void CheckHidden(const Model& model, const Code& code, Report& report) {
    std::optional<bool> isHidden;   // what begins hidden stays so; asked for when there is any
    std::optional<bool> isDisabled; // likewise
    const auto Check = [&](const Provider& provider, const char* property, std::optional<bool>& stays) {
        for (const Action& each : provider.actions) {
            const Element& action = *each.element;
            if (!action.Find(property) || BooleanOf(action, property, true))
                continue;
            const auto entry = std::find_if(provider.entries.begin(), provider.entries.end(), [&](const Entry& place) {
                return place.action == &each && (!each.procedure.empty() || place.IsTitle());
            });
            if (entry == provider.entries.end())
                continue;
            if (!stays)
                stays = NothingSets(model, code, property);
            if (!*stays)
                return;
            const bool isSeen = std::string_view(property) == "Enabled";
            report
                .Add(Rule::HiddenAction, provider.file->At(action.At(property)),
                     entry->Named() + (isSeen ? " can never be chosen: it begins disabled, and no plug-in enables it"
                                              : " is never seen: it begins hidden, and no plug-in shows it"),
                     std::string("remove ") + property + ", or call Set" + property + "(true) for the action")
                .edits = {RemovalEdit(*provider.file, *action.Find(property))};
        }
    };
    for (const auto* providers : {&model.services, &model.items, &model.pages})
        for (const Provider& provider : *providers) {
            if (EqualText(provider.progID, frameworkProgID))
                continue;
            Check(provider, "Visible", isHidden);
            Check(provider, "Enabled", isDisabled);
        }
}

template <class Fits>
std::optional<InactivePlace> InactivePlaceOf(const Model& model, std::string_view elementName, Fits fits) {
    for (const auto& file : model.files)
        if (file->root && !file->active && !file->isCopy)
            for (const Element& element : std::span(file->root, 1 + file->root->below))
                if (element.name == elementName && fits(element))
                    return InactivePlace{file.get(), &element};
    return std::nullopt;
}

} // namespace

std::optional<InactivePlace> InactiveTitle(const Model& model, std::string_view key) {
    return InactivePlaceOf(model, "MenuItem", [&](const Element& element) {
        const std::string_view path = element.Value("Path");
        return EqualText(element.Value("Type"), "MenuTitle") &&
               EqualText(std::string(path) + (path.empty() ? "" : ".") + std::string(element.Value("ActionItem")), key);
    });
}

std::optional<InactivePlace> InactiveEntryOf(const Model& model, std::string_view path) {
    return InactivePlaceOf(model, "MenuItem",
                           [&](const Element& element) { return EqualText(element.Value("Path"), path); });
}

std::optional<InactivePlace> InactiveItem(const Model& model, std::string_view name) {
    return InactivePlaceOf(model, "ExplorerItem",
                           [&](const Element& element) { return EqualText(element.Value("Name"), name); });
}

void CheckReach(Model& model, const MenuPlan& plan, const Code& code, Report& report) {
    ItemReach(model, report).Check();
    for (const Window& window : model.windows) {
        CheckWindow(window, report);
        CheckModal(window, report);
    }
    CheckUnused(model, code, report);
    CheckHidden(model, code, report);
    CheckWindowList(model, plan, report);
    CheckPreferences(model, report);
    CheckContextTitles(model, code, report);
    CheckPageTitles(model, plan, report);
}

} // namespace corvane::check
