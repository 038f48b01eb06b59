// The size that a dialog begins with: its own, or what the screen has room for below a title bar.
#pragma once

#include <QDialog>
#include <QScreen>

namespace corvane::desktop {

inline void ResizeWithin(QDialog& oDialog, const QSize& oWanted) {
    const QWidget* pBeside = oDialog.parentWidget() ? oDialog.parentWidget() : &oDialog;
    const QSize oRoom = pBeside->screen()->availableSize() - QSize(16, 48);
    oDialog.resize(oWanted.boundedTo(oRoom));
}

} // namespace corvane::desktop
