#include "StudyService.h"
#include "Windows.h"
#include "corvane/author/Host.h"
#include "corvane/author/Nodes.h"
#include "corvane/explorer/ExplorerManager.h"

#include <algorithm>
#include <set>

namespace studies {

using namespace corvane;

void StudyService::Joins(StoreItem& item) {
    if (item.Place().first == 's')
        m_joiningStudy = item.StudyId();
    m_items[item.Place()] = Ref<StoreItem>(&item);
}

Id StudyService::ActiveStudy() const {
    const Ref<StoreItem> item = m_active.TryAs<StoreItem>();
    return item ? item->StudyId() : 0;
}

// One call of the explorer adds one node, so what is below the study is added here.
void StudyService::AddStudy(const Study& study) {
    const auto item = New<StudyItem>(study);
    AddItem(item, "Study", nullptr);
    const auto AddFolder = [&](const Ref<StoreItem>& folder, const char* folderPath, const char* entryName) {
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

// The explorer adds at the end of a folder. What belongs in front of others of a study takes those along; in front of
// other studies it would be too many, and the explorer is built again. False then, and when a name is in use yet.
bool StudyService::Follow(const StoreContents& contents) {
    const Ref<corvane::TreeView> tree = Explorer()->TreeView();
    const bool isInFront = tree && EqualText(tree->Tag(), "Studies");
    std::vector<StorePlace> added;
    std::vector<StorePlace> renamed;
    std::set<std::pair<char, Id>> grown; // the folders that something is added to
    for (const auto& [place, entry] : contents) {
        const auto it = m_shown.find(place);
        const bool isNew = it == m_shown.end() || it->second.studyId != entry.studyId;
        if (isNew)
            grown.insert({place.first, entry.studyId});
        else if (it->second.name != entry.name)
            renamed.push_back(place);
        if (isNew || grown.contains({place.first, entry.studyId}))
            added.push_back(place);
        if (!isNew && place.first == 's' && grown.contains({'s', 0}))
            return false;
    }
    const auto isTaken = [&](const StorePlace& place) {
        return place.first == 's' && !EqualText(contents.at(place).name, m_shown.at(place).name) &&
               tree->GetNodes()->HasKey(contents.at(place).name);
    };
    if (!renamed.empty() && (!isInFront || std::any_of(renamed.begin(), renamed.end(), isTaken)))
        return false;
    const NextNodes next;
    const bool wasActive = static_cast<bool>(m_active.TryAs<StoreItem>());
    for (const auto& [place, entry] : m_shown) // what is in a study comes before it
        if (!contents.contains(place) || std::binary_search(added.begin(), added.end(), place))
            RemoveEntry(place);
    for (const auto& place : renamed)
        if (!std::binary_search(added.begin(), added.end(), place))
            RenameEntry(place, contents.at(place).name);
    for (const char kind : {'s', 'd', 'a'})
        for (const auto& place : added)
            if (place.first == kind)
                AddEntry(place);
    if (wasActive && !m_active)
        next.Select("Studies");
    return true;
}

// A study with its folders.
void StudyService::RemoveEntry(const StorePlace& place) {
    const auto& [kind, id] = place;
    for (const StorePlace& part :
         kind == 's' ? std::vector<StorePlace>{{'D', id}, {'A', id}, place} : std::vector<StorePlace>{place})
        if (const auto item = m_items.extract(part)) {
            RemoveFromExplorer(item.mapped(), m_active == item.mapped());
            if (m_active == item.mapped())
                m_active = nullptr;
        }
}

void StudyService::RenameEntry(const StorePlace& place, const std::string& name) {
    const Ref<StoreItem>& item = m_items.at(place);
    const Ref<Node> node = Explorer()->TreeView()->GetNodes()->Item(item->NodeKey());
    item->TakeName(name);
    node->SetKey(item->NodeKey());
    node->SetText(name);
}

// What is in a new study comes with it.
void StudyService::AddEntry(const StorePlace& place) {
    const auto& [kind, id] = place;
    if (kind == 's') {
        AddStudy(TheStore().StudyOf(id));
    } else if (m_items.contains(place)) {
        return;
    } else if (kind == 'd') {
        const DataSet dataSet = TheStore().DataSetOf(id);
        AddItem(New<DataSetItem>(dataSet), "DataSet", m_items.at({'D', dataSet.studyId}));
    } else {
        const Analysis analysis = TheStore().AnalysisOf(id);
        AddItem(New<AnalysisItem>(analysis), "Analysis", m_items.at({'A', analysis.studyId}));
    }
}

// As if the user had clicked on it. False when it isn't in the tree that is shown.
bool StudyService::Select(const StorePlace& place) {
    const auto it = m_items.find(place);
    return it != m_items.end() && SelectNode("Studies", it->second->NodeKey());
}

// What has just been imported is what comes next.
void StudyService::ShowImported(Id dataSetId) {
    Select({'d', dataSetId});
}

void StudyService::OpenImported(Id dataSetId) {
    ShowImported(dataSetId);
    const std::string imported = m_lastChange;
    OpenDataWindow(m_workspace->DataSet(dataSetId));
    SetStatus(imported); // which the new window has cleared
}

// The items read the store one by one.
void StudyService::Build(const std::function<void()>& build) {
    if (m_workspace)
        TheStore().ReadTogether(build);
    else
        build();
}

// From the store, with the item selected that was, or the one that takes its place.
void StudyService::Rebuild() {
    const Ref<StoreItem> active = m_active.TryAs<StoreItem>();
    const NextNodes next;
    m_items.clear();
    Build(&RefreshExplorer);
    if (active && active->StudyId() != 0 && !Select(active->Place()))
        next.Select("Studies");
}

} // namespace studies
