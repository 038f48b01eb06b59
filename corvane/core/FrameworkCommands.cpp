#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/menus/MenuManager.h"
#include "corvane/platform/Handlers.h"
#include "corvane/platform/Platform.h"
#include "corvane/platform/controls/MdiForm.h"
#include "corvane/windows/WindowManager.h"

#include <array>

namespace corvane {

namespace {

enum PrintMode : Long { Desktop = 0, MainForm = 1, ChildForm = 2 };

} // namespace

std::string Framework::Status() const {
    return m_oStatusTool ? m_oStatusTool->Caption() : std::string();
}

void Framework::SetStatus(const std::string& sStatus) try {
    m_oStatusTool->SetCaption(sStatus);
    MainActiveBar()->Bands()->Item("StatusBar")->Refresh();
} catch (...) {
    Reraise("Framework", "Status (Let)");
}

void Framework::EnableStatusBar(const Ref<ActionItem>& oActionItem) {
    const Ref<ActiveBar> oActiveBar = MainActiveBar();
    oActionItem->SetChecked(!oActionItem->Checked());
    oActiveBar->Bands()->Item("StatusBar")->SetVisible(oActionItem->Checked());
    oActiveBar->RecalcLayout();
}

void Framework::ViewToolbars(const Ref<ActionItem>& oActionItem) try {
    oActionItem->SetChecked(!oActionItem->Checked());
    if (oActionItem->Checked())
        NavigationManager()->MenuManager()->ShowToolbar(oActionItem->Name());
    else
        NavigationManager()->MenuManager()->HideToolbar(oActionItem->Name());
} catch (...) {
    Reraise("Framework", "ViewToolbars");
}

void Framework::ViewNavigation(const Ref<ActionItem>& oActionItem) try {
    oActionItem->SetChecked(!oActionItem->Checked());
    if (oActionItem->Checked())
        NavigationManager()->ExplorerManager()->Show();
    else
        NavigationManager()->ExplorerManager()->Hide();
} catch (...) {
    Reraise("Framework", "ViewNavigation");
}

void Framework::WindowAction(const Ref<ActionItem>& oActionItem) try {
    const std::string sName = oActionItem->Name();
    const Ref<MdiForm> frmMain = m_frmMain;
    if (EqualText(sName, "TileHorizontally"))
        frmMain->Arrange(Arrangement::TileHorizontal);
    else if (EqualText(sName, "TileVertically"))
        frmMain->Arrange(Arrangement::TileVertical);
    else if (EqualText(sName, "Cascade"))
        frmMain->Arrange(Arrangement::Cascade);
    else if (EqualText(sName, "ArrangeIcons"))
        frmMain->Arrange(Arrangement::ArrangeIcons);
    else if (EqualText(sName, "CloseAll"))
        WindowManager()->CloseAll();
} catch (...) {
    Reraise("Framework", "WindowAction");
}

void Framework::AppExit() try {
    const Ref<MdiForm> frmMain = m_frmMain; // the unload releases it
    frmMain->Unload();
} catch (...) {
    Reraise("Framework", "AppExit");
}

void Framework::PrintDesktop() try {
    CurrentPlatform().oScreenPrinter->PrintWindow(PrintMode::Desktop, 0);
} catch (...) {
    Reraise("Framework", "PrintDesktop");
}

void Framework::PrintMainWindow() try {
    if (const Ref<Form> frmActive = m_frmMain->ActiveForm())
        CurrentPlatform().oScreenPrinter->PrintWindow(PrintMode::ChildForm, ToLong(frmActive->Invoke("hwnd", {})));
} catch (...) {
    Reraise("Framework", "PrintMainWindow");
}

void Framework::PrintAppWindow() try {
    CurrentPlatform().oScreenPrinter->PrintWindow(PrintMode::MainForm, m_frmMain->HWnd());
} catch (...) {
    Reraise("Framework", "PrintAppWindow");
}

std::string Framework::CVIIf(bool Expression, const std::string& TruePart, const std::string& FalsePart) const {
    return Expression ? TruePart : FalsePart;
}

std::string Framework::CVSelectCase(Long Expression, const std::string& Case0, const std::string& Case1,
                                    const std::string& Case2, const std::string& Case3, const std::string& Case4,
                                    const std::string& Case5, const std::string& Case6, const std::string& Case7,
                                    const std::string& Case8, const std::string& Case9, const std::string& Case10,
                                    const std::string& Case11, const std::string& CaseElse) const {
    const std::array<const std::string*, 12> aCases{&Case0, &Case1, &Case2, &Case3, &Case4,  &Case5,
                                                    &Case6, &Case7, &Case8, &Case9, &Case10, &Case11};
    if (Expression < 0 || Expression >= static_cast<Long>(aCases.size()))
        return CaseElse;
    const std::string& sCase = *aCases[static_cast<std::size_t>(Expression)];
    return EqualText(sCase, Unspecified) ? CaseElse : sCase;
}

std::string Framework::CVSelectYesNo(Long Expression, const std::string& Case0, const std::string& CaseElse) const {
    return Expression == 0 ? Case0 : CaseElse;
}

} // namespace corvane
