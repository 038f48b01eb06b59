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
    CommandRow(WindowTypeConstants type, bool withApply, bool withHelp, QWidget* parent = nullptr);

    // A null pointer for a command that the kind doesn't have.
    [[nodiscard]] QPushButton* Button(StandardCommandConstants command) const;
    // The commands that it has, from left to right.
    [[nodiscard]] std::vector<StandardCommandConstants> Commands() const;
    void SetCommandEnabled(StandardCommandConstants command, bool enabled);
    // The one that the return key chooses; nothing for none.
    void SetDefault(std::optional<StandardCommandConstants> command);
    [[nodiscard]] std::optional<StandardCommandConstants> Default() const;
    // Of a wizard: whether going on leaves the step out.
    void SetSkips(bool skips);

Q_SIGNALS:
    void Chosen(corvane::StandardCommandConstants command);

private:
    QPushButton* Add(StandardCommandConstants command, const QString& text);
    void FillWizard(bool withHelp);
    void FillDialog(WindowTypeConstants type, bool withApply, bool withHelp);

    std::vector<std::pair<StandardCommandConstants, QPushButton*>> m_buttons;
};

} // namespace corvane::desktop
