// What the two item models over a tree's nodes have in common: what a node looks like.
#pragma once

#include "corvane/platform/controls/TreeView.h"
#include "desktop/explorer/PictureIcon.h"

#include <QAbstractItemModel>
#include <memory>

namespace corvane::desktop {

class NodeModel : public QAbstractItemModel {
    Q_OBJECT
public:
    NodeModel(Ref<TreeView> oTreeView, std::shared_ptr<ImageIcons> pIcons, QObject* pParent);

    // A null pointer for the invalid index, and for an item whose node has left the tree.
    [[nodiscard]] virtual Node* NodeAt(const QModelIndex& oIndex) const = 0;
    // Invalid when the model doesn't show the node.
    [[nodiscard]] virtual QModelIndex IndexOf(const Node* pNode) = 0;

    int columnCount(const QModelIndex& oParent = {}) const override;
    QVariant data(const QModelIndex& oIndex, int iRole) const override;
    Qt::ItemFlags flags(const QModelIndex& oIndex) const override;

protected:
    [[nodiscard]] const Ref<TreeView>& Tree() const { return m_oTreeView; }

private:
    Ref<TreeView> m_oTreeView;
    std::shared_ptr<ImageIcons> m_pIcons;
};

} // namespace corvane::desktop
