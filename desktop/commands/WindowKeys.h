// The keys that the window itself knows, beside those of commands: the one list of them, for those who act on them and
// for those who tell users of conflicts.
#pragma once

#include "corvane/platform/controls/ActiveBar.h"

#include <QCoreApplication>
#include <QKeySequence>
#include <QString>
#include <vector>

namespace corvane::desktop {

struct WindowKey {
    enum class Use {
        LastUsedWindow,
        FirstUsedWindow,
        NextWindow, // in the order of the tabs
        PreviousWindow,
        CloseWindow,
        SaveWindow, // where no command takes it
        Title,      // opens a menu by its underlined letter
        FirstMenu,
        OtherPart, // from the windows to the explorer, the open views and back
        PreviousPart,
        Other // seen to by the widget that has the focus
    };
    QKeySequence keys; // of one stroke
    Use use;
    QString what;
    QString owner;
    // Whether a command of the same keys is never reached by them. Otherwise it is, and the window's use is lost.
    bool comesFirst;
};

// With the letters of the titles that are shown now.
[[nodiscard]] std::vector<WindowKey> WindowKeys(const ActiveBar& activeBar);
// Without them.
[[nodiscard]] std::vector<WindowKey> FixedWindowKeys();

} // namespace corvane::desktop
