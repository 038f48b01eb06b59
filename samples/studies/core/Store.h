// The user's studies with their data sets and analyses, in one file. Every change is one step that can be undone while
// the store is open.
#pragma once

#include "AnalysisSettings.h"
#include "Database.h"
#include "Table.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace studies {

using Id = std::int64_t; // never given out twice in a file; 0 is nobody's

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

// What a person can change of a data set, beside its rows.
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
};

// Which rows of a data set are meant, and in which order.
struct RowView {
    int sortColumn = -1; // -1: in order of import
    bool descending = false;
    int filterColumn = -1; // -1: in any column
    // A text that the value contains; or "=", "<>", "<", "<=", ">", ">=" and a value, where "=" alone means missing.
    std::string filter;
};

struct CellChange {
    Id rowId = 0;
    int column = 0;
    std::string text; // "" for missing
};

// The table in the file with the rows of a data set.
[[nodiscard]] std::string DataTable(Id dataSetId);

class Store {
public:
    // Makes the file when there is none. Fails, saying what is the matter, when it is damaged, of another program, or
    // written by a later version. The path InMemory makes a store that ends with the object.
    explicit Store(std::string path);

    static constexpr const char* InMemory = ":memory:";

    // studies.sqlite in the user's data folder.
    [[nodiscard]] static std::string DefaultPath();

    // In order of creation.
    [[nodiscard]] std::vector<Study> Studies();
    [[nodiscard]] std::vector<DataSet> DataSets(Id studyId);
    [[nodiscard]] std::vector<Analysis> Analyses(Id studyId);
    // Fails when there is none of that number.
    [[nodiscard]] Study StudyOf(Id studyId);
    [[nodiscard]] DataSet DataSetOf(Id dataSetId);
    [[nodiscard]] Analysis AnalysisOf(Id analysisId);
    [[nodiscard]] Table ReadDataSet(Id dataSetId);
    [[nodiscard]] bool HasDataSet(Id dataSetId);
    [[nodiscard]] bool HasAnalysis(Id analysisId);
    // Without their values.
    [[nodiscard]] std::vector<Column> Columns(Id dataSetId);
    // The numbers of the rows of a view. Fails when the filter can't be read, such as ">" before no number.
    [[nodiscard]] std::vector<Id> RowIds(Id dataSetId, const RowView& view);
    // The rows of these numbers, in their order.
    [[nodiscard]] Table ReadRows(Id dataSetId, std::span<const Id> rowIds);

    // Each is one step. Names of studies are unique without regard to case; a name that isn't allowed or is taken
    // fails and changes nothing, and so does an unknown number.
    Id CreateStudy(std::string_view name);
    void RenameStudy(Id studyId, std::string_view name);
    void DeleteStudy(Id studyId);
    Id DuplicateStudy(Id studyId); // "Copy of ...", with all that is in it
    Id ImportDataSet(Id studyId, std::string_view name, std::string_view source, const Table& table);
    void DeleteDataSet(Id dataSetId); // with its analyses
    Id AddAnalysis(Id dataSetId, std::string_view name, const AnalysisSettings& settings);
    void ChangeAnalysis(Id analysisId, std::string_view name, const AnalysisSettings& settings);
    void DeleteAnalysis(Id analysisId);
    void SetStudyProperties(Id studyId, std::string_view name, std::string_view notes);
    void SetDataSetProperties(Id dataSetId, const DataSetProperties& properties);
    // Fails for a text that is no number in a column of numbers, and changes nothing then.
    void SetCells(Id dataSetId, const std::vector<CellChange>& changes);

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
    [[nodiscard]] std::string UndoLabel() const { return m_undo.empty() ? std::string() : m_undo.back().label; }
    [[nodiscard]] std::string RedoLabel() const { return m_redo.empty() ? std::string() : m_redo.back().label; }
    void Undo();
    void Redo();

    // There is nothing to undo any more, and what was deleted gives its room back.
    void ForgetSteps();

    // Another number whenever values of a data set may have changed.
    [[nodiscard]] std::uint64_t DataRevision() const { return m_dataRevision; }

private:
    struct Step {
        std::string label;
        std::vector<std::string> statements; // which take it back, in their order
    };

    void Prepare();
    void Record();
    void DropOrphans();
    [[nodiscard]] std::vector<std::string> TakeLog();
    void Perform(std::string label, const std::function<void()>& change);
    void TakeBack(std::vector<Step>& from, std::vector<Step>& to);
    void CheckExists(std::string_view table, Id id);
    void CheckData();
    void RenameAnalyses(const DataSet& dataSet, std::string_view newName);
    void RecordCells(Id dataSetId, int columnIndex);
    Id CopyDataSet(const DataSet& dataSet, Id studyId);
    void WriteRows(Id dataSetId, const Table& table);

    Database m_database;
    std::vector<Step> m_undo;
    std::vector<Step> m_redo;
    std::uint64_t m_dataRevision = 0;
};

} // namespace studies
