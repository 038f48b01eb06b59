#include "Store.h"

#include "Csv.h"
#include "corvane/base/Failure.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

using namespace studies;

namespace {

// "Study[data set(rows) data set(rows); analysis]" for each study.
std::string Contents(Store& oStore) {
    std::string sText;
    for (const Study& oStudy : oStore.Studies()) {
        sText += (sText.empty() ? "" : " ") + oStudy.sName + "[";
        std::string sBetween;
        for (const DataSet& oDataSet : oStore.DataSets(oStudy.nId)) {
            sText += sBetween + oDataSet.sName + "(" + std::to_string(oStore.ReadDataSet(oDataSet.nId).nRows) + ")";
            sBetween = " ";
        }
        sBetween = "; ";
        for (const Analysis& oAnalysis : oStore.Analyses(oStudy.nId)) {
            sText += sBetween + oAnalysis.sName;
            sBetween = " ";
        }
        sText += "]";
    }
    return sText;
}

std::string FailureOf(const std::function<void()>& fnCall) {
    try {
        fnCall();
    } catch (const corvane::Failure& oFailure) {
        return oFailure.Description;
    }
    return "none";
}

class StoreOfStudies : public testing::Test {
protected:
    corvane::test::TemporaryFolder m_oFolder;
    std::string m_sPath = m_oFolder.Path("data/studies.sqlite");
    // Nothing as it would be by default.
    AnalysisSettings m_oSettings{
        AnalysisKind::Scatter, "name", "mass", "count", "A", "B", 7, {BootstrapFigure::Median, 500, 0.9, 42}};
    Table m_oTable = ReadCsv("name,mass,count\nA,1.5,1\nB,,2\n,0.1,\n").oTable;

    // A[set(3); Summary] B[]
    void Fill(Store& oStore) {
        const Id nStudy = oStore.CreateStudy("A");
        oStore.AddAnalysis(oStore.ImportDataSet(nStudy, "set", "/data/set.csv", m_oTable), "Summary", m_oSettings);
        oStore.CreateStudy("B");
    }
};

TEST_F(StoreOfStudies, SurvivesReopening) {
    {
        Store oStore(m_sPath);
        Fill(oStore);
        oStore.RenameStudy(oStore.Studies()[1].nId, "C");
    }
    Store oStore(m_sPath);
    EXPECT_EQ(Contents(oStore), "A[set(3); Summary] C[]");
    EXPECT_EQ(oStore.UndoLabel(), "");
    const DataSet oDataSet = oStore.DataSets(oStore.Studies()[0].nId)[0];
    EXPECT_EQ(oDataSet.sSource, "/data/set.csv");
    EXPECT_EQ(WriteCsv(oStore.ReadDataSet(oDataSet.nId)), WriteCsv(m_oTable));
    EXPECT_EQ(oStore.ReadDataSet(oDataSet.nId).aColumns[2].eType, ColumnType::Whole);
    EXPECT_TRUE(oStore.Analyses(oDataSet.nStudyId)[0].oSettings == m_oSettings);
}

// Each step, undone and done again, leaves what it left before, in the file too.
TEST_F(StoreOfStudies, EveryStepIsUndoneAndDoneAgain) {
    Store oStore(m_sPath);
    Fill(oStore);
    const Id nA = oStore.Studies()[0].nId;
    const Id nSet = oStore.DataSets(nA)[0].nId;
    const Id nAnalysis = oStore.Analyses(nA)[0].nId;
    const struct {
        const char* sLabel;
        std::function<void()> fnStep;
        const char* sAfter;
    } aSteps[] = {
        {"New Study", [&] { oStore.CreateStudy("New"); }, "A[set(3); Summary] B[] New[]"},
        {"Rename Study", [&] { oStore.RenameStudy(nA, "It's"); }, "It's[set(3); Summary] B[]"},
        {"Delete Study", [&] { oStore.DeleteStudy(nA); }, "B[]"},
        {"Duplicate Study", [&] { oStore.DuplicateStudy(nA); }, "A[set(3); Summary] B[] Copy of A[set(3); Summary]"},
        {"Import", [&] { oStore.ImportDataSet(nA, "more", "", m_oTable); }, "A[set(3) more(3); Summary] B[]"},
        {"Delete Data Set", [&] { oStore.DeleteDataSet(nSet); }, "A[] B[]"},
        {"New Analysis", [&] { oStore.AddAnalysis(nSet, "By name", {}); }, "A[set(3); Summary By name] B[]"},
        {"Change Analysis", [&] { oStore.ChangeAnalysis(nAnalysis, "Other", {}); }, "A[set(3); Other] B[]"},
        {"Change Study", [&] { oStore.SetStudyProperties(nA, "C", "notes"); }, "C[set(3); Summary] B[]"},
        {"Change Data Set",
         [&] {
             oStore.SetDataSetProperties(nSet, {"sit", "notes", {"", "g", ""}});
         },
         "A[sit(3); Summary] B[]"},
        {"Delete Analysis", [&] { oStore.DeleteAnalysis(nAnalysis); }, "A[set(3)] B[]"},
    };
    const std::string sBefore = Contents(oStore);
    for (const auto& oStep : aSteps) {
        oStep.fnStep();
        EXPECT_EQ(Contents(oStore), oStep.sAfter) << oStep.sLabel;
        EXPECT_EQ(oStore.UndoLabel(), oStep.sLabel);
        oStore.Undo();
        EXPECT_EQ(Contents(oStore), sBefore) << oStep.sLabel;
        EXPECT_EQ(oStore.RedoLabel(), oStep.sLabel);
        oStore.Redo();
        EXPECT_EQ(Contents(oStore), oStep.sAfter) << oStep.sLabel;
        oStore.Undo();
    }
    Store oAgain(m_sPath);
    EXPECT_EQ(Contents(oAgain), sBefore);
}

TEST_F(StoreOfStudies, StepsAreUndoneInReverseAndANewOneForgetsTheUndone) {
    Store oStore(m_sPath);
    Fill(oStore);
    oStore.DeleteStudy(oStore.Studies()[0].nId);
    oStore.Undo();
    oStore.Undo();
    EXPECT_EQ(Contents(oStore), "A[set(3); Summary]");
    oStore.Undo();
    oStore.Undo();
    oStore.Undo();
    oStore.Undo(); // one more than there are
    EXPECT_EQ(Contents(oStore), "");
    for (int i = 0; i < 5; ++i)
        oStore.Redo();
    EXPECT_EQ(Contents(oStore), "B[]");
    oStore.Undo();
    oStore.CreateStudy("C");
    EXPECT_EQ(oStore.RedoLabel(), "");
    oStore.Redo();
    EXPECT_EQ(Contents(oStore), "A[set(3); Summary] B[] C[]");
}

TEST_F(StoreOfStudies, NamesOfStudies) {
    Store oStore(m_sPath);
    const Id nId = oStore.CreateStudy("\u00C4rger");
    const struct {
        const char* sName;
        const char* sFailure;
    } aCases[] = {
        {"", "A study needs a name."},
        {"  ", "A study needs a name."},
        {" x", "A study's name can't begin or end with a space."},
        {"#1", "A study's name can't begin with “#”."},
        {"a\nb", "A study's name must be on one line."},
        {"\u00E4RGER", "There is a study “\u00E4RGER” already."},
    };
    for (const auto& oCase : aCases)
        EXPECT_EQ(FailureOf([&] { oStore.CreateStudy(oCase.sName); }), oCase.sFailure);
    EXPECT_EQ(FailureOf([&] { oStore.CreateStudy(std::string(121, 'x')); }), "A study's name has at most 120 letters.");
    oStore.RenameStudy(nId, "\u00E4rger"); // its own name in another case
    EXPECT_EQ(Contents(oStore), "\u00E4rger[]");
    EXPECT_EQ(oStore.FreeName("Study"), "Study 1");
    oStore.CreateStudy("STUDY 1");
    EXPECT_EQ(oStore.FreeName("Study"), "Study 2");
    oStore.DuplicateStudy(nId);
    oStore.DuplicateStudy(nId);
    EXPECT_EQ(oStore.Studies().back().sName, "Copy of \u00E4rger 2");
}

TEST_F(StoreOfStudies, AFailedStepChangesNothing) {
    Store oStore(m_sPath);
    Fill(oStore);
    const std::string sBefore = Contents(oStore);
    const std::string sLabel = oStore.UndoLabel();
    const Id nGone = 999;
    for (const std::function<void()>& fnStep : std::initializer_list<std::function<void()>>{
             [&] { oStore.RenameStudy(oStore.Studies()[1].nId, "a"); }, [&] { oStore.DeleteStudy(nGone); },
             [&] { oStore.DuplicateStudy(nGone); }, [&] { oStore.ImportDataSet(nGone, "x", "", m_oTable); },
             [&] { oStore.AddAnalysis(nGone, "x", {}); }, [&] { oStore.DeleteAnalysis(nGone); }})
        EXPECT_THROW(fnStep(), corvane::Failure);
    EXPECT_EQ(Contents(oStore), sBefore);
    EXPECT_EQ(oStore.UndoLabel(), sLabel);
}

TEST_F(StoreOfStudies, DataOfDeletedSetsGoWhenTheFileIsNextOpened) {
    Store oStore(m_sPath);
    Fill(oStore);
    oStore.DeleteStudy(oStore.Studies()[0].nId);
    { Store oOther(m_sPath); }
    EXPECT_EQ(FailureOf([&] { oStore.Undo(); }),
              "This can't be undone: the data have been deleted since the file was opened elsewhere.");
    EXPECT_EQ(Contents(oStore), "B[]");
}

TEST_F(StoreOfStudies, CellsAreChangedAndUndone) {
    Store oStore(m_sPath);
    Fill(oStore);
    const Id nSet = oStore.DataSets(oStore.Studies()[0].nId)[0].nId;
    const std::string sBefore = WriteCsv(oStore.ReadDataSet(nSet));
    oStore.SetCells(nSet, {{1, 0, "it's"}, {2, 1, "2.25"}, {3, 1, ""}});
    EXPECT_EQ(WriteCsv(oStore.ReadDataSet(nSet)), "name,mass,count\nit's,1.5,1\nB,2.25,2\n,,\n");
    oStore.SetCells(nSet, {{1, 2, "7"}});
    oStore.Undo();
    EXPECT_EQ(WriteCsv(oStore.ReadDataSet(nSet)), "name,mass,count\nit's,1.5,1\nB,2.25,2\n,,\n");
    EXPECT_EQ(oStore.UndoLabel(), "Change Values");
    oStore.Undo();
    EXPECT_EQ(WriteCsv(oStore.ReadDataSet(nSet)), sBefore);
    oStore.Redo();
    oStore.Redo();
    EXPECT_EQ(WriteCsv(oStore.ReadDataSet(nSet)), "name,mass,count\nit's,1.5,7\nB,2.25,2\n,,\n");
    EXPECT_EQ(FailureOf([&] {
                  oStore.SetCells(nSet, {{1, 0, "x"}, {1, 1, "heavy"}});
              }),
              "“heavy” isn't a number, and “mass” is a numeric column.");
    EXPECT_EQ(FailureOf([&] {
                  oStore.SetCells(nSet, {{1, 2, "1.5"}});
              }),
              "“1.5” isn't a whole number, and “count” is a column of whole numbers.");
    EXPECT_EQ(WriteCsv(oStore.ReadDataSet(nSet)), "name,mass,count\nit's,1.5,7\nB,2.25,2\n,,\n");
}

TEST_F(StoreOfStudies, RowsAreSortedAndFiltered) {
    Store oStore(m_sPath);
    const Id nSet = oStore.ImportDataSet(oStore.CreateStudy("A"), "set", "",
                                         ReadCsv("name,mass\nb,10\nA,9\n,2\n50%,\nb_c,10.5\n").oTable);
    const struct {
        RowView oView;
        const char* sRows;
    } aCases[] = {
        {{}, "12345"},
        {{0, false, -1, ""}, "42153"}, // without regard to case, what is missing last
        {{1, true, -1, ""}, "51234"},
        {{-1, false, -1, "b"}, "15"},
        {{-1, false, -1, "%"}, "4"}, // a letter like others
        {{-1, false, -1, "_"}, "5"},
        {{-1, false, -1, "10"}, "15"},
        {{1, false, 1, "> 9"}, "15"},
        {{-1, false, 1, "<=9"}, "23"},
        {{-1, false, 1, "<> 10"}, "235"},
        {{-1, false, 0, "=a"}, "2"},
        {{-1, false, 0, "="}, "3"},
        {{-1, false, 1, "<>"}, "1235"},
        {{-1, false, 0, ">b"}, "5"},
    };
    for (const auto& oCase : aCases) {
        std::string sRows;
        for (const Id nRow : oStore.RowIds(nSet, oCase.oView))
            sRows += std::to_string(nRow);
        EXPECT_EQ(sRows, oCase.sRows) << oCase.oView.iSortColumn << " " << oCase.oView.sFilter;
    }
    EXPECT_EQ(FailureOf([&] {
                  (void)oStore.RowIds(nSet, {-1, false, 1, "> x"});
              }),
              "“x” isn't a number, and “mass” is a numeric column.");
    EXPECT_EQ(FailureOf([&] { (void)oStore.RowIds(nSet, {-1, false, 1, "<"}); }), "A value is missing after “<”.");
}

// The first version had summaries alone, without notes and units.
TEST_F(StoreOfStudies, AFileOfTheFirstVersionIsRead) {
    {
        Store oStore(m_sPath);
        Fill(oStore);
    }
    {
        Database oFile(m_sPath);
        for (const std::string sColumn : {"kind", "x_column", "y_column", "first_group", "second_group", "figure",
                                          "bins", "confidence", "resamples", "seed"})
            oFile.Run("ALTER TABLE analyses DROP COLUMN " + sColumn);
        for (const std::string sTable :
             {"studies DROP COLUMN notes", "data_sets DROP COLUMN notes", "data_columns DROP COLUMN unit"})
            oFile.Run("ALTER TABLE " + sTable);
        oFile.Run("PRAGMA user_version=1");
    }
    Store oStore(m_sPath);
    EXPECT_EQ(Contents(oStore), "A[set(3); Summary] B[]");
    const Analysis oAnalysis = oStore.Analyses(oStore.Studies()[0].nId)[0];
    EXPECT_EQ(oAnalysis.oSettings.eKind, AnalysisKind::Summary);
    EXPECT_EQ(oAnalysis.oSettings.sGroupColumn, "name");
    EXPECT_EQ(oAnalysis.oSettings.oBootstrap.nResamples, 1000);
}

TEST_F(StoreOfStudies, FilesThatItCannotUse) {
    { Store oStore(m_sPath); }
    const std::string sText = m_oFolder.Path("text.sqlite");
    std::ofstream(sText) << std::string(4000, 'x');
    EXPECT_EQ(FailureOf([&] { Store oStore(sText); }),
              "The file “" + sText +
                  "” is damaged or isn't a file of studies. Move it away to start with an empty one.");

    const std::string sFolder = m_oFolder.Path("text.sqlite/studies.sqlite");
    EXPECT_NE(FailureOf([&] { Store oStore(sFolder); }), "none") << "a file stands where the folder should be";

    const std::string sForeign = m_oFolder.Path("foreign.sqlite");
    Database(sForeign).Run("CREATE TABLE t(x)");
    EXPECT_EQ(FailureOf([&] { Store oStore(sForeign); }), "The file “" + sForeign + "” belongs to another program.");

    Database(m_sPath).Run("PRAGMA user_version=3");
    EXPECT_EQ(FailureOf([&] { Store oStore(m_sPath); }),
              "The file “" + m_sPath + "” was written by a later version of Studies (3; this one knows 2).");
}

TEST_F(StoreOfStudies, ADamagedFileIsFoundWhenItIsOpened) {
    {
        Store oStore(m_sPath);
        Table oLarge = m_oTable;
        for (int i = 0; i < 12; ++i)
            for (Column& oColumn : oLarge.aColumns) {
                oColumn.aTexts.insert(oColumn.aTexts.end(), oColumn.aTexts.begin(), oColumn.aTexts.end());
                oColumn.aNumbers.insert(oColumn.aNumbers.end(), oColumn.aNumbers.begin(), oColumn.aNumbers.end());
            }
        oLarge.nRows <<= 12U;
        oStore.ImportDataSet(oStore.CreateStudy("A"), "large", "", oLarge);
    }
    std::filesystem::resize_file(m_sPath, std::filesystem::file_size(m_sPath) / 2);
    EXPECT_NE(FailureOf([&] { Store oStore(m_sPath); }).find("is damaged"), std::string::npos);
}

} // namespace
