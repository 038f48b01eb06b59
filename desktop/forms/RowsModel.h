// The rows of a table or tree of a form for a view. Cells are asked for as they come into sight.
#pragma once

#include "desktop/forms/FormHost.h"

#include <QAbstractItemModel>
#include <memory>
#include <vector>

namespace corvane::desktop {

class RowsModel final : public QAbstractItemModel {
    Q_OBJECT
public:
    RowsModel(std::shared_ptr<FormContext> form, std::size_t field, QObject* parent);

    // The model's rows are others: those that are still there keep their place in the view. True when the columns are
    // others, too.
    bool ShowRows();
    void ShowCells();
    [[nodiscard]] std::size_t RowOf(const QModelIndex& index) const; // of the form's model; none for no index
    [[nodiscard]] QModelIndex IndexOf(std::size_t row) const;

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& child) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

Q_SIGNALS:
    // Why what was entered in the cell can't be taken.
    void Refused(const QModelIndex& index, const QString& problem);

private:
    // Of a tree, by the form's rows.
    struct Branch {
        std::size_t parent = forms::none;
        int place = 0; // among its siblings
        std::vector<std::size_t> children = {};
    };

    [[nodiscard]] const forms::ColumnDef& Column(int section) const {
        return m_columns[static_cast<std::size_t>(section)];
    }
    [[nodiscard]] bool TakeColumns();
    [[nodiscard]] const std::vector<std::size_t>& ChildrenOf(const QModelIndex& parent) const;
    [[nodiscard]] bool ReadTree();
    [[nodiscard]] QVariant CellData(const QModelIndex& index, int role) const;

    std::shared_ptr<FormContext> m_form;
    std::size_t m_field;
    bool m_isTree;
    std::vector<forms::ColumnDef> m_columns; // as the view knows them
    int m_rows = 0;                          // of a table, as the view knows them
    std::vector<Branch> m_branches;
    std::vector<std::size_t> m_roots;
};

} // namespace corvane::desktop
