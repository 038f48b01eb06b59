// Twips and pixels, by the logical resolution of the screen.
#pragma once

#include "corvane/platform/Platform.h"

#include <QRect>
#include <QSize>
#include <cmath>

namespace corvane::desktop {

[[nodiscard]] inline int PixelsX(Double twips) {
    return static_cast<int>(std::lround(twips / CurrentPlatform().oScreen->TwipsPerPixelX()));
}
[[nodiscard]] inline int PixelsY(Double twips) {
    return static_cast<int>(std::lround(twips / CurrentPlatform().oScreen->TwipsPerPixelY()));
}
[[nodiscard]] inline Single TwipsX(int pixels) {
    return static_cast<Single>(pixels) * CurrentPlatform().oScreen->TwipsPerPixelX();
}
[[nodiscard]] inline Single TwipsY(int pixels) {
    return static_cast<Single>(pixels) * CurrentPlatform().oScreen->TwipsPerPixelY();
}

} // namespace corvane::desktop
