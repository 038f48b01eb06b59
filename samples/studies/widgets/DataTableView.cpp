#include "DataTableView.h"

#include "QtText.h"
#include "corvane/base/Failure.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <algorithm>
#include <set>

namespace studies {

DataTableView::DataTableView(QWidget* pParent) : QTableView(pParent) {
    setAccessibleName("Rows");
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

void DataTableView::SetData(DataTableModel* pModel) {
    m_pModel = pModel;
    setModel(pModel);
    connect(pModel, &DataTableModel::Refused, this, &DataTableView::Refused);
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    setSortingEnabled(true);
    const int nWidest = fontMetrics().averageCharWidth() * 40;
    const int nBeside = fontMetrics().averageCharWidth() * 2; // a name has the room of the sort indicator beside it
    for (int i = 0; i < pModel->columnCount(); ++i)
        setColumnWidth(
            i, std::min(std::max(sizeHintForColumn(i) + nBeside, horizontalHeader()->sectionSizeHint(i)), nWidest));
}

void DataTableView::Copy() {
    const QItemSelection oSelection = selectionModel()->selection();
    if (!m_pModel || oSelection.isEmpty())
        return;
    std::set<int> aColumns;
    std::vector<bool> aChosen(static_cast<std::size_t>(m_pModel->rowCount()));
    for (const QItemSelectionRange& oRange : oSelection) {
        for (int i = oRange.left(); i <= oRange.right(); ++i)
            aColumns.insert(i);
        std::fill(aChosen.begin() + oRange.top(), aChosen.begin() + oRange.bottom() + 1, true);
    }
    std::vector<int> aRows;
    for (std::size_t i = 0; i < aChosen.size(); ++i)
        if (aChosen[i])
            aRows.push_back(static_cast<int>(i));
    const bool bWhole = static_cast<int>(aRows.size()) == m_pModel->rowCount() && aRows.size() > 1;
    QGuiApplication::clipboard()->setText(
        m_pModel->AsText(aRows, std::vector<int>(aColumns.begin(), aColumns.end()), bWhole));
}

void DataTableView::Paste() {
    if (!m_pModel || !currentIndex().isValid())
        return;
    try {
        m_pModel->Paste(currentIndex(), QGuiApplication::clipboard()->text());
    } catch (const corvane::Failure& oFailure) {
        Q_EMIT Refused(Text(oFailure.Description));
    }
}

void DataTableView::ClearCells() {
    if (!m_pModel)
        return;
    try {
        m_pModel->Clear(selectionModel()->selectedIndexes());
    } catch (const corvane::Failure& oFailure) {
        Q_EMIT Refused(Text(oFailure.Description));
    }
}

// These keys mean the cells while the keyboard is here, whatever the menus do with them.
bool DataTableView::event(QEvent* pEvent) {
    if (pEvent->type() == QEvent::ShortcutOverride) {
        const auto& oKey = *static_cast<QKeyEvent*>(pEvent);
        if (oKey.matches(QKeySequence::Copy) || oKey.matches(QKeySequence::Paste) || oKey.key() == Qt::Key_Delete ||
            oKey.key() == Qt::Key_F2) {
            pEvent->accept();
            return true;
        }
    }
    return QTableView::event(pEvent);
}

void DataTableView::keyPressEvent(QKeyEvent* pEvent) {
    if (pEvent->matches(QKeySequence::Copy))
        Copy();
    else if (pEvent->matches(QKeySequence::Paste))
        Paste();
    else if (pEvent->key() == Qt::Key_Delete)
        ClearCells();
    else
        QTableView::keyPressEvent(pEvent);
}

} // namespace studies
