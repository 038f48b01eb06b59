#include "tests/mutation/Outcome.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/WindowManager.h"
#include "headless/Document.h"
#include "headless/ModelHost.h"
#include "headless/Steps.h"

#include <algorithm>
#include <functional>
#include <sstream>

namespace corvane::mutation {

namespace {

class Reach {
public:
    explicit Reach(const inspect::ModelHost& host) : m_bands(host.Bar()->Bands()) {
        const Ref<ServiceManager> services = CorvaneMain::Framework()->ServiceManager();
        for (const auto& service : services->ServiceDefs())
            Own(service->ActionItemDefs());
        for (const auto& item : services->ExplorerItemDefs())
            Own(item->ActionItemDefs());
        for (const auto& window : services->WindowDefs())
            for (const auto& page : window->PageDefs())
                Own(page->ActionItemDefs());
        Walk("Main");
        for (const auto& band : m_bands->All())
            if (band->Kind() == BandKind::Toolbar)
                for (const auto& tool : band->Tools()->All())
                    m_buttons.insert(&tool->Master());
        for (const auto& service : services->ServiceDefs())
            Look(service->MenuItemDefs(), "");
        for (const auto& item : services->ExplorerItemDefs())
            Look(item->MenuItemDefs(), "Context." + item->Name());
        for (const auto& window : services->WindowDefs())
            for (const auto& page : window->PageDefs())
                Look(page->MenuItemDefs(), "");
        // Of preference pages no menus are built.
        for (const auto& page : services->PreferencePageDefs())
            for (const auto& entry : page->MenuItemDefs())
                m_unreached.insert("entry " + entry->Key());
    }

    [[nodiscard]] std::set<std::string> Unreached() && { return std::move(m_unreached); }

private:
    void Own(const Ref<ActionItemDefCollection>& actions) {
        for (const auto& action : actions)
            if (action->Tool())
                m_owned.insert(&action->Tool()->Master());
    }

    // A title that no definition has is never shown.
    void Walk(const std::string& name) {
        const Ref<Band> band = m_bands->Find(name);
        if (!band || !m_seen.insert(FoldText(name)).second)
            return;
        for (const auto& tool : band->Tools()->All()) {
            const bool isOwned = m_owned.contains(&tool->Master()) || EqualText(tool->Name(), "View.Toolbars");
            if (!isOwned)
                continue;
            m_entries.insert({FoldText(name), &tool->Master()});
            if (!tool->DropDownBand().empty())
                Walk(tool->DropDownBand());
        }
    }

    void Look(const Ref<MenuItemDefCollection>& entries, const std::string& context) {
        for (const auto& entry : entries) {
            const Ref<Tool> tool = entry->ActionItemDef()->Tool();
            bool isThere = false;
            if (tool)
                switch (entry->MenuType()) {
                case MenuType::fwMenuTitle:
                case MenuType::fwMenuItem:
                    isThere = m_entries.contains(std::pair<std::string, const Tool*>(
                        FoldText(entry->Path().empty() ? "Main" : entry->Path()), &tool->Master()));
                    break;
                case MenuType::fwToolbarItem:
                    isThere = m_buttons.contains(&tool->Master());
                    break;
                case MenuType::fwContextMenuItem:
                case MenuType::fwContextMenuTitle:
                    isThere = HasContext(context, tool->Master(), entry->MenuType());
                    break;
                }
            if (!isThere)
                m_unreached.insert("entry " + entry->Key());
        }
    }

    // A submenu that is empty is none.
    [[nodiscard]] bool HasContext(const std::string& name, const Tool& master, MenuType type) const {
        const Ref<Band> band = name.empty() ? nullptr : m_bands->Find(name);
        if (!band || std::none_of(band->Tools()->All().begin(), band->Tools()->All().end(),
                                  [&](const auto& tool) { return &tool->Master() == &master; }))
            return false;
        return type != MenuType::fwContextMenuTitle;
    }

    Ref<BandCollection> m_bands;
    std::set<const Tool*> m_owned;
    std::set<std::string> m_seen;
    std::set<std::pair<std::string, const Tool*>> m_entries;
    std::set<const Tool*> m_buttons;
    std::set<std::string> m_unreached;
};

// A few of each kind are enough.
void AddUse(const Node& node, const std::string& tab, std::string& steps) {
    steps += "node " + tab + " " + node.Key() + "\ndblclick\n";
    constexpr std::size_t few = 2;
    for (std::size_t i = 0; i < std::min(few, node.Children().size()); ++i)
        AddUse(*node.Children()[i], tab, steps);
}

// At any depth below a tab or folder that is only a name objects come by AddToExplorer, which no stub calls. Items may
// be below themselves.
bool IsFilledByCodeAlone(const ExplorerItemDef& item) {
    std::set<const ExplorerItemDef*> seen;
    for (auto above = item.ParentExplorerItemDef(); above && seen.insert(above.Get()).second;
         above = above->ParentExplorerItemDef()) {
        const bool isTop =
            above->ExplorerItemType() == ExplorerItemType::fwExplorerItemFolder || !above->ParentExplorerItemDef();
        if (isTop && above->ProgID().empty())
            return true;
    }
    return false;
}

// The kinds of items without a node, where each object of a kind has two children.
std::set<std::string> UnreachedItems(const inspect::ModelHost& host) {
    std::set<std::string> shown;
    const std::function<void(const std::vector<Node*>&)> add = [&](const std::vector<Node*>& nodes) {
        for (const Node* node : nodes) {
            shown.insert(FoldText(node->Key().substr(0, node->Key().find('.'))));
            add(node->Children());
        }
    };
    for (const auto& tree : host.Trees())
        add(tree->GetNodes()->Roots());
    std::set<std::string> unreached;
    for (const auto& item : CorvaneMain::Framework()->ServiceManager()->ExplorerItemDefs())
        if (item->ExplorerItemType() == ExplorerItemType::fwExplorerItemDefault &&
            !shown.contains(FoldText(item->Name())) && !IsFilledByCodeAlone(*item))
            unreached.insert("item " + item->Name());
    return unreached;
}

std::set<std::string> AllThatIsThere() {
    std::set<std::string> all;
    const Ref<ServiceManager> services = CorvaneMain::Framework()->ServiceManager();
    const auto Add = [&](const std::string& of, const Ref<MenuItemDefCollection>& entries) {
        for (const auto& entry : entries)
            all.insert("entry " + of + entry->Key());
    };
    for (const auto& service : services->ServiceDefs()) {
        all.insert("service " + service->Name());
        Add("", service->MenuItemDefs());
    }
    for (const auto& item : services->ExplorerItemDefs()) {
        all.insert("item " + item->Name());
        Add(item->Name() + ": ", item->MenuItemDefs());
    }
    for (const auto& window : services->WindowDefs()) {
        all.insert("window " + window->Name());
        for (const auto& page : window->PageDefs())
            Add(window->Name() + ": ", page->MenuItemDefs());
    }
    return all;
}

// All that a user can do. The command that ends the application is left out.
void UseAll(inspect::ModelHost& host) {
    std::string steps;
    for (const auto& tool : host.Bar()->Tools()->All())
        if (!EqualText(tool->Name(), "File.Exit"))
            steps += "click " + tool->Name() + "\n";
    for (std::size_t tab = 0; tab < host.Trees().size(); ++tab) {
        steps += "tab " + std::to_string(tab) + "\n";
        for (const Node* node : host.Trees()[tab]->GetNodes()->Roots())
            AddUse(*node, std::to_string(tab), steps);
    }
    for (const auto& window : CorvaneMain::Framework()->ServiceManager()->WindowDefs())
        if (!window->Name().starts_with(' ') && !window->Name().ends_with(' ')) // which steps can't name
            steps += "open " + window->Name() + "\n";
    std::istringstream stream(steps);
    inspect::TakeAll(host, inspect::ReadSteps(stream, "steps"));
}

std::string FirstShown(const inspect::ModelHost& host) {
    if (host.FirstFailure())
        return host.FirstFailure()->Description;
    for (const auto& entry : host.Recorded().log)
        if (entry.shown)
            return entry.context + entry.failure.Description;
    return {};
}

} // namespace

Outcome Run(const std::string& folder) {
    Outcome outcome;
    inspect::ModelHost host({folder, true, nullptr});
    outcome.isStarted = host.Start();
    outcome.failure = FirstShown(host);
    if (!outcome.isStarted)
        return outcome;
    host.Do([] { CorvaneMain::Framework()->NavigationManager()->ExplorerManager()->Populate(); });
    outcome.isFilled = !host.FirstFailure();
    outcome.unreached = Reach(host).Unreached();
    outcome.unreached.merge(UnreachedItems(host));
    outcome.shown = AllThatIsThere();
    outcome.document = inspect::JsonDocument(host, {});
    UseAll(host);
    if (outcome.failure.empty())
        outcome.failure = FirstShown(host);
    return outcome;
}

} // namespace corvane::mutation
