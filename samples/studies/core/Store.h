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
    Id nId = 0;
    std::string sName;
    std::string sNotes = {};
};

struct DataSet {
    Id nId = 0;
    Id nStudyId = 0;
    std::string sName;
    std::string sSource; // the path that it was imported from
    std::int64_t nRows = 0;
    std::string sNotes = {};
};

// What a person can change of a data set, beside its rows.
struct DataSetProperties {
    std::string sName;
    std::string sNotes;
    std::vector<std::string> aUnits; // one for each column
};

struct Analysis {
    Id nId = 0;
    Id nStudyId = 0;
    Id nDataSetId = 0;
    std::string sName;
    AnalysisSettings oSettings;
};

// Which rows of a data set are meant, and in which order.
struct RowView {
    int iSortColumn = -1; // -1: in order of import
    bool bDescending = false;
    int iFilterColumn = -1; // -1: in any column
    // A text that the value contains; or "=", "<>", "<", "<=", ">", ">=" and a value, where "=" alone means missing.
    std::string sFilter;
};

struct CellChange {
    Id nRowId = 0;
    int iColumn = 0;
    std::string sText; // "" for missing
};

class Store {
public:
    // Makes the file when there is none. Fails, saying what is the matter, when it is damaged, of another program, or
    // written by a later version. The path InMemory makes a store that ends with the object.
    explicit Store(std::string sPath);

    static constexpr const char* InMemory = ":memory:";

    // studies.sqlite in the user's data folder.
    [[nodiscard]] static std::string DefaultPath();

    // In order of creation.
    [[nodiscard]] std::vector<Study> Studies();
    [[nodiscard]] std::vector<DataSet> DataSets(Id nStudyId);
    [[nodiscard]] std::vector<Analysis> Analyses(Id nStudyId);
    // Fails when there is none of that number.
    [[nodiscard]] Study StudyOf(Id nStudyId);
    [[nodiscard]] DataSet DataSetOf(Id nDataSetId);
    [[nodiscard]] Analysis AnalysisOf(Id nAnalysisId);
    [[nodiscard]] Table ReadDataSet(Id nDataSetId);
    [[nodiscard]] bool HasDataSet(Id nDataSetId);
    [[nodiscard]] bool HasAnalysis(Id nAnalysisId);
    // Without their values.
    [[nodiscard]] std::vector<Column> Columns(Id nDataSetId);
    // The numbers of the rows of a view. Fails when the filter can't be read, such as ">" before no number.
    [[nodiscard]] std::vector<Id> RowIds(Id nDataSetId, const RowView& oView);
    // The rows of these numbers, in their order.
    [[nodiscard]] Table ReadRows(Id nDataSetId, std::span<const Id> aRowIds);

    // Each is one step. Names of studies are unique without regard to case; a name that isn't allowed or is taken
    // fails and changes nothing, and so does an unknown number.
    Id CreateStudy(std::string_view sName);
    void RenameStudy(Id nStudyId, std::string_view sName);
    void DeleteStudy(Id nStudyId);
    Id DuplicateStudy(Id nStudyId); // "Copy of ...", with all that is in it
    Id ImportDataSet(Id nStudyId, std::string_view sName, std::string_view sSource, const Table& oTable);
    void DeleteDataSet(Id nDataSetId); // with its analyses
    Id AddAnalysis(Id nDataSetId, std::string_view sName, const AnalysisSettings& oSettings);
    void ChangeAnalysis(Id nAnalysisId, std::string_view sName, const AnalysisSettings& oSettings);
    void DeleteAnalysis(Id nAnalysisId);
    void SetStudyProperties(Id nStudyId, std::string_view sName, std::string_view sNotes);
    void SetDataSetProperties(Id nDataSetId, const DataSetProperties& oProperties);
    // Fails for a text that is no number in a column of numbers, and changes nothing then.
    void SetCells(Id nDataSetId, const std::vector<CellChange>& aChanges);

    // "Study 1" and so on for "Study", or the text itself if it is free and bNumberFirst is false.
    [[nodiscard]] std::string FreeName(std::string_view sBase, bool bNumberFirst = true);
    // The text itself, or with a number behind it when a data set of the study has that name.
    [[nodiscard]] std::string FreeDataSetName(std::string_view sBase, Id nStudyId);
    // Why a study can't have the name; "" when it can. nStudyId is the study that may keep it.
    [[nodiscard]] std::string NameProblem(std::string_view sName, Id nStudyId = 0);
    // The same for a data set, whose name is unique in its study.
    [[nodiscard]] std::string DataSetNameProblem(std::string_view sName, Id nStudyId, Id nDataSetId = 0);
    // Why a text can't stand in a cell of that column; "" when it can.
    [[nodiscard]] static std::string CellProblem(const Column& oColumn, std::string_view sText);

    // What the next Undo and Redo are about, such as "Delete Study"; "" when there is nothing.
    [[nodiscard]] std::string UndoLabel() const { return m_aUndo.empty() ? std::string() : m_aUndo.back().sLabel; }
    [[nodiscard]] std::string RedoLabel() const { return m_aRedo.empty() ? std::string() : m_aRedo.back().sLabel; }
    void Undo();
    void Redo();

    // There is nothing to undo any more, and what was deleted gives its room back.
    void ForgetSteps();

    // Another number whenever values of a data set may have changed.
    [[nodiscard]] std::uint64_t DataRevision() const { return m_nDataRevision; }

private:
    struct Step {
        std::string sLabel;
        std::vector<std::string> aStatements; // which take it back, in their order
    };

    void Prepare();
    void Record();
    void DropOrphans();
    [[nodiscard]] std::vector<std::string> TakeLog();
    void Perform(std::string sLabel, const std::function<void()>& fnChange);
    void TakeBack(std::vector<Step>& aFrom, std::vector<Step>& aTo);
    void CheckExists(std::string_view sTable, Id nId);
    void CheckData();
    void RenameAnalyses(const DataSet& oDataSet, std::string_view sNewName);
    void RecordCells(Id nDataSetId, int iColumn);
    Id CopyDataSet(const DataSet& oDataSet, Id nStudyId);
    void WriteRows(Id nDataSetId, const Table& oTable);

    Database m_oDatabase;
    std::vector<Step> m_aUndo;
    std::vector<Step> m_aRedo;
    std::uint64_t m_nDataRevision = 0;
};

} // namespace studies
