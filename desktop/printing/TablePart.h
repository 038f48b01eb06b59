// A table on paper: its rows as high as their texts need, the heads of the columns on each sheet.
#pragma once

#include "desktop/printing/Printout.h"

#include <QModelIndex>
#include <QString>
#include <vector>

class QAbstractItemModel;
class QAbstractItemView;
class QFontMetricsF;
class QTreeView;

namespace corvane::desktop {

class TablePart final : public PrintoutPart {
public:
    // All of the model's top rows and columns.
    explicit TablePart(const QAbstractItemModel& model);
    // Columns as the view orders and hides them, rows as it does; of a tree those that are unfolded, indented.
    explicit TablePart(const QAbstractItemView& view);

    void LayOut(Sheets& sheets, const Paper& paper) const override;
    [[nodiscard]] bool IsWide(const Paper& paper, double width) const override;

private:
    struct Column {
        int section; // of the model; -1 for the heads of the rows
        QString title;
        bool isTree = false; // indented by depth
    };
    struct Row {
        QModelIndex first; // in the row, whatever its column; not valid of a top row of the model
        int row;
        int depth = 0;
    };
    // Columns that stand side by side, with where each begins and, last, where they end.
    struct Band {
        std::vector<std::size_t> columns;
        std::vector<double> edges;
    };

    void AddRows(const QTreeView& view, const QModelIndex& parent, int depth);
    void AddTopRows(const std::function<bool(int)>& isHidden);
    [[nodiscard]] QModelIndex At(const Row& row, const Column& column) const;
    [[nodiscard]] QString Text(const Row& row, const Column& column) const;
    [[nodiscard]] std::vector<double> Widths(const Paper& paper) const;
    [[nodiscard]] std::vector<Band> Bands(const Paper& paper, double width) const;
    [[nodiscard]] double HeightOf(const Row& row, const Band& band, const QFontMetricsF& metrics) const;
    void PaintRow(QPainter& painter, const Row& row, const Band& band, double height) const;
    void PaintHeads(QPainter& painter, const Band& band, double height) const;
    void LayOutBand(Sheets& sheets, const Paper& paper, const Band& band, const QFontMetricsF& metrics) const;

    const QAbstractItemModel& m_model;
    QModelIndex m_root;
    std::vector<Column> m_columns;
    std::vector<Row> m_rows;
    mutable std::vector<Band> m_bands; // of the latest layout, which is drawn from them
};

} // namespace corvane::desktop
