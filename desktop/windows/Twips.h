// Twips and pixels, by the logical resolution of the screen.
#pragma once

#include "corvane/platform/Platform.h"

#include <QRect>
#include <QSize>
#include <cmath>

namespace corvane::desktop {

[[nodiscard]] inline int PixelsX(Double dTwips) {
    return static_cast<int>(std::lround(dTwips / CurrentPlatform().oScreen->TwipsPerPixelX()));
}
[[nodiscard]] inline int PixelsY(Double dTwips) {
    return static_cast<int>(std::lround(dTwips / CurrentPlatform().oScreen->TwipsPerPixelY()));
}
[[nodiscard]] inline Single TwipsX(int nPixels) {
    return static_cast<Single>(nPixels) * CurrentPlatform().oScreen->TwipsPerPixelX();
}
[[nodiscard]] inline Single TwipsY(int nPixels) {
    return static_cast<Single>(nPixels) * CurrentPlatform().oScreen->TwipsPerPixelY();
}

} // namespace corvane::desktop
