// What a person is at when the definitions change: nothing of it is lost or closed without a word.
#include "tests/preview/PreviewRoom.h"

#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QToolBar>
#include <QToolButton>
#include <filesystem>

namespace corvane::desktop {
namespace {

class WorkTest : public PreviewRoom {
protected:
    WorkTest() {
        m_oFolder.Service("Draft", "Draft.Service", R"(<ActionItems><ActionItem Name="Write" Action="OnWrite"/>
<ActionItem Name="Keep" Action="OnSave"/><ActionItem Name="Ask" Action="OnAsk"/></ActionItems>
<Menus>
<MenuItem Type="MenuItem" ActionItem="Write" Path="View" PositionOrder="5" Caption="Write"/>
<MenuItem Type="MenuItem" ActionItem="Keep" Path="View" PositionOrder="6" Caption="Keep"/>
<MenuItem Type="MenuItem" ActionItem="Ask" Path="View" PositionOrder="7" Caption="Ask"/>
</Menus>
<Windows><Window Name="Paper" Caption="Paper" Type="Window" State="Normal" IsMDIChild="true" IsModal="false">
<Page PageProgID="Draft.Page" Caption="Text" IsOptional="false" IsResizable="true"/></Window>
<Window Name="Guide" Caption="Guide" Type="Wizard" State="Normal" IsMDIChild="false" IsModal="true">
<Page PageProgID="Draft.Page" Caption="Text" IsOptional="false" IsResizable="true"/>
<Page PageProgID="BirdsSvc.Page" Caption="More" IsOptional="false" IsResizable="true"/></Window></Windows>)");
        EXPECT_TRUE(QFile::copy(CORVANE_DRAFT_PLUGIN, m_oFolder.Path("App/plugins/libDraft.so")));
    }

    [[nodiscard]] QToolButton* Button(const char* sText) const {
        for (auto* pButton : m_pPreview->findChildren<QToolButton*>())
            if (pButton->text() == sText && pButton->isVisible())
                return pButton;
        return nullptr;
    }
    [[nodiscard]] QToolButton* Anyway() const { return Button("Show &Anyway"); }
    // As a linker does: the file is another.
    void BuildAnew() const {
        const QString sFile = m_oFolder.Path("App/plugins/libDraft.so");
        EXPECT_TRUE(QFile::copy(CORVANE_DRAFT_PLUGIN, sFile + ".new"));
        std::filesystem::rename((sFile + ".new").toStdString(), sFile.toStdString());
    }
    // The definitions change, and the preview hears of it.
    void Rename(const char* sFrom, const char* sTo) const {
        Edit("Birds", QByteArray("Caption=\"") + sFrom + "\"", QByteArray("Caption=\"") + sTo + "\"");
    }
    static QLineEdit* FieldIn(QWidget* pWindow) { return pWindow ? pWindow->findChild<QLineEdit*>() : nullptr; }
    [[nodiscard]] QLineEdit* Field() const { return FieldIn(Window().findChild<QMdiSubWindow*>()); }
    [[nodiscard]] bool Says(const char* sText) const { return m_pPreview->StateText().contains(sText); }
    [[nodiscard]] std::string Status() const {
        return App().Bar()->Bands()->Find("StatusBar")->Tools()->Find("Status")->Caption();
    }
};

TEST_F(WorkTest, UnsavedWorkHoldsNewDefinitionsBackUntilItIsSaved) {
    Preview();
    ASSERT_TRUE(App().Choose("View.Write"));
    Rename("#Count", "#Tally");
    ASSERT_TRUE(Until([&] { return Says("unsaved work"); }));
    EXPECT_TRUE(Anyway());
    QMenu* pFile = OpenMenu("File");
    pFile->setActiveAction(pFile->actions().last());
    QTest::qWait(1200); // it is looked several times whether the work is saved
    EXPECT_EQ(m_pPreview->ShownCount(), 1);
    EXPECT_EQ(OpenMenuTitle(), "File");
    EXPECT_EQ(Status(), ""); // nobody was told of an end
    EXPECT_EQ(Calls().filter("GetUnsavedItems").join("\n"), "");
    pFile->close();
    ASSERT_TRUE(App().Choose("View.Keep"));
    ASSERT_TRUE(UntilShown(2));
    EXPECT_EQ(Caption("File", "File.Count"), "&Tally");
    EXPECT_FALSE(Anyway());
}

TEST_F(WorkTest, ShowAnywayGivesUnsavedWorkUp) {
    Preview();
    m_pPreview->OpenWindow("Paper");
    m_pPreview->OpenWindow("Sheet");
    ClickNode(0, "Inner");
    ASSERT_TRUE(Field());
    QTest::keyClicks(Field(), "typed");
    ASSERT_TRUE(App().Choose("View.Write"));
    Rename("#Count", "#Tally");
    ASSERT_TRUE(Until([&] { return Anyway(); }));
    EXPECT_EQ(Field()->text(), "typed");
    EXPECT_NE(App().AsText().find("Window Sheet"), std::string::npos); // nothing has been closed for a try
    QTest::mouseClick(Anyway(), Qt::LeftButton);
    ASSERT_TRUE(UntilShown(2));
    EXPECT_EQ(Caption("File", "File.Count"), "&Tally");
    EXPECT_FALSE(Anyway());
    EXPECT_EQ(Field()->text(), "");
    EXPECT_EQ(Selected(0), "Inner");
    EXPECT_NE(App().AsText().find("Window Sheet (window, active)"), std::string::npos) << App().AsText();
    // The next change asks anew.
    QTest::keyClicks(Field(), "again");
    Rename("#Tally", "#Sum");
    ASSERT_TRUE(Until([&] { return Anyway(); }));
    EXPECT_EQ(m_pPreview->ShownCount(), 2);
    Field()->clear();
    ASSERT_TRUE(UntilShown(3));
}

TEST_F(WorkTest, WhatIsTypedIntoAModalWizardIsKeptAndItsPageToo) {
    Preview();
    QTimer oPerson;
    int nStage = 0;
    QObject::connect(&oPerson, &QTimer::timeout, [&] {
        QWidget* pModal = QApplication::activeModalWidget();
        if (nStage == 0 && FieldIn(pModal)) {
            QTest::keyClicks(FieldIn(pModal), "typed");
            Rename("#Count", "#Tally");
            nStage = 1;
        } else if (nStage == 1 && Says("unsaved work")) {
            EXPECT_EQ(FieldIn(pModal)->text(), "typed");
            EXPECT_TRUE(App().ClickCommand("next"));
            FieldIn(pModal)->clear(); // as the page behind may do
            nStage = 2;
        } else if (nStage == 2 && m_pPreview->ShownCount() == 2 && pModal &&
                   App().AsText().find("Page More (in front)") != std::string::npos) {
            EXPECT_TRUE(App().ClickCommand("cancel"));
            nStage = 3;
        }
    });
    oPerson.start(5);
    m_pPreview->OpenWindow("Guide");
    EXPECT_TRUE(Until([&] { return nStage == 3; })) << nStage << App().AsText();
    EXPECT_TRUE(Until([] { return !QApplication::activeModalWidget(); }));
}

TEST_F(WorkTest, LabelThatIsEditedStaysOpenUntilItIsDone) {
    Edit("Birds", "ProgID=\"BirdsSvc.Owls\"", "ProgID=\"BirdsSvc.Owls\" CanRename=\"true\"");
    Preview();
    ClickNode(0, "Owls");
    App().Failures().Guard([&] { Tree(0)->Tree()->StartLabelEdit(); });
    ASSERT_TRUE(Until([&] { return FieldIn(Tree(0)->viewport()); }));
    QLineEdit* pEditor = FieldIn(Tree(0)->viewport());
    pEditor->setText("Half a na");
    Rename("#Count", "#Tally");
    ASSERT_TRUE(Until([&] { return Says("when what is open is closed"); }));
    Rest();
    EXPECT_EQ(m_pPreview->ShownCount(), 1);
    ASSERT_EQ(FieldIn(Tree(0)->viewport()), pEditor);
    QTest::keyClicks(pEditor, "me");
    EXPECT_EQ(pEditor->text(), "Half a name");
    std::string sTaken;
    const Subscription oTaken = Tree(0)->Tree()->AfterLabelEdit.Subscribe(
        [&](bool& bRefused, const std::string& sText) { sTaken = bRefused ? "refused" : sText; });
    QTest::keyClick(pEditor, Qt::Key_Return);
    ASSERT_TRUE(UntilShown(2));
    EXPECT_EQ(sTaken, "Half a name");
    EXPECT_EQ(Caption("File", "File.Count"), "&Tally");
}

// A menu over a dialog of real code isn't closed while the new definitions wait for the dialog.
TEST_F(WorkTest, DialogsOfRealCodeAreLeftAlone) {
    Preview();
    int nStage = 0;
    QMenu oMenu;
    oMenu.addAction("Entry");
    QTimer oPerson;
    QObject::connect(&oPerson, &QTimer::timeout, [&] {
        auto* pBox = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (nStage == 0 && pBox) {
            oMenu.popup({10, 10});
            Rename("#Count", "#Tally");
            nStage = 1;
        } else if (nStage == 1 && Says("when what is open is closed")) {
            nStage = 2;
            QTimer::singleShot(300, [&, pBox] {
                EXPECT_TRUE(oMenu.isVisible());
                oMenu.close();
                pBox->button(QMessageBox::Ok)->click();
            });
        }
    });
    oPerson.start(5);
    EXPECT_TRUE(App().Choose("View.Ask"));
    ASSERT_TRUE(UntilShown(2));
    EXPECT_EQ(nStage, 2);
}

TEST_F(WorkTest, DropDownOfAToolbarIsOpenedAgainWhereItStillIs) {
    // A button whose tool is a title's drops its menu down.
    const QByteArray aButton =
        R"(<MenuItem Type="ToolbarItem" ActionItem="File" Path="Bar" PositionOrder="1" Caption="F"/>)";
    const QByteArray aTitle = R"(<MenuItem Type="MenuTitle" ActionItem="View" PositionOrder="2" Caption="#View"/>)";
    Edit("Shell", aTitle, aTitle + aButton);
    Preview();
    ASSERT_TRUE(m_pPreview->Shown()) << Problem(0).toStdString();
    const auto fnButton = [&]() -> QToolButton* {
        const auto oBand = App().Bar()->Bands()->Find("Toolbars.Bar");
        QToolBar* pBar = oBand ? Window().Bars().ToolbarOf(*oBand) : nullptr;
        return pBar ? qobject_cast<QToolButton*>(pBar->widgetForAction(pBar->actions().first())) : nullptr;
    };
    ASSERT_TRUE(fnButton());
    int nStage = 0;
    QPoint oPlace;
    QTimer oPerson;
    QObject::connect(&oPerson, &QTimer::timeout, [&] {
        auto* pMenu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (nStage == 0 && pMenu) {
            pMenu->setActiveAction(pMenu->actions().last());
            EXPECT_EQ(LitEntry(), "Feed");
            oPlace = pMenu->pos();
            Rename("#Count", "#Tally");
            nStage = 1;
        } else if (nStage == 1 && m_pPreview->ShownCount() == 2 && LitEntry() == "Feed") {
            EXPECT_EQ(pMenu->actions().first()->text().section('\t', 0, 0), "&Tally");
            EXPECT_EQ(pMenu->pos(), oPlace);
            pMenu->close();
            nStage = 2;
        } else if (nStage == 3 && pMenu) {
            Edit("Shell", aButton, "");
            nStage = 4;
        }
    });
    oPerson.start(5);
    QTest::keyClick(fnButton(), Qt::Key_Space); // returns when the menu is closed
    ASSERT_TRUE(Until([&] { return nStage == 2; })) << nStage << LitEntry().toStdString();
    nStage = 3;
    QTest::keyClick(fnButton(), Qt::Key_Space);
    ASSERT_TRUE(UntilShown(3));
    Rest();
    EXPECT_FALSE(QApplication::activePopupWidget()); // the button has gone
}

TEST_F(WorkTest, PluginThatIsBuiltAnewIsToldAndUsedAfterARestart) {
    PreviewOptions oOptions;
    const std::string sSteps = m_oFolder.Path("steps.txt").toStdString();
    oOptions.pRecorder = std::make_shared<StepRecorder>(sSteps);
    Preview(oOptions);
    m_pPreview->OpenWindow("Paper");
    m_pPreview->OpenWindow("Sheet");
    Rename("#Count", "#Tally");
    ASSERT_TRUE(UntilShown(2));
    EXPECT_FALSE(Button("&Restart"));
    BuildAnew();
    ASSERT_TRUE(Until([&] { return Button("&Restart"); }));
    EXPECT_TRUE(Says("rebuilt: Draft")) << m_pPreview->StateText().toStdString();
    // Who has unsaved work may stay.
    ASSERT_TRUE(App().Choose("View.Write"));
    App().Dialogs().AddAnswer("Stay");
    QTest::mouseClick(Button("&Restart"), Qt::LeftButton);
    EXPECT_TRUE(m_pPreview->isVisible());
    EXPECT_FALSE(m_pPreview->WantsRestart());
    ASSERT_TRUE(App().Choose("View.Keep"));
    ClickNode(0, "Inner");
    QTest::mouseClick(Button("&Restart"), Qt::LeftButton);
    EXPECT_FALSE(m_pPreview->isVisible());
    EXPECT_TRUE(m_pPreview->WantsRestart());

    // The next run goes on with what is selected and open, and closes for the recorder what it can't open any more.
    oOptions.aTakenOver = m_pPreview->HandOver();
    m_pPreview.reset();
    Edit("Draft", "Window Name=\"Paper\"", "Window Name=\"Letter\"");
    oOptions.pRecorder = std::make_shared<StepRecorder>(sSteps, true);
    Preview(oOptions);
    EXPECT_EQ(Selected(0), "Inner");
    EXPECT_NE(App().AsText().find("Window Sheet (window, active)"), std::string::npos) << App().AsText();
    EXPECT_EQ(m_oFolder.Read("steps.txt").mid(m_oFolder.Read("steps.txt").indexOf('\n') + 1).toStdString(),
              "populate\nopen Paper\nopen Sheet\n# Here the definitions were changed.\n"
              "# Here the definitions were changed.\nclick View.Write\nclick View.Keep\nnode 0 Inner\n"
              "# Here the preview was started again.\nclose Paper\n");

    // Where stand-ins are in its place it makes no difference.
    m_pPreview.reset();
    oOptions.bStandIns = true;
    Preview(oOptions);
    const int nShown = m_pPreview->ShownCount();
    BuildAnew();
    ASSERT_TRUE(UntilShown(nShown + 1));
    EXPECT_FALSE(Button("&Restart"));
    EXPECT_EQ(m_oFolder.Read("steps.txt").count("populate\n"), 1);
}

// The program itself: in one process, with its arguments, the steps going on where they were.
TEST_F(WorkTest, ProgramStartsAgain) {
    QProcess oProgram;
    QProcessEnvironment oEnvironment = QProcessEnvironment::systemEnvironment();
    oEnvironment.insert("PRESS", "&Restart");
    oEnvironment.insert("LANGUAGE", "en");
    oProgram.setProcessEnvironment(oEnvironment);
    const auto fnCount = [&](const char* sLine) { return m_oFolder.Read("steps.txt").count(sLine); };
    oProgram.start(CORVANE_PREVIEW_PROGRAM, {m_oFolder.Path("App"), "--record", m_oFolder.Path("steps.txt")});
    ASSERT_TRUE(oProgram.waitForStarted());
    const qint64 nProcess = oProgram.processId();
    const auto fnLoaded = [&] { // which file of the plug-in the program has
        QFile oMaps(QString("/proc/%1/maps").arg(nProcess));
        const QByteArray aMaps = oMaps.open(QIODevice::ReadOnly) ? oMaps.readAll() : QByteArray();
        return !aMaps.contains("libDraft.so") ? "none" : aMaps.contains("libDraft.so (deleted)") ? "old" : "new";
    };
    ASSERT_TRUE(Until([&] { return fnCount("populate\n") == 1; })) << oProgram.readAllStandardError().toStdString();
    BuildAnew();
    ASSERT_TRUE(Until([&] { return fnCount("# Here the preview was started again.\n") == 1; }));
    ASSERT_TRUE(Until([&] { return fnLoaded() == std::string("new"); }));
    Rest();
    EXPECT_EQ(oProgram.processId(), nProcess);
    oProgram.terminate();
    ASSERT_TRUE(oProgram.waitForFinished(30000));
    EXPECT_EQ(oProgram.exitCode(), 0) << oProgram.readAllStandardError().toStdString();
    EXPECT_EQ(fnCount("# A session"), 1);
    EXPECT_EQ(fnCount("populate\n"), 1);
    EXPECT_EQ(fnCount("exit\n"), 1);
    EXPECT_TRUE(m_oFolder.Read("steps.txt").endsWith("exit\n"));
}

} // namespace
} // namespace corvane::desktop
