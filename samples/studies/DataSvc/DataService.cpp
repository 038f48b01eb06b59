#include "DataService.h"

#include "Errors.h"
#include "Files.h"
#include "LibraryItems.h"
#include "Report.h"
#include "StudyFile.h"
#include "Windows.h"
#include "corvane/Jobs.h"
#include "corvane/author/Host.h"
#include "corvane/base/PluginExport.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <system_error>

namespace studies {

using namespace corvane;

namespace {

// What the window in front is about, whether it shows the table or an analysis of it.
Ref<DataSetContext> DataInFront() {
    const Ref<Window> window = Singleton::Framework()->WindowManager()->ActiveWindow();
    const Ref<Object> about = window ? window->BusinessContext() : nullptr;
    if (const auto document = about.TryAs<AnalysisDocument>())
        return document->Data();
    if (auto data = about.TryAs<DataSetContext>())
        return data;
    FailWith(Translated("Open the table of a data set first: its window has to be in front."));
}

} // namespace

void DataService::OnInitialize() {
    m_workspace = New<Workspace>(Store::InMemory, false);
    m_studyId = m_workspace->GetStore().CreateStudy("Open files");
    Keep(m_workspace->Changed.Subscribe([](const std::string& what) { SetStatus(what); }));
    if (FindService("Studies"))
        LibraryFile::OfferImport();
}

void DataService::OnTerminate() {
    m_workspace->Close();
}

void DataService::OnOpen() {
    if (const std::optional<std::string> path = AskForDataFile(Translated("Open Data File"), true))
        OpenFile(*path);
}

void DataService::OpenFile(const std::string& path) {
    if (const Ref<Object> studies = IsStudyFile(path) ? FindService("Studies") : nullptr) {
        CallByName(studies, "OpenStudy", path);
        return;
    }
    WithData(path, [this](const Ref<DataSetContext>& data) {
        OpenDataWindow(data);
        const DataSet info = data->Info();
        const std::size_t columns = m_workspace->GetStore().Columns(info.id).size();
        SetStatus(info.name + ": " + SizeText(static_cast<std::size_t>(info.rows), columns));
    });
}

std::string DataService::DataName() {
    return DataInFront()->Info().name;
}

std::string DataService::ColumnNames() {
    std::string names;
    for (const Column& column : DataInFront()->Data().columns)
        names += (names.empty() ? "" : "\n") + column.name;
    return names;
}

std::string DataService::Values(const std::string& column) {
    const Ref<DataSetContext> data = DataInFront();
    const Table& table = data->Data();
    const Column* found = table.Find(column);
    if (!found)
        FailWith(Translated("The data have no column “%1”.", {column}));
    std::string values;
    for (std::size_t row = 0; row < table.rows; ++row)
        values += (row == 0 ? "" : "\n") + found->Text(row);
    return values;
}

void DataService::WithData(const std::string& path, const std::function<void(const Ref<DataSetContext>&)>& then) {
    constexpr std::uintmax_t atOnce = 1'000'000; // bytes
    Store& store = m_workspace->GetStore();
    for (const DataSet& dataSet : store.DataSets(m_studyId))
        if (dataSet.source == path && m_workspace->IsInUse(dataSet.id))
            return then(m_workspace->DataSet(dataSet.id));
    const CsvOptions options{0, true};
    std::error_code unknown;
    const std::uintmax_t bytes = std::filesystem::file_size(path, unknown);
    StartJobIf(
        !unknown && bytes > atOnce, {.title = Translated("Read %1", {FileNameOf(path)}), .owner = Ref<Object>(this)},
        [path, options](JobProgress& progress) {
            return std::make_shared<const CsvResult>(ReadCsvFile(path, options, progress));
        },
        [this, path, then](const std::shared_ptr<const CsvResult>& read) { then(Add(path, read)); });
}

Ref<DataSetContext> DataService::Add(const std::string& path, const std::shared_ptr<const CsvResult>& read) {
    if (!read->skipped.empty())
        FailWith(FileNameOf(path) + ": " + read->skipped.front() +
                 (read->skipped.size() == 1
                      ? ""
                      : " " + Translated("There are %1 such rows.", {CountText(read->skipped.size())})) +
                 "\n" +
                 Translated("Correct the file, or import it into a study with File > Import, which can leave out rows "
                            "that can't be read."));
    Store& store = m_workspace->GetStore();
    for (const DataSet& dataSet : store.DataSets(m_studyId)) {
        if (dataSet.source != path)
            continue;
        if (m_workspace->IsInUse(dataSet.id)) // opened meanwhile
            return m_workspace->DataSet(dataSet.id);
        store.Delete({{'d', dataSet.id}}); // the file may be another by now
        store.ForgetSteps();
    }
    return m_workspace->Add(m_studyId, store.FreeDataSetName(FileNameOf(path), m_studyId), path,
                            SharedTable(read, &read->table));
}

} // namespace studies

CORVANE_PLUGIN(Class<studies::DataService>("DataSvc.DataService"), Class<studies::LibraryRoot>("DataSvc.LibraryRoot"))
