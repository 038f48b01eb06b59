// A service in a process of its own that lets a call wait: the main window says which, and offers to wait or to stop
// it.
#pragma once

#include "adapters/process/ProcessMonitor.h"
#include "desktop/guard/Guard.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QWidget>

class QLabel;
class QPushButton;

namespace corvane::desktop {

class ProcessWaiting final : public LoggingMonitor {
    Q_DECLARE_TR_FUNCTIONS(ProcessWaiting)
public:
    // Where no one watches there is a limit in place of the question.
    explicit ProcessWaiting(bool withDialogs) : LoggingMonitor(withDialogs ? 0 : Limit), m_asks(withDialogs) {}

    // Runs what a process asks of its own accord.
    void SetGuard(Guard guard) { m_guard = std::move(guard); }
    void SetParentWindow(QWidget* window) { m_window = window; }
    [[nodiscard]] std::unique_ptr<Listening> Listen(int descriptor, std::function<void()> readable) override;
    [[nodiscard]] bool KeepsWaiting(std::string_view service, int milliseconds) override;
    void WaitingEnds(std::string_view service) override;
    // The bar at the bottom of the window; nothing while no one waits.
    [[nodiscard]] QWidget* Bar() const { return m_bar; }

private:
    static constexpr int Limit = 60000; // milliseconds

    void Make();
    void Say(std::string_view service, int milliseconds);

    bool m_asks;
    Guard m_guard;
    QPointer<QWidget> m_window;
    QPointer<QWidget> m_bar;
    QLabel* m_text = nullptr;
    QPushButton* m_wait = nullptr;
    QPushButton* m_stop = nullptr;
    bool m_isToStop = false;
    bool m_isToWait = false;
};

} // namespace corvane::desktop
