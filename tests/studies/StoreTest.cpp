#include "Store.h"

#include "Csv.h"
#include "RowView.h"
#include "corvane/base/Failure.h"
#include "tests/studies/RunAsJob.h"
#include "tests/support/TemporaryFolder.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

using namespace studies;

namespace {

// "Study[data set(rows) data set(rows); analysis]" for each study.
std::string Contents(Store& store) {
    std::string text;
    for (const Study& study : store.Studies()) {
        text += (text.empty() ? "" : " ") + study.name + "[";
        std::string between;
        for (const DataSet& dataSet : store.DataSets(study.id)) {
            text += between + dataSet.name + "(" + std::to_string(store.ReadDataSet(dataSet.id).rows) + ")";
            between = " ";
        }
        between = "; ";
        for (const Analysis& analysis : store.Analyses(study.id)) {
            text += between + analysis.name;
            between = " ";
        }
        text += "]";
    }
    return text;
}

std::string FailureOfCall(const std::function<void()>& call) {
    try {
        call();
    } catch (const corvane::Failure& failure) {
        return failure.Description;
    }
    return "none";
}

class StoreOfStudies : public testing::Test {
protected:
    corvane::test::TemporaryFolder m_folder;
    std::string m_path = m_folder.Path("data/studies.sqlite");
    // Nothing as it would be by default.
    AnalysisSettings m_settings{
        AnalysisKind::Scatter, "name", "mass", "count", "A", "B", 7, {BootstrapFigure::Median, 500, 0.9, 42}};
    Table m_table = ReadCsv("name,mass,count\nA,1.5,1\nB,,2\n,0.1,\n").table;

    static Table LargeTable() {
        std::string text = "name,mass,count\n";
        for (int row = 0; row < 5000; ++row)
            text += (row % 3 == 0 ? "" : "A " + std::to_string(row)) + "," + std::to_string(row) + ".5,1\n";
        return ReadCsv(text).table;
    }
    // A[set(3); Summary] B[]
    void Fill(Store& store) {
        const Id study = store.CreateStudy("A");
        store.AddAnalysis(store.ImportDataSet(study, "set", "/data/set.csv", m_table), "Summary", m_settings);
        store.CreateStudy("B");
    }
};

TEST_F(StoreOfStudies, SurvivesReopening) {
    {
        Store store(m_path);
        Fill(store);
        store.RenameStudy(store.Studies()[1].id, "C");
    }
    Store store(m_path);
    EXPECT_EQ(Contents(store), "A[set(3); Summary] C[]");
    EXPECT_EQ(store.UndoLabel(), "");
    const DataSet dataSet = store.DataSets(store.Studies()[0].id)[0];
    EXPECT_EQ(dataSet.source, "/data/set.csv");
    EXPECT_EQ(WriteCsv(store.ReadDataSet(dataSet.id)), WriteCsv(m_table));
    EXPECT_EQ(store.ReadDataSet(dataSet.id).columns[2].type, ColumnType::Whole);
    EXPECT_TRUE(store.Analyses(dataSet.studyId)[0].settings == m_settings);
}

// Each step, undone and done again, leaves what it left before, in the file too.
TEST_F(StoreOfStudies, EveryStepIsUndoneAndDoneAgain) {
    Store store(m_path);
    Fill(store);
    const Id a = store.Studies()[0].id;
    const Id set = store.DataSets(a)[0].id;
    const Id analysis = store.Analyses(a)[0].id;
    const struct {
        const char* label;
        std::function<void()> step;
        const char* after;
    } steps[] = {
        {"New Study", [&] { store.CreateStudy("New"); }, "A[set(3); Summary] B[] New[]"},
        {"Rename Study", [&] { store.RenameStudy(a, "It's"); }, "It's[set(3); Summary] B[]"},
        {"Delete Study",
         [&] {
             store.Delete({{'s', a}});
         },
         "B[]"},
        {"Duplicate Study", [&] { store.DuplicateStudy(a); }, "A[set(3); Summary] B[] Copy of A[set(3); Summary]"},
        {"Import", [&] { store.ImportDataSet(a, "more", "", m_table); }, "A[set(3) more(3); Summary] B[]"},
        {"Delete Data Set",
         [&] {
             store.Delete({{'d', set}});
         },
         "A[] B[]"},
        {"New Analysis", [&] { store.AddAnalysis(set, "By name", {}); }, "A[set(3); Summary By name] B[]"},
        {"Change Analysis", [&] { store.ChangeAnalysis(analysis, "Other", {}); }, "A[set(3); Other] B[]"},
        {"Change Study", [&] { store.SetStudyProperties(a, "C", "notes"); }, "C[set(3); Summary] B[]"},
        {"Change Data Set",
         [&] {
             store.SetDataSetProperties(set, {"sit", "notes", {"", "g", ""}});
         },
         "A[sit(3); Summary] B[]"},
        {"Delete Analysis",
         [&] {
             store.Delete({{'a', analysis}});
         },
         "A[set(3)] B[]"},
    };
    const std::string before = Contents(store);
    for (const auto& step : steps) {
        step.step();
        EXPECT_EQ(Contents(store), step.after) << step.label;
        EXPECT_EQ(store.UndoLabel(), step.label);
        store.Undo();
        EXPECT_EQ(Contents(store), before) << step.label;
        EXPECT_EQ(store.RedoLabel(), step.label);
        store.Redo();
        EXPECT_EQ(Contents(store), step.after) << step.label;
        store.Undo();
    }
    Store again(m_path);
    EXPECT_EQ(Contents(again), before);
}

TEST_F(StoreOfStudies, NamesOfStudies) {
    Store store(m_path);
    const Id id = store.CreateStudy("\u00C4rger");
    const struct {
        const char* name;
        const char* failure;
    } cases[] = {
        {"", "A study needs a name."},
        {"  ", "A study needs a name."},
        {" x", "A study's name can't begin or end with a space."},
        {"#1", "A study's name can't begin with “#”."},
        {"a\nb", "A study's name must be on one line."},
        {"\u00E4RGER", "There is a study “\u00E4RGER” already."},
    };
    for (const auto& testCase : cases)
        EXPECT_EQ(FailureOfCall([&] { store.CreateStudy(testCase.name); }), testCase.failure);
    EXPECT_EQ(FailureOfCall([&] { store.CreateStudy(std::string(121, 'x')); }),
              "A study's name has at most 120 letters.");
    store.RenameStudy(id, "\u00E4rger"); // its own name in another case
    EXPECT_EQ(Contents(store), "\u00E4rger[]");
    EXPECT_EQ(store.FreeName("Study"), "Study 1");
    store.CreateStudy("STUDY 1");
    EXPECT_EQ(store.FreeName("Study"), "Study 2");
    store.DuplicateStudy(id);
    store.DuplicateStudy(id);
    EXPECT_EQ(store.Studies().back().name, "Copy of \u00E4rger 2");
}

TEST_F(StoreOfStudies, AFailedStepChangesNothing) {
    Store store(m_path);
    Fill(store);
    const std::string before = Contents(store);
    const std::string label = store.UndoLabel();
    const Id gone = 999;
    for (const std::function<void()>& step : std::initializer_list<std::function<void()>>{
             [&] { store.RenameStudy(store.Studies()[1].id, "a"); },
             [&] {
                 store.Delete({{'s', gone}});
             },
             [&] { store.DuplicateStudy(gone); }, [&] { store.ImportDataSet(gone, "x", "", m_table); },
             [&] { store.AddAnalysis(gone, "x", {}); },
             [&] {
                 store.Delete({{'a', gone}});
             }})
        EXPECT_THROW(step(), corvane::Failure);
    EXPECT_EQ(Contents(store), before);
    EXPECT_EQ(store.UndoLabel(), label);
}

TEST_F(StoreOfStudies, WhatWasDeletedIsRestoredWithinAMonth) {
    {
        Store store(m_path);
        Fill(store);
        store.Delete({{'a', store.Analyses(store.Studies()[0].id)[0].id}});
        store.Delete({{'d', store.DataSets(store.Studies()[0].id)[0].id}});
        store.Delete({{'s', store.Studies()[0].id}});
        store.CreateStudy("a");
    }
    Store store(m_path);
    const std::vector<Deleted> items = store.DeletedItems();
    ASSERT_EQ(items.size(), 3U);
    EXPECT_EQ(items[0].kind + " " + items[0].name, "study A");
    for (const Deleted& item : {items[1], items[2]})
        EXPECT_EQ(FailureOfCall([&] { store.Restore(item.id); }),
                  "“" + item.name +
                      "” was part of a study or data set that has been deleted, too. Restore that first.");
    EXPECT_EQ(Contents(store), "B[] a[]");
    for (const Deleted& item : items)
        store.Restore(item.id);
    EXPECT_EQ(Contents(store), "A 2[set(3); Summary] B[] a[]") << "the name is taken by now";
    EXPECT_EQ(FailureOfCall([&] { store.Restore(items[0].id); }), "The selection no longer exists.");
    EXPECT_EQ(FailureOfCall([&] { store.CreateStudy("A"); }), "There is a study “A” already.");
    for (int i = 0; i < 3; ++i)
        store.Undo();
    EXPECT_EQ(Contents(store), "B[] a[]");
    EXPECT_EQ(store.DeletedItems().size(), 3U);
    store.Redo();
    EXPECT_EQ(Contents(store), "A 2[] B[] a[]");

    // A data set whose name is taken; the deletion is taken back, and so is its entry in the bin.
    const Id other = store.ImportDataSet(store.Studies()[0].id, "SET", "", m_table);
    store.Restore(items[1].id);
    EXPECT_EQ(Contents(store), "A 2[set 2(3) SET(3)] B[] a[]");
    store.Delete({{'d', other}});
    store.Undo();
    EXPECT_EQ(store.DeletedItems().size(), 1U);
}

TEST_F(StoreOfStudies, TheBinIsEmptiedAfterAMonthUnlessTheFileIsInUse) {
    const auto Tables = [this] {
        return Database(m_path).WholeOf("SELECT count(*) FROM sqlite_master WHERE name GLOB 'data_[0-9]*'");
    };
    {
        Store store(m_path);
        Fill(store);
        store.Delete({{'s', store.Studies()[0].id}});
    }
    { Store store(m_path); }
    EXPECT_EQ(Tables(), 1);
    Database(m_path).Run("UPDATE bin SET time = time - 31 * 86400");
    {
        Store store(m_path);
        EXPECT_TRUE(store.DeletedItems().empty());
        EXPECT_EQ(Tables(), 0);
        store.ImportDataSet(store.Studies()[0].id, "more", "", m_table);
        store.Undo();
        { Store other(m_path); }
        store.Redo();
        EXPECT_EQ(Contents(store), "B[more(3)]") << "another store leaves what may be needed";
    }
}

TEST_F(StoreOfStudies, TwoStoresOnOneFileNoticeAndKeepWhatTheOtherChanges) {
    Store store(m_path);
    EXPECT_FALSE(store.IsShared());
    Fill(store);
    Store other(m_path);
    EXPECT_TRUE(other.IsShared());
    const Id a = store.Studies()[0].id;
    const Id set = store.DataSets(a)[0].id;
    store.RenameStudy(a, "mine");
    EXPECT_FALSE(store.NoticeChanges()) << "its own";
    EXPECT_TRUE(other.NoticeChanges());
    EXPECT_FALSE(other.NoticeChanges()) << "once";

    const std::string lost = "This can't be undone: it has been changed in another window of Studies since.";
    other.SetStudyProperties(a, "mine", "notes");
    EXPECT_EQ(FailureOfCall([&] { store.Undo(); }), lost);
    EXPECT_EQ(store.StudyOf(a).notes, "notes");
    other.Undo();
    store.Undo();
    EXPECT_EQ(store.StudyOf(a).name, "A");

    store.SetCells(set, {{1, 0, "mine", "A"}});
    EXPECT_EQ(FailureOfCall([&] {
                  other.SetCells(set, {{2, 0, "theirs", "B"}, {1, 0, "theirs", "A"}});
              }),
              "“theirs” hasn't been entered: the value there was changed in another window of Studies. Enter it again "
              "to replace what is shown now.");
    other.SetCells(set, {{2, 1, "2", ""}, {2, 2, "3", "2"}});
    other.SetCells(set, {{1, 0, "theirs"}});
    EXPECT_EQ(WriteCsv(store.ReadDataSet(set)), "name,mass,count\ntheirs,1.5,1\nB,2.0,3\n,0.1,\n");
    EXPECT_EQ(FailureOfCall([&] { store.Undo(); }), lost);
}

TEST_F(StoreOfStudies, ResultsAreKeptUntilTheDataChange) {
    Store store(m_path);
    Fill(store);
    const Id set = store.DataSets(store.Studies()[0].id)[0].id;
    const Id id = store.AddAnalysis(set, "Bootstrap", m_settings,
                                    BootstrapResult{3, 0.1, 1e-300, {-2.0 / 3, 7}, {-0.1, 0.3, 2}, {998, 2}});
    const auto Result = [&] { return store.AnalysisOf(id).result; };
    ASSERT_TRUE(Result());
    EXPECT_EQ(Result()->count, 3U);
    EXPECT_EQ(Result()->figure, 0.1);
    EXPECT_EQ(Result()->error, 1e-300);
    EXPECT_EQ(Result()->interval.low, -2.0 / 3);
    EXPECT_EQ(Result()->interval.high, 7);
    EXPECT_EQ(Result()->bins.Edge(Result()->bins.count), 0.5);
    EXPECT_EQ(Result()->counts, (std::vector<std::size_t>{998, 2}));
    store.SetCells(set, {{1, 1, "2"}});
    EXPECT_FALSE(Result());
    store.Undo();
    EXPECT_TRUE(Result());
    store.ChangeAnalysis(id, "Bootstrap", m_settings);
    EXPECT_FALSE(Result());
}

TEST_F(StoreOfStudies, CellsAreChangedAndUndone) {
    Store store(m_path);
    Fill(store);
    const Id set = store.DataSets(store.Studies()[0].id)[0].id;
    const std::string before = WriteCsv(store.ReadDataSet(set));
    store.SetCells(set, {{1, 0, "it's"}, {2, 1, "2.25"}, {3, 1, ""}});
    EXPECT_EQ(WriteCsv(store.ReadDataSet(set)), "name,mass,count\nit's,1.5,1\nB,2.25,2\n,,\n");
    store.SetCells(set, {{1, 2, "7"}});
    store.Undo();
    EXPECT_EQ(WriteCsv(store.ReadDataSet(set)), "name,mass,count\nit's,1.5,1\nB,2.25,2\n,,\n");
    EXPECT_EQ(store.UndoLabel(), "Change Values");
    store.Undo();
    EXPECT_EQ(WriteCsv(store.ReadDataSet(set)), before);
    store.Redo();
    store.Redo();
    EXPECT_EQ(WriteCsv(store.ReadDataSet(set)), "name,mass,count\nit's,1.5,7\nB,2.25,2\n,,\n");
    const std::pair<CellChange, const char*> refused[] = {
        {{1, 1, "heavy"}, "“heavy” isn't a number, and “mass” is a numeric column."},
        {{1, 2, "1.5"}, "“1.5” isn't a whole number, and “count” is a column of whole numbers."},
        {{1, 2, "12345678901234567"}, "“12345678901234567” has more digits than a number keeps."}};
    for (const auto& [change, failure] : refused)
        EXPECT_EQ(FailureOfCall([&, second = change] { store.SetCells(set, {{1, 0, "x"}, second}); }), failure);
    EXPECT_EQ(WriteCsv(store.ReadDataSet(set)), "name,mass,count\nit's,1.5,7\nB,2.25,2\n,,\n");
}

TEST(RowView, SortsAndFilters) {
    const Table table = ReadCsv("name,mass\nb,10\nA,9\n,2\n50%,\nb_c,10.5\n").table;
    const struct {
        RowView view;
        const char* rows;
    } cases[] = {
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
    for (const auto& testCase : cases) {
        std::string rows;
        for (const std::uint32_t row : RowsOf(table, testCase.view))
            rows += std::to_string(row + 1);
        EXPECT_EQ(rows, testCase.rows) << testCase.view.sortColumn << " " << testCase.view.filter;
    }
    EXPECT_EQ(FailureOfCall([&] {
                  (void)RowsOf(table, {-1, false, 1, "> x"});
              }),
              "“x” isn't a number, and “mass” is a numeric column.");
    EXPECT_EQ(FailureOfCall([&] { CheckFilter(table.columns, {-1, false, 1, "<"}); }), "A value is missing after “<”.");
}

// In parts on several threads as in one.
TEST(RowView, FindsTheSameInAJob) {
    Table table;
    table.rows = 40000;
    table.columns = {{"name", ColumnType::Text, {}, {}}, {"size", ColumnType::Number, {}, {}}};
    for (std::size_t row = 0; row < table.rows; ++row) {
        table.columns[0].texts.push_back(row % 11 == 0 ? "" : "a common Begin " + std::to_string(row * 7919 % 500));
        table.columns[1].numbers.push_back(row % 13 == 0 ? std::nan("")
                                                         : std::fmod(static_cast<double>(row) * 0.37, 91.0) - 40);
    }
    for (const RowView& view : {RowView{0, true, -1, "7"}, {1, false, 0, "BEGIN 4"}, {1, true, 1, ">= -3"}}) {
        const auto rows = RowsOf(table, view);
        EXPECT_GT(rows.size(), 100U);
        EXPECT_EQ(RunAsJob(3, [&](corvane::JobProgress& progress) { return RowsOf(table, view, progress); }), rows);
    }
}

TEST_F(StoreOfStudies, JobsWriteAndReadTheirTablesBesideIt) {
    Store store(m_path);
    const Id study = store.CreateStudy("A");
    const Table table = LargeTable();
    const auto write = [&](Id id, double cancelAt) {
        return RunAsJob(
            1,
            [&](corvane::JobProgress& progress) {
                WriteDataTable(m_path, id, table, progress);
                return true;
            },
            cancelAt);
    };
    const Id reserved = store.ReserveDataSet();
    (void)store.NoticeChanges();
    store.BeginBeside();
    EXPECT_TRUE(write(reserved, 2));
    EXPECT_FALSE(store.NoticeChanges()) << "these are our own";
    EXPECT_EQ(Contents(store), "A[]") << "it isn't part of the study yet";
    store.EndBeside();
    EXPECT_FALSE(store.NoticeChanges());
    EXPECT_EQ(store.ImportDataSet(study, "set", "", table, reserved), reserved);
    EXPECT_EQ(WriteCsv(store.ReadDataSet(reserved)), WriteCsv(table));
    const auto read =
        RunAsJob(1, [&](corvane::JobProgress& progress) { return ReadDataTable(m_path, reserved, progress); });
    EXPECT_EQ(WriteCsv(*read), WriteCsv(table));
    store.Undo();
    EXPECT_EQ(Contents(store), "A[]");
    store.Redo();
    EXPECT_EQ(Contents(store), "A[set(5000)]");

    const Id cancelled = store.ReserveDataSet();
    EXPECT_GT(cancelled, reserved);
    EXPECT_FALSE(write(cancelled, 0.01));
    Database database(m_path);
    EXPECT_EQ(database.WholeOf("SELECT count(*) FROM sqlite_master WHERE name='" + DataTable(cancelled) + "'"), 0);
}

// The first version had summaries alone, without notes and units.
TEST_F(StoreOfStudies, AFileOfTheFirstVersionIsRead) {
    {
        Store store(m_path);
        Fill(store);
    }
    {
        Database file(m_path);
        for (const std::string column : {"kind", "x_column", "y_column", "first_group", "second_group", "figure",
                                         "bins", "confidence", "resamples", "seed", "result"})
            file.Run("ALTER TABLE analyses DROP COLUMN " + column);
        for (const std::string table : {"studies DROP COLUMN notes", "data_sets DROP COLUMN notes",
                                        "data_columns DROP COLUMN unit", "data_columns DROP COLUMN decimals"})
            file.Run("ALTER TABLE " + table);
        file.Run("DROP TABLE bin");
        file.Run("PRAGMA user_version=1");
    }
    Store store(m_path);
    EXPECT_EQ(Contents(store), "A[set(3); Summary] B[]");
    const Analysis analysis = store.Analyses(store.Studies()[0].id)[0];
    EXPECT_EQ(analysis.settings.kind, AnalysisKind::Summary);
    EXPECT_EQ(analysis.settings.groupColumn, "name");
    EXPECT_EQ(analysis.settings.bootstrap.resamples, 1000);
}

TEST_F(StoreOfStudies, FilesThatItCannotUse) {
    { Store store(m_path); }
    const std::string text = m_folder.Path("text.sqlite");
    std::ofstream(text) << std::string(4000, 'x');
    EXPECT_EQ(FailureOfCall([&] { Store store(text); }),
              "The file “" + text +
                  "” is damaged or isn't a file of studies. Move it away to start with an empty one.");

    const std::string folder = m_folder.Path("text.sqlite/studies.sqlite");
    EXPECT_NE(FailureOfCall([&] { Store store(folder); }), "none") << "a file stands where the folder should be";

    const std::string foreign = m_folder.Path("foreign.sqlite");
    Database(foreign).Run("CREATE TABLE t(x)");
    EXPECT_EQ(FailureOfCall([&] { Store store(foreign); }), "The file “" + foreign + "” belongs to another program.");

    Database(m_path).Run("PRAGMA user_version=5");
    EXPECT_EQ(FailureOfCall([&] { Store store(m_path); }),
              "The file “" + m_path + "” was written by a later version of Studies (5; this one knows 4).");
}

TEST_F(StoreOfStudies, ADamagedFileIsFoundWhenItIsOpened) {
    {
        Store store(m_path);
        store.ImportDataSet(store.CreateStudy("A"), "large", "", LargeTable());
    }
    std::filesystem::resize_file(m_path, std::filesystem::file_size(m_path) / 2);
    EXPECT_NE(FailureOfCall([&] { Store store(m_path); }).find("is damaged"), std::string::npos);
}

} // namespace
