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
#include "tests/desktop/AppFolder.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>

namespace corvane::desktop {
namespace {

std::string sShown; // by whom

class Item final : public Automation<Item, IExplorerItemAccess> {
public:
    explicit Item(std::string sName) : m_sName(std::move(sName)) {
        m_oInitialize = m_oBase->InitializeEvent.Subscribe(
            [this](const Ref<KeyedCollection<Ref<Object>>>&) { m_oBase->NameSilently(m_sName); });
    }
    Ref<IExplorerItem> ExplorerItem() override { return m_oBase; }
    void OnShow() { sShown = m_sName; }

    static constexpr auto Members = MemberTable(Method("OnShow", &Item::OnShow));

private:
    std::string m_sName;
    Ref<ExplorerItemBase> m_oBase = New<ExplorerItemBase>();
    Subscription m_oInitialize;
};

class Sheet final : public Automation<Sheet, IPageAccess, IQtPage> {
public:
    Ref<IPage> Page() override { return m_oBase; }
    QWidget* NewWidget(QWidget* pParent) override { return new QLineEdit(pParent); }
    void OnShow() { sShown = "the page"; }

    static constexpr auto Members = MemberTable(Method("OnShow", &Sheet::OnShow));

private:
    Ref<PageBase> m_oBase = New<PageBase>();
};

class Owner final : public Automation<Owner, IServiceAccess> {
public:
    Ref<IService> Service() override { return m_oServiceBase; }

    static constexpr auto Members = MemberTable();

private:
    Ref<ServiceBase> m_oServiceBase = New<ServiceBase>();
};

constexpr const char* sContent = R"(<ExplorerItems>
<ExplorerItem Name="All" Type="Folder" PositionOrder="1"/>
<ExplorerItem Name="One" Type="FolderChild" Parent="All"><ActionItems><ActionItem Name="Show" Action="OnShow"/>
</ActionItems><Menus><MenuItem Type="MenuItem" Path="File" PositionOrder="5" ActionItem="Show" Caption="Show"/></Menus>
</ExplorerItem></ExplorerItems><Windows>
<Window Name="Sheet" Caption="Sheet" Type="Window" State="Normal" IsMDIChild="true" IsModal="false">
<Page PageProgID="In.Page" Caption="P" IsOptional="false" IsResizable="true">
<ActionItems><ActionItem Name="Show" Action="OnShow"/></ActionItems>
<Menus><MenuItem Type="MenuItem" Path="File" PositionOrder="5" ActionItem="Show" Caption="Show"/></Menus>
</Page></Window></Windows>)";

class CommandOwnerTest : public ::testing::Test {
protected:
    CommandOwnerTest() {
        m_oFolder.Service("Shell", "Corvane.Framework", sShellContent);
        m_oFolder.Service("In", "In.Service", sContent);
        ApplicationOptions oOptions{m_oFolder.App(), false};
        oOptions.aClasses = {{"In.Service", [] { return New<Owner>(); }}, {"In.Page", [] { return New<Sheet>(); }}};
        m_pApplication = std::make_unique<Application>(oOptions);
        EXPECT_TRUE(m_pApplication->Start());
        Explorer()->Populate();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&m_pApplication->Window()));
    }
    ~CommandOwnerTest() override { EXPECT_EQ(m_pApplication->Failures().ShownCount(), 0); }

    static Ref<ExplorerManager> Explorer() { return CorvaneMain::Framework()->NavigationManager()->ExplorerManager(); }
    static Ref<Item> Add(const char* sName) {
        auto oItem = New<Item>(sName);
        Explorer()->AddToExplorer(oItem, "One");
        return oItem;
    }
    static void ChooseNode(const char* sName) {
        Explorer()->TreeView()->ClickNode(Explorer()->TreeView()->GetNodes()->Item(sName));
    }
    static void OpenSheet() { CorvaneMain::Framework()->WindowManager()->OpenWindow("Sheet", nullptr); }
    // F6 goes from the window to the explorer and back.
    void GoToOtherPart() { QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6); }
    std::string WhoShows() {
        QApplication::processEvents();
        sShown = "nobody";
        m_pApplication->Choose("File.Show");
        return sShown;
    }

    AppFolder m_oFolder;
    std::unique_ptr<Application> m_pApplication;
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
    const Ref<Item> oItem = Add("A");
    ChooseNode("A");
    OpenSheet();
    EXPECT_EQ(WhoShows(), "the page");
    m_pApplication->ClickCommand("close");
    EXPECT_EQ(WhoShows(), "A");
    OpenSheet();
    GoToOtherPart();
    EXPECT_EQ(WhoShows(), "A");
    Explorer()->DeleteFromExplorer(oItem);
    Add("B"); // which becomes nobody's
    GoToOtherPart();
    EXPECT_EQ(WhoShows(), "the page");
    GoToOtherPart();
    EXPECT_EQ(WhoShows(), "the page") << "the item that was active isn't there any more";
}

} // namespace
} // namespace corvane::desktop
