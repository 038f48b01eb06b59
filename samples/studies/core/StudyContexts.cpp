#include "StudyContexts.h"

#include "Errors.h"
#include "Files.h"
#include "Report.h"
#include "corvane/base/Failure.h"

#include <algorithm>
#include <system_error>

namespace studies {

using namespace corvane;

bool StudyContext::Exists() const {
    const std::vector<Study> studies = m_workspace->GetStore().Studies();
    return std::any_of(studies.begin(), studies.end(), [this](const Study& o) { return o.id == m_studyId; });
}

ImportJob::ImportJob(Ref<Workspace> workspace, Id proposedStudyId)
    : studyId(proposedStudyId), m_workspace(std::move(workspace)) {
    newStudyName = m_workspace->GetStore().FreeName("Study");
}

void ImportJob::SetPath(const std::string& path) {
    m_path = path;
    m_text.clear();
    m_read = false;
    name = studyId == 0 ? FileNameOf(path) : m_workspace->GetStore().FreeDataSetName(FileNameOf(path), studyId);
    Changed.Raise();
}

void ImportJob::SetDelimiter(char delimiter) {
    m_delimiter = delimiter;
    m_text.clear();
    m_read = false;
    Changed.Raise();
}

void ImportJob::SetSkipsBadRows(bool skip) {
    m_skipBadRows = skip;
    Changed.Raise();
}

bool ImportJob::IsText(std::size_t column) const {
    return column < m_text.size() && m_text[column];
}

void ImportJob::SetText(std::size_t column, bool text) {
    m_text.resize(std::max(m_text.size(), column + 1));
    m_text[column] = text;
}

const CsvResult* ImportJob::Result() {
    Read();
    return m_result ? &*m_result : nullptr;
}

const std::string& ImportJob::Problem() {
    Read();
    return m_problem;
}

ImportJob::Stamp ImportJob::StampNow() const {
    std::error_code error;
    const auto written = std::filesystem::last_write_time(m_path, error);
    if (error)
        return {};
    const std::uintmax_t bytes = std::filesystem::file_size(m_path, error);
    return Stamp({written, error ? 0 : bytes});
}

std::vector<std::string> ImportJob::ColumnNames() const {
    std::vector<std::string> names;
    if (m_result)
        for (const Column& column : m_result->table.columns)
            names.push_back(column.name);
    return names;
}

void ImportJob::LookAgain() {
    const Stamp now = StampNow();
    if (!m_read || now == m_stamp || (!now && m_result))
        return;
    const std::vector<std::string> before = ColumnNames();
    m_read = false;
    Read();
    if (ColumnNames() != before)
        m_text.clear(); // was chosen for other columns
    Changed.Raise();
}

void ImportJob::Read() {
    if (m_read)
        return;
    m_read = true;
    m_stamp = StampNow();
    m_result.reset();
    m_problem.clear();
    try {
        m_result = ReadCsvFile(m_path, {m_delimiter, true});
        if (m_result->table.rows == 0)
            m_problem = FileNameOf(m_path) + " has column names, but no rows.";
    } catch (const Failure& failure) {
        m_problem = failure.Description;
    }
}

std::string ImportJob::TargetProblem() const {
    Store& store = m_workspace->GetStore();
    if (studyId == 0)
        if (std::string problem = store.NameProblem(newStudyName); !problem.empty())
            return problem;
    return store.DataSetNameProblem(name, studyId);
}

void ImportJob::Run() {
    const CsvResult* result = Result();
    if (!result)
        FailWith(m_problem);
    if (!result->skipped.empty() && !m_skipBadRows)
        FailWith(FileNameOf(m_path) + ": " + result->skipped.front());
    if (const std::string problem = TargetProblem(); !problem.empty())
        FailWith(problem);
    // What is wanted as text is read again, so that each value keeps the letters of the file.
    const bool again = std::find(m_text.begin(), m_text.end(), true) != m_text.end();
    const Table table = again ? ReadCsvFile(m_path, {m_delimiter, true, m_text}).table : result->table;
    Store& store = m_workspace->GetStore();
    if (studyId == 0)
        studyId = store.CreateStudy(newStudyName);
    dataSetId = store.ImportDataSet(studyId, name, m_path, table);
    m_workspace->Tell(
        name + " imported into “" + store.StudyOf(studyId).name + "”: " + SizeText(table.rows, table.columns.size()) +
        (result->skipped.empty() ? std::string() : ", " + CountText(result->skipped.size()) + " left out"));
}

} // namespace studies
