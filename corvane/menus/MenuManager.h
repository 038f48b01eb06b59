// Turns the menu definitions of all services, explorer items and pages into bands and tools of the host's bar, and
// keeps them in step with the providers that are active.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/base/Event.h"
#include "corvane/base/KeyedCollection.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/menus/IActionsProvider.h"
#include "corvane/platform/controls/ActiveBar.h"
#include "corvane/services/MenuItemDef.h"

#include <memory>
#include <memory_resource>
#include <string>
#include <unordered_set>

namespace corvane {

class ExplorerItemDef;
class IExplorerItem;
class SortedList;

// The whole structure is built once, hidden, before any provider exists; at run time tools only pass from provider to
// provider. A provider is given in two forms: the object that owns the procedures, and its IActionsProvider view.
class __attribute__((visibility("default"))) MenuManager final : public Automation<MenuManager> {
public:
    MenuManager();
    ~MenuManager() override;

    // Builds everything. Fails with 457 for two titles of one key, with 6 for a position beyond the range, with 5
    // when the bar lacks a tool that is needed.
    void Initialize(const Ref<corvane::ActiveBar>& oActiveBar);

    // After Initialize.
    [[nodiscard]] const Ref<corvane::ActiveBar>& ActiveBar() const { return m_oActiveBar; }
    // By the toolbar's plain name; its check mark isn't touched. Fail with 5 for an unknown one.
    void ShowToolbar(const std::string& sToolbarName);
    void HideToolbar(const std::string& sToolbarName);

    // A provider gets an item for each definition. With bActivate its tools take the items' state; without it the
    // tools look as before, but clicks go to the new items already.
    void OnActionsProviderAdd(const Ref<Object>& oActionsProviderObj, const Ref<IActionsProvider>& oActionsProvider,
                              const Ref<ActionItemDefCollection>& colActionItemDefs, bool bActivate = true);
    // Fail with 5 when the provider has no item for one of the definitions, with 91 when it has no items at all.
    void OnActionsProviderActive(const Ref<Object>& oActionsProviderObj, const Ref<IActionsProvider>& oActionsProvider,
                                 const Ref<ActionItemDefCollection>& colActionItemDefs);
    void OnActionsProviderInActive(const Ref<Object>& oActionsProviderObj,
                                   const Ref<IActionsProvider>& oActionsProvider,
                                   const Ref<ActionItemDefCollection>& colActionItemDefs);
    // Shows the context menu of the item's type, if it has one.
    void OnContextMenu(const Ref<IExplorerItem>& oExplorerItem);
    // The texts of an entry in the menu of that path. Nothing happens when there is none.
    void SetMenuCaption(const std::string& sPath, const std::string& sActionItemName, const std::string& sCaption);
    void SetActionDesctiption(const std::string& sPath, const std::string& sActionItemName,
                              const std::string& sDescription);

    // Adds a title or an entry at run time, at the end of its menu. It fires nothing until the provider next becomes
    // active with a definition of that action; MenuSection makes entries that fire at once. Call Refresh afterwards.
    void AddMenu(const Ref<Object>& oActionProviderObj, const Ref<IActionsProvider>& oActionProvider,
                 const std::string& sActionItemName, const std::string& sPath, Single fPositionOrder,
                 MenuType eMenuType, const std::string& sCaption, const std::string& sAction = {},
                 bool bPassActionItemParam = false, const std::string& sDescription = {},
                 SeparatorStyle eSeparatorStyle = SeparatorStyle::fwSeparatorNone, const std::string& sShortCutKey = {},
                 const std::string& sToolTip = {}, bool bVisible = true, bool bEnabled = true, bool bChecked = false);
    // Makes a toolbar of that plain name, with its entry in the menu "View.Toolbars". Fails with 457 when there is one.
    Ref<Band> CreateToolbar(const std::string& sPath);
    void AddContextMenuItem(const Ref<Band>& oBand, const Ref<MenuItemDef>& oMenuItemDef);
    // Adds an entry at run time to the context menu of the item's type. Fails with 91 when the type has no such menu;
    // the action stays then.
    void AddContextMenu(const Ref<Object>& oExplorerItemObj, const std::string& sActionItemName,
                        const std::string& sPath, Single fPositionOrder, MenuType eMenuType,
                        const std::string& sCaption, const std::string& sAction = {}, bool bPassActionItemParam = false,
                        const std::string& sDescription = {},
                        SeparatorStyle eSeparatorStyle = SeparatorStyle::fwSeparatorNone,
                        const std::string& sShortCutKey = {}, bool bVisible = true, bool bEnabled = true,
                        bool bChecked = false);
    void AddMenuItem(const Ref<MenuItemDef>& oMenuItemDef);
    void AddToolbarItem(const Ref<MenuItemDef>& oMenuItemDef);
    // Lays out and repaints.
    void Refresh();
    // The instances of a master tool take over the texts and pictures that it has.
    void ApplyTool(const Ref<Tool>& oTool);
    // The provider's attached tools hide and release it.
    void OnActionsProviderRemove(const Ref<Object>& oActionsProviderObj, const Ref<IActionsProvider>& oActionsProvider);
    // By band name, "Toolbars." and the plain name.
    [[nodiscard]] const Ref<ActionItemCollection>& ToolbarActionItems() const { return m_colToolbarActionItems; }

    std::string_view TypeName() const override { return "MenuManager"; }

    static constexpr auto Members = MemberTable(
        Method("Initialize", &MenuManager::Initialize), Property("ActiveBar", &MenuManager::ActiveBar),
        Method("ShowToolbar", &MenuManager::ShowToolbar), Method("HideToolbar", &MenuManager::HideToolbar),
        Method("OnActionsProviderAdd", &MenuManager::OnActionsProviderAdd),
        Method("OnActionsProviderActive", &MenuManager::OnActionsProviderActive),
        Method("OnActionsProviderInActive", &MenuManager::OnActionsProviderInActive),
        Method("OnContextMenu", &MenuManager::OnContextMenu), Method("SetMenuCaption", &MenuManager::SetMenuCaption),
        Method("SetActionDesctiption", &MenuManager::SetActionDesctiption), Method("AddMenu", &MenuManager::AddMenu),
        Method("CreateToolbar", &MenuManager::CreateToolbar),
        Method("AddContextMenuItem", &MenuManager::AddContextMenuItem),
        Method("AddContextMenu", &MenuManager::AddContextMenu), Method("AddMenuItem", &MenuManager::AddMenuItem),
        Method("AddToolbarItem", &MenuManager::AddToolbarItem), Method("Refresh", &MenuManager::Refresh),
        Method("ApplyTool", &MenuManager::ApplyTool),
        Method("OnActionsProviderRemove", &MenuManager::OnActionsProviderRemove),
        Property("ToolbarActionItems", &MenuManager::ToolbarActionItems));

private:
    void SetupContextMenu(const Ref<ExplorerItemDef>& oExplorerItemDef);
    void AddMenuItems(const Ref<MenuItemDefCollection>& colMenuItemDefs);
    void PrepareForDisplay();
    void AdjustToolbarsVisibility();
    void m_oActiveBar_BandClose(const Ref<Band>& oBand);
    void m_oActiveBar_BandOpen(const Ref<Band>& oBand);
    void m_oActiveBar_ToolClick(const Ref<Tool>& oTool);
    [[nodiscard]] Ref<Tool> FindTool(const std::string& sKey) const;
    [[nodiscard]] Ref<Band> FindBand(const std::string& sKey) const;
    Ref<Band> CreatePlaceHolderMenuTitle(const std::string& sPath);
    [[nodiscard]] Ref<Band> FindToolbarBand(const std::string& sName);
    void SetupMenuTitlePositions();
    [[nodiscard]] Long MenuPositionKey(const MenuItemDef& oMenuItemDef) const;

    // Pieces of the above.
    template <class Set>
    void SetInstanceText(const std::string& sPath, const std::string& sActionItemName, Set fnSet) const;
    void FileDefinitions();
    void AddServiceProviders();
    Ref<Tool> AddTool(const std::string& sName);
    [[nodiscard]] Ref<Tool> ToolOf(const MenuItemDef& oMenuItemDef, const std::string& sKey) const;
    Ref<Tool> NewMenuTool(const MenuItemDef& oMenuItemDef, const std::string& sKey);
    [[nodiscard]] static Ref<ActionItem> NewActionItem(const Ref<Object>& oActionsProviderObj,
                                                       const Ref<ActionItemDef>& oActionItemDef);
    void SetShortCut(Tool& oTool, const std::string& sShortCutKey) const;
    void InsertSeparator(Band& oBand, Long lPosition) const;
    [[nodiscard]] Ref<Band> ParentBand(const std::string& sPath);
    [[nodiscard]] Ref<Band> EntryBand(const std::string& sPath);
    void InsertMenuItem(Band& oParent, const MenuItemDef& oMenuItemDef, const Ref<Tool>& oTool) const;
    Ref<Band> PlaceAddedTitle(const MenuItemDef& oMenuItemDef, const Ref<Tool>& oTool);
    Ref<Band> PlaceAddedItem(const MenuItemDef& oMenuItemDef, const Ref<Tool>& oTool);
    void PlaceMenuItem(const MenuItemDef& oMenuItemDef, const Ref<Tool>& oTool, bool bIsShared);
    void PlaceMenuTitle(const MenuItemDef& oMenuItemDef, const Ref<Tool>& oTool);
    void AdoptMenuTitle(const MenuItemDef& oMenuItemDef, const Ref<Tool>& oTool);
    void AddToolbarsMenu();
    [[nodiscard]] Ref<Tool> ContextTool(const Ref<Band>& oBand, const MenuItemDef& oMenuItemDef, bool bWithSubBand);
    void PlaceContextEntry(const Ref<Band>& oBand, const MenuItemDef& oMenuItemDef, const Ref<Tool>& oTool) const;

    Long m_lNextToolId = 4;
    Ref<Band> m_oMainBand;
    Ref<SortedList> m_oMenuItemDefs;    // by MenuPositionKey as text
    Ref<SortedList> m_oToolbarItemDefs; // by PositionKey
    // The keys of the two lists while entries are filed: asking the lists would sort once an entry. Their memory goes
    // as a whole afterwards.
    struct FiledKeys {
        std::pmr::monotonic_buffer_resource oMemory;
        std::pmr::unordered_set<Long> setMenu{&oMemory};
        std::pmr::unordered_set<std::string, TextHash, TextEqual> setToolbars{&oMemory};
    };
    std::unique_ptr<FiledKeys> m_pFiledKeys;
    Ref<MenuItemDefCollection> m_colSharedItemDefs;
    Ref<KeyedCollection<Single>> m_colMenuTitlePositions; // PositionOrder of a title, by its Key
    const Long m_lDefaultTitlePosition = 500;
    Ref<KeyedCollection<Ref<Band>>> m_colToolbars;
    Ref<ActionItemCollection> m_colToolbarActionItems;
    Ref<corvane::ActiveBar> m_oActiveBar;
    bool m_bInToolClick = false;
    Subscription m_oToolClick;
    Subscription m_oBandOpen;
    Subscription m_oBandClose;
};

} // namespace corvane
