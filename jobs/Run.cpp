#include "jobs/Run.h"

#include "corvane/base/ObjectWatch.h"

#include <algorithm>
#include <numeric>

namespace corvane::jobs {

namespace {

constexpr std::size_t mostLines = 500;

} // namespace

class Run::Working {
public:
    explicit Working(const Run& run) : m_run(run) {
        ObjectWatch::NameThread("the job \"" + run.m_title + "\"" +
                                (run.m_service.empty() ? "" : " of the service " + run.m_service));
        if (m_run.m_hooks.enters)
            m_run.m_hooks.enters(run.m_service);
    }
    ~Working() {
        if (m_run.m_hooks.leaves)
            m_run.m_hooks.leaves();
        ObjectWatch::NameThread({});
    }
    Working(const Working&) = delete;
    Working& operator=(const Working&) = delete;

private:
    const Run& m_run;
};

Part::Part(Run& run, Part* whole, Double share, const std::atomic<bool>* stopped)
    : m_run(run), m_whole(whole), m_share(share), m_stopped(stopped) {}

void Part::SetText(std::string text) {
    const std::lock_guard lock(m_run.m_mutex);
    m_run.m_text = std::move(text);
}

void Part::SetPart(Double part) {
    m_run.m_reports = true;
    part = part > 0 ? std::min(part, 1.0) : 0; // not a number counts as 0
    Advance(part - m_done.exchange(part));
}

// What has been set here already counts at every level above, by its share.
void Part::Advance(Double by) {
    Part* at = this;
    for (; at->m_whole; at = at->m_whole) {
        by *= at->m_share;
        at->m_whole->m_done.fetch_add(by);
    }
    constexpr Double rounding = 1e-9;
    if (at->m_done + rounding >= m_run.m_cancelAt)
        m_run.Cancel();
}

void Part::Log(std::string line) {
    const std::lock_guard lock(m_run.m_mutex);
    m_run.m_log.push_back(std::move(line));
    if (m_run.m_log.size() > mostLines)
        m_run.m_log.pop_front();
}

bool Part::IsCancelled() const {
    for (const Part* part = this; part; part = part->m_whole)
        if (part->m_stopped && *part->m_stopped)
            return true;
    if (!m_run.m_cancelled)
        return false;
    m_run.m_knows = true;
    return true;
}

std::vector<std::shared_ptr<Part>> Part::Parts(const std::vector<Double>& weights, const std::atomic<bool>* stopped) {
    const auto counted = [](Double weight) { return weight > 0 ? weight : 0; };
    const Double sum = std::accumulate(weights.begin(), weights.end(), 0.0,
                                       [&](Double all, Double weight) { return all + counted(weight); });
    std::vector<std::shared_ptr<Part>> parts;
    parts.reserve(weights.size());
    for (const Double weight : weights)
        parts.push_back(std::make_shared<Part>(m_run, this, sum > 0 ? counted(weight) / sum : 0, stopped));
    return parts;
}

std::vector<std::reference_wrapper<JobProgress>> Part::Split(const std::vector<Double>& weights) {
    const auto parts = Parts(weights, nullptr);
    const std::lock_guard lock(m_mutex);
    m_parts.insert(m_parts.end(), parts.begin(), parts.end());
    std::vector<std::reference_wrapper<JobProgress>> found;
    for (const auto& part : parts)
        found.emplace_back(*part);
    return found;
}

namespace {

// What the threads that work on a group share. A thread that comes late finds nothing left to take, and touches nothing
// but the count.
struct Group {
    std::vector<std::shared_ptr<Part>> parts = {};
    const std::function<void(std::size_t, JobProgress&)>* work = nullptr;
    std::atomic<bool> stopped = false;
    std::atomic<std::size_t> taken = 0;
    std::vector<std::exception_ptr> failures = {};
    std::mutex mutex = {};
    std::condition_variable ended = {};
    std::size_t left = 0; // guarded by the mutex
};

void WorkOn(Group& group) {
    for (std::size_t i = group.taken++; i < group.parts.size(); i = group.taken++) {
        if (!group.stopped) {
            try {
                (*group.work)(i, *group.parts[i]);
                group.parts[i]->SetPart(1);
            } catch (...) {
                group.failures[i] = std::current_exception();
                group.stopped = true;
            }
        }
        const std::lock_guard lock(group.mutex);
        if (--group.left == 0)
            group.ended.notify_all();
    }
}

bool IsCancellation(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const JobCancelled&) {
        return true;
    } catch (...) {
        return false;
    }
}

} // namespace

void Part::RunParts(const std::vector<Double>& weights, const std::function<void(std::size_t, JobProgress&)>& part) {
    if (weights.empty())
        return;
    const auto group = std::make_shared<Group>();
    group->parts = Parts(weights, &group->stopped);
    group->work = &part;
    group->failures.resize(weights.size());
    group->left = weights.size();
    const std::size_t processors = std::max(1U, std::thread::hardware_concurrency());
    const std::size_t helpers = std::min({m_run.m_pool.MostThreads(), processors, weights.size()});
    for (std::size_t i = 1; i < helpers; ++i)
        m_run.m_pool.Add(
            [group, run = m_run.shared_from_this()] {
                const Run::Working working(*run);
                WorkOn(*group);
            },
            true);
    WorkOn(*group);
    std::vector<std::exception_ptr> failures; // end here, and not with the thread that leaves the group last
    {
        std::unique_lock lock(group->mutex);
        group->ended.wait(lock, [&] { return group->left == 0; });
        failures.swap(group->failures);
    }
    std::exception_ptr cancellation;
    for (const std::exception_ptr& failure : failures) {
        if (failure && !IsCancellation(failure))
            std::rethrow_exception(failure);
        if (failure)
            cancellation = failure;
    }
    if (cancellation)
        std::rethrow_exception(cancellation);
}

void Run::Work() {
    if (m_cancelled) {
        m_wasCancelled = true;
        return;
    }
    m_begun = Clock::now().time_since_epoch().count();
    const Working working(*this);
    try {
        m_task.Work(m_whole);
        m_wasCancelled = m_knows;
    } catch (const JobCancelled&) {
        m_wasCancelled = true;
    } catch (...) {
        m_error = CurrentFailure();
    }
}

bool Run::Ignores(Clock::duration longest) const {
    return m_cancelled && !m_knows && HasBegun() &&
           Clock::now().time_since_epoch() - Clock::duration(m_cancelledAt) >= longest;
}

std::optional<Double> Run::DonePart() const {
    return m_reports ? std::optional(std::clamp(m_whole.Done(), 0.0, 1.0)) : std::nullopt;
}

Clock::duration Run::Elapsed() const {
    return HasBegun() ? Clock::now().time_since_epoch() - Clock::duration(m_begun) : Clock::duration::zero();
}

std::string Run::Text() const {
    const std::lock_guard lock(m_mutex);
    return m_text;
}

std::vector<std::string> Run::LogLines() const {
    const std::lock_guard lock(m_mutex);
    return {m_log.begin(), m_log.end()};
}

} // namespace corvane::jobs
