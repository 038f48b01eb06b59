#include "desktop/inspector/EntryPicker.h"

#include "desktop/explorer/ExplorerTree.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QToolBar>
#include <QToolButton>

namespace corvane::desktop {

namespace {

const QAction* ActionAt(QObject* watched, const QPoint& point) {
    if (const auto* menu = qobject_cast<QMenu*>(watched))
        return menu->actionAt(point);
    if (const auto* menuBar = qobject_cast<QMenuBar*>(watched))
        return menuBar->actionAt(point);
    if (const auto* toolbar = qobject_cast<QToolBar*>(watched))
        return toolbar->actionAt(point);
    if (const auto* button = qobject_cast<QToolButton*>(watched))
        return button->defaultAction();
    return nullptr;
}

} // namespace

EntryPicker::EntryPicker(const BarActions& actions, ToolFunction tool, NodeFunction node, QObject* parent)
    : QObject(parent), m_actions(actions), m_tool(std::move(tool)), m_node(std::move(node)) {
    qApp->installEventFilter(this);
}

void EntryPicker::CloseMenus() {
    while (QWidget* popup = QApplication::activePopupWidget()) {
        popup->close();
        if (QApplication::activePopupWidget() == popup)
            break;
    }
}

bool EntryPicker::Pick(QObject* watched, const QPoint& point) {
    if (const QAction* action = ActionAt(watched, point)) {
        const Ref<Tool> tool = m_actions.InstanceOf(action);
        if (!tool)
            return false;
        CloseMenus();
        QMetaObject::invokeMethod(
            this, [this, tool] { m_tool(tool); }, Qt::QueuedConnection);
        return true;
    }
    const auto* tree = watched->parent() ? qobject_cast<ExplorerTree*>(watched->parent()) : nullptr;
    Node* nodePointer = tree && tree->viewport() == watched ? tree->NodeAtPoint(point) : nullptr;
    if (nodePointer)
        QMetaObject::invokeMethod(
            this, [this, node = Ref<Node>(nodePointer)] { m_node(node); }, Qt::QueuedConnection);
    return nodePointer;
}

bool EntryPicker::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress && watched->isWidgetType()) {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        m_picked = mouse->button() == Qt::LeftButton &&
                   mouse->modifiers().testFlags(Qt::ControlModifier | Qt::AltModifier) &&
                   Pick(watched, mouse->position().toPoint());
        return m_picked;
    }
    if (event->type() == QEvent::MouseButtonRelease && watched->isWidgetType())
        return std::exchange(m_picked, false);
    return QObject::eventFilter(watched, event);
}

} // namespace corvane::desktop

#include "moc_EntryPicker.cpp"
