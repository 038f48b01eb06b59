// The size that a dialog begins with: its own, or what the screen has space for below a title bar.
#pragma once

#include <QDialog>
#include <QScreen>

namespace corvane::desktop {

inline void ResizeWithin(QDialog& dialog, const QSize& wanted) {
    const QWidget* beside = dialog.parentWidget() ? dialog.parentWidget() : &dialog;
    const QSize room = beside->screen()->availableSize() - QSize(16, 48);
    dialog.resize(wanted.boundedTo(room));
}

} // namespace corvane::desktop
