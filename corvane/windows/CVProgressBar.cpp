#include "corvane/windows/CVProgressBar.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/platform/Platform.h"

namespace corvane {

Ref<Object> CVProgressBar::Control() const {
    return ToObject(m_frmMain->Invoke("ctlCVProgress", {}));
}

Ref<Tool> CVProgressBar::StatusBarTool(const char* sTool) const {
    return m_oActiveBar->Bands()->Item("StatusBar")->Tools()->Item(sTool);
}

void CVProgressBar::Initialize(const Ref<ActiveBar>& oActiveBar, const Ref<MdiForm>& frmMain) {
    m_frmMain = frmMain;
    m_oActiveBar = oActiveBar;
    StatusBarTool("ctlProgressBar")->SetHWnd(ToLong(Control()->Invoke("hwnd", {})));
    StatusBarTool("ctlProgressBar")->SetVisible(false);
}

// What waits is delivered while the bar comes and goes, and may be the end of the application.
void CVProgressBar::Hide() {
    const Ref<CVProgressBar> oSelf(this);
    EnableShell(true);
    SetVisible(false);
    SetValue(0);
}

void CVProgressBar::Show(Double dMax, bool bCancel) {
    const Ref<CVProgressBar> oSelf(this);
    EnableShell(false);
    SetCancel(bCancel);
    SetWasCanceled(false);
    SetMax(dMax);
    SetValue(0);
    SetVisible(true);
}

bool CVProgressBar::Visible() const {
    return StatusBarTool("ctlProgressBar")->Visible();
}

void CVProgressBar::SetVisible(bool bVisible) {
    m_oActiveBar->SetStatusTextShown(!bVisible);
    StatusBarTool("Status")->SetVisible(!bVisible);
    StatusBarTool("ctlProgressBar")->SetVisible(bVisible);
    m_oActiveBar->RecalcLayout();
    CurrentPlatform().oTimers->DoEvents();
}

bool CVProgressBar::Cancel() const {
    return ToBoolean(Control()->Invoke("Cancel", {}));
}

void CVProgressBar::SetCancel(bool bCancel) {
    Control()->Put("Cancel", bCancel);
}

void CVProgressBar::Increment() {
    (void)Control()->Invoke("Increment", {});
}

Double CVProgressBar::Max() const {
    return ToDouble(Control()->Invoke("Max", {}));
}

void CVProgressBar::SetMax(Double dMax) {
    Control()->Put("Max", dMax);
}

void CVProgressBar::Percent(Double dPercent) {
    const Variant vPercent = dPercent;
    (void)Control()->Invoke("Percent", std::span(&vPercent, 1));
}

Long CVProgressBar::Pixels() const {
    return ToLong(Control()->Invoke("Pixels", {}));
}

Double CVProgressBar::Value() const {
    return ToDouble(Control()->Invoke("Value", {}));
}

void CVProgressBar::SetValue(Double dValue) {
    Control()->Put("Value", dValue);
}

bool CVProgressBar::WasCanceled() const {
    return ToBoolean(Control()->Invoke("WasCanceled", {}));
}

void CVProgressBar::SetWasCanceled(bool bWasCanceled) {
    Control()->Put("WasCanceled", bWasCanceled);
}

// No tool is exempt, and nothing remembers how a tool was before.
void CVProgressBar::EnableShell(bool bEnable) {
    const Ref<BandCollection> oBands = m_oActiveBar->Bands();
    for (Long lBand = 0; lBand < oBands->Count(); ++lBand) {
        const Ref<BandTools> oTools = oBands->Item(lBand)->Tools();
        for (Long lTool = 0; lTool < oTools->Count(); ++lTool)
            oTools->Item(lTool)->SetEnabled(bEnable);
    }
    CorvaneMain::Framework()->NavigationManager()->ExplorerManager()->TreeView()->SetEnabled(bEnable);
}

} // namespace corvane
