#include "items/Selection.h"

#include <algorithm>

namespace corvane::items {

namespace {

Long DepthOf(const Node* node) {
    Long depth = 0;
    while ((node = node->Parent()))
        ++depth;
    return depth;
}

// In the order of the tree, in which what is in a folder comes behind it.
bool IsAbove(const Node& one, const Node& other) {
    const Node* a = &one;
    const Node* b = &other;
    Long deeper = a->Parent() == b->Parent() ? 0 : DepthOf(a) - DepthOf(b);
    const bool otherIsDeeper = deeper < 0;
    for (; deeper > 0; --deeper)
        a = a->Parent();
    for (; deeper < 0; ++deeper)
        b = b->Parent();
    if (a == b)
        return otherIsDeeper;
    while (a->Parent() != b->Parent()) {
        a = a->Parent();
        b = b->Parent();
    }
    return a->Row() < b->Row();
}

} // namespace

Selection::~Selection() = default;

void Selection::Follow(const Ref<TreeView>& tree) {
    if (!m_tree)
        m_tree = tree;
    m_trees.push_back(tree->Changed.Subscribe(
        [this, view = tree.Get()](const TreeChange& change) { Tree_Changed(Ref<TreeView>(view), change); }));
}

void Selection::End() {
    m_trees.clear();
    m_others.clear();
    m_objects.clear();
    m_isRead = false;
    m_tree = nullptr;
}

void Selection::Tree_Changed(const Ref<TreeView>& tree, const TreeChange& change) {
    using What = TreeChange::What;
    m_isRead = false;
    m_objects.clear();
    if (change.eWhat == What::Selection) {
        const bool stays = change.pNode && tree == m_tree && Has(*change.pNode);
        if (change.pNode)
            m_tree = tree;
        if (!stays && IsSeveral())
            SetOne();
    } else if (IsSeveral() && tree == m_tree &&
               (change.eWhat == What::AfterRemove || change.eWhat == What::AfterClear)) {
        std::erase_if(m_others, [](const auto& entry) { return !entry.second->IsInTree(); });
        if (!IsSeveral())
            m_others.clear();
        Changed.Raise();
    }
}

void Selection::Set(const Ref<TreeView>& tree, std::vector<Ref<Node>> nodes) {
    const bool wasSeveral = IsSeveral();
    m_others.clear();
    m_isRead = false;
    m_objects.clear();
    m_tree = tree;
    if (nodes.size() > 1)
        for (Ref<Node>& node : nodes)
            m_others.emplace(node.Get(), std::move(node));
    if (wasSeveral || IsSeveral())
        Changed.Raise();
}

void Selection::Add(const Ref<TreeView>& tree, const Ref<Node>& node) {
    if (!IsSeveral() || tree != m_tree) {
        const Ref<Node> selected = tree->SelectedItem();
        return Set(tree, selected && selected != node ? std::vector{selected, node} : std::vector<Ref<Node>>());
    }
    m_others.emplace(node.Get(), node);
    m_isRead = false;
    Changed.Raise();
}

void Selection::Remove(const Ref<Node>& node) {
    if (m_others.erase(node.Get()) == 0)
        return;
    if (!IsSeveral())
        m_others.clear();
    m_isRead = false;
    Changed.Raise();
}

bool Selection::Has(const Node& node) const {
    return IsSeveral() ? m_others.contains(&node) : m_tree && m_tree->SelectedItem().Get() == &node;
}

std::vector<Ref<Node>> Selection::Nodes() const {
    if (!m_tree)
        return {};
    if (!IsSeveral()) {
        const Ref<Node> selected = m_tree->SelectedItem();
        return selected ? std::vector{selected} : std::vector<Ref<Node>>();
    }
    std::vector<Ref<Node>> nodes;
    nodes.reserve(m_others.size());
    for (const auto& [_, node] : m_others)
        nodes.push_back(node);
    std::sort(nodes.begin(), nodes.end(), [](const auto& one, const auto& other) { return IsAbove(*one, *other); });
    return nodes;
}

std::vector<Ref<Object>> Selection::Objects() const {
    if (!m_isRead) {
        m_objects.clear();
        for (const auto& node : Nodes())
            if (const Ref<Object> object = m_objectOf(*node))
                m_objects.push_back(object);
        m_isRead = true;
    }
    return m_objects;
}

Ref<Object> Selection::Item(Long index) const {
    const auto& objects = Objects();
    if (index < 1 || index > static_cast<Long>(objects.size()))
        Fail(FailureNumber::Subscript);
    return objects[static_cast<std::size_t>(index - 1)];
}

} // namespace corvane::items
