// The part of a tree that matches a text: the nodes whose text contains it, without regard to case, and those above
// them. It is found again whenever it is asked to be; it is notified of nothing of the tree itself.
#pragma once

#include "desktop/explorer/NodeModel.h"

#include <unordered_map>
#include <vector>

namespace corvane::desktop {

class FilterModel final : public NodeModel {
    Q_OBJECT
public:
    using NodeModel::NodeModel;

    // Resets the model.
    void Find(const QString& text);
    // Releases all nodes.
    void Empty();
    // The first node, from the top, that matches itself; a null pointer when none does.
    [[nodiscard]] Node* FirstMatch() const;

    Node* NodeAt(const QModelIndex& index) const override;
    QModelIndex IndexOf(const Node* node) override;

    using QAbstractItemModel::parent;
    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;

private:
    struct Item {
        Ref<Node> node;
        std::size_t parent; // the first item, which has no node, is above the roots
        int row;
        bool matches;
        std::vector<std::size_t> children;
    };
    [[nodiscard]] std::size_t ItemAt(const QModelIndex& index) const;
    [[nodiscard]] QModelIndex IndexOfItem(std::size_t item) const;
    [[nodiscard]] std::vector<Item> Matches(const QString& text) const;

    std::vector<Item> m_items;
    std::unordered_map<const Node*, std::size_t> m_places; // of the items, once one is looked for
};

} // namespace corvane::desktop
