// What hosts add to the library's explorer: the objects behind its nodes, the selection of several of them, drops on
// them, and folders whose children are asked for when they are opened.
#pragma once

#include "corvane/author/Items.h"
#include "corvane/platform/controls/MdiForm.h"
#include "corvane/platform/controls/PanelForm.h"
#include "items/Selection.h"

#include <functional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace corvane::items {

// What an item says to a drop.
struct DropAnswer {
    bool accepts = false;
    std::string why = {}; // it doesn't; empty for no reason given
    bool failed = false;  // after it had accepted
};

class Items final {
public:
    // Makes a call into plug-ins and shows what fails in it.
    using Guard = std::function<void(const std::function<void()>&)>;
    Items(Ref<PanelForm> panel, Guard guard);
    Items(const Items&) = delete;
    Items& operator=(const Items&) = delete;

    // The main form gets its member, and what the library adds to its explorer is known from now on: after the root's
    // Initialize, before its Start. It ends when the main form unloads.
    void Follow(const Ref<MdiForm>& mainForm);
    [[nodiscard]] const Ref<Selection>& Selected() const { return m_selection; }
    // Nothing for a node that isn't the library's.
    [[nodiscard]] Ref<Object> ObjectOf(const Node& node) const;

    // Whether the node's children haven't been asked for yet. That happens when it is opened.
    [[nodiscard]] bool IsLazy(const Node& node) const;
    // What the library opens while it adds nodes has come to its end: from now on nodes are opened by users.
    void Settle() { m_fresh = nullptr; }
    Event<const Ref<Node>&> Asked; // for children, successfully or not

    // Whether there is an item that anything can be dropped on.
    [[nodiscard]] bool TakesDrops() const;
    // Of the nodes, without those that go along as they are below others of them.
    [[nodiscard]] Ref<Dropped> DroppedOf(const std::vector<Ref<Node>>& nodes, bool copies) const;
    // Asks the item of the node; no one is asked when the node itself or one above it is dropped. Fails as the item
    // does.
    [[nodiscard]] DropAnswer CanDrop(const Node& target, const Ref<Dropped>& dropped) const;
    // Asks once more and drops. A refusal is returned; a failure is guarded, and said in the answer.
    DropAnswer Drop(const Ref<TreeView>& tree, const Ref<Node>& target, const Ref<Dropped>& dropped);

    // Of an action of the active item while several are selected: the item's class, and those of the others, say by a
    // member TakesSeveral that it takes them all. Guarded; a failure means no.
    [[nodiscard]] bool TakeSeveral(const std::string& action) const;
    // Whether that is an item's command which doesn't take what is selected.
    [[nodiscard]] bool IsForOneOnly(const Ref<Object>& provider, const std::string& action) const;

    // What a user did, as a step: "expand 0 Folder", "drop 0 Folder".
    Event<const std::string&> Stepped;

private:
    void End();
    void Tree_Changed(const Ref<TreeView>& tree, const TreeChange& change);
    void Forget(const Node& node);
    void Added(const Ref<Object>& item);
    void Open(const Ref<TreeView>& tree, const Ref<Node>& node);
    void AddChildren(const Ref<Object>& folder);

    Ref<PanelForm> m_panel;
    Guard m_guard;
    Ref<Selection> m_selection;
    std::unordered_map<Long, Ref<Object>> m_objects; // by the object key, which is the node's tag
    std::unordered_set<Long> m_lazy;
    std::unordered_set<Long> m_asking;
    const Node* m_fresh = nullptr; // that came last, and that nothing has happened to
    std::vector<Subscription> m_subscriptions;
};

} // namespace corvane::items
