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
    NodeModel(Ref<TreeView> treeView, std::shared_ptr<ImageIcons> icons, QObject* parent);

    // A null pointer for the invalid index, and for an item whose node has left the tree.
    [[nodiscard]] virtual Node* NodeAt(const QModelIndex& index) const = 0;
    // Invalid when the model doesn't show the node.
    [[nodiscard]] virtual QModelIndex IndexOf(const Node* node) = 0;

    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

protected:
    [[nodiscard]] const Ref<TreeView>& Tree() const { return m_treeView; }

private:
    Ref<TreeView> m_treeView;
    std::shared_ptr<ImageIcons> m_icons;
};

} // namespace corvane::desktop
