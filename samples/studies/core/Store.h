// The user's studies with their data sets and analyses, in one file. Every change is one step that can be undone while
// the store is open.
#pragma once

#include "AnalysisSettings.h"
#include "DataTables.h"
#include "Database.h"
#include "Table.h"
#include "database/SharedLock.h"
#include "database/UndoLog.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace studies {

struct Study {
    Id id = 0;
    std::string name;
    std::string notes = {};
};

struct DataSet {
    Id id = 0;
    Id studyId = 0;
    std::string name;
    std::string source; // the path that it was imported from
    std::int64_t rows = 0;
    std::string notes = {};
};

// What a user can change of a data set, beside its rows.
struct DataSetProperties {
    std::string name;
    std::string notes;
    std::vector<std::string> units; // one for each column
};

struct Analysis {
    Id id = 0;
    Id studyId = 0;
    Id dataSetId = 0;
    std::string name;
    AnalysisSettings settings;
    std::optional<BootstrapResult> result = {}; // of these settings and of the data as they are
};

// A study, data set or analysis that was deleted and can be restored.
struct Deleted {
    Id id = 0;             // of the entry in the bin
    std::int64_t time = 0; // of the deletion, in seconds since 1970
    std::string kind;      // "study", "data set" or "analysis"
    Id itemId = 0;         // that it had, and has again
    std::string name;
};

// A study with all that is in it, but for the rows of its data.
struct StudyContents {
    Study study;
    std::vector<std::pair<DataSet, std::vector<Column>>> dataSets;
    std::vector<Analysis> analyses;
};

struct CellChange {
    Id rowId = 0;
    int column = 0;
    std::string text;                       // "" for missing
    std::optional<std::string> before = {}; // what the cell is known to hold; another value refuses the change
};

// What the explorer shows of an analysis, a data set or a study.
struct StoreEntry {
    Id studyId = 0; // that it is part of; 0 for a study
    std::string name;

    bool operator==(const StoreEntry&) const = default;
};

// Analyses ('a'), data sets ('d') and studies ('s') by their numbers.
using StorePlace = std::pair<char, Id>;
using StoreContents = std::map<StorePlace, StoreEntry>;

// How long what was deleted can be restored.
constexpr int DaysInBin = 30;

class Store {
public:
    // Makes the file when there is none. Fails, saying what is the matter, when it is damaged, of another program, or
    // written by a later version. The path InMemory makes a store that ends with the object, and has no bin.
    explicit Store(std::string path);

    static constexpr const char* InMemory = ":memory:";

    // studies.sqlite in the user's data folder.
    [[nodiscard]] static std::string DefaultPath();

    // Whether the file was open already when this store opened it: in another program, or in another store.
    [[nodiscard]] bool IsShared() const { return m_lock && m_lock->WasHeld(); }
    // Whether another has changed the file since the last call. What was read before may be out of date then.
    [[nodiscard]] bool NoticeChanges();
    // While a job of this program writes into the file, NoticeChanges says nothing; at its end, values may have
    // changed.
    void BeginBeside() { ++m_beside; }
    void EndBeside();
    [[nodiscard]] const std::string& Path() const { return m_database.Path(); }

    [[nodiscard]] StoreContents Contents();
    // What is read meanwhile is of one state of the file, which is also quicker. Nothing may be written.
    void ReadTogether(const std::function<void()>& read);
    // In order of creation.
    [[nodiscard]] std::vector<Study> Studies();
    [[nodiscard]] std::vector<DataSet> DataSets(Id studyId);
    [[nodiscard]] std::vector<Analysis> Analyses(Id studyId);
    // Fails when there is none of that number.
    [[nodiscard]] Study StudyOf(Id studyId);
    [[nodiscard]] DataSet DataSetOf(Id dataSetId);
    [[nodiscard]] Analysis AnalysisOf(Id analysisId);
    [[nodiscard]] Table ReadDataSet(Id dataSetId);
    [[nodiscard]] bool HasStudy(Id studyId) { return Has("studies", studyId); }
    [[nodiscard]] bool HasDataSet(Id dataSetId) { return Has("data_sets", dataSetId); }
    [[nodiscard]] bool HasAnalysis(Id analysisId) { return Has("analyses", analysisId); }
    // Without their values.
    [[nodiscard]] std::vector<Column> Columns(Id dataSetId);
    // The rows of these numbers, in their order.
    [[nodiscard]] Table ReadRows(Id dataSetId, std::span<const Id> rowIds);

    // Each is one step. Names of studies are unique without regard to case; a name that isn't allowed or is taken
    // fails and changes nothing, and so does an unknown number.
    Id CreateStudy(std::string_view name);
    void RenameStudy(Id studyId, std::string_view name);
    Id DuplicateStudy(Id studyId); // "Copy of ...", with all that is in it
    // A study of a file, whose tables have been written under the numbers of its data sets. A name that isn't free gets
    // a number.
    Id AddStudy(StudyContents contents);
    // A reserved number is that of a table that WriteDataTable has written; of the given one, only columns and number
    // of rows count then.
    Id ImportDataSet(Id studyId, std::string_view name, std::string_view source, const Table& table, Id reserved = 0);
    // Not a step: a number for WriteDataTable.
    [[nodiscard]] Id ReserveDataSet();
    // A study with all that is in it, a data set with its analyses. All of these are one step, each with an entry of
    // its own in the bin. What is part of another of them goes with it.
    void Delete(const std::vector<StorePlace>& places);
    // With their analyses, or copies of both, behind what the study has. A name that is taken there gets a number.
    // Those that are in the study already aren't moved.
    void MoveDataSets(const std::vector<Id>& dataSetIds, Id studyId, bool copies);
    Id AddAnalysis(Id dataSetId, std::string_view name, const AnalysisSettings& settings,
                   const std::optional<BootstrapResult>& result = {});
    void ChangeAnalysis(Id analysisId, std::string_view name, const AnalysisSettings& settings,
                        const std::optional<BootstrapResult>& result = {});
    void SetStudyProperties(Id studyId, std::string_view name, std::string_view notes);
    void SetDataSetProperties(Id dataSetId, const DataSetProperties& properties);
    // Fails for a text that is not a number in a column of numbers, and for a cell that another has changed, and
    // changes nothing then. Results of analyses of the data are dropped.
    void SetCells(Id dataSetId, const std::vector<CellChange>& changes);

    // What is in the bin, the latest first.
    [[nodiscard]] std::vector<Deleted> DeletedItems();
    // One step. A name that is taken by now gets a number. Fails when the study or data set that it was part of isn't
    // there, and when the entry isn't in the bin any more.
    void Restore(Id binId);

    // "Study 1" and so on for "Study", or the text itself if it is free and numberFirst is false.
    [[nodiscard]] std::string FreeName(std::string_view base, bool numberFirst = true);
    // The text itself, or with a number behind it when a data set of the study has that name.
    [[nodiscard]] std::string FreeDataSetName(std::string_view base, Id studyId);
    // Why a study can't have the name; "" when it can. studyId is the study that may keep it.
    [[nodiscard]] std::string NameProblem(std::string_view name, Id studyId = 0);
    // The same for a data set, whose name is unique in its study.
    [[nodiscard]] std::string DataSetNameProblem(std::string_view name, Id studyId, Id dataSetId = 0);
    // Why a text can't stand in a cell of that column; "" when it can.
    [[nodiscard]] static std::string CellProblem(const Column& column, std::string_view text);

    // What the next Undo and Redo are about, such as "Delete Study"; "" when there is nothing.
    [[nodiscard]] std::string UndoLabel() const { return m_steps->UndoLabel(); }
    [[nodiscard]] std::string RedoLabel() const { return m_steps->RedoLabel(); }
    void Undo();
    void Redo();

    // There is nothing to undo any more, and the space of what was deleted is freed.
    void ForgetSteps();

    // Another number whenever values of a data set may have changed.
    [[nodiscard]] std::uint64_t DataRevision() const { return m_dataRevision; }

private:
    void Prepare();
    void EmptyBin();
    void DropOrphans();
    [[nodiscard]] std::int64_t DataVersion();
    void Perform(std::string label, const std::function<void()>& change) { m_steps->Perform(std::move(label), change); }
    void Drop(const StorePlace& place);
    void PutIntoBin(const StorePlace& place, std::string_view name, const std::vector<Id>& dataSets);
    [[nodiscard]] bool Has(const std::string& table, Id id);
    void CheckExists(const std::string& table, Id id);
    void CheckData();
    void SetStudyName(Id studyId, std::string_view name);
    void SetDataSetName(const DataSet& dataSet, std::string_view name);
    void RenameAnalyses(const DataSet& dataSet, std::string_view newName);
    Id CopyDataSet(const DataSet& dataSet, Id studyId);
    void CopyAnalyses(Id studyId, Id newStudyId, const std::map<Id, Id>& dataSets);

    Database m_database;
    std::optional<corvane::database::SharedLock> m_lock; // on the file; none in memory
    std::int64_t m_seenVersion = 0;
    int m_beside = 0;                                  // jobs
    std::optional<corvane::database::UndoLog> m_steps; // once the file is ready
    std::uint64_t m_dataRevision = 0;
};

} // namespace studies
