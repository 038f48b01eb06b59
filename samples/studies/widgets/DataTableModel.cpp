#include "DataTableModel.h"

#include "EditedText.h"
#include "Errors.h"
#include "QtText.h"
#include "Report.h"
#include "corvane/base/Failure.h"

#include <QGuiApplication>
#include <QPalette>
#include <QPointer>
#include <QStringList>
#include <algorithm>
#include <numeric>

namespace studies {

using namespace corvane;

namespace {

// Behind the point; none of a power of ten.
qsizetype DecimalsOf(const QString& number) {
    const qsizetype point = number.indexOf('.');
    return point < 0 || number.contains('e') ? 0 : number.size() - point - 1;
}

// In the signs of the user's language, as it is edited and copied.
std::string EditedText(const Column& column, std::size_t row) {
    const std::string text = column.Text(row);
    return column.IsNumeric() ? ShownNumber(text) : text;
}

// All rows of these columns.
std::string LinesOf(const Table& table, const std::vector<int>& columns, bool withNames, JobProgress& progress) {
    std::string text;
    for (const int column : withNames ? columns : std::vector<int>())
        text += table.columns[static_cast<std::size_t>(column)].name + (column == columns.back() ? '\n' : '\t');
    for (std::size_t row = 0; row < table.rows; ++row) {
        if (row % 1000 == 0) {
            progress.StopIfCancelled();
            progress.SetPart(row, table.rows);
        }
        for (const int column : columns)
            text += AsField(EditedText(table.columns[static_cast<std::size_t>(column)], row)) +
                    (column == columns.back() ? '\n' : '\t');
    }
    return text;
}

} // namespace

DataTableModel::DataTableModel(Ref<DataSetContext> data, Ref<Object> owner, QObject* parent)
    : QAbstractTableModel(parent), m_data(std::move(data)), m_owner(std::move(owner)),
      m_columns(TheStore().Columns(m_data->Number())), m_rows(static_cast<std::size_t>(m_data->Info().rows)) {
    std::iota(m_rows.begin(), m_rows.end(), 0U);
    MeasureDecimals();
}

void DataTableModel::SetFilter(int column, const QString& filter) {
    RowView view = m_wanted;
    view.filterColumn = column;
    view.filter = Utf8(filter.trimmed());
    SetView(view);
}

void DataTableModel::sort(int column, Qt::SortOrder order) {
    RowView view = m_wanted;
    view.sortColumn = column;
    view.descending = order == Qt::DescendingOrder;
    SetView(view);
}

void DataTableModel::SetView(const RowView& view) {
    CheckFilter(m_columns, view);
    if (view == m_wanted && (m_job.IsActive() || view == m_view))
        return;
    m_job.Stop();
    m_wanted = view;
    m_data->WithTable(m_owner, [self = QPointer(this), view](const SharedTable& table) {
        if (!self || view != self->m_wanted)
            return;
        if (table)
            self->FindRows(view, table);
        else
            self->TakeRows(self->m_view, self->m_rows);
    });
}

void DataTableModel::FindRows(const RowView& view, const SharedTable& table) {
    const bool sorts = view.sortColumn != m_view.sortColumn || view.descending != m_view.descending;
    m_job.StartIf(
        !IsSmall(table->rows, table->columns.size()),
        {.title = sorts ? Translated("Sort %1", {m_data->Info().name}) : Translated("Filter %1", {m_data->Info().name}),
         .owner = m_owner},
        [table, view](JobProgress& progress) { return RowsOf(*table, view, progress); },
        [this, view](JobResult<std::vector<std::uint32_t>>& result) {
            if (result.WasCancelled())
                TakeRows(m_view, m_rows);
            else
                TakeRows(view, std::move(result.Value()));
        });
}

// What the header of the view shows follows, when the user has cancelled.
void DataTableModel::TakeRows(const RowView& view, std::vector<std::uint32_t> rows) {
    const bool stays = view != m_wanted;
    beginResetModel();
    m_view = m_wanted = view;
    m_rows = std::move(rows);
    m_pages.clear();
    endResetModel();
    if (stays)
        Q_EMIT StaysSorted(m_view.sortColumn, m_view.descending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void DataTableModel::Reload() {
    m_columns = TheStore().Columns(m_data->Number());
    m_pages.clear();
    if (rowCount() > 0 && columnCount() > 0)
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    if (columnCount() > 0)
        Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

const Table& DataTableModel::PageOf(int row) const {
    const int pageNumber = row / RowsOfPage;
    if (const Table* page = m_pages.object(pageNumber))
        return *page;
    const auto first = static_cast<std::size_t>(pageNumber) * RowsOfPage;
    const std::size_t last = std::min<std::size_t>(first + RowsOfPage, m_rows.size());
    auto* page = new Table(RowsAt(
        {m_rows.begin() + static_cast<std::ptrdiff_t>(first), m_rows.begin() + static_cast<std::ptrdiff_t>(last)}));
    m_pages.insert(pageNumber, page); // takes it over, and has room for one at least
    return *page;
}

Table DataTableModel::RowsAt(const std::vector<std::uint32_t>& positions) const {
    if (!m_data->Space()->Keeps())
        return m_data->Data().Rows(positions);
    std::vector<Id> rowIds;
    for (const std::uint32_t position : positions)
        rowIds.push_back(Id{position} + 1);
    return TheStore().ReadRows(m_data->Number(), rowIds);
}

std::string DataTableModel::CellText(const QModelIndex& index) const {
    const Table& page = PageOf(index.row());
    return page.columns[static_cast<std::size_t>(index.column())].Text(
        static_cast<std::size_t>(index.row() % RowsOfPage));
}

void DataTableModel::MeasureDecimals() {
    m_decimals.assign(m_columns.size(), 0);
    if (m_rows.empty())
        return;
    const Table& page = PageOf(0);
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        for (std::size_t row = 0; m_columns[i].IsNumeric() && row < page.rows; ++row)
            m_decimals[i] = std::max(m_decimals[i], DecimalsOf(Text(page.columns[i].Text(row))));
}

std::string DataTableModel::EditedText(const QModelIndex& index) const {
    const Table& page = PageOf(index.row());
    return studies::EditedText(page.columns[static_cast<std::size_t>(index.column())],
                               static_cast<std::size_t>(index.row() % RowsOfPage));
}

QString DataTableModel::ShownText(const QModelIndex& index) const {
    QString text = Text(CellText(index));
    if (text.isEmpty())
        return "NA";
    const auto column = static_cast<std::size_t>(index.column());
    const qsizetype decimals = DecimalsOf(text);
    if (!m_columns[column].IsNumeric())
        return text;
    if (decimals < m_decimals[column] && !text.contains('e'))
        text += (decimals == 0 ? QString(".") : QString()) + QString(m_decimals[column] - decimals, '0');
    return Text(ShownNumber(Utf8(text)));
}

int DataTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int DataTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant DataTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    const Column& column = m_columns[static_cast<std::size_t>(index.column())];
    switch (role) {
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::AlignVCenter | (column.IsNumeric() ? Qt::AlignRight : Qt::AlignLeft));
    case Qt::EditRole:
        return Text(EditedText(index));
    case Qt::DisplayRole:
        return ShownText(index);
    case Qt::ForegroundRole:
        return CellText(index).empty() ? QVariant(QGuiApplication::palette().color(QPalette::PlaceholderText))
                                       : QVariant();
    case Qt::ToolTipRole: {
        const std::string text = CellText(index);
        return text.size() > 30 ? QVariant(Text(text)) : QVariant();
    }
    default:
        return {};
    }
}

QVariant DataTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical) {
        if (role == Qt::DisplayRole)
            return static_cast<qlonglong>(RowId(section));
        return role == Qt::TextAlignmentRole ? QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
    }
    const Column& column = m_columns[static_cast<std::size_t>(section)];
    switch (role) {
    case Qt::DisplayRole:
        return Text(column.Label());
    case Qt::ToolTipRole:
        return Text(column.name + "\n" + ShownName(column.type));
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::AlignVCenter | (column.IsNumeric() ? Qt::AlignRight : Qt::AlignLeft));
    default:
        return {};
    }
}

Qt::ItemFlags DataTableModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    return m_data->Space()->Keeps() ? flags | Qt::ItemIsEditable : flags;
}

bool DataTableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || !index.isValid())
        return false;
    const std::string text = Utf8(value.toString().trimmed());
    if (text == EditedText(index))
        return true;
    return DoOrRefuse([&] { Change({ChangeOf(index, text)}); });
}

bool DataTableModel::DoOrRefuse(const std::function<void()>& change) {
    try {
        change();
        return true;
    } catch (const Failure& failure) {
        Q_EMIT Refused(Text(failure.Description));
        return false;
    }
}

CellChange DataTableModel::ChangeOf(const QModelIndex& index, std::string text) const {
    const Column& column = m_columns[static_cast<std::size_t>(index.column())];
    if (column.IsNumeric()) {
        const std::optional<std::string> plain = PlainNumber(text);
        if (!plain)
            FailWith(Translated("“%1” isn't a number, and “%2” is a numeric column.", {text, column.name}));
        text = *plain;
    }
    return {RowId(index.row()), index.column(), std::move(text), CellText(index)};
}

void DataTableModel::Change(const std::vector<CellChange>& changes) {
    if (changes.empty())
        return;
    if (!m_data->Space()->Keeps())
        FailWith(Translated("These data aren't part of a study. Import the file into a study to change them."));
    try {
        TheStore().SetCells(m_data->Number(), changes);
    } catch (...) {
        Reload(); // what is shown may be the reason
        throw;
    }
    Reload();
    m_data->Space()->Tell(Translated(changes.size(), "A value has been changed", "%1 values have been changed"));
}

void DataTableModel::Clear(const QModelIndexList& cells) {
    DoOrRefuse([&] {
        std::vector<CellChange> changes;
        for (const QModelIndex& index : cells)
            if (!CellText(index).empty())
                changes.push_back(ChangeOf(index, {}));
        Change(changes);
    });
}

void DataTableModel::Paste(const QModelIndex& from, const QString& text) {
    QStringList lines = QString(text).remove('\r').split('\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    DoOrRefuse([&] {
        std::vector<CellChange> changes;
        int row = from.row();
        for (const QString& line : lines) {
            int column = from.column();
            for (const QString& field : line.split('\t')) {
                const QModelIndex cell = index(row, column++);
                const std::string entered = Utf8(field.trimmed());
                if (cell.isValid() && entered != EditedText(cell))
                    changes.push_back(ChangeOf(cell, entered));
            }
            ++row;
        }
        Change(changes);
    });
}

void DataTableModel::WithText(const std::vector<int>& rows, const std::vector<int>& columns, bool withNames,
                              std::function<void(const QString&)> done) {
    std::vector<std::uint32_t> positions;
    for (const int row : rows)
        positions.push_back(m_rows[static_cast<std::size_t>(row)]);
    if (IsSmall(rows.size(), columns.size()))
        return done(Text(LinesOf(RowsAt(positions), columns, withNames, WithoutJob())));
    const JobOptions options{.title = Translated("Copy %1", {m_data->Info().name}), .owner = m_owner};
    m_data->WithTable(m_owner, [=](const SharedTable& table) {
        if (!table)
            return;
        StartJob(
            options,
            [=](JobProgress& progress) { return LinesOf(table->Rows(positions), columns, withNames, progress); },
            [done](const std::string& text) { done(Text(text)); });
    });
}

} // namespace studies

#include "moc_DataTableModel.cpp"
