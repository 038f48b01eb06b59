// Jobs in short: StartJob({.title = "Count"}, work, done) runs work on another thread, and then done on the thread of
// the user interface. Work gets plain values by its captures and returns one; nothing of Corvane's goes in or out.
#pragma once

#include "corvane/platform/IJobs.h"

#include <concepts>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <source_location>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace corvane {

class Window;

// Where a job is started, as far as its procedure goes. Some compilers have no std::source_location, but what it needs.
#ifdef __cpp_lib_source_location
using CallPlace = std::source_location;
#else
class CallPlace {
public:
    [[nodiscard]] static constexpr CallPlace current(const char* sFunction = __builtin_FUNCTION()) {
        return CallPlace(sFunction);
    }
    [[nodiscard]] constexpr const char* function_name() const { return m_sFunction; }

private:
    constexpr explicit CallPlace(const char* sFunction) : m_sFunction(sFunction) {}

    const char* m_sFunction;
};
#endif

// What became of the work, for a `done` that wants to know everything: done(JobResult<T>& oResult).
template <class T>
class JobResult {
public:
    using Stored = std::conditional_t<std::is_void_v<T>, std::monostate, T>;

    JobResult(JobOutcome& oOutcome, std::optional<Stored>& oValue) : m_oOutcome(oOutcome), m_oValue(oValue) {}

    [[nodiscard]] bool WasCancelled() const { return m_oOutcome.bWasCancelled; }
    // The failure of the work, which the host doesn't show then; a null pointer for none.
    [[nodiscard]] const Failure* Error() {
        m_oOutcome.bFailureSeen = true;
        return m_oOutcome.pFailure;
    }
    // Raises the failure of the work, which the host shows unless it is caught; of a job that was cancelled,
    // JobCancelled, which ends `done` and isn't shown.
    Stored& Value() {
        if (m_oOutcome.pFailure) {
            m_oOutcome.bFailureSeen = true;
            throw *m_oOutcome.pFailure;
        }
        if (!m_oValue || m_oOutcome.bWasCancelled)
            throw JobCancelled();
        return *m_oValue;
    }

private:
    JobOutcome& m_oOutcome;
    std::optional<Stored>& m_oValue;
};

namespace detail {

template <class T>
inline constexpr bool bIsRef = false;
template <class T>
inline constexpr bool bIsRef<Ref<T>> = true;

// What may leave work.
template <class T>
inline constexpr bool bIsPlain =
    !std::is_reference_v<T> && !std::is_pointer_v<T> && !bIsRef<std::remove_cv_t<T>> && !std::derived_from<T, Object>;

template <class W>
decltype(auto) CallWork(W& fnWork, JobProgress& oProgress) {
    if constexpr (std::invocable<W&, JobProgress&>)
        return fnWork(oProgress);
    else
        return fnWork();
}

struct NoDone {};

template <class W, class D>
class WorkTask final : public JobTask {
    using Result = decltype(CallWork(std::declval<W&>(), std::declval<JobProgress&>()));
    using Stored = typename JobResult<Result>::Stored;
    static_assert(bIsPlain<Result>,
                  "work returns a plain value: Corvane's objects belong to the user interface's thread");

public:
    WorkTask(W fnWork, D fnDone) : m_oWork(std::move(fnWork)), m_fnDone(std::move(fnDone)) {}

    void Work(JobProgress& oProgress) override {
        // What the work has captured goes here, so that the user interface needn't wait for it.
        const struct End {
            std::optional<W>& oWork;
            ~End() { oWork.reset(); }
        } oEnd{m_oWork};
        if constexpr (std::is_void_v<Result>) {
            CallWork(*m_oWork, oProgress);
            m_oValue.emplace();
        } else {
            m_oValue.emplace(CallWork(*m_oWork, oProgress));
        }
    }
    void Done(JobOutcome& oOutcome) override {
        JobResult<Result> oResult(oOutcome, m_oValue);
        if constexpr (std::same_as<D, NoDone>)
            return;
        else if constexpr (std::invocable<D&, JobResult<Result>&>)
            m_fnDone(oResult);
        else if (!oOutcome.pFailure && !oOutcome.bWasCancelled) {
            if constexpr (std::is_void_v<Result>)
                m_fnDone();
            else
                m_fnDone(std::move(*m_oValue));
        }
    }

private:
    std::optional<W> m_oWork;
    D m_fnDone;
    std::optional<Stored> m_oValue;
};

// By the member "Jobs" of the main form. Fails with 438 in a host that has none, and with 91 once the application has
// ended.
[[gnu::visibility("default")]] Ref<IJob> StartTask(JobOptions oOptions, std::unique_ptr<JobTask> pTask,
                                                   std::string sProcedure);
// "BirdsService.OnImport" of "void birds::BirdsService::OnImport()", also of a lambda in it.
[[nodiscard, gnu::visibility("default")]] std::string ProcedureIn(const CallPlace& oWhere);
// Both halves at once, here. Raises the failure of the work unless the task has dealt with it.
[[gnu::visibility("default")]] void DoTask(JobTask& oTask);

} // namespace detail

// The progress of work that isn't a job, so that a function which takes one can be called anywhere: it is never
// cancelled, no one sees it, and parts run one after another. The same object for all threads.
[[nodiscard, gnu::visibility("default")]] JobProgress& WithoutJob();

// Starts work(JobProgress&) or work(), which returns a plain value or nothing, on a thread of the host's. Then done is
// called on the thread of the user interface, where StartJob is called as well. It is done(value) or, for work without
// a value, done(): for work that succeeded; a failure is shown by the host, with the job, its service and the procedure
// that started it. Or it is done(JobResult<T>&), for whatever became of the work. It isn't called when the window that
// the job belongs to has closed, or the application has ended. Fails with 5 without a title.
template <class W, class D>
Ref<IJob> StartJob(JobOptions oOptions, W fnWork, D fnDone, const CallPlace& oWhere = CallPlace::current()) {
    return detail::StartTask(std::move(oOptions),
                             std::make_unique<detail::WorkTask<W, D>>(std::move(fnWork), std::move(fnDone)),
                             detail::ProcedureIn(oWhere));
}
// The same for work whose end is of no interest, unless it fails.
template <class W>
Ref<IJob> StartJob(JobOptions oOptions, W fnWork, const CallPlace& oWhere = CallPlace::current()) {
    return StartJob(std::move(oOptions), std::move(fnWork), detail::NoDone{}, oWhere);
}

// The same if it takes long, by what the caller knows of it; otherwise work and done have run, here, when the call
// returns. The result is nothing then, and a failure of the work that done doesn't take is raised.
template <class W, class D>
Ref<IJob> StartJobIf(bool bTakesLong, JobOptions oOptions, W fnWork, D fnDone,
                     const CallPlace& oWhere = CallPlace::current()) {
    if (bTakesLong)
        return StartJob(std::move(oOptions), std::move(fnWork), std::move(fnDone), oWhere);
    detail::WorkTask<W, D> oTask(std::move(fnWork), std::move(fnDone));
    detail::DoTask(oTask);
    return nullptr;
}

// Parts of one piece of work, on all processors: made, filled and run inside of work. Its progress is that of the parts
// by their weights, and a cancelled job cancels them.
template <class T>
class JobGroup {
public:
    explicit JobGroup(JobProgress& oProgress) : m_oProgress(oProgress) {}

    // part(JobProgress&) or part(), which returns a T.
    template <class Part>
    void Add(Part fnPart, Double dblWeight = 1) {
        m_aParts.push_back(
            [fn = std::move(fnPart)](JobProgress& oPart) mutable -> T { return detail::CallWork(fn, oPart); });
        m_aWeights.push_back(dblWeight);
    }
    // Once. The results are in the order of Add, whichever part ended first. Raises the failure of the first part that
    // failed, the others are cancelled then; JobCancelled when the job was cancelled and a part has left by that.
    auto Run() {
        if constexpr (std::is_void_v<T>) {
            m_oProgress.RunParts(m_aWeights, [this](std::size_t i, JobProgress& oPart) { m_aParts[i](oPart); });
        } else {
            std::vector<std::optional<T>> aFound(m_aParts.size());
            m_oProgress.RunParts(m_aWeights,
                                 [&](std::size_t i, JobProgress& oPart) { aFound[i].emplace(m_aParts[i](oPart)); });
            std::vector<T> aResults;
            aResults.reserve(aFound.size());
            for (auto& oFound : aFound)
                aResults.push_back(std::move(*oFound));
            return aResults;
        }
    }

private:
    JobProgress& m_oProgress;
    std::vector<std::function<T(JobProgress&)>> m_aParts;
    std::vector<Double> m_aWeights;
};

// Starts a job again and again, as long as it lives: a member of the object that the job belongs to. It ends with it,
// and before that when the page's window closes.
class __attribute__((visibility("default"))) JobTimer {
public:
    JobTimer();
    ~JobTimer();
    JobTimer(const JobTimer&) = delete;
    JobTimer& operator=(const JobTimer&) = delete;

    // From now on every so many milliseconds, unless the previous job hasn't ended. As StartJob, and the first time
    // after the interval; work and done are copied each time. A failure that repeats is shown once. Fails with 5 for an
    // interval that isn't greater than 0.
    template <class W, class D>
    void Start(Long lMilliseconds, JobOptions oOptions, W fnWork, D fnDone,
               const CallPlace& oWhere = CallPlace::current()) {
        Repeat(
            lMilliseconds, std::move(oOptions),
            [fnWork = std::move(fnWork), fnDone = std::move(fnDone)]() -> std::unique_ptr<JobTask> {
                return std::make_unique<detail::WorkTask<W, D>>(fnWork, fnDone);
            },
            detail::ProcedureIn(oWhere));
    }
    // A job that is running is cancelled, and its done isn't called.
    void Stop();
    [[nodiscard]] bool IsActive() const { return m_pState != nullptr; }

private:
    struct State;

    void Repeat(Long lMilliseconds, JobOptions oOptions, std::function<std::unique_ptr<JobTask>()> fnNewTask,
                std::string sProcedure);

    std::shared_ptr<State> m_pState; // nothing while it is stopped
};

// A job of which only the latest counts, as what it computes follows the user's settings: a member of the object that
// the job belongs to. It ends with it.
class __attribute__((visibility("default"))) LatestJob {
public:
    LatestJob() = default;
    ~LatestJob() { Stop(); }
    LatestJob(const LatestJob&) = delete;
    LatestJob& operator=(const LatestJob&) = delete;

    // As StartJob and StartJobIf. The job that was started before is cancelled, and its done isn't called.
    template <class W, class D>
    void Start(JobOptions oOptions, W fnWork, D fnDone, const CallPlace& oWhere = CallPlace::current()) {
        StartIf(true, std::move(oOptions), std::move(fnWork), std::move(fnDone), oWhere);
    }
    template <class W, class D>
    void StartIf(bool bTakesLong, JobOptions oOptions, W fnWork, D fnDone,
                 const CallPlace& oWhere = CallPlace::current()) {
        using Result = decltype(detail::CallWork(fnWork, std::declval<JobProgress&>()));
        Stop();
        const auto pRun = std::make_shared<Ref<IJob>>();
        *pRun = StartJobIf(
            bTakesLong, std::move(oOptions), std::move(fnWork),
            [this, pUnlessOther = std::weak_ptr(pRun), fnDone = std::move(fnDone)](JobResult<Result>& oResult) mutable {
                if (pUnlessOther.expired())
                    return;
                m_pRun = nullptr;
                if constexpr (std::invocable<D&, JobResult<Result>&>) {
                    fnDone(oResult);
                } else if constexpr (std::is_void_v<Result>) {
                    (void)oResult.Value();
                    fnDone();
                } else {
                    fnDone(std::move(oResult.Value()));
                }
            },
            oWhere);
        m_pRun = *pRun ? pRun : nullptr;
    }
    void Stop() {
        if (const auto pRun = std::exchange(m_pRun, nullptr); pRun && *pRun)
            (*pRun)->Cancel();
    }
    [[nodiscard]] bool IsActive() const { return m_pRun != nullptr; }

private:
    std::shared_ptr<Ref<IJob>> m_pRun; // nothing while none runs
};

// The window that an owner of jobs is or, as a page, belongs to; nothing for others.
[[nodiscard, gnu::visibility("default")]] Ref<Window> WindowOfOwner(const Ref<Object>& oOwner);

} // namespace corvane
