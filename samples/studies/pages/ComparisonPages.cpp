#include "ComparisonPages.h"

#include "ChartWidget.h"
#include "ComparisonText.h"
#include "Errors.h"
#include "Progress.h"
#include "QtText.h"
#include "Report.h"
#include "Shell.h"
#include "Statistics.h"

#include <QFile>
#include <QFormLayout>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

namespace studies {

using namespace corvane;

namespace {

std::vector<std::string> GroupsOf(const Table& oTable, const std::string& sColumn) {
    const Column* pColumn = oTable.Find(sColumn);
    return pColumn ? ValuesOf(*pColumn) : std::vector<std::string>();
}

} // namespace

QWidget* ComparisonPage::MakeWidget(QWidget* pParent) {
    m_pResult = new ResultLabel;
    QWidget* pPage = ChartPage::MakeWidget(pParent);
    static_cast<QBoxLayout*>(pPage->layout())->addWidget(m_pResult);
    return pPage;
}

void ComparisonPage::AddControls(QBoxLayout& oRow) {
    m_pColumn = new QComboBox;
    m_pGroup = new QComboBox;
    m_pFirst = new QComboBox;
    m_pSecond = new QComboBox;
    AddLabelled(oRow, "&Column", m_pColumn);
    AddLabelled(oRow, "Group &by", m_pGroup);
    AddLabelled(oRow, "Gr&oups", m_pFirst);
    AddLabelled(oRow, "a&nd", m_pSecond);
    Bind(m_pColumn, &AnalysisSettings::sColumnX);
    Bind(m_pFirst, &AnalysisSettings::sFirstGroup);
    Bind(m_pSecond, &AnalysisSettings::sSecondGroup);
    QObject::connect(m_pGroup, &QComboBox::currentIndexChanged, m_pGroup, [this] {
        Guarded([this] {
            ChangeSettings([this](AnalysisSettings& oSettings) {
                oSettings.sGroupColumn = Chosen(*m_pGroup);
                ChooseGroups(Data(), oSettings);
            });
        });
    });
}

void ComparisonPage::ShowSettings() {
    const AnalysisSettings& oSettings = Document()->Settings();
    FillColumns(*m_pColumn, Data().aColumns, true);
    Choose(*m_pColumn, oSettings.sColumnX);
    FillColumns(*m_pGroup, DividingColumns(Data()), false);
    Choose(*m_pGroup, oSettings.sGroupColumn);
    const std::vector<std::string> aGroups = GroupsOf(Data(), oSettings.sGroupColumn);
    FillTexts(*m_pFirst, aGroups);
    Choose(*m_pFirst, oSettings.sFirstGroup);
    FillTexts(*m_pSecond, aGroups);
    Choose(*m_pSecond, oSettings.sSecondGroup);
}

void ComparisonPage::ShowAnalysis() {
    ChartPage::ShowAnalysis();
    // Where there is no chart, it says why; once is enough.
    m_pResult->setText(Scene().sEmpty.empty()
                           ? Text(ComparisonText(Data(), Document()->Settings(), ReadPreferences().nDecimals))
                           : QString());
}

ChartScene ComparisonPage::Scene() const {
    return ComparisonScene(Data(), Document()->Settings());
}

QWidget* BootstrapPage::FirstFocus() {
    return m_pRun;
}

QWidget* BootstrapPage::MakeWidget(QWidget* pParent) {
    auto* pPage = new QWidget(pParent);
    m_pColumn = new QComboBox;
    m_pFigure = new QComboBox;
    for (const BootstrapFigure eFigure : {BootstrapFigure::Mean, BootstrapFigure::Median, BootstrapFigure::Deviation})
        m_pFigure->addItem(Text(NameOf(eFigure)), Text(NameOf(eFigure)));
    m_pResamples = new QSpinBox;
    m_pResamples->setRange(100, 100000);
    m_pResamples->setSingleStep(100);
    m_pResamples->setGroupSeparatorShown(true);
    m_pSeed = new QSpinBox;
    m_pSeed->setRange(0, 999999);
    m_pSeed->setToolTip("The same seed gives the same result again");
    m_pRun = new QPushButton("&Run");
    m_pRun->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    m_pResult = new ResultLabel;
    auto* pForm = new QFormLayout;
    pForm->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    pForm->addRow("&Column", m_pColumn);
    pForm->addRow("Stat&istic", m_pFigure);
    pForm->addRow("Resam&ples", m_pResamples);
    pForm->addRow("&Seed", m_pSeed);
    pForm->addRow(QString(), m_pRun);
    auto* pLayout = new QVBoxLayout(pPage);
    pLayout->addLayout(pForm);
    pLayout->addSpacing(pPage->fontMetrics().height());
    pLayout->addWidget(m_pResult);
    pLayout->addStretch(1);
    Bind(m_pColumn, &AnalysisSettings::sColumnX);
    const auto OnChange = [this] {
        Guarded([this] {
            ChangeSettings([this](AnalysisSettings& oSettings) {
                oSettings.oBootstrap.eFigure = BootstrapFigureOf(Chosen(*m_pFigure));
                oSettings.oBootstrap.nResamples = m_pResamples->value();
                oSettings.oBootstrap.nSeed = static_cast<std::uint64_t>(m_pSeed->value());
            });
        });
    };
    QObject::connect(m_pFigure, &QComboBox::currentIndexChanged, pPage, OnChange);
    QObject::connect(m_pResamples, &QSpinBox::valueChanged, pPage, OnChange);
    QObject::connect(m_pSeed, &QSpinBox::valueChanged, pPage, OnChange);
    QObject::connect(m_pRun, &QPushButton::clicked, pPage, [this] { Guarded([this] { Run(); }); });
    ShowAnalysis();
    return pPage;
}

void BootstrapPage::ShowAnalysis() {
    const AnalysisSettings& oSettings = Document()->Settings();
    FillColumns(*m_pColumn, Data().aColumns, true);
    m_pColumn->setMinimumContentsLength(24); // there is room, and names have units
    Choose(*m_pColumn, oSettings.sColumnX);
    Choose(*m_pFigure, std::string(NameOf(oSettings.oBootstrap.eFigure)));
    const QSignalBlocker oResamplesBlocker(m_pResamples);
    const QSignalBlocker oSeedBlocker(m_pSeed);
    m_pResamples->setValue(oSettings.oBootstrap.nResamples);
    m_pSeed->setValue(static_cast<int>(oSettings.oBootstrap.nSeed));
    ShowResult();
}

void BootstrapPage::ShowResult() {
    const Ref<Workspace>& oSpace = Document()->Data()->Space();
    if (m_oResult &&
        (!m_oResultOf.IsLike(Document()->Settings()) || m_nResultRevision != oSpace->GetStore().DataRevision()))
        m_oResult.reset();
    const Column* pColumn = Data().Find(Document()->Settings().sColumnX);
    if (m_oResult && pColumn)
        m_pResult->setText(
            Text(BootstrapText(*m_oResult, Document()->Settings(), *pColumn, ReadPreferences().nDecimals)));
    else
        m_pResult->setText("Run resamples the data: it draws as many rows as there are, with replacement, many times. "
                           "The variation of the statistic among these samples shows how precise it is.");
}

// The bar lets events in while it waits, so the page holds itself and what it works on until the end.
void BootstrapPage::Run() {
    const Column* pColumn = Data().Find(Document()->Settings().sColumnX);
    if (m_bRunning || !pColumn || !pColumn->IsNumeric())
        return;
    const Ref<BootstrapPage> oSelf(this);
    const Ref<AnalysisDocument> oDocument = Document();
    const std::vector<double> aValues = pColumn->aNumbers;
    const std::uint64_t nRevision = oDocument->Data()->Space()->GetStore().DataRevision();
    const AnalysisSettings oSettings = oDocument->Settings();
    m_bRunning = true;
    m_pRun->setEnabled(false);
    std::optional<BootstrapResult> oResult;
    try {
        ShowStatus("Resampling " + CountText(static_cast<std::size_t>(oSettings.oBootstrap.nResamples)) + " times");
        Progress oProgress(oSettings.oBootstrap.nResamples, Base());
        oResult = RunBootstrap(aValues, oSettings.oBootstrap, [&](int) { return oProgress.Step(); });
    } catch (...) {
        m_bRunning = false;
        if (m_pRun)
            m_pRun->setEnabled(true);
        throw;
    }
    m_bRunning = false;
    if (!IsAlive() || !m_pRun)
        return;
    m_pRun->setEnabled(true);
    m_oResult = oResult;
    m_oResultOf = oSettings;
    m_nResultRevision = nRevision;
    ShowResult();
    ShowStatus(oResult ? Utf8(m_pResult->text().section('\n', 0, 0)) : "Cancelled; nothing has been changed");
}

void BootstrapPage::OnExport() {
    if (!m_oResult)
        FailWith("There is nothing to export yet. Choose Run first.");
    const std::string sPath = AskForFile("Text (*.txt)|*.txt", ".txt");
    if (sPath.empty())
        return;
    QFile oFile(Text(sPath));
    const QByteArray sText = (Text(Document()->Name()) + "\n\n" + m_pResult->text() + "\n").toUtf8();
    if (!oFile.open(QIODevice::WriteOnly) || oFile.write(sText) != sText.size() || !oFile.flush())
        FailWith("The file “" + sPath + "” can't be written.");
    ShowStatus("Exported to " + sPath);
}

} // namespace studies
