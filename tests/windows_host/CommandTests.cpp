// What the commands of each kind of window do, by button, by key and by code.
#include "desktop/windows/CommandRow.h"
#include "desktop/windows/LeaveBox.h"
#include "tests/windows_host/HostRoom.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QTimer>
#include <algorithm>

namespace corvane::desktop {
namespace {

using Command = StandardCommandConstants;

constexpr const char* sDialog = "Type='Dialog' IsMDIChild='false'";
constexpr const char* sWizard = "Type='Wizard' IsMDIChild='false'";

struct CommandCase {
    const char* sWhat;
    const char* sAttributes;
    const char* sPages;
    const char* sEntered; // PAGE=TEXT, separated by blanks
    const char* sCommands;
    Command eClick;
    const char* sHeard;
    bool bOpenAfterwards;
    const char* sAnswer = nullptr; // to the question about changes
};

class CommandOfWindow : public HostRoom, public ::testing::WithParamInterface<CommandCase> {};

TEST_P(CommandOfWindow, ActsOnTheStateThatTheButtonsShow) {
    const CommandCase& oCase = GetParam();
    // The button and the code act alike.
    for (const bool bByCode : {false, true}) {
        SCOPED_TRACE(bByCode ? "by code" : "by the button");
        if (!m_pApplication) {
            Define("W", oCase.sAttributes, oCase.sPages);
            Start();
        }
        const auto oWindow = Open("W");
        for (const QString& sEntry : QString(oCase.sEntered).split(' ', Qt::SkipEmptyParts))
            Page(sEntry.section('=', 0, 0).toStdString()).Enter(sEntry.section('=', 1).toStdString());
        EXPECT_EQ(Commands(), oCase.sCommands);
        m_pHeard->Take();
        if (oCase.sAnswer)
            m_pApplication->Dialogs().AddAnswer(oCase.sAnswer);
        if (bByCode)
            oWindow->ClickCommand(oCase.eClick);
        else if (QPushButton* pButton = Button(oCase.eClick))
            pButton->click();
        EXPECT_EQ(m_pHeard->Take(), oCase.sHeard);
        EXPECT_EQ(LastForm()->IsLoaded(), oCase.bOpenAfterwards);
        EXPECT_EQ(m_pApplication->Failures().ShownCount(), 0);
        if (LastForm()->IsLoaded()) {
            m_pApplication->Dialogs().AddAnswer("Discard");
            LastForm()->Unload();
            (void)m_pApplication->Dialogs().TakeAnswer();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, CommandOfWindow,
    ::testing::Values(CommandCase{"DialogWithoutChanges", sDialog, "A B", "", "OK* -Apply Cancel", Command::cvOK,
                                  "A.Click1 B.Click1 A.Deactivate A.Terminate B.Terminate exit(done)", false},
                      CommandCase{"OkSavesWhatHasChanged", sDialog, "A B", "A=new", "OK* Apply Cancel", Command::cvOK,
                                  "A.Click1 B.Click1 A.Save A.Deactivate A.Terminate B.Terminate exit(done)", false},
                      CommandCase{"ApplySavesAndStays", sDialog, "A B", "A=new B=new", "OK* Apply Cancel",
                                  Command::cvApply, "A.Click3 B.Click3 A.Save B.Save", true},
                      CommandCase{"NothingIsDoneWhileAPageIsInvalid", sDialog, "A B", "A=new B=", "-OK* -Apply Cancel",
                                  Command::cvOK, "", true},
                      CommandCase{"DisabledApply", sDialog, "A", "", "OK* -Apply Cancel", Command::cvApply, "", true},
                      CommandCase{"CancelWithoutChangesAsksNothing", sDialog, "A", "", "OK* -Apply Cancel",
                                  Command::cvCancel, "A.Click2 A.Deactivate A.Terminate exit(cancelled)", false},
                      CommandCase{"CancelThatIsTakenBack", sDialog, "A", "A=new", "OK* Apply Cancel", Command::cvCancel,
                                  "", true, "Stay"},
                      CommandCase{"CancelThatDiscards", sDialog, "A", "A=new", "OK* Apply Cancel", Command::cvCancel,
                                  "A.Click2 A.Deactivate A.Terminate exit(cancelled)", false, "Discard"},
                      CommandCase{"CancelThatSaves", sDialog, "A", "A=new", "OK* Apply Cancel", Command::cvCancel,
                                  "A.Save A.Deactivate A.Terminate exit(done)", false, "Save"},
                      CommandCase{"WithoutApply", "Type='Dialog' IsMDIChild='false' IsApplyCommandShown='false'", "A",
                                  "A=new", "OK* Cancel", Command::cvApply, "", true},
                      CommandCase{"ChildWithoutChangesHasNoCommands", "Type='Window'", "A", "", "", Command::cvOK,
                                  "A.Click1 A.Deactivate A.Terminate exit(done)", false},
                      CommandCase{"ChildGetsThemWithTheFirstChange", "Type='Window'", "A", "A=new", "OK* Apply Cancel",
                                  Command::cvApply, "A.Click3 A.Save", true},
                      CommandCase{"SaveDialogSavesAll", "Type='SaveDialog' IsMDIChild='false'", "A B", "",
                                  "Save* Save As… Cancel", Command::cvSave,
                                  "A.Click1 B.Click1 A.Save B.Save A.Deactivate A.Terminate B.Terminate exit(done)",
                                  false},
                      CommandCase{"SaveAsTellsThePagesAndEndsToo", "Type='SaveDialog' IsMDIChild='false'", "A", "",
                                  "Save* Save As… Cancel", Command::cvSaveAs,
                                  "A.Click3 A.Save A.Deactivate A.Terminate exit(done)", false},
                      CommandCase{"NextGoesOn", sWizard, "A B", "", "-Previous Next* Finish Cancel", Command::cvNext,
                                  "A.Click5 A.Deactivate B.NewWidget B.Activate", true},
                      CommandCase{"NextNeedsAValidStep", sWizard, "A B", "A=", "-Previous -Next* -Finish Cancel",
                                  Command::cvNext, "", true},
                      CommandCase{"FinishNeedsTheStepsToCome", sWizard, "A B", "B=", "-Previous Next* -Finish Cancel",
                                  Command::cvFinish, "", true},
                      CommandCase{"FinishEarlyLeavesOutWhatIsOptional", sWizard, "A B?", "",
                                  "-Previous Next* Finish Cancel", Command::cvFinish,
                                  "A.Click1 B.Click1 A.Save A.Deactivate A.Terminate B.Terminate exit(done)", false},
                      CommandCase{"WizardWithABrokenStepDoesNotFinish", sWizard, "A None", "",
                                  "-Previous Next* -Finish Cancel", Command::cvFinish, "", true},
                      CommandCase{"BrokenPageOfADialogIsPassedOver", sDialog, "None A", "", "OK* -Apply Cancel",
                                  Command::cvOK, "A.Click1 A.Terminate exit(done)", false}),
    [](const auto& oInfo) { return oInfo.param.sWhat; });

TEST_F(HostRoom, WizardGoesForwardAndBackAndItsLastStepFinishes) {
    Define("W", sWizard, "A B? C");
    Start();
    const auto oWindow = Open("W");
    Page("C").Enter("");
    oWindow->SetActivePageIndex(2);
    EXPECT_EQ(oWindow->ActivePageIndex(), 2) << "nothing before it holds it back";
    EXPECT_EQ(Commands(), "Previous -Next -Finish* Cancel");
    Page("C").Enter("x");
    EXPECT_EQ(Commands(), "Previous -Next Finish* Cancel");
    oWindow->ClickCommand(Command::cvPrevious);
    Page("B").Enter(""); // something has been entered, so that it isn't skipped in silence
    EXPECT_EQ(Commands(), "Previous -Next* -Finish Cancel");
    oWindow->SetActivePageIndex(2);
    EXPECT_EQ(oWindow->ActivePageIndex(), 1);
    Page("B").Enter("old");
    m_pHeard->Take();
    oWindow->ClickCommand(Command::cvPrevious);
    EXPECT_EQ(m_pHeard->Take(), "B.Click4 B.Deactivate A.Activate");
    EXPECT_THROW(oWindow->SetActivePageIndex(3), Failure);
}

TEST_F(HostRoom, KeysChooseTheDefaultCommandAndCancelButNotInADocument) {
    struct Case {
        const char* sWindow;
        Qt::Key eKey;
        const char* sEnd; // how the window has ended; nothing while it is open
    };
    Define("Dialog", sDialog, "A");
    Define("Child", "Type='Dialog'", "A");
    Define("Document", "Type='Window'", "A");
    Start();
    for (const auto& oCase :
         {Case{"Dialog", Qt::Key_Return, "exit(done)"}, Case{"Child", Qt::Key_Return, "exit(done)"},
          Case{"Dialog", Qt::Key_Escape, "exit(cancelled)"}, Case{"Child", Qt::Key_Escape, "exit(cancelled)"},
          Case{"Document", Qt::Key_Return, ""}, Case{"Document", Qt::Key_Escape, ""}}) {
        SCOPED_TRACE(oCase.sWindow);
        (void)Open(oCase.sWindow);
        Button(Command::cvOK)->setFocus(); // the default stays where the focus has only passed
        auto* pEdit = LastForm()->Body()->findChild<QLineEdit*>();
        pEdit->setFocus();
        Page("A").Enter("new");
        QTest::keyClick(pEdit, oCase.eKey);
        const std::string sHeard = m_pHeard->Take();
        EXPECT_NE(sHeard.find(oCase.sEnd), std::string::npos) << sHeard;
        EXPECT_EQ(LastForm()->IsLoaded(), oCase.sEnd == std::string());
    }
}

TEST_F(HostRoom, TabGoesFromThePagesNamesIntoThePageAndThenToTheCommands) {
    Define("Dialog", sDialog, "A B");
    Start();
    const auto oWindow = Open("Dialog");
    QWidget* pBody = LastForm()->Body();
    for (const Long iPage : {0, 1}) {
        oWindow->SetActivePageIndex(iPage);
        Turn();
        pBody->findChild<QTabBar*>()->setFocus();
        const auto aEdits = pBody->findChildren<QLineEdit*>();
        const auto itShown = std::find_if(aEdits.begin(), aEdits.end(), [](auto* pEdit) { return pEdit->isVisible(); });
        ASSERT_NE(itShown, aEdits.end());
        for (QWidget* pNext : {static_cast<QWidget*>(*itShown), static_cast<QWidget*>(Button(Command::cvOK)),
                               static_cast<QWidget*>(Button(Command::cvCancel))}) {
            QTest::keyClick(pBody->window()->focusWidget(), Qt::Key_Tab);
            EXPECT_EQ(pBody->window()->focusWidget(), pNext) << iPage;
        }
    }
}

TEST_F(HostRoom, HelpIsForThePageInFront) {
    Define("D", sDialog, "A! B");
    Start();
    const auto oWindow = Open("D");
    EXPECT_EQ(Commands(), "Help OK* -Apply Cancel");
    m_pHeard->Take();
    QTest::keyClick(LastForm()->Body()->findChild<QLineEdit*>(), Qt::Key_F1);
    EXPECT_EQ(m_pHeard->Take(), "A.Click0");
    ASSERT_EQ(m_pApplication->Messages().Shown().size(), 1U);
    EXPECT_TRUE(m_pApplication->Messages().Shown().front().sText.contains("Help/7.html"));
    oWindow->SetActivePageIndex(1);
    EXPECT_EQ(Commands(), "-Help OK* -Apply Cancel");
}

TEST(LeaveBox, OffersToSaveOnlyWhereThatCanBeDone) {
    struct Case {
        bool bCanSave;
        const char* sPressed; // empty for the escape key
        LeaveAnswer eAnswer;
        int nButtons;
    };
    for (const auto& oCase :
         {Case{true, "&Save", LeaveAnswer::Save, 3}, Case{true, "&Discard", LeaveAnswer::Discard, 3},
          Case{true, "", LeaveAnswer::Stay, 3}, Case{false, "&Discard", LeaveAnswer::Discard, 2}}) {
        QTimer::singleShot(0, [&] {
            QWidget* pBox = QApplication::activeModalWidget();
            ASSERT_NE(pBox, nullptr);
            const auto aButtons = pBox->findChildren<QPushButton*>();
            EXPECT_EQ(aButtons.size(), oCase.nButtons);
            for (QPushButton* pButton : aButtons)
                if (pButton->text() == oCase.sPressed)
                    return pButton->click();
            QTest::keyClick(pBox, Qt::Key_Escape);
        });
        EXPECT_EQ(AskInBox({"Penguins", "", oCase.bCanSave, nullptr}), oCase.eAnswer);
    }
}

TEST_F(HostRoom, CodeHoldsCommandsBackAndMarksAWindowAsChanged) {
    Define("D", sDialog, "A");
    Start();
    const auto oWindow = Open("D");
    oWindow->SetIsCommandEnabled(Command::cvOK, false);
    EXPECT_EQ(Commands(), "-OK* -Apply Cancel");
    EXPECT_FALSE(oWindow->CanBeSaved());
    oWindow->SetIsCommandEnabled(Command::cvOK, true);
    oWindow->SetIsCommandEnabled(Command::cvApply, true);
    EXPECT_EQ(Commands(), "OK* Apply Cancel");
    EXPECT_TRUE(oWindow->CanBeSaved());
    m_pHeard->Take();
    oWindow->Save();
    EXPECT_EQ(m_pHeard->Take(), "A.Save");
    EXPECT_EQ(Commands(), "OK* -Apply Cancel");
    Page("A").Enter("");
    oWindow->SetIsCommandEnabled(Command::cvApply, true);
    EXPECT_EQ(Commands(), "-OK* -Apply Cancel") << "an invalid page can't be overruled";
}

TEST_F(HostRoom, FailingSaveIsShownAndKeepsTheWindowWithThePageInFront) {
    Define("D", sDialog, "A B.Save");
    Start();
    const auto oWindow = Open("D");
    Page("A").Enter("new");
    Page("B").Enter("new");
    m_pHeard->Take();
    oWindow->ClickCommand(Command::cvOK);
    EXPECT_EQ(m_pHeard->Take(), "A.Click1 B.Click1 A.Save B.Save A.Deactivate B.NewWidget B.Activate");
    EXPECT_EQ(m_pApplication->Failures().ShownCount(), 1);
    EXPECT_TRUE(LastForm()->IsLoaded());
    EXPECT_THROW(oWindow->Save(), Failure) << "code hears of it";
    Page("B").sFailsIn.clear();
    oWindow->ClickCommand(Command::cvOK);
    EXPECT_FALSE(LastForm()->IsLoaded());
}

TEST(CommandRow, FitsANarrowWindowWithoutCuttingATextOff) {
    for (const auto eType : {WindowTypeConstants::cvWizard, WindowTypeConstants::cvSaveDialog}) {
        CommandRow oRow(eType, false, false, nullptr);
        oRow.resize(oRow.minimumSizeHint());
        EXPECT_LT(oRow.width(), oRow.sizeHint().width());
        oRow.show();
        for (const auto* pButton : oRow.findChildren<QPushButton*>())
            EXPECT_GT(pButton->width(), pButton->fontMetrics().size(Qt::TextShowMnemonic, pButton->text()).width() + 4)
                << pButton->text().toStdString();
    }
}

} // namespace
} // namespace corvane::desktop
