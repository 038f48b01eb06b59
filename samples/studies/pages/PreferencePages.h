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
    QWidget* MakeWidget(QWidget* pParent) override;

private:
    FigurePreferences m_oSaved;
    QPointer<QSpinBox> m_pDecimals;
    QPointer<QLabel> m_pExample;
};

class AnalysesPreferencesPage final : public corvane::Automation<AnalysesPreferencesPage, StudiesPage> {
public:
    std::string_view TypeName() const override { return "AnalysesPreferencesPage"; }
    [[nodiscard]] bool IsChanged() override;
    static constexpr auto Members = corvane::MemberTable();

protected:
    void OnSave() override;
    QWidget* MakeWidget(QWidget* pParent) override;
    [[nodiscard]] bool IsValid() override;

private:
    FigurePreferences m_oSaved;
    QPointer<QCheckBox> m_pGroups;
    QPointer<QLineEdit> m_pGroup;
    QPointer<QDoubleSpinBox> m_pConfidence;
    QPointer<ProblemLabel> m_pProblem;
};

} // namespace studies
