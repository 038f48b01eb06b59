// The items of the explorer's tab "Studies". Studies are known by their names, all others by their numbers in the
// store: below different studies there may be data sets and analyses of one name, and no two items of a tree may
// share one.
#pragma once

#include "Workspace.h"
#include "corvane/Explorer.h"

#include <string>
#include <utility>

namespace studies {

class StoreItem : public corvane::AnyExplorerItem {
public:
    using AnyExplorerItem::Base;
    [[nodiscard]] virtual Id StudyId() const = 0; // 0 for none
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

    void OnProperties();
    void OnReport();
    void OnImport();
    void OnRename();
    void OnDuplicate();
    void OnDelete();
    // For the host, while the name is typed: why the study can't have it; "" when it can.
    [[nodiscard]] std::string NameProblem(const std::string& name);

    static constexpr auto Members =
        corvane::Methods<&StudyItem::OnProperties, &StudyItem::OnReport, &StudyItem::OnImport, &StudyItem::OnRename,
                         &StudyItem::OnDuplicate, &StudyItem::OnDelete, &StudyItem::NameProblem>();

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

    static constexpr auto Members = corvane::Methods<&DataSetsFolder::OnImport>();

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

    // Of the explorer's node.
    [[nodiscard]] static std::string KeyOf(Id dataSetId);

    Id StudyId() const override { return m_dataSet.studyId; }

    void OnOpen();
    void OnAnalyse(const corvane::Ref<corvane::ActionItem>& actionItem); // by the item's name
    void OnExport();
    void OnProperties();
    void OnDelete();

    static constexpr auto Members =
        corvane::Methods<&DataSetItem::OnOpen, &DataSetItem::OnAnalyse, &DataSetItem::OnExport,
                         &DataSetItem::OnProperties, &DataSetItem::OnDelete>();

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
    [[nodiscard]] const Analysis& What() const { return m_analysis; }

    void OnShow();
    void OnDelete();

    static constexpr auto Members = corvane::Methods<&AnalysisItem::OnShow, &AnalysisItem::OnDelete>();

private:
    void OnDisplayName(std::string& text) override { text = m_analysis.name; }

    Analysis m_analysis;
};

} // namespace studies
