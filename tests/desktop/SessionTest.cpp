#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "desktop/application/Application.h"
#include "desktop/application/MainWindow.h"
#include "desktop/application/PersonalDesktop.h"
#include "desktop/documents/Documents.h"
#include "desktop/explorer/ExplorerPanel.h"
#include "desktop/windows/WindowForm.h"
#include "tests/desktop/AppFolder.h"
#include "tests/support/FreeWindows.h"

#include <QApplication>
#include <QDockWidget>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMdiArea>
#include <QScreen>
#include <QStatusBar>
#include <QTabBar>
#include <QTest>
#include <QToolBar>

namespace corvane::desktop {
namespace {

constexpr const char* troubleContent = R"(<ActionItems>
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
        m_folder.Service("Shell", "Corvane.Framework", shellContent);
        m_folder.Service("Trouble", "T0.Service", troubleContent, "IsStartService=\"true\"");
        m_folder.Plugin("T0");
    }
    static std::unique_ptr<Application> Start(const AppFolder& folder) {
        auto application = std::make_unique<Application>(ApplicationOptions{folder.App(), false});
        EXPECT_TRUE(application->Start());
        QApplication::processEvents();
        return application;
    }
    static Node* Inner(const Application& application) {
        return application.Panel()->Control("Left").As<TreeView>()->GetNodes()->Item("Inner").Get();
    }
    static Ref<WindowForm> Sheet(const Application& application, const std::string& key) {
        for (const auto& frm : application.MainForm()->Forms())
            if (auto form = frm.TryAs<WindowForm>())
                if (const auto window = form->Controller().TryAs<corvane::Window>(); window && window->Key() == key)
                    return form;
        return nullptr;
    }
    static std::string SelectedIn(const Application& application, const char* tree) {
        const Ref<Node> node = application.Panel()->Control(tree).As<TreeView>()->SelectedItem();
        return node ? node->Key() : std::string();
    }
    static QToolBar* Bar(Application& application, const char* name) {
        return application.Window().Bars().ToolbarOf(*application.Bar()->Bands()->Item(name));
    }
    static std::string Status(const Application& application) {
        return application.Bar()->Bands()->Item("StatusBar")->Tools()->Item("Status")->Caption();
    }
    // What a person does before they go home.
    static void Rearrange(Application& application) {
        MainWindow& window = application.Window();
        window.setGeometry(60, 40, 640, 480);
        EXPECT_TRUE(application.Choose("Toolbars.Work"));
        EXPECT_TRUE(application.Choose("View.Bar"));
        window.addToolBar(Qt::BottomToolBarArea, Bar(application, "Toolbars.Edit"));
        window.addDockWidget(Qt::RightDockWidgetArea, &window.ExplorerDock());
        Inner(application)->SetExpanded(false);
        window.Explorer().TabBar()->setCurrentIndex(1);
        window.Flush();
        QApplication::processEvents();
    }

    AppFolder m_folder;
};

TEST_F(SessionTest, DesktopComesBackAsItWasLeft) {
    {
        const auto application = Start(m_folder);
        EXPECT_TRUE(Bar(*application, "Toolbars.Work")->isVisible());
        EXPECT_TRUE(Inner(*application)->Expanded());
        Rearrange(*application);
        application->Window().close();
    }
    const auto application = Start(m_folder);
    MainWindow& window = application->Window();
    EXPECT_EQ(window.geometry(), QRect(60, 40, 640, 480));
    EXPECT_FALSE(Bar(*application, "Toolbars.Work")->isVisible());
    EXPECT_FALSE(application->Bar()->Tools()->Item("Toolbars.Work")->Checked());
    EXPECT_EQ(window.toolBarArea(Bar(*application, "Toolbars.Edit")), Qt::BottomToolBarArea);
    EXPECT_EQ(window.dockWidgetArea(&window.ExplorerDock()), Qt::RightDockWidgetArea);
    EXPECT_TRUE(window.ExplorerDock().isVisible());
    EXPECT_FALSE(window.statusBar()->isVisible());
    EXPECT_FALSE(Inner(*application)->Expanded());
    EXPECT_EQ(window.Explorer().TabBar()->currentIndex(), 1);
    // What has been hidden shows again at one click, in its place.
    EXPECT_TRUE(application->Choose("Toolbars.Work"));
    EXPECT_TRUE(Bar(*application, "Toolbars.Work")->isVisible());
    window.ExplorerDock().close();
    window.close();
    const auto again = std::make_unique<Application>(ApplicationOptions{m_folder.App(), false});
    (void)again->Start();
    EXPECT_FALSE(again->Window().ExplorerDock().isVisible());
    EXPECT_TRUE(Bar(*again, "Toolbars.Work")->isVisible());
}

TEST_F(SessionTest, OfManyNewNodesOnlyThoseAtTheTopAreOpenAndATreeThatIsFilledAgainKeepsWhatWasOpen) {
    const auto application = Start(m_folder);
    const auto nodes = application->Panel()->Control("Left").As<TreeView>()->GetNodes();
    // As the library fills a tree.
    const auto fill = [&] {
        nodes->Add("", NodeRelationship::First, "top", "top")->SetExpanded(true);
        for (const char* key : {"a", "b", "c", "d", "e", "f"}) {
            nodes->Add("top", NodeRelationship::Child, key, key)->SetExpanded(true);
            nodes->Add(key, NodeRelationship::Child, std::string(key) + "1", "leaf");
        }
        QApplication::processEvents();
    };
    fill();
    EXPECT_TRUE(nodes->Item("top")->Expanded());
    EXPECT_FALSE(nodes->Item("a")->Expanded() || nodes->Item("f")->Expanded());
    nodes->Item("b")->SetExpanded(true);
    nodes->Clear();
    fill();
    EXPECT_TRUE(nodes->Item("b")->Expanded());
    EXPECT_FALSE(nodes->Item("a")->Expanded());
    nodes->Add("top", NodeRelationship::Child, "g", "g")->SetExpanded(true);
    nodes->Add("g", NodeRelationship::Child, "g1", "leaf");
    QApplication::processEvents();
    EXPECT_TRUE(nodes->Item("g")->Expanded()) << "one alone is what the user asked for";
}

TEST_F(SessionTest, WindowOfAMonitorThatIsGoneStandsOnOneThatIsThere) {
    {
        const auto application = Start(m_folder);
        application->Window().setGeometry(9000, 5000, 3000, 2500);
        application->Window().close();
    }
    const auto application = Start(m_folder);
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    const QRect window = application->Window().geometry();
    EXPECT_EQ(screen.united(window), screen)
        << window.x() << "," << window.y() << " " << window.width() << "x" << window.height();
}

TEST_F(SessionTest, IsKeptWithoutAnEndAndOutlivesAnUpgrade) {
    {
        const auto application = Start(m_folder);
        Rearrange(*application);
        application->Personal()
            .UserSession()
            .Save(); // as it is a moment after a change; what the end writes is dropped
        QFile::copy(m_folder.StateFile("session.json"), m_folder.StateFile("kept.json"));
    }
    QFile::remove(m_folder.StateFile("session.json"));
    QFile::rename(m_folder.StateFile("kept.json"), m_folder.StateFile("session.json"));
    QString changed = troubleContent;
    changed.replace("Path=\"Edit\"", "Path=\"New\"").replace("Name=\"Right\"", "Name=\"Other\"");
    m_folder.Service("Trouble", "T0.Service", changed, "IsStartService=\"true\"");
    const auto application = Start(m_folder);
    EXPECT_EQ(application->Failures().ShownCount(), 0);
    EXPECT_TRUE(Bar(*application, "Toolbars.New")->isVisible()) << "what the session doesn't know is as the files say";
    EXPECT_FALSE(Bar(*application, "Toolbars.Work")->isVisible());
    EXPECT_FALSE(Inner(*application)->Expanded());
    EXPECT_EQ(application->Window().Explorer().TabBar()->currentIndex(), 0);
}

TEST_F(SessionTest, StartWithoutAServiceLeavesTheSessionAsItWas) {
    {
        const auto application = Start(m_folder);
        Rearrange(*application);
    }
    const QByteArray kept = m_folder.Read("corvane/App/session.json");
    {
        ApplicationOptions options{m_folder.App(), false};
        options.leftOut.names = {"Trouble"};
        Application application(options);
        EXPECT_TRUE(application.Start());
        EXPECT_EQ(application.Window().geometry(), QRect(60, 40, 640, 480));
        application.Window().close();
    }
    EXPECT_FALSE(kept.isEmpty());
    EXPECT_EQ(m_folder.Read("corvane/App/session.json"), kept);
}

TEST_F(SessionTest, ServiceIsAskedForTheWindowsThatWereOpen) {
    m_folder.Write("corvane/App/session.json",
                   R"({"version":1,"windows":[{"name":"Sheet","key":"7"},{"name":"Gone","key":""},
                    {"name":"sheet","key":""}]})");
    EXPECT_EQ(Status(*Start(m_folder)), "Sheet/7 sheet/ ");
}

TEST_F(SessionTest, WindowThatWasOpenOpensAgainWithItsKey) {
    {
        const auto application = Start(m_folder);
        EXPECT_TRUE(application->Choose("File.Open"));
        application->Personal().UserSession().Save();
        application->Window().close(); // closes the window in it first
        EXPECT_TRUE(application->Window().HasEnded());
    }
    const auto application = Start(m_folder);
    EXPECT_EQ(Status(*application), "Sheet/7 ");
    EXPECT_TRUE(CorvaneMain::Framework()->WindowManager()->Windows()->HasKey("7"));
    EXPECT_EQ(application->Failures().ShownCount(), 0);
}

constexpr const char* threeSheets = R"({"version":1,"windows":[{"name":"Sheet","key":"1"},
    {"name":"Sheet","key":"2"},{"name":"Sheet","key":"3"}]})";

TEST_F(SessionTest, WindowsComeBackToTheirPlacesAndStates) {
    ChooseFreeWindows();
    m_folder.Write("corvane/App/session.json", threeSheets);
    QRect place;
    {
        const auto application = Start(m_folder);
        application->Window().setGeometry(40, 40, 900, 700);
        QApplication::processEvents();
        Sheet(*application, "1")->Frame()->setGeometry(31, 17, 300, 222);
        Sheet(*application, "2")->Frame()->setGeometry(60, 50, 280, 230);
        Sheet(*application, "2")->SetWindowState(FormState::Minimized);
        Sheet(*application, "1")->Activate();
        place = Sheet(*application, "1")->Frame()->geometry();
        application->Window().close(); // at once, before the moment has passed after which changes are kept
    }
    const auto application = Start(m_folder);
    EXPECT_EQ(Sheet(*application, "1")->Frame()->geometry(), place);
    EXPECT_EQ(Sheet(*application, "2")->WindowState(), FormState::Minimized);
    EXPECT_EQ(Sheet(*application, "3")->WindowState(), FormState::Normal);
    EXPECT_EQ(application->MainForm()->ActiveForm(), Sheet(*application, "1"));
    Sheet(*application, "2")->SetWindowState(FormState::Normal);
    EXPECT_EQ(Sheet(*application, "2")->Frame()->geometry(), QRect(60, 50, 280, 230));
    // Maximized, and at the next start the same again with the place it had before.
    Sheet(*application, "1")->SetWindowState(FormState::Maximized);
    application->Window().close();
    const auto again = Start(m_folder);
    EXPECT_EQ(Sheet(*again, "1")->WindowState(), FormState::Maximized);
    Sheet(*again, "1")->SetWindowState(FormState::Normal);
    EXPECT_EQ(Sheet(*again, "1")->Frame()->geometry(), place);
    EXPECT_EQ(again->Failures().ShownCount(), 0);
}

TEST_F(SessionTest, WindowThatStoodOnALargerScreenComesWithinReach) {
    ChooseFreeWindows();
    m_folder.Write("corvane/App/session.json", R"({"version":1,"windows":[
        {"name":"Sheet","key":"1","place":[4000,3000,5000,4000]},
        {"name":"Sheet","key":"2","place":[-700,-90,320,240]},{"name":"Sheet","key":"3","place":[1,2,-3,"x"]}]})");
    const auto application = Start(m_folder);
    const QRect room(QPoint(), application->Window().Area().viewport()->size());
    for (const char* key : {"1", "2", "3"})
        EXPECT_TRUE(room.contains(Sheet(*application, key)->Frame()->geometry())) << key;
    EXPECT_EQ(Sheet(*application, "2")->Frame()->geometry(), QRect(0, 0, 320, 240));
}

TEST_F(SessionTest, TabsKeepTheirOrderTheirFrontAndThePlacesBehindThem) {
    m_folder.Write("corvane/App/session.json", threeSheets);
    ChooseFreeWindows();
    const auto orderFunction = [](Application& application) {
        std::string order;
        for (const QWidget* frame : application.Window().OpenDocuments().Frames())
            for (const char* key : {"1", "2", "3"})
                order += Sheet(application, key)->Frame() == frame ? key : "";
        return order;
    };
    const auto setTabbed = [](Application& application, bool tabbed) {
        ChooseFreeWindows(!tabbed);
        application.Window().SetTabbedWindows(tabbed);
    };
    QRect place;
    {
        const auto application = Start(m_folder);
        Sheet(*application, "1")->Frame()->setGeometry(31, 17, 300, 222);
        application->Window().close();
    }
    {
        const auto application = Start(m_folder);
        place = Sheet(*application, "1")->Frame()->geometry();
        setTabbed(*application, true);
        Sheet(*application, "1")->Activate();
        application->Window().OpenDocuments().MoveToOwnWindow();
        application->Window().OpenDocuments().Dock(); // at the end
        Sheet(*application, "2")->Activate();
        QApplication::processEvents();
        EXPECT_EQ(orderFunction(*application), "231");
        application->Window().close();
    }
    {
        const auto application = Start(m_folder);
        EXPECT_EQ(orderFunction(*application), "231");
        EXPECT_EQ(application->MainForm()->ActiveForm(), Sheet(*application, "2"));
        QTest::keyClick(&application->Window(), Qt::Key_F6, Qt::ControlModifier);
        EXPECT_EQ(application->MainForm()->ActiveForm(), Sheet(*application, "3")) << "the key follows the tabs";
        setTabbed(*application, false);
        application->Window().close();
    }
    const auto application = Start(m_folder);
    for (const char* key : {"1", "2", "3"})
        EXPECT_EQ(Sheet(*application, key)->WindowState(), FormState::Normal) << key;
    EXPECT_EQ(Sheet(*application, "1")->Frame()->geometry(), place);
}

TEST_F(SessionTest, SelectedNodeIsTheActiveItemAgainAlsoWhereItsTabIsBehind) {
    {
        const auto application = Start(m_folder);
        const auto tree = application->Panel()->Control("Left").As<TreeView>();
        tree->ClickNode(tree->GetNodes()->Item("Inner"));
        application->Window().Explorer().TabBar()->setCurrentIndex(1);
        application->Window().close();
    }
    const auto application = Start(m_folder);
    EXPECT_EQ(application->Window().Explorer().TabBar()->currentIndex(), 1);
    EXPECT_EQ(SelectedIn(*application, "Left"), "Inner");
    EXPECT_EQ(SelectedIn(*application, "Right"), "");
    const auto provider = CorvaneMain::Framework()->NavigationManager()->ExplorerManager();
    int inactiveCount = 0;
    const auto inactive = provider->OnInactive.Subscribe([&](const Ref<Object>&) { ++inactiveCount; });
    const auto tree = application->Panel()->Control("Left").As<TreeView>();
    application->Window().Explorer().TabBar()->setCurrentIndex(0);
    tree->ClickNode(tree->GetNodes()->Item("Innermost"));
    EXPECT_EQ(inactiveCount, 1) << "the restored one was active";
    EXPECT_EQ(application->Failures().ShownCount(), 0);
}

TEST_F(SessionTest, SelectedNodeThatComesLaterIsChosenThenUnlessThePersonHasChosen) {
    m_folder.Service("Trouble", "T0.Service", troubleContent); // nobody fills the explorer at the start
    const char* kept = R"({"version":1,"explorer":{"tab":"Left","trees":{"Left":{"selected":"Innermost"}}}})";
    for (const bool chosen : {false, true}) {
        m_folder.Write("corvane/App/session.json", kept);
        const auto application = Start(m_folder);
        application->Personal().UserSession().Save();
        EXPECT_TRUE(m_folder.Read("corvane/App/session.json").contains("Innermost")) << "it is still awaited";
        CorvaneMain::Framework()->NavigationManager()->ExplorerManager()->Populate();
        const auto tree = application->Panel()->Control("Left").As<TreeView>();
        if (chosen)
            tree->ClickNode(tree->GetNodes()->Item("Inner"));
        QApplication::processEvents();
        EXPECT_EQ(SelectedIn(*application, "Left"), chosen ? "Inner" : "Innermost");
        EXPECT_EQ(application->Failures().ShownCount(), 0);
        application->Window().close();
    }
}

TEST_F(SessionTest, DamagedOrForeignStateCostsNothingButTheState) {
    for (const char* text : {"{", R"({"version":1,"geometry":5,"docks":"%%%","toolbars":[1],"windows":{"a":1},
        "explorer":{"tab":3,"trees":{"Left":{"open":7,"closed":[{},"Inner"]}}}})",
                             R"({"version":99,"toolbars":{"Toolbars.Work":false}})"}) {
        m_folder.Write("corvane/App/session.json", text);
        const auto application = Start(m_folder);
        EXPECT_EQ(application->Failures().ShownCount(), 0) << text;
        EXPECT_TRUE(Bar(*application, "Toolbars.Work")->isVisible()) << text;
    }
}

TEST_F(SessionTest, IsKeptOnAfterAnEndThatWasRefused) {
    const auto application = Start(m_folder);
    {
        const auto refuses = application->MainForm()->OnUnload.Subscribe([](bool& refused) { refused = true; });
        application->Window().close();
    }
    ASSERT_TRUE(application->Window().isVisible());
    QApplication::processEvents();
    application->Bar()->Bands()->Item("StatusBar")->SetVisible(false);
    application->Personal().UserSession().Save();
    EXPECT_TRUE(m_folder.Read("corvane/App/session.json").contains("\"statusBar\": false"));
}

TEST_F(SessionTest, RecentFilesAreKeptForTheApplication) {
    {
        const auto application = Start(m_folder);
        const auto files = ToObject(application->MainForm()->Invoke("RecentFiles", {}));
        for (int i = 1; i <= 14; ++i)
            files->Invoke("Add", std::array<Variant, 1>{"/f" + std::to_string(i)});
        files->Invoke("Add", std::array<Variant, 1>{std::string("/f5")});
    }
    const auto application = Start(m_folder);
    const auto files = ToObject(application->MainForm()->Invoke("RecentFiles", {}));
    EXPECT_EQ(ToLong(files->Invoke("Count", {})), 12);
    EXPECT_EQ(ToText(files->Invoke("Item", std::array<Variant, 1>{Long{1}})), "/f5");
    EXPECT_EQ(ToText(files->Invoke("Item", std::array<Variant, 1>{Long{2}})), "/f14");
    EXPECT_EQ(ToText(files->Invoke("Item", std::array<Variant, 1>{Long{12}})), "/f3") << "each once";
    EXPECT_THROW(files->Invoke("Item", std::array<Variant, 1>{Long{13}}), Failure);
}

} // namespace
} // namespace corvane::desktop
