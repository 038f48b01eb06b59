#include "desktop/welcome/EntryButton.h"

#include "desktop/style/Contrast.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>
#include <QStyleOptionFocusRect>

namespace corvane::desktop {

namespace {

constexpr int entryMargin = 8; // around everything
constexpr int picture = 20;    // pixels
constexpr int pictureGap = 10; // behind the picture
constexpr int anyHeight = 10000;
constexpr qreal corner = 5;

} // namespace

EntryButton::EntryButton(const QString& text, const QString& detail, QWidget* parent)
    : QAbstractButton(parent), m_detail(detail) {
    setText(text);
    setAccessibleName(text);
    setAccessibleDescription(detail);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setIconSize(QSize(picture, picture));
    QSizePolicy policy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void EntryButton::SetDone(bool done) {
    m_isDone = done;
    setAccessibleName(done ? tr("%1, done").arg(text()) : text());
}

QRect EntryButton::TextRect(int width) const {
    const int left = entryMargin + picture + pictureGap;
    return {left, entryMargin, qMax(width - left - entryMargin, 1), anyHeight};
}

int EntryButton::heightForWidth(int width) const {
    const int lines = fontMetrics().boundingRect(TextRect(width), Qt::TextWordWrap, text()).height();
    return qMax(lines + (m_detail.isEmpty() ? 0 : fontMetrics().height()), picture) + 2 * entryMargin;
}

QSize EntryButton::sizeHint() const {
    const int width = TextRect(0).left() + fontMetrics().horizontalAdvance(text()) + entryMargin;
    return {width, heightForWidth(width)};
}

// One line: the lines that a narrow place makes would count for the page in wide ones, too, which would scroll.
QSize EntryButton::minimumSizeHint() const {
    return {120, picture + 2 * entryMargin};
}

void EntryButton::PaintMark(QPainter& painter, const QRect& place) const {
    const QRectF ring = QRectF(place).adjusted(2, 2, -2, -2);
    const QColor ground = palette().color(QPalette::Window);
    if (!*m_isDone) {
        painter.setPen(QPen(Paler(palette().color(QPalette::WindowText), ground, 0.5F), 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(ring);
        return;
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::Active, QPalette::Highlight));
    painter.drawEllipse(ring);
    QPainterPath check;
    check.moveTo(ring.left() + ring.width() * 0.27, ring.top() + ring.height() * 0.52);
    check.lineTo(ring.left() + ring.width() * 0.44, ring.top() + ring.height() * 0.69);
    check.lineTo(ring.left() + ring.width() * 0.74, ring.top() + ring.height() * 0.34);
    painter.setPen(QPen(palette().color(QPalette::Active, QPalette::HighlightedText), 1.8, Qt::SolidLine, Qt::RoundCap,
                        Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(check);
}

void EntryButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if ((underMouse() || isDown()) && isEnabled()) {
        QColor hover = palette().color(QPalette::Active, QPalette::Highlight);
        hover.setAlphaF(isDown() ? 0.3F : 0.15F);
        painter.setPen(Qt::NoPen);
        painter.setBrush(hover);
        painter.drawRoundedRect(rect(), corner, corner);
    }
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Active, QPalette::Highlight), 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), corner, corner);
    }
    const auto mirrored = [this](const QRect& place) { return QStyle::visualRect(layoutDirection(), rect(), place); };
    const QRect mark = mirrored({entryMargin, entryMargin, picture, picture});
    if (m_isDone)
        PaintMark(painter, mark);
    else
        icon().paint(&painter, mark, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    const auto group = isEnabled() ? QPalette::Active : QPalette::Disabled;
    const QColor color = palette().color(group, QPalette::WindowText);
    const QRect space = mirrored(TextRect(width()));
    constexpr int side = Qt::AlignLeft; // the painter mirrors it
    QRect used;
    painter.setPen(m_isDone.value_or(false) ? Paler(color, palette().color(QPalette::Window), 0.6F) : color);
    const int flags = Qt::TextWordWrap | Qt::AlignTop | side;
    const int lines = fontMetrics().boundingRect(space, flags, text()).height();
    // One line stands beside the middle of the picture.
    const int top = m_detail.isEmpty() ? qMax(0, (picture - lines) / 2) : 0;
    painter.drawText(space.translated(0, top), flags, text(), &used);
    if (m_detail.isEmpty())
        return;
    painter.setPen(isEnabled() ? Paler(color, palette().color(QPalette::Window), 0.6F) : color);
    const QRect below(space.left(), used.bottom() + 1, space.width(), fontMetrics().height());
    painter.drawText(below, side, fontMetrics().elidedText(m_detail, Qt::ElideMiddle, below.width()));
}

void EntryButton::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        click();
        return;
    case Qt::Key_Down:
        focusNextPrevChild(true);
        return;
    case Qt::Key_Up:
        focusNextPrevChild(false);
        return;
    default:
        QAbstractButton::keyPressEvent(event);
    }
}

bool EntryButton::event(QEvent* event) {
    if (event->type() == QEvent::Enter || event->type() == QEvent::Leave)
        update();
    return QAbstractButton::event(event);
}

} // namespace corvane::desktop

#include "moc_EntryButton.cpp"
