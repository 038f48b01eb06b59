// Which nodes of the explorer are open when they are new: the library opens every one.
#include "desktop/session/Session.h"

#include <algorithm>

namespace corvane::desktop {

namespace {

constexpr std::size_t mostOpen = 5; // new ones at a time that stay open

} // namespace

// A tree that is filled again finds its nodes as they were.
void Session::KeepNodes(TreeView& tree) {
    auto& awaited = m_awaited[&tree];
    std::vector<Node*> waiting = tree.GetNodes()->Roots();
    while (!waiting.empty()) {
        const Node* node = waiting.back();
        waiting.pop_back();
        if (node->Children().empty())
            continue;
        awaited[node->Key()] = node->Expanded();
        waiting.insert(waiting.end(), node->Children().begin(), node->Children().end());
    }
}

// Of many that have come at once only those at the top stay open; what is known to have been open does, too.
void Session::CloseNewNodes(const std::vector<Ref<Node>>& opened, const std::set<std::string>& known) const {
    std::vector<Ref<Node>> closing;
    for (const Ref<Node>& node : opened)
        if (node->IsInTree() && node->Parent() && node->Expanded() && !node->Children().empty() &&
            !known.contains(node->Key()))
            closing.push_back(node);
    if (closing.size() <= mostOpen)
        return;
    m_parts.guard([&] {
        for (const Ref<Node>& node : closing)
            node->SetExpanded(false);
    });
}

// At the start: nodes that the kept state doesn't name are new.
void Session::CloseNewNodes(const TreeView& tree, const QJsonObject& kept) const {
    std::set<std::string> known;
    for (const char* list : {"open", "closed"})
        for (const auto& key : kept[QLatin1String(list)].toArray())
            known.insert(key.toString().toStdString());
    std::vector<Ref<Node>> opened;
    std::vector<Node*> waiting = tree.GetNodes()->Roots();
    while (!waiting.empty()) {
        Node* node = waiting.back();
        waiting.pop_back();
        opened.emplace_back(node);
        waiting.insert(waiting.end(), node->Children().begin(), node->Children().end());
    }
    CloseNewNodes(opened, known);
}

void Session::NodesCame() {
    const std::vector<Ref<Node>> opened = std::exchange(m_opened, {});
    std::set<std::string> known;
    for (const auto& [tree, nodes] : m_awaited)
        for (const auto& [key, isOpen] : nodes)
            known.insert(key);
    OpenAwaitedNodes();
    SelectAwaitedNodes();
    CloseNewNodes(opened, known);
}

} // namespace corvane::desktop
