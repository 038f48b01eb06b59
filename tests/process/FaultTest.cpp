// What a process can do wrong, wherever it is: the application lives, and so do the other services.
#include "adapters/process/ProcessObject.h"
#include "corvane/author/Host.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/services/ExplorerItemDef.h"
#include "headless/ModelHost.h"
#include "headless/Steps.h"
#include "jobs/Manager.h"
#include "tests/process/Children.h"
#include "tests/process/ScriptedConnection.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <poll.h>
#include <random>
#include <tuple>
#include <utility>

namespace corvane::testing {
namespace {

namespace fs = std::filesystem;

constexpr const char* source = R"(import os, sys, time
import corvane
from corvane import _runtime

def fault(where):
    mark = os.environ["MARK"]
    if where != os.environ["WHERE"] or os.path.exists(mark):
        return
    open(mark, "w").close()
    what = os.environ["WHAT"]
    print(what, "at fault", file=sys.stderr)
    if what == "kill":
        os.kill(os.getpid(), 9)
    elif what == "abort":
        os.abort()
    elif what == "loop":
        while True:
            time.sleep(0 if where == "command" else 0.01)
    elif what == "memory":
        bytearray(2 << 30)
    else:
        _runtime.runtime.wire.socket.sendall(b"\xff\x00{[\n" * 20)
        corvane.set_status("never")

class Shelf(corvane.Item):
    def OnInitialize(self):
        fault("item")
        self.add_child(corvane_item())

class Thing(corvane.Item):
    pass

def corvane_item():
    return Thing("Thing")

class Sheet(corvane.Page):
    def OnActivate(self):
        fault("page")

    def OnSave(self):
        fault("save")
        corvane.set_status("saved")

class Faulty(corvane.Service):
    def __init__(self):
        fault("constructor")

    def OnInitialize(self):
        fault("Initialize")

    def OnWork(self):
        fault("command")
        corvane.set_status("worked")

    def OnTerminate(self):
        fault("Terminate")

corvane.run()
)";

constexpr const char* definition = R"(<?xml version="1.0"?>
<Service Name="Faulty" ProgID="Faulty.Faulty" Active="True">
  <ActionItems><ActionItem Name="Try" Action="OnWork"/></ActionItems>
  <Menus><MenuItem Type="MenuItem" ActionItem="Try" Path="File" PositionOrder="1" Caption="Try"/></Menus>
  <ExplorerItems>
    <ExplorerItem Name="Shelf" ProgID="Faulty.Shelf" Type="Folder"/>
    <ExplorerItem Name="Thing" Type="Default" Parent="Shelf"/>
  </ExplorerItems>
  <Windows>
    <Window Name="SheetWindow" Type="Window" State="Normal" Caption="Sheet">
      <Page PageProgID="Faulty.Sheet" Caption="Sheet" IsOptional="False" IsResizable="True" PositionOrder="10"/>
    </Window>
  </Windows>
</Service>
)";

// The aviary with a service of one fault, in a folder that goes with this object.
class FaultyFolder {
public:
    FaultyFolder(const std::string& where, const std::string& what) {
        std::string pattern = (fs::temp_directory_path() / "faultyXXXXXX").string();
        m_path = ::mkdtemp(pattern.data());
        fs::copy(CORVANE_AVIARY, m_path, fs::copy_options::recursive);
        std::ofstream(m_path / "Services/Faulty.xml") << definition;
        fs::create_directory(m_path / "plugins/Faulty");
        std::ofstream(m_path / "plugins/Faulty/faulty.py") << source;
        const nlohmann::json settings{{"run", {"python3", "faulty.py"}},
                                      {"env", {{"WHERE", where}, {"WHAT", what}, {"MARK", (m_path / "mark").string()}}},
                                      {"limits", {{"memory", 1024}, {"cpu", 600}}}};
        std::ofstream(m_path / "plugins/Faulty/plugin.json") << settings;
    }
    // Services in processes of their own, each with a command File.Work1 and so on.
    void AddNeighbours(int count) const {
        for (int i = 1; i <= count; ++i) {
            const std::string number = std::to_string(i);
            const std::string name = "Neighbour" + number;
            std::ofstream(m_path / ("Services/" + name + ".xml"))
                << R"(<Service Name=")" << name << R"(" ProgID=")" << name << R"(.Echo" Active="True"><ActionItems>)"
                << R"(<ActionItem Name="Work)" << number << R"(" Action="OnWork"/></ActionItems><Menus>)"
                << R"(<MenuItem Type="MenuItem" ActionItem="Work)" << number << R"(" Path="File" PositionOrder=")"
                << 100 + i << R"(" Caption="Work"/></Menus></Service>)";
            fs::create_directory(m_path / "plugins" / name);
            std::ofstream(m_path / "plugins" / name / "plugin.json") << R"({"run": ["../Stranger/process_stranger"]})";
        }
    }
    ~FaultyFolder() {
        std::error_code error;
        fs::remove_all(m_path, error);
    }
    FaultyFolder(const FaultyFolder&) = delete;
    FaultyFolder& operator=(const FaultyFolder&) = delete;

    [[nodiscard]] std::string Path() const { return m_path.string(); }
    [[nodiscard]] bool HasFailed() const { return fs::exists(m_path / "mark"); }

private:
    fs::path m_path;
};

// Stops a process as soon as it has said that it is at fault, and not before, however busy the machine is.
class StopsAtFault final : public ProcessMonitor {
public:
    void Said(std::string_view /*service*/, std::string_view line) override { m_isAtFault |= line == "loop at fault"; }
    [[nodiscard]] bool KeepsWaiting(std::string_view /*service*/, int /*milliseconds*/) override {
        return !std::exchange(m_isAtFault, false);
    }
    void WaitingEnds(std::string_view /*service*/) override { m_isAtFault = false; }

private:
    bool m_isAtFault = false;
};

inspect::HostOptions OptionsOf(const std::string& folder) {
    inspect::HostOptions options;
    options.applicationFolder = folder;
    return options;
}

struct Fault {
    const char* where;
    const char* what;
};

std::vector<Fault> AllFaults() {
    std::vector<Fault> faults;
    for (const char* where : {"constructor", "Initialize", "command", "item", "page", "save", "Terminate"})
        for (const char* what : {"kill", "abort", "loop", "memory", "garbage"})
            faults.push_back({where, what});
    return faults;
}

class Faults : public ::testing::TestWithParam<Fault> {};

void Take(inspect::ModelHost& host, const char* verb, const char* rest) {
    inspect::Take(host, {verb, rest, 1});
}

TEST_P(Faults, LeaveTheOthersAlone) {
    const std::string where = GetParam().where;
    const int neighbours = where == "command" ? 20 : 4; // each is a process
    const FaultyFolder folder(where, GetParam().what);
    folder.AddNeighbours(neighbours);
    inspect::HostOptions options = OptionsOf(folder.Path());
    options.processes = New<StopsAtFault>();
    inspect::ModelHost host(options);
    ASSERT_TRUE(host.Start());
    const auto status = [] { return CorvaneMain::Framework()->Status(); };
    for (int i = 1; i <= neighbours; ++i)
        Take(host, "click", ("File.Work" + std::to_string(i)).c_str());
    EXPECT_EQ(Children(), static_cast<std::size_t>(neighbours));
    SetStatus("");
    if (where == "item")
        Take(host, "populate", "");
    else if (where == "page" || where == "save")
        Take(host, "open", "SheetWindow k");
    else
        Take(host, "click", "File.Try");
    if (where == "save")
        Take(host, "command", "k OK");
    if (where != "Terminate") {
        EXPECT_TRUE(folder.HasFailed());
        EXPECT_EQ(status(), "");
    }
    for (int i = 1; i <= neighbours; ++i) {
        Take(host, "click", ("File.Work" + std::to_string(i)).c_str());
        EXPECT_EQ(status(), "worked");
        SetStatus("");
    }
    if (where == "save") { // what couldn't be saved still can
        Take(host, "command", "k OK");
        EXPECT_EQ(status(), "saved");
    }
    Take(host, "click", "File.Try");
    EXPECT_EQ(status(), "worked");
    host.Exit();
    EXPECT_TRUE(host.HasExited());
    EXPECT_TRUE(folder.HasFailed());
    EXPECT_EQ(Children(), 0U);
    const std::string what = GetParam().what;
    std::size_t deaths = 0;
    std::size_t refused = 0;
    std::size_t named = 0;
    for (const auto& entry : host.Recorded().log) {
        const std::string& text = entry.failure.Description;
        named += entry.failure.Source == "Faulty";
        deaths += entry.module == "Processes" && text.find(" while it ") != std::string::npos;
        refused += entry.module == "Processes" && text.find("has sent what isn't a message") != std::string::npos;
    }
    EXPECT_GE(named, 1U);
    EXPECT_EQ(deaths, what == "memory" ? 0U : 1U); // an exception, which the process survives
    EXPECT_EQ(refused, what == "garbage" ? 1U : 0U);
}

INSTANTIATE_TEST_SUITE_P(All, Faults, ::testing::ValuesIn(AllFaults()),
                         [](const auto& fault) { return std::string(fault.param.where) + "_" + fault.param.what; });

TEST(ProcessSettings, SayWhatIsWrong) {
    const FaultyFolder folder("nowhere", "nothing");
    const std::pair<const char*, const char*> cases[] = {
        {"{\n\n nonsense", "line 3 isn't JSON"},
        {"[]", "it isn't an object"},
        {"{}", "\"run\" is missing"},
        {R"({"run": [""]})", "\"run\" is missing"},
        {R"({"run": "python3"})", "\"run\" isn't a list of texts"},
        {R"({"run": ["a", 1]})", "\"run\" isn't a text"},
        {R"({"runs": ["a"]})", "there is no entry \"runs\""},
        {R"({"run": ["a"], "start": "soon"})", "write \"now\" or \"needed\""},
        {R"({"run": ["a"], "folder": "none"})", "there is no folder"},
        {R"({"run": ["a"], "env": {"A": 1}})", "\"env.A\" isn't a text"},
        {R"({"run": ["a"], "limits": {"memory": -1}})", "the limit \"memory\" isn't a whole number"},
        {R"({"run": ["a"], "limits": {"disk": 1}})", "there is no limit \"disk\""},
    };
    const std::string file = folder.Path() + "/plugins/Faulty/plugin.json";
    for (const auto& [text, wanted] : cases) {
        std::ofstream(file) << text;
        try {
            (void)ReadProcessSettings("Faulty", file);
            ADD_FAILURE() << text;
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.Number, FailureNumber::CannotCreateObject) << text;
            EXPECT_NE(failure.Description.find(wanted), std::string::npos) << failure.Description;
        }
    }
}

// A program that can't be started, or that isn't a service.
TEST(Process, SaysWhyItCantBeStarted) {
    const FaultyFolder folder("nowhere", "nothing");
    const std::pair<const char*, std::vector<const char*>> cases[] = {
        {R"({"run": ["no-such-program"]})", {"there is no program \"no-such-program\" in the PATH"}},
        {R"({"run": ["./faulty.py"]})", {"can't be run: Permission denied"}},
        {R"({"run": ["false"]})", {"ended with exit code 1 while it was starting"}},
        {R"({"run": ["python3", "none.py"]})", {"ended with exit code 2", "python3: can't open file"}},
        {R"({"run": ["sh", "-c", "echo '{\"hello\":\"x\",\"protocol\":9,\"classes\":[]}' >&3; cat <&3"]})",
         {"speaks version 9 of the protocol"}},
    };
    for (const auto& [text, wanted] : cases) {
        std::ofstream(folder.Path() + "/plugins/Faulty/plugin.json") << text;
        inspect::ModelHost host(OptionsOf(folder.Path()));
        ASSERT_TRUE(host.Start());
        Take(host, "click", "File.Try");
        const auto& failure = host.FirstFailure();
        ASSERT_TRUE(failure) << text;
        for (const char* part : wanted)
            EXPECT_NE(failure->Description.find(part), std::string::npos) << failure->Description;
    }
}

// Messages with bytes changed, left out and doubled, as they come from the process.
TEST(Process, SurvivesWrongMessages) {
    inspect::ModelHost host(OptionsOf(CORVANE_AVIARY));
    ASSERT_TRUE(host.Start());
    ProcessSettings settings;
    settings.name = "Mutant";
    const auto process = New<Process>(settings, New<LoggingMonitor>(0));
    const std::string messages[] = {
        R"({"hello":"corvane","protocol":1,"classes":[{"name":"A","kind":"item","events":["Exit"],"members":[{"name":"B","parameters":2},{"name":"C","property":true,"writable":false}]}]})",
        R"({"id":1,"on":1,"call":"CVIIf","arguments":[true,"a",{"number":"nan"}]})",
        R"({"id":2,"on":1,"set":"Status","value":"Grüße"})",
        R"({"id":3,"on":2,"call":"FindService","arguments":["Birds"]})",
        R"({"id":4,"on":3,"members":true})",
        R"({"id":5,"result":{"process":9,"class":"A","name":"x"}})",
        R"({"release":[[3,1],[4,2]]})",
    };
    constexpr unsigned seed = 7;
    std::mt19937 random(seed);
    const auto Below = [&](std::size_t n) { return static_cast<std::size_t>(random() % n); };
    for (int i = 0; i < 20000; ++i) {
        std::string line = messages[Below(std::size(messages))];
        for (std::size_t n = Below(4); n > 0 && !line.empty(); --n) {
            const std::size_t at = Below(line.size());
            if (const std::size_t how = Below(4); how == 0)
                line[at] = static_cast<char>(random());
            else if (how == 1)
                line.erase(at, 1 + Below(8));
            else if (how == 2)
                line.insert(at, line.substr(Below(line.size()), Below(16)));
            else
                line.insert(at, std::string(1 + Below(3), "[{\"0-"[Below(5)]));
        }
        process->Receive(line);
    }
    constexpr std::size_t deep = 1000000;
    process->Receive("{\"x\":" + std::string(deep, '[') + std::string(deep, ']') + "}");
    process->Receive(messages[0]);
    EXPECT_TRUE(process->FindClass("Mutant.A"));
    process->Stop();
}

// A process of which a test says what it answers.
class Scripted {
public:
    // Behind the hello and the making of an object, which is the first request.
    explicit Scripted(std::vector<std::string> lines) {
        m_script->lines = {
            R"({"hello":"x","protocol":1,"classes":[{"name":"A","kind":"item","events":["Initialize"],"members":[]}]})",
            R"({"id":1,"result":{"process":1,"class":"A"}})"};
        m_script->lines.insert(m_script->lines.end(), lines.begin(), lines.end());
        ProcessSettings settings;
        settings.name = "P";
        process = New<Process>(settings, New<LoggingMonitor>(0), nullptr,
                               [script = m_script](const LaunchCommand&, const ChildProcess::SaidFunction&) {
                                   return std::make_unique<ScriptedConnection>(script);
                               });
        object = New<ProcessObject>(process, "P.A");
    }
    ~Scripted() { process->Stop(); }
    Scripted(const Scripted&) = delete;
    Scripted& operator=(const Scripted&) = delete;

    [[nodiscard]] const std::vector<std::string>& Sent() const { return m_script->sent; }
    [[nodiscard]] std::size_t Left() const { return m_script->lines.size(); }
    [[nodiscard]] bool IsWoken() const {
        pollfd waited{m_script->waker->Descriptor(), POLLIN, 0};
        return ::poll(&waited, 1, 0) == 1;
    }

    Ref<Process> process;
    Ref<ProcessObject> object;

private:
    std::shared_ptr<Script> m_script = std::make_shared<Script>();
};

TEST(Process, RefusesWhatIsInAWrongForm) {
    inspect::ModelHost host(OptionsOf(CORVANE_AVIARY));
    ASSERT_TRUE(host.Start());
    const std::string wrong = "The service \"P\" has answered in a wrong form";
    const std::tuple<std::vector<std::string>, Long, std::string> cases[] = {
        {{R"({"id":2,"result":{"host":"x"}})"}, Process::Ended, wrong},
        {{R"({"id":2,"result":{"process":3,"rows":"many"}})"}, Process::Ended, wrong},
        {{R"({"id":2,"result":{"process":2e51}})"}, Process::Ended, wrong},
        {{R"({"id":2,"result":{"process":3,"rows":-1}})"}, FailureNumber::Overflow, "A table can't have -1 rows"},
        {{R"({"id":2,"failure":7})"}, Process::Ended, "The service \"P\" has failed and doesn't say how"},
        {{R"({"id":7,"on":1,"call":3})", R"({"id":2,"failure":{"number":9,"description":"none"}})"}, 9, "none"},
    };
    for (const auto& [lines, number, text] : cases) {
        Scripted scripted(lines);
        try {
            (void)scripted.object->Invoke("Work", {});
            ADD_FAILURE() << text;
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.Number, number) << text;
            EXPECT_EQ(failure.Description, text);
        }
    }
    Scripted asking({R"({"id":7,"on":1,"call":3})", R"({"id":2,"result":5})"}); // it waits for an answer to that, too
    EXPECT_EQ(asking.object->Invoke("Work", {}), Variant(5));
    EXPECT_NE(asking.Sent().back().find(R"("failure":{)"), std::string::npos) << asking.Sent().back();
    Scripted item({R"({"id":2,"result":{"children":[{"process":"x"}]}})"});
    EXPECT_NO_THROW(item.object->ExplorerItem()->Initialize(New<ExplorerItemDef>())); // the explorer goes on
    EXPECT_NE(host.Recorded().log.back().failure.Description.find(wrong), std::string::npos);
}

// No socket becomes readable for what has been read with an answer.
TEST(Process, LooksForWhatHasComeBehindAnAnswer) {
    inspect::ModelHost host(OptionsOf(CORVANE_AVIARY));
    ASSERT_TRUE(host.Start());
    Scripted scripted(
        {R"({"id":2,"result":1})", R"({"id":1,"on":1,"set":"Status","value":"behind"})", R"({"id":3,"result":3})"});
    (void)scripted.object->Invoke("Work", {});
    EXPECT_TRUE(scripted.IsWoken());
    scripted.process->Pump();
    EXPECT_EQ(CorvaneMain::Framework()->Status(), "behind");
    Scripted ended({R"({"id":2,"result":1})"}); // its end has been read, too
    (void)ended.object->Invoke("Work", {});
    EXPECT_TRUE(ended.IsWoken());
    ended.process->Pump();
    EXPECT_FALSE(ended.object->IsLive());
}

// What the application does while the process waits for it, as for a dialog.
class InDialog final : public virtual Object {
public:
    explicit InDialog(std::function<void()> act) : m_act(std::move(act)) {}
    Variant Invoke(std::string_view /*name*/, std::span<const Variant> /*arguments*/) override {
        m_act();
        return "answered";
    }
    std::string_view TypeName() const override { return "Dialog"; }

private:
    std::function<void()> m_act;
};

TEST(Process, ReportsJobsWhileItShowsADialog) {
    inspect::HostOptions options = OptionsOf(CORVANE_AVIARY);
    options.oneThread = true;
    inspect::ModelHost host(options);
    ASSERT_TRUE(host.Start());
    Scripted scripted(
        {R"({"id":1,"on":2,"call":"StartJob","arguments":[{"process":1},1,"Sing",true,false,"","","A.Sing"]})",
         R"({"id":2,"on":3,"call":"Show"})", R"({"job":1,"part":0.5,"text":"third verse"})",
         R"({"id":2,"result":"sung"})", R"({"job":1,"end":"done"})", R"({"release":[]})"});
    std::size_t left = 0;
    const Ref<Object> dialog = New<InDialog>([&] {
        scripted.process->Pump();
        left = scripted.Left();
    });
    EXPECT_EQ(scripted.object->Invoke("Work", std::vector<Variant>{Variant(dialog)}), Variant("sung"));
    EXPECT_EQ(left, 0U);
    host.RunJobs();
    ASSERT_EQ(host.Jobs()->Ended().size(), 1U);
    EXPECT_EQ(host.Jobs()->Ended().front()->State(), JobState::Done);
    EXPECT_EQ(host.Jobs()->Ended().front()->Text(), "third verse");
}

} // namespace
} // namespace corvane::testing
