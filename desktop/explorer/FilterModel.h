// The part of a tree that matches a text: the nodes whose text contains it, without regard to case, and those above
// them. It is found anew whenever it is asked to be; it hears nothing of the tree itself.
#pragma once

#include "desktop/explorer/NodeModel.h"

#include <vector>

namespace corvane::desktop {

class FilterModel final : public NodeModel {
    Q_OBJECT
public:
    using NodeModel::NodeModel;

    // Resets the model.
    void Find(const QString& sText);
    // Lets go of all nodes.
    void Empty();
    // The first node, from the top, that matches itself; a null pointer when none does.
    [[nodiscard]] Node* FirstMatch() const;

    Node* NodeAt(const QModelIndex& oIndex) const override;
    QModelIndex IndexOf(const Node* pNode) override;

    using QAbstractItemModel::parent;
    QModelIndex index(int iRow, int iColumn, const QModelIndex& oParent = {}) const override;
    QModelIndex parent(const QModelIndex& oIndex) const override;
    int rowCount(const QModelIndex& oParent = {}) const override;

private:
    struct Item {
        Ref<Node> oNode;
        std::size_t iParent; // the first item, which has no node, stands above the roots
        int iRow;
        bool bMatches;
        std::vector<std::size_t> aChildren;
    };
    [[nodiscard]] std::size_t ItemAt(const QModelIndex& oIndex) const;
    [[nodiscard]] QModelIndex IndexOfItem(std::size_t iItem) const;
    [[nodiscard]] std::vector<Item> Matches(const QString& sText) const;

    std::vector<Item> m_aItems;
};

} // namespace corvane::desktop
