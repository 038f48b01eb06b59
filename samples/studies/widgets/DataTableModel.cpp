#include "DataTableModel.h"

#include "Errors.h"
#include "QtText.h"
#include "Report.h"
#include "corvane/base/Failure.h"

#include <QGuiApplication>
#include <QPalette>
#include <QStringList>
#include <algorithm>
#include <span>

namespace studies {

using namespace corvane;

namespace {

// Behind the point; none of a power of ten.
qsizetype DecimalsOf(const QString& sNumber) {
    const qsizetype iPoint = sNumber.indexOf('.');
    return iPoint < 0 || sNumber.contains('e') ? 0 : sNumber.size() - iPoint - 1;
}

} // namespace

DataTableModel::DataTableModel(Ref<DataSetContext> oData, QObject* pParent)
    : QAbstractTableModel(pParent), m_oData(std::move(oData)), m_aColumns(TheStore().Columns(m_oData->Number())),
      m_aRowIds(TheStore().RowIds(m_oData->Number(), m_oView)) {
    MeasureDecimals();
}

void DataTableModel::SetFilter(int iColumn, const QString& sFilter) {
    RowView oView = m_oView;
    oView.iFilterColumn = iColumn;
    oView.sFilter = Utf8(sFilter.trimmed());
    SetView(oView);
}

void DataTableModel::sort(int iColumn, Qt::SortOrder eOrder) {
    RowView oView = m_oView;
    oView.iSortColumn = iColumn;
    oView.bDescending = eOrder == Qt::DescendingOrder;
    SetView(oView);
}

void DataTableModel::SetView(const RowView& oView) {
    std::vector<Id> aRowIds = TheStore().RowIds(m_oData->Number(), oView);
    beginResetModel();
    m_oView = oView;
    m_aRowIds = std::move(aRowIds);
    m_oPages.clear();
    endResetModel();
}

void DataTableModel::Reload() {
    m_aColumns = TheStore().Columns(m_oData->Number());
    m_oPages.clear();
    if (rowCount() > 0 && columnCount() > 0)
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    if (columnCount() > 0)
        Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

const Table& DataTableModel::PageOf(int iRow) const {
    const int nPage = iRow / RowsOfPage;
    if (const Table* pPage = m_oPages.object(nPage))
        return *pPage;
    const auto iFirst = static_cast<std::size_t>(nPage) * RowsOfPage;
    const std::size_t nRows = std::min<std::size_t>(RowsOfPage, m_aRowIds.size() - iFirst);
    auto* pPage = new Table(TheStore().ReadRows(m_oData->Number(), std::span(m_aRowIds).subspan(iFirst, nRows)));
    m_oPages.insert(nPage, pPage); // takes it over, and has room for one at least
    return *pPage;
}

std::string DataTableModel::CellText(const QModelIndex& oIndex) const {
    const Table& oPage = PageOf(oIndex.row());
    return oPage.aColumns[static_cast<std::size_t>(oIndex.column())].Text(
        static_cast<std::size_t>(oIndex.row() % RowsOfPage));
}

void DataTableModel::MeasureDecimals() {
    m_aDecimals.assign(m_aColumns.size(), 0);
    if (m_aRowIds.empty())
        return;
    const Table& oPage = PageOf(0);
    for (std::size_t i = 0; i < m_aColumns.size(); ++i)
        for (std::size_t iRow = 0; m_aColumns[i].IsNumeric() && iRow < oPage.nRows; ++iRow)
            m_aDecimals[i] = std::max(m_aDecimals[i], DecimalsOf(Text(oPage.aColumns[i].Text(iRow))));
}

QString DataTableModel::ShownText(const QModelIndex& oIndex) const {
    QString sText = Text(CellText(oIndex));
    if (sText.isEmpty())
        return "NA";
    const auto iColumn = static_cast<std::size_t>(oIndex.column());
    const qsizetype nDecimals = DecimalsOf(sText);
    if (!m_aColumns[iColumn].IsNumeric() || nDecimals >= m_aDecimals[iColumn] || sText.contains('e'))
        return sText;
    if (nDecimals == 0)
        sText += '.';
    return sText + QString(m_aDecimals[iColumn] - nDecimals, '0');
}

int DataTableModel::rowCount(const QModelIndex& oParent) const {
    return oParent.isValid() ? 0 : static_cast<int>(m_aRowIds.size());
}

int DataTableModel::columnCount(const QModelIndex& oParent) const {
    return oParent.isValid() ? 0 : static_cast<int>(m_aColumns.size());
}

QVariant DataTableModel::data(const QModelIndex& oIndex, int nRole) const {
    if (!oIndex.isValid())
        return {};
    const Column& oColumn = m_aColumns[static_cast<std::size_t>(oIndex.column())];
    switch (nRole) {
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::AlignVCenter | (oColumn.IsNumeric() ? Qt::AlignRight : Qt::AlignLeft));
    case Qt::EditRole:
        return Text(CellText(oIndex));
    case Qt::DisplayRole:
        return ShownText(oIndex);
    case Qt::ForegroundRole:
        return CellText(oIndex).empty() ? QVariant(QGuiApplication::palette().color(QPalette::PlaceholderText))
                                        : QVariant();
    case Qt::ToolTipRole: {
        const std::string sText = CellText(oIndex);
        return sText.size() > 30 ? QVariant(Text(sText)) : QVariant();
    }
    default:
        return {};
    }
}

QVariant DataTableModel::headerData(int iSection, Qt::Orientation eOrientation, int nRole) const {
    if (eOrientation == Qt::Vertical) {
        if (nRole == Qt::DisplayRole)
            return static_cast<qlonglong>(m_aRowIds[static_cast<std::size_t>(iSection)]);
        return nRole == Qt::TextAlignmentRole ? QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
    }
    const Column& oColumn = m_aColumns[static_cast<std::size_t>(iSection)];
    switch (nRole) {
    case Qt::DisplayRole:
        return Text(oColumn.Label());
    case Qt::ToolTipRole:
        return Text(oColumn.sName + "\n" + std::string(NameOf(oColumn.eType)));
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::AlignVCenter | (oColumn.IsNumeric() ? Qt::AlignRight : Qt::AlignLeft));
    default:
        return {};
    }
}

Qt::ItemFlags DataTableModel::flags(const QModelIndex& oIndex) const {
    const Qt::ItemFlags oFlags = QAbstractTableModel::flags(oIndex);
    return m_oData->Space()->Keeps() ? oFlags | Qt::ItemIsEditable : oFlags;
}

bool DataTableModel::setData(const QModelIndex& oIndex, const QVariant& vValue, int nRole) {
    if (nRole != Qt::EditRole || !oIndex.isValid())
        return false;
    const std::string sText = Utf8(vValue.toString().trimmed());
    if (sText == CellText(oIndex))
        return true;
    try {
        Change({{m_aRowIds[static_cast<std::size_t>(oIndex.row())], oIndex.column(), sText}});
        return true;
    } catch (const Failure& oFailure) {
        Q_EMIT Refused(Text(oFailure.Description));
        return false;
    }
}

void DataTableModel::Change(const std::vector<CellChange>& aChanges) {
    if (aChanges.empty())
        return;
    if (!m_oData->Space()->Keeps())
        FailWith("These data aren't part of a study. Import the file into a study to change them.");
    TheStore().SetCells(m_oData->Number(), aChanges);
    Reload();
    m_oData->Space()->Tell(aChanges.size() == 1 ? "A value has been changed"
                                                : CountText(aChanges.size()) + " values have been changed");
}

void DataTableModel::Clear(const QModelIndexList& aCells) {
    std::vector<CellChange> aChanges;
    for (const QModelIndex& oIndex : aCells)
        if (!CellText(oIndex).empty())
            aChanges.push_back({m_aRowIds[static_cast<std::size_t>(oIndex.row())], oIndex.column(), {}});
    Change(aChanges);
}

void DataTableModel::Paste(const QModelIndex& oFrom, const QString& sText) {
    std::vector<CellChange> aChanges;
    QStringList aLines = QString(sText).remove('\r').split('\n');
    if (!aLines.isEmpty() && aLines.last().isEmpty())
        aLines.removeLast();
    for (qsizetype iLine = 0; iLine < aLines.size(); ++iLine) {
        const QStringList aFields = aLines[iLine].split('\t');
        for (qsizetype iField = 0; iField < aFields.size(); ++iField) {
            const QModelIndex oCell =
                index(oFrom.row() + static_cast<int>(iLine), oFrom.column() + static_cast<int>(iField));
            const std::string sField = Utf8(aFields[iField].trimmed());
            if (oCell.isValid() && sField != CellText(oCell))
                aChanges.push_back({m_aRowIds[static_cast<std::size_t>(oCell.row())], oCell.column(), sField});
        }
    }
    Change(aChanges);
}

QString DataTableModel::AsText(const std::vector<int>& aRows, const std::vector<int>& aColumns, bool bWithNames) {
    QString sText;
    const auto AddLine = [&](const auto& fnField) {
        for (const int iColumn : aColumns)
            sText += (iColumn == aColumns.front() ? QString() : QString("\t")) + fnField(iColumn);
        sText += '\n';
    };
    if (bWithNames)
        AddLine([&](int iColumn) { return Text(m_aColumns[static_cast<std::size_t>(iColumn)].sName); });
    for (const int iRow : aRows)
        AddLine([&](int iColumn) {
            // What would look like the end of a field or line becomes a blank.
            return Text(CellText(index(iRow, iColumn))).replace('\t', ' ').replace('\n', ' ');
        });
    return sText;
}

} // namespace studies
