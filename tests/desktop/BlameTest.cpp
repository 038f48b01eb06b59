#include "desktop/blame/Blame.h"

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
    BlameTest() { m_oFolder.Service("Shell", "Corvane.Framework", sShellContent); }
    void Trouble(const QString& sNumber, const char* sAttributes = "") const {
        m_oFolder.Plugin("T" + sNumber);
        m_oFolder.Service("Trouble" + sNumber, "T" + sNumber + ".Service",
                          R"(<ActionItems><ActionItem Name="Die" Action="OnDie"/>
            <ActionItem Name="Hang" Action="OnHang"/><ActionItem Name="Open" Action="OnOpen"/></ActionItems><Menus>
            <MenuItem Type="MenuItem" ActionItem="Open" Path="Menu)" +
                              sNumber + R"(" PositionOrder="1" Caption="Open"/>
            <MenuItem Type="MenuItem" ActionItem="Die" Path="File" PositionOrder="1" Caption="Die"/>
            <MenuItem Type="MenuItem" ActionItem="Hang" Path="Menu)" +
                              sNumber + R"(" PositionOrder="2" Caption="Hang"/></Menus><Windows>
            <Window Name="Sheet)" +
                              (sNumber == "0" ? QString() : sNumber) +
                              R"(" Caption="Sheet" Type="Window" State="Normal" IsMDIChild="true" IsModal="false">
            <Page PageProgID="T0.Page" Caption="P" IsOptional="false" IsResizable="true"/></Window></Windows>)",
                          sAttributes);
    }
    // The real program, in a process of its own.
    void Run(const char* sTrouble) const {
        QProcess oProgram;
        auto oEnvironment = QProcessEnvironment::systemEnvironment();
        oEnvironment.insert("TROUBLE", sTrouble);
        oEnvironment.insert("ASAN_OPTIONS", "handle_segv=0"); // a sanitizer would make an exit of the death
        oProgram.setProcessEnvironment(oEnvironment);
        oProgram.start(CORVANE_DESKTOP_PROGRAM, {QString::fromStdString(m_oFolder.App()), "--choose", "Menu0.Open",
                                                 "--choose", "File.Die", "--quit"});
        ASSERT_TRUE(oProgram.waitForFinished(60000));
        EXPECT_EQ(oProgram.exitStatus() == QProcess::CrashExit, *sTrouble != 0) << sTrouble;
    }

    AppFolder m_oFolder;
};

TEST_F(BlameTest, NextStartKnowsInWhoseCodeTheProgramDied) {
    Trouble("0");
    Trouble("1"); // the same class in another library, which isn't to blame
    QFile::remove(m_oFolder.Path("App/Services/Trouble1.xml"));
    struct Case {
        const char* sPlace;
        const char* sWho;
    };
    for (const Case& oCase : {Case{"constructor", "Trouble0"}, Case{"event", "Trouble0"}, Case{"command", "Trouble0"},
                              Case{"depth", "Trouble0"}, Case{"page", "Trouble0"}, Case{"", ""}}) {
        Run(oCase.sPlace);
        std::string sAsked;
        ApplicationOptions oOptions;
        oOptions.sFolder = m_oFolder.App();
        oOptions.bWithDialogs = false;
        oOptions.fnAskAfterDeath = [&](const CrashRecord&, const std::string& sWho) {
            sAsked += sWho;
            return Blame::Answer::LeaveOut;
        };
        Application oApplication(oOptions);
        EXPECT_TRUE(oApplication.Start());
        EXPECT_EQ(sAsked, oCase.sWho) << oCase.sPlace;
        EXPECT_EQ(static_cast<bool>(oApplication.Bar()->Tools()->Find("File.Die")), sAsked.empty()) << oCase.sPlace;
    }
}

// Wherever the library or the host enters it. What it leaves running by itself is known by its plug-in alone.
TEST_F(BlameTest, OfTwoServicesInOnePluginTheRightOneIsNamed) {
    Trouble("0", "IsStartService=\"true\"");
    m_oFolder.Service("Second", "T0.Second", R"(
        <ExplorerItems><ExplorerItem Name="SecondRoot" ProgID="T0.SecondItem" Type="Folder" PositionOrder="1"/>
        </ExplorerItems><Windows>
        <Window Name="Other" Caption="Other" Type="Window" State="Normal" IsMDIChild="true" IsModal="false">
        <Page PageProgID="T0.SecondPage" Caption="P" IsOptional="false" IsResizable="true"/></Window></Windows>)");
    struct Case {
        const char* sPlace;
        const char* sWho;
    };
    for (const Case& oCase :
         {Case{"second constructor", "Second"}, Case{"second event", "Second"}, Case{"second end", "Second"},
          Case{"second item's event", "Second"}, Case{"second item's name", "Second"}, Case{"second page", "Second"},
          Case{"second page's event", "Second"}, Case{"second page's widget", "Second"},
          Case{"constructor", "Trouble0"}, Case{"event", "Trouble0"}, Case{"start", "Trouble0"},
          Case{"after the other's page", "Trouble0"}, Case{"timer", "T0"}}) {
        Run(oCase.sPlace);
        std::string sAsked;
        ApplicationOptions oOptions;
        oOptions.sFolder = m_oFolder.App();
        oOptions.bWithDialogs = false;
        oOptions.fnAskAfterDeath = [&](const CrashRecord&, const std::string& sWho) {
            sAsked += sWho;
            return Blame::Answer::Safe;
        };
        const Application oApplication(oOptions);
        EXPECT_EQ(sAsked, oCase.sWho) << oCase.sPlace;
    }
}

TEST_F(BlameTest, WatchNamesTheServiceThatHangsAmongTwenty) {
    for (int i = 0; i < 20; ++i)
        Trouble(QString::number(i));
    Application oApplication({m_oFolder.App(), false});
    ASSERT_TRUE(oApplication.Start());
    oApplication.Blamed().StartWatch(UiWatch::Milliseconds(300));
    QApplication::processEvents();
    for (const int i : {13, 4}) {
        // As something of the service's own that no command began: the watch sees whose code it is.
        const auto oTool = oApplication.Bar()->Tools()->Item("Menu" + std::to_string(i) + ".Hang");
        const auto oAction = oTool->TagVariant().As<ActionItem>();
        oAction->OnAction();
        QElapsedTimer oTime;
        oTime.start();
        const QByteArray sName = "Trouble" + QByteArray::number(i) + " kept the user interface busy for ";
        while (!m_oFolder.Read("corvane/App/errors.log").contains(sName) && !oTime.hasExpired(5000))
            QTest::qWait(20);
        const QByteArray sLog = m_oFolder.Read("corvane/App/errors.log");
        EXPECT_TRUE(sLog.contains("Trouble" + QByteArray::number(i) + " has kept the user interface busy"))
            << sLog.data();
        EXPECT_TRUE(sLog.contains(sName)) << sLog.data();
        EXPECT_EQ(sLog.count(" has kept "), i == 13 ? 1 : 2) << sLog.data();
    }
}

TEST(LeftOutServices, LeavesOutByNameAndByPluginAndWhatStandsBelow) {
    const AppFolder oFolder;
    oFolder.Service("Shell", "Corvane.Framework", "");
    oFolder.Service("Base", "Base.Service", "<ExplorerItem Name=\"Root\" Type=\"Folder\"/>");
    oFolder.Service("Upon", "Upon.Service", "<ExplorerItem Name=\"Leaf\" Parent=\"Root\"/>");
    oFolder.Service("Twig", "Other.Service", "<ExplorerItem Name=\"Twig\" Parent=\"leaf\"/>");
    oFolder.Service("Free", "Other.Free", "");
    struct Case {
        LeftOut oLeftOut;
        const char* sOut;
        const char* sUnknown;
    };
    const ApplicationPlatform oPlatform(oFolder.App());
    const std::string sFolder = oPlatform.oUtilities->GetAppFolder("Services");
    for (const Case& oCase :
         {Case{{{}, false}, "", ""}, Case{{{"base"}, false}, "Base Upon Twig ", ""},
          Case{{{"Other", "Nobody"}, false}, "Free Twig ", "Nobody "}, Case{{{}, true}, "Base Free Twig Upon ", ""}}) {
        const auto oFiles = New<LeftOutServices>(oPlatform.MakePlatform().oFileSystem, sFolder, oCase.oLeftOut);
        const std::size_t nLeft = oFiles->Files(sFolder).size();
        std::string sOut;
        for (const std::string& sName : oFiles->Services())
            sOut += sName + " ";
        EXPECT_EQ(sOut, oCase.sOut);
        EXPECT_EQ(nLeft, 6 - oFiles->Services().size());
        std::string sUnknown;
        for (const std::string& sName : oFiles->Unknown())
            sUnknown += sName + " ";
        EXPECT_EQ(sUnknown, oCase.sUnknown);
    }
}

} // namespace
} // namespace corvane::desktop
