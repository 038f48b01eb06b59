// Answers that are given less often, and what is done after them once more.
#include "tests/windows_host/HostFixture.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>

namespace corvane::desktop {
namespace {

using Command = StandardCommandConstants;

TEST_F(HostFixture, SaveAtTheCloseBoxSavesAndEndsAsByOk) {
    Define("W", "Type='Window'", "A B");
    Start();
    (void)Open("W");
    Page("A").Enter("new");
    Page("B").Enter("");
    m_heard->Take();
    m_application->Dialogs().AddAnswer("Save"); // can't be: a page is invalid
    LastForm()->Frame()->close();
    EXPECT_TRUE(LastForm()->IsLoaded());
    EXPECT_EQ(m_heard->Take(), "");
    Turn();
    Page("B").Enter("x");
    m_application->Dialogs().AddAnswer("Save");
    LastForm()->Frame()->close();
    EXPECT_FALSE(LastForm()->IsLoaded());
    EXPECT_EQ(m_heard->Take(), "A.Save B.Save A.Deactivate A.Terminate B.Terminate exit(done)");
}

TEST_F(HostFixture, PreviousLeavesAnInvalidStepAndNextComesBackToIt) {
    Define("W", wizard, "A B");
    Start();
    const auto window = Open("W");
    for (const int time : {1, 2}) {
        window->ClickCommand(Command::cvNext);
        EXPECT_EQ(window->ActivePageIndex(), 1) << time;
        Page("B").Enter("");
        m_heard->Take();
        window->ClickCommand(Command::cvPrevious);
        EXPECT_EQ(m_heard->Take(), "B.Click4 B.Deactivate A.Activate") << time;
        EXPECT_EQ(Commands(), "-Previous Next* -Finish Cancel") << "the step to come isn't valid";
    }
}

// The changes were given up for an exit that didn't come, so they are asked for again.
TEST_F(HostFixture, DiscardBeforeARefusedExitIsForThatExitAlone) {
    Define("D", "Type='Dialog' IsMDIChild='false'", "A");
    Define("W", wizard, "B");
    Start();
    (void)Open("D");
    (void)Open("W");
    Page("A").Enter("new");
    Page("B").Enter("new");
    m_heard->Take();
    m_application->Dialogs().AddAnswer("Discard"); // all that is unsaved
    m_application->Dialogs().AddAnswer("Stay");    // in the wizard, which is asked for itself
    m_application->Window().close();
    EXPECT_TRUE(m_application->Window().isVisible());
    EXPECT_EQ(m_heard->Take(), "");
    Turn();
    m_application->Dialogs().AddAnswer("Stay");
    m_forms.front()->Frame()->close();
    EXPECT_TRUE(m_forms.front()->IsLoaded()) << "it asks";
    Turn();
    QString between = QString::fromStdString(m_heard->Take()); // the one that was asked may come to the front
    EXPECT_EQ(between.remove(QRegularExpression("[AB]\\.(Dea|A)ctivate ?")).toStdString(), "") << "and nothing else";
    for (const char* answer : {"Save", "Discard"})
        m_application->Dialogs().AddAnswer(answer);
    m_application->Window().close();
    EXPECT_FALSE(m_application->Window().isVisible());
    EXPECT_EQ(m_heard->Take(), "A.Save B.Deactivate B.Terminate exit(cancelled) A.Activate A.Deactivate A.Terminate "
                               "exit(done)");
}

TEST_F(HostFixture, MenuListsTheOpenWindowsAndBringsThemBack) {
    Define("W", "Type='Window'", "A");
    Start();
    QMenu* menu = nullptr;
    for (QAction* title : m_application->Window().menuBar()->actions())
        if (title->text().remove('&') == "Window")
            menu = title->menu();
    ASSERT_TRUE(menu);
    const auto list = [&] {
        Q_EMIT menu->aboutToShow();
        QStringList entries;
        for (const QAction* entry : menu->actions())
            if (entry->isSeparator())
                entries.clear(); // the list is behind the commands
            else
                entries.append(entry->text() + (entry->isChecked() ? "*" : "") + (entry->isEnabled() ? "" : "-"));
        return entries.join(" ").toStdString();
    };
    EXPECT_EQ(list(), "(no open windows)-");
    const auto first = Open("W", "1");
    const auto second = Open("W", "2");
    second->SetCaption("Fish & Chips");
    EXPECT_EQ(list(), "&1 W &2 Fish && Chips*");
    m_forms.front()->SetWindowState(FormState::Minimized);
    for (QAction* entry : menu->actions())
        if (entry->text() == "&1 W")
            entry->trigger();
    EXPECT_EQ(Manager().ActiveWindow(), first);
    EXPECT_EQ(m_forms.front()->WindowState(), FormState::Normal);
    EXPECT_EQ(list(), "&1 W* &2 Fish && Chips");
    first->Terminate();
    second->Terminate();
    EXPECT_EQ(list(), "(no open windows)-");
}

} // namespace
} // namespace corvane::desktop
