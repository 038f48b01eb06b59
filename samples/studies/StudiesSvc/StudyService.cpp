#include "StudyService.h"

#include "Csv.h"
#include "Report.h"
#include "Shell.h"
#include "corvane/base/PluginExport.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/ActionItem.h"

#include <optional>

namespace studies {

using namespace corvane;

namespace {

Ref<corvane::ExplorerManager> Explorer() {
    return CorvaneMain::Framework()->NavigationManager()->ExplorerManager();
}

std::string Quoted(const std::string& sName) {
    return "\"" + sName + "\"";
}

} // namespace

Ref<StudyService> TheStudyService() {
    return ServiceByName("Studies").As<StudyService>();
}

StudyService::StudyService() {
    m_aSubscriptions.push_back(m_oServiceBase->InitializeEvent.Subscribe([this] { OnInitialize(); }));
    m_aSubscriptions.push_back(m_oServiceBase->TerminateEvent.Subscribe([this] { OnTerminate(); }));
}

void StudyService::OnInitialize() {
    const auto oExplorer = Explorer();
    m_aSubscriptions.push_back(oExplorer->OnActive.Subscribe([this](const Ref<Object>& oItem) { m_oActive = oItem; }));
    m_aSubscriptions.push_back(
        oExplorer->OnInactive.Subscribe([this](const Ref<Object>& oItem) { OnInactive(oItem); }));
    m_aSubscriptions.push_back(oExplorer->onRemove.Subscribe([this](const Ref<Object>& oItem) { OnInactive(oItem); }));
    try {
        m_pStore = std::make_unique<Store>(Store::DefaultPath());
    } catch (const Failure& oFailure) {
        // The rest of the application works without studies.
        m_sStoreProblem = oFailure.Description;
        for (const char* sAction : {"NewStudy", "Import"})
            m_oServiceBase->ActionItems()->Item(sAction)->SetEnabled(false);
    }
}

void StudyService::OnTerminate() {
    m_oActive = nullptr;
    m_mapBranches.clear();
    m_pStore.reset();
}

void StudyService::OnInactive(const Ref<Object>& oItem) {
    if (m_oActive == oItem)
        m_oActive = nullptr;
}

void StudyService::Start() {
    CorvaneMain::Framework()->NavigationManager()->SetCaption("Studies");
    Explorer()->Populate();
    if (!m_pStore) {
        ShowStatus("There are no studies: " + m_sStoreProblem);
        ShowMessage(m_sStoreProblem, "Studies");
        return;
    }
    const std::size_t nStudies = m_pStore->Studies().size();
    ShowStatus(nStudies == 1 ? "1 study" : std::to_string(nStudies) + " studies");
}

void StudyService::OnNewStudy() {
    const Study oStudy = m_pStore->StudyOf(m_pStore->CreateStudy(m_pStore->FreeName("Study")));
    AddStudy(oStudy);
    StoreChanged(Quoted(oStudy.sName) + " has been made");
    if (Select(oStudy.nId))
        Explorer()->StartRename(m_mapBranches.at(oStudy.nId).oStudy);
}

void StudyService::OnImport() {
    if (const std::optional<std::string> sPath = AskForDataFile("Import Data"))
        ImportFile(*sPath);
}

void StudyService::ImportFile(const std::string& sPath) {
    Id nStudyId = ActiveStudy();
    if (nStudyId == 0) {
        nStudyId = m_pStore->CreateStudy(m_pStore->FreeName("Study"));
        AddStudy(m_pStore->StudyOf(nStudyId));
    }
    ImportInto(nStudyId, sPath);
}

void StudyService::Import(Id nStudyId) {
    if (const std::optional<std::string> sPath = AskForDataFile("Import Data"))
        ImportInto(nStudyId, *sPath);
}

void StudyService::ImportInto(Id nStudyId, const std::string& sPath) {
    const Table oTable = ReadCsvFile(sPath).oTable;
    const Id nDataSetId = m_pStore->ImportDataSet(nStudyId, FileNameOf(sPath), sPath, oTable);
    for (const DataSet& oDataSet : m_pStore->DataSets(nStudyId))
        if (oDataSet.nId == nDataSetId)
            AddItem(New<DataSetItem>(oDataSet), "DataSet", m_mapBranches[nStudyId].oDataSets);
    StoreChanged(FileNameOf(sPath) + " imported into " + Quoted(m_pStore->StudyOf(nStudyId).sName) + ": " +
                 SizeText(oTable.nRows, oTable.aColumns.size()));
}

void StudyService::Duplicate(Id nStudyId) {
    const Study oCopy = m_pStore->StudyOf(m_pStore->DuplicateStudy(nStudyId));
    AddStudy(oCopy);
    Select(oCopy.nId);
    StoreChanged(Quoted(oCopy.sName) + " has been made");
}

void StudyService::DeleteStudy(const Ref<StudyItem>& oStudy) {
    m_pStore->DeleteStudy(oStudy->StudyId());
    RemoveItem(oStudy);
    m_mapBranches.erase(oStudy->StudyId());
    StoreChanged(Quoted(oStudy->Base()->Name()) + " has been deleted; Undo brings it back");
}

// Its analyses go with it.
void StudyService::DeleteDataSet(DataSet oDataSet) {
    m_pStore->DeleteDataSet(oDataSet.nId);
    Rebuild();
    StoreChanged(Quoted(oDataSet.sName) + " has been deleted; Undo brings it back");
}

void StudyService::DeleteAnalysis(const Ref<AnalysisItem>& oAnalysis) {
    m_pStore->DeleteAnalysis(oAnalysis->What().nId);
    RemoveItem(oAnalysis);
    StoreChanged(Quoted(oAnalysis->What().sName) + " has been deleted; Undo brings it back");
}

void StudyService::AddAnalysis(const DataSet& oDataSet, const std::string& sGroupColumn) {
    const std::string sName =
        "Summary of " + oDataSet.sName + (sGroupColumn.empty() ? std::string() : " by " + sGroupColumn);
    const Id nAnalysisId = m_pStore->AddAnalysis(oDataSet.nId, sName, sGroupColumn);
    AddItem(New<AnalysisItem>(Analysis{nAnalysisId, oDataSet.nStudyId, oDataSet.nId, sName, sGroupColumn}), "Analysis",
            m_mapBranches[oDataSet.nStudyId].oAnalyses);
    StoreChanged(sName + " has been added to the study");
}

void StudyService::OnUndo() {
    const std::string sLabel = m_pStore->UndoLabel();
    m_pStore->Undo();
    Rebuild();
    StoreChanged("Undone: " + sLabel);
}

void StudyService::OnRedo() {
    const std::string sLabel = m_pStore->RedoLabel();
    m_pStore->Redo();
    Rebuild();
    StoreChanged("Done again: " + sLabel);
}

void StudyService::OnRefresh() {
    Rebuild();
}

void StudyService::StoreChanged(const std::string& sStatus) {
    TellUndo();
    ShowStatus(sStatus);
}

void StudyService::TellUndo() {
    const auto Tell = [this](const char* sAction, const std::string& sLabel) {
        const Ref<ActionItem> oAction = m_oServiceBase->ActionItems()->Item(sAction);
        oAction->SetEnabled(!sLabel.empty());
        oAction->SetCaption("Edit", "&" + std::string(sAction) + (sLabel.empty() ? "" : " " + sLabel));
    };
    Tell("Undo", m_pStore->UndoLabel());
    Tell("Redo", m_pStore->RedoLabel());
}

} // namespace studies

CORVANE_PLUGIN(Class<studies::StudyService>("StudiesSvc.StudyService"),
               Class<studies::StudiesRoot>("StudiesSvc.StudiesRoot"),
               Class<studies::DataSetsFolder>("StudiesSvc.DataSetsFolder"),
               Class<studies::AnalysesFolder>("StudiesSvc.AnalysesFolder"))
