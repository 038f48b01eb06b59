#include "desktop/explorer/ExplorerTree.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QStyle>

namespace corvane::desktop {

namespace {

Long ButtonOf(Qt::MouseButton button) {
    switch (button) {
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

Long ShiftOf(Qt::KeyboardModifiers modifiers) {
    Long shift = NoShift;
    if (modifiers & Qt::ShiftModifier)
        shift |= ShiftKey;
    if (modifiers & Qt::ControlModifier)
        shift |= CtrlKey;
    if (modifiers & Qt::AltModifier)
        shift |= AltKey;
    return shift;
}

} // namespace

// The mark that opens and closes an item isn't a node, nor is its row left of the cell unless the style marks the
// whole row as selected.
Node* ExplorerTree::NodeAtPoint(const QPoint& point) const {
    const QModelIndex index = indexAt(point);
    if (!index.isValid() || IsOnBranch(point))
        return nullptr;
    const bool wholeRow = style()->styleHint(QStyle::SH_ItemView_ShowDecorationSelected, nullptr, this) != 0;
    return wholeRow || visualRect(index).contains(point) ? Shown()->NodeAt(index) : nullptr;
}

bool ExplorerTree::IsOnBranch(const QPoint& point) const {
    const QModelIndex index = indexAt(point);
    if (!index.isValid() || !model()->hasChildren(index))
        return false;
    const QRect cell = visualRect(index);
    return isRightToLeft() ? point.x() > cell.right() && point.x() <= cell.right() + indentation()
                           : point.x() < cell.left() && point.x() >= cell.left() - indentation();
}

void ExplorerTree::ReportMouse(const Event<Long, Long, Single, Single>& event, Long button, Long shift,
                               const QPoint& point) {
    m_guard([tree = m_treeView, &event, button, shift, point] {
        event.Raise(button, shift, static_cast<Single>(point.x()), static_cast<Single>(point.y()));
    });
}

bool ExplorerTree::ReportNode(const Ref<Node>& node) {
    return !node || m_guard(*this, [tree = m_treeView, node] {
        tree->SetSelectedItem(node);
        tree->NodeClick.Raise(node);
    });
}

void ExplorerTree::ChooseSelected() {
    ReportNode(m_treeView->SelectedItem());
}

void ExplorerTree::mousePressEvent(QMouseEvent* event) {
    m_editTimer.stop();
    const Long button = ButtonOf(event->button());
    if (button == 0) {
        event->ignore(); // the buttons for back and forward are the window's
        return;
    }
    Sync();
    const QPoint point = event->position().toPoint();
    m_pressed = Ref<Node>(NodeAtPoint(point));
    m_pressPending = true;
    m_pressIsDouble = false;
    m_pressedSelected = m_pressed && m_pressed == m_treeView->SelectedItem() && hasFocus() && !IsSeveral();
    m_pressPoint = point;
    if (!PressedForSeveral(*event)) {
        m_pressPending = false;
        event->accept();
        return;
    }
    if (event->button() == Qt::LeftButton && IsOnBranch(point)) {
        const QModelIndex index = indexAt(point);
        setExpanded(index, !isExpanded(index));
    }
    ReportMouse(m_treeView->MouseDown, button, ShiftOf(event->modifiers()), point);
    event->accept();
}

void ExplorerTree::mouseDoubleClickEvent(QMouseEvent* event) {
    Sync();
    const Ref<Node> node(NodeAtPoint(event->position().toPoint()));
    if (event->button() != Qt::LeftButton || !node || node != m_treeView->SelectedItem()) {
        mousePressEvent(event);
        return;
    }
    m_editTimer.stop();
    m_pressPending = true;
    m_pressIsDouble = true;
    if (!m_guard(*this, [tree = m_treeView] { tree->DblClick.Raise(); }))
        return;
    Sync();
    const QModelIndex index = IndexOf(node.Get());
    if (index.isValid() && model()->hasChildren(index))
        setExpanded(index, !isExpanded(index));
}

void ExplorerTree::mouseReleaseEvent(QMouseEvent* event) {
    const Long button = ButtonOf(event->button());
    if (button == 0 || !m_pressPending) {
        event->ignore();
        return;
    }
    const QPoint point = event->position().toPoint();
    const QPoint global = event->globalPosition().toPoint();
    const Long shift = ShiftOf(event->modifiers());
    m_pressPending = false;
    if (std::exchange(m_becomesOne, false))
        SelectOne();
    const Ref<Node> pressed = std::exchange(m_pressed, nullptr);
    if (!m_pressIsDouble && !ReleaseOnNode(button, pressed))
        return;
    if (button == LeftButton && m_pressedSelected && !m_pressIsDouble && shift == NoShift &&
        NodeAtPoint(point) == pressed.Get())
        m_editTimer.start(QApplication::doubleClickInterval(), this);
    if (button == RightButton)
        Q_EMIT PopupPlace(global);
    ReportMouse(m_treeView->MouseUp, button, shift, point);
    event->accept();
}

// The selection has moved at the press, so the click belongs to the node that was pressed, wherever the button is let
// go. The right button reports its node too, so that the menu is that of the node under the pointer.
bool ExplorerTree::ReleaseOnNode(Long button, const Ref<Node>& node) {
    if (node && node->IsInTree()) {
        if (button == LeftButton)
            return m_guard(*this, [tree = m_treeView, node] { tree->ClickNode(node); });
        return button != RightButton || ReportNode(node);
    }
    return button != LeftButton || node || m_guard(*this, [tree = m_treeView] { tree->Click.Raise(); });
}

void ExplorerTree::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() == Qt::NoButton)
        QTreeView::mouseMoveEvent(event);
    const int way = (event->position().toPoint() - m_pressPoint).manhattanLength();
    if (event->buttons() == Qt::LeftButton && m_pressed && m_pressPending && way >= QApplication::startDragDistance())
        StartDrag();
}

// A second, slow click on the selected item edits its label.
void ExplorerTree::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_editTimer.timerId()) {
        QTreeView::timerEvent(event);
        return;
    }
    m_editTimer.stop();
    if (hasFocus())
        m_guard([tree = m_treeView] { tree->StartLabelEdit(); });
}

void ExplorerTree::OpenSelected() {
    const Ref<Node> node = m_treeView->SelectedItem();
    if (!node)
        return;
    if (ReportNode(node))
        m_guard([tree = m_treeView] { tree->DblClick.Raise(); });
}

void ExplorerTree::EditSelected() {
    const Ref<Node> node = m_treeView->SelectedItem();
    if (!node)
        return;
    SelectOne();
    if (ReportNode(node))
        m_guard([tree = m_treeView] { tree->StartLabelEdit(); });
}

void ExplorerTree::OpenMenuByKey() {
    QPoint point = viewport()->rect().topLeft();
    if (const Ref<Node> node = m_treeView->SelectedItem()) {
        if (!ReportNode(node))
            return;
        Sync();
        const QModelIndex index = IndexOf(node.Get());
        if (index.isValid()) {
            scrollTo(index);
            point = visualRect(index).bottomLeft();
        }
    }
    Q_EMIT PopupPlace(viewport()->mapToGlobal(point));
    ReportMouse(m_treeView->MouseUp, RightButton, NoShift, point);
}

void ExplorerTree::keyPressEvent(QKeyEvent* event) {
    if (state() == EditingState) {
        event->accept(); // the label's editor leaves Return to whoever is behind it, once it has taken it
        return;
    }
    m_editTimer.stop();
    Sync();
    const bool plain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const int key = event->key();
    if (KeyWhileCarrying(*event) || KeyForSeveral(*event)) {
        event->accept();
        return;
    }
    if (plain && (key == Qt::Key_Return || key == Qt::Key_Enter))
        OpenSelected();
    else if (plain && key == Qt::Key_F2)
        EditSelected();
    else if (key == Qt::Key_Menu || (key == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier))
        OpenMenuByKey();
    else if (plain && key == Qt::Key_Space) {
        SelectOne();
        ReportNode(Ref<Node>(Shown()->NodeAt(currentIndex())));
    } else if (key == Qt::Key_Escape) {
        event->ignore(); // the filter's
        return;
    } else {
        const QScopedValueRollback byKey(m_byKey, true);
        QTreeView::keyPressEvent(event);
        return;
    }
    event->accept();
}

void ExplorerTree::keyboardSearch(const QString& text) {
    const QScopedValueRollback byKey(m_byKey, true);
    QTreeView::keyboardSearch(text);
}

// Qt would make the first item current, as if someone had gone there.
void ExplorerTree::focusInEvent(QFocusEvent* event) {
    const QScopedValueRollback follows(m_followsModel, true);
    QTreeView::focusInEvent(event);
}

void ExplorerTree::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTreeView::currentChanged(current, previous);
    if (m_followsModel || !m_byKey)
        return;
    // What the node's subscribers do to the tree is not done by key any more.
    const QScopedValueRollback byKey(m_byKey, false);
    SelectOne();
    m_anchor = Ref<Node>(Shown()->NodeAt(current));
    ReportNode(Ref<Node>(Shown()->NodeAt(current)));
}

// When a folder closes over the selected item, the selection goes to the folder.
void ExplorerTree::View_Toggled(const QModelIndex& index, bool expanded) {
    if (m_followsModel)
        return;
    const Ref<Node> node(Shown()->NodeAt(index));
    if (!node)
        return;
    if (expanded && state() == DraggingState && m_items->IsLazy(*node)) {
        collapse(index); // what its item does then may fail, or take its time
        return;
    }
    m_items->Settle();
    if (!expanded)
        DropHidden(node.Get());
    const Ref<Node> selected = m_treeView->SelectedItem();
    bool hidesSelected = false;
    if (!expanded && selected)
        for (const Node* above = selected->Parent(); above && !hidesSelected; above = above->Parent())
            hidesSelected = above == node.Get();
    if (!IsFiltered())
        m_guard([node, expanded] { node->SetExpanded(expanded); });
    if (hidesSelected)
        ReportNode(node);
}

} // namespace corvane::desktop
