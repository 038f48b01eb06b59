#include "desktop/application/ExplorerLink.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/IExplorerItemAccess.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/windows/WindowManager.h"
#include "desktop/explorer/ExplorerPage.h"
#include "desktop/explorer/ExplorerPanel.h"

#include <QTimer>
#include <algorithm>

namespace corvane::desktop {

void ExplorerLink::Follow(const Ref<MdiForm>& mainForm) {
    const Ref<Framework> framework = CorvaneMain::Framework();
    const Ref<ExplorerManager> explorer = framework->NavigationManager()->ExplorerManager();
    const auto hold = [this](Subscription subscription) { m_subscriptions.push_back(std::move(subscription)); };
    hold(mainForm->OnUnload.Subscribe([this](bool&) { Leave(); }));
    hold(explorer->OnActive.Subscribe([this, explorer](const Ref<Object>& item) {
        m_activeObject = item;
        m_opener = {}; // what comes now may be this item's
        m_active = {explorer->TreeView(), explorer->TreeView() ? explorer->TreeView()->SelectedItem() : nullptr};
    }));
    hold(explorer->OnInactive.Subscribe([this](const Ref<Object>&) {
        m_activeObject = nullptr;
        m_active = {};
    }));
    // Behind the library's subscription: what the double click opens is there, or comes once a job has ended.
    hold(explorer->OnOpen.Subscribe([this](const Ref<Object>&) {
        m_opener = m_active;
        Opened();
    }));
    const auto windows = framework->WindowManager();
    hold(windows->WindowInitializeEvent.Subscribe([this](const Ref<Window>& window) { WindowMade(window); }));
    hold(windows->WindowActivateEvent.Subscribe([this](const Ref<Window>& window) {
        m_front = window.Get();
        Show();
    }));
    hold(windows->WindowTerminateEvent.Subscribe([this](const Ref<Window>& window) {
        m_items.erase(window.Get());
        std::erase(m_new, window.Get());
        if (m_front == window.Get())
            m_front = nullptr;
        Show();
    }));
}

void ExplorerLink::Leave() {
    m_subscriptions.clear();
    m_items.clear();
    m_new.clear();
    m_activeObject = nullptr;
    m_active = m_opener = {};
    m_front = nullptr;
}

std::vector<Ref<TreeView>> ExplorerLink::Trees() const {
    std::vector<Ref<TreeView>> trees;
    for (int tab = 0; const ExplorerPage* page = m_window.Explorer().Page(tab); ++tab)
        trees.push_back(page->Tree()->Tree());
    return trees;
}

bool ExplorerLink::IsThere(const Item& item) {
    return item.node && item.tree && item.tree->GetNodes()->Find(item.node->Key()) == item.node;
}

// Nodes have the key of their item's object as a tag.
ExplorerLink::Item ExplorerLink::ItemOfObject(const Ref<Object>& object) const {
    if (!object || !object.TryAs<IExplorerItemAccess>())
        return {};
    const std::string tag = std::to_string(object->ObjectKey());
    for (const auto& tree : Trees())
        for (std::vector<Node*> waiting = tree->GetNodes()->Roots(); !waiting.empty();) {
            Node* node = waiting.back();
            waiting.pop_back();
            if (node->Tag() == tag)
                return {tree, Ref<Node>(node)};
            waiting.insert(waiting.end(), node->Children().begin(), node->Children().end());
        }
    return {};
}

void ExplorerLink::CommandBegins(const Ref<Object>& provider) {
    m_opener = provider && provider == m_activeObject ? m_active : Item();
}

void ExplorerLink::WindowMade(const Ref<Window>& window) {
    Item item = ItemOfObject(window->BusinessContext());
    if (!item.node)
        item = m_opener;
    if (item.node) {
        m_items[window.Get()] = std::move(item);
        return;
    }
    if (m_new.empty())
        QTimer::singleShot(0, this, [this] { m_new.clear(); });
    m_new.push_back(window.Get());
}

void ExplorerLink::Opened() {
    for (const Window* window : m_new)
        m_items[window] = m_opener;
    m_new.clear();
    Show();
}

void ExplorerLink::SetOn(bool on) {
    m_isOn = on;
    Show();
}

void ExplorerLink::Show() {
    const auto it = m_items.find(m_front);
    const Item item = m_isOn && it != m_items.end() && IsThere(it->second) ? it->second : Item();
    for (int tab = 0; const ExplorerPage* page = m_window.Explorer().Page(tab); ++tab)
        page->Tree()->Mark(page->Tree()->Tree() == item.tree ? item.node : nullptr);
}

std::string ExplorerLink::ItemOf(const Window& window) const {
    const auto it = m_items.find(&window);
    return it == m_items.end() || !IsThere(it->second) ? std::string()
                                                       : it->second.tree->Name() + "\n" + it->second.node->Key();
}

void ExplorerLink::SetItem(const Window& window, const std::string& item) {
    const std::size_t end = item.find('\n');
    if (end == std::string::npos || m_items.contains(&window))
        return;
    for (const auto& tree : Trees())
        if (EqualText(tree->Name(), item.substr(0, end)))
            if (const Ref<Node> node = tree->GetNodes()->Find(item.substr(end + 1)))
                m_items[&window] = {tree, node};
    Show();
}

} // namespace corvane::desktop

#include "moc_ExplorerLink.cpp"
