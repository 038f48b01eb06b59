#include "tests/explorer_panel/ExplorerRoom.h"

#include <QApplication>
#include <gtest/gtest.h>

namespace corvane::desktop {
namespace {

TEST(ExplorerMouse, ReportsInTheOrderOfTheControl) {
    struct Case {
        const char* sName;
        std::function<void(Room&)> fnDo;
        const char* sReported;
        const char* sSelected;
    };
    const Case aCases[] = {
        {"LeftOnANode", [](Room& o) { o.Click(Qt::LeftButton, o.PointOf("B")); }, "down1/0 node:B click up1/0", "B"},
        {"LeftBesideAllNodes", [](Room& o) { o.Click(Qt::LeftButton, o.Outside()); }, "down1/0 click up1/0", "-"},
        {"PressAlone", [](Room& o) { o.Press(Qt::LeftButton, o.PointOf("B")); }, "down1/0", "B"},
        {"ReleasedBeside",
         [](Room& o) {
             o.Press(Qt::LeftButton, o.PointOf("B"));
             o.Release(Qt::LeftButton, o.Outside());
         },
         "down1/0 node:B click up1/0", "B"},
        {"ReleasedOverAnother",
         [](Room& o) {
             o.Press(Qt::LeftButton, o.PointOf("B"));
             o.Release(Qt::LeftButton, o.PointOf("C"));
         },
         "down1/0 node:B click up1/0", "B"},
        {"RightOnANode", [](Room& o) { o.Click(Qt::RightButton, o.PointOf("C")); }, "down2/0 node:C up2/0", "C"},
        {"RightBesideAllNodes", [](Room& o) { o.Click(Qt::RightButton, o.Outside()); }, "down2/0 up2/0", "-"},
        {"MiddleOnANode", [](Room& o) { o.Click(Qt::MiddleButton, o.PointOf("C")); }, "down4/0 up4/0", "C"},
        {"WithKeys",
         [](Room& o) {
             o.Click(Qt::RightButton, o.PointOf("C"), Qt::ControlModifier);
             o.Click(Qt::RightButton, o.PointOf("C"), Qt::ShiftModifier | Qt::AltModifier);
         },
         "down2/2 node:C up2/2 down2/5 node:C up2/5", "C"},
        {"DoubleClick", [](Room& o) { o.DoubleClick(o.PointOf("A")); }, "down1/0 node:A click up1/0 open:A up1/0", "A"},
        {"DoubleClickBesideOpensNothing",
         [](Room& o) {
             o.Click(Qt::LeftButton, o.PointOf("A"));
             o.Reported();
             o.DoubleClick(o.Outside());
         },
         "down1/0 click up1/0 down1/0 click up1/0", "A"},
    };
    for (const Case& oCase : aCases) {
        SCOPED_TRACE(oCase.sName);
        Room oRoom;
        oRoom.Fill();
        oCase.fnDo(oRoom);
        Room::Turn();
        EXPECT_EQ(oRoom.Reported(), oCase.sReported);
        EXPECT_EQ(oRoom.Selected(), oCase.sSelected);
        if (oRoom.Selected() != "-") {
            EXPECT_EQ(oRoom.Shown(), oCase.sSelected);
        }
    }
}

TEST(ExplorerMouse, BranchOpensAndClosesAndHitsNoNode) {
    Room oRoom;
    oRoom.Fill();
    const QPoint oBranch(oRoom.View().visualRect(oRoom.View().IndexOf(oRoom.NodeOf("Root").Get())).left() - 5,
                         oRoom.PointOf("Root").y());
    oRoom.Click(Qt::LeftButton, oBranch);
    EXPECT_FALSE(oRoom.NodeOf("Root")->Expanded());
    EXPECT_EQ(oRoom.Rows(), "Root ");
    oRoom.Click(Qt::LeftButton, oBranch);
    EXPECT_TRUE(oRoom.NodeOf("Root")->Expanded());
    EXPECT_EQ(oRoom.Reported(), "down1/0 click up1/0 down1/0 click up1/0");
}

TEST(ExplorerMouse, SlowSecondClickRenames) {
    Room oRoom;
    oRoom.Fill();
    QApplication::setDoubleClickInterval(40);
    oRoom.View().setFocus();
    oRoom.Click(Qt::LeftButton, oRoom.PointOf("B"));
    QTest::qWait(120);
    EXPECT_EQ(oRoom.Editor(), nullptr);
    oRoom.Click(Qt::LeftButton, oRoom.PointOf("B"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return oRoom.Editor() != nullptr; }));
}

TEST(ExplorerMouse, FailureOfASubscriberIsCaughtAndTheTreeGoesOn) {
    Room oRoom;
    oRoom.Fill();
    {
        const auto oFailing = oRoom.Tree()->NodeClick.Subscribe([](const Ref<Node>&) { Fail(5, "no way"); });
        oRoom.Click(Qt::LeftButton, oRoom.PointOf("A"));
    }
    EXPECT_EQ(oRoom.m_sFailure, "no way");
    oRoom.Reported();
    oRoom.Click(Qt::LeftButton, oRoom.PointOf("B"));
    EXPECT_EQ(oRoom.Reported(), "down1/0 node:B click up1/0");
}

TEST(ExplorerKeys, ReportAsTheMouseDoes) {
    struct Case {
        const char* sName;
        std::function<void(Room&)> fnDo;
        const char* sReported;
    };
    const Case aCases[] = {
        {"Down", [](Room& o) { o.Key(Qt::Key_Down); }, "node:B"},
        {"Home", [](Room& o) { o.Key(Qt::Key_Home); }, "node:Root"},
        {"End", [](Room& o) { o.Key(Qt::Key_End); }, "node:C"},
        {"PageDown", [](Room& o) { o.Key(Qt::Key_PageDown); }, "node:C"},
        {"TypeAhead", [](Room& o) { QTest::keyClicks(&o.View(), "c"); }, "node:C"},
        {"LeftToTheFolderAndClose",
         [](Room& o) {
             o.Key(Qt::Key_Left);
             o.Key(Qt::Key_Left);
         },
         "node:Root"},
        {"Enter", [](Room& o) { o.Key(Qt::Key_Return); }, "node:A open:A"},
        {"MenuKey", [](Room& o) { o.Key(Qt::Key_Menu); }, "node:A up2/0"},
        {"ShiftF10", [](Room& o) { o.Key(Qt::Key_F10, Qt::ShiftModifier); }, "node:A up2/0"},
        {"AtTheEndNothingMoves",
         [](Room& o) {
             o.Key(Qt::Key_End);
             o.Reported();
             o.Key(Qt::Key_Down);
         },
         ""},
    };
    for (const Case& oCase : aCases) {
        SCOPED_TRACE(oCase.sName);
        Room oRoom;
        oRoom.Fill();
        oRoom.View().setFocus();
        oRoom.NodeOf("A")->SetSelected(true);
        Room::Turn();
        oCase.fnDo(oRoom);
        EXPECT_EQ(oRoom.Reported(), oCase.sReported);
    }
}

TEST(ExplorerKeys, FocusAloneSelectsNothing) {
    Room oRoom;
    oRoom.Fill();
    oRoom.View().setFocus(Qt::TabFocusReason);
    Room::Turn();
    EXPECT_EQ(oRoom.Selected(), "-");
    EXPECT_EQ(oRoom.Reported(), "");
}

TEST(ExplorerMenu, BelongsToThePointerOrToTheItem) {
    Room oRoom;
    oRoom.Fill();
    QWidget* pViewport = oRoom.View().viewport();
    QPoint oPlaceAtRelease;
    const auto oUp =
        oRoom.Tree()->MouseUp.Subscribe([&](Long, Long, Single, Single) { oPlaceAtRelease = oRoom.m_oPopupPlace; });
    oRoom.Click(Qt::RightButton, oRoom.PointOf("B"));
    EXPECT_EQ(oPlaceAtRelease, pViewport->mapToGlobal(oRoom.PointOf("B")));
    oRoom.Key(Qt::Key_Menu);
    EXPECT_EQ(oPlaceAtRelease,
              pViewport->mapToGlobal(oRoom.View().visualRect(oRoom.View().currentIndex()).bottomLeft()));
}

TEST(ExplorerTabs, PersonsChangeIsToldToTheStripAndTheStripsIsFollowed) {
    Room oRoom;
    std::vector<Long> aPrevious;
    const auto oClick = oRoom.m_oStrip->Click.Subscribe([&](Long lPrevious) { aPrevious.push_back(lPrevious); });
    QTabBar* pBar = oRoom.m_oPanel.TabBar();
    QTest::mouseClick(pBar, Qt::LeftButton, {}, pBar->tabRect(1).center());
    EXPECT_EQ(oRoom.m_oStrip->Tab(), 1);
    EXPECT_EQ(oRoom.m_oPanel.CurrentPage(), oRoom.m_oPanel.Page(1));
    EXPECT_EQ(aPrevious, std::vector<Long>{0});

    oRoom.m_oStrip->SetTab(0);
    oRoom.m_oStrip->SetCaption("R&D");
    Room::Turn();
    EXPECT_EQ(pBar->currentIndex(), 0);
    EXPECT_EQ(pBar->tabText(0), "R&&D");
    EXPECT_EQ(oRoom.m_oPanel.CurrentPage(), oRoom.m_oPanel.Page(0));
    EXPECT_EQ(aPrevious.size(), 1u);
}

TEST(ExplorerTabs, ResizeTellsTheStripInTwipsBeforeTheForm) {
    Room oRoom;
    std::string sBounds;
    const auto oResize = oRoom.m_oForm->Resize.Subscribe([&] {
        sBounds = std::to_string(std::lround(oRoom.m_oStrip->Width())) + "x" +
                  std::to_string(std::lround(oRoom.m_oStrip->Height()));
    });
    oRoom.m_oPanel.resize(300, 500);
    Room::Turn();
    EXPECT_EQ(sBounds, "4500x7500");
}

class ExplorerRename : public testing::Test {
protected:
    ExplorerRename() {
        oRoom.Fill();
        oRoom.View().setFocus();
        oRoom.NodeOf("B")->SetSelected(true);
        oBefore = oRoom.Tree()->BeforeLabelEdit.Subscribe([this](bool& bCancel) {
            bCancel = bForbidden;
            oRoom.Tree()->SelectedItem()->SetText("edit text");
        });
        oAfter = oRoom.Tree()->AfterLabelEdit.Subscribe([this](bool& bCancel, std::string& sText) {
            bEditorOpenAtCommit = oRoom.Editor() && oRoom.Editor()->isVisible();
            sTyped = sText;
            bCancel = sText == "taken";
            sText = "<" + sText + ">";
        });
    }
    // F2, and then the text in the editor.
    void Type(const QString& sText) {
        oRoom.Key(Qt::Key_F2);
        ASSERT_NE(oRoom.Editor(), nullptr);
        EXPECT_EQ(oRoom.Editor()->text(), "edit text");
        EXPECT_EQ(oRoom.Editor()->selectedText(), "edit text");
        QTest::keyClicks(oRoom.Editor(), sText);
    }
    void End(Qt::Key eKey) {
        QTest::keyClick(oRoom.Editor(), eKey);
        Room::Turn();
    }
    Room oRoom;
    bool bForbidden = false;
    bool bEditorOpenAtCommit = false;
    std::string sTyped = "-";
    Subscription oBefore;
    Subscription oAfter;
};

TEST_F(ExplorerRename, EnterCommits) {
    Type("new");
    (void)oRoom.Reported();
    End(Qt::Key_Return);
    EXPECT_EQ(oRoom.Reported(), "") << "the key that ends the edit doesn't open the item";
    EXPECT_EQ(oRoom.NodeOf("B")->Text(), "<new>");
    EXPECT_FALSE(bEditorOpenAtCommit);
    EXPECT_FALSE(oRoom.Tree()->IsEditingLabel());
    EXPECT_EQ(oRoom.Rows(), "Root .A .<new> .C ");
}

TEST_F(ExplorerRename, EscapeCancels) {
    Type("new");
    End(Qt::Key_Escape);
    EXPECT_EQ(oRoom.NodeOf("B")->Text(), "edit text"); // what the edit began with
    EXPECT_EQ(sTyped, "-");
}

TEST_F(ExplorerRename, FocusLossCommits) {
    Type("new");
    oRoom.Page().Filter()->setFocus();
    Room::Turn();
    EXPECT_EQ(oRoom.NodeOf("B")->Text(), "<new>");
}

TEST_F(ExplorerRename, PressElsewhereCommitsBeforeTheSelectionMoves) {
    Type("new");
    oRoom.Click(Qt::LeftButton, oRoom.PointOf("C"));
    EXPECT_EQ(oRoom.NodeOf("B")->Text(), "<new>");
    EXPECT_EQ(oRoom.Selected(), "C");
}

TEST_F(ExplorerRename, RefusedTextPutsTheLabelBackThatTheEditBeganWith) {
    Type("taken");
    End(Qt::Key_Return);
    EXPECT_EQ(sTyped, "taken");
    EXPECT_EQ(oRoom.Rows(), "Root .A .edit text .C ");
    EXPECT_EQ(oRoom.Editor(), nullptr);
}

TEST_F(ExplorerRename, ForbiddenOpensNoEditor) {
    bForbidden = true;
    oRoom.Key(Qt::Key_F2);
    EXPECT_EQ(oRoom.Editor(), nullptr);
    EXPECT_EQ(oRoom.NodeOf("B")->Text(), "B");
}

TEST_F(ExplorerRename, NewNodeIsRenamedInTheSameTurnAndSurvivesItsEnd) {
    oRoom.Add("Root", "D");
    oRoom.Tree()->SetSelectedItem(oRoom.NodeOf("D"));
    oRoom.Tree()->StartLabelEdit();
    Room::Turn();
    ASSERT_NE(oRoom.Editor(), nullptr);
    End(Qt::Key_Return);
    EXPECT_EQ(oRoom.NodeOf("D")->Text(), "<edit text>");
}

TEST_F(ExplorerRename, NodeThatGoesTakesTheEditorAlong) {
    Type("new");
    oRoom.Tree()->GetNodes()->Remove("B");
    Room::Turn();
    EXPECT_EQ(oRoom.Editor(), nullptr);
    EXPECT_EQ(oRoom.Rows(), "Root .A .C ");
    oRoom.Key(Qt::Key_Home);
    oRoom.Key(Qt::Key_F2);
    EXPECT_NE(oRoom.Editor(), nullptr);
}

TEST_F(ExplorerRename, TreeThatNobodySeesEndsTheEditAtOnce) {
    oRoom.m_oStrip->SetTab(1);
    Room::Turn();
    oRoom.Tree()->StartLabelEdit();
    EXPECT_FALSE(oRoom.Tree()->IsEditingLabel());
    EXPECT_EQ(sTyped, "-");
}

} // namespace
} // namespace corvane::desktop
