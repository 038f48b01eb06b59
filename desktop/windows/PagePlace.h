// Where one page is in a window: it scrolls when there is less space than the page needs.
#pragma once

#include <QPointer>
#include <QPushButton>
#include <QScrollArea>

namespace corvane::desktop {

class PagePlace final : public QScrollArea {
    Q_OBJECT
public:
    // Pixels; nothing of a dimension that is 0. A page that isn't resizable keeps that size.
    PagePlace(const QSize& pageSize, bool isResizable, QWidget* parent);

    // Where the page's widget is to be made.
    [[nodiscard]] QWidget* ParentForPage() { return viewport(); }
    void Fill(QWidget* page);
    // The button that the page made its default before Fill, which Return presses in its fields; nothing without one.
    [[nodiscard]] QPushButton* OwnDefault() const { return m_ownDefault; }

    // What the place asks for until Fill, and afterwards where the definition gives no size.
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    // For measuring what around it isn't page; an invalid size ends it.
    void Pretend(const QSize& size);

private:
    QPointer<QPushButton> m_ownDefault;
    QSize m_pageSize;
    QSize m_pretended;
    bool m_isResizable;
};

} // namespace corvane::desktop
