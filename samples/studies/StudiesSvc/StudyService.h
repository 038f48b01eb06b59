// The service of studies: it keeps the store, the commands on it, and the explorer in step with both.
#pragma once

#include "StudyItems.h"
#include "Workspace.h"
#include "corvane/base/Automation.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace studies {

class StudyService final : public corvane::Automation<StudyService, corvane::IServiceAccess> {
public:
    // The names of studies ('s'), data sets ('d') and analyses ('a') by their numbers in the store.
    using Contents = std::map<std::pair<char, Id>, std::string>;

    StudyService();

    corvane::Ref<corvane::IService> Service() override { return m_oServiceBase; }
    std::string_view TypeName() const override { return "StudyService"; }

    void Start();

    // The commands.
    void OnNewStudy();
    void OnImport();
    void OnUndo();
    void OnRedo();
    void OnRefresh();
    void OnReport();

    // For others, by name. Into the chosen study, or a new one:
    void ImportFile(const std::string& sPath);
    // The explorer's active item, of any service, or nothing.
    [[nodiscard]] corvane::Ref<corvane::Object> ActiveItem() const { return m_oActive; }

    // For the desktop: opens a window that was open when the program ended.
    bool RestoreWindow(const std::string& sName, const std::string& sKey);

    // For the items. The workspace is nothing when its file can't be used.
    [[nodiscard]] const corvane::Ref<Workspace>& Space() const { return m_oWorkspace; }
    void AskForImport(Id nStudyId);
    void Duplicate(Id nStudyId);
    void DeleteStudy(const corvane::Ref<StudyItem>& oStudy);
    void DeleteDataSet(DataSet oDataSet);
    void DeleteAnalysis(const corvane::Ref<AnalysisItem>& oAnalysis);
    void ShowReport(Id nStudyId);
    // The store has changed, and the explorer shows it already.
    void Tell(const std::string& sWhat);
    // Folders are made by the explorer, which doesn't say for which study; it is the one that joined last.
    void StudyJoins(StudyItem& oStudy);
    [[nodiscard]] Id JoiningStudy() const { return m_nJoiningStudy; }
    void FolderJoins(StudyFolder& oFolder, bool bDataSets);

    static constexpr auto Members = corvane::MemberTable(
        corvane::Method("Start", &StudyService::Start), corvane::Method("OnNewStudy", &StudyService::OnNewStudy),
        corvane::Method("OnImport", &StudyService::OnImport), corvane::Method("OnUndo", &StudyService::OnUndo),
        corvane::Method("OnRedo", &StudyService::OnRedo), corvane::Method("OnRefresh", &StudyService::OnRefresh),
        corvane::Property("ActiveItem", &StudyService::ActiveItem),
        corvane::Method("OnReport", &StudyService::OnReport), corvane::Method("ImportFile", &StudyService::ImportFile),
        corvane::Method("RestoreWindow", &StudyService::RestoreWindow));

private:
    struct Branch {
        corvane::Ref<StudyItem> oStudy;
        corvane::Ref<StudyFolder> oDataSets;
        corvane::Ref<StudyFolder> oAnalyses;
    };

    void OnInitialize();
    void OnTerminate();
    void OnInactive(const corvane::Ref<corvane::Object>& oItem);
    [[nodiscard]] Id ActiveStudy() const;
    void AddStudy(const Study& oStudy);
    void AddItem(const corvane::Ref<StoreItem>& oItem, const std::string& sDefinition,
                 const corvane::Ref<StoreItem>& oFolder);
    void RemoveItem(const corvane::Ref<StoreItem>& oItem);
    bool Select(Id nStudyId);
    bool SelectNode(const std::string& sKey);
    void SelectDataSet(Id nDataSetId);
    void Rebuild();
    [[nodiscard]] Store& TheStore() const { return m_oWorkspace->GetStore(); }
    [[nodiscard]] Contents StoreContents() const;
    void OnChanged(const std::string& sStatus);
    void AddNewItems(const Contents& oContents);
    void ListUnsaved(const corvane::Ref<corvane::Dictionary>& dctItems) const;
    void SaveItem(const corvane::Ref<corvane::Object>& oItem);
    void TellUndo();
    void OnWindowActive(const corvane::Ref<corvane::Window>& oWindow);

    corvane::Ref<corvane::ServiceBase> m_oServiceBase = corvane::New<corvane::ServiceBase>();
    std::vector<corvane::Subscription> m_aSubscriptions;
    corvane::Ref<Workspace> m_oWorkspace; // nothing when its file can't be used
    std::string m_sStoreProblem;
    corvane::Window* m_pLastActive = nullptr; // only to tell it from another; it may be gone
    corvane::Ref<corvane::Object> m_oActive;
    Id m_nJoiningStudy = 0;
    Contents m_oShown;
    std::map<Id, Branch> m_mapBranches; // what stands in the explorer for each study
};

// The one that is loaded.
[[nodiscard]] corvane::Ref<StudyService> TheStudyService();

} // namespace studies
