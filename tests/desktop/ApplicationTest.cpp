#include "desktop/application/Application.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/services/ServiceManager.h"
#include "desktop/application/EndSignals.h"
#include "desktop/explorer/ExplorerPanel.h"
#include "desktop/failures/FailureDialog.h"
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
    void Write(const QString& sName, const char* sText) { m_oFolder.Write(sName, sText); }
    [[nodiscard]] QString Services() const { return m_oFolder.Services(); }
    [[nodiscard]] std::string App() const { return m_oFolder.App(); }

    ApplicationFolder m_oFolder;
};

TEST_F(ApplicationTest, MenuOnScreenTogglesTheStatusBarAndTheExplorer) {
    Application oApplication({App(), false});
    ASSERT_TRUE(oApplication.Start());
    QMenu* pView = oApplication.Window().menuBar()->actions().front()->menu();
    Q_EMIT pView->aboutToShow();
    EXPECT_TRUE(oApplication.Window().statusBar()->isVisible());
    ASSERT_EQ(pView->actions().at(1)->text(), "&Status Bar");
    EXPECT_TRUE(pView->actions().at(1)->isChecked());
    pView->actions().at(1)->trigger();
    oApplication.Window().Flush();
    EXPECT_FALSE(oApplication.Window().statusBar()->isVisible());
    EXPECT_FALSE(oApplication.Window().ExplorerDock().isVisible());
    pView->actions().at(0)->trigger();
    oApplication.Window().Flush();
    EXPECT_TRUE(oApplication.Window().ExplorerDock().isVisible());
    // The dock's close box goes through the model and unticks the entry.
    oApplication.Window().ExplorerDock().close();
    oApplication.Window().Flush();
    EXPECT_FALSE(oApplication.Window().ExplorerDock().isVisible());
    EXPECT_FALSE(oApplication.Bar()->Tools()->Item("View.Navigation")->Checked());
}

TEST_F(ApplicationTest, SecondClickDuringARunningActionIsDropped) {
    Application oApplication({App(), false});
    ASSERT_TRUE(oApplication.Start());
    QMenu* pView = oApplication.Window().menuBar()->actions().front()->menu();
    Q_EMIT pView->aboutToShow();
    QAction* pExplorer = pView->actions().at(0);
    QAction* pStatusBar = pView->actions().at(1);
    int nSecondClicks = 0;
    {
        // The explorer's band changes while the action that shows it still runs.
        const auto oDuring = oApplication.Bar()->Changed.Subscribe([&](const BarChange& oChange) {
            if (oChange.eWhat == BarChange::What::BandLook && nSecondClicks++ == 0)
                pStatusBar->trigger();
        });
        pExplorer->trigger();
    }
    oApplication.Window().Flush();
    EXPECT_GE(nSecondClicks, 1);
    EXPECT_TRUE(oApplication.Window().ExplorerDock().isVisible());
    EXPECT_TRUE(oApplication.Window().statusBar()->isVisible()) << "the second click did nothing";
    pStatusBar->trigger();
    oApplication.Window().Flush();
    EXPECT_FALSE(oApplication.Window().statusBar()->isVisible()) << "a click after it does";
}

TEST_F(ApplicationTest, FailingActionIsShownAndTheNextClickWorks) {
    Application oApplication({App(), true});
    ASSERT_TRUE(oApplication.Start());
    QString sShown;
    QTimer::singleShot(0, [&] {
        if (auto* pDialog = qobject_cast<FailureDialog*>(QApplication::activeModalWidget())) {
            sShown = pDialog->findChild<QPlainTextEdit*>()->toPlainText();
            for (auto* pButton : pDialog->findChildren<QPushButton*>())
                if (pButton->text() == "&Copy")
                    pButton->click();
            QTest::keyClick(pDialog->focusWidget(), Qt::Key_Return); // closes it
        }
    });
    EXPECT_TRUE(oApplication.Choose("View.Bad"));
    EXPECT_TRUE(sShown.contains("NoSuchProcedure")) << sShown.toStdString();
    EXPECT_TRUE(QApplication::clipboard()->text().contains("NoSuchProcedure"));
    EXPECT_TRUE(oApplication.Choose("View.Bar"));
    EXPECT_FALSE(oApplication.Bar()->Bands()->Item("StatusBar")->Visible());
}

TEST_F(ApplicationTest, BrokenFileIsToldWithFileAndLineAndTheRestComesUp) {
    Write("broken.xml", "<Service\n Name=\"B\">\n<oops</Service>");
    Application oApplication({App(), false});
    EXPECT_TRUE(oApplication.Start());
    EXPECT_EQ(oApplication.Failures().ShownCount(), 1);
    EXPECT_EQ(oApplication.Window().menuBar()->actions().size(), 3) << "View, and Tools and Help of the host";

    ShownFailure oShown{"ServiceManager", "LoadServices", Failure(-1, "76", "XML Parser"),
                        "Context: Loading XML, File: broken.xml, Desc: 76", ""};
    const FailureTexts oTexts = TextsOf(oShown, Services());
    EXPECT_TRUE(oTexts.sWhere.startsWith("broken.xml, line ")) << oTexts.sWhere.toStdString();
    EXPECT_NE(oTexts.sHeadline, "76");
    EXPECT_FALSE(oTexts.sAdvice.isEmpty());
    EXPECT_FALSE(oTexts.bIsForPerson);
    oShown.oFailure.Number = FailureNumber::ObjectErrorBase + 1;
    EXPECT_FALSE(TextsOf(oShown, Services()).bIsForPerson) << "it says in which file";
    oShown.sContext.clear();
    EXPECT_TRUE(TextsOf(oShown, Services()).bIsForPerson) << "the application's own number";
}

// The library stops at the first mistake; whoever mends the file wants to know of all.
TEST_F(ApplicationTest, FailureOfAFileIsShownWithAllThatIsWrongInIt) {
    Write("broken.xml",
          R"(<Service Name="Bü" ProgID="B.B" Active="True"><ActionItems><ActionItem Name="A"/></ActionItems>
<Menus><MenuItem Type="MenuItme" ActionItem="A" Path="View" PositionOrder="1"/>
<MenuItem Type="MenuItem" ActionItem="Aa" Path="View" PositionOrder="2"/></Menus></Service>)");
    Application oApplication({App(), true});
    QStringList aLines;
    QString sCurrent;
    QString sCopied;
    QTimer::singleShot(0, [&] {
        auto* pDialog = qobject_cast<FailureDialog*>(QApplication::activeModalWidget());
        ASSERT_TRUE(pDialog);
        auto* pList = pDialog->findChild<ProblemList*>();
        for (int i = 0; pList && i < pList->Count(); ++i)
            aLines.append(pList->topLevelItem(i)->text(0) + " " + pList->topLevelItem(i)->text(3));
        sCurrent = pList && pList->currentItem() ? pList->currentItem()->text(3) : QString();
        for (auto* pButton : pDialog->findChildren<QPushButton*>())
            if (pButton->text() == "&Copy")
                pButton->click();
        sCopied = QApplication::clipboard()->text();
        pDialog->reject();
    });
    EXPECT_TRUE(oApplication.Start());
    EXPECT_TRUE(aLines.contains("broken.xml:2:24 bad-word")) << aLines.join("\n").toStdString();
    EXPECT_TRUE(aLines.contains("broken.xml:3:39 unknown-action")) << aLines.join("\n").toStdString();
    EXPECT_TRUE(aLines.first().endsWith("utf8-bytes")) << aLines.first().toStdString();
    EXPECT_EQ(sCurrent.toStdString(), "missing-plugin") << "an error, though a warning comes before it";
    EXPECT_TRUE(sCopied.contains("[unknown-action]")) << sCopied.toStdString();

    EXPECT_TRUE(FindingsIn("gone.xml", Services()).empty());
    EXPECT_TRUE(FindingsIn("", Services()).empty());
}

TEST_F(ApplicationTest, WindowComesUpAlsoWhenTheStartFails) {
    QFile::remove(Services() + "/Service.xdr");
    Application oApplication({App(), false});
    EXPECT_FALSE(oApplication.Start());
    EXPECT_TRUE(oApplication.Window().isVisible());
    EXPECT_EQ(oApplication.Failures().ShownCount(), 1);
}

TEST_F(ApplicationTest, ClosingTheWindowUnloadsOnce) {
    Application oApplication({App(), false});
    ASSERT_TRUE(oApplication.Start());
    int nUnloads = 0;
    const auto oUnload = oApplication.MainForm()->OnUnload.Subscribe([&](bool&) { ++nUnloads; });
    oApplication.Window().close();
    oApplication.Window().close();
    EXPECT_EQ(nUnloads, 1);
    EXPECT_FALSE(oApplication.Window().isVisible());
    EXPECT_FALSE(CorvaneMain::Framework()->ServiceManager());
}

TEST_F(ApplicationTest, PrintsTheWindowIntoAFileWhereNobodyWatches) {
    Application oApplication({App(), false});
    ASSERT_TRUE(oApplication.Start());
    const QString sFile = Services() + "/window.pdf";
    oApplication.Dialogs().AddAnswer(sFile.toStdString());
    CorvaneMain::Framework()->PrintAppWindow();
    QFile oFile(sFile);
    ASSERT_TRUE(oFile.open(QIODevice::ReadOnly));
    EXPECT_EQ(oFile.read(5), "%PDF-");
    oApplication.Dialogs().AddAnswer((Services() + "/none/window.pdf").toStdString());
    try {
        CorvaneMain::Framework()->PrintAppWindow();
        ADD_FAILURE() << "there is no such folder";
    } catch (const Failure& oFailure) {
        EXPECT_EQ(oFailure.Number, FailureNumber::FileAccess);
    }
}

TEST_F(ApplicationTest, SignalsCloseTheWindowAsItsCloseBoxDoes) {
    Application oApplication({App(), false});
    ASSERT_TRUE(oApplication.Start());
    const EndSignals oEndSignals(&oApplication.Window());
    bool bRefuse = true;
    int nAsked = 0;
    const auto oQuery = oApplication.MainForm()->OnQueryUnload.Subscribe([&](bool& bRefused) {
        bRefused = bRefuse;
        ++nAsked;
    });
    for (const int nSignal : {SIGTERM, SIGHUP, SIGTERM}) {
        std::raise(nSignal);
        QTest::qWait(20);
        EXPECT_TRUE(oApplication.Window().isVisible());
    }
    EXPECT_EQ(nAsked, 3);
    bRefuse = false;
    std::raise(SIGINT);
    QTest::qWait(20);
    EXPECT_FALSE(oApplication.Window().isVisible());
    EXPECT_FALSE(CorvaneMain::Framework()->ServiceManager());
}

TEST_F(ApplicationTest, FailureAtTheEndIsShownClosesTheWindowAndIsNotTriedAgain) {
    int nUnloads = 0;
    Subscription oUnload;
    {
        Application oApplication({App(), false});
        ASSERT_TRUE(oApplication.Start());
        oUnload = oApplication.MainForm()->OnUnload.Subscribe([&](bool&) {
            ++nUnloads;
            Fail(FailureNumber::FileNotFound);
        });
        oApplication.Window().close();
        EXPECT_FALSE(oApplication.Window().isVisible());
        EXPECT_EQ(oApplication.Failures().ShownCount(), 1);
    }
    EXPECT_EQ(nUnloads, 1);
}

TEST_F(ApplicationTest, UnloadOfTheFormClosesTheWindow) {
    Application oApplication({App(), false});
    ASSERT_TRUE(oApplication.Start());
    CorvaneMain::Framework()->AppExit();
    QApplication::processEvents();
    EXPECT_FALSE(oApplication.Window().isVisible());
}

} // namespace
} // namespace corvane::desktop
