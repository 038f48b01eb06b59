#include "desktop/windows/ArrangeWindows.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStyle>
#include <algorithm>
#include <cmath>
#include <vector>

namespace corvane::desktop {

namespace {

using Windows = std::vector<QMdiSubWindow*>;

// The area's space above the minimised windows.
QRect SpaceAbove(const QMdiArea& area, const Windows& icons) {
    QRect room = area.viewport()->rect();
    for (const QMdiSubWindow* icon : icons)
        room.setBottom(std::min(room.bottom(), icon->y() - 1));
    return room;
}

void ArrangeIcons(const QMdiArea& area, const Windows& icons) {
    const QRect room = area.viewport()->rect();
    QPoint next = room.bottomLeft();
    for (QMdiSubWindow* icon : icons) {
        if (next.x() > room.left() && next.x() + icon->width() > room.right() + 1)
            next = QPoint(room.left(), next.y() - icon->height());
        icon->move(next.x(), next.y() - icon->height() + 1);
        next.rx() += icon->width();
    }
}

QSize Needed(const QMdiSubWindow& window) {
    return window.minimumSizeHint().expandedTo(window.minimumSize());
}

// Two or three of which one needs more than its share: the others have less, and when even that isn't enough the area
// scrolls, rather than that one is over the next.
bool TileByNeed(const Windows& windows, const QRect& room, bool sideBySide) {
    const int windowCount = static_cast<int>(windows.size());
    const int along = sideBySide ? room.width() : room.height();
    int needed = 0;
    int most = 0;
    for (const QMdiSubWindow* window : windows) {
        const int each = sideBySide ? Needed(*window).width() : Needed(*window).height();
        needed += each;
        most = std::max(most, each);
    }
    if (windowCount > 3 || windowCount == 0 || most <= along / windowCount)
        return false;
    const QWidget* area = windows.front()->parentWidget();
    const int bar = needed > along ? area->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, area) : 0;
    const int more = std::max(0, along - needed) / windowCount;
    QPoint next = room.topLeft();
    for (QMdiSubWindow* window : windows) {
        const QSize wanted = sideBySide ? QSize(Needed(*window).width() + more, room.height() - bar)
                                        : QSize(room.width() - bar, Needed(*window).height() + more);
        const QSize size = wanted.expandedTo(Needed(*window));
        window->setGeometry(QRect(next, size));
        (sideBySide ? next.rx() : next.ry()) += sideBySide ? size.width() : size.height();
    }
    return true;
}

// Lines of windows, one below the other or side by side; from four windows on several lines, the last ones fuller.
void Tile(const Windows& windows, const QRect& room, bool sideBySide) {
    if (TileByNeed(windows, room, sideBySide))
        return;
    const int windowCount = static_cast<int>(windows.size());
    const int lines = static_cast<int>(std::sqrt(static_cast<double>(windowCount)));
    const int along = sideBySide ? room.width() : room.height();
    const int across = sideBySide ? room.height() : room.width();
    int window = 0;
    for (int line = 0; line < lines; ++line) {
        const int inLine = windowCount / lines + (line >= lines - windowCount % lines ? 1 : 0);
        const int from = across * line / lines;
        const int wide = across * (line + 1) / lines - from;
        for (int i = 0; i < inLine; ++i) {
            const int begin = along * i / inLine;
            const int longest = along * (i + 1) / inLine - begin;
            const QRect place = sideBySide ? QRect(begin, from, longest, wide) : QRect(from, begin, wide, longest);
            windows[static_cast<std::size_t>(window++)]->setGeometry(place.translated(room.topLeft()));
        }
    }
}

// Each a title bar below and beside the one before, from the corner again when the space is used up.
void Cascade(const Windows& windows, const QRect& room) {
    const QSize size(room.width() * 2 / 3, room.height() * 2 / 3);
    QPoint next = room.topLeft();
    for (QMdiSubWindow* window : windows) {
        const int title = window->height() - window->contentsRect().height();
        const QSize thisSize = size.expandedTo(Needed(*window));
        if (!room.contains(QRect(next, thisSize)))
            next = room.topLeft();
        window->setGeometry(QRect(next, thisSize));
        window->raise();
        next += QPoint(title, title);
    }
}

} // namespace

void ArrangeWindows(QMdiArea& area, Arrangement how) {
    if (area.viewMode() == QMdiArea::TabbedView)
        return;
    Windows windows;
    Windows icons;
    // The active one last, so that it is on top of a cascade.
    for (QMdiSubWindow* window : area.subWindowList(QMdiArea::ActivationHistoryOrder))
        if (!window->isHidden())
            (window->isMinimized() ? icons : windows).push_back(window);
    if (how == Arrangement::ArrangeIcons) {
        ArrangeIcons(area, icons);
        return;
    }
    for (QMdiSubWindow* window : windows)
        if (window->isMaximized())
            window->showNormal();
    const QRect room = SpaceAbove(area, icons);
    if (how == Arrangement::Cascade)
        Cascade(windows, room);
    else
        Tile(windows, room, how == Arrangement::TileVertical);
    if (!windows.empty())
        area.setActiveSubWindow(windows.back());
}

} // namespace corvane::desktop
