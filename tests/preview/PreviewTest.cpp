#include "analysis/Check.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/services/ServiceManager.h"
#include "desktop/application/MainWindow.h"
#include "tests/forms/Ui.h"
#include "tests/preview/PreviewFixture.h"

#include <QLineEdit>
#include <QScreen>
#include <QTabBar>
#include <QToolBar>
#include <filesystem>

namespace corvane::desktop {
namespace {

TEST_F(PreviewFixture, GoodEditIsShownAndSelectionWindowsAndOpenMenuStay) {
    PreviewWindow& preview = Preview();
    ASSERT_TRUE(preview.Shown());
    QWidget* const desk = preview.centralWidget();
    preview.OpenWindow("Sheet");
    Window().Explorer().TabBar()->setCurrentIndex(1);
    ClickNode(1, "Seas");
    Window().Explorer().TabBar()->setCurrentIndex(0);
    ClickNode(0, "Inner");
    QMenu* file = OpenMenu("File");
    ASSERT_TRUE(file);
    file->setActiveAction(EntryOf(*file, "Feed"));
    ASSERT_EQ(LitEntry(), "Feed");

    Edit("Birds", "Caption=\"#Count\"", "Caption=\"#Tally\"");
    ASSERT_TRUE(UntilShown(2));
    EXPECT_TRUE(Until([] { return LitEntry() == "Feed"; }));
    EXPECT_EQ(OpenMenuTitle(), "File");
    EXPECT_EQ(Caption("File", "File.Count"), "&Tally");
    EXPECT_EQ(Selected(0), "Inner");
    EXPECT_EQ(Window().Explorer().TabBar()->currentIndex(), 0);
    EXPECT_NE(App().AsText().find("Window Sheet (window, active)"), std::string::npos) << App().AsText();
    EXPECT_EQ(preview.centralWidget(), desk);
    EXPECT_TRUE(preview.ProblemsDock().isHidden());
    QApplication::activePopupWidget()->close();
}

TEST_F(PreviewFixture, FormsAreShownAsTheyAreEditedAndKeepWhatIsEntered) {
    const auto Draw = [this](const std::string& more) {
        m_folder.Write("App/Forms/BirdsSvc.Page.ui",
                       QByteArray::fromStdString(forms::Ui(forms::Item(0, "QLineEdit", "Title") +
                                                           forms::Item(1, "QSpinBox", "Count") + more)));
    };
    const auto Field = [this](const char* name) { return Window().findChild<QLineEdit*>(name); };
    Draw("");
    Preview().OpenWindow("Sheet");
    ASSERT_TRUE(Field("Title"));
    QTest::keyClicks(Field("Title"), "half a");
    Draw(forms::Item(2, "QLineEdit", "Ring"));
    ASSERT_TRUE(UntilShown(2));
    ASSERT_TRUE(Until([&] { return Field("Ring"); }));
    EXPECT_EQ(Field("Title")->text(), "half a");
    QTest::keyClicks(Field("Ring"), "12");
    Edit("Birds", "Caption=\"#Count\"", "Caption=\"#Tally\"");
    ASSERT_TRUE(UntilShown(3));
    ASSERT_TRUE(Until([&] { return Field("Ring"); }));
    EXPECT_EQ(Field("Title")->text() + Field("Ring")->text(), "half a12");
}

TEST_F(PreviewFixture, WhatIsOpenAndGoesWithAnEditIsClosed) {
    // A title that the host has no entries in, so that it can go.
    Edit("Shell", "ActionItem Name=\"File\"", "ActionItem Name=\"Flock\"");
    Edit("Shell", "ActionItem=\"File\" PositionOrder=\"1\" Caption=\"#File\"",
         "ActionItem=\"Flock\" PositionOrder=\"1\" Caption=\"#Flock\"");
    Edit("Birds", "Path=\"File\"", "Path=\"Flock\"");
    PreviewWindow& preview = Preview();
    preview.OpenWindow("Sheet");
    ClickNode(0, "Inner");
    QMenu* flock = OpenMenu("Flock");
    flock->setActiveAction(EntryOf(*flock, "Feed"));
    Edit("Birds",
         "<MenuItem Type=\"MenuItem\" ActionItem=\"Feed\" Path=\"Flock\" PositionOrder=\"2\" Caption=\"#Feed\"/>", "");
    ASSERT_TRUE(UntilShown(2));
    EXPECT_TRUE(Until([] { return OpenMenuTitle() == "Flock"; }));
    EXPECT_EQ(LitEntry(), ""); // the entry has gone, the menu hasn't

    Edit("Shell", "<MenuItem Type=\"MenuTitle\" ActionItem=\"Flock\" PositionOrder=\"1\" Caption=\"#Flock\"/>", "");
    Edit("Birds", "Path=\"Flock\" PositionOrder=\"1\"", "Path=\"View\" PositionOrder=\"8\"");
    Edit("Birds", "<Window Name=\"Sheet\"", "<Window Name=\"Other\"");
    Edit("Birds",
         "<ExplorerItem Name=\"Inner\" Type=\"Folder\" Parent=\"Nests\" PositionOrder=\"1\" Image=\"nest.svg\"/>", "");
    ASSERT_TRUE(UntilShown(3)) << Problem(0).toStdString() << preview.StateText().toStdString();
    Rest();
    EXPECT_FALSE(QApplication::activePopupWidget());
    EXPECT_EQ(Selected(0), "");
    EXPECT_EQ(App().AsText().find("Window Sheet"), std::string::npos);
    EXPECT_EQ(Caption("View", "View.Count"), "&Count");
}

TEST_F(PreviewFixture, BadEditIsListedOverTheLastGoodStateUntilItIsMended) {
    PreviewWindow& preview = Preview();
    ClickNode(0, "Inner");
    Edit("Birds", "Caption=\"#Count\"", "Caption=\"#Tally\" PositionOrdr=\"1\"");
    ASSERT_TRUE(Until([&] { return preview.HasErrors(); }));
    EXPECT_EQ(preview.ShownCount(), 1);
    EXPECT_EQ(Caption("File", "File.Count"), "&Count");
    EXPECT_TRUE(preview.ProblemsDock().isVisible());
    auto findings = check::Check({m_folder.App(), false});
    std::erase_if(findings, [](const auto& finding) {
        return finding.rule == check::Rule::MissingPlugin ||
               check::TextOf(finding.rule).severity == check::Severity::Note;
    });
    ASSERT_EQ(preview.Problems().Count(), static_cast<int>(findings.size()));
    const auto& first = findings.front();
    EXPECT_EQ(Problem(0).toStdString(), "Services/Birds.xml:" + std::to_string(first.place.at.line) + ":" +
                                            std::to_string(first.place.at.column) + " | " + first.text + " | " +
                                            first.cure + " | " + std::string(check::TextOf(first.rule).name));
    EXPECT_TRUE(preview.StateText().contains("last valid state")) << preview.StateText().toStdString();
    EXPECT_TRUE(App().Choose("View.Bar")); // it goes on working

    Edit("Birds", "PositionOrdr=\"1\"", "");
    ASSERT_TRUE(UntilShown(2));
    EXPECT_FALSE(preview.HasErrors());
    EXPECT_TRUE(preview.ProblemsDock().isHidden());
    EXPECT_EQ(Caption("File", "File.Count"), "&Tally");
    EXPECT_EQ(Selected(0), "Inner");
}

TEST_F(PreviewFixture, WhatCantBeStartedIsListedAndTheApplicationComesWhenItIsMended) {
    m_folder.Service("Birds", "BirdsSvc.Birds", QByteArray(birds).replace("Parent=\"Nests\"", "Parent=\"Nowhere\""));
    PreviewWindow& preview = Preview();
    EXPECT_FALSE(preview.Shown());
    EXPECT_GT(preview.Problems().Count(), 0);
    m_folder.Service("Birds", "BirdsSvc.Birds", birds);
    ASSERT_TRUE(UntilShown(1));
    EXPECT_EQ(Caption("File", "File.Count"), "&Count");
    EXPECT_TRUE(preview.ProblemsDock().isHidden());
}

// Of files that are left out the rest is shown, but not in place of a state that has them.
TEST_F(PreviewFixture, WhatTheLibraryCanStartIsShownWithItsErrors) {
    m_folder.Write("App/Services/Birds.xml", "<Service Name=\"Birds\"");
    PreviewWindow& preview = Preview();
    ASSERT_TRUE(preview.Shown());
    EXPECT_EQ(Caption("File", "File.Count"), "none");
    EXPECT_TRUE(preview.HasErrors());
    EXPECT_EQ(preview.Problems().Count(), 1) << "the library's own message says no more";
    // A window that fails when it is opened is no reason to show the menus as they were.
    m_folder.Service("Birds", "BirdsSvc.Birds",
                     QByteArray(birds).replace("IsMDIChild=\"false\"", "IsMDIChild=\"true\""));
    ASSERT_TRUE(UntilShown(2));
    EXPECT_EQ(Caption("File", "File.Count"), "&Count");
    EXPECT_TRUE(Problem(0).endsWith("modal-mdi-child")) << Problem(0).toStdString();
    EXPECT_TRUE(preview.StateText().contains("error")) << preview.StateText().toStdString();
    m_folder.Write("App/Services/Birds.xml", "<Service Name=\"Birds\"");
    ASSERT_TRUE(Until([&] { return preview.StateText().contains("last valid state"); }));
    EXPECT_EQ(Caption("File", "File.Count"), "&Count");
}

TEST_F(PreviewFixture, ManyProblemsOfARuleAreCountedByFileBehindTheErrors) {
    QByteArray actions;
    QByteArray entries;
    for (int i = 1; i <= 20; ++i) {
        const QByteArray name = "Do" + QByteArray::number(i);
        actions += "<ActionItem Name=\"" + name + "\"/>";
        entries += "<MenuItem Type=\"MenuItem\" ActionItem=\"" + name + "\" Path=\"View\" PositionOrder=\"" +
                   QByteArray::number(100 + i) + "\" Caption=\"" + name + "\"/>";
    }
    m_folder.Service("Many", "ManySvc.Many",
                     "<ActionItems>" + actions + "</ActionItems><Menus>" + entries + "</Menus>");
    m_folder.Service("Birds", "BirdsSvc.Birds",
                     QByteArray(birds).replace("IsMDIChild=\"false\"", "IsMDIChild=\"true\""));
    ProblemList& list = Preview().Problems();
    ASSERT_EQ(list.topLevelItemCount(), 2);
    EXPECT_TRUE(Problem(0).endsWith("modal-mdi-child")) << Problem(0).toStdString();
    EXPECT_EQ(Problem(1).toStdString(), "20 times | A command has no procedure. |  | entry-without-procedure");
    QTreeWidgetItem* group = list.topLevelItem(1);
    EXPECT_FALSE(group->isExpanded()) << "it would push everything else out of sight";
    group->setExpanded(true);
    Edit("Many", "Caption=\"Do20\"", "Caption=\"Do it\"");
    ASSERT_TRUE(UntilShown(2));
    EXPECT_TRUE(list.topLevelItem(1)->isExpanded()) << "it is as the user has left it";
    list.topLevelItem(1)->setSelected(true);
    QTest::keyClick(&list, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().count("[entry-without-procedure]"), 20);
}

struct DroppedOn : MenuOutline {
    using MenuOutline::dropEvent;
};

TEST_F(PreviewFixture, EntryThatIsMovedInTheOutlineIsMovedInItsFile) {
    PreviewWindow& preview = Preview();
    auto* dock = preview.findChild<QDockWidget*>("Menus");
    dock->show();
    MenuOutline& outline = preview.Outline();
    const auto menu = [&](const char* heading) {
        const auto found = outline.findItems(heading, Qt::MatchExactly);
        return found.isEmpty() ? nullptr : found.front();
    };
    const auto keys = [&](const char* heading) {
        QStringList texts;
        for (int i = 0; menu(heading) && i < menu(heading)->childCount(); ++i)
            texts << menu(heading)->child(i)->text(0);
        return texts.join(" ").toStdString();
    };
    const auto Drag = [&](QTreeWidgetItem* from, QTreeWidgetItem* to) {
        outline.setCurrentItem(from);
        const QPoint at = outline.visualItemRect(to).bottomLeft() + QPoint(20, -1);
        QMimeData data;
        QDropEvent drop(at, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        (outline.*&DroppedOn::dropEvent)(&drop); // the toolkit drops what it has dragged itself
    };
    ASSERT_EQ(keys("menu File"), "File.Count File.Feed");
    const QByteArray before = m_folder.Read("App/Services/Birds.xml");
    Drag(menu("menu File")->child(0), menu("menu File")->child(1));
    ASSERT_TRUE(UntilShown(2));
    EXPECT_EQ(keys("menu File"), "File.Feed File.Count");
    EXPECT_EQ(outline.currentItem()->text(0).toStdString(), "File.Count");
    EXPECT_EQ(App().Bar()->Bands()->Item("File")->Tools()->Item(0)->Name(), "File.Feed");
    Drag(menu("menu File")->child(0), menu("menu bar")->child(0)); // of another menu: its Path says where it is
    EXPECT_EQ(keys("menu File"), "File.Feed File.Count");

    // With keys, and back.
    preview.activateWindow();
    outline.setFocus();
    outline.setCurrentItem(menu("menu File")->child(1));
    QTest::keyClick(&outline, Qt::Key_Up, Qt::AltModifier);
    ASSERT_TRUE(UntilShown(3));
    EXPECT_EQ(keys("menu File"), "File.Count File.Feed");
    outline.setCurrentItem(menu("menu File")->child(0));
    outline.ToggleLine();
    ASSERT_TRUE(UntilShown(4));
    EXPECT_EQ(menu("menu File")->childCount(), 3);
    while (outline.CanUndo())
        outline.Undo();
    EXPECT_EQ(m_folder.Read("App/Services/Birds.xml"), before);
    EXPECT_TRUE(Until([&] { return keys("menu File") == "File.Count File.Feed"; })) << keys("menu File");
    Rest();

    // What can't be written says why, and the outline is that of the file again.
    m_folder.Write("App/Services/Birds.xml.new/in the way", "");
    Rest();
    outline.setCurrentItem(menu("menu File")->child(0));
    outline.Move(1);
    EXPECT_TRUE(preview.StateText().contains("Birds.xml")) << preview.StateText().toStdString();
    EXPECT_TRUE(Until([&] { return keys("menu File") == "File.Count File.Feed"; })) << keys("menu File");
    EXPECT_EQ(m_folder.Read("App/Services/Birds.xml"), before);
}

// The entry that has a problem is marked, and is the current one when the problem is.
TEST_F(PreviewFixture, ProblemsAreMarkedAtTheEntriesTheyAreAbout) {
    m_folder.Service("Birds", "BirdsSvc.Birds", QByteArray(birds).replace("Control+K", "Contrl+K"));
    PreviewWindow& preview = Preview();
    preview.findChild<QDockWidget*>("Menus")->show();
    ASSERT_EQ(preview.Problems().Count(), 1);
    preview.Problems().setCurrentItem(preview.Problems().topLevelItem(0));
    const QTreeWidgetItem* current = preview.Outline().currentItem();
    ASSERT_TRUE(current);
    EXPECT_EQ(current->text(0).toStdString(), "File.Count");
    EXPECT_FALSE(current->icon(0).isNull());
    EXPECT_TRUE(current->toolTip(0).contains("Contrl+K")) << current->toolTip(0).toStdString();
}

// Whatever a tool does to the files, what stands there in the end is shown in the end.
TEST_F(PreviewFixture, FilesAreFollowedHoweverTheyAreChanged) {
    PreviewWindow& preview = Preview();
    const auto shows = [&](const char* caption) {
        return Until(
            [&] { return !preview.HasErrors() && preview.Shown() && Caption("File", "File.Count") == caption; });
    };
    const auto textFunction = [](const char* caption) {
        return QString("<Service Name=\"Birds\" ProgID=\"BirdsSvc.Birds\" Active=\"true\">%1</Service>")
            .arg(QString(birds).replace("\"#Count\"", QString("\"%1\"").arg(caption)))
            .toUtf8();
    };
    const QString birdsFile = m_folder.Path("App/Services/Birds.xml");
    for (const char* caption : {"Renamed", "Renamed again"}) { // the second time the file watched is another
        m_folder.Write("App/Services/.Birds.xml.new", textFunction(caption));
        std::filesystem::rename(m_folder.Path("App/Services/.Birds.xml.new").toStdString(), birdsFile.toStdString());
        EXPECT_TRUE(shows(caption));
    }
    {
        QFile file(birdsFile); // in pieces, of which none but the last is well formed
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        const QByteArray text = textFunction("Pieces");
        for (qsizetype i = 0; i < text.size(); i += 200) {
            file.write(text.mid(i, 200));
            file.flush();
            QTest::qWait(2);
        }
    }
    EXPECT_TRUE(shows("Pieces"));
    for (int i = 0; i < 300; ++i)
        m_folder.Write("App/Services/Birds.xml",
                       i % 3 == 0 ? QByteArray("<Serv") : textFunction(i == 299 ? "Last" : "Many"));
    EXPECT_TRUE(shows("Last"));

    // As a checkout does: many files at once, also removed and new ones.
    for (int i = 0; i < 40; ++i)
        m_folder.Service(QString("S%1").arg(i), QString("S%1.Service").arg(i), "");
    m_folder.Write("App/Services/Birds.xml", textFunction("Checkout"));
    EXPECT_TRUE(shows("Checkout"));
    EXPECT_TRUE(Until([&] { return Singleton::Framework()->ServiceManager()->ServiceDefs()->HasKey("S39"); }));
    for (int i = 0; i < 40; ++i)
        QFile::remove(m_folder.Path(QString("App/Services/S%1.xml").arg(i)));
    EXPECT_TRUE(Until([&] { return !Singleton::Framework()->ServiceManager()->ServiceDefs()->HasKey("S39"); }));
    QFile::remove(birdsFile);
    EXPECT_TRUE(Until([&] { return !App().Bar()->Tools()->Find("File.Count"); }));
    m_folder.Write("App/Services/Birds.xml", textFunction("Back"));
    EXPECT_TRUE(shows("Back"));
}

TEST_F(PreviewFixture, FolderThatGoesAndComesBackIsFollowed) {
    PreviewWindow& preview = Preview();
    std::string before = "#Count";
    for (const char* caption : {"Again", "And again"}) {
        const int shown = preview.ShownCount();
        ASSERT_TRUE(QDir().rename(m_folder.Path("App"), m_folder.Path("Away")));
        EXPECT_TRUE(Until([&] { return preview.HasErrors(); }));
        EXPECT_TRUE(Problem(0).contains("doesn't exist")) << Problem(0).toStdString();
        EXPECT_EQ(preview.ShownCount(), shown);
        ASSERT_TRUE(QDir().rename(m_folder.Path("Away"), m_folder.Path("App")));
        EXPECT_TRUE(Until([&] { return !preview.HasErrors(); }));
        Edit("Birds", before.c_str(), caption);
        before = caption;
        EXPECT_TRUE(Until([&] { return Caption("File", "File.Count") == caption; })) << caption;
    }
}

TEST_F(PreviewFixture, PicturesIniAndStandInsAreFollowed) {
    m_folder.Write("App/Images/owl.svg", Picture("#ff0000"));
    Edit("Birds", "Caption=\"#Feed\"/>",
         "Caption=\"#Feed\"/><MenuItem Type=\"ToolbarItem\" ActionItem=\"Feed\" Path=\"Bar\" PositionOrder=\"1\" "
         "Caption=\"Feed\"/>");
    Edit("Birds", "Name=\"Feed\" Action=", "Name=\"Feed\" Image=\"owl.svg\" Action=");
    PreviewWindow& preview = Preview();
    ASSERT_TRUE(preview.Shown()) << Problem(0).toStdString();
    const auto colour = [&] {
        const QToolBar* bar = Window().Bars().ToolbarOf(*App().Bar()->Bands()->Item("Toolbars.Bar"));
        return bar->actions().first()->icon().pixmap(16).toImage().pixelColor(8, 8).name();
    };
    EXPECT_EQ(colour(), "#ff0000");
    m_folder.Write("App/Images/owl.svg", Picture("#0000ff"));
    EXPECT_TRUE(UntilShown(2));
    EXPECT_EQ(colour(), "#0000ff");
    m_folder.Write("App/QRZ.INI", "[Product]\nQRZProductName=Aviary\n");
    EXPECT_TRUE(UntilShown(3));
    m_folder.Write("App/standins.json", R"({"objects": {"BirdsSvc.Owls": {"name": "Snowy"}}})");
    EXPECT_TRUE(UntilShown(4));
    EXPECT_NE(App().AsText().find("Snowy"), std::string::npos) << App().AsText();
    m_folder.Write("App/standins.json", "{");
    EXPECT_TRUE(Until([&] { return preview.HasErrors(); }));
    EXPECT_TRUE(Problem(0).contains("standins.json")) << Problem(0).toStdString();
}

TEST_F(PreviewFixture, MenusAndDialogsInWhichTheLibraryWaitsAreClosedAndOpenedAgain) {
    PreviewWindow& preview = Preview();
    // The library is inside the pop-up's own loop when the file changes.
    bool edited = false;
    QTimer edit;
    QObject::connect(&edit, &QTimer::timeout, [&] {
        if (!QApplication::activePopupWidget() || std::exchange(edited, true))
            return;
        Edit("Birds", "Caption=\"#Hoot\"", "Caption=\"#Screech\"");
    });
    edit.start(5);
    ClickNode(0, "Owls", Qt::RightButton);
    EXPECT_TRUE(edited);
    const auto menuFunction = [] {
        const auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        return menu && !menu->actions().isEmpty() ? menu->actions().first()->text().remove('&') : QString();
    };
    QString again;
    edit.stop();
    QTimer close;
    QObject::connect(&close, &QTimer::timeout, [&] {
        if (!menuFunction().isEmpty() && preview.ShownCount() == 2) {
            again = menuFunction();
            QApplication::activePopupWidget()->close();
        }
    });
    close.start(5);
    ASSERT_TRUE(UntilShown(2));
    EXPECT_TRUE(Until([&] { return !again.isEmpty(); }));
    close.stop();
    EXPECT_EQ(again, "Screech");

    // A modal window of stand-ins, which is waited for.
    bool askedAgain = false;
    QTimer::singleShot(0, [&] { Edit("Birds", "Caption=\"Ask\"", "Caption=\"Ask now\""); });
    QTimer end;
    QObject::connect(&end, &QTimer::timeout, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal && preview.ShownCount() >= 3) {
            askedAgain |= modal->windowTitle().startsWith("Ask now");
            modal->close();
        }
    });
    end.start(5);
    preview.OpenWindow("Ask");
    EXPECT_TRUE(UntilShown(3));
    EXPECT_TRUE(Until([&] { return askedAgain; }));
    EXPECT_TRUE(Until([] { return !QApplication::activeModalWidget(); }));
}

TEST_F(PreviewFixture, CallsTellTheBindingOfCommandsToStandInsAndPlugins) {
    m_folder.Service("Trouble", "T0.Service", R"(<ActionItems><ActionItem Name="Ping" Action="OnPing"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Ping" Path="View" PositionOrder="9" Caption="Ping"/></Menus>)");
    m_folder.Plugin("T0");
    Preview();
    EXPECT_EQ(Calls(), QStringList());
    ClickNode(0, "Owls");
    EXPECT_TRUE(App().Choose("File.Count"));
    EXPECT_TRUE(App().Choose("View.Ping"));
    EXPECT_EQ(Calls().filter(" | On").join("\n"), "File.Count | BirdsSvc.Birds#1 | OnCount | Count | stub\n"
                                                  "View.Ping | T0.Service#1 | OnPing | Ping | plug-in");
    EXPECT_NE(App().AsText().find("Status\n  Ping\n"), std::string::npos);

    // With stand-ins for all nothing of a plug-in runs; a file that is no plug-in is told and stood in for.
    m_preview.reset();
    m_folder.Write("App/plugins/libBirdsSvc.so", "nothing of the kind");
    PreviewOptions options;
    options.standIns = true;
    Preview(options);
    EXPECT_TRUE(App().Choose("View.Ping"));
    EXPECT_EQ(Calls().join("\n"), "View.Ping | T0.Service#1 | OnPing | Ping | stub");
    EXPECT_EQ(m_preview->Problems().Count(), 0);
    m_preview.reset();
    Preview();
    EXPECT_TRUE(Problem(0).contains("libBirdsSvc.so")) << Problem(0).toStdString();
    EXPECT_TRUE(App().Choose("File.Count"));
}

// Size and place of the window, and how much of it the list has, also when it isn't shown at the end.
TEST_F(PreviewFixture, StandsWhereItStoodTheLastTime) {
    const auto fail = [&] {
        Edit("Birds", "Caption=\"#Count\"", "Caption=\"#Count\" Wrong=\"1\"");
        ASSERT_TRUE(Until([&] { return m_preview->ProblemsDock().isVisible(); }));
        QApplication::processEvents();
    };
    const auto mend = [&] {
        Edit("Birds", " Wrong=\"1\"", "");
        ASSERT_TRUE(Until([&] { return !m_preview->ProblemsDock().isVisible(); }));
    };
    const auto end = [&] {
        EXPECT_TRUE(m_preview->close());
        m_preview.reset();
    };
    Preview();
    m_preview->setGeometry(40, 30, 700, 700);
    fail();
    m_preview->resizeDocks({&m_preview->ProblemsDock()}, {211}, Qt::Vertical);
    QApplication::processEvents();
    const int list = m_preview->ProblemsDock().height(); // below tabs
    ASSERT_GT(list, 170);
    mend();
    end();
    Preview();
    EXPECT_EQ(m_preview->geometry(), QRect(40, 30, 700, 700));
    EXPECT_TRUE(m_preview->ProblemsDock().isHidden());
    fail();
    EXPECT_EQ(m_preview->ProblemsDock().height(), list);
    m_preview->setGeometry(5000, 30, 3000, 700); // on a screen that is taken away
    end();
    Preview();
    EXPECT_TRUE(m_preview->screen()->availableGeometry().contains(m_preview->geometry()));
    EXPECT_EQ(m_preview->ProblemsDock().height(), list);
    mend();

    // What is no file of a preview's costs nothing, and nothing of the application's own session is touched.
    end();
    EXPECT_TRUE(m_folder.Read("corvane/App/session.json").isEmpty());
    m_folder.Write("corvane/App/preview.json", "[1]");
    Preview();
    EXPECT_EQ(m_preview->size(), QSize(1180, 900).boundedTo(m_preview->screen()->availableSize()));
}

TEST_F(PreviewFixture, ClosesWithTheApplicationAndTheApplicationWithIt) {
    PreviewWindow& preview = Preview();
    EXPECT_TRUE(preview.isVisible());
    App().MainForm()->Unload(); // as AppExit does
    EXPECT_TRUE(Until([&] { return !preview.isVisible(); }));
    m_preview.reset();
    PreviewWindow& other = Preview();
    const Ref<MdiForm> mainForm = App().MainForm();
    EXPECT_TRUE(other.close());
    EXPECT_FALSE(mainForm->IsLoaded());
}

} // namespace
} // namespace corvane::desktop
