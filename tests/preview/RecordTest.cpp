#include "cli/inspect/Document.h"
#include "cli/inspect/Steps.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "tests/preview/PreviewRoom.h"

#include <QFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTabBar>
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
    // The session at the desktop, with stand-ins for all, whose calls are kept.
    std::unique_ptr<Application> Start() {
        ApplicationOptions oOptions;
        oOptions.sFolder = m_oFolder.App();
        oOptions.bWithDialogs = false;
        oOptions.bPersonal = false;
        oOptions.pRecorder = std::make_shared<StepRecorder>(m_sSteps);
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
        for (const auto& oStep : inspect::ReadSteps(oFile, m_sSteps))
            if (!oHost.HasExited())
                inspect::Take(oHost, oStep);
        EXPECT_FALSE(oHost.FirstFailure()) << oHost.FirstFailure()->Description;
        return CallsOf(oHost.Recorded().aCalls);
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

TEST_F(RecordTest, WindowsAreRecordedByTheirKeysAndPreviewWritesWhatItDoesItself) {
    PreviewOptions oOptions;
    oOptions.bStandIns = true;
    oOptions.pRecorder = std::make_shared<StepRecorder>(m_sSteps);
    PreviewWindow& oPreview = Preview(oOptions);
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
