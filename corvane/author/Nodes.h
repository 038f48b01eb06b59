// The explorer's nodes and the user's selection, for a service whose items come and go as its data do. After the root's
// Initialize, as Host.h.
#pragma once

#include "corvane/base/Ref.h"

#include <string>
#include <vector>

namespace corvane {

class Object;

// As if the user had clicked on the node. False, and nothing happens, when the tab of that definition isn't in front,
// or has no node of that key.
[[gnu::visibility("default")]] bool SelectNode(const std::string& sTab, const std::string& sKey);

// The node that is selected when it is made, and those that take its place when it has gone: what follows it, what
// precedes it, what it is below.
class __attribute__((visibility("default"))) NextNodes {
public:
    NextNodes();
    // Selects the first of them that is still there, as SelectNode.
    bool Select(const std::string& sTab) const;

private:
    std::vector<std::string> m_aKeys;
};

// ExplorerManager::DeleteFromExplorer, which raises no event; so the commands of the active item are taken from it
// here. Fails with 5 when the item isn't there.
[[gnu::visibility("default")]] void RemoveFromExplorer(const Ref<Object>& oItem, bool bIsActive);

// ExplorerManager::Refresh. Items that go hide entries that they share with services, which take them back here.
[[gnu::visibility("default")]] void RefreshExplorer();

} // namespace corvane
