// Jobs: work that takes time, on the host's threads beside the user's own work. Plug-ins start them by StartJob of
// corvane/Jobs.h; a host offers IJobs as the member "Jobs" of its main form.
#pragma once

#include "corvane/base/Event.h"
#include "corvane/base/Failure.h"
#include "corvane/base/Ref.h"

#include <cstddef>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

// How a job is started.
struct JobOptions {
    std::string title = {}; // what the user reads, such as "Import penguins.csv"; needed
    // The service, explorer item, page or window that the job belongs to. It is kept alive until the job has ended;
    // when it is a window or page and the window has closed by then, nobody is notified of the result.
    Ref<Object> owner = {};
    bool canCancel = true; // false for work that never asks whether it was cancelled
    bool quiet = false;    // true: neither in the status bar nor among the finished jobs, unless it fails
    // What the work uses, as texts of the application's own, such as "penguins.csv"; compared without case. A job waits
    // for all earlier ones that write what it reads or writes, or that read what it writes.
    std::vector<std::string> reads = {};
    std::vector<std::string> writes = {};
};

enum class JobState { Waiting, Running, Done, Failed, Cancelled };

// Leaves work that has been cancelled; not a failure.
class __attribute__((visibility("default"))) JobCancelled final : public std::exception {
public:
    ~JobCancelled() override;
    const char* what() const noexcept override { return "The job was cancelled"; }
};

// What work reports, and learns, while it runs. It belongs to the work and is used in its threads only.
class __attribute__((visibility("default"))) JobProgress {
public:
    JobProgress(const JobProgress&) = delete;
    JobProgress& operator=(const JobProgress&) = delete;

    // What is being done now, in a few words.
    virtual void SetText(std::string sText) = 0;
    // The part that is done, from 0 to 1; what is outside counts as the nearest. Cheap: call it as often as you like.
    virtual void SetPart(Double dblPart) = 0;
    // The same, of a number of steps; nothing for a number of 0.
    void SetPart(std::size_t nDone, std::size_t nAll) {
        if (nAll > 0)
            SetPart(static_cast<Double>(nDone) / static_cast<Double>(nAll));
    }
    // A line for the details of the job, of which the last 500 are kept.
    virtual void Log(std::string sLine) = 0;
    // Whether the work is to end. Cheap.
    [[nodiscard]] virtual bool IsCancelled() const = 0;
    // Leaves the work by JobCancelled when it is to end.
    void StopIfCancelled() const {
        if (IsCancelled())
            throw JobCancelled();
    }
    // Divides the work of this progress by weights, one piece after another or several at the same time: each piece has
    // its own progress, and the whole follows them. Weights that aren't greater than 0 count nothing. The results last
    // as long as the work.
    virtual std::vector<std::reference_wrapper<JobProgress>> Split(const std::vector<Double>& aWeights) = 0;
    // Calls fnPart once for each weight, with the index from 0, on as many threads as are free, this one among them,
    // and returns when all have ended. When parts fail, the others are cancelled, and the failure of the first of those
    // is raised. JobGroup is the comfortable form.
    virtual void RunParts(const std::vector<Double>& aWeights,
                          const std::function<void(std::size_t iPart, JobProgress& oPart)>& fnPart) = 0;

protected:
    JobProgress() = default;
    virtual ~JobProgress();
};

// What became of a job, for its task.
struct JobOutcome {
    const Failure* pFailure = nullptr; // of work that failed
    bool bWasCancelled = false;
    bool bFailureSeen = false; // set by the task when it has dealt with the failure; otherwise the host shows it
};

// The two halves of a job. It is made and destroyed on the thread of the user interface.
class __attribute__((visibility("default"))) JobTask {
public:
    JobTask() = default;
    JobTask(const JobTask&) = delete;
    JobTask& operator=(const JobTask&) = delete;
    virtual ~JobTask();

    virtual void Work(JobProgress& oProgress) = 0; // on a thread of the host's
    virtual void Done(JobOutcome& oOutcome) = 0;   // on that of the user interface
};

// A job as the user interface sees it.
class __attribute__((visibility("default"))) IJob : public virtual Object {
public:
    [[nodiscard]] virtual const std::string& Title() const = 0;
    [[nodiscard]] virtual JobState State() const = 0;
    [[nodiscard]] virtual bool CanCancel() const = 0; // false as well once it has ended
    // Asks the work to end; a waiting job ends at once. Nothing happens when CanCancel says no.
    virtual void Cancel() = 0;
    // What is done, from 0 to 1; nothing as long as the work hasn't said.
    [[nodiscard]] virtual std::optional<Double> Part() const = 0;
    [[nodiscard]] virtual std::string Text() const = 0;
    [[nodiscard]] virtual std::vector<std::string> LogLines() const = 0;
    [[nodiscard]] virtual const std::optional<Failure>& Error() const = 0;
};

class __attribute__((visibility("default"))) IJobs : public virtual Object {
public:
    // sProcedure is the one that starts the job, as in "BirdsService.OnImport". Fails with 5 without a title, and with
    // 91 when the application has ended.
    virtual Ref<IJob> Start(JobOptions oOptions, std::unique_ptr<JobTask> pTask, std::string sProcedure) = 0;
    // Those that wait or run, in order of their start.
    [[nodiscard]] virtual std::vector<Ref<IJob>> Unfinished() const = 0;
    // One has been started, has begun or has ended. Not raised for progress.
    Event<> Changed;
};

} // namespace corvane
