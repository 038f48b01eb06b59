#include "SummaryPage.h"

#include "Errors.h"
#include "FigureTable.h"
#include "QtText.h"
#include "Report.h"
#include "Shell.h"
#include "Statistics.h"
#include "SummaryRows.h"
#include "Windows.h"

#include <QFile>
#include <QVBoxLayout>

namespace studies {

using namespace corvane;

void SummaryPage::OnInitialize() {
    m_oDocument = Base()->BusinessContext().TryAs<AnalysisDocument>();
    if (m_oDocument) {
        m_sGroup = m_oDocument->Settings().sGroupColumn;
        Keep(m_oDocument->Changed.Subscribe([this] { Follow(); }));
    }
    Keep(Data()->Space()->Changed.Subscribe([this](const std::string&) { Follow(); }));
}

Ref<DataSetContext> SummaryPage::Data() const {
    return m_oDocument ? m_oDocument->Data() : About<DataSetContext>();
}

void SummaryPage::OnActivate() {
    EnableAction("Save", m_oDocument && m_oDocument->IsUnsaved());
}

bool SummaryPage::IsChanged() {
    return m_oDocument && m_oDocument->IsChanged();
}

QWidget* SummaryPage::FirstFocus() {
    return m_pNumbers;
}

QWidget* SummaryPage::MakeWidget(QWidget* pParent) {
    auto* pPage = new QWidget(pParent);
    auto* pLayout = new QVBoxLayout(pPage);
    auto* pRow = new QHBoxLayout;
    m_pGroup = new QComboBox;
    FillColumns(*m_pGroup, {}, false, "None");
    m_pSize = new QLabel;
    m_pNumbers = new FigureTable;
    m_pNumbers->setAccessibleName("Statistics of numeric columns");
    m_pTexts = new FigureTable;
    m_pTexts->setAccessibleName("Statistics of text columns");
    AddLabelled(*pRow, "&By", m_pGroup);
    pRow->setStretch(1, 0);
    pRow->addStretch(1);
    pRow->addWidget(m_pSize);
    pLayout->addLayout(pRow);
    pLayout->addWidget(m_pNumbers, 3);
    pLayout->addWidget(m_pTexts, 2);
    pLayout->addStretch();
    QObject::connect(m_pGroup, &QComboBox::currentIndexChanged, pPage, [this] { Guarded([this] { ChooseGroup(); }); });
    ShowFigures();
    return pPage;
}

void SummaryPage::ChooseGroup() {
    m_sGroup = Chosen(*m_pGroup);
    if (m_oDocument) {
        AnalysisSettings oSettings = m_oDocument->Settings();
        oSettings.sGroupColumn = m_sGroup;
        m_oDocument->SetSettings(oSettings);
    } else {
        ShowFigures();
    }
}

void SummaryPage::Follow() {
    if (!Data()->Exists())
        return; // the window is about to close
    if (m_oDocument) {
        m_sGroup = m_oDocument->Settings().sGroupColumn;
        EnableAction("Save", m_oDocument->IsUnsaved());
        Base()->Window()->SetCaption(m_oDocument->Name());
    }
    ShowFigures();
    Reconsider();
}

void SummaryPage::ShowFigures() {
    if (!m_pNumbers)
        return;
    const Table& oTable = Data()->Data();
    std::vector<Column> aGroupColumns;
    for (const std::string& sName : GroupColumns(oTable))
        aGroupColumns.push_back({oTable.Find(sName)->sName, ColumnType::Text, {}, {}, {}});
    FillColumns(*m_pGroup, aGroupColumns, false, "None");
    Choose(*m_pGroup, m_sGroup);
    const SummaryRows oRows = RowsOfSummary(oTable, m_sGroup, ReadPreferences().nDecimals);
    const auto Show = [](FigureTable& oView, const SummaryBlock& oBlock) {
        std::vector<FigureColumn> aNames;
        for (const SummaryBlock::Name& oName : oBlock.aNames)
            aNames.push_back({Text(oName.sText), oName.bFigures});
        std::vector<QStringList> aLines;
        for (const std::vector<std::string>& aLine : oBlock.aRows) {
            aLines.emplace_back();
            for (const std::string& sField : aLine)
                aLines.back().append(Text(sField));
        }
        oView.SetContent(aNames, aLines);
        oView.setMaximumHeight(oView.HeightOfAll());
        oView.setHidden(aLines.empty());
    };
    Show(*m_pNumbers, oRows.oNumbers);
    Show(*m_pTexts, oRows.oTexts);
    m_pSize->setText(Text(SizeText(oTable.nRows, oTable.aColumns.size())));
}

void SummaryPage::OnSave() {
    if (IsChanged())
        m_oDocument->Save();
}

void SummaryPage::OnSaveAnalysis() {
    m_oDocument->Save();
}

void SummaryPage::OnTable() {
    OpenDataWindow(Data());
}

void SummaryPage::OnAnalyse(const Ref<ActionItem>& oActionItem) {
    OpenNewAnalysis(Data(), oActionItem->Name());
}

void SummaryPage::OnCopy() {
    if (m_pTexts && m_pTexts->hasFocus())
        m_pTexts->Copy();
    else if (m_pNumbers)
        m_pNumbers->Copy();
}

void SummaryPage::OnExport() {
    const std::string sPath = AskForSavePath("Export", "Text with tabs (*.tsv)|*.tsv", m_oDocument->Name() + ".tsv");
    if (sPath.empty())
        return;
    QFile oFile(Text(sPath));
    const QByteArray sText =
        (m_pNumbers->AsText() + (m_pTexts->rowCount() > 0 ? "\n" + m_pTexts->AsText() : QString())).toUtf8();
    if (!oFile.open(QIODevice::WriteOnly) || oFile.write(sText) != sText.size() || !oFile.flush())
        FailWith("The file “" + sPath + "” can't be written.");
    ShowStatus("Exported to " + sPath);
}

} // namespace studies
