#include "StudyItems.h"

#include "Errors.h"
#include "StudyContexts.h"
#include "StudyService.h"
#include "Windows.h"
#include "corvane/author/Host.h"
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

void StoreItem::OnDelete() {
    TheStudyService()->DeleteSelected(*this);
}

void StudiesRoot::OnInitialize() {
    if (TheStudyService()->Space())
        for (Study& study : TheStore().Studies())
            AddChild(New<StudyItem>(std::move(study)));
}

StudyItem::StudyItem(Study study) : ExplorerItem(study.name), m_study(std::move(study)) {}

void StudyItem::OnInitialize() {
    TheStudyService()->StudyJoins(*this);
}

std::string StudyItem::NameProblem(const std::string& name) {
    if (name == m_study.name)
        return {};
    if (std::string problem = TheStore().NameProblem(name, m_study.id); !problem.empty())
        return problem;
    if (const std::string now = TheStore().StudyOf(m_study.id).name; now != m_study.name)
        return Translated("The study is called “%1” by now, by another window of Studies.", {now});
    if (!EqualText(name, m_study.name) && Explorer()->TreeView()->GetNodes()->HasKey(name))
        return Translated("The explorer has an entry “%1” already.", {name});
    return {};
}

// Comes before the explorer has looked whether the name is free, and once more with the old name when it isn't. A host
// that asks for the problem beforehand gets here with a name that is free.
void StudyItem::OnAfterRename(const std::string& newName) {
    if (newName == m_study.name || Explorer()->TreeView()->GetNodes()->HasKey(newName))
        return;
    if (const std::string problem = TheStore().NameProblem(newName, m_study.id); !problem.empty()) {
        SetName(m_study.name);
        FailWith(problem);
    }
    TheStore().RenameStudy(m_study.id, newName);
    const std::string oldName = std::exchange(m_study.name, newName);
    TheStudyService()->Tell(Translated("“%1” is now “%2”", {oldName, newName}));
}

void StudyItem::TakeName(const std::string& name) {
    m_study.name = name;
    SetName(name);
}

void StudyItem::OnProperties() {
    OpenWindow("StudyProperties", New<StudyContext>(TheStudyService()->Space(), m_study.id),
               {.caption = Translated("Properties of %1", {m_study.name})});
}

void StudyItem::OnReport() {
    TheStudyService()->ShowReport(m_study.id);
}

void StudyItem::OnImport() {
    TheStudyService()->AskForImport(m_study.id);
}

void StudyItem::OnExport() {
    TheStudyService()->ExportStudy(m_study.id);
}

void StudyItem::OnRename() {
    Explorer()->StartRename(Ref<StudyItem>(this));
}

void StudyItem::OnDuplicate() {
    TheStudyService()->Duplicate(m_study.id);
}

std::string StudyItem::CanDrop(const Ref<Dropped>& dropped) {
    return TheStudyService()->DropProblem(*dropped, m_study.id);
}

void StudyItem::Drop(const Ref<Dropped>& dropped) {
    TheStudyService()->TakeDropped(*dropped, m_study.id);
}

DataSetsFolder::DataSetsFolder(Id studyId) {
    m_studyId = studyId;
}

void DataSetsFolder::OnInitialize() {
    if (m_studyId == 0)
        m_studyId = TheStudyService()->JoiningStudy();
    SetName(Numbered(m_studyId, " data sets"));
    TheStudyService()->FolderJoins(*this, true);
    for (DataSet& dataSet : TheStore().DataSets(m_studyId))
        AddChild(New<DataSetItem>(std::move(dataSet)));
}

void DataSetsFolder::OnImport() {
    TheStudyService()->AskForImport(m_studyId);
}

std::string DataSetsFolder::CanDrop(const Ref<Dropped>& dropped) {
    return TheStudyService()->DropProblem(*dropped, m_studyId);
}

void DataSetsFolder::Drop(const Ref<Dropped>& dropped) {
    TheStudyService()->TakeDropped(*dropped, m_studyId);
}

AnalysesFolder::AnalysesFolder(Id studyId) {
    m_studyId = studyId;
}

void AnalysesFolder::OnInitialize() {
    if (m_studyId == 0)
        m_studyId = TheStudyService()->JoiningStudy();
    SetName(Numbered(m_studyId, " analyses"));
    TheStudyService()->FolderJoins(*this, false);
    for (Analysis& analysis : TheStore().Analyses(m_studyId))
        AddChild(New<AnalysisItem>(std::move(analysis)));
}

DataSetItem::DataSetItem(DataSet dataSet) : ExplorerItem(Numbered(dataSet.id)), m_dataSet(std::move(dataSet)) {}

void DataSetItem::OnInitialize() {
    TheStudyService()->EntryJoins({'d', m_dataSet.id}, *this);
}

std::string DataSetItem::KeyOf(Id dataSetId) {
    return "DataSet." + Numbered(dataSetId);
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
    OpenWindow("Export", Context(), {.caption = Translated("Export %1", {m_dataSet.name})});
}

void DataSetItem::OnProperties() {
    OpenWindow("DataSetProperties", Context(), {.caption = Translated("Properties of %1", {m_dataSet.name})});
}

AnalysisItem::AnalysisItem(Analysis analysis) : ExplorerItem(Numbered(analysis.id)), m_analysis(std::move(analysis)) {}

void AnalysisItem::OnInitialize() {
    TheStudyService()->EntryJoins({'a', m_analysis.id}, *this);
}

std::string AnalysisItem::KeyOf(Id analysisId) {
    return "Analysis." + Numbered(analysisId);
}

void AnalysisItem::OnShow() {
    OpenAnalysis(TheStudyService()->Space(), TheStore().AnalysisOf(m_analysis.id));
}

} // namespace studies
