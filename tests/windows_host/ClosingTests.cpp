// The life of windows on screen: how they open, who may close them, and what is left of them.
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "desktop/windows/FailureView.h"
#include "desktop/windows/PagePlace.h"
#include "tests/windows_host/HostFixture.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

namespace corvane::desktop {
namespace {

using Command = StandardCommandConstants;

constexpr const char* modal = "Type='Dialog' IsMDIChild='false' IsModal='true'";

TEST_F(HostFixture, ChildOpensInTheOrderOfTheRealFormAndClosesInIts) {
    Define("W", "Type='Window'", "A B");
    Start();
    const auto window = Open("W", "k");
    EXPECT_EQ(m_heard->Take(), "A.Initialize B.Initialize A.NewWidget A.Activate");
    QMdiArea& area = m_application->Window().Area();
    ASSERT_EQ(area.subWindowList().size(), 1);
    EXPECT_EQ(area.activeSubWindow()->widget(), LastForm()->Body());
    EXPECT_EQ(LastForm()->Body()->Place(0).size(), QSize(300, 200)) << "4500 and 3000 twips";
    window->SetActivePageIndex(1);
    EXPECT_EQ(m_heard->Take(), "A.Deactivate B.NewWidget B.Activate");
    const auto again = Open("W", "k");
    EXPECT_EQ(again, window);
    EXPECT_EQ(m_heard->Take(), "") << "the key shows the open window";
    const auto id = QAccessible::uniqueId(QAccessible::queryAccessibleInterface(LastForm()->Body()));
    window->Terminate();
    EXPECT_EQ(m_heard->Take(), "B.Deactivate A.Terminate B.Terminate exit(cancelled)");
    EXPECT_EQ(Manager().Windows()->Count(), 0);
    Turn();
    EXPECT_FALSE(QAccessible::accessibleInterface(id)) << "a later window at its address would be read as dead";
}

struct CloseCase {
    const char* who;
    void (*close)(Application& application, WindowForm& form);
    bool wholeApplication = false; // it asks about all windows at once
};
class ClosingOfAWindow : public HostFixture, public ::testing::WithParamInterface<CloseCase> {};

TEST_P(ClosingOfAWindow, AsksFirstAndThenTakesThePagesTheFormAndTheWindow) {
    Define("W", "Type='Window'", "A");
    Start();
    (void)Open("W", "k");
    const Ref<WindowForm> form = LastForm();
    Page("A").Enter("new");
    m_heard->Take();
    m_application->Dialogs().AddAnswer("Stay");
    GetParam().close(*m_application, *form);
    EXPECT_TRUE(form->IsLoaded());
    EXPECT_TRUE(m_application->Window().isVisible());
    EXPECT_EQ(m_heard->Take(), "");
    if (!GetParam().wholeApplication) {
        EXPECT_FALSE(m_application->MainForm()->ActiveForm()) << "a caller that asks in the same turn asks in vain";
    }
    Turn();
    EXPECT_TRUE(m_application->MainForm()->ActiveForm());
    m_application->Dialogs().AddAnswer("Discard");
    GetParam().close(*m_application, *form);
    EXPECT_EQ(m_heard->Take(), "A.Deactivate A.Terminate exit(cancelled)");
    EXPECT_FALSE(form->IsLoaded());
}

INSTANTIATE_TEST_SUITE_P(
    Sides, ClosingOfAWindow,
    ::testing::Values(CloseCase{"CloseBox", [](Application&, WindowForm& form) { form.Frame()->close(); }},
                      CloseCase{"Code", [](Application&, WindowForm& form) { form.Unload(); }},
                      CloseCase{"CloseAll", [](Application& app, WindowForm&) { app.Choose("Window.CloseAll"); }},
                      CloseCase{"Key",
                                [](Application& app, WindowForm&) {
                                    app.Window().activateWindow();
                                    QTest::keyClick(&app.Window(), Qt::Key_F4, Qt::ControlModifier);
                                }},
                      CloseCase{"MainWindow", [](Application& app, WindowForm&) { app.Window().close(); }, true},
                      CloseCase{"AppExit", [](Application&, WindowForm&) { CorvaneMain::Framework()->AppExit(); },
                                true}),
    [](const auto& testInfo) { return testInfo.param.who; });

TEST_F(HostFixture, MainWindowClosesWhatIsOpenLatestFirstAndStopsAtARefusal) {
    Define("W", "Type='Window'", "A");
    Define("D", dialogAttributes, "B");
    Start();
    (void)Open("W", "w");
    Page("A").Enter("new");
    (void)Open("D", "d");
    m_heard->Take();
    m_application->Dialogs().AddAnswer("Stay");
    m_application->Window().close();
    EXPECT_EQ(m_heard->Take(), "") << "one question for all of them, before any closes";
    EXPECT_TRUE(m_application->Window().isVisible());
    EXPECT_TRUE(CorvaneMain::Framework()->WindowManager());
    m_application->Dialogs().AddAnswer("Save");
    m_application->Window().close();
    EXPECT_EQ(m_heard->Take(), "A.Save B.Deactivate B.Terminate exit(cancelled) A.Activate A.Deactivate A.Terminate "
                               "exit(done)");
    EXPECT_FALSE(CorvaneMain::Framework()->WindowManager());
}

TEST_F(HostFixture, ModalWindowHoldsItsCallerAndADeferredOneComesFromTheEventLoop) {
    Define("M", modal, "A");
    Start();
    for (const bool async : {false, true}) {
        std::string inside;
        QTimer user;
        QObject::connect(&user, &QTimer::timeout, [&] {
            if (!m_application->IsModalFormOpen() || QApplication::activeModalWidget() != LastForm()->Frame())
                return;
            user.stop();
            EXPECT_FALSE(m_application->Choose("Window.CloseAll"));
            inside = m_heard->Take();
            LastForm()->ClickCommand(Command::cvOK);
        });
        user.start(5);
        const auto window = Open("M", {}, false, async);
        EXPECT_EQ(m_heard->Take(), async ? "A.Initialize" : "A.Click1 A.Deactivate A.Terminate exit(done)");
        while (async && window->WasWindowCancelled() && LastForm()->IsLoaded())
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        EXPECT_EQ(inside, async ? "A.NewWidget A.Activate" : "A.Initialize A.NewWidget A.Activate");
        EXPECT_FALSE(window->WasWindowCancelled());
        m_heard->Take();
    }
}

// The page's one event fails; the window works on and closes, and the other page isn't touched.
class PageThatFails : public HostFixture, public ::testing::WithParamInterface<std::pair<const char*, int>> {};

TEST_P(PageThatFails, DoesNotTakeTheWindowWithIt) {
    const auto& [event, shown] = GetParam();
    Define("D", dialogAttributes, "A." + std::string(event) + " B");
    Start();
    const auto window = Open("D");
    window->SetActivePageIndex(1);
    EXPECT_NE(m_heard->Take().find("B.NewWidget B.Activate"), std::string::npos);
    Page("B").Enter("new");
    EXPECT_EQ(window->CanBeSaved(), event != std::string("Validate"));
    window->SetActivePageIndex(0);
    m_application->Dialogs().AddAnswer("Discard");
    window->ClickCommand(Command::cvCancel);
    EXPECT_FALSE(LastForm()->IsLoaded());
    EXPECT_EQ(m_application->Failures().ShownCount(), shown);
    m_forms.clear();
    Turn();
    EXPECT_EQ(m_heard->pages, 0);
    EXPECT_EQ(m_heard->widgets, 0);
}

INSTANTIATE_TEST_SUITE_P(Events, PageThatFails,
                         ::testing::Values(std::pair("Initialize", 0), std::pair("NewWidget", 0),
                                           std::pair("Activate", 2), std::pair("Deactivate", 2),
                                           std::pair("Validate", 1), std::pair("CommandClick", 1),
                                           std::pair("Terminate", 1)),
                         [](const auto& testInfo) { return testInfo.param.first; });

TEST_F(HostFixture, PageThatCannotBeShownSaysWhyAndItsTabIsMarked) {
    Define("D", dialogAttributes, "None Plain A");
    Start();
    const auto window = Open("D");
    const auto* tabs = LastForm()->Body()->findChild<QTabWidget*>();
    for (const int page : {0, 1, 2})
        EXPECT_EQ(tabs->tabIcon(page).isNull(), page == 2) << page;
    auto* view = LastForm()->Body()->findChild<FailureView*>();
    ASSERT_NE(view, nullptr);
    view->findChild<QPushButton*>()->click();
    EXPECT_TRUE(QApplication::clipboard()->text().contains("There is no class T.None"));
    window->SetActivePageIndex(2);
    Page("A").Enter("");
    EXPECT_TRUE(tabs->tabToolTip(2).contains("missing or invalid"));
    Page("A").Enter("x");
    EXPECT_FALSE(tabs->tabToolTip(2).contains("missing or invalid"));
    EXPECT_NE(m_application->AsText().find("  Page A (in front) (changed)\n  Commands [OK] [Apply] [Cancel]\n"),
              std::string::npos)
        << m_application->AsText();
}

TEST_F(HostFixture, TwoHundredWindowsLeaveNothingBehind) {
    Define("W", "Type='Window'", "A B");
    Define("D", dialogAttributes, "A");
    Start();
    (void)Open("W");
    LastForm()->Unload(); // what is made once is there now
    m_forms.clear();
    Turn();
    const auto widgets = QApplication::allWidgets().size();
    for (int i = 0; i < 200; ++i) {
        const auto window = Open(i % 3 == 0 ? "D" : "W");
        if (i % 2 == 0)
            LastForm()->Frame()->close();
        else
            window->Terminate();
    }
    EXPECT_FALSE(m_application->MainForm()->ActiveForm());
    EXPECT_EQ(Manager().Windows()->Count(), 0);
    m_forms.clear();
    Turn();
    EXPECT_EQ(QApplication::allWidgets().size(), widgets);
    EXPECT_EQ(m_heard->pages, 0);
    EXPECT_EQ(m_heard->widgets, 0);
    EXPECT_EQ(m_application->Window().Area().subWindowList().size(), 0);
}

TEST_F(HostFixture, KeysAndTheMenuGoFromWindowToWindow) {
    Define("W", "Type='Window'", "A");
    Start();
    std::vector<Ref<Window>> windows{Open("W", "1"), Open("W", "2"), Open("W", "3")};
    const auto active = [&] { return Manager().ActiveWindow() ? Manager().ActiveWindow()->Key() : std::string(); };
    EXPECT_EQ(active(), "3");
    const auto key = [&](Qt::Key keyKind, Qt::KeyboardModifiers modifiers) {
        m_application->Window().activateWindow();
        QTest::keyClick(&m_application->Window(), keyKind, modifiers);
        return active();
    };
    EXPECT_EQ(key(Qt::Key_Tab, Qt::ControlModifier), "1");
    EXPECT_EQ(key(Qt::Key_Tab, Qt::ControlModifier), "2");
    EXPECT_EQ(key(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier), "1");
    QMdiArea& area = m_application->Window().Area();
    EXPECT_EQ(area.activeSubWindow(), m_forms.front()->Frame());
    area.setActiveSubWindow(static_cast<QMdiSubWindow*>(m_forms[1]->Frame()));
    EXPECT_EQ(active(), "2") << "a click into a window";
    m_forms[1]->Unload();
    EXPECT_EQ(active(), "1") << "the one before it";
    EXPECT_EQ(key(Qt::Key_W, Qt::ControlModifier), "3");
    EXPECT_EQ(Manager().Windows()->Count(), 1);
}

TEST_F(HostFixture, WindowsAreArrangedAndTheirStateIsTheModels) {
    Define("W", "Type='Window'", "A");
    Start();
    for (int i = 0; i < 3; ++i)
        (void)Open("W");
    EXPECT_NE(m_forms[0]->Left(), m_forms[1]->Left()) << "none hides another";
    const auto area = m_application->Window().Area().viewport()->size();
    m_application->MainForm()->Arrange(Arrangement::TileHorizontal);
    for (const auto& form : m_forms)
        EXPECT_EQ(form->Frame()->width(), area.width());
    m_application->MainForm()->Arrange(Arrangement::TileVertical);
    EXPECT_EQ(m_forms[0]->Frame()->height(), area.height());
    EXPECT_FLOAT_EQ(m_forms[1]->Width(), static_cast<Single>(m_forms[1]->Frame()->width() * 15));
    m_forms[0]->Frame()->showMinimized();
    EXPECT_EQ(m_forms[0]->WindowState(), FormState::Minimized);
    m_application->MainForm()->Arrange(Arrangement::ArrangeIcons);
    EXPECT_EQ(m_forms[0]->Frame()->geometry().bottomLeft(), QPoint(0, area.height() - 1));
    m_forms[2]->Activate();
    m_forms[2]->SetWindowState(FormState::Maximized);
    EXPECT_TRUE(m_forms[2]->Frame()->isMaximized());
    EXPECT_TRUE(m_application->Window().windowTitle().contains("W")) << "they share the title";
    m_application->Window().SetTabbedWindows(true);
    m_forms[2]->Unload();
    EXPECT_EQ(m_application->Window().Area().activeSubWindow()->width(), area.width())
        << "the tab that comes up is whole";
    m_forms[1]->Activate();
    m_application->Window().SetTabbedWindows(false);
    EXPECT_EQ(m_application->Window().Area().activeSubWindow(), m_forms[1]->Frame());
}

TEST_F(HostFixture, TiledWindowsThatNeedMoreThanTheirShareDoNotLieOverOneAnother) {
    Define("W", "Type='Window'", "A");
    Start();
    for (int i = 0; i < 2; ++i)
        (void)Open("W");
    const auto area = m_application->Window().Area().viewport()->size();
    // More than half for one of them, and then more than there is for both.
    for (const int percent : {60, 80}) {
        m_forms[0]->Frame()->setMinimumSize(area.width() * percent / 100, area.height() * percent / 100);
        m_forms[1]->Frame()->setMinimumSize(area.width() * (percent - 30) / 100, area.height() * (percent - 30) / 100);
        for (const Arrangement how : {Arrangement::TileHorizontal, Arrangement::TileVertical}) {
            m_application->MainForm()->Arrange(how);
            const QRect first = m_forms[0]->Frame()->geometry();
            const QRect second = m_forms[1]->Frame()->geometry();
            EXPECT_FALSE(first.intersects(second)) << percent;
            const QRect both = first.united(second);
            EXPECT_LE(how == Arrangement::TileHorizontal ? both.width() : both.height(),
                      how == Arrangement::TileHorizontal ? area.width() : area.height())
                << "across there is room for all";
        }
    }
}

TEST_F(HostFixture, MinimumSizeAndFixedPagesHold) {
    Define("W", "Type='Window'", "A");
    Define("F", dialogAttributes, "B#");
    Start();
    (void)Open("W");
    LastForm()->Frame()->resize(10, 10);
    EXPECT_EQ(LastForm()->Body()->Place(0).size(), QSize(200, 100)) << "3000 and 1500 twips";
    (void)Open("F");
    EXPECT_EQ(LastForm()->Body()->Place(0).widget()->size(), QSize(300, 200));
    LastForm()->Frame()->resize(900, 900);
    EXPECT_EQ(LastForm()->Body()->Place(0).size(), QSize(300, 200));
}

} // namespace
} // namespace corvane::desktop
