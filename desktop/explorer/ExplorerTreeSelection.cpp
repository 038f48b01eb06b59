// Several nodes at once, with Shift and Ctrl, by mouse and by keyboard. The library's selected item is one of them.
#include "desktop/explorer/ExplorerTree.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <algorithm>

namespace corvane::desktop {

namespace {

constexpr Qt::KeyboardModifiers extending = Qt::ShiftModifier | Qt::ControlModifier;

} // namespace

void ExplorerTree::SelectOne() {
    if (IsSeveral())
        m_items->Selected()->SetOne();
}

// Neighbours in one range: a view asks each range about each row that it draws.
void ExplorerTree::ApplySeveral() {
    QItemSelection selection;
    QModelIndex first;
    QModelIndex last;
    const auto end = [&] {
        if (first.isValid())
            selection.append(QItemSelectionRange(first, last));
    };
    for (const Ref<Node>& node : m_items->Selected()->Nodes()) {
        const QModelIndex index = IndexOf(node.Get());
        if (!index.isValid())
            continue;
        if (!first.isValid() || index.parent() != first.parent() || index.row() != last.row() + 1) {
            end();
            first = index;
        }
        last = index;
    }
    end();
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    if (!currentIndex().isValid())
        selectionModel()->setCurrentIndex(IndexOf(m_treeView->SelectedItem().Get()), QItemSelectionModel::NoUpdate);
}

// What is selected is decided here alone, whatever keys are held down.
QItemSelectionModel::SelectionFlags ExplorerTree::selectionCommand(const QModelIndex&, const QEvent*) const {
    return IsCarrying() ? QItemSelectionModel::NoUpdate : QItemSelectionModel::ClearAndSelect;
}

std::vector<Ref<Node>> ExplorerTree::NodesBetween(const QModelIndex& one, const QModelIndex& other) const {
    const bool down = visualRect(one).top() <= visualRect(other).top();
    const QModelIndex last = down ? other : one;
    std::vector<Ref<Node>> nodes;
    for (QModelIndex index = down ? one : other; index.isValid(); index = indexBelow(index)) {
        if (Node* node = Shown()->NodeAt(index))
            nodes.emplace_back(node);
        if (index == last)
            break;
    }
    return nodes;
}

// The library's selection moves to another one of them first, if it was this one.
bool ExplorerTree::TakeOut(const Ref<Node>& node) {
    const auto selection = m_items->Selected();
    if (!selection->IsSeveral() || m_treeView->SelectedItem() != node) {
        selection->Remove(node);
        return false;
    }
    const std::vector<Ref<Node>> nodes = selection->Nodes();
    const auto it = std::find(nodes.begin(), nodes.end(), node);
    const Ref<Node> next = it == nodes.begin() ? *(it + 1) : *(it - 1);
    if (ReportNode(next))
        selection->Remove(node);
    return false;
}

bool ExplorerTree::Extend(const Ref<Node>& node, Qt::KeyboardModifiers modifiers) {
    const auto selection = m_items->Selected();
    const bool isHere = selection->Tree() == m_treeView;
    {
        const QScopedValueRollback follows(m_followsModel, true);
        selectionModel()->setCurrentIndex(IndexOf(node.Get()), QItemSelectionModel::NoUpdate);
    }
    if (!modifiers.testFlag(Qt::ShiftModifier)) {
        m_anchor = node;
        if (isHere && selection->Has(*node))
            return TakeOut(node);
        selection->Add(m_treeView, node);
        return true;
    }
    if (!m_anchor || !m_anchor->IsInTree())
        m_anchor = m_treeView->SelectedItem() ? m_treeView->SelectedItem() : node;
    const QModelIndex from = IndexOf(m_anchor.Get());
    const QModelIndex to = IndexOf(node.Get());
    if (!visualRect(from).isValid() || !visualRect(to).isValid())
        return true;
    std::vector<Ref<Node>> nodes = NodesBetween(from, to);
    if (modifiers.testFlag(Qt::ControlModifier) && isHere)
        for (const Ref<Node>& other : selection->Nodes())
            if (std::find(nodes.begin(), nodes.end(), other) == nodes.end())
                nodes.push_back(other);
    selection->Set(m_treeView, std::move(nodes));
    return true;
}

// Of a press within several they stay, as they may be dragged or have their menu asked for. False when all is done.
bool ExplorerTree::PressedForSeveral(const QMouseEvent& event) {
    m_becomesOne = false;
    const bool left = event.button() == Qt::LeftButton;
    if (left && IsOnBranch(event.position().toPoint()))
        return true;
    const bool isIn = m_pressed && IsSeveral() && m_items->Selected()->Has(*m_pressed);
    if (left && m_pressed && (event.modifiers() & extending))
        return Extend(m_pressed, event.modifiers());
    if (isIn)
        m_becomesOne = left;
    else if (event.button() != Qt::MiddleButton)
        SelectOne();
    if (m_pressed)
        m_anchor = m_pressed;
    return true;
}

std::optional<QAbstractItemView::CursorAction> ExplorerTree::CursorActionOf(int key) {
    switch (key) {
    case Qt::Key_Up:
        return MoveUp;
    case Qt::Key_Down:
        return MoveDown;
    case Qt::Key_Home:
        return MoveHome;
    case Qt::Key_End:
        return MoveEnd;
    case Qt::Key_PageUp:
        return MovePageUp;
    case Qt::Key_PageDown:
        return MovePageDown;
    default:
        return std::nullopt;
    }
}

// Those beside the current one, in its folder.
void ExplorerTree::SelectSiblings() {
    const QModelIndex current = currentIndex();
    if (!current.isValid())
        return;
    std::vector<Ref<Node>> nodes;
    for (int row = 0; row < model()->rowCount(current.parent()); ++row)
        if (Node* node = Shown()->NodeAt(model()->index(row, 0, current.parent())))
            nodes.emplace_back(node);
    const Ref<Node> node(Shown()->NodeAt(current));
    m_items->Selected()->Set(m_treeView, std::move(nodes));
    if (node && node != m_treeView->SelectedItem())
        ReportNode(node);
}

bool ExplorerTree::KeyForSeveral(const QKeyEvent& event) {
    const Qt::KeyboardModifiers held = event.modifiers() & ~Qt::KeypadModifier;
    if (held & ~extending)
        return false;
    if (event.matches(QKeySequence::SelectAll)) {
        SelectSiblings();
        return true;
    }
    if (held == Qt::ControlModifier && event.key() == Qt::Key_M) {
        StartCarrying();
        return true;
    }
    const Ref<Node> current(Shown()->NodeAt(currentIndex()));
    if (held == Qt::ControlModifier && event.key() == Qt::Key_Space) {
        if (current && Extend(current, held))
            ReportNode(current);
        return true;
    }
    const auto action = CursorActionOf(event.key());
    if (!held || !action)
        return false;
    const QModelIndex index = moveCursor(*action, Qt::NoModifier);
    if (!index.isValid())
        return true;
    {
        const QScopedValueRollback follows(m_followsModel, true);
        selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
        scrollTo(index);
    }
    const Ref<Node> node(Shown()->NodeAt(index));
    if (held.testFlag(Qt::ShiftModifier) && node && Extend(node, held))
        ReportNode(node);
    return true;
}

// Commands aren't to act on what can't be seen: those below a folder that is closed, or all that the filter hides.
void ExplorerTree::DropHidden(const Node* closed) {
    const auto selection = m_items->Selected();
    if (!selection->IsSeveral() || selection->Tree() != m_treeView)
        return;
    std::vector<Ref<Node>> seen = selection->Nodes();
    std::erase_if(seen, [&](const Ref<Node>& node) {
        if (!closed)
            return !IndexOf(node.Get()).isValid();
        const Node* above = node->Parent();
        while (above && above != closed)
            above = above->Parent();
        return above != nullptr;
    });
    if (seen.size() < selection->Nodes().size())
        selection->Set(m_treeView, std::move(seen));
}

} // namespace corvane::desktop
