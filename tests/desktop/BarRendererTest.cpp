#include "desktop/bars/BarRenderer.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QStatusBar>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

namespace corvane::desktop {
namespace {

// A window on a bar with the menu File (Open with Ctrl+O, Gone hidden, Off disabled) and the toolbar Edit (Open).
class BarRendererTest : public ::testing::Test {
protected:
    BarRendererTest() {
        const auto main = m_bar->Bands()->Add("Main");
        main->SetBandKind(BandKind::MenuBar);
        const auto fileTitle = AddTool("File");
        fileTitle->SetDropDownBand("File");
        main->Tools()->Insert(-1, fileTitle)->SetCaption("&File");
        const auto file = m_bar->Bands()->Add("File");
        file->SetBandKind(BandKind::Popup);
        auto key = New<ShortCut>();
        key->SetValue("control + o");
        m_open = AddTool("File.Open");
        m_open->SetShortCuts({key});
        const auto open = file->Tools()->Insert(-1, m_open);
        open->SetCaption("&Open");
        open->SetDescription("Opens a file");
        const auto gone = AddTool("File.Gone");
        gone->SetVisible(false);
        file->Tools()->Insert(-1, gone);
        const auto off = AddTool("File.Off");
        off->SetEnabled(false);
        file->Tools()->Insert(-1, off)->SetCaption("Off");
        m_toolbar = m_bar->Bands()->Add("Toolbars.Edit");
        m_toolbar->SetBandKind(BandKind::Toolbar);
        m_toolbar->SetCaption("Edit");
        m_toolbar->Tools()->Insert(-1, m_open)->SetCaption("Open");
        m_clicks = m_bar->ToolClick.Subscribe([this](const Ref<Tool>& tool) { m_clicked.append(NameOf(tool)); });
        m_renderer = new BarRenderer(m_bar, &m_window, [this](const std::function<void()>& act) {
            try {
                act();
            } catch (const Failure& failure) {
                m_failures.append(QString::fromStdString(failure.Description));
            }
        });
        m_window.show();
        m_renderer->Flush();
    }
    ~BarRendererTest() override { delete m_renderer; }

    static QString NameOf(const Ref<Tool>& tool) { return QString::fromStdString(tool->Name()); }
    Ref<Tool> AddTool(const char* name) { return m_bar->Tools()->Add(m_nextId++, name); }
    QMenu* OpenFileMenu() {
        QMenu* menu = m_window.menuBar()->actions().front()->menu();
        Q_EMIT menu->aboutToShow();
        return menu;
    }
    static QStringList Texts(const QMenu& menu) {
        QStringList texts;
        for (const QAction* action : menu.actions())
            if (action->isVisible())
                texts.append(action->text() + (action->isEnabled() ? "" : " (off)") +
                             (action->isChecked() ? " (checked)" : ""));
        return texts;
    }

    Ref<ActiveBar> m_bar = NewHostActiveBar();
    Ref<Tool> m_open;
    Ref<Band> m_toolbar;
    Long m_nextId = 4;
    QMainWindow m_window;
    BarRenderer* m_renderer;
    QStringList m_clicked;
    QStringList m_failures;
    Subscription m_clicks;
};

TEST_F(BarRendererTest, MenuIsFilledWhenItOpensAndItsEntryClicksTheTool) {
    EXPECT_EQ(m_window.menuBar()->actions().front()->menu()->actions().size(), 1);
    QMenu* menu = OpenFileMenu();
    EXPECT_EQ(Texts(*menu), (QStringList{"&Open\tCtrl+O", "Off (off)"}));
    menu->actions().front()->trigger();
    EXPECT_EQ(m_clicked, QStringList("File.Open"));
}

TEST_F(BarRendererTest, TitlesThatStayKeepTheirMenusAndNewOnesTakeTheirPlaces) {
    QMenuBar* bar = m_window.menuBar();
    QAction* file = bar->actions().front();
    QMenu* fileMenu = file->menu();
    m_bar->Bands()->Add("Context.New")->SetBandKind(BandKind::Popup);
    m_renderer->Flush();
    EXPECT_EQ(bar->actions().front()->menu(), fileMenu) << "a band elsewhere is none of the bar's business";

    const auto tools = m_bar->Bands()->Item("Main")->Tools();
    for (int i = 0; i < 70; ++i)
        tools->Insert(0, AddTool("Early"))->SetCaption(std::to_string(i));
    m_renderer->Flush();
    ASSERT_EQ(bar->actions().size(), 61);
    EXPECT_EQ(bar->actions().front()->text(), "69");
    EXPECT_FALSE(bar->actions().contains(file)) << "it stands among the rest";
    QMenu* rest = bar->actions().back()->menu();
    Q_EMIT rest->aboutToShow();
    ASSERT_EQ(rest->actions().size(), 11);
    EXPECT_EQ(rest->actions().back()->text(), "&File");
    Q_EMIT rest->actions().back()->menu()->aboutToShow();
    EXPECT_EQ(Texts(*rest->actions().back()->menu()).front(), "&Open\tCtrl+O");
    const auto opens = [&] {
        QTest::keyClick(&m_window, Qt::Key_F, Qt::AltModifier);
        return QApplication::activePopupWidget() == rest->actions().back()->menu();
    };
    EXPECT_TRUE(QTest::qWaitFor(opens)) << "Alt+F opens it there";
    while (QWidget* popup = QApplication::activePopupWidget())
        popup->close();

    while (tools->Count() > 1)
        tools->Remove(0);
    m_renderer->Flush();
    ASSERT_EQ(bar->actions().size(), 1);
    EXPECT_EQ(bar->actions().front()->text(), "&File");
}

TEST_F(BarRendererTest, ButtonThatReplacesAnotherIsShown) {
    QToolBar* toolbar = m_renderer->ToolbarOf(*m_toolbar);
    m_toolbar->Tools()->Remove(0);
    m_toolbar->Tools()->Insert(-1, AddTool("Other"))->SetCaption("Other");
    m_renderer->Flush();
    ASSERT_EQ(toolbar->actions().size(), 2) << "the button and the close box";
    EXPECT_EQ(toolbar->actions().front()->text(), "Other");
}

TEST_F(BarRendererTest, MenuWhoseOpeningIsRefusedNeverShows) {
    const auto refuse = m_bar->BandOpen.Subscribe([](const Ref<Band>&, bool& cancel) { cancel = true; });
    QMenu* menu = m_window.menuBar()->actions().front()->menu();
    bool shown = false;
    QObject::connect(menu, &QMenu::aboutToHide, menu, [&] { shown = shown || menu->isVisible(); });
    m_window.menuBar()->setActiveAction(m_window.menuBar()->actions().front());
    EXPECT_FALSE(menu->isVisible());
    QApplication::processEvents();
    EXPECT_FALSE(menu->isVisible() || shown);
    EXPECT_EQ(m_window.menuBar()->activeAction(), nullptr) << "the bar has let go of it";
}

TEST_F(BarRendererTest, ShortCutReachesTheToolUnlessItIsDisabledHiddenOrNeededByAnEditor) {
    auto* edit = new QLineEdit;
    m_window.setCentralWidget(edit);
    QTest::keyClick(edit, Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(m_clicked.size(), 1);
    m_open->SetEnabled(false);
    QTest::keyClick(edit, Qt::Key_O, Qt::ControlModifier);
    m_open->SetEnabled(true);
    m_open->SetVisible(false);
    QTest::keyClick(edit, Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(m_clicked.size(), 1);
    m_open->SetVisible(true);
    auto copy = New<ShortCut>();
    copy->SetValue("Ctrl+C");
    m_open->SetShortCuts({copy});
    QTest::keyClick(edit, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(m_clicked.size(), 1);
}

// Of two with the same keys the one that can be chosen has them, the first where both can.
TEST_F(BarRendererTest, ShortCutOfTwoToolsReachesTheOneThatCanBeChosen) {
    auto key = New<ShortCut>();
    key->SetValue("Control+O");
    const Ref<Tool> second = m_bar->Tools()->Item("File.Gone");
    second->SetShortCuts({key});
    for (const auto& [isFirstVisible, isSecondVisible, expected] :
         {std::tuple(true, true, "File.Open"), std::tuple(false, true, "File.Gone"), std::tuple(false, false, ""),
          std::tuple(true, false, "File.Open")}) {
        m_open->SetVisible(isFirstVisible);
        second->SetVisible(isSecondVisible);
        m_clicked.clear();
        QTest::keyClick(&m_window, Qt::Key_O, Qt::ControlModifier);
        EXPECT_EQ(m_clicked.join(" ").toStdString(), expected);
    }
}

TEST_F(BarRendererTest, ShortCutIsFoundHoweverItsKeysAreTyped) {
    struct {
        const char* text;
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        bool fires;
    } const cases[] = {
        {"Ctrl++", Qt::Key_Plus, Qt::ControlModifier | Qt::ShiftModifier, true}, // Shift and the equals sign
        {"Ctrl++", Qt::Key_Plus, Qt::ControlModifier | Qt::KeypadModifier, true},
        {"Ctrl+Enter", Qt::Key_Enter, Qt::ControlModifier | Qt::KeypadModifier, true},
        {"Ctrl+Enter", Qt::Key_Return, Qt::ControlModifier, true},
        {"Shift+Tab", Qt::Key_Backtab, Qt::ShiftModifier, true},
        {"F5", Qt::Key_F5, Qt::ShiftModifier, false},
        {"Ctrl+O", Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier, false},
    };
    auto* plain = new QWidget;
    m_window.setCentralWidget(plain);
    for (const auto& testCase : cases) {
        m_clicked.clear();
        auto key = New<ShortCut>();
        key->SetValue(testCase.text);
        m_open->SetShortCuts({key});
        QTest::keyClick(plain, testCase.key, testCase.modifiers);
        EXPECT_EQ(m_clicked.size(), testCase.fires ? 1 : 0) << testCase.text << " " << int(testCase.modifiers);
    }
}

TEST_F(BarRendererTest, ShortCutLeavesEditorsInDialogsAloneAndRestsBehindModalOnes) {
    auto key = New<ShortCut>();
    key->SetValue("Ctrl+Z");
    m_open->SetShortCuts({key});
    QDialog dialog(&m_window);
    auto* edit = new QLineEdit(&dialog);
    dialog.show();
    dialog.activateWindow();
    edit->setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    ASSERT_EQ(QApplication::focusWidget(), edit);
    QTest::keyClick(edit, Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(&dialog, Qt::Key_Z, Qt::ControlModifier); // as if the editor had passed it on
    EXPECT_EQ(m_clicked.size(), 0);
    edit->clearFocus();
    QTest::keyClick(&dialog, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(m_clicked.size(), 1) << "a dialog that stays beside the window belongs to it";
    dialog.hide();
    dialog.setModal(true);
    dialog.show();
    QTest::keyClick(&dialog, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(m_clicked.size(), 1);
}

TEST_F(BarRendererTest, ToolbarWithoutAVisibleButtonIsNoEmptyStrip) {
    QToolBar* toolbar = m_renderer->ToolbarOf(*m_toolbar);
    EXPECT_TRUE(toolbar->isVisible());
    m_open->SetVisible(false);
    m_renderer->Flush();
    EXPECT_FALSE(toolbar->isVisible());
    m_open->SetVisible(true);
    m_renderer->Flush();
    EXPECT_TRUE(toolbar->isVisible());
}

TEST_F(BarRendererTest, ToolbarsAreInTheOrderOfTheirUseAndComeBackToIt) {
    std::vector<QToolBar*> toolbars;
    for (const char* name : {"Toolbars.Help", "Toolbars.Birds", "Toolbars.File"}) {
        const auto band = m_bar->Bands()->Add(name);
        band->SetBandKind(BandKind::Toolbar);
        band->Tools()->Insert(-1, m_open)->SetCaption("Open");
        m_renderer->Flush();
        toolbars.push_back(m_renderer->ToolbarOf(*band));
    }
    QToolBar* edit = m_renderer->ToolbarOf(*m_toolbar);
    const auto order = [&] {
        QApplication::processEvents();
        std::vector<QToolBar*> sorted{toolbars[0], toolbars[1], edit, toolbars[2]};
        std::erase_if(sorted, [&](const auto* bar) { return m_window.toolBarArea(bar) != Qt::TopToolBarArea; });
        std::sort(sorted.begin(), sorted.end(), [](const auto* a, const auto* b) { return a->x() < b->x(); });
        QStringList names;
        for (const QToolBar* bar : sorted)
            names.append(bar->objectName().section('.', -1));
        return names.join(' ');
    };
    m_window.resize(900, 300);
    EXPECT_EQ(order(), "File Edit Birds Help");
    m_window.addToolBar(Qt::BottomToolBarArea, toolbars[2]);
    m_window.insertToolBar(edit, toolbars[0]);
    EXPECT_EQ(order(), "Help Edit Birds");
    m_renderer->ResetToolbars();
    EXPECT_EQ(order(), "File Edit Birds Help");
}

// Two providers take turns on a toolbar, as they do when the focus moves.
class ToolbarTurnsTest : public BarRendererTest {
protected:
    ToolbarTurnsTest() {
        const auto popup = m_bar->Bands()->Add("Drop");
        popup->SetBandKind(BandKind::Popup);
        popup->Tools()->Insert(-1, m_open)->SetCaption("Dropped");
        for (const char* name : {"A1", "|", "A2", "|", "B1", "A3", "|", "B2", "B3", "B4"})
            Insert(name);
        m_window.resize(900, 300);
        Show("A");
    }
    void Insert(const QString& name) {
        const bool separator = name == "|";
        const auto tool = separator ? m_bar->Tools()->Item("Separator") : AddTool(qPrintable(name));
        const auto instance = m_toolbar->Tools()->Insert(-1, tool);
        instance->SetCaption(name.toStdString());
        instance->SetToolTip("Tip of " + name.toStdString());
        if (name == "B2")
            instance->SetDropDownBand("Drop");
        if (!separator)
            m_tools.push_back(tool);
    }
    void Show(const char* provider) {
        for (const auto& tool : m_tools)
            tool->SetVisible(tool->Name().starts_with(provider));
        m_renderer->Flush();
        QApplication::processEvents();
    }
    [[nodiscard]] QToolBar& Toolbar() const { return *m_renderer->ToolbarOf(*m_toolbar); }
    [[nodiscard]] QToolButton* Button(const QString& text) const {
        for (auto* button : Toolbar().findChildren<QToolButton*>())
            if (button->isVisible() && button->text() == text)
                return button;
        return nullptr;
    }
    // What stands on screen, from the left.
    [[nodiscard]] QString OnScreen() const {
        QStringList texts;
        int left = -1;
        for (QAction* action : Toolbar().actions()) {
            const QWidget* widget = Toolbar().widgetForAction(action);
            EXPECT_EQ(widget->isVisible(), action->isVisible());
            if (!widget->isVisible())
                continue;
            EXPECT_GT(widget->x(), left);
            left = widget->x();
            texts.append(action->isSeparator() ? "|" : action->text());
        }
        return texts.join(' ');
    }

    std::vector<Ref<Tool>> m_tools;
};

TEST_F(ToolbarTurnsTest, ButtonsChangeHandsAndThereAreAsManyAsShow) {
    EXPECT_EQ(OnScreen(), "Open A1 | A2 | A3");
    Show("B");
    EXPECT_EQ(OnScreen(), "Open | B1 | B2 B3 B4");
    const auto buttons = Toolbar().findChildren<QToolButton*>().size();
    for (int i = 0; i < 20; ++i)
        Show(i % 2 == 0 ? "A" : "B");
    EXPECT_EQ(OnScreen(), "Open | B1 | B2 B3 B4");
    EXPECT_EQ(Toolbar().findChildren<QToolButton*>().size(), buttons);
    EXPECT_LE(buttons, 6 + 2) << "no more than both need, the close box and the one for what doesn't fit";

    QTest::mouseClick(Button("B1"), Qt::LeftButton);
    EXPECT_EQ(m_clicked, QStringList("B1"));
    EXPECT_EQ(Button("B1")->toolTip(), "Tip of B1");
    QStringList dropped;
    QTimer closer; // the menu has a loop of its own
    QObject::connect(&closer, &QTimer::timeout, &closer, [&] {
        if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
            dropped = Texts(*menu);
            menu->close();
        }
    });
    closer.start(1);
    QTest::mouseClick(Button("B2"), Qt::LeftButton);
    EXPECT_EQ(dropped, QStringList("Dropped\tCtrl+O"));
    Show("A");
    for (const char* text : {"Open", "A1", "A2", "A3"})
        EXPECT_EQ(Button(text)->defaultAction()->menu(), nullptr) << text;
    m_tools.front()->SetChecked(true);
    m_tools.front()->SetEnabled(false);
    m_renderer->Flush();
    EXPECT_TRUE(Button("A1")->isChecked() && !Button("A1")->isEnabled());
    Show("B");
    EXPECT_FALSE(Button("B1")->isChecked() || !Button("B1")->isEnabled()) << "nothing sticks to the button";
}

TEST_F(ToolbarTurnsTest, ClickThatBringsTheOthersChoosesAndChecksNoneOfThem) {
    const auto click = m_bar->ToolClick.Subscribe([this](const Ref<Tool>& tool) {
        if (tool->Name() == "A1") {
            tool->SetChecked(true);
            Show("B");
        }
    });
    m_tools.front()->SetChecked(true);
    m_renderer->Flush();
    QTest::mouseClick(Button("A1"), Qt::LeftButton);
    EXPECT_EQ(m_clicked, QStringList("A1"));
    for (const char* text : {"Open", "B1", "B2", "B3", "B4"})
        EXPECT_FALSE(Button(text)->isChecked()) << text;
    Show("A");
    EXPECT_TRUE(Button("A1")->isChecked());
}

TEST_F(ToolbarTurnsTest, ButtonThatIsPressedOrHasTheKeyboardFiresNothingElse) {
    auto* edit = new QLineEdit;
    m_window.setCentralWidget(edit);
    m_window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
    QToolButton* button = Button("A1");
    QTest::mousePress(button, Qt::LeftButton);
    Show("B");
    QTest::mouseRelease(button, Qt::LeftButton);
    EXPECT_EQ(m_clicked, QStringList());
    Show("A");
    for (const char* text : {"A1", "A2", "A3"}) {
        Button(text)->setFocus();
        ASSERT_TRUE(Button(text)->hasFocus());
        Show("B");
        const auto* focus = qobject_cast<QToolButton*>(QApplication::focusWidget());
        EXPECT_TRUE(!focus || focus->text() == "Open") << text << " " << focus->text().toStdString();
        Show("A");
    }
    Button("Open")->setFocus();
    Show("B");
    EXPECT_TRUE(Button("Open")->hasFocus()) << "what stays keeps it";
    QTest::keyClick(Button("Open"), Qt::Key_Space);
    EXPECT_EQ(m_clicked, QStringList("File.Open"));
}

TEST_F(ToolbarTurnsTest, WhatDoesNotFitIsReachedThroughTheButtonAtTheEnd) {
    Toolbar().setToolButtonStyle(Qt::ToolButtonTextOnly);
    Toolbar().setFixedWidth(90);
    QApplication::processEvents();
    auto* more = Toolbar().findChild<QToolButton*>("qt_toolbar_ext_button");
    EXPECT_TRUE(more->isVisible());
    EXPECT_EQ(more->accessibleName(), "More of Edit");
    EXPECT_EQ(Button("A3"), nullptr);
    Show("B");
    EXPECT_TRUE(more->isVisible());
    EXPECT_EQ(Button("B4"), nullptr);
    Toolbar().setFixedWidth(800);
    QApplication::processEvents();
    EXPECT_FALSE(more->isVisible());
    EXPECT_EQ(OnScreen(), "Open | B1 | B2 B3 B4");
    m_window.addToolBar(Qt::LeftToolBarArea, &Toolbar());
    EXPECT_EQ(Toolbar().orientation(), Qt::Vertical);
}

TEST_F(BarRendererTest, PopupTellsDescriptionsToTheStatusBar) {
    const std::unique_ptr<QMenu> menu(m_renderer->NewPopup(m_bar->Bands()->Item("File")));
    menu->popup({0, 0});
    menu->setActiveAction(menu->actions().front());
    EXPECT_EQ(m_window.statusBar()->currentMessage(), "Opens a file");
    menu->close();
    EXPECT_EQ(m_window.statusBar()->currentMessage(), "");
}

TEST_F(BarRendererTest, ToolbarShowsStateAndOnlyWhatDiffersIsTouched) {
    QToolBar* toolbar = m_renderer->ToolbarOf(*m_toolbar);
    ASSERT_NE(toolbar, nullptr);
    QAction* action = toolbar->actions().front();
    const long before = m_renderer->Actions().TouchCount();
    for (int i = 0; i < 50; ++i)
        m_open->SetEnabled(i % 2 == 1);
    m_open->SetChecked(true);
    EXPECT_FALSE(action->isChecked()) << "nothing is drawn before the turn ends";
    QApplication::processEvents();
    EXPECT_TRUE(action->isChecked());
    EXPECT_TRUE(action->isEnabled());
    EXPECT_EQ(m_renderer->Actions().TouchCount(), before + 1);
}

TEST_F(BarRendererTest, CheckMarkIsTheModelsAlsoAfterAClick) {
    m_open->SetChecked(true);
    m_renderer->Flush();
    QAction* action = OpenFileMenu()->actions().front();
    ASSERT_TRUE(action->isChecked());
    action->trigger();
    EXPECT_TRUE(action->isChecked()) << "nobody unchecked the tool";
}

TEST_F(BarRendererTest, FloatingToolbarIsClosedThroughTheModel) {
    QStringList closed;
    const auto close =
        m_bar->BandClose.Subscribe([&](const Ref<Band>& band) { closed.append(QString::fromStdString(band->Name())); });
    QToolBar* toolbar = m_renderer->ToolbarOf(*m_toolbar);
    QAction* closeAction = toolbar->actions().back();
    EXPECT_FALSE(closeAction->isVisible());
    Q_EMIT toolbar->topLevelChanged(true);
    EXPECT_TRUE(closeAction->isVisible());
    closeAction->trigger();
    m_renderer->Flush();
    EXPECT_EQ(closed, QStringList("Toolbars.Edit"));
    EXPECT_FALSE(toolbar->isVisible());
}

TEST_F(BarRendererTest, PopupMarksItsDefaultEntry) {
    const auto context = m_bar->Bands()->Add("Context.A");
    context->SetBandKind(BandKind::Popup);
    context->Tools()->Insert(-1, AddTool("Context.A.X"))->SetCaption("X");
    const auto defaultTool = context->Tools()->Insert(-1, AddTool("Context.A.Y"));
    defaultTool->SetCaption("Y");
    defaultTool->SetIsDefaultItem(true);
    const std::unique_ptr<QMenu> menu(m_renderer->NewPopup(context));
    ASSERT_NE(menu, nullptr);
    ASSERT_NE(menu->defaultAction(), nullptr);
    EXPECT_EQ(menu->defaultAction()->text(), "Y");
}

TEST_F(BarRendererTest, CustomizeMenuHasAnEntryForEachToolbarAndTwoThatAHandlerRemoves) {
    (void)AddTool("Toolbars.Edit"); // the entry of a toolbar bears the name of its band
    for (const bool removes : {false, true, true}) {
        const auto open = m_bar->BandOpen.Subscribe([removes](const Ref<Band>& band, bool&) {
            for (int i = 0; removes && i < 2; ++i)
                band->Tools()->Remove(band->Tools()->Count() - 1);
        });
        const std::unique_ptr<QMenu> menu(m_renderer->NewCustomizeMenu());
        ASSERT_NE(menu, nullptr);
        EXPECT_EQ(menu->actions().size(), removes ? 1 : 3);
        EXPECT_EQ(menu->actions().front()->text(), "Edit");
    }
}

TEST_F(BarRendererTest, ToolThatGoesBeforeThePassIsPassedOver) {
    const auto status = m_bar->Bands()->Item("StatusBar");
    status->Tools()->AddHostTool("Passing")->SetEnabled(false); // its master lives no longer than the instance
    status->Tools()->Remove(status->Tools()->Count() - 1);
    m_renderer->Flush();
    EXPECT_EQ(m_failures, QStringList());
}

TEST_F(BarRendererTest, StatusTextIsShownAtOnceWhenItIsAskedFor) {
    const auto status = m_bar->Bands()->Item("StatusBar");
    status->Tools()->Item("Status")->SetCaption("Ready & waiting");
    status->Refresh();
    const auto* label = m_window.statusBar()->findChild<QLabel*>();
    EXPECT_EQ(label->text(), "Ready & waiting");
    // What comes while it is hidden is there when it isn't any more.
    status->Tools()->Item("Status")->SetVisible(false);
    status->Tools()->Item("Status")->SetCaption("Done");
    m_renderer->Flush();
    EXPECT_TRUE(label->isHidden());
    status->Tools()->Item("Status")->SetVisible(true);
    m_renderer->Flush();
    EXPECT_FALSE(label->isHidden());
    EXPECT_EQ(label->text(), "Done");
}

TEST_F(BarRendererTest, DescriptionIsShownWhileAnEntryIsUnderThePointer) {
    QMenu* menu = OpenFileMenu();
    EXPECT_EQ(menu->actions().front()->statusTip(), "Opens a file");
    QStatusTipEvent tip("Opens a file");
    QApplication::sendEvent(&m_window, &tip);
    EXPECT_EQ(m_window.statusBar()->currentMessage(), "Opens a file");
    // News take its place; the two would lie over one another.
    m_bar->Bands()->Item("StatusBar")->Tools()->Item("Status")->SetCaption("Opened");
    m_renderer->Flush();
    EXPECT_EQ(m_window.statusBar()->currentMessage(), "");
    QApplication::sendEvent(&m_window, &tip);
    m_renderer->Flush();
    EXPECT_FALSE(m_window.statusBar()->findChild<QLabel*>()->isVisible());
    QStatusTipEvent noTip("");
    QApplication::sendEvent(&m_window, &noTip);
    EXPECT_EQ(m_window.statusBar()->currentMessage(), "");
    EXPECT_TRUE(m_window.statusBar()->findChild<QLabel*>()->isVisible());
}

TEST(KeyIn, ReadsWhatDefinitionsSay) {
    for (const auto& [text, keys] :
         {std::pair("Ctrl+Shift+O", "Ctrl+Shift+O"), std::pair("ctrl + o", "Ctrl+O"), std::pair("F5", "F5"),
          std::pair("Delete", "Del"), std::pair("Ctrl++", "Ctrl++"), std::pair("", ""), std::pair("nonsense", "")})
        EXPECT_EQ(KeyIn(text).toString(QKeySequence::PortableText), keys);
}

} // namespace
} // namespace corvane::desktop
