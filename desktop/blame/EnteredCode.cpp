#include "desktop/blame/EnteredCode.h"

#include "corvane/explorer/IExplorerItem.h"
#include "corvane/explorer/IExplorerItemAccess.h"
#include "corvane/services/ExplorerItemDef.h"

namespace corvane::desktop {

namespace {

constexpr std::size_t nMostKnown = 10000; // pages come and go, and so do their keys

// An item that the plug-in has made by itself is known by its definition once it stands in the explorer.
std::string ItemName(const Object& oObject) {
    const auto* pAccess = dynamic_cast<const IExplorerItemAccess*>(&oObject);
    const auto oItem = pAccess ? const_cast<IExplorerItemAccess*>(pAccess)->ExplorerItem() : Ref<IExplorerItem>();
    const auto oDef = oItem ? oItem->ExplorerItemDef() : nullptr;
    return oDef ? "#" + oDef->Name() : "?";
}

} // namespace

void EnteredCode::Enter(std::string sWhat) {
    m_aScopes.push_back(std::move(sWhat));
    m_oMarker.SetEntered(m_aScopes.back());
}

void EnteredCode::Enter(const Object& oObject) {
    const auto it = m_mapKnown.find(oObject.ObjectKey());
    if (it != m_mapKnown.end()) {
        Enter(it->second);
        return;
    }
    std::string sItem = ItemName(oObject);
    if (sItem != "?")
        m_mapKnown.emplace(oObject.ObjectKey(), sItem);
    Enter(std::move(sItem));
}

void EnteredCode::Leave() {
    m_aScopes.pop_back();
    m_oMarker.SetEntered(m_aScopes.empty() ? std::string() : m_aScopes.back());
}

void EnteredCode::Note(const Object& oObject, std::string_view sProgID) {
    if (m_mapKnown.size() < nMostKnown)
        m_mapKnown.insert_or_assign(oObject.ObjectKey(), std::string(sProgID));
}

} // namespace corvane::desktop
