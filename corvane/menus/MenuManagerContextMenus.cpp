#include "corvane/collections/SortedList.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/explorer/IExplorerItem.h"
#include "corvane/menus/MenuManager.h"
#include "corvane/platform/Handlers.h"
#include "corvane/services/ExplorerItemDef.h"

namespace corvane {

namespace {

std::string ContextBandName(const ExplorerItemDef& oExplorerItemDef) {
    return "Context." + oExplorerItemDef.Name();
}

} // namespace

void MenuManager::OnContextMenu(const Ref<IExplorerItem>& oExplorerItem) try {
    if (const Ref<Band> oBand = FindBand(ContextBandName(*oExplorerItem->ExplorerItemDef())))
        oBand->ShowPopup();
} catch (...) {
    Reraise("MenuManager", "OnContextMenu");
}

void MenuManager::SetupContextMenu(const Ref<ExplorerItemDef>& oExplorerItemDef) try {
    auto oSorted = New<SortedList>();
    for (const auto& oMenuItemDef : oExplorerItemDef->MenuItemDefs())
        if (oMenuItemDef->MenuType() == MenuType::fwContextMenuItem ||
            oMenuItemDef->MenuType() == MenuType::fwContextMenuTitle)
            oSorted->Add(MenuPositionKey(*oMenuItemDef), oMenuItemDef);
    if (oSorted->Count() == 0)
        return;
    const Ref<Band> oBand = m_oActiveBar->Bands()->Add(ContextBandName(*oExplorerItemDef));
    oBand->SetBandKind(BandKind::Popup);
    for (const auto& sKey : oSorted->Keys()) {
        // Of two entries of one key the same one may come twice.
        const auto oMenuItemDef = ToObject(oSorted->Item(sKey)).As<MenuItemDef>();
        AddContextMenuItem(oBand, oMenuItemDef);
        const Ref<ActionItemDef> oActionItemDef = oMenuItemDef->ActionItemDef();
        if (EqualText(oActionItemDef->Name(), oExplorerItemDef->DefaultAction()))
            oBand->Tools()->Item(oActionItemDef->Tool()->Name())->SetIsDefaultItem(true);
    }
} catch (...) {
    Reraise("MenuManager", "SetupContextMenu");
}

// A new tool for an entry of a context menu, shown as its definition says.
Ref<Tool> MenuManager::ContextTool(const Ref<Band>& oBand, const MenuItemDef& oMenuItemDef, bool bWithSubBand) {
    const Ref<ActionItemDef> oActionItemDef = oMenuItemDef.ActionItemDef();
    const std::string sName = oBand->Name() + "." + oMenuItemDef.Key();
    Ref<Tool> oTool = m_oActiveBar->Tools()->Add(m_lNextToolId, sName);
    oTool->SetChecked(oActionItemDef->Checked());
    oTool->SetEnabled(oActionItemDef->Enabled());
    oTool->SetVisible(oActionItemDef->Visible());
    oTool->SetCaption(oMenuItemDef.Caption());
    SetShortCut(*oTool, oMenuItemDef.ShortCutKey());
    if (bWithSubBand && oMenuItemDef.MenuType() == MenuType::fwContextMenuTitle) {
        Ref<Band> oSubBand = FindBand(sName);
        if (!oSubBand) {
            oSubBand = m_oActiveBar->Bands()->Add(sName);
            oSubBand->SetBandKind(BandKind::Popup);
        }
        oTool->SetDropDownBand(oSubBand->Name());
    }
    ++m_lNextToolId;
    return oTool;
}

void MenuManager::PlaceContextEntry(const Ref<Band>& oBand, const MenuItemDef& oMenuItemDef,
                                    const Ref<Tool>& oTool) const {
    if (oMenuItemDef.SeparatorStyle() == SeparatorStyle::fwSeparatorBefore)
        InsertSeparator(*oBand, -1);
    oBand->Tools()->Insert(-1, oTool);
    oBand->Tools()->Item(oTool->Name())->SetCaption(oMenuItemDef.Caption());
    oBand->Tools()->Item(oTool->Name())->SetDescription(oMenuItemDef.ActionItemDef()->Description());
    if (oMenuItemDef.SeparatorStyle() == SeparatorStyle::fwSeparatorAfter)
        InsertSeparator(*oBand, -1);
}

void MenuManager::AddContextMenuItem(const Ref<Band>& oBand, const Ref<MenuItemDef>& oMenuItemDef) try {
    const Ref<ActionItemDef> oActionItemDef = oMenuItemDef->ActionItemDef();
    Ref<Tool> oTool = ToolOf(*oMenuItemDef, oMenuItemDef->Key());
    if (!oTool)
        oTool = ContextTool(oBand, *oMenuItemDef, true);
    oActionItemDef->SetTool(oTool);
    PlaceContextEntry(oBand, *oMenuItemDef, oTool);
} catch (...) {
    Reraise("MenuManager", "AddContextMenuItem");
}

void MenuManager::AddContextMenu(const Ref<Object>& oExplorerItemObj, const std::string& sActionItemName,
                                 const std::string& sPath, Single fPositionOrder, MenuType eMenuType,
                                 const std::string& sCaption, const std::string& sAction, bool bPassActionItemParam,
                                 const std::string& sDescription, SeparatorStyle eSeparatorStyle,
                                 const std::string& sShortCutKey, bool bVisible, bool bEnabled, bool bChecked) try {
    const Ref<IExplorerItem> oExplorerItem = CorvaneMain::QueryExplorerItem(oExplorerItemObj);
    const auto oActionsProvider = oExplorerItem.As<IActionsProvider>();
    auto oMenuItemDef = New<MenuItemDef>();
    oMenuItemDef->Init(sActionItemName, sPath, fPositionOrder, eMenuType, sCaption, sShortCutKey, {}, eSeparatorStyle);

    const Ref<ExplorerItemDef> oExplorerItemDef = oExplorerItem->ExplorerItemDef();
    const Ref<ActionItemCollection> colActionItems = oActionsProvider->ActionItems();
    Ref<ActionItemDef> oActionItemDef;
    if (KeyExists(colActionItems, sActionItemName)) {
        oActionItemDef = colActionItems->Item(sActionItemName)->ActionItemDef();
    } else {
        if (KeyExists(oExplorerItemDef->ActionItemDefs(), sActionItemName)) {
            oActionItemDef = oExplorerItemDef->ActionItemDefs()->Item(sActionItemName);
        } else {
            oActionItemDef = New<ActionItemDef>();
            oActionItemDef->Init(sActionItemName, sAction, bVisible, bEnabled, bChecked, sDescription,
                                 bPassActionItemParam);
            oExplorerItemDef->ActionItemDefs()->Add(oActionItemDef, oActionItemDef->Name());
        }
        if (colActionItems)
            colActionItems->Add(NewActionItem(oExplorerItemObj, oActionItemDef), sActionItemName);
    }
    oMenuItemDef->SetActionItemDef(oActionItemDef);

    const std::string sRoot = ContextBandName(*oExplorerItemDef);
    const Ref<Band> oBand = FindBand(sPath.empty() ? sRoot : sRoot + "." + sPath);
    Ref<Tool> oTool = ToolOf(*oMenuItemDef, oMenuItemDef->Key());
    if (!oTool)
        oTool = ContextTool(oBand, *oMenuItemDef, false);
    oActionItemDef->SetTool(oTool);
    PlaceContextEntry(oBand, *oMenuItemDef, oTool);
} catch (...) {
    Reraise("MenuManager", "AddContextMenu");
}

} // namespace corvane
