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

void StoreItem::Join() {
    TheStudyService()->Joins(*this);
}

void StoreItem::OnDelete() {
    TheStudyService()->DeleteSelected(*this);
}

void StoreItem::OnImport() {
    TheStudyService()->AskForImport(m_studyId);
}

std::string StoreItem::CanDrop(const Ref<Dropped>& dropped) {
    return TheStudyService()->DropProblem(*dropped, m_studyId);
}

void StoreItem::Drop(const Ref<Dropped>& dropped) {
    TheStudyService()->TakeDropped(*dropped, m_studyId);
}

void StudiesRoot::OnInitialize() {
    if (TheStudyService()->Space())
        for (const Study& study : TheStore().Studies())
            AddChild(New<StudyItem>(study));
}

StudyItem::StudyItem(const Study& study) : ExplorerItem(study.name) {
    m_place = {'s', study.id};
    m_studyId = study.id;
    m_name = study.name;
}

std::string StudyItem::NameProblem(const std::string& name) {
    if (name == m_name)
        return {};
    if (std::string problem = TheStore().NameProblem(name, m_studyId); !problem.empty())
        return problem;
    if (const std::string now = TheStore().StudyOf(m_studyId).name; now != m_name)
        return Translated("The study is called “%1” by now, by another window of Studies.", {now});
    if (!EqualText(name, m_name) && Explorer()->TreeView()->GetNodes()->HasKey(name))
        return Translated("The explorer has an entry “%1” already.", {name});
    return {};
}

// Comes before the explorer has looked whether the name is free, and once more with the old name when it isn't. A host
// that asks for the problem beforehand gets here with a name that is free.
void StudyItem::OnAfterRename(const std::string& newName) {
    if (newName == m_name || Explorer()->TreeView()->GetNodes()->HasKey(newName))
        return;
    if (const std::string problem = TheStore().NameProblem(newName, m_studyId); !problem.empty()) {
        SetName(m_name);
        FailWith(problem);
    }
    TheStore().RenameStudy(m_studyId, newName);
    const std::string oldName = std::exchange(m_name, newName);
    TheStudyService()->Tell(Translated("“%1” is now “%2”", {oldName, newName}));
}

void StudyItem::TakeName(const std::string& name) {
    m_name = name;
    SetName(name);
}

void StudyItem::OnProperties() {
    OpenWindow("StudyProperties", New<StudyContext>(TheStudyService()->Space(), m_studyId),
               {.caption = Translated("Properties of %1", {m_name})});
}

void StudyItem::OnReport() {
    OpenReport(TheStudyService()->Space(), m_studyId);
}

void StudyItem::OnExport() {
    TheStudyService()->ExportStudy(m_studyId);
}

void StudyItem::OnRename() {
    Explorer()->StartRename(Ref<StudyItem>(this));
}

void StudyItem::OnDuplicate() {
    TheStudyService()->Duplicate(m_studyId);
}

void DataSetsFolder::OnInitialize() {
    m_studyId = m_studyId == 0 ? TheStudyService()->JoiningStudy() : m_studyId;
    m_place = {'D', m_studyId};
    SetName(Numbered(m_studyId, " data sets"));
    Join();
    for (const DataSet& dataSet : TheStore().DataSets(m_studyId))
        AddChild(New<DataSetItem>(dataSet));
}

void AnalysesFolder::OnInitialize() {
    m_studyId = m_studyId == 0 ? TheStudyService()->JoiningStudy() : m_studyId;
    m_place = {'A', m_studyId};
    SetName(Numbered(m_studyId, " analyses"));
    Join();
    for (const Analysis& analysis : TheStore().Analyses(m_studyId))
        AddChild(New<AnalysisItem>(analysis));
}

std::string EntryItem::NodeKey() const {
    return (m_place.first == 'd' ? "DataSet." : "Analysis.") + Base()->Name();
}

DataSetItem::DataSetItem(const DataSet& dataSet) : ExplorerItem(Numbered(dataSet.id)) {
    m_place = {'d', dataSet.id};
    m_studyId = dataSet.studyId;
    m_name = dataSet.name;
}

Ref<DataSetContext> DataSetItem::Context() const {
    return TheStudyService()->Space()->DataSet(m_place.second);
}

void DataSetItem::OnOpen() {
    OpenDataWindow(Context());
}

void DataSetItem::OnAnalyse(const Ref<ActionItem>& actionItem) {
    OpenNewAnalysis(Context(), actionItem->Name());
}

void DataSetItem::OnExport() {
    OpenWindow("Export", Context(), {.caption = Translated("Export %1", {m_name})});
}

void DataSetItem::OnProperties() {
    OpenWindow("DataSetProperties", Context(), {.caption = Translated("Properties of %1", {m_name})});
}

AnalysisItem::AnalysisItem(const Analysis& analysis) : ExplorerItem(Numbered(analysis.id)) {
    m_place = {'a', analysis.id};
    m_studyId = analysis.studyId;
    m_name = analysis.name;
}

void AnalysisItem::OnShow() {
    OpenAnalysis(TheStudyService()->Space(), TheStore().AnalysisOf(m_place.second));
}

} // namespace studies
