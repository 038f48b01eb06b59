// A dark and a light palette such as contrast themes have: no shades, and a colour for what can't be used.
#pragma once

#include <QPalette>

namespace corvane::desktop {

inline QPalette ContrastPalette(bool bDark) {
    QPalette oPalette(bDark ? QColor(Qt::black) : QColor(Qt::white));
    const QColor oGround = bDark ? Qt::black : Qt::white;
    const QColor oText = bDark ? Qt::white : Qt::black;
    for (const auto eRole : {QPalette::Window, QPalette::Base, QPalette::AlternateBase, QPalette::Button,
                             QPalette::ToolTipBase, QPalette::Light, QPalette::Midlight})
        oPalette.setColor(eRole, oGround);
    for (const auto eRole : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText,
                             QPalette::BrightText, QPalette::Mid, QPalette::Dark, QPalette::Shadow})
        oPalette.setColor(eRole, oText);
    oPalette.setColor(QPalette::PlaceholderText, oText);
    oPalette.setColor(QPalette::Highlight, bDark ? QColor(0xff, 0xff, 0x00) : QColor(0x00, 0x00, 0x80));
    oPalette.setColor(QPalette::HighlightedText, bDark ? Qt::black : Qt::white);
    oPalette.setColor(QPalette::Link, bDark ? QColor(0xff, 0xff, 0x00) : QColor(0x00, 0x00, 0x9f));
    oPalette.setColor(QPalette::LinkVisited, oPalette.color(QPalette::Link));
    for (const auto eRole : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        oPalette.setColor(QPalette::Disabled, eRole, bDark ? QColor(0x3f, 0xf2, 0x3f) : QColor(0x60, 0x00, 0x00));
    return oPalette;
}

} // namespace corvane::desktop
