#include "desktop/style/WidgetText.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTextDocumentFragment>
#include <algorithm>
#include <vector>

namespace corvane::desktop {

namespace {

constexpr int nRowsShown = 20;

QStringList Headings(const QAbstractItemModel& oModel) {
    QStringList aHeadings;
    for (int iColumn = 0; iColumn < oModel.columnCount(); ++iColumn)
        aHeadings.append(oModel.headerData(iColumn, Qt::Horizontal).toString().simplified());
    return aHeadings;
}

QStringList RowOf(const QAbstractItemModel& oModel, int iRow) {
    QStringList aCells;
    for (int iColumn = 0; iColumn < oModel.columnCount(); ++iColumn)
        aCells.append(oModel.index(iRow, iColumn).data().toString().simplified());
    return aCells;
}

// In columns of equal width, numbers to the right.
QStringList TableLines(const QAbstractItemModel& oModel) {
    std::vector<QStringList> aRows{Headings(oModel)};
    for (int iRow = 0; iRow < std::min(oModel.rowCount(), nRowsShown); ++iRow)
        aRows.push_back(RowOf(oModel, iRow));
    QStringList aLines;
    for (const QStringList& aRow : aRows) {
        QString sLine;
        for (qsizetype i = 0; i < aRow.size(); ++i) {
            qsizetype nWidth = 0;
            for (const QStringList& aOther : aRows)
                nWidth = std::max(nWidth, aOther[i].size());
            const auto oLast = aRows.back()[i];
            bool bIsNumber = false;
            oLast.toDouble(&bIsNumber);
            sLine += (i > 0 ? "  " : "") + (bIsNumber ? aRow[i].rightJustified(nWidth) : aRow[i].leftJustified(nWidth));
        }
        while (sLine.endsWith(' '))
            sLine.chop(1);
        aLines.append(sLine);
    }
    if (oModel.rowCount() > nRowsShown)
        aLines.append(QString("(%1 more rows)").arg(oModel.rowCount() - nRowsShown));
    aLines.removeAll(QString());
    return aLines;
}

// Empty for a widget that isn't read by itself.
QStringList LinesOf(const QWidget& oWidget) {
    if (const auto* pLabel = qobject_cast<const QLabel*>(&oWidget)) {
        const QString sText = Qt::mightBeRichText(pLabel->text())
                                  ? QTextDocumentFragment::fromHtml(pLabel->text()).toPlainText()
                                  : pLabel->text();
        return QString(sText).remove('&').split('\n', Qt::SkipEmptyParts);
    }
    if (const auto* pView = qobject_cast<const QAbstractItemView*>(&oWidget))
        return pView->model() ? TableLines(*pView->model()) : QStringList();
    if (const auto* pBox = qobject_cast<const QComboBox*>(&oWidget))
        return {"[" + pBox->currentText() + "]"};
    if (const auto* pSpin = qobject_cast<const QAbstractSpinBox*>(&oWidget))
        return {"[" + pSpin->text() + "]"};
    if (const auto* pEdit = qobject_cast<const QLineEdit*>(&oWidget))
        return {"[" + pEdit->text() + "]"};
    if (const auto* pButton = qobject_cast<const QAbstractButton*>(&oWidget))
        if (const QString sText = pButton->text().remove('&'); !sText.isEmpty())
            return {pButton->isCheckable() ? (pButton->isChecked() ? "(x) " : "( ) ") + sText : "<" + sText + ">"};
    return {};
}

void Collect(const QWidget& oWidget, const std::string& sIndent, std::string& sText) {
    if (oWidget.isHidden() || qobject_cast<const QHeaderView*>(&oWidget))
        return;
    const QStringList aLines = LinesOf(oWidget);
    for (const QString& sLine : aLines)
        sText += sIndent + sLine.toStdString() + "\n";
    if (!aLines.isEmpty())
        return;
    for (const auto* pChild : oWidget.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
        Collect(*pChild, sIndent, sText);
}

} // namespace

std::string WidgetAsText(const QWidget& oWidget, const std::string& sIndent) {
    std::string sText;
    Collect(oWidget, sIndent, sText);
    return sText;
}

} // namespace corvane::desktop
