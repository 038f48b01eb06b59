#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "testing/Application.h"

#include <gtest/gtest.h>

namespace corvane::testing {

namespace {

constexpr const char* page = R"(<Page IsOptional="0" IsResizable="1" PageProgID=)";

// A window of two pages and an explorer of one item with a menu; calls are taken up to where it stands ready.
class StepsTest : public ::testing::Test {
protected:
    StepsTest() {
        m_application.AddService("S", std::string(R"(<Windows><Window Name="W" Type="Wizard" State="Normal">)") + page +
                                          R"("P.One"/>)" + page + R"("P.Two"/></Window>
<Window Name="Asks" Type="Dialog" State="Normal" IsMDIChild="false" IsModal="true">)" +
                                          page + R"("P.One"/>)" + page + R"("P.Two"/></Window>
<Window Name="Refused" Type="Window" State="Normal">)" +
                                          page + R"("P.Refused"/></Window></Windows>
<ExplorerItems><ExplorerItem Name="Root" Type="Folder" ProgID="P.Root">
<ActionItems><ActionItem Name="Open" Action="OnOpen"/></ActionItems>
<Menus><MenuItem Type="ContextMenuItem" ActionItem="Open" PositionOrder="1" Caption="#Open"/></Menus>
</ExplorerItem></ExplorerItems>)");
        m_application.SetStandIns(R"({"objects": {"P.Root": {"name": "Root"},
            "P.Refused": {"create": {"number": 7, "source": "", "description": ""}}}})");
        EXPECT_EQ(m_application.Start(), 0);
    }

    Lines CallsOf(const std::string& steps) {
        (void)m_application.TakeCalls();
        m_application.Take(steps);
        return m_application.TakeCalls();
    }

    Application m_application;
};

} // namespace

TEST_F(StepsTest, LeadThroughAWindow) {
    m_application.Take("open W");
    EXPECT_EQ(CallsOf("page W 1"), (Lines{"P.One#1 Deactivate", "P.Two#1 Activate"}));
    EXPECT_EQ(CallsOf("command W Previous"),
              (Lines{"P.Two#1 CommandClick(4)", "P.Two#1 Deactivate", "P.One#1 Activate"}));
    EXPECT_EQ(CallsOf("command w next").size(), 4U); // is asked whether it is valid, too
    EXPECT_EQ(CallsOf("page W 2"), Lines());
    EXPECT_EQ(m_application.Host().FirstFailure()->Number, FailureNumber::Subscript);
    // Reported, asked, saved, and gone.
    EXPECT_EQ(CallsOf("command W Finish"),
              (Lines{"P.One#1 CommandClick(1)", "P.Two#1 CommandClick(1)", "P.One#1 Validate(True)",
                     "P.Two#1 Validate(True)", "P.One#1 Validate(True)", "P.One#1 Save", "P.Two#1 Validate(True)",
                     "P.Two#1 Save", "P.Two#1 Deactivate", "P.One#1 Terminate(-)", "P.Two#1 Terminate(-)"}));
    EXPECT_EQ(CallsOf("open W a key\nclose A KEY"),
              (Lines{"P.One#2 Initialize(-)", "P.Two#2 Initialize(-)", "P.One#2 Activate", "P.One#2 Deactivate",
                     "P.One#2 Terminate(-)", "P.Two#2 Terminate(-)"}));
    EXPECT_EQ(m_application.OpenWindows(), Lines());
}

// A window without a key goes by a number of its own, which mustn't be one that a user would choose.
TEST_F(StepsTest, OpenWindowsUnderNumbers) {
    m_application.Take("open W\nopen W 1\nopen W\nopen W 2\nopen W 3\nopen W 1\nexpect windows.count 5\n"
                       "expect windows.0.key null\nexpect windows.1.key 1\nexpect windows.4.key 3");
    EXPECT_EQ(m_application.TakeUnmet(), Lines());
}

// As long as the steps are indented a modal window stays, also over another; then it is closed as if by its close box.
TEST_F(StepsTest, AreTakenInModalWindows) {
    EXPECT_EQ(
        CallsOf("open Asks\n  page Asks 1\n  # still open\n\n  expect windows[Asks].name Asks\n  command Asks OK\n"
                "expect windows.count 0"),
        (Lines{"P.One#1 Initialize(-)", "P.Two#1 Initialize(-)", "P.One#1 Activate", "P.One#1 Deactivate",
               "P.Two#1 Activate", "P.One#1 CommandClick(1)", "P.Two#1 CommandClick(1)", "P.One#1 Validate(True)",
               "P.Two#1 Validate(True)", "P.One#1 Validate(True)", "P.One#1 Save", "P.Two#1 Validate(True)",
               "P.Two#1 Save", "P.Two#1 Deactivate", "P.One#1 Terminate(-)", "P.Two#1 Terminate(-)"}));
    m_application.Take("open Asks first\n  open Asks second\n  expect windows.count 2\n  close second\n"
                       "  expect windows.count 1\n  page first 1\nexpect windows.count 0\nopen Asks\nopen W");
    EXPECT_EQ(m_application.OpenWindows(), Lines{"W"});
    EXPECT_EQ(m_application.TakeUnmet(), Lines());
    EXPECT_FALSE(m_application.Host().FirstFailure());
    // Where no window has opened, the step fails as any for a window that isn't there; the application may end in one.
    m_application.Take("  close Asks\nopen Asks\n  exit\n  close W");
    EXPECT_EQ(m_application.Host().FirstFailure()->Description, "There is no open window \"Asks\"");
    EXPECT_TRUE(m_application.Host().HasExited());
}

TEST_F(StepsTest, AskForTheMenuOfANode) {
    m_application.Take("populate\ncontextmenu 0 Root\ncontextmenu 0 Nowhere");
    EXPECT_EQ(m_application.Host().Recorded().popups, Lines{"Context.Root"});
    m_application.Take("click Context.Root.Open");
    EXPECT_EQ(m_application.TakeCalls().back(), "P.Root#1 OnOpen");
}

TEST(Steps, SelectSeveralNodesAndReportWhatIsNotTaken) {
    Application application;
    application.AddService("S", R"(<ExplorerItems><ExplorerItem Name="Root" Type="Folder" ProgID="P.Root"/>
<ExplorerItem Name="Item" Type="Default" Parent="Root"/></ExplorerItems>)");
    application.SetStandIns(R"({"objects": {"P.Root": {"name": "Root", "children": [{"name": "a"}, {"name": "b"}]}}})");
    EXPECT_EQ(application.Start(), 0);
    application.Take("populate\nnode 0 Item.b\nalso 0 Item.a\nexpect explorer.tabs[Root].selected.0 Item.a\n"
                     "expect explorer.tabs[Root].selected.1 Item.b\nalso 0 Item.a\n"
                     "expect explorer.tabs[Root].selected null\nexpand 0 Root\nexpect failure null");
    EXPECT_EQ(application.TakeUnmet(), Lines());
    application.Take("drop 0 Root\ntakefile /a.csv\ndropcopy 0 Root\ndropfile /a.csv");
    const auto& missed = application.Host().Recorded().missed;
    EXPECT_EQ(missed.size(), 3U);
    EXPECT_NE(missed.back().find("no service opens \"/a.csv\""), std::string::npos);
}

TEST_F(StepsTest, MayEndInAnEmptyField) {
    m_application.Take("click \ncloseband \ntab \npopulate\nnode 0 Root\nselect 0 ");
    EXPECT_FALSE(m_application.Host().FirstFailure());
    EXPECT_FALSE(m_application.Host().Trees().front()->SelectedItem());
    EXPECT_THROW(m_application.Take("click"), Failure);
}

TEST_F(StepsTest, LeaveNoWindowBehindAppExit) {
    m_application.Take("open W");
    const Ref<MdiForm> mainForm = m_application.Host().MainForm();
    CorvaneMain::Framework()->AppExit();
    EXPECT_EQ(mainForm->Forms().size(), 1U);
    m_application.Stop();
    EXPECT_EQ(mainForm->Forms().size(), 0U);
}

TEST_F(StepsTest, MeetTheFailureOfTheFileAsItIsWritten) {
    m_application.Take("open Refused");
    const Failure failure = *m_application.Host().FirstFailure();
    EXPECT_EQ(failure.Number, 7);
    EXPECT_EQ(failure.Source + "/" + failure.Description, "/");
}

TEST_F(StepsTest, TellWhatIsOtherwiseThanExpected) {
    m_application.Take("open W\n"
                       "expect windows.count 1\n"
                       "expect windows[w].name W\n"
                       "expect windows.0.key null\n"
                       "expect bands[Context.Root].tools.0.caption &Open\n"
                       "expect explorer.visible false\n"
                       "expect explorer.tabs[Root].nodes []\n"
                       "expect failure null\n"
                       "expect status \n"
                       "expect nowhere.at.all.count 0");
    EXPECT_EQ(m_application.TakeUnmet(), Lines());
    m_application.Take("expect windows.count 2\nexpect windows[W].name V\nexpect tools[No One].checked true\n"
                       "expect status \xF6t"); // bytes that are no UTF-8

    EXPECT_EQ(m_application.TakeUnmet(), (Lines{"steps:1: error: expected windows.count 2, but it is 1",
                                                "steps:2: error: expected windows[W].name \"V\", but it is \"W\"",
                                                "steps:3: error: expected tools[No One].checked true, but it is null",
                                                "steps:4: error: expected status \"\xEF\xBF\xBDt\", but it is \"\""}));
}

// Whatever comes of it: the user has closed the application.
TEST(Exit, HasBegunAlsoWhenAServiceFailsToEnd) {
    for (const char* step : {"exit", "click File.Leave"}) {
        Application application;
        application.AddService("A");
        application.AddDefinition("!Shell.xml", ServiceXml("Shell", R"(<ActionItems>
<ActionItem Name="Navigation" Action="ViewNavigation"/><ActionItem Name="Leave" Action="AppExit"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Leave" Path="File" PositionOrder="1"/></Menus>)",
                                                           {{"ProgID", "Corvane.Framework"}}));
        application.SetStandIns(R"({"objects": {"A.Service": {"fail": {"Terminate": {"number": 77}}}}})");
        ASSERT_EQ(application.Start(), 0);
        EXPECT_FALSE(application.Host().HasExited());
        application.Take(step);
        EXPECT_EQ(application.Host().FirstFailure()->Number, 77) << step;
        EXPECT_TRUE(application.Host().HasExited()) << step;
    }
}

TEST(StandIns, TakeThePlaceOfTheIniFileOnlyWhenTheySaySo) {
    const std::pair<const char*, bool> cases[] = {
        {"{}", false}, {R"({"ini": {}})", true}, {R"({"ini": {"QRZVGEnabled": 1}})", true}};
    for (const auto& [standIns, loads] : cases) {
        Application application;
        application.AddFile("QRZ.INI", "[Preferences]\nQRZVGEnabled=0\n");
        application.SetStandIns(standIns).AddDefinition("MirelonSvc.xml", ServiceXml("Gated"));
        ASSERT_EQ(application.Start(), 0);
        EXPECT_EQ(application.TakeCalls(), loads ? Lines{"Gated.Service#1 Initialize"} : Lines()) << standIns;
    }
}

TEST(StandIns, FailAsTheyAreToldToTheLetter) {
    Application application;
    application.AddService("A");
    application.SetStandIns(R"({"objects": {"a.service": {"fail": {"initialize": {"number": -7}}}}})");
    ASSERT_EQ(application.Start(), -7);
    EXPECT_EQ(application.Host().FirstFailure()->Source, "");
    EXPECT_EQ(application.Host().FirstFailure()->Description, "");
}

TEST(StandIns, MakeNoSecondFramework) {
    Application application;
    application.AddService("A", R"(<ExplorerItems><ExplorerItem Name="Root" Type="Folder" ProgID="corvane.framework"/>
</ExplorerItems>)");
    ASSERT_EQ(application.Start(), 0);
    application.Take("populate");
    EXPECT_EQ(application.Host().FirstFailure()->Number, FailureNumber::CannotCreateObject);
}

} // namespace corvane::testing
