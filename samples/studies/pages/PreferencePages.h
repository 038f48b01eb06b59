// The preferences of Studies: how figures are written, and how analyses begin.
#pragma once

#include "Figures.h"
#include "PageParts.h"
#include "StudiesPage.h"

class QCheckBox;
class QDoubleSpinBox;
class QLineEdit;
class QSpinBox;

namespace studies {

class FiguresPreferencesPage final : public corvane::Automation<FiguresPreferencesPage, StudiesPage> {
public:
    std::string_view TypeName() const override { return "FiguresPreferencesPage"; }
    [[nodiscard]] bool IsChanged() override;
    static constexpr auto Members = corvane::MemberTable();

protected:
    void OnSave() override;
    QWidget* MakeWidget(QWidget* parent) override;

private:
    FigurePreferences m_saved;
    QPointer<QSpinBox> m_decimals;
    QPointer<QLabel> m_example;
};

class AnalysesPreferencesPage final : public corvane::Automation<AnalysesPreferencesPage, StudiesPage> {
public:
    std::string_view TypeName() const override { return "AnalysesPreferencesPage"; }
    [[nodiscard]] bool IsChanged() override;
    static constexpr auto Members = corvane::MemberTable();

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
