#include "desktop/session/WindowPlace.h"

#include <QGuiApplication>
#include <QRegion>
#include <QScreen>
#include <QStyle>
#include <algorithm>

namespace corvane::desktop {

QString Packed(const QByteArray& bytes) {
    return QString::fromLatin1(bytes.toBase64());
}

QByteArray Unpacked(const QJsonValue& value) {
    return QByteArray::fromBase64(value.toString().toLatin1());
}

namespace {

void MoveOntoScreen(QWidget& window) {
    if (window.isMaximized() || window.isFullScreen())
        return;
    QRect place = window.geometry();
    QRegion screens;
    for (const QScreen* screen : QGuiApplication::screens())
        screens += screen->availableGeometry();
    if (QRegion(place).subtracted(screens).isEmpty())
        return;
    const QScreen* screen = QGuiApplication::screenAt(place.center());
    constexpr int border = 4;
    const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    const QRect room = (screen ? screen : QGuiApplication::primaryScreen())
                           ->availableGeometry()
                           .adjusted(border, title, -border, -border);
    place.setSize(place.size().boundedTo(room.size()));
    place.moveTo(std::clamp(place.left(), room.left(), room.right() + 1 - place.width()),
                 std::clamp(place.top(), room.top(), room.bottom() + 1 - place.height()));
    window.setGeometry(place);
}

} // namespace

void PlaceAgain(QWidget& window, const QJsonValue& geometry) {
    window.restoreGeometry(Unpacked(geometry));
    MoveOntoScreen(window);
}

} // namespace corvane::desktop
