// The items of the explorer's tab "Studies". Studies are known by their names, all others by their numbers in the
// store: below different studies there may be data sets and analyses of one name, and no two items of a tree may
// share one.
#pragma once

#include "Workspace.h"
#include "corvane/base/Automation.h"
#include "corvane/explorer/ExplorerItemBase.h"
#include "corvane/explorer/IExplorerItemAccess.h"

#include <string>
#include <utility>

namespace studies {

class StoreItem : public corvane::IExplorerItemAccess {
public:
    using Children = corvane::Ref<corvane::KeyedCollection<corvane::Ref<corvane::Object>>>;

    corvane::Ref<corvane::IExplorerItem> ExplorerItem() override { return m_oBase; }
    [[nodiscard]] const corvane::Ref<corvane::ExplorerItemBase>& Base() const { return m_oBase; }
    [[nodiscard]] virtual Id StudyId() const = 0; // 0 for none

protected:
    StoreItem();
    virtual void OnInitialize(const Children& /*colChildren*/) {}

    corvane::Ref<corvane::ExplorerItemBase> m_oBase = corvane::New<corvane::ExplorerItemBase>();

private:
    corvane::Subscription m_oInitialize;
};

class StudiesRoot final : public corvane::Automation<StudiesRoot, StoreItem> {
public:
    std::string_view TypeName() const override { return "StudiesRoot"; }
    Id StudyId() const override { return 0; }

    static constexpr auto Members = corvane::MemberTable();

protected:
    void OnInitialize(const Children& colChildren) override;
};

class StudyItem final : public corvane::Automation<StudyItem, StoreItem> {
public:
    explicit StudyItem(Study oStudy);

    std::string_view TypeName() const override { return "StudyItem"; }
    Id StudyId() const override { return m_oStudy.nId; }

    void OnProperties();
    void OnReport();
    void OnImport();
    void OnRename();
    void OnDuplicate();
    void OnDelete();

    static constexpr auto Members = corvane::MemberTable(
        corvane::Method("OnProperties", &StudyItem::OnProperties), corvane::Method("OnReport", &StudyItem::OnReport),
        corvane::Method("OnImport", &StudyItem::OnImport), corvane::Method("OnRename", &StudyItem::OnRename),
        corvane::Method("OnDuplicate", &StudyItem::OnDuplicate), corvane::Method("OnDelete", &StudyItem::OnDelete));

protected:
    void OnInitialize(const Children& colChildren) override;

private:
    void OnAfterRename(const std::string& sNewName);

    Study m_oStudy;
    corvane::Subscription m_oAfterRename;
};

// One of the two folders of a study.
class StudyFolder : public StoreItem {
public:
    Id StudyId() const override { return m_nStudyId; }

protected:
    Id m_nStudyId = 0; // until it joins the explorer, when the explorer has made it
};

class DataSetsFolder final : public corvane::Automation<DataSetsFolder, StudyFolder> {
public:
    explicit DataSetsFolder(Id nStudyId = 0);

    std::string_view TypeName() const override { return "DataSetsFolder"; }

    void OnImport();

    static constexpr auto Members = corvane::MemberTable(corvane::Method("OnImport", &DataSetsFolder::OnImport));

protected:
    void OnInitialize(const Children& colChildren) override;
};

class AnalysesFolder final : public corvane::Automation<AnalysesFolder, StudyFolder> {
public:
    explicit AnalysesFolder(Id nStudyId = 0);

    std::string_view TypeName() const override { return "AnalysesFolder"; }

    static constexpr auto Members = corvane::MemberTable();

protected:
    void OnInitialize(const Children& colChildren) override;
};

class DataSetItem final : public corvane::Automation<DataSetItem, StoreItem> {
public:
    explicit DataSetItem(DataSet oDataSet);

    std::string_view TypeName() const override { return "DataSetItem"; }
    Id StudyId() const override { return m_oDataSet.nStudyId; }

    void OnOpen();
    void OnAnalyse(const corvane::Ref<corvane::ActionItem>& oActionItem); // by the item's name
    void OnExport();
    void OnProperties();
    void OnDelete();

    static constexpr auto Members = corvane::MemberTable(corvane::Method("OnOpen", &DataSetItem::OnOpen),
                                                         corvane::Method("OnAnalyse", &DataSetItem::OnAnalyse),
                                                         corvane::Method("OnExport", &DataSetItem::OnExport),
                                                         corvane::Method("OnProperties", &DataSetItem::OnProperties),
                                                         corvane::Method("OnDelete", &DataSetItem::OnDelete));

private:
    [[nodiscard]] corvane::Ref<DataSetContext> Context() const;

    DataSet m_oDataSet;
    corvane::Subscription m_oDisplayName;
};

class AnalysisItem final : public corvane::Automation<AnalysisItem, StoreItem> {
public:
    explicit AnalysisItem(Analysis oAnalysis);

    std::string_view TypeName() const override { return "AnalysisItem"; }
    Id StudyId() const override { return m_oAnalysis.nStudyId; }
    [[nodiscard]] const Analysis& What() const { return m_oAnalysis; }

    void OnShow();
    void OnDelete();

    static constexpr auto Members = corvane::MemberTable(corvane::Method("OnShow", &AnalysisItem::OnShow),
                                                         corvane::Method("OnDelete", &AnalysisItem::OnDelete));

private:
    Analysis m_oAnalysis;
    corvane::Subscription m_oDisplayName;
};

} // namespace studies
