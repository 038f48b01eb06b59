#include "StudyContexts.h"

#include "Errors.h"
#include "Files.h"
#include "Report.h"
#include "corvane/author/Host.h"
#include "corvane/author/Jobs.h"
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

bool StudyContext::Exists() const {
    return m_workspace->GetStore().HasStudy(m_studyId);
}

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
    if (m_stamp && m_stamp->second > atOnce)
        return StartReading();
    try {
        TakeRead(std::make_shared<const CsvResult>(ReadCsvFile(m_path, m_options)));
    } catch (const Failure& failure) {
        TakeRead(nullptr);
        m_problem = failure.Description;
    }
}

void ImportJob::TakeRead(std::shared_ptr<const CsvResult> result) {
    const std::vector<std::string> before = std::exchange(m_columnNames, NamesIn(result.get()));
    if (m_columnNames != before && !before.empty() && !m_options.columns.empty()) { // chosen for other columns
        m_options.columns.clear();
        m_read = false;
        return Read();
    }
    m_result = std::move(result);
    m_problem.clear();
    if (m_result && m_result->table.rows == 0)
        m_problem = Translated("%1 has column names, but no rows.", {FileNameOf(m_path)});
}

void ImportJob::StopReading() {
    if (m_self)
        *m_self = nullptr;
    if (m_reading)
        m_reading->Cancel();
    m_reading = nullptr;
}

void ImportJob::StartReading() {
    m_result.reset();
    m_problem.clear();
    m_self = std::make_shared<ImportJob*>(this);
    m_reading = StartJob(
        {.title = Translated("Read %1", {FileNameOf(m_path)}), .owner = FindService("Studies")},
        [path = m_path, options = m_options](JobProgress& progress) {
            return std::make_shared<const CsvResult>(ReadCsvFile(path, options, &progress));
        },
        [self = m_self](JobResult<std::shared_ptr<const CsvResult>>& result) {
            const Failure* failure = result.Error();
            if (!*self)
                return;
            const Ref<ImportJob> job(*self);
            job->m_reading = nullptr;
            job->TakeRead(failure || result.WasCancelled() ? nullptr : result.Value());
            if (failure || result.WasCancelled())
                job->m_problem =
                    failure ? failure->Description : Translated("Reading was cancelled. Choose the file again.");
            job->HasRead.Raise();
            if (const auto then = std::exchange(job->m_whenRead, {}))
                then();
        });
}

void ImportJob::WhenRead(std::function<void()> then) {
    Read();
    if (!m_reading)
        return then();
    m_whenRead = std::move(then);
}

void ImportJob::WhenImported(std::function<void()> then) {
    if (m_running)
        m_whenImported = std::move(then);
    else if (dataSetId != 0)
        then();
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
    const SharedTable table(m_result, &m_result->table);
    if (IsSmall(table->rows, table->columns.size()))
        Finish(table, 0);
    else
        StartImport();
}

void ImportJob::StartImport() {
    Store& store = m_workspace->GetStore();
    const Id reserved = store.ReserveDataSet();
    StartJob(
        {.title = Translated("Import %1", {name}), .owner = FindService("Studies"), .writes = {"imported data"}},
        [reserved, table = SharedTable(m_result, &m_result->table), store = store.Path()](JobProgress& progress) {
            WriteDataTable(store, reserved, *table, progress);
            return table;
        },
        [self = Ref<ImportJob>(this), reserved](JobResult<SharedTable>& result) {
            self->m_running = false;
            self->m_workspace->GetStore().EndBeside();
            if (result.WasCancelled())
                return self->m_workspace->Tell(Translated("Cancelled; %1 hasn't been imported", {self->name}));
            self->Finish(result.Value(), reserved);
            if (const auto then = std::exchange(self->m_whenImported, {}))
                then();
        });
    store.BeginBeside();
    m_running = true;
}

// The data are written already where there is a reserved number. By then the name may be taken.
void ImportJob::Finish(const SharedTable& table, Id reserved) {
    Store& store = m_workspace->GetStore();
    if (studyId == 0)
        studyId = store.CreateStudy(store.FreeName(newStudyName, false));
    name = store.FreeDataSetName(name, studyId);
    dataSetId = store.ImportDataSet(studyId, name, m_path, *table, reserved);
    m_data = m_workspace->DataSet(dataSetId);
    m_data->Take(table);
    const std::size_t skipped = m_result->skipped.size();
    m_workspace->Tell(Translated("%1 imported into “%2”: %3",
                                 {name, store.StudyOf(studyId).name, SizeText(table->rows, table->columns.size())}) +
                      (skipped == 0 ? std::string() : ", " + Translated("%1 left out", {CountText(skipped)})));
}

} // namespace studies
