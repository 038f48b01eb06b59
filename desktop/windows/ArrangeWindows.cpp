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

// The area's room above the minimised windows.
QRect RoomAbove(const QMdiArea& oArea, const Windows& aIcons) {
    QRect oRoom = oArea.viewport()->rect();
    for (const QMdiSubWindow* pIcon : aIcons)
        oRoom.setBottom(std::min(oRoom.bottom(), pIcon->y() - 1));
    return oRoom;
}

void ArrangeIcons(const QMdiArea& oArea, const Windows& aIcons) {
    const QRect oRoom = oArea.viewport()->rect();
    QPoint oNext = oRoom.bottomLeft();
    for (QMdiSubWindow* pIcon : aIcons) {
        if (oNext.x() > oRoom.left() && oNext.x() + pIcon->width() > oRoom.right() + 1)
            oNext = QPoint(oRoom.left(), oNext.y() - pIcon->height());
        pIcon->move(oNext.x(), oNext.y() - pIcon->height() + 1);
        oNext.rx() += pIcon->width();
    }
}

QSize Needed(const QMdiSubWindow& oWindow) {
    return oWindow.minimumSizeHint().expandedTo(oWindow.minimumSize());
}

// Two or three of which one needs more than its share: the others have less, and when even that isn't enough the area
// scrolls, rather than that one lies over the next.
bool TileByNeed(const Windows& aWindows, const QRect& oRoom, bool bSideBySide) {
    const int nWindows = static_cast<int>(aWindows.size());
    const int nAlong = bSideBySide ? oRoom.width() : oRoom.height();
    int nNeeded = 0;
    int nMost = 0;
    for (const QMdiSubWindow* pWindow : aWindows) {
        const int nEach = bSideBySide ? Needed(*pWindow).width() : Needed(*pWindow).height();
        nNeeded += nEach;
        nMost = std::max(nMost, nEach);
    }
    if (nWindows > 3 || nWindows == 0 || nMost <= nAlong / nWindows)
        return false;
    const QWidget* pArea = aWindows.front()->parentWidget();
    const int nBar = nNeeded > nAlong ? pArea->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, pArea) : 0;
    const int nMore = std::max(0, nAlong - nNeeded) / nWindows;
    QPoint oNext = oRoom.topLeft();
    for (QMdiSubWindow* pWindow : aWindows) {
        const QSize oWanted = bSideBySide ? QSize(Needed(*pWindow).width() + nMore, oRoom.height() - nBar)
                                          : QSize(oRoom.width() - nBar, Needed(*pWindow).height() + nMore);
        const QSize oSize = oWanted.expandedTo(Needed(*pWindow));
        pWindow->setGeometry(QRect(oNext, oSize));
        (bSideBySide ? oNext.rx() : oNext.ry()) += bSideBySide ? oSize.width() : oSize.height();
    }
    return true;
}

// Lines of windows, one below the other or side by side; from four windows on several lines, the last ones fuller.
void Tile(const Windows& aWindows, const QRect& oRoom, bool bSideBySide) {
    if (TileByNeed(aWindows, oRoom, bSideBySide))
        return;
    const int nWindows = static_cast<int>(aWindows.size());
    const int nLines = static_cast<int>(std::sqrt(static_cast<double>(nWindows)));
    const int nAlong = bSideBySide ? oRoom.width() : oRoom.height();
    const int nAcross = bSideBySide ? oRoom.height() : oRoom.width();
    int iWindow = 0;
    for (int iLine = 0; iLine < nLines; ++iLine) {
        const int nInLine = nWindows / nLines + (iLine >= nLines - nWindows % nLines ? 1 : 0);
        const int nFrom = nAcross * iLine / nLines;
        const int nWide = nAcross * (iLine + 1) / nLines - nFrom;
        for (int i = 0; i < nInLine; ++i) {
            const int nBegin = nAlong * i / nInLine;
            const int nLong = nAlong * (i + 1) / nInLine - nBegin;
            const QRect oPlace = bSideBySide ? QRect(nBegin, nFrom, nLong, nWide) : QRect(nFrom, nBegin, nWide, nLong);
            aWindows[static_cast<std::size_t>(iWindow++)]->setGeometry(oPlace.translated(oRoom.topLeft()));
        }
    }
}

// Each a title bar below and beside the one before, from the corner again when the room is used up.
void Cascade(const Windows& aWindows, const QRect& oRoom) {
    const QSize oSize(oRoom.width() * 2 / 3, oRoom.height() * 2 / 3);
    QPoint oNext = oRoom.topLeft();
    for (QMdiSubWindow* pWindow : aWindows) {
        const int nTitle = pWindow->height() - pWindow->contentsRect().height();
        const QSize oThis = oSize.expandedTo(Needed(*pWindow));
        if (!oRoom.contains(QRect(oNext, oThis)))
            oNext = oRoom.topLeft();
        pWindow->setGeometry(QRect(oNext, oThis));
        pWindow->raise();
        oNext += QPoint(nTitle, nTitle);
    }
}

} // namespace

void ArrangeWindows(QMdiArea& oArea, Arrangement eHow) {
    if (oArea.viewMode() == QMdiArea::TabbedView)
        return;
    Windows aWindows;
    Windows aIcons;
    // The active one last, so that it lies on top of a cascade.
    for (QMdiSubWindow* pWindow : oArea.subWindowList(QMdiArea::ActivationHistoryOrder))
        if (!pWindow->isHidden())
            (pWindow->isMinimized() ? aIcons : aWindows).push_back(pWindow);
    if (eHow == Arrangement::ArrangeIcons) {
        ArrangeIcons(oArea, aIcons);
        return;
    }
    for (QMdiSubWindow* pWindow : aWindows)
        if (pWindow->isMaximized())
            pWindow->showNormal();
    const QRect oRoom = RoomAbove(oArea, aIcons);
    if (eHow == Arrangement::Cascade)
        Cascade(aWindows, oRoom);
    else
        Tile(aWindows, oRoom, eHow == Arrangement::TileVertical);
    if (!aWindows.empty())
        oArea.setActiveSubWindow(aWindows.back());
}

} // namespace corvane::desktop
