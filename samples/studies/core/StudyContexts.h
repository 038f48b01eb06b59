// What the import wizard is about.
#pragma once

#include "Csv.h"
#include "Workspace.h"
#include "corvane/author/Jobs.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace studies {

// An import on its way: a file, how it is read, and where it goes. The pages of the wizard fill it in turn.
class ImportJob final : public corvane::Object {
public:
    // The study is proposed; 0 proposes a new one.
    ImportJob(corvane::Ref<Workspace> workspace, Id proposedStudyId);
    ~ImportJob() override;

    [[nodiscard]] const corvane::Ref<Workspace>& Space() const { return m_workspace; }

    [[nodiscard]] const std::string& Path() const { return m_path; }
    void SetPath(const std::string& path);
    // How it is read.
    [[nodiscard]] const CsvOptions& Options() const { return m_options; }
    // Another format of the file forgets how its columns are read.
    void ChangeFormat(const std::function<void(CsvOptions&)>& change);
    [[nodiscard]] ColumnReading Reading(std::size_t column) const;
    void SetReading(std::size_t column, ColumnReading reading);

    // What is in the file, without the bad rows, which are listed; read once, and again after a change of how.
    // Nothing when it can't be read; Problem says why. A large file is read by a job: nothing until that has ended.
    [[nodiscard]] const CsvResult* Result();
    [[nodiscard]] const std::string& Problem();
    [[nodiscard]] bool IsReading() const { return static_cast<bool>(m_reading); }
    // Reads the file again if it has been changed since. One that has gone stays as it was read.
    void LookAgain();

    [[nodiscard]] bool SkipsBadRows() const { return m_skipBadRows; }
    void SetSkipsBadRows(bool skip);

    Id studyId;               // 0: a new one
    std::string newStudyName; // of that new one
    std::string name;         // of the data set
    Id dataSetId = 0;         // once it has been imported

    // Why it can't be run as it stands; "" when it can.
    [[nodiscard]] std::string TargetProblem() const;
    // Imports, as a job what is large; the studies tell the change. Fails as TargetProblem and the store say.
    void Run();
    // At once, or when the job has ended; not after a failure or a cancellation of the import.
    void WhenRead(std::function<void()> then);
    void WhenImported(std::function<void()> then);

    corvane::Event<> Changed; // the file or how it is read
    corvane::Event<> HasRead; // the job

    std::string_view TypeName() const override { return "ImportJob"; }

private:
    // What tells that a file is another now; nothing when there is none.
    using Stamp = std::optional<std::pair<std::filesystem::file_time_type, std::uintmax_t>>;
    using ReadResult = corvane::JobResult<std::shared_ptr<const CsvResult>>;

    [[nodiscard]] Stamp StampNow() const;
    void Read();
    void StopReading();
    void TakeRead(ReadResult& result, const corvane::Failure* failure);

    corvane::Ref<Workspace> m_workspace;
    std::string m_path;
    CsvOptions m_options{0, true};
    bool m_skipBadRows = false;
    std::vector<std::string> m_columnNames; // of the file as it was read last
    bool m_read = false;
    Stamp m_stamp; // of the file as it was read
    std::shared_ptr<const CsvResult> m_result;
    corvane::Ref<corvane::IJob> m_reading;
    std::shared_ptr<ImportJob*> m_self; // what the job that reads brings its result to; nothing once that is unwanted
    std::function<void()> m_whenRead;
    std::function<void()> m_whenImported;
    corvane::Ref<DataSetContext> m_data; // what has been imported; whoever opens it finds the table there
    std::string m_problem;
};

} // namespace studies
