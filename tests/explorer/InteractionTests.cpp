// What a user does in the tree, and what the explorer makes of it.

#include "corvane/core/CorvaneMain.h"
#include "corvane/explorer/IExplorerItem.h"
#include "corvane/services/ServiceManager.h"
#include "tests/explorer/ExplorerTest.h"
#include "tests/support/RecordingUtilities.h"

namespace corvane::testing {
namespace {

struct Transition {
    const char* sWhat;
    const char* sTrigger;  // a step, or one of the two below
    const char* sActive;   // the key of the node that was clicked before; empty for none
    const char* sSelected; // the key of the tree's selection; empty for none
    const char* sEvents;
    const char* sActiveAfter; // the item that a double click opens
    const char* sSelectedAfter;
};

const Transition aTransitions[] = {
    {"nothing selected", "nodeclick", "", "", "", "", ""},
    {"the first node", "nodeclick", "", "Leaf.a", "OnActive(E.Root#1/a)", "E.Root#1/a", "Leaf.a"},
    {"an active item without a selection", "nodeclick", "Leaf.a", "", "", "", ""},
    {"the active node again", "nodeclick", "Leaf.a", "Leaf.a", "", "E.Root#1/a", "Leaf.a"},
    {"another node", "nodeclick", "Leaf.a", "Leaf.b", "OnInactive(E.Root#1/a), OnActive(E.Root#1/b)", "E.Root#1/b",
     "Leaf.b"},
    {"beside the nodes, nothing selected", "treeclick", "", "", "", "", ""},
    {"beside the nodes, one selected", "treeclick", "", "Leaf.a", "OnActive(E.Root#1/a)", "E.Root#1/a", "Leaf.a"},
    {"beside the nodes, one active", "treeclick", "Leaf.a", "", "", "E.Root#1/a", ""},
    {"beside the nodes, the active one selected", "treeclick", "Leaf.a", "Leaf.a", "", "E.Root#1/a", "Leaf.a"},
    {"beside the nodes, the selection has drifted", "treeclick", "Leaf.a", "Leaf.b", "", "E.Root#1/a", ""},
    {"to the other tab and back", "tab 1\ntab 0", "Leaf.a", "Leaf.b", "", "E.Root#1/a", "Leaf.b"},
    {"the active item is deleted", "delete", "Leaf.a", "Leaf.b", "", "", "Leaf.b"},
    {"all is cleared", "clear", "Leaf.a", "Leaf.a",
     "onRemove(E.Root#1), onRemove(E.Root#1/a), onRemove(E.Root#1/b), onRemove(E.Other#1), onRemove(E.Other#1/x)", "",
     ""},
};

class Interaction : public ExplorerTest {
protected:
    void Pull(const std::string& sTrigger) {
        if (sTrigger == "nodeclick")
            Tree()->NodeClick.Raise(Tree()->SelectedItem());
        else if (sTrigger == "delete")
            m_oApplication.Explorer()->DeleteFromExplorer(m_oActive);
        else
            m_oApplication.Take(sTrigger);
    }
    Ref<Object> m_oActive;
};

TEST_F(Interaction, EachTransitionOfTheActiveItem) {
    for (const auto& o : aTransitions) {
        SCOPED_TRACE(o.sWhat);
        Populate();
        const auto oHeard =
            m_oApplication.Explorer()->OnActive.Subscribe([this](const Ref<Object>& oItem) { m_oActive = oItem; });
        if (*o.sActive)
            m_oApplication.Take(std::string("node 0 ") + o.sActive);
        Tree()->SetSelectedItem(*o.sSelected ? Tree()->GetNodes()->Item(o.sSelected) : Ref<Node>());
        (void)m_oApplication.TakeCalls();

        Pull(o.sTrigger);
        Lines aEvents;
        for (const auto& sEvent : Split(o.sEvents))
            aEvents.push_back("Explorer " + sEvent);
        EXPECT_EQ(m_oApplication.TakeCalls(), aEvents);
        EXPECT_EQ(Selected(), o.sSelectedAfter);
        const std::string sActive = o.sActiveAfter;
        EXPECT_EQ(After("dblclick"),
                  sActive.empty() ? Lines() : (Lines{sActive + " DoOpen(Open)", "Explorer OnOpen(" + sActive + ")"}));
        EXPECT_EQ(m_oApplication.TakeLog(), Lines());
        m_oActive = nullptr;
    }
}

TEST_F(Interaction, TheSameKeyInAnotherTreeCountsAsTheActiveNode) {
    Start(R"(<ExplorerItems>
        <ExplorerItem Name="One" Type="Folder" ProgID="E.One"/><ExplorerItem Name="Two" Type="Folder" ProgID="E.Two"/>
        <ExplorerItem Name="Box1" Type="FolderChild" Parent="One"/>
        <ExplorerItem Name="Box2" Type="FolderChild" Parent="Two"/></ExplorerItems>)",
          R"({"objects": {"E.One": {"children": [{"name": "x"}]}, "E.Two": {"children": [{"name": "X"}]}}})");
    (void)After("populate\nnode 0 x\nselect 0");
    EXPECT_EQ(After("tab 1\nnode 1 X"), Lines());
    EXPECT_EQ(Selected(), "x"); // of the old tree
    EXPECT_EQ(After("node 1 Two"), (Lines{"Explorer OnInactive(E.One#1/x)", "Explorer OnActive(E.Two#1)"}));
    EXPECT_EQ(Selected(), "");
}

TEST_F(Interaction, APlainRightButtonAsksForTheMenuOfTheActiveItem) {
    Populate();
    EXPECT_EQ(After("rightclick"), Lines());
    (void)After("node 0 Leaf.a\nselect 0 Leaf.b");
    Tree()->MouseUp.Raise(LeftButton, NoShift, 0, 0);
    Tree()->MouseUp.Raise(RightButton, CtrlKey, 0, 0);
    EXPECT_EQ(m_oApplication.TakeCalls(), Lines());
    EXPECT_EQ(After("rightclick"), Lines{"Explorer OnContextMenu(E.Root#1/a)"});
    EXPECT_EQ(m_oApplication.Host().Recorded().popups, Lines{"Context.Leaf"});
}

TEST_F(Interaction, APressMovesTheSelectionAlone) {
    Populate();
    (void)After("node 0 Leaf.a");
    const auto oHit = Tree()->HitTestRequested.Subscribe(
        [this](Single x, Single, Ref<Node>& nod) { nod = x < 10 ? Tree()->GetNodes()->Item("Leaf.b") : Ref<Node>(); });
    Tree()->MouseDown.Raise(MiddleButton, ShiftKey, 5, 0);
    EXPECT_EQ(Selected(), "Leaf.b");
    Tree()->MouseDown.Raise(LeftButton, NoShift, 50, 0); // beside the nodes
    EXPECT_EQ(Selected(), "Leaf.b");
    EXPECT_EQ(m_oApplication.TakeCalls(), Lines());
}

TEST_F(Interaction, ADoubleClickDuringAnotherIsDropped) {
    Populate();
    (void)After("node 0 Root");
    bool bFails = false;
    const auto oOpen = m_oApplication.Explorer()->OnOpen.Subscribe([&](const Ref<Object>&) {
        m_oApplication.Take("dblclick");
        if (bFails)
            Fail(55);
    });
    EXPECT_EQ(After("dblclick"), Lines{"Explorer OnOpen(E.Root#1)"});
    bFails = true;
    EXPECT_EQ(After("dblclick"), Lines{"Explorer OnOpen(E.Root#1)"});
    EXPECT_EQ(After("dblclick"), Lines{"Explorer OnOpen(E.Root#1)"}); // a failure doesn't leave it shut
    const std::string sLine = "ExplorerManager.m_tvwActiveTreeView_DblClick 55";
    EXPECT_EQ(m_oApplication.TakeLog(), (Lines{sLine, sLine}));
    EXPECT_TRUE(m_oApplication.Host().Recorded().log.back().shown);
    EXPECT_FALSE(m_oApplication.Host().FirstFailure()); // it goes no further
}

struct Renaming {
    const char* sWhat;
    const char* sBefore; // steps
    const char* sText;
    const char* sCalls; // of the item
    std::size_t iTab;
    const char* sKey; // of the selected node afterwards
    const char* sLabel;
    const char* sMessage;
};

TEST_F(Interaction, Renaming) {
    const Renaming aRenamings[] = {
        {"accepted", "node 0 Leaf.a", "z", "OnBeforeRename(a), OnAfterRename(z), OnDisplayName(z)", 0, "Leaf.z", "z",
         ""},
        {"an empty name is accepted, too", "node 0 Leaf.a", "", "OnBeforeRename(a), OnAfterRename(), OnDisplayName()",
         0, "Leaf.", "", ""},
        {"refused by the definition", "tab 1\nnode 1 Fixed.x", "y", "", 1, "Fixed.x", "x", ""},
        {"refused for a name that is there", "node 0 Leaf.a", "B",
         "OnBeforeRename(a), OnAfterRename(B), OnAfterRename(a)", 0, "Leaf.a", "a", "B already exists"},
        {"another case alone is no other name", "node 0 Leaf.a", "A", "OnBeforeRename(a)", 0, "Leaf.a", "A", ""},
    };
    for (const auto& o : aRenamings) {
        SCOPED_TRACE(o.sWhat);
        Populate();
        (void)After(o.sBefore);
        Lines aCalls;
        for (const auto& sCall : Split(o.sCalls))
            aCalls.push_back("E.Root#1/a " + sCall);
        EXPECT_EQ(After(std::string("rename ") + o.sText), aCalls);
        EXPECT_EQ(Tree(o.iTab)->SelectedItem()->Key(), o.sKey);
        EXPECT_EQ(Tree(o.iTab)->SelectedItem()->Text(), o.sLabel);
        const auto& aMessages = m_oApplication.Host().Recorded().messages;
        ASSERT_EQ(aMessages.size(), *o.sMessage ? 1U : 0U);
        if (*o.sMessage) {
            EXPECT_EQ(aMessages[0].text, o.sMessage);
            EXPECT_EQ(aMessages[0].title, "Rename");
        }
        EXPECT_EQ(m_oApplication.TakeLog(), Lines());
    }
}

TEST_F(Interaction, RenamingWithoutAnActiveItemFails) {
    Populate();
    EXPECT_EQ(After("select 0 Leaf.a\nrename z"), Lines());
    const Lines aLog = m_oApplication.TakeLog();
    ASSERT_FALSE(aLog.empty());
    EXPECT_EQ(aLog[0], "ExplorerManager.m_tvwActiveTreeView_BeforeLabelEdit 91");
    EXPECT_EQ(Selected(), "Leaf.a"); // its key is as before
    EXPECT_FALSE(m_oApplication.Host().FirstFailure());
}

TEST_F(Interaction, ARenameThatFailsLeavesWhatWasTyped) {
    Start(sItems, R"({"objects": {"E.Root": {"children": [
        {"name": "a", "fail": {"OnAfterRename": {"number": 77}}}]}}})");
    m_oApplication.Take("populate\nnode 0 Leaf.a\nrename z");
    EXPECT_EQ(Tree()->SelectedItem()->Text(), "z");
    EXPECT_EQ(Selected(), "Leaf.a");
    EXPECT_EQ(m_oApplication.TakeLog(), (Lines{"ExplorerItemBase.IExplorerItem_Name (Let) 77",
                                               "ExplorerManager.m_tvwActiveTreeView_AfterLabelEdit 77"}));
    m_oApplication.Take("node 0 Root\ndblclick\nnode 0 Leaf.a");
    EXPECT_EQ(m_oApplication.TakeLog(), Lines());
}

TEST_F(Interaction, ASecondStartRenameEndsTheFirst) {
    Populate();
    m_oApplication.Take("node 0 Leaf.a");
    const auto oExplorer = m_oApplication.Explorer();
    Lines aEditors;
    const auto oRequested =
        Tree()->EditorRequested.Subscribe([&] { aEditors.push_back(Tree()->EditedNode()->Key() + " opens"); });
    const auto oEnd = Tree()->EditorEndRequested.Subscribe([&] {
        aEditors.push_back(Tree()->EditedNode()->Key() + " ends");
        Tree()->CommitLabelEdit("typed");
    });
    Ref<Object> aNew[2];
    for (auto& oNew : aNew) {
        oNew = NewItem();
        CorvaneMain::QueryExplorerItem(oNew)->SetName(aEditors.empty() ? "m" : "n");
        oExplorer->AddToExplorer(oNew, "Leaf");
        oExplorer->StartRename(oNew);
        oExplorer->StartRename(oNew); // is open already
    }
    EXPECT_EQ(aEditors, (Lines{"Leaf.m opens", "Leaf.m ends", "Leaf.n opens"}));
    Tree()->SetSelectedItem(Tree()->GetNodes()->Item("Leaf.b"));
    Tree()->StartLabelEdit(); // the control's own
    EXPECT_EQ(Tree()->EditedNode()->Key(), "Leaf.b");
    Tree()->CancelLabelEdit();
}

TEST_F(Interaction, StartRenameSelectsButEditsWhatIsActive) {
    Populate();
    m_oApplication.Take("node 0 Leaf.a");
    const Ref<Object> oNew = NewItem();
    m_oApplication.Explorer()->AddToExplorer(oNew, "Leaf");
    (void)m_oApplication.TakeCalls();
    m_oApplication.Explorer()->StartRename(oNew);
    EXPECT_EQ(m_oApplication.TakeCalls(), Lines{"E.Root#1/a OnBeforeRename(a)"});
    EXPECT_EQ(Selected(), "Leaf.n");
    EXPECT_TRUE(Tree()->IsEditingLabel());
    Tree()->CancelLabelEdit();
    EXPECT_EQ(After("dblclick"), (Lines{"E.Root#1/a DoOpen(Open)", "Explorer OnOpen(E.Root#1/a)"}));
}

TEST_F(Interaction, AddingOneItem) {
    Start();
    EXPECT_EQ(NumberOf([&] { m_oApplication.Explorer()->AddToExplorer(NewItem(), "Leaf"); }), 91); // not populated
    (void)m_oApplication.TakeLog();
    (void)After("populate\ntab 1");
    const auto Add = [&](const std::string& sDefinition, const Ref<Object>& oFolder = nullptr) {
        return NumberOf([&] { m_oApplication.Explorer()->AddToExplorer(NewItem(), sDefinition, oFolder); });
    };
    EXPECT_EQ(Add("leaf"), 0); // into a tree that isn't in front
    EXPECT_EQ(m_oApplication.TakeCalls(),
              (Lines{"E.New#2 Initialize", "Explorer onAdd(E.New#2)", "E.New#2 OnDisplayName(n)"}));
    EXPECT_EQ(m_oApplication.Nodes(0), (Lines{"Root", " Leaf.a", " Leaf.b", " Leaf.n"}));
    EXPECT_EQ(Add("Nobody"), 0);
    EXPECT_EQ(m_oApplication.TakeCalls(), Lines());
    EXPECT_EQ(m_oApplication.TakeLog(), Lines());

    EXPECT_EQ(Add("Root"), 5); // no tree is found for a top-level definition
    EXPECT_EQ(m_oApplication.TakeCalls(), Lines());
    EXPECT_EQ(Add("Leaf"), 457); // initialised and announced all the same
    EXPECT_EQ(m_oApplication.TakeCalls().size(), 3U);
    EXPECT_EQ(Add("Fixed", NewItem("E.New")), 5); // the tree is the definition's, and the folder isn't in it
    EXPECT_EQ(Add("Fixed", NewItem("E.Folder")), 0);
    EXPECT_EQ(m_oApplication.Nodes(1), (Lines{"Other", " Fixed.x", " Fixed.n"}));
}

TEST_F(Interaction, DeletingItemsAndItsBlindSpots) {
    Populate();
    const auto oExplorer = m_oApplication.Explorer();
    const Ref<Object> oNew = NewItem();
    oExplorer->AddToExplorer(oNew, "Leaf");
    m_oApplication.Take("node 0 Leaf.n");
    EXPECT_TRUE(m_oApplication.MasterTool("File.Print")->Visible());
    (void)m_oApplication.TakeCalls();

    oExplorer->DeleteFromExplorer(oNew);
    EXPECT_EQ(m_oApplication.TakeCalls(), Lines()); // no one is notified
    EXPECT_EQ(m_oApplication.Nodes(), (Lines{"Root", " Leaf.a", " Leaf.b"}));
    EXPECT_TRUE(m_oApplication.MasterTool("File.Print")->Visible()); // its actions stay attached
    EXPECT_EQ(m_oApplication.Click("File.Print"), 0);
    EXPECT_EQ(m_oApplication.TakeCalls(), Lines{"E.New#1 DoPrint"});
    EXPECT_EQ(NumberOf([&] { oExplorer->DeleteFromExplorer(oNew); }), 5);
    EXPECT_EQ(After("node 0 Leaf.a"), Lines{"Explorer OnActive(E.Root#1/a)"});

    // An item that has renamed itself isn't found, but its record is gone.
    const Ref<Object> oRenamed = NewItem();
    oExplorer->AddToExplorer(oRenamed, "Leaf");
    m_oApplication.Take("node 0 Leaf.n");
    CorvaneMain::QueryExplorerItem(oRenamed)->SetName("other");
    EXPECT_EQ(NumberOf([&] { oExplorer->DeleteFromExplorer(oRenamed); }), 5);
    EXPECT_EQ(m_oApplication.Nodes().size(), 4U);
    (void)m_oApplication.TakeLog();
    m_oApplication.Take("rename z"); // the item is looked for first
    const Lines aLog = m_oApplication.TakeLog();
    ASSERT_GE(aLog.size(), 3U);
    EXPECT_EQ(aLog[1], "ExplorerManager.ActiveExplorerItem (Get) 5");
    (void)m_oApplication.TakeCalls();
    EXPECT_EQ(After("clear").size(), 5U); // neither of the two is among them
}

} // namespace
} // namespace corvane::testing
