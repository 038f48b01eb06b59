#include "corvane/menus/MenuManager.h"
#include "corvane/platform/Handlers.h"

#include <cstdint>
#include <limits>

namespace corvane {

namespace {

// The band's count is taken as sixteen bits.
void RemoveLast(BandTools& oTools) {
    if (oTools.Count() > std::numeric_limits<std::int16_t>::max())
        Fail(FailureNumber::Overflow);
    oTools.Remove(oTools.Count() - 1);
}

} // namespace

void MenuManager::m_oActiveBar_ToolClick(const Ref<Tool>& oTool) {
    if (m_bInToolClick)
        return;
    const Ref<MenuManager> oSelf(this); // an action may end the application
    m_bInToolClick = true;
    try {
        const Ref<Object> oTag = m_oActiveBar->Tools()->Item(oTool->ToolId())->TagVariant();
        if (oTag && EqualText(oTag->TypeName(), "ActionItem"))
            oTag.As<ActionItem>()->OnAction();
        m_bInToolClick = false;
    } catch (...) {
        m_bInToolClick = false;
        Reraise("MenuManager", "m_oActiveBar_ToolClick");
    }
}

void MenuManager::m_oActiveBar_BandOpen(const Ref<Band>& oBand) try {
    if (!EqualText(oBand->Name(), "SysCustomize"))
        return;
    RemoveLast(*oBand->Tools());
    RemoveLast(*oBand->Tools());
} catch (...) {
    Reraise("MenuManager", "m_oActiveBar_BandOpen");
}

void MenuManager::m_oActiveBar_BandClose(const Ref<Band>& oBand) {
    if (KeyExists(m_colToolbarActionItems, oBand->Name()))
        m_colToolbarActionItems->Item(oBand->Name())->SetChecked(false);
}

} // namespace corvane
