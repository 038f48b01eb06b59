#include "desktop/explorer/NodeModel.h"

#include "desktop/translation/ShownText.h"

namespace corvane::desktop {

NodeModel::NodeModel(Ref<TreeView> oTreeView, std::shared_ptr<ImageIcons> pIcons, QObject* pParent)
    : QAbstractItemModel(pParent), m_oTreeView(std::move(oTreeView)), m_pIcons(std::move(pIcons)) {}

int NodeModel::columnCount(const QModelIndex&) const {
    return 1;
}

QVariant NodeModel::data(const QModelIndex& oIndex, int iRole) const {
    const Node* pNode = NodeAt(oIndex);
    if (!pNode)
        return {};
    switch (iRole) {
    case Qt::DisplayRole:
        return ShownNode(*m_oTreeView, *pNode);
    case Qt::EditRole:
        return QString::fromStdString(pNode->Text());
    case Qt::DecorationRole: {
        const QIcon& oIcon = m_pIcons->Icon(m_oTreeView->GetImageList(), pNode->ImageIndex());
        return oIcon.isNull() ? QVariant() : QVariant(oIcon);
    }
    default:
        return {};
    }
}

Qt::ItemFlags NodeModel::flags(const QModelIndex& oIndex) const {
    return oIndex.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable : Qt::NoItemFlags;
}

} // namespace corvane::desktop
