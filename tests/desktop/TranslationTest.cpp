#include "corvane/author/Translation.h"

#include "adapters/files/SettingsStore.h"
#include "desktop/application/Application.h"
#include "desktop/application/MainWindow.h"
#include "desktop/application/PersonalDesktop.h"
#include "desktop/explorer/ExplorerPanel.h"
#include "desktop/failures/FailureDialog.h"
#include "desktop/forms/FormTexts.h"
#include "desktop/palette/PaletteDialog.h"
#include "desktop/platform/Identity.h"
#include "desktop/translation/HostTranslation.h"
#include "desktop/translation/ShownText.h"
#include "desktop/windows/WindowForm.h"
#include "forms/FormBinding.h"
#include "tests/desktop/AppFolder.h"

#include <QAbstractButton>
#include <QDockWidget>
#include <QLineEdit>
#include <QListView>
#include <QLocale>
#include <QMenu>
#include <QProcess>
#include <QTabBar>
#include <QToolBar>

namespace corvane::desktop {
namespace {

// The program in a process of its own, with the preferences open.
QString PreferencesIn(const AppFolder& folder, const char* languages) {
    QProcess program;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LANG", "C.UTF-8");
    environment.remove("LC_ALL");
    environment.insert("LANGUAGE", languages);
    program.setProcessEnvironment(environment);
    program.start(CORVANE_DESKTOP_PROGRAM,
                  {QString::fromStdString(folder.App()), "--choose", "Tools.Preferences", "--print", "--quit"});
    EXPECT_TRUE(program.waitForFinished(60000));
    return QString::fromUtf8(program.readAllStandardOutput());
}

TEST(Translation, HostSpeaksTheFirstLanguageThatItKnows) {
    AppFolder folder;
    folder.Service("Shell", "Corvane.Framework", shellContent);
    struct Case {
        const char* languages;
        const char* apply;
        const char* theme;
    };
    for (const Case& testCase :
         {Case{"de_AT", "[Anwenden (off)]", "Design:"}, Case{"xx:fr:de", "[Appliquer (off)]", "Thème\u00a0:"},
          Case{"en_GB:de", "[Apply (off)]", "Theme:"}, Case{"xx", "[Apply (off)]", "Theme:"}}) {
        const QString shown = PreferencesIn(folder, testCase.languages);
        EXPECT_TRUE(shown.contains(testCase.apply) && shown.contains(testCase.theme)) << testCase.languages << "\n"
                                                                                      << shown.toStdString();
    }
    SettingsStore(ReadIdentity(folder.App()).Settings()).Write("Corvane.Desktop", "Appearance", "Language", "fr");
    const QString chosen = PreferencesIn(folder, "de");
    EXPECT_TRUE(chosen.contains("[Appliquer (off)]") && chosen.contains("Français")) << chosen.toStdString();
}

TEST(Translation, StandardButtonsAreTranslatedWithTheDialogAroundThem) {
    const auto shown = [](const QStringList& languages) {
        const HostTranslation translation(languages);
        FailureDialog dialog({"A", "b.xml, line 3", {}, {}, {}}, {}, QString(), QString(), nullptr);
        QStringList texts{dialog.windowTitle()};
        for (const QAbstractButton* button : dialog.findChildren<QAbstractButton*>())
            texts.append(QString(button->text()).remove('&'));
        texts.sort();
        return texts.join("|");
    };
    EXPECT_EQ(shown({"de"}), "Details|Ein Fehler ist aufgetreten|Kopieren|Schließen");
    EXPECT_EQ(shown({}), "An Error Occurred|Close|Copy|Details"); // the translation has gone with its object
}

// Each kind of problem of a field, with the words for what is expected, and numbers as the language writes them.
TEST(Translation, ProblemsOfFieldsAreSaidInTheUsersLanguage) {
    const QLocale before;
    for (const char* language : {"de", "fr"}) {
        const HostTranslation translation(QStringList{language});
        QLocale::setDefault(QLocale(language));
        for (int i = 1; i < static_cast<int>(forms::ProblemKind::Own); ++i) {
            const forms::Problem problem{static_cast<forms::ProblemKind>(i), {"1.5", "2"}};
            const QString shown = ShownProblem(problem);
            EXPECT_NE(shown.toStdString(), problem.Text()) << language;
            EXPECT_FALSE(shown.contains('%')) << shown.toStdString();
            EXPECT_TRUE(problem.kind != forms::ProblemKind::OutOfRange || shown.contains("1,5")) << shown.toStdString();
        }
        for (const ValueType type : {ValueType::Boolean, ValueType::Int32, ValueType::Float64, ValueType::Text}) {
            const std::string words(forms::WordsOf(type));
            const forms::Problem problem{forms::ProblemKind::NotConvertible, {words}};
            EXPECT_EQ(ShownProblem(problem).indexOf(QString::fromStdString(words)), -1) << words;
        }
    }
    QLocale::setDefault(before);
    EXPECT_EQ(ShownProblem({forms::ProblemKind::Own, {"100 %1"}}), "100 %1"); // as the page says it
}

constexpr const char* german = R"(msgid ""
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

msgctxt "Source"
msgid "%1 sheets of %2"
msgstr "%2: %1 Blätter"
)";

class DefinitionTranslationTest : public ::testing::Test {
protected:
    DefinitionTranslationTest() {
        m_folder.Service("Shell", "Corvane.Framework", shellContent);
        m_folder.Plugin("T0");
        m_folder.Service("Trouble", "T0.Service", R"(<ActionItems>
<ActionItem Name="Open" Action="OnOpen" Description="Opens a sheet"/></ActionItems><Menus>
<MenuItem Type="MenuItem" ActionItem="Open" Path="View" PositionOrder="5" Caption="Open %1"/>
<MenuItem Type="ToolbarItem" ActionItem="Open" Path="Main" PositionOrder="10" Caption="Sheet" Tip="Open a sheet"/></Menus>
<ExplorerItems><ExplorerItem Name="Root" Type="Folder"/></ExplorerItems><Windows>
<Window Name="Sheet" Caption="Sheet" Type="Window" State="Normal" IsMDIChild="true" IsModal="false">
<Page PageProgID="T0.Page" Caption="P" IsOptional="false" IsResizable="true"/>
<Page PageProgID="T0.Page" Caption="Q" IsOptional="false" IsResizable="true"/></Window></Windows>)",
                         "IsStartService=\"true\"");
    }
    void Start(const QStringList& languages) {
        ApplicationOptions options;
        options.folder = m_folder.App();
        options.withDialogs = false;
        options.languages = languages;
        m_application = std::make_unique<Application>(options);
        ASSERT_TRUE(m_application->Start());
        QCoreApplication::processEvents();
    }
    // The entries of a menu, or the buttons of a toolbar.
    [[nodiscard]] QString Band(const char* band) const {
        const std::unique_ptr<QMenu> menu(
            m_application->Window().Bars().NewPopup(m_application->Bar()->Bands()->Item(band)));
        QStringList texts;
        for (const QAction* action : menu->actions())
            texts.append(action->text().section('\t', 0, 0));
        return texts.join("|");
    }
    [[nodiscard]] QString Tabs() const {
        const auto* tabs = m_application->Window().findChild<ExplorerPanel*>()->findChild<QTabBar*>();
        const auto* tree = m_application->Window().findChild<ExplorerPanel*>()->Page(0)->Tree();
        const QModelIndex root = tree->model()->index(0, 0);
        return tabs->tabText(0) + "|" + root.data().toString() + "|" + root.data(Qt::EditRole).toString();
    }

    AppFolder m_folder;
    std::unique_ptr<Application> m_application;
};

TEST_F(DefinitionTranslationTest, TextsAreTranslatedWhereTheyAreDrawn) {
    m_folder.Write("App/Services/translations/de.po", german);
    Start({"de-AT", "de"});
    // What has no translation, or one of another text, is shown in the host's words where it has the same text, and as
    // it is otherwise. The library's own "Toolbars" is the host's.
    EXPECT_EQ(Band("View"), "Über&sicht|&Statusleiste|%1 öffnen|Mit Fenster &verknüpfen|Toolbars");
    EXPECT_EQ(m_application->Window().ExplorerDock().windowTitle(), "Explorer"); // and not of studies
    EXPECT_EQ(Band("Toolbars.Main"), "Sheet");
    const QToolBar* toolbar =
        m_application->Window().Bars().ToolbarOf(*m_application->Bar()->Bands()->Item("Toolbars.Main"));
    ASSERT_TRUE(toolbar);
    EXPECT_EQ(toolbar->windowTitle(), "Haupt");
    EXPECT_EQ(toolbar->actions().front()->toolTip(), "Ein Blatt öffnen");
    EXPECT_EQ(toolbar->actions().front()->statusTip(), "Öffnet ein Blatt");
    EXPECT_EQ(Tabs(), "Wurzel|Wurzel|Root"); // who renames it changes its own name
    // What code writes isn't touched, and names find what they found.
    m_application->Bar()->Bands()->Item("View")->Tools()->Item("View.Navigation")->SetCaption("Not &Explorer");
    EXPECT_EQ(Band("View").section('|', 0, 0), "Not &Explorer");
    ASSERT_TRUE(m_application->Choose("View.Open"));
    EXPECT_TRUE(QString::fromStdString(m_application->AsText()).contains("Window Sheet"));
    for (const auto& frm : m_application->MainForm()->Forms()) {
        EXPECT_EQ(TitleOf(*frm), "Blatt");
        const auto form = frm.As<WindowForm>();
        EXPECT_EQ(form->Frame()->windowTitle(), "Blatt[*]");
        const auto* tabs = form->Body()->findChild<QTabBar*>();
        EXPECT_EQ(tabs->tabText(0) + tabs->tabText(1), "SeiteQ");
        frm->SetCaption("Sheet 7");
        EXPECT_EQ(TitleOf(*frm), "Sheet 7");
    }
}

TEST_F(DefinitionTranslationTest, PluginsShowTextsAndNumbersAsTheUserReadsThem) {
    m_folder.Write("App/Services/translations/de.po", german);
    const QLocale before;
    QLocale::setDefault(QLocale("de_DE"));
    Start({"de"});
    EXPECT_EQ(Translated(1234, "%1 sheet of %2", "%1 sheets of %2", {"%1"}), "%1: 1.234 Blätter");
    EXPECT_EQ(Translated(1, "%1 sheet of %2", "%1 sheets of %2", {"A"}), "1 sheet of A");
    EXPECT_EQ(ShownNumber("-1,234.5"), "-1.234,5");
    EXPECT_EQ(ShownTime(1'700'000'000).find("2023-11-14"), std::string::npos);
    const std::pair<const char*, std::optional<std::string>> typed[] = {
        {"4,5", "4.5"},   {"-1.234.567,8", "-1234567.8"},
        {"1234", "1234"}, {"x", "x"},
        {"4.5", {}},      {"1.23", {}},
        {"1234.567", {}}, {"1,2,3", "1.2,3"},
        {"1,234.5", {}},  {".5", {}},
        {",5", ".5"},     {"", ""}};
    for (const auto& [text, plain] : typed)
        EXPECT_EQ(PlainNumber(text), plain) << text;
    m_application.reset();
    QLocale::setDefault(before);
    EXPECT_EQ(Translated("%1 sheets of %2", {"2", "A"}), "2 sheets of A");
    EXPECT_EQ(PlainNumber("1,5"), std::nullopt);
}

TEST_F(DefinitionTranslationTest, CommandsAreFoundInBothLanguages) {
    m_folder.Write("App/Services/translations/de.po", german);
    Start({"de"});
    for (const char* typed : {"über", "explorer"}) {
        PaletteDialog* palette = m_application->Personal().ShowPalette();
        palette->Field().setText(typed);
        EXPECT_EQ(palette->List().model()->index(0, 0).data().toString(), "Übersicht") << typed;
        palette->reject();
        delete palette;
    }
}

TEST_F(DefinitionTranslationTest, WithoutACatalogueTextsAreThoseOfTheFilesOrInTheHostsWords) {
    for (const QStringList& languages : {QStringList(), QStringList{"fr"}}) {
        m_folder.Write("App/Services/translations/de.po", german);
        Start(languages);
        EXPECT_EQ(Band("View"), languages.isEmpty() ? "&Explorer|&Status Bar|Open %1|&Link with Window|Toolbars"
                                                    : "&Explorateur|&Barre d’état|Open %1|&Lier à la fenêtre|Toolbars");
        EXPECT_EQ(m_application->Window().ExplorerDock().windowTitle(), "Explorer");
        EXPECT_EQ(Tabs(), "Root|Root|Root");
        // The host's own definitions have their catalogues in it.
        EXPECT_EQ(Band("Tools").section('|', 0, 0),
                  languages.isEmpty() ? "&Command Palette…" : "&Palette de commandes…");
        m_application.reset();
    }
}

TEST_F(DefinitionTranslationTest, BrokenCatalogueIsReportedAndNotUsed) {
    struct Case {
        QByteArray catalogue;
        const char* first; // entry of the menu
        const char* logged;
    };
    for (const Case& testCase :
         {Case{QByteArray(german) + "msgid \"x\n", "&Explorer", "de.po, line 47: a string must stand between"},
          Case{QByteArray(german).replace("Ü", "\xDC"), "&Explorer", "de.po, line 10: isn't UTF-8"},
          Case{QByteArray(german).replace("%1 öffnen", "öffnen"), "Über&sicht",
               "de.po, line 17: the translation \"öffnen\" of \"Open %1\" isn't used"},
          Case{QByteArray("\0\x1\x2", 3), "&Explorer", "de.po, line 1: contains a zero byte"}}) {
        m_folder.Write("App/Services/translations/de.po", testCase.catalogue);
        Start({"de"});
        EXPECT_EQ(Band("View"), QString(testCase.first) + "|&Statusleiste|Open %1|Mit Fenster &verknüpfen|Toolbars")
            << testCase.logged;
        EXPECT_TRUE(m_folder.Read("corvane/App/errors.log").contains(testCase.logged))
            << testCase.logged << "\n"
            << m_folder.Read("corvane/App/errors.log").toStdString();
        m_application.reset();
    }
}

} // namespace
} // namespace corvane::desktop
