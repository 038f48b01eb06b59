#include "adapters/process/ExplorerMarks.h"

#include "corvane/platform/controls/TreeView.h"

#include <string_view>
#include <unordered_set>

namespace corvane {

namespace {

void MarkNode(Node& node, bool isMarked) {
    const std::string_view mark = ExplorerMarks::Mark;
    const bool hasMark = node.Text().starts_with(mark);
    if (isMarked && !hasMark)
        node.SetText(std::string(mark) + node.Text());
    else if (!isMarked && hasMark)
        node.SetText(node.Text().substr(mark.size()));
}

} // namespace

void ExplorerMarks::Set(const std::vector<Ref<Object>>& items, bool isMarked) const {
    if (items.empty() || !m_panel)
        return;
    std::unordered_set<std::string> tags;
    for (const Ref<Object>& item : items)
        tags.insert(std::to_string(item->ObjectKey()));
    for (const auto& control : m_panel->Controls()) {
        const auto tree = control.TryAs<TreeView>();
        std::vector<Node*> waiting = tree ? tree->GetNodes()->Roots() : std::vector<Node*>();
        while (!waiting.empty()) {
            Node& node = *waiting.back();
            waiting.pop_back();
            waiting.insert(waiting.end(), node.Children().begin(), node.Children().end());
            if (tags.contains(node.Tag()))
                MarkNode(node, isMarked);
        }
    }
}

} // namespace corvane
