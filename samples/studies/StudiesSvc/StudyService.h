// The service of studies: it keeps the store, the commands on it, and the explorer in step with both.
#pragma once

#include "StudyContexts.h"
#include "StudyItems.h"
#include "Workspace.h"
#include "corvane/Service.h"
#include "corvane/author/Items.h"
#include "corvane/platform/ITimers.h"

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace studies {

class StudyService final : public corvane::Service<StudyService> {
public:
    void Start();

    // The commands.
    void OnNewStudy();
    void OnImport();
    void OnUndo();
    void OnRedo();
    void OnRestore();
    void OnRefresh();
    void OnReport();

    // For others, by name. Into the chosen study, or a new one:
    void ImportFile(const std::string& path);
    void ImportAndOpen(const std::string& path);
    // The study that data of a file go into when something about them is to be kept; 0 for a new one. Fails when the
    // store can't be used.
    [[nodiscard]] corvane::Ref<StudyContext> KeepsIn() const;
    // A study of a file that was sent, into the store.
    void OpenStudy(const std::string& path);
    // The explorer's active item, of any service, or nothing.
    [[nodiscard]] corvane::Ref<corvane::Object> ActiveItem() const { return m_active; }

    // For the desktop: opens a window that was open when the program ended.
    bool RestoreWindow(const std::string& name, const std::string& key);
    // Open windows show the new figures.
    void OnPreferenceChanged(const std::string& service, const std::string& category, const std::string& name);

    // For the items. The workspace is nothing when its file can't be used.
    [[nodiscard]] const corvane::Ref<Workspace>& Space() const { return m_workspace; }
    void AskForImport(Id studyId);
    void Duplicate(Id studyId);
    // Into a file to send.
    void ExportStudy(Id studyId);
    // What is selected, with the item whose command it is. Asks when a study with something in it goes.
    void DeleteSelected(const StoreItem& item);
    // Why the study can't take what is dropped on it or on its folder of data sets; "" when it can.
    [[nodiscard]] std::string DropProblem(const corvane::Dropped& dropped, Id studyId) const;
    void TakeDropped(const corvane::Dropped& dropped, Id studyId);
    // The store has changed, and the explorer shows it already.
    void Tell(const std::string& what);
    void Joins(StoreItem& item);
    // The one that joined last: folders that the explorer makes now are its.
    [[nodiscard]] Id JoiningStudy() const { return m_joiningStudy; }

    static constexpr auto Members =
        corvane::Methods<&StudyService::Start, &StudyService::OnNewStudy, &StudyService::OnImport,
                         &StudyService::OnUndo, &StudyService::OnRedo, &StudyService::OnRestore,
                         &StudyService::OnRefresh, &StudyService::OnReport, &StudyService::ImportFile,
                         &StudyService::ImportAndOpen, &StudyService::OpenStudy, &StudyService::KeepsIn,
                         &StudyService::OnPreferenceChanged, &StudyService::RestoreWindow>(
            corvane::Property("ActiveItem", &StudyService::ActiveItem));

private:
    void OnInitialize() override;
    void OnTerminate() override;
    void OnInactive(const corvane::Ref<corvane::Object>& item);
    [[nodiscard]] Id ActiveStudy() const;
    bool WantsDeletion(const std::vector<StorePlace>& places);
    void AddStudy(const Study& study);
    void AddItem(const corvane::Ref<StoreItem>& item, const std::string& definition,
                 const corvane::Ref<StoreItem>& folder);
    bool Follow(const StoreContents& contents);
    void RemoveEntry(const StorePlace& place);
    void RenameEntry(const StorePlace& place, const std::string& name);
    void AddEntry(const StorePlace& place);
    bool Select(const StorePlace& place);
    [[nodiscard]] bool WantsAnother(const std::string& name);
    void ShowImported(Id dataSetId);
    void OpenImported(Id dataSetId);
    void Import(const std::string& path, Id studyId, void (StudyService::*then)(Id dataSetId));
    void Build(const std::function<void()>& build);
    void Rebuild();
    void ShowChangesOfOthers();
    [[nodiscard]] Store& TheStore() const { return m_workspace->GetStore(); }
    void OnChanged(const std::string& status);
    [[nodiscard]] bool ShowsAll() const;
    void OnUnsaved(corvane::Dictionary& items, corvane::Double& order) override;
    void OnSave(const corvane::Ref<corvane::Object>& item) override;
    void ShowWhatCanBeUndone();
    void OnWindowActive(const corvane::Ref<corvane::Window>& window);

    corvane::Ref<Workspace> m_workspace; // nothing when its file can't be used
    std::string m_storeProblem;
    corvane::Ref<corvane::ITimer> m_look;    // at what others change in the file
    corvane::Window* m_lastActive = nullptr; // only to tell it from another; it may be gone
    corvane::Ref<corvane::Object> m_active;
    Id m_joiningStudy = 0;
    std::vector<corvane::Ref<ImportJob>> m_importing; // whose files are being read
    StoreContents m_shown;
    std::string m_lastChange; // for the status line
    std::map<StorePlace, corvane::Ref<StoreItem>> m_items;
};

// The one that is loaded.
[[nodiscard]] corvane::Ref<StudyService> TheStudyService();

} // namespace studies
