// The application's one progress indicator: it shows the main form's control "ctlCVProgress" in place of the status
// text and disables the shell meanwhile.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/platform/controls/ActiveBar.h"
#include "corvane/platform/controls/MdiForm.h"

namespace corvane {

// Cancelling is polled: Show(max, true), Increment or Percent or Value between the steps, WasCanceled asked, Hide at
// the end. It doesn't nest: a second Show restarts it and the first Hide ends it. All failures go to the caller.
class __attribute__((visibility("default"))) CVProgressBar final : public Automation<CVProgressBar> {
public:
    // Fails with 5 when the bar has no band "StatusBar" with a tool "ctlProgressBar", with 438 when the form lacks the
    // control.
    void Initialize(const Ref<ActiveBar>& oActiveBar, const Ref<MdiForm>& frmMain);

    // After Initialize.
    // Leaves every tool enabled, also one that was disabled before Show.
    void Hide();
    void Show(Double dMax = 100.0, bool bCancel = false);
    // Setting it lets the message loop run once, so that waiting events are delivered.
    [[nodiscard]] bool Visible() const;
    void SetVisible(bool bVisible);
    [[nodiscard]] bool Cancel() const; // whether the user is offered to cancel
    void SetCancel(bool bCancel);
    void Increment();
    [[nodiscard]] Double Max() const;
    void SetMax(Double dMax);
    void Percent(Double dPercent);
    [[nodiscard]] Long Pixels() const;
    [[nodiscard]] Double Value() const;
    void SetValue(Double dValue);
    [[nodiscard]] bool WasCanceled() const;
    void SetWasCanceled(bool bWasCanceled);

    std::string_view TypeName() const override { return "CVProgressBar"; }

    static constexpr auto Members = MemberTable(
        Method("Hide", &CVProgressBar::Hide), Method("Show", &CVProgressBar::Show),
        Property("Visible", &CVProgressBar::Visible, &CVProgressBar::SetVisible),
        Property("Cancel", &CVProgressBar::Cancel, &CVProgressBar::SetCancel),
        Method("Increment", &CVProgressBar::Increment), Property("Max", &CVProgressBar::Max, &CVProgressBar::SetMax),
        Method("Percent", &CVProgressBar::Percent), Property("Pixels", &CVProgressBar::Pixels),
        Property("Value", &CVProgressBar::Value, &CVProgressBar::SetValue),
        Property("WasCanceled", &CVProgressBar::WasCanceled, &CVProgressBar::SetWasCanceled));

private:
    void EnableShell(bool bEnable);
    [[nodiscard]] Ref<Object> Control() const;
    [[nodiscard]] Ref<Tool> StatusBarTool(const char* sTool) const;

    Ref<ActiveBar> m_oActiveBar;
    Ref<MdiForm> m_frmMain;
};

} // namespace corvane
