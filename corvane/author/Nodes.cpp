#include "corvane/author/Nodes.h"

#include "corvane/author/Host.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/IExplorerItem.h"
#include "corvane/explorer/IExplorerItemAccess.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/MenuManager.h"
#include "corvane/services/ServiceManager.h"

#include <algorithm>
#include <iterator>

namespace corvane {

namespace {

Ref<MenuManager> Menus() {
    return Singleton::Framework()->NavigationManager()->MenuManager();
}

} // namespace

bool SelectNode(const std::string& sTab, const std::string& sKey) {
    const Ref<TreeView> tvw = Explorer()->TreeView();
    const Ref<Node> oNode = tvw && EqualText(tvw->Tag(), sTab) ? tvw->GetNodes()->Find(sKey) : nullptr;
    if (!oNode)
        return false;
    tvw->ClickNode(oNode);
    return true;
}

NextNodes::NextNodes() {
    const Ref<TreeView> tvw = Explorer()->TreeView();
    const Ref<Node> oSelected = tvw ? tvw->SelectedItem() : nullptr;
    for (const Node* pNode = oSelected.Get(); pNode; pNode = pNode->Parent()) {
        const std::vector<Node*>& aSiblings = pNode->Parent() ? pNode->Parent()->Children() : tvw->GetNodes()->Roots();
        const auto itNode = std::find(aSiblings.begin(), aSiblings.end(), pNode);
        for (auto it = itNode; it != aSiblings.end(); ++it)
            m_aKeys.push_back((*it)->Key());
        for (auto it = itNode; it != aSiblings.begin(); --it)
            m_aKeys.push_back((*std::prev(it))->Key());
    }
}

bool NextNodes::Select(const std::string& sTab) const {
    return std::any_of(m_aKeys.begin(), m_aKeys.end(), [&](const std::string& sKey) { return SelectNode(sTab, sKey); });
}

void RemoveFromExplorer(const Ref<Object>& oItem, bool bIsActive) {
    if (bIsActive) {
        const Ref<IExplorerItem> oBase = oItem.As<IExplorerItemAccess>()->ExplorerItem();
        Menus()->OnActionsProviderInActive(oItem, oBase.As<IActionsProvider>(),
                                           oBase->ExplorerItemDef()->ActionItemDefs());
    }
    Explorer()->DeleteFromExplorer(oItem);
}

void RefreshExplorer() {
    Explorer()->Refresh();
    for (const Ref<ServiceDef>& oDef : *Singleton::Framework()->ServiceManager()->ServiceDefs())
        if (const Ref<Object> oService = FindService(oDef->Name()))
            Menus()->OnActionsProviderActive(oService, CorvaneMain::QueryService(oService).As<IActionsProvider>(),
                                             oDef->ActionItemDefs());
}

} // namespace corvane
