#include "desktop/blame/Blame.h"

#include "adapters/platform/ApplicationPlatform.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/services/ServiceManager.h"
#include "desktop/application/Application.h"
#include "tests/desktop/AppFolder.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTest>

namespace corvane::desktop {
namespace {

class BlameTest : public ::testing::Test {
protected:
    BlameTest() { m_folder.Service("Shell", "Corvane.Framework", shellContent); }
    void Trouble(const QString& number, const char* attributes = "") const {
        m_folder.Plugin("T" + number);
        m_folder.Service("Trouble" + number, "T" + number + ".Service",
                         R"(<ActionItems><ActionItem Name="Die" Action="OnDie"/>
            <ActionItem Name="Hang" Action="OnHang"/><ActionItem Name="Open" Action="OnOpen"/></ActionItems><Menus>
            <MenuItem Type="MenuItem" ActionItem="Open" Path="Menu)" +
                             number + R"(" PositionOrder="1" Caption="Open"/>
            <MenuItem Type="MenuItem" ActionItem="Die" Path="File" PositionOrder="1" Caption="Die"/>
            <MenuItem Type="MenuItem" ActionItem="Hang" Path="Menu)" +
                             number + R"(" PositionOrder="2" Caption="Hang"/></Menus><Windows>
            <Window Name="Sheet)" +
                             (number == "0" ? QString() : number) +
                             R"(" Caption="Sheet" Type="Window" State="Normal" IsMDIChild="true" IsModal="false">
            <Page PageProgID="T0.Page" Caption="P" IsOptional="false" IsResizable="true"/></Window></Windows>)",
                         attributes);
    }
    // The real program, in a process of its own.
    void Run(const char* trouble) const {
        QProcess program;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("TROUBLE", trouble);
        environment.insert("ASAN_OPTIONS", "handle_segv=0"); // a sanitizer would make an exit of the death
        program.setProcessEnvironment(environment);
        program.start(CORVANE_DESKTOP_PROGRAM, {QString::fromStdString(m_folder.App()), "--choose", "Menu0.Open",
                                                "--choose", "File.Die", "--quit"});
        ASSERT_TRUE(program.waitForFinished(60000));
        EXPECT_EQ(program.exitStatus() == QProcess::CrashExit, *trouble != 0) << trouble;
    }

    // Of a start that notes in whose code the one before died.
    [[nodiscard]] ApplicationOptions Asking(std::string& asked, CrashAnswer answer) const {
        ApplicationOptions options{m_folder.App(), false};
        options.askAfterCrash = [&asked, answer](const CrashRecord&, const std::string& who) {
            asked += who;
            return answer;
        };
        return options;
    }

    struct Case {
        const char* place;
        const char* who;
    };
    AppFolder m_folder;
};

TEST_F(BlameTest, NextStartKnowsInWhoseCodeTheProgramDied) {
    Trouble("0");
    Trouble("1"); // the same class in another library, which isn't to blame
    QFile::remove(m_folder.Path("App/Services/Trouble1.xml"));
    for (const Case& testCase :
         {Case{"constructor", "Trouble0"}, Case{"event", "Trouble0"}, Case{"command", "Trouble0"},
          Case{"depth", "Trouble0"}, Case{"page", "Trouble0"}, Case{"", ""}}) {
        Run(testCase.place);
        std::string asked;
        Application application(Asking(asked, CrashAnswer::LeaveOut));
        EXPECT_TRUE(application.Start());
        EXPECT_EQ(asked, testCase.who) << testCase.place;
        EXPECT_EQ(static_cast<bool>(application.Bar()->Tools()->Find("File.Die")), asked.empty()) << testCase.place;
    }
}

TEST_F(BlameTest, NextStartIsAsTheAnswerSays) {
    Trouble("0");
    Trouble("1");
    for (const auto& [answer, started] :
         {std::pair(CrashAnswer::LeaveOut, "1"), {CrashAnswer::StartAll, "01"}, {CrashAnswer::Safe, ""}}) {
        Run("constructor");
        ApplicationOptions options{m_folder.App(), false};
        options.askAfterCrash = [&, chosen = answer](const CrashRecord&, const std::string&) { return chosen; };
        Application application(options);
        EXPECT_TRUE(application.Start());
        std::string services;
        for (const char* number : {"0", "1"})
            if (Singleton::Framework()->ServiceManager()->Services()->HasKey(std::string("Trouble") + number))
                services += number;
        EXPECT_EQ(services, started);
    }
}

// Wherever the library or the host enters it. What it leaves running by itself is known by its plug-in alone.
TEST_F(BlameTest, OfTwoServicesInOnePluginTheRightOneIsNamed) {
    Trouble("0", "IsStartService=\"true\"");
    m_folder.Service("Second", "T0.Second", R"(
        <ExplorerItems><ExplorerItem Name="SecondRoot" ProgID="T0.SecondItem" Type="Folder" PositionOrder="1"/>
        </ExplorerItems><Windows>
        <Window Name="Other" Caption="Other" Type="Window" State="Normal" IsMDIChild="true" IsModal="false">
        <Page PageProgID="T0.SecondPage" Caption="P" IsOptional="false" IsResizable="true"/></Window></Windows>)");
    for (const Case& testCase :
         {Case{"second constructor", "Second"}, Case{"second event", "Second"}, Case{"second end", "Second"},
          Case{"second item's event", "Second"}, Case{"second item's name", "Second"}, Case{"second page", "Second"},
          Case{"second page's event", "Second"}, Case{"second page's widget", "Second"}, Case{"second job", "Second"},
          Case{"constructor", "Trouble0"}, Case{"event", "Trouble0"}, Case{"start", "Trouble0"},
          Case{"after the other's page", "Trouble0"}, Case{"timer", "T0"}}) {
        Run(testCase.place);
        std::string asked;
        const Application application(Asking(asked, CrashAnswer::Safe));
        EXPECT_EQ(asked, testCase.who) << testCase.place;
    }
}

TEST_F(BlameTest, WatchNamesTheServiceThatHangsAmongTwenty) {
    for (int i = 0; i < 20; ++i)
        Trouble(QString::number(i));
    Application application({m_folder.App(), false});
    ASSERT_TRUE(application.Start());
    application.Blamed().StartWatch(UiWatch::Milliseconds(300));
    QApplication::processEvents();
    for (const int i : {13, 4}) {
        // As something of the service's own that no command began: the watch sees whose code it is.
        const auto tool = application.Bar()->Tools()->Item("Menu" + std::to_string(i) + ".Hang");
        const auto action = tool->TagVariant().As<ActionItem>();
        action->OnAction();
        QElapsedTimer time;
        time.start();
        const QByteArray name = "Trouble" + QByteArray::number(i) + " kept the user interface busy for ";
        while (!m_folder.Read("corvane/App/errors.log").contains(name) && !time.hasExpired(30000))
            QTest::qWait(20);
        const QByteArray log = m_folder.Read("corvane/App/errors.log");
        EXPECT_TRUE(log.contains("Trouble" + QByteArray::number(i) + " has kept the user interface busy"))
            << log.data();
        EXPECT_TRUE(log.contains(name)) << log.data();
        EXPECT_EQ(log.count(" has kept "), i == 13 ? 1 : 2) << log.data();
    }
}

TEST(LeftOutServices, LeavesOutByNameAndByPluginAndWhatStandsBelow) {
    const AppFolder folder;
    folder.Service("Shell", "Corvane.Framework", "");
    folder.Service("Base", "Base.Service", "<ExplorerItem Name=\"Root\" Type=\"Folder\"/>");
    folder.Service("Upon", "Upon.Service", "<ExplorerItem Name=\"Leaf\" Parent=\"Root\"/>");
    folder.Service("Twig", "Other.Service", "<ExplorerItem Name=\"Twig\" Parent=\"leaf\"/>");
    folder.Service("Free", "Other.Free", "");
    struct Case {
        LeftOut leftOut;
        const char* out;
        const char* unknown;
    };
    const ApplicationPlatform platform(folder.App());
    const std::string folderPath = platform.utilities->GetAppFolder("Services");
    for (const Case& testCase :
         {Case{{{}, false}, "", ""}, Case{{{"base"}, false}, "Base Upon Twig ", ""},
          Case{{{"Other", "Nobody"}, false}, "Free Twig ", "Nobody "}, Case{{{}, true}, "Base Free Twig Upon ", ""}}) {
        const auto files = New<LeftOutServices>(platform.MakePlatform().oFileSystem, folderPath, testCase.leftOut);
        const std::size_t left = files->Files(folderPath).size();
        std::string out;
        for (const std::string& name : files->Services())
            out += name + " ";
        EXPECT_EQ(out, testCase.out);
        EXPECT_EQ(left, 6 - files->Services().size());
        std::string unknown;
        for (const std::string& name : files->Unknown())
            unknown += name + " ";
        EXPECT_EQ(unknown, testCase.unknown);
    }
}

} // namespace
} // namespace corvane::desktop
