#include "DataService.h"

#include "Csv.h"
#include "Errors.h"
#include "LibraryItems.h"
#include "Report.h"
#include "Shell.h"
#include "Windows.h"
#include "corvane/base/PluginExport.h"

#include <optional>

namespace studies {

using namespace corvane;

DataService::DataService() {
    m_aSubscriptions.push_back(m_oServiceBase->InitializeEvent.Subscribe([this] { OnInitialize(); }));
    m_aSubscriptions.push_back(m_oServiceBase->TerminateEvent.Subscribe([this] { m_oWorkspace->Close(); }));
}

void DataService::OnInitialize() {
    m_oWorkspace = New<Workspace>(Store::InMemory, false);
    m_nStudyId = m_oWorkspace->GetStore().CreateStudy("Open files");
    m_aSubscriptions.push_back(m_oWorkspace->Changed.Subscribe([](const std::string& sWhat) { ShowStatus(sWhat); }));
    if (ServiceByName("Studies"))
        LibraryFile::OfferImport();
}

void DataService::OnOpen() {
    if (const std::optional<std::string> sPath = AskForDataFile("Open Data File"))
        OpenFile(*sPath);
}

void DataService::OpenFile(const std::string& sPath) {
    const Ref<DataSetContext> oData = Data(sPath);
    OpenDataWindow(oData);
    const DataSet oInfo = oData->Info();
    const std::size_t nColumns = m_oWorkspace->GetStore().Columns(oInfo.nId).size();
    ShowStatus(oInfo.sName + ": " + SizeText(static_cast<std::size_t>(oInfo.nRows), nColumns));
}

Ref<DataSetContext> DataService::Data(const std::string& sPath) {
    Store& oStore = m_oWorkspace->GetStore();
    for (const DataSet& oDataSet : oStore.DataSets(m_nStudyId)) {
        if (oDataSet.sSource != sPath)
            continue;
        if (m_oWorkspace->IsInUse(oDataSet.nId))
            return m_oWorkspace->DataSet(oDataSet.nId);
        oStore.DeleteDataSet(oDataSet.nId); // the file may be another by now
        oStore.ForgetSteps();
    }
    const CsvResult oRead = ReadCsvFile(sPath, {0, true});
    if (!oRead.aSkipped.empty())
        FailWith(FileNameOf(sPath) + ": " + oRead.aSkipped.front() +
                 (oRead.aSkipped.size() == 1 ? "" : " There are " + CountText(oRead.aSkipped.size()) + " such rows.") +
                 "\nCorrect the file, or import it into a study with File > Import, which can leave out rows that "
                 "can't be read.");
    const Table& oTable = oRead.oTable;
    return m_oWorkspace->DataSet(
        oStore.ImportDataSet(m_nStudyId, oStore.FreeDataSetName(FileNameOf(sPath), m_nStudyId), sPath, oTable));
}

} // namespace studies

CORVANE_PLUGIN(Class<studies::DataService>("DataSvc.DataService"), Class<studies::LibraryRoot>("DataSvc.LibraryRoot"))
