// The rows of a data set: sorted, filtered, edited, copied.
#pragma once

#include "Choices.h"
#include "DataTableView.h"
#include "Errors.h"
#include "QtText.h"
#include "Report.h"
#include "Windows.h"
#include "corvane/base/Failure.h"
#include "corvane/platform/Platform.h"
#include "desktop/QtPage.h"

namespace studies {

class TablePage final : public corvane::desktop::QtPage<TablePage, DataSetContext> {
    QPointer<DataTableView> m_view;
    QPointer<DataTableModel> m_model;
    std::string m_filter, m_filterProblem, m_count, m_columnChoices;
    std::string m_refusal;            // why what was entered into a cell hasn't been taken
    corvane::Long m_filterColumn = 0; // behind "Any column"
    corvane::Ref<corvane::ITimer> m_pause = corvane::CurrentPlatform().oTimers->NewTimer();
    bool m_isBehind = false; // the data have changed while a value was being typed

    // Not with every letter: in a large table a filter takes a moment.
    void OnInitialize() override {
        ReadColumns();
        Keep(About()->Space()->Changed.Subscribe([this](const std::string&) { FollowData(); }));
        m_pause->SetInterval(200);
        Keep(m_pause->Tick.Subscribe([this] { ShowFiltered(); }));
    }
    // What is in no study is as its file is: it has no properties of its own.
    void OnActivate() override {
        EnableAction("Properties", About()->Space()->Keeps());
        EnableAction("Delete", About()->Space()->Keeps());
    }
    QWidget* FirstFocus() override { return m_view; }
    QWidget* MakeWidget(QWidget* parent) override {
        m_view = new DataTableView(parent);
        m_model = new DataTableModel(About(), corvane::Ref<corvane::Object>(this), m_view);
        m_view->SetData(m_model);
        Connect(m_model.data(), &DataTableModel::Refused, [this](const QString& why) { ShowRefusal(Utf8(why)); });
        Connect(m_model.data(), &QAbstractItemModel::dataChanged, [this] { ShowRefusal({}); });
        Connect(m_model.data(), &QAbstractItemModel::modelReset, [this] { CountRows(); });
        Connect(m_view.data(), &DataTableView::EditingEnded, [this] {
            if (!m_isBehind)
                return;
            const std::string refusal = m_refusal; // of what was typed
            FollowData();
            ShowRefusal(refusal);
        });
        CountRows();
        return m_view;
    }
    [[nodiscard]] std::string Refusal() const { return {}; } // the field has nothing to show but its problem
    void ShowRefusal(const std::string& why) {
        m_refusal = why;
        OwnForm()->SetVisible("Refusal", !why.empty());
        OwnForm()->SetProblem("Refusal", why);
    }
    [[nodiscard]] const std::string& FilterColumnChoices() const { return m_columnChoices; }
    void OnFilterColumnChanged() { ShowFiltered(); }
    void OnFilterChanged() { m_pause->SetEnabled(true); }
    [[nodiscard]] const std::string& FilterProblem() const { return m_filterProblem; }
    void ReadColumns() {
        const std::vector<Column> columns = About()->Space()->GetStore().Columns(About()->Number());
        m_columnChoices = noneChoice + ColumnChoices(columns, false);
    }
    void ShowFiltered() {
        m_pause->SetEnabled(false);
        m_filterProblem.clear();
        try {
            if (m_model)
                m_model->SetFilter(m_filterColumn - 1, Text(m_filter));
        } catch (const corvane::Failure& failure) {
            m_filterProblem = failure.Description;
        }
        OwnForm()->SetProblem("Filter", m_filterProblem); // to be seen at once
    }
    void CountRows() {
        const auto all = static_cast<std::size_t>(About()->Info().rows);
        const auto shown = static_cast<std::size_t>(m_model->rowCount());
        m_count = shown == all ? RowsText(all) : Translated("%1 of %2", {CountText(shown), CountText(all)});
        OwnForm()->Refresh("Count");
    }
    void FollowData() {
        m_isBehind = m_view && m_view->IsEditing();
        if (!About()->Exists())
            return;
        ReadColumns();
        OwnForm()->Refresh("FilterColumn");
        if (m_model && !m_isBehind)
            m_model->Reload();
    }

    void OnCopy() { m_view ? m_view->Copy() : void(); }
    void OnDelete() { m_view ? m_view->ClearCells() : void(); } // what the selected cells hold
    void OnExport() { OpenWindow("Export", About(), {.caption = Translated("Export %1", {About()->Info().name})}); }
    void OnProperties() {
        OpenWindow("DataSetProperties", About(), {.caption = Translated("Properties of %1", {About()->Info().name})});
    }
    void OnAnalyse(const corvane::Ref<corvane::ActionItem>& actionItem) { // by the item's name
        OpenNewAnalysis(About(), actionItem->Name());
    }

public:
    static constexpr auto Members =
        corvane::Fields<&TablePage::OnCopy, &TablePage::OnDelete, &TablePage::OnExport, &TablePage::OnProperties,
                        &TablePage::OnAnalyse, &TablePage::m_filter, &TablePage::m_filterColumn, &TablePage::m_count,
                        &TablePage::FilterColumnChoices, &TablePage::OnFilterColumnChanged, &TablePage::OnFilterChanged,
                        &TablePage::FilterProblem, &TablePage::Refusal>();
};

} // namespace studies
