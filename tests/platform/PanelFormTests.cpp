#include "corvane/platform/controls/PanelForm.h"
#include "tests/support/RecordingUtilities.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using testing::NumberOf;

TEST(TabStripTest, TabsComeAndGo) {
    const auto oTabs = New<TabStrip>();
    std::string sHeard;
    const auto oClick = oTabs->Click.Subscribe(
        [&](Long lPrevious) { sHeard += std::to_string(lPrevious) + ">" + std::to_string(oTabs->Tab()) + " "; });
    oTabs->SetCaption("lost"); // there is no tab
    EXPECT_EQ(oTabs->Caption(), "");
    oTabs->SetTabs(3);
    for (const Long lTab : {0, 1, 2}) {
        oTabs->SetTab(lTab);
        oTabs->SetCaption(std::string(1, static_cast<char>('a' + lTab)));
    }
    for (const Long lTab : {-1, 3})
        EXPECT_EQ(NumberOf([&] { oTabs->SetTab(lTab); }), FailureNumber::InvalidProcedureCall);
    EXPECT_EQ(NumberOf([&] { oTabs->SetTabs(-1); }), FailureNumber::InvalidProcedureCall);
    EXPECT_EQ(sHeard, ""); // only the user is heard
    for (const Long lTab : {2, 0, 3, -1, 0, 1})
        oTabs->ChooseTab(lTab);
    EXPECT_EQ(sHeard, "2>0 0>1 ");
    oTabs->SetTab(2);
    oTabs->SetTabs(2);
    EXPECT_EQ(oTabs->Caption(), "b"); // the last that is left
    oTabs->SetTabs(3);
    EXPECT_EQ(oTabs->CaptionOf(2), "");
}

TEST(PanelFormTest, MakesControlsByProgID) {
    const auto oPanel = New<PanelForm>();
    std::string sHeard;
    const auto oAdded = oPanel->ControlAdded.Subscribe(
        [&](const Ref<Object>& oControl) { sHeard += std::string(oControl->TypeName()) + " "; });
    EXPECT_TRUE(oPanel->Control("TABEXPLORER").TryAs<TabStrip>());
    const auto oTree = oPanel->AddControl("mscomctllib.treectrl.2", "tvw");
    EXPECT_TRUE(oTree.TryAs<TreeView>() && oTree == oPanel->Control("TVW"));
    (void)oPanel->AddControl("MSComctlLib.ImageListCtrl.2", "img");
    EXPECT_EQ(NumberOf([&] { (void)oPanel->AddControl("MSComctlLib.TreeCtrl.2", "TVW"); }), FailureNumber::KeyInUse);
    EXPECT_EQ(NumberOf([&] { (void)oPanel->AddControl("Other.Control", "x"); }), FailureNumber::CannotCreateObject);
    EXPECT_EQ(NumberOf([&] { (void)oPanel->Control("x"); }), FailureNumber::InvalidProcedureCall);
    EXPECT_EQ(sHeard, "TreeView ImageList ");
}

} // namespace
} // namespace corvane
