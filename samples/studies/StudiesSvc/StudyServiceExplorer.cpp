#include "StudyService.h"
#include "corvane/author/Host.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/MenuManager.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/IPage.h"

namespace studies {

using namespace corvane;

namespace {

Ref<corvane::MenuManager> Menus() {
    return Singleton::Framework()->NavigationManager()->MenuManager();
}

} // namespace

void StudyService::StudyJoins(StudyItem& study) {
    m_joiningStudy = study.StudyId();
    m_branches[m_joiningStudy] = {Ref<StudyItem>(&study), nullptr, nullptr};
}

void StudyService::FolderJoins(StudyFolder& folder, bool dataSets) {
    Branch& branch = m_branches[folder.StudyId()];
    (dataSets ? branch.dataSets : branch.analyses) = Ref<StudyFolder>(&folder);
}

Id StudyService::ActiveStudy() const {
    const Ref<StoreItem> item = m_active.TryAs<StoreItem>();
    return item ? item->StudyId() : 0;
}

// One call of the explorer adds one node, so what is below the study is added here.
void StudyService::AddStudy(const Study& study) {
    const auto item = New<StudyItem>(study);
    AddItem(item, "Study", nullptr);
    const auto AddFolder = [&](const Ref<StudyFolder>& folder, const char* folderPath, const char* entryName) {
        AddItem(folder, folderPath, item);
        for (const Ref<Object>& entry : *folder->Base()->Children())
            AddItem(entry.As<StoreItem>(), entryName, folder);
    };
    AddFolder(New<DataSetsFolder>(study.id), "DataSets", "DataSet");
    AddFolder(New<AnalysesFolder>(study.id), "Analyses", "Analysis");
}

void StudyService::AddItem(const Ref<StoreItem>& item, const std::string& definition, const Ref<StoreItem>& folder) {
    Explorer()->AddToExplorer(item, definition, folder);
    // What is new is seen at once, as after a rebuild.
    const Ref<corvane::TreeView> tree = Explorer()->TreeView();
    if (const Ref<Node> node = tree ? tree->GetNodes()->Find(item->Base()->Name()) : nullptr)
        node->SetExpanded(true);
}

// The explorer says nothing of an active item that goes, so its commands are taken from it here.
void StudyService::RemoveItem(const Ref<StoreItem>& item) {
    if (m_active == item) {
        Menus()->OnActionsProviderInActive(item, item->Base(), item->Base()->ExplorerItemDef()->ActionItemDefs());
        m_active = nullptr;
    }
    Explorer()->DeleteFromExplorer(item);
}

// As if the person had clicked on it. False when it isn't in the tree that is shown.
bool StudyService::Select(Id studyId) {
    const auto it = m_branches.find(studyId);
    return it != m_branches.end() && SelectNode(it->second.study->Base()->Name());
}

// What has just been imported is what comes next.
void StudyService::SelectDataSet(Id dataSetId) {
    if (dataSetId != 0)
        SelectNode("DataSet." + New<DataSetItem>(TheStore().DataSetOf(dataSetId))->Base()->Name());
}

bool StudyService::SelectNode(const std::string& key) {
    const Ref<corvane::TreeView> tree = Explorer()->TreeView();
    if (!tree)
        return false;
    const Ref<Node> node = tree->GetNodes()->Find(key);
    if (!node || !EqualText(tree->Tag(), "Studies"))
        return false;
    tree->ClickNode(node);
    return true;
}

// From the store, with the item chosen that was, or its study when it is gone. Removing the items hides the entries
// that they share with this service and with pages, which therefore take them back.
void StudyService::Rebuild() {
    const Id studyId = ActiveStudy();
    const Ref<corvane::TreeView> tree = Explorer()->TreeView();
    const Ref<Node> chosen = tree ? tree->SelectedItem() : nullptr;
    const std::string chosenText = m_active && chosen ? chosen->Key() : std::string();
    m_branches.clear();
    Explorer()->Refresh();
    for (const Ref<ServiceDef>& def : *Singleton::Framework()->ServiceManager()->ServiceDefs())
        if (const Ref<Object> service = FindService(def->Name()))
            Menus()->OnActionsProviderActive(service, CorvaneMain::QueryService(service).As<IActionsProvider>(),
                                             def->ActionItemDefs());
    if (const Ref<Node> same = studyId != 0 ? tree->GetNodes()->Find(chosenText) : nullptr)
        tree->ClickNode(same);
    else
        Select(studyId);
}

} // namespace studies
