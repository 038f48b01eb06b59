#include "jobs/Owner.h"

#include "corvane/author/Jobs.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Singleton.h"
#include "corvane/explorer/IExplorerItem.h"
#include "corvane/explorer/IExplorerItemAccess.h"
#include "corvane/platform/controls/PanelForm.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"

namespace corvane::jobs {

namespace {

std::string ServiceOfItem(const ServiceManager& manager, const Ref<ExplorerItemDef>& def) {
    for (const auto& service : manager.ServiceDefs())
        for (const auto& itemDef : service->ExplorerItemDefs())
            if (itemDef == def)
                return service->Name();
    return {};
}

} // namespace

Owner OwnerOf(const Ref<Object>& owner) {
    const Ref<Framework> framework = Singleton::Framework();
    const auto manager = framework ? framework->ServiceManager() : nullptr;
    if (!owner || !manager)
        return {};
    if (const Ref<Window> window = WindowOfOwner(owner))
        return {window->Caption(), window->WindowDef()->Service()};
    if (const auto access = owner.TryAs<IExplorerItemAccess>())
        if (const Ref<IExplorerItem> item = access->ExplorerItem())
            return {item->Name(), ServiceOfItem(*manager, item->ExplorerItemDef())};
    for (const auto& service : manager->ServiceDefs())
        if (const Ref<Object>* object = manager->Services()->Find(service->Name()); object && *object == owner)
            return {{}, service->Name()};
    return {};
}

// An item is known by its name, below a folder's definition also by that of its own definition.
bool HasNode(const Ref<Object>& owner, const PanelForm& explorer) {
    const auto access = owner.TryAs<IExplorerItemAccess>();
    const Ref<IExplorerItem> item = access ? access->ExplorerItem() : nullptr;
    const Ref<ExplorerItemDef> def = item ? item->ExplorerItemDef() : nullptr;
    if (!def)
        return false;
    for (const Ref<Object>& control : *explorer.Controls())
        if (const auto tree = control.TryAs<TreeView>())
            if (tree->GetNodes()->Find(item->Name()) || tree->GetNodes()->Find(def->Name() + "." + item->Name()))
                return true;
    return false;
}

bool IsOpen(const Ref<Window>& window) {
    if (!window)
        return true;
    const Ref<Framework> framework = Singleton::Framework();
    const auto manager = framework ? framework->WindowManager() : nullptr;
    if (manager && manager->Windows())
        for (const auto& open : manager->Windows())
            if (open == window)
                return true;
    return false;
}

} // namespace corvane::jobs
