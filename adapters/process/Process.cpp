#include "adapters/process/Process.h"

#include "adapters/process/HostFunctions.h"
#include "adapters/process/ProcessObject.h"
#include "corvane/author/Jobs.h"
#include "corvane/base/Text.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/platform/Entering.h"
#include "corvane/platform/Handlers.h"
#include "corvane/platform/Platform.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <fstream>
#include <limits>
#include <nlohmann/json.hpp>
#include <unistd.h>

namespace corvane {

namespace {

using nlohmann::json;
using Clock = std::chrono::steady_clock;

constexpr std::size_t mostDeaths = 3;
constexpr std::int64_t deathsCountFor = 60; // seconds
constexpr int mostRefused = 10;
constexpr int turn = 50; // milliseconds between two looks at the clock
constexpr int timeToEnd = 3000;
constexpr int lookTime = 20;
constexpr int lingerTime = 2; // for what the process asks next, when it has just been answered
constexpr int mostLingering = 10;
constexpr Long idleInterval = 100;
constexpr LongLong rootHandle = 1;
constexpr LongLong hostHandle = 2;

std::int64_t SecondsNow() {
    return std::chrono::duration_cast<std::chrono::seconds>(Clock::now().time_since_epoch()).count();
}

// What is nested without end would use up the stack when it is copied or written.
bool IsTooDeep(const std::string& line) {
    constexpr int deepest = 100; // values are no deeper than 5
    int depth = 0;
    bool isText = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '"')
            isText = !isText;
        else if (isText)
            i += line[i] == '\\' ? 1 : 0;
        else if (line[i] == '[' || line[i] == '{')
            ++depth;
        else if (line[i] == ']' || line[i] == '}')
            --depth;
        if (depth > deepest)
            return true;
    }
    return false;
}

double MillisecondsSince(Clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

// The beginning of a text, for a message.
std::string Shortened(const std::string& text) {
    constexpr std::size_t most = 200;
    return text.size() <= most ? text : text.substr(0, most) + "…";
}

std::string Written(const json& message) {
    return message.dump(-1, ' ', false, json::error_handler_t::replace);
}

json FailureToJson(const Failure& failure) {
    return {{"number", failure.Number},
            {"description", failure.Description},
            {"source", failure.Source},
            {"details", failure.Context}};
}

[[noreturn]] void RaiseFailure(const json& told) {
    Failure failure(told.value("number", FailureNumber::Foreign), told.value("description", ""),
                    told.value("source", ""));
    failure.Context = told.value("details", "");
    throw failure;
}

Failure FailureOf(const json& told) {
    try {
        RaiseFailure(told);
    } catch (const Failure& failure) {
        return failure;
    }
}

// Bytes that the process has in memory; 0 when that isn't known.
std::uint64_t MemoryOf(pid_t id) {
    std::ifstream file("/proc/" + std::to_string(id) + "/statm");
    std::uint64_t all = 0;
    std::uint64_t resident = 0;
    file >> all >> resident;
    return resident * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
}

std::string MegabytesOf(std::uint64_t bytes) {
    constexpr std::uint64_t mebibyte = 1024 * 1024;
    return std::to_string((bytes + mebibyte / 2) / mebibyte) + " MiB";
}

// What JSON has no number for.
Double NotFinite(const std::string& name) {
    using Limits = std::numeric_limits<Double>;
    if (name != "nan" && name != "inf" && name != "-inf")
        Fail(FailureNumber::TypeMismatch, "\"" + name + "\" isn't one of the numbers nan, inf and -inf");
    return name == "nan" ? Limits::quiet_NaN() : name == "inf" ? Limits::infinity() : -Limits::infinity();
}

json MemberToJson(const MemberInfo& member) {
    if (member.What == MemberInfo::Kind::Property)
        return {{"name", member.Name}, {"property", true}, {"writable", member.CanWrite}};
    return {{"name", member.Name}, {"parameters", member.ParameterCount}};
}

} // namespace

Process::Process(ProcessSettings settings, Ref<ProcessMonitor> monitor, std::shared_ptr<const ExplorerMarks> marks)
    : m_settings(std::move(settings)), m_monitor(std::move(monitor)), m_marks(std::move(marks)) {}

Process::~Process() = default;

void Process::Log(const std::string& text) const {
    if (const auto& utilities = CurrentPlatform().oUtilities)
        utilities->LogError(utilities->AppName(), "Processes", Name(), Failure(Ended, text, Name()), UseText(), false);
}

void Process::Need() {
    if (IsRunning())
        return;
    if (m_stopped)
        Fail(Ended, "The service \"" + Name() + "\" has ended with the application", Name());
    while (!m_deaths.empty() && SecondsNow() - m_deaths.front() > deathsCountFor)
        m_deaths.pop_front();
    if (m_deaths.size() >= mostDeaths)
        Fail(Ended,
             "The service \"" + Name() + "\" has ended " + std::to_string(m_deaths.size()) +
                 " times in a row and isn't started again before a minute has passed. The last time it " + m_death,
             Name());
    Start();
}

void Process::BeginServices() {
    if (std::exchange(m_begun, m_generation) == m_generation)
        return;
    std::vector<Ref<ProcessObject>> services;
    for (ProcessObject* object : m_known)
        if (object->IsBegunService())
            services.emplace_back(object);
    for (const auto& service : services)
        try {
            service->Need();
        } catch (...) { // the next call of the service tries again
            if (!IsRunning())
                throw;
            Report("Processes", "Initialize", Name());
        }
}

void Process::Start() {
    ++m_generation;
    ++m_use.starts;
    m_greeted = false;
    m_refused = 0;
    m_whyStopped.clear();
    const std::string doing = "was starting";
    try {
        m_child = std::make_unique<ChildProcess>(m_settings.command,
                                                 [this](std::string_view line) { m_monitor->Said(Name(), line); });
    } catch (const Failure& failure) {
        m_deaths.push_back(SecondsNow());
        m_death = "couldn't be started";
        Fail(Ended, "The service \"" + Name() + "\" can't be started: " + failure.Description, Name());
    }
    const auto& utilities = CurrentPlatform().oUtilities;
    Send({{"hello", "corvane"},
          {"protocol", Version},
          {"plugin", Name()},
          {"application", utilities ? utilities->AppName() : std::string()},
          {"folder", utilities ? utilities->LibraryFolder() : std::string()}});
    WaitFor(doing, [this] { return m_greeted; });
    FollowChild();
    MarkItems(false);
}

void Process::FollowChild() {
    m_listening = m_monitor->Listen(m_child->Pending(), [this] {
        const Ref<Process> self(this);
        Pump();
    });
    if (m_listening)
        return;
    const auto& timers = CurrentPlatform().oTimers;
    if (!m_timer && timers) {
        m_timer = timers->NewTimer();
        m_tick = m_timer->Tick.Subscribe([this] {
            const Ref<Process> self(this);
            Pump();
        });
        m_timer->SetInterval(idleInterval);
    }
    if (m_timer)
        m_timer->SetEnabled(true);
}

void Process::ReadClasses(const json& hello) {
    for (const json& described : hello.at("classes")) {
        const std::string progID = Name() + "." + described.at("name").get<std::string>();
        auto it = std::find_if(m_classes.begin(), m_classes.end(),
                               [&](const ProcessClass& known) { return EqualText(known.progID, progID); });
        ProcessClass& known = it == m_classes.end() ? m_classes.emplace_back() : *it;
        const std::string kind = described.value("kind", "");
        known.progID = progID;
        known.isService = kind == "service";
        known.isExplorerItem = kind == "item";
        known.isPage = kind == "page";
        known.events.clear();
        for (const json& event : described.value("events", json::array()))
            known.events.insert(event.get<std::string>());
        known.members.clear();
        known.stored.clear();
        for (const json& member : described.value("members", json::array())) {
            known.members.push_back(ReadMember(member));
            if (member.value("stored", false))
                known.stored.emplace_back(known.members.back().Name);
        }
    }
}

MemberInfo Process::ReadMember(const json& member) {
    const auto& name = member.at("name").get_ref<const std::string&>();
    const auto it = std::find(m_names.begin(), m_names.end(), name);
    const std::string& kept = it == m_names.end() ? m_names.emplace_back(name) : *it;
    if (member.value("property", false))
        return {kept, MemberInfo::Kind::Property, 0, member.value("writable", false), {}, {ValueType::Any}};
    return {kept, MemberInfo::Kind::Method, member.value("parameters", std::size_t{0}), false, {}, {ValueType::Any}};
}

const ProcessClass* Process::FindClass(std::string_view progID) const {
    const auto it = std::find_if(m_classes.begin(), m_classes.end(),
                                 [&](const ProcessClass& known) { return EqualText(known.progID, progID); });
    return it == m_classes.end() ? nullptr : &*it;
}

void Process::Send(const json& message) {
    if (!m_child)
        return;
    ++m_turns;
    m_child->Send(Written(message));
    if (!m_released.empty()) // behind the message, which may still name them
        m_child->Send(Written({{"release", std::exchange(m_released, {})}}));
}

void Process::WaitFor(const std::string& doing, const std::function<bool()>& isDone) {
    const Ref<Process> self(this);
    const int generation = m_generation;
    auto since = Clock::now();
    struct Asked {
        ~Asked() {
            if (isAsked)
                monitor.WaitingEnds(name);
        }
        ProcessMonitor& monitor;
        const std::string& name;
        bool isAsked = false;
    } asked{*m_monitor, Name()};
    for (;;) {
        if (!m_child || m_generation != generation)
            FailEnded(doing);
        if (isDone())
            return;
        if (auto line = m_whyStopped.empty() ? m_child->NextLine() : std::nullopt) {
            const std::uint64_t turns = m_turns;
            Receive(*line);
            if (m_turns != turns) // what a job reports meanwhile isn't an answer
                since = Clock::now();
            continue;
        }
        SendWishes();
        if (m_child->IsClosed() || !m_whyStopped.empty())
            Died(doing);
        m_child->Turn(turn);
        const auto waited = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - since).count();
        if (waited < ProcessMonitor::Patience)
            continue;
        asked.isAsked = true;
        if (!m_monitor->KeepsWaiting(Name(), static_cast<int>(waited)) && m_whyStopped.empty())
            m_whyStopped = "was stopped, as it didn't answer";
    }
}

json Process::Ask(json request, const std::string& doing) {
    const LongLong id = ++m_lastId;
    request["id"] = id;
    const auto begin = Clock::now();
    const double serving = m_servingTime;
    const std::string name = request.value("call", request.value("event", ""));
    Send(request);
    m_waiting.insert(id);
    struct Waiting {
        ~Waiting() {
            process.m_waiting.erase(id);
            process.m_answers.erase(id);
        }
        Process& process;
        LongLong id;
    } const waiting{*this, id};
    WaitFor(doing, [this, id] { return m_answers.contains(id); });
    if (m_waiting.size() == 1)
        CountCall(name, MillisecondsSince(begin) - (m_servingTime - serving));
    const json answer = std::move(*m_answers.at(id));
    if (!answer.contains("failure"))
        return answer.at("result");
    try {
        RaiseFailure(answer.at("failure"));
    } catch (const json::exception&) {
        Refuse("a failure that isn't one: " + Shortened(Written(answer)));
        Fail(Ended, "The service \"" + Name() + "\" has failed and doesn't say how", Name());
    }
}

Variant Process::AskValue(json request, const std::string& doing) {
    Variant value = FromJson(Ask(std::move(request), doing));
    m_deaths.clear();
    return value;
}

void Process::Receive(const std::string& line) {
    const json message = IsTooDeep(line) ? json() : json::parse(line, nullptr, false);
    if (!message.is_object()) {
        Refuse("what isn't a message: " + Shortened(line));
        return;
    }
    try {
        HandleMessage(message);
    } catch (const json::exception&) {
        Refuse("a message that lacks something, or has it in a wrong form: " + Shortened(line));
    }
}

void Process::HandleMessage(const json& message) {
    if (m_greeted && message.contains("job")) {
        HandleJob(message);
        return;
    }
    ++m_turns;
    if (!m_greeted) {
        if (!message.contains("hello"))
            Refuse("another message before its hello: " + Shortened(Written(message)));
        else if (message.at("protocol") != Version)
            m_whyStopped = "was stopped, as it speaks version " + Written(message.at("protocol")) +
                           " of the protocol and this program version " + std::to_string(Version);
        else {
            ReadClasses(message);
            m_greeted = true;
        }
    } else if (message.contains("result") || message.contains("failure")) {
        const LongLong id = message.at("id").get<LongLong>();
        if (!m_waiting.contains(id) || m_answers.contains(id))
            Refuse("an answer to what it wasn't asked: " + Shortened(Written(message)));
        else
            m_answers[id] = std::make_unique<json>(message);
    } else if (message.contains("release")) {
        ReleaseHeld(message.at("release"));
    } else if (message.contains("report")) {
        ReportFailure(message.at("report"));
    } else if (message.contains("id") && message.contains("on")) {
        Serve(message);
    } else {
        Refuse("an unknown message: " + Shortened(Written(message)));
    }
}

void Process::Serve(const json& request) {
    json answer{{"id", request.at("id").get<LongLong>()}};
    const int generation = m_generation;
    const struct Serving {
        explicit Serving(Process& served) : process(served) { ++process.m_serving; }
        ~Serving() {
            if (--process.m_serving == 0)
                process.m_servingTime += MillisecondsSince(begin);
        }
        Process& process;
        Clock::time_point begin = Clock::now();
    } serving(*this);
    try {
        answer["result"] = Served(request);
    } catch (const json::exception&) {
        throw;
    } catch (...) {
        answer["failure"] = FailureToJson(CurrentFailure());
    }
    if (m_generation == generation)
        Send(answer);
}

json Process::Served(const json& request) {
    const Ref<Object> object = HostObject(request.at("on").get<LongLong>());
    const Entering entering(object);
    if (request.contains("call")) {
        std::vector<Variant> arguments;
        for (const json& argument : request.value("arguments", json::array()))
            arguments.push_back(FromJson(argument));
        return ToJson(object->Invoke(request.at("call").get_ref<const std::string&>(), arguments));
    }
    if (request.contains("set")) {
        object->Put(request.at("set").get_ref<const std::string&>(), FromJson(request.at("value")));
        return nullptr;
    }
    if (!request.contains("members"))
        Fail(FailureNumber::NoSuchMember, "A request is \"call\", \"set\" or \"members\"", Name());
    json members = json::array();
    for (const MemberInfo& member : object->MembersByName())
        members.push_back(MemberToJson(member));
    return members;
}

void Process::ReleaseHeld(const json& handles) {
    std::vector<Ref<Object>> released; // their ends may come back here
    for (const json& entry : handles) {
        const auto it = m_held.find(entry.at(0).get<LongLong>());
        if (it == m_held.end() || (it->second.sent -= std::max(1, entry.at(1).get<int>())) > 0)
            continue;
        m_handles.erase(it->second.object.Get());
        released.push_back(std::move(it->second.object));
        m_held.erase(it);
    }
}

// Of a procedure that went on by itself, so that no call is there to fail.
void Process::ReportFailure(const json& told) const {
    try {
        RaiseFailure(told);
    } catch (const Failure&) {
        Report("Processes", Name());
    }
}

void Process::Refuse(const std::string& what) {
    ++m_refused;
    if (m_refused == 1)
        Log("The service \"" + Name() + "\" has sent " + what);
    if (m_refused == mostRefused)
        m_whyStopped = "was stopped, as it has sent " + std::to_string(m_refused) + " wrong messages";
}

void Process::FailEnded(const std::string& doing) const {
    Failure failure(Ended,
                    "The service \"" + Name() + "\" " + m_death + " while it " + doing +
                        ". Its next command starts it again",
                    Name());
    failure.Context = m_deathDetails;
    throw failure;
}

void Process::Died(const std::string& doing) {
    const std::string end = m_child->End();
    m_death = m_whyStopped.empty() ? end : m_whyStopped;
    if (const std::string& last = m_child->LastSaid(); !last.empty())
        m_death += " (" + Shortened(last) + ")";
    m_deaths.push_back(SecondsNow());
    m_use.memory = m_child->Used().memory;
    m_deathDetails = UseText();
    const std::string text = "The service \"" + Name() + "\" " + m_death + " while it " + doing;
    Log(text);
    MarkItems(true);
    EndJobs(Failure(Ended, text, Name()));
    LetGo();
    FailEnded(doing);
}

// Objects that go may come back here, so nothing refers to them any more by then.
void Process::LetGo() {
    if (m_timer)
        m_timer->SetEnabled(false);
    m_listening = nullptr;
    m_child = nullptr;
    m_answers.clear();
    m_objects.clear();
    m_released.clear();
    m_handles.clear();
    const auto held = std::exchange(m_held, {});
    std::vector<Ref<ProcessObject>> known;
    for (ProcessObject* object : m_known)
        known.emplace_back(object);
    for (const auto& object : known)
        object->FollowProcess();
}

void Process::Pump() {
    if (!m_child)
        return;
    if (!m_waiting.empty()) { // who waits there handles what comes
        m_child->Turn(0);
        return;
    }
    try {
        const int generation = m_generation;
        const auto IsSame = [&] { return m_child && m_generation == generation; };
        SendWishes();
        m_child->Turn(0);
        for (int i = 0; i < mostLingering; ++i) {
            const std::uint64_t turns = m_turns;
            for (std::optional<std::string> line;
                 IsSame() && m_waiting.empty() && m_whyStopped.empty() && (line = m_child->NextLine());)
                Receive(*line);
            if (!IsSame() || m_turns == turns || m_child->IsClosed())
                break;
            m_child->Turn(lingerTime);
        }
        if (IsSame() && (m_child->IsClosed() || !m_whyStopped.empty()))
            Died(m_jobs.empty() ? "wasn't doing anything for the application" : "worked on a job");
        if (m_child)
            m_child->Turn(0);
    } catch (const Failure&) {
        // The log has it; what is called next says it.
    }
}

void Process::Turn() {
    if (m_child && m_waiting.empty())
        m_child->Turn(lookTime);
    Pump();
}

void Process::Restart() {
    if (!m_child || !m_waiting.empty())
        return;
    MarkItems(true);
    m_death = "was ended, as its program has changed";
    const std::unique_ptr<ChildProcess> child = std::move(m_child);
    child->Close();
    child->WaitForEnd(timeToEnd);
    EndJobs(Failure(Ended, "The service \"" + Name() + "\" " + m_death, Name()));
    LetGo();
    m_deaths.clear();
}

void Process::CountCall(const std::string& name, double milliseconds) {
    ++m_use.calls;
    m_use.milliseconds += milliseconds;
    if (milliseconds > m_use.longest) {
        m_use.longest = milliseconds;
        m_use.longestName = name;
    }
}

ProcessUse Process::Use() const {
    ProcessUse use = m_use;
    if (m_child) {
        use.id = m_child->Id();
        use.memory = MemoryOf(use.id);
    }
    return use;
}

// For the details of a death, in the log.
std::string Process::UseText() const {
    if (!m_child)
        return {};
    std::string text = "process " + std::to_string(m_child->Id()) + ", " + std::to_string(m_use.calls) + " calls";
    if (m_child->Used().memory > 0)
        text += ", at most " + MegabytesOf(m_child->Used().memory);
    if (m_use.calls > 0)
        text += ", the longest of " + std::to_string(std::llround(m_use.longest)) + " ms" +
                (m_use.longestName.empty() ? "" : " (" + m_use.longestName + ")");
    return text;
}

void Process::MarkItems(bool isMarked) {
    if (!m_marks || m_generation == 0 || m_stopped)
        return;
    std::vector<Ref<Object>> items;
    for (ProcessObject* object : m_known)
        if (object->IsItem() && (!isMarked || object->IsLive()))
            items.emplace_back(object);
    m_marks->Set(items, isMarked);
}

void Process::StartJob(LongLong number, JobOptions options, std::string procedure) {
    if (number <= m_lastJob || !m_child)
        Fail(FailureNumber::InvalidProcedureCall,
             "The number " + std::to_string(number) + " of a job isn't greater than those before", Name());
    m_lastJob = number;
    const auto job = std::make_shared<ProcessJob>(m_child->WakerOfTurns());
    m_jobs.emplace(number, job);
    (void)detail::StartTask(std::move(options), std::make_unique<ProcessTask>(Ref<Process>(this), number, job),
                            std::move(procedure));
}

void Process::JobEnds(LongLong number, const std::shared_ptr<ProcessJob>& job) {
    const auto it = m_jobs.find(number);
    if (it == m_jobs.end() || it->second != job)
        return;
    m_jobs.erase(it);
    Send({{"job", number}, {"cancel", true}});
}

void Process::SendWishes() {
    for (const auto& [number, job] : m_jobs)
        for (auto wish = job->TakeWish(); wish != ProcessJob::Wish::None; wish = job->TakeWish())
            Send({{"job", number}, {wish == ProcessJob::Wish::Begin ? "begin" : "cancel", true}});
}

void Process::HandleJob(const json& message) {
    const LongLong number = message.at("job").get<LongLong>();
    if (number > m_lastJob || number < 1) {
        Refuse("a message about a job that it hasn't started: " + Shortened(Written(message)));
        return;
    }
    const auto it = m_jobs.find(number);
    if (it == m_jobs.end())
        return; // it has been cancelled meanwhile
    ProcessJob::News news;
    if (message.contains("part"))
        news.part = message.at("part").get<Double>();
    if (message.contains("text"))
        news.text = message.at("text").get<std::string>();
    for (const json& line : message.value("log", json::array()))
        news.log.push_back(line.get<std::string>());
    const std::shared_ptr<ProcessJob> job = it->second;
    job->Report(std::move(news));
    if (!message.contains("end"))
        return;
    std::optional<Failure> failure;
    if (message.contains("failure"))
        failure = FailureOf(message.at("failure"));
    m_jobs.erase(it);
    job->End(std::move(failure), message.at("end") == "cancelled");
}

void Process::EndJobs(const std::optional<Failure>& failure) {
    for (const auto& [number, job] : std::exchange(m_jobs, {}))
        job->End(failure, !failure);
    m_lastJob = 0;
}

void Process::ServiceEnds() {
    if (--m_services == 0)
        Stop();
}

void Process::Stop() {
    m_stopped = true;
    if (m_child) {
        const std::unique_ptr<ChildProcess> child = std::move(m_child);
        EndJobs({});
        child->Turn(0);
        child->Close();
        child->WaitForEnd(timeToEnd);
        LetGo();
    }
    m_tick.Cancel();
    m_timer = nullptr;
}

json Process::ToJson(const Variant& value) {
    if (const auto* boolean = value.Get<bool>())
        return *boolean;
    if (const auto* number = value.Get<Long>())
        return *number;
    if (const auto* number = value.Get<LongLong>())
        return *number;
    if (const auto* text = value.Get<std::string>())
        return *text;
    if (value.Get<Single>() || value.Get<Double>()) {
        const Double number = value.Get<Double>() ? *value.Get<Double>() : static_cast<Double>(*value.Get<Single>());
        if (number != number)
            return {{"number", "nan"}};
        if (number - number != 0)
            return {{"number", number < 0 ? "-inf" : "inf"}};
        return number;
    }
    const Ref<Object> object = ToObject(value);
    if (!object)
        return nullptr;
    if (const auto own = object.TryAs<ProcessObject>(); own && own->Owner().Get() == this)
        return {{"process", own->NeedHandle()}};
    auto [it, isNew] = m_handles.try_emplace(object.Get(), m_lastHandle + 1);
    if (isNew) {
        ++m_lastHandle;
        m_held[it->second].object = object;
    }
    ++m_held[it->second].sent;
    return {{"host", it->second}, {"class", object->TypeName()}};
}

Variant Process::FromJson(const json& value) {
    if (value.is_null())
        return {};
    if (value.is_boolean())
        return value.get<bool>();
    if (value.is_string())
        return value.get<std::string>();
    if (value.is_number_float())
        return value.get<Double>();
    if (value.is_number_unsigned() && value.get<std::uint64_t>() > static_cast<std::uint64_t>(INT64_MAX))
        Fail(FailureNumber::Overflow);
    if (value.is_number_integer()) {
        const auto number = value.get<LongLong>();
        return std::in_range<Long>(number) ? Variant(static_cast<Long>(number)) : Variant(number);
    }
    if (value.is_object() && value.contains("number"))
        return NotFinite(value.at("number").get_ref<const std::string&>());
    if (value.is_object() && value.contains("host"))
        return HostObject(value.at("host").get<LongLong>());
    if (!value.is_object() || !value.contains("process"))
        Fail(FailureNumber::TypeMismatch, "What isn't a text, a number, a truth value or an object can't be passed",
             Name());
    const auto handle = value.at("process").get<LongLong>();
    const auto it = m_objects.find(handle);
    Ref<ProcessObject> object = it == m_objects.end() ? nullptr : Ref<ProcessObject>(it->second);
    if (!object)
        object = New<ProcessObject>(Ref<Process>(this), Name() + "." + value.value("class", "object"), handle,
                                    value.value("name", ""));
    object->Received();
    if (value.contains("rows"))
        object->SetRows(value.at("rows").get<std::size_t>());
    return object;
}

Ref<Object> Process::HostObject(LongLong handle) const {
    if (handle == rootHandle)
        return Singleton::Framework();
    if (handle == hostHandle)
        return New<HostFunctions>();
    const auto it = m_held.find(handle);
    if (it == m_held.end())
        Fail(FailureNumber::InvalidProcedureCall,
             "The application holds no object of the number " + std::to_string(handle), Name());
    return it->second.object;
}

void Process::Joined(ProcessObject& object, LongLong handle) {
    m_objects[handle] = &object;
}

void Process::Left(ProcessObject& object, LongLong handle, int generation, int received) {
    if (generation != m_generation)
        return;
    if (const auto it = m_objects.find(handle); it != m_objects.end() && it->second == &object)
        m_objects.erase(it);
    if (received > 0)
        m_released.emplace_back(handle, received);
}

} // namespace corvane
