// Where a window was, as a text for a file of what is kept, and back.
#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QString>
#include <QWidget>

namespace corvane::desktop {

// Bytes, such as Qt's of geometry and docks, for JSON.
[[nodiscard]] QString Packed(const QByteArray& bytes);
[[nodiscard]] QByteArray Unpacked(const QJsonValue& value);

// The window as it was by Packed(saveGeometry()), unless it would reach beyond the screens that are there now: then it
// comes to one that is there, and becomes smaller as far as needed.
void PlaceAgain(QWidget& window, const QJsonValue& geometry);

} // namespace corvane::desktop
