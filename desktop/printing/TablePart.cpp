#include "desktop/printing/TablePart.h"

#include "desktop/printing/Sheets.h"

#include <QAbstractItemView>
#include <QFontMetricsF>
#include <QHeaderView>
#include <QListView>
#include <QPen>
#include <QTableView>
#include <QTreeView>
#include <algorithm>
#include <numeric>

namespace corvane::desktop {

namespace {

constexpr int sampledRows = 500; // for the widths of columns: all rows of a long table would take too long
constexpr int textFlags = Qt::TextWordWrap | Qt::TextWrapAnywhere | Qt::AlignTop;

double GapOf(const QFontMetricsF& metrics) {
    return metrics.averageCharWidth();
}

// How wide the widest line of the text is.
double WidthOf(const QString& text, const QFontMetricsF& metrics) {
    double width = 0;
    for (const auto& line : text.split('\n'))
        width = std::max(width, metrics.horizontalAdvance(line));
    return width;
}

QFont BoldOf(QFont font) {
    font.setBold(true);
    return font;
}

Qt::Alignment AlignmentAt(const QModelIndex& index) {
    const QVariant alignment = index.data(Qt::TextAlignmentRole);
    return alignment.isValid() ? Qt::Alignment(alignment.toInt()) & Qt::AlignHorizontal_Mask : Qt::AlignLeft;
}

} // namespace

TablePart::TablePart(const QAbstractItemModel& model) : m_model(model) {
    for (int i = 0; i < model.columnCount(); ++i)
        m_columns.push_back({i, model.headerData(i, Qt::Horizontal).toString()});
    AddTopRows([](int) { return false; });
}

TablePart::TablePart(const QAbstractItemView& view) : m_model(*view.model()), m_root(view.rootIndex()) {
    const auto* table = qobject_cast<const QTableView*>(&view);
    const auto* tree = qobject_cast<const QTreeView*>(&view);
    const QHeaderView* header = table ? table->horizontalHeader() : tree ? tree->header() : nullptr;
    if (table && !table->verticalHeader()->isHidden())
        m_columns.push_back({-1, ""});
    if (!header) {
        const auto* list = qobject_cast<const QListView*>(&view);
        m_columns.push_back({list ? list->modelColumn() : 0, ""});
    }
    for (int i = 0; header && i < header->count(); ++i) {
        const int section = header->logicalIndex(i);
        if (header->isSectionHidden(section))
            continue;
        const QString title = header->isHidden() ? QString() : m_model.headerData(section, Qt::Horizontal).toString();
        m_columns.push_back({section, title, tree != nullptr && section == 0});
    }
    if (tree)
        AddRows(*tree, m_root, 0);
    else
        AddTopRows([table](int row) { return table && table->isRowHidden(row); });
}

void TablePart::AddTopRows(const std::function<bool(int)>& isHidden) {
    const int count = m_model.rowCount(m_root);
    m_rows.reserve(static_cast<std::size_t>(count));
    for (int row = 0; row < count; ++row)
        if (!isHidden(row))
            m_rows.push_back({{}, row});
}

void TablePart::AddRows(const QTreeView& view, const QModelIndex& parent, int depth) {
    for (int row = 0; row < m_model.rowCount(parent); ++row) {
        if (view.isRowHidden(row, parent))
            continue;
        const QModelIndex index = m_model.index(row, 0, parent);
        m_rows.push_back({index, row, depth});
        if (view.isExpanded(index))
            AddRows(view, index, depth + 1);
    }
}

QModelIndex TablePart::At(const Row& row, const Column& column) const {
    if (column.section < 0)
        return {};
    return row.first.isValid() ? row.first.siblingAtColumn(column.section)
                               : m_model.index(row.row, column.section, m_root);
}

QString TablePart::Text(const Row& row, const Column& column) const {
    if (column.section < 0)
        return m_model.headerData(row.row, Qt::Vertical).toString();
    const QModelIndex index = At(row, column);
    QString text = index.data().toString();
    const QVariant checked = index.data(Qt::CheckStateRole);
    if (!checked.isValid())
        return text;
    const QString mark = checked.toInt() == Qt::Checked ? QStringLiteral("☑") : QStringLiteral("☐");
    return text.isEmpty() ? mark : mark + ' ' + text;
}

std::vector<double> TablePart::Widths(const Paper& paper) const {
    const QFontMetricsF metrics(paper.font, paper.device);
    const QFontMetricsF heads(BoldOf(paper.font), paper.device);
    const double gap = GapOf(metrics);
    const std::size_t step = std::max<std::size_t>(m_rows.size() / sampledRows, 1);
    std::vector<double> widths;
    for (const auto& column : m_columns) {
        double width = WidthOf(column.title, heads);
        for (std::size_t i = 0; i < m_rows.size(); i += step)
            width = std::max(width, WidthOf(Text(m_rows[i], column), metrics) +
                                        (column.isTree ? m_rows[i].depth * 2 * gap : 0));
        widths.push_back(width + 2 * gap + 1);
    }
    return widths;
}

std::vector<TablePart::Band> TablePart::Bands(const Paper& paper, double width) const {
    const QFontMetricsF metrics(paper.font, paper.device);
    std::vector<double> widths = Widths(paper);
    // The widest columns give way first, as far as they stay readable.
    const double least = std::min(24 * metrics.averageCharWidth(), width / 2);
    double free = width;
    std::vector<double> sorted = widths;
    std::sort(sorted.begin(), sorted.end());
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        const double share = free / static_cast<double>(sorted.size() - i);
        if (sorted[i] > share) {
            for (double& each : widths)
                each = std::min(each, std::max(share, least));
            break;
        }
        free -= sorted[i];
    }
    std::vector<Band> bands;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        if (bands.empty() || bands.back().edges.back() + widths[i] > width + 0.5) {
            bands.push_back({{}, {0.0}});
            // The first column says which row it is.
            if (i > 0 && widths[0] + widths[i] <= width)
                bands.back() = {{0}, {0.0, widths[0]}};
        }
        bands.back().columns.push_back(i);
        bands.back().edges.push_back(bands.back().edges.back() + widths[i]);
    }
    return bands;
}

bool TablePart::IsWide(const Paper& paper, double width) const {
    const std::vector<double> widths = Widths(paper);
    return std::accumulate(widths.begin(), widths.end(), 0.0) > width;
}

double TablePart::HeightOf(const Row& row, const Band& band, const QFontMetricsF& metrics) const {
    const double gap = GapOf(metrics);
    double height = metrics.height();
    for (std::size_t i = 0; i < band.columns.size(); ++i) {
        const Column& column = m_columns[band.columns[i]];
        const QString text = Text(row, column);
        const double indent = column.isTree ? row.depth * 2 * gap : 0;
        const double space = std::max(band.edges[i + 1] - band.edges[i] - 2 * gap - indent, gap);
        if (WidthOf(text, metrics) <= space && !text.contains('\n'))
            continue;
        height = std::max(height, metrics.boundingRect(QRectF(0, 0, space, 1e6), textFlags, text).height());
    }
    return height + gap / 2;
}

void TablePart::PaintRow(QPainter& painter, const Row& row, const Band& band, double height) const {
    const double gap = GapOf(painter.fontMetrics());
    for (std::size_t i = 0; i < band.columns.size(); ++i) {
        const Column& column = m_columns[band.columns[i]];
        const QRectF cell(band.edges[i], 0, band.edges[i + 1] - band.edges[i], height);
        const double indent = column.isTree ? row.depth * 2 * gap : 0;
        painter.drawText(cell.adjusted(gap + indent, gap / 4, -gap, gap),
                         textFlags | static_cast<int>(AlignmentAt(At(row, column))), Text(row, column));
    }
    painter.setPen(QPen(QColor(0xcc, 0xcc, 0xcc), 0));
    painter.drawLine(QPointF(0, height), QPointF(band.edges.back(), height));
}

void TablePart::PaintHeads(QPainter& painter, const Band& band, double height) const {
    const double gap = GapOf(painter.fontMetrics());
    painter.setFont(BoldOf(painter.font()));
    for (std::size_t i = 0; i < band.columns.size(); ++i) {
        const Column& column = m_columns[band.columns[i]];
        const QModelIndex first = m_rows.empty() ? QModelIndex() : At(m_rows.front(), column);
        const QRectF cell(band.edges[i], 0, band.edges[i + 1] - band.edges[i], height);
        painter.drawText(cell.adjusted(gap, gap / 4, -gap, 0), textFlags | static_cast<int>(AlignmentAt(first)),
                         column.title);
    }
    painter.setPen(QPen(Qt::black, painter.fontMetrics().lineWidth()));
    painter.drawLine(QPointF(0, height), QPointF(band.edges.back(), height));
}

void TablePart::LayOutBand(Sheets& sheets, const Paper& paper, const Band& band, const QFontMetricsF& metrics) const {
    const QFontMetricsF heads(BoldOf(paper.font), paper.device);
    const double gap = GapOf(metrics);
    double headHeight = 0;
    for (std::size_t i = 0; i < band.columns.size(); ++i)
        if (const Column& column = m_columns[band.columns[i]]; !column.title.isEmpty())
            headHeight = std::max(
                headHeight, gap / 2 + heads
                                          .boundingRect(QRectF(0, 0, band.edges[i + 1] - band.edges[i] - 2 * gap, 1e6),
                                                        textFlags, column.title)
                                          .height());
    const auto addHeads = [&] {
        if (headHeight > 0)
            sheets.Add(
                headHeight, [this, &band, headHeight](QPainter& painter) { PaintHeads(painter, band, headHeight); },
                2 * paper.line);
    };
    addHeads();
    for (const Row& row : m_rows) {
        if (sheets.IsFull())
            return;
        // A row that is higher than a sheet is cut at its end.
        const double height = std::min(HeightOf(row, band, metrics), sheets.Height() - headHeight);
        if (height > sheets.Left()) {
            sheets.StartSheet();
            addHeads();
        }
        sheets.Add(height, [this, &row, &band, height](QPainter& painter) { PaintRow(painter, row, band, height); });
    }
    sheets.Skip(paper.line);
}

void TablePart::LayOut(Sheets& sheets, const Paper& paper) const {
    const QFontMetricsF metrics(paper.font, paper.device);
    m_bands = Bands(paper, sheets.Width());
    for (const Band& band : m_bands)
        if (!sheets.IsFull())
            LayOutBand(sheets, paper, band, metrics);
}

} // namespace corvane::desktop
