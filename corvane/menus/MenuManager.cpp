#include "corvane/menus/MenuManager.h"

#include "corvane/collections/SortedList.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/IExplorerItem.h"
#include "corvane/platform/Handlers.h"
#include "corvane/services/IService.h"
#include "corvane/services/ServiceManager.h"

namespace corvane {

MenuManager::MenuManager() = default;

MenuManager::~MenuManager() = default;

void MenuManager::Initialize(const Ref<corvane::ActiveBar>& oActiveBar) try {
    const Ref<MenuManager> oSelf(this); // a provider may end the application
    m_oActiveBar = oActiveBar;
    m_oToolClick = m_oActiveBar->ToolClick.Subscribe([this](const Ref<Tool>& oTool) { m_oActiveBar_ToolClick(oTool); });
    m_oBandOpen =
        m_oActiveBar->BandOpen.Subscribe([this](const Ref<Band>& oBand, bool&) { m_oActiveBar_BandOpen(oBand); });
    m_oBandClose = m_oActiveBar->BandClose.Subscribe([this](const Ref<Band>& oBand) { m_oActiveBar_BandClose(oBand); });
    m_oMainBand = m_oActiveBar->Bands()->Add("Main");
    m_oMainBand->SetBandKind(BandKind::MenuBar);
    m_colToolbars = New<KeyedCollection<Ref<Band>>>();
    m_colToolbarActionItems = New<ActionItemCollection>();
    m_oMenuItemDefs = New<SortedList>();
    m_oMenuItemDefs->SetSortMode(SortNumeric);
    m_oToolbarItemDefs = New<SortedList>();
    m_oToolbarItemDefs->SetSortMode(SortText);
    m_colSharedItemDefs = New<MenuItemDefCollection>();
    SetupMenuTitlePositions();
    FileDefinitions();
    PrepareForDisplay();
    AddServiceProviders();
    Refresh();
} catch (...) {
    Reraise("MenuManager", "Initialize");
}

void MenuManager::FileDefinitions() {
    m_pFiledKeys = std::make_unique<FiledKeys>();
    const Ref<ServiceManager> oServiceManager = CorvaneMain::Framework()->ServiceManager();
    for (const auto& oServiceDef : oServiceManager->ServiceDefs())
        AddMenuItems(oServiceDef->MenuItemDefs());
    for (const auto& oExplorerItemDef : oServiceManager->ExplorerItemDefs())
        if (oExplorerItemDef->MenuItemDefs()->Count() > 0)
            AddMenuItems(oExplorerItemDef->MenuItemDefs());
    for (const auto& oWindowDef : oServiceManager->WindowDefs())
        for (const auto& oPageDef : oWindowDef->PageDefs())
            if (oPageDef->MenuItemDefs()->Count() > 0)
                AddMenuItems(oPageDef->MenuItemDefs());
    m_pFiledKeys = nullptr;
}

void MenuManager::AddServiceProviders() {
    const Ref<ServiceManager> oServiceManager = CorvaneMain::Framework()->ServiceManager();
    for (const auto& oServiceDef : oServiceManager->ServiceDefs()) {
        if (CorvaneMain::HasEnded())
            return;
        const Ref<Object> oService = oServiceManager->Services()->Item(oServiceDef->Name());
        if (!oServiceManager->IsServiceAlive(oService))
            continue;
        const Ref<IService> oInner = CorvaneMain::QueryService(oService);
        if (CorvaneMain::IsActionsProvider(oInner))
            OnActionsProviderAdd(oService, oInner.As<IActionsProvider>(), oServiceDef->ActionItemDefs(), true);
    }
}

void MenuManager::SetupMenuTitlePositions() try {
    m_colMenuTitlePositions = New<KeyedCollection<Single>>();
    const auto AddTitles = [this](const Ref<MenuItemDefCollection>& colMenuItemDefs, bool bUnlessThere) {
        for (const auto& oMenuItemDef : colMenuItemDefs) {
            if (oMenuItemDef->MenuType() != MenuType::fwMenuTitle)
                continue;
            // The test looks for the action's name although the title goes under its key: a page's title below
            // another that is there already still fails.
            if (bUnlessThere && KeyExists(m_colMenuTitlePositions, oMenuItemDef->ActionItemDef()->Name()))
                continue;
            m_colMenuTitlePositions->Add(oMenuItemDef->PositionOrder(), oMenuItemDef->Key());
        }
    };
    const Ref<ServiceManager> oServiceManager = CorvaneMain::Framework()->ServiceManager();
    for (const auto& oServiceDef : oServiceManager->ServiceDefs())
        AddTitles(oServiceDef->MenuItemDefs(), false);
    for (const auto& oExplorerItemDef : oServiceManager->ExplorerItemDefs())
        AddTitles(oExplorerItemDef->MenuItemDefs(), false);
    for (const auto& oWindowDef : oServiceManager->WindowDefs())
        for (const auto& oPageDef : oWindowDef->PageDefs())
            AddTitles(oPageDef->MenuItemDefs(), true);
} catch (...) {
    Reraise("MenuManager", "SetupMenuTitlePositions");
}

Long MenuManager::MenuPositionKey(const MenuItemDef& oMenuItemDef) const try {
    const Single fOrder = oMenuItemDef.PositionOrder();
    const Double dblHundredfold = static_cast<Double>(fOrder * 100.0F);
    switch (oMenuItemDef.MenuType()) {
    case MenuType::fwMenuTitle:
    case MenuType::fwMenuItem: {
        if (oMenuItemDef.MenuType() == MenuType::fwMenuTitle && oMenuItemDef.Path().empty())
            return RoundToLong(fOrder);
        const Single* pTitle = m_colMenuTitlePositions->Find(oMenuItemDef.Path());
        const Double dblTitle = pTitle ? static_cast<Double>(*pTitle) : static_cast<Double>(m_lDefaultTitlePosition);
        return RoundToLong(dblTitle * 1000000 + dblHundredfold);
    }
    case MenuType::fwToolbarItem:
    case MenuType::fwContextMenuItem:
        return RoundToLong(dblHundredfold);
    case MenuType::fwContextMenuTitle:
        return RoundToLong(fOrder);
    }
    return 0;
} catch (...) {
    Reraise("MenuManager", "MenuPositionKey");
}

void MenuManager::AddMenuItems(const Ref<MenuItemDefCollection>& colMenuItemDefs) try {
    for (const auto& oMenuItemDef : colMenuItemDefs) {
        switch (oMenuItemDef->MenuType()) {
        case MenuType::fwMenuTitle:
        case MenuType::fwMenuItem: {
            // One text a number: the set of numbers says what a set of texts would.
            const Long lKey = MenuPositionKey(*oMenuItemDef);
            if (m_pFiledKeys->setMenu.insert(lKey).second) {
                m_oMenuItemDefs->Add(lKey, oMenuItemDef);
            } else {
                m_colSharedItemDefs->Add(oMenuItemDef);
                oMenuItemDef->ActionItemDef()->SetIsShared(true);
            }
            break;
        }
        case MenuType::fwToolbarItem: {
            const std::string sKey = oMenuItemDef->PositionKey();
            if (m_pFiledKeys->setToolbars.insert(sKey).second)
                m_oToolbarItemDefs->Add(sKey, oMenuItemDef);
            else
                m_colSharedItemDefs->Add(oMenuItemDef);
            break;
        }
        case MenuType::fwContextMenuItem:
        case MenuType::fwContextMenuTitle:
            break; // read from their explorer item's definition later
        }
    }
} catch (...) {
    Reraise("MenuManager", "AddMenuItems");
}

void MenuManager::PrepareForDisplay() try {
    // No key is there twice, so the values in order are those of the keys in order.
    for (const auto& vMenuItemDef : m_oMenuItemDefs->Items())
        AddMenuItem(ToObject(vMenuItemDef).As<MenuItemDef>());
    for (const auto& oMenuItemDef : m_colSharedItemDefs) {
        if (oMenuItemDef->MenuType() == MenuType::fwToolbarItem)
            AddToolbarItem(oMenuItemDef);
        else
            AddMenuItem(oMenuItemDef);
    }
    for (const auto& vMenuItemDef : m_oToolbarItemDefs->Items())
        AddToolbarItem(ToObject(vMenuItemDef).As<MenuItemDef>());
    for (const auto& oExplorerItemDef : CorvaneMain::Framework()->ServiceManager()->ExplorerItemDefs())
        if (oExplorerItemDef->MenuItemDefs()->Count() > 0)
            SetupContextMenu(oExplorerItemDef);
    if (FindBand("Window"))
        m_oActiveBar->Bands()->Item("Window")->Tools()->Insert(-1, m_oActiveBar->Tools()->Item("WindowList"));
    m_oMainBand->SetVisible(true);
} catch (...) {
    Reraise("MenuManager", "PrepareForDisplay");
}

// Both look before something is made, and nothing is found before there is a bar.
Ref<Tool> MenuManager::FindTool(const std::string& sKey) const {
    return m_oActiveBar ? m_oActiveBar->Tools()->Find(sKey) : Ref<Tool>();
}

Ref<Band> MenuManager::FindBand(const std::string& sKey) const {
    return m_oActiveBar ? m_oActiveBar->Bands()->Find(sKey) : Ref<Band>();
}

void MenuManager::Refresh() try {
    m_oActiveBar->RecalcLayout();
    m_oActiveBar->RedrawBars();
} catch (...) {
    Reraise("MenuManager", "Refresh");
}

void MenuManager::ApplyTool(const Ref<Tool>& oTool) try { m_oActiveBar->ApplyToolToInstances(oTool); } catch (...) {
    Reraise("MenuManager", "ApplyTool");
}

} // namespace corvane
