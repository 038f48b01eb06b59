// The events of windows and pages when a subscriber between them fails, and those that no longer arrive.
#include "tests/windows_host/HostFixture.h"

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTest>

namespace corvane::desktop {
namespace {

using Command = StandardCommandConstants;

TEST_F(HostFixture, RaisedWindowBehindAModalOneIsNotTheActiveOne) {
    Define("W", "Type='Window'", "A");
    Start();
    const auto first = Open("W", "first");
    const auto second = Open("W", "second");
    QMdiArea& area = m_application->Window().Area();
    {
        QDialog inFront(&m_application->Window());
        inFront.setModal(true);
        inFront.show();
        ASSERT_EQ(QApplication::activeModalWidget(), &inFront);
        m_heard->Take();
        area.setActiveSubWindow(static_cast<QMdiSubWindow*>(m_forms.front()->Frame())); // as a window manager may
        EXPECT_EQ(Manager().ActiveWindow(), second);
        EXPECT_EQ(m_heard->Take(), "");
    }
    area.setActiveSubWindow(static_cast<QMdiSubWindow*>(m_forms.back()->Frame()));
    area.setActiveSubWindow(static_cast<QMdiSubWindow*>(m_forms.front()->Frame()));
    EXPECT_EQ(Manager().ActiveWindow(), first);
}

// A subscriber may fail once when a page is deactivated; neither this page's end nor the next activation suffers.
TEST_F(HostFixture, FailureOfOneWhoHearsAPageLeaveIsOverWithThat) {
    Define("W", "Type='Window'", "A B");
    Start();
    for (const bool byClosing : {false, true}) {
        SCOPED_TRACE(byClosing);
        const auto window = Open("W");
        std::string heard;
        bool fails = true;
        const Subscription leaves = Manager().PageDeactivateEvent.Subscribe([&](const Ref<Object>&) {
            heard += "leaves ";
            if (std::exchange(fails, false))
                Fail(5, "once");
        });
        const Subscription comes =
            Manager().PageActivateEvent.Subscribe([&](const Ref<Object>&) { heard += "comes "; });
        const int before = m_application->Failures().ShownCount();
        if (byClosing)
            window->Terminate();
        else
            window->SetActivePageIndex(1);
        EXPECT_EQ(m_application->Failures().ShownCount() - before, 1);
        EXPECT_EQ(heard, byClosing ? "leaves leaves " : "leaves leaves comes ");
        heard.clear();
        (void)Open("W");
        EXPECT_EQ(heard, byClosing ? "comes " : "leaves comes ");
        EXPECT_EQ(m_application->Failures().ShownCount() - before, 1);
        while (!m_application->MainForm()->Forms().empty())
            m_application->MainForm()->Forms().back()->Unload();
    }
}

// The field loses the focus when its window closes, by every way to close it.
TEST_F(HostFixture, PageThatHasEndedHearsNothingOfItsWidgets) {
    Define("D", dialogAttributes, "A B.NewWidget");
    Start();
    const std::vector<std::function<void(QLineEdit*)>> ways{
        [](QLineEdit* field) { QTest::keyClick(field, Qt::Key_Escape); },
        [this](QLineEdit*) { LastForm()->Frame()->close(); },
        [this](QLineEdit*) { LastForm()->ClickCommand(Command::cvOK); },
        [this](QLineEdit*) { LastForm()->Abandon(); },
    };
    for (const auto& close : ways) {
        (void)Open("D");
        auto* field = LastForm()->Body()->findChild<QLineEdit*>();
        ASSERT_TRUE(field);
        QApplication::setActiveWindow(field->window());
        field->setFocus();
        Page("A").Enter("half a path");
        std::string after;
        bool ended = false;
        const Subscription end = Page("A").Base()->TerminateEvent.Subscribe([&](auto&&...) { ended = true; });
        QObject::connect(field, &QLineEdit::editingFinished, field, [&] { after += ended ? "signal " : ""; });
        QTimer::singleShot(0, field, [&] { after += ended ? "call " : ""; });
        m_application->Dialogs().AddAnswer("Discard");
        close(field);
        EXPECT_TRUE(ended);
        Turn();
        EXPECT_EQ(after, "");
        EXPECT_EQ(m_application->Failures().ShownCount(), 0);
        (void)m_application->Dialogs().TakeAnswer();
    }
    m_forms.clear();
    Turn();
    EXPECT_EQ(m_heard->pages, 0);
    EXPECT_EQ(m_heard->widgets, 0);
}

} // namespace
} // namespace corvane::desktop
