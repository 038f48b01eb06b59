// The floor that the explorer's tree is measured against: an item model written by hand for nothing but a tree of
// texts, which reports each change to Qt as it happens.
#pragma once

#include <QAbstractItemModel>
#include <memory>
#include <unordered_map>
#include <vector>

namespace corvane::bench {

class PlainModel final : public QAbstractItemModel {
public:
    struct Item {
        QString key;
        QString text;
        Item* parent;
        int row;
        std::vector<std::unique_ptr<Item>> children;
    };

    Item* Add(Item* parent, QString key, QString text) {
        Item* above = parent ? parent : &m_top;
        const auto row = static_cast<int>(above->children.size());
        beginInsertRows(IndexOf(parent), row, row);
        above->children.push_back(std::make_unique<Item>(Item{key, std::move(text), parent, row, {}}));
        Item* item = above->children.back().get();
        m_items.emplace(std::move(key), item);
        endInsertRows();
        return item;
    }
    Item* Find(const QString& key) const {
        const auto it = m_items.find(key);
        return it == m_items.end() ? nullptr : it->second;
    }
    void SetText(Item* item, QString text) {
        item->text = std::move(text);
        Q_EMIT dataChanged(IndexOf(item), IndexOf(item), {Qt::DisplayRole});
    }
    // An item without children.
    void Remove(Item* item) {
        auto& siblings = (item->parent ? item->parent : &m_top)->children;
        const int row = item->row;
        beginRemoveRows(IndexOf(item->parent), row, row);
        m_items.erase(item->key);
        siblings.erase(siblings.begin() + row);
        for (auto i = static_cast<std::size_t>(row); i < siblings.size(); ++i)
            siblings[i]->row = static_cast<int>(i);
        endRemoveRows();
    }
    void Clear() {
        beginResetModel();
        m_items.clear();
        m_top.children.clear();
        endResetModel();
    }

    QModelIndex IndexOf(const Item* item) const { return item ? createIndex(item->row, 0, item) : QModelIndex(); }
    using QAbstractItemModel::parent;
    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override {
        if (column != 0 || row < 0 || row >= rowCount(parent))
            return {};
        return createIndex(row, 0, ItemAt(parent)->children[static_cast<std::size_t>(row)].get());
    }
    QModelIndex parent(const QModelIndex& index) const override { return IndexOf(ItemAt(index)->parent); }
    int rowCount(const QModelIndex& parent = {}) const override {
        return static_cast<int>(ItemAt(parent)->children.size());
    }
    int columnCount(const QModelIndex& = {}) const override { return 1; }
    QVariant data(const QModelIndex& index, int role) const override {
        return role == Qt::DisplayRole && index.isValid() ? QVariant(ItemAt(index)->text) : QVariant();
    }

private:
    struct KeyHash {
        std::size_t operator()(const QString& key) const { return qHash(key); }
    };
    const Item* ItemAt(const QModelIndex& index) const {
        return index.isValid() ? static_cast<const Item*>(index.constInternalPointer()) : &m_top;
    }
    Item m_top{{}, {}, nullptr, 0, {}};
    std::unordered_map<QString, Item*, KeyHash> m_items;
};

} // namespace corvane::bench
