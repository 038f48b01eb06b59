#include "analysis/Explain.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/WindowManager.h"
#include "desktop/application/Application.h"
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
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>

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
    EXPECT_TRUE(sButton.contains("Added by: Trouble.xml, line 7, for Trouble\n")) << sButton.toStdString();
    EXPECT_TRUE(sButton.contains("Also defined by: Trouble.xml, line 6, for Trouble\n"));
    EXPECT_TRUE(sButton.contains("Procedure: OnPing\nProvider: Trouble, an object of the class "))
        << sButton.toStdString();

    QMenu* pFile = oWindow.menuBar()->actions().front()->menu();
    pFile->popup(oWindow.mapToGlobal(QPoint(10, 10)));
    ASSERT_EQ(pFile->actions().at(1)->text(), "Shared");
    const QString sShared = Picked(pFile, pFile->actionGeometry(pFile->actions().at(1)).center());
    EXPECT_FALSE(pFile->isVisible());
    EXPECT_TRUE(sShared.contains("Key: File.Item\n")) << sShared.toStdString();
    EXPECT_TRUE(sShared.contains("Added by: Trouble.xml, line 8, for Trouble\nPosition (position key): 8 (File.8)\n"));
    EXPECT_TRUE(sShared.contains("Also defined by: Trouble.xml, line 11, for Trouble (Root in the explorer)\n"));
    EXPECT_TRUE(sShared.contains("Enabled: no: Trouble (Root in the explorer) isn't active\n"))
        << sShared.toStdString();

    auto* pTree = oWindow.Explorer().CurrentPage()->Tree();
    pTree->Sync();
    const QString sNode = Picked(pTree->viewport(), pTree->visualRect(pTree->model()->index(0, 0)).center());
    EXPECT_TRUE(sNode.contains("Kind: Root\nAdded by: Trouble.xml, line 10\nOwner: Trouble\n")) << sNode.toStdString();
    EXPECT_EQ(m_pApplication->Failures().ShownCount(), 0);
    EXPECT_EQ(m_pApplication->Bar()->Bands()->Item("StatusBar")->Tools()->Item("Status")->Caption(), "")
        << "nothing was chosen";
}

// The value of a fact, or nothing.
QString FactOf(const Facts& aFacts, const char* sName) {
    for (const auto& [sFact, sValue] : aFacts)
        if (sFact == sName)
            return sValue;
    return {};
}

// "Studies.xml, line 22" as the tool writes it: "Studies.xml:22:".
QString AsTool(const QString& sPlace) {
    static const QRegularExpression oPlace("^(\\S+\\.xml), line (\\d+)");
    const auto oMatch = oPlace.match(sPlace);
    return oMatch.hasMatch() ? oMatch.captured(1) + ":" + oMatch.captured(2) + ":" : QString();
}

// What `corvane explain` says of the thing, a paragraph a definition.
QStringList Explained(const std::string& sItem) {
    const QString sText = QString::fromStdString(check::Explain(CORVANE_STUDIES, sItem).sText);
    return sText.split("\n\n", Qt::SkipEmptyParts);
}

class InspectorAndTool : public ::testing::Test {
protected:
    InspectorAndTool() : m_oApplication({CORVANE_STUDIES, false}) {
        EXPECT_TRUE(m_oApplication.Start());
        m_pPlaces = std::make_unique<DefinitionPlaces>(Explainer::ReadPlaces());
        m_oNotes.Follow();
    }
    [[nodiscard]] Explainer Inspector() {
        return {m_oApplication.Bar(), *m_pPlaces, m_oApplication.Personal().Bars(), m_oNotes};
    }
    // Whether one of the paragraphs begins so and holds all of that.
    static bool Says(const QStringList& aParagraphs, const QString& sBegin, const QStringList& aParts) {
        return std::any_of(aParagraphs.begin(), aParagraphs.end(), [&](const QString& sParagraph) {
            return sParagraph.startsWith(sBegin) &&
                   std::all_of(aParts.begin(), aParts.end(),
                               [&](const QString& sPart) { return sParagraph.contains(sPart); });
        });
    }

    const AppFolder m_oFolder; // where the application keeps its things
    Application m_oApplication;
    std::unique_ptr<DefinitionPlaces> m_pPlaces;
    ExplorerItemNotes m_oNotes;
};

// The tool's words for an owner.
QString OwnerAsTool(const QString& sOwner) {
    static const QRegularExpression oItem("^.* \\((.*) in the explorer\\)$");
    static const QRegularExpression oPage("^page (.*) of the window .*$");
    if (const auto oMatch = oItem.match(sOwner); oMatch.hasMatch())
        return "the explorer item \"" + oMatch.captured(1) + "\"";
    if (const auto oMatch = oPage.match(sOwner); oMatch.hasMatch())
        return "the page \"" + oMatch.captured(1) + "\"";
    return "the service \"" + sOwner + "\"";
}

TEST_F(InspectorAndTool, SayTheSameOfEveryEntry) {
    const Explainer oInspector = Inspector();
    int nEntries = 0;
    int nOfHost = 0;
    for (const auto& oBand : m_oApplication.Bar()->Bands()->All())
        for (const auto& oInstance : oBand->Tools()->All()) {
            // The library makes the menu of toolbars by itself.
            const std::string& sName = oInstance->Name();
            if (!oBand->Kind() || sName == "Separator" || sName == "WindowList" || sName == "View.Toolbars" ||
                sName.starts_with("Toolbars."))
                continue;
            const Facts aFacts = oInspector.OfTool(*oInstance);
            const QString sPut = FactOf(aFacts, "Added by");
            const QStringList aTool = Explained(sName);
            const std::string sBoth = TextOf(aFacts).toStdString() + "\n" + aTool.join("\n\n").toStdString();
            if (sName == "Context.LibraryFile.Import") { // by the item's code, so that no file tells
                EXPECT_TRUE(sPut.contains("code of Data (LibraryFile in the explorer)")) << sBoth;
                continue;
            }
            if (sPut.startsWith("Corvane.")) { // the host's own definitions, which aren't in the folder
                EXPECT_TRUE(QRegularExpression("^Corvane\\.\\w+\\.xml, line [1-9]").match(sPut).hasMatch()) << sBoth;
                ++nOfHost;
                continue;
            }
            ++nEntries;
            ASSERT_FALSE(AsTool(sPut).isEmpty()) << sBoth;
            static const QRegularExpression oPosition("^(\\S+) \\((.*)\\)$");
            const auto oMatch = oPosition.match(FactOf(aFacts, "Position (position key)"));
            ASSERT_TRUE(oMatch.hasMatch()) << sBoth;
            const QString sStands = oBand->Kind() == BandKind::MenuBar ? QString("in the menu bar")
                                    : oBand->Kind() == BandKind::Toolbar
                                        ? "in the toolbar \"" + QString::fromStdString(oBand->Name()).mid(9) + "\""
                                    : oBand->Name().starts_with("Context.")
                                        ? "in the context menu of the explorer item \"" +
                                              QString::fromStdString(oBand->Name()).mid(8) + "\""
                                        : "in the menu \"" + QString::fromStdString(oBand->Name()) + "\"";
            EXPECT_TRUE(Says(aTool, "",
                             {"/Services/" + AsTool(sPut), ", by " + OwnerAsTool(sPut.section(", for ", 1)),
                              "  position    " + oMatch.captured(1) + ", position key \"" + oMatch.captured(2) + "\"",
                              sStands}))
                << sBoth;
            // And what both say that it calls, where somebody offers it.
            const QString sProcedure = FactOf(aFacts, "Procedure");
            EXPECT_TRUE(sProcedure.isEmpty() || sProcedure == "none" || Says(aTool, "", {"calls " + sProcedure}))
                << sBoth;
        }
    EXPECT_GT(nEntries, 50);
    EXPECT_GT(nOfHost, 5);
}

TEST_F(InspectorAndTool, SayTheSameOfBarsItemsWindowsAndServices) {
    const Explainer oInspector = Inspector();
    const auto oManager = CorvaneMain::Framework()->ServiceManager();
    int nBands = 0;
    for (const auto& oBand : m_oApplication.Bar()->Bands()->All()) {
        const Facts aFacts = oInspector.OfBand(*oBand);
        const QString sPlace = AsTool(FactOf(aFacts, "Added by"));
        if (!oBand->Kind() || sPlace.isEmpty() || sPlace.startsWith("Corvane."))
            continue;
        ++nBands;
        EXPECT_TRUE(Says(Explained(oBand->Name()), "", {"/Services/" + sPlace}))
            << TextOf(aFacts).toStdString() << Explained(oBand->Name()).join("\n\n").toStdString();
    }
    EXPECT_GT(nBands, 8);
    for (const auto& oDef : oManager->ServiceDefs()) {
        const Facts aFacts = oInspector.OfService(oDef->Name());
        const QString sPlace = AsTool(FactOf(aFacts, "Defined in"));
        if (sPlace.startsWith("Corvane."))
            continue;
        EXPECT_TRUE(Says(Explained(oDef->Name()), "service ",
                         {"/Services/" + sPlace, "created     from " + FactOf(aFacts, "ProgID"),
                          FactOf(aFacts, "Actions") + " actions, " + FactOf(aFacts, "Entries") + " places"}))
            << TextOf(aFacts).toStdString() << Explained(oDef->Name()).join("\n\n").toStdString();
    }
    CorvaneMain::Framework()->NavigationManager()->ExplorerManager()->Refresh(); // so that the notes hear of all
    std::vector<const Node*> aNodes;
    for (const auto& oControl : m_oApplication.Panel()->Controls())
        if (const auto oTree = oControl.TryAs<TreeView>())
            aNodes.insert(aNodes.end(), oTree->GetNodes()->Roots().begin(), oTree->GetNodes()->Roots().end());
    EXPECT_GE(aNodes.size(), 2U);
    for (std::size_t i = 0; i < aNodes.size(); ++i) {
        aNodes.insert(aNodes.end(), aNodes[i]->Children().begin(), aNodes[i]->Children().end());
        const Facts aFacts = oInspector.OfNode(*aNodes[i]);
        const QStringList aTool = Explained(FactOf(aFacts, "Kind").toStdString());
        EXPECT_TRUE(Says(aTool, "explorer item ", {"/Services/" + AsTool(FactOf(aFacts, "Added by"))}))
            << TextOf(aFacts).toStdString() << aTool.join("\n\n").toStdString();
    }
    m_oApplication.Panel()->Control("tabExplorer").As<TabStrip>()->ChooseTab(1);
    const auto oTree = CorvaneMain::Framework()->NavigationManager()->ExplorerManager()->TreeView();
    oTree->ClickNode(Ref<Node>(oTree->GetNodes()->Roots().front()->Children().front())); // a file of the library
    oTree->DblClick.Raise();
    const auto colWindows = CorvaneMain::Framework()->WindowManager()->Windows();
    ASSERT_EQ(colWindows->Count(), 1);
    const Facts aFacts = oInspector.OfWindow(*colWindows->Item(1));
    const QStringList aTool = Explained(FactOf(aFacts, "Name").toStdString());
    EXPECT_TRUE(Says(aTool, "window ", {"/Services/" + AsTool(FactOf(aFacts, "Added by"))}))
        << TextOf(aFacts).toStdString() << aTool.join("\n\n").toStdString();
}

TEST_F(InspectorTest, KeepsWhatIsOpenChosenAndInSightAndRestsWhileHidden) {
    InspectorDialog* pInspector = m_pApplication->Personal().ShowInspector();
    QTreeWidget& oThings = pInspector->Things();
    const auto oTool = m_pApplication->Bar()->Tools()->Item("File.Ping");
    ASSERT_TRUE(pInspector->Select(*oTool));
    QTreeWidgetItem* pItem = oThings.currentItem();
    QTreeWidgetItem* pBand = pItem->parent();
    int nChanged = 0;
    int nStructure = 0;
    QObject::connect(oThings.model(), &QAbstractItemModel::dataChanged, [&] { ++nChanged; });
    for (const auto fnSignal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        QObject::connect(oThings.model(), fnSignal, [&] { ++nStructure; });
    const auto fnWait = [](const std::function<bool()>& fnUntil) {
        for (int i = 0; i < 100 && !fnUntil(); ++i)
            QTest::qWait(20);
        return fnUntil();
    };
    oTool->TagVariant().As<ActionItem>()->SetEnabled(false);
    EXPECT_TRUE(fnWait([&] { return pItem->text(1) == "disabled"; })) << "the very item";
    EXPECT_EQ(nChanged, 3) << "its action's line, and its lines in the menu and the toolbar";
    EXPECT_EQ(nStructure, 0);
    EXPECT_EQ(oThings.currentItem(), pItem);
    EXPECT_TRUE(pBand->isExpanded());
    // Hidden, also behind the other tab, it leaves everything alone until it is seen again.
    auto* pTabs = pInspector->findChild<QTabWidget*>();
    pTabs->setCurrentIndex(1);
    nChanged = 0;
    oTool->TagVariant().As<ActionItem>()->SetEnabled(true);
    QTest::qWait(400); // longer than it takes to follow a change
    EXPECT_EQ(nChanged, 0);
    pTabs->setCurrentIndex(0);
    EXPECT_EQ(pItem->text(1), "");
    // What is added comes alone, and what goes takes nothing else along.
    const auto oTree = m_pApplication->Panel()->Control("Root").As<TreeView>();
    const Ref<Node> oAdded = oTree->GetNodes()->Add("Root", NodeRelationship::Child, "New", "New node");
    EXPECT_TRUE(fnWait([&] { return nStructure == 1; })) << nStructure;
    ASSERT_TRUE(pInspector->Select(*oAdded));
    oTree->GetNodes()->Remove("New");
    EXPECT_TRUE(fnWait([&] { return nStructure == 2; })) << nStructure;
    EXPECT_TRUE(oThings.currentItem());
    EXPECT_TRUE(pInspector->Select(*oTool));
    EXPECT_EQ(oThings.currentItem(), pItem);
}

TEST_F(InspectorTest, FollowsWhatChanges) {
    InspectorDialog* pInspector = m_pApplication->Personal().ShowInspector();
    const auto oTool = m_pApplication->Bar()->Tools()->Item("File.Ping");
    ASSERT_TRUE(pInspector->Select(*oTool));
    EXPECT_TRUE(pInspector->FactsText().contains("Enabled: yes: as set by Trouble\n"));
    oTool->TagVariant().As<ActionItem>()->SetEnabled(false);
    for (int i = 0; i < 100 && !pInspector->FactsText().contains("disabled by"); ++i)
        QTest::qWait(20);
    EXPECT_TRUE(pInspector->FactsText().contains("Enabled: no: disabled by Trouble\n"))
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
