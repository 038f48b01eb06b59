#include "desktop/explorer/ExplorerTree.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QScopedValueRollback>
#include <QStyle>

namespace corvane::desktop {

namespace {

Long ButtonOf(Qt::MouseButton eButton) {
    switch (eButton) {
    case Qt::LeftButton:
        return LeftButton;
    case Qt::RightButton:
        return RightButton;
    case Qt::MiddleButton:
        return MiddleButton;
    default:
        return 0;
    }
}

Long ShiftOf(Qt::KeyboardModifiers eModifiers) {
    Long lShift = NoShift;
    if (eModifiers & Qt::ShiftModifier)
        lShift |= ShiftKey;
    if (eModifiers & Qt::ControlModifier)
        lShift |= CtrlKey;
    if (eModifiers & Qt::AltModifier)
        lShift |= AltKey;
    return lShift;
}

} // namespace

// The mark that opens and closes an item is no node, nor is its row left of the cell unless the style marks the
// whole row as selected.
Node* ExplorerTree::NodeAtPoint(const QPoint& oPoint) const {
    const QModelIndex oIndex = indexAt(oPoint);
    if (!oIndex.isValid() || IsOnBranch(oPoint))
        return nullptr;
    const bool bWholeRow = style()->styleHint(QStyle::SH_ItemView_ShowDecorationSelected, nullptr, this) != 0;
    return bWholeRow || visualRect(oIndex).contains(oPoint) ? Shown()->NodeAt(oIndex) : nullptr;
}

bool ExplorerTree::IsOnBranch(const QPoint& oPoint) const {
    const QModelIndex oIndex = indexAt(oPoint);
    if (!oIndex.isValid() || !model()->hasChildren(oIndex))
        return false;
    const QRect oCell = visualRect(oIndex);
    return isRightToLeft() ? oPoint.x() > oCell.right() && oPoint.x() <= oCell.right() + indentation()
                           : oPoint.x() < oCell.left() && oPoint.x() >= oCell.left() - indentation();
}

void ExplorerTree::ReportMouse(const Event<Long, Long, Single, Single>& oEvent, Long lButton, Long lShift,
                               const QPoint& oPoint) {
    m_fnGuard([oTree = m_oTreeView, &oEvent, lButton, lShift, oPoint] {
        oEvent.Raise(lButton, lShift, static_cast<Single>(oPoint.x()), static_cast<Single>(oPoint.y()));
    });
}

void ExplorerTree::ReportNode(const Ref<Node>& oNode) {
    if (!oNode)
        return;
    m_fnGuard([oTree = m_oTreeView, oNode] {
        oTree->SetSelectedItem(oNode);
        oTree->NodeClick.Raise(oNode);
    });
}

void ExplorerTree::ChooseSelected() {
    ReportNode(m_oTreeView->SelectedItem());
}

void ExplorerTree::mousePressEvent(QMouseEvent* pEvent) {
    m_oEditTimer.stop();
    const Long lButton = ButtonOf(pEvent->button());
    if (lButton == 0) {
        pEvent->ignore(); // the buttons for back and forward are the window's
        return;
    }
    Sync();
    const QPoint oPoint = pEvent->position().toPoint();
    m_oPressed = Ref<Node>(NodeAtPoint(oPoint));
    m_bPressPending = true;
    m_bPressIsDouble = false;
    m_bPressedSelected = m_oPressed && m_oPressed == m_oTreeView->SelectedItem() && hasFocus();
    if (pEvent->button() == Qt::LeftButton && IsOnBranch(oPoint)) {
        const QModelIndex oIndex = indexAt(oPoint);
        setExpanded(oIndex, !isExpanded(oIndex));
    }
    ReportMouse(m_oTreeView->MouseDown, lButton, ShiftOf(pEvent->modifiers()), oPoint);
    pEvent->accept();
}

void ExplorerTree::mouseDoubleClickEvent(QMouseEvent* pEvent) {
    Sync();
    const Ref<Node> oNode(NodeAtPoint(pEvent->position().toPoint()));
    if (pEvent->button() != Qt::LeftButton || !oNode || oNode != m_oTreeView->SelectedItem()) {
        mousePressEvent(pEvent);
        return;
    }
    m_oEditTimer.stop();
    m_bPressPending = true;
    m_bPressIsDouble = true;
    const QPointer<ExplorerTree> pAlive(this);
    m_fnGuard([oTree = m_oTreeView] { oTree->DblClick.Raise(); });
    if (!pAlive)
        return;
    Sync();
    const QModelIndex oIndex = IndexOf(oNode.Get());
    if (oIndex.isValid() && model()->hasChildren(oIndex))
        setExpanded(oIndex, !isExpanded(oIndex));
}

void ExplorerTree::mouseReleaseEvent(QMouseEvent* pEvent) {
    const Long lButton = ButtonOf(pEvent->button());
    if (lButton == 0 || !m_bPressPending) {
        pEvent->ignore();
        return;
    }
    const QPointer<ExplorerTree> pAlive(this);
    const QPoint oPoint = pEvent->position().toPoint();
    const QPoint oGlobal = pEvent->globalPosition().toPoint();
    const Long lShift = ShiftOf(pEvent->modifiers());
    m_bPressPending = false;
    const Ref<Node> oPressed = std::exchange(m_oPressed, nullptr);
    if (!m_bPressIsDouble)
        ReleaseOnNode(lButton, oPressed);
    if (!pAlive)
        return;
    if (lButton == LeftButton && m_bPressedSelected && !m_bPressIsDouble && lShift == NoShift &&
        NodeAtPoint(oPoint) == oPressed.Get())
        m_oEditTimer.start(QApplication::doubleClickInterval(), this);
    if (lButton == RightButton)
        Q_EMIT PopupPlace(oGlobal);
    ReportMouse(m_oTreeView->MouseUp, lButton, lShift, oPoint);
    pEvent->accept();
}

// The selection has moved at the press, so the click belongs to the node that was pressed, wherever the button is let
// go. The right button reports its node too, so that the menu is that of the node under the pointer.
void ExplorerTree::ReleaseOnNode(Long lButton, const Ref<Node>& oNode) {
    if (oNode && oNode->IsInTree()) {
        if (lButton == LeftButton)
            m_fnGuard([oTree = m_oTreeView, oNode] { oTree->ClickNode(oNode); });
        else if (lButton == RightButton)
            ReportNode(oNode);
    } else if (lButton == LeftButton && !oNode) {
        m_fnGuard([oTree = m_oTreeView] { oTree->Click.Raise(); });
    }
}

void ExplorerTree::mouseMoveEvent(QMouseEvent* pEvent) {
    if (pEvent->buttons() == Qt::NoButton)
        QTreeView::mouseMoveEvent(pEvent);
}

// A second, slow click on the selected item edits its label.
void ExplorerTree::timerEvent(QTimerEvent* pEvent) {
    if (pEvent->timerId() != m_oEditTimer.timerId()) {
        QTreeView::timerEvent(pEvent);
        return;
    }
    m_oEditTimer.stop();
    if (hasFocus())
        m_fnGuard([oTree = m_oTreeView] { oTree->StartLabelEdit(); });
}

void ExplorerTree::OpenSelected() {
    const Ref<Node> oNode = m_oTreeView->SelectedItem();
    if (!oNode)
        return;
    const QPointer<ExplorerTree> pAlive(this);
    ReportNode(oNode);
    if (pAlive)
        m_fnGuard([oTree = m_oTreeView] { oTree->DblClick.Raise(); });
}

void ExplorerTree::EditSelected() {
    const Ref<Node> oNode = m_oTreeView->SelectedItem();
    if (!oNode)
        return;
    const QPointer<ExplorerTree> pAlive(this);
    ReportNode(oNode);
    if (pAlive)
        m_fnGuard([oTree = m_oTreeView] { oTree->StartLabelEdit(); });
}

void ExplorerTree::OpenMenuByKey() {
    const QPointer<ExplorerTree> pAlive(this);
    QPoint oPoint = viewport()->rect().topLeft();
    if (const Ref<Node> oNode = m_oTreeView->SelectedItem()) {
        ReportNode(oNode);
        if (!pAlive)
            return;
        Sync();
        const QModelIndex oIndex = IndexOf(oNode.Get());
        if (oIndex.isValid()) {
            scrollTo(oIndex);
            oPoint = visualRect(oIndex).bottomLeft();
        }
    }
    Q_EMIT PopupPlace(viewport()->mapToGlobal(oPoint));
    ReportMouse(m_oTreeView->MouseUp, RightButton, NoShift, oPoint);
}

void ExplorerTree::keyPressEvent(QKeyEvent* pEvent) {
    if (state() == EditingState) {
        pEvent->accept(); // the label's editor leaves Return to whoever is behind it, once it has taken it
        return;
    }
    m_oEditTimer.stop();
    Sync();
    const bool bPlain = (pEvent->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const int iKey = pEvent->key();
    if (bPlain && (iKey == Qt::Key_Return || iKey == Qt::Key_Enter))
        OpenSelected();
    else if (bPlain && iKey == Qt::Key_F2)
        EditSelected();
    else if (iKey == Qt::Key_Menu || (iKey == Qt::Key_F10 && pEvent->modifiers() == Qt::ShiftModifier))
        OpenMenuByKey();
    else if (bPlain && iKey == Qt::Key_Space)
        ReportNode(Ref<Node>(Shown()->NodeAt(currentIndex())));
    else if (iKey == Qt::Key_Escape) {
        pEvent->ignore(); // the filter's
        return;
    } else {
        const QScopedValueRollback oByKey(m_bByKey, true);
        QTreeView::keyPressEvent(pEvent);
        return;
    }
    pEvent->accept();
}

void ExplorerTree::keyboardSearch(const QString& sText) {
    const QScopedValueRollback oByKey(m_bByKey, true);
    QTreeView::keyboardSearch(sText);
}

// Qt would make the first item current, as if somebody had gone there.
void ExplorerTree::focusInEvent(QFocusEvent* pEvent) {
    const QScopedValueRollback oFollows(m_bFollowsModel, true);
    QTreeView::focusInEvent(pEvent);
}

void ExplorerTree::currentChanged(const QModelIndex& oCurrent, const QModelIndex& oPrevious) {
    QTreeView::currentChanged(oCurrent, oPrevious);
    if (m_bFollowsModel || !m_bByKey)
        return;
    // What the node's subscribers do to the tree is not done by key any more.
    const QScopedValueRollback oByKey(m_bByKey, false);
    ReportNode(Ref<Node>(Shown()->NodeAt(oCurrent)));
}

// When a folder closes over the selected item, the selection goes to the folder.
void ExplorerTree::View_Toggled(const QModelIndex& oIndex, bool bExpanded) {
    if (m_bFollowsModel)
        return;
    const Ref<Node> oNode(Shown()->NodeAt(oIndex));
    if (!oNode)
        return;
    const Ref<Node> oSelected = m_oTreeView->SelectedItem();
    bool bHidesSelected = false;
    if (!bExpanded && oSelected)
        for (const Node* pAbove = oSelected->Parent(); pAbove && !bHidesSelected; pAbove = pAbove->Parent())
            bHidesSelected = pAbove == oNode.Get();
    if (!IsFiltered())
        m_fnGuard([oNode, bExpanded] { oNode->SetExpanded(bExpanded); });
    if (bHidesSelected)
        ReportNode(oNode);
}

} // namespace corvane::desktop
