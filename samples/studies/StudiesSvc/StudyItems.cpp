#include "StudyItems.h"

#include "Errors.h"
#include "Shell.h"
#include "StudyContexts.h"
#include "StudyService.h"
#include "Windows.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"

namespace studies {

using namespace corvane;

namespace {

Ref<corvane::ExplorerManager> Explorer() {
    return CorvaneMain::Framework()->NavigationManager()->ExplorerManager();
}

Store& TheStore() {
    return TheStudyService()->Space()->GetStore();
}

std::string Numbered(Id nId, std::string_view sWhat = {}) {
    return "#" + std::to_string(nId) + std::string(sWhat);
}

} // namespace

StoreItem::StoreItem() {
    m_oInitialize =
        m_oBase->InitializeEvent.Subscribe([this](const Children& colChildren) { OnInitialize(colChildren); });
}

void StudiesRoot::OnInitialize(const Children& colChildren) {
    m_oBase->NameSilently("Studies");
    if (TheStudyService()->Space())
        for (Study& oStudy : TheStore().Studies())
            colChildren->Add(New<StudyItem>(std::move(oStudy)));
}

StudyItem::StudyItem(Study oStudy) : m_oStudy(std::move(oStudy)) {
    m_oBase->NameSilently(m_oStudy.sName);
    m_oAfterRename = m_oBase->OnAfterRename.Subscribe([this](const std::string& sNewName) { OnAfterRename(sNewName); });
}

void StudyItem::OnInitialize(const Children& /*colChildren*/) {
    TheStudyService()->StudyJoins(*this);
}

// Comes before the explorer has looked whether the name is free, and once more with the old name when it isn't.
void StudyItem::OnAfterRename(const std::string& sNewName) {
    if (sNewName == m_oStudy.sName || Explorer()->TreeView()->GetNodes()->HasKey(sNewName))
        return;
    if (const std::string sProblem = TheStore().NameProblem(sNewName, m_oStudy.nId); !sProblem.empty()) {
        m_oBase->NameSilently(m_oStudy.sName);
        FailWith(sProblem);
    }
    TheStore().RenameStudy(m_oStudy.nId, sNewName);
    const std::string sOldName = std::exchange(m_oStudy.sName, sNewName);
    TheStudyService()->Tell("“" + sOldName + "” is now “" + sNewName + "”");
}

void StudyItem::OnProperties() {
    AskInWindow("StudyProperties", New<StudyContext>(TheStudyService()->Space(), m_oStudy.nId),
                "Properties of " + m_oStudy.sName);
}

void StudyItem::OnReport() {
    TheStudyService()->ShowReport(m_oStudy.nId);
}

void StudyItem::OnImport() {
    TheStudyService()->AskForImport(m_oStudy.nId);
}

void StudyItem::OnRename() {
    Explorer()->StartRename(Ref<StudyItem>(this));
}

void StudyItem::OnDuplicate() {
    TheStudyService()->Duplicate(m_oStudy.nId);
}

void StudyItem::OnDelete() {
    TheStudyService()->DeleteStudy(Ref<StudyItem>(this));
}

DataSetsFolder::DataSetsFolder(Id nStudyId) {
    m_nStudyId = nStudyId;
}

void DataSetsFolder::OnInitialize(const Children& colChildren) {
    if (m_nStudyId == 0)
        m_nStudyId = TheStudyService()->JoiningStudy();
    m_oBase->NameSilently(Numbered(m_nStudyId, " data sets"));
    TheStudyService()->FolderJoins(*this, true);
    for (DataSet& oDataSet : TheStore().DataSets(m_nStudyId))
        colChildren->Add(New<DataSetItem>(std::move(oDataSet)));
}

void DataSetsFolder::OnImport() {
    TheStudyService()->AskForImport(m_nStudyId);
}

AnalysesFolder::AnalysesFolder(Id nStudyId) {
    m_nStudyId = nStudyId;
}

void AnalysesFolder::OnInitialize(const Children& colChildren) {
    if (m_nStudyId == 0)
        m_nStudyId = TheStudyService()->JoiningStudy();
    m_oBase->NameSilently(Numbered(m_nStudyId, " analyses"));
    TheStudyService()->FolderJoins(*this, false);
    for (Analysis& oAnalysis : TheStore().Analyses(m_nStudyId))
        colChildren->Add(New<AnalysisItem>(std::move(oAnalysis)));
}

DataSetItem::DataSetItem(DataSet oDataSet) : m_oDataSet(std::move(oDataSet)) {
    m_oBase->NameSilently(Numbered(m_oDataSet.nId));
    m_oDisplayName =
        m_oBase->OnDisplayName.Subscribe([this](std::string& sDisplayName) { sDisplayName = m_oDataSet.sName; });
}

Ref<DataSetContext> DataSetItem::Context() const {
    return TheStudyService()->Space()->DataSet(m_oDataSet.nId);
}

void DataSetItem::OnOpen() {
    OpenDataWindow(Context());
}

void DataSetItem::OnAnalyse(const Ref<ActionItem>& oActionItem) {
    OpenNewAnalysis(Context(), oActionItem->Name());
}

void DataSetItem::OnExport() {
    AskInWindow("Export", Context(), "Export " + m_oDataSet.sName);
}

void DataSetItem::OnProperties() {
    AskInWindow("DataSetProperties", Context(), "Properties of " + m_oDataSet.sName);
}

void DataSetItem::OnDelete() {
    TheStudyService()->DeleteDataSet(m_oDataSet);
}

AnalysisItem::AnalysisItem(Analysis oAnalysis) : m_oAnalysis(std::move(oAnalysis)) {
    m_oBase->NameSilently(Numbered(m_oAnalysis.nId));
    m_oDisplayName =
        m_oBase->OnDisplayName.Subscribe([this](std::string& sDisplayName) { sDisplayName = m_oAnalysis.sName; });
}

void AnalysisItem::OnShow() {
    OpenAnalysis(TheStudyService()->Space(), TheStore().AnalysisOf(m_oAnalysis.nId));
}

void AnalysisItem::OnDelete() {
    TheStudyService()->DeleteAnalysis(Ref<AnalysisItem>(this));
}

} // namespace studies
