#include "Errors.h"
#include "Store.h"
#include "StudyFile.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <limits>
#include <locale>
#include <map>
#include <sstream>

namespace studies {
namespace {

constexpr std::size_t MostColumns = 1000;

// As ResultIn of StoreQueries.cpp reads it, without loss.
std::string TextOfResult(const std::optional<BootstrapResult>& result) {
    if (!result)
        return {};
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.precision(std::numeric_limits<double>::max_digits10);
    text << result->count << ' ' << result->figure << ' ' << result->error << ' ' << result->interval.low << ' '
         << result->interval.high;
    if (!result->counts.empty())
        text << ' ' << result->bins.start << ' ' << result->bins.width;
    for (const std::size_t count : result->counts)
        text << ' ' << count;
    return text.str();
}

// The statement begins with the places of the name, the settings and the result; the numbers follow them.
void WriteAnalysis(Database& database, std::string_view sql, std::string_view name, const AnalysisSettings& settings,
                   const std::optional<BootstrapResult>& result, std::initializer_list<Id> numbers) {
    const BootstrapOptions& bootstrap = settings.bootstrap;
    Statement& write = database.Prepared(sql).With(name, NameOf(settings.kind), settings.groupColumn, settings.columnX,
                                                   settings.columnY, settings.firstGroup, settings.secondGroup,
                                                   NameOf(bootstrap.figure), settings.bins, bootstrap.confidence,
                                                   bootstrap.resamples, bootstrap.seed, TextOfResult(result));
    for (const Id number : numbers)
        write.Bind(number);
    write.Run();
}

constexpr const char* WholeAnalysis =
    "INSERT INTO analyses(name, kind, group_column, x_column, y_column, first_group, second_group, figure, bins,"
    " confidence, resamples, seed, result, study_id, data_set_id) VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)";

void WriteColumns(Database& database, Id dataSetId, const std::vector<Column>& columns) {
    for (std::size_t i = 0; i < columns.size(); ++i)
        database.Run("INSERT INTO data_columns(data_set_id, position, name, type, unit, decimals) VALUES(?,?,?,?,?,?)",
                     dataSetId, i, columns[i].name, NameOf(columns[i].type), columns[i].unit, columns[i].decimals);
}

} // namespace

Id WriteContents(Database& database, const StudyContents& contents) {
    const Study& study = contents.study;
    database.Run("INSERT INTO studies(name, name_key, notes) VALUES(?,?,?)", study.name, corvane::FoldText(study.name),
                 study.notes);
    const Id id = database.LastId();
    for (const auto& [dataSet, columns] : contents.dataSets) {
        database.Run("INSERT INTO data_sets(id, study_id, name, source, row_count, notes) VALUES(?,?,?,?,?,?)",
                     dataSet.id, id, dataSet.name, dataSet.source, dataSet.rows, dataSet.notes);
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
    database.Run("DELETE FROM data_sets WHERE id=?", id);
    transaction.Commit();
    return id;
}

Id Store::CreateStudy(std::string_view name) {
    Id id = 0;
    Perform(Translated("New Study"), [&] {
        if (const std::string problem = NameProblem(name); !problem.empty())
            FailWith(problem);
        m_database.Run("INSERT INTO studies(name, name_key) VALUES(?,?)", name, corvane::FoldText(name));
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

Id Store::DuplicateStudy(Id studyId) {
    Id copyId = 0;
    Perform(Translated("Duplicate Study"), [&] {
        const std::string name = FreeName(Translated("Copy of %1", {StudyOf(studyId).name}), false);
        if (const std::string problem = NameProblem(name); !problem.empty())
            FailWith(problem);
        m_database.Run("INSERT INTO studies(name, name_key, notes) SELECT ?, ?, notes FROM studies WHERE id=?", name,
                       corvane::FoldText(name), studyId);
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
    m_database.Run("INSERT INTO data_sets(study_id, name, source, row_count, notes)"
                   " SELECT ?, name, source, row_count, notes FROM data_sets WHERE id=?",
                   studyId, dataSet.id);
    const Id copyId = m_database.LastId();
    m_database.Run("INSERT INTO data_columns(data_set_id, position, name, type, unit, decimals)"
                   " SELECT ?, position, name, type, unit, decimals FROM data_columns WHERE data_set_id=?",
                   copyId, dataSet.id);
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
        m_database.Run("INSERT INTO data_sets(study_id, name, source, row_count, id) VALUES(?,?,?,?,nullif(?,0))",
                       studyId, name, source, table.rows, reserved);
        id = m_database.LastId();
        WriteColumns(m_database, id, table.columns);
        if (reserved != 0)
            return;
        CreateDataTable(m_database, id, table.columns);
        WriteRows(m_database, id, table, 0, table.rows);
    });
    return id;
}

void Store::Drop(const StorePlace& place) {
    const auto& [kind, id] = place;
    const std::string name = kind == 's' ? StudyOf(id).name : kind == 'd' ? DataSetOf(id).name : AnalysisOf(id).name;
    std::vector<Id> dataSets(kind == 'd' ? 1 : 0, id);
    if (kind == 's')
        for (const DataSet& dataSet : DataSets(id))
            dataSets.push_back(dataSet.id);
    for (const Id dataSet : dataSets)
        for (const char* sql : {"DELETE FROM analyses WHERE data_set_id=?",
                                "DELETE FROM data_columns WHERE data_set_id=?", "DELETE FROM data_sets WHERE id=?"})
            m_database.Run(sql, dataSet);
    if (kind != 'd')
        m_database.Run(kind == 's' ? "DELETE FROM studies WHERE id=?" : "DELETE FROM analyses WHERE id=?", id);
    PutIntoBin(place, name, dataSets);
}

void Store::Delete(const std::vector<StorePlace>& places) {
    const auto exists = [this](const StorePlace& place) {
        const auto& [kind, id] = place;
        return kind == 's' ? HasStudy(id) : kind == 'd' ? HasDataSet(id) : HasAnalysis(id);
    };
    const char first = places.front().first;
    Perform(places.size() > 1 ? Translated(places.size(), "Delete %1 Item", "Delete %1 Items")
            : first == 's'    ? Translated("Delete Study")
            : first == 'd'    ? Translated("Delete Data Set")
                              : Translated("Delete Analysis"),
            [&] {
                if (!std::all_of(places.begin(), places.end(), exists))
                    FailWith(Translated("The selection no longer exists."));
                for (const char kind : {'s', 'd', 'a'})
                    for (const StorePlace& place : places)
                        if (place.first == kind && exists(place)) // it may have gone with another
                            Drop(place);
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
                            m_database.Run(sql, studyId, id);
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
        WriteAnalysis(m_database, WholeAnalysis, name, settings, result, {DataSetOf(dataSetId).studyId, dataSetId});
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
        m_database.Run("UPDATE studies SET notes=? WHERE id=?", notes, studyId);
    });
}

void Store::SetDataSetProperties(Id dataSetId, const DataSetProperties& properties) {
    Perform(Translated("Change Data Set"), [&] {
        const DataSet dataSet = DataSetOf(dataSetId);
        if (const std::string problem = DataSetNameProblem(properties.name, dataSet.studyId, dataSetId);
            !problem.empty())
            FailWith(problem);
        m_database.Run("UPDATE data_sets SET notes=? WHERE id=?", properties.notes, dataSetId);
        if (properties.name != dataSet.name)
            SetDataSetName(dataSet, properties.name);
        for (std::size_t i = 0; i < properties.units.size(); ++i)
            m_database.Run("UPDATE data_columns SET unit=? WHERE data_set_id=? AND position=?", properties.units[i],
                           dataSetId, i);
    });
}

// The data set's name is part of their titles.
void Store::RenameAnalyses(const DataSet& dataSet, std::string_view newName) {
    for (const Analysis& analysis : Analyses(dataSet.studyId))
        if (analysis.dataSetId == dataSet.id && analysis.name == analysis.settings.Title(dataSet.name))
            m_database.Run("UPDATE analyses SET name=? WHERE id=?", analysis.settings.Title(newName), analysis.id);
}

// Within the step of the deletion: what would undo it restores it later. Undoing the step takes it out of the bin.
void Store::PutIntoBin(const StorePlace& place, std::string_view name, const std::vector<Id>& dataSets) {
    if (m_database.Path() == InMemory)
        return;
    const std::string statements = m_steps->TakeInverse();
    std::string numbers;
    for (const Id dataSet : dataSets)
        numbers += (numbers.empty() ? "," : "") + std::to_string(dataSet) + ",";
    m_database.Run("INSERT INTO bin(time, kind, item_id, name, data_sets, statements)"
                   " VALUES(strftime('%s', 'now'),?,?,?,?,?)",
                   place.first == 's'   ? "study"
                   : place.first == 'd' ? "data set"
                                        : "analysis",
                   place.second, name, numbers, statements);
    (void)m_steps->TakeInverse(); // of the entry itself
}

std::vector<Deleted> Store::DeletedItems() {
    return m_database.All("SELECT id, time, kind, item_id, name FROM bin ORDER BY id DESC", [](const Statement& row) {
        return Deleted{row.Whole(0), row.Whole(1), row.Text(2), row.Whole(3), row.Text(4)};
    });
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
            m_database.Run("UPDATE studies SET name_key=? WHERE name_key=?", to, from);
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
        m_database.Run("DELETE FROM bin WHERE id=?", binId);
    });
    ++m_dataRevision;
}

void Store::SetStudyName(Id studyId, std::string_view name) {
    m_database.Run("UPDATE studies SET name=?, name_key=? WHERE id=?", name, corvane::FoldText(name), studyId);
}

void Store::SetDataSetName(const DataSet& dataSet, std::string_view name) {
    m_database.Run("UPDATE data_sets SET name=? WHERE id=?", name, dataSet.id);
    RenameAnalyses(dataSet, name);
}

} // namespace studies
