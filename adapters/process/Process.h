// The process of one plug-in: started when it is first needed, spoken to in messages of one line of JSON each, and
// started again after its death. docs/protocol.md describes the messages.
#pragma once

#include "adapters/process/ChildProcess.h"
#include "adapters/process/ExplorerMarks.h"
#include "adapters/process/PassedObjects.h"
#include "adapters/process/ProcessClasses.h"
#include "adapters/process/ProcessJobs.h"
#include "adapters/process/ProcessMonitor.h"
#include "adapters/process/ProcessSettings.h"
#include "adapters/process/ProcessUse.h"
#include "corvane/base/Event.h"
#include "corvane/base/Ref.h"
#include "corvane/base/Variant.h"
#include "corvane/platform/ITimers.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class ProcessObject;

class Process final : public virtual Object {
public:
    static constexpr Long Version = 1; // of the protocol
    // What a call fails with when the process has died, can't be started, or was stopped.
    static constexpr Long Ended = FailureNumber::ObjectErrorBase + 0x100;

    // Starts the process of a service. Fails with 429 when the program can't be started; the description says why.
    using Connect =
        std::function<std::unique_ptr<Connection>(const LaunchCommand& command, ChildProcess::SaidFunction said)>;

    Process(ProcessSettings settings, Ref<ProcessMonitor> monitor, std::shared_ptr<const ExplorerMarks> marks = {},
            Connect connect = ConnectChild);
    ~Process() override;

    [[nodiscard]] const std::string& Name() const { return m_settings.name; }
    [[nodiscard]] const std::string& File() const { return m_settings.file; }
    [[nodiscard]] bool StartsNow() const { return m_settings.startsNow; }
    [[nodiscard]] bool IsRunning() const { return m_child != nullptr; }
    // By the end of the application.
    [[nodiscard]] bool HasStopped() const { return m_stopped; }
    // A call to it is under way, perhaps because it has opened a dialog that is shown. Its jobs wait for that.
    [[nodiscard]] bool IsWaitedFor() const { return !m_waiting.empty(); }
    // The number of the start; objects of an earlier one are gone.
    [[nodiscard]] int Generation() const { return m_generation; }

    // Starts it, unless it runs. Fails with Ended, also when it has died three times in a row within a minute.
    void Need();
    // Once after each start: its services are initialized before any other object is. What fails in that is logged, and
    // tried again when the service is called; only the end of the process is a failure here.
    void BeginServices();
    // The classes that it said it has, since its first start. They stay as long as this object.
    [[nodiscard]] const std::deque<ProcessClass>& Classes() const { return m_classes.All(); }
    [[nodiscard]] const ProcessClass* FindClass(std::string_view progID) const { return m_classes.Find(progID); }

    // Sends the request and serves what the process asks until its answer is there. Fails as the process says, or with
    // Ended; doing says what it was to do, for that text.
    nlohmann::json Ask(nlohmann::json request, const std::string& doing);
    // The same for one whose answer is a value.
    Variant AskValue(nlohmann::json request, const std::string& doing);
    // Handles a line that the process has sent; what isn't a message is refused.
    void Receive(const std::string& line);
    // A number that changes with every message in either direction.
    [[nodiscard]] std::uint64_t Turns() const { return m_turns; }
    // The last death in words, as in "was killed by signal 9 (Killed)"; empty before the first.
    [[nodiscard]] const std::string& Death() const { return m_death; }
    [[nodiscard]] ProcessUse Use() const;
    // Serves what the process has asked on its own accord, and notices its death. Never waits.
    void Pump();
    // Lets it end, kills it if it doesn't, and lets go of all objects that it held.
    void Stop();
    // Waits a moment for what the process sends, and serves it.
    void Turn();
    // Ends it without a failure, as for a program that has been changed. What needs it next starts it.
    void Restart();

    // Shows work of the process as a job, under the number that the process has given it.
    void StartJob(LongLong number, JobOptions options, std::string procedure);
    // As ProcessJobs::Forget.
    void JobEnds(LongLong number, const std::shared_ptr<ProcessJob>& job);

    // As PassedObjects.
    [[nodiscard]] nlohmann::json ToJson(const Variant& value);
    [[nodiscard]] Variant FromJson(const nlohmann::json& value);

    // While this lives, the process's death is left to the failure of the call, which is logged where it is caught: the
    // log has one line of it.
    class Reporting {
    public:
        explicit Reporting(Process& process) : m_process(process) { ++m_process.m_reporting; }
        ~Reporting() { --m_process.m_reporting; }
        Reporting(const Reporting&) = delete;
        Reporting& operator=(const Reporting&) = delete;

    private:
        Process& m_process;
    };

    // By its objects.
    void Made(ProcessObject& object) { m_known.insert(&object); }
    void Gone(ProcessObject& object) { m_known.erase(&object); }
    [[nodiscard]] const std::set<ProcessObject*>& Known() const { return m_known; }
    void Joined(ProcessObject& object, LongLong handle) { m_objects.Joined(object, handle); }
    void Left(const ProcessObject& object, LongLong handle, int generation, int received);
    // A service of it lives, or has terminated; it is stopped with the last.
    void ServiceBegins() { ++m_services; }
    void ServiceEnds();

private:
    static std::unique_ptr<Connection> ConnectChild(const LaunchCommand& command, ChildProcess::SaidFunction said);
    void Start();
    void Send(const nlohmann::json& message);
    void WaitFor(const std::string& doing, const std::function<bool()>& isDone);
    void HandleMessage(const nlohmann::json& message);
    void Serve(const nlohmann::json& request);
    [[nodiscard]] nlohmann::json Served(const nlohmann::json& request);
    void ReceiveNewsOfJobs();
    [[nodiscard]] std::optional<std::string> NextLine();
    void WakeForRest(bool isWaitedFor) const;
    void ReportFailure(const nlohmann::json& told) const;
    void Refuse(const std::string& what);
    [[noreturn]] void Died(const std::string& doing);
    [[noreturn]] void FailEnded(const std::string& doing) const;
    void SendWishes();
    void FollowChild();
    void MarkItems(bool isMarked);
    void LetGo();
    void Log(const std::string& text) const;

    ProcessSettings m_settings;
    Ref<ProcessMonitor> m_monitor;
    Connect m_connect;
    std::unique_ptr<Connection> m_child;
    int m_generation = 0;
    bool m_greeted = false;
    std::string m_whyStopped; // empty for a death of its own
    std::string m_death;
    std::string m_deathDetails; // what it had used by then
    int m_refused = 0;
    std::deque<std::int64_t> m_deaths; // seconds of those in a row
    LongLong m_lastId = 0;
    std::set<LongLong> m_waiting;
    std::map<LongLong, std::unique_ptr<nlohmann::json>> m_answers;
    std::deque<std::string> m_later; // lines that came in a dialog of its own, and wait for whoever waits there
    PassedObjects m_objects{*this};
    ProcessJobs m_jobs;
    int m_reporting = 0;
    ProcessClasses m_classes;
    int m_begun = 0; // the start for which the services have been
    std::shared_ptr<const ExplorerMarks> m_marks;
    std::set<ProcessObject*> m_known; // living ones, also those that are in no process
    std::uint64_t m_turns = 0;
    ProcessUse m_use;
    int m_serving = 0;        // requests of the process within one another
    double m_servingTime = 0; // milliseconds, which aren't the process's

    std::unique_ptr<ProcessMonitor::Listening> m_listening;
    Ref<ITimer> m_timer; // where the host doesn't listen
    Subscription m_tick;
    int m_services = 0;
    bool m_stopped = false; // by the end of the application
};

} // namespace corvane
