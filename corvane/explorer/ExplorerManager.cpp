#include "corvane/explorer/ExplorerManager.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/GenericFolder.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/platform/Entering.h"
#include "corvane/platform/Handlers.h"
#include "corvane/platform/Platform.h"
#include "corvane/services/ServiceManager.h"

#include <algorithm>

namespace corvane {

namespace {

constexpr const char* sExplorerBand = "Explorer";
constexpr Long lImagePixels = 16;
constexpr Single fIndentationTwips = 200;

} // namespace

ExplorerManager::ExplorerManager() = default;

ExplorerManager::~ExplorerManager() = default;

void ExplorerManager::Initialize(const Ref<ActiveBar>& oActiveBar, const Ref<PanelForm>& frmExplorerPanel) try {
    m_oObjectKeyProvider = New<ObjectKeyProvider>();
    m_oActiveBar = oActiveBar;
    m_oBandClose = Hear(m_oActiveBar->BandClose, [this](const Ref<Band>& oBand) { m_oActiveBar_BandClose(oBand); });
    m_frmExplorerPanel = frmExplorerPanel;
    m_oResize = Hear(m_frmExplorerPanel->Resize, [this] { m_frmExplorerPanel_Resize(); });
    const Ref<Band> oBand = m_oActiveBar->Bands()->Item(sExplorerBand);
    oBand->Tools()->Item("ExplorerPanel")->SetHostedControl(m_frmExplorerPanel);
    oBand->SetCaption("Study Explorer");
    m_oNavigationActionItem =
        CorvaneMain::QueryService(CorvaneMain::Framework()).As<IActionsProvider>()->ActionItems()->Item("Navigation");
    oBand->SetVisible(false);
    m_bNodeClicked = false;
    SetupExplorerPanel();
} catch (...) {
    Reraise("ExplorerManager", "Initialize");
}

void ExplorerManager::SetupExplorerPanel() try {
    const Ref<Framework> oFramework = CorvaneMain::Framework();
    m_oImageList = m_frmExplorerPanel->AddControl("MSComctlLib.ImageListCtrl.2", "ExplorerImageList").As<ImageList>();
    m_oImageList->SetImageHeight(lImagePixels);
    m_oImageList->SetImageWidth(lImagePixels);
    m_oImageList->Add("GenericExplorerItem", oFramework->GetImage("GenericExplorerItem.ico"));
    std::vector<Ref<ExplorerItemDef>> aTopLevel;
    for (const auto& oDef : oFramework->ServiceManager()->ExplorerItemDefs()) {
        if (!oDef->Image().empty())
            m_oImageList->Add(oDef->Name(), oFramework->GetImage(oDef->Image()));
        const bool bIsFolder = oDef->ExplorerItemType() == ExplorerItemType::fwExplorerItemFolder ||
                               oDef->ExplorerItemType() == ExplorerItemType::fwExplorerItemFolderChild;
        if (bIsFolder && oDef->ParentExplorerItemName().empty())
            aTopLevel.push_back(oDef);
    }
    std::stable_sort(aTopLevel.begin(), aTopLevel.end(),
                     [](const auto& a, const auto& b) { return a->PositionOrder() < b->PositionOrder(); });
    const auto tabExplorer = m_frmExplorerPanel->Control("tabExplorer").As<TabStrip>();
    Long iTab = 0;
    for (const auto& oDef : aTopLevel) {
        tabExplorer->SetTabs(iTab + 1);
        SetupExplorerTab(iTab, oDef);
        tabExplorer->SetTabsPerRow(iTab + 1);
        ++iTab;
    }
    if (iTab < 1) {
        tabExplorer->SetCaption("");
        m_oActiveBar->Bands()->Item(sExplorerBand)->SetVisible(false);
    } else {
        tabExplorer->SetTab(0);
        SetTreeView(m_colTreeViews->Item(1));
    }
    m_lActiveTab = 0;
    m_lPreviousTab = m_lActiveTab;
    // Last, so that the set-up of the tabs raises nothing into this object.
    m_tabExplorer = tabExplorer;
    m_oTabClick = Hear(m_tabExplorer->Click, [this](Long lPreviousTab) { m_tabExplorer_Click(lPreviousTab); });
} catch (...) {
    Reraise("ExplorerManager", "SetupExplorerPanel");
}

void ExplorerManager::SetupExplorerTab(Long iTab, const Ref<ExplorerItemDef>& oExplorerItemDef) try {
    const auto tabExplorer = m_frmExplorerPanel->Control("tabExplorer").As<TabStrip>();
    tabExplorer->SetTab(iTab);
    tabExplorer->SetCaption(oExplorerItemDef->Name());
    const auto tvw =
        m_frmExplorerPanel->AddControl("MSComctlLib.TreeCtrl.2", oExplorerItemDef->Name()).As<corvane::TreeView>();
    m_colTreeViews->Add(tvw, oExplorerItemDef->Name());
    tvw->SetContainer(iTab);
    tvw->SetImageList(m_oImageList);
    tvw->SetTag(oExplorerItemDef->Name());
    tvw->SetBorderStyle(1);
    tvw->SetOLEDragMode(0);
    tvw->SetOLEDropMode(0);
    tvw->SetIndentation(fIndentationTwips);
    tvw->SetHideSelection(false);
    tvw->SetVisible(true);
} catch (...) {
    Reraise("ExplorerManager", "SetupExplorerTab");
}

// An item that is added may end the application: then nothing more is added, and nothing shown.
void ExplorerManager::Populate() try {
    const Ref<ExplorerManager> oSelf(this);
    m_colExplorerItems = New<KeyedCollection<Ref<Object>>>();
    const auto colDefs = CorvaneMain::Framework()->ServiceManager()->ExplorerItemDefs();
    for (const auto& tvw : m_colTreeViews) {
        AddFolderTreeNode(tvw, colDefs->Item(tvw->Tag()), "");
        if (CorvaneMain::HasEnded())
            return;
    }
    m_oNavigationActionItem->SetEnabled(true);
    Show();
} catch (...) {
    Reraise("ExplorerManager", "Populate");
}

void ExplorerManager::Clear() try {
    const Ref<ExplorerManager> oSelf(this);
    m_nodActive = nullptr;
    m_bNodeClicked = false;
    for (const auto& tvw : m_colTreeViews) {
        try {
            tvw->GetNodes()->Clear();
        } catch (...) {
            // The other trees are cleared all the same.
        }
    }
    if (m_colExplorerItems)
        for (const auto& oExplorerItemObj : m_colExplorerItems) {
            onRemove.Raise(oExplorerItemObj);
            if (CorvaneMain::HasEnded())
                return;
        }
    m_colExplorerItems = nullptr;
    m_oNavigationActionItem->SetEnabled(false);
    Hide();
} catch (...) {
    Reraise("ExplorerManager", "Clear");
}

void ExplorerManager::Refresh() try {
    const Ref<ExplorerManager> oSelf(this);
    Clear();
    if (!CorvaneMain::HasEnded())
        Populate();
} catch (...) {
    Reraise("ExplorerManager", "Refresh");
}

void ExplorerManager::ShowBand(bool bVisible) {
    m_oActiveBar->Bands()->Item(sExplorerBand)->SetVisible(bVisible);
    m_oActiveBar->RecalcLayout();
    m_oNavigationActionItem->SetChecked(bVisible);
}

void ExplorerManager::Show() try { ShowBand(true); } catch (...) {
    Reraise("ExplorerManager", "Show");
}

void ExplorerManager::Hide() try { ShowBand(false); } catch (...) {
    Reraise("ExplorerManager", "Hide");
}

Ref<Object> ExplorerManager::FolderExplorerItemFactory(const Ref<ExplorerItemDef>& oExplorerItemDef) const try {
    if (!oExplorerItemDef->ProgID().empty()) {
        try {
            return CurrentPlatform().oObjectFactory->Create(oExplorerItemDef->ProgID());
        } catch (...) {
            RaiseFrom("in the creation of " + oExplorerItemDef->ProgID() + " (explorer item " +
                      oExplorerItemDef->Name() + ")");
        }
    }
    auto oFolder = New<GenericFolder>();
    oFolder->ExplorerItem()->SetName(oExplorerItemDef->Name());
    return oFolder;
} catch (...) {
    Reraise("ExplorerManager", "FolderExplorerItemFactory");
}

void ExplorerManager::AddFolderTreeNode(const Ref<corvane::TreeView>& tvw, const Ref<ExplorerItemDef>& oExplorerItemDef,
                                        const std::string& sParentKey) try {
    const Ref<Object> oExplorerItemObj = FolderExplorerItemFactory(oExplorerItemDef);
    if (CorvaneMain::HasEnded())
        return;
    const Ref<Node> nodNew = AddTreeNode(tvw, oExplorerItemObj, sParentKey, oExplorerItemDef);
    if (!nodNew)
        return;
    nodNew->SetExpanded(true);
    const Ref<IExplorerItem> oExplorerItem = CorvaneMain::QueryExplorerItem(oExplorerItemObj);
    AddChildren(tvw, *oExplorerItem, oExplorerItemDef->ChildExplorerItemDefs());
} catch (...) {
    Reraise("ExplorerManager", "AddFolderTreeNode");
}

void ExplorerManager::AddFolderChildTreeNode(const Ref<corvane::TreeView>& tvw, const Ref<Object>& oExplorerItemObj,
                                             const std::string& sParentKey,
                                             const Ref<ExplorerItemDef>& oExplorerItemDef) try {
    const Ref<IExplorerItem> oExplorerItem = CorvaneMain::QueryExplorerItem(oExplorerItemObj);
    const Ref<Node> nodNew = AddTreeNode(tvw, oExplorerItemObj, sParentKey, oExplorerItemDef);
    if (!nodNew)
        return;
    nodNew->SetExpanded(true);
    AddChildren(tvw, *oExplorerItem, oExplorerItem->ExplorerItemDef()->ChildExplorerItemDefs());
} catch (...) {
    Reraise("ExplorerManager", "AddFolderChildTreeNode");
}

// Children aren't divided among the definitions: each one of a type that has an object a node takes all of them.
void ExplorerManager::AddChildren(const Ref<corvane::TreeView>& tvw, IExplorerItem& oExplorerItem,
                                  const Ref<KeyedCollection<Ref<ExplorerItemDef>>>& colChildDefs) {
    for (const auto& oChildDef : colChildDefs) {
        switch (oChildDef->ExplorerItemType()) {
        case ExplorerItemType::fwExplorerItemDefault:
            for (const auto& oChild : oExplorerItem.Children())
                if (!AddTreeNode(tvw, oChild, oExplorerItem.Name(), oChildDef))
                    return;
            break;
        case ExplorerItemType::fwExplorerItemFolder:
            AddFolderTreeNode(tvw, oChildDef, oExplorerItem.Name());
            break;
        case ExplorerItemType::fwExplorerItemFolderChild:
            for (const auto& oChild : oExplorerItem.Children()) {
                if (CorvaneMain::HasEnded())
                    return;
                AddFolderChildTreeNode(tvw, oChild, oExplorerItem.Name(), oChildDef);
            }
            break;
        }
        if (CorvaneMain::HasEnded())
            return;
    }
}

std::string ExplorerManager::ObjectKeyText(const Ref<Object>& oObject) const {
    return ToText(m_oObjectKeyProvider->ObjectKey(oObject));
}

// Nothing when the item has ended the application.
Ref<Node> ExplorerManager::AddTreeNode(const Ref<corvane::TreeView>& tvw, const Ref<Object>& oExplorerItemObj,
                                       const std::string& sParentKey,
                                       const Ref<ExplorerItemDef>& oExplorerItemDef) try {
    const Ref<ExplorerManager> oSelf(this);
    const Entering oEntering(oExplorerItemObj);
    const Ref<IExplorerItem> oExplorerItem = CorvaneMain::QueryExplorerItem(oExplorerItemObj);
    CallItem(oExplorerItemObj, "Initialize", [&] { oExplorerItem->Initialize(oExplorerItemDef); });
    if (CorvaneMain::HasEnded())
        return nullptr;
    m_colExplorerItems->Add(oExplorerItemObj, ObjectKeyText(oExplorerItemObj));
    onAdd.Raise(oExplorerItemObj);
    if (CorvaneMain::HasEnded())
        return nullptr;
    const std::string sKey = TreeNodeKey(*oExplorerItem);
    const std::string sImage = oExplorerItemDef->Image().empty() ? std::string() : oExplorerItemDef->Name();
    const auto eRelationship = sParentKey.empty() ? NodeRelationship::First : NodeRelationship::Child;
    std::string sText;
    CallItem(oExplorerItemObj, "OnDisplayName", [&] { sText = oExplorerItem->DisplayName(); });
    if (CorvaneMain::HasEnded())
        return nullptr;
    Ref<Node> nodNew = tvw->GetNodes()->Add(sParentKey, eRelationship, sKey, sText, sImage);
    nodNew->SetTag(ObjectKeyText(oExplorerItemObj));
    return nodNew;
} catch (...) {
    Reraise("ExplorerManager", "AddTreeNode");
}

std::string ExplorerManager::TreeNodeKey(const IExplorerItem& oExplorerItem) const {
    const Ref<ExplorerItemDef> oDef = oExplorerItem.ExplorerItemDef();
    if (oDef->ExplorerItemType() == ExplorerItemType::fwExplorerItemDefault)
        return oDef->Name() + "." + oExplorerItem.Name();
    return oExplorerItem.Name();
}

void ExplorerManager::CallItem(const Ref<Object>& oExplorerItemObj, const char* sProcedure,
                               const std::function<void()>& fnCall) {
    try {
        fnCall();
    } catch (...) {
        RaiseFrom(CorvaneMain::PlaceOf(oExplorerItemObj, sProcedure));
    }
}

// The tree of the top-level definition above this one. A top-level definition itself isn't found: there is no tree
// without a name.
Ref<corvane::TreeView> ExplorerManager::TreeOf(const Ref<ExplorerItemDef>& oExplorerItemDef) const {
    std::string sTopLevel;
    Long lLevels = CorvaneMain::Framework()->ServiceManager()->ExplorerItemDefs()->Count();
    for (Ref<ExplorerItemDef> oDef = oExplorerItemDef; oDef->ParentExplorerItemDef();
         oDef = oDef->ParentExplorerItemDef()) {
        if (lLevels-- == 0)
            Fail(FailureNumber::InvalidProcedureCall,
                 "The explorer item \"" + oExplorerItemDef->Name() + "\" is below itself");
        sTopLevel = oDef->ParentExplorerItemName();
    }
    return m_colTreeViews->Item(sTopLevel);
}

void ExplorerManager::AddToExplorer(const Ref<Object>& oExplorerItemObj, const std::string& sExplorerItemDefName,
                                    const Ref<Object>& oFolderExplorerItemObj) try {
    const auto colDefs = CorvaneMain::Framework()->ServiceManager()->ExplorerItemDefs();
    if (!KeyExists(colDefs, sExplorerItemDefName))
        return;
    const Ref<ExplorerItemDef> oDef = colDefs->Item(sExplorerItemDefName);
    const std::string sParentKey = oFolderExplorerItemObj
                                       ? CorvaneMain::QueryExplorerItem(oFolderExplorerItemObj)->Name()
                                       : oDef->ParentExplorerItemName();
    const Ref<corvane::TreeView> tvw = TreeOf(oDef);
    AddTreeNode(tvw, oExplorerItemObj, sParentKey, oDef);
} catch (...) {
    Reraise("ExplorerManager", "AddToExplorer");
}

void ExplorerManager::DeleteFromExplorer(const Ref<Object>& oExplorerItemObj) try {
    const Ref<Object> oHeld = oExplorerItemObj; // the caller's may be the reference that goes
    const Ref<IExplorerItem> oExplorerItem = CorvaneMain::QueryExplorerItem(oHeld);
    const Ref<ExplorerItemDef> oDef = oExplorerItem->ExplorerItemDef();
    m_colExplorerItems->Remove(ObjectKeyText(oHeld));
    const Ref<corvane::TreeView> tvw = TreeOf(oDef);
    const std::string sKey = TreeNodeKey(*oExplorerItem);
    if (m_nodActive && m_nodActive == tvw->GetNodes()->Item(sKey))
        m_nodActive = nullptr;
    tvw->GetNodes()->Remove(sKey);
} catch (...) {
    Reraise("ExplorerManager", "DeleteFromExplorer");
}

void ExplorerManager::StartRename(const Ref<Object>& oExplorerItemObj) try {
    const Ref<ExplorerManager> oSelf(this);
    const Ref<IExplorerItem> oExplorerItem = CorvaneMain::QueryExplorerItem(oExplorerItemObj);
    const Ref<corvane::TreeView> tvw = TreeOf(oExplorerItem->ExplorerItemDef());
    if (tvw->EditedNode() != tvw->GetNodes()->Find(TreeNodeKey(*oExplorerItem)))
        tvw->EndLabelEdit();
    tvw->SetSelectedItem(tvw->GetNodes()->Item(TreeNodeKey(*oExplorerItem)));
    tvw->StartLabelEdit();
} catch (...) {
    Reraise("ExplorerManager", "StartRename");
}

} // namespace corvane
