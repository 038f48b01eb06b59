#include "tests/explorer_panel/ExplorerRoom.h"

#include <QAbstractItemModelTester>
#include <QBuffer>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace corvane::desktop {
namespace {

// The tree as Qt sees it through a model, by depth.
std::string Seen(const QAbstractItemModel& oModel, const QModelIndex& oParent = {}) {
    std::string sSeen;
    for (int i = 0; i < oModel.rowCount(oParent); ++i) {
        const QModelIndex oIndex = oModel.index(i, 0, oParent);
        sSeen += oIndex.data().toString().toStdString();
        if (oModel.hasChildren(oIndex))
            sSeen += "(" + Seen(oModel, oIndex) + ")";
        sSeen += i + 1 < oModel.rowCount(oParent) ? " " : "";
    }
    return sSeen;
}

class ExplorerTreeModel : public testing::Test {
protected:
    void Add(const char* sParent, const char* sKey) {
        oTree->GetNodes()->Add(sParent, *sParent ? NodeRelationship::Child : NodeRelationship::First, sKey, sKey);
    }
    Ref<TreeView> oTree = New<TreeView>("Tree");
    TreeModel oModel{oTree, std::make_shared<ImageIcons>()};
    QAbstractItemModelTester oTester{&oModel, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(ExplorerTreeModel, AddedNodesShowAtTheEndOfTheTurnInOneRangeAParent) {
    Add("", "R");
    Room::Turn();
    QSignalSpy oInserted(&oModel, &QAbstractItemModel::rowsInserted);
    Add("R", "a");
    Add("", "S");
    Add("S", "x"); // below a node that isn't shown yet
    Add("R", "b");
    Add("x", "y");
    Add("R", "c");
    EXPECT_EQ(Seen(oModel), "R");
    Room::Turn();
    EXPECT_EQ(Seen(oModel), "R(a b c) S(x(y))");
    EXPECT_EQ(oInserted.count(), 2);
}

TEST_F(ExplorerTreeModel, IndexOfANewNodeIsThereAtOnce) {
    Add("", "R");
    Add("R", "a");
    const QModelIndex oIndex = oModel.IndexOf(oTree->GetNodes()->Item("a").Get());
    EXPECT_EQ(oIndex.data().toString(), "a");
    EXPECT_EQ(oIndex.parent().data().toString(), "R");
}

TEST_F(ExplorerTreeModel, ChangesOfOneTurnMixed) {
    Add("", "R");
    for (const char* sKey : {"a", "b", "c"})
        Add("R", sKey);
    Room::Turn();
    Add("R", "d");
    oTree->GetNodes()->Remove("b");
    Add("d", "d1");
    oTree->GetNodes()->Remove("d");
    Add("R", "e");
    oTree->GetNodes()->Item("e")->SetText("E");
    oTree->GetNodes()->Remove("a");
    EXPECT_EQ(Seen(oModel), "R(c E)"); // a removal shows what came before it
    Room::Turn();
    EXPECT_EQ(Seen(oModel), "R(c E)");
    Add("c", "c1");
    oTree->GetNodes()->Clear();
    Add("", "N");
    Room::Turn();
    EXPECT_EQ(Seen(oModel), "N");
}

TEST_F(ExplorerTreeModel, PersistentIndexesFollowTheirNodes) {
    Add("", "R");
    for (const char* sKey : {"a", "b", "c"})
        Add("R", sKey);
    const QPersistentModelIndex oB = oModel.IndexOf(oTree->GetNodes()->Item("b").Get());
    const QPersistentModelIndex oC = oModel.IndexOf(oTree->GetNodes()->Item("c").Get());
    oTree->GetNodes()->Remove("a");
    Add("R", "d");
    oTree->GetNodes()->Remove("b");
    Room::Turn();
    EXPECT_FALSE(oB.isValid());
    EXPECT_EQ(oC.row(), 0);
    EXPECT_EQ(oC.data().toString(), "c");
    EXPECT_EQ(oModel.NodeAt(oC), oTree->GetNodes()->Item("c").Get());
}

TEST_F(ExplorerTreeModel, ChangedTextsAreToldOnceAParent) {
    for (const char* sRoot : {"R", "S"}) {
        Add("", sRoot);
        for (int i = 0; i < 50; ++i)
            Add(sRoot, (sRoot + std::to_string(i)).c_str());
    }
    Room::Turn();
    QSignalSpy oChanged(&oModel, &QAbstractItemModel::dataChanged);
    for (int i = 10; i < 40; ++i) {
        oTree->GetNodes()->Item("R" + std::to_string(i))->SetText("r");
        oTree->GetNodes()->Item("S" + std::to_string(49 - i))->SetText("s");
    }
    EXPECT_EQ(oChanged.count(), 0);
    oTree->GetNodes()->Remove("R39");
    Room::Turn();
    ASSERT_EQ(oChanged.count(), 2);
    for (const auto& aArguments : oChanged) {
        const bool bR = aArguments[0].toModelIndex().parent().data() == "R";
        EXPECT_EQ(aArguments[0].toModelIndex().row(), 10);
        EXPECT_EQ(aArguments[1].toModelIndex().row(), bR ? 38 : 39);
    }
}

TEST(ExplorerView, FollowsTheModelWithoutEventsOfTheControl) {
    Room oRoom;
    oRoom.Fill();
    oRoom.NodeOf("B")->SetSelected(true);
    Room::Turn();
    EXPECT_EQ(oRoom.Shown(), "B");
    oRoom.Tree()->SetSelectedItem(nullptr);
    oRoom.NodeOf("Root")->SetExpanded(false);
    Room::Turn();
    EXPECT_EQ(oRoom.Shown(), "");
    EXPECT_EQ(oRoom.Rows(), "Root ");
    EXPECT_EQ(oRoom.Reported(), "");
}

TEST(ExplorerView, SelectedNodeThatGoesLeavesNothingSelected) {
    Room oRoom;
    oRoom.Fill();
    oRoom.Click(Qt::LeftButton, oRoom.PointOf("B"));
    oRoom.Reported();
    oRoom.Tree()->GetNodes()->Remove("B");
    Room::Turn();
    EXPECT_EQ(oRoom.Selected(), "-");
    EXPECT_EQ(oRoom.Shown(), "");
    EXPECT_EQ(oRoom.Reported(), "");
    oRoom.Click(Qt::LeftButton, oRoom.PointOf("C"));
    EXPECT_EQ(oRoom.Shown(), "C");
}

TEST(ExplorerView, NodeRemovedByItsOwnSubscriber) {
    Room oRoom;
    oRoom.Fill();
    oRoom.View().setFocus();
    const auto oRemover = oRoom.Tree()->NodeClick.Subscribe(
        [&](const Ref<Node>& oNode) { oRoom.Tree()->GetNodes()->Remove(oNode->Key()); });
    oRoom.Click(Qt::LeftButton, oRoom.PointOf("C"));
    oRoom.Key(Qt::Key_End);
    EXPECT_EQ(oRoom.Rows(), "Root .A ");
    EXPECT_EQ(oRoom.Reported(), "down1/0 node:C click up1/0 node:B");
}

TEST(ExplorerView, SelectionInAClosedFolderIsBroughtToSight) {
    Room oRoom;
    oRoom.Fill();
    oRoom.NodeOf("Root")->SetExpanded(false);
    Room::Turn();
    oRoom.NodeOf("C")->SetSelected(true);
    Room::Turn();
    EXPECT_TRUE(oRoom.NodeOf("Root")->Expanded());
    EXPECT_EQ(oRoom.Rows(), "Root .A .B .C ");
    oRoom.View().setFocus();
    oRoom.View().collapse(oRoom.View().IndexOf(oRoom.NodeOf("Root").Get()));
    Room::Turn();
    EXPECT_EQ(oRoom.Selected(), "Root");
    EXPECT_EQ(oRoom.Reported(), "node:Root");
}

TEST(ExplorerView, DisabledAndHiddenTreesAreSo) {
    Room oRoom;
    oRoom.Fill();
    oRoom.Tree()->SetEnabled(false);
    Room::Turn();
    EXPECT_FALSE(oRoom.View().isEnabled());
    oRoom.Tree()->SetVisible(false);
    Room::Turn();
    EXPECT_FALSE(oRoom.View().isVisible());
    EXPECT_FALSE(oRoom.Page().Filter()->isVisible());
}

TEST(ExplorerView, SaysWhatToDoWhenThereIsNothing) {
    Room oRoom;
    EXPECT_TRUE(oRoom.Page().Message()->isVisible());
    EXPECT_FALSE(oRoom.Page().Message()->text().isEmpty());
    oRoom.Fill();
    EXPECT_FALSE(oRoom.Page().Message()->isVisible());
    EXPECT_TRUE(oRoom.View().isVisible());
    oRoom.Tree()->GetNodes()->Clear();
    Room::Turn();
    EXPECT_TRUE(oRoom.Page().Message()->isVisible());

    ExplorerPanel oEmpty(New<PanelForm>());
    oEmpty.show();
    EXPECT_FALSE(oEmpty.TabBar()->isVisible());
    EXPECT_FALSE(oEmpty.findChild<QLabel*>()->text().isEmpty());
}

TEST(ExplorerView, ImagesAndTheFirstImageForNodesWithoutOne) {
    QByteArray aRed, aBlue;
    for (QByteArray* pBytes : {&aRed, &aBlue}) {
        const char* sColor = pBytes == &aRed ? "red" : "blue";
        *pBytes = QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'>"
                             "<rect width='8' height='8' fill='") +
                  sColor + "'/></svg>";
    }
    const auto oList = New<ImageList>();
    oList->Add("generic", New<Picture>("red.svg", Picture::Format::Svg, aRed.toStdString()));
    oList->Add("blue", New<Picture>("blue.svg", Picture::Format::Svg, aBlue.toStdString()));
    oList->Add("broken", New<Picture>("broken.png", Picture::Format::Png, "\x89PNG"));
    ImageIcons oIcons;
    const auto ColorOf = [&](Long lImage, qreal fScale) {
        const QPixmap oPixmap = oIcons.Icon(oList, lImage).pixmap(QSize(16, 16), fScale);
        EXPECT_EQ(oPixmap.width(), 16 * fScale);
        return oPixmap.toImage().pixelColor(oPixmap.width() - 1, 0).name().toStdString();
    };
    EXPECT_EQ(ColorOf(1, 1), "#0000ff");
    EXPECT_EQ(ColorOf(1, 2), "#0000ff");
    EXPECT_EQ(ColorOf(-1, 1), "#ff0000");
    EXPECT_EQ(ColorOf(2, 1), "#ff0000");
    EXPECT_TRUE(oIcons.Icon(New<ImageList>(), 0).isNull());
}

// 16 pixels are blue, 32 pixels red.
TEST(ExplorerView, IconFileGivesThePictureOfTheScreensScale) {
    QByteArray aFile("\0\0\1\0\2\0", 6);
    std::vector<QByteArray> aPngs;
    for (const int iSize : {16, 32}) {
        QImage oImage(iSize, iSize, QImage::Format_ARGB32);
        oImage.fill(iSize == 16 ? Qt::blue : Qt::red);
        QBuffer oBuffer;
        oImage.save(&oBuffer, "PNG");
        aPngs.push_back(oBuffer.data());
    }
    int iOffset = 6 + 2 * 16;
    for (std::size_t i = 0; i < 2; ++i) {
        const char iSize = i == 0 ? 16 : 32;
        aFile += QByteArray(1, iSize) + QByteArray(1, iSize) + QByteArray("\0\0\1\0\40\0", 6);
        for (const int iNumber : {static_cast<int>(aPngs[i].size()), iOffset})
            for (int iShift = 0; iShift < 32; iShift += 8)
                aFile += static_cast<char>((iNumber >> iShift) & 0xFF);
        iOffset += static_cast<int>(aPngs[i].size());
    }
    const QIcon oIcon =
        IconOf(New<Picture>("two.ico", Picture::Format::Ico, (aFile + aPngs[0] + aPngs[1]).toStdString()));
    const auto ColorAt = [&](qreal fScale) {
        return oIcon.pixmap(QSize(16, 16), fScale).toImage().pixelColor(3, 3).name().toStdString();
    };
    EXPECT_EQ(ColorAt(1), "#0000ff");
    EXPECT_EQ(ColorAt(2), "#ff0000");
}

TEST(ExplorerView, FiveThousandItems) {
    Room oRoom;
    for (int i = 0; i < 50; ++i) {
        const std::string sFolder = "Folder " + std::to_string(i);
        oRoom.Add("", sFolder)->SetExpanded(true);
        for (int j = 0; j < 99; ++j)
            oRoom.Add(sFolder, sFolder + " item " + std::to_string(j));
    }
    Room::Turn();
    oRoom.View().setFocus();
    oRoom.Key(Qt::Key_End);
    EXPECT_EQ(oRoom.Selected(), "Folder 49 item 98");
    EXPECT_EQ(oRoom.View().NodeAtPoint(oRoom.PointOf("Folder 49 item 98")), oRoom.Tree()->SelectedItem().Get());
    const std::string sRows = oRoom.Rows();
    EXPECT_EQ(std::count(sRows.begin(), sRows.end(), '.'), 4950);
}

TEST(ExplorerFilter, ShowsMatchesWithWhatIsAboveThemAndLeavesTheTreeAlone) {
    Room oRoom;
    oRoom.Fill();
    oRoom.Add("", "Other");
    oRoom.Add("Other", "cat");
    oRoom.Add("Other", "dog");
    Room::Turn();
    oRoom.View().setFocus();
    QTest::keyClick(&oRoom.View(), Qt::Key_F, Qt::ControlModifier);
    QLineEdit* pFilter = oRoom.Page().Filter();
    ASSERT_TRUE(pFilter->hasFocus());
    QTest::keyClicks(pFilter, "c");
    EXPECT_EQ(oRoom.Rows(), "Root .C Other .cat ");
    EXPECT_FALSE(oRoom.NodeOf("Other")->Expanded());

    oRoom.Add("Other", "cow");
    oRoom.NodeOf("C")->SetText("see");
    oRoom.Tree()->GetNodes()->Remove("cat");
    Room::Turn();
    EXPECT_EQ(oRoom.Rows(), "Other .cow ");

    QTest::keyClicks(pFilter, "xyz");
    EXPECT_EQ(oRoom.Page().Message()->text(), "No matching items");
    EXPECT_TRUE(oRoom.Page().Message()->isVisible());
    QTest::keyClick(pFilter, Qt::Key_Escape);
    EXPECT_EQ(oRoom.Rows(), "Root .A .B .see Other ");
    EXPECT_TRUE(oRoom.View().hasFocus());
    EXPECT_EQ(oRoom.Reported(), "");
}

TEST(ExplorerFilter, ClicksKeysAndRenamingWorkOnWhatIsShown) {
    Room oRoom;
    oRoom.Fill();
    oRoom.Page().StartFilter();
    QTest::keyClicks(oRoom.Page().Filter(), "b");
    QTest::keyClick(oRoom.Page().Filter(), Qt::Key_Return);
    EXPECT_EQ(oRoom.Reported(), "node:B");
    oRoom.Click(Qt::LeftButton, oRoom.PointOf("B"));
    EXPECT_EQ(oRoom.Reported(), "down1/0 node:B click up1/0");
    const auto oBefore = oRoom.Tree()->BeforeLabelEdit.Subscribe([&](bool&) { oRoom.NodeOf("B")->SetText("edited"); });
    oRoom.Key(Qt::Key_F2);
    ASSERT_NE(oRoom.Editor(), nullptr);
    QTest::keyClicks(oRoom.Editor(), "bee");
    QTest::keyClick(oRoom.Editor(), Qt::Key_Return);
    Room::Turn();
    EXPECT_EQ(oRoom.NodeOf("B")->Text(), "bee");
    EXPECT_EQ(oRoom.Rows(), "Root .bee ");
    oRoom.Key(Qt::Key_Escape);
    EXPECT_EQ(oRoom.Rows(), "Root .A .bee .C ");
    EXPECT_EQ(oRoom.Shown(), "bee");
}

TEST(ExplorerFilter, EditOfAnItemThatDoesNotMatchTakesTheFilterBack) {
    Room oRoom;
    oRoom.Fill();
    QTest::keyClicks(oRoom.Page().Filter(), "b");
    oRoom.Tree()->SetSelectedItem(oRoom.Add("Root", "D"));
    oRoom.Tree()->StartLabelEdit();
    ASSERT_NE(oRoom.Editor(), nullptr);
    EXPECT_EQ(oRoom.Editor()->text(), "D");
    EXPECT_EQ(oRoom.Page().Filter()->text(), "");
    EXPECT_EQ(oRoom.Rows(), "Root .A .B .C .D ");
}

} // namespace
} // namespace corvane::desktop
