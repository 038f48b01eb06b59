#include "Errors.h"
#include "Store.h"
#include "StudyFile.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <map>

namespace studies {
namespace {

constexpr std::size_t MostColumns = 1000;

// As ResultIn of StoreQueries.cpp reads it, without loss.
std::string TextOfResult(const std::optional<BootstrapResult>& result) {
    if (!result)
        return {};
    std::vector<double> values{static_cast<double>(result->count), result->figure, result->error, result->interval.low,
                               result->interval.high};
    if (!result->counts.empty())
        values.insert(values.end(), {result->bins.start, result->bins.width});
    values.insert(values.end(), result->counts.begin(), result->counts.end());
    std::string text;
    for (const double value : values) {
        std::array<char, 32> letters{};
        text += text.empty() ? "" : " ";
        text.append(letters.data(), std::to_chars(letters.begin(), letters.end(), value).ptr);
    }
    return text;
}

// The statement begins with the places of the name, the settings and the result; the numbers follow them.
void WriteAnalysis(Database& database, std::string_view sql, std::string_view name, const AnalysisSettings& settings,
                   const std::optional<BootstrapResult>& result, std::initializer_list<Id> numbers) {
    Statement write(database, sql);
    write.Bind(name).Bind(NameOf(settings.kind));
    for (const std::string* text :
         {&settings.groupColumn, &settings.columnX, &settings.columnY, &settings.firstGroup, &settings.secondGroup})
        write.Bind(*text);
    write.Bind(NameOf(settings.bootstrap.figure)).Bind(std::int64_t{settings.bins});
    write.Bind(settings.bootstrap.confidence).Bind(std::int64_t{settings.bootstrap.resamples});
    write.Bind(static_cast<std::int64_t>(settings.bootstrap.seed)).Bind(TextOfResult(result));
    for (const Id number : numbers)
        write.Bind(number);
    write.Run();
}

constexpr const char* WholeAnalysis =
    "INSERT INTO analyses(name, kind, group_column, x_column, y_column, first_group, second_group, figure, bins,"
    " confidence, resamples, seed, result, study_id, data_set_id) VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)";

void WriteColumns(Database& database, Id dataSetId, const std::vector<Column>& columns) {
    Statement write(database, "INSERT INTO data_columns(data_set_id, position, name, type, unit, decimals)"
                              " VALUES(?,?,?,?,?,?)");
    for (std::size_t i = 0; i < columns.size(); ++i)
        write.Bind(dataSetId)
            .Bind(static_cast<std::int64_t>(i))
            .Bind(columns[i].name)
            .Bind(NameOf(columns[i].type))
            .Bind(columns[i].unit)
            .Bind(static_cast<std::int64_t>(columns[i].decimals))
            .Run();
}

} // namespace

Id WriteContents(Database& database, const StudyContents& contents) {
    Statement study(database, "INSERT INTO studies(name, name_key, notes) VALUES(?,?,?)");
    study.Bind(contents.study.name).Bind(corvane::FoldText(contents.study.name)).Bind(contents.study.notes).Run();
    const Id id = database.LastId();
    Statement insert(database,
                     "INSERT INTO data_sets(id, study_id, name, source, row_count, notes) VALUES(?,?,?,?,?,?)");
    for (const auto& [dataSet, columns] : contents.dataSets) {
        insert.Bind(dataSet.id).Bind(id).Bind(dataSet.name).Bind(dataSet.source).Bind(dataSet.rows);
        insert.Bind(dataSet.notes).Run();
        WriteColumns(database, dataSet.id, columns);
    }
    for (const Analysis& analysis : contents.analyses)
        WriteAnalysis(database, WholeAnalysis, analysis.name, analysis.settings, analysis.result,
                      {id, analysis.dataSetId});
    return id;
}

Id ReserveNumber(Database& database) {
    Transaction transaction(database);
    database.Run("INSERT INTO data_sets(study_id, name, source, row_count) VALUES(0,'','',0)");
    const Id id = database.LastId();
    Statement(database, "DELETE FROM data_sets WHERE id=?").Bind(id).Run();
    transaction.Commit();
    return id;
}

Id Store::CreateStudy(std::string_view name) {
    Id id = 0;
    Perform(Translated("New Study"), [&] {
        if (const std::string problem = NameProblem(name); !problem.empty())
            FailWith(problem);
        Statement insert(m_database, "INSERT INTO studies(name, name_key) VALUES(?,?)");
        insert.Bind(name).Bind(corvane::FoldText(name)).Run();
        id = m_database.LastId();
    });
    return id;
}

void Store::RenameStudy(Id studyId, std::string_view name) {
    Perform(Translated("Rename Study"), [&] {
        CheckExists("studies", studyId);
        if (const std::string problem = NameProblem(name, studyId); !problem.empty())
            FailWith(problem);
        SetStudyName(studyId, name);
    });
}

void Store::DropStudy(Id studyId) {
    const std::string name = StudyOf(studyId).name;
    std::vector<Id> dataSets;
    for (const DataSet& dataSet : DataSets(studyId))
        dataSets.push_back(dataSet.id);
    for (const char* sql : {"DELETE FROM analyses WHERE study_id=?",
                            "DELETE FROM data_columns WHERE data_set_id IN"
                            " (SELECT id FROM data_sets WHERE study_id=?)",
                            "DELETE FROM data_sets WHERE study_id=?", "DELETE FROM studies WHERE id=?"})
        Statement(m_database, sql).Bind(studyId).Run();
    PutIntoBin("study", studyId, name, dataSets);
}

void Store::DeleteStudy(Id studyId) {
    Perform(Translated("Delete Study"), [&] { DropStudy(studyId); });
}

Id Store::DuplicateStudy(Id studyId) {
    Id copyId = 0;
    Perform(Translated("Duplicate Study"), [&] {
        const std::string name = FreeName(Translated("Copy of %1", {StudyOf(studyId).name}), false);
        if (const std::string problem = NameProblem(name); !problem.empty())
            FailWith(problem);
        Statement insert(m_database, "INSERT INTO studies(name, name_key, notes)"
                                     " SELECT ?, ?, notes FROM studies WHERE id=?");
        insert.Bind(name).Bind(corvane::FoldText(name)).Bind(studyId).Run();
        copyId = m_database.LastId();
        std::map<Id, Id> dataSets;
        for (const DataSet& dataSet : DataSets(studyId))
            dataSets[dataSet.id] = CopyDataSet(dataSet, copyId);
        CopyAnalyses(studyId, copyId, dataSets);
    });
    return copyId;
}

void Store::CopyAnalyses(Id studyId, Id newStudyId, const std::map<Id, Id>& dataSets) {
    for (const Analysis& analysis : Analyses(studyId))
        if (const auto it = dataSets.find(analysis.dataSetId); it != dataSets.end())
            WriteAnalysis(m_database, WholeAnalysis, analysis.name, analysis.settings, analysis.result,
                          {newStudyId, it->second});
}

Id Store::CopyDataSet(const DataSet& dataSet, Id studyId) {
    Statement insert(m_database, "INSERT INTO data_sets(study_id, name, source, row_count, notes) VALUES(?,?,?,?,?)");
    insert.Bind(studyId).Bind(dataSet.name).Bind(dataSet.source).Bind(dataSet.rows).Bind(dataSet.notes).Run();
    const Id copyId = m_database.LastId();
    Statement columns(m_database,
                      "INSERT INTO data_columns(data_set_id, position, name, type, unit, decimals)"
                      " SELECT ?, position, name, type, unit, decimals FROM data_columns WHERE data_set_id=?");
    columns.Bind(copyId).Bind(dataSet.id).Run();
    CreateDataTable(m_database, copyId, Columns(dataSet.id));
    m_database.Run("INSERT INTO " + DataTable(copyId) + " SELECT * FROM " + DataTable(dataSet.id));
    return copyId;
}

Id Store::ReserveDataSet() {
    return ReserveNumber(m_database);
}

Id Store::AddStudy(StudyContents contents) {
    Id id = 0;
    Perform(Translated("Open Study"), [&] {
        if (const std::string problem = NameProblem(contents.study.name); !problem.empty())
            contents.study.name = FreeName(contents.study.name, false);
        if (!NameProblem(contents.study.name).empty()) // whatever the file says
            contents.study.name = FreeName(Translated("Study"));
        id = WriteContents(m_database, contents);
    });
    ++m_dataRevision;
    return id;
}

Id Store::ImportDataSet(Id studyId, std::string_view name, std::string_view source, const Table& table, Id reserved) {
    if (table.columns.size() > MostColumns)
        FailWith(Translated("The data have %1 columns; a data set has at most %2.",
                            {std::to_string(table.columns.size()), std::to_string(MostColumns)}));
    Id id = 0;
    Perform(Translated("Import"), [&] {
        CheckExists("studies", studyId);
        Statement insert(m_database, "INSERT INTO data_sets(study_id, name, source, row_count, id) VALUES(?,?,?,?,?)");
        insert.Bind(studyId).Bind(name).Bind(source).Bind(static_cast<std::int64_t>(table.rows));
        (reserved == 0 ? insert.BindNull() : insert.Bind(reserved)).Run();
        id = m_database.LastId();
        WriteColumns(m_database, id, table.columns);
        if (reserved != 0)
            return;
        CreateDataTable(m_database, id, table.columns);
        WriteRows(m_database, id, table, 0, table.rows);
    });
    return id;
}

void Store::DropDataSet(Id dataSetId) {
    const std::string name = DataSetOf(dataSetId).name;
    for (const char* sql : {"DELETE FROM analyses WHERE data_set_id=?", "DELETE FROM data_columns WHERE data_set_id=?",
                            "DELETE FROM data_sets WHERE id=?"})
        Statement(m_database, sql).Bind(dataSetId).Run();
    PutIntoBin("data set", dataSetId, name, {dataSetId});
}

void Store::DeleteDataSet(Id dataSetId) {
    Perform(Translated("Delete Data Set"), [&] { DropDataSet(dataSetId); });
}

void Store::Delete(const std::vector<StorePlace>& places) {
    const auto has = [&](char kind, Id id) {
        return std::find(places.begin(), places.end(), StorePlace(kind, id)) != places.end();
    };
    std::vector<StorePlace> whole; // without what goes with another
    for (const StorePlace& place : places) {
        const bool goesAlong = place.first == 'd'   ? has('s', DataSetOf(place.second).studyId)
                               : place.first == 'a' ? has('s', AnalysisOf(place.second).studyId) ||
                                                          has('d', AnalysisOf(place.second).dataSetId)
                                                    : false;
        if (!goesAlong)
            whole.push_back(place);
    }
    Perform(Translated(places.size(), "Delete %1 Item", "Delete %1 Items"), [&] {
        for (const auto& [kind, id] : whole) {
            if (kind == 's')
                DropStudy(id);
            else if (kind == 'd')
                DropDataSet(id);
            else
                DropAnalysis(id);
        }
    });
}

void Store::MoveDataSets(const std::vector<Id>& dataSetIds, Id studyId, bool copies) {
    const std::size_t count = dataSetIds.size();
    Perform(copies ? Translated(count, "Copy %1 Data Set", "Copy %1 Data Sets")
                   : Translated(count, "Move %1 Data Set", "Move %1 Data Sets"),
            [&] {
                CheckExists("studies", studyId);
                for (const Id id : dataSetIds) {
                    DataSet dataSet = DataSetOf(id);
                    if (dataSet.studyId == studyId && !copies)
                        continue;
                    const std::string name = FreeDataSetName(dataSet.name, studyId);
                    if (copies) {
                        const Id from = dataSet.studyId;
                        const Id copy = CopyDataSet(dataSet, studyId);
                        CopyAnalyses(from, studyId, {{id, copy}});
                        dataSet.id = copy;
                    } else {
                        for (const char* sql : {"UPDATE data_sets SET study_id=? WHERE id=?",
                                                "UPDATE analyses SET study_id=? WHERE data_set_id=?"})
                            Statement(m_database, sql).Bind(studyId).Bind(id).Run();
                    }
                    dataSet.studyId = studyId;
                    if (name != dataSet.name)
                        SetDataSetName(dataSet, name);
                }
            });
}

Id Store::AddAnalysis(Id dataSetId, std::string_view name, const AnalysisSettings& settings,
                      const std::optional<BootstrapResult>& result) {
    Id id = 0;
    Perform(Translated("New Analysis"), [&] {
        CheckExists("data_sets", dataSetId);
        WriteAnalysis(m_database,
                      "INSERT INTO analyses(name, kind, group_column, x_column, y_column, first_group, second_group,"
                      " figure, bins, confidence, resamples, seed, result, study_id, data_set_id)"
                      " SELECT ?,?,?,?,?,?,?,?,?,?,?,?,?, study_id, id FROM data_sets WHERE id=?",
                      name, settings, result, {dataSetId});
        id = m_database.LastId();
    });
    return id;
}

void Store::ChangeAnalysis(Id analysisId, std::string_view name, const AnalysisSettings& settings,
                           const std::optional<BootstrapResult>& result) {
    Perform(Translated("Change Analysis"), [&] {
        CheckExists("analyses", analysisId);
        WriteAnalysis(m_database,
                      "UPDATE analyses SET name=?, kind=?, group_column=?, x_column=?, y_column=?, first_group=?,"
                      " second_group=?, figure=?, bins=?, confidence=?, resamples=?, seed=?, result=? WHERE id=?",
                      name, settings, result, {analysisId});
    });
}

void Store::SetStudyProperties(Id studyId, std::string_view name, std::string_view notes) {
    Perform(Translated("Change Study"), [&] {
        CheckExists("studies", studyId);
        if (const std::string problem = NameProblem(name, studyId); !problem.empty())
            FailWith(problem);
        SetStudyName(studyId, name);
        Statement(m_database, "UPDATE studies SET notes=? WHERE id=?").Bind(notes).Bind(studyId).Run();
    });
}

void Store::SetDataSetProperties(Id dataSetId, const DataSetProperties& properties) {
    Perform(Translated("Change Data Set"), [&] {
        const DataSet dataSet = DataSetOf(dataSetId);
        if (const std::string problem = DataSetNameProblem(properties.name, dataSet.studyId, dataSetId);
            !problem.empty())
            FailWith(problem);
        Statement(m_database, "UPDATE data_sets SET notes=? WHERE id=?").Bind(properties.notes).Bind(dataSetId).Run();
        if (properties.name != dataSet.name)
            SetDataSetName(dataSet, properties.name);
        Statement unit(m_database, "UPDATE data_columns SET unit=? WHERE data_set_id=? AND position=?");
        for (std::size_t i = 0; i < properties.units.size(); ++i)
            unit.Bind(properties.units[i]).Bind(dataSetId).Bind(static_cast<std::int64_t>(i)).Run();
    });
}

// The data set's name is part of their titles.
void Store::RenameAnalyses(const DataSet& dataSet, std::string_view newName) {
    Statement update(m_database, "UPDATE analyses SET name=? WHERE id=?");
    for (const Analysis& analysis : Analyses(dataSet.studyId))
        if (analysis.dataSetId == dataSet.id && analysis.name == analysis.settings.Title(dataSet.name))
            update.Bind(analysis.settings.Title(newName)).Bind(analysis.id).Run();
}

void Store::DropAnalysis(Id analysisId) {
    const std::string name = AnalysisOf(analysisId).name;
    Statement(m_database, "DELETE FROM analyses WHERE id=?").Bind(analysisId).Run();
    PutIntoBin("analysis", analysisId, name, {});
}

void Store::DeleteAnalysis(Id analysisId) {
    Perform(Translated("Delete Analysis"), [&] { DropAnalysis(analysisId); });
}

// Within the step of the deletion: what would undo it restores it later. Undoing the step takes it out of the bin.
void Store::PutIntoBin(std::string_view kind, Id itemId, std::string_view name, const std::vector<Id>& dataSets) {
    if (m_database.Path() == InMemory)
        return;
    std::string statements;
    for (const std::string& statement : TakeLog(m_binned))
        statements += statement + ";\n";
    std::string numbers;
    for (const Id dataSet : dataSets)
        numbers += (numbers.empty() ? "," : "") + std::to_string(dataSet) + ",";
    Statement insert(m_database, "INSERT INTO bin(time, kind, item_id, name, data_sets, statements)"
                                 " VALUES(strftime('%s', 'now'),?,?,?,?,?)");
    insert.Bind(kind).Bind(itemId).Bind(name).Bind(numbers).Bind(statements).Run();
    m_binned = m_database.WholeOf("SELECT max(position) FROM undo_log");
}

std::vector<Deleted> Store::DeletedItems() {
    std::vector<Deleted> items;
    Statement rows(m_database, "SELECT id, time, kind, item_id, name FROM bin ORDER BY id DESC");
    while (rows.Step())
        items.push_back({rows.Whole(0), rows.Whole(1), rows.Text(2), rows.Whole(3), rows.Text(4)});
    return items;
}

void Store::Restore(Id binId) {
    Perform(Translated("Restore"), [&] {
        CheckExists("bin", binId);
        Statement entry(m_database, "SELECT kind, item_id, name, statements FROM bin WHERE id=?");
        entry.Bind(binId).Step();
        const std::string kind = entry.Text(0);
        const Id itemId = entry.Whole(1);
        const std::string name = entry.Text(2);
        const std::string statements = entry.Text(3);
        entry.Run();
        // A study that has got the name meanwhile lets go of it for a moment, until the restored one has another.
        const std::string key = corvane::FoldText(name);
        const auto ChangeKey = [this](const std::string& from, const std::string& to) {
            Statement(m_database, "UPDATE studies SET name_key=? WHERE name_key=?").Bind(to).Bind(from).Run();
            return m_database.ChangeCount() != 0;
        };
        const bool taken = kind == "study" && ChangeKey(key, key + "\n");
        m_database.Run(statements);
        if (m_database.WholeOf("SELECT count(*) FROM pragma_foreign_key_check") != 0)
            FailWith(Translated("“%1” was part of a study or data set that has been deleted, too. Restore that first.",
                                {name}));
        CheckData();
        if (taken) {
            SetStudyName(itemId, FreeName(name, false));
            (void)ChangeKey(key + "\n", key);
        } else if (kind == "data set") {
            const DataSet dataSet = DataSetOf(itemId);
            if (!DataSetNameProblem(name, dataSet.studyId, itemId).empty())
                SetDataSetName(dataSet, FreeDataSetName(name, dataSet.studyId));
        }
        Statement(m_database, "DELETE FROM bin WHERE id=?").Bind(binId).Run();
    });
    ++m_dataRevision;
}

void Store::SetStudyName(Id studyId, std::string_view name) {
    Statement update(m_database, "UPDATE studies SET name=?, name_key=? WHERE id=?");
    update.Bind(name).Bind(corvane::FoldText(name)).Bind(studyId).Run();
}

void Store::SetDataSetName(const DataSet& dataSet, std::string_view name) {
    Statement(m_database, "UPDATE data_sets SET name=? WHERE id=?").Bind(name).Bind(dataSet.id).Run();
    RenameAnalyses(dataSet, name);
}

} // namespace studies
