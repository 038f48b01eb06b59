// What the host does when a command of its own service is chosen.
#pragma once

#include "corvane/base/Failure.h"

#include <string>

namespace corvane::desktop {

// What can be done to the active window, whether it is in a tab or not, and to all.
enum class WindowCommand {
    Save,
    Close,
    SplitRight,
    SplitBelow,
    MoveToNextGroup,
    GoToNextGroup,
    OwnWindow,
    Dock,
    Pin,
    CloseOthers,
    ResetLayout
};

class HostCommands {
public:
    virtual void DoWithWindow(WindowCommand command) = 0;
    virtual void ToggleLink() = 0;
    virtual void ShowWelcome() = 0;
    // The recent file of that place, from 1.
    virtual void OpenRecentFile(Long place) = 0;
    virtual void ClearRecentFiles() = 0;
    virtual void UseLayout(const std::string& name) = 0;
    virtual void SaveLayout() = 0;
    virtual void ManageLayouts() = 0;
    virtual void ShowManual() = 0;
    virtual void ShowAbout() = 0;
    virtual void ShowPreferences() = 0;
    virtual void ShowPalette() = 0;
    virtual void ShowShortcuts() = 0;
    virtual void ShowCustomize() = 0;
    virtual void ShowInspector() = 0;
    virtual void ShowLog() = 0;
    virtual void ShowJobs() = 0;

protected:
    ~HostCommands() = default;
};

} // namespace corvane::desktop
