#include "FigureTable.h"

#include "QtText.h"
#include "corvane/author/Translation.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>

namespace studies {
namespace {

QString PlainFigure(const QString& shown) {
    const std::string text = Utf8(shown);
    return studies::Text(corvane::PlainNumber(text).value_or(text));
}

} // namespace

FigureTable::FigureTable(QWidget* parent) : QTableWidget(parent) {
    setEditTriggers(NoEditTriggers);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    horizontalHeader()->setHighlightSections(false);
}

void FigureTable::SetBlock(const SummaryBlock& block) {
    std::vector<FigureColumn> names;
    for (const SummaryBlock::Name& name : block.names)
        names.push_back({studies::Text(name.text), name.figures});
    std::vector<QStringList> lines;
    for (const std::vector<std::string>& line : block.rows) {
        lines.emplace_back();
        for (const std::string& field : line)
            lines.back().append(studies::Text(field));
    }
    SetContent(names, lines);
    setMaximumHeight(HeightOfAll());
    setHidden(lines.empty());
}

void FigureTable::SetContent(const std::vector<FigureColumn>& columns, const std::vector<QStringList>& rows) {
    clear();
    setRowCount(static_cast<int>(rows.size()));
    setColumnCount(static_cast<int>(columns.size()));
    for (int columnIndex = 0; columnIndex < columnCount(); ++columnIndex) {
        const FigureColumn& column = columns[static_cast<std::size_t>(columnIndex)];
        const auto place = Qt::AlignVCenter | (column.figures ? Qt::AlignRight : Qt::AlignLeft);
        auto* header = new QTableWidgetItem(column.name);
        header->setTextAlignment(place);
        setHorizontalHeaderItem(columnIndex, header);
        for (int row = 0; row < rowCount(); ++row) {
            const QString text = rows[static_cast<std::size_t>(row)].value(columnIndex);
            auto* item = new QTableWidgetItem(text);
            item->setTextAlignment(place);
            if (text.size() > 30)
                item->setToolTip(text);
            setItem(row, columnIndex, item);
        }
    }
    resizeColumnsToContents();
    const int widest = fontMetrics().averageCharWidth() * 40;
    for (int column = 0; column < columnCount(); ++column)
        setColumnWidth(column, std::min(columnWidth(column) + fontMetrics().averageCharWidth(), widest));
}

QString FigureTable::AsText(bool forFile) const {
    QStringList lines;
    QStringList fields;
    for (int column = 0; column < columnCount(); ++column)
        fields.append(horizontalHeaderItem(column)->text());
    lines.append(fields.join('\t'));
    for (int row = 0; row < rowCount(); ++row) {
        fields.clear();
        for (int column = 0; column < columnCount(); ++column)
            fields.append(forFile && item(row, column)->textAlignment() & Qt::AlignRight
                              ? PlainFigure(item(row, column)->text())
                              : item(row, column)->text());
        lines.append(fields.join('\t'));
    }
    return lines.join('\n') + '\n';
}

void FigureTable::Copy() {
    const QList<QTableWidgetSelectionRange> ranges = selectedRanges();
    if (ranges.isEmpty()) {
        QGuiApplication::clipboard()->setText(AsText());
        return;
    }
    QStringList lines;
    for (const QTableWidgetSelectionRange& range : ranges)
        for (int row = range.topRow(); row <= range.bottomRow(); ++row) {
            QStringList fields;
            for (int column = range.leftColumn(); column <= range.rightColumn(); ++column)
                fields.append(item(row, column)->text());
            lines.append(fields.join('\t'));
        }
    QGuiApplication::clipboard()->setText(lines.join('\n') + '\n');
}

int FigureTable::HeightOfAll() const {
    return horizontalHeader()->sizeHint().height() + rowCount() * verticalHeader()->defaultSectionSize() +
           2 * frameWidth() + horizontalScrollBar()->sizeHint().height();
}

bool FigureTable::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
        event->accept();
        return true;
    }
    return QTableWidget::event(event);
}

void FigureTable::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy))
        Copy();
    else
        QTableWidget::keyPressEvent(event);
}

} // namespace studies

#include "moc_FigureTable.cpp"
