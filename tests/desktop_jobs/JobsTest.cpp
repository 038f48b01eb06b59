#include "corvane/author/Jobs.h"

#include "corvane/services/ServiceManager.h"
#include "desktop/application/MainWindow.h"
#include "desktop/jobs/DesktopJobs.h"
#include "desktop/jobs/JobBar.h"
#include "desktop/jobs/JobTexts.h"
#include "desktop/jobs/JobsView.h"
#include "desktop/platform/HostParts.h"
#include "desktop/service/UnsavedDialog.h"
#include "tests/desktop/Acting.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QTest>
#include <QTreeWidget>
#include <atomic>
#include <thread>

namespace corvane::desktop {
namespace {

constexpr int longest = 60000;

class JobsTest : public ActingTest {
protected:
    ~JobsTest() override {
        m_open = true;
        m_application.reset(); // its threads look at the gate
    }

    // Runs until the gate opens or it is cancelled.
    Ref<IJob> StartAtGate(JobOptions options) {
        return StartJob(
            std::move(options),
            [&open = m_open](JobProgress& progress) {
                progress.SetText("Reading");
                progress.SetPart(0.42);
                progress.Log("first line");
                while (!open) {
                    progress.StopIfCancelled();
                    std::this_thread::yield();
                }
                return 7;
            },
            [this](JobResult<int>& result) {
                m_acts.Come(result.WasCancelled() ? "cancelled" : "done:" + std::to_string(result.Value()));
            });
    }
    static Ref<Object> Service(const char* name) {
        return Singleton::Framework()->ServiceManager()->Services()->Item(name);
    }
    static Ref<Window> Sheet() {
        const auto windows = Singleton::Framework()->WindowManager()->Windows();
        return windows->Count() > 0 ? windows->Item(1) : nullptr;
    }
    [[nodiscard]] JobBar* Bar() const { return m_application->Window().findChild<JobBar*>(); }
    [[nodiscard]] bool HasEnded() const { return !m_application->Jobs().Manager()->HasActive(); }
    template <class W>
    static W* Named(QWidget& parent, const QString& text) {
        for (W* widget : parent.findChildren<W*>())
            if (widget->text().remove('&') == text)
                return widget;
        return nullptr;
    }

    std::atomic<bool> m_open = false;
};

TEST_F(JobsTest, AreInTheStatusBarAndTheView) {
    ASSERT_TRUE(Start());
    const auto first = StartAtGate({.title = "Import birds", .owner = Service("A"), .writes = {"birds"}});
    const auto second = StartAtGate({.title = "Count", .reads = {"birds"}});
    (void)StartAtGate({.title = "Silent", .quiet = true});
    ASSERT_TRUE(QTest::qWaitFor([&] { return Bar() && Bar()->isVisible() && first->Part(); }, longest));
    Bar()->Update();
    EXPECT_TRUE(Named<QLabel>(*Bar(), "Import birds"));
    EXPECT_EQ(Bar()->findChild<QProgressBar*>()->text(), "42 %");
    EXPECT_TRUE(Named<QPushButton>(*Bar(), "and 1 more"));

    JobsView& view = *m_application->Jobs().ShowView();
    auto* list = view.findChild<QTreeWidget*>();
    ASSERT_EQ(list->topLevelItemCount(), 3);
    EXPECT_EQ(list->topLevelItem(0)->text(3), "A");
    EXPECT_EQ(list->topLevelItem(1)->text(2), "Waiting for “Import birds” (birds)");
    const QString details = view.findChild<QPlainTextEdit*>()->toPlainText(); // with the time left, after a while
    EXPECT_TRUE(details.startsWith("Import birds\nRunning\nBelongs to: A\nReading\n")) << details.toStdString();
    EXPECT_TRUE(details.endsWith("\nfirst line")) << details.toStdString();
    auto* cancel = Named<QPushButton>(view, "Cancel Job");
    list->clearSelection();
    EXPECT_FALSE(cancel->isEnabled());
    list->topLevelItem(1)->setSelected(true);
    cancel->click(); // waits, and so ends at once
    ASSERT_TRUE(QTest::qWaitFor([&] { return second->State() == JobState::Cancelled; }, longest));
    Named<QPushButton>(*Bar(), "Cancel")->click();
    ASSERT_TRUE(QTest::qWaitFor([&] { return first->State() == JobState::Cancelled; }, longest));
    m_open = true;
    ASSERT_TRUE(QTest::qWaitFor([&] { return HasEnded() && !Bar()->isVisible(); }, longest));
    EXPECT_EQ(m_acts.heard.substr(m_acts.heard.size() - 17), "cancelled done:7 ");

    view.Update();
    EXPECT_EQ(list->topLevelItemCount(), 2); // the quiet one isn't listed any more
    EXPECT_FALSE(Named<QPushButton>(view, "Cancel Job")->isEnabled());
    view.parentWidget()->close();
    Turn();
    EXPECT_TRUE(m_application->Jobs().Manager()->Ended().empty());
    EXPECT_EQ(m_application->Jobs().ShowView()->findChild<QTreeWidget*>()->topLevelItemCount(), 0);
}

TEST_F(JobsTest, ThatFailAreShownOnceWithTheirOrigin) {
    ASSERT_TRUE(Start());
    const int before = m_application->Failures().ShownCount();
    const auto job = StartJob(
        {.title = "Read", .owner = Service("A")}, []() -> int { Fail(1234, "no birds"); }, [](int) {});
    ASSERT_TRUE(QTest::qWaitFor([&] { return HasEnded(); }, longest));
    EXPECT_EQ(m_application->Failures().ShownCount(), before + 1);
    EXPECT_TRUE(Log().contains("in the job \"Read\", started in ")) << Log().toStdString();
    EXPECT_TRUE(Log().contains("(service A, ")) << Log().toStdString();
    EXPECT_TRUE(DetailsText(*job.As<jobs::Job>()).contains("no birds\nin the job"));
}

TEST_F(JobsTest, OnlyTheLatestCounts) {
    ASSERT_TRUE(Start());
    std::string found;
    auto latest = std::make_unique<LatestJob>();
    const auto Find = [&](const std::string& what, bool takesLong = true) {
        latest->StartIf(
            takesLong, {.title = "Find " + what}, [what] { return what; }, [&](const std::string& s) { found += s; });
    };
    Find("a");
    Find("b");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !latest->IsActive(); }, longest));
    EXPECT_EQ(found, "b");
    Find("c");
    Find("d", false);
    EXPECT_EQ(found, "bd") << "at once";
    Find("e");
    latest.reset();
    ASSERT_TRUE(QTest::qWaitFor([&] { return HasEnded(); }, longest));
    EXPECT_EQ(found, "bd");
}

TEST_F(JobsTest, OfAWindowThatClosesAreAskedAbout) {
    struct Case {
        const char* answer;
        bool closes;
        JobState state; // once the gate is open
        const char* heard;
    };
    for (const Case& testCase :
         {Case{"Stay", false, JobState::Done, "done:7 "}, Case{"Cancel", true, JobState::Cancelled, ""},
          Case{"", true, JobState::Done, ""}, Case{"Wait", false, JobState::Done, "done:7 "}}) {
        SCOPED_TRACE(testCase.answer);
        m_open = false;
        ASSERT_TRUE(Start());
        if (!Sheet()) // the one before is restored when its session has been saved by then
            OpenWindow();
        Turn();
        const auto job = StartAtGate({.title = "Import", .owner = Ref<Object>(Sheet())});
        ASSERT_TRUE(QTest::qWaitFor([&] { return job->State() == JobState::Running; }, longest));
        m_application->Dialogs().AddAnswer(testCase.answer);
        m_acts.Take();
        EXPECT_TRUE(m_application->ClickCommand("close"));
        Turn();
        EXPECT_EQ(!Sheet(), testCase.closes);
        m_open = testCase.state != JobState::Cancelled; // a work that has ended by itself isn't cancelled
        ASSERT_TRUE(QTest::qWaitFor([&] { return HasEnded(); }, longest));
        EXPECT_EQ(job->State(), testCase.state);
        EXPECT_EQ(m_acts.heard.find(testCase.heard) != std::string::npos, true) << m_acts.heard;
        EXPECT_EQ(m_acts.heard.find("done") != std::string::npos, *testCase.heard != 0) << m_acts.heard;
        if (std::string(testCase.answer) == "Wait") {
            EXPECT_TRUE(QTest::qWaitFor([&] { return !Sheet(); }, longest));
        }
    }
}

// The latest answer counts.
TEST_F(JobsTest, LetAWindowStayThatWasToCloseLater) {
    ASSERT_TRUE(Start());
    OpenWindow();
    const auto first = StartAtGate({.title = "First", .owner = Ref<Object>(Sheet())});
    for (const char* answer : {"Wait", "Stay"}) {
        m_application->Dialogs().AddAnswer(answer);
        EXPECT_TRUE(m_application->ClickCommand("close"));
        Turn();
    }
    m_open = true;
    ASSERT_TRUE(QTest::qWaitFor([&] { return HasEnded(); }, longest));
    m_open = false;
    const auto second = StartAtGate({.title = "Second", .owner = Service("A")});
    ASSERT_TRUE(QTest::qWaitFor([&] { return Bar() && Bar()->isVisible(); }, longest));
    EXPECT_TRUE(Sheet()) << "what was to be done after the first has been";
}

TEST_F(JobsTest, CloseAWindowLaterThoughTheyHaveEndedBeforeTheAnswer) {
    ASSERT_TRUE(Start(true));
    OpenWindow();
    (void)StartAtGate({.title = "First", .owner = Ref<Object>(Sheet())});
    ASSERT_TRUE(QTest::qWaitFor([&] { return Bar() && Bar()->isVisible(); }, longest));
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        QWidget* box = QApplication::activeModalWidget();
        m_open = m_open || box;
        if (box && HasEnded() && !Bar()->isVisible()) // no one follows them any more
            Named<QPushButton>(*box, "Wait, Then Close")->click();
    });
    timer.start(1);
    EXPECT_TRUE(m_application->ClickCommand("close"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !Sheet(); }, longest));
}

TEST_F(JobsTest, AreAskedAboutAgainAfterAnExitThatWasRefused) {
    ASSERT_TRUE(Start());
    OpenWindow();
    const auto first = StartAtGate({.title = "First", .owner = Ref<Object>(Sheet())});
    const auto refuses = m_application->MainForm()->OnQueryUnload.Subscribe([](bool& refused) { refused = true; });
    m_application->Dialogs().AddAnswer("Discard");
    m_application->Window().close();
    EXPECT_FALSE(m_application->HasEnded());
    ASSERT_TRUE(QTest::qWaitFor([&] { return HasEnded(); }, longest));
    EXPECT_EQ(first->State(), JobState::Cancelled);
    Turn();
    OpenWindow(); // the one before has been closed
    const auto second = StartAtGate({.title = "Second", .owner = Ref<Object>(Sheet())});
    m_application->Dialogs().AddAnswer("Wait");
    EXPECT_TRUE(m_application->ClickCommand("close"));
    Turn();
    EXPECT_TRUE(Sheet());
}

TEST(JobQuestion, EachButtonOfItsBoxIsItsAnswer) {
    for (const auto& [pressed, canCancel, answer] :
         {std::tuple("&Wait, Then Close", true, JobAnswer::CloseLater),
          std::tuple("&Cancel the Job", true, JobAnswer::CancelJobs),
          std::tuple("&Cancel the Job", false, JobAnswer::KeepOpen), // isn't offered
          std::tuple("&Leave It Running", true, JobAnswer::LeaveRunning),
          std::tuple("&Keep Open", true, JobAnswer::KeepOpen), std::tuple("", true, JobAnswer::KeepOpen)}) {
        QTimer::singleShot(0, [&, text = pressed] {
            QWidget* box = QApplication::activeModalWidget();
            ASSERT_TRUE(box);
            for (QPushButton* button : box->findChildren<QPushButton*>())
                if (button->text() == text)
                    return button->click();
            QTest::keyClick(box, Qt::Key_Escape);
        });
        EXPECT_EQ(AskInBox({"Sheet", {"Import"}, canCancel, nullptr}), answer) << pressed;
    }
}

TEST_F(JobsTest, AreListedAtTheEnd) {
    ASSERT_TRUE(Start(true));
    const auto job = StartAtGate({.title = "Import", .owner = Service("A")});
    ASSERT_TRUE(QTest::qWaitFor([&] { return job->State() == JobState::Running; }, longest));
    QString listed;
    const auto closeAnd = [&](bool agrees) {
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] {
            auto* dialog = qobject_cast<UnsavedDialog*>(QApplication::activeModalWidget());
            if (!dialog)
                return;
            auto* tree = dialog->findChild<QTreeWidget*>();
            listed = tree->topLevelItem(0)->text(0) + ": " + tree->topLevelItem(0)->child(0)->text(0);
            if (agrees)
                Named<QPushButton>(*dialog, "Cancel Jobs and Quit")->click();
            else
                dialog->reject();
        });
        timer.start(5);
        m_application->Window().close();
    };
    closeAnd(false);
    EXPECT_EQ(listed, "Running jobs: Import");
    EXPECT_FALSE(m_application->HasEnded());
    EXPECT_EQ(job->State(), JobState::Running);
    closeAnd(true);
    EXPECT_TRUE(m_application->HasEnded());
    m_acts.Take();
    m_application.reset();
    EXPECT_EQ(job->State(), JobState::Cancelled);
    EXPECT_EQ(m_acts.heard.find("cancelled"), std::string::npos); // no one is there any more
}

} // namespace
} // namespace corvane::desktop
