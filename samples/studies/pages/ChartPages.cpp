#include "ChartPages.h"

#include "ChartWidget.h"
#include "QtText.h"
#include "Statistics.h"
#include "corvane/author/Host.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

namespace studies {

using namespace corvane;

std::vector<Column> DividingColumns(const Table& table) {
    std::vector<Column> columns;
    for (const std::string& name : GroupColumns(table))
        columns.push_back({name, ColumnType::Text, {}, {}, {}});
    return columns;
}

QWidget* ChartPage::FirstFocus() {
    return m_chart;
}

QWidget* ChartPage::MakeWidget(QWidget* parent) {
    auto* page = new QWidget(parent);
    auto* layout = new QVBoxLayout(page);
    auto* row = new QHBoxLayout;
    m_chart = new ChartWidget;
    AddControls(*row);
    layout->addLayout(row);
    layout->addWidget(m_chart, 1);
    ShowAnalysis();
    return page;
}

void ChartPage::ShowAnalysis() {
    ShowSettings();
    m_chart->SetScene(Scene());
}

void ChartPage::OnExport() {
    const std::string path = AskForFile("PNG picture (*.png)|*.png|SVG drawing (*.svg)|*.svg", ".png");
    if (path.empty())
        return;
    SaveChart(Scene(), QSize(800, 560), Text(path));
    SetStatus("Exported to " + path);
}

void ChartPage::OnCopy() {
    QGuiApplication::clipboard()->setImage(ChartPicture(Scene(), QSize(800, 560)));
    SetStatus("The chart has been copied");
}

void HistogramPage::AddControls(QBoxLayout& row) {
    m_column = new QComboBox;
    m_group = new QComboBox;
    m_bins = new QSpinBox;
    m_bins->setRange(0, 200);
    m_bins->setSpecialValueText("Automatic");
    m_bins->setKeyboardTracking(false);
    m_bins->setToolTip("The approximate number of bins; their edges are round numbers");
    AddLabelled(row, "&Column", m_column);
    AddLabelled(row, "&By", m_group);
    AddLabelled(row, "B&ins", m_bins);
    Bind(m_column, &AnalysisSettings::columnX);
    Bind(m_group, &AnalysisSettings::groupColumn);
    QObject::connect(m_bins, &QSpinBox::valueChanged, m_bins, [this](int bins) {
        Guarded([&] { ChangeSettings([&](AnalysisSettings& settings) { settings.bins = bins; }); });
    });
}

void HistogramPage::ShowSettings() {
    const AnalysisSettings& settings = Document()->Settings();
    FillColumns(*m_column, Data().columns, true);
    Choose(*m_column, settings.columnX);
    FillColumns(*m_group, DividingColumns(Data()), false, "None");
    Choose(*m_group, settings.groupColumn);
    const QSignalBlocker blocker(m_bins);
    m_bins->setValue(settings.bins);
}

ChartScene HistogramPage::Scene() const {
    return HistogramScene(Data(), Document()->Settings());
}

void ScatterPage::AddControls(QBoxLayout& row) {
    m_columnX = new QComboBox;
    m_columnY = new QComboBox;
    m_group = new QComboBox;
    AddLabelled(row, "&Y", m_columnY);
    AddLabelled(row, "&X", m_columnX);
    AddLabelled(row, "&By", m_group);
    Bind(m_columnX, &AnalysisSettings::columnX);
    Bind(m_columnY, &AnalysisSettings::columnY);
    Bind(m_group, &AnalysisSettings::groupColumn);
}

void ScatterPage::ShowSettings() {
    const AnalysisSettings& settings = Document()->Settings();
    FillColumns(*m_columnX, Data().columns, true);
    Choose(*m_columnX, settings.columnX);
    FillColumns(*m_columnY, Data().columns, true);
    Choose(*m_columnY, settings.columnY);
    FillColumns(*m_group, DividingColumns(Data()), false, "None");
    Choose(*m_group, settings.groupColumn);
}

ChartScene ScatterPage::Scene() const {
    return ScatterScene(Data(), Document()->Settings());
}

} // namespace studies
