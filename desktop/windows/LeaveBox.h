// Asks a user what becomes of the changes in a window that is to close.
#pragma once

#include "desktop/windows/WindowHost.h"

namespace corvane::desktop {

[[nodiscard]] LeaveAnswer AskInBox(const LeaveQuestion& question);

} // namespace corvane::desktop
