#include "desktop/application/Application.h"
#include "desktop/custom/CustomizeDialog.h"
#include "desktop/custom/ShortcutsDialog.h"
#include "tests/desktop/AppFolder.h"

#include <QApplication>
#include <QDockWidget>
#include <QKeySequenceEdit>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>
#include <QToolBar>
#include <QTreeWidget>

namespace corvane::desktop {
namespace {

QString Entry(const char* sName, const char* sPath = "File", const char* sKeys = "") {
    return QString("<MenuItem Type=\"MenuItem\" ActionItem=\"%1\" Path=\"%2\" PositionOrder=\"%3\" Caption=\"%1\" "
                   "ShortCutKey=\"%4\"/>\n")
        .arg(sName, sPath)
        .arg(sName[0] - 'A' + 1)
        .arg(sKeys);
}

QString Button(const char* sName, int nOrder) {
    return QString("<MenuItem Type=\"ToolbarItem\" ActionItem=\"%1\" Path=\"Edit\" PositionOrder=\"%2\" "
                   "Caption=\"%1\"/>\n")
        .arg(sName)
        .arg(nOrder);
}

QString Content(const QString& sMenus) {
    QString sActions;
    for (const char* sName : {"A", "B", "C", "D"})
        sActions += QString("<ActionItem Name=\"%1\" Action=\"OnPing\"/>").arg(sName);
    return "<ActionItems>" + sActions + "</ActionItems><Menus>" + sMenus + "</Menus>";
}

class PersonalBarsTest : public ::testing::Test {
protected:
    PersonalBarsTest() {
        m_oFolder.Service("Shell", "Corvane.Framework", sShellContent);
        m_oFolder.Plugin("T0");
        Install(Entry("A", "File", "Ctrl+A") + Entry("B", "File", "Ctrl+B") + Entry("C") + Button("A", 1) +
                Button("B", 2) + Button("C", 3));
    }
    void Install(const QString& sMenus) const { m_oFolder.Service("Trouble", "T0.Service", Content(sMenus)); }
    std::unique_ptr<Application> Start() const {
        auto pApplication = std::make_unique<Application>(ApplicationOptions{m_oFolder.App(), false});
        EXPECT_TRUE(pApplication->Start());
        EXPECT_EQ(pApplication->Failures().ShownCount(), 0);
        return pApplication;
    }
    static const Tool& ToolOf(const Application& oApplication, const char* sName) {
        return *oApplication.Bar()->Tools()->Item(sName);
    }
    static QStringList Shown(const QList<QAction*>& aActions) {
        QStringList aTexts;
        for (const QAction* pAction : aActions)
            if (!pAction->isSeparator() && pAction->isVisible())
                aTexts.append(QString(pAction->text()).remove('&'));
        return aTexts;
    }
    static QString Menu(Application& oApplication, int iTitle = 0) {
        QMenu* pMenu = oApplication.Window().menuBar()->actions().at(iTitle)->menu();
        Q_EMIT pMenu->aboutToShow();
        return Shown(pMenu->actions()).join(' ').replace('\t', ':');
    }
    static QList<QAction*> Buttons(Application& oApplication) {
        oApplication.Window().Flush();
        const QToolBar* pToolbar =
            oApplication.Window().Bars().ToolbarOf(*oApplication.Bar()->Bands()->Item("Toolbars.Edit"));
        return pToolbar && pToolbar->isVisible() ? pToolbar->actions() : QList<QAction*>();
    }
    static QString Toolbar(Application& oApplication) { return Shown(Buttons(oApplication)).join(' '); }
    static void Click(Application& oApplication, const char* sText) {
        for (QAction* pAction : Buttons(oApplication))
            if (pAction->isVisible() && Shown({pAction}).join("") == sText)
                return pAction->trigger();
        ADD_FAILURE() << "no button " << sText;
    }
    // Which of the commands a key reaches, by real key presses.
    static std::string Pressed(Application& oApplication, Qt::Key eKey) {
        std::string sClicked;
        const auto oClick =
            oApplication.Bar()->ToolClick.Subscribe([&](const Ref<Tool>& oTool) { sClicked += oTool->Name(); });
        QTest::keyClick(&oApplication.Window(), eKey, Qt::ControlModifier);
        return sClicked;
    }

    AppFolder m_oFolder;
};

TEST_F(PersonalBarsTest, KeysOutliveChangedDefinitions) {
    {
        const auto pApplication = Start();
        ShortcutsDialog oDialog(pApplication->Personal().Bars(), *pApplication->Bar(), &pApplication->Window());
        ASSERT_TRUE(oDialog.Select(ToolOf(*pApplication, "File.A")));
        QTest::keyClick(&oDialog.Keys(), Qt::Key_B, Qt::ControlModifier);
        EXPECT_TRUE(oDialog.Conflict().contains("File › B (Trouble)")) << oDialog.Conflict().toStdString();
        QApplication::processEvents();
        for (auto* pButton : oDialog.findChildren<QPushButton*>())
            if (pButton->text() == "A&ssign")
                pButton->click();
        EXPECT_EQ(Menu(*pApplication), "A:Ctrl+B B:Ctrl+B C");
        EXPECT_EQ(Pressed(*pApplication, Qt::Key_B), "File.A") << "what the person gave comes first";
        EXPECT_EQ(Pressed(*pApplication, Qt::Key_A), "");
    }
    struct Case {
        const char* sWhat;
        QString sMenus;
        const char* sTool; // that has the keys now; empty for none
        QString sAside;
    };
    const Case aCases[] = {
        {"the file gives it other keys and others its own",
         Entry("A", "File", "Ctrl+X") + Entry("C", "File", "Ctrl+B"),
         "File.A",
         {}},
        {"it moves to another menu", Entry("A", "View", "Ctrl+A") + Entry("B", "File"), "View.A", {}},
        {"it goes", Entry("B", "File", "Ctrl+B"), "File.B", "A (File.A): Ctrl+B"},
        {"it comes back", Entry("A", "File", "Ctrl+A") + Entry("B", "File", "Ctrl+B"), "File.A", {}},
    };
    for (const Case& oCase : aCases) {
        Install(oCase.sMenus);
        const auto pApplication = Start();
        EXPECT_EQ(Pressed(*pApplication, Qt::Key_B), oCase.sTool) << oCase.sWhat;
        QStringList aAside;
        for (const auto& oAside : pApplication->Personal().Bars().KeysAside())
            aAside.append(oAside.sText);
        EXPECT_EQ(aAside.join('|'), oCase.sAside) << oCase.sWhat;
    }
    const auto pApplication = Start();
    pApplication->Personal().Bars().ResetAllKeys();
    EXPECT_EQ(Menu(*pApplication), "A:Ctrl+A B:Ctrl+B");
    EXPECT_EQ(Pressed(*pApplication, Qt::Key_B), "File.B");
}

// Each key that is said to come before commands does, and each that is said to give way does that.
TEST_F(PersonalBarsTest, KeysOfTheWindowItselfAreConflictsAsTheListSays) {
    const auto pApplication = Start();
    PersonalBars& oBars = pApplication->Personal().Bars();
    const Tool& oTool = ToolOf(*pApplication, "File.A");
    pApplication->Window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&pApplication->Window()));
    const auto aKeys = WindowKeys(*pApplication->Bar());
    EXPECT_EQ(std::count_if(aKeys.begin(), aKeys.end(),
                            [](const auto& oKey) { return oKey.oKeys == QKeySequence(Qt::ALT | Qt::Key_V); }),
              1)
        << "the letter of the title View";
    for (const WindowKey& oKey : aKeys) {
        const std::string sKeys = oKey.oKeys.toString().toStdString();
        ShortcutsDialog oDialog(oBars, *pApplication->Bar(), &pApplication->Window());
        ASSERT_TRUE(oDialog.Select(oTool));
        oDialog.Keys().setKeySequence(oKey.oKeys);
        EXPECT_TRUE(oDialog.Conflict().contains(oKey.sWhat)) << oDialog.Conflict().toStdString();
        for (auto* pButton : oDialog.findChildren<QPushButton*>())
            EXPECT_TRUE(pButton->text() != "A&ssign" || pButton->isEnabled() != oKey.bComesFirst) << sKeys;
        oBars.SetKeys(oTool, {oKey.oKeys});
        pApplication->Window().Flush();
        std::string sClicked;
        const auto oClick =
            pApplication->Bar()->ToolClick.Subscribe([&](const Ref<Tool>& oClicked) { sClicked += oClicked->Name(); });
        QTest::keyClick(&pApplication->Window(), oKey.oKeys[0].key(), oKey.oKeys[0].keyboardModifiers());
        EXPECT_EQ(sClicked, oKey.bComesFirst ? "" : "File.A") << sKeys;
        if (QWidget* pMenu = QApplication::activePopupWidget())
            pMenu->close();
    }
    // They stand in the list, with their owner, and can't be changed there; a command with such keys says so.
    oBars.SetKeys(oTool, {QKeySequence("Ctrl+Tab")});
    ShortcutsDialog oDialog(oBars, *pApplication->Bar(), &pApplication->Window());
    const auto aRows = oDialog.List().findItems("Ctrl+Tab", Qt::MatchExactly, 1);
    ASSERT_EQ(aRows.size(), 2);
    EXPECT_TRUE(aRows[0]->text(3).contains("Next window (the window itself)")) << aRows[0]->text(3).toStdString();
    EXPECT_EQ(aRows[1]->text(2), "the window itself");
    oDialog.List().setCurrentItem(aRows[1]);
    EXPECT_FALSE(oDialog.Keys().isEnabled());
    // Esc isn't taken for keys: it empties the field, then it closes the dialog.
    oDialog.show();
    oDialog.List().setCurrentItem(aRows[0]);
    QTest::keyClick(&oDialog.Keys(), Qt::Key_B, Qt::ControlModifier);
    for (const bool bOpen : {true, false}) {
        QTest::keyClick(&oDialog.Keys(), Qt::Key_Escape);
        EXPECT_TRUE(oDialog.Keys().keySequence().isEmpty());
        EXPECT_EQ(oDialog.isVisible(), bOpen);
    }
}

TEST_F(PersonalBarsTest, NewKeysGoToARowThatTheSearchShows) {
    const auto pApplication = Start();
    PersonalBars& oBars = pApplication->Personal().Bars();
    ShortcutsDialog oDialog(oBars, *pApplication->Bar(), &pApplication->Window());
    ASSERT_TRUE(oDialog.Select(ToolOf(*pApplication, "File.A")));
    auto* pSearch = oDialog.findChild<QLineEdit*>();
    ASSERT_TRUE(pSearch);
    const auto fnAssign = [&](const char* sKeys) {
        oDialog.Keys().setKeySequence(QKeySequence(sKeys));
        for (auto* pButton : oDialog.findChildren<QPushButton*>())
            if (pButton->text() == "A&ssign")
                pButton->click();
    };
    pSearch->setText("File \u203a B");
    fnAssign("Ctrl+K");
    EXPECT_FALSE(oBars.HasOwnKeys(ToolOf(*pApplication, "File.A")));
    EXPECT_EQ(oBars.KeysText(ToolOf(*pApplication, "File.B")), "Ctrl+K");
    pSearch->setText("no such command");
    EXPECT_FALSE(oDialog.Keys().isEnabled());
    pSearch->setText("File \u203a");
    QTest::keyClick(pSearch, Qt::Key_Down); // from A to B
    fnAssign("Ctrl+L");
    EXPECT_EQ(oBars.KeysText(ToolOf(*pApplication, "File.B")), "Ctrl+L");
}

TEST_F(PersonalBarsTest, KeysGoAroundThePartsOfTheWindow) {
    m_oFolder.Service("Trouble", "T0.Service", R"(<ActionItems><ActionItem Name="Open" Action="OnOpen"/></ActionItems>
        <Menus><MenuItem Type="MenuItem" ActionItem="Open" Path="File" PositionOrder="1" Caption="Open"/></Menus>
        <ExplorerItems><ExplorerItem Name="Left" Type="Folder" PositionOrder="1"/></ExplorerItems>
        <Windows><Window Name="Sheet" Caption="Sheet" Type="Window" State="Normal" IsMDIChild="true" IsModal="false">
        <Page PageProgID="T0.Page" Caption="P" IsOptional="false" IsResizable="true"/></Window></Windows>)",
                      "IsStartService=\"true\"");
    const auto pApplication = Start();
    MainWindow& oWindow = pApplication->Window();
    const auto fnFocusIn = [](const QWidget& oPart) {
        return QApplication::focusWidget() && oPart.isAncestorOf(QApplication::focusWidget());
    };
    oWindow.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&oWindow));
    QTest::keyClick(&oWindow, Qt::Key_F10);
    EXPECT_EQ(oWindow.menuBar()->activeAction(), oWindow.menuBar()->actions().first());
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    QTest::keyClick(&oWindow, Qt::Key_F6);
    EXPECT_TRUE(fnFocusIn(oWindow.ExplorerDock()));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6); // there is no window yet
    EXPECT_TRUE(fnFocusIn(oWindow.ExplorerDock()));
    EXPECT_TRUE(pApplication->Choose("File.Open"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
    EXPECT_TRUE(fnFocusIn(oWindow.ExplorerDock()));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
    EXPECT_TRUE(fnFocusIn(oWindow.Area()));
}

TEST_F(PersonalBarsTest, ToolbarsAndMenusOutliveChangedDefinitions) {
    {
        const auto pApplication = Start();
        CustomizeDialog oDialog(pApplication->Personal().Bars(), pApplication->Bar(), {}, &pApplication->Window());
        ASSERT_TRUE(oDialog.SelectBand("File"));
        oDialog.Entries().item(1)->setCheckState(Qt::Unchecked);
        EXPECT_EQ(Menu(*pApplication), "A:Ctrl+A C");
        ASSERT_TRUE(oDialog.SelectBand("Toolbars.Edit"));
        oDialog.Entries().setCurrentRow(2);
        oDialog.MoveCurrent(-1);
        EXPECT_EQ(Toolbar(*pApplication), "A C B");
        oDialog.AddCommand(pApplication->Bar()->Tools()->Item("View.Bar")); // it is chosen at once
        oDialog.MoveCurrent(-1);
        oDialog.MoveCurrent(-1);
        EXPECT_EQ(Toolbar(*pApplication), "A Status Bar C B");
        oDialog.Entries().item(0)->setCheckState(Qt::Unchecked);
        EXPECT_EQ(Toolbar(*pApplication), "Status Bar C B");
        // What was added does the same as where it comes from.
        Click(*pApplication, "Status Bar");
        EXPECT_FALSE(pApplication->Bar()->Bands()->Item("StatusBar")->Visible());
    }
    struct Case {
        const char* sWhat;
        QString sMenus;
        const char* sMenu;
        const char* sToolbar;
        std::size_t nAside;
    };
    const QString sEntries = Entry("A") + Entry("B") + Entry("C");
    const Case aCases[] = {
        {"nothing changes", sEntries + Button("A", 1) + Button("B", 2) + Button("C", 3), "A C", "Status Bar C B", 0},
        {"a button comes", sEntries + Button("A", 1) + Button("B", 2) + Button("C", 3) + Button("D", 4), "A C",
         "Status Bar C B D", 0},
        {"the one in front goes", sEntries + Button("B", 2) + Button("C", 3), "A C", "B C Status Bar", 0},
        {"the moved one goes from the toolbar", sEntries + Button("A", 1) + Button("B", 2), "A C", "Status Bar B", 0},
        {"the hidden one moves to another menu", Entry("A") + Entry("B", "View") + Entry("C") + Button("A", 1), "A C",
         "Status Bar", 0},
        {"two go altogether", Entry("C") + Button("C", 3), "C", "C Status Bar", 2},
    };
    for (const Case& oCase : aCases) {
        Install(oCase.sMenus);
        const auto pApplication = Start();
        EXPECT_EQ(Menu(*pApplication), oCase.sMenu) << oCase.sWhat;
        EXPECT_EQ(Toolbar(*pApplication), oCase.sToolbar) << oCase.sWhat;
        EXPECT_EQ(pApplication->Personal().Bars().PlacesAside().size(), oCase.nAside) << oCase.sWhat;
        EXPECT_FALSE((Menu(*pApplication, 1) + " ").contains(" B ")) << oCase.sWhat;
    }
    const auto pApplication = Start();
    pApplication->Personal().Bars().ResetAllBands();
    EXPECT_EQ(Toolbar(*pApplication), "C");
    EXPECT_EQ(Menu(*pApplication), "C");
}

// The files' own buttons are hidden from the start, so that the toolbar has never been on screen.
TEST_F(PersonalBarsTest, ButtonOfThePersonBringsAToolbarThatHadNoneToShow) {
    Install(Entry("A") + Entry("B") + Button("C", 1));
    const auto pApplication = Start();
    const auto fnSetVisible = [&](const char* sName, bool bVisible) {
        pApplication->Bar()->Tools()->Item(sName)->SetVisible(bVisible);
        pApplication->Window().Flush();
    };
    const auto& oBand = *pApplication->Bar()->Bands()->Item("Toolbars.Edit");
    const std::string sOwn = oBand.Tools()->All().front()->Name();
    fnSetVisible(sOwn.c_str(), false);
    ASSERT_EQ(Toolbar(*pApplication), "");
    fnSetVisible("File.A", false);
    PersonalBars& oBars = pApplication->Personal().Bars();
    oBars.Add(oBand, ToolOf(*pApplication, "File.A"));
    pApplication->Window().Flush();
    EXPECT_EQ(Toolbar(*pApplication), "");
    fnSetVisible("File.A", true);
    EXPECT_EQ(Toolbar(*pApplication), "A");
    fnSetVisible("File.A", false);
    EXPECT_EQ(Toolbar(*pApplication), "");
    fnSetVisible("File.A", true);
    fnSetVisible(sOwn.c_str(), true);
    EXPECT_EQ(Toolbar(*pApplication), "C A");
    oBars.ResetAllBands();
    EXPECT_EQ(Toolbar(*pApplication), "C");
}

} // namespace
} // namespace corvane::desktop
