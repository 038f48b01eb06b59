#include "corvane/explorer/ExplorerItemBase.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/ExplorerManager.h"
#include "corvane/explorer/NavigationManager.h"
#include "corvane/platform/Handlers.h"
#include "corvane/services/ExplorerItemDef.h"
#include "corvane/windows/Window.h"

#include <cstdio>

namespace corvane {

void ExplorerItemBase::AddToExplorer(const Ref<Object>& oExplorerItemObj, const std::string& sExplorerItemDefName) try {
    CorvaneMain::Framework()->NavigationManager()->ExplorerManager()->AddToExplorer(oExplorerItemObj,
                                                                                    sExplorerItemDefName, nullptr);
} catch (...) {
    Reraise("ExplorerItemBase", "AddToExplorer");
}

void ExplorerItemBase::DeleteFromExplorer(const Ref<Object>& oExplorerItemObj) try {
    CorvaneMain::Framework()->NavigationManager()->ExplorerManager()->DeleteFromExplorer(oExplorerItemObj);
} catch (...) {
    Reraise("ExplorerItemBase", "DeleteFromExplorer");
}

void ExplorerItemBase::Initialize(const Ref<corvane::ExplorerItemDef>& oExplorerItemDef) try {
    const Ref<ExplorerItemBase> oSelf(this);
    m_oExplorerItemDef = oExplorerItemDef;
    m_colChildren = New<KeyedCollection<Ref<Object>>>();
    m_bIsInitializing = true;
    try {
        InitializeEvent.Raise(m_colChildren);
    } catch (...) {
        m_bIsInitializing = false;
        throw;
    }
    m_bIsInitializing = false;
} catch (...) {
    Reraise("ExplorerItemBase", "IExplorerItem_Initialize");
}

void ExplorerItemBase::SetName(const std::string& sName) try {
#ifndef NDEBUG
    if (m_bIsInitializing)
        std::fprintf(stderr,
                     "Corvane: the explorer item \"%s\" calls SetName in its Initialize, which tells it of a rename by "
                     "the user; NameSilently is how an item names itself.\n",
                     sName.c_str());
#endif
    m_sName = sName;
    OnAfterRename.Raise(m_sName);
} catch (...) {
    Reraise("ExplorerItemBase", "IExplorerItem_Name (Let)");
}

std::string ExplorerItemBase::TextFrom(const Event<std::string&>& oEvent) const {
    std::string sText = m_oExplorerItemDef->DisplayName();
    if (sText.empty())
        sText = m_sName;
    const Ref<const ExplorerItemBase> oSelf(this);
    oEvent.Raise(sText);
    return sText;
}

std::string ExplorerItemBase::DisplayName() try { return TextFrom(OnDisplayName); } catch (...) {
    Reraise("ExplorerItemBase", "IExplorerItem_DisplayName (Get)");
}

std::string ExplorerItemBase::EditName() try { return TextFrom(OnBeforeRename); } catch (...) {
    Reraise("ExplorerItemBase", "IExplorerItem_EditName (Get)");
}

void ExplorerItemBase::OnExit(const Ref<Window>& oWindow, bool bWasCancelled) try {
    OnExitEvent.Raise(oWindow, bWasCancelled);
} catch (...) {
    Reraise("ExplorerItemBase", "IWindowExitHandler_OnExit");
}

} // namespace corvane
