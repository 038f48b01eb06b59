#include "corvane/core/CorvaneMain.h"
#include "corvane/menus/MenuManager.h"
#include "corvane/platform/Handlers.h"

namespace corvane {

Ref<Tool> MenuManager::AddTool(const std::string& sName) {
    Ref<Tool> oTool = m_oActiveBar->Tools()->Add(m_lNextToolId, sName);
    ++m_lNextToolId;
    return oTool;
}

void MenuManager::SetShortCut(Tool& oTool, const std::string& sShortCutKey) const {
    if (sShortCutKey.empty())
        return;
    auto oShortCut = New<ShortCut>();
    oShortCut->SetValue(sShortCutKey);
    oTool.SetShortCuts({oShortCut});
}

void MenuManager::InsertSeparator(Band& oBand, Long lPosition) const {
    oBand.Tools()->Insert(lPosition, m_oActiveBar->Tools()->Item("Separator"));
}

// The tool that an entry has already: its action's, whoever made it, or the one of its key.
Ref<Tool> MenuManager::ToolOf(const MenuItemDef& oMenuItemDef, const std::string& sKey) const {
    Ref<Tool> oTool = oMenuItemDef.ActionItemDef()->Tool();
    return oTool ? oTool : FindTool(sKey);
}

Ref<Tool> MenuManager::NewMenuTool(const MenuItemDef& oMenuItemDef, const std::string& sKey) {
    Ref<Tool> oTool = AddTool(sKey);
    SetShortCut(*oTool, oMenuItemDef.ShortCutKey());
    if (oMenuItemDef.MenuType() == MenuType::fwMenuTitle) {
        oTool->SetDropDownBand(sKey);
        oTool->SetCategory("Menus");
    }
    return oTool;
}

// Where entries of a path are.
Ref<Band> MenuManager::EntryBand(const std::string& sPath) {
    Ref<Band> oBand = FindBand(sPath);
    return oBand ? oBand : CreatePlaceHolderMenuTitle(sPath);
}

// Where a title of a path is.
Ref<Band> MenuManager::ParentBand(const std::string& sPath) {
    return sPath.empty() ? m_oMainBand : EntryBand(sPath);
}

void MenuManager::AddMenuItem(const Ref<MenuItemDef>& oMenuItemDef) try {
    const Ref<ActionItemDef> oActionItemDef = oMenuItemDef->ActionItemDef();
    const std::string sKey = oMenuItemDef->Key();
    Ref<Tool> oTool = ToolOf(*oMenuItemDef, sKey);
    if (!oTool) {
        oTool = NewMenuTool(*oMenuItemDef, sKey);
        oTool->SetChecked(oActionItemDef->Checked());
        oTool->SetEnabled(oActionItemDef->Enabled());
        oTool->SetVisible(false);
    }
    oActionItemDef->SetTool(oTool);
    if (oMenuItemDef->MenuType() != MenuType::fwMenuTitle)
        PlaceMenuItem(*oMenuItemDef, oTool, oActionItemDef->IsShared());
    else if (FindBand(sKey))
        AdoptMenuTitle(*oMenuItemDef, oTool);
    else
        PlaceMenuTitle(*oMenuItemDef, oTool);
} catch (...) {
    Reraise("MenuManager", "AddMenuItem");
}

void MenuManager::InsertMenuItem(Band& oParent, const MenuItemDef& oMenuItemDef, const Ref<Tool>& oTool) const {
    const Ref<BandTools> oTools = oParent.Tools();
    if (oMenuItemDef.SeparatorStyle() == SeparatorStyle::fwSeparatorBefore)
        InsertSeparator(oParent, -1);
    const Ref<Tool> oInstance = oTools->Insert(oTools->Count(), oTool);
    oInstance->SetCaption(oMenuItemDef.SharedCaption());
    oInstance->SetDescription(oMenuItemDef.ActionItemDef()->SharedDescription());
    oTools->Item(oTool->Name())->SetDropDownBand("");
}

void MenuManager::PlaceMenuItem(const MenuItemDef& oMenuItemDef, const Ref<Tool>& oTool, bool bIsShared) {
    const Ref<Band> oParent = EntryBand(oMenuItemDef.Path());
    if (!bIsShared)
        InsertMenuItem(*oParent, oMenuItemDef, oTool);
    // Also behind a shared entry, which itself isn't placed again.
    if (oMenuItemDef.SeparatorStyle() == SeparatorStyle::fwSeparatorAfter)
        InsertSeparator(*oParent, -1);
}

// The title's band is there already: the title stays where it is and takes its texts and state.
void MenuManager::AdoptMenuTitle(const MenuItemDef& oMenuItemDef, const Ref<Tool>& oTool) {
    const Ref<Band> oParent = ParentBand(oMenuItemDef.Path());
    oParent->Tools()->Item(oTool->Name())->SetCaption(oMenuItemDef.Caption());
    oTool->SetChecked(oMenuItemDef.ActionItemDef()->Checked());
    oTool->SetEnabled(oMenuItemDef.ActionItemDef()->Enabled());
    const auto& aTools = oParent->Tools()->All();
    Long lPosition = 0;
    while (lPosition < oParent->Tools()->Count() &&
           !EqualText(aTools[static_cast<std::size_t>(lPosition)]->Name(), oTool->Name()))
        ++lPosition;
    // One place further forward than directly before the title, and for the first title the end.
    if (oMenuItemDef.SeparatorStyle() == SeparatorStyle::fwSeparatorBefore)
        InsertSeparator(*oParent, lPosition - 1);
    else if (oMenuItemDef.SeparatorStyle() == SeparatorStyle::fwSeparatorAfter)
        InsertSeparator(*oParent, lPosition + 1);
}

void MenuManager::PlaceMenuTitle(const MenuItemDef& oMenuItemDef, const Ref<Tool>& oTool) {
    m_oActiveBar->Bands()->Add(oMenuItemDef.Key())->SetBandKind(BandKind::Popup);
    const Ref<Band> oParent = ParentBand(oMenuItemDef.Path());
    if (oMenuItemDef.SeparatorStyle() == SeparatorStyle::fwSeparatorBefore)
        InsertSeparator(*oParent, -1);
    oParent->Tools()->Insert(oParent->Tools()->Count(), oTool);
    oParent->Tools()->Item(oTool->Name())->SetCaption(oMenuItemDef.Caption());
    if (oMenuItemDef.SeparatorStyle() == SeparatorStyle::fwSeparatorAfter)
        InsertSeparator(*oParent, -1);
}

Ref<Band> MenuManager::CreatePlaceHolderMenuTitle(const std::string& sPath) try {
    Ref<Band> oBand = m_oActiveBar->Bands()->Add(sPath);
    oBand->SetBandKind(BandKind::Popup);
    if (FindTool(sPath))
        return oBand;
    const Ref<Tool> oTool = AddTool(sPath);
    oTool->SetDropDownBand(sPath);
    oTool->SetCategory("Menus");
    oTool->SetCaption(sPath);
    oTool->SetVisible(false);
    const std::size_t iPoint = sPath.find('.');
    const Ref<Band> oParent = iPoint == std::string::npos ? m_oMainBand : FindBand(sPath.substr(0, iPoint));
    oParent->Tools()->Insert(oParent->Tools()->Count(), oTool);
    return oBand;
} catch (...) {
    Reraise("MenuManager", "CreatePlaceHolderMenuTitle");
}

// The live state of an action that a provider adds at run time.
Ref<ActionItem> MenuManager::NewActionItem(const Ref<Object>& oActionsProviderObj,
                                           const Ref<ActionItemDef>& oActionItemDef) {
    auto oActionItem = New<ActionItem>();
    oActionItem->Initialize(oActionsProviderObj, oActionItemDef);
    oActionItem->CopyFrom(*oActionItemDef);
    return oActionItem;
}

void MenuManager::AddMenu(const Ref<Object>& oActionProviderObj, const Ref<IActionsProvider>& oActionProvider,
                          const std::string& sActionItemName, const std::string& sPath, Single fPositionOrder,
                          MenuType eMenuType, const std::string& sCaption, const std::string& sAction,
                          bool bPassActionItemParam, const std::string& sDescription, SeparatorStyle eSeparatorStyle,
                          const std::string& sShortCutKey, const std::string& sToolTip, bool bVisible, bool bEnabled,
                          bool bChecked) try {
    auto oMenuItemDef = New<MenuItemDef>();
    oMenuItemDef->Init(sActionItemName, sPath, fPositionOrder, eMenuType, sCaption, sShortCutKey, sToolTip,
                       eSeparatorStyle);
    Ref<ActionItem> oActionItem;
    const Ref<ActionItemCollection> colActionItems = oActionProvider->ActionItems();
    if (KeyExists(colActionItems, sActionItemName)) {
        oActionItem = colActionItems->Item(sActionItemName);
    } else {
        auto oActionItemDef = New<ActionItemDef>();
        oActionItemDef->Init(sActionItemName, sAction, bVisible, bEnabled, bChecked, sDescription,
                             bPassActionItemParam);
        oActionItem = NewActionItem(oActionProviderObj, oActionItemDef);
        colActionItems->Add(oActionItem, sActionItemName);
    }
    const Ref<ActionItemDef> oActionItemDef = oActionItem->ActionItemDef();
    oMenuItemDef->SetActionItemDef(oActionItemDef);
    const std::string sKey = oMenuItemDef->Key();
    Ref<Tool> oTool = ToolOf(*oMenuItemDef, sKey);
    if (!oTool) {
        oTool = NewMenuTool(*oMenuItemDef, sKey);
        oTool->SetChecked(oActionItem->Checked());
        oTool->SetEnabled(oActionItem->Enabled());
        oTool->SetVisible(oActionItem->Visible());
    }
    oActionItemDef->SetTool(oTool);
    const Ref<Band> oParent = eMenuType == MenuType::fwMenuTitle ? PlaceAddedTitle(*oMenuItemDef, oTool)
                                                                 : PlaceAddedItem(*oMenuItemDef, oTool);
    if (eSeparatorStyle == SeparatorStyle::fwSeparatorAfter)
        InsertSeparator(*oParent, -1);
} catch (...) {
    Reraise("MenuManager", "AddMenu");
}

Ref<Band> MenuManager::PlaceAddedTitle(const MenuItemDef& oMenuItemDef, const Ref<Tool>& oTool) {
    const bool bHasBand = static_cast<bool>(FindBand(oMenuItemDef.Key()));
    if (!bHasBand)
        m_oActiveBar->Bands()->Add(oMenuItemDef.Key())->SetBandKind(BandKind::Popup);
    Ref<Band> oParent = ParentBand(oMenuItemDef.Path());
    if (!bHasBand) {
        if (oMenuItemDef.SeparatorStyle() == SeparatorStyle::fwSeparatorBefore)
            InsertSeparator(*oParent, -1);
        oParent->Tools()->Insert(oParent->Tools()->Count(), oTool);
    }
    oParent->Tools()->Item(oTool->Name())->SetCaption(oMenuItemDef.Caption());
    return oParent;
}

Ref<Band> MenuManager::PlaceAddedItem(const MenuItemDef& oMenuItemDef, const Ref<Tool>& oTool) {
    Ref<Band> oParent = EntryBand(oMenuItemDef.Path());
    if (!oMenuItemDef.ActionItemDef()->IsShared())
        InsertMenuItem(*oParent, oMenuItemDef, oTool);
    return oParent;
}

} // namespace corvane
