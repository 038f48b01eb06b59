#include "desktop/service/UnsavedWork.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/platform/Entering.h"
#include "corvane/services/IService.h"
#include "corvane/services/ServiceManager.h"

#include <QCoreApplication>
#include <algorithm>
#include <set>

namespace corvane::desktop {

namespace {

struct Ranked {
    Double dblOrder;
    UnsavedGroup oGroup;
};

Ref<Object> ObjectOf(const Variant& vItem) {
    const auto* pObject = vItem.Get<Ref<Object>>();
    return pObject ? *pObject : nullptr;
}

Ranked UnsavedOf(const Ref<Object>& oObject, const Ref<IService>& oService, const std::string& sName) {
    Ranked oRanked{2, {sName, {}}};
    const Entering oEntering(oObject);
    const Ref<Dictionary> dctItems = oService->UnsavedItems(oRanked.dblOrder);
    for (const std::string& sItem : dctItems->Keys())
        oRanked.oGroup.aItems.push_back(
            {sItem, ObjectOf(dctItems->Item(sItem)), [oObject, oService, vItem = dctItems->Item(sItem)] {
                 const Entering oEnteringToSave(oObject);
                 oService->Save(ToObject(vItem));
             }});
    return oRanked;
}

// Saves one item; a failure tells which it was.
void SaveItem(const UnsavedItem& oItem) {
    try {
        oItem.fnSave();
    } catch (...) {
        Failure oFailure = CurrentFailure();
        oFailure.Description =
            QCoreApplication::translate("UnsavedWork", "“%1” couldn't be saved: %2")
                .arg(QString::fromStdString(oItem.sName), QString::fromStdString(oFailure.Description))
                .toStdString();
        throw oFailure;
    }
}

} // namespace

std::vector<UnsavedGroup> FindUnsavedWork(const Ref<Framework>& oFramework, std::vector<UnsavedItem> aWindows,
                                          const GuardFunction& fnGuard) {
    std::vector<Ranked> aRanked;
    std::set<const Object*> setAsked; // one object may serve under several names
    const auto oManager = oFramework->ServiceManager();
    for (const auto& oDef : *oManager->ServiceDefs())
        fnGuard([&] {
            const Ref<Object> oObject = oManager->Services()->Item(oDef->Name());
            if (!setAsked.insert(oObject.Get()).second)
                return;
            if (const auto oService = CorvaneMain::QueryService(oObject))
                aRanked.push_back(UnsavedOf(oObject, oService, oDef->Name()));
        });
    std::stable_sort(aRanked.begin(), aRanked.end(),
                     [](const Ranked& a, const Ranked& b) { return a.dblOrder < b.dblOrder; });
    for (const Ranked& oRanked : aRanked)
        for (const UnsavedItem& oItem : oRanked.oGroup.aItems)
            std::erase_if(aWindows, [&](const UnsavedItem& oWindow) {
                return oWindow.oObject && oWindow.oObject == oItem.oObject;
            });
    std::vector<UnsavedGroup> aGroups;
    if (!aWindows.empty())
        aGroups.push_back(
            {QCoreApplication::translate("UnsavedWork", "Open windows").toStdString(), std::move(aWindows)});
    for (Ranked& oRanked : aRanked)
        if (!oRanked.oGroup.aItems.empty())
            aGroups.push_back(std::move(oRanked.oGroup));
    return aGroups;
}

bool SettleUnsavedWork(const Ref<Framework>& oFramework, std::vector<UnsavedItem> aWindows,
                       const std::function<ExitAnswer(const std::vector<UnsavedGroup>&)>& fnAsk,
                       const GuardFunction& fnGuard) {
    const auto aGroups = FindUnsavedWork(oFramework, std::move(aWindows), fnGuard);
    if (aGroups.empty())
        return true;
    const ExitAnswer oAnswer = fnAsk(aGroups);
    bool bExit = oAnswer.eWhat != ExitAnswer::What::Cancel;
    for (const UnsavedItem& oItem : oAnswer.aItems) {
        bool bSaved = false;
        fnGuard([&] {
            SaveItem(oItem);
            bSaved = true;
        });
        bExit = bExit && bSaved;
    }
    const Ref<KeyedCollection<Ref<Object>>> colServices = oFramework->ServiceManager()->Services();
    for (const auto& oObject : *colServices)
        fnGuard([&] {
            const Entering oEntering(oObject);
            if (const auto oService = CorvaneMain::QueryService(oObject))
                oService->SaveComplete(!bExit);
        });
    return bExit;
}

} // namespace corvane::desktop
