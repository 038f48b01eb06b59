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

// What they have in common. A kind lists those of the members that it offers.
class StoreItem : public corvane::AnyExplorerItem {
public:
    using AnyExplorerItem::Base;
    // A study ('s'), data set ('d') or analysis ('a') with its number, or the folder of data sets ('D') or analyses
    // ('A') of the study of that number.
    [[nodiscard]] const StorePlace& Place() const { return m_place; }
    [[nodiscard]] Id StudyId() const { return m_studyId; } // 0 for none
    // Of the explorer's node.
    [[nodiscard]] virtual std::string NodeKey() const { return Base()->Name(); }
    // The store has that name for it by now.
    virtual void TakeName(const std::string& name) { m_name = name; }

    void OnDelete();
    void OnImport();
    [[nodiscard]] bool TakesSeveral(const std::string& action) { return action == "Delete"; }
    [[nodiscard]] std::string CanDrop(const corvane::Ref<corvane::Dropped>& dropped);
    void Drop(const corvane::Ref<corvane::Dropped>& dropped);

protected:
    void Join();

    StorePlace m_place = {};
    Id m_studyId = 0;
    std::string m_name; // in the store
};

class StudiesRoot final : public corvane::ExplorerItem<StudiesRoot, StoreItem> {
protected:
    void OnInitialize() override;
};

class StudyItem final : public corvane::ExplorerItem<StudyItem, StoreItem> {
public:
    explicit StudyItem(const Study& study);

    void TakeName(const std::string& name) override;

    void OnProperties();
    void OnReport();
    void OnExport();
    void OnRename();
    void OnDuplicate();
    // For the host, while the name is typed: why the study can't have it; "" when it can.
    [[nodiscard]] std::string NameProblem(const std::string& name);

    static constexpr auto Members =
        corvane::Methods<&StudyItem::OnProperties, &StudyItem::OnReport, &StudyItem::OnImport, &StudyItem::OnExport,
                         &StudyItem::OnRename, &StudyItem::OnDuplicate, &StudyItem::OnDelete, &StudyItem::NameProblem,
                         &StudyItem::TakesSeveral, &StudyItem::CanDrop, &StudyItem::Drop>();

protected:
    void OnInitialize() override { Join(); }

private:
    void OnAfterRename(const std::string& newName) override;
};

// The two folders of a study. The explorer makes them without saying for which study.
class DataSetsFolder final : public corvane::ExplorerItem<DataSetsFolder, StoreItem> {
public:
    explicit DataSetsFolder(Id studyId = 0) { m_studyId = studyId; }

    static constexpr auto Members =
        corvane::Methods<&DataSetsFolder::OnImport, &DataSetsFolder::CanDrop, &DataSetsFolder::Drop>();

protected:
    void OnInitialize() override;
};

class AnalysesFolder final : public corvane::ExplorerItem<AnalysesFolder, StoreItem> {
public:
    explicit AnalysesFolder(Id studyId = 0) { m_studyId = studyId; }

protected:
    void OnInitialize() override;
};

// A data set or an analysis.
class EntryItem : public StoreItem {
public:
    [[nodiscard]] std::string NodeKey() const override;

protected:
    void OnInitialize() override { Join(); }
    void OnDisplayName(std::string& text) override { text = m_name; }
};

class DataSetItem final : public corvane::ExplorerItem<DataSetItem, EntryItem> {
public:
    explicit DataSetItem(const DataSet& dataSet);

    void OnOpen();
    void OnAnalyse(const corvane::Ref<corvane::ActionItem>& actionItem); // by the item's name
    void OnExport();
    void OnProperties();

    static constexpr auto Members =
        corvane::Methods<&DataSetItem::OnOpen, &DataSetItem::OnAnalyse, &DataSetItem::OnExport,
                         &DataSetItem::OnProperties, &DataSetItem::OnDelete, &DataSetItem::TakesSeveral>();

private:
    [[nodiscard]] corvane::Ref<DataSetContext> Context() const;
};

class AnalysisItem final : public corvane::ExplorerItem<AnalysisItem, EntryItem> {
public:
    explicit AnalysisItem(const Analysis& analysis);

    void OnShow();

    static constexpr auto Members =
        corvane::Methods<&AnalysisItem::OnShow, &AnalysisItem::OnDelete, &AnalysisItem::TakesSeveral>();
};

} // namespace studies
