// The pages that show a chart of an analysis.
#pragma once

#include "AnalysisPage.h"
#include "Chart.h"

class QSpinBox;

namespace studies {

class ChartWidget;

class ChartPage : public AnalysisPage {
public:
    QWidget* FirstFocus() override;

    void OnExport(); // the picture, as PNG or SVG
    void OnCopy();   // the picture

protected:
    QWidget* MakeWidget(QWidget* parent) override;
    void ShowAnalysis() override;
    virtual void AddControls(QBoxLayout& row) = 0;
    virtual void ShowSettings() = 0;
    [[nodiscard]] virtual ChartScene Scene() const = 0;

    QPointer<ChartWidget> m_chart;
};

class HistogramPage final : public corvane::desktop::QtPage<HistogramPage, AnalysisDocument, ChartPage> {
public:
    static constexpr auto Members =
        corvane::Methods<&HistogramPage::OnSaveAnalysis, &HistogramPage::OnExport, &HistogramPage::OnCopy,
                         &HistogramPage::OnTable, &HistogramPage::OnAnalyse>();

protected:
    [[nodiscard]] AnalysisKind Kind() const override { return AnalysisKind::Histogram; }
    void AddControls(QBoxLayout& row) override;
    void ShowSettings() override;
    [[nodiscard]] ChartScene Scene() const override;

private:
    QPointer<QComboBox> m_column;
    QPointer<QComboBox> m_group;
    QPointer<QSpinBox> m_bins;
};

class ScatterPage final : public corvane::desktop::QtPage<ScatterPage, AnalysisDocument, ChartPage> {
public:
    static constexpr auto Members =
        corvane::Methods<&ScatterPage::OnSaveAnalysis, &ScatterPage::OnExport, &ScatterPage::OnCopy,
                         &ScatterPage::OnTable, &ScatterPage::OnAnalyse>();

protected:
    [[nodiscard]] AnalysisKind Kind() const override { return AnalysisKind::Scatter; }
    void AddControls(QBoxLayout& row) override;
    void ShowSettings() override;
    [[nodiscard]] ChartScene Scene() const override;

private:
    QPointer<QComboBox> m_columnX;
    QPointer<QComboBox> m_columnY;
    QPointer<QComboBox> m_group;
};

// The columns that can divide a table, for a control that chooses one.
[[nodiscard]] std::vector<Column> DividingColumns(const Table& table);

} // namespace studies
