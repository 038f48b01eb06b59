// The life of windows on screen: how they open, who may close them, and what is left of them.
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "desktop/windows/FailureView.h"
#include "desktop/windows/PagePlace.h"
#include "tests/windows_host/HostRoom.h"

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

constexpr const char* sDialog = "Type='Dialog' IsMDIChild='false'";
constexpr const char* sModal = "Type='Dialog' IsMDIChild='false' IsModal='true'";

TEST_F(HostRoom, ChildOpensInTheOrderOfTheRealFormAndClosesInIts) {
    Define("W", "Type='Window'", "A B");
    Start();
    const auto oWindow = Open("W", "k");
    EXPECT_EQ(m_pHeard->Take(), "A.Initialize B.Initialize A.NewWidget A.Activate");
    QMdiArea& oArea = m_pApplication->Window().Area();
    ASSERT_EQ(oArea.subWindowList().size(), 1);
    EXPECT_EQ(oArea.activeSubWindow()->widget(), LastForm()->Body());
    EXPECT_EQ(LastForm()->Body()->Place(0).size(), QSize(300, 200)) << "4500 and 3000 twips";
    oWindow->SetActivePageIndex(1);
    EXPECT_EQ(m_pHeard->Take(), "A.Deactivate B.NewWidget B.Activate");
    const auto oAgain = Open("W", "k");
    EXPECT_EQ(oAgain, oWindow);
    EXPECT_EQ(m_pHeard->Take(), "") << "the key shows the open window";
    oWindow->Terminate();
    EXPECT_EQ(m_pHeard->Take(), "B.Deactivate A.Terminate B.Terminate exit(cancelled)");
    EXPECT_EQ(Manager().Windows()->Count(), 0);
}

struct CloseCase {
    const char* sWho;
    void (*fnClose)(Application& oApplication, WindowForm& oForm);
    bool bWholeApplication = false; // it asks about all windows at once
};
class ClosingOfAWindow : public HostRoom, public ::testing::WithParamInterface<CloseCase> {};

TEST_P(ClosingOfAWindow, AsksFirstAndThenTakesThePagesTheFormAndTheWindow) {
    Define("W", "Type='Window'", "A");
    Start();
    (void)Open("W", "k");
    const Ref<WindowForm> oForm = LastForm();
    Page("A").Enter("new");
    m_pHeard->Take();
    m_pApplication->Dialogs().AddAnswer("Stay");
    GetParam().fnClose(*m_pApplication, *oForm);
    EXPECT_TRUE(oForm->IsLoaded());
    EXPECT_TRUE(m_pApplication->Window().isVisible());
    EXPECT_EQ(m_pHeard->Take(), "");
    if (!GetParam().bWholeApplication) {
        EXPECT_FALSE(m_pApplication->MainForm()->ActiveForm()) << "whoever asks in the same turn asks in vain";
    }
    Turn();
    EXPECT_TRUE(m_pApplication->MainForm()->ActiveForm());
    m_pApplication->Dialogs().AddAnswer("Discard");
    GetParam().fnClose(*m_pApplication, *oForm);
    EXPECT_EQ(m_pHeard->Take(), "A.Deactivate A.Terminate exit(cancelled)");
    EXPECT_FALSE(oForm->IsLoaded());
}

INSTANTIATE_TEST_SUITE_P(
    Sides, ClosingOfAWindow,
    ::testing::Values(CloseCase{"CloseBox", [](Application&, WindowForm& oForm) { oForm.Frame()->close(); }},
                      CloseCase{"Code", [](Application&, WindowForm& oForm) { oForm.Unload(); }},
                      CloseCase{"CloseAll", [](Application& oApp, WindowForm&) { oApp.Choose("Window.CloseAll"); }},
                      CloseCase{"Key",
                                [](Application& oApp, WindowForm&) {
                                    oApp.Window().activateWindow();
                                    QTest::keyClick(&oApp.Window(), Qt::Key_F4, Qt::ControlModifier);
                                }},
                      CloseCase{"MainWindow", [](Application& oApp, WindowForm&) { oApp.Window().close(); }, true},
                      CloseCase{"AppExit", [](Application&, WindowForm&) { CorvaneMain::Framework()->AppExit(); },
                                true}),
    [](const auto& oInfo) { return oInfo.param.sWho; });

TEST_F(HostRoom, MainWindowClosesWhatIsOpenLatestFirstAndStopsAtARefusal) {
    Define("W", "Type='Window'", "A");
    Define("D", sDialog, "B");
    Start();
    (void)Open("W", "w");
    Page("A").Enter("new");
    (void)Open("D", "d");
    m_pHeard->Take();
    m_pApplication->Dialogs().AddAnswer("Stay");
    m_pApplication->Window().close();
    EXPECT_EQ(m_pHeard->Take(), "") << "one question for all of them, before any closes";
    EXPECT_TRUE(m_pApplication->Window().isVisible());
    EXPECT_TRUE(CorvaneMain::Framework()->WindowManager());
    m_pApplication->Dialogs().AddAnswer("Save");
    m_pApplication->Window().close();
    EXPECT_EQ(m_pHeard->Take(), "A.Save B.Deactivate B.Terminate exit(cancelled) A.Activate A.Deactivate A.Terminate "
                                "exit(done)");
    EXPECT_FALSE(CorvaneMain::Framework()->WindowManager());
}

TEST_F(HostRoom, ModalWindowHoldsItsCallerAndADeferredOneComesFromTheEventLoop) {
    Define("M", sModal, "A");
    Start();
    for (const bool bAsync : {false, true}) {
        std::string sInside;
        QTimer::singleShot(100, [&] {
            EXPECT_TRUE(m_pApplication->IsModalFormOpen());
            EXPECT_FALSE(m_pApplication->Choose("Window.CloseAll"));
            sInside = m_pHeard->Take();
            LastForm()->ClickCommand(Command::cvOK);
        });
        const auto oWindow = Open("M", {}, false, bAsync);
        EXPECT_EQ(m_pHeard->Take(), bAsync ? "A.Initialize" : "A.Click1 A.Deactivate A.Terminate exit(done)");
        while (bAsync && oWindow->WasWindowCancelled() && LastForm()->IsLoaded())
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        EXPECT_EQ(sInside, bAsync ? "A.NewWidget A.Activate" : "A.Initialize A.NewWidget A.Activate");
        EXPECT_FALSE(oWindow->WasWindowCancelled());
        m_pHeard->Take();
    }
}

// The page's one event fails; the window works on and closes, and the other page isn't touched.
class PageThatFails : public HostRoom, public ::testing::WithParamInterface<std::pair<const char*, int>> {};

TEST_P(PageThatFails, DoesNotTakeTheWindowWithIt) {
    const auto& [sEvent, nShown] = GetParam();
    Define("D", sDialog, "A." + std::string(sEvent) + " B");
    Start();
    const auto oWindow = Open("D");
    oWindow->SetActivePageIndex(1);
    EXPECT_NE(m_pHeard->Take().find("B.NewWidget B.Activate"), std::string::npos);
    Page("B").Enter("new");
    EXPECT_EQ(oWindow->CanBeSaved(), sEvent != std::string("Validate"));
    oWindow->SetActivePageIndex(0);
    m_pApplication->Dialogs().AddAnswer("Discard");
    oWindow->ClickCommand(Command::cvCancel);
    EXPECT_FALSE(LastForm()->IsLoaded());
    EXPECT_EQ(m_pApplication->Failures().ShownCount(), nShown);
    m_aForms.clear();
    Turn();
    EXPECT_EQ(m_pHeard->nPages, 0);
    EXPECT_EQ(m_pHeard->nWidgets, 0);
}

INSTANTIATE_TEST_SUITE_P(Events, PageThatFails,
                         ::testing::Values(std::pair("Initialize", 0), std::pair("NewWidget", 0),
                                           std::pair("Activate", 2), std::pair("Deactivate", 2),
                                           std::pair("Validate", 1), std::pair("CommandClick", 1),
                                           std::pair("Terminate", 1)),
                         [](const auto& oInfo) { return oInfo.param.first; });

TEST_F(HostRoom, PageThatCannotBeShownSaysWhyAndItsTabIsMarked) {
    Define("D", sDialog, "None Plain A");
    Start();
    const auto oWindow = Open("D");
    const auto* pTabs = LastForm()->Body()->findChild<QTabWidget*>();
    for (const int iPage : {0, 1, 2})
        EXPECT_EQ(pTabs->tabIcon(iPage).isNull(), iPage == 2) << iPage;
    auto* pView = LastForm()->Body()->findChild<FailureView*>();
    ASSERT_NE(pView, nullptr);
    pView->findChild<QPushButton*>()->click();
    EXPECT_TRUE(QApplication::clipboard()->text().contains("There is no class T.None"));
    oWindow->SetActivePageIndex(2);
    Page("A").Enter("");
    EXPECT_TRUE(pTabs->tabToolTip(2).contains("missing or wrong"));
    Page("A").Enter("x");
    EXPECT_FALSE(pTabs->tabToolTip(2).contains("missing or wrong"));
    EXPECT_NE(m_pApplication->AsText().find("  Page A (in front) (changed)\n  Commands [OK] [Apply] [Cancel]\n"),
              std::string::npos)
        << m_pApplication->AsText();
}

TEST_F(HostRoom, TwoHundredWindowsLeaveNothingBehind) {
    Define("W", "Type='Window'", "A B");
    Define("D", sDialog, "A");
    Start();
    (void)Open("W");
    LastForm()->Unload(); // what is made once is there now
    m_aForms.clear();
    Turn();
    const auto nWidgets = QApplication::allWidgets().size();
    for (int i = 0; i < 200; ++i) {
        const auto oWindow = Open(i % 3 == 0 ? "D" : "W");
        if (i % 2 == 0)
            LastForm()->Frame()->close();
        else
            oWindow->Terminate();
    }
    EXPECT_FALSE(m_pApplication->MainForm()->ActiveForm());
    EXPECT_EQ(Manager().Windows()->Count(), 0);
    m_aForms.clear();
    Turn();
    EXPECT_EQ(QApplication::allWidgets().size(), nWidgets);
    EXPECT_EQ(m_pHeard->nPages, 0);
    EXPECT_EQ(m_pHeard->nWidgets, 0);
    EXPECT_EQ(m_pApplication->Window().Area().subWindowList().size(), 0);
}

TEST_F(HostRoom, KeysAndTheMenuGoFromWindowToWindow) {
    Define("W", "Type='Window'", "A");
    Start();
    std::vector<Ref<Window>> aWindows{Open("W", "1"), Open("W", "2"), Open("W", "3")};
    const auto fnActive = [&] { return Manager().ActiveWindow() ? Manager().ActiveWindow()->Key() : std::string(); };
    EXPECT_EQ(fnActive(), "3");
    const auto fnKey = [&](Qt::Key eKey, Qt::KeyboardModifiers eModifiers) {
        m_pApplication->Window().activateWindow();
        QTest::keyClick(&m_pApplication->Window(), eKey, eModifiers);
        return fnActive();
    };
    EXPECT_EQ(fnKey(Qt::Key_Tab, Qt::ControlModifier), "1");
    EXPECT_EQ(fnKey(Qt::Key_Tab, Qt::ControlModifier), "2");
    EXPECT_EQ(fnKey(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier), "1");
    QMdiArea& oArea = m_pApplication->Window().Area();
    EXPECT_EQ(oArea.activeSubWindow(), m_aForms.front()->Frame());
    oArea.setActiveSubWindow(static_cast<QMdiSubWindow*>(m_aForms[1]->Frame()));
    EXPECT_EQ(fnActive(), "2") << "a click into a window";
    m_aForms[1]->Unload();
    EXPECT_EQ(fnActive(), "1") << "the one before it";
    EXPECT_EQ(fnKey(Qt::Key_W, Qt::ControlModifier), "3");
    EXPECT_EQ(Manager().Windows()->Count(), 1);
}

TEST_F(HostRoom, WindowsAreArrangedAndTheirStateIsTheModels) {
    Define("W", "Type='Window'", "A");
    Start();
    for (int i = 0; i < 3; ++i)
        (void)Open("W");
    EXPECT_NE(m_aForms[0]->Left(), m_aForms[1]->Left()) << "none hides another";
    const auto oArea = m_pApplication->Window().Area().viewport()->size();
    m_pApplication->MainForm()->Arrange(Arrangement::TileHorizontal);
    for (const auto& oForm : m_aForms)
        EXPECT_EQ(oForm->Frame()->width(), oArea.width());
    m_pApplication->MainForm()->Arrange(Arrangement::TileVertical);
    EXPECT_EQ(m_aForms[0]->Frame()->height(), oArea.height());
    EXPECT_FLOAT_EQ(m_aForms[1]->Width(), static_cast<Single>(m_aForms[1]->Frame()->width() * 15));
    m_aForms[0]->Frame()->showMinimized();
    EXPECT_EQ(m_aForms[0]->WindowState(), FormState::Minimized);
    m_pApplication->MainForm()->Arrange(Arrangement::ArrangeIcons);
    EXPECT_EQ(m_aForms[0]->Frame()->geometry().bottomLeft(), QPoint(0, oArea.height() - 1));
    m_aForms[2]->Activate();
    m_aForms[2]->SetWindowState(FormState::Maximized);
    EXPECT_TRUE(m_aForms[2]->Frame()->isMaximized());
    EXPECT_TRUE(m_pApplication->Window().windowTitle().contains("W")) << "they share the title";
    m_pApplication->Window().SetTabbedWindows(true);
    m_aForms[2]->Unload();
    EXPECT_TRUE(m_pApplication->Window().Area().activeSubWindow()->isMaximized()) << "the tab that comes up is whole";
    m_aForms[1]->Activate();
    m_pApplication->Window().SetTabbedWindows(false);
    EXPECT_EQ(m_pApplication->Window().Area().activeSubWindow(), m_aForms[1]->Frame());
}

TEST_F(HostRoom, TiledWindowsThatNeedMoreThanTheirShareDoNotLieOverOneAnother) {
    Define("W", "Type='Window'", "A");
    Start();
    for (int i = 0; i < 2; ++i)
        (void)Open("W");
    const auto oArea = m_pApplication->Window().Area().viewport()->size();
    // More than half for one of them, and then more than there is for both.
    for (const int nPercent : {60, 80}) {
        m_aForms[0]->Frame()->setMinimumSize(oArea.width() * nPercent / 100, oArea.height() * nPercent / 100);
        m_aForms[1]->Frame()->setMinimumSize(oArea.width() * (nPercent - 30) / 100,
                                             oArea.height() * (nPercent - 30) / 100);
        for (const Arrangement eHow : {Arrangement::TileHorizontal, Arrangement::TileVertical}) {
            m_pApplication->MainForm()->Arrange(eHow);
            const QRect oFirst = m_aForms[0]->Frame()->geometry();
            const QRect oSecond = m_aForms[1]->Frame()->geometry();
            EXPECT_FALSE(oFirst.intersects(oSecond)) << nPercent;
            const QRect oBoth = oFirst.united(oSecond);
            EXPECT_LE(eHow == Arrangement::TileHorizontal ? oBoth.width() : oBoth.height(),
                      eHow == Arrangement::TileHorizontal ? oArea.width() : oArea.height())
                << "across there is room for all";
        }
    }
}

TEST_F(HostRoom, MinimumSizeAndFixedPagesHold) {
    Define("W", "Type='Window'", "A");
    Define("F", sDialog, "B#");
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
