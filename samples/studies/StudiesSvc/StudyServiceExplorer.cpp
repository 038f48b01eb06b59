#include "Shell.h"
#include "StudyService.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/MenuManager.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/IPage.h"

namespace studies {

using namespace corvane;

namespace {

Ref<corvane::ExplorerManager> Explorer() {
    return CorvaneMain::Framework()->NavigationManager()->ExplorerManager();
}

Ref<corvane::MenuManager> Menus() {
    return CorvaneMain::Framework()->NavigationManager()->MenuManager();
}

} // namespace

void StudyService::StudyJoins(StudyItem& oStudy) {
    m_nJoiningStudy = oStudy.StudyId();
    m_mapBranches[m_nJoiningStudy] = {Ref<StudyItem>(&oStudy), nullptr, nullptr};
}

void StudyService::FolderJoins(StudyFolder& oFolder, bool bDataSets) {
    Branch& oBranch = m_mapBranches[oFolder.StudyId()];
    (bDataSets ? oBranch.oDataSets : oBranch.oAnalyses) = Ref<StudyFolder>(&oFolder);
}

Id StudyService::ActiveStudy() const {
    const Ref<StoreItem> oItem = m_oActive.TryAs<StoreItem>();
    return oItem ? oItem->StudyId() : 0;
}

// One call of the explorer adds one node, so what is below the study is added here.
void StudyService::AddStudy(const Study& oStudy) {
    const auto oItem = New<StudyItem>(oStudy);
    AddItem(oItem, "Study", nullptr);
    const auto AddFolder = [&](const Ref<StudyFolder>& oFolder, const char* sFolder, const char* sEntry) {
        AddItem(oFolder, sFolder, oItem);
        for (const Ref<Object>& oEntry : *oFolder->Base()->Children())
            AddItem(oEntry.As<StoreItem>(), sEntry, oFolder);
    };
    AddFolder(New<DataSetsFolder>(oStudy.nId), "DataSets", "DataSet");
    AddFolder(New<AnalysesFolder>(oStudy.nId), "Analyses", "Analysis");
}

void StudyService::AddItem(const Ref<StoreItem>& oItem, const std::string& sDefinition, const Ref<StoreItem>& oFolder) {
    Explorer()->AddToExplorer(oItem, sDefinition, oFolder);
    // What is new is seen at once, as after a rebuild.
    const Ref<corvane::TreeView> oTree = Explorer()->TreeView();
    if (const Ref<Node> oNode = oTree ? oTree->GetNodes()->Find(oItem->Base()->Name()) : nullptr)
        oNode->SetExpanded(true);
}

// The explorer says nothing of an active item that goes, so its commands are taken from it here.
void StudyService::RemoveItem(const Ref<StoreItem>& oItem) {
    if (m_oActive == oItem) {
        Menus()->OnActionsProviderInActive(oItem, oItem->Base(), oItem->Base()->ExplorerItemDef()->ActionItemDefs());
        m_oActive = nullptr;
    }
    Explorer()->DeleteFromExplorer(oItem);
}

// As if the person had clicked on it. False when it isn't in the tree that is shown.
bool StudyService::Select(Id nStudyId) {
    const auto it = m_mapBranches.find(nStudyId);
    return it != m_mapBranches.end() && SelectNode(it->second.oStudy->Base()->Name());
}

// What has just been imported is what comes next.
void StudyService::SelectDataSet(Id nDataSetId) {
    if (nDataSetId != 0)
        SelectNode("DataSet." + New<DataSetItem>(TheStore().DataSetOf(nDataSetId))->Base()->Name());
}

bool StudyService::SelectNode(const std::string& sKey) {
    const Ref<corvane::TreeView> oTree = Explorer()->TreeView();
    if (!oTree)
        return false;
    const Ref<Node> oNode = oTree->GetNodes()->Find(sKey);
    if (!oNode || !EqualText(oTree->Tag(), "Studies"))
        return false;
    oTree->ClickNode(oNode);
    return true;
}

// From the store, with the item chosen that was, or its study when it is gone. Removing the items hides the entries
// that they share with this service and with pages, which therefore take them back.
void StudyService::Rebuild() {
    const Id nStudyId = ActiveStudy();
    const Ref<corvane::TreeView> oTree = Explorer()->TreeView();
    const Ref<Node> oChosen = oTree ? oTree->SelectedItem() : nullptr;
    const std::string sChosen = m_oActive && oChosen ? oChosen->Key() : std::string();
    m_mapBranches.clear();
    Explorer()->Refresh();
    for (const Ref<ServiceDef>& oDef : *CorvaneMain::Framework()->ServiceManager()->ServiceDefs())
        if (const Ref<Object> oService = ServiceByName(oDef->Name()))
            Menus()->OnActionsProviderActive(oService, CorvaneMain::QueryService(oService).As<IActionsProvider>(),
                                             oDef->ActionItemDefs());
    if (const Ref<Node> oSame = nStudyId != 0 ? oTree->GetNodes()->Find(sChosen) : nullptr)
        oTree->ClickNode(oSame);
    else
        Select(nStudyId);
}

} // namespace studies
