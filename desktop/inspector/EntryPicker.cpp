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

const QAction* ActionAt(QObject* pWatched, const QPoint& oPoint) {
    if (const auto* pMenu = qobject_cast<QMenu*>(pWatched))
        return pMenu->actionAt(oPoint);
    if (const auto* pMenuBar = qobject_cast<QMenuBar*>(pWatched))
        return pMenuBar->actionAt(oPoint);
    if (const auto* pToolbar = qobject_cast<QToolBar*>(pWatched))
        return pToolbar->actionAt(oPoint);
    if (const auto* pButton = qobject_cast<QToolButton*>(pWatched))
        return pButton->defaultAction();
    return nullptr;
}

} // namespace

EntryPicker::EntryPicker(const BarActions& oActions, ToolFunction fnTool, NodeFunction fnNode, QObject* pParent)
    : QObject(pParent), m_oActions(oActions), m_fnTool(std::move(fnTool)), m_fnNode(std::move(fnNode)) {
    qApp->installEventFilter(this);
}

void EntryPicker::CloseMenus() {
    while (QWidget* pPopup = QApplication::activePopupWidget()) {
        pPopup->close();
        if (QApplication::activePopupWidget() == pPopup)
            break;
    }
}

bool EntryPicker::Pick(QObject* pWatched, const QPoint& oPoint) {
    if (const QAction* pAction = ActionAt(pWatched, oPoint)) {
        const Ref<Tool> oTool = m_oActions.InstanceOf(pAction);
        if (!oTool)
            return false;
        CloseMenus();
        QMetaObject::invokeMethod(
            this, [this, oTool] { m_fnTool(oTool); }, Qt::QueuedConnection);
        return true;
    }
    const auto* pTree = pWatched->parent() ? qobject_cast<ExplorerTree*>(pWatched->parent()) : nullptr;
    Node* pNode = pTree && pTree->viewport() == pWatched ? pTree->NodeAtPoint(oPoint) : nullptr;
    if (pNode)
        QMetaObject::invokeMethod(
            this, [this, oNode = Ref<Node>(pNode)] { m_fnNode(oNode); }, Qt::QueuedConnection);
    return pNode;
}

bool EntryPicker::eventFilter(QObject* pWatched, QEvent* pEvent) {
    if (pEvent->type() == QEvent::MouseButtonPress && pWatched->isWidgetType()) {
        const auto* pMouse = static_cast<QMouseEvent*>(pEvent);
        m_bPicked = pMouse->button() == Qt::LeftButton &&
                    pMouse->modifiers().testFlags(Qt::ControlModifier | Qt::AltModifier) &&
                    Pick(pWatched, pMouse->position().toPoint());
        return m_bPicked;
    }
    if (pEvent->type() == QEvent::MouseButtonRelease && pWatched->isWidgetType())
        return std::exchange(m_bPicked, false);
    return QObject::eventFilter(pWatched, pEvent);
}

} // namespace corvane::desktop
