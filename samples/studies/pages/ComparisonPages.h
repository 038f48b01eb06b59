// The pages of a comparison: Welch's t-test of two groups, and the bootstrap of one column.
#pragma once

#include "Bootstrap.h"
#include "ChartPages.h"

class QPushButton;

namespace studies {

class ComparisonPage final : public corvane::desktop::QtPage<ComparisonPage, AnalysisDocument, ChartPage> {
public:
    static constexpr auto Members =
        corvane::Methods<&ComparisonPage::OnSaveAnalysis, &ComparisonPage::OnExport, &ComparisonPage::OnCopy,
                         &ComparisonPage::OnTable, &ComparisonPage::OnAnalyse>();

protected:
    [[nodiscard]] AnalysisKind Kind() const override { return AnalysisKind::Comparison; }
    QWidget* MakeWidget(QWidget* parent) override;
    void ShowAnalysis() override;
    void AddControls(QBoxLayout& row) override;
    void ShowSettings() override;
    [[nodiscard]] ChartScene Scene() const override;

private:
    QPointer<QComboBox> m_column;
    QPointer<QComboBox> m_group;
    QPointer<QComboBox> m_first;
    QPointer<QComboBox> m_second;
    QPointer<QLabel> m_result;
};

class BootstrapPage final : public corvane::desktop::QtPage<BootstrapPage, AnalysisDocument, AnalysisPage> {
public:
    QWidget* FirstFocus() override;

    void OnExport(); // the figures, as text

    static constexpr auto Members = corvane::Methods<&BootstrapPage::OnSaveAnalysis, &BootstrapPage::OnExport,
                                                     &BootstrapPage::OnTable, &BootstrapPage::OnAnalyse>();

protected:
    [[nodiscard]] AnalysisKind Kind() const override { return AnalysisKind::Bootstrap; }
    QWidget* MakeWidget(QWidget* parent) override;
    void ShowAnalysis() override;

private:
    void Run();
    void Run(const SharedTable& table);
    void ShowResult();

    QPointer<QComboBox> m_column;
    QPointer<QComboBox> m_figure;
    QPointer<QSpinBox> m_resamples;
    QPointer<QSpinBox> m_seed;
    QPointer<QPushButton> m_run;
    QPointer<QLabel> m_resultLabel;
    QPointer<ChartWidget> m_chart; // of the resamples
    bool m_running = false;
};

} // namespace studies
