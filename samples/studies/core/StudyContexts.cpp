#include "StudyContexts.h"

#include "Errors.h"
#include "Files.h"
#include "corvane/author/Host.h"
#include "corvane/base/Failure.h"

#include <algorithm>
#include <system_error>

namespace studies {

using namespace corvane;

namespace {

std::vector<std::string> NamesIn(const CsvResult* result) {
    std::vector<std::string> names;
    if (result)
        for (const Column& column : result->table.columns)
            names.push_back(column.name);
    return names;
}

} // namespace

ImportJob::ImportJob(Ref<Workspace> workspace, Id proposedStudyId)
    : studyId(proposedStudyId), m_workspace(std::move(workspace)) {
    newStudyName = m_workspace->GetStore().FreeName(Translated("Study"));
}

ImportJob::~ImportJob() {
    StopReading();
}

void ImportJob::SetPath(const std::string& path) {
    m_path = path;
    m_options.columns.clear();
    m_read = false;
    name = studyId == 0 ? FileNameOf(path) : m_workspace->GetStore().FreeDataSetName(FileNameOf(path), studyId);
    Changed.Raise();
}

void ImportJob::ChangeFormat(const std::function<void(CsvOptions&)>& change) {
    change(m_options);
    m_options.columns.clear();
    m_read = false;
    Changed.Raise();
}

void ImportJob::SetSkipsBadRows(bool skip) {
    m_skipBadRows = skip;
    Changed.Raise();
}

ColumnReading ImportJob::Reading(std::size_t column) const {
    return column < m_options.columns.size() ? m_options.columns[column] : ColumnReading::Automatic;
}

void ImportJob::SetReading(std::size_t column, ColumnReading reading) {
    m_options.columns.resize(std::max(m_options.columns.size(), column + 1));
    m_options.columns[column] = reading;
    m_read = false;
    Changed.Raise();
}

const CsvResult* ImportJob::Result() {
    Read();
    return m_result.get();
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

void ImportJob::LookAgain() {
    const Stamp now = StampNow();
    if (!m_read || now == m_stamp || (!now && m_result))
        return;
    m_read = false;
    Read();
    Changed.Raise();
}

void ImportJob::Read() {
    constexpr std::uintmax_t atOnce = 1'000'000; // bytes
    if (m_read)
        return;
    m_read = true;
    m_stamp = StampNow();
    StopReading();
    m_result.reset();
    m_problem.clear();
    m_self = std::make_shared<ImportJob*>(this);
    const auto job = StartJobIf(
        m_stamp && m_stamp->second > atOnce,
        {.title = Translated("Read %1", {FileNameOf(m_path)}), .owner = FindService("Studies")},
        [path = m_path, options = m_options](JobProgress& progress) {
            return std::make_shared<const CsvResult>(ReadCsvFile(path, options, progress));
        },
        [self = m_self](ReadResult& result) {
            const Failure* failure = result.Error(); // of no interest when what was read isn't wanted any more
            if (*self)
                Ref<ImportJob>(*self)->TakeRead(result, failure);
        });
    if (job)
        m_reading = job;
}

void ImportJob::TakeRead(ReadResult& result, const Failure* failure) {
    const bool wasJob = std::exchange(m_reading, nullptr) != nullptr;
    if (failure || result.WasCancelled())
        m_problem = failure ? failure->Description : Translated("Reading was cancelled. Choose the file again.");
    else
        m_result = result.Value();
    if (m_result && m_result->table.rows == 0)
        m_problem = Translated("%1 has column names, but no rows.", {FileNameOf(m_path)});
    const std::vector<std::string> before = std::exchange(m_columnNames, NamesIn(m_result.get()));
    if (m_columnNames != before && !before.empty() && !m_options.columns.empty()) { // chosen for other columns
        m_options.columns.clear();
        m_read = false;
        Read();
    }
    if (!wasJob || m_reading)
        return;
    HasRead.Raise();
    if (const auto then = std::exchange(m_whenRead, {}))
        then();
}

void ImportJob::StopReading() {
    if (m_self)
        *m_self = nullptr;
    if (m_reading)
        m_reading->Cancel();
    m_reading = nullptr;
}

void ImportJob::WhenRead(std::function<void()> then) {
    Read();
    if (!m_reading)
        return then();
    m_whenRead = std::move(then);
}

void ImportJob::WhenImported(std::function<void()> then) {
    if (dataSetId != 0)
        then();
    else
        m_whenImported = std::move(then);
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
    m_workspace->Import({studyId, newStudyName, name, m_path, result->skipped.size()},
                        SharedTable(m_result, &m_result->table),
                        [self = Ref<ImportJob>(this)](const Ref<DataSetContext>& data) {
                            self->m_data = data;
                            self->dataSetId = data ? data->Number() : 0;
                            if (const auto then = data ? std::exchange(self->m_whenImported, {}) : nullptr)
                                then();
                        });
}

} // namespace studies
