#include "corvane/base/Automation.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerItemBase.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/IExplorerItemAccess.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"
#include "corvane/windows/IPageAccess.h"
#include "corvane/windows/PageBase.h"
#include "corvane/windows/WindowManager.h"
#include "desktop/IQtPage.h"
#include "desktop/application/Application.h"
#include "desktop/application/MainWindow.h"
#include "desktop/explorer/ExplorerPage.h"
#include "desktop/explorer/ExplorerPanel.h"
#include "tests/desktop/AppFolder.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>

namespace corvane::desktop {
namespace {

std::string shownBy; // by whom

class OwnerItem final : public Automation<OwnerItem, IExplorerItemAccess> {
public:
    explicit OwnerItem(std::string name) : m_name(std::move(name)) {
        m_initialize = m_base->InitializeEvent.Subscribe(
            [this](const Ref<KeyedCollection<Ref<Object>>>&) { m_base->NameSilently(m_name); });
    }
    Ref<IExplorerItem> ExplorerItem() override { return m_base; }
    void OnShow() { shownBy = m_name; }
    void OnOpen() { CorvaneMain::Framework()->WindowManager()->OpenWindow("Sheet", nullptr); }

    static constexpr auto Members =
        MemberTable(Method("OnShow", &OwnerItem::OnShow), Method("OnOpen", &OwnerItem::OnOpen));

private:
    std::string m_name;
    Ref<ExplorerItemBase> m_base = New<ExplorerItemBase>();
    Subscription m_initialize;
};

class Sheet final : public Automation<Sheet, IPageAccess, IQtPage> {
public:
    Ref<IPage> Page() override { return m_base; }
    QWidget* NewWidget(QWidget* parent) override { return new QLineEdit(parent); }
    void OnShow() { shownBy = "the page"; }

    static constexpr auto Members = MemberTable(Method("OnShow", &Sheet::OnShow));

private:
    Ref<PageBase> m_base = New<PageBase>();
};

class Owner final : public Automation<Owner, IServiceAccess> {
public:
    Ref<IService> Service() override { return m_serviceBase; }

    static constexpr auto Members = MemberTable();

private:
    Ref<ServiceBase> m_serviceBase = New<ServiceBase>();
};

constexpr const char* ownerContent = R"(<ExplorerItems>
<ExplorerItem Name="All" Type="Folder" PositionOrder="1"/>
<ExplorerItem Name="One" Type="FolderChild" Parent="All" DefaultAction="Open"><ActionItems>
<ActionItem Name="Show" Action="OnShow"/><ActionItem Name="Open" Action="OnOpen"/></ActionItems><Menus>
<MenuItem Type="MenuItem" Path="File" PositionOrder="6" ActionItem="Open" Caption="Open"/><MenuItem Type="MenuItem" Path="File" PositionOrder="5" ActionItem="Show" Caption="Show"/></Menus>
</ExplorerItem></ExplorerItems><Windows>
<Window Name="Sheet" Caption="Sheet" Type="Window" State="Normal" IsMDIChild="true" IsModal="false">
<Page PageProgID="In.Page" Caption="P" IsOptional="false" IsResizable="true">
<ActionItems><ActionItem Name="Show" Action="OnShow"/></ActionItems>
<Menus><MenuItem Type="MenuItem" Path="File" PositionOrder="5" ActionItem="Show" Caption="Show"/></Menus>
</Page></Window></Windows>)";

class CommandOwnerTest : public ::testing::Test {
protected:
    CommandOwnerTest() {
        m_folder.Service("Shell", "Corvane.Framework", shellContent);
        m_folder.Service("In", "In.Service", ownerContent);
        ApplicationOptions options{m_folder.App(), false};
        options.classes = {{"In.Service", [] { return New<Owner>(); }}, {"In.Page", [] { return New<Sheet>(); }}};
        m_application = std::make_unique<Application>(options);
        EXPECT_TRUE(m_application->Start());
        Explorer()->Populate();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&m_application->Window()));
    }
    ~CommandOwnerTest() override { EXPECT_EQ(m_application->Failures().ShownCount(), 0); }

    static Ref<ExplorerManager> Explorer() { return CorvaneMain::Framework()->NavigationManager()->ExplorerManager(); }
    static Ref<OwnerItem> Add(const char* name) {
        auto item = New<OwnerItem>(name);
        Explorer()->AddToExplorer(item, "One");
        return item;
    }
    static void ChooseNode(const char* name) {
        Explorer()->TreeView()->ClickNode(Explorer()->TreeView()->GetNodes()->Item(name));
    }
    static void OpenSheet() { CorvaneMain::Framework()->WindowManager()->OpenWindow("Sheet", nullptr); }
    // F6 goes from the window to the explorer and back.
    void GoToOtherPart() { QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6); }
    std::string WhoShows() {
        QApplication::processEvents();
        shownBy = "nobody";
        m_application->Choose("File.Show");
        return shownBy;
    }

    AppFolder m_folder;
    std::unique_ptr<Application> m_application;
};

TEST_F(CommandOwnerTest, SharedCommandIsOfThePartThatThePersonIsIn) {
    Add("A");
    ChooseNode("A");
    EXPECT_EQ(WhoShows(), "A");
    OpenSheet();
    EXPECT_EQ(WhoShows(), "the page");
    GoToOtherPart();
    EXPECT_EQ(WhoShows(), "A") << "no item became active, it was already";
    GoToOtherPart();
    EXPECT_EQ(WhoShows(), "the page") << "nor did a page";
    Add("B");
    EXPECT_EQ(WhoShows(), "the page") << "a new item takes the tools of its kind";
    ChooseNode("B");
    EXPECT_EQ(WhoShows(), "the page") << "a command has chosen it, not the person";
    GoToOtherPart();
    EXPECT_EQ(WhoShows(), "B");
}

TEST_F(CommandOwnerTest, WhatRemainsTakesTheCommandsOfWhatGoes) {
    const Ref<OwnerItem> item = Add("A");
    ChooseNode("A");
    OpenSheet();
    EXPECT_EQ(WhoShows(), "the page");
    m_application->ClickCommand("close");
    EXPECT_EQ(WhoShows(), "A");
    OpenSheet();
    GoToOtherPart();
    EXPECT_EQ(WhoShows(), "A");
    Explorer()->DeleteFromExplorer(item);
    Add("B"); // which becomes nobody's
    GoToOtherPart();
    EXPECT_EQ(WhoShows(), "the page");
    GoToOtherPart();
    EXPECT_EQ(WhoShows(), "the page") << "the item that was active isn't there any more";
}

TEST_F(CommandOwnerTest, ExplorerMarksTheItemOfTheWindowInFrontAndSelectsNothing) {
    const auto tree = [this] { return m_application->Window().Explorer().CurrentPage()->Tree(); };
    const auto marked = [&] { return tree()->Marked() ? tree()->Marked()->Text() : ""; };
    Add("A");
    const Ref<OwnerItem> second = Add("B");
    ChooseNode("A");
    EXPECT_TRUE(m_application->Choose("File.Open"));
    const Ref<Form> first = m_application->MainForm()->ActiveForm();
    ChooseNode("B");
    Explorer()->TreeView()->DblClick.Raise();
    EXPECT_EQ(marked(), "B");
    first->Activate();
    EXPECT_EQ(marked(), "A");
    EXPECT_EQ(Explorer()->TreeView()->SelectedItem()->Text(), "B");
    GoToOtherPart();
    EXPECT_EQ(WhoShows(), "B") << "what the user has selected";
    EXPECT_TRUE(m_application->Choose("View.LinkWithWindow"));
    EXPECT_EQ(marked(), "");
    EXPECT_TRUE(m_application->Choose("View.LinkWithWindow"));
    EXPECT_EQ(marked(), "A");
    OpenSheet();
    EXPECT_EQ(marked(), "") << "the window of no item";
}

} // namespace
} // namespace corvane::desktop
