#include "tests/explorer_panel/ExplorerFixture.h"

#include <QApplication>
#include <QTimer>
#include <gtest/gtest.h>

namespace corvane::desktop {
namespace {

TEST(ExplorerMouse, ReportsInTheOrderOfTheControl) {
    struct Case {
        const char* name;
        std::function<void(ExplorerFixture&)> work;
        const char* reported;
        const char* selected;
    };
    const Case cases[] = {
        {"LeftOnANode", [](ExplorerFixture& o) { o.Click(Qt::LeftButton, o.PointOf("B")); },
         "down1/0 node:B click up1/0", "B"},
        {"LeftBesideAllNodes", [](ExplorerFixture& o) { o.Click(Qt::LeftButton, o.Outside()); }, "down1/0 click up1/0",
         "-"},
        {"PressAlone", [](ExplorerFixture& o) { o.Press(Qt::LeftButton, o.PointOf("B")); }, "down1/0", "B"},
        {"ReleasedBeside",
         [](ExplorerFixture& o) {
             o.Press(Qt::LeftButton, o.PointOf("B"));
             o.Release(Qt::LeftButton, o.Outside());
         },
         "down1/0 node:B click up1/0", "B"},
        {"ReleasedOverAnother",
         [](ExplorerFixture& o) {
             o.Press(Qt::LeftButton, o.PointOf("B"));
             o.Release(Qt::LeftButton, o.PointOf("C"));
         },
         "down1/0 node:B click up1/0", "B"},
        {"RightOnANode", [](ExplorerFixture& o) { o.Click(Qt::RightButton, o.PointOf("C")); }, "down2/0 node:C up2/0",
         "C"},
        {"RightBesideAllNodes", [](ExplorerFixture& o) { o.Click(Qt::RightButton, o.Outside()); }, "down2/0 up2/0",
         "-"},
        {"MiddleOnANode", [](ExplorerFixture& o) { o.Click(Qt::MiddleButton, o.PointOf("C")); }, "down4/0 up4/0", "C"},
        {"WithKeys",
         [](ExplorerFixture& o) {
             o.Click(Qt::RightButton, o.PointOf("C"), Qt::ControlModifier);
             o.Click(Qt::RightButton, o.PointOf("C"), Qt::ShiftModifier | Qt::AltModifier);
         },
         "down2/2 node:C up2/2 down2/5 node:C up2/5", "C"},
        {"DoubleClick", [](ExplorerFixture& o) { o.DoubleClick(o.PointOf("A")); },
         "down1/0 node:A click up1/0 open:A up1/0", "A"},
        {"DoubleClickBesideOpensNothing",
         [](ExplorerFixture& o) {
             o.Click(Qt::LeftButton, o.PointOf("A"));
             o.Reported();
             o.DoubleClick(o.Outside());
         },
         "down1/0 click up1/0 down1/0 click up1/0", "A"},
    };
    for (const Case& testCase : cases) {
        SCOPED_TRACE(testCase.name);
        ExplorerFixture room;
        room.Fill();
        testCase.work(room);
        ExplorerFixture::Turn();
        EXPECT_EQ(room.Reported(), testCase.reported);
        EXPECT_EQ(room.Selected(), testCase.selected);
        if (room.Selected() != "-") {
            EXPECT_EQ(room.Shown(), testCase.selected);
        }
    }
}

TEST(ExplorerMouse, BranchOpensAndClosesAndHitsNoNode) {
    ExplorerFixture room;
    room.Fill();
    const QPoint branch(room.View().visualRect(room.View().IndexOf(room.NodeOf("Root").Get())).left() - 5,
                        room.PointOf("Root").y());
    room.Click(Qt::LeftButton, branch);
    EXPECT_FALSE(room.NodeOf("Root")->Expanded());
    EXPECT_EQ(room.Rows(), "Root ");
    room.Click(Qt::LeftButton, branch);
    EXPECT_TRUE(room.NodeOf("Root")->Expanded());
    EXPECT_EQ(room.Reported(), "down1/0 click up1/0 down1/0 click up1/0");
}

TEST(ExplorerMouse, SlowSecondClickRenames) {
    ExplorerFixture room;
    room.Fill();
    QApplication::setDoubleClickInterval(40);
    room.View().setFocus();
    room.Click(Qt::LeftButton, room.PointOf("B"));
    bool later = false; // an edit would have begun before
    QTimer::singleShot(80, [&] { later = true; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return later; }));
    EXPECT_EQ(room.Editor(), nullptr);
    room.Click(Qt::LeftButton, room.PointOf("B"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return room.Editor() != nullptr; }));
}

TEST(ExplorerMouse, FailureOfASubscriberIsCaughtAndTheTreeGoesOn) {
    ExplorerFixture room;
    room.Fill();
    {
        const auto failing = room.Tree()->NodeClick.Subscribe([](const Ref<Node>&) { Fail(5, "no way"); });
        room.Click(Qt::LeftButton, room.PointOf("A"));
    }
    EXPECT_EQ(room.m_failure, "no way");
    room.Reported();
    room.Click(Qt::LeftButton, room.PointOf("B"));
    EXPECT_EQ(room.Reported(), "down1/0 node:B click up1/0");
}

TEST(ExplorerKeys, ReportAsTheMouseDoes) {
    struct Case {
        const char* name;
        std::function<void(ExplorerFixture&)> work;
        const char* reported;
    };
    const Case cases[] = {
        {"Down", [](ExplorerFixture& o) { o.Key(Qt::Key_Down); }, "node:B"},
        {"Home", [](ExplorerFixture& o) { o.Key(Qt::Key_Home); }, "node:Root"},
        {"End", [](ExplorerFixture& o) { o.Key(Qt::Key_End); }, "node:C"},
        {"PageDown", [](ExplorerFixture& o) { o.Key(Qt::Key_PageDown); }, "node:C"},
        {"TypeAhead", [](ExplorerFixture& o) { QTest::keyClicks(&o.View(), "c"); }, "node:C"},
        {"LeftToTheFolderAndClose",
         [](ExplorerFixture& o) {
             o.Key(Qt::Key_Left);
             o.Key(Qt::Key_Left);
         },
         "node:Root"},
        {"Enter", [](ExplorerFixture& o) { o.Key(Qt::Key_Return); }, "node:A open:A"},
        {"MenuKey", [](ExplorerFixture& o) { o.Key(Qt::Key_Menu); }, "node:A up2/0"},
        {"ShiftF10", [](ExplorerFixture& o) { o.Key(Qt::Key_F10, Qt::ShiftModifier); }, "node:A up2/0"},
        {"AtTheEndNothingMoves",
         [](ExplorerFixture& o) {
             o.Key(Qt::Key_End);
             o.Reported();
             o.Key(Qt::Key_Down);
         },
         ""},
    };
    for (const Case& testCase : cases) {
        SCOPED_TRACE(testCase.name);
        ExplorerFixture room;
        room.Fill();
        room.View().setFocus();
        room.NodeOf("A")->SetSelected(true);
        ExplorerFixture::Turn();
        testCase.work(room);
        EXPECT_EQ(room.Reported(), testCase.reported);
    }
}

// One act of a user or the program: "ctrl C" clicks the item C with Ctrl, "key Shift+Down" presses keys.
void Act(ExplorerFixture& room, const std::string& act) {
    const std::string word = act.substr(0, act.find(' '));
    const std::string name = act.substr(act.find(' ') + 1);
    if (word == "key") {
        const QKeyCombination keys = QKeySequence::fromString(QString::fromStdString(name))[0];
        return room.Key(keys.key(), keys.keyboardModifiers());
    }
    if (word == "filter")
        return room.View().SetFilter(QString::fromStdString(name));
    if (word == "remove")
        return room.Tree()->GetNodes()->Remove(name);
    if (word == "select")
        return room.NodeOf(name)->SetSelected(true);
    if (word == "collapse")
        return room.View().collapse(room.View().IndexOf(room.NodeOf(name).Get()));
    room.Click(word == "right" ? Qt::RightButton : Qt::LeftButton, room.PointOf(name),
               word == "ctrl"    ? Qt::ControlModifier
               : word == "shift" ? Qt::ShiftModifier
                                 : Qt::NoModifier);
}

// The library's selected item first, then all that are selected as the tree shows it. What is reported is that of the
// last act.
TEST(ExplorerSeveral, AreSelectedBesideTheOneOfTheLibrary) {
    struct Case {
        const char* name;
        std::vector<std::string> acts;
        const char* selected;
        const char* reported;
    };
    const Case cases[] = {
        {"CtrlAdds", {"ctrl C"}, "C: A C", "down1/2 node:C click up1/2"},
        {"CtrlTakesOutWhatTheLibraryHas", {"ctrl C", "ctrl B", "ctrl B"}, "A: A C", "node:A"},
        {"CtrlTakesOutAnother", {"ctrl C", "ctrl B", "ctrl A"}, "B: B C", ""},
        {"CtrlLeavesTheLastOne", {"ctrl A"}, "A: A", ""},
        {"ShiftTakesARange", {"shift C"}, "C: A B C", "down1/1 node:C click up1/1"},
        {"PlainClickWithinLeavesOne", {"ctrl C", "click A"}, "A: A", "down1/0 node:A click up1/0"},
        {"RightClickWithinKeepsAll", {"ctrl C", "right A"}, "A: A C", "down2/0 node:A up2/0"},
        {"RightClickElsewhereLeavesOne", {"ctrl C", "right B"}, "B: B", "down2/0 node:B up2/0"},
        {"ShiftDown", {"key Shift+Down"}, "B: A B", "node:B"},
        {"ShiftEnd", {"key Shift+Down", "key Shift+End"}, "C: A B C", "node:C"},
        {"ShiftUp", {"key Shift+End", "key Shift+Up"}, "B: A B", "node:B"},
        {"CtrlArrowsAndSpace", {"key Ctrl+Down", "key Ctrl+Down", "key Ctrl+Space"}, "C: A C", "node:C"},
        {"ArrowsGoOnFromTheLastClick", {"ctrl B", "key Down"}, "C: C", "node:C"},
        {"AllOfTheFolder", {"key Ctrl+A"}, "A: A B C", ""},
        {"AnArrowLeavesOne", {"key Ctrl+A", "key Down"}, "B: B", "node:B"},
        {"CodeThatSelectsLeavesOne", {"ctrl C", "select B"}, "B: B", ""},
        {"WhatGoesIsNotSelected", {"ctrl C", "ctrl B", "remove A"}, "B: B C", ""},
        {"WhatTheFilterHidesIsNotSelected", {"key Ctrl+A", "filter A"}, "A: A", ""},
        {"WhatAFolderHidesIsNotSelected", {"ctrl Root", "collapse Root"}, "Root: Root", ""},
    };
    for (const Case& testCase : cases) {
        SCOPED_TRACE(testCase.name);
        ExplorerFixture room;
        room.Fill();
        room.View().setFocus();
        room.Click(Qt::LeftButton, room.PointOf("A"));
        room.Reported();
        for (const std::string& act : testCase.acts) {
            room.Reported();
            Act(room, act);
        }
        ExplorerFixture::Turn();
        std::string selected = room.Selected() + ":";
        QModelIndexList shown = room.View().selectionModel()->selectedIndexes();
        std::sort(shown.begin(), shown.end(),
                  [](const auto& a, const auto& b) { return a.data().toString() < b.data().toString(); });
        for (const QModelIndex& index : shown)
            selected += " " + index.data().toString().toStdString();
        EXPECT_EQ(selected, testCase.selected);
        EXPECT_EQ(room.Reported(), testCase.reported);
    }
}

TEST(ExplorerKeys, FocusAloneSelectsNothing) {
    ExplorerFixture room;
    room.Fill();
    room.View().setFocus(Qt::TabFocusReason);
    ExplorerFixture::Turn();
    EXPECT_EQ(room.Selected(), "-");
    EXPECT_EQ(room.Reported(), "");
}

TEST(ExplorerMenu, BelongsToThePointerOrToTheItem) {
    ExplorerFixture room;
    room.Fill();
    QWidget* viewport = room.View().viewport();
    QPoint placeAtRelease;
    const auto up =
        room.Tree()->MouseUp.Subscribe([&](Long, Long, Single, Single) { placeAtRelease = room.m_popupPlace; });
    room.Click(Qt::RightButton, room.PointOf("B"));
    EXPECT_EQ(placeAtRelease, viewport->mapToGlobal(room.PointOf("B")));
    room.Key(Qt::Key_Menu);
    EXPECT_EQ(placeAtRelease, viewport->mapToGlobal(room.View().visualRect(room.View().currentIndex()).bottomLeft()));
}

TEST(ExplorerTabs, PersonsChangeIsToldToTheStripAndTheStripsIsFollowed) {
    ExplorerFixture room;
    std::vector<Long> previous;
    const auto click = room.m_strip->Click.Subscribe([&](Long previouCount) { previous.push_back(previouCount); });
    QTabBar* bar = room.m_panel.TabBar();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(1).center());
    EXPECT_EQ(room.m_strip->Tab(), 1);
    EXPECT_EQ(room.m_panel.CurrentPage(), room.m_panel.Page(1));
    EXPECT_EQ(previous, std::vector<Long>{0});

    room.m_strip->SetTab(0);
    room.m_strip->SetCaption("R&D");
    ExplorerFixture::Turn();
    EXPECT_EQ(bar->currentIndex(), 0);
    EXPECT_EQ(bar->tabText(0), "R&&D");
    EXPECT_EQ(room.m_panel.CurrentPage(), room.m_panel.Page(0));
    EXPECT_EQ(previous.size(), 1u);
}

TEST(ExplorerTabs, ResizeTellsTheStripInTwipsBeforeTheForm) {
    ExplorerFixture room;
    std::string bounds;
    const auto resize = room.m_form->Resize.Subscribe([&] {
        bounds = std::to_string(std::lround(room.m_strip->Width())) + "x" +
                 std::to_string(std::lround(room.m_strip->Height()));
    });
    room.m_panel.resize(300, 500);
    ExplorerFixture::Turn();
    EXPECT_EQ(bounds, "4500x7500");
}

class ExplorerRename : public testing::Test {
protected:
    ExplorerRename() {
        room.Fill();
        room.View().setFocus();
        room.NodeOf("B")->SetSelected(true);
        before = room.Tree()->BeforeLabelEdit.Subscribe([this](bool& cancel) {
            cancel = forbidden;
            room.Tree()->SelectedItem()->SetText("edit text");
        });
        after = room.Tree()->AfterLabelEdit.Subscribe([this](bool& cancel, std::string& text) {
            editorOpenAtCommit = room.Editor() && room.Editor()->isVisible();
            typed = text;
            cancel = text == "taken";
            text = "<" + text + ">";
        });
    }
    // F2, and then the text in the editor.
    void Type(const QString& text) {
        room.Key(Qt::Key_F2);
        ASSERT_NE(room.Editor(), nullptr);
        EXPECT_EQ(room.Editor()->text(), "edit text");
        EXPECT_EQ(room.Editor()->selectedText(), "edit text");
        QTest::keyClicks(room.Editor(), text);
    }
    void End(Qt::Key key) {
        QTest::keyClick(room.Editor(), key);
        ExplorerFixture::Turn();
    }
    ExplorerFixture room;
    bool forbidden = false;
    bool editorOpenAtCommit = false;
    std::string typed = "-";
    Subscription before;
    Subscription after;
};

TEST_F(ExplorerRename, EnterCommits) {
    Type("new");
    (void)room.Reported();
    End(Qt::Key_Return);
    EXPECT_EQ(room.Reported(), "") << "the key that ends the edit doesn't open the item";
    EXPECT_EQ(room.NodeOf("B")->Text(), "<new>");
    EXPECT_FALSE(editorOpenAtCommit);
    EXPECT_FALSE(room.Tree()->IsEditingLabel());
    EXPECT_EQ(room.Rows(), "Root .A .<new> .C ");
}

TEST_F(ExplorerRename, EscapeCancels) {
    Type("new");
    End(Qt::Key_Escape);
    EXPECT_EQ(room.NodeOf("B")->Text(), "edit text"); // what the edit began with
    EXPECT_EQ(typed, "-");
}

TEST_F(ExplorerRename, FocusLossCommits) {
    Type("new");
    room.Page().Filter()->setFocus();
    ExplorerFixture::Turn();
    EXPECT_EQ(room.NodeOf("B")->Text(), "<new>");
}

TEST_F(ExplorerRename, PressElsewhereCommitsBeforeTheSelectionMoves) {
    Type("new");
    room.Click(Qt::LeftButton, room.PointOf("C"));
    EXPECT_EQ(room.NodeOf("B")->Text(), "<new>");
    EXPECT_EQ(room.Selected(), "C");
}

TEST_F(ExplorerRename, RefusedTextPutsTheLabelBackThatTheEditBeganWith) {
    Type("taken");
    End(Qt::Key_Return);
    EXPECT_EQ(typed, "taken");
    EXPECT_EQ(room.Rows(), "Root .A .edit text .C ");
    EXPECT_EQ(room.Editor(), nullptr);
}

TEST_F(ExplorerRename, ForbiddenOpensNoEditor) {
    forbidden = true;
    room.Key(Qt::Key_F2);
    EXPECT_EQ(room.Editor(), nullptr);
    EXPECT_EQ(room.NodeOf("B")->Text(), "B");
}

TEST_F(ExplorerRename, NewNodeIsRenamedInTheSameTurnAndSurvivesItsEnd) {
    room.Add("Root", "D");
    room.Tree()->SetSelectedItem(room.NodeOf("D"));
    room.Tree()->StartLabelEdit();
    ExplorerFixture::Turn();
    ASSERT_NE(room.Editor(), nullptr);
    End(Qt::Key_Return);
    EXPECT_EQ(room.NodeOf("D")->Text(), "<edit text>");
}

TEST_F(ExplorerRename, NodeThatGoesTakesTheEditorAlong) {
    Type("new");
    room.Tree()->GetNodes()->Remove("B");
    ExplorerFixture::Turn();
    EXPECT_EQ(room.Editor(), nullptr);
    EXPECT_EQ(room.Rows(), "Root .A .C ");
    room.Key(Qt::Key_Home);
    room.Key(Qt::Key_F2);
    EXPECT_NE(room.Editor(), nullptr);
}

TEST_F(ExplorerRename, TreeThatNobodySeesEndsTheEditAtOnce) {
    room.m_strip->SetTab(1);
    ExplorerFixture::Turn();
    room.Tree()->StartLabelEdit();
    EXPECT_FALSE(room.Tree()->IsEditingLabel());
    EXPECT_EQ(typed, "-");
}

} // namespace
} // namespace corvane::desktop
