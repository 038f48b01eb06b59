#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/menus/MenuManager.h"
#include "corvane/platform/Handlers.h"

namespace corvane {

namespace {

std::string ToolbarBandName(const std::string& sToolbarName) {
    return "Toolbars." + sToolbarName;
}

constexpr const char* sToolbarsMenu = "View.Toolbars";

} // namespace

void MenuManager::ShowToolbar(const std::string& sToolbarName) try {
    m_oActiveBar->Bands()->Item(ToolbarBandName(sToolbarName))->SetVisible(true);
    m_oActiveBar->RecalcLayout();
} catch (...) {
    Reraise("MenuManager", "ShowToolbar");
}

void MenuManager::HideToolbar(const std::string& sToolbarName) try {
    m_oActiveBar->Bands()->Item(ToolbarBandName(sToolbarName))->SetVisible(false);
    m_oActiveBar->RecalcLayout();
} catch (...) {
    Reraise("MenuManager", "HideToolbar");
}

Ref<Band> MenuManager::CreateToolbar(const std::string& sPath) try {
    const std::string sBand = ToolbarBandName(sPath);
    Ref<Band> oToolbar = m_oActiveBar->Bands()->Add(sBand);
    oToolbar->SetBandKind(BandKind::Toolbar);
    oToolbar->SetCaption(sPath);
    oToolbar->SetAllowCustomize(false);
    m_colToolbars->Add(oToolbar, sBand);
    if (!FindBand(sToolbarsMenu))
        AddToolbarsMenu();

    const Ref<Tool> oEntry = AddTool(sBand);
    auto oActionItem = New<ActionItem>();
    // A bare definition passes the item to the procedure, which reads the toolbar's name from it.
    oActionItem->Initialize(CorvaneMain::Framework(), New<ActionItemDef>());
    oActionItem->SetAction("ViewToolbars");
    oActionItem->SetName(sPath);
    oActionItem->SetChecked(true);
    oActionItem->SetTool(oEntry);
    oEntry->SetTagVariant(oActionItem);
    oEntry->SetChecked(true);
    oEntry->SetDescription("Shows/Hides " + sPath + " Toolbar");
    m_colToolbars->Item(sBand)->SetTagVariant(oActionItem);
    m_colToolbarActionItems->Add(oActionItem, sBand);
    const Ref<BandTools> oMenuTools = FindBand(sToolbarsMenu)->Tools();
    oMenuTools->Insert(-1, oEntry);
    oMenuTools->Item(sBand)->SetCaption(sPath);
    return oToolbar;
} catch (...) {
    Reraise("MenuManager", "CreateToolbar");
}

void MenuManager::AddToolbarsMenu() {
    Ref<Tool> oTitle = FindTool(sToolbarsMenu);
    if (!oTitle)
        oTitle = m_oActiveBar->Tools()->Add(m_lNextToolId, sToolbarsMenu);
    ++m_lNextToolId; // whether or not the identifier was used
    oTitle->SetCaption("Toolbars");
    oTitle->SetDropDownBand(sToolbarsMenu);
    m_oActiveBar->Bands()->Add(sToolbarsMenu)->SetBandKind(BandKind::Popup);
    const Ref<BandTools> oViewTools = EntryBand("View")->Tools();
    oViewTools->Insert(oViewTools->Count(), oTitle);
}

Ref<Band> MenuManager::FindToolbarBand(const std::string& sName) {
    Ref<Band> oBand = FindBand(ToolbarBandName(sName));
    return oBand ? oBand : CreateToolbar(sName);
}

void MenuManager::AddToolbarItem(const Ref<MenuItemDef>& oMenuItemDef) try {
    const Ref<ActionItemDef> oActionItemDef = oMenuItemDef->ActionItemDef();
    const std::string sKey = oMenuItemDef->Key();
    Ref<Tool> oTool = ToolOf(*oMenuItemDef, sKey);
    if (!oTool) {
        oTool = AddTool(sKey);
        oTool->SetChecked(oActionItemDef->Checked());
        oTool->SetEnabled(oActionItemDef->Enabled());
        oTool->SetVisible(false);
    }
    oActionItemDef->SetTool(oTool);
    const Ref<BandTools> oTools = FindToolbarBand(oMenuItemDef->Path())->Tools();
    oTools->Insert(oTools->Count(), oTool);
    const Ref<Tool> oInstance = oTools->Item(oTool->Name());
    oInstance->SetCaption(oMenuItemDef->SharedCaption());
    oInstance->SetToolTip(oMenuItemDef->ToolTip());
    oInstance->SetDescription(oActionItemDef->SharedDescription());
    const auto SetPicture = [&](Long lState, const std::string& sImage) {
        if (!sImage.empty())
            oInstance->SetPicture(lState, CorvaneMain::Framework()->GetImage(sImage));
    };
    SetPicture(Tool::Normal, oActionItemDef->Image());
    SetPicture(Tool::Disabled, oActionItemDef->ImageDisabled());
    SetPicture(Tool::Pressed, oActionItemDef->ImagePressed());
} catch (...) {
    Reraise("MenuManager", "AddToolbarItem");
}

// A toolbar without a visible button goes, and its entry loses the check. Nothing calls it.
[[maybe_unused]] void MenuManager::AdjustToolbarsVisibility() try {
    for (const auto& oToolbar : m_colToolbars) {
        bool bVisible = false;
        for (const auto& oTool : oToolbar->Tools()->All())
            if (oTool->Visible()) {
                bVisible = true;
                break;
            }
        oToolbar->SetVisible(bVisible);
        oToolbar->TagVariant()->Put("Checked", bVisible);
    }
} catch (...) {
    Reraise("MenuManager", "AdjustToolbarsVisibility");
}

} // namespace corvane
