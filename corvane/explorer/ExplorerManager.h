// Owns the explorer: a tab and a tree for each top-level definition, the items behind the nodes, and the one idea of
// which item is active. It doesn't know menus and windows and reports changes by six events.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/base/Event.h"
#include "corvane/base/KeyedCollection.h"
#include "corvane/platform/ObjectKeyProvider.h"
#include "corvane/platform/controls/ActiveBar.h"
#include "corvane/platform/controls/ImageList.h"
#include "corvane/platform/controls/PanelForm.h"
#include "corvane/platform/controls/TabStrip.h"
#include "corvane/platform/controls/TreeView.h"

#include <functional>
#include <string>
#include <vector>

namespace corvane {

class ActionItem;
class ExplorerItemDef;
class IExplorerItem;

class __attribute__((visibility("default"))) ExplorerManager final : public Automation<ExplorerManager> {
public:
    ExplorerManager();
    ~ExplorerManager() override;

    // The item's own object, not its base.
    Event<const Ref<Object>&> onAdd;    // its node doesn't exist yet
    Event<const Ref<Object>&> onRemove; // by Clear only, after all nodes have been removed
    Event<const Ref<Object>&> OnOpen;   // double click
    Event<const Ref<Object>&> OnActive;
    Event<const Ref<Object>&> OnInactive;
    Event<const Ref<Object>&> OnContextMenu;

    // Sets up tabs and trees from the definitions, without nodes. Fails with 5 when the bar has no band "Explorer" with
    // a tool "ExplorerPanel", the form no tab strip "tabExplorer", or the framework's service no action "Navigation".
    void Initialize(const Ref<ActiveBar>& oActiveBar, const Ref<PanelForm>& frmExplorerPanel);

    // After Initialize.
    void Refresh(); // Clear, then Populate
    void Show();
    void Hide();
    // Builds all trees and shows the explorer. What a failure has left stays.
    void Populate();
    void Clear();

    // After Populate. Adds one node, behind its siblings, below the folder's item or else the definition's parent. The
    // tree is that of the definition. An unknown definition does nothing. Fails for a top-level definition (5), for a
    // parent that has no node (5) and for a key that is there already (457).
    void AddToExplorer(const Ref<Object>& oExplorerItemObj, const std::string& sExplorerItemDefName,
                       const Ref<Object>& oFolderExplorerItemObj = nullptr);
    // Raises no event. The nodes below it are removed, too, but their objects stay until Clear. Fails with 5
    // when the object isn't there.
    void DeleteFromExplorer(const Ref<Object>& oExplorerItemObj);
    // Selects the item's node and opens its label for editing; what is edited then is the active item. A label that is
    // open already ends first, with what has been typed there.
    void StartRename(const Ref<Object>& oExplorerItemObj);
    // The tree of the active tab; nothing without tabs.
    [[nodiscard]] const Ref<corvane::TreeView>& TreeView() const { return m_tvwActiveTreeView; }

    std::string_view TypeName() const override { return "ExplorerManager"; }

    static constexpr auto Members = MemberTable(
        Method("Initialize", &ExplorerManager::Initialize), Method("Refresh", &ExplorerManager::Refresh),
        Method("Show", &ExplorerManager::Show), Method("Hide", &ExplorerManager::Hide),
        Method("Populate", &ExplorerManager::Populate), Method("Clear", &ExplorerManager::Clear),
        Method("AddToExplorer", &ExplorerManager::AddToExplorer),
        Method("DeleteFromExplorer", &ExplorerManager::DeleteFromExplorer),
        Method("StartRename", &ExplorerManager::StartRename), Property("TreeView", &ExplorerManager::TreeView));

private:
    [[nodiscard]] Ref<IExplorerItem> ActiveExplorerItem() const;
    [[nodiscard]] Ref<Object> ActiveExplorerItemObject() const;
    void SetupExplorerPanel();
    void SetupExplorerTab(Long iTab, const Ref<ExplorerItemDef>& oExplorerItemDef);
    [[nodiscard]] Ref<Object> FolderExplorerItemFactory(const Ref<ExplorerItemDef>& oExplorerItemDef) const;
    void AddFolderTreeNode(const Ref<corvane::TreeView>& tvw, const Ref<ExplorerItemDef>& oExplorerItemDef,
                           const std::string& sParentKey);
    Ref<Node> AddTreeNode(const Ref<corvane::TreeView>& tvw, const Ref<Object>& oExplorerItemObj,
                          const std::string& sParentKey, const Ref<ExplorerItemDef>& oExplorerItemDef);
    void AddFolderChildTreeNode(const Ref<corvane::TreeView>& tvw, const Ref<Object>& oExplorerItemObj,
                                const std::string& sParentKey, const Ref<ExplorerItemDef>& oExplorerItemDef);

    // The controls' events.
    void m_frmExplorerPanel_Resize();
    void m_oActiveBar_BandClose(const Ref<Band>& oBand);
    void m_tabExplorer_Click(Long lPreviousTab);
    void m_tvwActiveTreeView_BeforeLabelEdit(bool& bCancel);
    void m_tvwActiveTreeView_AfterLabelEdit(bool& bCancel, std::string& sNewString);
    void m_tvwActiveTreeView_Click();
    void m_tvwActiveTreeView_DblClick();
    void m_tvwActiveTreeView_MouseDown(Single x, Single y);
    void m_tvwActiveTreeView_MouseUp(Long lButton, Long lShift);
    void m_tvwActiveTreeView_NodeClick();
    [[nodiscard]] std::string TreeNodeKey(const IExplorerItem& oExplorerItem) const;

    // Pieces of the above.
    // Handlers of controls hold this object: what they call may end the application, which lets go of it.
    template <class Event, class Handler>
    [[nodiscard]] Subscription Hear(Event& oEvent, Handler fnHandler) {
        return oEvent.Subscribe([this, fnHandler](auto&&... aArguments) {
            const Ref<ExplorerManager> oSelf(this);
            fnHandler(aArguments...);
        });
    }
    // What an item's procedure fails with says whose it was.
    static void CallItem(const Ref<Object>& oExplorerItemObj, const char* sProcedure,
                         const std::function<void()>& fnCall);
    void SetTreeView(Ref<corvane::TreeView> tvw);
    void ShowBand(bool bVisible);
    void AddChildren(const Ref<corvane::TreeView>& tvw, IExplorerItem& oExplorerItem,
                     const Ref<KeyedCollection<Ref<ExplorerItemDef>>>& colChildDefs);
    [[nodiscard]] Ref<corvane::TreeView> TreeOf(const Ref<ExplorerItemDef>& oExplorerItemDef) const;
    [[nodiscard]] std::string ObjectKeyText(const Ref<Object>& oObject) const;

    Ref<KeyedCollection<Ref<corvane::TreeView>>> m_colTreeViews = New<KeyedCollection<Ref<corvane::TreeView>>>();
    Ref<Node> m_nodActive;
    Long m_lActiveTab = 0;
    Long m_lPreviousTab = 0;
    bool m_bNodeClicked = false;
    bool m_bInDblClick = false;
    Ref<ActionItem> m_oNavigationActionItem;
    Ref<KeyedCollection<Ref<Object>>> m_colExplorerItems; // by object key; nothing while the tree isn't populated
    Ref<ImageList> m_oImageList;
    Ref<ObjectKeyProvider> m_oObjectKeyProvider;
    Ref<ActiveBar> m_oActiveBar;
    Ref<corvane::TreeView> m_tvwActiveTreeView;
    Ref<TabStrip> m_tabExplorer;
    Ref<PanelForm> m_frmExplorerPanel;
    Subscription m_oBandClose;
    Subscription m_oResize;
    Subscription m_oTabClick;
    std::vector<Subscription> m_aTreeSubscriptions; // to the active tree alone
};

} // namespace corvane
