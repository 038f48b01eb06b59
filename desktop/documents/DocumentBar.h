// The tabs of one group of windows. It says what a user does to a tab; what comes of it is decided elsewhere.
#pragma once

#include <QTabBar>
#include <vector>

namespace corvane::desktop {

class DocumentBar final : public QTabBar {
    Q_OBJECT
public:
    explicit DocumentBar(QWidget* parent = nullptr);

    struct Tab {
        QString title; // whole, with the sign of what isn't saved
        QIcon icon;
        bool isPinned = false;
        bool isShown = true;
    };
    // Without a signal.
    void Show(const std::vector<Tab>& tabs, int current);
    // Whether commands go to a window of this group: its tab has the accent's colour.
    void SetActive(bool active);
    // Where a tab that is dropped there would be, from 0 to the count.
    [[nodiscard]] int IndexFor(const QPoint& place) const;
    // The border between two tabs, where one would be dropped.
    [[nodiscard]] QRect GapAt(int index) const;

Q_SIGNALS:
    void Chosen(int tab);
    void CloseWanted(int tab);
    void MenuWanted(int tab, const QPoint& global);
    // While a tab is held, in pixels of the screen; then one of the other two.
    void Dragged(int tab, const QPoint& global);
    void Dropped(int tab, const QPoint& global);
    void DragEnded();

protected:
    [[nodiscard]] QSize tabSizeHint(int index) const override;
    [[nodiscard]] QSize minimumTabSizeHint(int index) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    void EndDrag();
    [[nodiscard]] bool IsPinned(int index) const;

    std::vector<bool> m_pinned;
    QPoint m_pressedAt;
    int m_pressed = -1; // the tab under the button that is held
    bool m_drags = false;
    bool m_isActive = false;
    bool m_follows = false;
};

} // namespace corvane::desktop
