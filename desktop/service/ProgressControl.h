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
    // What the panel can't know: the status text, and whose work is running (empty when no one knows).
    struct Sources {
        std::function<QString()> status;
        std::function<QString()> service;
        std::function<void()> begins = {}; // heard when work begins to show itself
    };

    ~ProgressControl() override;
    void SetSources(Sources sources) { m_sources = std::move(sources); }
    // Made at the first call: few starts show progress. Nothing once the one that was made has gone.
    [[nodiscard]] QWidget* Widget();

    // By the library, by name.
    [[nodiscard]] Long HWnd() const { return 1; }
    [[nodiscard]] bool Cancel() const { return m_canCancel; }
    void SetCancel(bool cancel);
    [[nodiscard]] bool WasCanceled();
    void SetWasCanceled(bool wasCanceled);
    [[nodiscard]] Double Max() const { return m_max; }
    void SetMax(Double max);
    [[nodiscard]] Double Value() const { return m_value; }
    void SetValue(Double value); // 0 begins again
    void Increment() { SetValue(m_value + 1); }
    void Percent(Double percent) { SetValue(m_max * percent / 100); }
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

    Sources m_sources;
    bool m_made = false;
    QPointer<QWidget> m_widget; // the status bar's, once it is there
    QLabel* m_text = nullptr;
    QProgressBar* m_bar = nullptr;
    QLabel* m_timeLeft = nullptr;
    QPushButton* m_cancel = nullptr;
    QElapsedTimer m_running;   // since the value was 0
    QElapsedTimer m_passed;    // since events were let through
    QElapsedTimer m_cancelled; // since the user cancelled and the work hasn't asked; invalid otherwise
    bool m_canCancel = false;
    bool m_wasCanceled = false;
    bool m_lettingThrough = false;
    Double m_max = 100;
    Double m_value = 0;
};

} // namespace corvane::desktop
