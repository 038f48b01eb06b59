// Who owns a tool at the moment, and what clicks and closed bars come to.

#include "corvane/core/CorvaneMain.h"
#include "corvane/menus/MenuManager.h"
#include "corvane/platform/Platform.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/IPage.h"
#include "tests/support/Entries.h"
#include "tests/support/RecordingUtilities.h"

#include <gtest/gtest.h>

namespace corvane::testing {
namespace {

// A service with an entry "Keep" that a page shares, and the page's own entry "Only" and action "Plain" without one.
class Providers : public ::testing::Test {
protected:
    struct Page {
        Ref<Object> oObject;
        Ref<IActionsProvider> oProvider;
    };

    void SetUp() override {
        std::string sPage = Groups({{"MenuItem", "Only", "File", "2"}, {"MenuItem", "Keep", "File", "1"}});
        sPage.insert(sPage.find("</ActionItems>"), "<ActionItem Name=\"Plain\"/>");
        m_oApplication.SetStandIns(R"({"objects": {"A.Service": {"fail": {"DoFail": {"number": 77}}}}})");
        m_oApplication.AddService(
            "A",
            Groups(
                {{"MenuTitle", "File", "", "1"}, {"MenuItem", "Keep", "File", "1"}, {"MenuItem", "Fail", "File", "9"}},
                "PassActionItemParam=\"true\"") +
                "<Windows><Window Name=\"W\" Type=\"Window\" State=\"Normal\"><Page PageProgID=\"P\" "
                "IsOptional=\"0\" IsResizable=\"1\">" +
                sPage + "</Page></Window></Windows>");
        ASSERT_EQ(m_oApplication.Start(), 0);
        (void)m_oApplication.TakeCalls();
        m_colDefs = m_oApplication.Services()->WindowDefs()->Item("W")->PageDefs()->Item(1)->ActionItemDefs();
    }
    static Page NewPage() {
        const Ref<Object> oObject = CurrentPlatform().oObjectFactory->Create("P");
        return {oObject, CorvaneMain::QueryPage(oObject).As<IActionsProvider>()};
    }
    void Add(const Page& oPage) const {
        m_oApplication.Menus()->OnActionsProviderAdd(oPage.oObject, oPage.oProvider, m_colDefs, false);
    }
    void Activate(const Page& oPage) const {
        m_oApplication.Menus()->OnActionsProviderActive(oPage.oObject, oPage.oProvider, m_colDefs);
    }
    void Deactivate(const Page& oPage) const {
        m_oApplication.Menus()->OnActionsProviderInActive(oPage.oObject, oPage.oProvider, m_colDefs);
    }
    [[nodiscard]] std::string File() const { return m_oApplication.BandText("File"); }
    [[nodiscard]] Lines CallsOf(const std::string& sTool) {
        EXPECT_EQ(m_oApplication.Click(sTool), 0);
        return m_oApplication.TakeCalls();
    }

    Application m_oApplication;
    Ref<ActionItemDefCollection> m_colDefs;
};

TEST_F(Providers, AddedWithoutActivationTakeTheClicks) {
    EXPECT_EQ(m_oApplication.Click("File.Fail"), 77);
    EXPECT_EQ(m_oApplication.TakeLog(), (Lines{"ActionItem.OnAction 77", "MenuManager.m_oActiveBar_ToolClick 77"}));
    (void)m_oApplication.TakeCalls();
    EXPECT_EQ(CallsOf("File.Keep"), Lines{"A.Service#1 DoKeep(Keep)"}); // works after it
    EXPECT_EQ(CallsOf("File"), Lines{"A.Service#1 DoFile(File)"});      // a title is an action like any other
    const Page oPage = NewPage();
    Add(oPage);
    EXPECT_EQ(File(), "Keep\nOnly  (hidden)\nFail\n");
    EXPECT_EQ(CallsOf("File.Keep"), Lines{"P#1 DoKeep"});
    oPage.oProvider->ActionItems()->Item("Keep")->SetChecked(true);
    EXPECT_TRUE(m_oApplication.MasterTool("File.Keep")->Checked());
}

TEST_F(Providers, LeaveASharedEntryGreyAndTakeTheirOwnAway) {
    const Page oPage = NewPage();
    Add(oPage);
    Activate(oPage);
    EXPECT_EQ(File(), "Keep\nOnly\nFail\n");
    EXPECT_EQ(CallsOf("File.Only"), Lines{"P#1 DoOnly"});
    Deactivate(oPage);
    EXPECT_EQ(File(), "Keep  (disabled)\nOnly  (hidden)\nFail\n");
    EXPECT_FALSE(m_oApplication.MasterTool("File.Keep")->TagVariant());
    // The service's item is still tied, though it gets no clicks any more.
    const auto oServiceItem = CorvaneMain::QueryService(m_oApplication.Services()->Services()->Item("A"))
                                  .As<IActionsProvider>()
                                  ->ActionItems()
                                  ->Item("Keep");
    oServiceItem->SetEnabled(true);
    EXPECT_EQ(CallsOf("File.Keep"), Lines());
    // What is set meanwhile shows when the page comes back.
    oPage.oProvider->ActionItems()->Item("Only")->SetEnabled(false);
    oPage.oProvider->ActionItems()->Item("Only")->SetChecked(true);
    EXPECT_TRUE(m_oApplication.MasterTool("File.Only")->Enabled());
    Activate(oPage);
    EXPECT_EQ(File(), "Keep\nOnly  (checked)  (disabled)\nFail\n");
    m_oApplication.Menus()->OnActionsProviderRemove(oPage.oObject, oPage.oProvider);
    EXPECT_EQ(File(), "Keep  (hidden)\nOnly  (checked)  (disabled)  (hidden)\nFail\n"); // even the shared one
}

TEST_F(Providers, TheLastCallDecides) {
    const Page oFirst = NewPage();
    const Page oSecond = NewPage();
    Add(oFirst);
    Activate(oFirst);
    Add(oSecond);
    Activate(oSecond);
    EXPECT_EQ(CallsOf("File.Only"), Lines{"P#2 DoOnly"});
    Deactivate(oFirst); // takes the tool from the second, too
    EXPECT_EQ(File(), "Keep  (disabled)\nOnly  (hidden)\nFail\n");
    Activate(oSecond);
    m_oApplication.Menus()->OnActionsProviderRemove(oFirst.oObject, oFirst.oProvider); // has no tools any more
    EXPECT_EQ(File(), "Keep\nOnly\nFail\n");
    EXPECT_EQ(CallsOf("File.Only"), Lines{"P#2 DoOnly"});
}

TEST_F(Providers, AnActionWithoutAnEntryKeepsState) {
    const Page oPage = NewPage();
    Add(oPage);
    Activate(oPage);
    const auto oPlain = oPage.oProvider->ActionItems()->Item("Plain");
    oPlain->SetChecked(true);
    EXPECT_TRUE(oPlain->Checked());
    EXPECT_FALSE(oPlain->Tool());
    oPlain->OnAction(); // has no procedure: nothing happens
    EXPECT_EQ(m_oApplication.TakeCalls(), Lines());
    EXPECT_EQ(m_oApplication.TakeLog(), Lines());
}

TEST_F(Providers, FailWithoutTheirItems) {
    const Page oPage = NewPage();
    EXPECT_EQ(NumberOf([&] { Activate(oPage); }), 91);
    oPage.oProvider->Initialize(New<ActionItemCollection>());
    EXPECT_EQ(NumberOf([&] { Deactivate(oPage); }), 5);
    EXPECT_EQ(m_oApplication.TakeLog(),
              (Lines{"MenuManager.OnActionsProviderActive 91", "MenuManager.OnActionsProviderInActive 5"}));
}

TEST_F(Providers, TextsOfAnEntryAreSetByPath) {
    const Page oPage = NewPage();
    Add(oPage);
    const auto oOnly = oPage.oProvider->ActionItems()->Item("Only");
    oOnly->SetCaption("file", "Renamed");
    oOnly->SetDescription("File", "Longer");
    oOnly->SetCaption("Nowhere", "x");
    oOnly->SetCaption("", "x");
    New<MenuManager>()->SetMenuCaption("File", "Only", "x"); // before there is a bar
    {
        const auto oFails = m_oApplication.Host().Bar()->Changed.Subscribe([](const BarChange&) { Fail(77); });
        oOnly->SetCaption("File", "Again"); // whatever happens
        oOnly->SetDescription("File", "Still longer");
    }
    oOnly->SetCaption("File", "Renamed");
    oOnly->SetDescription("File", "Longer");
    EXPECT_EQ(File(), "Keep\nRenamed  (hidden)\nFail\n");
    EXPECT_EQ(m_oApplication.Host().Bar()->Bands()->Item("File")->Tools()->Item("File.Only")->Description(), "Longer");
    EXPECT_EQ(m_oApplication.MasterTool("File.Only")->Description(), "");
    EXPECT_EQ(m_oApplication.TakeLog(), Lines());
}

TEST_F(Providers, AnAddedMenuFiresOnceItsProviderIsActive) {
    const Ref<Object> oService = m_oApplication.Services()->Services()->Item("A");
    const auto oProvider = CorvaneMain::QueryService(oService).As<IActionsProvider>();
    const auto oMenus = m_oApplication.Menus();
    using enum MenuType;
    oMenus->AddMenu(oService, oProvider, "New", "File", 0, fwMenuItem, "#Ne&w", "DoNew", true, {},
                    SeparatorStyle::fwSeparatorBefore);
    oMenus->AddMenu(oService, oProvider, "Sub", "File", 0, fwMenuTitle, "Sub", {}, false, {},
                    SeparatorStyle::fwSeparatorAfter);
    oMenus->AddMenu(oService, oProvider, "Leaf", "File.Sub", 0, fwMenuItem, "Leaf");
    oMenus->AddMenu(oService, oProvider, "Sub", "File", 0, fwMenuTitle, "Sub again");
    EXPECT_EQ(File(), "Keep\nOnly  (hidden)\nFail\n--------\n#New\nSub again\n  Leaf\n--------\n");
    EXPECT_EQ(CallsOf("File.New"), Lines());
    auto colDefs = New<ActionItemDefCollection>();
    colDefs->Add(oProvider->ActionItems()->Item("New")->ActionItemDef(), "New");
    oMenus->OnActionsProviderActive(oService, oProvider, colDefs);
    EXPECT_EQ(CallsOf("File.New"), Lines{"A.Service#1 DoNew(New)"});
}

TEST_F(Providers, AClosedToolbarLosesItsCheckAndComesBack) {
    const Ref<Band> oBand = m_oApplication.Menus()->CreateToolbar("Std");
    const Ref<Tool> oEntry = m_oApplication.MasterTool("Toolbars.Std");
    const auto State = [&] { return std::pair(oBand->Visible(), oEntry->Checked()); };
    EXPECT_EQ(State(), std::pair(true, true));
    m_oApplication.Take("closeband toolbars.STD");
    EXPECT_EQ(State(), std::pair(false, false));
    EXPECT_EQ(m_oApplication.Click("Toolbars.Std"), 0);
    EXPECT_EQ(State(), std::pair(true, true));
    EXPECT_EQ(m_oApplication.Click("Toolbars.Std"), 0);
    EXPECT_EQ(State(), std::pair(false, false));
    m_oApplication.Take("closeband StatusBar"); // isn't a toolbar
    EXPECT_EQ(m_oApplication.TakeLog(), Lines());
}

TEST_F(Providers, TheCustomizeMenuLosesItsLastTwoEntriesAtEachOpening) {
    const auto& oBar = m_oApplication.Host().Bar();
    const Ref<Band> oBand = oBar->Bands()->Add("sysCUSTOMIZE");
    for (const char* sTool : {"File.Keep", "File.Only", "File.Fail"})
        oBand->Tools()->Insert(-1, m_oApplication.MasterTool(sTool));
    EXPECT_TRUE(oBar->Open(oBand));
    EXPECT_EQ(m_oApplication.BandNames("SysCustomize"), "File.Keep");
    EXPECT_EQ(NumberOf([&] { (void)oBar->Open(oBand); }), 9);
    EXPECT_EQ(m_oApplication.BandNames("SysCustomize"), "");
    EXPECT_EQ(m_oApplication.TakeLog(), Lines{"MenuManager.m_oActiveBar_BandOpen 9"});
    for (int i = 0; i < 32768; ++i)
        oBand->Tools()->Insert(-1, m_oApplication.MasterTool("File.Keep"));
    EXPECT_EQ(NumberOf([&] { (void)oBar->Open(oBand); }), 6);
    oBand->Tools()->Remove(0);
    EXPECT_TRUE(oBar->Open(oBand));
    EXPECT_EQ(oBand->Tools()->Count(), 32765);
}

} // namespace
} // namespace corvane::testing
