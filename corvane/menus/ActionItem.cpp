#include "corvane/menus/ActionItem.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/menus/MenuManager.h"
#include "corvane/platform/Entering.h"
#include "corvane/platform/Handlers.h"

namespace corvane {

namespace {
ActionItem* g_pAnyItem = nullptr;
}

ActionItem::ActionItem() : m_pPrevious(this), m_pNext(this) {
    if (g_pAnyItem) {
        m_pNext = g_pAnyItem;
        m_pPrevious = g_pAnyItem->m_pPrevious;
        m_pPrevious->m_pNext = this;
        m_pNext->m_pPrevious = this;
    }
    g_pAnyItem = this;
}

ActionItem::~ActionItem() {
    m_pPrevious->m_pNext = m_pNext;
    m_pNext->m_pPrevious = m_pPrevious;
    if (g_pAnyItem == this)
        g_pAnyItem = m_pNext == this ? nullptr : m_pNext;
}

void ActionItem::UntieAll() {
    std::vector<Ref<ActionItem>> aItems;
    if (const ActionItem* pFirst = g_pAnyItem)
        for (ActionItem* pItem = g_pAnyItem;; pItem = pItem->m_pNext) {
            aItems.emplace_back(pItem);
            if (pItem->m_pNext == pFirst)
                break;
        }
    for (const auto& oItem : aItems)
        oItem->m_oActionsProviderObj = nullptr;
}

void ActionItem::Initialize(const Ref<Object>& oActionsProviderObj, const Ref<corvane::ActionItemDef>& oActionItemDef) {
    m_oActionsProviderObj = oActionsProviderObj;
    m_oActionItemDef = oActionItemDef;
}

void ActionItem::CopyFrom(const corvane::ActionItemDef& oActionItemDef) {
    m_sAction = oActionItemDef.SharedAction();
    m_bChecked = oActionItemDef.Checked();
    m_bEnabled = oActionItemDef.Enabled();
    m_sName = oActionItemDef.SharedName();
    m_bVisible = oActionItemDef.Visible();
}

void ActionItem::SetName(std::string sName) {
    m_sName = std::move(sName);
}

void ActionItem::SetAction(std::string sAction) {
    m_sAction = std::move(sAction);
}

void ActionItem::SetChecked(bool bChecked) try {
    m_bChecked = bChecked;
    if (m_oTool)
        m_oTool->SetChecked(bChecked);
} catch (...) {
    Reraise("ActionItem", "Checked (Let)");
}

void ActionItem::SetEnabled(bool bEnabled) try {
    m_bEnabled = bEnabled;
    if (m_oTool)
        m_oTool->SetEnabled(bEnabled);
} catch (...) {
    Reraise("ActionItem", "Enabled (Let)");
}

void ActionItem::SetVisible(bool bVisible) try {
    m_bVisible = bVisible;
    if (m_oTool)
        m_oTool->SetVisible(bVisible);
} catch (...) {
    Reraise("ActionItem", "Visible (Let)");
}

void ActionItem::SetCaption(const std::string& sPath, const std::string& sCaption) try {
    CorvaneMain::Framework()->NavigationManager()->MenuManager()->SetMenuCaption(sPath, m_sName, sCaption);
} catch (...) {
    Reraise("ActionItem", "Caption (Let)");
}

void ActionItem::SetDescription(const std::string& sPath, const std::string& sDescription) try {
    CorvaneMain::Framework()->NavigationManager()->MenuManager()->SetActionDesctiption(sPath, m_sName, sDescription);
} catch (...) {
    Reraise("ActionItem", "Description (Let)");
}

void ActionItem::SetTool(Ref<corvane::Tool> oTool) {
    m_oTool = std::move(oTool);
}

void ActionItem::OnAction() try {
    if (!m_oActionsProviderObj || m_sAction.IsEmpty())
        return;
    // The procedure may change the name or release the item.
    const Ref<ActionItem> oSelf(this);
    const Ref<Object> oProvider = m_oActionsProviderObj;
    const Entering oEntering(oProvider);
    const std::string sAction = m_sAction;
    try {
        if (m_oActionItemDef->PassActionItemParam()) {
            const Variant vSelf = oSelf;
            (void)oProvider->Invoke(sAction, std::span(&vSelf, 1));
        } else {
            (void)oProvider->Invoke(sAction, {});
        }
    } catch (...) {
        RaiseFrom(CorvaneMain::PlaceOf(oSelf));
    }
} catch (...) {
    Reraise("ActionItem", "OnAction");
}

} // namespace corvane
