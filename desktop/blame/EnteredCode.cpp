#include "desktop/blame/EnteredCode.h"

#include "corvane/explorer/IExplorerItem.h"
#include "corvane/explorer/IExplorerItemAccess.h"
#include "corvane/services/ExplorerItemDef.h"

namespace corvane::desktop {

namespace {

constexpr std::size_t mostKnown = 10000; // pages come and go, and so do their keys

// An item that the plug-in has made by itself is known by its definition once it is in the explorer.
std::string ItemName(const Object& object) {
    const auto* access = dynamic_cast<const IExplorerItemAccess*>(&object);
    const auto item = access ? const_cast<IExplorerItemAccess*>(access)->ExplorerItem() : Ref<IExplorerItem>();
    const auto def = item ? item->ExplorerItemDef() : nullptr;
    return def ? "#" + def->Name() : "?";
}

} // namespace

void EnteredCode::Enter(std::string what) {
    m_scopes.push_back(std::move(what));
    m_marker.SetEntered(m_scopes.back());
}

void EnteredCode::Enter(const Object& object) {
    const auto it = m_known.find(object.ObjectKey());
    if (it != m_known.end()) {
        Enter(it->second);
        return;
    }
    std::string item = ItemName(object);
    if (item != "?")
        m_known.emplace(object.ObjectKey(), item);
    Enter(std::move(item));
}

void EnteredCode::Leave() {
    m_scopes.pop_back();
    m_marker.SetEntered(m_scopes.empty() ? std::string() : m_scopes.back());
}

void EnteredCode::Note(const Object& object, std::string_view progID) {
    if (m_known.size() < mostKnown)
        m_known.insert_or_assign(object.ObjectKey(), std::string(progID));
}

} // namespace corvane::desktop
