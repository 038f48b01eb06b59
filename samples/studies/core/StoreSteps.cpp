#include "Errors.h"
#include "Store.h"
#include "corvane/base/Text.h"

#include <map>

namespace studies {
namespace {

constexpr std::size_t MostColumns = 1000;

std::string DataTable(Id nDataSetId) {
    return "data_" + std::to_string(nDataSetId);
}

std::string DataTableSql(Id nDataSetId, const std::vector<Column>& aColumns) {
    std::string sSql = "CREATE TABLE " + DataTable(nDataSetId) + "(id INTEGER PRIMARY KEY";
    for (std::size_t i = 0; i < aColumns.size(); ++i)
        sSql += ", c" + std::to_string(i) + (aColumns[i].IsNumeric() ? " REAL" : " TEXT");
    return sSql + ")";
}

// The statement begins with the places of the name and the settings; the numbers follow them.
void WriteAnalysis(Database& oDatabase, std::string_view sSql, std::string_view sName,
                   const AnalysisSettings& oSettings, std::initializer_list<Id> aNumbers) {
    Statement oWrite(oDatabase, sSql);
    oWrite.Bind(sName).Bind(NameOf(oSettings.eKind));
    for (const std::string* pText : {&oSettings.sGroupColumn, &oSettings.sColumnX, &oSettings.sColumnY,
                                     &oSettings.sFirstGroup, &oSettings.sSecondGroup})
        oWrite.Bind(*pText);
    oWrite.Bind(NameOf(oSettings.oBootstrap.eFigure)).Bind(std::int64_t{oSettings.nBins});
    oWrite.Bind(oSettings.oBootstrap.dblConfidence).Bind(std::int64_t{oSettings.oBootstrap.nResamples});
    oWrite.Bind(static_cast<std::int64_t>(oSettings.oBootstrap.nSeed));
    for (const Id nNumber : aNumbers)
        oWrite.Bind(nNumber);
    oWrite.Run();
}

} // namespace

Id Store::CreateStudy(std::string_view sName) {
    Id nId = 0;
    Perform("New Study", [&] {
        if (const std::string sProblem = NameProblem(sName); !sProblem.empty())
            FailWith(sProblem);
        Statement oInsert(m_oDatabase, "INSERT INTO studies(name, name_key) VALUES(?,?)");
        oInsert.Bind(sName).Bind(corvane::FoldText(sName)).Run();
        nId = m_oDatabase.LastId();
    });
    return nId;
}

void Store::RenameStudy(Id nStudyId, std::string_view sName) {
    Perform("Rename Study", [&] {
        CheckExists("studies", nStudyId);
        if (const std::string sProblem = NameProblem(sName, nStudyId); !sProblem.empty())
            FailWith(sProblem);
        Statement oUpdate(m_oDatabase, "UPDATE studies SET name=?, name_key=? WHERE id=?");
        oUpdate.Bind(sName).Bind(corvane::FoldText(sName)).Bind(nStudyId).Run();
    });
}

void Store::DeleteStudy(Id nStudyId) {
    Perform("Delete Study", [&] {
        CheckExists("studies", nStudyId);
        for (const char* sSql : {"DELETE FROM analyses WHERE study_id=?",
                                 "DELETE FROM data_columns WHERE data_set_id IN"
                                 " (SELECT id FROM data_sets WHERE study_id=?)",
                                 "DELETE FROM data_sets WHERE study_id=?", "DELETE FROM studies WHERE id=?"})
            Statement(m_oDatabase, sSql).Bind(nStudyId).Run();
    });
}

Id Store::DuplicateStudy(Id nStudyId) {
    Id nCopyId = 0;
    Perform("Duplicate Study", [&] {
        const std::string sName = FreeName("Copy of " + StudyOf(nStudyId).sName, false);
        if (const std::string sProblem = NameProblem(sName); !sProblem.empty())
            FailWith(sProblem);
        Statement oInsert(m_oDatabase, "INSERT INTO studies(name, name_key, notes)"
                                       " SELECT ?, ?, notes FROM studies WHERE id=?");
        oInsert.Bind(sName).Bind(corvane::FoldText(sName)).Bind(nStudyId).Run();
        nCopyId = m_oDatabase.LastId();
        std::map<Id, Id> mapDataSets;
        for (const DataSet& oDataSet : DataSets(nStudyId))
            mapDataSets[oDataSet.nId] = CopyDataSet(oDataSet, nCopyId);
        for (const Analysis& oAnalysis : Analyses(nStudyId))
            WriteAnalysis(
                m_oDatabase,
                "INSERT INTO analyses(name, kind, group_column, x_column, y_column, first_group, second_group,"
                " figure, bins, confidence, resamples, seed, study_id, data_set_id)"
                " VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?,?)",
                oAnalysis.sName, oAnalysis.oSettings, {nCopyId, mapDataSets.at(oAnalysis.nDataSetId)});
    });
    return nCopyId;
}

Id Store::CopyDataSet(const DataSet& oDataSet, Id nStudyId) {
    Statement oInsert(m_oDatabase, "INSERT INTO data_sets(study_id, name, source, row_count, notes) VALUES(?,?,?,?,?)");
    oInsert.Bind(nStudyId).Bind(oDataSet.sName).Bind(oDataSet.sSource).Bind(oDataSet.nRows).Bind(oDataSet.sNotes).Run();
    const Id nCopyId = m_oDatabase.LastId();
    Statement oColumns(m_oDatabase, "INSERT INTO data_columns(data_set_id, position, name, type, unit)"
                                    " SELECT ?, position, name, type, unit FROM data_columns WHERE data_set_id=?");
    oColumns.Bind(nCopyId).Bind(oDataSet.nId).Run();
    m_oDatabase.Run(DataTableSql(nCopyId, Columns(oDataSet.nId)));
    m_oDatabase.Run("INSERT INTO " + DataTable(nCopyId) + " SELECT * FROM " + DataTable(oDataSet.nId));
    return nCopyId;
}

Id Store::ImportDataSet(Id nStudyId, std::string_view sName, std::string_view sSource, const Table& oTable) {
    if (oTable.aColumns.size() > MostColumns)
        FailWith("The data have " + std::to_string(oTable.aColumns.size()) + " columns; a data set has at most " +
                 std::to_string(MostColumns) + ".");
    Id nId = 0;
    Perform("Import", [&] {
        CheckExists("studies", nStudyId);
        Statement oInsert(m_oDatabase, "INSERT INTO data_sets(study_id, name, source, row_count) VALUES(?,?,?,?)");
        oInsert.Bind(nStudyId).Bind(sName).Bind(sSource).Bind(static_cast<std::int64_t>(oTable.nRows)).Run();
        nId = m_oDatabase.LastId();
        Statement oColumn(m_oDatabase, "INSERT INTO data_columns(data_set_id, position, name, type, unit)"
                                       " VALUES(?,?,?,?,?)");
        for (std::size_t i = 0; i < oTable.aColumns.size(); ++i)
            oColumn.Bind(nId)
                .Bind(static_cast<std::int64_t>(i))
                .Bind(oTable.aColumns[i].sName)
                .Bind(NameOf(oTable.aColumns[i].eType))
                .Bind(oTable.aColumns[i].sUnit)
                .Run();
        m_oDatabase.Run(DataTableSql(nId, oTable.aColumns));
        WriteRows(nId, oTable);
    });
    return nId;
}

void Store::WriteRows(Id nDataSetId, const Table& oTable) {
    std::string sPlaces;
    for (std::size_t i = 0; i < oTable.aColumns.size(); ++i)
        sPlaces += ",?";
    Statement oInsert(m_oDatabase, "INSERT INTO " + DataTable(nDataSetId) + " VALUES(NULL" + sPlaces + ")");
    for (std::size_t iRow = 0; iRow < oTable.nRows; ++iRow) {
        for (const Column& oColumn : oTable.aColumns) {
            if (oColumn.IsMissing(iRow))
                oInsert.BindNull();
            else if (oColumn.IsNumeric())
                oInsert.Bind(oColumn.aNumbers[iRow]);
            else
                oInsert.Bind(oColumn.aTexts[iRow]);
        }
        oInsert.Run();
    }
}

void Store::DeleteDataSet(Id nDataSetId) {
    Perform("Delete Data Set", [&] {
        CheckExists("data_sets", nDataSetId);
        for (const char* sSql : {"DELETE FROM analyses WHERE data_set_id=?",
                                 "DELETE FROM data_columns WHERE data_set_id=?", "DELETE FROM data_sets WHERE id=?"})
            Statement(m_oDatabase, sSql).Bind(nDataSetId).Run();
    });
}

Id Store::AddAnalysis(Id nDataSetId, std::string_view sName, const AnalysisSettings& oSettings) {
    Id nId = 0;
    Perform("New Analysis", [&] {
        CheckExists("data_sets", nDataSetId);
        WriteAnalysis(m_oDatabase,
                      "INSERT INTO analyses(name, kind, group_column, x_column, y_column, first_group, second_group,"
                      " figure, bins, confidence, resamples, seed, study_id, data_set_id)"
                      " SELECT ?,?,?,?,?,?,?,?,?,?,?,?, study_id, id FROM data_sets WHERE id=?",
                      sName, oSettings, {nDataSetId});
        nId = m_oDatabase.LastId();
    });
    return nId;
}

void Store::ChangeAnalysis(Id nAnalysisId, std::string_view sName, const AnalysisSettings& oSettings) {
    Perform("Change Analysis", [&] {
        CheckExists("analyses", nAnalysisId);
        WriteAnalysis(m_oDatabase,
                      "UPDATE analyses SET name=?, kind=?, group_column=?, x_column=?, y_column=?, first_group=?,"
                      " second_group=?, figure=?, bins=?, confidence=?, resamples=?, seed=? WHERE id=?",
                      sName, oSettings, {nAnalysisId});
    });
}

void Store::SetStudyProperties(Id nStudyId, std::string_view sName, std::string_view sNotes) {
    Perform("Change Study", [&] {
        CheckExists("studies", nStudyId);
        if (const std::string sProblem = NameProblem(sName, nStudyId); !sProblem.empty())
            FailWith(sProblem);
        Statement oUpdate(m_oDatabase, "UPDATE studies SET name=?, name_key=?, notes=? WHERE id=?");
        oUpdate.Bind(sName).Bind(corvane::FoldText(sName)).Bind(sNotes).Bind(nStudyId).Run();
    });
}

void Store::SetDataSetProperties(Id nDataSetId, const DataSetProperties& oProperties) {
    Perform("Change Data Set", [&] {
        const DataSet oDataSet = DataSetOf(nDataSetId);
        if (const std::string sProblem = DataSetNameProblem(oProperties.sName, oDataSet.nStudyId, nDataSetId);
            !sProblem.empty())
            FailWith(sProblem);
        Statement oUpdate(m_oDatabase, "UPDATE data_sets SET name=?, notes=? WHERE id=?");
        oUpdate.Bind(oProperties.sName).Bind(oProperties.sNotes).Bind(nDataSetId).Run();
        if (oProperties.sName != oDataSet.sName)
            RenameAnalyses(oDataSet, oProperties.sName);
        Statement oUnit(m_oDatabase, "UPDATE data_columns SET unit=? WHERE data_set_id=? AND position=?");
        for (std::size_t i = 0; i < oProperties.aUnits.size(); ++i)
            oUnit.Bind(oProperties.aUnits[i]).Bind(nDataSetId).Bind(static_cast<std::int64_t>(i)).Run();
    });
}

// The data set's name is part of their titles.
void Store::RenameAnalyses(const DataSet& oDataSet, std::string_view sNewName) {
    Statement oUpdate(m_oDatabase, "UPDATE analyses SET name=? WHERE id=?");
    for (const Analysis& oAnalysis : Analyses(oDataSet.nStudyId))
        if (oAnalysis.nDataSetId == oDataSet.nId && oAnalysis.sName == oAnalysis.oSettings.Title(oDataSet.sName))
            oUpdate.Bind(oAnalysis.oSettings.Title(sNewName)).Bind(oAnalysis.nId).Run();
}

void Store::DeleteAnalysis(Id nAnalysisId) {
    Perform("Delete Analysis", [&] {
        CheckExists("analyses", nAnalysisId);
        Statement(m_oDatabase, "DELETE FROM analyses WHERE id=?").Bind(nAnalysisId).Run();
    });
}

} // namespace studies
