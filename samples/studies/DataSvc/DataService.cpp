#include "DataService.h"

#include "Csv.h"
#include "Errors.h"
#include "Files.h"
#include "LibraryItems.h"
#include "Report.h"
#include "Windows.h"
#include "corvane/author/Host.h"
#include "corvane/base/PluginExport.h"

#include <optional>

namespace studies {

using namespace corvane;

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
    if (const std::optional<std::string> path = AskForDataFile("Open Data File"))
        OpenFile(*path);
}

void DataService::OpenFile(const std::string& path) {
    const Ref<DataSetContext> data = Data(path);
    OpenDataWindow(data);
    const DataSet info = data->Info();
    const std::size_t columns = m_workspace->GetStore().Columns(info.id).size();
    SetStatus(info.name + ": " + SizeText(static_cast<std::size_t>(info.rows), columns));
}

Ref<DataSetContext> DataService::Data(const std::string& path) {
    Store& store = m_workspace->GetStore();
    for (const DataSet& dataSet : store.DataSets(m_studyId)) {
        if (dataSet.source != path)
            continue;
        if (m_workspace->IsInUse(dataSet.id))
            return m_workspace->DataSet(dataSet.id);
        store.DeleteDataSet(dataSet.id); // the file may be another by now
        store.ForgetSteps();
    }
    const CsvResult read = ReadCsvFile(path, {0, true});
    if (!read.skipped.empty())
        FailWith(FileNameOf(path) + ": " + read.skipped.front() +
                 (read.skipped.size() == 1 ? "" : " There are " + CountText(read.skipped.size()) + " such rows.") +
                 "\nCorrect the file, or import it into a study with File > Import, which can leave out rows that "
                 "can't be read.");
    const Table& table = read.table;
    return m_workspace->DataSet(
        store.ImportDataSet(m_studyId, store.FreeDataSetName(FileNameOf(path), m_studyId), path, table));
}

} // namespace studies

CORVANE_PLUGIN(Class<studies::DataService>("DataSvc.DataService"), Class<studies::LibraryRoot>("DataSvc.LibraryRoot"))
