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
#include <gtest/gtest.h>

namespace corvane::desktop {
namespace {

// A window on a bar with the menu File (Open with Ctrl+O, Gone hidden, Off disabled) and the toolbar Edit (Open).
class BarRendererTest : public ::testing::Test {
protected:
    BarRendererTest() {
        const auto oMain = m_oBar->Bands()->Add("Main");
        oMain->SetBandKind(BandKind::MenuBar);
        const auto oFileTitle = AddTool("File");
        oFileTitle->SetDropDownBand("File");
        oMain->Tools()->Insert(-1, oFileTitle)->SetCaption("&File");
        const auto oFile = m_oBar->Bands()->Add("File");
        oFile->SetBandKind(BandKind::Popup);
        auto oKey = New<ShortCut>();
        oKey->SetValue("control + o");
        m_oOpen = AddTool("File.Open");
        m_oOpen->SetShortCuts({oKey});
        const auto oOpen = oFile->Tools()->Insert(-1, m_oOpen);
        oOpen->SetCaption("&Open");
        oOpen->SetDescription("Opens a file");
        const auto oGone = AddTool("File.Gone");
        oGone->SetVisible(false);
        oFile->Tools()->Insert(-1, oGone);
        const auto oOff = AddTool("File.Off");
        oOff->SetEnabled(false);
        oFile->Tools()->Insert(-1, oOff)->SetCaption("Off");
        m_oToolbar = m_oBar->Bands()->Add("Toolbars.Edit");
        m_oToolbar->SetBandKind(BandKind::Toolbar);
        m_oToolbar->SetCaption("Edit");
        m_oToolbar->Tools()->Insert(-1, m_oOpen)->SetCaption("Open");
        m_oClicks = m_oBar->ToolClick.Subscribe([this](const Ref<Tool>& oTool) { m_aClicked.append(NameOf(oTool)); });
        m_pRenderer = new BarRenderer(m_oBar, &m_oWindow, [this](const std::function<void()>& fnAct) {
            try {
                fnAct();
            } catch (const Failure& oFailure) {
                m_aFailures.append(QString::fromStdString(oFailure.Description));
            }
        });
        m_oWindow.show();
        m_pRenderer->Flush();
    }
    ~BarRendererTest() override { delete m_pRenderer; }

    static QString NameOf(const Ref<Tool>& oTool) { return QString::fromStdString(oTool->Name()); }
    Ref<Tool> AddTool(const char* sName) { return m_oBar->Tools()->Add(m_lNextId++, sName); }
    QMenu* OpenFileMenu() {
        QMenu* pMenu = m_oWindow.menuBar()->actions().front()->menu();
        Q_EMIT pMenu->aboutToShow();
        return pMenu;
    }
    static QStringList Texts(const QMenu& oMenu) {
        QStringList aTexts;
        for (const QAction* pAction : oMenu.actions())
            if (pAction->isVisible())
                aTexts.append(pAction->text() + (pAction->isEnabled() ? "" : " (off)") +
                              (pAction->isChecked() ? " (checked)" : ""));
        return aTexts;
    }

    Ref<ActiveBar> m_oBar = NewHostActiveBar();
    Ref<Tool> m_oOpen;
    Ref<Band> m_oToolbar;
    Long m_lNextId = 4;
    QMainWindow m_oWindow;
    BarRenderer* m_pRenderer;
    QStringList m_aClicked;
    QStringList m_aFailures;
    Subscription m_oClicks;
};

TEST_F(BarRendererTest, MenuIsFilledWhenItOpensAndItsEntryClicksTheTool) {
    EXPECT_EQ(m_oWindow.menuBar()->actions().front()->menu()->actions().size(), 1);
    QMenu* pMenu = OpenFileMenu();
    EXPECT_EQ(Texts(*pMenu), (QStringList{"&Open\tCtrl+O", "Off (off)"}));
    pMenu->actions().front()->trigger();
    EXPECT_EQ(m_aClicked, QStringList("File.Open"));
}

TEST_F(BarRendererTest, TitlesThatStayKeepTheirMenusAndNewOnesTakeTheirPlaces) {
    QMenuBar* pBar = m_oWindow.menuBar();
    QAction* pFile = pBar->actions().front();
    QMenu* pFileMenu = pFile->menu();
    m_oBar->Bands()->Add("Context.New")->SetBandKind(BandKind::Popup);
    m_pRenderer->Flush();
    EXPECT_EQ(pBar->actions().front()->menu(), pFileMenu) << "a band elsewhere is none of the bar's business";

    const auto oTools = m_oBar->Bands()->Item("Main")->Tools();
    for (int i = 0; i < 70; ++i)
        oTools->Insert(0, AddTool("Early"))->SetCaption(std::to_string(i));
    m_pRenderer->Flush();
    ASSERT_EQ(pBar->actions().size(), 61);
    EXPECT_EQ(pBar->actions().front()->text(), "69");
    EXPECT_FALSE(pBar->actions().contains(pFile)) << "it stands among the rest";
    QMenu* pRest = pBar->actions().back()->menu();
    Q_EMIT pRest->aboutToShow();
    ASSERT_EQ(pRest->actions().size(), 11);
    EXPECT_EQ(pRest->actions().back()->text(), "&File");
    Q_EMIT pRest->actions().back()->menu()->aboutToShow();
    EXPECT_EQ(Texts(*pRest->actions().back()->menu()).front(), "&Open\tCtrl+O");
    const auto fnOpens = [&] {
        QTest::keyClick(&m_oWindow, Qt::Key_F, Qt::AltModifier);
        return QApplication::activePopupWidget() == pRest->actions().back()->menu();
    };
    EXPECT_TRUE(QTest::qWaitFor(fnOpens)) << "Alt+F opens it there";
    while (QWidget* pPopup = QApplication::activePopupWidget())
        pPopup->close();

    while (oTools->Count() > 1)
        oTools->Remove(0);
    m_pRenderer->Flush();
    ASSERT_EQ(pBar->actions().size(), 1);
    EXPECT_EQ(pBar->actions().front()->text(), "&File");
}

TEST_F(BarRendererTest, ButtonThatReplacesAnotherIsShown) {
    QToolBar* pToolbar = m_pRenderer->ToolbarOf(*m_oToolbar);
    m_oToolbar->Tools()->Remove(0);
    m_oToolbar->Tools()->Insert(-1, AddTool("Other"))->SetCaption("Other");
    m_pRenderer->Flush();
    ASSERT_EQ(pToolbar->actions().size(), 2) << "the button and the close box";
    EXPECT_EQ(pToolbar->actions().front()->text(), "Other");
}

TEST_F(BarRendererTest, MenuWhoseOpeningIsRefusedNeverShows) {
    const auto oRefuse = m_oBar->BandOpen.Subscribe([](const Ref<Band>&, bool& bCancel) { bCancel = true; });
    QMenu* pMenu = m_oWindow.menuBar()->actions().front()->menu();
    bool bShown = false;
    QObject::connect(pMenu, &QMenu::aboutToHide, pMenu, [&] { bShown = bShown || pMenu->isVisible(); });
    m_oWindow.menuBar()->setActiveAction(m_oWindow.menuBar()->actions().front());
    EXPECT_FALSE(pMenu->isVisible());
    QApplication::processEvents();
    EXPECT_FALSE(pMenu->isVisible() || bShown);
    EXPECT_EQ(m_oWindow.menuBar()->activeAction(), nullptr) << "the bar has let go of it";
}

TEST_F(BarRendererTest, ShortCutReachesTheToolUnlessItIsDisabledHiddenOrNeededByAnEditor) {
    auto* pEdit = new QLineEdit;
    m_oWindow.setCentralWidget(pEdit);
    QTest::keyClick(pEdit, Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(m_aClicked.size(), 1);
    m_oOpen->SetEnabled(false);
    QTest::keyClick(pEdit, Qt::Key_O, Qt::ControlModifier);
    m_oOpen->SetEnabled(true);
    m_oOpen->SetVisible(false);
    QTest::keyClick(pEdit, Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(m_aClicked.size(), 1);
    m_oOpen->SetVisible(true);
    auto oCopy = New<ShortCut>();
    oCopy->SetValue("Ctrl+C");
    m_oOpen->SetShortCuts({oCopy});
    QTest::keyClick(pEdit, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(m_aClicked.size(), 1);
}

TEST_F(BarRendererTest, ShortCutIsFoundHoweverItsKeysAreTyped) {
    struct {
        const char* sText;
        Qt::Key eKey;
        Qt::KeyboardModifiers eModifiers;
        bool bFires;
    } const aCases[] = {
        {"Ctrl++", Qt::Key_Plus, Qt::ControlModifier | Qt::ShiftModifier, true}, // Shift and the equals sign
        {"Ctrl++", Qt::Key_Plus, Qt::ControlModifier | Qt::KeypadModifier, true},
        {"Ctrl+Enter", Qt::Key_Enter, Qt::ControlModifier | Qt::KeypadModifier, true},
        {"Ctrl+Enter", Qt::Key_Return, Qt::ControlModifier, true},
        {"Shift+Tab", Qt::Key_Backtab, Qt::ShiftModifier, true},
        {"F5", Qt::Key_F5, Qt::ShiftModifier, false},
        {"Ctrl+O", Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier, false},
    };
    auto* pPlain = new QWidget;
    m_oWindow.setCentralWidget(pPlain);
    for (const auto& oCase : aCases) {
        m_aClicked.clear();
        auto oKey = New<ShortCut>();
        oKey->SetValue(oCase.sText);
        m_oOpen->SetShortCuts({oKey});
        QTest::keyClick(pPlain, oCase.eKey, oCase.eModifiers);
        EXPECT_EQ(m_aClicked.size(), oCase.bFires ? 1 : 0) << oCase.sText << " " << int(oCase.eModifiers);
    }
}

TEST_F(BarRendererTest, ShortCutLeavesEditorsInDialogsAloneAndRestsBehindModalOnes) {
    auto oKey = New<ShortCut>();
    oKey->SetValue("Ctrl+Z");
    m_oOpen->SetShortCuts({oKey});
    QDialog oDialog(&m_oWindow);
    auto* pEdit = new QLineEdit(&oDialog);
    oDialog.show();
    oDialog.activateWindow();
    pEdit->setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&oDialog));
    ASSERT_EQ(QApplication::focusWidget(), pEdit);
    QTest::keyClick(pEdit, Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(&oDialog, Qt::Key_Z, Qt::ControlModifier); // as if the editor had passed it on
    EXPECT_EQ(m_aClicked.size(), 0);
    pEdit->clearFocus();
    QTest::keyClick(&oDialog, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(m_aClicked.size(), 1) << "a dialog that stays beside the window belongs to it";
    oDialog.hide();
    oDialog.setModal(true);
    oDialog.show();
    QTest::keyClick(&oDialog, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(m_aClicked.size(), 1);
}

TEST_F(BarRendererTest, ToolbarWithoutAVisibleButtonIsNoEmptyStrip) {
    QToolBar* pToolbar = m_pRenderer->ToolbarOf(*m_oToolbar);
    EXPECT_TRUE(pToolbar->isVisible());
    m_oOpen->SetVisible(false);
    m_pRenderer->Flush();
    EXPECT_FALSE(pToolbar->isVisible());
    m_oOpen->SetVisible(true);
    m_pRenderer->Flush();
    EXPECT_TRUE(pToolbar->isVisible());
}

// Two providers take turns on a toolbar, as they do when the focus moves.
class ToolbarTurnsTest : public BarRendererTest {
protected:
    ToolbarTurnsTest() {
        const auto oPopup = m_oBar->Bands()->Add("Drop");
        oPopup->SetBandKind(BandKind::Popup);
        oPopup->Tools()->Insert(-1, m_oOpen)->SetCaption("Dropped");
        for (const char* sName : {"A1", "|", "A2", "|", "B1", "A3", "|", "B2", "B3", "B4"})
            Insert(sName);
        m_oWindow.resize(900, 300);
        Show("A");
    }
    void Insert(const QString& sName) {
        const bool bSeparator = sName == "|";
        const auto oTool = bSeparator ? m_oBar->Tools()->Item("Separator") : AddTool(qPrintable(sName));
        const auto oInstance = m_oToolbar->Tools()->Insert(-1, oTool);
        oInstance->SetCaption(sName.toStdString());
        oInstance->SetToolTip("Tip of " + sName.toStdString());
        if (sName == "B2")
            oInstance->SetDropDownBand("Drop");
        if (!bSeparator)
            m_aTools.push_back(oTool);
    }
    void Show(const char* sProvider) {
        for (const auto& oTool : m_aTools)
            oTool->SetVisible(oTool->Name().starts_with(sProvider));
        m_pRenderer->Flush();
        QApplication::processEvents();
    }
    [[nodiscard]] QToolBar& Toolbar() const { return *m_pRenderer->ToolbarOf(*m_oToolbar); }
    [[nodiscard]] QToolButton* Button(const QString& sText) const {
        for (auto* pButton : Toolbar().findChildren<QToolButton*>())
            if (pButton->isVisible() && pButton->text() == sText)
                return pButton;
        return nullptr;
    }
    // What stands on screen, from the left.
    [[nodiscard]] QString OnScreen() const {
        QStringList aTexts;
        int nLeft = -1;
        for (QAction* pAction : Toolbar().actions()) {
            const QWidget* pWidget = Toolbar().widgetForAction(pAction);
            EXPECT_EQ(pWidget->isVisible(), pAction->isVisible());
            if (!pWidget->isVisible())
                continue;
            EXPECT_GT(pWidget->x(), nLeft);
            nLeft = pWidget->x();
            aTexts.append(pAction->isSeparator() ? "|" : pAction->text());
        }
        return aTexts.join(' ');
    }

    std::vector<Ref<Tool>> m_aTools;
};

TEST_F(ToolbarTurnsTest, ButtonsChangeHandsAndThereAreAsManyAsShow) {
    EXPECT_EQ(OnScreen(), "Open A1 | A2 | A3");
    Show("B");
    EXPECT_EQ(OnScreen(), "Open | B1 | B2 B3 B4");
    const auto nButtons = Toolbar().findChildren<QToolButton*>().size();
    for (int i = 0; i < 20; ++i)
        Show(i % 2 == 0 ? "A" : "B");
    EXPECT_EQ(OnScreen(), "Open | B1 | B2 B3 B4");
    EXPECT_EQ(Toolbar().findChildren<QToolButton*>().size(), nButtons);
    EXPECT_LE(nButtons, 6 + 2) << "no more than both need, the close box and the one for what doesn't fit";

    QTest::mouseClick(Button("B1"), Qt::LeftButton);
    EXPECT_EQ(m_aClicked, QStringList("B1"));
    EXPECT_EQ(Button("B1")->toolTip(), "Tip of B1");
    QStringList aDropped;
    QTimer oCloser; // the menu has a loop of its own
    QObject::connect(&oCloser, &QTimer::timeout, &oCloser, [&] {
        if (auto* pMenu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
            aDropped = Texts(*pMenu);
            pMenu->close();
        }
    });
    oCloser.start(1);
    QTest::mouseClick(Button("B2"), Qt::LeftButton);
    EXPECT_EQ(aDropped, QStringList("Dropped\tCtrl+O"));
    Show("A");
    for (const char* sText : {"Open", "A1", "A2", "A3"})
        EXPECT_EQ(Button(sText)->defaultAction()->menu(), nullptr) << sText;
    m_aTools.front()->SetChecked(true);
    m_aTools.front()->SetEnabled(false);
    m_pRenderer->Flush();
    EXPECT_TRUE(Button("A1")->isChecked() && !Button("A1")->isEnabled());
    Show("B");
    EXPECT_FALSE(Button("B1")->isChecked() || !Button("B1")->isEnabled()) << "nothing sticks to the button";
}

TEST_F(ToolbarTurnsTest, ClickThatBringsTheOthersChoosesAndChecksNoneOfThem) {
    const auto oClick = m_oBar->ToolClick.Subscribe([this](const Ref<Tool>& oTool) {
        if (oTool->Name() == "A1") {
            oTool->SetChecked(true);
            Show("B");
        }
    });
    m_aTools.front()->SetChecked(true);
    m_pRenderer->Flush();
    QTest::mouseClick(Button("A1"), Qt::LeftButton);
    EXPECT_EQ(m_aClicked, QStringList("A1"));
    for (const char* sText : {"Open", "B1", "B2", "B3", "B4"})
        EXPECT_FALSE(Button(sText)->isChecked()) << sText;
    Show("A");
    EXPECT_TRUE(Button("A1")->isChecked());
}

TEST_F(ToolbarTurnsTest, ButtonThatIsPressedOrHasTheKeyboardFiresNothingElse) {
    auto* pEdit = new QLineEdit;
    m_oWindow.setCentralWidget(pEdit);
    m_oWindow.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&m_oWindow));
    QToolButton* pButton = Button("A1");
    QTest::mousePress(pButton, Qt::LeftButton);
    Show("B");
    QTest::mouseRelease(pButton, Qt::LeftButton);
    EXPECT_EQ(m_aClicked, QStringList());
    Show("A");
    for (const char* sText : {"A1", "A2", "A3"}) {
        Button(sText)->setFocus();
        ASSERT_TRUE(Button(sText)->hasFocus());
        Show("B");
        const auto* pFocus = qobject_cast<QToolButton*>(QApplication::focusWidget());
        EXPECT_TRUE(!pFocus || pFocus->text() == "Open") << sText << " " << pFocus->text().toStdString();
        Show("A");
    }
    Button("Open")->setFocus();
    Show("B");
    EXPECT_TRUE(Button("Open")->hasFocus()) << "what stays keeps it";
    QTest::keyClick(Button("Open"), Qt::Key_Space);
    EXPECT_EQ(m_aClicked, QStringList("File.Open"));
}

TEST_F(ToolbarTurnsTest, WhatDoesNotFitIsReachedThroughTheButtonAtTheEnd) {
    Toolbar().setToolButtonStyle(Qt::ToolButtonTextOnly);
    Toolbar().setFixedWidth(90);
    QApplication::processEvents();
    auto* pMore = Toolbar().findChild<QToolButton*>("qt_toolbar_ext_button");
    EXPECT_TRUE(pMore->isVisible());
    EXPECT_EQ(pMore->accessibleName(), "More of Edit");
    EXPECT_EQ(Button("A3"), nullptr);
    Show("B");
    EXPECT_TRUE(pMore->isVisible());
    EXPECT_EQ(Button("B4"), nullptr);
    Toolbar().setFixedWidth(800);
    QApplication::processEvents();
    EXPECT_FALSE(pMore->isVisible());
    EXPECT_EQ(OnScreen(), "Open | B1 | B2 B3 B4");
    m_oWindow.addToolBar(Qt::LeftToolBarArea, &Toolbar());
    EXPECT_EQ(Toolbar().orientation(), Qt::Vertical);
}

TEST_F(BarRendererTest, PopupTellsDescriptionsToTheStatusBar) {
    const std::unique_ptr<QMenu> pMenu(m_pRenderer->NewPopup(m_oBar->Bands()->Item("File")));
    pMenu->popup({0, 0});
    pMenu->setActiveAction(pMenu->actions().front());
    EXPECT_EQ(m_oWindow.statusBar()->currentMessage(), "Opens a file");
    pMenu->close();
    EXPECT_EQ(m_oWindow.statusBar()->currentMessage(), "");
}

TEST_F(BarRendererTest, ToolbarShowsStateAndOnlyWhatDiffersIsTouched) {
    QToolBar* pToolbar = m_pRenderer->ToolbarOf(*m_oToolbar);
    ASSERT_NE(pToolbar, nullptr);
    QAction* pAction = pToolbar->actions().front();
    const long nBefore = m_pRenderer->Actions().TouchCount();
    for (int i = 0; i < 50; ++i)
        m_oOpen->SetEnabled(i % 2 == 1);
    m_oOpen->SetChecked(true);
    EXPECT_FALSE(pAction->isChecked()) << "nothing is drawn before the turn ends";
    QApplication::processEvents();
    EXPECT_TRUE(pAction->isChecked());
    EXPECT_TRUE(pAction->isEnabled());
    EXPECT_EQ(m_pRenderer->Actions().TouchCount(), nBefore + 1);
}

TEST_F(BarRendererTest, CheckMarkIsTheModelsAlsoAfterAClick) {
    m_oOpen->SetChecked(true);
    m_pRenderer->Flush();
    QAction* pAction = OpenFileMenu()->actions().front();
    ASSERT_TRUE(pAction->isChecked());
    pAction->trigger();
    EXPECT_TRUE(pAction->isChecked()) << "nobody unchecked the tool";
}

TEST_F(BarRendererTest, FloatingToolbarIsClosedThroughTheModel) {
    QStringList aClosed;
    const auto oClose = m_oBar->BandClose.Subscribe(
        [&](const Ref<Band>& oBand) { aClosed.append(QString::fromStdString(oBand->Name())); });
    QToolBar* pToolbar = m_pRenderer->ToolbarOf(*m_oToolbar);
    QAction* pClose = pToolbar->actions().back();
    EXPECT_FALSE(pClose->isVisible());
    Q_EMIT pToolbar->topLevelChanged(true);
    EXPECT_TRUE(pClose->isVisible());
    pClose->trigger();
    m_pRenderer->Flush();
    EXPECT_EQ(aClosed, QStringList("Toolbars.Edit"));
    EXPECT_FALSE(pToolbar->isVisible());
}

TEST_F(BarRendererTest, PopupMarksItsDefaultEntry) {
    const auto oContext = m_oBar->Bands()->Add("Context.A");
    oContext->SetBandKind(BandKind::Popup);
    oContext->Tools()->Insert(-1, AddTool("Context.A.X"))->SetCaption("X");
    const auto oDefault = oContext->Tools()->Insert(-1, AddTool("Context.A.Y"));
    oDefault->SetCaption("Y");
    oDefault->SetIsDefaultItem(true);
    const std::unique_ptr<QMenu> pMenu(m_pRenderer->NewPopup(oContext));
    ASSERT_NE(pMenu, nullptr);
    ASSERT_NE(pMenu->defaultAction(), nullptr);
    EXPECT_EQ(pMenu->defaultAction()->text(), "Y");
}

TEST_F(BarRendererTest, CustomizeMenuHasAnEntryForEachToolbarAndTwoThatAHandlerRemoves) {
    (void)AddTool("Toolbars.Edit"); // the entry of a toolbar bears the name of its band
    for (const bool bRemoves : {false, true, true}) {
        const auto oOpen = m_oBar->BandOpen.Subscribe([bRemoves](const Ref<Band>& oBand, bool&) {
            for (int i = 0; bRemoves && i < 2; ++i)
                oBand->Tools()->Remove(oBand->Tools()->Count() - 1);
        });
        const std::unique_ptr<QMenu> pMenu(m_pRenderer->NewCustomizeMenu());
        ASSERT_NE(pMenu, nullptr);
        EXPECT_EQ(pMenu->actions().size(), bRemoves ? 1 : 3);
        EXPECT_EQ(pMenu->actions().front()->text(), "Edit");
    }
}

TEST_F(BarRendererTest, ToolThatGoesBeforeThePassIsPassedOver) {
    const auto oStatus = m_oBar->Bands()->Item("StatusBar");
    oStatus->Tools()->AddHostTool("Passing")->SetEnabled(false); // its master lives no longer than the instance
    oStatus->Tools()->Remove(oStatus->Tools()->Count() - 1);
    m_pRenderer->Flush();
    EXPECT_EQ(m_aFailures, QStringList());
}

TEST_F(BarRendererTest, StatusTextIsShownAtOnceWhenItIsAskedFor) {
    const auto oStatus = m_oBar->Bands()->Item("StatusBar");
    oStatus->Tools()->Item("Status")->SetCaption("Ready & waiting");
    oStatus->Refresh();
    const auto* pLabel = m_oWindow.statusBar()->findChild<QLabel*>();
    EXPECT_EQ(pLabel->text(), "Ready & waiting");
    // What comes while it is hidden is there when it isn't any more.
    oStatus->Tools()->Item("Status")->SetVisible(false);
    oStatus->Tools()->Item("Status")->SetCaption("Done");
    m_pRenderer->Flush();
    EXPECT_TRUE(pLabel->isHidden());
    oStatus->Tools()->Item("Status")->SetVisible(true);
    m_pRenderer->Flush();
    EXPECT_FALSE(pLabel->isHidden());
    EXPECT_EQ(pLabel->text(), "Done");
}

TEST_F(BarRendererTest, DescriptionIsShownWhileAnEntryIsUnderThePointer) {
    QMenu* pMenu = OpenFileMenu();
    EXPECT_EQ(pMenu->actions().front()->statusTip(), "Opens a file");
    QStatusTipEvent oTip("Opens a file");
    QApplication::sendEvent(&m_oWindow, &oTip);
    EXPECT_EQ(m_oWindow.statusBar()->currentMessage(), "Opens a file");
    // News take its place; the two would lie over one another.
    m_oBar->Bands()->Item("StatusBar")->Tools()->Item("Status")->SetCaption("Opened");
    m_pRenderer->Flush();
    EXPECT_EQ(m_oWindow.statusBar()->currentMessage(), "");
    QApplication::sendEvent(&m_oWindow, &oTip);
    m_pRenderer->Flush();
    EXPECT_FALSE(m_oWindow.statusBar()->findChild<QLabel*>()->isVisible());
    QStatusTipEvent oNoTip("");
    QApplication::sendEvent(&m_oWindow, &oNoTip);
    EXPECT_EQ(m_oWindow.statusBar()->currentMessage(), "");
    EXPECT_TRUE(m_oWindow.statusBar()->findChild<QLabel*>()->isVisible());
}

struct KeyCase {
    const char* sText;
    const char* sKeys;
};
class KeyInTest : public ::testing::TestWithParam<KeyCase> {};

TEST_P(KeyInTest, ReadsWhatDefinitionsSay) {
    EXPECT_EQ(KeyIn(GetParam().sText).toString(QKeySequence::PortableText), GetParam().sKeys);
}

INSTANTIATE_TEST_SUITE_P(Texts, KeyInTest,
                         ::testing::Values(KeyCase{"Ctrl+Shift+O", "Ctrl+Shift+O"}, KeyCase{"ctrl + o", "Ctrl+O"},
                                           KeyCase{"F5", "F5"}, KeyCase{"Delete", "Del"}, KeyCase{"Ctrl++", "Ctrl++"},
                                           KeyCase{"", ""}, KeyCase{"nonsense", ""}));

} // namespace
} // namespace corvane::desktop
