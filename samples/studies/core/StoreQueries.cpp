#include "Errors.h"
#include "Store.h"
#include "StudyFile.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <map>
#include <optional>
#include <set>
#include <system_error>
#include <tuple>

namespace studies {
namespace {

constexpr const char* DataSetColumns = "SELECT id, study_id, name, source, row_count, notes FROM data_sets";
constexpr const char* AnalysisColumns =
    "SELECT id, study_id, data_set_id, name, kind, group_column, x_column, y_column, first_group, second_group,"
    " figure, bins, confidence, resamples, seed, result FROM analyses";

// As "count figure error low high", and maybe "start width" of bins and how many are in each; nothing for a text that
// isn't one.
std::optional<BootstrapResult> ResultIn(const std::string& text) {
    constexpr std::size_t figures = 5;
    constexpr std::size_t beforeCounts = 7;
    std::vector<double> values;
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end) {
        at += values.empty() ? 0 : 1;
        const auto [next, error] = std::from_chars(at, end, values.emplace_back());
        if (error != std::errc())
            return {};
        at = next;
    }
    if (values.size() < figures)
        return {};
    BootstrapResult result{static_cast<std::size_t>(values[0]), values[1], values[2], {values[3], values[4]}};
    if (values.size() > beforeCounts)
        result.bins = {values[figures], values[figures + 1], values.size() - beforeCounts};
    for (std::size_t i = beforeCounts; i < values.size(); ++i)
        result.counts.push_back(static_cast<std::size_t>(values[i]));
    return result;
}

DataSet DataSetIn(const Statement& row) {
    return {row.Whole(0), row.Whole(1), row.Text(2), row.Text(3), row.Whole(4), row.Text(5)};
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

} // namespace

StudyContents ContentsOfFile(Database& file) {
    StudyContents contents;
    Statement study(file, "SELECT id, name, notes FROM studies");
    if (!study.Step())
        return contents;
    contents.study = {study.Whole(0), study.Text(1), study.Text(2)};
    Statement dataSets(file, std::string(DataSetColumns) + " ORDER BY id");
    while (dataSets.Step())
        contents.dataSets.emplace_back(DataSetIn(dataSets), ColumnsOf(file, dataSets.Whole(0)));
    Statement analyses(file, std::string(AnalysisColumns) + " ORDER BY id");
    while (analyses.Step())
        contents.analyses.push_back(AnalysisIn(analyses));
    return contents;
}

std::vector<Study> Store::Studies() {
    std::vector<Study> studies;
    Statement rows(m_database, "SELECT id, name, notes FROM studies ORDER BY id");
    while (rows.Step())
        studies.push_back({rows.Whole(0), rows.Text(1), rows.Text(2)});
    return studies;
}

StoreContents Store::Contents() {
    StoreContents contents;
    for (const auto& [kind, from] : {std::pair('a', "study_id, name FROM analyses"),
                                     {'d', "study_id, name FROM data_sets"},
                                     {'s', "0, name FROM studies"}}) {
        Statement rows(m_database, "SELECT id, " + std::string(from) + " ORDER BY id");
        while (rows.Step())
            contents.emplace_hint(contents.end(), std::pair(kind, rows.Whole(0)),
                                  StoreEntry{rows.Whole(1), rows.Text(2)});
    }
    return contents;
}

void Store::ReadTogether(const std::function<void()>& read) {
    Transaction transaction(m_database, "BEGIN");
    read();
    transaction.Commit();
}

std::vector<DataSet> Store::DataSets(Id studyId) {
    std::vector<DataSet> dataSets;
    if (!m_dataSetsOf)
        m_dataSetsOf.emplace(m_database, std::string(DataSetColumns) + " WHERE study_id=? ORDER BY id");
    Statement& rows = m_dataSetsOf->Again().Bind(studyId);
    while (rows.Step())
        dataSets.push_back(DataSetIn(rows));
    return dataSets;
}

std::vector<Analysis> Store::Analyses(Id studyId) {
    std::vector<Analysis> analyses;
    if (!m_analysesOf)
        m_analysesOf.emplace(m_database, std::string(AnalysisColumns) + " WHERE study_id=? ORDER BY id");
    Statement& rows = m_analysesOf->Again().Bind(studyId);
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

bool Store::HasStudy(Id studyId) {
    return Statement(m_database, "SELECT 1 FROM studies WHERE id=?").Bind(studyId).Step();
}

bool Store::HasDataSet(Id dataSetId) {
    return Statement(m_database, "SELECT 1 FROM data_sets WHERE id=?").Bind(dataSetId).Step();
}

bool Store::HasAnalysis(Id analysisId) {
    return Statement(m_database, "SELECT 1 FROM analyses WHERE id=?").Bind(analysisId).Step();
}

std::vector<Column> Store::Columns(Id dataSetId) {
    return ColumnsOf(m_database, dataSetId);
}

Table Store::ReadDataSet(Id dataSetId) {
    CheckExists("data_sets", dataSetId);
    constexpr std::size_t inOnePiece = 100'000;
    Table table;
    table.columns = Columns(dataSetId);
    while (ReadMoreRows(m_database, dataSetId, table, inOnePiece)) {
    }
    return table;
}

Table Store::ReadRows(Id dataSetId, std::span<const Id> rowIds) {
    CheckExists("data_sets", dataSetId);
    Table table;
    table.columns = Columns(dataSetId);
    for (std::size_t i = 0; i < rowIds.size();) {
        const std::size_t first = i++; // of those that stand together in the file, too
        while (i < rowIds.size() && rowIds[i] == rowIds[i - 1] + 1)
            ++i;
        table.rows = static_cast<std::size_t>(rowIds[first]) - 1;
        if (!ReadMoreRows(m_database, dataSetId, table, i - first))
            FailWith(Translated("A row no longer exists."));
    }
    table.rows = rowIds.size();
    return table;
}

std::string Store::CellProblem(const Column& column, std::string_view text) {
    if (!text.empty() && column.type == ColumnType::Date && DateOf(text) != std::string(text))
        return Translated("“%1” isn't a date, and “%2” is a column of dates. Write it as 2026-11-25.",
                          {text, column.name});
    if (text.empty() || !column.IsNumeric())
        return {};
    const std::optional<double> value = NumberOf(text);
    if (!value)
        return Translated("“%1” isn't a number, and “%2” is a numeric column.", {text, column.name});
    if (LosesDigits(text, *value))
        return Translated("“%1” has more digits than a number keeps.", {text});
    if (column.type == ColumnType::Whole && std::trunc(*value) != *value)
        return Translated("“%1” isn't a whole number, and “%2” is a column of whole numbers.", {text, column.name});
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
    std::set<int> changed;
    for (const CellChange& change : changes) {
        const Column& column = columns.at(static_cast<std::size_t>(change.column));
        if (const std::string problem = CellProblem(column, change.text); !problem.empty())
            FailWith(problem);
        changed.insert(change.column);
    }
    for (const int column : changed)
        RecordCells(dataSetId, column);
    Perform(changes.size() == 1 ? Translated("Change Value") : Translated("Change Values"), [&] {
        std::map<std::pair<int, bool>, Statement> updates; // there may be many cells
        for (const CellChange& change : changes) {
            const Column& column = columns[static_cast<std::size_t>(change.column)];
            const std::pair key(change.column, change.before.has_value());
            auto it = updates.find(key);
            if (it == updates.end()) {
                const std::string name = "c" + std::to_string(change.column);
                it = updates
                         .emplace(std::piecewise_construct, std::forward_as_tuple(key),
                                  std::forward_as_tuple(
                                      m_database, "UPDATE " + DataTable(dataSetId) + " SET " + name + "=? WHERE id=?" +
                                                      (change.before ? " AND " + name + " IS ?" : "")))
                         .first;
            }
            Statement& update = it->second;
            BindValue(update, column, change.text);
            update.Bind(change.rowId);
            if (change.before)
                BindValue(update, column, *change.before);
            update.Run();
            if (m_database.ChangeCount() == 0)
                FailWith(Translated("“%1” hasn't been entered: the value there was changed in another window of "
                                    "Studies. Enter it again to replace what is shown now.",
                                    {change.text}));
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
        return Translated("A data set needs a name.");
    if (std::any_of(name.begin(), name.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }))
        return Translated("A data set's name must be on one line.");
    for (const DataSet& dataSet : DataSets(studyId))
        if (dataSet.id != dataSetId && corvane::EqualText(dataSet.name, name))
            return Translated("The study has a data set “%1” already.", {dataSet.name});
    return {};
}

} // namespace studies
