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

Store& TheStore() {
    return TheStudyService()->Space()->GetStore();
}

std::string Numbered(Id id, std::string_view what = {}) {
    return "#" + std::to_string(id) + std::string(what);
}

} // namespace

Ref<corvane::ExplorerManager> Explorer() {
    return CorvaneMain::Framework()->NavigationManager()->ExplorerManager();
}

StoreItem::StoreItem() {
    m_initialize = m_base->InitializeEvent.Subscribe([this](const Children& children) { OnInitialize(children); });
}

void StudiesRoot::OnInitialize(const Children& children) {
    m_base->NameSilently("Studies");
    if (TheStudyService()->Space())
        for (Study& study : TheStore().Studies())
            children->Add(New<StudyItem>(std::move(study)));
}

StudyItem::StudyItem(Study study) : m_study(std::move(study)) {
    m_base->NameSilently(m_study.name);
    m_afterRename = m_base->OnAfterRename.Subscribe([this](const std::string& newName) { OnAfterRename(newName); });
}

void StudyItem::OnInitialize(const Children& /*children*/) {
    TheStudyService()->StudyJoins(*this);
}

// Comes before the explorer has looked whether the name is free, and once more with the old name when it isn't.
void StudyItem::OnAfterRename(const std::string& newName) {
    if (newName == m_study.name || Explorer()->TreeView()->GetNodes()->HasKey(newName))
        return;
    if (const std::string problem = TheStore().NameProblem(newName, m_study.id); !problem.empty()) {
        m_base->NameSilently(m_study.name);
        FailWith(problem);
    }
    TheStore().RenameStudy(m_study.id, newName);
    const std::string oldName = std::exchange(m_study.name, newName);
    TheStudyService()->Tell("“" + oldName + "” is now “" + newName + "”");
}

void StudyItem::OnProperties() {
    AskInWindow("StudyProperties", New<StudyContext>(TheStudyService()->Space(), m_study.id),
                "Properties of " + m_study.name);
}

void StudyItem::OnReport() {
    TheStudyService()->ShowReport(m_study.id);
}

void StudyItem::OnImport() {
    TheStudyService()->AskForImport(m_study.id);
}

void StudyItem::OnRename() {
    Explorer()->StartRename(Ref<StudyItem>(this));
}

void StudyItem::OnDuplicate() {
    TheStudyService()->Duplicate(m_study.id);
}

void StudyItem::OnDelete() {
    TheStudyService()->DeleteStudy(Ref<StudyItem>(this));
}

DataSetsFolder::DataSetsFolder(Id studyId) {
    m_studyId = studyId;
}

void DataSetsFolder::OnInitialize(const Children& children) {
    if (m_studyId == 0)
        m_studyId = TheStudyService()->JoiningStudy();
    m_base->NameSilently(Numbered(m_studyId, " data sets"));
    TheStudyService()->FolderJoins(*this, true);
    for (DataSet& dataSet : TheStore().DataSets(m_studyId))
        children->Add(New<DataSetItem>(std::move(dataSet)));
}

void DataSetsFolder::OnImport() {
    TheStudyService()->AskForImport(m_studyId);
}

AnalysesFolder::AnalysesFolder(Id studyId) {
    m_studyId = studyId;
}

void AnalysesFolder::OnInitialize(const Children& children) {
    if (m_studyId == 0)
        m_studyId = TheStudyService()->JoiningStudy();
    m_base->NameSilently(Numbered(m_studyId, " analyses"));
    TheStudyService()->FolderJoins(*this, false);
    for (Analysis& analysis : TheStore().Analyses(m_studyId))
        children->Add(New<AnalysisItem>(std::move(analysis)));
}

DataSetItem::DataSetItem(DataSet dataSet) : m_dataSet(std::move(dataSet)) {
    m_base->NameSilently(Numbered(m_dataSet.id));
    m_displayName = m_base->OnDisplayName.Subscribe([this](std::string& displayName) { displayName = m_dataSet.name; });
}

Ref<DataSetContext> DataSetItem::Context() const {
    return TheStudyService()->Space()->DataSet(m_dataSet.id);
}

void DataSetItem::OnOpen() {
    OpenDataWindow(Context());
}

void DataSetItem::OnAnalyse(const Ref<ActionItem>& actionItem) {
    OpenNewAnalysis(Context(), actionItem->Name());
}

void DataSetItem::OnExport() {
    AskInWindow("Export", Context(), "Export " + m_dataSet.name);
}

void DataSetItem::OnProperties() {
    AskInWindow("DataSetProperties", Context(), "Properties of " + m_dataSet.name);
}

void DataSetItem::OnDelete() {
    TheStudyService()->DeleteDataSet(m_dataSet);
}

AnalysisItem::AnalysisItem(Analysis analysis) : m_analysis(std::move(analysis)) {
    m_base->NameSilently(Numbered(m_analysis.id));
    m_displayName =
        m_base->OnDisplayName.Subscribe([this](std::string& displayName) { displayName = m_analysis.name; });
}

void AnalysisItem::OnShow() {
    OpenAnalysis(TheStudyService()->Space(), TheStore().AnalysisOf(m_analysis.id));
}

void AnalysisItem::OnDelete() {
    TheStudyService()->DeleteAnalysis(Ref<AnalysisItem>(this));
}

} // namespace studies
