#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "desktop/application/Application.h"
#include "desktop/explorer/ExplorerPanel.h"
#include "tests/desktop/AppFolder.h"

#include <QApplication>
#include <QDockWidget>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScreen>
#include <QStatusBar>
#include <QTabBar>
#include <QTest>
#include <QToolBar>

namespace corvane::desktop {
namespace {

constexpr const char* sContent = R"(<ActionItems>
<ActionItem Name="Ping" Action="OnPing"/><ActionItem Name="Pong" Action="OnPing"/>
<ActionItem Name="Open" Action="OnOpen"/></ActionItems><Menus>
<MenuItem Type="MenuItem" ActionItem="Open" Path="File" PositionOrder="1" Caption="Open"/>
<MenuItem Type="ToolbarItem" ActionItem="Ping" Path="Edit" PositionOrder="1" Caption="Ping"/>
<MenuItem Type="ToolbarItem" ActionItem="Pong" Path="Work" PositionOrder="1" Caption="Pong"/></Menus><ExplorerItems>
<ExplorerItem Name="Left" Type="Folder" PositionOrder="1"/>
<ExplorerItem Name="Inner" Type="Folder" Parent="Left" PositionOrder="1"/>
<ExplorerItem Name="Innermost" Type="Folder" Parent="Inner" PositionOrder="1"/>
<ExplorerItem Name="Right" Type="Folder" PositionOrder="2"/></ExplorerItems>
<Windows><Window Name="Sheet" Caption="Sheet" Type="Window" State="Normal" IsMDIChild="true" IsModal="false">
<Page PageProgID="T0.Page" Caption="P" IsOptional="false" IsResizable="true"/></Window></Windows>)";

class SessionTest : public ::testing::Test {
protected:
    SessionTest() {
        m_oFolder.Service("Shell", "Corvane.Framework", sShellContent);
        m_oFolder.Service("Trouble", "T0.Service", sContent, "IsStartService=\"true\"");
        m_oFolder.Plugin("T0");
    }
    static std::unique_ptr<Application> Start(const AppFolder& oFolder) {
        auto pApplication = std::make_unique<Application>(ApplicationOptions{oFolder.App(), false});
        EXPECT_TRUE(pApplication->Start());
        QApplication::processEvents();
        return pApplication;
    }
    static Node* Inner(const Application& oApplication) {
        return oApplication.Panel()->Control("Left").As<TreeView>()->GetNodes()->Item("Inner").Get();
    }
    static Ref<WindowForm> Sheet(const Application& oApplication, const std::string& sKey) {
        for (const auto& frm : oApplication.MainForm()->Forms())
            if (const auto oForm = frm.TryAs<WindowForm>())
                if (const auto oWindow = oForm->Controller().TryAs<corvane::Window>();
                    oWindow && oWindow->Key() == sKey)
                    return oForm;
        return nullptr;
    }
    static std::string SelectedIn(const Application& oApplication, const char* sTree) {
        const Ref<Node> oNode = oApplication.Panel()->Control(sTree).As<TreeView>()->SelectedItem();
        return oNode ? oNode->Key() : std::string();
    }
    static QToolBar* Bar(Application& oApplication, const char* sName) {
        return oApplication.Window().Bars().ToolbarOf(*oApplication.Bar()->Bands()->Item(sName));
    }
    static std::string Status(const Application& oApplication) {
        return oApplication.Bar()->Bands()->Item("StatusBar")->Tools()->Item("Status")->Caption();
    }
    // What a person does before they go home.
    static void Rearrange(Application& oApplication) {
        MainWindow& oWindow = oApplication.Window();
        oWindow.setGeometry(60, 40, 640, 480);
        EXPECT_TRUE(oApplication.Choose("Toolbars.Work"));
        EXPECT_TRUE(oApplication.Choose("View.Bar"));
        oWindow.addToolBar(Qt::BottomToolBarArea, Bar(oApplication, "Toolbars.Edit"));
        oWindow.addDockWidget(Qt::RightDockWidgetArea, &oWindow.ExplorerDock());
        Inner(oApplication)->SetExpanded(false);
        oWindow.Explorer().TabBar()->setCurrentIndex(1);
        oWindow.Flush();
        QApplication::processEvents();
    }

    AppFolder m_oFolder;
};

TEST_F(SessionTest, DesktopComesBackAsItWasLeft) {
    {
        const auto pApplication = Start(m_oFolder);
        EXPECT_TRUE(Bar(*pApplication, "Toolbars.Work")->isVisible());
        EXPECT_TRUE(Inner(*pApplication)->Expanded());
        Rearrange(*pApplication);
        pApplication->Window().close();
    }
    const auto pApplication = Start(m_oFolder);
    MainWindow& oWindow = pApplication->Window();
    EXPECT_EQ(oWindow.geometry(), QRect(60, 40, 640, 480));
    EXPECT_FALSE(Bar(*pApplication, "Toolbars.Work")->isVisible());
    EXPECT_FALSE(pApplication->Bar()->Tools()->Item("Toolbars.Work")->Checked());
    EXPECT_EQ(oWindow.toolBarArea(Bar(*pApplication, "Toolbars.Edit")), Qt::BottomToolBarArea);
    EXPECT_EQ(oWindow.dockWidgetArea(&oWindow.ExplorerDock()), Qt::RightDockWidgetArea);
    EXPECT_TRUE(oWindow.ExplorerDock().isVisible());
    EXPECT_FALSE(oWindow.statusBar()->isVisible());
    EXPECT_FALSE(Inner(*pApplication)->Expanded());
    EXPECT_EQ(oWindow.Explorer().TabBar()->currentIndex(), 1);
    // What has been hidden shows again at one click, in its place.
    EXPECT_TRUE(pApplication->Choose("Toolbars.Work"));
    EXPECT_TRUE(Bar(*pApplication, "Toolbars.Work")->isVisible());
    oWindow.ExplorerDock().close();
    oWindow.close();
    const auto pAgain = std::make_unique<Application>(ApplicationOptions{m_oFolder.App(), false});
    (void)pAgain->Start();
    EXPECT_FALSE(pAgain->Window().ExplorerDock().isVisible());
    EXPECT_TRUE(Bar(*pAgain, "Toolbars.Work")->isVisible());
}

TEST_F(SessionTest, WindowOfAMonitorThatIsGoneStandsOnOneThatIsThere) {
    {
        const auto pApplication = Start(m_oFolder);
        pApplication->Window().setGeometry(9000, 5000, 3000, 2500);
        pApplication->Window().close();
    }
    const auto pApplication = Start(m_oFolder);
    const QRect oScreen = QGuiApplication::primaryScreen()->geometry();
    const QRect oWindow = pApplication->Window().geometry();
    EXPECT_EQ(oScreen.united(oWindow), oScreen)
        << oWindow.x() << "," << oWindow.y() << " " << oWindow.width() << "x" << oWindow.height();
}

TEST_F(SessionTest, IsKeptWithoutAnEndAndOutlivesAnUpgrade) {
    {
        const auto pApplication = Start(m_oFolder);
        Rearrange(*pApplication);
        pApplication->Personal().Kept().Keep(); // as it is a moment after a change; what the end writes is dropped
        QFile::copy(m_oFolder.Kept("session.json"), m_oFolder.Kept("kept.json"));
    }
    QFile::remove(m_oFolder.Kept("session.json"));
    QFile::rename(m_oFolder.Kept("kept.json"), m_oFolder.Kept("session.json"));
    QString sChanged = sContent;
    sChanged.replace("Path=\"Edit\"", "Path=\"New\"").replace("Name=\"Right\"", "Name=\"Other\"");
    m_oFolder.Service("Trouble", "T0.Service", sChanged, "IsStartService=\"true\"");
    const auto pApplication = Start(m_oFolder);
    EXPECT_EQ(pApplication->Failures().ShownCount(), 0);
    EXPECT_TRUE(Bar(*pApplication, "Toolbars.New")->isVisible()) << "what the session doesn't know is as the files say";
    EXPECT_FALSE(Bar(*pApplication, "Toolbars.Work")->isVisible());
    EXPECT_FALSE(Inner(*pApplication)->Expanded());
    EXPECT_EQ(pApplication->Window().Explorer().TabBar()->currentIndex(), 0);
}

TEST_F(SessionTest, StartWithoutAServiceLeavesTheSessionAsItWas) {
    {
        const auto pApplication = Start(m_oFolder);
        Rearrange(*pApplication);
    }
    const QByteArray sKept = m_oFolder.Read("corvane/App/session.json");
    {
        ApplicationOptions oOptions{m_oFolder.App(), false};
        oOptions.oLeftOut.aNames = {"Trouble"};
        Application oApplication(oOptions);
        EXPECT_TRUE(oApplication.Start());
        EXPECT_EQ(oApplication.Window().geometry(), QRect(60, 40, 640, 480));
        oApplication.Window().close();
    }
    EXPECT_FALSE(sKept.isEmpty());
    EXPECT_EQ(m_oFolder.Read("corvane/App/session.json"), sKept);
}

TEST_F(SessionTest, ServiceIsAskedForTheWindowsThatWereOpen) {
    m_oFolder.Write("corvane/App/session.json",
                    R"({"version":1,"windows":[{"name":"Sheet","key":"7"},{"name":"Gone","key":""},
                    {"name":"sheet","key":""}]})");
    EXPECT_EQ(Status(*Start(m_oFolder)), "Sheet/7 sheet/ ");
}

TEST_F(SessionTest, WindowThatWasOpenOpensAgainWithItsKey) {
    {
        const auto pApplication = Start(m_oFolder);
        EXPECT_TRUE(pApplication->Choose("File.Open"));
        pApplication->Personal().Kept().Keep();
        pApplication->Window().close(); // closes the window in it first
        EXPECT_TRUE(pApplication->Window().HasEnded());
    }
    const auto pApplication = Start(m_oFolder);
    EXPECT_EQ(Status(*pApplication), "Sheet/7 ");
    EXPECT_TRUE(CorvaneMain::Framework()->WindowManager()->Windows()->HasKey("7"));
    EXPECT_EQ(pApplication->Failures().ShownCount(), 0);
}

constexpr const char* sThreeSheets = R"({"version":1,"windows":[{"name":"Sheet","key":"1"},
    {"name":"Sheet","key":"2"},{"name":"Sheet","key":"3"}]})";

TEST_F(SessionTest, WindowsComeBackToTheirPlacesAndStates) {
    m_oFolder.Write("corvane/App/session.json", sThreeSheets);
    QRect oPlace;
    {
        const auto pApplication = Start(m_oFolder);
        pApplication->Window().setGeometry(40, 40, 900, 700);
        QApplication::processEvents();
        Sheet(*pApplication, "1")->Frame()->setGeometry(31, 17, 300, 222);
        Sheet(*pApplication, "2")->Frame()->setGeometry(60, 50, 280, 230);
        Sheet(*pApplication, "2")->SetWindowState(FormState::Minimized);
        Sheet(*pApplication, "1")->Activate();
        oPlace = Sheet(*pApplication, "1")->Frame()->geometry();
        pApplication->Window().close(); // at once, before the moment has passed after which changes are kept
    }
    const auto pApplication = Start(m_oFolder);
    EXPECT_EQ(Sheet(*pApplication, "1")->Frame()->geometry(), oPlace);
    EXPECT_EQ(Sheet(*pApplication, "2")->WindowState(), FormState::Minimized);
    EXPECT_EQ(Sheet(*pApplication, "3")->WindowState(), FormState::Normal);
    EXPECT_EQ(pApplication->MainForm()->ActiveForm(), Sheet(*pApplication, "1"));
    Sheet(*pApplication, "2")->SetWindowState(FormState::Normal);
    EXPECT_EQ(Sheet(*pApplication, "2")->Frame()->geometry(), QRect(60, 50, 280, 230));
    // Maximized, and at the next start the same again with the place it had before.
    Sheet(*pApplication, "1")->SetWindowState(FormState::Maximized);
    pApplication->Window().close();
    const auto pAgain = Start(m_oFolder);
    EXPECT_EQ(Sheet(*pAgain, "1")->WindowState(), FormState::Maximized);
    Sheet(*pAgain, "1")->SetWindowState(FormState::Normal);
    EXPECT_EQ(Sheet(*pAgain, "1")->Frame()->geometry(), oPlace);
    EXPECT_EQ(pAgain->Failures().ShownCount(), 0);
}

TEST_F(SessionTest, WindowThatStoodOnALargerScreenComesWithinReach) {
    m_oFolder.Write("corvane/App/session.json", R"({"version":1,"windows":[
        {"name":"Sheet","key":"1","place":[4000,3000,5000,4000]},
        {"name":"Sheet","key":"2","place":[-700,-90,320,240]},{"name":"Sheet","key":"3","place":[1,2,-3,"x"]}]})");
    const auto pApplication = Start(m_oFolder);
    const QRect oRoom(QPoint(), pApplication->Window().Area().viewport()->size());
    for (const char* sKey : {"1", "2", "3"})
        EXPECT_TRUE(oRoom.contains(Sheet(*pApplication, sKey)->Frame()->geometry())) << sKey;
    EXPECT_EQ(Sheet(*pApplication, "2")->Frame()->geometry(), QRect(0, 0, 320, 240));
}

TEST_F(SessionTest, TabsKeepTheirOrderTheirFrontAndThePlacesBehindThem) {
    m_oFolder.Write("corvane/App/session.json", sThreeSheets);
    const auto fnTabs = [](Application& oApplication) { return oApplication.Window().Area().findChild<QTabBar*>(); };
    const auto fnOrder = [](Application& oApplication) {
        std::string sOrder;
        for (const QMdiSubWindow* pFrame : oApplication.Window().Area().subWindowList())
            for (const char* sKey : {"1", "2", "3"})
                sOrder += Sheet(oApplication, sKey)->Frame() == pFrame ? sKey : "";
        return sOrder;
    };
    const auto fnSetTabbed = [](Application& oApplication, bool bTabbed) {
        Appearance oAppearance = Appearance::Load();
        oAppearance.bTabbedWindows = bTabbed;
        oAppearance.Save();
        oApplication.Window().SetTabbedWindows(bTabbed);
    };
    QRect oPlace;
    {
        const auto pApplication = Start(m_oFolder);
        Sheet(*pApplication, "1")->Frame()->setGeometry(31, 17, 300, 222);
        pApplication->Window().close();
    }
    {
        const auto pApplication = Start(m_oFolder);
        oPlace = Sheet(*pApplication, "1")->Frame()->geometry();
        fnSetTabbed(*pApplication, true);
        fnTabs(*pApplication)->moveTab(0, 2);
        Sheet(*pApplication, "2")->Activate();
        QApplication::processEvents();
        EXPECT_EQ(fnOrder(*pApplication), "231");
        pApplication->Window().close();
    }
    {
        const auto pApplication = Start(m_oFolder);
        EXPECT_TRUE(pApplication->Window().HasTabbedWindows());
        EXPECT_EQ(fnOrder(*pApplication), "231");
        EXPECT_EQ(pApplication->MainForm()->ActiveForm(), Sheet(*pApplication, "2"));
        EXPECT_EQ(fnTabs(*pApplication)->currentIndex(), 0);
        QTest::keyClick(&pApplication->Window(), Qt::Key_Tab, Qt::ControlModifier);
        EXPECT_EQ(pApplication->MainForm()->ActiveForm(), Sheet(*pApplication, "3")) << "the key follows the tabs";
        fnSetTabbed(*pApplication, false);
        pApplication->Window().close();
    }
    const auto pApplication = Start(m_oFolder);
    for (const char* sKey : {"1", "2", "3"})
        EXPECT_EQ(Sheet(*pApplication, sKey)->WindowState(), FormState::Normal) << sKey;
    EXPECT_EQ(Sheet(*pApplication, "1")->Frame()->geometry(), oPlace);
}

TEST_F(SessionTest, SelectedNodeIsTheActiveItemAgainAlsoWhereItsTabIsBehind) {
    {
        const auto pApplication = Start(m_oFolder);
        const auto oTree = pApplication->Panel()->Control("Left").As<TreeView>();
        oTree->ClickNode(oTree->GetNodes()->Item("Inner"));
        pApplication->Window().Explorer().TabBar()->setCurrentIndex(1);
        pApplication->Window().close();
    }
    const auto pApplication = Start(m_oFolder);
    EXPECT_EQ(pApplication->Window().Explorer().TabBar()->currentIndex(), 1);
    EXPECT_EQ(SelectedIn(*pApplication, "Left"), "Inner");
    EXPECT_EQ(SelectedIn(*pApplication, "Right"), "");
    const auto oProvider = CorvaneMain::Framework()->NavigationManager()->ExplorerManager();
    int nInactive = 0;
    const auto oInactive = oProvider->OnInactive.Subscribe([&](const Ref<Object>&) { ++nInactive; });
    const auto oTree = pApplication->Panel()->Control("Left").As<TreeView>();
    pApplication->Window().Explorer().TabBar()->setCurrentIndex(0);
    oTree->ClickNode(oTree->GetNodes()->Item("Innermost"));
    EXPECT_EQ(nInactive, 1) << "the restored one was active";
    EXPECT_EQ(pApplication->Failures().ShownCount(), 0);
}

TEST_F(SessionTest, SelectedNodeThatComesLaterIsChosenThenUnlessThePersonHasChosen) {
    m_oFolder.Service("Trouble", "T0.Service", sContent); // nobody fills the explorer at the start
    const char* sKept = R"({"version":1,"explorer":{"tab":"Left","trees":{"Left":{"selected":"Innermost"}}}})";
    for (const bool bChosen : {false, true}) {
        m_oFolder.Write("corvane/App/session.json", sKept);
        const auto pApplication = Start(m_oFolder);
        pApplication->Personal().Kept().Keep();
        EXPECT_TRUE(m_oFolder.Read("corvane/App/session.json").contains("Innermost")) << "it is still awaited";
        CorvaneMain::Framework()->NavigationManager()->ExplorerManager()->Populate();
        const auto oTree = pApplication->Panel()->Control("Left").As<TreeView>();
        if (bChosen)
            oTree->ClickNode(oTree->GetNodes()->Item("Inner"));
        QApplication::processEvents();
        EXPECT_EQ(SelectedIn(*pApplication, "Left"), bChosen ? "Inner" : "Innermost");
        EXPECT_EQ(pApplication->Failures().ShownCount(), 0);
        pApplication->Window().close();
    }
}

TEST_F(SessionTest, DamagedOrForeignStateCostsNothingButTheState) {
    for (const char* sText : {"{", R"({"version":1,"geometry":5,"docks":"%%%","toolbars":[1],"windows":{"a":1},
        "explorer":{"tab":3,"trees":{"Left":{"open":7,"closed":[{},"Inner"]}}}})",
                              R"({"version":99,"toolbars":{"Toolbars.Work":false}})"}) {
        m_oFolder.Write("corvane/App/session.json", sText);
        const auto pApplication = Start(m_oFolder);
        EXPECT_EQ(pApplication->Failures().ShownCount(), 0) << sText;
        EXPECT_TRUE(Bar(*pApplication, "Toolbars.Work")->isVisible()) << sText;
    }
}

TEST_F(SessionTest, RecentFilesAreKeptForTheApplication) {
    {
        const auto pApplication = Start(m_oFolder);
        const auto oFiles = ToObject(pApplication->MainForm()->Invoke("RecentFiles", {}));
        for (int i = 1; i <= 14; ++i)
            oFiles->Invoke("Add", std::array<Variant, 1>{"/f" + std::to_string(i)});
        oFiles->Invoke("Add", std::array<Variant, 1>{std::string("/f5")});
    }
    const auto pApplication = Start(m_oFolder);
    const auto oFiles = ToObject(pApplication->MainForm()->Invoke("RecentFiles", {}));
    EXPECT_EQ(ToLong(oFiles->Invoke("Count", {})), 12);
    EXPECT_EQ(ToText(oFiles->Invoke("Item", std::array<Variant, 1>{Long{1}})), "/f5");
    EXPECT_EQ(ToText(oFiles->Invoke("Item", std::array<Variant, 1>{Long{2}})), "/f14");
    EXPECT_THROW(oFiles->Invoke("Item", std::array<Variant, 1>{Long{13}}), Failure);
}

} // namespace
} // namespace corvane::desktop
