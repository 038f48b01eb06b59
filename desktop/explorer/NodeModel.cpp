#include "desktop/explorer/NodeModel.h"

#include "desktop/translation/ShownText.h"

namespace corvane::desktop {

NodeModel::NodeModel(Ref<TreeView> treeView, std::shared_ptr<ImageIcons> icons, QObject* parent)
    : QAbstractItemModel(parent), m_treeView(std::move(treeView)), m_icons(std::move(icons)) {}

int NodeModel::columnCount(const QModelIndex&) const {
    return 1;
}

QVariant NodeModel::data(const QModelIndex& index, int role) const {
    const Node* node = NodeAt(index);
    if (!node)
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return ShownNode(*m_treeView, *node);
    case Qt::EditRole:
        return QString::fromStdString(node->Text());
    case Qt::DecorationRole: {
        const QIcon& icon = m_icons->Icon(m_treeView->GetImageList(), node->ImageIndex());
        return icon.isNull() ? QVariant() : QVariant(icon);
    }
    default:
        return {};
    }
}

Qt::ItemFlags NodeModel::flags(const QModelIndex& index) const {
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable : Qt::NoItemFlags;
}

} // namespace corvane::desktop

#include "moc_NodeModel.cpp"
