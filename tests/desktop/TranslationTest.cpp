#include "desktop/application/Application.h"
#include "desktop/explorer/ExplorerPanel.h"
#include "desktop/failures/FailureDialog.h"
#include "desktop/palette/PaletteDialog.h"
#include "desktop/translation/HostTranslation.h"
#include "desktop/translation/ShownText.h"
#include "tests/desktop/AppFolder.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QProcess>
#include <QTabBar>
#include <QToolBar>

namespace corvane::desktop {
namespace {

// The program in a process of its own, with the preferences open.
QString PreferencesIn(const AppFolder& oFolder, const char* sLanguages) {
    QProcess oProgram;
    auto oEnvironment = QProcessEnvironment::systemEnvironment();
    oEnvironment.insert("LANG", "C.UTF-8");
    oEnvironment.remove("LC_ALL");
    oEnvironment.insert("LANGUAGE", sLanguages);
    oProgram.setProcessEnvironment(oEnvironment);
    oProgram.start(CORVANE_DESKTOP_PROGRAM,
                   {QString::fromStdString(oFolder.App()), "--choose", "Tools.Preferences", "--print", "--quit"});
    EXPECT_TRUE(oProgram.waitForFinished(60000));
    return QString::fromUtf8(oProgram.readAllStandardOutput());
}

TEST(Translation, HostSpeaksTheFirstLanguageThatItKnows) {
    AppFolder oFolder;
    oFolder.Service("Shell", "Corvane.Framework", sShellContent);
    struct Case {
        const char* sLanguages;
        const char* sApply;
        const char* sTheme;
    };
    for (const Case& oCase :
         {Case{"de_AT", "[Anwenden (off)]", "Design:"}, Case{"xx:fr:de", "[Appliquer (off)]", "Thème\u00a0:"},
          Case{"en_GB:de", "[Apply (off)]", "Theme:"}, Case{"xx", "[Apply (off)]", "Theme:"}}) {
        const QString sShown = PreferencesIn(oFolder, oCase.sLanguages);
        EXPECT_TRUE(sShown.contains(oCase.sApply) && sShown.contains(oCase.sTheme)) << oCase.sLanguages << "\n"
                                                                                    << sShown.toStdString();
    }
}

TEST(Translation, StandardButtonsAreTranslatedWithTheDialogAroundThem) {
    const auto fnShown = [](const QStringList& aLanguages) {
        const HostTranslation oTranslation(aLanguages);
        FailureDialog oDialog({"A", "b.xml, line 3", {}, {}, {}}, {}, QString(), QString(), nullptr);
        QStringList aTexts{oDialog.windowTitle()};
        for (const QAbstractButton* pButton : oDialog.findChildren<QAbstractButton*>())
            aTexts.append(QString(pButton->text()).remove('&'));
        aTexts.sort();
        return aTexts.join("|");
    };
    EXPECT_EQ(fnShown({"de"}), "Details|Ein Fehler ist aufgetreten|Kopieren|Schließen");
    EXPECT_EQ(fnShown({}), "An Error Occurred|Close|Copy|Details"); // the translation has gone with its object
}

constexpr const char* sGerman = R"(msgid ""
msgstr "Content-Type: text/plain; charset=UTF-8\n"

msgctxt "Service Shell/MenuTitle View/Caption"
msgid "#View"
msgstr "#Ansicht"

msgctxt "Service Shell/MenuItem View.Navigation/Caption"
msgid "#Explorer"
msgstr "Über#sicht"

msgctxt "Service Shell/MenuItem View.Bar/Caption"
msgid "#Status"
msgstr "passt nicht mehr zum Text"

msgctxt "Service Trouble/MenuItem View.Open/Caption"
msgid "Open %1"
msgstr "%1 öffnen"

msgctxt "Service Trouble/ActionItem Open/Description"
msgid "Opens a sheet"
msgstr "Öffnet ein Blatt"

msgctxt "Service Trouble/ToolbarItem Main.Open/Tip"
msgid "Open a sheet"
msgstr "Ein Blatt öffnen"

msgctxt "Toolbar Main"
msgid "Main"
msgstr "Haupt"

msgctxt "ExplorerItem Root/Name"
msgid "Root"
msgstr "Wurzel"

msgctxt "Window Sheet/Caption"
msgid "Sheet"
msgstr "Blatt"

msgctxt "Window Sheet/Page T0.Page/Caption"
msgid "P"
msgstr "Seite"
)";

class DefinitionTranslationTest : public ::testing::Test {
protected:
    DefinitionTranslationTest() {
        m_oFolder.Service("Shell", "Corvane.Framework", sShellContent);
        m_oFolder.Plugin("T0");
        m_oFolder.Service("Trouble", "T0.Service", R"(<ActionItems>
<ActionItem Name="Open" Action="OnOpen" Description="Opens a sheet"/></ActionItems><Menus>
<MenuItem Type="MenuItem" ActionItem="Open" Path="View" PositionOrder="5" Caption="Open %1"/>
<MenuItem Type="ToolbarItem" ActionItem="Open" Path="Main" PositionOrder="10" Caption="Sheet" Tip="Open a sheet"/></Menus>
<ExplorerItems><ExplorerItem Name="Root" Type="Folder"/></ExplorerItems><Windows>
<Window Name="Sheet" Caption="Sheet" Type="Window" State="Normal" IsMDIChild="true" IsModal="false">
<Page PageProgID="T0.Page" Caption="P" IsOptional="false" IsResizable="true"/>
<Page PageProgID="T0.Page" Caption="Q" IsOptional="false" IsResizable="true"/></Window></Windows>)",
                          "IsStartService=\"true\"");
    }
    void Start(const QStringList& aLanguages) {
        ApplicationOptions oOptions;
        oOptions.sFolder = m_oFolder.App();
        oOptions.bWithDialogs = false;
        oOptions.aLanguages = aLanguages;
        m_pApplication = std::make_unique<Application>(oOptions);
        ASSERT_TRUE(m_pApplication->Start());
        QCoreApplication::processEvents();
    }
    // The entries of a menu, or the buttons of a toolbar.
    [[nodiscard]] QString Band(const char* sBand) const {
        const std::unique_ptr<QMenu> pMenu(
            m_pApplication->Window().Bars().NewPopup(m_pApplication->Bar()->Bands()->Item(sBand)));
        QStringList aTexts;
        for (const QAction* pAction : pMenu->actions())
            aTexts.append(pAction->text().section('\t', 0, 0));
        return aTexts.join("|");
    }
    [[nodiscard]] QString Tabs() const {
        const auto* pTabs = m_pApplication->Window().findChild<ExplorerPanel*>()->findChild<QTabBar*>();
        const auto* pTree = m_pApplication->Window().findChild<ExplorerPanel*>()->Page(0)->Tree();
        const QModelIndex oRoot = pTree->model()->index(0, 0);
        return pTabs->tabText(0) + "|" + oRoot.data().toString() + "|" + oRoot.data(Qt::EditRole).toString();
    }

    AppFolder m_oFolder;
    std::unique_ptr<Application> m_pApplication;
};

TEST_F(DefinitionTranslationTest, TextsAreTranslatedWhereTheyAreDrawn) {
    m_oFolder.Write("App/Services/translations/de.po", sGerman);
    Start({"de-AT", "de"});
    // What has no translation, or one of another text, is shown as it is. The library's own "Toolbars" is the host's.
    EXPECT_EQ(Band("View"), "Über&sicht|&Status Bar|%1 öffnen|Toolbars");
    EXPECT_EQ(Band("Toolbars.Main"), "Sheet");
    const QToolBar* pToolbar =
        m_pApplication->Window().Bars().ToolbarOf(*m_pApplication->Bar()->Bands()->Item("Toolbars.Main"));
    ASSERT_TRUE(pToolbar);
    EXPECT_EQ(pToolbar->windowTitle(), "Haupt");
    EXPECT_EQ(pToolbar->actions().front()->toolTip(), "Ein Blatt öffnen");
    EXPECT_EQ(pToolbar->actions().front()->statusTip(), "Öffnet ein Blatt");
    EXPECT_EQ(Tabs(), "Wurzel|Wurzel|Root"); // who renames it changes its own name
    // What code writes isn't touched, and names find what they found.
    m_pApplication->Bar()->Bands()->Item("View")->Tools()->Item("View.Navigation")->SetCaption("Not &Explorer");
    EXPECT_EQ(Band("View").section('|', 0, 0), "Not &Explorer");
    ASSERT_TRUE(m_pApplication->Choose("View.Open"));
    EXPECT_TRUE(QString::fromStdString(m_pApplication->AsText()).contains("Window Sheet"));
    for (const auto& frm : m_pApplication->MainForm()->Forms()) {
        EXPECT_EQ(TitleOf(*frm), "Blatt");
        const auto oForm = frm.As<WindowForm>();
        EXPECT_EQ(oForm->Frame()->windowTitle(), "Blatt[*]");
        const auto* pTabs = oForm->Body()->findChild<QTabBar*>();
        EXPECT_EQ(pTabs->tabText(0) + pTabs->tabText(1), "SeiteQ");
        frm->SetCaption("Sheet 7");
        EXPECT_EQ(TitleOf(*frm), "Sheet 7");
    }
}

TEST_F(DefinitionTranslationTest, CommandsAreFoundInBothLanguages) {
    m_oFolder.Write("App/Services/translations/de.po", sGerman);
    Start({"de"});
    for (const char* sTyped : {"über", "explorer"}) {
        PaletteDialog* pPalette = m_pApplication->Personal().ShowPalette();
        pPalette->Field().setText(sTyped);
        EXPECT_EQ(pPalette->List().model()->index(0, 0).data().toString(), "Übersicht") << sTyped;
        pPalette->reject();
        delete pPalette;
    }
}

TEST_F(DefinitionTranslationTest, WithoutACatalogueTextsAreThoseOfTheFiles) {
    for (const QStringList& aLanguages : {QStringList(), QStringList{"fr"}}) {
        m_oFolder.Write("App/Services/translations/de.po", sGerman);
        Start(aLanguages);
        EXPECT_EQ(Band("View"), "&Explorer|&Status Bar|Open %1|Toolbars");
        EXPECT_EQ(Tabs(), "Root|Root|Root");
        // The host's own definitions have their catalogues in it.
        EXPECT_EQ(Band("Tools").section('|', 0, 0),
                  aLanguages.isEmpty() ? "&Command Palette…" : "&Palette de commandes…");
        m_pApplication.reset();
    }
}

TEST_F(DefinitionTranslationTest, BrokenCatalogueIsReportedAndNotUsed) {
    struct Case {
        QByteArray aCatalogue;
        const char* sFirst; // entry of the menu
        const char* sLogged;
    };
    for (const Case& oCase :
         {Case{QByteArray(sGerman) + "msgid \"x\n", "&Explorer", "de.po, line 43: a string must stand between"},
          Case{QByteArray(sGerman).replace("Ü", "\xDC"), "&Explorer", "de.po, line 10: isn't UTF-8"},
          Case{QByteArray(sGerman).replace("%1 öffnen", "öffnen"), "Über&sicht",
               "de.po, line 17: the translation \"öffnen\" of \"Open %1\" isn't used"},
          Case{QByteArray("\0\x1\x2", 3), "&Explorer", "de.po, line 1: holds a zero byte"}}) {
        m_oFolder.Write("App/Services/translations/de.po", oCase.aCatalogue);
        Start({"de"});
        EXPECT_EQ(Band("View"), QString(oCase.sFirst) + "|&Status Bar|Open %1|Toolbars") << oCase.sLogged;
        EXPECT_TRUE(m_oFolder.Read("corvane/App/errors.log").contains(oCase.sLogged))
            << oCase.sLogged << "\n"
            << m_oFolder.Read("corvane/App/errors.log").toStdString();
        m_pApplication.reset();
    }
}

} // namespace
} // namespace corvane::desktop
