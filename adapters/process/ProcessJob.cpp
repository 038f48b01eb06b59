#include "adapters/process/ProcessJob.h"

#include "adapters/process/Process.h"

#include <chrono>

namespace corvane {

namespace {

constexpr std::chrono::milliseconds lookInterval(50); // for a cancellation

} // namespace

void ProcessJob::WishFor(Wish wish) {
    m_wishes.push_back(wish);
    m_waker->Wake();
}

void ProcessJob::Work(JobProgress& progress, const std::function<void()>& turn) {
    std::unique_lock lock(m_mutex);
    WishFor(Wish::Begin);
    bool isCancelling = false;
    for (;;) {
        const std::vector<News> news = std::exchange(m_news, {});
        const bool ended = m_ended;
        lock.unlock();
        for (const News& entry : news) {
            if (entry.part)
                progress.SetPart(*entry.part);
            if (entry.text)
                progress.SetText(*entry.text);
            for (const std::string& line : entry.log)
                progress.Log(line);
        }
        const bool cancels = !ended && !isCancelling && progress.IsCancelled();
        if (turn && !ended)
            turn();
        lock.lock();
        if (ended)
            break;
        if (cancels) {
            isCancelling = true;
            WishFor(Wish::Cancel);
        }
        if (!turn)
            m_changed.wait_for(lock, lookInterval, [this] { return m_ended || !m_news.empty(); });
    }
    if (m_failure)
        throw Failure(*m_failure);
    if (m_wasCancelled)
        throw JobCancelled();
}

ProcessJob::Wish ProcessJob::TakeWish() {
    const std::lock_guard lock(m_mutex);
    if (m_wishes.empty())
        return Wish::None;
    const Wish wish = m_wishes.front();
    m_wishes.erase(m_wishes.begin());
    return wish;
}

bool ProcessJob::HasWish() {
    const std::lock_guard lock(m_mutex);
    return !m_wishes.empty();
}

void ProcessJob::Report(News news) {
    const std::lock_guard lock(m_mutex);
    m_news.push_back(std::move(news));
    m_changed.notify_all();
}

void ProcessJob::End(std::optional<Failure> failure, bool cancelled) {
    const std::lock_guard lock(m_mutex);
    if (m_ended)
        return;
    m_ended = true;
    m_failure = std::move(failure);
    m_wasCancelled = cancelled;
    m_changed.notify_all();
}

ProcessTask::ProcessTask(Ref<Process> process, LongLong number, std::shared_ptr<ProcessJob> job)
    : m_process(std::move(process)), m_number(number), m_job(std::move(job)) {}

// One that has been cancelled before it could begin is still known to the process.
ProcessTask::~ProcessTask() {
    m_process->JobEnds(m_number, m_job);
}

void ProcessTask::Work(JobProgress& progress) {
    if (std::this_thread::get_id() == m_thread)
        m_job->Work(progress, [this] { m_process->Turn(); });
    else
        m_job->Work(progress, {});
}

} // namespace corvane
