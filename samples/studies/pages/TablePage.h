// The rows of a data set: sorted, filtered, edited, copied.
#pragma once

#include "PageParts.h"
#include "StudiesPage.h"

class QLineEdit;

namespace studies {

class DataTableModel;
class DataTableView;

class TablePage final : public corvane::Automation<TablePage, StudiesPage> {
public:
    std::string_view TypeName() const override { return "TablePage"; }
    QWidget* FirstFocus() override;

    void OnCopy();
    void OnExport();
    void OnProperties();
    void OnAnalyse(const corvane::Ref<corvane::ActionItem>& actionItem); // by the item's name

    static constexpr auto Members = corvane::MemberTable(
        corvane::Method("OnCopy", &TablePage::OnCopy), corvane::Method("OnExport", &TablePage::OnExport),
        corvane::Method("OnProperties", &TablePage::OnProperties), corvane::Method("OnAnalyse", &TablePage::OnAnalyse));

protected:
    void OnInitialize() override;
    void OnActivate() override;
    QWidget* MakeWidget(QWidget* parent) override;

private:
    QLayout* MakeFilterRow();
    void Filter();
    void CountRows();
    void FollowData();

    QPointer<DataTableView> m_view;
    QPointer<DataTableModel> m_model;
    QPointer<QComboBox> m_filterColumn;
    QPointer<QLineEdit> m_filter;
    QPointer<QLabel> m_count;
    QPointer<ProblemLabel> m_problem;
};

} // namespace studies
