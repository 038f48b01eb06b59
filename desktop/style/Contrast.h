// How well colours can be told apart, as the Web Content Accessibility Guidelines measure it.
#pragma once

#include <QColor>
#include <QPalette>
#include <algorithm>
#include <cmath>

namespace corvane::desktop {

constexpr double dReadable = 4.5; // of text before its ground

inline double LuminanceOf(const QColor& oColor) {
    const auto fnLinear = [](float fPart) {
        const double d = static_cast<double>(fPart);
        return d <= 0.04045 ? d / 12.92 : std::pow((d + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * fnLinear(oColor.redF()) + 0.7152 * fnLinear(oColor.greenF()) + 0.0722 * fnLinear(oColor.blueF());
}

// A colour that lets the ground through, as it looks there.
inline QColor OnGround(const QColor& oColor, const QColor& oGround) {
    const float fAlpha = oColor.alphaF();
    const auto fnMix = [&](float f, float fBelow) {
        return std::clamp(f * fAlpha + fBelow * (1 - fAlpha), 0.0F, 1.0F);
    };
    return QColor::fromRgbF(fnMix(oColor.redF(), oGround.redF()), fnMix(oColor.greenF(), oGround.greenF()),
                            fnMix(oColor.blueF(), oGround.blueF()));
}

// From 1 for the same to 21 for black and white.
inline double ContrastOf(const QColor& oColor, const QColor& oGround) {
    const double dFirst = LuminanceOf(OnGround(oColor, oGround)) + 0.05;
    const double dSecond = LuminanceOf(oGround) + 0.05;
    return std::max(dFirst, dSecond) / std::min(dFirst, dSecond);
}

// The colour, paler, but no more than it can be read then.
inline QColor Paler(QColor oColor, const QColor& oGround, float fAlpha) {
    const float fBefore = oColor.alphaF();
    for (float f = std::min(fAlpha, fBefore); f < fBefore; f += 0.05F) {
        oColor.setAlphaF(f);
        if (ContrastOf(oColor, oGround) >= dReadable)
            return oColor;
    }
    oColor.setAlphaF(fBefore);
    return oColor;
}

// Whether somebody has chosen colours of the greatest contrast: then nothing may be told from its surroundings by
// shades of the ground alone.
inline bool IsOfContrast(const QPalette& oPalette) {
    const QColor oGround = oPalette.color(QPalette::Window);
    const double dLuminance = LuminanceOf(oGround);
    return (dLuminance < 0.003 || dLuminance > 0.97) && ContrastOf(oPalette.color(QPalette::WindowText), oGround) >= 18;
}

} // namespace corvane::desktop
