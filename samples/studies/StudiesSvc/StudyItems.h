// The items of the explorer's tab "Studies". Studies are known by their names, all others by their numbers in the
// store: below different studies there may be data sets and analyses of one name, and no two items of a tree may
// share one.
#pragma once

#include "Workspace.h"
#include "corvane/base/Automation.h"
#include "corvane/explorer/ExplorerItemBase.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/IExplorerItemAccess.h"

#include <string>
#include <utility>

namespace studies {

[[nodiscard]] corvane::Ref<corvane::ExplorerManager> Explorer();

class StoreItem : public corvane::IExplorerItemAccess {
public:
    using Children = corvane::Ref<corvane::KeyedCollection<corvane::Ref<corvane::Object>>>;

    corvane::Ref<corvane::IExplorerItem> ExplorerItem() override { return m_base; }
    [[nodiscard]] const corvane::Ref<corvane::ExplorerItemBase>& Base() const { return m_base; }
    [[nodiscard]] virtual Id StudyId() const = 0; // 0 for none

protected:
    StoreItem();
    virtual void OnInitialize(const Children& /*children*/) {}

    corvane::Ref<corvane::ExplorerItemBase> m_base = corvane::New<corvane::ExplorerItemBase>();

private:
    corvane::Subscription m_initialize;
};

class StudiesRoot final : public corvane::Automation<StudiesRoot, StoreItem> {
public:
    std::string_view TypeName() const override { return "StudiesRoot"; }
    Id StudyId() const override { return 0; }

    static constexpr auto Members = corvane::MemberTable();

protected:
    void OnInitialize(const Children& children) override;
};

class StudyItem final : public corvane::Automation<StudyItem, StoreItem> {
public:
    explicit StudyItem(Study study);

    std::string_view TypeName() const override { return "StudyItem"; }
    Id StudyId() const override { return m_study.id; }

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
    void OnInitialize(const Children& children) override;

private:
    void OnAfterRename(const std::string& newName);

    Study m_study;
    corvane::Subscription m_afterRename;
};

// One of the two folders of a study.
class StudyFolder : public StoreItem {
public:
    Id StudyId() const override { return m_studyId; }

protected:
    Id m_studyId = 0; // until it joins the explorer, when the explorer has made it
};

class DataSetsFolder final : public corvane::Automation<DataSetsFolder, StudyFolder> {
public:
    explicit DataSetsFolder(Id studyId = 0);

    std::string_view TypeName() const override { return "DataSetsFolder"; }

    void OnImport();

    static constexpr auto Members = corvane::MemberTable(corvane::Method("OnImport", &DataSetsFolder::OnImport));

protected:
    void OnInitialize(const Children& children) override;
};

class AnalysesFolder final : public corvane::Automation<AnalysesFolder, StudyFolder> {
public:
    explicit AnalysesFolder(Id studyId = 0);

    std::string_view TypeName() const override { return "AnalysesFolder"; }

    static constexpr auto Members = corvane::MemberTable();

protected:
    void OnInitialize(const Children& children) override;
};

class DataSetItem final : public corvane::Automation<DataSetItem, StoreItem> {
public:
    explicit DataSetItem(DataSet dataSet);

    std::string_view TypeName() const override { return "DataSetItem"; }
    Id StudyId() const override { return m_dataSet.studyId; }

    void OnOpen();
    void OnAnalyse(const corvane::Ref<corvane::ActionItem>& actionItem); // by the item's name
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

    DataSet m_dataSet;
    corvane::Subscription m_displayName;
};

class AnalysisItem final : public corvane::Automation<AnalysisItem, StoreItem> {
public:
    explicit AnalysisItem(Analysis analysis);

    std::string_view TypeName() const override { return "AnalysisItem"; }
    Id StudyId() const override { return m_analysis.studyId; }
    [[nodiscard]] const Analysis& What() const { return m_analysis; }

    void OnShow();
    void OnDelete();

    static constexpr auto Members = corvane::MemberTable(corvane::Method("OnShow", &AnalysisItem::OnShow),
                                                         corvane::Method("OnDelete", &AnalysisItem::OnDelete));

private:
    Analysis m_analysis;
    corvane::Subscription m_displayName;
};

} // namespace studies
