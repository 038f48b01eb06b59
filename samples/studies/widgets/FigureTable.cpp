#include "FigureTable.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>

namespace studies {

FigureTable::FigureTable(QWidget* pParent) : QTableWidget(pParent) {
    setEditTriggers(NoEditTriggers);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    horizontalHeader()->setHighlightSections(false);
}

void FigureTable::SetContent(const std::vector<FigureColumn>& aColumns, const std::vector<QStringList>& aRows) {
    clear();
    setRowCount(static_cast<int>(aRows.size()));
    setColumnCount(static_cast<int>(aColumns.size()));
    for (int iColumn = 0; iColumn < columnCount(); ++iColumn) {
        const FigureColumn& oColumn = aColumns[static_cast<std::size_t>(iColumn)];
        const auto oPlace = Qt::AlignVCenter | (oColumn.bFigures ? Qt::AlignRight : Qt::AlignLeft);
        auto* pHeader = new QTableWidgetItem(oColumn.sName);
        pHeader->setTextAlignment(oPlace);
        setHorizontalHeaderItem(iColumn, pHeader);
        for (int iRow = 0; iRow < rowCount(); ++iRow) {
            const QString sText = aRows[static_cast<std::size_t>(iRow)].value(iColumn);
            auto* pItem = new QTableWidgetItem(sText);
            pItem->setTextAlignment(oPlace);
            if (sText.size() > 30)
                pItem->setToolTip(sText);
            setItem(iRow, iColumn, pItem);
        }
    }
    resizeColumnsToContents();
    const int nWidest = fontMetrics().averageCharWidth() * 40;
    for (int iColumn = 0; iColumn < columnCount(); ++iColumn)
        setColumnWidth(iColumn, std::min(columnWidth(iColumn) + fontMetrics().averageCharWidth(), nWidest));
}

QString FigureTable::AsText() const {
    QStringList aLines;
    QStringList aFields;
    for (int iColumn = 0; iColumn < columnCount(); ++iColumn)
        aFields.append(horizontalHeaderItem(iColumn)->text());
    aLines.append(aFields.join('\t'));
    for (int iRow = 0; iRow < rowCount(); ++iRow) {
        aFields.clear();
        for (int iColumn = 0; iColumn < columnCount(); ++iColumn)
            aFields.append(item(iRow, iColumn)->text());
        aLines.append(aFields.join('\t'));
    }
    return aLines.join('\n') + '\n';
}

void FigureTable::Copy() {
    const QList<QTableWidgetSelectionRange> aRanges = selectedRanges();
    if (aRanges.isEmpty()) {
        QGuiApplication::clipboard()->setText(AsText());
        return;
    }
    QStringList aLines;
    for (const QTableWidgetSelectionRange& oRange : aRanges)
        for (int iRow = oRange.topRow(); iRow <= oRange.bottomRow(); ++iRow) {
            QStringList aFields;
            for (int iColumn = oRange.leftColumn(); iColumn <= oRange.rightColumn(); ++iColumn)
                aFields.append(item(iRow, iColumn)->text());
            aLines.append(aFields.join('\t'));
        }
    QGuiApplication::clipboard()->setText(aLines.join('\n') + '\n');
}

int FigureTable::HeightOfAll() const {
    return horizontalHeader()->sizeHint().height() + rowCount() * verticalHeader()->defaultSectionSize() +
           2 * frameWidth() + horizontalScrollBar()->sizeHint().height();
}

bool FigureTable::event(QEvent* pEvent) {
    if (pEvent->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent*>(pEvent)->matches(QKeySequence::Copy)) {
        pEvent->accept();
        return true;
    }
    return QTableWidget::event(pEvent);
}

void FigureTable::keyPressEvent(QKeyEvent* pEvent) {
    if (pEvent->matches(QKeySequence::Copy))
        Copy();
    else
        QTableWidget::keyPressEvent(pEvent);
}

} // namespace studies
