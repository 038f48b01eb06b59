#include "corvane/core/CorvaneMain.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/IExplorerItem.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/platform/Entering.h"
#include "corvane/platform/Handlers.h"
#include "corvane/platform/Platform.h"
#include "corvane/services/ExplorerItemDef.h"

namespace corvane {

namespace {

constexpr Single fTabStripFrameTwips = 350; // what the tabs themselves take of the strip's height

} // namespace

// Control events come from the active tree alone.
void ExplorerManager::SetTreeView(Ref<corvane::TreeView> tvw) {
    m_aTreeSubscriptions.clear();
    m_tvwActiveTreeView = std::move(tvw);
    corvane::TreeView& oTree = *m_tvwActiveTreeView;
    const auto HearTree = [this](auto& oEvent, auto fnHandler) {
        m_aTreeSubscriptions.push_back(Hear(oEvent, fnHandler));
    };
    HearTree(oTree.BeforeLabelEdit, [this](bool& bCancel) { m_tvwActiveTreeView_BeforeLabelEdit(bCancel); });
    HearTree(oTree.AfterLabelEdit, [this](bool& bCancel, std::string& sNewString) {
        m_tvwActiveTreeView_AfterLabelEdit(bCancel, sNewString);
    });
    HearTree(oTree.Click, [this] { m_tvwActiveTreeView_Click(); });
    HearTree(oTree.DblClick, [this] { m_tvwActiveTreeView_DblClick(); });
    HearTree(oTree.MouseDown, [this](Long, Long, Single x, Single y) { m_tvwActiveTreeView_MouseDown(x, y); });
    HearTree(oTree.MouseUp,
             [this](Long lButton, Long lShift, Single, Single) { m_tvwActiveTreeView_MouseUp(lButton, lShift); });
    HearTree(oTree.NodeClick, [this](const Ref<Node>&) { m_tvwActiveTreeView_NodeClick(); });
}

Ref<Object> ExplorerManager::ActiveExplorerItemObject() const try {
    return m_nodActive ? m_colExplorerItems->Item(m_nodActive->Tag()) : Ref<Object>();
} catch (...) {
    Reraise("ExplorerManager", "ActiveExplorerItemObject (Get)");
}

Ref<IExplorerItem> ExplorerManager::ActiveExplorerItem() const try {
    return CorvaneMain::QueryExplorerItem(ActiveExplorerItemObject());
} catch (...) {
    Reraise("ExplorerManager", "ActiveExplorerItem (Get)");
}

void ExplorerManager::m_tvwActiveTreeView_NodeClick() try {
    m_bNodeClicked = true;
    const Ref<Node> nodSelected = m_tvwActiveTreeView->SelectedItem();
    if (!nodSelected) {
        m_nodActive = nullptr;
    } else if (!m_nodActive) {
        m_nodActive = nodSelected;
        OnActive.Raise(ActiveExplorerItemObject());
    } else if (EqualText(m_nodActive->Key(), nodSelected->Key())) {
        m_nodActive->SetSelected(true);
    } else {
        OnInactive.Raise(ActiveExplorerItemObject());
        if (CorvaneMain::HasEnded())
            return;
        m_nodActive->SetSelected(false);
        m_nodActive = nodSelected;
        OnActive.Raise(ActiveExplorerItemObject());
    }
} catch (...) {
    Report("ExplorerManager", "m_tvwActiveTreeView_NodeClick");
}

void ExplorerManager::m_tvwActiveTreeView_Click() try {
    if (m_bNodeClicked) {
        m_bNodeClicked = false;
        return;
    }
    const Ref<Node> nodSelected = m_tvwActiveTreeView->SelectedItem();
    if (!nodSelected)
        return;
    if (!m_nodActive) {
        m_nodActive = nodSelected;
        OnActive.Raise(ActiveExplorerItemObject());
    } else if (!EqualText(m_nodActive->Key(), nodSelected->Key())) {
        // The selection moved without a click on the node: it is taken back, and the active node stays.
        nodSelected->SetSelected(false);
        m_tvwActiveTreeView->SetSelectedItem(nullptr);
    }
} catch (...) {
    Report("ExplorerManager", "m_tvwActiveTreeView_Click");
}

void ExplorerManager::m_tvwActiveTreeView_DblClick() try {
    if (m_bInDblClick)
        return;
    m_bInDblClick = true;
    if (m_nodActive)
        OnOpen.Raise(ActiveExplorerItemObject());
    m_bInDblClick = false;
} catch (...) {
    m_bInDblClick = false;
    Report("ExplorerManager", "m_tvwActiveTreeView_DblClick");
}

void ExplorerManager::m_tvwActiveTreeView_MouseDown(Single x, Single y) try {
    if (const Ref<Node> nodHit = m_tvwActiveTreeView->HitTest(x, y))
        nodHit->SetSelected(true);
} catch (...) {
    Report("ExplorerManager", "m_tvwActiveTreeView_MouseDown");
}

void ExplorerManager::m_tvwActiveTreeView_MouseUp(Long lButton, Long lShift) try {
    if (lButton == MouseButton::RightButton && lShift == ShiftState::NoShift && m_nodActive)
        OnContextMenu.Raise(ActiveExplorerItemObject());
} catch (...) {
    Report("ExplorerManager", "m_tvwActiveTreeView_MouseUp");
}

void ExplorerManager::m_tvwActiveTreeView_BeforeLabelEdit(bool& bCancel) try {
    if (!ActiveExplorerItem()->ExplorerItemDef()->CanRename()) {
        bCancel = true;
        return;
    }
    const Ref<Object> oItemObj = ActiveExplorerItemObject();
    const Entering oEntering(oItemObj);
    std::string sEditName;
    CallItem(oItemObj, "OnBeforeRename", [&] { sEditName = ActiveExplorerItem()->EditName(); });
    m_tvwActiveTreeView->SelectedItem()->SetText(sEditName);
    m_tvwActiveTreeView->Refresh();
} catch (...) {
    Report("ExplorerManager", "m_tvwActiveTreeView_BeforeLabelEdit");
}

void ExplorerManager::m_tvwActiveTreeView_AfterLabelEdit(bool& bCancel, std::string& sNewString) try {
    const Ref<IExplorerItem> oItem = ActiveExplorerItem();
    const Ref<Object> oItemObj = ActiveExplorerItemObject();
    const Entering oEntering(oItemObj);
    if (EqualText(oItem->Name(), sNewString))
        return;
    const std::string sOldName = oItem->Name();
    CallItem(oItemObj, "OnAfterRename", [&] { oItem->SetName(sNewString); });
    if (CorvaneMain::HasEnded())
        return;
    if (m_tvwActiveTreeView->GetNodes()->HasKey(TreeNodeKey(*oItem))) {
        CurrentPlatform().oMessageBox->ShowInformation(sNewString + " already exists", "Rename");
        CallItem(oItemObj, "OnAfterRename", [&] { oItem->SetName(sOldName); });
        bCancel = true;
    } else {
        CallItem(oItemObj, "OnDisplayName", [&] { sNewString = oItem->DisplayName(); });
        m_tvwActiveTreeView->SelectedItem()->SetKey(TreeNodeKey(*oItem));
    }
} catch (...) {
    Report("ExplorerManager", "m_tvwActiveTreeView_AfterLabelEdit"); // the control goes on with its own edit
}

void ExplorerManager::m_tabExplorer_Click(Long lPreviousTab) try {
    const Long lTab = m_tabExplorer->Tab();
    if (lTab == m_lActiveTab)
        return;
    m_lActiveTab = lTab;
    SetTreeView(m_colTreeViews->Item(lTab + 1)); // the collection counts from 1, the tabs from 0
    m_lPreviousTab = lPreviousTab;
} catch (...) {
    Report("ExplorerManager", "m_tabExplorer_Click");
}

void ExplorerManager::m_frmExplorerPanel_Resize() try {
    const auto tabExplorer = m_frmExplorerPanel->Control("tabExplorer").As<TabStrip>();
    for (const auto& tvw : m_colTreeViews) {
        tvw->SetWidth(tabExplorer->Width());
        if (tabExplorer->Height() > fTabStripFrameTwips) {
            tvw->SetHeight(tabExplorer->Height() - fTabStripFrameTwips);
            tvw->SetTop(tabExplorer->Top());
        }
    }
} catch (...) {
    Report("ExplorerManager", "m_frmExplorerPanel_Resize");
}

void ExplorerManager::m_oActiveBar_BandClose(const Ref<Band>& oBand) try {
    if (EqualText(oBand->Name(), "Explorer"))
        m_oNavigationActionItem->SetChecked(false);
} catch (...) {
    Report("ExplorerManager", "m_oActiveBar_BandClose");
}

} // namespace corvane
