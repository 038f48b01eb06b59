#include "jobs/Manager.h"

#include "corvane/platform/Entering.h"
#include "corvane/platform/Handlers.h"
#include "corvane/platform/Platform.h"

#include <algorithm>

namespace corvane::jobs {

namespace {

constexpr std::chrono::milliseconds deliveryTime(8); // half a frame

} // namespace

std::size_t Host::UsualThreads() {
    constexpr std::size_t least = 4; // work that waits for a disk leaves the processor to others
    return std::max<std::size_t>(least, std::thread::hardware_concurrency());
}

Manager::Manager(Host host) : m_host(std::move(host)), m_pool(std::make_unique<Pool>(m_host.mostThreads)) {}

Manager::~Manager() = default;

Ref<IJob> Manager::Start(JobOptions options, std::unique_ptr<JobTask> task, std::string procedure) {
    if (std::this_thread::get_id() != m_thread)
        Fail(FailureNumber::InvalidProcedureCall,
             "The job \"" + options.title +
                 "\" is started by another thread than the user interface's: work uses JobGroup for what it divides",
             "Jobs");
    if (options.title.empty())
        Fail(FailureNumber::InvalidProcedureCall, "A job needs a title, which users read", "Jobs");
    if (m_stopped)
        Fail(FailureNumber::ObjectNotSet,
             "The job \"" + options.title + "\" can't be started: the application has ended", "Jobs");
    const Number number = ++m_last;
    const auto job = New<Job>(*this, number, std::move(options), std::move(task), std::move(procedure));
    m_keys.Add(number, job->m_options.reads, job->m_options.writes);
    m_active.emplace(number, job);
    BeginIfFree(job);
    Changed.Raise();
    return job;
}

void Manager::BeginIfFree(const Ref<Job>& job) {
    if (job->m_isQueued || job->IsCancelling() || !m_keys.MayBegin(job->m_number))
        return;
    job->m_isQueued = true;
    if (!m_host.begins || m_host.mostThreads == 0)
        m_held.push_back(job->m_number);
    else
        m_pool->Add([this, number = job->m_number, run = job->m_run] { Work(number, *run); });
}

// In a thread of the pool, or in RunToEnd.
void Manager::Work(Number number, Run& run) {
    run.Work();
    bool wakes = false;
    {
        const std::lock_guard lock(m_finished.mutex);
        m_finished.jobs.push_back(number);
        wakes = !std::exchange(m_finished.woken, true);
    }
    m_finished.added.notify_all();
    if (wakes)
        m_host.wake();
}

std::optional<Number> Manager::TakeFinished() {
    const std::lock_guard lock(m_finished.mutex);
    if (m_finished.jobs.empty()) {
        m_finished.woken = false;
        return std::nullopt;
    }
    const Number number = m_finished.jobs.front();
    m_finished.jobs.pop_front();
    return number;
}

// What is called back may run an event loop, in which this is called again, or end the application.
void Manager::Deliver() {
    const Ref<Manager> self(this);
    const auto begin = Clock::now();
    while (!m_stopped && m_host.mayDeliver()) {
        const auto number = TakeFinished();
        if (!number)
            return;
        const auto it = m_active.find(*number);
        if (it != m_active.end())
            End(Ref<Job>(it->second));
        if (Clock::now() - begin > deliveryTime && !m_stopped) {
            m_host.wake();
            return;
        }
    }
}

void Manager::End(const Ref<Job>& job) {
    const Run& run = *job->m_run;
    job->m_error = run.Error();
    job->m_end = job->m_error                            ? JobState::Failed
                 : run.WasCancelled() || !run.HasBegun() ? JobState::Cancelled
                                                         : JobState::Done;
    m_active.erase(job->m_number);
    for (const Number next : m_keys.Remove(job->m_number))
        if (const auto it = m_active.find(next); it != m_active.end())
            BeginIfFree(it->second);
    if (job->m_error) {
        AddPlace(*job->m_error, job->m_place);
        if (const Ref<IUtilities> utilities = CurrentPlatform().oUtilities)
            utilities->LogError(utilities->AppName(), "Jobs", job->Title(), *job->m_error, job->m_place, false);
    }
    if (!job->m_options.quiet || job->m_error || m_host.keepsAll) {
        m_ended.push_back(job);
        if (m_ended.size() > MostEnded && !m_host.keepsAll)
            m_ended.pop_front();
    }
    Changed.Raise();
    if (!m_stopped && HasOwner(*job))
        m_host.guard([&] { CallBack(*job); });
    else if (!m_stopped && job->m_error)
        m_host.guard([&] { throw Failure(*job->m_error); });
    LetGo(*job);
}

// Neither has its window closed, nor has its item been removed from the explorer.
bool Manager::HasOwner(const Job& job) const {
    return IsOpen(job.m_window) && (!job.m_hadNode || HasNode(job.m_options.owner, *m_host.explorer));
}

void Manager::CallBack(Job& job) {
    JobOutcome outcome;
    outcome.pFailure = job.m_error ? &*job.m_error : nullptr;
    outcome.bWasCancelled = job.m_end == JobState::Cancelled;
    try {
        const Entering entering(job.m_options.owner);
        job.m_task->Done(outcome);
    } catch (const JobCancelled&) {
        return; // by JobResult::Value
    }
    if (outcome.pFailure && !outcome.bFailureSeen)
        throw Failure(*outcome.pFailure);
}

// A job that waits here ends at once. One that the pool has, or RunToEnd's turn, is ended by its work alone, which uses
// the task until then.
void Manager::Cancel(Job& job) {
    job.m_run->Cancel();
    const bool wasHeld = std::erase(m_held, job.m_number) > 0;
    if (job.m_isQueued && !wasHeld)
        return;
    const std::lock_guard lock(m_finished.mutex);
    m_finished.jobs.push_back(job.m_number);
    if (!std::exchange(m_finished.woken, true))
        m_host.wake();
}

std::vector<Obstacle> Manager::WaitsFor(const Job& job) const {
    std::vector<Obstacle> found;
    for (const Keys::Obstacle& obstacle : m_keys.Obstacles(job.m_number))
        if (const auto it = m_active.find(obstacle.job); it != m_active.end())
            found.push_back({it->second->Title(), obstacle.key});
    return found;
}

std::vector<Ref<Job>> Manager::Active() const {
    std::vector<Ref<Job>> jobs;
    for (const auto& [number, job] : m_active)
        jobs.push_back(job);
    return jobs;
}

std::vector<Ref<IJob>> Manager::Unfinished() const {
    std::vector<Ref<IJob>> jobs;
    for (const auto& [number, job] : m_active)
        jobs.emplace_back(job);
    return jobs;
}

void Manager::ForgetEnded() {
    m_ended.clear();
    Changed.Raise();
}

// False when nothing waits for this thread.
bool Manager::RunNext() {
    if (m_held.empty())
        return false;
    const Number number = m_held.front();
    m_held.pop_front();
    const auto it = m_active.find(number);
    if (it == m_active.end())
        return true;
    const std::shared_ptr<Run> run = it->second->m_run;
    if (m_host.mostThreads == 0)
        Work(number, *run);
    else
        m_pool->Add([this, number, run] { Work(number, *run); });
    return true;
}

void Manager::RunToEnd() {
    const Ref<Manager> self(this);
    while (!m_stopped && !m_active.empty()) {
        while (RunNext())
            if (m_host.mostThreads == 0)
                break;
        {
            constexpr std::chrono::milliseconds turn(5);
            std::unique_lock lock(m_finished.mutex);
            const auto HasFinished = [this] { return !m_finished.jobs.empty(); };
            while (m_host.idle && !m_finished.added.wait_for(lock, turn, HasFinished)) {
                lock.unlock();
                m_host.idle();
                lock.lock();
            }
            m_finished.added.wait(lock, HasFinished);
        }
        Deliver();
    }
}

bool Manager::Stop(Clock::duration longest) {
    m_stopped = true;
    m_held.clear();
    for (const auto& [number, job] : m_active)
        job->m_run->Cancel();
    if (!m_pool->Stop(longest))
        return false;
    for (const auto& [number, job] : std::exchange(m_active, {})) {
        job->m_end = JobState::Cancelled;
        LetGo(*job);
    }
    return true;
}

void Manager::LetGo(Job& job) {
    job.m_task.reset();
    job.m_options.owner = nullptr;
    job.m_window = nullptr;
    job.m_manager = nullptr;
}

} // namespace corvane::jobs
