#include "desktop/forms/PictureLabel.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>

namespace corvane::desktop {

void PictureLabel::ShowPicture(const forms::FormPicture& picture) {
    m_bytes = QByteArray(picture.bytes.data(), static_cast<qsizetype>(picture.bytes.size()));
    m_isScalable = picture.format == "svg+xml";
    QBuffer buffer(&m_bytes);
    m_size = QImageReader(&buffer).size();
    m_drawn = {};
    clear();
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    updateGeometry();
    update();
}

void PictureLabel::ShowText(const QString& text) {
    if (m_size.isValid()) {
        m_size = {};
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    }
    setText(text);
}

QSize PictureLabel::minimumSizeHint() const {
    constexpr QSize least(160, 120);
    return m_size.isValid() ? m_size.boundedTo(least) : QLabel::minimumSizeHint();
}

QSize PictureLabel::Fitting() const {
    const QSize there = size() * devicePixelRatio();
    const bool isTooLarge = m_size.width() > there.width() || m_size.height() > there.height();
    return m_isScalable || isTooLarge ? m_size.scaled(there, Qt::KeepAspectRatio) : m_size;
}

void PictureLabel::paintEvent(QPaintEvent* event) {
    if (!m_size.isValid()) {
        QLabel::paintEvent(event);
        return;
    }
    const QSize fitting = Fitting();
    if (m_drawn.size() != fitting) {
        QBuffer buffer(&m_bytes);
        QImageReader reader(&buffer);
        reader.setScaledSize(fitting);
        m_drawn = QPixmap::fromImage(reader.read());
        m_drawn.setDevicePixelRatio(devicePixelRatio());
    }
    const QSizeF shown = m_drawn.deviceIndependentSize();
    QPainter(this).drawPixmap(QPointF((width() - shown.width()) / 2, (height() - shown.height()) / 2), m_drawn);
}

} // namespace corvane::desktop
