#include "desktop/explorer/TreeModel.h"

#include <algorithm>

namespace corvane::desktop {

TreeModel::TreeModel(Ref<TreeView> treeView, std::shared_ptr<ImageIcons> icons, QObject* parent)
    : NodeModel(std::move(treeView), std::move(icons), parent) {
    m_tree_Changed = Tree()->Changed.Subscribe([this](const TreeChange& change) { Tree_Changed(change); });
}

const std::vector<Node*>& TreeModel::ChildrenOf(const Node* node) const {
    return node ? node->Children() : Tree()->GetNodes()->Roots();
}

Node* TreeModel::NodeAt(const QModelIndex& index) const {
    return static_cast<Node*>(index.internalPointer());
}

QModelIndex TreeModel::ShownIndex(const Node* node) const {
    return node ? createIndex(node->Row(), 0, node) : QModelIndex();
}

QModelIndex TreeModel::IndexOf(const Node* node) {
    Flush();
    return node && node->IsInTree() ? ShownIndex(node) : QModelIndex();
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex& parent) const {
    if (column != 0 || row < 0 || row >= rowCount(parent))
        return {};
    return createIndex(row, 0, ChildrenOf(NodeAt(parent))[static_cast<std::size_t>(row)]);
}

QModelIndex TreeModel::parent(const QModelIndex& index) const {
    const Node* node = NodeAt(index);
    return node ? ShownIndex(node->Parent()) : QModelIndex();
}

int TreeModel::rowCount(const QModelIndex& parent) const {
    const Node* node = NodeAt(parent);
    if (!m_shown.empty()) {
        const auto it = m_shown.find(node);
        if (it != m_shown.end())
            return it->second;
    }
    return static_cast<int>(ChildrenOf(node).size());
}

bool TreeModel::hasChildren(const QModelIndex& parent) const {
    if (rowCount(parent) > 0)
        return true;
    const Node* node = NodeAt(parent);
    return node && m_isLazy && m_isLazy(*node);
}

void TreeModel::Tree_Changed(const TreeChange& change) {
    switch (change.eWhat) {
    case TreeChange::What::BeforeInsert:
        return;
    case TreeChange::What::AfterInsert:
        NoteInsertion(change.pParent, change.lRow);
        break;
    case TreeChange::What::BeforeRemove:
        ShowInsertions();
        beginRemoveRows(ShownIndex(change.pParent), change.lRow, change.lRow);
        break;
    case TreeChange::What::AfterRemove:
        endRemoveRows();
        break;
    case TreeChange::What::BeforeClear:
        beginResetModel();
        break;
    case TreeChange::What::AfterClear:
        m_shown.clear();
        m_hasLastParent = false;
        m_changed.clear();
        endResetModel();
        break;
    case TreeChange::What::NodeLook:
        if (m_changed.empty() || m_changed.back().Get() != change.pNode)
            m_changed.emplace_back(change.pNode);
        break;
    case TreeChange::What::Expanded:
    case TreeChange::What::Selection:
    case TreeChange::What::Look:
    case TreeChange::What::Repaint:
        break;
    }
    Schedule();
}

// A node that Qt doesn't know yet takes all below it along when it is shown, so nothing is noted for it.
void TreeModel::NoteInsertion(Node* parent, Long row) {
    if (m_hasLastParent && m_lastParent == parent)
        return;
    m_hasLastParent = true;
    m_lastParent = parent;
    if (m_shown.find(parent) == m_shown.end() && !IsHidden(parent))
        m_shown.emplace(parent, row);
}

bool TreeModel::IsHidden(const Node* node) const {
    if (m_shown.empty())
        return false;
    for (; node; node = node->Parent()) {
        const auto it = m_shown.find(node->Parent());
        if (it != m_shown.end() && node->Row() >= it->second)
            return true;
    }
    return false;
}

void TreeModel::Schedule() {
    if (m_scheduled)
        return;
    m_scheduled = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_scheduled = false;
            Flush();
            Q_EMIT TurnEnded();
        },
        Qt::QueuedConnection);
}

void TreeModel::Flush() {
    ShowInsertions();
    ShowLooks();
}

void TreeModel::ShowInsertions() {
    m_hasLastParent = false;
    while (!m_shown.empty()) {
        const auto [parent, shown] = *m_shown.begin();
        const auto count = static_cast<Long>(ChildrenOf(parent).size());
        beginInsertRows(ShownIndex(parent), shown, count - 1);
        m_shown.erase(parent);
        endInsertRows();
    }
}

// One range a parent, from its first changed child to its last.
void TreeModel::ShowLooks() {
    if (m_changed.empty())
        return;
    struct Range {
        Node* first;
        Node* last;
    };
    std::unordered_map<const Node*, Range> ranges;
    const std::vector<Ref<Node>> changed = std::move(m_changed);
    m_changed.clear();
    for (const Ref<Node>& node : changed) {
        Node* nodePointer = node.Get();
        if (!nodePointer->IsInTree())
            continue;
        Range& range = ranges.try_emplace(nodePointer->Parent(), Range{nodePointer, nodePointer}).first->second;
        if (nodePointer->Row() < range.first->Row())
            range.first = nodePointer;
        if (nodePointer->Row() > range.last->Row())
            range.last = nodePointer;
    }
    static const QList<int> roles{Qt::DisplayRole, Qt::EditRole, Qt::DecorationRole};
    for (const auto& [parent, range] : ranges)
        Q_EMIT dataChanged(ShownIndex(range.first), ShownIndex(range.last), roles);
}

} // namespace corvane::desktop

#include "moc_TreeModel.cpp"
