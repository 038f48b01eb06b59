// What a person is at when the definitions change: nothing of it is lost or closed without a word.
#include "desktop/application/MainWindow.h"
#include "desktop/platform/HostParts.h"
#include "desktop/record/StepRecorder.h"
#include "tests/preview/PreviewFixture.h"

#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QToolBar>
#include <QToolButton>
#include <csignal>
#include <filesystem>

namespace corvane::desktop {
namespace {

class WorkTest : public PreviewFixture {
protected:
    WorkTest() {
        m_folder.Service("Draft", "Draft.Service", R"(<ActionItems><ActionItem Name="Write" Action="OnWrite"/>
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
        EXPECT_TRUE(QFile::copy(CORVANE_DRAFT_PLUGIN, m_folder.Path("App/plugins/libDraft.so")));
    }

    [[nodiscard]] QToolButton* Button(const char* text) const {
        for (auto* button : m_preview->findChildren<QToolButton*>())
            if (button->text() == text && button->isVisible())
                return button;
        return nullptr;
    }
    [[nodiscard]] QToolButton* Anyway() const { return Button("Show &Anyway"); }
    // As a linker does: the file is another.
    void Rebuild() const {
        const QString file = m_folder.Path("App/plugins/libDraft.so");
        EXPECT_TRUE(QFile::copy(CORVANE_DRAFT_PLUGIN, file + ".new"));
        std::filesystem::rename((file + ".new").toStdString(), file.toStdString());
    }
    // The definitions change, and the preview hears of it.
    void Rename(const char* from, const char* to) const {
        Edit("Birds", QByteArray("Caption=\"") + from + "\"", QByteArray("Caption=\"") + to + "\"");
    }
    static QLineEdit* FieldIn(QWidget* window) { return window ? window->findChild<QLineEdit*>() : nullptr; }
    [[nodiscard]] QLineEdit* Field() const { return FieldIn(Window().findChild<QMdiSubWindow*>()); }
    [[nodiscard]] bool Says(const char* text) const { return m_preview->StateText().contains(text); }
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
    QMenu* file = OpenMenu("File");
    file->setActiveAction(EntryOf(*file, "Feed"));
    WaitForTries();
    EXPECT_EQ(m_preview->ShownCount(), 1);
    EXPECT_EQ(OpenMenuTitle(), "File");
    EXPECT_EQ(Status(), ""); // nobody was told of an end
    EXPECT_EQ(Calls().filter("GetUnsavedItems").join("\n"), "");
    file->close();
    ASSERT_TRUE(App().Choose("View.Keep"));
    ASSERT_TRUE(UntilShown(2));
    EXPECT_EQ(Caption("File", "File.Count"), "&Tally");
    EXPECT_FALSE(Anyway());
}

TEST_F(WorkTest, ShowAnywayGivesUnsavedWorkUp) {
    Preview();
    m_preview->OpenWindow("Paper");
    m_preview->OpenWindow("Sheet");
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
    EXPECT_EQ(m_preview->ShownCount(), 2);
    Field()->clear();
    ASSERT_TRUE(UntilShown(3));
}

TEST_F(WorkTest, WhatIsTypedIntoAModalWizardIsKeptAndItsPageToo) {
    Preview();
    QTimer person;
    int stage = 0;
    QObject::connect(&person, &QTimer::timeout, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (stage == 0 && FieldIn(modal)) {
            QTest::keyClicks(FieldIn(modal), "typed");
            Rename("#Count", "#Tally");
            stage = 1;
        } else if (stage == 1 && Says("unsaved work")) {
            EXPECT_EQ(FieldIn(modal)->text(), "typed");
            EXPECT_TRUE(App().ClickCommand("next"));
            FieldIn(modal)->clear(); // as the page behind may do
            stage = 2;
        } else if (stage == 2 && m_preview->ShownCount() == 2 && modal &&
                   App().AsText().find("Page More (in front)") != std::string::npos) {
            EXPECT_TRUE(App().ClickCommand("cancel"));
            stage = 3;
        }
    });
    person.start(5);
    m_preview->OpenWindow("Guide");
    EXPECT_TRUE(Until([&] { return stage == 3; })) << stage << App().AsText();
    EXPECT_TRUE(Until([] { return !QApplication::activeModalWidget(); }));
}

TEST_F(WorkTest, LabelThatIsEditedStaysOpenUntilItIsDone) {
    Edit("Birds", "ProgID=\"BirdsSvc.Owls\"", "ProgID=\"BirdsSvc.Owls\" CanRename=\"true\"");
    Preview();
    ClickNode(0, "Owls");
    App().Failures().Guard([&] { Tree(0)->Tree()->StartLabelEdit(); });
    ASSERT_TRUE(Until([&] { return FieldIn(Tree(0)->viewport()); }));
    QLineEdit* editor = FieldIn(Tree(0)->viewport());
    editor->setText("Half a na");
    Rename("#Count", "#Tally");
    ASSERT_TRUE(Until([&] { return Says("when the open dialog or editor is closed"); }));
    WaitForTries();
    EXPECT_EQ(m_preview->ShownCount(), 1);
    ASSERT_EQ(FieldIn(Tree(0)->viewport()), editor);
    QTest::keyClicks(editor, "me");
    EXPECT_EQ(editor->text(), "Half a name");
    std::string takenText;
    const Subscription taken = Tree(0)->Tree()->AfterLabelEdit.Subscribe(
        [&](bool& refused, const std::string& text) { takenText = refused ? "refused" : text; });
    QTest::keyClick(editor, Qt::Key_Return);
    ASSERT_TRUE(UntilShown(2));
    EXPECT_EQ(takenText, "Half a name");
    EXPECT_EQ(Caption("File", "File.Count"), "&Tally");
}

// A menu over a dialog of real code isn't closed while the new definitions wait for the dialog.
TEST_F(WorkTest, DialogsOfRealCodeAreLeftAlone) {
    Preview();
    int stage = 0;
    int tryCount = 0;
    QMenu menu;
    menu.addAction("Entry");
    QTimer person;
    QObject::connect(&person, &QTimer::timeout, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (stage == 0 && box) {
            menu.popup({10, 10});
            Rename("#Count", "#Tally");
            stage = 1;
        } else if (stage == 1 && Says("when the open dialog or editor is closed")) {
            stage = 2;
            tryCount = m_preview->TryCount();
        } else if (stage == 2 && box && m_preview->TryCount() >= tryCount + 3) {
            EXPECT_TRUE(menu.isVisible());
            menu.close();
            box->button(QMessageBox::Ok)->click();
            stage = 3;
        }
    });
    person.start(5);
    EXPECT_TRUE(App().Choose("View.Ask"));
    ASSERT_TRUE(UntilShown(2));
    EXPECT_EQ(stage, 3);
}

TEST_F(WorkTest, DropDownOfAToolbarIsOpenedAgainWhereItStillIs) {
    // A button whose tool is a title's drops its menu down.
    const QByteArray button =
        R"(<MenuItem Type="ToolbarItem" ActionItem="File" Path="Bar" PositionOrder="1" Caption="F"/>)";
    const QByteArray title = R"(<MenuItem Type="MenuTitle" ActionItem="View" PositionOrder="2" Caption="#View"/>)";
    Edit("Shell", title, title + button);
    Preview();
    ASSERT_TRUE(m_preview->Shown()) << Problem(0).toStdString();
    const auto buttonFunction = [&]() -> QToolButton* {
        const auto band = App().Bar()->Bands()->Find("Toolbars.Bar");
        QToolBar* bar = band ? Window().Bars().ToolbarOf(*band) : nullptr;
        return bar ? qobject_cast<QToolButton*>(bar->widgetForAction(bar->actions().first())) : nullptr;
    };
    ASSERT_TRUE(buttonFunction());
    int stage = 0;
    QPoint place;
    QTimer person;
    QObject::connect(&person, &QTimer::timeout, [&] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (stage == 0 && menu) {
            menu->setActiveAction(EntryOf(*menu, "Feed"));
            EXPECT_EQ(LitEntry(), "Feed");
            place = menu->pos();
            Rename("#Count", "#Tally");
            stage = 1;
        } else if (stage == 1 && m_preview->ShownCount() == 2 && LitEntry() == "Feed") {
            EXPECT_EQ(menu->actions().first()->text().section('\t', 0, 0), "&Tally");
            EXPECT_EQ(menu->pos(), place);
            menu->close();
            stage = 2;
        } else if (stage == 3 && menu) {
            Edit("Shell", button, "");
            stage = 4;
        }
    });
    person.start(5);
    QTest::keyClick(buttonFunction(), Qt::Key_Space); // returns when the menu is closed
    ASSERT_TRUE(Until([&] { return stage == 2; })) << stage << LitEntry().toStdString();
    stage = 3;
    QTest::keyClick(buttonFunction(), Qt::Key_Space);
    ASSERT_TRUE(UntilShown(3));
    Rest();
    EXPECT_FALSE(QApplication::activePopupWidget()); // the button has gone
}

TEST_F(WorkTest, PluginThatIsBuiltAnewIsToldAndUsedAfterARestart) {
    PreviewOptions options;
    const std::string steps = m_folder.Path("steps.txt").toStdString();
    options.recorder = std::make_shared<StepRecorder>(steps);
    Preview(options);
    m_preview->OpenWindow("Paper");
    m_preview->OpenWindow("Sheet");
    Rename("#Count", "#Tally");
    ASSERT_TRUE(UntilShown(2));
    EXPECT_FALSE(Button("&Restart"));
    Rebuild();
    ASSERT_TRUE(Until([&] { return Button("&Restart"); }));
    EXPECT_TRUE(Says("rebuilt: Draft")) << m_preview->StateText().toStdString();
    // Who has unsaved work may stay.
    ASSERT_TRUE(App().Choose("View.Write"));
    App().Dialogs().AddAnswer("Stay");
    QTest::mouseClick(Button("&Restart"), Qt::LeftButton);
    EXPECT_TRUE(m_preview->isVisible());
    EXPECT_FALSE(m_preview->WantsRestart());
    ASSERT_TRUE(App().Choose("View.Keep"));
    ClickNode(0, "Inner");
    QTest::mouseClick(Button("&Restart"), Qt::LeftButton);
    EXPECT_FALSE(m_preview->isVisible());
    EXPECT_TRUE(m_preview->WantsRestart());

    // The next run goes on with what is selected and open, and closes for the recorder what it can't open any more.
    options.takenOver = m_preview->HandOver();
    m_preview.reset();
    Edit("Draft", "Window Name=\"Paper\"", "Window Name=\"Letter\"");
    options.recorder = std::make_shared<StepRecorder>(steps, true);
    Preview(options);
    EXPECT_EQ(Selected(0), "Inner");
    EXPECT_NE(App().AsText().find("Window Sheet (window, active)"), std::string::npos) << App().AsText();
    EXPECT_EQ(m_folder.Read("steps.txt").mid(m_folder.Read("steps.txt").indexOf('\n') + 1).toStdString(),
              "populate\nopen Paper\nopen Sheet\n# Here the definitions were changed.\n"
              "# Here the definitions were changed.\nclick View.Write\nclick View.Keep\nnode 0 Inner\n"
              "# Here the preview was started again.\nclose Paper\n");

    // Where stand-ins are in its place it makes no difference.
    m_preview.reset();
    options.standIns = true;
    Preview(options);
    const int shown = m_preview->ShownCount();
    Rebuild();
    ASSERT_TRUE(UntilShown(shown + 1));
    EXPECT_FALSE(Button("&Restart"));
    EXPECT_EQ(m_folder.Read("steps.txt").count("populate\n"), 1);
}

// The program itself: in one process, with its arguments, the steps going on where they were.
TEST_F(WorkTest, ProgramStartsAgain) {
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("PRESS", "&Restart");
    environment.insert("LANGUAGE", "en");
    program.setProcessEnvironment(environment);
    const auto count = [&](const char* line) { return m_folder.Read("steps.txt").count(line); };
    program.start(CORVANE_PREVIEW_PROGRAM, {m_folder.Path("App"), "--record", m_folder.Path("steps.txt")});
    ASSERT_TRUE(program.waitForStarted());
    const qint64 process = program.processId();
    const auto loaded = [&] { // which file of the plug-in the program has
        QFile maps(QString("/proc/%1/maps").arg(process));
        const QByteArray mapList = maps.open(QIODevice::ReadOnly) ? maps.readAll() : QByteArray();
        return !mapList.contains("libDraft.so") ? "none" : mapList.contains("libDraft.so (deleted)") ? "old" : "new";
    };
    ASSERT_TRUE(Until([&] { return count("populate\n") == 1; })) << program.readAllStandardError().toStdString();
    Rebuild();
    ASSERT_TRUE(Until([&] { return count("# Here the preview was started again.\n") == 1; }));
    ASSERT_TRUE(Until([&] { return loaded() == std::string("new"); }));
    const auto hearsSignals = [&] { // the program started again has said how it wants to end
        QFile status(QString("/proc/%1/status").arg(process));
        const QByteArray text = status.open(QIODevice::ReadOnly) ? status.readAll() : QByteArray();
        const qulonglong caught = text.mid(text.indexOf("SigCgt:") + 7, 17).trimmed().toULongLong(nullptr, 16);
        return (caught >> (SIGTERM - 1) & 1U) != 0;
    };
    ASSERT_TRUE(Until(hearsSignals));
    EXPECT_EQ(program.processId(), process);
    program.terminate();
    ASSERT_TRUE(program.waitForFinished(30000));
    EXPECT_EQ(program.exitCode(), 0) << program.readAllStandardError().toStdString();
    EXPECT_EQ(count("# A session"), 1);
    EXPECT_EQ(count("populate\n"), 1);
    EXPECT_EQ(count("exit\n"), 1);
    EXPECT_TRUE(m_folder.Read("steps.txt").endsWith("exit\n"));
}

} // namespace
} // namespace corvane::desktop
