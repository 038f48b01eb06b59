// Holds a window to a minimum tracking size by taking the place of its window procedure.
#pragma once

#include "corvane/base/Failure.h"

namespace corvane::MinWindowSize {

// Sizes in twips, kept in whole pixels of the screen as it is now. Fails with 457 for a window that has one already.
// The first close request of the window only takes the hook away.
void SetMinWindowSize(Long hWnd, Long lMinWidth, Long lMinHeight);

} // namespace corvane::MinWindowSize
