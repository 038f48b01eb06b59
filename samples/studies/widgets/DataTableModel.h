// The rows of a data set for a table view. It reads a few rows at a time as they come into sight, and knows of the
// others nothing but their number. Data that are in no study can't be changed.
#pragma once

#include "RowView.h"
#include "Workspace.h"
#include "corvane/Jobs.h"

#include <QAbstractTableModel>
#include <QCache>
#include <functional>
#include <vector>

namespace studies {

class DataTableModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    // Jobs belong to the owner, a page.
    DataTableModel(corvane::Ref<DataSetContext> data, corvane::Ref<corvane::Object> owner, QObject* parent);

    // The rows that the filter leaves, in the order of the view; of a large table once a job has found them, of which
    // the latest counts. Fails as CheckFilter, and changes nothing then.
    void SetFilter(int column, const QString& filter);
    void sort(int column, Qt::SortOrder order) override; // -1: as imported
    // What is shown is read again; rows stay where they are. For a store that has been changed elsewhere.
    void Reload();
    // Clears the cells. One step to undo; or Refused, and nothing has changed.
    void Clear(const QModelIndexList& cells);
    // Writes lines of fields that tabs divide, from that cell on; what doesn't fit is left out. One step to undo; or
    // Refused, and nothing has changed, for a text that its column can't take.
    void Paste(const QModelIndex& from, const QString& text);
    // Rows by rows, with a tab between fields, "" for missing values: calls done with it, after a job where that takes
    // longer than a moment.
    void WithText(const std::vector<int>& rows, const std::vector<int>& columns, bool withNames,
                  std::function<void(const QString&)> done);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

Q_SIGNALS:
    // Why what was entered has not been taken.
    void Refused(const QString& problem);
    // The rows are as they are: sorting has been cancelled.
    void StaysSorted(int column, Qt::SortOrder order);

private:
    [[nodiscard]] Store& TheStore() const { return m_data->Space()->GetStore(); }
    [[nodiscard]] const Table& PageOf(int row) const;
    [[nodiscard]] Table RowsAt(const std::vector<std::uint32_t>& positions) const; // in the data set
    [[nodiscard]] std::string CellText(const QModelIndex& index) const;
    // In the signs of the user's language, as it is edited and copied.
    [[nodiscard]] std::string EditedText(const QModelIndex& index) const;
    [[nodiscard]] QString ShownText(const QModelIndex& index) const;
    void MeasureDecimals();
    void SetView(const RowView& view);
    void FindRows(const RowView& view, const SharedTable& table);
    void TakeRows(const RowView& view, std::vector<std::uint32_t> rows);
    [[nodiscard]] Id RowId(int row) const { return Id{m_rows[static_cast<std::size_t>(row)]} + 1; }
    [[nodiscard]] CellChange ChangeOf(const QModelIndex& index, std::string text) const;
    void Change(const std::vector<CellChange>& changes);
    bool DoOrRefuse(const std::function<void()>& change); // whether it was done

    static constexpr int RowsOfPage = 128;

    corvane::Ref<DataSetContext> m_data;
    corvane::Ref<corvane::Object> m_owner;
    std::vector<Column> m_columns;     // without values
    std::vector<qsizetype> m_decimals; // of each column's first values; fewer are filled up, so that points align
    RowView m_view;
    std::vector<std::uint32_t> m_rows;       // their positions in the data set
    RowView m_wanted;                        // what is being found
    corvane::LatestJob m_job;                // that does so
    mutable QCache<int, Table> m_pages{100}; // by number
};

} // namespace studies
