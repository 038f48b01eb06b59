// What a job's threads and the user interface share of it: progress, texts, the wish to end, the end. Nothing of
// Corvane's is in it.
#pragma once

#include "corvane/platform/IJobs.h"
#include "jobs/Pool.h"

#include <atomic>
#include <chrono>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace corvane::jobs {

using Clock = std::chrono::steady_clock;

class Run;

// Called in a thread that begins or ends to work for a job, with the name of the job's service.
struct ThreadHooks {
    std::function<void(const std::string& service)> enters = {};
    std::function<void()> leaves = {};
};

// A part of a job's work, or the whole.
class Part final : public JobProgress {
public:
    Part(Run& run, Part* whole, Double share, const std::atomic<bool>* stopped);
    ~Part() override = default;

    void SetText(std::string text) override;
    void SetPart(Double part) override;
    void Log(std::string line) override;
    [[nodiscard]] bool IsCancelled() const override;
    std::vector<std::reference_wrapper<JobProgress>> Split(const std::vector<Double>& weights) override;
    void RunParts(const std::vector<Double>& weights,
                  const std::function<void(std::size_t, JobProgress&)>& part) override;

    [[nodiscard]] Double Done() const { return m_done; }

private:
    void Advance(Double by);
    [[nodiscard]] std::vector<std::shared_ptr<Part>> Parts(const std::vector<Double>& weights,
                                                           const std::atomic<bool>* stopped);

    Run& m_run;
    Part* m_whole;                      // a null pointer for the job itself
    Double m_share;                     // of the whole
    const std::atomic<bool>* m_stopped; // another part of the group has failed; a null pointer outside of groups
    std::atomic<Double> m_done = 0;
    std::mutex m_mutex; // of the parts' list
    std::vector<std::shared_ptr<Part>> m_parts;
};

class Run final : public std::enable_shared_from_this<Run> {
public:
    // The task is the job's, which keeps it until the end has been taken notice of.
    Run(JobTask& task, std::string title, std::string service, Pool& pool, const ThreadHooks& hooks)
        : m_task(task), m_title(std::move(title)), m_service(std::move(service)), m_pool(pool), m_hooks(hooks) {}
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    // In the thread that does the work. Doesn't fail.
    void Work();
    // From any thread.
    void Cancel() {
        m_cancelledAt = Clock::now().time_since_epoch().count();
        m_cancelled = true;
    }
    [[nodiscard]] bool IsCancelling() const { return m_cancelled; }
    // Whether the work has gone on for that long without asking whether it is to end.
    [[nodiscard]] bool Ignores(Clock::duration longest) const;
    // The work is cancelled when it gets that far, from 0 to 1.
    void CancelAt(Double part) { m_cancelAt = part; }

    [[nodiscard]] bool HasBegun() const { return m_begun != 0; }
    [[nodiscard]] std::optional<Double> DonePart() const;
    [[nodiscard]] Clock::duration Elapsed() const; // since the work began
    [[nodiscard]] std::string Text() const;
    [[nodiscard]] std::vector<std::string> LogLines() const;

    // Once the work has ended.
    [[nodiscard]] const std::optional<Failure>& Error() const { return m_error; }
    [[nodiscard]] bool WasCancelled() const { return m_wasCancelled; }

private:
    friend class Part;
    // A thread works for the job for as long as this lives.
    class Working;

    JobTask& m_task;
    std::string m_title;
    std::string m_service;
    Pool& m_pool;
    const ThreadHooks& m_hooks;
    std::atomic<bool> m_cancelled = false;
    std::atomic<Clock::rep> m_cancelledAt = 0;
    mutable std::atomic<bool> m_knows = false; // the work, that it is cancelled
    std::atomic<Double> m_cancelAt = 2;
    std::atomic<bool> m_reports = false; // the work, its part
    std::atomic<Clock::rep> m_begun = 0;
    mutable std::mutex m_mutex; // of the texts
    std::string m_text;
    std::deque<std::string> m_log;
    Part m_whole{*this, nullptr, 1, nullptr};
    std::optional<Failure> m_error;
    bool m_wasCancelled = false;
};

} // namespace corvane::jobs
