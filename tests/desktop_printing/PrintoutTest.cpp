// What reaches the paper: everything, once, and where a reader looks for it.
#include "desktop/printing/Printout.h"

#include "desktop/forms/FormPrint.h"
#include "tests/desktop_forms/FormOnScreen.h"
#include "tests/desktop_printing/RecordingPaper.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTableWidget>
#include <QTextDocument>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace corvane::desktop {
namespace {

// Texts that aren't head or foot, of all sheets; a text that was wrapped is in pieces.
QStringList Content(const RecordingPaper& paper) {
    QStringList content;
    for (const auto& sheet : paper.sheets)
        for (const auto& text : sheet)
            if (text != "Birds" && text != QGuiApplication::applicationDisplayName() && !text.startsWith("Page ") &&
                !text.contains(QRegularExpression("\\d:\\d\\d")))
                content.append(text.trimmed());
    content.removeAll("");
    return content;
}

void ExpectFeet(const RecordingPaper& paper) {
    for (qsizetype sheet = 0; sheet < paper.sheets.size(); ++sheet)
        EXPECT_TRUE(paper.sheets[sheet].contains(QString("Page %1 of %2").arg(sheet + 1).arg(paper.sheets.size())))
            << paper.Texts(sheet).toStdString();
    for (const QRectF& place : paper.places)
        for (const QPointF& corner : {place.topLeft(), place.bottomRight()}) // of a line, too
            EXPECT_TRUE(QRectF(RecordingPaper::area).contains(corner)) << corner.x() << " " << corner.y();
}

void PrintOn(RecordingPaper& paper, const Printout& printout) {
    PaperPrinter printer(paper);
    EXPECT_GE(printout.Paint(printer, "Birds"), static_cast<std::size_t>(paper.sheets.size()));
}

TEST(Printout, TableHasAllItsRowsWithItsHeadsOnEachSheetAndTheFirstColumnBesideWhatHasNoSpace) {
    constexpr int rows = 120;
    constexpr int columns = 30;
    QStandardItemModel model(rows, columns);
    for (int column = 0; column < columns; ++column) {
        model.setHeaderData(column, Qt::Horizontal, QString("Head%1").arg(column));
        for (int row = 0; row < rows; ++row)
            model.setData(model.index(row, column), QString("r%1c%2").arg(row).arg(column));
    }
    const QString longText = QString("word ").repeated(60).trimmed();
    model.setData(model.index(7, 3), longText);
    Printout printout;
    printout.AddTable(model);
    RecordingPaper paper;
    PrintOn(paper, printout);
    ExpectFeet(paper);
    EXPECT_GT(paper.sheets.size(), 4);
    QStringList content = Content(paper);
    const auto bands = content.count("r5c0");
    EXPECT_GT(bands, 1);
    EXPECT_EQ(content.filter(QRegularExpression("^word")).join(' '), longText) << "in lines, none lost";
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column)
            ASSERT_EQ(content.count(QString("r%1c%2").arg(row).arg(column)), column == 0               ? bands
                                                                             : row == 7 && column == 3 ? 0
                                                                                                       : 1)
                << row << " " << column;
    for (const auto& sheet : paper.sheets)
        EXPECT_TRUE(sheet.contains("Head0"));
}

TEST(Printout, TextsBreakBetweenLinesHeadingsStayWithWhatFollowsAndPicturesStayWhole) {
    QStringList lines;
    for (int i = 0; i < 200; ++i)
        lines.append(QString("line %1").arg(i));
    int drawn = 0;
    // Whatever is free of the sheet before it, a heading never ends one.
    for (int before = 30; before < 60; before += 3) {
        Printout printout;
        printout.AddText(lines.mid(0, before).join('\n'));
        printout.AddHeading("Heading");
        printout.AddText(lines.mid(before).join('\n'));
        RecordingPaper paper;
        PrintOn(paper, printout);
        ExpectFeet(paper);
        QStringList expected = lines;
        expected.insert(before, "Heading");
        EXPECT_EQ(Content(paper), expected);
        for (const auto& sheet : paper.sheets)
            EXPECT_NE(sheet.back(), "Heading") << before;
    }
    Printout printout;
    printout.AddText("first");
    const auto draw = [&](QPainter& painter, const QRectF& target) {
        ++drawn;
        EXPECT_NEAR(target.width() / target.height(), 0.5, 0.01);
        painter.drawText(target.topLeft() + QPointF(0, 40), "picture");
    };
    printout.AddPicture({5000, 10000}, draw); // a little smaller, below the line
    printout.StartSheet();
    printout.AddText(lines.mid(0, 20).join('\n'));
    printout.AddPicture({5000, 10000}, draw); // whole, on the next sheet
    printout.StartSheet();
    printout.StartSheet(); // no empty sheet comes of it
    printout.AddText("last");
    RecordingPaper paper;
    PrintOn(paper, printout);
    ExpectFeet(paper);
    EXPECT_EQ(drawn, 2);
    EXPECT_EQ(Content(paper), QStringList({"first", "picture"}) + lines.mid(0, 20) + QStringList({"picture", "last"}));
    EXPECT_EQ(paper.sheets.size(), 4);
}

TEST(Printout, WidgetIsPrintedWholeThoughItScrolls) {
    QWidget page;
    auto* all = new QVBoxLayout(&page);
    auto* row = new QHBoxLayout;
    row->addWidget(new QLabel("shown above"));
    all->addLayout(row);
    auto* table = new QTableWidget(200, 3);
    for (int i = 0; i < 600; ++i)
        table->setItem(i / 3, i % 3, new QTableWidgetItem(QString("t%1.%2").arg(i / 3).arg(i % 3)));
    table->horizontalHeader()->moveSection(2, 0);
    table->setColumnHidden(1, true);
    table->setRowHidden(199, true);
    all->addWidget(table);
    auto* tabs = new QTabWidget;
    auto* text = new QPlainTextEdit;
    for (int i = 0; i < 100; ++i)
        text->appendPlainText(QString("note %1").arg(i));
    auto* tree = new QTreeWidget;
    auto* open = new QTreeWidgetItem(tree, {"open"});
    new QTreeWidgetItem(open, {"inside"});
    auto* closed = new QTreeWidgetItem(tree, {"closed"});
    new QTreeWidgetItem(closed, {"out of sight"});
    open->setExpanded(true);
    tabs->addTab(text, "&Notes");
    tabs->addTab(tree, "Tree");
    all->addWidget(tabs);
    auto* hidden = new QPlainTextEdit("hidden");
    all->addWidget(hidden);
    hidden->hide();
    auto* button = new QPushButton("Close");
    all->addWidget(button);
    page.resize(400, 300);
    page.show();
    Printout printout;
    printout.AddWidget(page);
    RecordingPaper paper;
    PrintOn(paper, printout);
    ExpectFeet(paper);
    EXPECT_EQ(paper.pictures.size(), 1) << "the label alone";
    const QStringList content = Content(paper);
    EXPECT_EQ(content.filter(QRegularExpression("^t\\d")).size(), 398);
    EXPECT_LT(content.indexOf("t9.2"), content.indexOf("t9.0")) << "as the columns are on screen";
    EXPECT_EQ(content.filter(QRegularExpression("^note \\d")).size(), 100);
    EXPECT_TRUE(content.contains("Notes"));
    for (const char* there : {"open", "inside", "closed"})
        EXPECT_TRUE(content.contains(there)) << there;
    for (const char* absent : {"out of sight", "hidden"})
        EXPECT_FALSE(content.contains(absent)) << absent;
}

TEST(Printout, PreviewIsBoundedAndAPrinterTakesTheSheetsThatAreAskedFor) {
    Printout printout;
    for (int i = 0; i < 150; ++i) {
        printout.AddText(QString("sheet %1.").arg(i + 1));
        printout.StartSheet();
    }
    RecordingPaper preview(QPaintEngine::Picture);
    PrintOn(preview, printout);
    EXPECT_EQ(preview.sheets.size(), 100);
    for (const auto& [last, expected] :
         {std::pair(149, QStringList("sheet 149.")), std::pair(200, QStringList({"sheet 149.", "sheet 150."}))}) {
        RecordingPaper paper;
        PaperPrinter printer(paper);
        printer.setFromTo(149, last);
        EXPECT_EQ(printout.Paint(printer, "Birds"), 150U);
        EXPECT_EQ(Content(paper), expected);
        EXPECT_TRUE(paper.Texts().contains("Page 149 of 150")) << paper.Texts().toStdString();
    }
}

// A table that says which rows it has been asked for.
class LongTable final : public QAbstractTableModel {
public:
    [[nodiscard]] int rowCount(const QModelIndex& /*parent*/) const override { return 200'000; }
    [[nodiscard]] int columnCount(const QModelIndex& /*parent*/) const override { return 2; }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        asked += role == Qt::DisplayRole;
        return role == Qt::DisplayRole ? QVariant(index.row()) : QVariant();
    }
    mutable int asked = 0;
};

TEST(Printout, LongTableIsLaidOutAsFarAsItIsPreviewedAndElseStopsAtAnySheet) {
    LongTable table;
    Printout printout;
    printout.AddTable(table);
    RecordingPaper preview(QPaintEngine::Picture);
    PrintOn(preview, printout);
    EXPECT_EQ(preview.sheets.size(), 100);
    EXPECT_TRUE(preview.Texts(99).contains("Page 100|")) << preview.Texts(99).toStdString();
    EXPECT_LT(table.asked, 40'000);

    RecordingPaper paper;
    PaperPrinter printer(paper);
    int most = 0; // cells between two sheets
    int before = table.asked;
    std::size_t sheets = 0;
    EXPECT_EQ(printout.Paint(printer, "Birds",
                             [&](std::size_t sheet, std::size_t all) {
                                 most = sheet == 2 ? 0 : std::max(most, table.asked - before);
                                 before = table.asked;
                                 sheets = sheet;
                                 return all == 0 && sheet < 50;
                             }),
              0U);
    EXPECT_EQ(sheets, 50U);
    EXPECT_LT(most, 400);
    EXPECT_EQ(Content(paper), QStringList());
}

TEST(Printout, FormIsPrintedAsItIsRead) {
    using forms::Has;
    using forms::Item;
    FormOnScreen form(forms::Ui(
        Item(0, "QLineEdit", "Title", "", "&amp;Title:") + Item(1, "QCheckBox", "Wild", Has("text", "string", "Wild")) +
        Item(2, "QPushButton", "Import", Has("text", "string", "Import")) +
        Item(3, "QTableWidget", "Sightings", "<column>" + Has("text", "string", "Where") + "</column>", "Sightings") +
        Item(4, "QLineEdit", "Gone", Has("visible", "bool", "false"), "Gone:") +
        Item(5, "QLineEdit", "Empty", "", "Empty:")));
    form.data.rows = 90;
    form.model->ShowRows(form.Field("Sightings"));
    form.model->ShowValue(form.Field("Title"), Variant("A long title of a form"));
    Printout printout;
    PrintForm(*form.widget, printout);
    RecordingPaper paper;
    PrintOn(paper, printout);
    const QStringList content = Content(paper);
    const QString whole = content.join(' ');
    EXPECT_TRUE(whole.contains("Title: A long title of a form Wild: No Sightings Where 0.0 1.0 2.0"))
        << whole.left(200).toStdString();
    EXPECT_TRUE(content.contains("89.0"));
    EXPECT_FALSE(whole.contains("Import") || whole.contains("Gone") || whole.contains("Empty")) << whole.toStdString();
}

} // namespace
} // namespace corvane::desktop
