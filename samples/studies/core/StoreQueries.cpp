#include "Errors.h"
#include "Store.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace studies {
namespace {

constexpr const char* DataSetColumns = "SELECT id, study_id, name, source, row_count, notes FROM data_sets";
constexpr const char* AnalysisColumns =
    "SELECT id, study_id, data_set_id, name, kind, group_column, x_column, y_column, first_group, second_group,"
    " figure, bins, confidence, resamples, seed FROM analyses";

DataSet DataSetIn(const Statement& oRow) {
    return {oRow.Whole(0), oRow.Whole(1), oRow.Text(2), oRow.Text(3), oRow.Whole(4), oRow.Text(5)};
}

Analysis AnalysisIn(const Statement& oRow) {
    AnalysisSettings oSettings;
    oSettings.eKind = AnalysisKindOf(oRow.Text(4));
    oSettings.sGroupColumn = oRow.Text(5);
    oSettings.sColumnX = oRow.Text(6);
    oSettings.sColumnY = oRow.Text(7);
    oSettings.sFirstGroup = oRow.Text(8);
    oSettings.sSecondGroup = oRow.Text(9);
    oSettings.oBootstrap.eFigure = BootstrapFigureOf(oRow.Text(10));
    oSettings.nBins = static_cast<int>(oRow.Whole(11));
    oSettings.oBootstrap.dblConfidence = oRow.Number(12);
    oSettings.oBootstrap.nResamples = static_cast<int>(oRow.Whole(13));
    oSettings.oBootstrap.nSeed = static_cast<std::uint64_t>(oRow.Whole(14));
    return {oRow.Whole(0), oRow.Whole(1), oRow.Whole(2), oRow.Text(3), std::move(oSettings)};
}

// A filter of a column: "?" and what is bound to it.
struct Condition {
    std::string sSql;
    std::string sText;
    std::optional<double> dblNumber;
};

std::string EscapedForLike(std::string_view sText) {
    std::string sEscaped;
    for (const char c : sText) {
        if (c == '%' || c == '_' || c == '\\')
            sEscaped += '\\';
        sEscaped += c;
    }
    return sEscaped;
}

Condition ContainsCondition(const std::string& sColumn, const Column& oColumn, std::string_view sFilter) {
    // A whole number is stored as a real one, whose text ends in ".0".
    const std::string sValue = oColumn.eType == ColumnType::Whole ? "CAST(" + sColumn + " AS INTEGER)" : sColumn;
    return {sValue + " LIKE ? ESCAPE '\\'", "%" + EscapedForLike(sFilter) + "%", std::nullopt};
}

Condition ConditionOf(const std::string& sColumn, const Column& oColumn, std::string_view sFilter) {
    for (const std::string_view sOperator : {"<>", "<=", ">=", "=", "<", ">"}) {
        if (sFilter.substr(0, sOperator.size()) != sOperator)
            continue;
        std::string_view sValue = sFilter.substr(sOperator.size());
        while (!sValue.empty() && sValue.front() == ' ')
            sValue.remove_prefix(1);
        if (sValue.empty() && sOperator == "=")
            return {sColumn + " IS NULL", {}, std::nullopt};
        if (sValue.empty() && sOperator == "<>")
            return {sColumn + " IS NOT NULL", {}, std::nullopt};
        if (sValue.empty())
            FailWith("A value is missing after “" + std::string(sOperator) + "”.");
        Condition oCondition{sColumn + " " + std::string(sOperator) + " ?", std::string(sValue), std::nullopt};
        if (!oColumn.IsNumeric()) {
            oCondition.sSql += " COLLATE NOCASE";
            return oCondition;
        }
        oCondition.dblNumber = NumberOf(sValue);
        if (!oCondition.dblNumber)
            FailWith("“" + std::string(sValue) + "” isn't a number, and “" + oColumn.sName + "” is a numeric column.");
        return oCondition;
    }
    return ContainsCondition(sColumn, oColumn, sFilter);
}

std::vector<Condition> ConditionsOf(const std::vector<Column>& aColumns, const RowView& oView) {
    std::vector<Condition> aConditions;
    if (oView.sFilter.empty())
        return aConditions;
    for (std::size_t i = 0; i < aColumns.size(); ++i) {
        const std::string sColumn = "c" + std::to_string(i);
        if (oView.iFilterColumn < 0)
            aConditions.push_back(ContainsCondition(sColumn, aColumns[i], oView.sFilter));
        else if (static_cast<std::size_t>(oView.iFilterColumn) == i)
            aConditions.push_back(ConditionOf(sColumn, aColumns[i], oView.sFilter));
    }
    return aConditions;
}

void AddRow(Table& oTable, const Statement& oRow) {
    int iColumn = 0;
    for (Column& oColumn : oTable.aColumns) {
        if (oColumn.IsNumeric())
            oColumn.aNumbers.push_back(oRow.Number(++iColumn));
        else
            oColumn.aTexts.push_back(oRow.Text(++iColumn));
    }
    ++oTable.nRows;
}

std::string DataTable(Id nDataSetId) {
    return "data_" + std::to_string(nDataSetId);
}

} // namespace

std::vector<Study> Store::Studies() {
    std::vector<Study> aStudies;
    Statement oRows(m_oDatabase, "SELECT id, name, notes FROM studies ORDER BY id");
    while (oRows.Step())
        aStudies.push_back({oRows.Whole(0), oRows.Text(1), oRows.Text(2)});
    return aStudies;
}

std::vector<DataSet> Store::DataSets(Id nStudyId) {
    std::vector<DataSet> aDataSets;
    Statement oRows(m_oDatabase, std::string(DataSetColumns) + " WHERE study_id=? ORDER BY id");
    oRows.Bind(nStudyId);
    while (oRows.Step())
        aDataSets.push_back(DataSetIn(oRows));
    return aDataSets;
}

std::vector<Analysis> Store::Analyses(Id nStudyId) {
    std::vector<Analysis> aAnalyses;
    Statement oRows(m_oDatabase, std::string(AnalysisColumns) + " WHERE study_id=? ORDER BY id");
    oRows.Bind(nStudyId);
    while (oRows.Step())
        aAnalyses.push_back(AnalysisIn(oRows));
    return aAnalyses;
}

Study Store::StudyOf(Id nStudyId) {
    CheckExists("studies", nStudyId);
    Statement oRow(m_oDatabase, "SELECT name, notes FROM studies WHERE id=?");
    oRow.Bind(nStudyId).Step();
    return {nStudyId, oRow.Text(0), oRow.Text(1)};
}

DataSet Store::DataSetOf(Id nDataSetId) {
    CheckExists("data_sets", nDataSetId);
    Statement oRow(m_oDatabase, std::string(DataSetColumns) + " WHERE id=?");
    oRow.Bind(nDataSetId).Step();
    return DataSetIn(oRow);
}

Analysis Store::AnalysisOf(Id nAnalysisId) {
    CheckExists("analyses", nAnalysisId);
    Statement oRow(m_oDatabase, std::string(AnalysisColumns) + " WHERE id=?");
    oRow.Bind(nAnalysisId).Step();
    return AnalysisIn(oRow);
}

bool Store::HasDataSet(Id nDataSetId) {
    return Statement(m_oDatabase, "SELECT 1 FROM data_sets WHERE id=?").Bind(nDataSetId).Step();
}

bool Store::HasAnalysis(Id nAnalysisId) {
    return Statement(m_oDatabase, "SELECT 1 FROM analyses WHERE id=?").Bind(nAnalysisId).Step();
}

std::vector<Column> Store::Columns(Id nDataSetId) {
    std::vector<Column> aColumns;
    Statement oRows(m_oDatabase, "SELECT name, type, unit FROM data_columns WHERE data_set_id=? ORDER BY position");
    oRows.Bind(nDataSetId);
    while (oRows.Step())
        aColumns.push_back({oRows.Text(0), ColumnTypeOf(oRows.Text(1)), {}, {}, oRows.Text(2)});
    return aColumns;
}

Table Store::ReadDataSet(Id nDataSetId) {
    CheckExists("data_sets", nDataSetId);
    Table oTable;
    oTable.aColumns = Columns(nDataSetId);
    Statement oRows(m_oDatabase, "SELECT * FROM " + DataTable(nDataSetId) + " ORDER BY id");
    while (oRows.Step())
        AddRow(oTable, oRows);
    return oTable;
}

std::vector<Id> Store::RowIds(Id nDataSetId, const RowView& oView) {
    CheckExists("data_sets", nDataSetId);
    const std::vector<Column> aColumns = Columns(nDataSetId);
    const std::vector<Condition> aConditions = ConditionsOf(aColumns, oView);
    std::string sSql = "SELECT id FROM " + DataTable(nDataSetId);
    for (const Condition& oCondition : aConditions)
        sSql += (&oCondition == &aConditions.front() ? " WHERE " : " OR ") + oCondition.sSql;
    if (oView.iSortColumn >= 0 && static_cast<std::size_t>(oView.iSortColumn) < aColumns.size()) {
        // What is missing comes last, whichever way the rows go.
        const std::string sColumn = "c" + std::to_string(oView.iSortColumn);
        const bool bText = !aColumns[static_cast<std::size_t>(oView.iSortColumn)].IsNumeric();
        sSql += " ORDER BY " + sColumn + " IS NULL, " + sColumn + (bText ? " COLLATE NOCASE" : "") +
                (oView.bDescending ? " DESC" : "") + ", id";
    } else {
        sSql += " ORDER BY id";
    }
    Statement oRows(m_oDatabase, sSql);
    for (const Condition& oCondition : aConditions) {
        if (oCondition.dblNumber)
            oRows.Bind(*oCondition.dblNumber);
        else if (oCondition.sSql.find('?') != std::string::npos)
            oRows.Bind(oCondition.sText);
    }
    std::vector<Id> aIds;
    while (oRows.Step())
        aIds.push_back(oRows.Whole(0));
    return aIds;
}

Table Store::ReadRows(Id nDataSetId, std::span<const Id> aRowIds) {
    CheckExists("data_sets", nDataSetId);
    Table oTable;
    oTable.aColumns = Columns(nDataSetId);
    Statement oRow(m_oDatabase, "SELECT * FROM " + DataTable(nDataSetId) + " WHERE id=?");
    for (const Id nRowId : aRowIds) {
        if (!oRow.Bind(nRowId).Step())
            FailWith("A row no longer exists.");
        AddRow(oTable, oRow);
        oRow.Run();
    }
    return oTable;
}

std::string Store::CellProblem(const Column& oColumn, std::string_view sText) {
    if (sText.empty() || !oColumn.IsNumeric())
        return {};
    const std::optional<double> dblValue = NumberOf(sText);
    if (!dblValue)
        return "“" + std::string(sText) + "” isn't a number, and “" + oColumn.sName + "” is a numeric column.";
    if (oColumn.eType == ColumnType::Whole && std::trunc(*dblValue) != *dblValue)
        return "“" + std::string(sText) + "” isn't a whole number, and “" + oColumn.sName +
               "” is a column of whole numbers.";
    return {};
}

void Store::SetCells(Id nDataSetId, const std::vector<CellChange>& aChanges) {
    CheckExists("data_sets", nDataSetId);
    const std::vector<Column> aColumns = Columns(nDataSetId);
    for (const CellChange& oChange : aChanges) {
        if (const std::string sProblem =
                CellProblem(aColumns.at(static_cast<std::size_t>(oChange.iColumn)), oChange.sText);
            !sProblem.empty())
            FailWith(sProblem);
        RecordCells(nDataSetId, oChange.iColumn);
    }
    Perform(aChanges.size() == 1 ? "Change Value" : "Change Values", [&] {
        for (const CellChange& oChange : aChanges) {
            Statement oUpdate(m_oDatabase, "UPDATE " + DataTable(nDataSetId) + " SET c" +
                                               std::to_string(oChange.iColumn) + "=? WHERE id=?");
            if (oChange.sText.empty())
                oUpdate.BindNull();
            else if (aColumns[static_cast<std::size_t>(oChange.iColumn)].IsNumeric())
                oUpdate.Bind(*NumberOf(oChange.sText));
            else
                oUpdate.Bind(oChange.sText);
            oUpdate.Bind(oChange.nRowId).Run();
        }
    });
    ++m_nDataRevision;
}

// From now on changes of that column are undone. Only columns that are edited have such a trigger: one for all columns
// would be longer than SQLite takes.
void Store::RecordCells(Id nDataSetId, int iColumn) {
    const std::string sTable = DataTable(nDataSetId);
    const std::string sColumn = "c" + std::to_string(iColumn);
    m_oDatabase.Run("CREATE TEMP TRIGGER IF NOT EXISTS log_" + sTable + "_" + sColumn + " AFTER UPDATE OF " + sColumn +
                    " ON main." + sTable + " BEGIN INSERT INTO undo_log(statement) VALUES('UPDATE " + sTable + " SET " +
                    sColumn + "='||quote(OLD." + sColumn + ")||' WHERE id='||OLD.id); END");
}

std::string Store::FreeDataSetName(std::string_view sBase, Id nStudyId) {
    std::string sName(sBase);
    for (int n = 2; !DataSetNameProblem(sName, nStudyId).empty(); ++n)
        sName = std::string(sBase) + " " + std::to_string(n);
    return sName;
}

std::string Store::DataSetNameProblem(std::string_view sName, Id nStudyId, Id nDataSetId) {
    if (sName.find_first_not_of(' ') == std::string_view::npos)
        return "A data set needs a name.";
    if (std::any_of(sName.begin(), sName.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }))
        return "A data set's name must be on one line.";
    for (const DataSet& oDataSet : DataSets(nStudyId))
        if (oDataSet.nId != nDataSetId && corvane::EqualText(oDataSet.sName, sName))
            return "The study has a data set “" + oDataSet.sName + "” already.";
    return {};
}

} // namespace studies
