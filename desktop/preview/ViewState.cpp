#include "desktop/preview/ViewState.h"

#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/services/WindowDef.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "desktop/explorer/ExplorerPanel.h"
#include "desktop/explorer/ExplorerTree.h"

#include <QApplication>
#include <QLineEdit>
#include <QMenuBar>
#include <QScrollBar>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <algorithm>

namespace corvane::desktop {

namespace {

Ref<WindowManager> Windows() {
    const Ref<Framework> oFramework = Singleton::Framework();
    return oFramework ? oFramework->WindowManager() : nullptr;
}

std::string KeyOf(const Window& oWindow) {
    return oWindow.Key() == ToText(oWindow.ObjectKey()) ? std::string() : oWindow.Key();
}

Ref<Window> Find(const ViewState::OpenWindow& oOpen) {
    const auto oManager = Windows();
    if (!oManager)
        return nullptr;
    for (const auto& oWindow : oManager->Windows())
        if (EqualText(oWindow->WindowDef()->Name(), oOpen.sName) && EqualText(KeyOf(*oWindow), oOpen.sKey))
            return oWindow;
    return nullptr;
}

Ref<Form> FormOf(const Application& oApplication, const Window& oWindow) {
    for (const auto& frm : oApplication.MainForm()->Forms())
        if (const auto oForm = frm.TryAs<WindowForm>(); oForm && oForm->ShownWindow().Get() == &oWindow)
            return frm;
    return nullptr;
}

bool IsDefined(const std::string& sWindow) {
    const Ref<Framework> oFramework = Singleton::Framework();
    const auto oManager = oFramework ? oFramework->ServiceManager() : nullptr;
    return oManager && oManager->WindowDefs()->HasKey(sWindow);
}

std::string ToolOf(const Application& oApplication, const QAction* pAction) {
    auto& oBars = const_cast<Application&>(oApplication).Window().Bars();
    const Ref<Tool> oTool = pAction ? oBars.Actions().InstanceOf(pAction) : nullptr;
    return oTool ? oTool->Name() : std::string();
}

QAction* ActionOf(const Application& oApplication, const QWidget& oWidget, const std::string& sTool) {
    for (QAction* pAction : oWidget.actions())
        if (!sTool.empty() && pAction->isVisible() && EqualText(ToolOf(oApplication, pAction), sTool))
            return pAction;
    return nullptr;
}

} // namespace

ViewState ViewState::Of(Application& oApplication) {
    ViewState oState;
    oState.TakeTrees(oApplication);
    oState.TakeWindows(oApplication);
    oState.TakeMenu(oApplication);
    return oState;
}

void ViewState::TakeTrees(Application& oApplication) {
    const ExplorerPanel& oPanel = oApplication.Window().Explorer();
    for (int i = 0; oPanel.Page(i); ++i) {
        const ExplorerTree* pTree = oPanel.Page(i)->Tree();
        const Ref<Node> oSelected = pTree->Tree()->SelectedItem();
        aTrees.push_back({pTree->Tree()->Name(), oSelected ? oSelected->Key() : std::string(),
                          oPanel.Page(i)->Filter()->text(), pTree->verticalScrollBar()->value()});
        if (pTree->hasFocus())
            eFocus = Focus::Tree;
        else if (oPanel.Page(i)->Filter()->hasFocus())
            eFocus = Focus::Filter;
    }
    const auto oBand = oApplication.Bar()->Bands()->Find("Explorer");
    bExplorerIsShown = oBand && oBand->Visible() && oBand->WasVisibleSet();
}

void ViewState::TakeWindows(Application& oApplication) {
    const auto oManager = Windows();
    if (!oManager || !oManager->Windows())
        return;
    for (const auto& oWindow : oManager->Windows()) {
        OpenWindow oOpen;
        oOpen.sName = oWindow->WindowDef()->Name();
        oOpen.sKey = KeyOf(*oWindow);
        oOpen.bModal = oWindow->IsModal();
        oOpen.bActive = oWindow == oManager->ActiveWindow();
        oOpen.lPage = oWindow->ActivePageIndex();
        oOpen.lPageWidth = oWindow->WindowDef()->DefPageWidth();
        oOpen.lPageHeight = oWindow->WindowDef()->DefPageHeight();
        if (const Ref<Form> frm = FormOf(oApplication, *oWindow)) {
            oOpen.bChild = frm->MDIChild();
            oOpen.eState = frm->WindowState();
            oOpen.fLeft = frm->Left();
            oOpen.fTop = frm->Top();
            oOpen.fWidth = frm->Width();
            oOpen.fHeight = frm->Height();
        }
        aWindows.push_back(std::move(oOpen));
    }
}

// From the menu on top down to what it hangs on.
void ViewState::TakeMenu(Application& oApplication) {
    auto* pMenu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (!pMenu)
        return;
    if (const std::string sLit = ToolOf(oApplication, pMenu->activeAction()); !sLit.empty())
        aMenus.push_back(sLit);
    while (true) {
        oMenuPlace = pMenu->pos();
        QWidget* pBelow = pMenu->parentWidget();
        if (qobject_cast<QMenuBar*>(pBelow) || qobject_cast<QToolBar*>(pBelow)) {
            eMenuRoot = qobject_cast<QMenuBar*>(pBelow) ? MenuRoot::MenuBar : MenuRoot::Toolbar;
            aMenus.push_back(ToolOf(oApplication, pMenu->menuAction()));
            break;
        }
        auto* pBelowMenu = qobject_cast<QMenu*>(pBelow);
        if (!pBelowMenu) {
            // The library waits for the menu of a node; others are the toolkit's.
            eMenuRoot = oApplication.Failures().Entry() != 0 ? MenuRoot::Explorer : MenuRoot::None;
            break;
        }
        aMenus.push_back(ToolOf(oApplication, pMenu->menuAction()));
        pMenu = pBelowMenu;
    }
    std::reverse(aMenus.begin(), aMenus.end());
}

// The node of the current tab is clicked, as its item was the active one; a click on no other is heard by anybody.
void ViewState::RestoreTrees(Application& oApplication) const {
    const ExplorerPanel& oPanel = oApplication.Window().Explorer();
    const auto oTabs = oApplication.Panel()->Control("tabExplorer").As<TabStrip>();
    for (int i = 0; ExplorerPage* pPage = oPanel.Page(i); ++i) {
        const Ref<TreeView>& oTree = pPage->Tree()->Tree();
        const auto it = std::find_if(aTrees.begin(), aTrees.end(),
                                     [&](const Tree& oKept) { return EqualText(oKept.sName, oTree->Name()); });
        if (it == aTrees.end())
            continue;
        const bool bIsCurrent = oTabs && oTree->Container() == oTabs->Tab(); // the panel draws it a moment later
        if (!it->sFilter.isEmpty())
            pPage->Filter()->setText(it->sFilter);
        if (const Ref<Node> oNode = it->sSelected.empty() ? nullptr : oTree->GetNodes()->Find(it->sSelected)) {
            oApplication.ByHost([&] { bIsCurrent ? oTree->ClickNode(oNode) : oTree->SetSelectedItem(oNode); });
        }
        pPage->Tree()->Sync();
        pPage->Tree()->verticalScrollBar()->setValue(it->nScrolled);
        if (eFocus != Focus::Elsewhere && bIsCurrent)
            eFocus == Focus::Tree ? pPage->Tree()->setFocus() : pPage->Filter()->setFocus();
    }
}

// A size that the definition gives anew is what the author wants to see.
void ViewState::Place(Application& oApplication, const OpenWindow& oOpen) {
    const Ref<Window> oWindow = Find(oOpen);
    if (!oWindow)
        return;
    oApplication.ByHost([&] {
        const Ref<WindowDef> oDef = oWindow->WindowDef();
        if (oOpen.lPage > 0 && oOpen.lPage < oDef->PageDefs()->Count())
            oWindow->SetActivePageIndex(oOpen.lPage);
        const Ref<Form> frm = FormOf(oApplication, *oWindow);
        if (!frm || oOpen.bChild != frm->MDIChild() || oOpen.lPageWidth != oDef->DefPageWidth() ||
            oOpen.lPageHeight != oDef->DefPageHeight())
            return;
        if (oOpen.eState == FormState::Normal && frm->WindowState() == FormState::Normal)
            frm->Move(oOpen.fLeft, oOpen.fTop, oOpen.fWidth, oOpen.fHeight);
        else
            frm->SetWindowState(oOpen.eState);
    });
}

void ViewState::OpenAgain(Application& oApplication, const OpenWindow& oOpen) {
    using enum WindowStateConstants;
    if (Find(oOpen) || !IsDefined(oOpen.sName))
        return;
    if (oOpen.bModal) // in its own event loop
        QTimer::singleShot(0, &oApplication.Window(), [&oApplication, oOpen] { Place(oApplication, oOpen); });
    oApplication.ByHost([&] {
        (void)Windows()->OpenWindow(oOpen.sName, nullptr, nullptr, WindowShowModeConstants::cvDefinitionDefault,
                                    cvDefinitionDefault, MDIWindowTypeConstants::cvDefinitionDefault,
                                    WindowTypeConstants::cvDefinitionDefault,
                                    BusinessContextTypeConstants::cvDefinitionDefault,
                                    ShowApplyCommandConstants::cvDefinitionDefault, oOpen.sKey);
    });
}

void ViewState::Restore(Application& oApplication, const std::function<bool(const OpenWindow&)>& fnOpens) const {
    RestoreTrees(oApplication);
    for (const OpenWindow& oOpen : aWindows) {
        if (oOpen.bModal)
            continue;
        if (fnOpens(oOpen))
            OpenAgain(oApplication, oOpen);
        Place(oApplication, oOpen);
    }
    for (const OpenWindow& oOpen : aWindows)
        if (oOpen.bActive && !oOpen.bModal)
            (void)Activate(oApplication, oOpen);
}

bool ViewState::IsOpen(const OpenWindow& oWindow) {
    return Find(oWindow) != nullptr;
}

bool ViewState::Activate(Application& oApplication, const OpenWindow& oOpen) {
    const Ref<Window> oWindow = Find(oOpen);
    if (!oWindow)
        return false;
    oApplication.ByHost([&] {
        if (const Ref<Form> frm = FormOf(oApplication, *oWindow))
            frm->Activate();
    });
    return true;
}

// The button shows it as it would for the person, which returns when it is closed.
void ViewState::RestoreDropDown(Application& oApplication) const {
    for (QToolBar* pToolbar : oApplication.Window().findChildren<QToolBar*>()) {
        QAction* pAction = ActionOf(oApplication, *pToolbar, aMenus[0]);
        auto* pButton = pAction ? qobject_cast<QToolButton*>(pToolbar->widgetForAction(pAction)) : nullptr;
        if (!pButton || !pAction->menu() || !pButton->isVisible())
            continue;
        QTimer::singleShot(0, pAction->menu(), [oState = *this, &oApplication, pMenu = pAction->menu()] {
            oState.RestoreBelow(oApplication, pMenu);
        });
        pButton->showMenu();
        return;
    }
}

void ViewState::RestoreBelow(Application& oApplication, QMenu* pMenu) const {
    for (std::size_t iNext = 1; pMenu && iNext < aMenus.size(); ++iNext) {
        QAction* pAction = ActionOf(oApplication, *pMenu, aMenus[iNext]);
        if (pAction)
            pMenu->setActiveAction(pAction);
        pMenu = pAction && iNext + 1 < aMenus.size() ? pAction->menu() : nullptr;
    }
}

void ViewState::RestoreMenu(Application& oApplication) const {
    MainWindow& oWindow = oApplication.Window();
    if (eMenuRoot == MenuRoot::MenuBar && !aMenus.empty()) {
        QAction* pTitle = ActionOf(oApplication, *oWindow.menuBar(), aMenus[0]);
        if (!pTitle || !pTitle->menu())
            return;
        oWindow.menuBar()->setActiveAction(pTitle);
        RestoreBelow(oApplication, pTitle->menu());
    } else if (eMenuRoot == MenuRoot::Toolbar && !aMenus.empty()) {
        RestoreDropDown(oApplication);
    } else if (eMenuRoot == MenuRoot::Explorer) {
        const ExplorerPage* pPage = oWindow.Explorer().CurrentPage();
        if (!pPage || !pPage->Tree()->Tree()->SelectedItem())
            return;
        oWindow.Bars().SetPopupPlace(oMenuPlace);
        oApplication.ByHost([&] { pPage->Tree()->Tree()->MouseUp.Raise(RightButton, NoShift, 0, 0); });
    }
}

} // namespace corvane::desktop
