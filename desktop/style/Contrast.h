// How well colours can be distinguished, as the Web Content Accessibility Guidelines measure it.
#pragma once

#include <QColor>
#include <QPalette>
#include <algorithm>
#include <cmath>

namespace corvane::desktop {

constexpr double readable = 4.5; // of text before its ground

inline double LuminanceOf(const QColor& color) {
    const auto linear = [](float part) {
        const double d = static_cast<double>(part);
        return d <= 0.04045 ? d / 12.92 : std::pow((d + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

// A colour that lets the ground through, as it looks there.
inline QColor OnGround(const QColor& color, const QColor& ground) {
    const float alpha = color.alphaF();
    const auto mix = [&](float f, float below) { return std::clamp(f * alpha + below * (1 - alpha), 0.0F, 1.0F); };
    return QColor::fromRgbF(mix(color.redF(), ground.redF()), mix(color.greenF(), ground.greenF()),
                            mix(color.blueF(), ground.blueF()));
}

// From 1 for the same to 21 for black and white.
inline double ContrastOf(const QColor& color, const QColor& ground) {
    const double first = LuminanceOf(OnGround(color, ground)) + 0.05;
    const double second = LuminanceOf(ground) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

// The colour, paler, but no more than it can be read then.
inline QColor Paler(QColor color, const QColor& ground, float alpha) {
    const float before = color.alphaF();
    for (float f = std::min(alpha, before); f < before; f += 0.05F) {
        color.setAlphaF(f);
        if (ContrastOf(color, ground) >= readable)
            return color;
    }
    color.setAlphaF(before);
    return color;
}

// Whether someone has chosen colours of the greatest contrast: then nothing may be distinguished from its surroundings
// by shades of the ground alone.
inline bool IsOfContrast(const QPalette& palette) {
    const QColor ground = palette.color(QPalette::Window);
    const double luminance = LuminanceOf(ground);
    return (luminance < 0.003 || luminance > 0.97) && ContrastOf(palette.color(QPalette::WindowText), ground) >= 18;
}

} // namespace corvane::desktop
