#include "tests/explorer_panel/ExplorerFixture.h"

#include <QAbstractItemModelTester>
#include <QBuffer>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace corvane::desktop {
namespace {

// The tree as Qt sees it through a model, by depth.
std::string Seen(const QAbstractItemModel& model, const QModelIndex& parent = {}) {
    std::string seen;
    for (int i = 0; i < model.rowCount(parent); ++i) {
        const QModelIndex index = model.index(i, 0, parent);
        seen += index.data().toString().toStdString();
        if (model.hasChildren(index))
            seen += "(" + Seen(model, index) + ")";
        seen += i + 1 < model.rowCount(parent) ? " " : "";
    }
    return seen;
}

class ExplorerTreeModel : public testing::Test {
protected:
    void Add(const char* parent, const char* key) {
        tree->GetNodes()->Add(parent, *parent ? NodeRelationship::Child : NodeRelationship::First, key, key);
    }
    Ref<TreeView> tree = New<TreeView>("Tree");
    TreeModel model{tree, std::make_shared<ImageIcons>()};
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(ExplorerTreeModel, AddedNodesShowAtTheEndOfTheTurnInOneRangeAParent) {
    Add("", "R");
    ExplorerFixture::Turn();
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    Add("R", "a");
    Add("", "S");
    Add("S", "x"); // below a node that isn't shown yet
    Add("R", "b");
    Add("x", "y");
    Add("R", "c");
    EXPECT_EQ(Seen(model), "R");
    ExplorerFixture::Turn();
    EXPECT_EQ(Seen(model), "R(a b c) S(x(y))");
    EXPECT_EQ(inserted.count(), 2);
}

TEST_F(ExplorerTreeModel, IndexOfANewNodeIsThereAtOnce) {
    Add("", "R");
    Add("R", "a");
    const QModelIndex index = model.IndexOf(tree->GetNodes()->Item("a").Get());
    EXPECT_EQ(index.data().toString(), "a");
    EXPECT_EQ(index.parent().data().toString(), "R");
}

TEST_F(ExplorerTreeModel, ChangesOfOneTurnMixed) {
    Add("", "R");
    for (const char* key : {"a", "b", "c"})
        Add("R", key);
    ExplorerFixture::Turn();
    Add("R", "d");
    tree->GetNodes()->Remove("b");
    Add("d", "d1");
    tree->GetNodes()->Remove("d");
    Add("R", "e");
    tree->GetNodes()->Item("e")->SetText("E");
    tree->GetNodes()->Remove("a");
    EXPECT_EQ(Seen(model), "R(c E)"); // a removal shows what came before it
    ExplorerFixture::Turn();
    EXPECT_EQ(Seen(model), "R(c E)");
    Add("c", "c1");
    tree->GetNodes()->Clear();
    Add("", "N");
    ExplorerFixture::Turn();
    EXPECT_EQ(Seen(model), "N");
}

TEST_F(ExplorerTreeModel, PersistentIndexesFollowTheirNodes) {
    Add("", "R");
    for (const char* key : {"a", "b", "c"})
        Add("R", key);
    const QPersistentModelIndex b = model.IndexOf(tree->GetNodes()->Item("b").Get());
    const QPersistentModelIndex c = model.IndexOf(tree->GetNodes()->Item("c").Get());
    tree->GetNodes()->Remove("a");
    Add("R", "d");
    tree->GetNodes()->Remove("b");
    ExplorerFixture::Turn();
    EXPECT_FALSE(b.isValid());
    EXPECT_EQ(c.row(), 0);
    EXPECT_EQ(c.data().toString(), "c");
    EXPECT_EQ(model.NodeAt(c), tree->GetNodes()->Item("c").Get());
}

TEST_F(ExplorerTreeModel, ChangedTextsAreToldOnceAParent) {
    for (const char* root : {"R", "S"}) {
        Add("", root);
        for (int i = 0; i < 50; ++i)
            Add(root, (root + std::to_string(i)).c_str());
    }
    ExplorerFixture::Turn();
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    for (int i = 10; i < 40; ++i) {
        tree->GetNodes()->Item("R" + std::to_string(i))->SetText("r");
        tree->GetNodes()->Item("S" + std::to_string(49 - i))->SetText("s");
    }
    EXPECT_EQ(changed.count(), 0);
    tree->GetNodes()->Remove("R39");
    ExplorerFixture::Turn();
    ASSERT_EQ(changed.count(), 2);
    for (const auto& arguments : changed) {
        const bool r = arguments[0].toModelIndex().parent().data() == "R";
        EXPECT_EQ(arguments[0].toModelIndex().row(), 10);
        EXPECT_EQ(arguments[1].toModelIndex().row(), r ? 38 : 39);
    }
}

TEST(ExplorerView, FollowsTheModelWithoutEventsOfTheControl) {
    ExplorerFixture room;
    room.Fill();
    room.NodeOf("B")->SetSelected(true);
    ExplorerFixture::Turn();
    EXPECT_EQ(room.Shown(), "B");
    room.Tree()->SetSelectedItem(nullptr);
    room.NodeOf("Root")->SetExpanded(false);
    ExplorerFixture::Turn();
    EXPECT_EQ(room.Shown(), "");
    EXPECT_EQ(room.Rows(), "Root ");
    EXPECT_EQ(room.Reported(), "");
}

TEST(ExplorerView, SelectedNodeThatGoesLeavesNothingSelected) {
    ExplorerFixture room;
    room.Fill();
    room.Click(Qt::LeftButton, room.PointOf("B"));
    room.Reported();
    room.Tree()->GetNodes()->Remove("B");
    ExplorerFixture::Turn();
    EXPECT_EQ(room.Selected(), "-");
    EXPECT_EQ(room.Shown(), "");
    EXPECT_EQ(room.Reported(), "");
    room.Click(Qt::LeftButton, room.PointOf("C"));
    EXPECT_EQ(room.Shown(), "C");
}

TEST(ExplorerView, NodeRemovedByItsOwnSubscriber) {
    ExplorerFixture room;
    room.Fill();
    room.View().setFocus();
    const auto remover =
        room.Tree()->NodeClick.Subscribe([&](const Ref<Node>& node) { room.Tree()->GetNodes()->Remove(node->Key()); });
    room.Click(Qt::LeftButton, room.PointOf("C"));
    room.Key(Qt::Key_End);
    EXPECT_EQ(room.Rows(), "Root .A ");
    EXPECT_EQ(room.Reported(), "down1/0 node:C click up1/0 node:B");
}

TEST(ExplorerView, SelectionInAClosedFolderIsBroughtToSight) {
    ExplorerFixture room;
    room.Fill();
    room.NodeOf("Root")->SetExpanded(false);
    ExplorerFixture::Turn();
    room.NodeOf("C")->SetSelected(true);
    ExplorerFixture::Turn();
    EXPECT_TRUE(room.NodeOf("Root")->Expanded());
    EXPECT_EQ(room.Rows(), "Root .A .B .C ");
    room.View().setFocus();
    room.View().collapse(room.View().IndexOf(room.NodeOf("Root").Get()));
    ExplorerFixture::Turn();
    EXPECT_EQ(room.Selected(), "Root");
    EXPECT_EQ(room.Reported(), "node:Root");
}

TEST(ExplorerView, DisabledAndHiddenTreesAreSo) {
    ExplorerFixture room;
    room.Fill();
    room.Tree()->SetEnabled(false);
    ExplorerFixture::Turn();
    EXPECT_FALSE(room.View().isEnabled());
    room.Tree()->SetVisible(false);
    ExplorerFixture::Turn();
    EXPECT_FALSE(room.View().isVisible());
    EXPECT_FALSE(room.Page().Filter()->isVisible());
}

TEST(ExplorerView, SaysWhatToDoWhenThereIsNothing) {
    ExplorerFixture room;
    EXPECT_TRUE(room.Page().Message()->isVisible());
    EXPECT_FALSE(room.Page().Message()->text().isEmpty());
    room.Fill();
    EXPECT_FALSE(room.Page().Message()->isVisible());
    EXPECT_TRUE(room.View().isVisible());
    room.Tree()->GetNodes()->Clear();
    ExplorerFixture::Turn();
    EXPECT_TRUE(room.Page().Message()->isVisible());

    ExplorerPanel empty(New<PanelForm>());
    empty.show();
    EXPECT_FALSE(empty.TabBar()->isVisible());
    EXPECT_FALSE(empty.findChild<QLabel*>()->text().isEmpty());
}

TEST(ExplorerView, ImagesAndTheFirstImageForNodesWithoutOne) {
    QByteArray red, blue;
    for (QByteArray* bytes : {&red, &blue}) {
        const char* color = bytes == &red ? "red" : "blue";
        *bytes = QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'>"
                            "<rect width='8' height='8' fill='") +
                 color + "'/></svg>";
    }
    const auto list = New<ImageList>();
    list->Add("generic", New<Picture>("red.svg", Picture::Format::Svg, red.toStdString()));
    list->Add("blue", New<Picture>("blue.svg", Picture::Format::Svg, blue.toStdString()));
    list->Add("broken", New<Picture>("broken.png", Picture::Format::Png, "\x89PNG"));
    ImageIcons icons;
    const auto ColorOf = [&](Long image, qreal scale) {
        const QPixmap pixmap = icons.Icon(list, image).pixmap(QSize(16, 16), scale);
        EXPECT_EQ(pixmap.width(), 16 * scale);
        return pixmap.toImage().pixelColor(pixmap.width() - 1, 0).name().toStdString();
    };
    EXPECT_EQ(ColorOf(1, 1), "#0000ff");
    EXPECT_EQ(ColorOf(1, 2), "#0000ff");
    EXPECT_EQ(ColorOf(-1, 1), "#ff0000");
    EXPECT_EQ(ColorOf(2, 1), "#ff0000");
    EXPECT_TRUE(icons.Icon(New<ImageList>(), 0).isNull());
}

// 16 pixels are blue, 32 pixels red.
TEST(ExplorerView, IconFileGivesThePictureOfTheScreensScale) {
    QByteArray file("\0\0\1\0\2\0", 6);
    std::vector<QByteArray> pngs;
    for (const int size : {16, 32}) {
        QImage image(size, size, QImage::Format_ARGB32);
        image.fill(size == 16 ? Qt::blue : Qt::red);
        QBuffer buffer;
        image.save(&buffer, "PNG");
        pngs.push_back(buffer.data());
    }
    int offset = 6 + 2 * 16;
    for (std::size_t i = 0; i < 2; ++i) {
        const char size = i == 0 ? 16 : 32;
        file += QByteArray(1, size) + QByteArray(1, size) + QByteArray("\0\0\1\0\40\0", 6);
        for (const int number : {static_cast<int>(pngs[i].size()), offset})
            for (int shift = 0; shift < 32; shift += 8)
                file += static_cast<char>((number >> shift) & 0xFF);
        offset += static_cast<int>(pngs[i].size());
    }
    const QIcon icon = IconOf(New<Picture>("two.ico", Picture::Format::Ico, (file + pngs[0] + pngs[1]).toStdString()));
    const auto ColorAt = [&](qreal scale) {
        return icon.pixmap(QSize(16, 16), scale).toImage().pixelColor(3, 3).name().toStdString();
    };
    EXPECT_EQ(ColorAt(1), "#0000ff");
    EXPECT_EQ(ColorAt(2), "#ff0000");
}

TEST(ExplorerView, FiveThousandItems) {
    ExplorerFixture room;
    for (int i = 0; i < 50; ++i) {
        const std::string folder = "Folder " + std::to_string(i);
        room.Add("", folder)->SetExpanded(true);
        for (int j = 0; j < 99; ++j)
            room.Add(folder, folder + " item " + std::to_string(j));
    }
    ExplorerFixture::Turn();
    room.View().setFocus();
    room.Key(Qt::Key_End);
    EXPECT_EQ(room.Selected(), "Folder 49 item 98");
    EXPECT_EQ(room.View().NodeAtPoint(room.PointOf("Folder 49 item 98")), room.Tree()->SelectedItem().Get());
    const std::string rows = room.Rows();
    EXPECT_EQ(std::count(rows.begin(), rows.end(), '.'), 4950);
}

TEST(ExplorerFilter, ShowsMatchesWithWhatIsAboveThemAndLeavesTheTreeAlone) {
    ExplorerFixture room;
    room.Fill();
    room.Add("", "Other");
    room.Add("Other", "cat");
    room.Add("Other", "dog");
    ExplorerFixture::Turn();
    room.View().setFocus();
    QTest::keyClick(&room.View(), Qt::Key_F, Qt::ControlModifier);
    QLineEdit* filter = room.Page().Filter();
    ASSERT_TRUE(filter->hasFocus());
    QTest::keyClicks(filter, "c");
    EXPECT_EQ(room.Rows(), "Root .C Other .cat ");
    EXPECT_FALSE(room.NodeOf("Other")->Expanded());

    room.Add("Other", "cow");
    room.NodeOf("C")->SetText("see");
    room.Tree()->GetNodes()->Remove("cat");
    ExplorerFixture::Turn();
    EXPECT_EQ(room.Rows(), "Other .cow ");

    QTest::keyClicks(filter, "xyz");
    EXPECT_EQ(room.Page().Message()->text(), "No matching items");
    EXPECT_TRUE(room.Page().Message()->isVisible());
    QTest::keyClick(filter, Qt::Key_Escape);
    EXPECT_EQ(room.Rows(), "Root .A .B .see Other ");
    EXPECT_TRUE(room.View().hasFocus());
    EXPECT_EQ(room.Reported(), "");
}

TEST(ExplorerFilter, ClicksKeysAndRenamingWorkOnWhatIsShown) {
    ExplorerFixture room;
    room.Fill();
    room.Page().StartFilter();
    QTest::keyClicks(room.Page().Filter(), "b");
    QTest::keyClick(room.Page().Filter(), Qt::Key_Return);
    EXPECT_EQ(room.Reported(), "node:B");
    room.Click(Qt::LeftButton, room.PointOf("B"));
    EXPECT_EQ(room.Reported(), "down1/0 node:B click up1/0");
    const auto before = room.Tree()->BeforeLabelEdit.Subscribe([&](bool&) { room.NodeOf("B")->SetText("edited"); });
    room.Key(Qt::Key_F2);
    ASSERT_NE(room.Editor(), nullptr);
    QTest::keyClicks(room.Editor(), "bee");
    QTest::keyClick(room.Editor(), Qt::Key_Return);
    ExplorerFixture::Turn();
    EXPECT_EQ(room.NodeOf("B")->Text(), "bee");
    EXPECT_EQ(room.Rows(), "Root .bee ");
    room.Key(Qt::Key_Escape);
    EXPECT_EQ(room.Rows(), "Root .A .bee .C ");
    EXPECT_EQ(room.Shown(), "bee");
}

TEST(ExplorerFilter, EditOfAnItemThatDoesNotMatchTakesTheFilterBack) {
    ExplorerFixture room;
    room.Fill();
    QTest::keyClicks(room.Page().Filter(), "b");
    room.Tree()->SetSelectedItem(room.Add("Root", "D"));
    room.Tree()->StartLabelEdit();
    ASSERT_NE(room.Editor(), nullptr);
    EXPECT_EQ(room.Editor()->text(), "D");
    EXPECT_EQ(room.Page().Filter()->text(), "");
    EXPECT_EQ(room.Rows(), "Root .A .B .C .D ");
}

} // namespace
} // namespace corvane::desktop
