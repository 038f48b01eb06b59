// Work of a process that the application shows as a job: the process computes, and one of the host's threads waits for
// it and passes on what it reports.
#pragma once

#include "adapters/process/ChildProcess.h"
#include "corvane/platform/IJobs.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace corvane {

class Process;

// What the thread that waits and the user interface, which alone speaks to the process, share of a job.
class ProcessJob {
public:
    enum class Wish { None, Begin, Cancel };

    struct News {
        std::optional<Double> part = {}; // from 0 to 1
        std::optional<std::string> text = {};
        std::vector<std::string> log = {};
    };

    explicit ProcessJob(std::shared_ptr<const Waker> waker) : m_waker(std::move(waker)) {}

    // In the thread of the job: lets the process begin, and returns when that has ended, failed or has been cancelled,
    // as work does. turn is called again and again where nothing else listens to the process meanwhile.
    void Work(JobProgress& progress, const std::function<void()>& turn);

    // On the thread of the user interface: what the process is to be told, each once.
    [[nodiscard]] Wish TakeWish();
    [[nodiscard]] bool HasWish();
    void Report(News news);
    void End(std::optional<Failure> failure, bool cancelled);

private:
    void WishFor(Wish wish);

    std::shared_ptr<const Waker> m_waker;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<Wish> m_wishes;
    std::vector<News> m_news;
    bool m_ended = false;
    bool m_wasCancelled = false;
    std::optional<Failure> m_failure;
};

class ProcessTask final : public JobTask {
public:
    ProcessTask(Ref<Process> process, LongLong number, std::shared_ptr<ProcessJob> job);
    ~ProcessTask() override;

    void Work(JobProgress& progress) override;
    void Done(JobOutcome& /*outcome*/) override {} // the process goes on by itself

private:
    Ref<Process> m_process; // used on the thread of the user interface only
    LongLong m_number;
    std::shared_ptr<ProcessJob> m_job;
    std::thread::id m_thread = std::this_thread::get_id();
};

} // namespace corvane
