#include "desktop/forms/ProblemLine.h"

#include "desktop/style/Contrast.h"

#include <QAccessible>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>

namespace corvane::desktop {

QColor ProblemColor(const QPalette& palette) {
    if (IsOfContrast(palette))
        return palette.color(QPalette::WindowText);
    const QColor dark(0xb3, 0x26, 0x1e);
    const QColor light(0xf2, 0xb8, 0xb5);
    const QColor ground = palette.color(QPalette::Window);
    return ContrastOf(dark, ground) >= ContrastOf(light, ground) ? dark : light;
}

ProblemLine::ProblemLine(QWidget* parent) : QWidget(parent), m_icon(new QLabel(this)), m_text(new QLabel(this)) {
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(fontMetrics().averageCharWidth() / 2);
    line->addWidget(m_icon, 0, Qt::AlignTop);
    line->addWidget(m_text, 1);
    StayAtIcon();
    FollowPalette();
}

void ProblemLine::SetText(const QString& text) {
    if (m_text->text() == text)
        return;
    m_text->setText(text);
    QAccessibleEvent said(m_text, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
}

void ProblemLine::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LayoutDirectionChange)
        StayAtIcon();
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange)
        FollowPalette();
}

// Whatever the direction of the text itself.
void ProblemLine::StayAtIcon() {
    const Qt::Alignment side = isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft;
    m_text->setAlignment(side | Qt::AlignAbsolute | Qt::AlignVCenter);
}

void ProblemLine::FollowPalette() {
    const int size = fontMetrics().height();
    m_icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this).pixmap(QSize(size, size)));
    QPalette palette;
    palette.setColor(QPalette::WindowText, ProblemColor(this->palette()));
    m_text->setPalette(palette);
}

} // namespace corvane::desktop

#include "moc_ProblemLine.cpp"
