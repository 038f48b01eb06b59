// The rows of a data set: sorted, filtered, edited, copied.
#pragma once

#include "PageParts.h"
#include "Workspace.h"
#include "desktop/QtPage.h"

class QLineEdit;

namespace studies {

class DataTableModel;
class DataTableView;

class TablePage final : public corvane::desktop::QtPage<TablePage, DataSetContext> {
public:
    QWidget* FirstFocus() override;

    void OnCopy();
    void OnDelete(); // what the selected cells hold
    void OnExport();
    void OnProperties();
    void OnAnalyse(const corvane::Ref<corvane::ActionItem>& actionItem); // by the item's name

    static constexpr auto Members = corvane::Methods<&TablePage::OnCopy, &TablePage::OnDelete, &TablePage::OnExport,
                                                     &TablePage::OnProperties, &TablePage::OnAnalyse>();

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
    bool m_isBehind = false; // the data have changed while a value was being typed
};

} // namespace studies
