// The shell while the progress bar holds it: all commands and the explorer are disabled. The code that shows the bar
// hides it again; where that code has failed, the host does.
#pragma once

#include "corvane/platform/controls/ActiveBar.h"

namespace corvane::desktop {

// What the host puts into bars itself, with no command behind it: separators, the list of windows, the status, the
// progress bar and the explorer.
[[nodiscard]] bool IsHostTool(const Tool& tool);

class HeldShell final {
public:
    // A bar that holds what the library asks of a host's.
    explicit HeldShell(Ref<ActiveBar> activeBar);

    [[nodiscard]] bool IsBarShown() const { return m_bar->Visible(); }
    // Also when showing the bar has failed half-way, behind the disabling of all commands.
    [[nodiscard]] bool IsHeld() const { return IsBarShown() || !m_status->Enabled(); }
    // Ends the bar and gives each command the state that its provider has given it. Never fails.
    void LetGo();

private:
    Ref<ActiveBar> m_activeBar;
    Ref<Tool> m_status; // nothing but the progress bar disables the status text
    Ref<Tool> m_bar;
};

} // namespace corvane::desktop
