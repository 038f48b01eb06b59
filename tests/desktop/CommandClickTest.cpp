// What the host does around the click on a command.
#include "desktop/application/MainWindow.h"
#include "desktop/explorer/ExplorerPanel.h"
#include "tests/desktop/Acting.h"

#include <QTest>

namespace corvane::desktop {
namespace {

class CommandClickTest : public ActingTest {
protected:
    ExplorerTree& Tree() { return *m_application->Window().Explorer().Page(0)->Tree(); }
    QLineEdit* OpenLabel(const char* key) {
        Tree().Sync();
        const Ref<Node> node = Tree().Tree()->GetNodes()->Find(key);
        if (!node)
            return nullptr;
        QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {},
                          Tree().visualRect(Tree().IndexOf(node.Get())).center());
        QTest::keyClick(&Tree(), Qt::Key_F2);
        return Tree().viewport()->findChild<QLineEdit*>();
    }
};

// The command chooses another item; what was typed was meant for the one before.
TEST_F(CommandClickTest, LabelThatIsBeingEditedIsOverBeforeTheCommandActs) {
    ASSERT_TRUE(Start());
    Turn();
    m_acts.at["B.OnAct"] = [&] {
        Tree().Tree()->SetSelectedItem(Tree().Tree()->GetNodes()->Item("Root"));
        Tree().Tree()->NodeClick.Raise(Tree().Tree()->SelectedItem());
    };
    for (const auto& [key, typed] : {std::pair("Leaf.Leaf", "Other"), std::pair("Leaf.Other", "")}) {
        SCOPED_TRACE(typed);
        QLineEdit* label = OpenLabel(key);
        ASSERT_TRUE(label) << m_application->AsText();
        if (*typed)
            QTest::keyClicks(label, typed);
        m_acts.Take();
        EXPECT_TRUE(m_application->Choose("MenuB.Act"));
        EXPECT_EQ(m_acts.Take(), *typed ? "Leaf.AfterRename Leaf.DisplayName B.OnAct " : "B.OnAct ");
        EXPECT_FALSE(Tree().Tree()->IsEditingLabel());
    }
}

TEST_F(CommandClickTest, ClickThatReachesNobodyIsInTheLog) {
    m_folder.Service("D", "T.C",
                     R"(<ActionItems><ActionItem Name="Act" Action="OnAct"/><ActionItem Name="Idle"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Idle" Path="MenuD" PositionOrder="1" Caption="Idle"/></Menus>)");
    ASSERT_TRUE(Start());
    m_application->Bar()->Tools()->Item("MenuC.Act")->SetTagVariant(nullptr);
    EXPECT_TRUE(m_application->Choose("MenuB.Act"));
    EXPECT_FALSE(Log().contains("did nothing")) << Log().toStdString();
    EXPECT_TRUE(m_application->Choose("MenuC.Act"));
    EXPECT_TRUE(Log().contains("\"MenuC.Act\" did nothing: nothing provides it now")) << Log().toStdString();
    EXPECT_TRUE(m_application->Choose("MenuD.Idle"));
    EXPECT_TRUE(Log().contains("\"MenuD.Idle\" did nothing: its definition names no procedure")) << Log().toStdString();
}

// Only the click that comes while the other command runs is lost, whether that fails or not.
TEST_F(CommandClickTest, ClickWithinARunningCommandIsInTheLog) {
    ASSERT_TRUE(Start());
    const auto isLost = [this] { return Log().count("\"MenuC.Act\" did nothing: another command is still running"); };
    for (const int time : {1, 2, 3}) {
        m_acts.at["B.OnAct"] = [&] {
            EXPECT_TRUE(m_application->Choose("MenuC.Act"));
            if (time == 2)
                Fail(5, "behind the click");
        };
        m_acts.Take();
        m_application->ByHost([this] {
            EXPECT_TRUE(m_application->Choose("MenuB.Act"));
            EXPECT_TRUE(m_application->Choose("MenuC.Act"));
        });
        EXPECT_EQ(m_acts.Take(), "B.OnAct C.OnAct ");
        EXPECT_EQ(isLost(), time) << Log().toStdString();
    }
}

} // namespace
} // namespace corvane::desktop
