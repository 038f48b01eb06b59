// The business contexts of windows about a whole study and of the import wizard.
#pragma once

#include "Csv.h"
#include "Workspace.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace studies {

class StudyContext final : public corvane::Object {
public:
    StudyContext(corvane::Ref<Workspace> workspace, Id studyId)
        : m_workspace(std::move(workspace)), m_studyId(studyId) {}

    [[nodiscard]] const corvane::Ref<Workspace>& Space() const { return m_workspace; }
    [[nodiscard]] Id Number() const { return m_studyId; }
    [[nodiscard]] bool Exists() const;

    std::string_view TypeName() const override { return "StudyContext"; }

private:
    corvane::Ref<Workspace> m_workspace;
    Id m_studyId;
};

// An import on its way: a file, how it is read, and where it goes. The pages of the wizard fill it in turn.
class ImportJob final : public corvane::Object {
public:
    // The study is proposed; 0 proposes a new one.
    ImportJob(corvane::Ref<Workspace> workspace, Id studyIdCount);

    [[nodiscard]] const corvane::Ref<Workspace>& Space() const { return m_workspace; }

    [[nodiscard]] const std::string& Path() const { return m_path; }
    void SetPath(const std::string& path);
    // 0 detects it automatically.
    void SetDelimiter(char delimiter);
    // Whether a column of numbers is read as text.
    [[nodiscard]] bool IsText(std::size_t column) const;
    void SetText(std::size_t column, bool text);

    // What is in the file, without the bad rows, which are listed; read once, and again after a change of how.
    // Nothing when it can't be read; Problem says why.
    [[nodiscard]] const CsvResult* Result();
    [[nodiscard]] const std::string& Problem();
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
    // Imports; the studies tell the change. Fails as TargetProblem and the store say.
    void Run();

    corvane::Event<> Changed; // the file or how it is read

    std::string_view TypeName() const override { return "ImportJob"; }

private:
    // What tells that a file is another now; nothing when there is none.
    using Stamp = std::optional<std::pair<std::filesystem::file_time_type, std::uintmax_t>>;

    [[nodiscard]] Stamp StampNow() const;
    [[nodiscard]] std::vector<std::string> ColumnNames() const;
    void Read();

    corvane::Ref<Workspace> m_workspace;
    std::string m_path;
    char m_delimiter = 0;
    bool m_skipBadRows = false;
    std::vector<bool> m_text;
    bool m_read = false;
    Stamp m_stamp; // of the file as it was read
    std::optional<CsvResult> m_result;
    std::string m_problem;
};

} // namespace studies
