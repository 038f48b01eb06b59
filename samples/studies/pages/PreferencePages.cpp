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
void Save(const FigurePreferences& preferences) {
    WritePreferences(preferences);
    TellAllWindows("The preferences have been changed");
}

} // namespace

QWidget* FiguresPreferencesPage::MakeWidget(QWidget* parent) {
    auto* page = new QWidget(parent);
    m_saved = ReadPreferences();
    m_decimals = new QSpinBox;
    m_decimals->setRange(0, FigurePreferences::MostDecimals);
    m_example = new QLabel;
    auto* form = new QFormLayout(page);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    form->addRow("&Decimal places", m_decimals);
    form->addRow("Example mean", m_example);
    QObject::connect(m_decimals, &QSpinBox::valueChanged, page, [this](int decimals) {
        m_example->setText(Text(DecimalText(4201.754386, decimals)));
        Guarded([this] { ValidityChanged(); });
    });
    m_decimals->setValue(m_saved.decimals);
    m_example->setText(Text(DecimalText(4201.754386, m_saved.decimals)));
    return page;
}

bool FiguresPreferencesPage::IsChanged() {
    return m_decimals && m_decimals->value() != m_saved.decimals;
}

void FiguresPreferencesPage::OnSave() {
    if (!IsChanged())
        return;
    m_saved = ReadPreferences();
    m_saved.decimals = m_decimals->value();
    Save(m_saved);
}

QWidget* AnalysesPreferencesPage::MakeWidget(QWidget* parent) {
    auto* page = new QWidget(parent);
    m_saved = ReadPreferences();
    m_groups = new QCheckBox("&Group new analyses");
    m_groups->setChecked(m_saved.groupByDefault);
    m_group = new QLineEdit(Text(m_saved.defaultGroup));
    m_group->setPlaceholderText("First suitable column");
    m_confidence = new QDoubleSpinBox;
    m_confidence->setRange(0, 99.9);
    m_confidence->setDecimals(1);
    m_confidence->setSuffix(" %");
    m_confidence->setValue(m_saved.confidence * 100);
    m_problem = new ProblemLabel;
    auto* form = new QFormLayout(page);
    form->addRow(m_groups);
    form->addRow("Group &by", m_group);
    form->addRow("Con&fidence level", m_confidence);
    form->addRow(QString(), m_problem);
    const auto OnChange = [this] {
        Guarded([this] {
            m_problem->Show(IsValid() ? QString() : QString("The confidence level must be at least 50 %."));
            ValidityChanged();
        });
    };
    QObject::connect(m_groups, &QCheckBox::toggled, page, OnChange);
    QObject::connect(m_group, &QLineEdit::textChanged, page, OnChange);
    QObject::connect(m_confidence, &QDoubleSpinBox::valueChanged, page, OnChange);
    return page;
}

bool AnalysesPreferencesPage::IsValid() {
    return !m_confidence || m_confidence->value() >= 50;
}

bool AnalysesPreferencesPage::IsChanged() {
    return m_groups && (m_groups->isChecked() != m_saved.groupByDefault ||
                        Utf8(m_group->text().trimmed()) != m_saved.defaultGroup ||
                        std::abs(m_confidence->value() / 100 - m_saved.confidence) > 1e-6);
}

void AnalysesPreferencesPage::OnSave() {
    if (!IsChanged())
        return;
    m_saved = ReadPreferences();
    m_saved.groupByDefault = m_groups->isChecked();
    m_saved.defaultGroup = Utf8(m_group->text().trimmed());
    m_saved.confidence = m_confidence->value() / 100;
    Save(m_saved);
}

} // namespace studies
