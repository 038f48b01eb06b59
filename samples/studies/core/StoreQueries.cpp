#include "Errors.h"
#include "Store.h"
#include "StudyFile.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <locale>
#include <optional>
#include <set>
#include <sstream>

namespace studies {
namespace {

const std::string StudyColumns = "SELECT id, name, notes FROM studies";
const std::string DataSetColumns = "SELECT id, study_id, name, source, row_count, notes FROM data_sets";
const std::string AnalysisColumns =
    "SELECT id, study_id, data_set_id, name, kind, group_column, x_column, y_column, first_group, second_group,"
    " figure, bins, confidence, resamples, seed, result FROM analyses";

// As "count figure error low high", and maybe "start width" of bins and how many are in each; nothing for a text that
// isn't one.
std::optional<BootstrapResult> ResultIn(const std::string& text) {
    constexpr std::size_t figures = 5;
    constexpr std::size_t beforeCounts = 7;
    std::istringstream words(text);
    words.imbue(std::locale::classic());
    const std::vector<double> values(std::istream_iterator<double>(words), {});
    if (values.size() < figures)
        return {};
    BootstrapResult result{static_cast<std::size_t>(values[0]), values[1], values[2], {values[3], values[4]}};
    if (values.size() > beforeCounts)
        result.bins = {values[figures], values[figures + 1], values.size() - beforeCounts};
    for (std::size_t i = beforeCounts; i < values.size(); ++i)
        result.counts.push_back(static_cast<std::size_t>(values[i]));
    return result;
}

Study StudyIn(const Statement& row) {
    return {row.Whole(0), row.Text(1), row.Text(2)};
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
    for (Study& study : file.All(StudyColumns + " LIMIT 1", StudyIn))
        contents.study = std::move(study);
    for (DataSet& dataSet : file.All(DataSetColumns + " ORDER BY id", DataSetIn)) {
        std::vector<Column> columns = ColumnsOf(file, dataSet.id);
        contents.dataSets.emplace_back(std::move(dataSet), std::move(columns));
    }
    contents.analyses = file.All(AnalysisColumns + " ORDER BY id", AnalysisIn);
    return contents;
}

std::vector<Study> Store::Studies() {
    return m_database.All(StudyColumns + " ORDER BY id", StudyIn);
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
    return m_database.All(DataSetColumns + " WHERE study_id=? ORDER BY id", DataSetIn, studyId);
}

std::vector<Analysis> Store::Analyses(Id studyId) {
    return m_database.All(AnalysisColumns + " WHERE study_id=? ORDER BY id", AnalysisIn, studyId);
}

Study Store::StudyOf(Id studyId) {
    CheckExists("studies", studyId);
    return m_database.All(StudyColumns + " WHERE id=?", StudyIn, studyId).front();
}

DataSet Store::DataSetOf(Id dataSetId) {
    CheckExists("data_sets", dataSetId);
    return m_database.All(DataSetColumns + " WHERE id=?", DataSetIn, dataSetId).front();
}

Analysis Store::AnalysisOf(Id analysisId) {
    CheckExists("analyses", analysisId);
    return m_database.All(AnalysisColumns + " WHERE id=?", AnalysisIn, analysisId).front();
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
        statement.Bind(nullptr);
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
        m_steps->Watch(DataTable(dataSetId), "c" + std::to_string(column));
    Perform(changes.size() == 1 ? Translated("Change Value") : Translated("Change Values"), [&] {
        for (const CellChange& change : changes) {
            const Column& column = columns[static_cast<std::size_t>(change.column)];
            const std::string name = "c" + std::to_string(change.column);
            Statement& update = m_database.Prepared("UPDATE " + DataTable(dataSetId) + " SET " + name +
                                                    "=? WHERE id=?" + (change.before ? " AND " + name + " IS ?" : ""));
            BindValue(update.Again(), column, change.text);
            update.Bind(change.rowId);
            if (change.before)
                BindValue(update, column, *change.before);
            update.Run();
            if (m_database.ChangeCount() == 0)
                FailWith(Translated("“%1” hasn't been entered: the value there was changed in another window of "
                                    "Studies. Enter it again to replace what is shown now.",
                                    {change.text}));
        }
        m_database.Run("UPDATE analyses SET result='' WHERE data_set_id=? AND result<>''", dataSetId);
    });
    ++m_dataRevision;
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
