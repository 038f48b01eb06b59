// A dark and a light palette such as contrast themes have: no shades, and a colour for what can't be used.
#pragma once

#include <QPalette>

namespace corvane::desktop {

inline QPalette ContrastPalette(bool dark) {
    QPalette palette(dark ? QColor(Qt::black) : QColor(Qt::white));
    const QColor ground = dark ? Qt::black : Qt::white;
    const QColor text = dark ? Qt::white : Qt::black;
    for (const auto role : {QPalette::Window, QPalette::Base, QPalette::AlternateBase, QPalette::Button,
                            QPalette::ToolTipBase, QPalette::Light, QPalette::Midlight})
        palette.setColor(role, ground);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText,
                            QPalette::BrightText, QPalette::Mid, QPalette::Dark, QPalette::Shadow})
        palette.setColor(role, text);
    palette.setColor(QPalette::PlaceholderText, text);
    palette.setColor(QPalette::Highlight, dark ? QColor(0xff, 0xff, 0x00) : QColor(0x00, 0x00, 0x80));
    palette.setColor(QPalette::HighlightedText, dark ? Qt::black : Qt::white);
    palette.setColor(QPalette::Link, dark ? QColor(0xff, 0xff, 0x00) : QColor(0x00, 0x00, 0x9f));
    palette.setColor(QPalette::LinkVisited, palette.color(QPalette::Link));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, dark ? QColor(0x3f, 0xf2, 0x3f) : QColor(0x60, 0x00, 0x00));
    return palette;
}

} // namespace corvane::desktop
