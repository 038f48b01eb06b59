// The floor that the explorer's tree is measured against: an item model written by hand for nothing but a tree of
// texts, which tells Qt each change as it happens.
#pragma once

#include <QAbstractItemModel>
#include <memory>
#include <unordered_map>
#include <vector>

namespace corvane::bench {

class PlainModel final : public QAbstractItemModel {
public:
    struct Item {
        QString sKey;
        QString sText;
        Item* pParent;
        int iRow;
        std::vector<std::unique_ptr<Item>> aChildren;
    };

    Item* Add(Item* pParent, QString sKey, QString sText) {
        Item* pAbove = pParent ? pParent : &m_oTop;
        const auto iRow = static_cast<int>(pAbove->aChildren.size());
        beginInsertRows(IndexOf(pParent), iRow, iRow);
        pAbove->aChildren.push_back(std::make_unique<Item>(Item{sKey, std::move(sText), pParent, iRow, {}}));
        Item* pItem = pAbove->aChildren.back().get();
        m_mapItems.emplace(std::move(sKey), pItem);
        endInsertRows();
        return pItem;
    }
    Item* Find(const QString& sKey) const {
        const auto it = m_mapItems.find(sKey);
        return it == m_mapItems.end() ? nullptr : it->second;
    }
    void SetText(Item* pItem, QString sText) {
        pItem->sText = std::move(sText);
        Q_EMIT dataChanged(IndexOf(pItem), IndexOf(pItem), {Qt::DisplayRole});
    }
    // An item without children.
    void Remove(Item* pItem) {
        auto& aSiblings = (pItem->pParent ? pItem->pParent : &m_oTop)->aChildren;
        const int iRow = pItem->iRow;
        beginRemoveRows(IndexOf(pItem->pParent), iRow, iRow);
        m_mapItems.erase(pItem->sKey);
        aSiblings.erase(aSiblings.begin() + iRow);
        for (auto i = static_cast<std::size_t>(iRow); i < aSiblings.size(); ++i)
            aSiblings[i]->iRow = static_cast<int>(i);
        endRemoveRows();
    }
    void Clear() {
        beginResetModel();
        m_mapItems.clear();
        m_oTop.aChildren.clear();
        endResetModel();
    }

    QModelIndex IndexOf(const Item* pItem) const { return pItem ? createIndex(pItem->iRow, 0, pItem) : QModelIndex(); }
    using QAbstractItemModel::parent;
    QModelIndex index(int iRow, int iColumn, const QModelIndex& oParent = {}) const override {
        if (iColumn != 0 || iRow < 0 || iRow >= rowCount(oParent))
            return {};
        return createIndex(iRow, 0, ItemAt(oParent)->aChildren[static_cast<std::size_t>(iRow)].get());
    }
    QModelIndex parent(const QModelIndex& oIndex) const override { return IndexOf(ItemAt(oIndex)->pParent); }
    int rowCount(const QModelIndex& oParent = {}) const override {
        return static_cast<int>(ItemAt(oParent)->aChildren.size());
    }
    int columnCount(const QModelIndex& = {}) const override { return 1; }
    QVariant data(const QModelIndex& oIndex, int iRole) const override {
        return iRole == Qt::DisplayRole && oIndex.isValid() ? QVariant(ItemAt(oIndex)->sText) : QVariant();
    }

private:
    struct KeyHash {
        std::size_t operator()(const QString& sKey) const { return qHash(sKey); }
    };
    const Item* ItemAt(const QModelIndex& oIndex) const {
        return oIndex.isValid() ? static_cast<const Item*>(oIndex.constInternalPointer()) : &m_oTop;
    }
    Item m_oTop{{}, {}, nullptr, 0, {}};
    std::unordered_map<QString, Item*, KeyHash> m_mapItems;
};

} // namespace corvane::bench
