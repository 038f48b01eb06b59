// An item model straight over the nodes of a tree: an index points at its node, and nothing is copied.
// What happens to the nodes is told to Qt at the end of the turn of the event loop, in few words: until then added
// nodes aren't shown, and changed ones are drawn as they are. Removals are told at once.
#pragma once

#include "desktop/explorer/NodeModel.h"

#include <unordered_map>
#include <vector>

namespace corvane::desktop {

class TreeModel final : public NodeModel {
    Q_OBJECT
public:
    TreeModel(Ref<TreeView> oTreeView, std::shared_ptr<ImageIcons> pIcons, QObject* pParent = nullptr);

    // Tells Qt now what waits for the end of the turn.
    void Flush();
    // Asks for an end of the turn even when no node has changed.
    void Schedule();

    Node* NodeAt(const QModelIndex& oIndex) const override;
    // Flushes before, so that a node which has just been added has an index too.
    QModelIndex IndexOf(const Node* pNode) override;

    using QAbstractItemModel::parent;
    QModelIndex index(int iRow, int iColumn, const QModelIndex& oParent = {}) const override;
    QModelIndex parent(const QModelIndex& oIndex) const override;
    int rowCount(const QModelIndex& oParent = {}) const override;
    bool hasChildren(const QModelIndex& oParent = {}) const override;

Q_SIGNALS:
    // At the end of each turn in which something happened to the tree, when Qt knows all of it.
    void TurnEnded();

private:
    void Tree_Changed(const TreeChange& oChange);
    void NoteInsertion(Node* pParent, Long lRow);
    [[nodiscard]] bool IsHidden(const Node* pNode) const;
    [[nodiscard]] QModelIndex ShownIndex(const Node* pNode) const;
    [[nodiscard]] const std::vector<Node*>& ChildrenOf(const Node* pNode) const;
    void ShowInsertions();
    void ShowLooks();

    // The number of children that Qt knows, for each node that it knows and that has got more in this turn; the roots
    // stand under null.
    std::unordered_map<const Node*, Long> m_mapShown;
    const Node* m_pLastParent = nullptr; // the last insertion's, which needs no second look
    bool m_bHasLastParent = false;
    std::vector<Ref<Node>> m_aChanged; // looks
    bool m_bScheduled = false;
    Subscription m_oTree_Changed;
};

} // namespace corvane::desktop
