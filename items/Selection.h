// The nodes of the explorer that the user has selected. The library knows one, the selected item of a tree; this keeps
// the others beside it, and is the main form's member "SelectedItems".
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/base/Event.h"
#include "corvane/platform/controls/TreeView.h"

#include <functional>
#include <unordered_map>
#include <vector>

namespace corvane::items {

class Selection final : public Automation<Selection> {
public:
    using ObjectFunction = std::function<Ref<Object>(const Node&)>;
    explicit Selection(ObjectFunction objectOf) : m_objectOf(std::move(objectOf)) {}
    ~Selection() override;

    // The tree takes part from now on. Nodes are selected in one tree only, the one whose selected item changed last.
    void Follow(const Ref<TreeView>& tree);

    // Several nodes of the tree; the library's own selected item has to become one of them, or the others are dropped.
    // One node or none takes away what was selected beside the library's.
    void Set(const Ref<TreeView>& tree, std::vector<Ref<Node>> nodes);
    void SetOne() { Set(m_tree, {}); }
    // One more beside those of the tree, or one less; the last one stays.
    void Add(const Ref<TreeView>& tree, const Ref<Node>& node);
    void Remove(const Ref<Node>& node);
    [[nodiscard]] bool IsSeveral() const { return m_others.size() > 1; }
    [[nodiscard]] bool Has(const Node& node) const;
    // In the order of the tree; the library's one alone if there is no other.
    [[nodiscard]] std::vector<Ref<Node>> Nodes() const;
    [[nodiscard]] const Ref<TreeView>& Tree() const { return m_tree; }
    // Their objects; a node without one is left out.
    [[nodiscard]] std::vector<Ref<Object>> Objects() const;
    void End(); // drops all

    Event<> Changed; // of what is selected beside the library's

    // By name. Items are numbered from 1; Item fails with 9 outside of that.
    [[nodiscard]] Long Count() const { return static_cast<Long>(Objects().size()); }
    [[nodiscard]] Ref<Object> Item(Long index) const;

    static constexpr auto Members = MemberTable(Property("Count", &Selection::Count), Method("Item", &Selection::Item));

    std::string_view TypeName() const override { return "Selection"; }

private:
    void Tree_Changed(const Ref<TreeView>& tree, const TreeChange& change);

    ObjectFunction m_objectOf;
    Ref<TreeView> m_tree;
    std::unordered_map<const Node*, Ref<Node>> m_others; // with the library's one; empty unless there are several
    mutable std::vector<Ref<Object>> m_objects;          // of the last call, until something changes
    mutable bool m_isRead = false;
    std::vector<Subscription> m_trees;
};

} // namespace corvane::items
