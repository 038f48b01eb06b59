#include "analysis/Explain.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/WindowManager.h"
#include "desktop/application/Application.h"
#include "desktop/application/MainWindow.h"
#include "desktop/application/PersonalDesktop.h"
#include "desktop/explorer/ExplorerPanel.h"
#include "desktop/inspector/InspectorDialog.h"
#include "desktop/log/LogPanel.h"
#include "tests/desktop/AppFolder.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>

namespace corvane::desktop {
namespace {

class InspectorTest : public ::testing::Test {
protected:
    InspectorTest() {
        m_folder.Service("Shell", "Corvane.Framework", shellContent);
        m_folder.Plugin("T0");
        m_folder.Service("Trouble", "T0.Service", R"(<ActionItems>
<ActionItem Name="Ping" Action="OnPing"/>
<ActionItem Name="Item" Enabled="false"/></ActionItems><Menus>
<!-- <MenuItem Type="MenuItem" ActionItem="Ping" Path="File"/> -->
<MenuItem Type="MenuItem" ActionItem="Ping" Path="File" PositionOrder="7" Caption="P#ing"/>
<MenuItem Type="ToolbarItem" ActionItem="Ping" Path="Edit" PositionOrder="1" Caption="Ping"/>
<MenuItem Type="MenuItem" ActionItem="Item" Path="File" PositionOrder="8" Caption="Shared"/></Menus>
<ExplorerItems>
<ExplorerItem Name="Root" Type="Folder"><ActionItems><ActionItem Name="Item" Action="X"/></ActionItems><Menus>
<MenuItem Type="MenuItem" ActionItem="Item" Path="File" PositionOrder="8" Caption="Shared"/>
</Menus></ExplorerItem></ExplorerItems>)",
                         "IsStartService=\"true\"");
        m_application = std::make_unique<Application>(ApplicationOptions{m_folder.App(), false});
        EXPECT_TRUE(m_application->Start());
    }
    // What the inspector says after a Ctrl+Alt+click there.
    QString Picked(QWidget* widget, const QPoint& point) {
        QTest::mouseClick(widget, Qt::LeftButton, Qt::ControlModifier | Qt::AltModifier, point);
        QApplication::processEvents();
        auto* inspector = m_application->Window().findChild<InspectorDialog*>();
        return inspector ? inspector->FactsText() : QString();
    }

    AppFolder m_folder;
    std::unique_ptr<Application> m_application;
};

TEST_F(InspectorTest, ClickOnAnyEntrySaysWhatPutItThereAndDoesNotChooseIt) {
    MainWindow& window = m_application->Window();
    QToolBar* toolbar = window.Bars().ToolbarOf(*m_application->Bar()->Bands()->Item("Toolbars.Edit"));
    auto* button = static_cast<QToolButton*>(toolbar->widgetForAction(toolbar->actions().front()));
    const QString buttonText = Picked(button, {3, 3});
    EXPECT_TRUE(buttonText.contains("Added by: Trouble.xml, line 7, for Trouble\n")) << buttonText.toStdString();
    EXPECT_TRUE(buttonText.contains("Also defined by: Trouble.xml, line 6, for Trouble\n"));
    EXPECT_TRUE(buttonText.contains("Procedure: OnPing\nProvider: Trouble, an object of the class "))
        << buttonText.toStdString();

    QMenu* file = window.menuBar()->actions().front()->menu();
    file->popup(window.mapToGlobal(QPoint(10, 10)));
    ASSERT_EQ(file->actions().at(1)->text(), "Shared");
    const QString shared = Picked(file, file->actionGeometry(file->actions().at(1)).center());
    EXPECT_FALSE(file->isVisible());
    EXPECT_TRUE(shared.contains("Key: File.Item\n")) << shared.toStdString();
    EXPECT_TRUE(shared.contains("Added by: Trouble.xml, line 8, for Trouble\nPosition (position key): 8 (File.8)\n"));
    EXPECT_TRUE(shared.contains("Also defined by: Trouble.xml, line 11, for Trouble (Root in the explorer)\n"));
    EXPECT_TRUE(shared.contains("Enabled: no: Trouble (Root in the explorer) isn't active\n")) << shared.toStdString();

    auto* tree = window.Explorer().CurrentPage()->Tree();
    tree->Sync();
    const QString node = Picked(tree->viewport(), tree->visualRect(tree->model()->index(0, 0)).center());
    EXPECT_TRUE(node.contains("Kind: Root\nAdded by: Trouble.xml, line 10\nOwner: Trouble\n")) << node.toStdString();
    EXPECT_EQ(m_application->Failures().ShownCount(), 0);
    EXPECT_EQ(m_application->Bar()->Bands()->Item("StatusBar")->Tools()->Item("Status")->Caption(), "")
        << "nothing was chosen";
}

// The value of a fact, or nothing.
QString FactOf(const Facts& facts, const char* name) {
    for (const auto& [fact, value] : facts)
        if (fact == name)
            return value;
    return {};
}

// "Studies.xml, line 22" as the tool writes it: "Studies.xml:22:".
QString AsTool(const QString& placeText) {
    static const QRegularExpression place("^(\\S+\\.xml), line (\\d+)");
    const auto match = place.match(placeText);
    return match.hasMatch() ? match.captured(1) + ":" + match.captured(2) + ":" : QString();
}

// What `corvane explain` says of the thing, a paragraph a definition.
QStringList Explained(const std::string& item) {
    const QString text = QString::fromStdString(check::Explain(CORVANE_STUDIES, item).text);
    return text.split("\n\n", Qt::SkipEmptyParts);
}

class InspectorAndTool : public ::testing::Test {
protected:
    InspectorAndTool() : m_application({CORVANE_STUDIES, false}) {
        EXPECT_TRUE(m_application.Start());
        m_places = std::make_unique<DefinitionPlaces>(Explainer::ReadPlaces());
        m_notes.Follow();
    }
    [[nodiscard]] Explainer Inspector() {
        return {m_application.Bar(), *m_places, m_application.Personal().Bars(), m_notes};
    }
    // Whether one of the paragraphs begins so and holds all of that.
    static bool Says(const QStringList& paragraphs, const QString& begin, const QStringList& parts) {
        return std::any_of(paragraphs.begin(), paragraphs.end(), [&](const QString& paragraph) {
            return paragraph.startsWith(begin) && std::all_of(parts.begin(), parts.end(), [&](const QString& part) {
                       return paragraph.contains(part);
                   });
        });
    }

    const AppFolder m_folder; // where the application keeps its things
    Application m_application;
    std::unique_ptr<DefinitionPlaces> m_places;
    ExplorerItemNotes m_notes;
};

// The tool's words for an owner.
QString OwnerAsTool(const QString& owner) {
    static const QRegularExpression item("^.* \\((.*) in the explorer\\)$");
    static const QRegularExpression page("^page (.*) of the window .*$");
    if (const auto match = item.match(owner); match.hasMatch())
        return "the explorer item \"" + match.captured(1) + "\"";
    if (const auto match = page.match(owner); match.hasMatch())
        return "the page \"" + match.captured(1) + "\"";
    return "the service \"" + owner + "\"";
}

TEST_F(InspectorAndTool, SayTheSameOfEveryEntry) {
    const Explainer inspector = Inspector();
    int entries = 0;
    int ofHost = 0;
    for (const auto& band : m_application.Bar()->Bands()->All())
        for (const auto& instance : band->Tools()->All()) {
            // The library makes the menu of toolbars by itself.
            const std::string& name = instance->Name();
            if (!band->Kind() || name == "Separator" || name == "WindowList" || name == "View.Toolbars" ||
                name.starts_with("Toolbars."))
                continue;
            const Facts facts = inspector.OfTool(*instance);
            const QString put = FactOf(facts, "Added by");
            const QStringList tool = Explained(name);
            const std::string both = TextOf(facts).toStdString() + "\n" + tool.join("\n\n").toStdString();
            if (name == "Context.LibraryFile.Import") { // by the item's code, so that no file tells
                EXPECT_TRUE(put.contains("code of Data (LibraryFile in the explorer)")) << both;
                continue;
            }
            if (put.startsWith("Corvane.")) { // the host's own definitions, which aren't in the folder
                EXPECT_TRUE(QRegularExpression("^Corvane\\.\\w+\\.xml, line [1-9]").match(put).hasMatch()) << both;
                ++ofHost;
                continue;
            }
            ++entries;
            ASSERT_FALSE(AsTool(put).isEmpty()) << both;
            static const QRegularExpression position("^(\\S+) \\((.*)\\)$");
            const auto match = position.match(FactOf(facts, "Position (position key)"));
            ASSERT_TRUE(match.hasMatch()) << both;
            const QString stands =
                band->Kind() == BandKind::MenuBar ? QString("in the menu bar")
                : band->Kind() == BandKind::Toolbar
                    ? "in the toolbar \"" + QString::fromStdString(band->Name()).mid(9) + "\""
                : band->Name().starts_with("Context.")
                    ? "in the context menu of the explorer item \"" + QString::fromStdString(band->Name()).mid(8) + "\""
                    : "in the menu \"" + QString::fromStdString(band->Name()) + "\"";
            EXPECT_TRUE(
                Says(tool, "",
                     {"/Services/" + AsTool(put), ", by " + OwnerAsTool(put.section(", for ", 1)),
                      "  position    " + match.captured(1) + ", position key \"" + match.captured(2) + "\"", stands}))
                << both;
            // And what both say that it calls, where somebody offers it.
            const QString procedure = FactOf(facts, "Procedure");
            EXPECT_TRUE(procedure.isEmpty() || procedure == "none" || Says(tool, "", {"calls " + procedure})) << both;
        }
    EXPECT_GT(entries, 50);
    EXPECT_GT(ofHost, 5);
}

TEST_F(InspectorAndTool, SayTheSameOfBarsItemsWindowsAndServices) {
    const Explainer inspector = Inspector();
    const auto manager = CorvaneMain::Framework()->ServiceManager();
    int bands = 0;
    for (const auto& band : m_application.Bar()->Bands()->All()) {
        const Facts facts = inspector.OfBand(*band);
        const QString place = AsTool(FactOf(facts, "Added by"));
        if (!band->Kind() || place.isEmpty() || place.startsWith("Corvane."))
            continue;
        ++bands;
        EXPECT_TRUE(Says(Explained(band->Name()), "", {"/Services/" + place}))
            << TextOf(facts).toStdString() << Explained(band->Name()).join("\n\n").toStdString();
    }
    EXPECT_GT(bands, 8);
    for (const auto& def : manager->ServiceDefs()) {
        const Facts facts = inspector.OfService(def->Name());
        const QString place = AsTool(FactOf(facts, "Defined in"));
        if (place.startsWith("Corvane."))
            continue;
        EXPECT_TRUE(Says(Explained(def->Name()), "service ",
                         {"/Services/" + place, "created     from " + FactOf(facts, "ProgID"),
                          FactOf(facts, "Actions") + " actions, " + FactOf(facts, "Entries") + " places"}))
            << TextOf(facts).toStdString() << Explained(def->Name()).join("\n\n").toStdString();
    }
    CorvaneMain::Framework()->NavigationManager()->ExplorerManager()->Refresh(); // so that the notes hear of all
    std::vector<const Node*> nodes;
    for (const auto& control : m_application.Panel()->Controls())
        if (const auto tree = control.TryAs<TreeView>())
            nodes.insert(nodes.end(), tree->GetNodes()->Roots().begin(), tree->GetNodes()->Roots().end());
    EXPECT_GE(nodes.size(), 2U);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        nodes.insert(nodes.end(), nodes[i]->Children().begin(), nodes[i]->Children().end());
        const Facts facts = inspector.OfNode(*nodes[i]);
        const QStringList tool = Explained(FactOf(facts, "Kind").toStdString());
        EXPECT_TRUE(Says(tool, "explorer item ", {"/Services/" + AsTool(FactOf(facts, "Added by"))}))
            << TextOf(facts).toStdString() << tool.join("\n\n").toStdString();
    }
    m_application.Panel()->Control("tabExplorer").As<TabStrip>()->ChooseTab(1);
    const auto tree = CorvaneMain::Framework()->NavigationManager()->ExplorerManager()->TreeView();
    tree->ClickNode(Ref<Node>(tree->GetNodes()->Roots().front()->Children().front())); // a file of the library
    tree->DblClick.Raise();
    const auto windows = CorvaneMain::Framework()->WindowManager()->Windows();
    ASSERT_EQ(windows->Count(), 1);
    const Facts facts = inspector.OfWindow(*windows->Item(1));
    const QStringList tool = Explained(FactOf(facts, "Name").toStdString());
    EXPECT_TRUE(Says(tool, "window ", {"/Services/" + AsTool(FactOf(facts, "Added by"))}))
        << TextOf(facts).toStdString() << tool.join("\n\n").toStdString();
}

TEST_F(InspectorTest, KeepsWhatIsOpenChosenAndInSightAndRestsWhileHidden) {
    InspectorDialog* inspector = m_application->Personal().ShowInspector();
    QTreeWidget& things = inspector->Things();
    const auto tool = m_application->Bar()->Tools()->Item("File.Ping");
    ASSERT_TRUE(inspector->Select(*tool));
    QTreeWidgetItem* item = things.currentItem();
    QTreeWidgetItem* band = item->parent();
    int changed = 0;
    int structure = 0;
    QObject::connect(things.model(), &QAbstractItemModel::dataChanged, [&] { ++changed; });
    for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        QObject::connect(things.model(), signal, [&] { ++structure; });
    const auto wait = [](const std::function<bool()>& until) { return QTest::qWaitFor(until, 30000); };
    tool->TagVariant().As<ActionItem>()->SetEnabled(false);
    EXPECT_TRUE(wait([&] { return item->text(1) == "disabled"; })) << "the very item";
    EXPECT_EQ(changed, 3) << "its action's line, and its lines in the menu and the toolbar";
    EXPECT_EQ(structure, 0);
    EXPECT_EQ(things.currentItem(), item);
    EXPECT_TRUE(band->isExpanded());
    // Hidden, also behind the other tab, it leaves everything alone until it is seen again.
    auto* tabs = inspector->findChild<QTabWidget*>();
    tabs->setCurrentIndex(1);
    changed = 0;
    tool->TagVariant().As<ActionItem>()->SetEnabled(true);
    QApplication::processEvents();
    EXPECT_FALSE(inspector->IsFollowing());
    EXPECT_EQ(changed, 0);
    tabs->setCurrentIndex(0);
    EXPECT_EQ(item->text(1), "");
    // What is added comes alone, and what goes takes nothing else along.
    const auto tree = m_application->Panel()->Control("Root").As<TreeView>();
    const Ref<Node> added = tree->GetNodes()->Add("Root", NodeRelationship::Child, "New", "New node");
    EXPECT_TRUE(wait([&] { return structure == 1; })) << structure;
    ASSERT_TRUE(inspector->Select(*added));
    tree->GetNodes()->Remove("New");
    EXPECT_TRUE(wait([&] { return structure == 2; })) << structure;
    EXPECT_TRUE(things.currentItem());
    EXPECT_TRUE(inspector->Select(*tool));
    EXPECT_EQ(things.currentItem(), item);
}

TEST_F(InspectorTest, FollowsWhatChanges) {
    InspectorDialog* inspector = m_application->Personal().ShowInspector();
    const auto tool = m_application->Bar()->Tools()->Item("File.Ping");
    ASSERT_TRUE(inspector->Select(*tool));
    EXPECT_TRUE(inspector->FactsText().contains("Enabled: yes: as set by Trouble\n"));
    tool->TagVariant().As<ActionItem>()->SetEnabled(false);
    (void)QTest::qWaitFor([&] { return inspector->FactsText().contains("disabled by"); }, 30000);
    EXPECT_TRUE(inspector->FactsText().contains("Enabled: no: disabled by Trouble\n"))
        << inspector->FactsText().toStdString();
}

TEST_F(InspectorTest, LogIsFilteredCopiedAndReportedWithoutThePersonAndWithWhatTheyStrikeOut) {
    qputenv("USER", "mustermann");
    const QByteArray head = "2024-05-06T07:08:09.123+0200\tApp\tStore\tLoad\t53\tX\t";
    m_folder.Write("corvane/App/errors.1.log", head + "File not found\tfirst\n");
    m_folder.Write("corvane/App/errors.log",
                   head + "Two\\nlines\t" + QDir::homePath().toUtf8() + "/secret of MusterMann on " +
                       QSysInfo::machineHostName().section('.', 0, 0).toUtf8() + "\nno line of ours\n");
    LogPanel* dialog = m_application->Personal().ShowLog();
    EXPECT_EQ(dialog->View().Table().model()->rowCount(), 3);
    QTest::keyClicks(&dialog->View().Filter(), "two");
    ASSERT_EQ(dialog->View().Table().model()->rowCount(), 1);
    EXPECT_EQ(dialog->View().Table().model()->index(0, LogModel::Text).data().toString(), "Two\nlines");
    dialog->View().Copy();
    EXPECT_TRUE(QApplication::clipboard()->text().startsWith("2024-05-06T07:08:09.123+0200\tApp\tStore"));

    const QString text = ReportText({"App", m_folder.Path("App"), {"Bad"}, dialog->View().LatestLines(2)});
    EXPECT_TRUE(text.contains("Left out: Bad\n"));
    EXPECT_TRUE(text.contains("\n  Trouble.xml  "));
    EXPECT_FALSE(text.contains("first")) << "only the latest lines";
    EXPECT_TRUE(text.contains("~/secret of user")) << text.toStdString();
    EXPECT_FALSE(text.contains("mustermann", Qt::CaseInsensitive));
    EXPECT_TRUE(text.contains("secret of user on host")) << text.toStdString();
    ReportDialog report(
        text, [&] { return m_folder.Path("report.txt"); }, nullptr);
    report.Preview().setPlainText("struck out");
    EXPECT_TRUE(report.Save());
    EXPECT_EQ(m_folder.Read("report.txt"), "struck out");
}

} // namespace
} // namespace corvane::desktop
