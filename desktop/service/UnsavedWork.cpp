#include "desktop/service/UnsavedWork.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/services/IService.h"
#include "corvane/services/ServiceManager.h"
#include "desktop/guard/PluginCall.h"

#include <QCoreApplication>
#include <algorithm>
#include <set>

namespace corvane::desktop {

namespace {

struct Ranked {
    Double order;
    UnsavedGroup group;
};

Ref<Object> ObjectOf(const Variant& item) {
    const auto* object = item.Get<Ref<Object>>();
    return object ? *object : nullptr;
}

Ranked UnsavedOf(const Ref<Object>& object, const Ref<IService>& service, const std::string& name) {
    Ranked ranked{2, {name, {}}};
    const Ref<Dictionary> items =
        CallPlugin(object, "GetUnsavedItems", [&] { return service->UnsavedItems(ranked.order); });
    for (const std::string& item : items->Keys())
        ranked.group.items.push_back(
            {item, ObjectOf(items->Item(item)), [object, service, itemValue = items->Item(item)] {
                 CallPlugin(object, "Save", [&] { service->Save(ToObject(itemValue)); });
             }});
    return ranked;
}

// Saves one item; a failure says which it was.
void SaveItem(const UnsavedItem& item) {
    try {
        item.save();
    } catch (...) {
        Failure failure = CurrentFailure();
        failure.Description = QCoreApplication::translate("UnsavedWork", "“%1” couldn't be saved: %2")
                                  .arg(QString::fromStdString(item.name), QString::fromStdString(failure.Description))
                                  .toStdString();
        throw failure;
    }
}

} // namespace

std::vector<UnsavedGroup> FindUnsavedWork(const Ref<Framework>& framework, std::vector<UnsavedItem> windows,
                                          const Guard& guard) {
    std::vector<Ranked> rankedItems;
    std::set<const Object*> asked; // one object may serve under several names
    const auto manager = framework->ServiceManager();
    for (const auto& def : *manager->ServiceDefs())
        guard([&] {
            const Ref<Object> object = manager->Services()->Item(def->Name());
            if (!asked.insert(object.Get()).second)
                return;
            if (const auto service = CorvaneMain::QueryService(object))
                rankedItems.push_back(UnsavedOf(object, service, def->Name()));
        });
    std::stable_sort(rankedItems.begin(), rankedItems.end(),
                     [](const Ranked& a, const Ranked& b) { return a.order < b.order; });
    for (const Ranked& ranked : rankedItems)
        for (const UnsavedItem& item : ranked.group.items)
            std::erase_if(windows,
                          [&](const UnsavedItem& window) { return window.object && window.object == item.object; });
    std::vector<UnsavedGroup> groups;
    if (!windows.empty())
        groups.push_back(
            {QCoreApplication::translate("UnsavedWork", "Open windows").toStdString(), std::move(windows)});
    for (Ranked& ranked : rankedItems)
        if (!ranked.group.items.empty())
            groups.push_back(std::move(ranked.group));
    return groups;
}

bool SettleUnsavedWork(const Ref<Framework>& framework, std::vector<UnsavedItem> windows,
                       const std::function<ExitAnswer(const std::vector<UnsavedGroup>&)>& ask, const Guard& guard) {
    const auto groups = FindUnsavedWork(framework, std::move(windows), guard);
    if (groups.empty())
        return true;
    const ExitAnswer answer = ask(groups);
    bool exit = answer.what != ExitAnswer::What::Cancel;
    for (const UnsavedItem& item : answer.items) {
        bool saved = false;
        guard([&] {
            SaveItem(item);
            saved = true;
        });
        exit = exit && saved;
    }
    const Ref<KeyedCollection<Ref<Object>>> services = framework->ServiceManager()->Services();
    std::set<const Object*> completed; // once each, though one object may serve under several names
    for (const auto& object : *services)
        guard([&] {
            if (!completed.insert(object.Get()).second)
                return;
            if (const auto service = CorvaneMain::QueryService(object))
                CallPlugin(object, "SaveComplete", [&] { service->SaveComplete(!exit); });
        });
    return exit;
}

} // namespace corvane::desktop
