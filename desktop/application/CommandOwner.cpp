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
void Activate(const Ref<Object>& oProviderObj, const Ref<Object>& oBase, const Ref<Definition>& oDefinition) {
    if (const auto oProvider = oBase.TryAs<IActionsProvider>())
        CorvaneMain::Framework()->NavigationManager()->MenuManager()->OnActionsProviderActive(
            oProviderObj, oProvider, oDefinition->ActionItemDefs());
}

} // namespace

CommandOwner::CommandOwner(const Ref<MdiForm>& frmMain, PartFunction fnPartOf, GuardFunction fnGuard)
    : m_fnPartOf(std::move(fnPartOf)), m_fnGuard(std::move(fnGuard)) {
    m_oSoon.setSingleShot(true);
    m_oSoon.setInterval(0);
    connect(&m_oSoon, &QTimer::timeout, this, [this] { m_fnGuard([this] { Give(); }); });
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* pTo) {
        if (pTo && !m_aSubscriptions.empty())
            GoTo(m_fnPartOf(pTo));
    });
    m_aSubscriptions.push_back(frmMain->OnUnload.Subscribe([this](bool&) { End(); }));
    HearExplorer();
    HearWindows();
}

void CommandOwner::HearExplorer() {
    const Ref<ExplorerManager> oExplorer = CorvaneMain::Framework()->NavigationManager()->ExplorerManager();
    m_aSubscriptions.push_back(oExplorer->OnActive.Subscribe([this, oExplorer](const Ref<Object>& oItem) {
        m_oItem = oItem;
        m_oTree = oExplorer->TreeView();
        m_oNode = m_oTree ? m_oTree->SelectedItem() : nullptr;
        if (m_oPage && IsIn(Part::Window))
            GiveSoon(); // a command of the page has chosen it
        else
            m_eOwner = Part::Explorer;
    }));
    const auto ItemGoes = [this](const Ref<Object>& oItem) {
        if (m_oItem == oItem)
            m_oItem = nullptr;
        GiveSoon();
    };
    m_aSubscriptions.push_back(oExplorer->OnInactive.Subscribe(ItemGoes));
    m_aSubscriptions.push_back(oExplorer->onRemove.Subscribe(ItemGoes));
    // A new item takes the tools of its kind.
    m_aSubscriptions.push_back(oExplorer->onAdd.Subscribe([this](const Ref<Object>&) { GiveSoon(); }));
}

void CommandOwner::HearWindows() {
    const auto oWindows = CorvaneMain::Framework()->WindowManager();
    m_aSubscriptions.push_back(oWindows->PageActivateEvent.Subscribe([this](const Ref<Object>& oPage) {
        m_oPage = oPage;
        m_eOwner = Part::Window;
    }));
    m_aSubscriptions.push_back(oWindows->PageDeactivateEvent.Subscribe([this](const Ref<Object>&) {
        m_oPage = nullptr;
        GiveSoon();
    }));
}

void CommandOwner::End() {
    m_oSoon.stop();
    m_oItem = nullptr;
    m_oPage = nullptr;
    m_aSubscriptions.clear();
}

void CommandOwner::GoTo(Part ePart) {
    if (ePart == Part::Nowhere || ePart == m_eOwner)
        return;
    m_eOwner = ePart;
    GiveSoon();
}

bool CommandOwner::IsIn(Part ePart) const {
    const QWidget* pFocus = QApplication::focusWidget();
    return pFocus && m_fnPartOf(pFocus) == ePart;
}

void CommandOwner::Give() {
    if (m_eOwner == Part::Window) {
        GiveToItem();
        GiveToPage();
    } else {
        GiveToPage();
        GiveToItem();
    }
}

void CommandOwner::GiveToItem() {
    if (m_oItem && !(m_oNode && m_oTree->GetNodes()->Find(m_oNode->Key()) == m_oNode))
        m_oItem = nullptr;
    if (const Ref<IExplorerItem> oItem = m_oItem ? CorvaneMain::QueryExplorerItem(m_oItem) : nullptr)
        Activate(m_oItem, oItem, oItem->ExplorerItemDef());
}

void CommandOwner::GiveToPage() {
    if (const Ref<IPage> oPage = m_oPage ? CorvaneMain::QueryPage(m_oPage) : nullptr)
        Activate(m_oPage, oPage, oPage->PageDef());
}

} // namespace corvane::desktop
