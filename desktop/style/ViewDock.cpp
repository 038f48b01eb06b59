#include "desktop/style/ViewDock.h"

#include <QKeyEvent>
#include <QMainWindow>

namespace corvane::desktop {

namespace {

constexpr int firstHeight = 240; // pixels

} // namespace

ViewDock::ViewDock(const QString& name, const QString& title, QMainWindow& window, MakeFunction make)
    : QDockWidget(title, &window), m_make(std::move(make)) {
    setObjectName(name);
    hide();
    const QList<ViewDock*> others = AllOf(window);
    window.addDockWidget(Qt::BottomDockWidgetArea, this);
    for (ViewDock* other : others)
        if (other != this && window.dockWidgetArea(other) == Qt::BottomDockWidgetArea && !other->isFloating()) {
            window.tabifyDockWidget(other, this);
            break;
        }
    window.restoreDockWidget(this); // where it was kept
}

QList<ViewDock*> ViewDock::AllOf(const QMainWindow& window) {
    return window.findChildren<ViewDock*>(QString(), Qt::FindDirectChildrenOnly);
}

void ViewDock::ResetPlaces(QMainWindow& window) {
    ViewDock* first = nullptr;
    for (ViewDock* view : AllOf(window)) {
        const bool isOpen = view->IsOpen();
        view->setFloating(false);
        if (first)
            window.tabifyDockWidget(first, view);
        else
            window.addDockWidget(Qt::BottomDockWidgetArea, view);
        first = first ? first : view;
        view->setVisible(isOpen);
    }
    if (first)
        window.resizeDocks({first}, {firstHeight}, Qt::Vertical);
}

void ViewDock::setVisible(bool visible) {
    const bool isFirst = visible && !widget();
    if (isFirst)
        setWidget(m_make());
    QDockWidget::setVisible(visible);
}

void ViewDock::Open() {
    auto* window = static_cast<QMainWindow*>(parentWidget());
    const bool isNew = !IsOpen() && height() < firstHeight / 2;
    show();
    if (isNew && !isFloating())
        window->resizeDocks({this}, {firstHeight}, Qt::Vertical);
    raise();
    activateWindow();
    if (QWidget* content = widget()) {
        QWidget* inside = content->focusWidget() ? content->focusWidget() : content;
        inside->setFocus(Qt::OtherFocusReason);
    }
}

void ViewDock::closeEvent(QCloseEvent* event) {
    QDockWidget::closeEvent(event);
    if (QWidget* content = widget()) {
        setWidget(nullptr);
        content->hide();
        content->deleteLater(); // one of its buttons may be the reason
    }
    Q_EMIT Left();
}

void ViewDock::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier)
        Q_EMIT Left();
    else
        QDockWidget::keyPressEvent(event);
}

} // namespace corvane::desktop

#include "moc_ViewDock.cpp"
