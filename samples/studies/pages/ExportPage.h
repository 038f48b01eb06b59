// Where and how the rows of a data set are written to a file.
#pragma once

#include "PageParts.h"
#include "Workspace.h"
#include "desktop/QtPage.h"

class QLineEdit;

namespace studies {

class ExportPage final : public corvane::desktop::QtPage<ExportPage, DataSetContext> {
public:
    QWidget* FirstFocus() override;
    [[nodiscard]] bool IsChanged() override { return true; } // there is always something to write

protected:
    void OnSave() override;
    QWidget* MakeWidget(QWidget* parent) override;
    [[nodiscard]] bool IsValid() override { return !m_thoughtBetter && Problem().empty(); }

private:
    bool AskForPath();
    void ShowRemark();
    void OnCommand(corvane::StandardCommandConstants command) override;
    [[nodiscard]] std::string Problem() const;

    QPointer<QComboBox> m_format;
    QPointer<QLineEdit> m_path;
    QPointer<ProblemLabel> m_problem;
    bool m_thoughtBetter = false; // of "Save As"
};

} // namespace studies
