#include "PropertyPages.h"

#include "QtText.h"
#include "Report.h"

#include <QFormLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTableWidget>
#include <QVBoxLayout>

namespace studies {

using namespace corvane;

QWidget* NamePage::MakeWidget(QWidget* pParent) {
    auto* pPage = new QWidget(pParent);
    m_pName = new QLineEdit(Text(m_sName));
    m_pNotes = new QPlainTextEdit(Text(m_sNotes));
    m_pNotes->setTabChangesFocus(true);
    QSizePolicy oWhatIsLeft(QSizePolicy::Expanding, QSizePolicy::Ignored);
    oWhatIsLeft.setVerticalStretch(1);
    m_pNotes->setSizePolicy(oWhatIsLeft);
    m_pNotes->setMinimumHeight(4 * m_pNotes->fontMetrics().lineSpacing());
    m_pProblem = new ProblemLabel;
    auto* pForm = new QFormLayout(pPage);
    pForm->addRow("&Name", m_pName);
    pForm->addRow(QString(), m_pProblem);
    for (const auto& [sCaption, sText] : Facts()) {
        auto* pText = new QLabel(sText);
        pText->setWordWrap(true);
        pText->setTextFormat(Qt::PlainText);
        pText->setTextInteractionFlags(Qt::TextSelectableByMouse);
        pForm->addRow(sCaption, pText);
    }
    pForm->addRow("N&otes", m_pNotes);
    const auto OnChange = [this] {
        Guarded([this] {
            m_pProblem->Show(Text(Problem()));
            Reconsider();
        });
    };
    QObject::connect(m_pName, &QLineEdit::textChanged, pPage, OnChange);
    QObject::connect(m_pNotes, &QPlainTextEdit::textChanged, pPage, OnChange);
    return pPage;
}

QWidget* NamePage::FirstFocus() {
    m_pName->selectAll();
    return m_pName;
}

std::string NamePage::Name() const {
    return m_pName ? Utf8(m_pName->text().trimmed()) : m_sName;
}

std::string NamePage::Notes() const {
    return m_pNotes ? Utf8(m_pNotes->toPlainText()) : m_sNotes;
}

std::string NamePage::Problem() {
    return Name() == m_sName ? std::string() : NameProblem(Name());
}

bool NamePage::IsChanged() {
    return Name() != m_sName || Notes() != m_sNotes;
}

void StudyPropertiesPage::OnInitialize() {
    const Study oStudy = About<StudyContext>()->Space()->GetStore().StudyOf(About<StudyContext>()->Number());
    m_sName = oStudy.sName;
    m_sNotes = oStudy.sNotes;
}

std::string StudyPropertiesPage::NameProblem(const std::string& sName) {
    return About<StudyContext>()->Space()->GetStore().NameProblem(sName, About<StudyContext>()->Number());
}

std::vector<std::pair<QString, QString>> StudyPropertiesPage::Facts() {
    Store& oStore = About<StudyContext>()->Space()->GetStore();
    const std::size_t nDataSets = oStore.DataSets(About<StudyContext>()->Number()).size();
    const std::size_t nAnalyses = oStore.Analyses(About<StudyContext>()->Number()).size();
    return {{"Data sets", Text(CountText(nDataSets))}, {"Analyses", Text(CountText(nAnalyses))}};
}

void StudyPropertiesPage::OnSave() {
    if (!IsChanged())
        return;
    const Ref<StudyContext> oStudy = About<StudyContext>();
    oStudy->Space()->GetStore().SetStudyProperties(oStudy->Number(), Name(), Notes());
    m_sName = Name();
    m_sNotes = Notes();
    oStudy->Space()->Tell("“" + m_sName + "” has been changed");
}

void DataSetPropertiesPage::OnInitialize() {
    const DataSet oDataSet = About<DataSetContext>()->Info();
    m_sName = oDataSet.sName;
    m_sNotes = oDataSet.sNotes;
}

std::string DataSetPropertiesPage::NameProblem(const std::string& sName) {
    const DataSet oDataSet = About<DataSetContext>()->Info();
    return About<DataSetContext>()->Space()->GetStore().DataSetNameProblem(sName, oDataSet.nStudyId, oDataSet.nId);
}

std::vector<std::pair<QString, QString>> DataSetPropertiesPage::Facts() {
    const DataSet oDataSet = About<DataSetContext>()->Info();
    const std::size_t nColumns = About<DataSetContext>()->Space()->GetStore().Columns(oDataSet.nId).size();
    return {{"Source", Text(oDataSet.sSource)},
            {"Size", Text(SizeText(static_cast<std::size_t>(oDataSet.nRows), nColumns))}};
}

void DataSetPropertiesPage::OnSave() {
    if (!IsChanged())
        return;
    const Ref<DataSetContext> oData = About<DataSetContext>();
    oData->Space()->GetStore().SetDataSetProperties(oData->Number(), {Name(), Notes(), {}});
    m_sName = Name();
    m_sNotes = Notes();
    oData->Space()->Tell("“" + m_sName + "” has been changed");
}

QWidget* UnitsPage::MakeWidget(QWidget* pParent) {
    auto* pPage = new QWidget(pParent);
    const std::vector<Column> aColumns =
        About<DataSetContext>()->Space()->GetStore().Columns(About<DataSetContext>()->Number());
    m_pTable = new QTableWidget(static_cast<int>(aColumns.size()), 3);
    m_pTable->setAccessibleName("Columns");
    m_pTable->setTabKeyNavigation(false); // the arrows go from cell to cell, Tab to the commands
    m_pTable->setHorizontalHeaderLabels({"Column", "Type", "Unit"});
    m_pTable->verticalHeader()->hide();
    m_pTable->setAlternatingRowColors(true);
    m_aUnits.clear();
    for (int i = 0; i < m_pTable->rowCount(); ++i) {
        const Column& oColumn = aColumns[static_cast<std::size_t>(i)];
        m_aUnits.push_back(oColumn.sUnit);
        const auto Set = [&](int iColumn, const QString& sText, bool bEditable) {
            auto* pItem = new QTableWidgetItem(sText);
            if (!bEditable)
                pItem->setFlags(pItem->flags() & ~Qt::ItemIsEditable);
            m_pTable->setItem(i, iColumn, pItem);
        };
        Set(0, Text(oColumn.sName), false);
        Set(1, Text(NameOf(oColumn.eType)), false);
        Set(2, Text(oColumn.sUnit), oColumn.IsNumeric());
    }
    m_pTable->resizeColumnsToContents();
    m_pTable->horizontalHeader()->setStretchLastSection(true);
    auto* pHint = new QLabel("Units are shown on the axes of charts. Double-click a unit to change it.");
    pHint->setWordWrap(true);
    auto* pLayout = new QVBoxLayout(pPage);
    pLayout->addWidget(m_pTable, 1);
    pLayout->addWidget(pHint);
    QObject::connect(m_pTable, &QTableWidget::itemChanged, pPage, [this] { Guarded([this] { Reconsider(); }); });
    return pPage;
}

std::vector<std::string> UnitsPage::Units() const {
    if (!m_pTable)
        return m_aUnits;
    std::vector<std::string> aUnits;
    for (int i = 0; i < m_pTable->rowCount(); ++i)
        aUnits.push_back(Utf8(m_pTable->item(i, 2)->text().trimmed()));
    return aUnits;
}

bool UnitsPage::IsChanged() {
    return Units() != m_aUnits;
}

void UnitsPage::OnSave() {
    if (!IsChanged())
        return;
    const Ref<DataSetContext> oData = About<DataSetContext>();
    const DataSet oDataSet = oData->Info();
    m_aUnits = Units();
    oData->Space()->GetStore().SetDataSetProperties(oDataSet.nId, {oDataSet.sName, oDataSet.sNotes, m_aUnits});
    oData->Space()->Tell("The units of “" + oDataSet.sName + "” have been changed");
}

} // namespace studies
