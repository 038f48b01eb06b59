// The preferences of Studies: how figures are written, and how analyses begin.
#pragma once

#include "Figures.h"
#include "PageParts.h"
#include "desktop/QtPage.h"

class QCheckBox;
class QDoubleSpinBox;
class QLineEdit;
class QSpinBox;

namespace studies {

class FiguresPreferencesPage final : public corvane::desktop::QtPage<FiguresPreferencesPage> {
public:
    [[nodiscard]] bool IsChanged() override;

protected:
    void OnSave() override;
    QWidget* MakeWidget(QWidget* parent) override;

private:
    FigurePreferences m_saved;
    QPointer<QSpinBox> m_decimals;
    QPointer<QLabel> m_example;
};

class AnalysesPreferencesPage final : public corvane::desktop::QtPage<AnalysesPreferencesPage> {
public:
    [[nodiscard]] bool IsChanged() override;

protected:
    void OnSave() override;
    QWidget* MakeWidget(QWidget* parent) override;
    [[nodiscard]] bool IsValid() override;

private:
    FigurePreferences m_saved;
    QPointer<QCheckBox> m_groups;
    QPointer<QLineEdit> m_group;
    QPointer<QDoubleSpinBox> m_confidence;
    QPointer<ProblemLabel> m_problem;
};

} // namespace studies
