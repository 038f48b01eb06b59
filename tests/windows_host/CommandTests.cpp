// What the commands of each kind of window do, by button, by key and by code.
#include "desktop/windows/CommandRow.h"
#include "desktop/windows/LeaveBox.h"
#include "tests/windows_host/HostFixture.h"

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

struct CommandCase {
    const char* what;
    const char* attributes;
    const char* pages;
    const char* entered; // PAGE=TEXT, separated by blanks
    const char* commands;
    Command click;
    const char* heard;
    bool openAfterwards;
    const char* answer = nullptr; // to the question about changes
};

class CommandOfWindow : public HostFixture, public ::testing::WithParamInterface<CommandCase> {};

TEST_P(CommandOfWindow, ActsOnTheStateThatTheButtonsShow) {
    const CommandCase& testCase = GetParam();
    // The button and the code act alike.
    for (const bool byCode : {false, true}) {
        SCOPED_TRACE(byCode ? "by code" : "by the button");
        if (!m_application) {
            Define("W", testCase.attributes, testCase.pages);
            Start();
        }
        const auto window = Open("W");
        for (const QString& entry : QString(testCase.entered).split(' ', Qt::SkipEmptyParts))
            Page(entry.section('=', 0, 0).toStdString()).Enter(entry.section('=', 1).toStdString());
        EXPECT_EQ(Commands(), testCase.commands);
        m_heard->Take();
        if (testCase.answer)
            m_application->Dialogs().AddAnswer(testCase.answer);
        if (byCode)
            window->ClickCommand(testCase.click);
        else if (QPushButton* button = Button(testCase.click))
            button->click();
        EXPECT_EQ(m_heard->Take(), testCase.heard);
        EXPECT_EQ(LastForm()->IsLoaded(), testCase.openAfterwards);
        EXPECT_EQ(m_application->Failures().ShownCount(), 0);
        if (LastForm()->IsLoaded()) {
            m_application->Dialogs().AddAnswer("Discard");
            LastForm()->Unload();
            (void)m_application->Dialogs().TakeAnswer();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, CommandOfWindow,
    ::testing::Values(
        CommandCase{"DialogWithoutChanges", dialogAttributes, "A B", "", "OK* -Apply Cancel", Command::cvOK,
                    "A.Click1 B.Click1 A.Deactivate A.Terminate B.Terminate exit(done)", false},
        CommandCase{"OkSavesWhatHasChanged", dialogAttributes, "A B", "A=new", "OK* Apply Cancel", Command::cvOK,
                    "A.Click1 B.Click1 A.Save A.Deactivate A.Terminate B.Terminate exit(done)", false},
        CommandCase{"ApplySavesAndStays", dialogAttributes, "A B", "A=new B=new", "OK* Apply Cancel", Command::cvApply,
                    "A.Click3 B.Click3 A.Save B.Save", true},
        CommandCase{"NothingIsDoneWhileAPageIsInvalid", dialogAttributes, "A B", "A=new B=", "-OK* -Apply Cancel",
                    Command::cvOK, "", true},
        CommandCase{"DisabledApply", dialogAttributes, "A", "", "OK* -Apply Cancel", Command::cvApply, "", true},
        CommandCase{"CancelWithoutChangesAsksNothing", dialogAttributes, "A", "", "OK* -Apply Cancel",
                    Command::cvCancel, "A.Click2 A.Deactivate A.Terminate exit(cancelled)", false},
        CommandCase{"CancelThatIsTakenBack", dialogAttributes, "A", "A=new", "OK* Apply Cancel", Command::cvCancel, "",
                    true, "Stay"},
        CommandCase{"CancelThatDiscards", dialogAttributes, "A", "A=new", "OK* Apply Cancel", Command::cvCancel,
                    "A.Click2 A.Deactivate A.Terminate exit(cancelled)", false, "Discard"},
        CommandCase{"CancelThatSaves", dialogAttributes, "A", "A=new", "OK* Apply Cancel", Command::cvCancel,
                    "A.Save A.Deactivate A.Terminate exit(done)", false, "Save"},
        CommandCase{"WithoutApply", "Type='Dialog' IsMDIChild='false' IsApplyCommandShown='false'", "A", "A=new",
                    "OK* Cancel", Command::cvApply, "", true},
        CommandCase{"DocumentHasNoButtons", "Type='Window'", "A", "", "", Command::cvOK,
                    "A.Click1 A.Deactivate A.Terminate exit(done)", false},
        CommandCase{"DocumentIsSavedAllTheSame", "Type='Window'", "A", "A=new", "", Command::cvApply, "A.Click3 A.Save",
                    true},
        CommandCase{"SaveDialogSavesAll", "Type='SaveDialog' IsMDIChild='false'", "A B", "", "Save* Save As… Cancel",
                    Command::cvSave, "A.Click1 B.Click1 A.Save B.Save A.Deactivate A.Terminate B.Terminate exit(done)",
                    false},
        CommandCase{"SaveAsTellsThePagesAndEndsToo", "Type='SaveDialog' IsMDIChild='false'", "A", "",
                    "Save* Save As… Cancel", Command::cvSaveAs, "A.Click3 A.Save A.Deactivate A.Terminate exit(done)",
                    false},
        CommandCase{"NextGoesOn", wizard, "A B", "", "-Previous Next* Finish Cancel", Command::cvNext,
                    "A.Click5 A.Deactivate B.NewWidget B.Activate", true},
        CommandCase{"NextNeedsAValidStep", wizard, "A B", "A=", "-Previous -Next* -Finish Cancel", Command::cvNext, "",
                    true},
        CommandCase{"FinishNeedsTheStepsToCome", wizard, "A B", "B=", "-Previous Next* -Finish Cancel",
                    Command::cvFinish, "", true},
        CommandCase{"FinishEarlyLeavesOutWhatIsOptional", wizard, "A B?", "", "-Previous Next* Finish Cancel",
                    Command::cvFinish, "A.Click1 B.Click1 A.Save A.Deactivate A.Terminate B.Terminate exit(done)",
                    false},
        CommandCase{"WizardWithABrokenStepDoesNotFinish", wizard, "A None", "", "-Previous Next* -Finish Cancel",
                    Command::cvFinish, "", true},
        CommandCase{"BrokenPageOfADialogIsPassedOver", dialogAttributes, "None A", "", "OK* -Apply Cancel",
                    Command::cvOK, "A.Click1 A.Terminate exit(done)", false}),
    [](const auto& testInfo) { return testInfo.param.what; });

TEST_F(HostFixture, WizardGoesForwardAndBackAndItsLastStepFinishes) {
    Define("W", wizard, "A B? C");
    Start();
    const auto window = Open("W");
    Page("C").Enter("");
    window->SetActivePageIndex(2);
    EXPECT_EQ(window->ActivePageIndex(), 2) << "nothing before it holds it back";
    EXPECT_EQ(Commands(), "Previous -Next -Finish* Cancel");
    Page("C").Enter("x");
    EXPECT_EQ(Commands(), "Previous -Next Finish* Cancel");
    window->ClickCommand(Command::cvPrevious);
    Page("B").Enter(""); // something has been entered, so that it isn't skipped in silence
    EXPECT_EQ(Commands(), "Previous -Next* -Finish Cancel");
    window->SetActivePageIndex(2);
    EXPECT_EQ(window->ActivePageIndex(), 1);
    Page("B").Enter("old");
    m_heard->Take();
    window->ClickCommand(Command::cvPrevious);
    EXPECT_EQ(m_heard->Take(), "B.Click4 B.Deactivate A.Activate");
    EXPECT_THROW(window->SetActivePageIndex(3), Failure);
}

TEST_F(HostFixture, KeysChooseTheDefaultCommandAndCancelButNotInADocument) {
    struct Case {
        const char* window;
        Qt::Key key;
        const char* heard; // how the window has ended, or what its page does instead
    };
    Define("Dialog", dialogAttributes, "A");
    Define("Child", "Type='Dialog'", "A");
    Define("Document", "Type='Window'", "A");
    Define("Finder", dialogAttributes, "Find B");
    Define("FinderChild", "Type='Dialog'", "Find B");
    Start();
    for (const auto& testCase :
         {Case{"Dialog", Qt::Key_Return, "exit(done)"}, Case{"Child", Qt::Key_Return, "exit(done)"},
          Case{"Dialog", Qt::Key_Escape, "exit(cancelled)"}, Case{"Child", Qt::Key_Escape, "exit(cancelled)"},
          Case{"Document", Qt::Key_Return, ""}, Case{"Document", Qt::Key_Escape, ""},
          Case{"Finder", Qt::Key_Return, "found"}, Case{"FinderChild", Qt::Key_Return, "found"},
          Case{"Finder", Qt::Key_Escape, "exit(cancelled)"}}) {
        SCOPED_TRACE(testCase.window);
        const auto window = Open(testCase.window);
        const bool hasOwnDefault = LastForm()->Body()->PageCount() > 1;
        for (const Long page : {0, 1, 0})
            if (hasOwnDefault) {
                window->SetActivePageIndex(page);
                EXPECT_EQ(Button(Command::cvOK)->isDefault(), page == 1);
            }
        Button(Command::cvOK)->setFocus(); // the default stays where the focus has only passed
        auto* edit = LastForm()->Body()->findChild<QLineEdit*>();
        edit->setFocus();
        Page(hasOwnDefault ? "Find" : "A").Enter("new");
        QTest::keyClick(edit, testCase.key);
        const std::string heard = m_heard->Take();
        EXPECT_NE(heard.find(testCase.heard), std::string::npos) << heard;
        EXPECT_EQ(LastForm()->IsLoaded(), QString(testCase.heard).contains("exit") == false);
    }
}

TEST_F(HostFixture, DocumentIsSavedAndClosedByCommandsOfTheMenus) {
    Define("Document", "Type='Window'", "A B");
    Define("WithoutApply", "Type='Window' IsApplyCommandShown='false'", "A B");
    Start();
    m_application->Window().activateWindow();
    EXPECT_FALSE(m_application->Choose("File.Save"));
    EXPECT_FALSE(m_application->Choose("File.Close"));
    for (const char* name : {"Document", "WithoutApply"}) {
        SCOPED_TRACE(name);
        (void)Open(name);
        Page("A").Enter("new");
        Turn();
        EXPECT_EQ(Commands(), "");
        EXPECT_TRUE(LastForm()->Frame()->isWindowModified());
        m_heard->Take();
        QTest::keyClick(&m_application->Window(), Qt::Key_S, Qt::ControlModifier);
        EXPECT_EQ(m_heard->Take(), std::string(name) == "Document" ? "A.Click3 B.Click3 A.Save" : "A.Save");
        EXPECT_FALSE(LastForm()->Frame()->isWindowModified());
        EXPECT_FALSE(m_application->Choose("File.Save")) << "nothing is left to be saved";
        Page("B").Enter("");
        EXPECT_TRUE(m_application->Choose("File.Save"));
        EXPECT_EQ(m_heard->Take(), "A.Deactivate B.NewWidget B.Activate");
        EXPECT_TRUE(m_application->Messages().Shown().back().text.contains("can't be saved"));
        Page("B").Enter("new");
        LastForm()->ShownWindow()->SetIsCommandEnabled(
            std::string(name) == "Document" ? Command::cvApply : Command::cvOK, false);
        EXPECT_FALSE(m_application->Choose("File.Save")) << "code holds it back";
        m_application->Dialogs().AddAnswer("Stay");
        EXPECT_TRUE(m_application->Choose("File.Close"));
        EXPECT_TRUE(LastForm()->IsLoaded());
        m_application->Dialogs().AddAnswer("Discard");
        QTest::keyClick(&m_application->Window(), Qt::Key_W, Qt::ControlModifier);
        EXPECT_EQ(m_heard->Take(), "B.Deactivate A.Terminate B.Terminate exit(cancelled)");
    }
}

TEST_F(HostFixture, WhatAPageFillsInByItselfIsNoEntryThatIsAskedAbout) {
    Define("D", "Type='SaveDialog' IsMDIChild='false'", "A");
    Start();
    for (const bool isEntered : {false, true}) {
        (void)Open("D", {}, true);
        Page("A").Enter("filled in");
        LastForm()->Show(ShowMode::Modeless, nullptr);
        auto* edit = LastForm()->Body()->findChild<QLineEdit*>();
        if (isEntered)
            QTest::keyClick(edit, Qt::Key_X);
        m_application->Dialogs().AddAnswer("Stay");
        QTest::keyClick(edit, Qt::Key_Escape);
        EXPECT_EQ(LastForm()->IsLoaded(), isEntered);
        (void)m_application->Dialogs().TakeAnswer();
    }
}

TEST_F(HostFixture, TabGoesFromThePagesNamesIntoThePageAndThenToTheCommands) {
    Define("Dialog", dialogAttributes, "A B");
    Start();
    const auto window = Open("Dialog");
    QWidget* body = LastForm()->Body();
    for (const Long page : {0, 1}) {
        window->SetActivePageIndex(page);
        Turn();
        body->findChild<QTabBar*>()->setFocus();
        const auto edits = body->findChildren<QLineEdit*>();
        const auto shown = std::find_if(edits.begin(), edits.end(), [](auto* edit) { return edit->isVisible(); });
        ASSERT_NE(shown, edits.end());
        for (QWidget* next : {static_cast<QWidget*>(*shown), static_cast<QWidget*>(Button(Command::cvOK)),
                              static_cast<QWidget*>(Button(Command::cvCancel))}) {
            QTest::keyClick(body->window()->focusWidget(), Qt::Key_Tab);
            EXPECT_EQ(body->window()->focusWidget(), next) << page;
        }
    }
}

TEST_F(HostFixture, HelpIsForThePageInFront) {
    Define("D", dialogAttributes, "A! B");
    Start();
    const auto window = Open("D");
    EXPECT_EQ(Commands(), "Help OK* -Apply Cancel");
    m_heard->Take();
    QTest::keyClick(LastForm()->Body()->findChild<QLineEdit*>(), Qt::Key_F1);
    EXPECT_EQ(m_heard->Take(), "A.Click0");
    ASSERT_EQ(m_application->Messages().Shown().size(), 1U);
    EXPECT_TRUE(m_application->Messages().Shown().front().text.contains("Help/7.html"));
    window->SetActivePageIndex(1);
    EXPECT_EQ(Commands(), "-Help OK* -Apply Cancel");
}

TEST(LeaveBox, OffersToSaveOnlyWhereThatCanBeDone) {
    struct Case {
        bool canSave;
        const char* pressed; // empty for the escape key
        LeaveAnswer answer;
        int buttons;
    };
    for (const auto& testCase :
         {Case{true, "&Save", LeaveAnswer::Save, 3}, Case{true, "&Discard", LeaveAnswer::Discard, 3},
          Case{true, "", LeaveAnswer::Stay, 3}, Case{false, "&Discard", LeaveAnswer::Discard, 2}}) {
        QTimer::singleShot(0, [&] {
            QWidget* box = QApplication::activeModalWidget();
            ASSERT_NE(box, nullptr);
            const auto buttons = box->findChildren<QPushButton*>();
            EXPECT_EQ(buttons.size(), testCase.buttons);
            for (QPushButton* button : buttons)
                if (button->text() == testCase.pressed)
                    return button->click();
            QTest::keyClick(box, Qt::Key_Escape);
        });
        EXPECT_EQ(AskInBox({"Penguins", "", testCase.canSave, nullptr}), testCase.answer);
    }
}

TEST_F(HostFixture, CodeHoldsCommandsBackAndMarksAWindowAsChanged) {
    Define("D", dialogAttributes, "A");
    Start();
    const auto window = Open("D");
    window->SetIsCommandEnabled(Command::cvOK, false);
    EXPECT_EQ(Commands(), "-OK* -Apply Cancel");
    EXPECT_FALSE(window->CanBeSaved());
    window->SetIsCommandEnabled(Command::cvOK, true);
    window->SetIsCommandEnabled(Command::cvApply, true);
    EXPECT_EQ(Commands(), "OK* Apply Cancel");
    EXPECT_TRUE(window->CanBeSaved());
    m_heard->Take();
    window->Save();
    EXPECT_EQ(m_heard->Take(), "A.Save");
    EXPECT_EQ(Commands(), "OK* -Apply Cancel");
    Page("A").Enter("");
    window->SetIsCommandEnabled(Command::cvApply, true);
    EXPECT_EQ(Commands(), "-OK* -Apply Cancel") << "an invalid page can't be overruled";
}

TEST_F(HostFixture, FailingSaveIsShownAndKeepsTheWindowWithThePageInFront) {
    Define("D", dialogAttributes, "A B.Save");
    Start();
    const auto window = Open("D");
    Page("A").Enter("new");
    Page("B").Enter("new");
    m_heard->Take();
    window->ClickCommand(Command::cvOK);
    EXPECT_EQ(m_heard->Take(), "A.Click1 B.Click1 A.Save B.Save A.Deactivate B.NewWidget B.Activate");
    EXPECT_EQ(m_application->Failures().ShownCount(), 1);
    EXPECT_TRUE(LastForm()->IsLoaded());
    EXPECT_THROW(window->Save(), Failure) << "code hears of it";
    Page("B").failsIn.clear();
    window->ClickCommand(Command::cvOK);
    EXPECT_FALSE(LastForm()->IsLoaded());
}

TEST(CommandRow, FitsANarrowWindowWithoutCuttingATextOff) {
    for (const auto type : {WindowTypeConstants::cvWizard, WindowTypeConstants::cvSaveDialog}) {
        CommandRow row(type, false, false, nullptr);
        row.resize(row.minimumSizeHint());
        EXPECT_LT(row.width(), row.sizeHint().width());
        row.show();
        for (const auto* button : row.findChildren<QPushButton*>())
            EXPECT_GT(button->width(), button->fontMetrics().size(Qt::TextShowMnemonic, button->text()).width() + 4)
                << button->text().toStdString();
    }
}

} // namespace
} // namespace corvane::desktop
