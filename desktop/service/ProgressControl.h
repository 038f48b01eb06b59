// The control "ctlCVProgress" of the main form: text, bar, percentage, time left and, if it is offered, a button to
// cancel, in the status bar. Work that advances it or asks whether it was cancelled lets the window repaint and the
// button be pressed, and nothing else.
#pragma once

#include "corvane/base/Automation.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QWidget>
#include <functional>

class QLabel;
class QProgressBar;
class QPushButton;

namespace corvane::desktop {

class ProgressControl final : public Automation<ProgressControl> {
    Q_DECLARE_TR_FUNCTIONS(ProgressControl)
public:
    // What the panel can't know: the status text, and whose work is running (empty when nobody knows).
    struct Sources {
        std::function<QString()> fnStatus;
        std::function<QString()> fnService;
    };

    ~ProgressControl() override;
    void SetSources(Sources oSources) { m_oSources = std::move(oSources); }
    // Made at the first call: few starts show progress. Nothing once the one that was made has gone.
    [[nodiscard]] QWidget* Widget();

    // By the library, by name.
    [[nodiscard]] Long HWnd() const { return 1; }
    [[nodiscard]] bool Cancel() const { return m_bCancel; }
    void SetCancel(bool bCancel);
    [[nodiscard]] bool WasCanceled();
    void SetWasCanceled(bool bWasCanceled);
    [[nodiscard]] Double Max() const { return m_dblMax; }
    void SetMax(Double dblMax);
    [[nodiscard]] Double Value() const { return m_dblValue; }
    void SetValue(Double dblValue); // 0 begins anew
    void Increment() { SetValue(m_dblValue + 1); }
    void Percent(Double dblPercent) { SetValue(m_dblMax * dblPercent / 100); }
    [[nodiscard]] Long Pixels() const; // the bar's width

    static constexpr auto Members =
        MemberTable(Property("hwnd", &ProgressControl::HWnd),
                    Property("Cancel", &ProgressControl::Cancel, &ProgressControl::SetCancel),
                    Property("WasCanceled", &ProgressControl::WasCanceled, &ProgressControl::SetWasCanceled),
                    Property("Max", &ProgressControl::Max, &ProgressControl::SetMax),
                    Property("Value", &ProgressControl::Value, &ProgressControl::SetValue),
                    Method("Increment", &ProgressControl::Increment), Method("Percent", &ProgressControl::Percent),
                    Property("Pixels", &ProgressControl::Pixels));

private:
    void Make();
    void Draw();
    [[nodiscard]] QString TimeLeft() const;
    void LetThrough();

    Sources m_oSources;
    bool m_bMade = false;
    QPointer<QWidget> m_pWidget; // the status bar's, once it stands there
    QLabel* m_pText = nullptr;
    QProgressBar* m_pBar = nullptr;
    QLabel* m_pTimeLeft = nullptr;
    QPushButton* m_pCancel = nullptr;
    QElapsedTimer m_oRunning;   // since the value was 0
    QElapsedTimer m_oPassed;    // since events were let through
    QElapsedTimer m_oCancelled; // since the person cancelled and the work hasn't asked; invalid otherwise
    bool m_bCancel = false;
    bool m_bWasCanceled = false;
    bool m_bLettingThrough = false;
    Double m_dblMax = 100;
    Double m_dblValue = 0;
};

} // namespace corvane::desktop
