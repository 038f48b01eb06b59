// Studies as files that are sent.
#include "StudyFile.h"

#include "Csv.h"
#include "corvane/base/Failure.h"
#include "tests/studies/RunAsJob.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

using namespace studies;

namespace {

std::string Bytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class StudyFile : public testing::Test {
protected:
    // One with all that a study can have, besides another.
    StudyFile() {
        m_store.CreateStudy("Other");
        m_study = m_store.CreateStudy("Birds");
        m_store.SetStudyProperties(m_study, "Birds", "two\nlines");
        const Table table = ReadCsv("name,mass\nA,1.50\n,2.00\nB,\n").table;
        m_store.ImportDataSet(m_study, "first", "/home/someone/first.csv", table);
        const Id second = m_store.ImportDataSet(m_study, "second", "second.csv", table);
        m_store.SetDataSetProperties(second, {"second", "note", {"", "g"}});
        m_store.AddAnalysis(second, "Means", {AnalysisKind::Bootstrap, "", "mass", "", "", "", 7, {}},
                            BootstrapResult{2, 1.75, 0.1, {1.5, 2}, {1, 0.5, 2}, {3, 4}});
    }
    std::string Message(const std::function<void()>& call) const {
        try {
            call();
        } catch (const corvane::Failure& failure) {
            return failure.Description;
        }
        return "none";
    }
    // All but its numbers.
    static std::string Text(Store& store, Id study) {
        std::string text = store.StudyOf(study).name + "|" + store.StudyOf(study).notes;
        for (const DataSet& dataSet : store.DataSets(study)) {
            const Table table = store.ReadDataSet(dataSet.id);
            text += "\n" + dataSet.name + "|" + dataSet.source + "|" + dataSet.notes + "|" + table.columns[1].Label() +
                    "\n" + WriteCsv(table);
        }
        for (const Analysis& analysis : store.Analyses(study))
            text += analysis.name + " of " + store.DataSetOf(analysis.dataSetId).name + "|" +
                    analysis.settings.columnX + "|" + std::to_string(analysis.result ? analysis.result->counts[1] : 0);
        return text;
    }

    corvane::test::TemporaryFolder m_folder;
    std::string m_path = m_folder.Path("birds.study");
    Store m_store{m_folder.Path("store.sqlite")};
    Id m_study = 0;
};

TEST_F(StudyFile, IsOpenedAsItWasSentAndUndone) {
    WriteStudyFile(SubjectOf(m_store, m_study), m_path);
    EXPECT_EQ(LookAtStudyFile(m_path).name, "Birds");
    EXPECT_EQ(Bytes(m_path).find("/home/someone"), std::string::npos) << "folders aren't sent";
    EXPECT_EQ(Bytes(m_path).find("Other"), std::string::npos);
    Store other(m_folder.Path("other.sqlite"));
    other.CreateStudy("In front"); // so that numbers are others
    std::filesystem::permissions(m_path, std::filesystem::perms::owner_read);
    const Id opened = other.AddStudy(CopyStudyFile(m_path, other.Path()));
    EXPECT_EQ(Text(other, opened), "Birds|two\nlines\nfirst|first.csv||mass\nname,mass\nA,1.50\n,2.00\nB,\n\n"
                                   "second|second.csv|note|mass (g)\nname,mass\nA,1.50\n,2.00\nB,\n"
                                   "Means of second|mass|4");
    const std::string text = Text(other, opened);
    other.Undo();
    EXPECT_FALSE(other.HasStudy(opened));
    other.Redo();
    EXPECT_EQ(Text(other, opened), text);
}

TEST_F(StudyFile, IsWrittenAndOpenedAsAWholeOrNotAtAll) {
    Store empty(m_folder.Path("empty.sqlite"));
    WriteStudyFile(SubjectOf(m_store, m_store.Studies()[0].id), m_path); // without data
    EXPECT_EQ(CopyStudyFile(m_path, empty.Path()).study.name, "Other");
    const std::string before = Bytes(m_path);
    const ReportSubject subject = SubjectOf(m_store, m_study);
    EXPECT_FALSE(RunAsJob(
        0,
        [&](corvane::JobProgress& progress) {
            WriteStudyFile(subject, m_path, progress);
            return 0;
        },
        0.3));
    EXPECT_EQ(Bytes(m_path), before);
    WriteStudyFile(subject, m_path);
    const auto copy = [&](corvane::JobProgress& progress) { return CopyStudyFile(m_path, empty.Path(), progress); };
    EXPECT_FALSE(RunAsJob(0, copy, 0.3));
    EXPECT_EQ(Database(empty.Path()).WholeOf("SELECT count(*) FROM sqlite_master WHERE name GLOB 'data_[0-9]*'"), 0);
    EXPECT_TRUE(RunAsJob(0, copy));
    EXPECT_FALSE(std::filesystem::exists(m_path + ".part"));
    EXPECT_NE(Message([&] { WriteStudyFile(subject, m_folder.Path("none") + "/../birds.study/x.study"); }), "none");
}

TEST_F(StudyFile, IsRefusedWhenItCannotBeUsed) {
    const std::string damaged = "“birds.study” isn't a study, or is damaged. Ask for it to be sent again.";
    const auto refusal = [&](const std::string& sql) {
        WriteStudyFile(SubjectOf(m_store, m_study), m_path);
        Database(m_path).Run(sql);
        return Message([&] { (void)CopyStudyFile(m_path, m_store.Path()); });
    };
    for (const char* sql :
         {"PRAGMA application_id=1398035780", "PRAGMA user_version=3", "DELETE FROM studies", "DROP TABLE data_2",
          "DELETE FROM data_1 WHERE id=2", "UPDATE data_1 SET id=9 WHERE id=3", "UPDATE data_sets SET row_count=2",
          "DELETE FROM data_columns", "DROP TABLE analyses", "UPDATE analyses SET kind='dance'",
          "UPDATE analyses SET data_set_id=7", "UPDATE data_columns SET type='picture'"})
        EXPECT_EQ(refusal(sql), damaged) << sql;
    EXPECT_EQ(refusal("PRAGMA user_version=5"),
              "“birds.study” was written by a later version of Studies (5; this one knows 4).");
    for (const std::size_t size : {0U, 100U, 20'000U}) {
        WriteStudyFile(SubjectOf(m_store, m_study), m_path);
        std::filesystem::resize_file(m_path, size);
        EXPECT_EQ(Message([&] { (void)CopyStudyFile(m_path, m_store.Path()); }), damaged) << size;
    }
    std::ofstream(m_path) << std::string(5000, 'x');
    EXPECT_EQ(Message([&] { (void)LookAtStudyFile(m_path); }), damaged);
    std::filesystem::remove(m_path);
    EXPECT_EQ(Message([&] { (void)LookAtStudyFile(m_path); }), "The file “" + m_path + "” isn't there any more.");
    EXPECT_EQ(m_store.Studies().size(), 2U);
}

} // namespace
