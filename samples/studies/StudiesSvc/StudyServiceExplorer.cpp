#include "StudyService.h"
#include "Windows.h"
#include "corvane/author/Host.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/MenuManager.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/IPage.h"

#include <algorithm>
#include <iterator>

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

// As if the user had clicked on it. False when it isn't in the tree that is shown.
bool StudyService::Select(Id studyId) {
    const auto it = m_branches.find(studyId);
    return it != m_branches.end() && SelectNode(it->second.study->Base()->Name());
}

// What has just been imported is what comes next.
void StudyService::ShowImported(Id dataSetId) {
    if (dataSetId != 0)
        SelectNode(DataSetItem::KeyOf(dataSetId));
}

void StudyService::OpenImported(Id dataSetId) {
    ShowImported(dataSetId);
    const std::string imported = m_lastChange;
    OpenDataWindow(m_workspace->DataSet(dataSetId));
    SetStatus(imported); // which the new window has cleared
}

// The keys of the selected node and of those that take its place when it has gone, the best first: what follows it,
// what precedes it, what it is below.
std::vector<std::string> StudyService::ChosenAndNext() const {
    std::vector<std::string> keys;
    const Ref<corvane::TreeView> tree = Explorer()->TreeView();
    const Ref<Node> chosen = tree && m_active ? tree->SelectedItem() : nullptr;
    for (const Node* node = chosen.Get(); node; node = node->Parent()) {
        const std::vector<Node*>& siblings = node->Parent() ? node->Parent()->Children() : tree->GetNodes()->Roots();
        const auto at = std::find(siblings.begin(), siblings.end(), node);
        for (auto it = at; it != siblings.end(); ++it)
            keys.push_back((*it)->Key());
        for (auto it = at; it != siblings.begin(); --it)
            keys.push_back((*std::prev(it))->Key());
    }
    return keys;
}

void StudyService::SelectFirst(const std::vector<std::string>& keys) {
    (void)std::any_of(keys.begin(), keys.end(), [this](const std::string& key) { return SelectNode(key); });
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

// From the store, with the item selected that was, or the one that takes its place. Removing the items hides the
// entries that they share with this service and with pages, which therefore take them back.
void StudyService::Rebuild() {
    const Id studyId = ActiveStudy();
    const bool isStudy = static_cast<bool>(m_active.TryAs<StudyItem>());
    const std::vector<std::string> keys = ChosenAndNext();
    m_branches.clear();
    Explorer()->Refresh();
    for (const Ref<ServiceDef>& def : *Singleton::Framework()->ServiceManager()->ServiceDefs())
        if (const Ref<Object> service = FindService(def->Name()))
            Menus()->OnActionsProviderActive(service, CorvaneMain::QueryService(service).As<IActionsProvider>(),
                                             def->ActionItemDefs());
    if (studyId != 0 && !(isStudy && Select(studyId))) // a study may have another name
        SelectFirst(keys);
}

} // namespace studies
