#include "items/Items.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/IExplorerItem.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/platform/Entering.h"
#include "corvane/platform/Handlers.h"
#include "corvane/services/ExplorerItemDef.h"
#include "corvane/services/ServiceManager.h"

#include <algorithm>
#include <charconv>
#include <span>

namespace corvane::items {

namespace {

constexpr const char* lazyChildren = "LazyChildren";
constexpr const char* canDrop = "CanDrop";
constexpr const char* drop = "Drop";
constexpr const char* takesSeveral = "TakesSeveral";

Long KeyOf(const Node& node) {
    Long key = 0;
    std::from_chars(node.Tag().data(), node.Tag().data() + node.Tag().size(), key);
    return key;
}

Ref<ExplorerManager> Explorer() {
    return CorvaneMain::Framework()->NavigationManager()->ExplorerManager();
}

// What fails says whose procedure it was, and is in the log.
Variant CallItem(const Ref<Object>& item, const char* procedure, std::initializer_list<Variant> arguments) try {
    const Ref<Object> held = item;
    const Entering entering(held);
    try {
        return held->Invoke(procedure, std::span(arguments.begin(), arguments.size()));
    } catch (...) {
        RaiseFrom(CorvaneMain::PlaceOf(held, procedure));
    }
} catch (...) {
    Reraise("Items", procedure);
}

Ref<ExplorerItemDef> DefinitionOf(const Ref<Object>& item) {
    return CorvaneMain::QueryExplorerItem(item)->ExplorerItemDef();
}

// An item whose process can't be started has none.
bool HasMemberNow(const Ref<Object>& item, const char* name) {
    try {
        return item->HasMember(name);
    } catch (...) {
        return false;
    }
}

} // namespace

Items::Items(Ref<PanelForm> panel, Guard guard)
    : m_panel(std::move(panel)), m_guard(std::move(guard)),
      m_selection(New<Selection>([this](const Node& node) { return ObjectOf(node); })) {}

void Items::Follow(const Ref<MdiForm>& mainForm) {
    const auto hold = [this](Subscription subscription) { m_subscriptions.push_back(std::move(subscription)); };
    const Ref<ExplorerManager> explorer = Explorer();
    hold(explorer->onAdd.Subscribe([this](const Ref<Object>& item) { Added(item); }));
    hold(explorer->onRemove.Subscribe([this](const Ref<Object>& item) {
        m_objects.erase(item->ObjectKey());
        m_lazy.erase(item->ObjectKey());
    }));
    hold(mainForm->OnUnload.Subscribe([this](bool&) { End(); }));
    for (const auto& control : *m_panel->Controls())
        if (const auto tree = control.TryAs<TreeView>()) {
            hold(tree->Changed.Subscribe(
                [this, view = tree.Get()](const TreeChange& change) { Tree_Changed(Ref<TreeView>(view), change); }));
            m_selection->Follow(tree);
        }
}

// Objects of plug-ins go before the plug-ins.
void Items::End() {
    m_subscriptions.clear();
    m_selection->End();
    m_objects.clear();
    m_lazy.clear();
}

// It is initialized, and its node comes next.
void Items::Added(const Ref<Object>& item) {
    m_objects[item->ObjectKey()] = item;
    if (HasMemberNow(item, lazyChildren) &&
        DefinitionOf(item)->ExplorerItemType() != ExplorerItemType::fwExplorerItemDefault)
        m_lazy.insert(item->ObjectKey());
}

void Items::Forget(const Node& node) {
    m_objects.erase(KeyOf(node));
    m_lazy.erase(KeyOf(node));
    for (const Node* child : node.Children())
        Forget(*child);
}

void Items::Tree_Changed(const Ref<TreeView>& tree, const TreeChange& change) {
    using What = TreeChange::What;
    if (change.eWhat == What::BeforeRemove)
        Forget(*change.pNode);
    if (change.eWhat == What::AfterInsert) {
        m_fresh = change.pNode;
        return;
    }
    const bool isFresh = std::exchange(m_fresh, nullptr) == change.pNode && change.pNode;
    if (change.eWhat != What::Expanded || !change.pNode->Expanded() || !IsLazy(*change.pNode))
        return;
    const Ref<Node> node(change.pNode);
    if (isFresh)
        node->SetExpanded(false); // the library opens each folder that it adds
    else
        Open(tree, node);
}

Ref<Object> Items::ObjectOf(const Node& node) const {
    const auto it = m_objects.find(KeyOf(node));
    return it == m_objects.end() ? nullptr : it->second;
}

// Lazy folders.

bool Items::IsLazy(const Node& node) const {
    return !m_lazy.empty() && m_lazy.contains(KeyOf(node));
}

// All children, or none: what fails can be tried again.
void Items::AddChildren(const Ref<Object>& folder) {
    const auto children = New<NewChildren>();
    CallItem(folder, lazyChildren, {Variant(Ref<Object>(children))});
    std::vector<Ref<Object>> added;
    try {
        for (const auto& [item, kind] : children->All()) {
            if (CorvaneMain::HasEnded())
                return;
            if (!CorvaneMain::Framework()->ServiceManager()->ExplorerItemDefs()->HasKey(kind))
                Fail(FailureNumber::InvalidProcedureCall, "There is no explorer item \"" + kind + "\"");
            Explorer()->AddToExplorer(item, kind, folder);
            added.push_back(item);
        }
    } catch (...) {
        for (auto it = added.rbegin(); it != added.rend(); ++it)
            Explorer()->DeleteFromExplorer(*it);
        try {
            RaiseFrom(CorvaneMain::PlaceOf(folder, lazyChildren));
        } catch (...) {
            Reraise("Items", lazyChildren);
        }
    }
}

void Items::Open(const Ref<TreeView>& tree, const Ref<Node>& node) {
    const Long key = KeyOf(*node);
    const Ref<Object> folder = ObjectOf(*node);
    if (!folder || !m_asking.insert(key).second)
        return;
    Stepped.Raise("expand " + std::to_string(tree->Container()) + " " + node->Key());
    m_guard([&] {
        try {
            AddChildren(folder);
            m_lazy.erase(key);
        } catch (...) {
            m_asking.erase(key);
            node->SetExpanded(false);
            throw;
        }
    });
    m_asking.erase(key);
    Asked.Raise(node);
}

// Drops.

bool Items::TakesDrops() const {
    return std::any_of(m_objects.begin(), m_objects.end(),
                       [](const auto& entry) { return HasMemberNow(entry.second, canDrop); });
}

Ref<Dropped> Items::DroppedOf(const std::vector<Ref<Node>>& nodes, bool copies) const {
    std::unordered_set<const Node*> all;
    for (const auto& node : nodes)
        all.insert(node.Get());
    std::vector<Ref<Object>> objects;
    for (const auto& node : nodes) {
        bool goesAlong = false;
        for (const Node* above = node->Parent(); above && !goesAlong; above = above->Parent())
            goesAlong = all.contains(above);
        if (const Ref<Object> object = goesAlong ? nullptr : ObjectOf(*node))
            objects.push_back(object);
    }
    return New<Dropped>(std::move(objects), std::vector<std::string>(), copies);
}

DropAnswer Items::CanDrop(const Node& target, const Ref<Dropped>& dropped) const {
    const Ref<Object> item = ObjectOf(target);
    if (!item || (dropped->Items().empty() && dropped->Files().empty()) || !HasMemberNow(item, canDrop))
        return {};
    const std::vector<Ref<Object>>& all = dropped->Items();
    for (const Node* node = &target; node; node = node->Parent())
        if (const Ref<Object> object = ObjectOf(*node);
            object && std::find(all.begin(), all.end(), object) != all.end())
            return {};
    const Variant answer = CallItem(item, canDrop, {Variant(Ref<Object>(dropped))});
    if (const auto* text = answer.Get<std::string>())
        return {text->empty(), *text};
    return {ToBoolean(answer)};
}

DropAnswer Items::Drop(const Ref<TreeView>& tree, const Ref<Node>& target, const Ref<Dropped>& dropped) {
    DropAnswer answer;
    m_guard([&] {
        if (!target->IsInTree())
            return;
        answer.failed = true;
        answer = CanDrop(*target, dropped);
        if (!answer.accepts)
            return;
        const std::string place = std::to_string(tree->Container()) + " " + target->Key();
        for (const std::string& file : dropped->Files())
            Stepped.Raise("takefile " + file);
        Stepped.Raise((dropped->Copies() ? "dropcopy " : "drop ") + place);
        answer = {false, {}, true};
        CallItem(ObjectOf(*target), drop, {Variant(Ref<Object>(dropped))});
        answer = {true};
    });
    return answer;
}

// Commands.

// One item of each kind is asked.
bool Items::TakeSeveral(const std::string& action) const {
    bool takes = false;
    m_guard([&] {
        std::unordered_set<const ExplorerItemDef*> asked;
        for (const auto& item : m_selection->Objects()) {
            if (!asked.insert(DefinitionOf(item).Get()).second)
                continue;
            if (!HasMemberNow(item, takesSeveral) || !ToBoolean(CallItem(item, takesSeveral, {Variant(action)})))
                return;
        }
        takes = true;
    });
    return takes;
}

bool Items::IsForOneOnly(const Ref<Object>& provider, const std::string& action) const {
    return m_selection->IsSeveral() && provider && m_objects.contains(provider->ObjectKey()) && !TakeSeveral(action);
}

} // namespace corvane::items
