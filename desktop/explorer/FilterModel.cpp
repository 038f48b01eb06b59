#include "desktop/explorer/FilterModel.h"

#include "desktop/translation/ShownText.h"

#include <QStringMatcher>
#include <limits>

namespace corvane::desktop {

namespace {

struct Candidate {
    Node* node;
    std::size_t parent; // itself for a root
    bool matches;
    bool shown;
};

constexpr std::size_t None = std::numeric_limits<std::size_t>::max();

// All nodes of a tree, each behind its parent and in the order in which the tree shows them.
// A translated text is found by itself and by what was translated.
std::vector<Candidate> AllNodes(const TreeView& tree, const QStringMatcher& matcher) {
    const Nodes& nodes = *tree.GetNodes();
    const bool translated = AreTextsTranslated();
    std::vector<Candidate> all;
    all.reserve(static_cast<std::size_t>(nodes.Count()));
    std::vector<std::pair<Node*, std::size_t>> waiting;
    const auto Wait = [&waiting](const std::vector<Node*>& nodeList, std::size_t parent) {
        for (auto it = nodeList.rbegin(); it != nodeList.rend(); ++it)
            waiting.emplace_back(*it, parent);
    };
    Wait(nodes.Roots(), None);
    while (!waiting.empty()) {
        const auto [node, parent] = waiting.back();
        waiting.pop_back();
        const std::string& text = node->Text();
        const bool matches = matcher.indexIn(QString::fromUtf8(text.data(), static_cast<int>(text.size()))) >= 0 ||
                             (translated && matcher.indexIn(ShownNode(tree, *node)) >= 0);
        all.push_back({node, parent, matches, matches});
        Wait(node->Children(), all.size() - 1);
    }
    for (auto it = all.rbegin(); it != all.rend(); ++it)
        if (it->shown && it->parent != None)
            all[it->parent].shown = true;
    return all;
}

} // namespace

std::vector<FilterModel::Item> FilterModel::Matches(const QString& text) const {
    std::vector<Item> items;
    items.push_back({nullptr, 0, 0, false, {}});
    const std::vector<Candidate> all = AllNodes(*Tree(), QStringMatcher(text, Qt::CaseInsensitive));
    std::vector<std::size_t> itemOf(all.size());
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (!all[i].shown)
            continue;
        const std::size_t parent = all[i].parent == None ? 0 : itemOf[all[i].parent];
        itemOf[i] = items.size();
        const auto row = static_cast<int>(items[parent].children.size());
        items[parent].children.push_back(items.size());
        items.push_back({Ref<Node>(all[i].node), parent, row, all[i].matches, {}});
    }
    return items;
}

void FilterModel::Find(const QString& text) {
    beginResetModel();
    m_places.clear();
    m_items = Matches(text);
    endResetModel();
}

void FilterModel::Empty() {
    beginResetModel();
    m_places.clear();
    m_items.clear();
    endResetModel();
}

Node* FilterModel::FirstMatch() const {
    for (const Item& item : m_items)
        if (item.matches && item.node->IsInTree())
            return item.node.Get();
    return nullptr;
}

std::size_t FilterModel::ItemAt(const QModelIndex& index) const {
    return index.isValid() ? static_cast<std::size_t>(index.internalId()) : 0;
}

QModelIndex FilterModel::IndexOfItem(std::size_t item) const {
    return item == 0 ? QModelIndex() : createIndex(m_items[item].row, 0, static_cast<quintptr>(item));
}

Node* FilterModel::NodeAt(const QModelIndex& index) const {
    const std::size_t item = ItemAt(index);
    if (item == 0 || !m_items[item].node->IsInTree())
        return nullptr;
    return m_items[item].node.Get();
}

QModelIndex FilterModel::IndexOf(const Node* node) {
    if (m_places.empty())
        for (std::size_t i = 1; i < m_items.size(); ++i)
            m_places.emplace(m_items[i].node.Get(), i);
    const auto it = m_places.find(node);
    return it == m_places.end() ? QModelIndex() : IndexOfItem(it->second);
}

QModelIndex FilterModel::index(int row, int column, const QModelIndex& parent) const {
    if (column != 0 || row < 0 || row >= rowCount(parent))
        return {};
    return IndexOfItem(m_items[ItemAt(parent)].children[static_cast<std::size_t>(row)]);
}

QModelIndex FilterModel::parent(const QModelIndex& index) const {
    return index.isValid() ? IndexOfItem(m_items[ItemAt(index)].parent) : QModelIndex();
}

int FilterModel::rowCount(const QModelIndex& parent) const {
    return m_items.empty() ? 0 : static_cast<int>(m_items[ItemAt(parent)].children.size());
}

} // namespace corvane::desktop

#include "moc_FilterModel.cpp"
