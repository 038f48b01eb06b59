#include "desktop/jobs/DesktopJobs.h"

#include "desktop/jobs/JobBar.h"
#include "desktop/jobs/JobsView.h"
#include "desktop/style/ViewDock.h"

#include <QCoreApplication>
#include <QMainWindow>
#include <QStatusBar>
#include <algorithm>

namespace corvane::desktop {

namespace {

constexpr const char* viewName = "Jobs";
constexpr int refreshInterval = 100; // milliseconds

bool Holds(const std::vector<Ref<jobs::Job>>& jobs, const Ref<Window>& window) {
    return std::any_of(jobs.begin(), jobs.end(), [&](const auto& job) { return job->OwnWindow() == window; });
}

} // namespace

DesktopJobs::DesktopJobs(Parts parts) : m_parts(std::move(parts)) {
    jobs::Host host;
    host.wake = [this] {
        QMetaObject::invokeMethod(
            this, [this] { m_manager->Deliver(); }, Qt::QueuedConnection);
    };
    host.guard = m_parts.guard;
    host.mayDeliver = m_parts.mayDeliver;
    host.threads = m_parts.threads;
    host.explorer = m_parts.explorer;
    m_manager = New<jobs::Manager>(std::move(host));
    m_changed = m_manager->Changed.Subscribe([this] { Follow(); });
    m_refresh.setInterval(refreshInterval);
    connect(&m_refresh, &QTimer::timeout, this, &DesktopJobs::Refresh);
}

DesktopJobs::~DesktopJobs() {
    delete m_dock;
    delete m_bar;
    std::string stillRunning;
    (void)Stop(stillRunning);
}

void DesktopJobs::SetWindow(QMainWindow& window) {
    m_window = &window;
}

// Jobs come by the thousand: everything is shown at the next tick.
void DesktopJobs::Follow() {
    if (m_manager->HasStopped())
        m_refresh.stop();
    else if (!m_refresh.isActive())
        m_refresh.start();
}

void DesktopJobs::Refresh() {
    m_manager->Deliver(); // what has been held back
    if (!m_manager->HasActive())
        m_refresh.stop();
    if (!m_bar && m_window && m_manager->HasActive()) {
        m_bar = new JobBar(m_manager);
        m_window->statusBar()->addPermanentWidget(m_bar);
        connect(m_bar, &JobBar::ViewWanted, this, &DesktopJobs::ShowView);
    }
    if (m_bar)
        m_bar->Update();
    if (m_view)
        m_view->Update();
    const auto active = m_manager->Active();
    for (auto it = m_closing.begin(); it != m_closing.end();) {
        if (Holds(active, it->window)) {
            ++it;
            continue;
        }
        const Closing closing = std::move(*it);
        m_closing.erase(it);
        if (jobs::IsOpen(closing.window))
            closing.close(); // which may ask, and come here again
        it = m_closing.begin();
    }
}

JobsView* DesktopJobs::ShowView() {
    View().Open();
    return m_view;
}

ViewDock& DesktopJobs::View() {
    if (!m_dock)
        m_dock = new ViewDock(viewName, tr("Jobs"), *m_window, [this] { return m_view = new JobsView(m_manager); });
    return *m_dock;
}

bool DesktopJobs::MayClose(const Ref<Window>& window, const QString& title, QWidget* over,
                           const std::function<void()>& close) {
    std::erase_if(m_closing, [&](const Closing& closing) { return closing.window == window; });
    std::vector<Ref<jobs::Job>> own = m_manager->Active();
    std::erase_if(own,
                  [&](const auto& job) { return job->OwnWindow() != window || job->IsQuiet() || job->IsCancelling(); });
    if (!window || own.empty() || m_ends)
        return true;
    JobQuestion question{title, {}, true, over};
    for (const auto& job : own) {
        question.jobs.append(QString::fromStdString(job->Title()));
        question.canCancel = question.canCancel && job->CanCancel();
    }
    switch (m_parts.ask(question)) {
    case JobAnswer::KeepOpen:
        return false;
    case JobAnswer::CloseLater:
        m_closing.push_back({window, close});
        Follow(); // they may have ended while the question was open
        return false;
    case JobAnswer::CancelJobs:
        for (const auto& job : own)
            job->Cancel();
        break;
    case JobAnswer::LeaveRunning:
        break;
    }
    return true;
}

std::vector<std::string> DesktopJobs::Running() const {
    std::vector<std::string> titles;
    for (const auto& job : m_manager->Active())
        if (!job->IsQuiet() && !job->IsCancelling())
            titles.push_back(job->Title());
    return titles;
}

void DesktopJobs::CancelAll() {
    m_ends = true;
    QTimer::singleShot(0, this, [this] { m_ends = false; });
    for (const auto& job : m_manager->Active())
        job->Cancel();
}

bool DesktopJobs::WaitForAll() {
    const bool any = m_manager->HasActive();
    while (m_manager->HasActive() && !m_manager->HasStopped() && m_parts.mayDeliver())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents); // the refresh comes again and again
    return any;
}

bool DesktopJobs::Stop(std::string& stillRunning) {
    constexpr std::chrono::seconds longest(5);
    m_refresh.stop();
    m_closing.clear();
    if (m_manager->Stop(longest))
        return true;
    for (const auto& job : m_manager->Active())
        if (job->State() == JobState::Running)
            stillRunning += (stillRunning.empty() ? "" : ", ") + job->Title() +
                            (job->BelongsTo().service.empty() ? "" : " (" + job->BelongsTo().service + ")");
    return false;
}

} // namespace corvane::desktop

#include "moc_DesktopJobs.cpp"
