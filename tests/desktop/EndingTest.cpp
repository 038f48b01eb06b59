// Wherever the host calls a plug-in, that may end the application there.
#include "corvane/author/Host.h"
#include "corvane/windows/Window.h"
#include "desktop/application/MainWindow.h"
#include "desktop/application/UnwatchedRun.h"
#include "desktop/explorer/ExplorerPanel.h"
#include "desktop/platform/HostParts.h"
#include "tests/desktop/Acting.h"

#include <QTest>

namespace corvane::desktop {
namespace {

class EndingAt : public ActingTest, public ::testing::WithParamInterface<const char*> {
protected:
    ExplorerTree* Tree() {
        const ExplorerPage* page = m_application->Window().Explorer().Page(0);
        return page ? page->Tree() : nullptr;
    }
    // The user does something to the leaf, as long as there is one.
    void OnLeaf(const std::function<void(ExplorerTree&, const QPoint&)>& act) {
        Turn();
        ExplorerTree* tree = m_application->HasEnded() ? nullptr : Tree();
        const Ref<Node> node = tree ? tree->Tree()->GetNodes()->Find("Leaf.Leaf") : nullptr;
        if (!node)
            return;
        tree->Sync();
        act(*tree, tree->visualRect(tree->IndexOf(node.Get())).center());
    }
};

// All that a user does to an application, in the order in which it would be done; from its end on nothing happens.
TEST_P(EndingAt, ThatPlaceEndsTheApplicationAndNothingElse) {
    const std::string place = GetParam();
    m_acts.isUnsaved = true;
    m_acts.at[place] = [this, place] {
        m_acts.at[place] = nullptr;
        Singleton::Framework()->AppExit();
    };
    Start();
    const auto isRunning = [&] { return !m_application->HasEnded(); };
    if (isRunning())
        m_application->Choose("MenuB.Act");
    OnLeaf(
        [](ExplorerTree& tree, const QPoint& point) { QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, point); });
    OnLeaf([](ExplorerTree& tree, const QPoint& point) {
        QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, point);
        QTest::mouseRelease(tree.viewport(), Qt::LeftButton, {}, point);
    });
    OnLeaf([](ExplorerTree& tree, const QPoint&) {
        QTest::keyClick(&tree, Qt::Key_F2);
        if (auto* editor = tree.viewport()->findChild<QLineEdit*>()) {
            QTest::keyClicks(editor, "Other");
            QTest::keyClick(editor, Qt::Key_Return);
        }
    });
    if (isRunning())
        m_application->ByHost([] { OpenWindow(); });
    if (auto* button = InPage<QPushButton>())
        QTest::mouseClick(button, Qt::LeftButton);
    if (auto* field = InPage<QLineEdit>()) {
        field->setFocus();
        QTest::keyClick(field, Qt::Key_Return); // chooses OK
    }
    Turn();
    if (isRunning())
        m_application->ByHost([] { OpenWindow(); });
    m_application->Dialogs().AddAnswer("Save");
    if (isRunning())
        m_application->Window().close(); // asks for unsaved work, and ends all
    Turn();
    EXPECT_TRUE(m_application->HasEnded());
    EXPECT_FALSE(m_application->Window().isVisible());
    EXPECT_TRUE(m_application->MainForm()->Forms().empty());
    EXPECT_NE(m_acts.heard.find(place), std::string::npos) << m_acts.heard;
    const std::string heard = m_acts.Take();
    for (const char* name : {"A", "B", "C"})
        EXPECT_LE(QString::fromStdString(heard).count(QString("%1.Terminate").arg(name)), 1) << heard;
    Turn();
    m_application.reset();
    Turn();
}

INSTANTIATE_TEST_SUITE_P(Places, EndingAt,
                         ::testing::Values("A.Initialize", "B.Initialize", "A.Start", "B.OnAct", "A.GetUnsavedItems",
                                           "B.Save", "A.SaveComplete", "A.Terminate", "Root.Initialize",
                                           "Leaf.Initialize", "Leaf.DisplayName", "Leaf.OnAct", "Leaf.BeforeRename",
                                           "Leaf.AfterRename", "Page.Initialize", "Page.NewWidget", "Page.FirstFocus",
                                           "Page.IsChanged", "Page.HelpTopic", "Page.Validate", "Page.Activate",
                                           "Page.Deactivate", "Page.clicked", "Page.editingFinished",
                                           "Page.CommandClick", "Page.Save", "Page.Terminate"),
                         [](const auto& place) { return QString(place.param).remove('.').toStdString(); });

TEST_F(ActingTest, ServiceMayEndTheApplicationWhileItsWindowsAreRestored) {
    ASSERT_TRUE(Start());
    for (int window = 0; window < 2; ++window)
        OpenWindow();
    m_application->Window().close();
    m_acts.at["A.RestoreWindow"] = [] { Singleton::Framework()->AppExit(); };
    m_acts.Take();
    EXPECT_TRUE(Start());
    EXPECT_TRUE(m_application->HasEnded());
    EXPECT_EQ(QString::fromStdString(m_acts.heard).count("RestoreWindow"), 1) << m_acts.heard;
    EXPECT_EQ(m_application->Failures().ShownCount(), 0) << Log().toStdString();
}

// Whoever opens the window gets it, ended or not, and no failure.
TEST_F(ActingTest, PageMayCloseItsOwnWindowWhileThatOpens) {
    for (const char* place : {"Initialize", "Validate", "IsChanged", "NewWidget", "FirstFocus", "Activate"})
        for (const WindowOptions& options : {WindowOptions{}, WindowOptions{.caption = "Named", .page = 0}}) {
            SCOPED_TRACE(std::string(place) + options.caption);
            ASSERT_TRUE(Start());
            m_acts.at[std::string("Page.") + place] = [&] {
                m_acts.at.clear();
                m_application->MainForm()->Forms().front()->Unload();
            };
            Ref<Window> window;
            m_application->ByHost([&] { window = corvane::OpenWindow("Sheet", nullptr, options); });
            EXPECT_TRUE(window && !window->WindowDef());
            EXPECT_TRUE(m_application->MainForm()->Forms().empty());
            EXPECT_EQ(m_application->Failures().ShownCount(), 0) << Log().toStdString();
            OpenWindow();
            EXPECT_TRUE(InPage<QLineEdit>()) << "the next one opens";
        }
}

TEST_F(ActingTest, StepsAreRefusedOnceTheApplicationHasEnded) {
    m_acts.at["A.Start"] = [] { Singleton::Framework()->AppExit(); }; // a login that is cancelled
    EXPECT_TRUE(Start()) << "it has started, and ended as it was asked to";
    EXPECT_TRUE(m_application->HasEnded());
    EXPECT_FALSE(m_application->Window().isVisible());
    UnwatchedRun run(*m_application, {{RunStep::Kind::Choose, "MenuB.Act"}}, [] { return true; });
    EXPECT_FALSE(run.Run());
    EXPECT_EQ(m_acts.heard.find("B.OnAct"), std::string::npos);
}

} // namespace
} // namespace corvane::desktop
