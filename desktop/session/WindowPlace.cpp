#include "desktop/session/WindowPlace.h"

#include <QGuiApplication>
#include <QRegion>
#include <QScreen>
#include <QStyle>
#include <algorithm>

namespace corvane::desktop {

QString Packed(const QByteArray& aBytes) {
    return QString::fromLatin1(aBytes.toBase64());
}

QByteArray Unpacked(const QJsonValue& oValue) {
    return QByteArray::fromBase64(oValue.toString().toLatin1());
}

namespace {

void StandOnScreen(QWidget& oWindow) {
    if (oWindow.isMaximized() || oWindow.isFullScreen())
        return;
    QRect oPlace = oWindow.geometry();
    QRegion oScreens;
    for (const QScreen* pScreen : QGuiApplication::screens())
        oScreens += pScreen->availableGeometry();
    if (QRegion(oPlace).subtracted(oScreens).isEmpty())
        return;
    const QScreen* pScreen = QGuiApplication::screenAt(oPlace.center());
    constexpr int nFrame = 4;
    const int nTitle = oWindow.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    const QRect oRoom = (pScreen ? pScreen : QGuiApplication::primaryScreen())
                            ->availableGeometry()
                            .adjusted(nFrame, nTitle, -nFrame, -nFrame);
    oPlace.setSize(oPlace.size().boundedTo(oRoom.size()));
    oPlace.moveTo(std::clamp(oPlace.left(), oRoom.left(), oRoom.right() + 1 - oPlace.width()),
                  std::clamp(oPlace.top(), oRoom.top(), oRoom.bottom() + 1 - oPlace.height()));
    oWindow.setGeometry(oPlace);
}

} // namespace

void PlaceAgain(QWidget& oWindow, const QJsonValue& oGeometry) {
    oWindow.restoreGeometry(Unpacked(oGeometry));
    StandOnScreen(oWindow);
}

} // namespace corvane::desktop
