// The buttons of a window, by its kind.
#pragma once

#include "corvane/windows/WindowEnums.h"

#include <QWidget>
#include <optional>
#include <vector>

class QDialogButtonBox;
class QPushButton;

namespace corvane::desktop {

class CommandRow final : public QWidget {
    Q_OBJECT
public:
    CommandRow(WindowTypeConstants eType, bool bWithApply, bool bWithHelp, QWidget* pParent = nullptr);

    // A null pointer for a command that the kind doesn't have.
    [[nodiscard]] QPushButton* Button(StandardCommandConstants eCommand) const;
    // The commands that it has, from left to right.
    [[nodiscard]] std::vector<StandardCommandConstants> Commands() const;
    void SetCommandEnabled(StandardCommandConstants eCommand, bool bEnabled);
    // The one that the return key chooses.
    void SetDefault(StandardCommandConstants eCommand);
    [[nodiscard]] std::optional<StandardCommandConstants> Default() const;
    // Of a wizard: whether going on leaves the step out.
    void SetSkips(bool bSkips);

Q_SIGNALS:
    void Chosen(corvane::StandardCommandConstants eCommand);

private:
    QPushButton* Add(StandardCommandConstants eCommand, const QString& sText);
    void FillWizard(bool bWithHelp);
    void FillDialog(WindowTypeConstants eType, bool bWithApply, bool bWithHelp);

    std::vector<std::pair<StandardCommandConstants, QPushButton*>> m_aButtons;
};

} // namespace corvane::desktop
