#include "desktop/windows/PagePlace.h"

#include <QLayout>
#include <QScreen>
#include <algorithm>

namespace corvane::desktop {

namespace {

QSize WithoutHoles(const QSize& size, const QSize& other) {
    return {size.width() > 0 ? size.width() : other.width(), size.height() > 0 ? size.height() : other.height()};
}

} // namespace

PagePlace::PagePlace(const QSize& pageSize, bool isResizable, QWidget* parent)
    : QScrollArea(parent), m_pageSize(pageSize), m_isResizable(isResizable) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    // The page has the colour of what is around it: a tab's pane, a dialog.
    viewport()->setAutoFillBackground(false);
}

void PagePlace::Fill(QWidget* page) {
    if (!m_isResizable) {
        page->setFixedSize(WithoutHoles(m_pageSize, page->sizeHint()).expandedTo(page->minimumSize()));
        setWidgetResizable(false);
        setAlignment(Qt::AlignLeft | Qt::AlignTop);
    }
    const auto buttons = page->findChildren<QPushButton*>();
    const auto own =
        std::find_if(buttons.begin(), buttons.end(), [](const auto* button) { return button->isDefault(); });
    m_ownDefault = own == buttons.end() ? nullptr : *own;
    const bool fills = page->autoFillBackground();
    setWidget(page); // turns that on
    page->setAutoFillBackground(fills);
    updateGeometry();
}

QSize PagePlace::sizeHint() const {
    if (m_pretended.isValid())
        return m_pretended;
    return WithoutHoles(m_pageSize, widget() ? widget()->sizeHint() : QSize(320, 200));
}

// The page's own minimum counts, as far as the screen allows.
QSize PagePlace::minimumSizeHint() const {
    if (m_pretended.isValid() || !widget())
        return {0, 0};
    const QSize needed = widget()->minimumSizeHint().expandedTo(widget()->minimumSize());
    return needed.boundedTo(screen()->availableSize() / 2).expandedTo(QSize(0, 0));
}

void PagePlace::Pretend(const QSize& size) {
    m_pretended = size;
    updateGeometry();
}

} // namespace corvane::desktop

#include "moc_PagePlace.cpp"
