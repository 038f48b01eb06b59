#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "headless/Document.h"
#include "headless/Steps.h"
#include "tests/preview/PreviewRoom.h"

#include <QFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTabBar>
#include <deque>
#include <fstream>
#include <sstream>

namespace corvane::desktop {
namespace {

// What stand-ins have heard, a line a call.
std::string CallsOf(const std::vector<inspect::RecordedCall>& aCalls) {
    std::string sText;
    for (const auto& oCall : aCalls)
        if (oCall.sMember != "GetUnsavedItems") // which the desktop asks at the end of the session
            sText += oCall.sObject + "." + oCall.sMember + "\n";
    return sText;
}

class RecordTest : public PreviewRoom {
protected:
    // A preview with stand-ins for all, whose steps are kept.
    PreviewWindow& PreviewThatRecords() {
        PreviewOptions oOptions;
        oOptions.bStandIns = true;
        oOptions.pRecorder = std::make_shared<StepRecorder>(m_sSteps);
        return Preview(oOptions);
    }
    // The session at the desktop, with stand-ins for all, whose calls are kept.
    std::unique_ptr<Application> Start() {
        ApplicationOptions oOptions;
        oOptions.sFolder = m_oFolder.App();
        oOptions.bWithDialogs = false;
        oOptions.bPersonal = false;
        oOptions.pRecorder = m_pRecorder = std::make_shared<StepRecorder>(m_sSteps);
        oOptions.fnObjects = [this](Ref<IObjectFactory> oReal, Ref<PluginFactory> oPlugins) -> Ref<IObjectFactory> {
            return New<PreviewFactory>(m_oRecord, std::make_shared<inspect::StandInFile>(), std::move(oReal),
                                       std::move(oPlugins), true);
        };
        auto pApplication = std::make_unique<Application>(oOptions);
        EXPECT_TRUE(pApplication->Start());
        QApplication::processEvents();
        return pApplication;
    }
    [[nodiscard]] std::string Recorded() const {
        std::ifstream oFile(m_sSteps);
        std::string sText;
        for (std::string sLine; std::getline(oFile, sLine);)
            sText += sLine.starts_with("# A session") ? "" : sLine + "\n";
        return sText;
    }
    // What the same steps bring about without a display.
    [[nodiscard]] std::string Replayed() const {
        std::ifstream oFile(m_sSteps);
        inspect::ModelHost oHost({m_oFolder.App(), true, nullptr});
        EXPECT_TRUE(oHost.Start());
        inspect::TakeAll(oHost, inspect::ReadSteps(oFile, m_sSteps));
        EXPECT_FALSE(oHost.FirstFailure()) << oHost.FirstFailure()->Description;
        return CallsOf(oHost.Recorded().aCalls);
    }
    // As the preview does: a step of the host's, and what it brings about.
    void OpenAsStep(Application& oApplication, const char* sWindow) const {
        m_pRecorder->ByHost((QApplication::activeModalWidget() ? "  open " : "open ") + std::string(sWindow));
        ViewState::OpenWindow oOpen;
        oOpen.sName = sWindow;
        ViewState::OpenAgain(oApplication, oOpen);
    }
    static void Click(const Application& oApplication, int iTab, const char* sKey, Qt::MouseButton eButton) {
        QApplication::processEvents();
        ExplorerTree* pTree = const_cast<Application&>(oApplication).Window().Explorer().Page(iTab)->Tree();
        pTree->Sync();
        const QModelIndex oIndex = IndexOf(*pTree, sKey);
        ASSERT_TRUE(oIndex.isValid()) << sKey;
        QTest::mouseClick(pTree->viewport(), eButton, {}, pTree->visualRect(oIndex).center());
    }

    const std::string m_sSteps = m_oFolder.Path("steps.txt").toStdString();
    std::shared_ptr<StepRecorder> m_pRecorder;
    Ref<inspect::Record> m_oRecord = New<inspect::Record>();
};

TEST_F(RecordTest, SessionThroughWidgetsIsTakenAgainWithTheSameCalls) {
    auto pApplication = Start();
    MainWindow& oWindow = pApplication->Window();
    pApplication->Failures().Guard([&] { Singleton::Framework()->NavigationManager()->ExplorerManager()->Populate(); });
    pApplication->Window().Flush();
    Click(*pApplication, 0, "Owls", Qt::LeftButton);
    QTest::keyClick(&oWindow, Qt::Key_K, Qt::ControlModifier);
    for (QAction* pTitle : oWindow.menuBar()->actions())
        if (pTitle->text() == "&File") {
            oWindow.menuBar()->setActiveAction(pTitle);
            pTitle->menu()->actions().last()->trigger();
            pTitle->menu()->close();
        }
    QTimer oChoose; // from the context menu, while the library waits for it
    QObject::connect(&oChoose, &QTimer::timeout, [&] {
        if (auto* pMenu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
            oChoose.stop();
            pMenu->setActiveAction(pMenu->actions().first());
            QTest::keyClick(pMenu, Qt::Key_Return);
        }
    });
    oChoose.start(5);
    Click(*pApplication, 0, "Owls", Qt::RightButton);
    EXPECT_TRUE(Until([&] { return !oChoose.isActive(); }));
    oWindow.Explorer().TabBar()->setCurrentIndex(1);
    oWindow.ExplorerDock().close();
    EXPECT_TRUE(oWindow.close());
    pApplication.reset();
    EXPECT_EQ(Recorded(), std::string("node 0 Owls\nclick File.Count\nclick File.Feed\ncontextmenu 0 Owls\nclick "
                                      "Context.Owls.Hoot\ntab 1\ncloseband Explorer\nexit\n"));
    const std::string sSeen = CallsOf(m_oRecord->aCalls);
    m_oRecord->aCalls.clear();
    m_oFolder.Write("steps.txt", QByteArray("populate\n") + m_oFolder.Read("steps.txt"));
    EXPECT_EQ(Replayed(), sSeen);
}

// Pages, commands, Escape and the close box of modal windows, one over another too.
TEST_F(RecordTest, WizardsAndDialogsAreLedThroughAgain) {
    Edit("Birds", "<Window Name=\"Ask\"", R"(<Window Name="Guide" Caption="Guide" Type="Wizard" State="Normal"
IsMDIChild="false" IsModal="true"><Page PageProgID="BirdsSvc.First" Caption="One" IsOptional="false" IsResizable="true"/>
<Page PageProgID="BirdsSvc.Second" Caption="Two" IsOptional="false" IsResizable="true"/></Window><Window Name="Ask")");
    auto pApplication = Start();
    const auto fnPress = [](const char* sText) {
        return [sText](QWidget& oModal) {
            for (auto* pButton : oModal.findChildren<QPushButton*>())
                if (pButton->isVisible() && pButton->text().remove('&').startsWith(sText))
                    return pButton->click();
            ADD_FAILURE() << "no button " << sText;
        };
    };
    std::deque<std::function<void(QWidget&)>> aPerson{fnPress("Next"),
                                                      fnPress("Previous"),
                                                      [&](QWidget&) { EXPECT_TRUE(pApplication->ShowPage(2)); },
                                                      [&](QWidget& oModal) {
                                                          QTimer::singleShot(0, &oModal,
                                                                             [&] { OpenAsStep(*pApplication, "Ask"); });
                                                      }, // returns when that one is closed
                                                      [](QWidget& oModal) { QTest::keyClick(&oModal, Qt::Key_Escape); },
                                                      fnPress("Finish"),
                                                      fnPress("OK"),
                                                      fnPress("Cancel"),
                                                      [](QWidget& oModal) { oModal.close(); }};
    QTimer oTick;
    QObject::connect(&oTick, &QTimer::timeout, [&] {
        QWidget* pModal = QApplication::activeModalWidget();
        if (!pModal || aPerson.empty())
            return;
        const auto fnNext = aPerson.front();
        aPerson.pop_front();
        fnNext(*pModal);
    });
    oTick.start(5);
    OpenAsStep(*pApplication, "Guide");
    for (int i = 0; i < 3; ++i)
        OpenAsStep(*pApplication, "Ask");
    oTick.stop();
    EXPECT_TRUE(aPerson.empty());
    EXPECT_TRUE(pApplication->Window().close());
    pApplication.reset();
    EXPECT_EQ(Recorded(), "open Guide\n  command Guide Next\n  command Guide Previous\n  page Guide 1\n"
                          "  open Ask\n  close Ask\n  command Guide Finish\n"
                          "open Ask\n  command Ask OK\nopen Ask\n  command Ask Cancel\nopen Ask\n  close Ask\nexit\n");
    // How often pages are asked differs. Without a display no page hears that another window has come over it, and a
    // dialog saves its pages also when nothing has changed.
    const auto fnTold = [](const std::string& sCalls) {
        std::istringstream oCalls(sCalls);
        std::string sTold;
        for (std::string sLine; std::getline(oCalls, sLine);)
            if (!sLine.ends_with(".Validate") && sLine != "BirdsSvc.Page#2.Save" &&
                !(sLine.starts_with("BirdsSvc.Second#1.") && sLine.ends_with("ctivate")))
                sTold += sLine + "\n";
        return sTold;
    };
    const std::string sSeen = fnTold(CallsOf(m_oRecord->aCalls));
    m_oRecord->aCalls.clear();
    EXPECT_NE(sSeen.find("BirdsSvc.Second#1.Save\n"), std::string::npos) << sSeen;
    EXPECT_EQ(fnTold(Replayed()), sSeen);
}

TEST_F(RecordTest, WindowThatIsBroughtToTheFrontIsAgain) {
    Edit("Birds", "<Window Name=\"Ask\"", R"(<Window Name="Other" Caption="Other" Type="Window" State="Normal"
IsMDIChild="true" IsModal="false"><Page PageProgID="BirdsSvc.Other" Caption="One" IsOptional="false" IsResizable="true"/>
</Window><Window Name="Ask")");
    PreviewWindow& oPreview = PreviewThatRecords();
    oPreview.OpenWindow("Sheet");
    oPreview.OpenWindow("Other");
    QApplication::processEvents();
    for (auto* pChild : Window().findChildren<QMdiSubWindow*>())
        if (pChild->windowTitle().startsWith("Sheet"))
            QTest::mouseClick(pChild, Qt::LeftButton, {}, QPoint(pChild->width() / 2, 8)); // its title
    QApplication::processEvents();
    EXPECT_NE(App().AsText().find("Window Sheet (window, active)"), std::string::npos) << App().AsText();
    oPreview.OpenWindow("Other"); // is open
    Edit("Birds", "Caption=\"#Count\"", "Caption=\"#Tally\"");
    ASSERT_TRUE(UntilShown(2));
    EXPECT_NE(App().AsText().find("Window Other (window, active)"), std::string::npos) << App().AsText();
    EXPECT_TRUE(App().ClickCommand("close"));
    EXPECT_TRUE(oPreview.close());
    EXPECT_EQ(Recorded(), "populate\nopen Sheet\nopen Other\nactivate Sheet\nactivate Other\n"
                          "# Here the definitions were changed.\nclose Other\nexit\n");
    m_pPreview.reset();
    const std::string sCalls = Replayed();
    const std::size_t iAgain =
        sCalls.find("BirdsSvc.Other#1.Activate\nBirdsSvc.Page#1.Activate\nBirdsSvc.Other#1.Activate\n");
    EXPECT_NE(iAgain, std::string::npos) << sCalls;
}

// The reload of the preview closes what is open and opens it again, which no person has done.
TEST_F(RecordTest, WhatAReloadClosesAndOpensIsNoStep) {
    PreviewWindow& oPreview = PreviewThatRecords();
    int nStage = 0;
    QTimer oPerson;
    QObject::connect(&oPerson, &QTimer::timeout, [&] {
        if (nStage == 0 && QApplication::activePopupWidget()) {
            Edit("Birds", "Caption=\"#Hoot\"", "Caption=\"#Screech\"");
            nStage = 1;
        } else if (nStage == 1 && oPreview.ShownCount() == 2 && QApplication::activePopupWidget()) {
            nStage = 2;
            QApplication::activePopupWidget()->close();
        } else if (nStage == 2 && QApplication::activeModalWidget()) {
            nStage = 3;
            Edit("Birds", "Caption=\"Ask\"", "Caption=\"Ask now\"");
        } else if (nStage == 3 && oPreview.ShownCount() == 3 && QApplication::activeModalWidget()) {
            nStage = 4;
            EXPECT_TRUE(App().ClickCommand("ok"));
        }
    });
    oPerson.start(5);
    ClickNode(0, "Owls", Qt::RightButton);
    ASSERT_TRUE(Until([&] { return nStage == 2; })) << nStage;
    oPreview.OpenWindow("Ask");
    ASSERT_TRUE(Until([&] { return nStage == 4; })) << nStage;
    Rest();
    EXPECT_TRUE(oPreview.close());
    const std::string sChanged = "# Here the definitions were changed.\n";
    EXPECT_EQ(Recorded(),
              "populate\ncontextmenu 0 Owls\n" + sChanged + "open Ask\n" + sChanged + "  command Ask OK\nexit\n");
    m_pPreview.reset();
    EXPECT_NE(Replayed().find("BirdsSvc.Page#1.Save\n"), std::string::npos);
}

TEST_F(RecordTest, WindowsAreRecordedByTheirKeysAndPreviewWritesWhatItDoesItself) {
    PreviewWindow& oPreview = PreviewThatRecords();
    oPreview.OpenWindow("Sheet");
    EXPECT_TRUE(App().ShowPage(2));
    EXPECT_TRUE(App().Choose("File.Count"));
    Edit("Birds", "Caption=\"#Count\"", "Caption=\"#Tally\"");
    ASSERT_TRUE(UntilShown(2));
    EXPECT_TRUE(App().ClickCommand("close"));
    EXPECT_TRUE(oPreview.close());
    EXPECT_EQ(Recorded(), "populate\nopen Sheet\npage Sheet 1\nclick File.Count\n# Here the definitions were changed.\n"
                          "close Sheet\nexit\n");
    m_pPreview.reset();
    const std::string sCalls = Replayed();
    EXPECT_NE(sCalls.find("BirdsSvc.Page#2.Activate\nBirdsSvc.Birds#1.OnCount\n"), std::string::npos) << sCalls;
    EXPECT_THROW(StepRecorder("/nowhere/steps"), Failure);
}

} // namespace
} // namespace corvane::desktop
