#include "adapters/process/Process.h"

#include "adapters/process/Messages.h"
#include "adapters/process/ProcessObject.h"
#include "adapters/process/ReadAnswer.h"
#include "corvane/base/Text.h"
#include "corvane/platform/Entering.h"
#include "corvane/platform/Handlers.h"
#include "corvane/platform/Platform.h"

#include <algorithm>
#include <chrono>
#include <nlohmann/json.hpp>

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

std::int64_t SecondsNow() {
    return std::chrono::duration_cast<std::chrono::seconds>(Clock::now().time_since_epoch()).count();
}

double MillisecondsSince(Clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
}

json MemberToJson(const MemberInfo& member) {
    if (member.What == MemberInfo::Kind::Property)
        return {{"name", member.Name}, {"property", true}, {"writable", member.CanWrite}};
    return {{"name", member.Name}, {"parameters", member.ParameterCount}};
}

} // namespace

Process::Process(ProcessSettings settings, Ref<ProcessMonitor> monitor, std::shared_ptr<const ExplorerMarks> marks,
                 Connect connect)
    : m_settings(std::move(settings)), m_monitor(std::move(monitor)), m_connect(std::move(connect)),
      m_marks(std::move(marks)) {}

Process::~Process() = default;

std::unique_ptr<Connection> Process::ConnectChild(const LaunchCommand& command, ChildProcess::SaidFunction said) {
    return std::make_unique<ChildProcess>(command, std::move(said));
}

void Process::Log(const std::string& text) const {
    if (const auto& utilities = CurrentPlatform().oUtilities)
        utilities->LogError(utilities->AppName(), "Processes", Name(), Failure(Ended, text, Name()),
                            m_child ? m_use.Text(*m_child) : std::string(), false);
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
        m_child = m_connect(m_settings.command, [this](std::string_view line) { m_monitor->Said(Name(), line); });
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

void Process::Send(const json& message) {
    if (!m_child)
        return;
    ++m_turns;
    m_child->Send(WriteMessage(message));
    if (const auto released = m_objects.TakeReleased(); !released.empty()) // behind the message, which may name them
        m_child->Send(WriteMessage({{"release", released}}));
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
        if (isDone()) {
            WakeForRest(m_waiting.size() > 1);
            return;
        }
        if (auto line = m_whyStopped.empty() ? NextLine() : std::nullopt) {
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
        m_use.CountCall(name, MillisecondsSince(begin) - (m_servingTime - serving));
    const json answer = std::move(*m_answers.at(id));
    if (!answer.contains("failure"))
        return answer.at("result");
    std::optional<Failure> failure;
    try {
        failure = FailureFromJson(answer.at("failure"));
    } catch (const json::exception&) {
        Refuse("a failure that isn't one: " + Shortened(WriteMessage(answer)));
        Fail(Ended, "The service \"" + Name() + "\" has failed and doesn't say how", Name());
    }
    throw Failure(*failure);
}

Variant Process::AskValue(json request, const std::string& doing) {
    const json answer = Ask(std::move(request), doing);
    Variant value = ReadAnswer(*this, [&] { return FromJson(answer); });
    m_deaths.clear();
    return value;
}

void Process::Receive(const std::string& line) {
    const json message = ReadMessage(line);
    if (message.is_null()) {
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
        if (!m_jobs.Receive(message))
            Refuse("a message about a job that it hasn't started: " + Shortened(WriteMessage(message)));
        return;
    }
    ++m_turns;
    if (!m_greeted) {
        if (!message.contains("hello"))
            Refuse("another message before its hello: " + Shortened(WriteMessage(message)));
        else if (message.at("protocol") != Version)
            m_whyStopped = "was stopped, as it speaks version " + WriteMessage(message.at("protocol")) +
                           " of the protocol and this program version " + std::to_string(Version);
        else {
            m_classes.Read(Name(), message);
            m_greeted = true;
        }
    } else if (message.contains("result") || message.contains("failure")) {
        const LongLong id = WholeNumber(message.at("id"));
        if (!m_waiting.contains(id) || m_answers.contains(id))
            Refuse("an answer to what it wasn't asked: " + Shortened(WriteMessage(message)));
        else
            m_answers[id] = std::make_unique<json>(message);
    } else if (message.contains("release")) {
        m_objects.Release(message.at("release"));
    } else if (message.contains("report")) {
        ReportFailure(message.at("report"));
    } else if (message.contains("id") && message.contains("on")) {
        Serve(message);
    } else {
        Refuse("an unknown message: " + Shortened(WriteMessage(message)));
    }
}

void Process::Serve(const json& request) {
    json answer{{"id", WholeNumber(request.at("id"))}};
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
    } catch (const json::exception&) { // who asks waits for an answer in any case
        const std::string what = "a request that lacks something, or has it in a wrong form";
        Refuse(what + ": " + Shortened(WriteMessage(request)));
        answer["failure"] = FailureToJson(Failure(FailureNumber::InvalidProcedureCall, "This is " + what, Name()));
    } catch (...) {
        answer["failure"] = FailureToJson(CurrentFailure());
    }
    if (m_generation == generation)
        Send(answer);
}

json Process::Served(const json& request) {
    const Ref<Object> object = m_objects.OfApplication(WholeNumber(request.at("on")));
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

// Of a procedure that went on by itself, so that no call is there to fail.
void Process::ReportFailure(const json& told) const {
    try {
        throw FailureFromJson(told);
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
    m_deathDetails = m_use.Text(*m_child);
    const std::string text = "The service \"" + Name() + "\" " + m_death + " while it " + doing;
    if (m_reporting == 0)
        Log(text);
    MarkItems(true);
    m_jobs.EndAll(Failure(Ended, text, Name()));
    LetGo();
    FailEnded(doing);
}

void Process::LetGo() {
    if (m_timer)
        m_timer->SetEnabled(false);
    m_listening = nullptr;
    m_child = nullptr;
    m_answers.clear();
    m_later.clear();
    m_objects.Clear();
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
        ReceiveNewsOfJobs();
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
                 IsSame() && m_waiting.empty() && m_whyStopped.empty() && (line = NextLine());)
                Receive(*line);
            if (!IsSame() || m_turns == turns || m_child->IsClosed())
                break;
            m_child->Turn(lingerTime);
        }
        if (IsSame() && (m_child->IsClosed() || !m_whyStopped.empty()))
            Died(m_jobs.IsEmpty() ? "wasn't doing anything for the application" : "worked on a job");
        if (m_child)
            m_child->Turn(0);
        WakeForRest(false);
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
    const std::unique_ptr<Connection> child = std::move(m_child);
    child->Close();
    child->WaitForEnd(timeToEnd);
    m_jobs.EndAll(Failure(Ended, "The service \"" + Name() + "\" " + m_death, Name()));
    LetGo();
    m_deaths.clear();
}

ProcessUse Process::Use() const {
    ProcessUse use = m_use;
    if (m_child) {
        use.id = m_child->Id();
        use.memory = MemoryOf(use.id);
    }
    return use;
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
    if (!m_child)
        Fail(Ended, "The service \"" + Name() + "\" doesn't run", Name());
    m_jobs.Start(number, std::move(options), std::move(procedure), Ref<Process>(this), m_child->WakerOfTurns());
}

void Process::JobEnds(LongLong number, const std::shared_ptr<ProcessJob>& job) {
    if (m_jobs.Forget(number, job))
        Send({{"job", number}, {"cancel", true}});
}

void Process::SendWishes() {
    m_jobs.SendWishes([this](const json& message) { Send(message); });
}

// While the process waits for a dialog that it has asked for, its threads go on, and what they report is shown.
void Process::ReceiveNewsOfJobs() {
    SendWishes();
    m_child->Turn(0);
    for (auto line = m_child->NextLine(); line; line = m_child->NextLine()) {
        if (line->find("\"job\"") == std::string::npos || !ReadMessage(*line).contains("job"))
            m_later.push_back(std::move(*line));
        else
            Receive(*line);
    }
    m_child->Turn(0);
    WakeForRest(true);
}

// What has been read behind an answer, or since the last look, makes the socket readable no more, and neither does its
// end; and a turn takes the wake-up of a job that has a wish by now.
void Process::WakeForRest(bool isWaitedFor) const {
    if (!m_child)
        return;
    // Who waits takes those lines, and notices the end.
    const bool isLeft = !isWaitedFor && (!m_later.empty() || m_child->IsClosed() || !m_whyStopped.empty());
    if (isLeft || m_child->HasLine() || m_jobs.HasWishes())
        m_child->WakerOfTurns()->Wake();
}

std::optional<std::string> Process::NextLine() {
    if (m_later.empty())
        return m_child->NextLine();
    std::string line = std::move(m_later.front());
    m_later.pop_front();
    return line;
}

void Process::ServiceEnds() {
    if (--m_services == 0)
        Stop();
}

void Process::Stop() {
    m_stopped = true;
    if (m_child) {
        const std::unique_ptr<Connection> child = std::move(m_child);
        m_jobs.EndAll({});
        child->Turn(0);
        child->Close();
        child->WaitForEnd(timeToEnd);
        LetGo();
    }
    m_tick.Cancel();
    m_timer = nullptr;
}

json Process::ToJson(const Variant& value) {
    return m_objects.ToJson(value);
}

Variant Process::FromJson(const json& value) {
    return m_objects.FromJson(value);
}

void Process::Left(const ProcessObject& object, LongLong handle, int generation, int received) {
    if (generation == m_generation)
        m_objects.Left(object, handle, received);
}

} // namespace corvane
