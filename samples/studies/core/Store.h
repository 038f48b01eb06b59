// The user's studies with their data sets and analyses, in one file. Every change is one step that can be undone while
// the store is open.
#pragma once

#include "Database.h"
#include "Table.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace studies {

using Id = std::int64_t; // never given out twice in a file; 0 is nobody's

struct Study {
    Id nId = 0;
    std::string sName;
};

struct DataSet {
    Id nId = 0;
    Id nStudyId = 0;
    std::string sName;
    std::string sSource; // the path that it was imported from
    std::int64_t nRows = 0;
};

struct Analysis {
    Id nId = 0;
    Id nStudyId = 0;
    Id nDataSetId = 0;
    std::string sName;
    std::string sGroupColumn; // "" for a summary of the whole
};

class Store {
public:
    // Makes the file when there is none. Fails, saying what is the matter, when it is damaged, of another program, or
    // written by a later version.
    explicit Store(std::string sPath);

    // studies.sqlite in the user's data folder.
    [[nodiscard]] static std::string DefaultPath();

    // In order of creation.
    [[nodiscard]] std::vector<Study> Studies();
    [[nodiscard]] std::vector<DataSet> DataSets(Id nStudyId);
    [[nodiscard]] std::vector<Analysis> Analyses(Id nStudyId);
    // Fails when there is none of that number.
    [[nodiscard]] Study StudyOf(Id nStudyId);
    [[nodiscard]] Table ReadDataSet(Id nDataSetId);

    // Each is one step. Names of studies are unique without regard to case; a name that isn't allowed or is taken
    // fails and changes nothing, and so does an unknown number.
    Id CreateStudy(std::string_view sName);
    void RenameStudy(Id nStudyId, std::string_view sName);
    void DeleteStudy(Id nStudyId);
    Id DuplicateStudy(Id nStudyId); // "Copy of ...", with all that is in it
    Id ImportDataSet(Id nStudyId, std::string_view sName, std::string_view sSource, const Table& oTable);
    void DeleteDataSet(Id nDataSetId); // with its analyses
    Id AddAnalysis(Id nDataSetId, std::string_view sName, std::string_view sGroupColumn);
    void DeleteAnalysis(Id nAnalysisId);

    // "Study 1" and so on for "Study", or the text itself if it is free and bNumberFirst is false.
    [[nodiscard]] std::string FreeName(std::string_view sBase, bool bNumberFirst = true);
    // Why a study can't have the name; "" when it can. nStudyId is the study that may keep it.
    [[nodiscard]] std::string NameProblem(std::string_view sName, Id nStudyId = 0);

    // What the next Undo and Redo are about, such as "Delete Study"; "" when there is nothing.
    [[nodiscard]] std::string UndoLabel() const { return m_aUndo.empty() ? std::string() : m_aUndo.back().sLabel; }
    [[nodiscard]] std::string RedoLabel() const { return m_aRedo.empty() ? std::string() : m_aRedo.back().sLabel; }
    void Undo();
    void Redo();

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
    [[nodiscard]] std::vector<Column> Columns(Id nDataSetId);
    Id CopyDataSet(const DataSet& oDataSet, Id nStudyId);
    void WriteRows(Id nDataSetId, const Table& oTable);

    Database m_oDatabase;
    std::vector<Step> m_aUndo;
    std::vector<Step> m_aRedo;
};

} // namespace studies
