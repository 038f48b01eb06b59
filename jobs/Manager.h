// The jobs of an application: the main form's member "Jobs".
#pragma once

#include "corvane/platform/controls/PanelForm.h"
#include "jobs/Job.h"

#include <deque>
#include <map>

namespace corvane::jobs {

// What jobs need of the host around them.
struct Host {
    // From any thread, never twice before Deliver: Deliver is to be called soon, on the thread of the user interface.
    std::function<void()> wake = [] {};
    // Runs what is called of a plug-in's; a failure that leaves it is shown.
    std::function<void(const std::function<void()>& act)> guard = [](const auto& act) { act(); };
    // False: results are held back for now. The host then calls Deliver again by itself.
    std::function<bool()> mayDeliver = [] { return true; };
    ThreadHooks threads = {};
    Ref<PanelForm> explorer = {};             // where the nodes of owners are; nothing without an explorer
    std::size_t mostThreads = UsualThreads(); // 0: the work is done by RunToEnd, in its thread
    bool begins = true;                       // false: jobs begin in RunToEnd
    std::function<void()> idle = {};          // called again and again while RunToEnd waits for threads, if given
    bool keepsAll = false;                    // of those that have ended, the quiet ones as well

    [[nodiscard]] static std::size_t UsualThreads();
};

class Manager final : public Automation<Manager, IJobs> {
public:
    static constexpr std::size_t MostEnded = 200; // jobs that are kept

    explicit Manager(Host host);
    ~Manager() override;

    // As IJobs.
    Ref<IJob> Start(JobOptions options, std::unique_ptr<JobTask> task, std::string procedure) override;
    [[nodiscard]] std::vector<Ref<IJob>> Unfinished() const override;

    // In order of their start.
    [[nodiscard]] std::vector<Ref<Job>> Active() const; // that wait or run
    // In order of their end, the latest last, until ForgetEnded.
    [[nodiscard]] const std::deque<Ref<Job>>& Ended() const { return m_ended; }
    void ForgetEnded();
    [[nodiscard]] bool HasActive() const { return !m_active.empty(); }

    // Calls back for the jobs whose work has ended. Returns after some milliseconds, and wakes the host again for the
    // rest.
    void Deliver();
    // Runs all jobs to their end, those too that begin meanwhile.
    void RunToEnd();
    // The application ends: nothing is called back any more, all jobs are cancelled, and none can be started. Waits for
    // the threads, at most so long; false when there is work that goes on all the same, and with it what it uses.
    [[nodiscard]] bool Stop(Clock::duration longest);
    [[nodiscard]] bool HasStopped() const { return m_stopped; }

    std::string_view TypeName() const override { return "Jobs"; }
    // For calls by name, by which no job can be started.
    [[nodiscard]] Long Count() const { return static_cast<Long>(m_active.size()); }
    static constexpr auto Members = MemberTable(Property("Count", &Manager::Count));

private:
    friend class Job;

    // What the threads share with this.
    struct Finished {
        std::mutex mutex = {};
        std::condition_variable added = {};
        std::deque<Number> jobs = {};
        bool woken = false;
    };

    void BeginIfFree(const Ref<Job>& job);
    void Work(Number number, Run& run);
    [[nodiscard]] std::optional<Number> TakeFinished();
    void End(const Ref<Job>& job);
    [[nodiscard]] bool HasOwner(const Job& job) const;
    void CallBack(Job& job);
    static void LetGo(Job& job); // of what it holds
    void Cancel(Job& job);
    [[nodiscard]] std::vector<Obstacle> WaitsFor(const Job& job) const;
    [[nodiscard]] bool RunNext();

    Host m_host;
    std::thread::id m_thread = std::this_thread::get_id();
    Number m_last = 0;
    std::map<Number, Ref<Job>> m_active;
    std::deque<Ref<Job>> m_ended;
    std::deque<Number> m_held; // that may begin, and wait for RunToEnd
    Keys m_keys;
    Finished m_finished;
    bool m_stopped = false;
    std::unique_ptr<Pool> m_pool; // goes first: its threads use the rest
};

} // namespace corvane::jobs
