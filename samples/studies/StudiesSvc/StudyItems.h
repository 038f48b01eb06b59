// The items of the explorer's tab "Studies". Studies are known by their names, all others by their numbers in the
// store: below different studies there may be data sets and analyses of one name, and no two items of a tree may
// share one.
#pragma once

#include "Workspace.h"
#include "corvane/Explorer.h"
#include "corvane/author/Items.h"

#include <string>
#include <utility>

namespace studies {

class StoreItem : public corvane::AnyExplorerItem {
public:
    using AnyExplorerItem::Base;
    [[nodiscard]] virtual Id StudyId() const = 0; // 0 for none
    // Of the explorer's node.
    [[nodiscard]] virtual std::string NodeKey() const { return Base()->Name(); }
    // 's', 'd' or 'a' with its number; none for others.
    [[nodiscard]] virtual StorePlace Place() const { return {}; }
    [[nodiscard]] bool TakesSeveral(const std::string& action) { return action == "Delete"; }
    void OnDelete();
    // The store has that name for it by now.
    virtual void TakeName(const std::string& name) { (void)name; }
};

class StudiesRoot final : public corvane::ExplorerItem<StudiesRoot, StoreItem> {
public:
    Id StudyId() const override { return 0; }

protected:
    void OnInitialize() override;
};

class StudyItem final : public corvane::ExplorerItem<StudyItem, StoreItem> {
public:
    explicit StudyItem(Study study);

    Id StudyId() const override { return m_study.id; }
    StorePlace Place() const override { return {'s', m_study.id}; }
    void TakeName(const std::string& name) override;

    void OnProperties();
    void OnReport();
    void OnImport();
    void OnExport();
    void OnRename();
    void OnDuplicate();
    [[nodiscard]] std::string CanDrop(const corvane::Ref<corvane::Dropped>& dropped);
    void Drop(const corvane::Ref<corvane::Dropped>& dropped);
    // For the host, while the name is typed: why the study can't have it; "" when it can.
    [[nodiscard]] std::string NameProblem(const std::string& name);

    static constexpr auto Members =
        corvane::Methods<&StudyItem::OnProperties, &StudyItem::OnReport, &StudyItem::OnImport, &StudyItem::OnExport,
                         &StudyItem::OnRename, &StudyItem::OnDuplicate, &StudyItem::OnDelete, &StudyItem::NameProblem,
                         &StudyItem::TakesSeveral, &StudyItem::CanDrop, &StudyItem::Drop>();

protected:
    void OnInitialize() override;

private:
    void OnAfterRename(const std::string& newName) override;

    Study m_study;
};

// One of the two folders of a study.
class StudyFolder : public StoreItem {
public:
    Id StudyId() const override { return m_studyId; }

protected:
    Id m_studyId = 0; // until it joins the explorer, when the explorer has made it
};

class DataSetsFolder final : public corvane::ExplorerItem<DataSetsFolder, StudyFolder> {
public:
    explicit DataSetsFolder(Id studyId = 0);

    void OnImport();
    [[nodiscard]] std::string CanDrop(const corvane::Ref<corvane::Dropped>& dropped);
    void Drop(const corvane::Ref<corvane::Dropped>& dropped);

    static constexpr auto Members =
        corvane::Methods<&DataSetsFolder::OnImport, &DataSetsFolder::CanDrop, &DataSetsFolder::Drop>();

protected:
    void OnInitialize() override;
};

class AnalysesFolder final : public corvane::ExplorerItem<AnalysesFolder, StudyFolder> {
public:
    explicit AnalysesFolder(Id studyId = 0);

protected:
    void OnInitialize() override;
};

class DataSetItem final : public corvane::ExplorerItem<DataSetItem, StoreItem> {
public:
    explicit DataSetItem(DataSet dataSet);

    [[nodiscard]] static std::string KeyOf(Id dataSetId);

    Id StudyId() const override { return m_dataSet.studyId; }
    StorePlace Place() const override { return {'d', m_dataSet.id}; }
    [[nodiscard]] std::string NodeKey() const override { return KeyOf(m_dataSet.id); }
    void TakeName(const std::string& name) override { m_dataSet.name = name; }

    void OnOpen();
    void OnAnalyse(const corvane::Ref<corvane::ActionItem>& actionItem); // by the item's name
    void OnExport();
    void OnProperties();

    static constexpr auto Members =
        corvane::Methods<&DataSetItem::OnOpen, &DataSetItem::OnAnalyse, &DataSetItem::OnExport,
                         &DataSetItem::OnProperties, &DataSetItem::OnDelete, &DataSetItem::TakesSeveral>();

protected:
    void OnInitialize() override;

private:
    void OnDisplayName(std::string& text) override { text = m_dataSet.name; }
    [[nodiscard]] corvane::Ref<DataSetContext> Context() const;

    DataSet m_dataSet;
};

class AnalysisItem final : public corvane::ExplorerItem<AnalysisItem, StoreItem> {
public:
    explicit AnalysisItem(Analysis analysis);

    [[nodiscard]] static std::string KeyOf(Id analysisId);

    Id StudyId() const override { return m_analysis.studyId; }
    StorePlace Place() const override { return {'a', m_analysis.id}; }
    [[nodiscard]] std::string NodeKey() const override { return KeyOf(m_analysis.id); }
    void TakeName(const std::string& name) override { m_analysis.name = name; }
    [[nodiscard]] const Analysis& What() const { return m_analysis; }

    void OnShow();

    static constexpr auto Members =
        corvane::Methods<&AnalysisItem::OnShow, &AnalysisItem::OnDelete, &AnalysisItem::TakesSeveral>();

protected:
    void OnInitialize() override;

private:
    void OnDisplayName(std::string& text) override { text = m_analysis.name; }

    Analysis m_analysis;
};

} // namespace studies
