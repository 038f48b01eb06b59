// The rows of a data set for a table view. It reads a few rows at a time as they come into sight, and knows of the
// others nothing but their number. Data that are in no study can't be changed.
#pragma once

#include "Workspace.h"

#include <QAbstractTableModel>
#include <QCache>
#include <vector>

namespace studies {

class DataTableModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit DataTableModel(corvane::Ref<DataSetContext> oData, QObject* pParent = nullptr);

    // The rows that the filter leaves, in the order of the view. Fails as Store::RowIds, and changes nothing then.
    void SetFilter(int iColumn, const QString& sFilter);
    void sort(int iColumn, Qt::SortOrder eOrder) override; // -1: as imported
    // What is shown is read anew; rows stay where they are. For a store that has been changed elsewhere.
    void Reload();
    // Clears the cells. One step to undo.
    void Clear(const QModelIndexList& aCells);
    // Writes lines of fields that tabs divide, from that cell on; what doesn't fit is left out. One step to undo.
    // Fails, and changes nothing, for a text that its column can't take.
    void Paste(const QModelIndex& oFrom, const QString& sText);
    // Rows by rows, with a tab between fields, "" for missing values.
    [[nodiscard]] QString AsText(const std::vector<int>& aRows, const std::vector<int>& aColumns, bool bWithNames);

    [[nodiscard]] const std::vector<Column>& Columns() const { return m_aColumns; }

    [[nodiscard]] int rowCount(const QModelIndex& oParent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& oParent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& oIndex, int nRole) const override;
    [[nodiscard]] QVariant headerData(int iSection, Qt::Orientation eOrientation, int nRole) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& oIndex) const override;
    bool setData(const QModelIndex& oIndex, const QVariant& vValue, int nRole) override;

Q_SIGNALS:
    // Why what was entered has not been taken.
    void Refused(const QString& sProblem);

private:
    [[nodiscard]] Store& TheStore() const { return m_oData->Space()->GetStore(); }
    [[nodiscard]] const Table& PageOf(int iRow) const;
    [[nodiscard]] std::string CellText(const QModelIndex& oIndex) const;
    [[nodiscard]] QString ShownText(const QModelIndex& oIndex) const;
    void MeasureDecimals();
    void SetView(const RowView& oView);
    void Change(const std::vector<CellChange>& aChanges);

    static constexpr int RowsOfPage = 128;

    corvane::Ref<DataSetContext> m_oData;
    std::vector<Column> m_aColumns;     // without values
    std::vector<qsizetype> m_aDecimals; // of each column's first values; fewer are filled up, so that points align
    RowView m_oView;
    std::vector<Id> m_aRowIds;
    mutable QCache<int, Table> m_oPages{100}; // by number
};

} // namespace studies
