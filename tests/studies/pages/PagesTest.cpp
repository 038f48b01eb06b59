#include "ChartWidget.h"
#include "Csv.h"
#include "DataTableView.h"
#include "User.h"
#include "corvane/platform/IJobs.h"
#include "desktop/IPrintout.h"
#include "desktop/WholeFile.h"
#include "desktop/application/MainWindow.h"
#include "desktop/explorer/ExplorerPanel.h"
#include "desktop/jobs/DesktopJobs.h"
#include "desktop/platform/HostParts.h"
#include "desktop/windows/WindowForm.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPicture>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTableView>
#include <QTest>
#include <filesystem>

using namespace corvane;
using namespace studies;

namespace {

class Pages : public User {
protected:
    static void Press(QWidget& widget, int key, Qt::KeyboardModifiers modifiers = {}) {
        QKeyEvent press(QEvent::KeyPress, key, modifiers);
        QApplication::sendEvent(&widget, &press);
        Turn();
    }
    // Below a field, or below the table.
    static QString Problem(const QWidget& window) {
        for (const auto* label : window.findChildren<QLabel*>())
            if (label->isVisible() && !label->text().isEmpty() &&
                label->parentWidget()->inherits("corvane::desktop::ProblemLine"))
                return label->text();
        return {};
    }
    // Types into the field of that name, and leaves it.
    static void Enter(QWidget& window, const QString& field, const QString& text) {
        window.window()->activateWindow();
        ASSERT_TRUE(QTest::qWaitFor([&] { return window.isActiveWindow(); }));
        for (auto* found : window.findChildren<QWidget*>(field)) {
            auto* line =
                qobject_cast<QLineEdit*>(found) ? qobject_cast<QLineEdit*>(found) : found->findChild<QLineEdit*>();
            if (!line || !line->isVisible())
                continue;
            line->setFocus();
            line->setText(text);
            line->clearFocus();
            return;
        }
        ADD_FAILURE() << "there is no field " << field.toStdString();
    }
    // Into a window of the main window.
    void Enter(const QString& window, const QString& field, const QString& text) {
        Enter(*In<QWidget>(window, field)->parentWidget(), In<QWidget>(window, field)->objectName(), text);
    }
    // Of a window whose pages are in a list.
    static void ShowPage(const QWidget& window, const QString& caption) {
        auto* list = Only<QListWidget>(window);
        list->setCurrentItem(list->findItems(caption, Qt::MatchStartsWith).value(0));
        Turn();
    }
    static QStringList Labels(const QWidget& window) {
        QStringList labels;
        for (const QLabel* label : window.findChildren<QLabel*>())
            if (label->isVisible())
                labels.append(label->text());
        return labels;
    }
    template <class T>
    static T* Only(const QWidget& window) {
        for (auto* found : window.findChildren<T*>())
            if (found->isVisible())
                return found;
        ADD_FAILURE();
        return nullptr;
    }
};

TEST_F(Pages, AFileIsWrittenWholeOrStaysAsItWas) {
    const std::string path = Write("out.csv", "as it was");
    const auto Fill = [](const desktop::FileSink& write) {
        write(std::string(3'000'000, 'x'));
        throw JobCancelled();
    };
    EXPECT_THROW(desktop::WriteWholeFile(path, Fill), JobCancelled);
    EXPECT_EQ(Read(path), "as it was");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(m_folder.Path()), {}), 1) << "nothing is left over";
    Table table{{{"a", ColumnType::Number, {}, {0.5, 1234}}, {"b", ColumnType::Text, {"x;y", ""}, {}}}, 2};
    desktop::WriteWholeFile(path, [&](const desktop::FileSink& write) { WriteCsv(table, {';', ','}, write); });
    EXPECT_EQ(Read(path), "a;b\n0,5;\"x;y\"\n1234;\n");
}

class Paper final : public desktop::IPrintout {
public:
    void AddHeading(const QString& text) override { content += "# " + text + "\n"; }
    void AddText(const QString& text) override { content += text + "\n"; }
    void AddDocument(const QTextDocument&) override { content += "document\n"; }
    void AddField(const QString& label, const QString& value) override { content += label + ": " + value + "\n"; }
    void AddTable(const QAbstractItemModel& model) override {
        content += QString("table %1 x %2\n").arg(model.rowCount()).arg(model.columnCount());
    }
    void AddPicture(const QSizeF& size, const std::function<void(QPainter&, const QRectF&)>& draw) override {
        QPicture drawn; // holds what is drawn, as a printer gets it
        QPainter painter(&drawn);
        draw(painter, QRectF(QPointF(100, 100), size * 5));
        painter.end();
        content += drawn.size() > 2000 && drawn.boundingRect().width() > 3000 ? "drawing\n" : "too little\n";
        EXPECT_LE(drawn.size(), 500'000U) << "no pixels";
    }
    void AddWidget(QWidget&) override { content += "widget\n"; }
    void StartSheet() override {}
    QString content;
};

TEST_F(Pages, ChartsAndSummariesArePrintedWithWhatTheyAreAbout) {
    Start();
    ClickItem("penguins.csv");
    Choose("Analysis.Scatter");
    Choose("Analysis.Summary");
    Turn();
    QStringList printed;
    for (const auto& form : m_application->MainForm()->Forms()) {
        Paper paper;
        form.As<desktop::WindowForm>()->Print(paper);
        printed.append(paper.content);
    }
    EXPECT_EQ(printed.join("").toStdString(), "# Scatter plot of penguins.csv: bill depth over bill length\n"
                                              "Y: bill depth (mm)\nX: bill length (mm)\nConfidence: 95 %\ndrawing\n"
                                              "344 rows, 7 columns\n# Statistics of numeric columns\nwidget\n"
                                              "# Statistics of text columns\nwidget\n");
}

TEST_F(Pages, TheImportWizardFollowsWhatIsTypedAndTheFileItself) {
    Start(false);
    const std::string pathText = Write("cells.csv", "id;size_mm\n01;1,5\n02;2,5;x\n03;\n");
    ChooseAndAct("File.Import", [&](QWidget& wizard) {
        const auto Go = [&](const char* button) {
            Button(wizard, button)->click();
            Turn();
        };
        auto* path = Only<QLineEdit>(wizard);
        QTest::keyClicks(path, QString::fromStdString(pathText).chopped(1));
        EXPECT_FALSE(Button(wizard, "Next")->isEnabled());
        EXPECT_EQ(Problem(wizard), "") << "the name isn't whole yet";
        QTest::keyClicks(path, "vx");
        EXPECT_FALSE(Button(wizard, "Next")->isEnabled());
        Enter(wizard, "Path", path->text());
        EXPECT_TRUE(Problem(wizard).contains("cells.csvx")) << Problem(wizard).toStdString();
        Enter(wizard, "Path", QString::fromStdString(pathText));
        EXPECT_EQ(Problem(wizard), "");
        Go("Next");
        EXPECT_EQ(Problem(wizard), "A row can't be read:\nLine 3: 3 fields where the first row has 2.");
        EXPECT_FALSE(Button(wizard, "Next")->isEnabled());
        // The row is put in order in the file; back and forth shows it. Another one is left out.
        Write("cells.csv", "id;size_mm\n01;1,5\n02;2,5\n");
        Go("Previous");
        Go("Next");
        EXPECT_EQ(Problem(wizard), "");
        EXPECT_TRUE(Labels(wizard).contains("2 rows, 2 columns"));
        Write("cells.csv", "id;size_mm\n01;1,5\n02;2,5;x\n03;\n");
        Go("Previous");
        Go("Next");
        Button(wizard, "Leave out")->click();
        const QAbstractItemModel& columns = *Only<QTableView>(wizard)->model();
        EXPECT_EQ(columns.rowCount(), 2);
        EXPECT_EQ(columns.index(0, 1).data().toString(), "text");
        EXPECT_EQ(columns.index(1, 1).data().toString(), "numbers");
        EXPECT_EQ(columns.index(1, 2).data().toString(), "1.5  NA");
        EXPECT_TRUE(Labels(wizard).contains("“id” stays text: “01” begins with a zero."))
            << Labels(wizard).join('|').toStdString();
        // What was seen is imported, even when the file has gone.
        std::filesystem::remove(pathText);
        Go("Next");
        Go("Previous");
        EXPECT_EQ(Problem(wizard), "");
        Go("Next");
        Enter(wizard, "Name", " ");
        EXPECT_EQ(Problem(wizard), "A data set needs a name.");
        EXPECT_FALSE(Button(wizard, "Finish")->isEnabled());
        Enter(wizard, "Name", "cells");
        Button(wizard, "Finish")->click();
    });
    EXPECT_EQ(Status(), "cells imported into “Study 1”: 2 rows, 2 columns, 1 left out");
    const Table table = DataOnDisk("cells");
    ASSERT_EQ(table.columns.size(), 2U);
    EXPECT_EQ(table.columns[0].type, ColumnType::Text);
    EXPECT_EQ(table.columns[1].Label(), "size (mm)");
    EXPECT_NE(Shown().find("cells"), std::string::npos);
}

TEST_F(Pages, TheTableEditsUndoesFiltersSortsAndCopies) {
    Start();
    OpenItem("penguins.csv");
    auto* view = In<DataTableView>("penguins.csv", "Rows");
    QAbstractItemModel& model = *view->model();
    ASSERT_EQ(model.rowCount(), 344);
    EXPECT_EQ(model.headerData(2, Qt::Horizontal).toString(), "bill length (mm)");
    EXPECT_EQ(model.index(3, 2).data().toString(), "NA");
    EXPECT_EQ(model.index(2, 3).data().toString(), "18.0") << "points align";

    EXPECT_TRUE(model.setData(model.index(0, 2), "40.5"));
    EXPECT_EQ(DataOnDisk("penguins.csv").columns[2].numbers[0], 40.5);
    EXPECT_FALSE(model.setData(model.index(0, 2), "long"));
    EXPECT_EQ(Problem(*m_application->Window().centralWidget()),
              "“long” isn't a number, and “bill_length_mm” is a numeric column.");
    Choose("Edit.Undo");
    EXPECT_EQ(model.index(0, 2).data().toString(), "39.1");
    Choose("Edit.Redo");
    EXPECT_EQ(model.index(0, 2).data().toString(), "40.5");

    view->sortByColumn(5, Qt::DescendingOrder);
    EXPECT_EQ(model.index(0, 5).data().toString(), "6300");
    EXPECT_EQ(model.index(343, 5).data().toString(), "NA");
    In<QComboBox>("penguins.csv", "Rows where")->setCurrentIndex(6);
    In<QLineEdit>("penguins.csv", "contains")->setText(">= 6000");
    Turn(400);
    EXPECT_EQ(model.rowCount(), 4);
    view->setCurrentIndex(model.index(0, 4));
    view->selectionModel()->select(QItemSelection(model.index(0, 4), model.index(1, 5)),
                                   QItemSelectionModel::ClearAndSelect);
    Press(*view, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "221\t6300\n230\t6050\n");
    Press(*view, Qt::Key_Delete);
    EXPECT_EQ(model.index(1, 4).data().toString(), "NA");
    view->setCurrentIndex(model.index(0, 4));
    Press(*view, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(model.index(1, 5).data().toString(), "6050");
    QApplication::clipboard()->setText("1\nx\n");
    Press(*view, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(model.index(0, 4).data().toString(), "221") << "all or nothing";
}

TEST_F(Pages, DeleteActsWhereTheFocusIs) {
    Start();
    OpenItem("penguins.csv");
    auto* view = In<DataTableView>("penguins.csv", "Rows");
    view->setCurrentIndex(view->model()->index(0, 2));
    Choose("Edit.Delete"); // the menu's, and the toolbar's
    EXPECT_EQ(view->model()->index(0, 2).data().toString(), "NA");
    EXPECT_EQ(DataOnDisk("penguins.csv").rows, 344U);
    Choose("Edit.Undo");
    EXPECT_EQ(view->model()->index(0, 2).data().toString(), "39.1");
    Choose("Analysis.Histogram");
    Turn();
    EXPECT_FALSE(m_application->Choose("Edit.Delete")) << "there is nothing to delete in a chart";
    ClickItem("penguins.csv");
    Choose("Edit.Delete");
    EXPECT_EQ(DataOnDisk("penguins.csv").rows, 0U);
    EXPECT_EQ(m_application->Failures().ShownCount(), 0);
}

TEST_F(Pages, AValueThatIsTypedMeetsOneOfAnotherWindow) {
    Start();
    OpenItem("penguins.csv");
    auto* view = In<DataTableView>("penguins.csv", "Rows");
    Store other(Store::DefaultPath());
    const Id set = other.DataSets(other.Studies()[0].id)[0].id;
    const auto TypeWhileOtherChanges = [&](int row, const char* text) {
        view->setCurrentIndex(view->model()->index(row, 2));
        view->edit(view->currentIndex());
        auto* editor = Only<QLineEdit>(*view->viewport());
        editor->setText(text);
        other.SetCells(set, {{1, 2, "50"}});
        Choose("View.Refresh"); // as happens by itself every second
        EXPECT_EQ(editor->text(), text) << "typing goes on";
        QTest::keyClick(editor, Qt::Key_Return);
        Turn();
    };
    TypeWhileOtherChanges(1, "41");
    EXPECT_EQ(Problem(m_application->Window()), "");
    EXPECT_EQ(view->model()->index(0, 2).data().toString(), "50.0") << "the other's is shown afterwards";
    EXPECT_EQ(view->model()->index(1, 2).data().toString(), "41.0");
    Choose("Edit.Undo");
    other.SetCells(set, {{1, 2, "39.1"}});
    Choose("View.Refresh");
    TypeWhileOtherChanges(0, "42");
    EXPECT_TRUE(Problem(m_application->Window()).startsWith("“42” hasn't been entered: the value there was changed"));
    EXPECT_EQ(view->model()->index(0, 2).data().toString(), "50.0");
    EXPECT_TRUE(view->model()->setData(view->model()->index(0, 2), "42"));
    EXPECT_EQ(DataOnDisk("penguins.csv").columns[2].numbers[0], 42);
    EXPECT_EQ(m_application->Failures().ShownCount(), 0);
}

TEST_F(Pages, PropertiesKeepWhatAnotherWindowHasChanged) {
    Start();
    ClickItem("Penguins");
    ChooseAndAct("Data.Properties", [&](QWidget& dialog) {
        Store other(Store::DefaultPath());
        const Id id = other.Studies()[0].id;
        other.SetStudyProperties(id, "Penguins", "theirs");
        Enter(dialog, "Name", "Birds");
        Button(dialog, "OK")->click();
        EXPECT_EQ(other.StudyOf(id).name + ": " + other.StudyOf(id).notes, "Birds: theirs");
    });
    ChooseAndAct("Data.Properties", [&](QWidget& dialog) {
        Store other(Store::DefaultPath());
        const Id id = other.Studies()[0].id;
        Only<QPlainTextEdit>(dialog)->setPlainText("mine");
        other.SetStudyProperties(id, "Birds", "changed");
        QTimer close;
        QObject::connect(&close, &QTimer::timeout, &close, [&] {
            if (QWidget* failure = QApplication::activeModalWidget(); failure != &dialog)
                failure->close();
        });
        close.start(10);
        Button(dialog, "OK")->click();
        close.stop();
        EXPECT_EQ(other.StudyOf(id).notes, "changed") << "refused once";
        Button(dialog, "OK")->click();
        EXPECT_EQ(other.StudyOf(id).notes, "mine") << "and replaced knowingly";
    });
}

TEST_F(Pages, ANameThatIsRefusedStaysInTheEditor) {
    Start();
    Choose("File.NewStudy");
    Turn();
    desktop::ExplorerTree& tree = *m_application->Window().Explorer().CurrentPage()->Tree();
    const auto Editor = [&] { return Only<QLineEdit>(*tree.viewport()); };
    const auto Reason = [&] {
        for (const auto* label : tree.viewport()->findChildren<QLabel*>())
            if (label->isVisible())
                return label->text();
        return QString();
    };
    Editor()->clear();
    EXPECT_EQ(Reason(), "A study needs a name.");
    QTest::keyClicks(Editor(), " penguins ");
    EXPECT_EQ(Reason(), "There is a study “penguins” already.");
    QTest::keyClick(Editor(), Qt::Key_Return);
    Turn();
    EXPECT_EQ(Editor()->text(), " penguins ");
    Editor()->setText(" Gentoo  ");
    EXPECT_EQ(Reason(), "");
    QTest::keyClick(Editor(), Qt::Key_Return);
    Turn();
    EXPECT_NE(Shown().find("  Gentoo\n"), std::string::npos) << Shown();
    // A refused name doesn't outlive the edit, however that ends.
    for (const int key : {int{Qt::Key_Escape}, 0}) {
        Choose("Edit.Rename");
        Turn();
        Editor()->setText("Penguins");
        if (key != 0)
            QTest::keyClick(Editor(), static_cast<Qt::Key>(key));
        else
            tree.setFocus();
        Turn();
        EXPECT_EQ(Reason(), "");
        EXPECT_NE(Shown().find("  Gentoo\n"), std::string::npos) << Shown();
    }
    EXPECT_EQ(m_application->Failures().ShownCount(), 0);
    EXPECT_TRUE(m_application->Messages().Shown().empty());
}

TEST_F(Pages, AFileWithoutAStudyIsOnlyShown) {
    Start(false);
    m_application->Dialogs().AddAnswer(STUDIES_DATA "/gentoo.csv");
    Choose("File.Open");
    auto* view = In<DataTableView>("gentoo.csv", "Rows");
    EXPECT_EQ(view->model()->rowCount(), 124);
    EXPECT_FALSE(view->model()->index(0, 0).flags().testFlag(Qt::ItemIsEditable));
    view->selectAll();
    Press(*view, Qt::Key_Delete);
    EXPECT_TRUE(Problem(m_application->Window()).startsWith("These data aren't part of a study."));
    EXPECT_FALSE(m_application->Choose("Data.Properties"));
    Choose("Analysis.Histogram");
    EXPECT_FALSE(m_application->Choose("File.Save"));
}

TEST_F(Pages, PropertiesAreCheckedAndWindowsFollowTheName) {
    Start();
    OpenItem("penguins.csv");
    Choose("Analysis.Summary");
    Choose("File.Save");
    Choose("Data.Table");
    ChooseAndAct("Data.Properties", [&](QWidget& dialog) {
        Enter(dialog, "Name", "");
        EXPECT_EQ(Problem(dialog), "A data set needs a name.");
        EXPECT_FALSE(Button(dialog, "OK")->isEnabled());
        Enter(dialog, "Name", "Palmer");
        EXPECT_EQ(Problem(dialog), "");
        Button(dialog, "OK")->click();
    });
    EXPECT_NE(In<DataTableView>("Palmer", "Rows"), nullptr);
    EXPECT_EQ(DataOnDisk("Palmer").rows, 344U);
    EXPECT_NE(Shown().find("        Summary of Palmer"), std::string::npos) << "in the explorer";
    EXPECT_NE(Shown().find("Window Summary of Palmer"), std::string::npos);
    ClickItem("Palmer");
    Choose("Edit.Delete");
    EXPECT_EQ(Shown().find("Window Palmer"), std::string::npos) << "the window goes with the data";
    EXPECT_EQ(m_application->Failures().ShownCount(), 0);
}

TEST_F(Pages, ChartsFollowTheirSettingsAndAreKept) {
    Start();
    OpenItem("penguins.csv");
    Choose("Analysis.Histogram");
    const QString caption = "Histogram of penguins.csv: bill length";
    auto* chart = In<ChartWidget>(caption, "Chart");
    EXPECT_EQ(chart->Scene().bars.size(), 13U);
    Enter(caption, "Bins", "5");
    EXPECT_EQ(chart->Scene().bars.size(), 6U);
    chart->resize(500, 400);
    QString tip;
    for (int y = 0; y < 400 && tip.isEmpty(); y += 5)
        tip = chart->TipAt({250, y});
    EXPECT_TRUE(tip.endsWith("rows")) << tip.toStdString();
    Choose("File.Save");
    EXPECT_EQ(Status(), "Histogram of penguins.csv: bill length has been added to the study");
    EXPECT_NE(Shown().find("      Histogram of penguins.csv: bill length"), std::string::npos);

    for (const char* name : {"chart.png", "chart.svg"}) {
        m_application->Dialogs().AddAnswer(m_folder.Path(name));
        Choose("File.Export");
    }
    const QImage picture(QString::fromStdString(m_folder.Path("chart.png")));
    EXPECT_EQ(picture.size(), QSize(1600, 1120));
    EXPECT_EQ(picture.pixelColor(0, 0), QColor(Qt::white));
    EXPECT_NE(Read(m_folder.Path("chart.svg")).find("bill length (mm)"), std::string::npos);
    m_application->Dialogs().AddAnswer(m_folder.Path("no folder/chart.png"));
    ChooseAndAct("File.Export", [](QWidget& failure) { failure.close(); });
    EXPECT_EQ(m_application->Failures().ShownCount(), 1);
}

TEST_F(Pages, TheBootstrapShowsItsResultAndCanBeCancelled) {
    Start();
    OpenItem("penguins.csv");
    Choose("Analysis.Bootstrap");
    const QString caption = "Bootstrap of penguins.csv: bill length";
    QWidget* page = In<QWidget>(caption, "Seed")->parentWidget();
    QAbstractButton* run = Button(*page, "Run");
    const auto Result = [&] { return page->findChild<QLabel*>("Result")->text(); };
    const auto HasEnded = [&] { return run->isEnabled(); };
    run->click();
    EXPECT_FALSE(run->isEnabled());
    ASSERT_TRUE(QTest::qWaitFor(HasEnded, 60000));
    EXPECT_EQ(Status(), "mean of bill length: 43.92 mm");
    EXPECT_TRUE(Result().contains("95 % confidence from 43.")) << Result().toStdString();

    Choose("File.Save");
    Enter(caption, "Resamples", "100000");
    EXPECT_TRUE(Result().startsWith("Run resamples")) << "the result is of other settings";
    EXPECT_FALSE(m_application->HasUnsavedWork()) << "which are a matter of a click";
    run->click();
    m_application->Jobs().CancelAll();
    ASSERT_TRUE(QTest::qWaitFor(HasEnded, 60000));
    EXPECT_EQ(Status(), "Cancelled; nothing has been changed");
    EXPECT_TRUE(Result().startsWith("Run resamples"));
    EXPECT_TRUE(run->isEnabled());
    Enter(caption, "Resamples", "1000");
    EXPECT_TRUE(Result().contains("95 % confidence from 43.")) << "there again";
    ASSERT_TRUE(m_application->ClickCommand("close")) << "without a question";
    OpenItem("Bootstrap of penguins.csv: bill length");
    page = In<QWidget>(caption, "Seed")->parentWidget();
    run = Button(*page, "Run");
    EXPECT_TRUE(Result().contains("95 % confidence from 43.")) << "saved with the analysis";

    // Everything goes on meanwhile, and Undo is about what was done last, which isn't the bootstrap.
    Enter(caption, "Seed", "7");
    run->click();
    EXPECT_FALSE(run->isEnabled());
    Choose("Data.Table");
    QAbstractItemModel& model = *In<DataTableView>("penguins.csv", "Rows")->model();
    EXPECT_TRUE(model.setData(model.index(0, 2), "40.5"));
    ASSERT_TRUE(QTest::qWaitFor(HasEnded, 60000));
    EXPECT_TRUE(Result().startsWith("Run resamples")) << "the data are others by now";
    Choose("Edit.Undo");
    EXPECT_EQ(model.index(0, 2).data().toString(), "39.1");
}

TEST_F(Pages, TheChosenItemKeepsItsCommands) {
    Start();
    OpenItem("penguins.csv");
    Choose("Analysis.Report");
    Turn();
    Choose("Analysis.Histogram"); // the table's page, which is behind the report now, had it as well
    ClickItem("Penguins");
    m_application->Window().Explorer().TabBar()->setCurrentIndex(1); // from here a new study isn't chosen
    Choose("File.NewStudy");
    Turn();
    m_application->Dialogs().AddAnswer("Delete");
    Choose("Edit.Delete");
    Turn();
    const std::string text = m_application->AsText();
    EXPECT_EQ(text.find("Penguins\n"), std::string::npos) << text;
    EXPECT_NE(text.find("Study 1\n"), std::string::npos) << "the new one stays";
}

TEST_F(Pages, DataAndReportsAreExported) {
    Start();
    OpenItem("penguins.csv");
    for (const char* analysis : {"Comparison", "Histogram", "Histogram", "Histogram", "Scatter", "Comparison"}) {
        Choose(std::string("Analysis.") + analysis);
        Choose("File.Save");
    }
    Choose("Data.Table");
    const std::string path = m_folder.Path("out.csv");
    ChooseAndAct("File.Export", [&](QWidget& dialog) {
        Enter(dialog, "Path", QString::fromStdString(m_folder.Path("none/out.csv")));
        EXPECT_TRUE(Problem(dialog).startsWith("There is no folder"));
        EXPECT_FALSE(Button(dialog, "Save")->isEnabled());
        Only<QComboBox>(dialog)->setCurrentIndex(1);
        Enter(dialog, "Path", QString::fromStdString(path));
        m_application->Dialogs().AddAnswer(""); // a change of mind
        Button(dialog, "Save As")->click();
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_FALSE(std::filesystem::exists(path));
        EXPECT_TRUE(QTest::qWaitFor([&] { return Button(dialog, "Save")->isEnabled(); }));
        Button(dialog, "Save")->click();
    });
    EXPECT_EQ(Read(path).substr(0, 136),
              "species;island;bill_length_mm;bill_depth_mm;flipper_length_mm;body_mass_g;sex\n"
              "Adelie;Torgersen;39,1;18,7;181;3750;male\nAdelie;Torgersen;");
    EXPECT_EQ(WriteCsv(ReadCsvFile(path).table), WriteCsv(DataOnDisk("penguins.csv"))) << "read back";
    const std::string before = Read(path);
    ChooseAndAct("File.Export", [&](QWidget& dialog) {
        Enter(dialog, "Path", QString::fromStdString(path));
        for (const char* answer : {"", "Replace"}) {
            EXPECT_EQ(Read(path), before);
            m_application->Dialogs().AddAnswer(answer);
            EXPECT_TRUE(QTest::qWaitFor([&] { return Button(dialog, "Save")->isEnabled(); }));
            Button(dialog, "Save")->click();
        }
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_NE(Read(path), before) << "in the other format";

    Choose("Analysis.Report");
    for (const char* name : {"report.html", "report.pdf"}) {
        m_application->Dialogs().AddAnswer(m_folder.Path(name));
        Choose("File.Export");
    }
    const std::string html = Read(m_folder.Path("report.html"));
    EXPECT_NE(html.find("src=\"data:image/png;base64,iVBOR"), std::string::npos);
    EXPECT_NE(html.find("Welch's t-test: t = "), std::string::npos);
    const std::string pdf = Read(m_folder.Path("report.pdf"));
    EXPECT_EQ(pdf.substr(0, 5), "%PDF-");
    std::size_t pictures = 0;
    for (std::size_t i = 0; (i = pdf.find("/Subtype /Image", i)) != std::string::npos; ++i)
        ++pictures;
    EXPECT_EQ(pictures, 6U) << "none is lost where a heading goes to the next page";
    auto& sections = *In<QListWidget>("Report on Penguins", "Sections of the report");
    for (int row = 0; row + 1 < sections.count(); ++row)
        sections.item(row)->setCheckState(Qt::Unchecked);
    const std::string last = sections.item(sections.count() - 1)->text().toStdString();
    m_application->Dialogs().AddAnswer(m_folder.Path("part.html"));
    Choose("File.Export");
    const std::string part = Read(m_folder.Path("part.html"));
    EXPECT_NE(part.find("<h2>" + last + "</h2>"), std::string::npos) << part.substr(0, 2000);
    EXPECT_EQ(part.find("344 rows"), std::string::npos) << "what isn't checked";
}

TEST_F(Pages, PreferencesAreCheckedAndUsed) {
    Start();
    ChooseAndAct("Tools.Preferences", [](QWidget& dialog) {
        ShowPage(dialog, "Statistics");
        Enter(dialog, "Decimals", "1");
        ShowPage(dialog, "Analyses");
        Enter(dialog, "ConfidencePercent", "20");
        EXPECT_EQ(Problem(dialog), "Please enter a value from 50 to 99.9.");
        EXPECT_FALSE(Button(dialog, "OK")->isEnabled());
        Enter(dialog, "ConfidencePercent", "99");
        Only<QCheckBox>(dialog)->click();
        Enter(dialog, "DefaultGroup", "sex");
        Button(dialog, "OK")->click();
    });
    EXPECT_EQ(ReadPreferences().confidence, 0.99);
    ClickItem("penguins.csv");
    Choose("Analysis.Histogram");
    EXPECT_EQ(In<ChartWidget>("Histogram of penguins.csv: bill length by sex", "Chart")->Scene().legend.size(), 2U);
    Choose("Analysis.Summary");
    In<QComboBox>("Summary of penguins.csv by sex", "By")->setCurrentIndex(1);
    EXPECT_TRUE(In<QTableView>("Summary of penguins.csv by species", "Statistics of numeric columns")->isVisible());
    Choose("Edit.Copy");
    EXPECT_EQ(QApplication::clipboard()->text().split('\n').value(1),
              "bill length (mm)\tAdelie\t151\t1\t38.8\t2.7\t32.1\t36.8\t38.8\t40.8\t46.0");
}

} // namespace
