#include "DataTableView.h"

#include "Errors.h"
#include "QtText.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <algorithm>
#include <set>

namespace studies {

DataTableView::DataTableView(QWidget* parent) : QTableView(parent) {
    setAccessibleName(Text(Translated("Rows")));
    setAlternatingRowColors(true);
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed); // or each row would be measured
    horizontalHeader()->setResizeContentsPrecision(100);
    horizontalHeader()->setSortIndicatorClearable(true);
    horizontalHeader()->setHighlightSections(false);
}

void DataTableView::SetData(DataTableModel* model) {
    m_model = model;
    setModel(model);
    connect(model, &DataTableModel::StaysSorted, horizontalHeader(), &QHeaderView::setSortIndicator);
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    setSortingEnabled(true);
    const int widest = fontMetrics().averageCharWidth() * 40;
    const int beside = fontMetrics().averageCharWidth() * 2; // a name has the room of the sort indicator beside it
    for (int i = 0; i < model->columnCount(); ++i)
        setColumnWidth(
            i, std::min(std::max(sizeHintForColumn(i) + beside, horizontalHeader()->sectionSizeHint(i)), widest));
}

void DataTableView::Copy() {
    const QItemSelection selection = selectionModel()->selection();
    if (!m_model || selection.isEmpty())
        return;
    std::set<int> columns;
    std::vector<bool> chosen(static_cast<std::size_t>(m_model->rowCount()));
    for (const QItemSelectionRange& range : selection) {
        for (int i = range.left(); i <= range.right(); ++i)
            columns.insert(i);
        std::fill(chosen.begin() + range.top(), chosen.begin() + range.bottom() + 1, true);
    }
    std::vector<int> rows;
    for (std::size_t i = 0; i < chosen.size(); ++i)
        if (chosen[i])
            rows.push_back(static_cast<int>(i));
    const bool whole = static_cast<int>(rows.size()) == m_model->rowCount() && rows.size() > 1;
    m_model->WithText(rows, std::vector<int>(columns.begin(), columns.end()), whole,
                      [](const QString& text) { QGuiApplication::clipboard()->setText(text); });
}

void DataTableView::Paste() {
    if (m_model && currentIndex().isValid())
        m_model->Paste(currentIndex(), QGuiApplication::clipboard()->text());
}

void DataTableView::ClearCells() {
    if (m_model)
        m_model->Clear(selectionModel()->selectedIndexes());
}

// These keys mean the cells while the keyboard is here, whatever the menus do with them.
bool DataTableView::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (key.matches(QKeySequence::Copy) || key.matches(QKeySequence::Paste) || key.key() == Qt::Key_Delete ||
            key.key() == Qt::Key_F2) {
            event->accept();
            return true;
        }
    }
    return QTableView::event(event);
}

void DataTableView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    QTableView::closeEditor(editor, hint);
    Q_EMIT EditingEnded();
}

void DataTableView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy))
        Copy();
    else if (event->matches(QKeySequence::Paste))
        Paste();
    else if (event->key() == Qt::Key_Delete)
        ClearCells();
    else
        QTableView::keyPressEvent(event);
}

} // namespace studies

#include "moc_DataTableView.cpp"
