#include "desktop/windows/PagePlace.h"

#include <QLayout>
#include <QScreen>
#include <algorithm>

namespace corvane::desktop {

namespace {

QSize WithoutHoles(const QSize& oSize, const QSize& oOther) {
    return {oSize.width() > 0 ? oSize.width() : oOther.width(), oSize.height() > 0 ? oSize.height() : oOther.height()};
}

} // namespace

PagePlace::PagePlace(const QSize& oPageSize, bool bIsResizable, QWidget* pParent)
    : QScrollArea(pParent), m_oPageSize(oPageSize), m_bIsResizable(bIsResizable) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    // The page has the colour of what is around it: a tab's pane, a dialog.
    viewport()->setAutoFillBackground(false);
}

void PagePlace::Fill(QWidget* pPage) {
    if (!m_bIsResizable) {
        pPage->setFixedSize(WithoutHoles(m_oPageSize, pPage->sizeHint()).expandedTo(pPage->minimumSize()));
        setWidgetResizable(false);
        setAlignment(Qt::AlignLeft | Qt::AlignTop);
    }
    const bool bFills = pPage->autoFillBackground();
    setWidget(pPage); // turns that on
    pPage->setAutoFillBackground(bFills);
    updateGeometry();
}

QSize PagePlace::sizeHint() const {
    if (m_oPretended.isValid())
        return m_oPretended;
    return WithoutHoles(m_oPageSize, widget() ? widget()->sizeHint() : QSize(320, 200));
}

// The page's own minimum counts, as far as the screen allows.
QSize PagePlace::minimumSizeHint() const {
    if (m_oPretended.isValid() || !widget())
        return {0, 0};
    const QSize oNeeded = widget()->minimumSizeHint().expandedTo(widget()->minimumSize());
    return oNeeded.boundedTo(screen()->availableSize() / 2).expandedTo(QSize(0, 0));
}

void PagePlace::Pretend(const QSize& oSize) {
    m_oPretended = oSize;
    updateGeometry();
}

} // namespace corvane::desktop
