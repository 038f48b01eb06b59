#include "corvane/author/ExplorerItem.h"

#include "corvane/windows/Window.h"

namespace corvane {

AnyExplorerItem::AnyExplorerItem() = default;

AnyExplorerItem::~AnyExplorerItem() = default;

void AnyExplorerItem::Subscribe(const Own& oOwn) {
    if (oOwn.bInitialize)
        m_aEvents.push_back(m_oBase->InitializeEvent.Subscribe([this](const Ref<KeyedCollection<Ref<Object>>>&) {
            OnInitialize();
            if (Name().empty())
                SetName(m_oBase->ExplorerItemDef()->Name());
        }));
    if (oOwn.bDisplayName)
        m_aEvents.push_back(m_oBase->OnDisplayName.Subscribe([this](std::string& sText) { OnDisplayName(sText); }));
    if (oOwn.bBeforeRename)
        m_aEvents.push_back(m_oBase->OnBeforeRename.Subscribe([this](std::string& sText) { OnBeforeRename(sText); }));
    if (oOwn.bAfterRename)
        m_aEvents.push_back(
            m_oBase->OnAfterRename.Subscribe([this](const std::string& sName) { OnAfterRename(sName); }));
    if (oOwn.bExit)
        m_aEvents.push_back(m_oBase->OnExitEvent.Subscribe(
            [this](const Ref<Window>& oWindow, bool bWasCancelled) { OnExit(oWindow, bWasCancelled); }));
}

} // namespace corvane
