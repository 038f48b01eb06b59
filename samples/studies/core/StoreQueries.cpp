#include "Errors.h"
#include "Store.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <system_error>

namespace studies {
namespace {

constexpr const char* DataSetColumns = "SELECT id, study_id, name, source, row_count, notes FROM data_sets";
constexpr const char* AnalysisColumns =
    "SELECT id, study_id, data_set_id, name, kind, group_column, x_column, y_column, first_group, second_group,"
    " figure, bins, confidence, resamples, seed, result FROM analyses";

DataSet DataSetIn(const Statement& row) {
    return {row.Whole(0), row.Whole(1), row.Text(2), row.Text(3), row.Whole(4), row.Text(5)};
}

// As "count figure error low high"; nothing for a text that isn't one.
std::optional<BootstrapResult> ResultIn(const std::string& text) {
    std::array<double, 5> values{};
    const char* at = text.data();
    const char* const end = at + text.size();
    for (double& value : values) {
        at += at != text.data() && at != end;
        const auto [next, error] = std::from_chars(at, end, value);
        if (error != std::errc())
            return {};
        at = next;
    }
    return BootstrapResult{static_cast<std::size_t>(values[0]), values[1], values[2], {values[3], values[4]}};
}

Analysis AnalysisIn(const Statement& row) {
    AnalysisSettings settings;
    settings.kind = AnalysisKindOf(row.Text(4));
    settings.groupColumn = row.Text(5);
    settings.columnX = row.Text(6);
    settings.columnY = row.Text(7);
    settings.firstGroup = row.Text(8);
    settings.secondGroup = row.Text(9);
    settings.bootstrap.figure = BootstrapFigureOf(row.Text(10));
    settings.bins = static_cast<int>(row.Whole(11));
    settings.bootstrap.confidence = row.Number(12);
    settings.bootstrap.resamples = static_cast<int>(row.Whole(13));
    settings.bootstrap.seed = static_cast<std::uint64_t>(row.Whole(14));
    return {row.Whole(0), row.Whole(1), row.Whole(2), row.Text(3), std::move(settings), ResultIn(row.Text(15))};
}

// A filter of a column: "?" and what is bound to it.
struct Condition {
    std::string sql;
    std::string text;
    std::optional<double> number;
};

std::string EscapedForLike(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '%' || c == '_' || c == '\\')
            escaped += '\\';
        escaped += c;
    }
    return escaped;
}

Condition ContainsCondition(const std::string& columnName, const Column& column, std::string_view filter) {
    // A whole number is stored as a real one, whose text ends in ".0".
    const std::string value = column.type == ColumnType::Whole ? "CAST(" + columnName + " AS INTEGER)" : columnName;
    return {value + " LIKE ? ESCAPE '\\'", "%" + EscapedForLike(filter) + "%", std::nullopt};
}

Condition ConditionOf(const std::string& columnName, const Column& column, std::string_view filter) {
    for (const std::string_view operatorText : {"<>", "<=", ">=", "=", "<", ">"}) {
        if (filter.substr(0, operatorText.size()) != operatorText)
            continue;
        std::string_view value = filter.substr(operatorText.size());
        while (!value.empty() && value.front() == ' ')
            value.remove_prefix(1);
        if (value.empty() && operatorText == "=")
            return {columnName + " IS NULL", {}, std::nullopt};
        if (value.empty() && operatorText == "<>")
            return {columnName + " IS NOT NULL", {}, std::nullopt};
        if (value.empty())
            FailWith("A value is missing after “" + std::string(operatorText) + "”.");
        Condition condition{columnName + " " + std::string(operatorText) + " ?", std::string(value), std::nullopt};
        if (!column.IsNumeric()) {
            condition.sql += " COLLATE NOCASE";
            return condition;
        }
        condition.number = NumberOf(value);
        if (!condition.number)
            FailWith("“" + std::string(value) + "” isn't a number, and “" + column.name + "” is a numeric column.");
        return condition;
    }
    return ContainsCondition(columnName, column, filter);
}

std::vector<Condition> ConditionsOf(const std::vector<Column>& columns, const RowView& view) {
    std::vector<Condition> conditions;
    if (view.filter.empty())
        return conditions;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::string column = "c" + std::to_string(i);
        if (view.filterColumn < 0)
            conditions.push_back(ContainsCondition(column, columns[i], view.filter));
        else if (static_cast<std::size_t>(view.filterColumn) == i)
            conditions.push_back(ConditionOf(column, columns[i], view.filter));
    }
    return conditions;
}

void AddRow(Table& table, const Statement& row) {
    int columnIndex = 0;
    for (Column& column : table.columns) {
        if (column.IsNumeric())
            column.numbers.push_back(row.Number(++columnIndex));
        else
            column.texts.push_back(row.Text(++columnIndex));
    }
    ++table.rows;
}

} // namespace

std::string DataTable(Id dataSetId) {
    return "data_" + std::to_string(dataSetId);
}

std::vector<Study> Store::Studies() {
    std::vector<Study> studies;
    Statement rows(m_database, "SELECT id, name, notes FROM studies ORDER BY id");
    while (rows.Step())
        studies.push_back({rows.Whole(0), rows.Text(1), rows.Text(2)});
    return studies;
}

std::vector<DataSet> Store::DataSets(Id studyId) {
    std::vector<DataSet> dataSets;
    Statement rows(m_database, std::string(DataSetColumns) + " WHERE study_id=? ORDER BY id");
    rows.Bind(studyId);
    while (rows.Step())
        dataSets.push_back(DataSetIn(rows));
    return dataSets;
}

std::vector<Analysis> Store::Analyses(Id studyId) {
    std::vector<Analysis> analyses;
    Statement rows(m_database, std::string(AnalysisColumns) + " WHERE study_id=? ORDER BY id");
    rows.Bind(studyId);
    while (rows.Step())
        analyses.push_back(AnalysisIn(rows));
    return analyses;
}

Study Store::StudyOf(Id studyId) {
    CheckExists("studies", studyId);
    Statement row(m_database, "SELECT name, notes FROM studies WHERE id=?");
    row.Bind(studyId).Step();
    return {studyId, row.Text(0), row.Text(1)};
}

DataSet Store::DataSetOf(Id dataSetId) {
    CheckExists("data_sets", dataSetId);
    Statement row(m_database, std::string(DataSetColumns) + " WHERE id=?");
    row.Bind(dataSetId).Step();
    return DataSetIn(row);
}

Analysis Store::AnalysisOf(Id analysisId) {
    CheckExists("analyses", analysisId);
    Statement row(m_database, std::string(AnalysisColumns) + " WHERE id=?");
    row.Bind(analysisId).Step();
    return AnalysisIn(row);
}

bool Store::HasDataSet(Id dataSetId) {
    return Statement(m_database, "SELECT 1 FROM data_sets WHERE id=?").Bind(dataSetId).Step();
}

bool Store::HasAnalysis(Id analysisId) {
    return Statement(m_database, "SELECT 1 FROM analyses WHERE id=?").Bind(analysisId).Step();
}

std::vector<Column> Store::Columns(Id dataSetId) {
    std::vector<Column> columns;
    Statement rows(m_database,
                   "SELECT name, type, unit, decimals FROM data_columns WHERE data_set_id=? ORDER BY position");
    rows.Bind(dataSetId);
    while (rows.Step())
        columns.push_back(
            {rows.Text(0), ColumnTypeOf(rows.Text(1)), {}, {}, rows.Text(2), static_cast<int>(rows.Whole(3))});
    return columns;
}

Table Store::ReadDataSet(Id dataSetId) {
    CheckExists("data_sets", dataSetId);
    Table table;
    table.columns = Columns(dataSetId);
    Statement rows(m_database, "SELECT * FROM " + DataTable(dataSetId) + " ORDER BY id");
    while (rows.Step())
        AddRow(table, rows);
    return table;
}

std::vector<Id> Store::RowIds(Id dataSetId, const RowView& view) {
    CheckExists("data_sets", dataSetId);
    const std::vector<Column> columns = Columns(dataSetId);
    const std::vector<Condition> conditions = ConditionsOf(columns, view);
    std::string sql = "SELECT id FROM " + DataTable(dataSetId);
    for (const Condition& condition : conditions)
        sql += (&condition == &conditions.front() ? " WHERE " : " OR ") + condition.sql;
    if (view.sortColumn >= 0 && static_cast<std::size_t>(view.sortColumn) < columns.size()) {
        // What is missing comes last, whichever way the rows go.
        const std::string column = "c" + std::to_string(view.sortColumn);
        const bool text = !columns[static_cast<std::size_t>(view.sortColumn)].IsNumeric();
        sql += " ORDER BY " + column + " IS NULL, " + column + (text ? " COLLATE NOCASE" : "") +
               (view.descending ? " DESC" : "") + ", id";
    } else {
        sql += " ORDER BY id";
    }
    Statement rows(m_database, sql);
    for (const Condition& condition : conditions) {
        if (condition.number)
            rows.Bind(*condition.number);
        else if (condition.sql.find('?') != std::string::npos)
            rows.Bind(condition.text);
    }
    std::vector<Id> ids;
    while (rows.Step())
        ids.push_back(rows.Whole(0));
    return ids;
}

Table Store::ReadRows(Id dataSetId, std::span<const Id> rowIds) {
    CheckExists("data_sets", dataSetId);
    Table table;
    table.columns = Columns(dataSetId);
    Statement row(m_database, "SELECT * FROM " + DataTable(dataSetId) + " WHERE id=?");
    for (const Id rowId : rowIds) {
        if (!row.Bind(rowId).Step())
            FailWith("A row no longer exists.");
        AddRow(table, row);
        row.Run();
    }
    return table;
}

std::string Store::CellProblem(const Column& column, std::string_view text) {
    if (text.empty() || !column.IsNumeric())
        return {};
    const std::optional<double> value = NumberOf(text);
    if (!value)
        return "“" + std::string(text) + "” isn't a number, and “" + column.name + "” is a numeric column.";
    if (LosesDigits(text, *value))
        return "“" + std::string(text) + "” has more digits than a number keeps.";
    if (column.type == ColumnType::Whole && std::trunc(*value) != *value)
        return "“" + std::string(text) + "” isn't a whole number, and “" + column.name +
               "” is a column of whole numbers.";
    return {};
}

namespace {

void BindValue(Statement& statement, const Column& column, const std::string& text) {
    if (text.empty())
        statement.BindNull();
    else if (column.IsNumeric())
        statement.Bind(*NumberOf(text));
    else
        statement.Bind(text);
}

} // namespace

void Store::SetCells(Id dataSetId, const std::vector<CellChange>& changes) {
    CheckExists("data_sets", dataSetId);
    const std::vector<Column> columns = Columns(dataSetId);
    for (const CellChange& change : changes) {
        const Column& column = columns.at(static_cast<std::size_t>(change.column));
        if (const std::string problem = CellProblem(column, change.text); !problem.empty())
            FailWith(problem);
        RecordCells(dataSetId, change.column);
    }
    Perform(changes.size() == 1 ? "Change Value" : "Change Values", [&] {
        for (const CellChange& change : changes) {
            const Column& column = columns[static_cast<std::size_t>(change.column)];
            const std::string name = "c" + std::to_string(change.column);
            Statement update(m_database, "UPDATE " + DataTable(dataSetId) + " SET " + name + "=? WHERE id=?" +
                                             (change.before ? " AND " + name + " IS ?" : ""));
            BindValue(update, column, change.text);
            update.Bind(change.rowId);
            if (change.before)
                BindValue(update, column, *change.before);
            update.Run();
            if (m_database.ChangeCount() == 0)
                FailWith("“" + change.text +
                         "” hasn't been entered: the value there was changed in another window of "
                         "Studies. Enter it again to replace what is shown now.");
        }
        Statement(m_database, "UPDATE analyses SET result='' WHERE data_set_id=? AND result<>''").Bind(dataSetId).Run();
    });
    ++m_dataRevision;
}

// From now on changes of that column are undone. Only columns that are edited have such a trigger: one for all columns
// would be longer than SQLite takes.
void Store::RecordCells(Id dataSetId, int columnIndex) {
    const std::string table = DataTable(dataSetId);
    const std::string column = "c" + std::to_string(columnIndex);
    m_database.Run("CREATE TEMP TRIGGER IF NOT EXISTS log_" + table + "_" + column + " AFTER UPDATE OF " + column +
                   " ON main." + table + " BEGIN INSERT INTO undo_log(statement) VALUES('UPDATE " + table + " SET " +
                   column + "='||quote(OLD." + column + ")||' WHERE id='||OLD.id||' AND " + column +
                   " IS '||quote(NEW." + column + ")); END");
}

std::string Store::FreeDataSetName(std::string_view base, Id studyId) {
    std::string name(base);
    for (int n = 2; !DataSetNameProblem(name, studyId).empty(); ++n)
        name = std::string(base) + " " + std::to_string(n);
    return name;
}

std::string Store::DataSetNameProblem(std::string_view name, Id studyId, Id dataSetId) {
    if (name.find_first_not_of(' ') == std::string_view::npos)
        return "A data set needs a name.";
    if (std::any_of(name.begin(), name.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }))
        return "A data set's name must be on one line.";
    for (const DataSet& dataSet : DataSets(studyId))
        if (dataSet.id != dataSetId && corvane::EqualText(dataSet.name, name))
            return "The study has a data set “" + dataSet.name + "” already.";
    return {};
}

} // namespace studies
