#include "PreferencePages.h"

#include "QtText.h"
#include "Report.h"
#include "Windows.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLineEdit>
#include <cmath>

namespace studies {
namespace {

// Open windows show the new figures.
void Save(const FigurePreferences& oPreferences) {
    WritePreferences(oPreferences);
    TellAllWindows("The preferences have been changed");
}

} // namespace

QWidget* FiguresPreferencesPage::MakeWidget(QWidget* pParent) {
    auto* pPage = new QWidget(pParent);
    m_oSaved = ReadPreferences();
    m_pDecimals = new QSpinBox;
    m_pDecimals->setRange(0, FigurePreferences::MostDecimals);
    m_pExample = new QLabel;
    auto* pForm = new QFormLayout(pPage);
    pForm->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    pForm->addRow("&Decimal places", m_pDecimals);
    pForm->addRow("Example mean", m_pExample);
    QObject::connect(m_pDecimals, &QSpinBox::valueChanged, pPage, [this](int nDecimals) {
        m_pExample->setText(Text(DecimalText(4201.754386, nDecimals)));
        Guarded([this] { Reconsider(); });
    });
    m_pDecimals->setValue(m_oSaved.nDecimals);
    m_pExample->setText(Text(DecimalText(4201.754386, m_oSaved.nDecimals)));
    return pPage;
}

bool FiguresPreferencesPage::IsChanged() {
    return m_pDecimals && m_pDecimals->value() != m_oSaved.nDecimals;
}

void FiguresPreferencesPage::OnSave() {
    if (!IsChanged())
        return;
    m_oSaved = ReadPreferences();
    m_oSaved.nDecimals = m_pDecimals->value();
    Save(m_oSaved);
}

QWidget* AnalysesPreferencesPage::MakeWidget(QWidget* pParent) {
    auto* pPage = new QWidget(pParent);
    m_oSaved = ReadPreferences();
    m_pGroups = new QCheckBox("&Group new analyses");
    m_pGroups->setChecked(m_oSaved.bGroupByDefault);
    m_pGroup = new QLineEdit(Text(m_oSaved.sDefaultGroup));
    m_pGroup->setPlaceholderText("First suitable column");
    m_pConfidence = new QDoubleSpinBox;
    m_pConfidence->setRange(0, 99.9);
    m_pConfidence->setDecimals(1);
    m_pConfidence->setSuffix(" %");
    m_pConfidence->setValue(m_oSaved.dblConfidence * 100);
    m_pProblem = new ProblemLabel;
    auto* pForm = new QFormLayout(pPage);
    pForm->addRow(m_pGroups);
    pForm->addRow("Group &by", m_pGroup);
    pForm->addRow("Con&fidence level", m_pConfidence);
    pForm->addRow(QString(), m_pProblem);
    const auto OnChange = [this] {
        Guarded([this] {
            m_pProblem->Show(IsValid() ? QString() : QString("The confidence level must be at least 50 %."));
            Reconsider();
        });
    };
    QObject::connect(m_pGroups, &QCheckBox::toggled, pPage, OnChange);
    QObject::connect(m_pGroup, &QLineEdit::textChanged, pPage, OnChange);
    QObject::connect(m_pConfidence, &QDoubleSpinBox::valueChanged, pPage, OnChange);
    return pPage;
}

bool AnalysesPreferencesPage::IsValid() {
    return !m_pConfidence || m_pConfidence->value() >= 50;
}

bool AnalysesPreferencesPage::IsChanged() {
    return m_pGroups && (m_pGroups->isChecked() != m_oSaved.bGroupByDefault ||
                         Utf8(m_pGroup->text().trimmed()) != m_oSaved.sDefaultGroup ||
                         std::abs(m_pConfidence->value() / 100 - m_oSaved.dblConfidence) > 1e-6);
}

void AnalysesPreferencesPage::OnSave() {
    if (!IsChanged())
        return;
    m_oSaved = ReadPreferences();
    m_oSaved.bGroupByDefault = m_pGroups->isChecked();
    m_oSaved.sDefaultGroup = Utf8(m_pGroup->text().trimmed());
    m_oSaved.dblConfidence = m_pConfidence->value() / 100;
    Save(m_oSaved);
}

} // namespace studies
