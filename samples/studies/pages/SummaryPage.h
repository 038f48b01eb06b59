// Figures of each column, of all rows or by group: of an analysis, or of all columns of a data set beside its table.
#pragma once

#include "PageParts.h"
#include "SummaryRows.h"
#include "Workspace.h"
#include "corvane/Jobs.h"
#include "desktop/QtPage.h"

namespace studies {

class FigureTable;

class SummaryPage final : public corvane::desktop::QtPage<SummaryPage> {
public:
    [[nodiscard]] bool IsChanged() override;
    QWidget* FirstFocus() override;

    void OnCopy();
    void OnSaveAnalysis();
    void OnExport();
    void OnTable();
    void OnAnalyse(const corvane::Ref<corvane::ActionItem>& actionItem); // another one of the data, by the item's name

    static constexpr auto Members =
        corvane::Methods<&SummaryPage::OnCopy, &SummaryPage::OnSaveAnalysis, &SummaryPage::OnExport,
                         &SummaryPage::OnTable, &SummaryPage::OnAnalyse>();

protected:
    void OnInitialize() override;
    void OnActivate() override;
    void OnSave() override;
    QWidget* MakeWidget(QWidget* parent) override;

private:
    struct Figures {
        std::vector<std::string> groupColumns;
        SummaryRows rows;
    };
    [[nodiscard]] static Figures FiguresIn(const Table& table, const std::string& groupName, int decimals,
                                           corvane::JobProgress* progress);
    [[nodiscard]] corvane::Ref<DataSetContext> Data() const;
    void ChooseGroup();
    void Follow();
    void ShowFigures();
    void Show(const Table& table, const Figures& figures);

    corvane::Ref<AnalysisDocument> m_document; // nothing for a data set
    std::string m_groupName;
    corvane::Ref<corvane::IJob> m_job; // that computes what is to be shown
    int m_number = 0;                  // of the latest figures
    QPointer<QComboBox> m_group;
    QPointer<FigureTable> m_numbers;
    QPointer<FigureTable> m_texts;
    QPointer<QLabel> m_size;
};

} // namespace studies
