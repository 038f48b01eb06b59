#include "corvane/platform/controls/ActiveBar.h"
#include "tests/support/RecordingUtilities.h"

#include <functional>
#include <gtest/gtest.h>

namespace corvane {
namespace {

using testing::NumberOf;

class ActiveBarTest : public ::testing::Test {
protected:
    Ref<Tool> AddTool(Long lToolId, std::string_view sName) {
        auto oTool = m_oBar->Tools()->Add(lToolId, sName);
        oTool->SetCaption(std::string(sName));
        return oTool;
    }
    // The captions of the instances in the band.
    std::string Captions() const {
        std::string sCaptions;
        for (const auto& oTool : m_oBand->Tools()->All())
            sCaptions += (sCaptions.empty() ? "" : " ") + oTool->Caption();
        return sCaptions;
    }

    Ref<ActiveBar> m_oBar = New<ActiveBar>();
    Ref<Band> m_oBand = m_oBar->Bands()->Add("Edit");
};

TEST_F(ActiveBarTest, AnInstanceHasTextsOfItsOwnAndSharesItsState) {
    const auto Texts = [](const Ref<Tool>& oTool) {
        return oTool->Caption() + "|" + oTool->Description() + "|" + oTool->ToolTip() + "|" + oTool->DropDownBand();
    };
    const auto oMaster = AddTool(10, "Copy");
    oMaster->SetDescription("Copies");
    oMaster->SetToolTip("Copy it");
    oMaster->SetDropDownBand("More");
    const auto oInstance = m_oBand->Tools()->Insert(-1, oMaster);
    EXPECT_EQ(Texts(oInstance), "Copy|Copies|Copy it|More");
    oMaster->SetCaption("Duplicate");
    oMaster->SetToolTip("");
    EXPECT_EQ(Texts(oInstance), "Copy|Copies|Copy it|More");
    oInstance->SetDescription("By itself");
    EXPECT_EQ(oMaster->Description(), "Copies");
    // What the master has is taken over, pictures too; what it doesn't have stays as it is.
    const auto oPicture = New<Picture>("m.png", Picture::Format::Png, "");
    oInstance->SetPicture(Tool::Pressed, New<Picture>("p.png", Picture::Format::Png, ""));
    oMaster->SetPicture(Tool::Disabled, oPicture);
    for (int i = 0; i < 2; ++i)
        m_oBar->ApplyToolToInstances(oMaster);
    EXPECT_EQ(Texts(oInstance), "Duplicate|Copies|Copy it|More");
    ASSERT_EQ(oInstance->Pictures().size(), 2U);
    EXPECT_EQ(oInstance->PictureOf(Tool::Disabled), oPicture);

    const auto oOther = m_oBand->Tools()->Insert(0, oInstance); // of the same master
    oInstance->SetChecked(true);
    oOther->SetEnabled(false);
    oMaster->SetVisible(false);
    const auto oTag = New<ShortCut>();
    oInstance->SetTagVariant(oTag);
    for (const auto& oTool : {oMaster, oInstance, oOther})
        EXPECT_TRUE(oTool->Checked() && !oTool->Enabled() && !oTool->Visible() && oTool->TagVariant() == oTag);
    oInstance->SetIsDefaultItem(true);
    oInstance->SetPicture(Tool::Normal, New<Picture>("a.png", Picture::Format::Png, ""));
    EXPECT_FALSE(oMaster->IsDefaultItem() || oOther->IsDefaultItem());
    EXPECT_FALSE(oMaster->PictureOf(Tool::Normal) || oOther->PictureOf(Tool::Normal));
    EXPECT_EQ(oInstance->PictureOf(Tool::Normal)->Name(), "a.png");
    oInstance->SetPicture(Tool::Normal, nullptr);
    EXPECT_FALSE(oInstance->PictureOf(Tool::Normal));
}

TEST_F(ActiveBarTest, InsertsAndRemovesAtPositions) {
    const auto oTools = m_oBand->Tools();
    const auto Insert = [&](Long lPosition, const char* sName) { oTools->Insert(lPosition, AddTool(10, sName)); };
    Insert(-1, "b");
    Insert(0, "a");
    Insert(2, "d");
    Insert(2, "c");
    EXPECT_EQ(Captions(), "a b c d");
    oTools->Remove(3);
    oTools->Remove(0);
    EXPECT_EQ(Captions(), "b c");
    const auto oTool = AddTool(11, "x");
    const std::pair<const char*, std::function<void()>> aFailures[] = {
        {"insert at -2", [&] { oTools->Insert(-2, oTool); }}, {"insert at 3", [&] { oTools->Insert(3, oTool); }},
        {"remove at -1", [&] { oTools->Remove(-1); }},        {"remove at 2", [&] { oTools->Remove(2); }},
        {"item -1", [&] { (void)oTools->Item(-1); }},         {"item 2", [&] { (void)oTools->Item(2); }},
        {"band 1", [&] { (void)m_oBar->Bands()->Item(1); }}};
    for (const auto& [sName, fnCall] : aFailures)
        EXPECT_EQ(NumberOf(fnCall), FailureNumber::Subscript) << sName;
    EXPECT_EQ(NumberOf([&] { oTools->Insert(0, nullptr); }), FailureNumber::ObjectNotSet);
    EXPECT_EQ(Captions(), "b c");
}

TEST_F(ActiveBarTest, TheFirstOfEqualNamesIsFound) {
    const auto oTools = m_oBand->Tools();
    const auto Found = [&] { return oTools->Item("SAME")->Caption(); };
    const auto Insert = [&](Long lPosition, const char* sCaption) {
        oTools->Insert(lPosition, m_oBar->Tools()->Add(10, "Same"))->SetCaption(sCaption);
    };
    for (const Long lOthers : {0, 15, 40}) { // in front of them
        while (oTools->Count() < lOthers)
            oTools->Insert(0, AddTool(oTools->Count() + 100, "Other" + std::to_string(oTools->Count())));
        Insert(-1, "2");
        Insert(-1, "4");
        EXPECT_EQ(Found(), "2");
        Insert(lOthers + 1, "3"); // between both
        EXPECT_EQ(Found(), "2");
        Insert(lOthers / 2, "1"); // in front
        EXPECT_EQ(Found(), "1");
        oTools->Remove(lOthers / 2);
        for (const char* sNext : {"3", "4"}) {
            EXPECT_NE(Found(), sNext);
            oTools->Remove(lOthers);
            EXPECT_EQ(Found(), sNext);
        }
        Insert(-1, "5");
        oTools->Remove(lOthers + 1); // one that wasn't found
        EXPECT_EQ(Found(), "4");
        oTools->Remove(lOthers);
        EXPECT_EQ(NumberOf([&] { (void)oTools->Item("Same"); }), FailureNumber::InvalidProcedureCall);
        EXPECT_EQ(oTools->Count(), lOthers);
        EXPECT_TRUE(lOthers == 0 || oTools->Find("other7"));
    }
    const auto oBands = m_oBar->Bands();
    (void)oBands->Add("EDIT");
    EXPECT_TRUE(oBands->Item("edit") == m_oBand);
    EXPECT_EQ(oBands->Count(), 2);
    const auto oFirst = AddTool(77, "First");
    (void)AddTool(77, "Second");
    EXPECT_TRUE(m_oBar->Tools()->Item(77) == oFirst);
    EXPECT_EQ(NumberOf([&] { (void)m_oBar->Tools()->Item(78); }), FailureNumber::InvalidProcedureCall);
}

TEST_F(ActiveBarTest, OnlyWhatIsVisibleAndEnabledIsClicked) {
    const auto oMaster = AddTool(10, "Copy");
    const auto oInstance = m_oBand->Tools()->Insert(-1, oMaster);
    std::string sHeard;
    const auto oClick = m_oBar->ToolClick.Subscribe(
        [&](const Ref<Tool>& oTool) { sHeard += oTool->IsInstance() ? "instance " : "master "; });
    const struct {
        bool bVisible;
        bool bEnabled;
        const char* sHeard;
    } aCases[] = {{true, true, "instance master "}, {false, true, ""}, {true, false, ""}, {false, false, ""}};
    for (const auto& oCase : aCases) {
        sHeard.clear();
        oMaster->SetVisible(oCase.bVisible);
        oMaster->SetEnabled(oCase.bEnabled);
        m_oBar->Click(oInstance);
        m_oBar->Click(oMaster);
        EXPECT_EQ(sHeard, oCase.sHeard);
    }
}

TEST_F(ActiveBarTest, BandsOpenAndClose) {
    bool bCancels = true;
    std::string sHeard;
    const auto oOpen = m_oBar->BandOpen.Subscribe([&](const Ref<Band>& oBand, bool& bCancel) {
        sHeard += "open " + oBand->Name() + " ";
        bCancel = bCancels;
    });
    const auto oClose = m_oBar->BandClose.Subscribe([&](const Ref<Band>& oBand) {
        sHeard += oBand->Visible() ? "closing " : "closed ";
        m_oBar->Close(oBand); // hidden by now
    });
    EXPECT_FALSE(m_oBar->Open(m_oBand));
    bCancels = false;
    EXPECT_TRUE(m_oBar->Open(m_oBand));
    m_oBar->Close(m_oBand);
    m_oBar->Close(m_oBand);
    EXPECT_EQ(sHeard, "open Edit open Edit closed ");
}

TEST_F(ActiveBarTest, RenderersHearOfChangesAlone) {
    std::string sHeard;
    const auto oTool = m_oBand->Tools()->Insert(-1, AddTool(10, "Copy"));
    const auto oChanged = m_oBar->Changed.Subscribe([&](const BarChange& oChange) {
        sHeard += std::to_string(static_cast<int>(oChange.eWhat));
        sHeard += oChange.pTool ? oChange.pTool->IsInstance() ? "i " : "m " : " ";
    });
    const auto Heard = [&] { return std::exchange(sHeard, {}); };
    oTool->SetChecked(false);
    oTool->SetEnabled(true);
    oTool->SetVisible(true);
    oTool->SetCaption("Copy");
    m_oBand->SetVisible(true); // as it counts until it is set
    EXPECT_EQ(Heard(), "");
    oTool->SetChecked(true); // in the name of the master
    oTool->SetCaption("c");
    EXPECT_EQ(Heard(), std::to_string(static_cast<int>(BarChange::What::ToolState)) + "m " +
                           std::to_string(static_cast<int>(BarChange::What::ToolTexts)) + "i ");
    m_oBand->Tools()->Remove(0);
    EXPECT_EQ(Heard(), std::to_string(static_cast<int>(BarChange::What::BandTools)) + " ");
    EXPECT_EQ(oTool->OwningBand(), nullptr);
    m_oBar->ApplyToolToInstances(oTool); // removed, but still of its master
    EXPECT_EQ(oTool->Caption(), "Copy");
}

TEST_F(ActiveBarTest, ItsPartsMayOutliveIt) {
    m_oBar = NewHostActiveBar();
    m_oBand = m_oBar->Bands()->Item("StatusBar");
    const auto oBands = m_oBar->Bands();
    const auto oMasters = m_oBar->Tools();
    const auto oMaster = oMasters->Item("Separator");
    const auto oHostTool = m_oBand->Tools()->Item("Status");
    m_oBar = nullptr;
    EXPECT_EQ(m_oBand->Owner(), nullptr);
    oHostTool->SetChecked(true);
    oMaster->SetVisible(false);
    m_oBand->SetCaption("text");
    (void)oBands->Add("Another");
    (void)oMasters->Add(50, "Another");
    EXPECT_EQ(m_oBand->Tools()->Insert(-1, oMaster)->Name(), "Separator");
    const auto oTools = m_oBand->Tools();
    m_oBand = nullptr;
    for (const auto& oBand : oBands->All())
        EXPECT_EQ(oBand->Owner(), nullptr);
    EXPECT_EQ(oTools->Count(), 3);
}

} // namespace
} // namespace corvane
