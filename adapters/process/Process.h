// The process of one plug-in: started when it is first needed, spoken to in messages of one line of JSON each, and
// started again after its death. docs/protocol.md describes the messages.
#pragma once

#include "adapters/process/ChildProcess.h"
#include "adapters/process/ProcessMonitor.h"
#include "adapters/process/ProcessSettings.h"
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
#include <unordered_map>
#include <vector>

namespace corvane {

class ProcessObject;

// A class of a process, as the process describes it.
struct ProcessClass {
    std::string progID;
    std::vector<MemberInfo> members;
    std::set<std::string> events; // those that it handles
    bool isService = false;
    bool isExplorerItem = false;
    bool isPage = false;
};

class Process final : public virtual Object {
public:
    static constexpr Long Version = 1; // of the protocol
    // What a call fails with when the process has died, can't be started, or was stopped.
    static constexpr Long Ended = FailureNumber::ObjectErrorBase + 0x100;

    Process(ProcessSettings settings, Ref<ProcessMonitor> monitor);
    ~Process() override;

    [[nodiscard]] const std::string& Name() const { return m_settings.name; }
    [[nodiscard]] bool StartsNow() const { return m_settings.startsNow; }
    [[nodiscard]] bool IsRunning() const { return m_child != nullptr; }
    // The number of the start; objects of an earlier one are gone.
    [[nodiscard]] int Generation() const { return m_generation; }

    // Starts it, unless it runs. Fails with Ended, also when it has died three times in a row within a minute.
    void Need();
    // The classes that it said it has, since its first start. They stay as long as this object.
    [[nodiscard]] const std::deque<ProcessClass>& Classes() const { return m_classes; }
    [[nodiscard]] const ProcessClass* FindClass(std::string_view progID) const;

    // Sends the request and serves what the process asks until its answer is there. Fails as the process says, or with
    // Ended; doing says what it was to do, for that text.
    nlohmann::json Ask(nlohmann::json request, const std::string& doing);
    // The same for one whose answer is a value.
    Variant AskValue(nlohmann::json request, const std::string& doing);
    // Handles a line that the process has sent; what isn't a message is refused.
    void Receive(const std::string& line);
    // Serves what the process has asked on its own accord, and notices its death. Never waits.
    void Pump();
    // Lets it end, kills it if it doesn't, and lets go of all objects that it held.
    void Stop();

    [[nodiscard]] nlohmann::json ToJson(const Variant& value);
    // Fails with 13 for what isn't a value and with 5 for an object that isn't there.
    [[nodiscard]] Variant FromJson(const nlohmann::json& value);

    // By its objects.
    void Joined(ProcessObject& object, LongLong handle);
    void Left(ProcessObject& object, LongLong handle, int generation, int received);
    // A service of it lives, or has terminated; it is stopped with the last.
    void ServiceBegins() { ++m_services; }
    void ServiceEnds();

private:
    struct Held {
        Ref<Object> object;
        int sent = 0;
    };

    void Start();
    void ReadHello();
    void ReadClasses(const nlohmann::json& hello);
    [[nodiscard]] MemberInfo ReadMember(const nlohmann::json& member);
    void Send(const nlohmann::json& message);
    void WaitFor(const std::string& doing, const std::function<bool()>& isDone);
    void HandleMessage(const nlohmann::json& message);
    void Serve(const nlohmann::json& request);
    [[nodiscard]] nlohmann::json Served(const nlohmann::json& request);
    void ReleaseHeld(const nlohmann::json& handles);
    void ReportFailure(const nlohmann::json& told) const;
    void Refuse(const std::string& what);
    [[noreturn]] void Died(const std::string& doing);
    [[noreturn]] void FailEnded(const std::string& doing) const;
    void LetGo();
    void Log(const std::string& text) const;
    [[nodiscard]] Ref<Object> HostObject(LongLong handle) const;

    ProcessSettings m_settings;
    Ref<ProcessMonitor> m_monitor;
    std::unique_ptr<ChildProcess> m_child;
    int m_generation = 0;
    bool m_greeted = false;
    std::string m_whyStopped; // empty for a death of its own
    std::string m_death;
    int m_refused = 0;
    std::deque<std::int64_t> m_deaths; // seconds of those in a row
    LongLong m_lastId = 0;
    std::set<LongLong> m_waiting;
    std::map<LongLong, std::unique_ptr<nlohmann::json>> m_answers;
    std::map<LongLong, Held> m_held; // objects of the application that the process knows
    std::unordered_map<const Object*, LongLong> m_handles;
    LongLong m_lastHandle = 2;
    std::vector<std::pair<LongLong, int>> m_released; // its objects that are to be released, and how often they came
    std::map<LongLong, ProcessObject*> m_objects;     // its own that the application knows
    std::deque<ProcessClass> m_classes;
    std::deque<std::string> m_names;
    Ref<ITimer> m_timer;
    Subscription m_tick;
    int m_services = 0;
    bool m_stopped = false; // by the end of the application
};

} // namespace corvane
