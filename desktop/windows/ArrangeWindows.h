// Lays out the main window's children.
#pragma once

#include "corvane/platform/controls/MdiForm.h"

class QMdiArea;

namespace corvane::desktop {

// Tiles, cascades, or puts the minimised ones in rows at the bottom. Windows that are behind tabs stay as they are.
void ArrangeWindows(QMdiArea& area, Arrangement how);

} // namespace corvane::desktop
