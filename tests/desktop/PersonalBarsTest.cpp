#include "desktop/application/Application.h"
#include "desktop/application/MainWindow.h"
#include "desktop/application/PersonalDesktop.h"
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

QString Entry(const char* name, const char* path = "File", const char* keys = "") {
    return QString("<MenuItem Type=\"MenuItem\" ActionItem=\"%1\" Path=\"%2\" PositionOrder=\"%3\" Caption=\"%1\" "
                   "ShortCutKey=\"%4\"/>\n")
        .arg(name, path)
        .arg(name[0] - 'A' + 1)
        .arg(keys);
}

QString Button(const char* name, int order) {
    return QString("<MenuItem Type=\"ToolbarItem\" ActionItem=\"%1\" Path=\"Edit\" PositionOrder=\"%2\" "
                   "Caption=\"%1\"/>\n")
        .arg(name)
        .arg(order);
}

QString Content(const QString& menus) {
    QString actions;
    for (const char* name : {"A", "B", "C", "D"})
        actions += QString("<ActionItem Name=\"%1\" Action=\"OnPing\"/>").arg(name);
    return "<ActionItems>" + actions + "</ActionItems><Menus>" + menus + "</Menus>";
}

class PersonalBarsTest : public ::testing::Test {
protected:
    PersonalBarsTest() {
        m_folder.Service("Shell", "Corvane.Framework", shellContent);
        m_folder.Plugin("T0");
        Install(Entry("A", "File", "Ctrl+A") + Entry("B", "File", "Ctrl+B") + Entry("C") + Button("A", 1) +
                Button("B", 2) + Button("C", 3));
    }
    void Install(const QString& menus) const { m_folder.Service("Trouble", "T0.Service", Content(menus)); }
    std::unique_ptr<Application> Start() const {
        auto application = std::make_unique<Application>(ApplicationOptions{m_folder.App(), false});
        EXPECT_TRUE(application->Start());
        EXPECT_EQ(application->Failures().ShownCount(), 0);
        return application;
    }
    static const Tool& ToolOf(const Application& application, const char* name) {
        return *application.Bar()->Tools()->Item(name);
    }
    static QStringList Shown(const QList<QAction*>& actions) {
        QStringList texts;
        for (const QAction* action : actions)
            if (!action->isSeparator() && action->isVisible())
                texts.append(QString(action->text()).remove('&'));
        return texts;
    }
    static QString Menu(Application& application, int title = 0) {
        QMenu* menu = application.Window().menuBar()->actions().at(title)->menu();
        Q_EMIT menu->aboutToShow();
        // Without what the host itself adds to the menu.
        return Shown(menu->actions()).join(' ').replace('\t', ':').remove(" Save:Ctrl+S Close:Ctrl+W");
    }
    static QList<QAction*> Buttons(Application& application) {
        application.Window().Flush();
        const QToolBar* toolbar =
            application.Window().Bars().ToolbarOf(*application.Bar()->Bands()->Item("Toolbars.Edit"));
        return toolbar && toolbar->isVisible() ? toolbar->actions() : QList<QAction*>();
    }
    static QString Toolbar(Application& application) { return Shown(Buttons(application)).join(' '); }
    static void Click(Application& application, const char* text) {
        for (QAction* action : Buttons(application))
            if (action->isVisible() && Shown({action}).join("") == text)
                return action->trigger();
        ADD_FAILURE() << "no button " << text;
    }
    // Which of the commands a key reaches, by real key presses.
    static std::string Pressed(Application& application, Qt::Key key) {
        std::string clicked;
        const auto click =
            application.Bar()->ToolClick.Subscribe([&](const Ref<Tool>& tool) { clicked += tool->Name(); });
        QTest::keyClick(&application.Window(), key, Qt::ControlModifier);
        return clicked;
    }

    AppFolder m_folder;
};

TEST_F(PersonalBarsTest, KeysOutliveChangedDefinitions) {
    {
        const auto application = Start();
        ShortcutsDialog dialog(application->Personal().Bars(), *application->Bar(), &application->Window());
        ASSERT_TRUE(dialog.Select(ToolOf(*application, "File.A")));
        QTest::keyClick(&dialog.Keys(), Qt::Key_B, Qt::ControlModifier);
        EXPECT_TRUE(dialog.Conflict().contains("File › B (Trouble)")) << dialog.Conflict().toStdString();
        QApplication::processEvents();
        for (auto* button : dialog.findChildren<QPushButton*>())
            if (button->text() == "A&ssign")
                button->click();
        EXPECT_EQ(Menu(*application), "A:Ctrl+B B:Ctrl+B C");
        EXPECT_EQ(Pressed(*application, Qt::Key_B), "File.A") << "what the person gave comes first";
        EXPECT_EQ(Pressed(*application, Qt::Key_A), "");
    }
    struct Case {
        const char* what;
        QString menus;
        const char* tool; // that has the keys now; empty for none
        QString aside;
    };
    const Case cases[] = {
        {"the file gives it other keys and others its own",
         Entry("A", "File", "Ctrl+X") + Entry("C", "File", "Ctrl+B"),
         "File.A",
         {}},
        {"it moves to another menu", Entry("A", "View", "Ctrl+A") + Entry("B", "File"), "View.A", {}},
        {"it goes", Entry("B", "File", "Ctrl+B"), "File.B", "A (File.A): Ctrl+B"},
        {"it comes back", Entry("A", "File", "Ctrl+A") + Entry("B", "File", "Ctrl+B"), "File.A", {}},
    };
    for (const Case& testCase : cases) {
        Install(testCase.menus);
        const auto application = Start();
        EXPECT_EQ(Pressed(*application, Qt::Key_B), testCase.tool) << testCase.what;
        QStringList asideItems;
        for (const auto& aside : application->Personal().Bars().KeysAside())
            asideItems.append(aside.text);
        EXPECT_EQ(asideItems.join('|'), testCase.aside) << testCase.what;
    }
    const auto application = Start();
    application->Personal().Bars().ResetAllKeys();
    EXPECT_EQ(Menu(*application), "A:Ctrl+A B:Ctrl+B");
    EXPECT_EQ(Pressed(*application, Qt::Key_B), "File.B");
}

TEST_F(PersonalBarsTest, ResetIsForOneCommandOrOneBarAlone) {
    {
        const auto application = Start();
        PersonalBars& bars = application->Personal().Bars();
        bars.SetKeys(ToolOf(*application, "File.A"), {QKeySequence("Ctrl+K")});
        bars.SetKeys(ToolOf(*application, "File.B"), {QKeySequence("Ctrl+L"), QKeySequence("Ctrl+M")});
        bars.SetKeys(ToolOf(*application, "File.C"), {QKeySequence("Ctrl+A")});
        ShortcutsDialog dialog(bars, *application->Bar(), &application->Window());
        ASSERT_TRUE(dialog.Select(ToolOf(*application, "File.A")));
        for (auto* button : dialog.findChildren<QPushButton*>())
            if (button->text() == "&Reset")
                button->click();
        const auto bands = application->Bar()->Bands();
        for (const char* band : {"File", "Toolbars.Edit"})
            bars.SetHidden(*bands->Item(band), ToolOf(*application, "File.C"), true);
        bars.ResetBand(*bands->Item("File"));
    }
    const auto application = Start();
    EXPECT_FALSE(application->Personal().Bars().HasOwnKeys(ToolOf(*application, "File.A")));
    EXPECT_EQ(Pressed(*application, Qt::Key_A), "File.C") << "the user's before those of the files";
    for (const auto key : {Qt::Key_L, Qt::Key_M})
        EXPECT_EQ(Pressed(*application, key), "File.B");
    EXPECT_TRUE(Menu(*application).endsWith(" C:Ctrl+A"));
    EXPECT_EQ(Toolbar(*application), "A B");
}

// Each key that is said to come before commands does, and each that is said to give way does that.
TEST_F(PersonalBarsTest, KeysOfTheWindowItselfAreConflictsAsTheListSays) {
    const auto application = Start();
    PersonalBars& bars = application->Personal().Bars();
    const Tool& tool = ToolOf(*application, "File.A");
    application->Window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&application->Window()));
    const auto keyList = WindowKeys(*application->Bar());
    EXPECT_EQ(std::count_if(keyList.begin(), keyList.end(),
                            [](const auto& key) { return key.keys == QKeySequence(Qt::ALT | Qt::Key_V); }),
              1)
        << "the letter of the title View";
    for (const WindowKey& key : keyList) {
        const std::string keys = key.keys.toString().toStdString();
        ShortcutsDialog dialog(bars, *application->Bar(), &application->Window());
        ASSERT_TRUE(dialog.Select(tool));
        dialog.Keys().setKeySequence(key.keys);
        EXPECT_TRUE(dialog.Conflict().contains(key.what)) << dialog.Conflict().toStdString();
        for (auto* button : dialog.findChildren<QPushButton*>())
            EXPECT_TRUE(button->text() != "A&ssign" || button->isEnabled() != key.comesFirst) << keys;
        bars.SetKeys(tool, {key.keys});
        application->Window().Flush();
        std::string clickedText;
        const auto click =
            application->Bar()->ToolClick.Subscribe([&](const Ref<Tool>& clicked) { clickedText += clicked->Name(); });
        QTest::keyClick(&application->Window(), key.keys[0].key(), key.keys[0].keyboardModifiers());
        EXPECT_EQ(clickedText, key.comesFirst ? "" : "File.A") << keys;
        if (QWidget* menu = QApplication::activePopupWidget())
            menu->close();
    }
    // They stand in the list, with their owner, and can't be changed there; a command with such keys says so.
    bars.SetKeys(tool, {QKeySequence("Ctrl+Tab")});
    ShortcutsDialog dialog(bars, *application->Bar(), &application->Window());
    const auto rows = dialog.List().findItems("Ctrl+Tab", Qt::MatchExactly, 1);
    ASSERT_EQ(rows.size(), 2);
    EXPECT_TRUE(rows[0]->text(3).contains("Switch to the window used before (the window itself)"))
        << rows[0]->text(3).toStdString();
    EXPECT_EQ(rows[1]->text(2), "the window itself");
    dialog.List().setCurrentItem(rows[1]);
    EXPECT_FALSE(dialog.Keys().isEnabled());
    // Esc isn't taken for keys: it empties the field, then it closes the dialog.
    dialog.show();
    dialog.List().setCurrentItem(rows[0]);
    QTest::keyClick(&dialog.Keys(), Qt::Key_B, Qt::ControlModifier);
    for (const bool open : {true, false}) {
        QTest::keyClick(&dialog.Keys(), Qt::Key_Escape);
        EXPECT_TRUE(dialog.Keys().keySequence().isEmpty());
        EXPECT_EQ(dialog.isVisible(), open);
    }
}

TEST_F(PersonalBarsTest, NewKeysGoToARowThatTheSearchShows) {
    const auto application = Start();
    PersonalBars& bars = application->Personal().Bars();
    ShortcutsDialog dialog(bars, *application->Bar(), &application->Window());
    ASSERT_TRUE(dialog.Select(ToolOf(*application, "File.A")));
    auto* search = dialog.findChild<QLineEdit*>();
    ASSERT_TRUE(search);
    const auto assign = [&](const char* keys) {
        dialog.Keys().setKeySequence(QKeySequence(keys));
        for (auto* button : dialog.findChildren<QPushButton*>())
            if (button->text() == "A&ssign")
                button->click();
    };
    search->setText("File \u203a B");
    assign("Ctrl+K");
    EXPECT_FALSE(bars.HasOwnKeys(ToolOf(*application, "File.A")));
    EXPECT_EQ(bars.KeysText(ToolOf(*application, "File.B")), "Ctrl+K");
    search->setText("no such command");
    EXPECT_FALSE(dialog.Keys().isEnabled());
    search->setText("File \u203a");
    QTest::keyClick(search, Qt::Key_Down); // from A to B
    assign("Ctrl+L");
    EXPECT_EQ(bars.KeysText(ToolOf(*application, "File.B")), "Ctrl+L");
}

TEST_F(PersonalBarsTest, KeysGoAroundThePartsOfTheWindow) {
    m_folder.Service("Trouble", "T0.Service", R"(<ActionItems><ActionItem Name="Open" Action="OnOpen"/></ActionItems>
        <Menus><MenuItem Type="MenuItem" ActionItem="Open" Path="File" PositionOrder="1" Caption="Open"/></Menus>
        <ExplorerItems><ExplorerItem Name="Left" Type="Folder" PositionOrder="1"/></ExplorerItems>
        <Windows><Window Name="Sheet" Caption="Sheet" Type="Window" State="Normal" IsMDIChild="true" IsModal="false">
        <Page PageProgID="T0.Page" Caption="P" IsOptional="false" IsResizable="true"/></Window></Windows>)",
                     "IsStartService=\"true\"");
    const auto application = Start();
    MainWindow& window = application->Window();
    const auto focusIn = [](const QWidget& part) {
        return QApplication::focusWidget() && part.isAncestorOf(QApplication::focusWidget());
    };
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_F10);
    EXPECT_EQ(window.menuBar()->activeAction(), window.menuBar()->actions().first());
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    QTest::keyClick(&window, Qt::Key_F6);
    EXPECT_TRUE(focusIn(window.ExplorerDock()));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
    EXPECT_TRUE(focusIn(window.Area())) << "the start page, as there is no window yet";
    EXPECT_TRUE(application->Choose("File.Open"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
    EXPECT_TRUE(focusIn(window.ExplorerDock()));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
    EXPECT_TRUE(focusIn(window.Area()));
}

TEST_F(PersonalBarsTest, ToolbarsAndMenusOutliveChangedDefinitions) {
    {
        const auto application = Start();
        CustomizeDialog dialog(application->Personal().Bars(), application->Bar(), {}, &application->Window());
        ASSERT_TRUE(dialog.SelectBand("File"));
        dialog.Entries().item(1)->setCheckState(Qt::Unchecked);
        EXPECT_EQ(Menu(*application), "A:Ctrl+A C");
        ASSERT_TRUE(dialog.SelectBand("Toolbars.Edit"));
        dialog.Entries().setCurrentRow(2);
        dialog.MoveCurrent(-1);
        EXPECT_EQ(Toolbar(*application), "A C B");
        dialog.AddCommand(application->Bar()->Tools()->Item("View.Bar")); // it is chosen at once
        dialog.MoveCurrent(-1);
        dialog.MoveCurrent(-1);
        EXPECT_EQ(Toolbar(*application), "A Status Bar C B");
        dialog.Entries().item(0)->setCheckState(Qt::Unchecked);
        EXPECT_EQ(Toolbar(*application), "Status Bar C B");
        // What was added does the same as where it comes from.
        Click(*application, "Status Bar");
        EXPECT_FALSE(application->Bar()->Bands()->Item("StatusBar")->Visible());
    }
    struct Case {
        const char* what;
        QString menus;
        const char* menu;
        const char* toolbar;
        std::size_t aside;
    };
    const QString entries = Entry("A") + Entry("B") + Entry("C");
    const Case cases[] = {
        {"nothing changes", entries + Button("A", 1) + Button("B", 2) + Button("C", 3), "A C", "Status Bar C B", 0},
        {"a button comes", entries + Button("A", 1) + Button("B", 2) + Button("C", 3) + Button("D", 4), "A C",
         "Status Bar C B D", 0},
        {"the one in front goes", entries + Button("B", 2) + Button("C", 3), "A C", "B C Status Bar", 0},
        {"the moved one goes from the toolbar", entries + Button("A", 1) + Button("B", 2), "A C", "Status Bar B", 0},
        {"the hidden one moves to another menu", Entry("A") + Entry("B", "View") + Entry("C") + Button("A", 1), "A C",
         "Status Bar", 0},
        {"two go altogether", Entry("C") + Button("C", 3), "C", "C Status Bar", 2},
    };
    for (const Case& testCase : cases) {
        Install(testCase.menus);
        const auto application = Start();
        EXPECT_EQ(Menu(*application), testCase.menu) << testCase.what;
        EXPECT_EQ(Toolbar(*application), testCase.toolbar) << testCase.what;
        EXPECT_EQ(application->Personal().Bars().PlacesAside().size(), testCase.aside) << testCase.what;
        EXPECT_FALSE((Menu(*application, 1) + " ").contains(" B ")) << testCase.what;
    }
    const auto application = Start();
    application->Personal().Bars().ResetAllBands();
    EXPECT_EQ(Toolbar(*application), "C");
    EXPECT_EQ(Menu(*application), "C");
}

// The files' own buttons are hidden from the start, so that the toolbar has never been on screen.
TEST_F(PersonalBarsTest, ButtonOfThePersonBringsAToolbarThatHadNoneToShow) {
    Install(Entry("A") + Entry("B") + Button("C", 1));
    const auto application = Start();
    const auto setVisible = [&](const char* name, bool visible) {
        application->Bar()->Tools()->Item(name)->SetVisible(visible);
        application->Window().Flush();
    };
    const auto& band = *application->Bar()->Bands()->Item("Toolbars.Edit");
    const std::string own = band.Tools()->All().front()->Name();
    setVisible(own.c_str(), false);
    ASSERT_EQ(Toolbar(*application), "");
    setVisible("File.A", false);
    PersonalBars& bars = application->Personal().Bars();
    bars.Add(band, ToolOf(*application, "File.A"));
    application->Window().Flush();
    EXPECT_EQ(Toolbar(*application), "");
    setVisible("File.A", true);
    EXPECT_EQ(Toolbar(*application), "A");
    setVisible("File.A", false);
    EXPECT_EQ(Toolbar(*application), "");
    setVisible("File.A", true);
    setVisible(own.c_str(), true);
    EXPECT_EQ(Toolbar(*application), "C A");
    bars.ResetAllBands();
    EXPECT_EQ(Toolbar(*application), "C");
}

} // namespace
} // namespace corvane::desktop
