#include "desktop/application/Application.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/services/ServiceManager.h"
#include "desktop/application/EndSignals.h"
#include "desktop/application/MainWindow.h"
#include "desktop/explorer/ExplorerPanel.h"
#include "desktop/failures/FailureDialog.h"
#include "desktop/platform/HostParts.h"
#include "desktop/problems/ProblemList.h"
#include "tests/desktop/ApplicationFolder.h"

#include <QApplication>
#include <QClipboard>
#include <QDockWidget>
#include <QFile>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>
#include <QTimer>
#include <csignal>
#include <gtest/gtest.h>

namespace corvane::desktop {
namespace {

class ApplicationTest : public ::testing::Test {
protected:
    void Write(const QString& name, const char* text) { m_folder.Write(name, text); }
    [[nodiscard]] QString Services() const { return m_folder.Services(); }
    [[nodiscard]] std::string App() const { return m_folder.App(); }

    ApplicationFolder m_folder;
};

TEST_F(ApplicationTest, MenuOnScreenTogglesTheStatusBarAndTheExplorer) {
    Application application({App(), false});
    ASSERT_TRUE(application.Start());
    QMenu* view = application.Window().menuBar()->actions().front()->menu();
    Q_EMIT view->aboutToShow();
    EXPECT_TRUE(application.Window().statusBar()->isVisible());
    ASSERT_EQ(view->actions().at(1)->text(), "&Status Bar");
    EXPECT_TRUE(view->actions().at(1)->isChecked());
    view->actions().at(1)->trigger();
    application.Window().Flush();
    EXPECT_FALSE(application.Window().statusBar()->isVisible());
    EXPECT_FALSE(application.Window().ExplorerDock().isVisible());
    view->actions().at(0)->trigger();
    application.Window().Flush();
    EXPECT_TRUE(application.Window().ExplorerDock().isVisible());
    // The dock's close box goes through the model and unticks the entry.
    application.Window().ExplorerDock().close();
    application.Window().Flush();
    EXPECT_FALSE(application.Window().ExplorerDock().isVisible());
    EXPECT_FALSE(application.Bar()->Tools()->Item("View.Navigation")->Checked());
}

TEST_F(ApplicationTest, SecondClickDuringARunningActionIsDropped) {
    Application application({App(), false});
    ASSERT_TRUE(application.Start());
    QMenu* view = application.Window().menuBar()->actions().front()->menu();
    Q_EMIT view->aboutToShow();
    QAction* explorer = view->actions().at(0);
    QAction* statusBar = view->actions().at(1);
    int secondClicks = 0;
    {
        // The explorer's band changes while the action that shows it still runs.
        const auto during = application.Bar()->Changed.Subscribe([&](const BarChange& change) {
            if (change.eWhat == BarChange::What::BandLook && secondClicks++ == 0)
                statusBar->trigger();
        });
        explorer->trigger();
    }
    application.Window().Flush();
    EXPECT_GE(secondClicks, 1);
    EXPECT_TRUE(application.Window().ExplorerDock().isVisible());
    EXPECT_TRUE(application.Window().statusBar()->isVisible()) << "the second click did nothing";
    statusBar->trigger();
    application.Window().Flush();
    EXPECT_FALSE(application.Window().statusBar()->isVisible()) << "a click after it does";
}

TEST_F(ApplicationTest, FailingActionIsShownAndTheNextClickWorks) {
    Application application({App(), true});
    ASSERT_TRUE(application.Start());
    QString shown;
    QTimer::singleShot(0, [&] {
        if (auto* dialog = qobject_cast<FailureDialog*>(QApplication::activeModalWidget())) {
            shown = dialog->findChild<QPlainTextEdit*>()->toPlainText();
            for (auto* button : dialog->findChildren<QPushButton*>())
                if (button->text() == "&Copy")
                    button->click();
            QTest::keyClick(dialog->focusWidget(), Qt::Key_Return); // closes it
        }
    });
    EXPECT_TRUE(application.Choose("View.Bad"));
    EXPECT_TRUE(shown.contains("NoSuchProcedure")) << shown.toStdString();
    EXPECT_TRUE(QApplication::clipboard()->text().contains("NoSuchProcedure"));
    EXPECT_TRUE(application.Choose("View.Bar"));
    EXPECT_FALSE(application.Bar()->Bands()->Item("StatusBar")->Visible());
}

TEST_F(ApplicationTest, BrokenFileIsToldWithFileAndLineAndTheRestComesUp) {
    Write("broken.xml", "<Service\n Name=\"B\">\n<oops</Service>");
    Application application({App(), false});
    EXPECT_TRUE(application.Start());
    EXPECT_EQ(application.Failures().ShownCount(), 1);
    EXPECT_EQ(application.Window().menuBar()->actions().size(), 5) << "View, and four titles of the host";

    ShownFailure shown{"ServiceManager", "LoadServices", Failure(-1, "76", "XML Parser"),
                       "Context: Loading XML, File: broken.xml, Desc: 76", ""};
    const FailureTexts texts = TextsOf(shown, Services());
    EXPECT_TRUE(texts.where.startsWith("broken.xml, line ")) << texts.where.toStdString();
    EXPECT_NE(texts.headline, "76");
    EXPECT_FALSE(texts.advice.isEmpty());
    EXPECT_FALSE(texts.isForUser);
    shown.failure.Number = FailureNumber::ObjectErrorBase + 1;
    EXPECT_FALSE(TextsOf(shown, Services()).isForUser) << "it says in which file";
    shown.context.clear();
    EXPECT_TRUE(TextsOf(shown, Services()).isForUser) << "the application's own number";
}

// The library stops at the first mistake; whoever mends the file wants to know of all.
TEST_F(ApplicationTest, FailureOfAFileIsShownWithAllThatIsWrongInIt) {
    Write("broken.xml",
          R"(<Service Name="Bü" ProgID="B.B" Active="True"><ActionItems><ActionItem Name="A"/></ActionItems>
<Menus><MenuItem Type="MenuItme" ActionItem="A" Path="View" PositionOrder="1"/>
<MenuItem Type="MenuItem" ActionItem="Aa" Path="View" PositionOrder="2"/></Menus></Service>)");
    Application application({App(), true});
    QStringList lines;
    QString current;
    QString copied;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<FailureDialog*>(QApplication::activeModalWidget());
        ASSERT_TRUE(dialog);
        auto* list = dialog->findChild<ProblemList*>();
        for (int i = 0; list && i < list->Count(); ++i)
            lines.append(list->topLevelItem(i)->text(0) + " " + list->topLevelItem(i)->text(3));
        current = list && list->currentItem() ? list->currentItem()->text(3) : QString();
        for (auto* button : dialog->findChildren<QPushButton*>())
            if (button->text() == "&Copy")
                button->click();
        copied = QApplication::clipboard()->text();
        dialog->reject();
    });
    EXPECT_TRUE(application.Start());
    EXPECT_TRUE(lines.contains("broken.xml:2:24 bad-word")) << lines.join("\n").toStdString();
    EXPECT_TRUE(lines.contains("broken.xml:3:39 unknown-action")) << lines.join("\n").toStdString();
    EXPECT_TRUE(lines.last().endsWith("utf8-bytes")) << "a warning, behind the errors: " << lines.last().toStdString();
    EXPECT_EQ(current.toStdString(), lines.isEmpty() ? "" : lines.first().section(' ', -1).toStdString());
    EXPECT_TRUE(copied.contains("[unknown-action]")) << copied.toStdString();

    EXPECT_TRUE(FindingsIn("gone.xml", Services()).empty());
    EXPECT_TRUE(FindingsIn("", Services()).empty());
}

TEST_F(ApplicationTest, WindowComesUpAlsoWhenTheStartFails) {
    QFile::remove(Services() + "/Service.xdr");
    Application application({App(), false});
    EXPECT_FALSE(application.Start());
    EXPECT_TRUE(application.Window().isVisible());
    EXPECT_EQ(application.Failures().ShownCount(), 1);
}

TEST_F(ApplicationTest, ClosingTheWindowUnloadsOnce) {
    Application application({App(), false});
    ASSERT_TRUE(application.Start());
    int unloads = 0;
    const auto unload = application.MainForm()->OnUnload.Subscribe([&](bool&) { ++unloads; });
    application.Window().close();
    application.Window().close();
    EXPECT_EQ(unloads, 1);
    EXPECT_FALSE(application.Window().isVisible());
    EXPECT_FALSE(CorvaneMain::Framework()->ServiceManager());
}

TEST_F(ApplicationTest, PrintsTheWindowIntoAFileWhereNobodyWatches) {
    Application application({App(), false});
    ASSERT_TRUE(application.Start());
    const QString filePath = Services() + "/window.pdf";
    application.Dialogs().AddAnswer(filePath.toStdString());
    CorvaneMain::Framework()->PrintAppWindow();
    QFile file(filePath);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.read(5), "%PDF-");
    application.Dialogs().AddAnswer((Services() + "/none/window.pdf").toStdString());
    try {
        CorvaneMain::Framework()->PrintAppWindow();
        ADD_FAILURE() << "there is no such folder";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.Number, FailureNumber::FileAccess);
    }
}

TEST_F(ApplicationTest, SignalsCloseTheWindowAsItsCloseBoxDoes) {
    Application application({App(), false});
    ASSERT_TRUE(application.Start());
    const EndSignals endSignals(&application.Window());
    bool refuse = true;
    int asked = 0;
    const auto query = application.MainForm()->OnQueryUnload.Subscribe([&](bool& refused) {
        refused = refuse;
        ++asked;
    });
    int raised = 0;
    for (const int signal : {SIGTERM, SIGHUP, SIGTERM}) {
        std::raise(signal);
        ++raised;
        EXPECT_TRUE(QTest::qWaitFor([&] { return asked == raised; }, 30000));
        EXPECT_TRUE(application.Window().isVisible());
    }
    refuse = false;
    std::raise(SIGINT);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !application.Window().isVisible(); }, 30000));
    EXPECT_FALSE(CorvaneMain::Framework()->ServiceManager());
}

TEST_F(ApplicationTest, FailureAtTheEndIsShownClosesTheWindowAndIsNotTriedAgain) {
    int unloads = 0;
    Subscription unload;
    {
        Application application({App(), false});
        ASSERT_TRUE(application.Start());
        unload = application.MainForm()->OnUnload.Subscribe([&](bool&) {
            ++unloads;
            Fail(FailureNumber::FileNotFound);
        });
        application.Window().close();
        EXPECT_FALSE(application.Window().isVisible());
        EXPECT_EQ(application.Failures().ShownCount(), 1);
    }
    EXPECT_EQ(unloads, 1);
}

TEST_F(ApplicationTest, UnloadOfTheFormClosesTheWindow) {
    Application application({App(), false});
    ASSERT_TRUE(application.Start());
    CorvaneMain::Framework()->AppExit();
    QApplication::processEvents();
    EXPECT_FALSE(application.Window().isVisible());
}

} // namespace
} // namespace corvane::desktop
