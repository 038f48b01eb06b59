#include "DataTableModel.h"

#include "Errors.h"
#include "QtText.h"
#include "Report.h"
#include "corvane/author/Jobs.h"
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

// With the columns' names above where there are any.
std::string LinesOf(std::size_t rows, std::size_t columns, const std::vector<Column>& names,
                    const std::function<std::string(std::size_t row, std::size_t column)>& cell,
                    JobProgress* progress) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i)
        text += names[i].name + (i + 1 < names.size() ? '\t' : '\n');
    for (std::size_t row = 0; row < rows; ++row) {
        if (progress && row % 1000 == 0) {
            progress->StopIfCancelled();
            progress->SetPart(row, rows);
        }
        for (std::size_t i = 0; i < columns; ++i) {
            // What would look like the end of a field or line becomes a blank.
            std::string field = cell(row, i);
            std::replace_if(
                field.begin(), field.end(), [](char c) { return c == '\t' || c == '\n'; }, ' ');
            text += field + (i + 1 < columns ? '\t' : '\n');
        }
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

DataTableModel::~DataTableModel() {
    if (m_job)
        m_job->Cancel();
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
    if (view == m_wanted && (m_job || view == m_view))
        return;
    if (m_job)
        m_job->Cancel();
    m_job = nullptr;
    m_wanted = view;
    m_data->WithTable(m_owner, [self = QPointer(this), view, number = ++m_number](const SharedTable& table) {
        if (!self || number != self->m_number)
            return;
        if (!table)
            self->TakeRows(self->m_view, self->m_rows);
        else if (IsSmall(table->rows, table->columns.size()))
            self->TakeRows(view, RowsOf(*table, view));
        else
            self->StartFinding(view, table);
    });
}

void DataTableModel::StartFinding(const RowView& view, const SharedTable& table) {
    const bool sorts = view.sortColumn != m_view.sortColumn || view.descending != m_view.descending;
    m_job = StartJob(
        {.title = sorts ? Translated("Sort %1", {m_data->Info().name}) : Translated("Filter %1", {m_data->Info().name}),
         .owner = m_owner},
        [table, view](JobProgress& progress) { return RowsOf(*table, view, progress); },
        [self = QPointer(this), view, number = m_number](JobResult<std::vector<std::uint32_t>>& result) {
            if (!self || number != self->m_number)
                return;
            self->m_job = nullptr;
            if (result.WasCancelled())
                self->TakeRows(self->m_view, self->m_rows);
            else
                self->TakeRows(view, std::move(result.Value()));
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
    Table* page = nullptr;
    if (m_data->Space()->Keeps()) {
        std::vector<Id> rowIds;
        for (std::size_t i = first; i < last; ++i)
            rowIds.push_back(RowId(static_cast<int>(i)));
        page = new Table(TheStore().ReadRows(m_data->Number(), rowIds));
    } else {
        page = new Table(m_data->Data().Rows(
            {m_rows.begin() + static_cast<std::ptrdiff_t>(first), m_rows.begin() + static_cast<std::ptrdiff_t>(last)}));
    }
    m_pages.insert(pageNumber, page); // takes it over, and has room for one at least
    return *page;
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
    const std::string text = CellText(index);
    return m_columns[static_cast<std::size_t>(index.column())].IsNumeric() ? ShownNumber(text) : text;
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
    try {
        Change({ChangeOf(index, text)});
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
    std::vector<CellChange> changes;
    for (const QModelIndex& index : cells)
        if (!CellText(index).empty())
            changes.push_back(ChangeOf(index, {}));
    Change(changes);
}

void DataTableModel::Paste(const QModelIndex& from, const QString& text) {
    std::vector<CellChange> changes;
    QStringList lines = QString(text).remove('\r').split('\n');
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();
    for (qsizetype line = 0; line < lines.size(); ++line) {
        const QStringList fields = lines[line].split('\t');
        for (qsizetype fieldIndex = 0; fieldIndex < fields.size(); ++fieldIndex) {
            const QModelIndex cell =
                index(from.row() + static_cast<int>(line), from.column() + static_cast<int>(fieldIndex));
            const std::string field = Utf8(fields[fieldIndex].trimmed());
            if (cell.isValid() && field != EditedText(cell))
                changes.push_back(ChangeOf(cell, field));
        }
    }
    Change(changes);
}

void DataTableModel::WithText(const std::vector<int>& rows, const std::vector<int>& columns, bool withNames,
                              std::function<void(const QString&)> done) {
    std::vector<Column> named;
    for (const int column : columns)
        named.push_back(m_columns[static_cast<std::size_t>(column)]);
    const std::vector<Column>& names = withNames ? named : std::vector<Column>();
    if (IsSmall(rows.size(), columns.size())) {
        const auto Cell = [&](std::size_t row, std::size_t column) {
            return EditedText(index(rows[row], columns[column]));
        };
        return done(Text(LinesOf(rows.size(), columns.size(), names, Cell, nullptr)));
    }
    std::vector<std::size_t> positions;
    for (const int row : rows)
        positions.push_back(m_rows[static_cast<std::size_t>(row)]);
    m_data->WithTable(
        m_owner, [=, owner = m_owner, title = Translated("Copy %1", {m_data->Info().name})](const SharedTable& table) {
            if (!table)
                return;
            StartJob(
                {.title = title, .owner = owner},
                [=](JobProgress& progress) {
                    const auto Cell = [&](std::size_t row, std::size_t i) {
                        const Column& column = table->columns[static_cast<std::size_t>(columns[i])];
                        const std::string text = column.Text(positions[row]);
                        return column.IsNumeric() ? ShownNumber(text) : text;
                    };
                    return LinesOf(positions.size(), columns.size(), names, Cell, &progress);
                },
                [done](const std::string& text) { done(Text(text)); });
        });
}

} // namespace studies

#include "moc_DataTableModel.cpp"
