#include "corvane/author/Jobs.h"

#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/platform/Platform.h"
#include "corvane/windows/IPageAccess.h"
#include "corvane/windows/PageBase.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"

#include <string_view>

namespace corvane {

JobCancelled::~JobCancelled() = default;
JobProgress::~JobProgress() = default;
JobTask::~JobTask() = default;

namespace detail {

Ref<IJob> StartTask(JobOptions oOptions, std::unique_ptr<JobTask> pTask, std::string sProcedure) {
    const Ref<MdiForm> frmMain = Singleton::Framework()->WindowManager()->MainForm();
    Ref<IJobs> oJobs;
    try {
        oJobs = ToObject(frmMain->Invoke("Jobs", {})).As<IJobs>();
    } catch (const Failure& oFailure) {
        if (oFailure.Number != FailureNumber::NoSuchMember)
            throw;
        Fail(FailureNumber::NoSuchMember, "The host has no jobs: its main form has no member \"Jobs\"", "Jobs");
    }
    return oJobs->Start(std::move(oOptions), std::move(pTask), std::move(sProcedure));
}

std::string ProcedureIn(const CallPlace& oWhere) {
    std::string_view sText = oWhere.function_name();
    if (sText == "operator()") // of a lambda, where the compiler knows short names only
        return {};
    sText = sText.substr(0, sText.find('('));
    // The result's type comes first; a template's arguments may hold blanks and scopes of their own.
    std::size_t iName = 0;
    std::size_t iOwner = 0;
    int nBrackets = 0;
    for (std::size_t i = 0; i < sText.size(); ++i) {
        nBrackets += sText[i] == '<' ? 1 : sText[i] == '>' ? -1 : 0;
        if (nBrackets > 0)
            continue;
        if (sText[i] == ' ' || sText[i] == '*' || sText[i] == '&') {
            iName = iOwner = i + 1;
        } else if (sText.substr(i, 2) == "::") {
            iOwner = iName;
            iName = i + 2;
        }
    }
    std::string sProcedure(sText.substr(iOwner));
    if (iName > iOwner)
        sProcedure.replace(iName - iOwner - 2, 2, ".");
    return sProcedure;
}

void DoTask(JobTask& oTask) {
    std::optional<Failure> oFailure;
    try {
        oTask.Work(WithoutJob());
    } catch (const Failure& oRaised) {
        oFailure = oRaised;
    }
    JobOutcome oOutcome{.pFailure = oFailure ? &*oFailure : nullptr};
    oTask.Done(oOutcome);
    if (oFailure && !oOutcome.bFailureSeen)
        throw *oFailure;
}

} // namespace detail

namespace {

// Without a state, so that it may be used by all at the same time.
class NoProgress final : public JobProgress {
public:
    using JobProgress::SetPart;
    void SetText(std::string) override {}
    void SetPart(Double) override {}
    void Log(std::string) override {}
    [[nodiscard]] bool IsCancelled() const override { return false; }
    std::vector<std::reference_wrapper<JobProgress>> Split(const std::vector<Double>& aWeights) override {
        return {aWeights.size(), std::ref<JobProgress>(*this)};
    }
    void RunParts(const std::vector<Double>& aWeights,
                  const std::function<void(std::size_t iPart, JobProgress& oPart)>& fnPart) override {
        for (std::size_t i = 0; i < aWeights.size(); ++i)
            fnPart(i, *this);
    }
};

} // namespace

JobProgress& WithoutJob() {
    static NoProgress oNone;
    return oNone;
}

Ref<Window> WindowOfOwner(const Ref<Object>& oOwner) {
    if (auto oWindow = oOwner.TryAs<Window>())
        return oWindow;
    const auto oAccess = oOwner.TryAs<IPageAccess>();
    const auto oBase = oAccess ? oAccess->Page().TryAs<PageBase>() : Ref<PageBase>();
    return oBase ? oBase->Window() : Ref<Window>();
}

// Its job holds it, too, so that what comes back finds whether anybody still waits.
struct JobTimer::State {
    // Hands a job's results on only as long as the timer runs.
    class Guarded;

    JobOptions oOptions;      // without the owner, which would keep itself alive
    Object* pOwner = nullptr; // has the timer as a member
    bool bHasWindow = false;  // the owner, when it started
    std::function<std::unique_ptr<JobTask>()> fnNewTask;
    std::string sProcedure;
    Ref<ITimer> oTimer;
    Subscription oTick;
    Ref<IJob> oJob; // that runs
    std::string sLastFailure;
    bool bStopped = false;
};

class JobTimer::State::Guarded final : public JobTask {
public:
    Guarded(std::shared_ptr<State> pState, std::unique_ptr<JobTask> pTask)
        : m_pState(std::move(pState)), m_pTask(std::move(pTask)) {}

    void Work(JobProgress& oProgress) override { m_pTask->Work(oProgress); }
    void Done(JobOutcome& oOutcome) override {
        if (m_pState->bStopped) {
            oOutcome.bFailureSeen = true;
            return;
        }
        m_pState->oJob = nullptr;
        const std::string sFailure = oOutcome.pFailure ? oOutcome.pFailure->Description : std::string();
        oOutcome.bFailureSeen = sFailure == m_pState->sLastFailure;
        m_pState->sLastFailure = sFailure;
        m_pTask->Done(oOutcome);
    }

private:
    std::shared_ptr<State> m_pState;
    std::unique_ptr<JobTask> m_pTask;
};

JobTimer::JobTimer() = default;

JobTimer::~JobTimer() {
    Stop();
}

void JobTimer::Repeat(Long lMilliseconds, JobOptions oOptions, std::function<std::unique_ptr<JobTask>()> fnNewTask,
                      std::string sProcedure) {
    if (lMilliseconds <= 0)
        Fail(FailureNumber::InvalidProcedureCall,
             "The interval of a timer is at least 1 millisecond, and not " + std::to_string(lMilliseconds), "Jobs");
    Stop();
    const auto pState = std::make_shared<State>();
    pState->pOwner = oOptions.owner.Get();
    pState->bHasWindow = WindowOfOwner(oOptions.owner) != nullptr;
    pState->oOptions = std::move(oOptions);
    pState->oOptions.owner = nullptr;
    pState->fnNewTask = std::move(fnNewTask);
    pState->sProcedure = std::move(sProcedure);
    pState->oTimer = CurrentPlatform().oTimers->NewTimer();
    pState->oTick = pState->oTimer->Tick.Subscribe([this, pTicking = pState.get()] {
        if (pTicking->oJob)
            return;
        JobOptions oNext = pTicking->oOptions;
        if (pTicking->pOwner)
            oNext.owner = Ref<Object>(pTicking->pOwner);
        if (pTicking->bHasWindow && !WindowOfOwner(oNext.owner)) {
            Stop();
            return;
        }
        const auto pShared = m_pState;
        pShared->oJob = detail::StartTask(
            std::move(oNext), std::make_unique<State::Guarded>(pShared, pShared->fnNewTask()), pShared->sProcedure);
    });
    m_pState = pState;
    pState->oTimer->SetInterval(lMilliseconds);
    pState->oTimer->SetEnabled(true);
}

void JobTimer::Stop() {
    const auto pState = std::move(m_pState);
    if (!pState)
        return;
    m_pState = nullptr;
    pState->bStopped = true;
    pState->oTimer->SetEnabled(false);
    pState->oTick.Cancel();
    pState->oTick = {};
    if (pState->oJob)
        pState->oJob->Cancel();
    pState->oJob = nullptr;
}

} // namespace corvane
