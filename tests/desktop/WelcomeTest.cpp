// The start page: when it is there, what is on it, and what comes of choosing that.
#include "corvane/author/Page.h"
#include "corvane/base/Automation.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"
#include "corvane/windows/WindowManager.h"
#include "desktop/application/Application.h"
#include "desktop/application/MainWindow.h"
#include "desktop/explorer/ExplorerPage.h"
#include "desktop/explorer/ExplorerPanel.h"
#include "desktop/platform/HostParts.h"
#include "desktop/welcome/EntryButton.h"
#include "desktop/welcome/StartPage.h"
#include "tests/desktop/AppFolder.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QMdiArea>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <algorithm>

namespace corvane::desktop {
namespace {

std::string done; // by the service

void OpenPaper(const std::string& key) {
    CorvaneMain::Framework()
        ->WindowManager()
        ->OpenWindow("Paper", nullptr, nullptr, WindowShowModeConstants::cvDefinitionDefault,
                     WindowStateConstants::cvDefinitionDefault, MDIWindowTypeConstants::cvDefinitionDefault,
                     WindowTypeConstants::cvDefinitionDefault, BusinessContextTypeConstants::cvDefinitionDefault,
                     ShowApplyCommandConstants::cvDefinitionDefault, key)
        ->SetCaption("Paper " + key);
}

class Desk final : public Automation<Desk, IServiceAccess> {
public:
    Ref<IService> Service() override { return m_base; }
    void OnNew() { done += "new "; }
    void OnOpen() {
        const auto dialog = ToObject(CorvaneMain::Framework()->WindowManager()->MainForm()->Invoke("CommonDialog", {}));
        const std::array<Variant, 3> arguments{"Open", "", ""};
        const std::string path = ToText(dialog->Invoke("ShowOpen", arguments));
        done += "open:" + path.substr(path.rfind('/') + 1) + " ";
    }
    bool RestoreWindow(const std::string& /*name*/, const std::string& key) {
        if (key != "gone")
            OpenPaper(key);
        return key != "gone";
    }
    static constexpr auto Members = MemberTable(Method("OnNew", &Desk::OnNew), Method("OnOpen", &Desk::OnOpen),
                                                Method("RestoreWindow", &Desk::RestoreWindow));

private:
    Ref<ServiceBase> m_base = New<ServiceBase>();
};

class WelcomeTest : public ::testing::Test {
protected:
    WelcomeTest() {
        done.clear();
        m_folder.Service("Desk", "T.Desk",
                         R"(<ActionItems><ActionItem Name="File"/><ActionItem Name="New" Action="OnNew"/>
<ActionItem Name="Open" Action="OnOpen"/></ActionItems><Menus>
<MenuItem Type="MenuTitle" ActionItem="File" PositionOrder="1" Caption="#File"/>
<MenuItem Type="MenuItem" ActionItem="New" Path="File" PositionOrder="10" Caption="#New"/>
<MenuItem Type="ToolbarItem" ActionItem="New" Path="Standard" PositionOrder="10" Caption="New"/>
<MenuItem Type="MenuItem" ActionItem="Open" Path="File" PositionOrder="20" Caption="#Open"/></Menus>
<ExplorerItems><ExplorerItem Name="Papers" Type="Folder" PositionOrder="1"/></ExplorerItems>
<Windows><Window Name="Paper" Caption="Paper" Type="Window" State="Normal" IsMDIChild="true" IsModal="false"/></Windows>)");
        m_folder.Write("App/Data/birds.csv", "a,b\n");
        m_folder.Write("App/welcome.xml", R"(<Welcome Text="Try it" Open="File.Open">
<Step Command="File.New" Text="Make one"/><Step Command="File.Gone" Text="Not there"/>
<Sample File="Data/birds.csv" Text="Birds"/><Sample File="Data/gone.csv" Text="Gone"/>
<Empty Tab="Papers" Command="File.New" Text="None yet"/></Welcome>)");
    }
    void Start() {
        m_application.reset();
        ApplicationOptions options{m_folder.App(), false};
        options.classes = {{"T.Desk", [] { return Ref<Object>(New<Desk>()); }}};
        m_application = std::make_unique<Application>(options);
        ASSERT_TRUE(m_application->Start());
        Turn();
    }
    static void Turn() {
        QApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
    }
    [[nodiscard]] StartPage* Page() const { return m_application->Window().Area().findChild<StartPage*>(); }
    [[nodiscard]] bool IsShown() const { return Page() && Page()->isVisible(); }
    // What is on the page: each entry's accessible name, a minus before those that are disabled.
    [[nodiscard]] std::string Entries() const {
        std::string text;
        for (const auto* button : Page()->findChildren<EntryButton*>())
            text += (button->isEnabled() ? "" : "-") + button->accessibleName().toStdString() + "; ";
        return text;
    }
    void Click(const QString& text) {
        const auto buttons = Page()->findChildren<EntryButton*>();
        const auto it = std::find_if(buttons.begin(), buttons.end(), [&](auto* each) { return each->text() == text; });
        ASSERT_NE(it, buttons.end()) << text.toStdString();
        (*it)->click();
        Turn();
    }

    AppFolder m_folder;
    std::unique_ptr<Application> m_application;
};

TEST_F(WelcomeTest, IsThereWhileNoWindowIsAndKeepsWhatWasDoneAndOpened) {
    Start();
    ASSERT_TRUE(IsShown());
    EXPECT_EQ(Entries(), "Make one; Birds; ") << "what isn't there isn't shown";
    EXPECT_TRUE(m_application->Choose("Toolbars.Standard.New") || m_application->Choose("File.New"));
    Turn();
    EXPECT_EQ(Entries(), "Make one, done; Birds; ");
    Click("Birds");
    EXPECT_EQ(done, "new open:birds.csv ");
    EXPECT_TRUE(Entries().find("birds.csv; ") != std::string::npos) << Entries();
    OpenPaper("one");
    Turn();
    EXPECT_FALSE(IsShown());
    EXPECT_TRUE(m_application->Choose("File.Close"));
    Turn();
    ASSERT_TRUE(IsShown());
    EXPECT_TRUE(Entries().find("Paper one; ") != std::string::npos) << Entries();
    Start();
    EXPECT_EQ(Entries(), "Make one, done; birds.csv; Birds; Paper one; ");
    EXPECT_EQ(Page()->verticalScrollBar()->maximum(), 0) << "as if all its lines were wrapped";
    Click("birds.csv");
    EXPECT_EQ(done, "new open:birds.csv open:birds.csv ");
    Click("Paper one");
    EXPECT_FALSE(IsShown());
    EXPECT_EQ(m_application->MainForm()->ActiveForm()->Caption(), "Paper one");
}

TEST_F(WelcomeTest, IsTurnedOffAndAskedForAgain) {
    Start();
    Page()->findChild<QCheckBox*>()->click();
    Turn();
    EXPECT_TRUE(IsShown()) << "until a window comes";
    Start();
    EXPECT_FALSE(IsShown());
    EXPECT_TRUE(m_application->Choose("Help.Welcome"));
    EXPECT_TRUE(IsShown());
    EXPECT_TRUE(qobject_cast<EntryButton*>(QApplication::focusWidget()) || !m_application->Window().isActiveWindow());
    OpenPaper("gone");
    Turn();
    EXPECT_TRUE(m_application->Choose("Help.Welcome"));
    auto* dialog = m_application->Window().findChild<QDialog*>();
    ASSERT_TRUE(dialog && dialog->isVisible()) << "over a window";
    dialog->close();
    EXPECT_TRUE(m_application->Choose("File.Close"));
    Turn();
    EXPECT_TRUE(m_application->Choose("Help.Welcome"));
    Turn();
    Click("Paper gone");
    EXPECT_TRUE(IsShown());
    EXPECT_EQ(Entries().find("Paper gone"), std::string::npos) << "it can't be opened, and is forgotten";
}

TEST_F(WelcomeTest, EmptyTreeSaysWhatToDo) {
    Start();
    const ExplorerPage* page = m_application->Window().Explorer().Page(0);
    CorvaneMain::Framework()->NavigationManager()->ExplorerManager()->Populate();
    Turn();
    EXPECT_TRUE(page->Tree()->isVisible()) << "its root";
    EXPECT_EQ(page->Message()->text(), "None yet");
    page->findChild<QPushButton*>()->click();
    EXPECT_EQ(done, "new ");
}

TEST_F(WelcomeTest, RecentFilesAreInTheMenu) {
    Start();
    Click("Birds");
    const auto entry = [&](const char* text) {
        const auto& tools = m_application->Bar()->Bands()->Item("File")->Tools()->All();
        const auto it =
            std::find_if(tools.begin(), tools.end(), [&](const auto& tool) { return tool->Caption() == text; });
        return it == tools.end() ? nullptr : *it;
    };
    ASSERT_TRUE(entry("&1 birds.csv"));
    done.clear();
    m_application->Bar()->Click(entry("&1 birds.csv"));
    Turn();
    EXPECT_EQ(done, "open:birds.csv ");
    QFile::remove(m_folder.Path("App/Data/birds.csv"));
    m_application->Bar()->Click(entry("&1 birds.csv"));
    Turn();
    EXPECT_TRUE(m_application->Messages().Shown().back().text.contains("isn't there"));
    EXPECT_FALSE(entry("&1 birds.csv"));
}

} // namespace
} // namespace corvane::desktop
