// Where one page stands in a window: it scrolls when there is less room than the page needs.
#pragma once

#include <QScrollArea>

namespace corvane::desktop {

class PagePlace final : public QScrollArea {
    Q_OBJECT
public:
    // Pixels; nothing of a dimension that is 0. A page that isn't resizable keeps that size.
    PagePlace(const QSize& oPageSize, bool bIsResizable, QWidget* pParent);

    // Where the page's widget is to be made.
    [[nodiscard]] QWidget* ParentForPage() { return viewport(); }
    void Fill(QWidget* pPage);

    // What the place asks for until Fill, and afterwards where the definition gives no size.
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    // For measuring what around it isn't page; an invalid size ends it.
    void Pretend(const QSize& oSize);

private:
    QSize m_oPageSize;
    QSize m_oPretended;
    bool m_bIsResizable;
};

} // namespace corvane::desktop
