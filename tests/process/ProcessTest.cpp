// Services in processes of their own, in an application with one in Python and one without a library for the protocol.
#include "adapters/process/Process.h"

#include "adapters/process/ExplorerMarks.h"
#include "corvane/Testing.h"
#include "corvane/author/Host.h"
#include "corvane/base/Dictionary.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/services/IService.h"
#include "headless/Steps.h"
#include "tests/process/Children.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <sys/wait.h>
#include <unistd.h>

namespace corvane::testing {
namespace {

template <class... Arguments>
Variant Called(const char* member, const Arguments&... arguments) {
    return CallByName(FindService("Birds"), member, arguments...);
}

// The failure of a call, as "number description".
std::string FailureOf(const std::function<void()>& call) {
    try {
        call();
        return "none";
    } catch (const Failure& failure) {
        return std::to_string(failure.Number) + " " + failure.Description;
    }
}

TEST(Process, StartsWhenItIsNeeded) {
    Application application(CORVANE_AVIARY);
    ASSERT_EQ(application.Start(), 0) << application.Text();
    EXPECT_EQ(Children(), 0U);
    const std::string menu = application.BandText("File");
    application.Take("click File.Work");
    EXPECT_EQ(application.Status(), "worked");
    EXPECT_EQ(Children(), 1U);
    application.Take("click File.Count\nclick File.Count");
    EXPECT_EQ(application.Status(), "2 seeds 1 seeds worked");
    EXPECT_EQ(Children(), 2U);
    EXPECT_EQ(application.BandText("File"), menu);
    EXPECT_EQ(Called("Heard"), Variant("Initialize"));
    EXPECT_EQ(application.TakeLog(), Lines());
    application.Stop();
    EXPECT_EQ(Children(), 0U);
}

class Aviary : public ::testing::Test {
protected:
    Aviary() { EXPECT_EQ(m_application.Start(), 0) << m_application.Text(); }

    Application m_application{CORVANE_AVIARY};
};

TEST_F(Aviary, ServesCommandsThatCallBack) {
    const std::pair<const char*, const char*> cases[] = {
        {"answer No\nclick File.Greet", "Greet True Birds,Framework,Stranger No"},
        {"click File.Greet", "Greet True Birds,Framework,Stranger No"}, // it is disabled by now
        {"click File.Nest", "nested deep"},
    };
    for (const auto& [steps, status] : cases) {
        m_application.Take(steps);
        EXPECT_EQ(m_application.Status(), status) << steps;
    }
    EXPECT_EQ(m_application.TakeLog(), Lines());
}

TEST_F(Aviary, PassesValues) {
    const Ref<Object> root = CorvaneMain::Framework();
    const Variant values[] = {Variant(),
                              true,
                              Long{-7},
                              LongLong{1} << 62,
                              2.5,
                              "",
                              "Zeisig – \n\"ß\"",
                              root,
                              FindService("Birds"),
                              std::numeric_limits<Double>::infinity()};
    for (const Variant& value : values)
        EXPECT_EQ(Called("Same", value), value) << (value.IsObject() ? "an object" : ToText(value));
    EXPECT_TRUE(std::isnan(ToDouble(Called("Same", std::nan("")))));
    EXPECT_EQ(Called("two", "a"), Variant("a2"));
    EXPECT_EQ(Called("Two", "a", Long{3}), Variant("a3"));
    FindService("Birds")->Put("title", "Siskin");
    EXPECT_EQ(Called("Title"), Variant("Siskin"));
    EXPECT_TRUE(FindService("Birds")->HasMember("heard"));
    EXPECT_FALSE(FindService("Birds")->HasMember("OnInitialize"));
    const std::pair<std::string, std::function<void()>> failures[] = {
        {"450 \"Two\" of class \"Birds\" takes 1 arguments and was given 3", [] { Called("Two", 1, 2, 3); }},
        {"438 An object of class \"Birds\" has no member \"Three\"", [] { Called("Three"); }},
        {"438 An object of class \"Birds\" has no property \"Two\" to be written",
         [] { FindService("Birds")->Put("Two", 1); }},
        {"13 A list can't be passed: pass texts, numbers and objects", [] { Called("List"); }},
        {"-2147221503 The cage is closed", [] { Called("Refuse"); }},
        {"-2147467259 KeyError: 'wren'", [] { Called("OnFail"); }},
        {"-1 no further", [] { Called("Recurse"); }},
    };
    for (const auto& [text, call] : failures)
        EXPECT_EQ(FailureOf(call), text);
}

TEST_F(Aviary, SaysWhereItFailed) {
    EXPECT_EQ(m_application.Click("File.Fail"), FailureNumber::Foreign);
    const auto& log = m_application.Host().Recorded().log;
    ASSERT_FALSE(log.empty());
    const std::string& details = log.front().failure.Context;
    EXPECT_NE(details.find("birds.py\", line"), std::string::npos) << details;
    EXPECT_NE(details.find("return {}[\"wren\"]"), std::string::npos) << details;
    EXPECT_EQ(details.find("_runtime.py"), std::string::npos) << details;
    EXPECT_NE(details.find("service Birds, Services/Birds.xml"), std::string::npos) << details;
    EXPECT_EQ(log.front().failure.Source, "Birds");
}

TEST_F(Aviary, CallsWithoutEndAreRefused) {
    EXPECT_EQ(m_application.Click("File.Deep"), FailureNumber::OutOfStackSpace);
    m_application.Take("click File.Count"); // it lives
    EXPECT_EQ(m_application.Status().substr(0, 2), "1 ");
}

TEST_F(Aviary, ShowsExplorerItemsAndPages) {
    m_application.Take("populate");
    EXPECT_EQ(m_application.Nodes(0), (Lines{"Aviary", " Bird.Blackbird", " Bird.Wren"}));
    EXPECT_NE(m_application.Text().find("<Wren>"), std::string::npos);
    const struct {
        const char* steps;
        const char* heard;
        const char* status;
    } cases[] = {
        {"node 0 Bird.Blackbird\ndblclick", "Page:Blackbird:Blackbird", ""},
        {"expect windows[0].pages[0].fields[Photo].value PNG picture, 1 x 1",
         "Rows:0 Rows:200 Rows:400 Rows:600 Rows:800", ""},
        {"cell Blackbird 0 Seen 999 1 77\nexpect windows[0].pages[0].fields[Seen].rows.999.1 77", "Rows:800", ""},
        {"command Blackbird OK", "Save:Blackbird:none", "The Blackbird closed, cancelled: False"},
        {"node 0 Bird.Wren\nclick File.Open", "Page:Wren:Wren", ""},
        {"command Wren OK", "", ""}, // the page isn't valid
        {"close Wren", "", "The Wren closed, cancelled: True"},
        {"rename Jenny", "Renamed:Jenny", ""},
        {"click File.Open", "Page:Jenny:Jenny", ""},
    };
    Called("Heard");
    for (const auto& [steps, heard, status] : cases) {
        SetStatus("");
        m_application.Take(steps);
        EXPECT_EQ(ToText(Called("Heard")), heard) << steps;
        EXPECT_EQ(m_application.Status(), status) << steps;
    }
    EXPECT_EQ(m_application.TakeLog(), Lines());
}

TEST_F(Aviary, SavesWhatIsUnsaved) {
    Double order = 0;
    const auto service = CorvaneMain::QueryService(FindService("Birds"));
    EXPECT_EQ(service->UnsavedItems(order)->Count(), 0); // it doesn't run
    EXPECT_EQ(Children(), 0U);
    Called("Heard");
    const auto items = service->UnsavedItems(order);
    EXPECT_EQ(items->Keys(), Lines{"Blackbird"});
    service->Save(ToObject(items->Item("Blackbird")));
    EXPECT_EQ(Called("Heard"), Variant("Saved:Blackbird"));
}

TEST_F(Aviary, LetsProceduresGoOn) {
    m_application.Take("click File.Later\nexpect status after\nexpect jobs[Later].state done\n"
                       "click File.Fly\nexpect jobs[Fly to Africa].log.0 landed\nexpect status landed in Africa\n"
                       "expect jobs[Fly to Africa].service Birds\n"
                       "click File.Nap\nexpect jobs[2].state done\nexpect status awake\n"
                       "click File.Nap\ncancel Nap at 50%\nexpect jobs[3].state cancelled\n"
                       "click File.Fly\ncancel Fly to Africa\nexpect jobs[4].state cancelled\n"
                       "click File.Fly\nexpect jobs[5].state done");
    EXPECT_EQ(m_application.Host().Recorded().unmet, Lines());
    EXPECT_EQ(m_application.TakeLog(), Lines());
}

TEST(Process, DoesJobsInOneThreadToo) {
    Application application(CORVANE_AVIARY);
    application.UseOneThread();
    ASSERT_EQ(application.Start(), 0) << application.Text();
    application.Take("click File.Fly\nexpect status landed in Africa\nclick File.Nap\ncancel Nap at 50%\n"
                     "expect jobs[1].state cancelled");
    EXPECT_EQ(application.Host().Recorded().unmet, Lines());
}

// The failure names the job, the procedure and the service; the death of a process is one of its jobs.
TEST_F(Aviary, SaysWhyAJobFailed) {
    m_application.Take("click File.Fall\nexpect jobs[0].state failed\n"
                       "expect jobs[0].failure.description The wing is broken\n"
                       "click File.Crash\nexpect jobs[1].state failed\n"
                       "click File.Fly\nexpect jobs[2].state done");
    EXPECT_EQ(m_application.Host().Recorded().unmet, Lines());
    const auto& log = m_application.Host().Recorded().log;
    ASSERT_GE(log.size(), 3U);
    EXPECT_NE(log[0].context.find("in the job \"Fall\", started in Birds.OnFall (service Birds, Services/Birds.xml"),
              std::string::npos)
        << log[0].context;
    EXPECT_NE(log[1].failure.Description.find("was killed by signal 6 (Aborted) (so sudden) while it worked on a job"),
              std::string::npos)
        << log[1].failure.Description;
}

// Marks say which items have lost their process; what has been entered in a form survives it.
TEST_F(Aviary, RecoversItemsAndPages) {
    m_application.Take("populate\nnode 0 Bird.Blackbird\ndblclick\nset Blackbird 0 Note shy");
    const auto Shows = [&](const char* text) { return m_application.Text().find(text) != std::string::npos; };
    EXPECT_FALSE(Shows(ExplorerMarks::Mark));
    EXPECT_EQ(FailureOf([] { Called("OnDie"); }).substr(0, 11), "-2147221248");
    EXPECT_TRUE(Shows("⚠ <Wren>"));
    EXPECT_TRUE(Shows("[Bird]  ! The service \"Birds\" was killed by signal 6"));
    EXPECT_TRUE(Shows("Note: shy"));
    m_application.Take("set Blackbird 0 Note shy and quick");
    EXPECT_EQ(ToText(Called("Heard")).substr(0, 35), "Initialize Page:Blackbird:Blackbird");
    EXPECT_FALSE(Shows("[Bird]  !"));
    EXPECT_FALSE(Shows(ExplorerMarks::Mark));
    EXPECT_EQ(FailureOf([] { Called("OnDie"); }).substr(0, 11), "-2147221248");
    m_application.Take("command Blackbird OK");
    EXPECT_NE(ToText(Called("Heard")).find("Save:Blackbird:shy and quick"), std::string::npos);
    EXPECT_EQ(FailureOf([] { Called("OnDie"); }).substr(0, 11), "-2147221248");
    m_application.Take("node 0 Bird.Wren\nclick File.Open\nclose Wren");
    EXPECT_EQ(m_application.OpenWindows(), Lines());
}

TEST_F(Aviary, StartsAgainAfterItsDeathButNotForEver) {
    m_application.Take("populate");
    const std::string death = "was killed by signal 6 (Aborted) (so tired)";
    for (int i = 0; i < 3; ++i) {
        const std::string failure = FailureOf([] { Called("OnDie"); });
        EXPECT_NE(failure.find("The service \"Birds\" " + death + " while it ran OnDie"), std::string::npos) << failure;
        m_application.Take("click File.Work"); // the others live
        EXPECT_EQ(m_application.Status(), "worked");
        SetStatus("");
        if (i == 0) {
            EXPECT_EQ(Called("Heard"), Variant("Initialize")); // it lives again
            m_application.Take("node 0 Bird.Wren");
            m_application.Take("click File.Open\nclose Wren"); // its item is found again, below the aviary
            EXPECT_EQ(m_application.Status(), "The Wren closed, cancelled: True");
            SetStatus("");
            EXPECT_EQ(FailureOf([] { Called("OnDie"); }).substr(0, 11), "-2147221248");
        }
    }
    const std::string refused = FailureOf([] { Called("Heard"); });
    EXPECT_NE(refused.find("isn't started again"), std::string::npos) << refused;
    EXPECT_NE(refused.find(death), std::string::npos) << refused;
}

TEST(Process, EndsWithTheApplicationHoweverThatEnds) {
    int numbers[2];
    ASSERT_EQ(::pipe(numbers), 0);
    const pid_t host = ::fork();
    if (host == 0) {
        Application application(CORVANE_AVIARY);
        application.Start();
        application.Take("click File.Work");
        const pid_t child = FirstChild();
        [[maybe_unused]] const auto written = ::write(numbers[1], &child, sizeof child);
        ::kill(::getpid(), SIGKILL);
    }
    pid_t child = 0;
    ASSERT_EQ(::read(numbers[0], &child, sizeof child), static_cast<ssize_t>(sizeof child));
    ASSERT_GT(child, 0);
    ::waitpid(host, nullptr, 0);
    while (IsAlive(child))
        ::usleep(1000);
    ::close(numbers[0]);
    ::close(numbers[1]);
}

} // namespace
} // namespace corvane::testing
