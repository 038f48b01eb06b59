#include "ChartPages.h"

#include "ChartWidget.h"
#include "QtText.h"
#include "Shell.h"
#include "Statistics.h"

#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

namespace studies {

std::vector<Column> DividingColumns(const Table& oTable) {
    std::vector<Column> aColumns;
    for (const std::string& sName : GroupColumns(oTable))
        aColumns.push_back({sName, ColumnType::Text, {}, {}, {}});
    return aColumns;
}

QWidget* ChartPage::FirstFocus() {
    return m_pChart;
}

QWidget* ChartPage::MakeWidget(QWidget* pParent) {
    auto* pPage = new QWidget(pParent);
    auto* pLayout = new QVBoxLayout(pPage);
    auto* pRow = new QHBoxLayout;
    m_pChart = new ChartWidget;
    AddControls(*pRow);
    pLayout->addLayout(pRow);
    pLayout->addWidget(m_pChart, 1);
    ShowAnalysis();
    return pPage;
}

void ChartPage::ShowAnalysis() {
    ShowSettings();
    m_pChart->SetScene(Scene());
}

void ChartPage::OnExport() {
    const std::string sPath = AskForFile("PNG picture (*.png)|*.png|SVG drawing (*.svg)|*.svg", ".png");
    if (sPath.empty())
        return;
    SaveChart(Scene(), QSize(800, 560), Text(sPath));
    ShowStatus("Exported to " + sPath);
}

void HistogramPage::AddControls(QBoxLayout& oRow) {
    m_pColumn = new QComboBox;
    m_pGroup = new QComboBox;
    m_pBins = new QSpinBox;
    m_pBins->setRange(0, 200);
    m_pBins->setSpecialValueText("Automatic");
    m_pBins->setKeyboardTracking(false);
    m_pBins->setToolTip("The approximate number of bins; their edges are round numbers");
    AddLabelled(oRow, "&Column", m_pColumn);
    AddLabelled(oRow, "&By", m_pGroup);
    AddLabelled(oRow, "B&ins", m_pBins);
    Bind(m_pColumn, &AnalysisSettings::sColumnX);
    Bind(m_pGroup, &AnalysisSettings::sGroupColumn);
    QObject::connect(m_pBins, &QSpinBox::valueChanged, m_pBins, [this](int nBins) {
        Guarded([&] { ChangeSettings([&](AnalysisSettings& oSettings) { oSettings.nBins = nBins; }); });
    });
}

void HistogramPage::ShowSettings() {
    const AnalysisSettings& oSettings = Document()->Settings();
    FillColumns(*m_pColumn, Data().aColumns, true);
    Choose(*m_pColumn, oSettings.sColumnX);
    FillColumns(*m_pGroup, DividingColumns(Data()), false, "None");
    Choose(*m_pGroup, oSettings.sGroupColumn);
    const QSignalBlocker oBlocker(m_pBins);
    m_pBins->setValue(oSettings.nBins);
}

ChartScene HistogramPage::Scene() const {
    return HistogramScene(Data(), Document()->Settings());
}

void ScatterPage::AddControls(QBoxLayout& oRow) {
    m_pColumnX = new QComboBox;
    m_pColumnY = new QComboBox;
    m_pGroup = new QComboBox;
    AddLabelled(oRow, "&Y", m_pColumnY);
    AddLabelled(oRow, "&X", m_pColumnX);
    AddLabelled(oRow, "&By", m_pGroup);
    Bind(m_pColumnX, &AnalysisSettings::sColumnX);
    Bind(m_pColumnY, &AnalysisSettings::sColumnY);
    Bind(m_pGroup, &AnalysisSettings::sGroupColumn);
}

void ScatterPage::ShowSettings() {
    const AnalysisSettings& oSettings = Document()->Settings();
    FillColumns(*m_pColumnX, Data().aColumns, true);
    Choose(*m_pColumnX, oSettings.sColumnX);
    FillColumns(*m_pColumnY, Data().aColumns, true);
    Choose(*m_pColumnY, oSettings.sColumnY);
    FillColumns(*m_pGroup, DividingColumns(Data()), false, "None");
    Choose(*m_pGroup, oSettings.sGroupColumn);
}

ChartScene ScatterPage::Scene() const {
    return ScatterScene(Data(), Document()->Settings());
}

} // namespace studies
