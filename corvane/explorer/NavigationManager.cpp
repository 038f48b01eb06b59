#include "corvane/explorer/NavigationManager.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerItemBase.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/IExplorerItemAccess.h"
#include "corvane/menus/MenuManager.h"
#include "corvane/platform/Entering.h"
#include "corvane/platform/Handlers.h"
#include "corvane/platform/controls/MdiForm.h"
#include "corvane/platform/controls/PanelForm.h"
#include "corvane/services/ExplorerItemDef.h"
#include "corvane/services/PageDef.h"
#include "corvane/windows/IPage.h"
#include "corvane/windows/WindowManager.h"

namespace corvane {

NavigationManager::NavigationManager()
    : m_oMenuManager(New<corvane::MenuManager>()), m_oExplorerManager(New<corvane::ExplorerManager>()) {
    SubscribeToExplorer();
}

NavigationManager::~NavigationManager() = default;

// The object lives on while its handler runs: what is called from there may end the application.
void NavigationManager::Subscribe(Event<const Ref<Object>&>& oEvent, Handler fnHandler) {
    m_aSubscriptions.push_back(oEvent.Subscribe([this, fnHandler](const Ref<Object>& oObject) {
        const Ref<NavigationManager> oSelf(this);
        (this->*fnHandler)(oObject);
    }));
}

void NavigationManager::SubscribeToExplorer() {
    Subscribe(m_oExplorerManager->onAdd, &NavigationManager::m_oExplorerManager_onAdd);
    Subscribe(m_oExplorerManager->onRemove, &NavigationManager::m_oExplorerManager_onRemove);
    Subscribe(m_oExplorerManager->OnOpen, &NavigationManager::m_oExplorerManager_OnOpen);
    Subscribe(m_oExplorerManager->OnActive, &NavigationManager::m_oExplorerManager_OnActive);
    Subscribe(m_oExplorerManager->OnInactive, &NavigationManager::m_oExplorerManager_OnInactive);
    Subscribe(m_oExplorerManager->OnContextMenu, &NavigationManager::m_oExplorerManager_OnContextMenu);
}

void NavigationManager::SubscribeToWindows() {
    Subscribe(m_oWindowManager->PageInitializeEvent, &NavigationManager::m_oWindowManager_PageInitialize);
    Subscribe(m_oWindowManager->PageActivateEvent, &NavigationManager::m_oWindowManager_PageActivate);
    Subscribe(m_oWindowManager->PageDeactivateEvent, &NavigationManager::m_oWindowManager_PageDeactivate);
}

void NavigationManager::Initialize(const Ref<MdiForm>& frmMain, const Ref<PanelForm>& frmExplorerPanel) try {
    const Ref<NavigationManager> oSelf(this);
    m_frmMain = frmMain;
    m_oMenuManager->Initialize(ToObject(m_frmMain->Invoke("ActiveBar", {})).As<ActiveBar>());
    if (CorvaneMain::HasEnded())
        return;
    m_oExplorerManager->Initialize(ToObject(m_frmMain->Invoke("ActiveBar", {})).As<ActiveBar>(), frmExplorerPanel);
    m_oWindowManager = CorvaneMain::Framework()->WindowManager();
    SubscribeToWindows();
} catch (...) {
    Reraise("NavigationManager", "Initialize");
}

bool NavigationManager::IsExplorerItemAlive(const Ref<Object>& oExplorerItemSubclass) const noexcept {
    try {
        (void)oExplorerItemSubclass.As<IExplorerItemAccess>()->ExplorerItem().As<ExplorerItemBase>();
        return true;
    } catch (...) {
        return false; // a test, used before a call that would fail
    }
}

Ref<corvane::ExplorerManager> NavigationManager::ExplorerManager() const {
    return m_oExplorerManager;
}

Ref<corvane::MenuManager> NavigationManager::MenuManager() const {
    return m_oMenuManager;
}

void NavigationManager::SetCaption(const std::string& sCaption) try { m_frmMain->SetCaption(sCaption); } catch (...) {
    Reraise("NavigationManager", "Caption (Let)");
}

void NavigationManager::m_oExplorerManager_onAdd(const Ref<Object>& oExplorerItemObj) try {
    const Entering oEntering(oExplorerItemObj);
    const Ref<IExplorerItem> oItem = CorvaneMain::QueryExplorerItem(oExplorerItemObj);
    if (CorvaneMain::IsActionsProvider(oItem))
        m_oMenuManager->OnActionsProviderAdd(oExplorerItemObj, oItem.As<IActionsProvider>(),
                                             oItem->ExplorerItemDef()->ActionItemDefs(), false);
} catch (...) {
    Reraise("NavigationManager", "m_oExplorerManager_onAdd");
}

void NavigationManager::m_oExplorerManager_onRemove(const Ref<Object>& oExplorerItemObj) try {
    const Entering oEntering(oExplorerItemObj);
    const Ref<IExplorerItem> oItem = CorvaneMain::QueryExplorerItem(oExplorerItemObj);
    if (CorvaneMain::IsActionsProvider(oItem))
        m_oMenuManager->OnActionsProviderRemove(oExplorerItemObj, oItem.As<IActionsProvider>());
} catch (...) {
    Reraise("NavigationManager", "m_oExplorerManager_onRemove");
}

void NavigationManager::m_oExplorerManager_OnActive(const Ref<Object>& oExplorerItemObj) try {
    const Entering oEntering(oExplorerItemObj);
    const Ref<IExplorerItem> oItem = CorvaneMain::QueryExplorerItem(oExplorerItemObj);
    if (CorvaneMain::IsActionsProvider(oItem))
        m_oMenuManager->OnActionsProviderActive(oExplorerItemObj, oItem.As<IActionsProvider>(),
                                                oItem->ExplorerItemDef()->ActionItemDefs());
} catch (...) {
    Reraise("NavigationManager", "m_oExplorerManager_OnActive");
}

void NavigationManager::m_oExplorerManager_OnInactive(const Ref<Object>& oExplorerItemObj) try {
    const Entering oEntering(oExplorerItemObj);
    const Ref<IExplorerItem> oItem = CorvaneMain::QueryExplorerItem(oExplorerItemObj);
    if (CorvaneMain::IsActionsProvider(oItem))
        m_oMenuManager->OnActionsProviderInActive(oExplorerItemObj, oItem.As<IActionsProvider>(),
                                                  oItem->ExplorerItemDef()->ActionItemDefs());
} catch (...) {
    Reraise("NavigationManager", "m_oExplorerManager_OnInactive");
}

void NavigationManager::m_oExplorerManager_OnContextMenu(const Ref<Object>& oExplorerItemObj) try {
    const Entering oEntering(oExplorerItemObj);
    const Ref<IExplorerItem> oItem = CorvaneMain::QueryExplorerItem(oExplorerItemObj);
    if (CorvaneMain::IsActionsProvider(oItem))
        m_oMenuManager->OnContextMenu(oItem);
} catch (...) {
    Reraise("NavigationManager", "m_oExplorerManager_OnContextMenu");
}

// The item's default action is fired whether or not it is enabled.
void NavigationManager::m_oExplorerManager_OnOpen(const Ref<Object>& oExplorerItemObj) try {
    const Entering oEntering(oExplorerItemObj);
    const Ref<IExplorerItem> oItem = CorvaneMain::QueryExplorerItem(oExplorerItemObj);
    const std::string sDefaultAction = oItem->ExplorerItemDef()->DefaultAction();
    if (!sDefaultAction.empty() && CorvaneMain::IsActionsProvider(oItem))
        oItem.As<IActionsProvider>()->ActionItems()->Item(sDefaultAction)->OnAction();
} catch (...) {
    Reraise("NavigationManager", "m_oExplorerManager_OnOpen");
}

void NavigationManager::m_oWindowManager_PageInitialize(const Ref<Object>& oPageObj) try {
    const Entering oEntering(oPageObj);
    const Ref<IPage> oPage = CorvaneMain::QueryPage(oPageObj);
    if (CorvaneMain::IsActionsProvider(oPage))
        m_oMenuManager->OnActionsProviderAdd(oPageObj, oPage.As<IActionsProvider>(), oPage->PageDef()->ActionItemDefs(),
                                             false);
} catch (...) {
    Reraise("NavigationManager", "m_oWindowManager_PageInitialize");
}

void NavigationManager::m_oWindowManager_PageActivate(const Ref<Object>& oPageObj) try {
    const Entering oEntering(oPageObj);
    const Ref<IPage> oPage = CorvaneMain::QueryPage(oPageObj);
    if (!CorvaneMain::IsActionsProvider(oPage))
        return;
    m_oMenuManager->OnActionsProviderActive(oPageObj, oPage.As<IActionsProvider>(), oPage->PageDef()->ActionItemDefs());
    if (oPage->PageDef()->HideExplorer())
        m_oExplorerManager->Hide();
} catch (...) {
    Reraise("NavigationManager", "m_oWindowManager_PageActivate");
}

void NavigationManager::m_oWindowManager_PageDeactivate(const Ref<Object>& oPageObj) try {
    const Entering oEntering(oPageObj);
    const Ref<IPage> oPage = CorvaneMain::QueryPage(oPageObj);
    if (CorvaneMain::IsActionsProvider(oPage))
        m_oMenuManager->OnActionsProviderInActive(oPageObj, oPage.As<IActionsProvider>(),
                                                  oPage->PageDef()->ActionItemDefs());
} catch (...) {
    Reraise("NavigationManager", "m_oWindowManager_PageDeactivate");
}

} // namespace corvane
