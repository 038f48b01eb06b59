#include "tests/mutation/Outcome.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/WindowManager.h"
#include "headless/Document.h"
#include "headless/ModelHost.h"

#include <algorithm>
#include <functional>

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
            !shown.contains(FoldText(item->Name())))
            unreached.insert("item " + item->Name());
    return unreached;
}

} // namespace

Outcome Run(const std::string& folder) {
    Outcome outcome;
    inspect::ModelHost host({folder, true, nullptr});
    outcome.isStarted = host.Start();
    if (outcome.isStarted) {
        host.Do([] { CorvaneMain::Framework()->NavigationManager()->ExplorerManager()->Populate(); });
        outcome.isFilled = !host.FirstFailure();
        outcome.unreached = Reach(host).Unreached();
        outcome.unreached.merge(UnreachedItems(host));
    }
    const auto& log = host.Recorded().log;
    outcome.hasMessage = std::any_of(log.begin(), log.end(), [](const auto& entry) { return entry.shown; });
    outcome.document = inspect::JsonDocument(host, {});
    return outcome;
}

} // namespace corvane::mutation
