#include "desktop/Application.h"
#include "desktop/explorer/ExplorerPanel.h"
#include "desktop/inspector/InspectorDialog.h"
#include "desktop/log/LogDialog.h"
#include "tests/desktop/AppFolder.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTableView>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

namespace corvane::desktop {
namespace {

class InspectorTest : public ::testing::Test {
protected:
    InspectorTest() {
        m_oFolder.Service("Shell", "Corvane.Framework", sShellContent);
        m_oFolder.Plugin("T0");
        m_oFolder.Service("Trouble", "T0.Service", R"(<ActionItems>
<ActionItem Name="Ping" Action="OnPing"/>
<ActionItem Name="Item" Enabled="false"/></ActionItems><Menus>
<!-- <MenuItem Type="MenuItem" ActionItem="Ping" Path="File"/> -->
<MenuItem Type="MenuItem" ActionItem="Ping" Path="File" PositionOrder="7" Caption="P#ing"/>
<MenuItem Type="ToolbarItem" ActionItem="Ping" Path="Edit" PositionOrder="1" Caption="Ping"/>
<MenuItem Type="MenuItem" ActionItem="Item" Path="File" PositionOrder="8" Caption="Shared"/></Menus>
<ExplorerItems>
<ExplorerItem Name="Root" Type="Folder"><ActionItems><ActionItem Name="Item" Action="X"/></ActionItems><Menus>
<MenuItem Type="MenuItem" ActionItem="Item" Path="File" PositionOrder="8" Caption="Shared"/>
</Menus></ExplorerItem></ExplorerItems>)",
                          "IsStartService=\"true\"");
        m_pApplication = std::make_unique<Application>(ApplicationOptions{m_oFolder.App(), false});
        EXPECT_TRUE(m_pApplication->Start());
    }
    // What the inspector says after a Ctrl+Alt+click there.
    QString Picked(QWidget* pWidget, const QPoint& oPoint) {
        QTest::mouseClick(pWidget, Qt::LeftButton, Qt::ControlModifier | Qt::AltModifier, oPoint);
        QApplication::processEvents();
        auto* pInspector = m_pApplication->Window().findChild<InspectorDialog*>();
        return pInspector ? pInspector->FactsText() : QString();
    }

    AppFolder m_oFolder;
    std::unique_ptr<Application> m_pApplication;
};

TEST_F(InspectorTest, ClickOnAnyEntrySaysWhatPutItThereAndDoesNotChooseIt) {
    MainWindow& oWindow = m_pApplication->Window();
    QToolBar* pToolbar = oWindow.Bars().ToolbarOf(*m_pApplication->Bar()->Bands()->Item("Toolbars.Edit"));
    auto* pButton = static_cast<QToolButton*>(pToolbar->widgetForAction(pToolbar->actions().front()));
    const QString sButton = Picked(pButton, {3, 3});
    EXPECT_TRUE(sButton.contains("Put here by: Trouble.xml, line 7, for Trouble\n")) << sButton.toStdString();
    EXPECT_TRUE(sButton.contains("Also named by: Trouble.xml, line 6, for Trouble\n"));
    EXPECT_TRUE(sButton.contains("Procedure: OnPing\nProvider: Trouble, an object of the class "))
        << sButton.toStdString();

    QMenu* pFile = oWindow.menuBar()->actions().front()->menu();
    pFile->popup(oWindow.mapToGlobal(QPoint(10, 10)));
    ASSERT_EQ(pFile->actions().at(1)->text(), "Shared");
    const QString sShared = Picked(pFile, pFile->actionGeometry(pFile->actions().at(1)).center());
    EXPECT_FALSE(pFile->isVisible());
    EXPECT_TRUE(sShared.contains("Key: File.Item\n")) << sShared.toStdString();
    EXPECT_TRUE(
        sShared.contains("Put here by: Trouble.xml, line 8, for Trouble\nPosition (position key): 8 (File.8)\n"));
    EXPECT_TRUE(sShared.contains("Also named by: Trouble.xml, line 11, for Trouble (Root in the explorer)\n"));
    EXPECT_TRUE(sShared.contains("Can be chosen: no: Trouble (Root in the explorer) isn't active at present\n"))
        << sShared.toStdString();

    auto* pTree = oWindow.Explorer().CurrentPage()->Tree();
    pTree->Sync();
    const QString sNode = Picked(pTree->viewport(), pTree->visualRect(pTree->model()->index(0, 0)).center());
    EXPECT_TRUE(sNode.contains("Kind: Root\nPut here by: Trouble.xml, line 10\nOwner: Trouble\n"))
        << sNode.toStdString();
    EXPECT_EQ(m_pApplication->Failures().ShownCount(), 0);
    EXPECT_EQ(m_pApplication->Bar()->Bands()->Item("StatusBar")->Tools()->Item("Status")->Caption(), "")
        << "nothing was chosen";
}

TEST(Inspector, KnowsFileAndLineOfEveryEntryOfStudies) {
    const AppFolder oFolder; // where the application keeps its things
    Application oApplication({CORVANE_STUDIES, false});
    ASSERT_TRUE(oApplication.Start());
    const DefinitionPlaces oPlaces = Explainer::ReadPlaces();
    const ExplorerItemNotes oNotes;
    const Explainer oExplainer(oApplication.Bar(), oPlaces, oApplication.Personal().Bars(), oNotes);
    int nEntries = 0;
    for (const auto& oBand : oApplication.Bar()->Bands()->All())
        for (const auto& oInstance : oBand->Tools()->All()) {
            // The library makes the menu of toolbars by itself.
            const std::string& sName = oInstance->Name();
            if (!oBand->Kind() || sName == "Separator" || sName == "WindowList" || sName == "View.Toolbars" ||
                sName.starts_with("Toolbars."))
                continue;
            ++nEntries;
            const QString sFacts = TextOf(oExplainer.OfTool(*oInstance));
            const bool bAdded = sName == "Context.LibraryFile.Import"; // by the item's code
            EXPECT_TRUE(
                sFacts.contains(QRegularExpression(bAdded ? "Put here by: code of Data .LibraryFile in the explorer."
                                                          : "Put here by: \\w.*\\.xml, line [1-9]")))
                << sName << " in " << oBand->Name() << ":\n"
                << sFacts.toStdString();
        }
    EXPECT_GT(nEntries, 50);
}

TEST_F(InspectorTest, FollowsWhatChanges) {
    InspectorDialog* pInspector = m_pApplication->Personal().ShowInspector();
    const auto oTool = m_pApplication->Bar()->Tools()->Item("File.Ping");
    ASSERT_TRUE(pInspector->Select(*oTool));
    EXPECT_TRUE(pInspector->FactsText().contains("Can be chosen: yes: Trouble offers it so\n"));
    oTool->TagVariant().As<ActionItem>()->SetEnabled(false);
    for (int i = 0; i < 100 && !pInspector->FactsText().contains("disabled by"); ++i)
        QTest::qWait(20);
    EXPECT_TRUE(pInspector->FactsText().contains("Can be chosen: no: disabled by Trouble\n"))
        << pInspector->FactsText().toStdString();
}

TEST_F(InspectorTest, LogIsFilteredCopiedAndReportedWithoutThePersonAndWithWhatTheyStrikeOut) {
    qputenv("USER", "mustermann");
    const QByteArray aHead = "2024-05-06T07:08:09.123+0200\tApp\tStore\tLoad\t53\tX\t";
    m_oFolder.Write("corvane/App/errors.1.log", aHead + "File not found\tfirst\n");
    m_oFolder.Write("corvane/App/errors.log",
                    aHead + "Two\\nlines\t" + QDir::homePath().toUtf8() + "/secret of MusterMann\nno line of ours\n");
    LogDialog* pDialog = m_pApplication->Personal().ShowLog();
    EXPECT_EQ(pDialog->View().Table().model()->rowCount(), 3);
    QTest::keyClicks(&pDialog->View().Filter(), "two");
    ASSERT_EQ(pDialog->View().Table().model()->rowCount(), 1);
    EXPECT_EQ(pDialog->View().Table().model()->index(0, LogModel::Text).data().toString(), "Two\nlines");
    pDialog->View().Copy();
    EXPECT_TRUE(QApplication::clipboard()->text().startsWith("2024-05-06T07:08:09.123+0200\tApp\tStore"));

    const QString sText = ReportText({"App", m_oFolder.Path("App"), {"Bad"}, pDialog->View().LatestLines(2)});
    EXPECT_TRUE(sText.contains("Left out: Bad\n"));
    EXPECT_TRUE(sText.contains("\n  Trouble.xml  "));
    EXPECT_FALSE(sText.contains("first")) << "only the latest lines";
    EXPECT_TRUE(sText.contains("~/secret of user")) << sText.toStdString();
    EXPECT_FALSE(sText.contains("mustermann", Qt::CaseInsensitive));
    ReportDialog oReport(
        sText, [&] { return m_oFolder.Path("report.txt"); }, nullptr);
    oReport.Preview().setPlainText("struck out");
    EXPECT_TRUE(oReport.Save());
    EXPECT_EQ(m_oFolder.Read("report.txt"), "struck out");
}

} // namespace
} // namespace corvane::desktop
