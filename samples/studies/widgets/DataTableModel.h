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
    explicit DataTableModel(corvane::Ref<DataSetContext> data, QObject* parent = nullptr);

    // The rows that the filter leaves, in the order of the view. Fails as Store::RowIds, and changes nothing then.
    void SetFilter(int column, const QString& filter);
    void sort(int column, Qt::SortOrder order) override; // -1: as imported
    // What is shown is read again; rows stay where they are. For a store that has been changed elsewhere.
    void Reload();
    // Clears the cells. One step to undo.
    void Clear(const QModelIndexList& cells);
    // Writes lines of fields that tabs divide, from that cell on; what doesn't fit is left out. One step to undo.
    // Fails, and changes nothing, for a text that its column can't take.
    void Paste(const QModelIndex& from, const QString& text);
    // Rows by rows, with a tab between fields, "" for missing values.
    [[nodiscard]] QString AsText(const std::vector<int>& rows, const std::vector<int>& columns, bool withNames);

    [[nodiscard]] const std::vector<Column>& Columns() const { return m_columns; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

Q_SIGNALS:
    // Why what was entered has not been taken.
    void Refused(const QString& problem);

private:
    [[nodiscard]] Store& TheStore() const { return m_data->Space()->GetStore(); }
    [[nodiscard]] const Table& PageOf(int row) const;
    [[nodiscard]] std::string CellText(const QModelIndex& index) const;
    [[nodiscard]] QString ShownText(const QModelIndex& index) const;
    void MeasureDecimals();
    void SetView(const RowView& view);
    [[nodiscard]] CellChange ChangeOf(const QModelIndex& index, std::string text) const;
    void Change(const std::vector<CellChange>& changes);

    static constexpr int RowsOfPage = 128;

    corvane::Ref<DataSetContext> m_data;
    std::vector<Column> m_columns;     // without values
    std::vector<qsizetype> m_decimals; // of each column's first values; fewer are filled up, so that points align
    RowView m_view;
    std::vector<Id> m_rowIds;
    mutable QCache<int, Table> m_pages{100}; // by number
};

} // namespace studies
