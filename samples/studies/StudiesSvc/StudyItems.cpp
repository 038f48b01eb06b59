#include "StudyItems.h"

#include "Csv.h"
#include "Errors.h"
#include "Report.h"
#include "Shell.h"
#include "Statistics.h"
#include "StudyService.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"

#include <optional>

namespace studies {

using namespace corvane;

namespace {

Ref<corvane::ExplorerManager> Explorer() {
    return CorvaneMain::Framework()->NavigationManager()->ExplorerManager();
}

Store& TheStore() {
    return *TheStudyService()->GetStore();
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
    if (Store* pStore = TheStudyService()->GetStore())
        for (Study& oStudy : pStore->Studies())
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
    TheStudyService()->StoreChanged("\"" + sOldName + "\" is now \"" + sNewName + "\"");
}

void StudyItem::OnDescribe() {
    const std::vector<DataSet> aDataSets = TheStore().DataSets(m_oStudy.nId);
    const std::vector<Analysis> aAnalyses = TheStore().Analyses(m_oStudy.nId);
    std::string sText = std::to_string(aDataSets.size()) + (aDataSets.size() == 1 ? " data set" : " data sets") + "\n";
    for (const DataSet& oDataSet : aDataSets)
        sText +=
            "  " + oDataSet.sName + ": " + std::to_string(oDataSet.nRows) + " rows, from " + oDataSet.sSource + "\n";
    sText += std::to_string(aAnalyses.size()) + (aAnalyses.size() == 1 ? " analysis" : " analyses") + "\n";
    for (const Analysis& oAnalysis : aAnalyses)
        sText += "  " + oAnalysis.sName + "\n";
    ShowMessage(sText, m_oStudy.sName);
}

void StudyItem::OnImport() {
    TheStudyService()->Import(m_oStudy.nId);
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
    TheStudyService()->Import(m_nStudyId);
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

void DataSetItem::OnOpen() {
    const Ref<Object> oData = ServiceByName("Data");
    if (!oData)
        FailWith("The service of open data isn't there.");
    const Variant aArguments[] = {m_oDataSet.sName, WriteCsv(TheStore().ReadDataSet(m_oDataSet.nId))};
    oData->Invoke("OpenText", aArguments);
}

void DataSetItem::OnSummary() {
    TheStudyService()->AddAnalysis(m_oDataSet, {});
}

void DataSetItem::OnSummaryByGroup() {
    const std::vector<std::string> aColumns = GroupColumns(TheStore().ReadDataSet(m_oDataSet.nId));
    if (aColumns.empty())
        FailWith("\"" + m_oDataSet.sName + "\" has no column of text that divides it into groups.");
    if (const std::optional<std::string> sColumn =
            AskForChoice("Summary of " + m_oDataSet.sName + " by", JoinLines(aColumns)))
        TheStudyService()->AddAnalysis(m_oDataSet, *sColumn);
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
    const Table oTable = TheStore().ReadDataSet(m_oAnalysis.nDataSetId);
    if (m_oAnalysis.sGroupColumn.empty()) {
        const TableSummary oSummary = Summarize(oTable);
        ShowStatus(m_oAnalysis.sName + ": " + LineText(oSummary));
        ShowMessage(ReportText(oSummary), m_oAnalysis.sName);
    } else {
        const std::vector<GroupSummary> aGroups = SummarizeByGroup(oTable, m_oAnalysis.sGroupColumn);
        ShowStatus(m_oAnalysis.sName + ": " + std::to_string(aGroups.size()) + " groups");
        ShowMessage(ReportText(aGroups, m_oAnalysis.sGroupColumn), m_oAnalysis.sName);
    }
}

void AnalysisItem::OnDelete() {
    TheStudyService()->DeleteAnalysis(Ref<AnalysisItem>(this));
}

} // namespace studies
