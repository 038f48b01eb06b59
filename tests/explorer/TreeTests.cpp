// How the tabs and trees are built, and what the explorer has to do with bars and windows.

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/services/ServiceBase.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "tests/explorer/ExplorerTest.h"
#include "tests/support/RecordingUtilities.h"

namespace corvane::testing {
namespace {

class Tree : public ExplorerTest {
protected:
    [[nodiscard]] static Ref<ActionItem> Navigation() {
        return CorvaneMain::Framework()->Service().As<IActionsProvider>()->ActionItems()->Item("Navigation");
    }
    // Whether the band is visible, the action checked, the action enabled.
    [[nodiscard]] Lines State() const {
        const auto Text = [](bool b, const char* s) { return std::string(b ? "" : "not ") + s; };
        return {Text(BandVisible(), "visible"), Text(Navigation()->Checked(), "checked"),
                Text(Navigation()->Enabled(), "enabled")};
    }
};

TEST_F(Tree, EachItemIsInitializedAnnouncedAndThenShown) {
    Start();
    std::vector<Long> aNodesThere;
    const auto oAdd = m_oApplication.Explorer()->onAdd.Subscribe([&](const Ref<Object>&) {
        aNodesThere.push_back(ExplorerTest::Tree(0)->GetNodes()->Count() + ExplorerTest::Tree(1)->GetNodes()->Count());
    });
    EXPECT_EQ(After("populate"),
              (Lines{"E.Root#1 Initialize", "Explorer onAdd(E.Root#1)", "E.Root#1 OnDisplayName(Root)",
                     "E.Root#1/a Initialize", "Explorer onAdd(E.Root#1/a)", "E.Root#1/a OnDisplayName(a)",
                     "E.Root#1/b Initialize", "Explorer onAdd(E.Root#1/b)", "E.Root#1/b OnDisplayName(b)",
                     "E.Other#1 Initialize", "Explorer onAdd(E.Other#1)", "E.Other#1 OnDisplayName(Other)",
                     "E.Other#1/x Initialize", "Explorer onAdd(E.Other#1/x)", "E.Other#1/x OnDisplayName(x)"}));
    EXPECT_EQ(aNodesThere, (std::vector<Long>{0, 1, 2, 3, 4}));
    EXPECT_EQ(m_oApplication.Nodes(0), (Lines{"Root", " Leaf.a", " Leaf.b"}));
    EXPECT_EQ(m_oApplication.Nodes(1), (Lines{"Other", " Fixed.x"}));
    const Ref<Node> nodRoot = ExplorerTest::Tree(0)->GetNodes()->Item("Root");
    EXPECT_EQ(nodRoot->Image(), "Root");
    EXPECT_TRUE(nodRoot->Expanded());
    EXPECT_EQ(ExplorerTest::Tree(0)->GetNodes()->Item("Leaf.a")->Image(), "");
    EXPECT_EQ(m_oApplication.TakeLog(), Lines());
}

TEST_F(Tree, TabsStandByPosition) {
    Start();
    const auto oTabs = m_oApplication.Host().Tabs();
    EXPECT_EQ(oTabs->Tabs(), 2);
    EXPECT_EQ(oTabs->TabsPerRow(), 2);
    EXPECT_EQ(oTabs->Tab(), 0);
    EXPECT_EQ(oTabs->CaptionOf(0), "Root");
    EXPECT_EQ(oTabs->CaptionOf(1), "Other");
    EXPECT_EQ(m_oApplication.Explorer()->TreeView(), ExplorerTest::Tree(0));
    m_oApplication.Take("tab 1");
    EXPECT_EQ(m_oApplication.Explorer()->TreeView(), ExplorerTest::Tree(1));
    const auto& aImages = m_oApplication.Host().Images()->ListImages();
    ASSERT_EQ(aImages.size(), 2U);
    EXPECT_EQ(aImages[0].sKey, "GenericExplorerItem");
    EXPECT_EQ(aImages[1].sKey, "Root");
    EXPECT_TRUE(aImages[1].oPicture);
}

TEST_F(Tree, WithoutTabsTheBandCanStillBeShown) {
    Start("<ExplorerItems><ExplorerItem Name=\"Top\" Type=\"Default\"/></ExplorerItems>");
    EXPECT_EQ(m_oApplication.Host().Trees().size(), 0U);
    EXPECT_FALSE(m_oApplication.Explorer()->TreeView());
    EXPECT_EQ(State(), (Lines{"not visible", "not checked", "not enabled"}));
    EXPECT_EQ(After("populate"), Lines());
    EXPECT_EQ(State(), (Lines{"visible", "checked", "enabled"}));
}

TEST_F(Tree, BandAndActionGoTogether) {
    Start();
    const Lines aHidden{"not visible", "not checked", "enabled"};
    const Lines aShown{"visible", "checked", "enabled"};
    const Lines aEmpty{"not visible", "not checked", "not enabled"};
    const std::pair<const char*, Lines> aSteps[] = {
        {"clear", aEmpty},
        {"populate", aShown},
        {"hide", aHidden},
        {"show", aShown},
        {"closeband explorer", aHidden},
        {"refresh", aShown},
        {"open W w", aHidden},
        {"close w", aHidden}, // a page that hides the explorer doesn't bring it back
        {"show", aShown},
        {"clear", aEmpty},
    };
    for (const auto& [sStep, aState] : aSteps) {
        m_oApplication.Take(sStep);
        EXPECT_EQ(State(), aState) << sStep;
    }
    // The command toggles.
    m_oApplication.Take("populate");
    Navigation()->OnAction();
    EXPECT_EQ(State(), aHidden);
    Navigation()->OnAction();
    EXPECT_EQ(State(), aShown);
    EXPECT_EQ(m_oApplication.TakeLog(), Lines());
}

TEST_F(Tree, ASecondPopulateFailsOnTheFirstKey) {
    Populate();
    EXPECT_EQ(After("populate"),
              (Lines{"E.Root#2 Initialize", "Explorer onAdd(E.Root#2)", "E.Root#2 OnDisplayName(Root)"}));
    ASSERT_TRUE(m_oApplication.Host().FirstFailure());
    EXPECT_EQ(m_oApplication.Host().FirstFailure()->Number, 457);
    EXPECT_EQ(m_oApplication.TakeLog(),
              (Lines{"ExplorerManager.AddTreeNode 457", "ExplorerManager.AddFolderTreeNode 457",
                     "ExplorerManager.Populate 457"}));
    EXPECT_EQ(m_oApplication.Nodes(0), (Lines{"Root", " Leaf.a", " Leaf.b"})); // as before
}

TEST_F(Tree, AnItemWithoutAccessStopsTheBuild) {
    Start(sItems, R"({"objects": {"E.Root": {"children": [{"name": "a"}, {"name": "b", "access": false}]}}})");
    m_oApplication.Take("populate");
    EXPECT_EQ(m_oApplication.TakeLog(), (Lines{"CorvaneMain.QueryExplorerItem 13", "ExplorerManager.AddTreeNode 13",
                                               "ExplorerManager.AddFolderTreeNode 13", "ExplorerManager.Populate 13"}));
    EXPECT_EQ(m_oApplication.Nodes(0), (Lines{"Root", " Leaf.a"}));
    EXPECT_EQ(State(), (Lines{"not visible", "not checked", "not enabled"}));
}

TEST_F(Tree, ADefaultActionIsFiredThoughDisabledAndMustExist) {
    Populate();
    (void)After("node 0 Leaf.a");
    EXPECT_EQ(m_oApplication.Click("Context.Leaf.Open"), 0); // a click meets the disabled tool
    EXPECT_EQ(After("dblclick"), (Lines{"E.Root#1/a DoOpen(Open)", "Explorer OnOpen(E.Root#1/a)"}));
    m_oApplication.Take("tab 1\nnode 1 Fixed.x\ndblclick");
    EXPECT_EQ(m_oApplication.TakeLog(), (Lines{"NavigationManager.m_oExplorerManager_OnOpen 5",
                                               "ExplorerManager.m_tvwActiveTreeView_DblClick 5"}));
}

TEST_F(Tree, TreesFollowTheTabStripAboveAHeight) {
    Start();
    m_oApplication.Take("resize 1000 350");
    EXPECT_EQ(ExplorerTest::Tree(0)->Width(), 1000);
    EXPECT_EQ(ExplorerTest::Tree(1)->Width(), 1000);
    EXPECT_EQ(ExplorerTest::Tree(0)->Height(), -1); // untouched
    m_oApplication.Take("resize 900 351\nresize 800 20");
    EXPECT_EQ(ExplorerTest::Tree(1)->Width(), 800);
    EXPECT_EQ(ExplorerTest::Tree(1)->Height(), 1);
    EXPECT_EQ(ExplorerTest::Tree(1)->Top(), 0);
}

} // namespace
} // namespace corvane::testing
