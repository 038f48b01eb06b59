// The service of studies: it keeps the store, the commands on it, and the explorer in step with both.
#pragma once

#include "Store.h"
#include "StudyItems.h"
#include "corvane/base/Automation.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceBase.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace studies {

class StudyService final : public corvane::Automation<StudyService, corvane::IServiceAccess> {
public:
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

    // For other services, by name: into the chosen study, or a new one.
    void ImportFile(const std::string& sPath);

    // For the items. The store is a null pointer when its file can't be used.
    [[nodiscard]] Store* GetStore() const { return m_pStore.get(); }
    void Import(Id nStudyId);
    void Duplicate(Id nStudyId);
    void DeleteStudy(const corvane::Ref<StudyItem>& oStudy);
    void DeleteDataSet(DataSet oDataSet);
    void DeleteAnalysis(const corvane::Ref<AnalysisItem>& oAnalysis);
    void AddAnalysis(const DataSet& oDataSet, const std::string& sGroupColumn);
    // The store has changed: says what, and what can be undone now.
    void StoreChanged(const std::string& sStatus);
    // Folders are made by the explorer, which doesn't say for which study; it is the one that joined last.
    void StudyJoins(StudyItem& oStudy);
    [[nodiscard]] Id JoiningStudy() const { return m_nJoiningStudy; }
    void FolderJoins(StudyFolder& oFolder, bool bDataSets);

    static constexpr auto Members = corvane::MemberTable(
        corvane::Method("Start", &StudyService::Start), corvane::Method("OnNewStudy", &StudyService::OnNewStudy),
        corvane::Method("OnImport", &StudyService::OnImport), corvane::Method("OnUndo", &StudyService::OnUndo),
        corvane::Method("OnRedo", &StudyService::OnRedo), corvane::Method("OnRefresh", &StudyService::OnRefresh),
        corvane::Method("ImportFile", &StudyService::ImportFile));

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
    void Rebuild();
    void ImportInto(Id nStudyId, const std::string& sPath);
    void TellUndo();

    corvane::Ref<corvane::ServiceBase> m_oServiceBase = corvane::New<corvane::ServiceBase>();
    std::vector<corvane::Subscription> m_aSubscriptions;
    std::unique_ptr<Store> m_pStore;
    std::string m_sStoreProblem;
    corvane::Ref<corvane::Object> m_oActive; // the explorer's active item, of any service
    Id m_nJoiningStudy = 0;
    std::map<Id, Branch> m_mapBranches; // what stands in the explorer for each study
};

// The one that is loaded.
[[nodiscard]] corvane::Ref<StudyService> TheStudyService();

} // namespace studies
