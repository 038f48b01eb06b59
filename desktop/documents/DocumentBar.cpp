#include "desktop/documents/DocumentBar.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>

namespace corvane::desktop {

namespace {

constexpr int widestTab = 28;   // characters, of which the middle is left out
constexpr int widestPinned = 9; // likewise
constexpr int markHeight = 2;   // pixels
constexpr int gapWidth = 6;

} // namespace

DocumentBar::DocumentBar(QWidget* parent) : QTabBar(parent) {
    setDocumentMode(true);
    setDrawBase(true);
    setExpanding(false);
    setElideMode(Qt::ElideMiddle);
    setUsesScrollButtons(true);
    setTabsClosable(true);
    setAccessibleName(tr("Open windows"));
    connect(this, &QTabBar::currentChanged, this, [this](int tab) {
        if (!m_follows && tab >= 0)
            Q_EMIT Chosen(tab);
    });
    connect(this, &QTabBar::tabCloseRequested, this, &DocumentBar::CloseWanted);
}

void DocumentBar::Show(const std::vector<Tab>& tabs, int current) {
    const QScopedValueRollback follows(m_follows, true);
    std::vector<bool> pinned;
    for (const Tab& tab : tabs)
        pinned.push_back(tab.isPinned);
    const int tabCount = static_cast<int>(tabs.size());
    const bool buttonsDiffer = pinned != m_pinned;
    m_pinned = std::move(pinned);
    while (count() > tabCount)
        removeTab(count() - 1);
    while (count() < tabCount)
        addTab({});
    if (buttonsDiffer) { // makes those of all tabs again; the old ones go with the event loop's next turn
        for (int i = 0; i < tabCount; ++i)
            for (const ButtonPosition side : {LeftSide, RightSide})
                if (QWidget* button = tabButton(i, side))
                    button->hide();
        setTabsClosable(false);
        setTabsClosable(true);
    }
    for (int i = 0; i < tabCount; ++i) {
        const Tab& tab = tabs[static_cast<std::size_t>(i)];
        const QString text = QString(tab.title).replace('&', "&&");
        if (tabText(i) != text || tabIcon(i).cacheKey() != tab.icon.cacheKey()) {
            setTabText(i, text);
            setTabIcon(i, tab.icon);
            setTabToolTip(i, tab.title.toHtmlEscaped());
        }
        setAccessibleTabName(i, tab.isPinned ? tr("%1, pinned").arg(tab.title) : tab.title);
        if (isTabVisible(i) != tab.isShown)
            setTabVisible(i, tab.isShown);
        if (tab.isPinned)
            for (const ButtonPosition side : {LeftSide, RightSide})
                setTabButton(i, side, nullptr);
    }
    if (current >= 0)
        setCurrentIndex(current);
    update();
}

void DocumentBar::SetActive(bool active) {
    if (std::exchange(m_isActive, active) != active)
        update();
}

bool DocumentBar::IsPinned(int index) const {
    return index >= 0 && static_cast<std::size_t>(index) < m_pinned.size() && m_pinned[static_cast<std::size_t>(index)];
}

int DocumentBar::IndexFor(const QPoint& place) const {
    for (int i = 0; i < count(); ++i)
        if (isTabVisible(i) && place.x() < tabRect(i).center().x())
            return i;
    return count();
}

QRect DocumentBar::GapAt(int index) const {
    int x = 0;
    for (int i = 0; i < count(); ++i)
        if (isTabVisible(i))
            x = i < index ? tabRect(i).right() - gapWidth / 2 : x;
    return {qMin(x, width() - gapWidth), 0, gapWidth, height()};
}

QSize DocumentBar::tabSizeHint(int index) const {
    QSize size = QTabBar::tabSizeHint(index);
    const int widest = fontMetrics().averageCharWidth() * (IsPinned(index) ? widestPinned : widestTab);
    const int beside = IsPinned(index) ? iconSize().width() + 16 : iconSize().width() + 40;
    size.setWidth(qMin(size.width(), widest + beside));
    return size;
}

QSize DocumentBar::minimumTabSizeHint(int index) const {
    return tabSizeHint(index); // a bar that is too narrow scrolls
}

void DocumentBar::mousePressEvent(QMouseEvent* event) {
    m_pressed = tabAt(event->pos());
    m_pressedAt = event->pos();
    QTabBar::mousePressEvent(event); // whose tab may go with what follows
    if (event->button() == Qt::LeftButton && m_pressed >= 0 && m_pressed == currentIndex())
        Q_EMIT Chosen(m_pressed); // also of a group that isn't the active one
}

void DocumentBar::mouseMoveEvent(QMouseEvent* event) {
    QTabBar::mouseMoveEvent(event);
    if (m_pressed < 0 || !(event->buttons() & Qt::LeftButton))
        return;
    if (!m_drags && (event->pos() - m_pressedAt).manhattanLength() < QApplication::startDragDistance())
        return;
    if (!std::exchange(m_drags, true))
        grabKeyboard(); // for the key that ends it
    Q_EMIT Dragged(m_pressed, event->globalPosition().toPoint());
}

void DocumentBar::mouseReleaseEvent(QMouseEvent* event) {
    QTabBar::mouseReleaseEvent(event);
    const int tab = std::exchange(m_pressed, -1);
    const bool drags = m_drags;
    EndDrag();
    if (drags)
        Q_EMIT Dropped(tab, event->globalPosition().toPoint());
    else if (event->button() == Qt::MiddleButton && tab >= 0 && tab == tabAt(event->pos()))
        Q_EMIT CloseWanted(tab);
}

void DocumentBar::keyPressEvent(QKeyEvent* event) {
    if (m_drags && event->key() == Qt::Key_Escape) {
        m_pressed = -1;
        EndDrag();
        return;
    }
    QTabBar::keyPressEvent(event);
}

void DocumentBar::EndDrag() {
    if (!std::exchange(m_drags, false))
        return;
    releaseKeyboard();
    Q_EMIT DragEnded();
}

void DocumentBar::contextMenuEvent(QContextMenuEvent* event) {
    const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
    const int tab = byMouse ? tabAt(event->pos()) : currentIndex();
    if (tab >= 0)
        Q_EMIT MenuWanted(tab, byMouse ? event->globalPos() : mapToGlobal(tabRect(tab).bottomLeft()));
}

// A line along the tab in front, in the accent's colour in the one group that commands go to.
void DocumentBar::paintEvent(QPaintEvent* event) {
    QTabBar::paintEvent(event);
    if (currentIndex() < 0 || !isTabVisible(currentIndex()))
        return;
    QPainter painter(this);
    const QRect tab = tabRect(currentIndex());
    painter.fillRect(QRect(tab.left(), tab.top(), tab.width(), markHeight),
                     palette().color(m_isActive ? QPalette::Active : QPalette::Inactive,
                                     m_isActive ? QPalette::Highlight : QPalette::Mid));
}

bool DocumentBar::event(QEvent* event) {
    if (event->type() == QEvent::UngrabMouse && m_drags) {
        m_pressed = -1;
        EndDrag();
    }
    return QTabBar::event(event);
}

} // namespace corvane::desktop

#include "moc_DocumentBar.cpp"
