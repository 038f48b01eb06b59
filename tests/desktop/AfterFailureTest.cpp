// What follows a failure, wherever it arises: the application goes on, or ends where it was about to.
#include "corvane/windows/CVProgressBar.h"
#include "desktop/application/MainWindow.h"
#include "desktop/failures/FailureDialog.h"
#include "desktop/failures/GuardedApplication.h"
#include "desktop/platform/HostParts.h"
#include "tests/desktop/Acting.h"

#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QTest>
#include <sanitizer/lsan_interface.h>
#include <stdexcept>
#include <thread>

#pragma weak __lsan_disable // absent where no leak is looked for
#pragma weak __lsan_enable

namespace corvane::desktop {
namespace {

// The toolkit is built without exceptions: one that passes through its handling of the mouse loses its own copy of the
// event. What is taken meanwhile isn't looked for.
class ThroughTheToolkit {
public:
    ThroughTheToolkit() {
        if (__lsan_disable)
            __lsan_disable();
    }
    ~ThroughTheToolkit() {
        if (__lsan_enable)
            __lsan_enable();
    }
    ThroughTheToolkit(const ThroughTheToolkit&) = delete;
    ThroughTheToolkit& operator=(const ThroughTheToolkit&) = delete;
};

class AfterFailureTest : public ActingTest {
protected:
    // What the host knows of a failure beside its text.
    [[nodiscard]] bool IsBlamed() const {
        return Log().contains("in T.Page") && Log().contains("service A, Services/A.xml:");
    }
    void WithoutExplorer() {
        m_application.reset();
        m_folder.Service("A", "T.A", R"(<ActionItems><ActionItem Name="Act" Action="OnAct"/></ActionItems><Menus>
<MenuItem Type="MenuItem" ActionItem="Act" Path="MenuB" PositionOrder="3" Caption="Act"/></Menus>)");
    }
    // "B+ Act+ Off-": the menu of service B, whose title is the first, each with whether it can be chosen.
    [[nodiscard]] std::string MenuB() const {
        std::string text = "B" + State("MenuB");
        for (const char* name : {"Act", "Off"})
            text += std::string(" ") + name + State(std::string("MenuB.") + name);
        return text;
    }
    // "?" where it is in no band: the progress bar disables what is in bands and nothing else.
    [[nodiscard]] std::string State(const std::string& name) const {
        const auto tool = m_application->Bar()->Tools()->Find(name);
        const bool isInBand = tool && tool->Instances().begin() != tool->Instances().end();
        return !isInBand ? "?" : tool->Enabled() ? "+" : "-";
    }
    void CallFromThread(QObject* context, std::function<void()> call) {
        std::thread([=] { QMetaObject::invokeMethod(context, call, Qt::QueuedConnection); }).join();
    }
};

TEST_F(AfterFailureTest, WhateverTheToolkitCallsEndsAtAGuardAndTheApplicationGoesOn) {
    ASSERT_TRUE(Start());
    OpenWindow();
    auto* button = InPage<QPushButton>();
    ASSERT_TRUE(button);
    struct Case {
        const char* what;
        std::function<void()> raise;
        std::function<void()> call; // by an event of the toolkit, as a user or a system causes it
        bool comesAgain;            // whether the second time is shown, too
    };
    const auto press = [&] {
        const ThroughTheToolkit scope;
        QTest::mouseClick(button, Qt::LeftButton);
    };
    const Case cases[] = {
        {"slot", [] { Fail(FailureNumber::ObjectNotSet); }, press, true},
        {"foreign exception", [] { throw std::runtime_error("out of range"); }, press, true},
        {"anything", [] { throw 42; }, press, true},
        {"event handler", [] { Fail(5, "handler"); },
         [&] { QCoreApplication::postEvent(button->parentWidget(), new QEvent(QEvent::User)); }, false},
        {"queued call of a thread", [] { Fail(5, "call"); },
         [&] { CallFromThread(button->parentWidget(), [this] { m_acts.Come("Page.clicked"); }); }, false},
        {"timer", [] { Fail(5, "timer"); },
         [&] { QTimer::singleShot(0, button, [this] { m_acts.Come("Page.clicked"); }); }, false},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.what);
        m_acts.at["Page.clicked"] = m_acts.at["Page.event"] = each.raise;
        const int before = m_application->Failures().ShownCount();
        for (const int time : {1, 2}) {
            m_acts.Take();
            each.call();
            ASSERT_TRUE(QTest::qWaitFor([&] { return !m_acts.heard.empty(); }, 30000));
            Turn();
            EXPECT_EQ(m_application->Failures().ShownCount() - before, each.comesAgain ? time : 1);
        }
        EXPECT_TRUE(m_application->Choose("MenuB.Act"));
    }
    EXPECT_TRUE(IsBlamed()) << Log().toStdString();
}

// What is in the code of a plug-in and in no widget of a page is known by where it was thrown.
TEST_F(AfterFailureTest, PluginIsBlamedForATimerOfItsOwn) {
    m_folder.Plugin("T0");
    m_folder.Service("Trouble", "T0.Service", "");
    QFile::remove(m_folder.Path("App/Services/A.xml"));
    m_folder.Service("Trouble", "T0.Service", "", "IsStartService=\"true\"");
    qputenv("TROUBLE", "timer throws");
    EXPECT_TRUE(Start());
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_application->Failures().ShownCount() > 0; }, 30000));
    qunsetenv("TROUBLE");
    EXPECT_TRUE(Log().contains("An exception of an unknown type")) << Log().toStdString();
    EXPECT_TRUE(Log().contains("in T0 (service Trouble, Services/Trouble.xml:1)")) << Log().toStdString();
}

TEST_F(AfterFailureTest, ShellIsLetGoWhenTheCommandThatHeldItFails) {
    for (const bool withExplorer : {true, false}) {
        SCOPED_TRACE(withExplorer);
        if (!withExplorer)
            WithoutExplorer();
        ASSERT_TRUE(Start());
        const auto bar = [&] { return Singleton::Framework()->CVProgressBar(); };
        m_acts.at["B.OnAct"] = [&] {
            bar()->Show(10, true);
            EXPECT_EQ(MenuB(), "B- Act- Off-");
            bar()->Increment();
            Fail(5, "in the middle");
        };
        for (int time = 1; time <= 2; ++time) {
            EXPECT_TRUE(m_application->Choose("MenuB.Act")) << "the time before has let it go";
            EXPECT_EQ(m_application->Failures().ShownCount(), time);
            EXPECT_FALSE(bar()->Visible());
            EXPECT_EQ(MenuB(), "B+ Act+ Off-") << "as it was before";
            EXPECT_TRUE(m_application->Bar()->Bands()->Item("StatusBar")->Tools()->Item("Status")->Visible());
        }
        if (withExplorer) {
            EXPECT_TRUE(Singleton::Framework()->NavigationManager()->ExplorerManager()->TreeView()->Enabled());
        }
    }
}

// Without a tree the bar fails to show itself, behind the disabling of everything.
TEST_F(AfterFailureTest, ShellIsLetGoWhereTheCommandCatchesTheFailureOfTheBar) {
    WithoutExplorer();
    ASSERT_TRUE(Start());
    m_acts.at["B.OnAct"] = [this] {
        EXPECT_THROW(Singleton::Framework()->CVProgressBar()->Show(10, true), Failure);
        EXPECT_EQ(MenuB(), "B- Act- Off-");
    };
    for (int time = 1; time <= 2; ++time) {
        EXPECT_TRUE(m_application->Choose("MenuB.Act")) << time;
        EXPECT_EQ(MenuB(), "B+ Act+ Off-") << time;
    }
    EXPECT_EQ(m_application->Failures().ShownCount(), 0);
}

TEST_F(AfterFailureTest, BarStaysWhileTheWorkAroundAFailureGoesOn) {
    ASSERT_TRUE(Start());
    const auto bar = Singleton::Framework()->CVProgressBar();
    m_acts.at["B.OnAct"] = [&] {
        for (const int time : {1, 2}) {
            bar->Show(10, false);
            QTimer::singleShot(0, qApp, [time] { Fail(5, "another's timer " + std::to_string(time)); });
            EXPECT_TRUE(QTest::qWaitFor([&] { return m_application->Failures().ShownCount() == time; }, 30000));
            EXPECT_TRUE(bar->Visible()) << time;
            EXPECT_EQ(MenuB(), "B- Act- Off-") << time;
            bar->Hide();
        }
    };
    EXPECT_TRUE(m_application->Choose("MenuB.Act"));
    EXPECT_EQ(m_application->Failures().ShownCount(), 2);
}

// What the host alone asks of a page is known by the page's definition; each is shown or in the page's place.
TEST_F(AfterFailureTest, FailureInWhatTheHostAsksOfAPageSaysWhoseItWas) {
    for (const char* procedure : {"Initialize", "NewWidget", "IsChanged", "FirstFocus", "HelpTopic"}) {
        SCOPED_TRACE(procedure);
        ASSERT_TRUE(Start());
        m_acts.at[std::string("Page.") + procedure] = [] { throw 42; };
        OpenWindow();
        const QString place = QString(".%1 (window Sheet, service A, Services/A.xml:").arg(procedure);
        EXPECT_TRUE(Log().contains(place)) << Log().toStdString();
        m_acts.at.clear();
    }
}

TEST_F(AfterFailureTest, FailureInWhatTheHostAsksOfAServiceSaysWhoseItWas) {
    m_acts.isUnsaved = true;
    ASSERT_TRUE(Start());
    OpenWindow(); // which is kept for the next start
    for (const auto& [service, procedure] :
         {std::pair("B", "GetUnsavedItems"), std::pair("B", "Save"), std::pair("C", "SaveComplete"),
          std::pair("C", "Terminate"), std::pair("A", "RestoreWindow")}) {
        SCOPED_TRACE(procedure);
        m_acts.at[std::string(service) + "." + procedure] = [] { throw 42; };
        m_application->Dialogs().AddAnswer("Save");
        m_application->Window().close();
        ASSERT_TRUE(Start());
        const QString place = QString(".%1 (service %2, Services/%2.xml:1)").arg(procedure, service);
        EXPECT_TRUE(Log().contains(place)) << Log().toStdString();
        m_acts.at.clear();
    }
}

// By its own command and by the close box, with one service that fails and with two.
TEST_F(AfterFailureTest, ServiceThatFailsAtItsEndKeepsNothingOpenAndTheOthersHearTheEndOnce) {
    for (const bool byCommand : {true, false})
        for (const bool twice : {false, true}) {
            SCOPED_TRACE(testing::Message() << byCommand << twice);
            ASSERT_TRUE(Start());
            m_acts.at["A.Terminate"] = [] { Fail(FailureNumber::FileNotFound); };
            m_acts.at["C.Terminate"] = twice ? m_acts.at["A.Terminate"] : nullptr;
            m_acts.at["B.OnAct"] = [] { Singleton::Framework()->AppExit(); };
            m_acts.Take();
            if (byCommand)
                EXPECT_TRUE(m_application->Choose("MenuB.Act"));
            else
                m_application->Window().close();
            Turn();
            EXPECT_FALSE(m_application->Window().isVisible());
            EXPECT_TRUE(m_application->HasEnded());
            EXPECT_EQ(m_application->Failures().ShownCount(), twice ? 2 : 1);
            EXPECT_FALSE(m_application->Choose("MenuC.Act"));
            m_application->Window().close();
            m_application.reset();
            QString ends = QString::fromStdString(m_acts.Take());
            ends.remove("B.OnAct ").remove(QRegularExpression("[ABC]\\.(GetUnsavedItems|SaveComplete) "));
            EXPECT_EQ(ends.toStdString(), "A.Terminate B.Terminate C.Terminate ");
        }
}

TEST(FailurePresenter, FailureThatComesWhileAnotherIsShownWaitsItsTurn) {
    FailurePresenter presenter(true);
    const auto shown = [](const char* text) { return ShownFailure{"", "Test", Failure(5, text), "", ""}; };
    bool isQueued = false;
    QTimer::singleShot(0, &presenter, [&] {
        presenter.Show(shown("second"));
        presenter.Show(shown("third"));
        isQueued = true;
    });
    QStringList seen;
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, [&] {
        auto* dialog = qobject_cast<FailureDialog*>(QApplication::activeModalWidget());
        if (!dialog || !isQueued)
            return;
        seen.append(dialog->findChild<QPlainTextEdit*>()->toPlainText().section('\n', 2, 2));
        dialog->reject();
    });
    user.start(5);
    presenter.Show(shown("first"));
    EXPECT_EQ(seen.join(' ').toStdString(), "first second third");
}

TEST(FailurePresenter, WhatComesAgainByItselfIsShownOnceAndEachForItself) {
    FailurePresenter presenter(false);
    for (const char* text : {"a", "b", "a", "b"})
        presenter.ShowUncaught({"", "Test", Failure(5, text), "", ""}, true);
    EXPECT_EQ(presenter.ShownCount(), 2);
    presenter.ShowUncaught({"", "Test", Failure(5, "a"), "", ""}, false);
    EXPECT_EQ(presenter.ShownCount(), 3);
}

TEST(FailurePresenter, DetailsSayWhatTheLogSays) {
    Failure failure(FailureNumber::ObjectNotSet);
    failure.Context = "in T.Page.NewWidget (window Sheet, service A, Services/A.xml:12)";
    EXPECT_TRUE(TextsOf({"", "Event", failure, "", ""}, {}).details.endsWith("\n" + QString(failure.Context.c_str())));
}

// A failure before the end keeps the application, and nothing of it has gone.
TEST_F(AfterFailureTest, FailureBeforeTheEndKeepsTheWindowOpen) {
    ASSERT_TRUE(Start());
    {
        const auto failing =
            m_application->MainForm()->OnQueryUnload.Subscribe([](bool&) { Fail(5, "can't be asked"); });
        m_application->Window().close();
    }
    EXPECT_TRUE(m_application->Window().isVisible());
    EXPECT_TRUE(m_application->Choose("MenuB.Act"));
    m_application->Window().close();
    EXPECT_FALSE(m_application->Window().isVisible());
}

} // namespace
} // namespace corvane::desktop
