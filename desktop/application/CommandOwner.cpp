#include "desktop/application/CommandOwner.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/IExplorerItem.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/MenuManager.h"
#include "corvane/services/ExplorerItemDef.h"
#include "corvane/services/PageDef.h"
#include "corvane/windows/IPage.h"
#include "corvane/windows/WindowManager.h"

#include <QApplication>

namespace corvane::desktop {

namespace {

template <class Definition>
void Activate(const Ref<Object>& providerObj, const Ref<Object>& base, const Ref<Definition>& definition) {
    if (const auto provider = base.TryAs<IActionsProvider>())
        CorvaneMain::Framework()->NavigationManager()->MenuManager()->OnActionsProviderActive(
            providerObj, provider, definition->ActionItemDefs());
}

} // namespace

CommandOwner::CommandOwner(const Ref<MdiForm>& mainForm, PartFunction partOf, Guard guard)
    : m_partOf(std::move(partOf)), m_guard(std::move(guard)) {
    m_soon.setSingleShot(true);
    m_soon.setInterval(0);
    connect(&m_soon, &QTimer::timeout, this, [this] { m_guard([this] { Give(); }); });
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* to) {
        if (to && !m_subscriptions.empty())
            GoTo(m_partOf(to));
    });
    m_subscriptions.push_back(mainForm->OnUnload.Subscribe([this](bool&) { End(); }));
    SubscribeToExplorer();
    SubscribeToWindows();
}

void CommandOwner::SubscribeToExplorer() {
    const Ref<ExplorerManager> explorer = CorvaneMain::Framework()->NavigationManager()->ExplorerManager();
    m_subscriptions.push_back(explorer->OnActive.Subscribe([this, explorer](const Ref<Object>& item) {
        m_item = item;
        m_tree = explorer->TreeView();
        m_node = m_tree ? m_tree->SelectedItem() : nullptr;
        if (m_page && IsIn(Part::Window))
            GiveSoon(); // a command of the page has chosen it
        else
            m_owner = Part::Explorer;
    }));
    const auto ItemGoes = [this](const Ref<Object>& item) {
        if (m_item == item)
            m_item = nullptr;
        GiveSoon();
    };
    m_subscriptions.push_back(explorer->OnInactive.Subscribe(ItemGoes));
    m_subscriptions.push_back(explorer->onRemove.Subscribe(ItemGoes));
    // A new item takes the tools of its kind.
    m_subscriptions.push_back(explorer->onAdd.Subscribe([this](const Ref<Object>&) { GiveSoon(); }));
}

void CommandOwner::SubscribeToWindows() {
    const auto windows = CorvaneMain::Framework()->WindowManager();
    m_subscriptions.push_back(windows->PageActivateEvent.Subscribe([this](const Ref<Object>& page) {
        m_page = page;
        m_owner = Part::Window;
    }));
    m_subscriptions.push_back(windows->PageDeactivateEvent.Subscribe([this](const Ref<Object>&) {
        m_page = nullptr;
        GiveSoon();
    }));
}

void CommandOwner::End() {
    m_soon.stop();
    m_item = nullptr;
    m_page = nullptr;
    m_subscriptions.clear();
}

void CommandOwner::GoTo(Part part) {
    if (part == Part::Nowhere || part == m_owner)
        return;
    m_owner = part;
    GiveSoon();
}

bool CommandOwner::IsIn(Part part) const {
    const QWidget* focus = QApplication::focusWidget();
    return focus && m_partOf(focus) == part;
}

void CommandOwner::Give() {
    if (m_owner == Part::Window) {
        GiveToItem();
        GiveToPage();
    } else {
        GiveToPage();
        GiveToItem();
    }
}

void CommandOwner::GiveToItem() {
    if (m_item && !(m_node && m_tree->GetNodes()->Find(m_node->Key()) == m_node))
        m_item = nullptr;
    if (const Ref<IExplorerItem> item = m_item ? CorvaneMain::QueryExplorerItem(m_item) : nullptr)
        Activate(m_item, item, item->ExplorerItemDef());
}

void CommandOwner::GiveToPage() {
    if (const Ref<IPage> page = m_page ? CorvaneMain::QueryPage(m_page) : nullptr)
        Activate(m_page, page, page->PageDef());
}

} // namespace corvane::desktop

#include "moc_CommandOwner.cpp"
