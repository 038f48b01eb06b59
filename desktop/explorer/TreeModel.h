// An item model straight over the nodes of a tree: an index points at its node, and nothing is copied.
// What happens to the nodes is reported to Qt at the end of the turn of the event loop, in few words: until then added
// nodes aren't shown, and changed ones are drawn as they are. Removals are reported at once.
#pragma once

#include "desktop/explorer/NodeModel.h"

#include <functional>
#include <unordered_map>
#include <vector>

namespace corvane::desktop {

class TreeModel final : public NodeModel {
    Q_OBJECT
public:
    TreeModel(Ref<TreeView> treeView, std::shared_ptr<ImageIcons> icons, QObject* parent = nullptr);

    // Nodes that it is true for have a branch to open, though they have no children yet.
    void SetIsLazy(std::function<bool(const Node&)> isLazy) { m_isLazy = std::move(isLazy); }
    // Reports Qt now what waits for the end of the turn.
    void Flush();
    // Asks for an end of the turn even when no node has changed.
    void Schedule();

    Node* NodeAt(const QModelIndex& index) const override;
    // Flushes before, so that a node which has just been added has an index too.
    QModelIndex IndexOf(const Node* node) override;

    using QAbstractItemModel::parent;
    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;

Q_SIGNALS:
    // At the end of each turn in which something happened to the tree, when Qt knows all of it.
    void TurnEnded();

private:
    void Tree_Changed(const TreeChange& change);
    void NoteInsertion(Node* parent, Long row);
    [[nodiscard]] bool IsHidden(const Node* node) const;
    [[nodiscard]] QModelIndex ShownIndex(const Node* node) const;
    [[nodiscard]] const std::vector<Node*>& ChildrenOf(const Node* node) const;
    void ShowInsertions();
    void ShowLooks();

    // The number of children that Qt knows, for each node that it knows and that has got more in this turn; the roots
    // are under null.
    std::unordered_map<const Node*, Long> m_shown;
    const Node* m_lastParent = nullptr; // the last insertion's, which needs no second look
    bool m_hasLastParent = false;
    std::vector<Ref<Node>> m_changed; // looks
    bool m_scheduled = false;
    std::function<bool(const Node&)> m_isLazy;
    Subscription m_tree_Changed;
};

} // namespace corvane::desktop
