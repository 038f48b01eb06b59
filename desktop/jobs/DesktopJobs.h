// The jobs of an application on the desktop: the manager over the event loop, and what shows it.
#pragma once

#include "desktop/jobs/JobQuestion.h"
#include "jobs/Manager.h"

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <vector>

class QMainWindow;

namespace corvane::desktop {

class JobBar;
class ViewDock;
class JobsView;

class DesktopJobs final : public QObject {
    Q_OBJECT
public:
    struct Parts {
        std::function<void(const std::function<void()>& act)> guard; // runs what enters the library
        std::function<bool()> mayDeliver;                            // false while other work keeps the shell out
        jobs::ThreadHooks threads;
        Ref<PanelForm> explorer;
        std::function<JobAnswer(const JobQuestion&)> ask;
    };
    explicit DesktopJobs(Parts parts);
    ~DesktopJobs() override;

    [[nodiscard]] const Ref<jobs::Manager>& Manager() const { return m_manager; }
    // The window in whose status bar and docks jobs are shown.
    void SetWindow(QMainWindow& window);
    JobsView* ShowView();
    // The dock of the view, which is made when it is first asked for.
    [[nodiscard]] ViewDock& View();

    // A window that is to close. Asks about its jobs; false when it is to stay open, and close is called once they have
    // ended if the user wants it so.
    [[nodiscard]] bool MayClose(const Ref<Window>& window, const QString& title, QWidget* over,
                                const std::function<void()>& close);
    // The titles of the jobs that the end of the application would cancel.
    [[nodiscard]] std::vector<std::string> Running() const;
    // The user has agreed to that: until the event loop turns, no window asks about its jobs.
    void CancelAll();
    // Runs the event loop until there is no job any more; results that are held back for now aren't waited for. True
    // when there was one.
    bool WaitForAll();
    // At the end of the application; false when a job went on regardless, whose title and service are in the text.
    [[nodiscard]] bool Stop(std::string& stillRunning);

private:
    void Follow();
    void Refresh();

    Parts m_parts;
    Ref<jobs::Manager> m_manager;
    QTimer m_refresh; // while there are jobs
    Subscription m_changed;
    QPointer<QMainWindow> m_window;
    QPointer<JobBar> m_bar;
    QPointer<ViewDock> m_dock;
    QPointer<JobsView> m_view; // in it
    struct Closing {
        Ref<Window> window;
        std::function<void()> close;
    };
    std::vector<Closing> m_closing;
    bool m_ends = false; // the application, and the user knows of the jobs
};

} // namespace corvane::desktop
