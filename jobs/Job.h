// One job, for the thread of the user interface.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/windows/Window.h"
#include "jobs/Keys.h"
#include "jobs/Owner.h"
#include "jobs/Run.h"

namespace corvane::jobs {

class Manager;

// What a job that waits waits for.
struct Obstacle {
    std::string title; // of the other job
    std::string key;   // that both use
};

class Job final : public IJob {
public:
    Job(Manager& manager, Number number, JobOptions options, std::unique_ptr<JobTask> task, std::string procedure);

    // As IJob.
    [[nodiscard]] const std::string& Title() const override { return m_options.title; }
    [[nodiscard]] JobState State() const override;
    [[nodiscard]] bool CanCancel() const override { return m_options.canCancel && !m_end; }
    void Cancel() override;
    [[nodiscard]] std::optional<Double> Part() const override { return m_run->DonePart(); }
    [[nodiscard]] std::string Text() const override { return m_run->Text(); }
    [[nodiscard]] std::vector<std::string> LogLines() const override { return m_run->LogLines(); }
    [[nodiscard]] const std::optional<Failure>& Error() const override { return m_error; }
    std::string_view TypeName() const override { return "Job"; }

    [[nodiscard]] const Owner& BelongsTo() const { return m_owner; }
    [[nodiscard]] bool IsQuiet() const { return m_options.quiet; }
    [[nodiscard]] bool HasEnded() const { return m_end.has_value(); }
    [[nodiscard]] bool IsCancelling() const { return !m_end && m_run->IsCancelling(); }
    // Its work has gone on for five seconds since it was cancelled, and hasn't asked.
    [[nodiscard]] bool IgnoresCancel() const;
    void CancelAt(Double part) { m_run->CancelAt(part); } // from 0 to 1
    [[nodiscard]] std::optional<Clock::duration>
    TimeLeft() const; // an estimate; nothing as long as it would jump about
    [[nodiscard]] std::vector<Obstacle> WaitsFor() const;
    // The window that the job belongs to; nothing for none, and once it has ended.
    [[nodiscard]] const Ref<Window>& OwnWindow() const { return m_window; }

private:
    friend class Manager;

    Ref<Manager> m_manager; // until the end
    Number m_number;
    JobOptions m_options;
    Owner m_owner;
    Ref<Window> m_window;
    bool m_hadNode;      // its owner, in the explorer when it started
    std::string m_place; // where it was started, for failures and the log: in the job "Import", started in …
    std::unique_ptr<JobTask> m_task;
    std::shared_ptr<Run> m_run;
    bool m_isQueued = false; // with the pool, or held for RunToEnd
    std::optional<JobState> m_end;
    std::optional<Failure> m_error;
};

} // namespace corvane::jobs
