#include "StudyService.h"

#include "Errors.h"
#include "Report.h"
#include "Shell.h"
#include "StudyContexts.h"
#include "Windows.h"
#include "corvane/base/PluginExport.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"

#include <algorithm>
#include <optional>

namespace studies {

using namespace corvane;

namespace {

Ref<corvane::ExplorerManager> Explorer() {
    return CorvaneMain::Framework()->NavigationManager()->ExplorerManager();
}

std::string Quoted(const std::string& sName) {
    return "“" + sName + "”";
}

// Whether all that was there is there, and what is new is younger.
bool Extends(const StudyService::Contents& oNew, const StudyService::Contents& oOld) {
    if (!std::includes(oNew.begin(), oNew.end(), oOld.begin(), oOld.end()))
        return false;
    return std::all_of(oNew.begin(), oNew.end(), [&](const auto& oEntry) {
        const auto itNext = oOld.upper_bound(oEntry.first);
        return oOld.contains(oEntry.first) || itNext == oOld.end() || itNext->first.first != oEntry.first.first;
    });
}

} // namespace

Ref<StudyService> TheStudyService() {
    return ServiceByName("Studies").As<StudyService>();
}

StudyService::StudyService() {
    m_aSubscriptions.push_back(m_oServiceBase->InitializeEvent.Subscribe([this] { OnInitialize(); }));
    m_aSubscriptions.push_back(m_oServiceBase->TerminateEvent.Subscribe([this] { OnTerminate(); }));
    m_aSubscriptions.push_back(
        m_oServiceBase->GetUnsavedItems.Subscribe([this](const Ref<Dictionary>& dctItems, Double& dblOrder) {
            ListUnsaved(dctItems);
            dblOrder = 1;
        }));
    m_aSubscriptions.push_back(
        m_oServiceBase->SaveEvent.Subscribe([this](const Ref<Object>& oItem) { SaveItem(oItem); }));
}

void StudyService::OnInitialize() {
    const auto oExplorer = Explorer();
    m_aSubscriptions.push_back(oExplorer->OnActive.Subscribe([this](const Ref<Object>& oItem) { m_oActive = oItem; }));
    m_aSubscriptions.push_back(
        oExplorer->OnInactive.Subscribe([this](const Ref<Object>& oItem) { OnInactive(oItem); }));
    m_aSubscriptions.push_back(oExplorer->onRemove.Subscribe([this](const Ref<Object>& oItem) { OnInactive(oItem); }));
    const auto oWindows = CorvaneMain::Framework()->WindowManager();
    m_aSubscriptions.push_back(
        oWindows->WindowActivateEvent.Subscribe([this](const Ref<Window>& oWindow) { OnWindowActive(oWindow); }));
    m_aSubscriptions.push_back(oWindows->WindowTerminateEvent.Subscribe([this](const Ref<Window>& oWindow) {
        if (!oWindow->IsModal())
            OnWindowActive(nullptr);
    }));
    try {
        m_oWorkspace = New<Workspace>(Store::DefaultPath(), true);
        m_aSubscriptions.push_back(
            m_oWorkspace->Changed.Subscribe([this](const std::string& sStatus) { OnChanged(sStatus); }));
        m_oShown = StoreContents();
    } catch (const Failure& oFailure) {
        // The rest of the application works without studies.
        m_sStoreProblem = oFailure.Description;
        for (const char* sAction : {"NewStudy", "Import", "Report"})
            m_oServiceBase->ActionItems()->Item(sAction)->SetEnabled(false);
    }
}

void StudyService::OnTerminate() {
    m_oActive = nullptr;
    m_mapBranches.clear();
    if (m_oWorkspace)
        m_oWorkspace->Close();
}

// What was said of one window doesn't stay below another. A window that a dialog covered for a while is the same.
void StudyService::OnWindowActive(const Ref<Window>& oWindow) {
    if ((oWindow && oWindow->IsModal()) || oWindow.Get() == m_pLastActive)
        return;
    m_pLastActive = oWindow.Get();
    ShowStatus("");
}

void StudyService::OnInactive(const Ref<Object>& oItem) {
    if (m_oActive == oItem)
        m_oActive = nullptr;
}

void StudyService::Start() {
    CorvaneMain::Framework()->NavigationManager()->SetCaption("Studies");
    Explorer()->Populate();
    if (!m_oWorkspace) {
        ShowStatus("The studies aren't available: " + m_sStoreProblem);
        ShowMessage(m_sStoreProblem, "Studies");
        return;
    }
    const std::size_t nStudies = TheStore().Studies().size();
    ShowStatus(nStudies == 1 ? "1 study" : std::to_string(nStudies) + " studies");
}

void StudyService::OnNewStudy() {
    const Study oStudy = TheStore().StudyOf(TheStore().CreateStudy(TheStore().FreeName("Study")));
    m_oWorkspace->Tell(Quoted(oStudy.sName) + " has been created");
    if (Select(oStudy.nId))
        Explorer()->StartRename(m_mapBranches.at(oStudy.nId).oStudy);
}

void StudyService::OnImport() {
    AskForImport(ActiveStudy());
}

void StudyService::AskForImport(Id nStudyId) {
    const auto oJob = New<ImportJob>(m_oWorkspace, nStudyId);
    AskInWindow("Import", oJob, "Import Data");
    SelectDataSet(oJob->nDataSetId);
}

// Without asking: what the wizard proposes.
void StudyService::ImportFile(const std::string& sPath) {
    const auto oJob = New<ImportJob>(m_oWorkspace, ActiveStudy());
    oJob->SetPath(sPath);
    oJob->Run();
    SelectDataSet(oJob->nDataSetId);
}

void StudyService::Duplicate(Id nStudyId) {
    const Study oCopy = TheStore().StudyOf(TheStore().DuplicateStudy(nStudyId));
    m_oWorkspace->Tell(Quoted(oCopy.sName) + " has been created");
    Select(oCopy.nId);
}

void StudyService::DeleteStudy(const Ref<StudyItem>& oStudy) {
    TheStore().DeleteStudy(oStudy->StudyId());
    RemoveItem(oStudy);
    m_mapBranches.erase(oStudy->StudyId());
    Tell(Quoted(oStudy->Base()->Name()) + " has been deleted; Undo restores it");
}

// Its analyses go with it.
void StudyService::DeleteDataSet(DataSet oDataSet) {
    TheStore().DeleteDataSet(oDataSet.nId);
    m_oWorkspace->Tell(Quoted(oDataSet.sName) + " has been deleted; Undo restores it");
}

void StudyService::DeleteAnalysis(const Ref<AnalysisItem>& oAnalysis) {
    TheStore().DeleteAnalysis(oAnalysis->What().nId);
    RemoveItem(oAnalysis);
    Tell(Quoted(oAnalysis->What().sName) + " has been deleted; Undo restores it");
}

// On the study that is chosen, or the one that there is.
bool StudyService::RestoreWindow(const std::string&, const std::string& sKey) {
    return m_oWorkspace && OpenByKey(m_oWorkspace, sKey);
}

void StudyService::OnReport() {
    const std::vector<Study> aStudies = TheStore().Studies();
    if (aStudies.empty())
        FailWith("There is no study to report on. Create one, or import a file.");
    if (const Id nActive = ActiveStudy(); nActive != 0)
        return ShowReport(nActive);
    std::vector<std::string> aNames;
    for (const Study& oStudy : aStudies)
        aNames.push_back(oStudy.sName);
    const std::optional<std::string> sName =
        aNames.size() == 1 ? aNames.front() : AskForChoice("Report on", JoinLines(aNames));
    for (const Study& oStudy : aStudies)
        if (sName && oStudy.sName == *sName)
            ShowReport(oStudy.nId);
}

void StudyService::ShowReport(Id nStudyId) {
    OpenReport(m_oWorkspace, nStudyId);
}

void StudyService::OnUndo() {
    const std::string sLabel = TheStore().UndoLabel();
    TheStore().Undo();
    m_oWorkspace->Tell("Undone: " + sLabel);
}

void StudyService::OnRedo() {
    const std::string sLabel = TheStore().RedoLabel();
    TheStore().Redo();
    m_oWorkspace->Tell("Redone: " + sLabel);
}

void StudyService::OnRefresh() {
    Rebuild();
}

void StudyService::Tell(const std::string& sWhat) {
    m_oShown = StoreContents();
    m_oWorkspace->Tell(sWhat);
}

StudyService::Contents StudyService::StoreContents() const {
    Contents oContents;
    for (const Study& oStudy : TheStore().Studies()) {
        oContents[{'s', oStudy.nId}] = oStudy.sName;
        for (const DataSet& oDataSet : TheStore().DataSets(oStudy.nId))
            oContents[{'d', oDataSet.nId}] = oDataSet.sName;
        for (const Analysis& oAnalysis : TheStore().Analyses(oStudy.nId))
            oContents[{'a', oAnalysis.nId}] = oAnalysis.sName;
    }
    return oContents;
}

// What is new is added to the explorer, at the end of its folder. When it belongs elsewhere, or something has gone or
// has another name, the explorer is built anew.
void StudyService::OnChanged(const std::string& sStatus) {
    const Contents oContents = StoreContents();
    if (!Extends(oContents, m_oShown))
        Rebuild();
    else if (oContents.size() > m_oShown.size())
        AddNewItems(oContents);
    m_oShown = oContents;
    WindowsFollow();
    TellUndo();
    ShowStatus(sStatus);
}

void StudyService::AddNewItems(const Contents& oContents) {
    const auto IsNew = [&](char cKind, Id nId) {
        return oContents.contains({cKind, nId}) && !m_oShown.contains({cKind, nId});
    };
    for (const Study& oStudy : TheStore().Studies()) {
        if (IsNew('s', oStudy.nId)) {
            AddStudy(oStudy);
            continue;
        }
        const Branch oBranch = m_mapBranches[oStudy.nId];
        for (const DataSet& oDataSet : TheStore().DataSets(oStudy.nId))
            if (IsNew('d', oDataSet.nId))
                AddItem(New<DataSetItem>(oDataSet), "DataSet", oBranch.oDataSets);
        for (const Analysis& oAnalysis : TheStore().Analyses(oStudy.nId))
            if (IsNew('a', oAnalysis.nId))
                AddItem(New<AnalysisItem>(oAnalysis), "Analysis", oBranch.oAnalyses);
    }
}

void StudyService::ListUnsaved(const Ref<Dictionary>& dctItems) const {
    for (const Ref<AnalysisDocument>& oDocument : ChangedAnalyses()) {
        std::string sName = oDocument->Name();
        for (int n = 2; dctItems->Exists(sName); ++n)
            sName = oDocument->Name() + " (" + std::to_string(n) + ")";
        dctItems->Add(sName, oDocument);
    }
}

void StudyService::SaveItem(const Ref<Object>& oItem) {
    oItem.As<AnalysisDocument>()->Save();
}

void StudyService::TellUndo() {
    const auto Tell = [this](const char* sAction, const std::string& sLabel) {
        const Ref<ActionItem> oAction = m_oServiceBase->ActionItems()->Item(sAction);
        oAction->SetEnabled(!sLabel.empty());
        oAction->SetCaption("Edit", "&" + std::string(sAction) + (sLabel.empty() ? "" : " " + sLabel));
    };
    Tell("Undo", TheStore().UndoLabel());
    Tell("Redo", TheStore().RedoLabel());
}

} // namespace studies

CORVANE_PLUGIN(Class<studies::StudyService>("StudiesSvc.StudyService"),
               Class<studies::StudiesRoot>("StudiesSvc.StudiesRoot"),
               Class<studies::DataSetsFolder>("StudiesSvc.DataSetsFolder"),
               Class<studies::AnalysesFolder>("StudiesSvc.AnalysesFolder"))
