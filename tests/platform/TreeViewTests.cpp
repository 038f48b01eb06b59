#include "corvane/platform/controls/TreeView.h"
#include "tests/support/RecordingUtilities.h"

#include <functional>
#include <gtest/gtest.h>

namespace corvane {
namespace {

using testing::NumberOf;

class TreeViewTest : public ::testing::Test {
protected:
    Ref<Node> AddRoot(std::string_view sKey) { return m_oNodes->Add("", NodeRelationship::First, sKey, sKey); }
    Ref<Node> AddChild(std::string_view sParent, std::string_view sKey) {
        return m_oNodes->Add(sParent, NodeRelationship::Child, sKey, sKey);
    }
    // Every node as key and row, children in parentheses.
    static std::string Drawn(const std::vector<Node*>& aNodes) {
        std::string sDrawn;
        for (const Node* pNode : aNodes) {
            sDrawn += pNode->Key() + std::to_string(pNode->Row());
            if (!pNode->Children().empty())
                sDrawn += "(" + Drawn(pNode->Children()) + ")";
        }
        return sDrawn;
    }
    std::string Drawn() const { return Drawn(m_oNodes->Roots()); }

    Ref<TreeView> m_oTree = New<TreeView>("tvw");
    Ref<Nodes> m_oNodes = m_oTree->GetNodes();
};

TEST_F(TreeViewTest, FindsEachKeyWhateverHasGoneMeanwhile) {
    std::vector<std::string> aLeft;
    for (int i = 0; i < 3000; ++i)
        AddRoot("Key" + std::to_string(i));
    for (int i = 0; i < 3000; ++i) {
        const std::string sKey = "kEY" + std::to_string(i);
        if (i % 3 == 0)
            m_oNodes->Remove(sKey);
        else if (i % 3 == 1)
            m_oNodes->Item(sKey)->SetKey("New" + std::to_string(i));
        aLeft.push_back(i % 3 == 0 ? "" : (i % 3 == 1 ? "NEW" : "KEY") + std::to_string(i));
    }
    EXPECT_EQ(m_oNodes->Count(), 2000);
    for (int i = 0; i < 3000; ++i) {
        const std::string& sLeft = aLeft[static_cast<std::size_t>(i)];
        EXPECT_EQ(m_oNodes->HasKey("Key" + std::to_string(i)), i % 3 == 2) << i;
        if (!sLeft.empty()) {
            EXPECT_EQ(m_oNodes->Item(sLeft)->Text(), "Key" + std::to_string(i));
        }
    }
}

TEST_F(TreeViewTest, AddsUnderRelativesOrNotAtAll) {
    AddRoot("a");
    AddRoot("b");
    AddChild("A", "c");
    AddChild("a", "d");
    AddChild("c", "");
    EXPECT_EQ(Drawn(), "a0(c0(0)d1)b1");
    m_oTree->SetImageList(New<ImageList>());
    m_oTree->GetImageList()->Add("Folder", nullptr);
    int nHeard = 0;
    const auto oChanged = m_oTree->Changed.Subscribe([&](const TreeChange&) { ++nHeard; });
    const struct {
        const char* sName;
        std::function<void()> fnCall;
        Long lNumber;
    } aFailures[] = {
        {"key present", [&] { AddRoot("D"); }, FailureNumber::KeyInUse},
        {"empty key present", [&] { AddChild("b", ""); }, FailureNumber::KeyInUse},
        {"unknown relative", [&] { AddChild("x", "e"); }, FailureNumber::InvalidProcedureCall},
        {"unknown image", [&] { m_oNodes->Add("", NodeRelationship::First, "e", "", "File"); },
         FailureNumber::InvalidProcedureCall},
        {"unknown node to remove", [&] { m_oNodes->Remove("e"); }, FailureNumber::InvalidProcedureCall},
    };
    for (const auto& oFailure : aFailures)
        EXPECT_EQ(NumberOf(oFailure.fnCall), oFailure.lNumber) << oFailure.sName;
    EXPECT_EQ(Drawn(), "a0(c0(0)d1)b1");
    EXPECT_EQ(m_oNodes->Count(), 5);
    EXPECT_EQ(nHeard, 0);
    EXPECT_EQ(m_oNodes->Add("b", NodeRelationship::Child, "e", "", "FOLDER")->Image(), "Folder");
}

TEST_F(TreeViewTest, RowsHoldAfterRemovals) {
    for (const char* sKey : {"a", "b", "c", "d"})
        AddRoot(sKey);
    for (const char* sKey : {"e", "f", "g"})
        AddChild("b", sKey);
    m_oNodes->Remove("a");
    m_oNodes->Remove("C");
    m_oNodes->Remove("f");
    EXPECT_EQ(Drawn(), "b0(e0g1)d1");
    AddRoot("h");
    AddChild("b", "i");
    m_oNodes->Remove("e");
    EXPECT_EQ(Drawn(), "b0(g0i1)d1h2");
}

TEST_F(TreeViewTest, ARemovedSubtreeIsGoneAndHarmless) {
    AddRoot("a");
    AddChild("a", "b");
    const auto oDeep = AddChild("b", "c");
    AddRoot("d");
    m_oTree->SetSelectedItem(oDeep);
    m_oNodes->Remove("a");
    EXPECT_EQ(Drawn(), "d0");
    EXPECT_EQ(m_oNodes->Count(), 1);
    EXPECT_FALSE(m_oNodes->HasKey("c"));
    EXPECT_FALSE(m_oTree->SelectedItem());
    EXPECT_TRUE(!oDeep->IsInTree() && !oDeep->Parent() && oDeep->Text() == "c");
    EXPECT_EQ(NumberOf([&] { oDeep->SetKey("e"); }), FailureNumber::ObjectNotSet);
    oDeep->SetSelected(true);
    oDeep->SetText("text");
    oDeep->SetExpanded(true);
    EXPECT_FALSE(m_oTree->SelectedItem());
    AddRoot("c"); // its key is free
    const auto oLast = m_oNodes->Item("d");
    m_oNodes->Clear();
    EXPECT_EQ(m_oNodes->Count(), 0);
    m_oTree = nullptr;
    AddRoot("f"); // the nodes alone
    EXPECT_EQ(Drawn(), "f0");
    m_oNodes = nullptr;
    EXPECT_FALSE(oLast->IsInTree());
}

TEST_F(TreeViewTest, KeysChange) {
    const auto oNode = AddRoot("a");
    AddRoot("b");
    EXPECT_EQ(NumberOf([&] { oNode->SetKey("B"); }), FailureNumber::KeyInUse);
    oNode->SetKey("A"); // its own in another case
    oNode->SetKey("c");
    EXPECT_FALSE(m_oNodes->HasKey("a"));
    EXPECT_TRUE(m_oNodes->Item("C") == oNode);
    EXPECT_EQ(AddRoot("a")->Row(), 2);
}

TEST_F(TreeViewTest, RenderersHearAroundEveryChange) {
    using What = TreeChange::What;
    std::string sHeard;
    const auto oChanged = m_oTree->Changed.Subscribe([&](const TreeChange& oChange) {
        const std::pair<What, const char*> aNames[] = {{What::BeforeInsert, "+"},
                                                       {What::AfterInsert, "added"},
                                                       {What::BeforeRemove, "-"},
                                                       {What::AfterRemove, "removed"},
                                                       {What::Selection, "selected"}};
        for (const auto& [eWhat, sName] : aNames)
            if (eWhat == oChange.eWhat)
                sHeard += std::string(sName) + std::to_string(oChange.lRow) + ":" + Drawn() + " ";
    });
    AddRoot("a");
    AddChild("a", "b");
    m_oTree->SetSelectedItem(m_oNodes->Item("b"));
    m_oNodes->Remove("b");
    EXPECT_EQ(sHeard, "+0: added0:a0 +0:a0 added0:a0(b0) selected0:a0(b0) -0:a0(b0) selected0:a0 removed0:a0 ");
}

TEST_F(TreeViewTest, LabelEdits) {
    const auto oNode = AddRoot("a");
    const auto Leave = [](bool&) {};
    const auto Rename = [&](bool&) { oNode->SetText("path"); };
    const auto Accept = [](bool&, std::string&) {};
    const auto Cancel = [](bool& bCancel, std::string&) { bCancel = true; };
    const struct {
        const char* sName;
        std::function<void(bool&)> fnBefore;
        std::function<void(bool&, std::string&)> fnAfter;
        const char* sEnteredText; // nothing for a cancelled edit
        const char* sText;
        const char* sHeard;
    } aCases[] = {
        {"Accepts", Leave, Accept, "new", "new", "editor "},
        {"ReplacesTheText", Leave, [](bool&, std::string& sText) { sText += "!"; }, "new", "new!", "editor "},
        {"CancelsAfter", Leave, Cancel, "new", "a", "editor "},
        {"FailsAfter", Leave, [](bool&, std::string&) { Fail(-1); }, "new", "new", "editor fails "},
        {"ChangesTheNodeAndCancelsAfter", Leave,
         [&](bool& bCancel, std::string&) {
             oNode->SetText("other");
             bCancel = true;
         },
         "new", "a", "editor "},
        {"TheUserCancels", Leave, Accept, nullptr, "a", "editor "},
        {"CancelsBefore", [](bool& bCancel) { bCancel = true; }, Accept, "new", "a", ""},
        {"FailsBefore", [](bool&) { Fail(-1); }, Accept, "new", "a", "fails "},
        {"ChangesTheTextBefore", Rename, Accept, "new", "new", "editor "},
        {"ChangesTheTextBeforeAndTheUserCancels", Rename, Accept, nullptr, "path", "editor "},
        {"ChangesTheTextAndFailsBefore",
         [&](bool&) {
             oNode->SetText("path");
             Fail(-1);
         },
         Accept, "new", "a", "fails "},
        {"EndsTheEditBefore", [&](bool&) { m_oTree->CancelLabelEdit(); }, Accept, "new", "a", ""},
    };
    for (const auto& oCase : aCases) {
        std::string sHeard;
        oNode->SetText("a");
        m_oTree->SetSelectedItem(oNode);
        const auto oBefore = m_oTree->BeforeLabelEdit.Subscribe(oCase.fnBefore);
        const auto oAfter = m_oTree->AfterLabelEdit.Subscribe(oCase.fnAfter);
        const auto oEditor = m_oTree->EditorRequested.Subscribe([&] { sHeard += "editor "; });
        if (NumberOf([&] { m_oTree->StartLabelEdit(); }) != 0)
            sHeard += "fails ";
        if (!oCase.sEnteredText)
            m_oTree->CancelLabelEdit();
        else if (NumberOf([&] { m_oTree->CommitLabelEdit(oCase.sEnteredText); }) != 0)
            sHeard += "fails ";
        EXPECT_EQ(oNode->Text(), oCase.sText) << oCase.sName;
        EXPECT_EQ(sHeard, oCase.sHeard) << oCase.sName;
        EXPECT_FALSE(m_oTree->IsEditingLabel()) << oCase.sName;
    }
    m_oTree->SetSelectedItem(nullptr);
    m_oTree->StartLabelEdit();
    EXPECT_FALSE(m_oTree->IsEditingLabel());
    m_oTree->SetSelectedItem(oNode);
    m_oTree->StartLabelEdit();
    m_oNodes->Remove("a"); // while it is edited
    EXPECT_FALSE(m_oTree->IsEditingLabel());
}

} // namespace
} // namespace corvane
