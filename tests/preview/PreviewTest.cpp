#include "analysis/Check.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/services/ServiceManager.h"
#include "tests/preview/PreviewRoom.h"

#include <QScreen>
#include <QTabBar>
#include <QToolBar>
#include <filesystem>

namespace corvane::desktop {
namespace {

TEST_F(PreviewRoom, GoodEditIsShownAndSelectionWindowsAndOpenMenuStay) {
    PreviewWindow& oPreview = Preview();
    ASSERT_TRUE(oPreview.Shown());
    QWidget* const pDesk = oPreview.centralWidget();
    oPreview.OpenWindow("Sheet");
    Window().Explorer().TabBar()->setCurrentIndex(1);
    ClickNode(1, "Seas");
    Window().Explorer().TabBar()->setCurrentIndex(0);
    ClickNode(0, "Inner");
    QMenu* pFile = OpenMenu("File");
    ASSERT_TRUE(pFile);
    pFile->setActiveAction(pFile->actions().last());
    ASSERT_EQ(LitEntry(), "Feed");

    Edit("Birds", "Caption=\"#Count\"", "Caption=\"#Tally\"");
    ASSERT_TRUE(UntilShown(2));
    EXPECT_TRUE(Until([] { return LitEntry() == "Feed"; }));
    EXPECT_EQ(OpenMenuTitle(), "File");
    EXPECT_EQ(Caption("File", "File.Count"), "&Tally");
    EXPECT_EQ(Selected(0), "Inner");
    EXPECT_EQ(Window().Explorer().TabBar()->currentIndex(), 0);
    EXPECT_NE(App().AsText().find("Window Sheet (window, active)"), std::string::npos) << App().AsText();
    EXPECT_EQ(oPreview.centralWidget(), pDesk);
    EXPECT_TRUE(oPreview.ProblemsDock().isHidden());
    QApplication::activePopupWidget()->close();
}

TEST_F(PreviewRoom, WhatIsOpenAndGoesWithAnEditIsClosed) {
    PreviewWindow& oPreview = Preview();
    oPreview.OpenWindow("Sheet");
    ClickNode(0, "Inner");
    QMenu* pFile = OpenMenu("File");
    pFile->setActiveAction(pFile->actions().last());
    Edit("Birds",
         "<MenuItem Type=\"MenuItem\" ActionItem=\"Feed\" Path=\"File\" PositionOrder=\"2\" Caption=\"#Feed\"/>", "");
    ASSERT_TRUE(UntilShown(2));
    EXPECT_TRUE(Until([] { return OpenMenuTitle() == "File"; }));
    EXPECT_EQ(LitEntry(), ""); // the entry has gone, the menu hasn't

    Edit("Shell", "<MenuItem Type=\"MenuTitle\" ActionItem=\"File\" PositionOrder=\"1\" Caption=\"#File\"/>", "");
    Edit("Birds", "Path=\"File\" PositionOrder=\"1\"", "Path=\"View\" PositionOrder=\"8\"");
    Edit("Birds", "<Window Name=\"Sheet\"", "<Window Name=\"Other\"");
    Edit("Birds",
         "<ExplorerItem Name=\"Inner\" Type=\"Folder\" Parent=\"Nests\" PositionOrder=\"1\" Image=\"nest.svg\"/>", "");
    ASSERT_TRUE(UntilShown(3)) << Problem(0).toStdString() << oPreview.StateText().toStdString();
    Rest();
    EXPECT_FALSE(QApplication::activePopupWidget());
    EXPECT_EQ(Selected(0), "");
    EXPECT_EQ(App().AsText().find("Window Sheet"), std::string::npos);
    EXPECT_EQ(Caption("View", "View.Count"), "&Count");
}

TEST_F(PreviewRoom, BadEditIsListedOverTheLastGoodStateUntilItIsMended) {
    PreviewWindow& oPreview = Preview();
    ClickNode(0, "Inner");
    Edit("Birds", "Caption=\"#Count\"", "Caption=\"#Tally\" PositionOrdr=\"1\"");
    ASSERT_TRUE(Until([&] { return oPreview.HasErrors(); }));
    EXPECT_EQ(oPreview.ShownCount(), 1);
    EXPECT_EQ(Caption("File", "File.Count"), "&Count");
    EXPECT_TRUE(oPreview.ProblemsDock().isVisible());
    auto aFindings = check::Check({m_oFolder.App(), false});
    std::erase_if(aFindings, [](const auto& oFinding) { return oFinding.eRule == check::Rule::MissingPlugin; });
    ASSERT_EQ(oPreview.Problems().Count(), static_cast<int>(aFindings.size()));
    const auto& oFirst = aFindings.front();
    EXPECT_EQ(Problem(0).toStdString(), "Services/Birds.xml:" + std::to_string(oFirst.oPlace.oAt.lLine) + ":" +
                                            std::to_string(oFirst.oPlace.oAt.lColumn) + " | " + oFirst.sText + " | " +
                                            oFirst.sCure + " | " + std::string(check::TextOf(oFirst.eRule).sName));
    EXPECT_TRUE(oPreview.StateText().contains("last valid state")) << oPreview.StateText().toStdString();
    EXPECT_TRUE(App().Choose("View.Bar")); // it goes on working

    Edit("Birds", "PositionOrdr=\"1\"", "");
    ASSERT_TRUE(UntilShown(2));
    EXPECT_FALSE(oPreview.HasErrors());
    EXPECT_TRUE(oPreview.ProblemsDock().isHidden());
    EXPECT_EQ(Caption("File", "File.Count"), "&Tally");
    EXPECT_EQ(Selected(0), "Inner");
}

TEST_F(PreviewRoom, BadFilesAtTheStartAreListedAndTheApplicationComesWhenTheyAreMended) {
    m_oFolder.Write("App/Services/Birds.xml", "<Service Name=\"Birds\"");
    PreviewWindow& oPreview = Preview();
    EXPECT_FALSE(oPreview.Shown());
    EXPECT_GT(oPreview.Problems().Count(), 0);
    m_oFolder.Service("Birds", "BirdsSvc.Birds", sBirds);
    ASSERT_TRUE(UntilShown(1));
    EXPECT_EQ(Caption("File", "File.Count"), "&Count");
    EXPECT_TRUE(oPreview.ProblemsDock().isHidden());
}

// Whatever a tool does to the files, what stands there in the end is shown in the end.
TEST_F(PreviewRoom, FilesAreFollowedHoweverTheyAreChanged) {
    PreviewWindow& oPreview = Preview();
    const auto fnShows = [&](const char* sCaption) {
        return Until(
            [&] { return !oPreview.HasErrors() && oPreview.Shown() && Caption("File", "File.Count") == sCaption; });
    };
    const auto fnText = [](const char* sCaption) {
        return QString("<Service Name=\"Birds\" ProgID=\"BirdsSvc.Birds\" Active=\"true\">%1</Service>")
            .arg(QString(sBirds).replace("\"#Count\"", QString("\"%1\"").arg(sCaption)))
            .toUtf8();
    };
    const QString sBirdsFile = m_oFolder.Path("App/Services/Birds.xml");
    for (const char* sCaption : {"Renamed", "Renamed again"}) { // the second time the file watched is another
        m_oFolder.Write("App/Services/.Birds.xml.new", fnText(sCaption));
        std::filesystem::rename(m_oFolder.Path("App/Services/.Birds.xml.new").toStdString(), sBirdsFile.toStdString());
        EXPECT_TRUE(fnShows(sCaption));
    }
    {
        QFile oFile(sBirdsFile); // in pieces, of which none but the last is well formed
        ASSERT_TRUE(oFile.open(QIODevice::WriteOnly));
        const QByteArray aText = fnText("Pieces");
        for (qsizetype i = 0; i < aText.size(); i += 200) {
            oFile.write(aText.mid(i, 200));
            oFile.flush();
            QTest::qWait(2);
        }
    }
    EXPECT_TRUE(fnShows("Pieces"));
    for (int i = 0; i < 300; ++i)
        m_oFolder.Write("App/Services/Birds.xml",
                        i % 3 == 0 ? QByteArray("<Serv") : fnText(i == 299 ? "Last" : "Many"));
    EXPECT_TRUE(fnShows("Last"));

    // As a checkout does: many files at once, also removed and new ones.
    for (int i = 0; i < 40; ++i)
        m_oFolder.Service(QString("S%1").arg(i), QString("S%1.Service").arg(i), "");
    m_oFolder.Write("App/Services/Birds.xml", fnText("Checkout"));
    EXPECT_TRUE(fnShows("Checkout"));
    EXPECT_TRUE(Until([&] { return Singleton::Framework()->ServiceManager()->ServiceDefs()->HasKey("S39"); }));
    for (int i = 0; i < 40; ++i)
        QFile::remove(m_oFolder.Path(QString("App/Services/S%1.xml").arg(i)));
    EXPECT_TRUE(Until([&] { return !Singleton::Framework()->ServiceManager()->ServiceDefs()->HasKey("S39"); }));
    QFile::remove(sBirdsFile);
    EXPECT_TRUE(Until([&] { return !App().Bar()->Tools()->Find("File.Count"); }));
    m_oFolder.Write("App/Services/Birds.xml", fnText("Back"));
    EXPECT_TRUE(fnShows("Back"));
}

TEST_F(PreviewRoom, FolderThatGoesAndComesBackIsFollowed) {
    PreviewWindow& oPreview = Preview();
    std::string sBefore = "#Count";
    for (const char* sCaption : {"Again", "And again"}) {
        const int nShown = oPreview.ShownCount();
        ASSERT_TRUE(QDir().rename(m_oFolder.Path("App"), m_oFolder.Path("Away")));
        EXPECT_TRUE(Until([&] { return oPreview.HasErrors(); }));
        EXPECT_TRUE(Problem(0).contains("isn't there")) << Problem(0).toStdString();
        EXPECT_EQ(oPreview.ShownCount(), nShown);
        ASSERT_TRUE(QDir().rename(m_oFolder.Path("Away"), m_oFolder.Path("App")));
        EXPECT_TRUE(Until([&] { return !oPreview.HasErrors(); }));
        Edit("Birds", sBefore.c_str(), sCaption);
        sBefore = sCaption;
        EXPECT_TRUE(Until([&] { return Caption("File", "File.Count") == sCaption; })) << sCaption;
    }
}

TEST_F(PreviewRoom, PicturesIniAndStandInsAreFollowed) {
    m_oFolder.Write("App/Images/owl.svg", Picture("#ff0000"));
    Edit("Birds", "Caption=\"#Feed\"/>",
         "Caption=\"#Feed\"/><MenuItem Type=\"ToolbarItem\" ActionItem=\"Feed\" Path=\"Bar\" PositionOrder=\"1\" "
         "Caption=\"Feed\"/>");
    Edit("Birds", "Name=\"Feed\" Action=", "Name=\"Feed\" Image=\"owl.svg\" Action=");
    PreviewWindow& oPreview = Preview();
    ASSERT_TRUE(oPreview.Shown()) << Problem(0).toStdString();
    const auto fnColour = [&] {
        const QToolBar* pBar = Window().Bars().ToolbarOf(*App().Bar()->Bands()->Item("Toolbars.Bar"));
        return pBar->actions().first()->icon().pixmap(16).toImage().pixelColor(8, 8).name();
    };
    EXPECT_EQ(fnColour(), "#ff0000");
    m_oFolder.Write("App/Images/owl.svg", Picture("#0000ff"));
    EXPECT_TRUE(UntilShown(2));
    EXPECT_EQ(fnColour(), "#0000ff");
    m_oFolder.Write("App/QRZ.INI", "[Product]\nQRZProductName=Aviary\n");
    EXPECT_TRUE(UntilShown(3));
    m_oFolder.Write("App/standins.json", R"({"objects": {"BirdsSvc.Owls": {"name": "Snowy"}}})");
    EXPECT_TRUE(UntilShown(4));
    EXPECT_NE(App().AsText().find("Snowy"), std::string::npos) << App().AsText();
    m_oFolder.Write("App/standins.json", "{");
    EXPECT_TRUE(Until([&] { return oPreview.HasErrors(); }));
    EXPECT_TRUE(Problem(0).contains("standins.json")) << Problem(0).toStdString();
}

TEST_F(PreviewRoom, MenusAndDialogsInWhichTheLibraryWaitsAreClosedAndOpenedAgain) {
    PreviewWindow& oPreview = Preview();
    // The library is inside the pop-up's own loop when the file changes.
    bool bEdited = false;
    QTimer oEdit;
    QObject::connect(&oEdit, &QTimer::timeout, [&] {
        if (!QApplication::activePopupWidget() || std::exchange(bEdited, true))
            return;
        Edit("Birds", "Caption=\"#Hoot\"", "Caption=\"#Screech\"");
    });
    oEdit.start(5);
    ClickNode(0, "Owls", Qt::RightButton);
    EXPECT_TRUE(bEdited);
    const auto fnMenu = [] {
        const auto* pMenu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        return pMenu && !pMenu->actions().isEmpty() ? pMenu->actions().first()->text().remove('&') : QString();
    };
    QString sAgain;
    oEdit.stop();
    QTimer oClose;
    QObject::connect(&oClose, &QTimer::timeout, [&] {
        if (!fnMenu().isEmpty() && oPreview.ShownCount() == 2) {
            sAgain = fnMenu();
            QApplication::activePopupWidget()->close();
        }
    });
    oClose.start(5);
    ASSERT_TRUE(UntilShown(2));
    EXPECT_TRUE(Until([&] { return !sAgain.isEmpty(); }));
    oClose.stop();
    EXPECT_EQ(sAgain, "Screech");

    // A modal window of stand-ins, which is waited for.
    bool bAgain = false;
    QTimer::singleShot(0, [&] { Edit("Birds", "Caption=\"Ask\"", "Caption=\"Ask now\""); });
    QTimer oEnd;
    QObject::connect(&oEnd, &QTimer::timeout, [&] {
        QWidget* pModal = QApplication::activeModalWidget();
        if (pModal && oPreview.ShownCount() >= 3) {
            bAgain |= pModal->windowTitle().startsWith("Ask now");
            pModal->close();
        }
    });
    oEnd.start(5);
    oPreview.OpenWindow("Ask");
    EXPECT_TRUE(UntilShown(3));
    EXPECT_TRUE(Until([&] { return bAgain; }));
    EXPECT_TRUE(Until([] { return !QApplication::activeModalWidget(); }));
}

TEST_F(PreviewRoom, CallsTellTheBindingOfCommandsToStandInsAndPlugins) {
    m_oFolder.Service("Trouble", "T0.Service", R"(<ActionItems><ActionItem Name="Ping" Action="OnPing"/></ActionItems>
<Menus><MenuItem Type="MenuItem" ActionItem="Ping" Path="View" PositionOrder="9" Caption="Ping"/></Menus>)");
    m_oFolder.Plugin("T0");
    Preview();
    EXPECT_EQ(Calls(), QStringList());
    ClickNode(0, "Owls");
    EXPECT_TRUE(App().Choose("File.Count"));
    EXPECT_TRUE(App().Choose("View.Ping"));
    EXPECT_EQ(Calls().filter(" | On").join("\n"), "File.Count | BirdsSvc.Birds#1 | OnCount | Count | stub\n"
                                                  "View.Ping | T0.Service#1 | OnPing | Ping | plug-in");
    EXPECT_NE(App().AsText().find("Status\n  Ping\n"), std::string::npos);

    // With stand-ins for all nothing of a plug-in runs; a file that is no plug-in is told and stood in for.
    m_pPreview.reset();
    m_oFolder.Write("App/plugins/libBirdsSvc.so", "nothing of the kind");
    PreviewOptions oOptions;
    oOptions.bStandIns = true;
    Preview(oOptions);
    EXPECT_TRUE(App().Choose("View.Ping"));
    EXPECT_EQ(Calls().join("\n"), "View.Ping | T0.Service#1 | OnPing | Ping | stub");
    EXPECT_EQ(m_pPreview->Problems().Count(), 0);
    m_pPreview.reset();
    Preview();
    EXPECT_TRUE(Problem(0).contains("libBirdsSvc.so")) << Problem(0).toStdString();
    EXPECT_TRUE(App().Choose("File.Count"));
}

// Size and place of the window, and how much of it the list has, also when it isn't shown at the end.
TEST_F(PreviewRoom, StandsWhereItStoodTheLastTime) {
    const auto fnFail = [&] {
        Edit("Birds", "Caption=\"#Count\"", "Caption=\"#Count\" Wrong=\"1\"");
        ASSERT_TRUE(Until([&] { return m_pPreview->ProblemsDock().isVisible(); }));
        QApplication::processEvents();
    };
    const auto fnMend = [&] {
        Edit("Birds", " Wrong=\"1\"", "");
        ASSERT_TRUE(Until([&] { return !m_pPreview->ProblemsDock().isVisible(); }));
    };
    const auto fnEnd = [&] {
        EXPECT_TRUE(m_pPreview->close());
        m_pPreview.reset();
    };
    Preview();
    m_pPreview->setGeometry(40, 30, 700, 700);
    fnFail();
    m_pPreview->resizeDocks({&m_pPreview->ProblemsDock()}, {211}, Qt::Vertical);
    QApplication::processEvents();
    const int nList = m_pPreview->ProblemsDock().height(); // below tabs
    ASSERT_GT(nList, 170);
    fnMend();
    fnEnd();
    Preview();
    EXPECT_EQ(m_pPreview->geometry(), QRect(40, 30, 700, 700));
    EXPECT_TRUE(m_pPreview->ProblemsDock().isHidden());
    fnFail();
    EXPECT_EQ(m_pPreview->ProblemsDock().height(), nList);
    m_pPreview->setGeometry(5000, 30, 3000, 700); // on a screen that is taken away
    fnEnd();
    Preview();
    EXPECT_TRUE(m_pPreview->screen()->availableGeometry().contains(m_pPreview->geometry()));
    EXPECT_EQ(m_pPreview->ProblemsDock().height(), nList);
    fnMend();

    // What is no file of a preview's costs nothing, and nothing of the application's own session is touched.
    fnEnd();
    EXPECT_TRUE(m_oFolder.Read("corvane/App/session.json").isEmpty());
    m_oFolder.Write("corvane/App/preview.json", "[1]");
    Preview();
    EXPECT_EQ(m_pPreview->size(), QSize(1180, 900).boundedTo(m_pPreview->screen()->availableSize()));
}

TEST_F(PreviewRoom, ClosesWithTheApplicationAndTheApplicationWithIt) {
    PreviewWindow& oPreview = Preview();
    EXPECT_TRUE(oPreview.isVisible());
    App().MainForm()->Unload(); // as AppExit does
    EXPECT_TRUE(Until([&] { return !oPreview.isVisible(); }));
    m_pPreview.reset();
    PreviewWindow& oOther = Preview();
    const Ref<MdiForm> frmMain = App().MainForm();
    EXPECT_TRUE(oOther.close());
    EXPECT_FALSE(frmMain->IsLoaded());
}

} // namespace
} // namespace corvane::desktop
