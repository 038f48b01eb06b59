#include "desktop/explorer/TreeModel.h"

#include <algorithm>

namespace corvane::desktop {

TreeModel::TreeModel(Ref<TreeView> oTreeView, std::shared_ptr<ImageIcons> pIcons, QObject* pParent)
    : NodeModel(std::move(oTreeView), std::move(pIcons), pParent) {
    m_oTree_Changed = Tree()->Changed.Subscribe([this](const TreeChange& oChange) { Tree_Changed(oChange); });
}

const std::vector<Node*>& TreeModel::ChildrenOf(const Node* pNode) const {
    return pNode ? pNode->Children() : Tree()->GetNodes()->Roots();
}

Node* TreeModel::NodeAt(const QModelIndex& oIndex) const {
    return static_cast<Node*>(oIndex.internalPointer());
}

QModelIndex TreeModel::ShownIndex(const Node* pNode) const {
    return pNode ? createIndex(pNode->Row(), 0, pNode) : QModelIndex();
}

QModelIndex TreeModel::IndexOf(const Node* pNode) {
    Flush();
    return pNode && pNode->IsInTree() ? ShownIndex(pNode) : QModelIndex();
}

QModelIndex TreeModel::index(int iRow, int iColumn, const QModelIndex& oParent) const {
    if (iColumn != 0 || iRow < 0 || iRow >= rowCount(oParent))
        return {};
    return createIndex(iRow, 0, ChildrenOf(NodeAt(oParent))[static_cast<std::size_t>(iRow)]);
}

QModelIndex TreeModel::parent(const QModelIndex& oIndex) const {
    const Node* pNode = NodeAt(oIndex);
    return pNode ? ShownIndex(pNode->Parent()) : QModelIndex();
}

int TreeModel::rowCount(const QModelIndex& oParent) const {
    const Node* pNode = NodeAt(oParent);
    if (!m_mapShown.empty()) {
        const auto it = m_mapShown.find(pNode);
        if (it != m_mapShown.end())
            return it->second;
    }
    return static_cast<int>(ChildrenOf(pNode).size());
}

bool TreeModel::hasChildren(const QModelIndex& oParent) const {
    return rowCount(oParent) > 0;
}

void TreeModel::Tree_Changed(const TreeChange& oChange) {
    switch (oChange.eWhat) {
    case TreeChange::What::BeforeInsert:
        return;
    case TreeChange::What::AfterInsert:
        NoteInsertion(oChange.pParent, oChange.lRow);
        break;
    case TreeChange::What::BeforeRemove:
        ShowInsertions();
        beginRemoveRows(ShownIndex(oChange.pParent), oChange.lRow, oChange.lRow);
        break;
    case TreeChange::What::AfterRemove:
        endRemoveRows();
        break;
    case TreeChange::What::BeforeClear:
        beginResetModel();
        break;
    case TreeChange::What::AfterClear:
        m_mapShown.clear();
        m_bHasLastParent = false;
        m_aChanged.clear();
        endResetModel();
        break;
    case TreeChange::What::NodeLook:
        if (m_aChanged.empty() || m_aChanged.back().Get() != oChange.pNode)
            m_aChanged.emplace_back(oChange.pNode);
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
void TreeModel::NoteInsertion(Node* pParent, Long lRow) {
    if (m_bHasLastParent && m_pLastParent == pParent)
        return;
    m_bHasLastParent = true;
    m_pLastParent = pParent;
    if (m_mapShown.find(pParent) == m_mapShown.end() && !IsHidden(pParent))
        m_mapShown.emplace(pParent, lRow);
}

bool TreeModel::IsHidden(const Node* pNode) const {
    if (m_mapShown.empty())
        return false;
    for (; pNode; pNode = pNode->Parent()) {
        const auto it = m_mapShown.find(pNode->Parent());
        if (it != m_mapShown.end() && pNode->Row() >= it->second)
            return true;
    }
    return false;
}

void TreeModel::Schedule() {
    if (m_bScheduled)
        return;
    m_bScheduled = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_bScheduled = false;
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
    m_bHasLastParent = false;
    while (!m_mapShown.empty()) {
        const auto [pParent, lShown] = *m_mapShown.begin();
        const auto lCount = static_cast<Long>(ChildrenOf(pParent).size());
        beginInsertRows(ShownIndex(pParent), lShown, lCount - 1);
        m_mapShown.erase(pParent);
        endInsertRows();
    }
}

// One range a parent, from its first changed child to its last.
void TreeModel::ShowLooks() {
    if (m_aChanged.empty())
        return;
    struct Range {
        Node* pFirst;
        Node* pLast;
    };
    std::unordered_map<const Node*, Range> mapRanges;
    const std::vector<Ref<Node>> aChanged = std::move(m_aChanged);
    m_aChanged.clear();
    for (const Ref<Node>& oNode : aChanged) {
        Node* pNode = oNode.Get();
        if (!pNode->IsInTree())
            continue;
        Range& oRange = mapRanges.try_emplace(pNode->Parent(), Range{pNode, pNode}).first->second;
        if (pNode->Row() < oRange.pFirst->Row())
            oRange.pFirst = pNode;
        if (pNode->Row() > oRange.pLast->Row())
            oRange.pLast = pNode;
    }
    static const QList<int> aRoles{Qt::DisplayRole, Qt::EditRole, Qt::DecorationRole};
    for (const auto& [pParent, oRange] : mapRanges)
        Q_EMIT dataChanged(ShownIndex(oRange.pFirst), ShownIndex(oRange.pLast), aRoles);
}

} // namespace corvane::desktop
