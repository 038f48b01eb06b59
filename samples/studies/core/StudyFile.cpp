#include "StudyFile.h"

#include "Errors.h"
#include "Files.h"
#include "corvane/base/Text.h"

#include <chrono>
#include <filesystem>
#include <map>
#include <system_error>
#include <thread>

namespace studies {
namespace {

constexpr std::int64_t StudyFileId = 0x53544446;

// From the one to the other of two databases of a connection, in pieces between which others get at the file.
void CopyRows(Database& database, const std::string& from, const std::string& to, const DataSet& dataSet,
              std::size_t columns, corvane::JobProgress& progress) {
    constexpr std::size_t inOnePiece = 100'000; // values
    std::string names = "id";
    for (std::size_t i = 0; i < columns; ++i)
        names += ", c" + std::to_string(i);
    Statement copy(database,
                   "INSERT INTO " + to + "(" + names + ") SELECT " + names + " FROM " + from + " WHERE id>? AND id<=?");
    const auto step = static_cast<std::int64_t>(inOnePiece / (columns + 1));
    for (std::int64_t first = 0; first < dataSet.rows; first += step) {
        Transaction transaction(database, "BEGIN");
        copy.With(first, first + step).Run();
        transaction.Commit();
        progress.StopIfCancelled();
        progress.SetPart(static_cast<std::size_t>(first + step), static_cast<std::size_t>(dataSet.rows));
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}

// One for each data set.
auto StepsOf(const StudyContents& contents, corvane::JobProgress& progress) {
    std::vector<double> weights;
    for (const auto& [dataSet, columns] : contents.dataSets)
        weights.push_back(static_cast<double>(dataSet.rows) * static_cast<double>(columns.size()) + 1);
    return progress.Split(weights);
}

void WriteInto(Database& file, const ReportSubject& subject, corvane::JobProgress& progress) {
    file.Run("ATTACH ? AS store", subject.path);
    Transaction transaction(file, "BEGIN");
    MakeTables(file, 0);
    file.Run("PRAGMA application_id=" + std::to_string(StudyFileId));
    StudyContents contents{subject.study, {}, subject.analyses};
    for (DataSet dataSet : subject.dataSets) {
        std::vector<Column> columns = ColumnsOf(file, dataSet.id, "store.");
        dataSet.source = FileNameOf(dataSet.source);
        CreateDataTable(file, dataSet.id, columns);
        contents.dataSets.emplace_back(std::move(dataSet), std::move(columns));
    }
    WriteContents(file, contents);
    transaction.Commit();
    const auto steps = StepsOf(contents, progress);
    for (std::size_t i = 0; i < contents.dataSets.size(); ++i) {
        const auto& [dataSet, columns] = contents.dataSets[i];
        const std::string table = DataTable(dataSet.id);
        CopyRows(file, "store." + table, "main." + table, dataSet, columns.size(), steps[i]);
    }
}

[[noreturn]] void FailDamaged(const std::string& path) {
    FailWith(Translated("“%1” isn't a study, or is damaged. Ask for it to be sent again.", {FileNameOf(path)}));
}

// What SQLite finds wrong with the file is said of the file as users know it.
template <class Read>
auto Reading(const std::string& path, const Read& read) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        FailWith(Translated("The file “%1” isn't there any more.", {path}));
    if (std::filesystem::file_size(path, error) == 0)
        FailDamaged(path);
    Database file(path);
    std::int64_t version = 0;
    try {
        file.Run("PRAGMA trusted_schema=OFF");
        if (file.WholeOf("PRAGMA application_id") != StudyFileId)
            FailDamaged(path);
        version = file.WholeOf("PRAGMA user_version");
        if (version == SchemaVersion)
            return read(file);
    } catch (...) {
        FailDamaged(path);
    }
    if (version < SchemaVersion)
        FailDamaged(path);
    FailWith(Translated("“%1” was written by a later version of Studies (%2; this one knows %3).",
                        {FileNameOf(path), std::to_string(version), std::to_string(SchemaVersion)}));
}

// Everything that the store relies on. Fails in any way.
StudyContents CheckedContents(Database& file) {
    StudyContents contents = ContentsOfFile(file);
    if (file.Texts("PRAGMA quick_check(1)").front() != "ok" || contents.study.id == 0)
        FailWith("");
    std::map<Id, std::int64_t> known;
    for (const auto& [dataSet, columns] : contents.dataSets) {
        const std::string rows = " FROM " + DataTable(dataSet.id);
        if (columns.empty() || file.WholeOf("SELECT count(*)" + rows) != dataSet.rows ||
            (dataSet.rows > 0 &&
             (file.WholeOf("SELECT min(id)" + rows) != 1 || file.WholeOf("SELECT max(id)" + rows) != dataSet.rows)))
            FailWith("");
        (void)Statement(file, "SELECT c" + std::to_string(columns.size() - 1) + rows);
        known[dataSet.id] = dataSet.rows;
    }
    for (const Analysis& analysis : contents.analyses)
        (void)known.at(analysis.dataSetId);
    return contents;
}

} // namespace

bool IsStudyFile(std::string_view path) {
    return path.size() > StudyEnding.size() &&
           corvane::EqualText(path.substr(path.size() - StudyEnding.size()), StudyEnding);
}

void WriteStudyFile(const ReportSubject& subject, const std::string& path, corvane::JobProgress& progress) {
    const std::string part = path + ".part";
    std::error_code error;
    std::filesystem::remove(part, error);
    try {
        Database file(part);
        file.Run("PRAGMA journal_mode=OFF");
        WriteInto(file, subject, progress);
    } catch (...) {
        std::filesystem::remove(part, error);
        throw;
    }
    std::filesystem::rename(part, path, error);
    if (!error)
        return;
    std::error_code ignored;
    std::filesystem::remove(part, ignored);
    FailWith(Translated("The file “%1” can't be written: %2.", {path, error.message()}));
}

StudyFileHead LookAtStudyFile(const std::string& path) {
    return Reading(path, [](Database& file) {
        Statement head(file, "SELECT name, (SELECT coalesce(sum(row_count * (SELECT count(*) FROM data_columns"
                             " WHERE data_set_id=data_sets.id)), 0) FROM data_sets) FROM studies");
        if (!head.Step())
            FailWith("");
        return StudyFileHead{head.Text(0), static_cast<std::size_t>(head.Whole(1))};
    });
}

StudyContents CopyStudyFile(const std::string& path, const std::string& storePath, corvane::JobProgress& progress) {
    StudyContents contents = Reading(path, &CheckedContents);
    std::error_code error;
    const auto space = std::filesystem::space(std::filesystem::path(storePath).parent_path(), error);
    if (const auto bytes = std::filesystem::file_size(path, error); !error && space.available < bytes)
        FailWith(Translated("There is no space left for the file “%1”.", {storePath}));
    Database store(storePath);
    store.Run("ATTACH ? AS file", path);
    const auto steps = StepsOf(contents, progress);
    std::map<Id, Id> numbers;
    try {
        for (std::size_t i = 0; i < contents.dataSets.size(); ++i) {
            auto& [dataSet, columns] = contents.dataSets[i];
            const Id number = numbers[dataSet.id] = ReserveNumber(store);
            CreateDataTable(store, number, columns);
            CopyRows(store, "file." + DataTable(dataSet.id), "main." + DataTable(number), dataSet, columns.size(),
                     steps[i]);
            dataSet.id = number;
        }
    } catch (...) {
        for (const auto& [old, number] : numbers)
            store.Run("DROP TABLE IF EXISTS main." + DataTable(number));
        throw;
    }
    for (Analysis& analysis : contents.analyses)
        analysis.dataSetId = numbers.at(analysis.dataSetId);
    return contents;
}

} // namespace studies
