// What a failure says of the plug-in's procedure that it left.
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/explorer/IExplorerItemAccess.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/IPageAccess.h"

namespace corvane::CorvaneMain {

namespace {

// A definition, and whose it is.
struct Origin {
    std::string sOwner; // "explorer item Bird, service Birds"
    std::string sFile;
    Long lLine = 0;
};

std::string Joined(const std::string& sCommand, const std::string& sProcedure, const Origin& oOrigin) {
    std::string sInner = sCommand.empty() ? std::string() : sProcedure;
    for (const std::string& sPart :
         {oOrigin.sOwner,
          oOrigin.sFile + (oOrigin.sFile.empty() || oOrigin.lLine == 0 ? "" : ":" + std::to_string(oOrigin.lLine))}) {
        if (!sPart.empty())
            sInner += (sInner.empty() ? "" : ", ") + sPart;
    }
    return "in " + (sCommand.empty() ? sProcedure : sCommand) + (sInner.empty() ? "" : " (" + sInner + ")");
}

std::string Owner(const char* sKind, const std::string& sName, const std::string& sService) {
    std::string sOwner = std::string(sKind) + " " + sName;
    if (!sService.empty())
        sOwner += ", service " + sService;
    return sOwner;
}

Ref<ServiceManager> Services() {
    const Ref<corvane::Framework> oFramework = Framework();
    return oFramework ? oFramework->ServiceManager() : Ref<ServiceManager>();
}

template <class Definition>
bool Holds(const Ref<KeyedCollection<Ref<Definition>>>& colDefs, const Ref<Definition>& oSought) {
    if (colDefs)
        for (const auto& oDef : colDefs)
            if (oDef == oSought)
                return true;
    return false;
}

Origin OfService(const ServiceDef& oServiceDef, Long lLine) {
    return {"service " + oServiceDef.Name(), oServiceDef.File(), lLine};
}

Origin OfItem(const ServiceManager& oServices, const Ref<ExplorerItemDef>& oDef, Long lLine) {
    for (const auto& oServiceDef : oServices.ServiceDefs())
        if (Holds(oServiceDef->ExplorerItemDefs(), oDef))
            return {Owner("explorer item", oDef->Name(), oServiceDef->Name()), oServiceDef->File(), lLine};
    return {Owner("explorer item", oDef->Name(), {}), {}, 0};
}

Origin OfWindow(const WindowDef& oWindowDef, Long lLine) {
    return {Owner("window", oWindowDef.Name(), oWindowDef.Service()), oWindowDef.File(), lLine};
}

Origin OfPage(const ServiceManager& oServices, const Ref<PageDef>& oPageDef) {
    for (const auto& oWindowDef : oServices.WindowDefs())
        if (Holds(oWindowDef->PageDefs(), oPageDef))
            return OfWindow(*oWindowDef, oPageDef->Line());
    return {};
}

Origin OfAction(const ServiceManager& oServices, const Ref<ActionItemDef>& oDef) {
    for (const auto& oServiceDef : oServices.ServiceDefs()) {
        if (Holds(oServiceDef->ActionItemDefs(), oDef))
            return OfService(*oServiceDef, oDef->Line());
        for (const auto& oItemDef : oServiceDef->ExplorerItemDefs())
            if (Holds(oItemDef->ActionItemDefs(), oDef))
                return OfItem(oServices, oItemDef, oDef->Line());
    }
    for (const auto& oWindowDef : oServices.WindowDefs())
        for (const auto& oPageDef : oWindowDef->PageDefs())
            if (Holds(oPageDef->ActionItemDefs(), oDef))
                return OfWindow(*oWindowDef, oDef->Line());
    return {};
}

// Of a service, an explorer item or a page.
Origin OfObject(const ServiceManager& oServices, const Ref<Object>& oObject) {
    for (const auto& oServiceDef : oServices.ServiceDefs())
        if (const Ref<Object>* poService = oServices.Services()->Find(oServiceDef->Name());
            poService && *poService == oObject)
            return OfService(*oServiceDef, oServiceDef->Line());
    if (const auto oAccess = oObject.TryAs<IExplorerItemAccess>())
        if (const Ref<IExplorerItem> oItem = oAccess->ExplorerItem())
            if (const Ref<ExplorerItemDef> oDef = oItem->ExplorerItemDef())
                return OfItem(oServices, oDef, oDef->Line());
    if (const auto oAccess = oObject.TryAs<IPageAccess>())
        if (const Ref<IPage> oPage = oAccess->Page())
            if (const Ref<PageDef> oDef = oPage->PageDef())
                return OfPage(oServices, oDef);
    return {};
}

std::string ProcedureOf(const Ref<Object>& oObject, std::string_view sProcedure) {
    return std::string(oObject->TypeName()) + "." + std::string(sProcedure);
}

} // namespace

std::string PlaceOf(const Ref<ActionItem>& oActionItem) noexcept {
    try {
        const Ref<Object> oProvider = oActionItem->ActionsProviderObj();
        const std::string sProcedure = ProcedureOf(oProvider, oActionItem->Action());
        Origin oOrigin;
        if (const Ref<ServiceManager> oServices = Services()) {
            oOrigin = OfAction(*oServices, oActionItem->ActionItemDef());
            if (oOrigin.sOwner.empty()) // an action that has been added at run time
                oOrigin = {OfObject(*oServices, oProvider).sOwner, {}, 0};
        }
        return Joined(oActionItem->Name(), sProcedure, oOrigin);
    } catch (...) {
        return {};
    }
}

std::string PlaceOf(const Ref<Object>& oObject, std::string_view sProcedure) noexcept {
    try {
        const Ref<ServiceManager> oServices = Services();
        return Joined({}, ProcedureOf(oObject, sProcedure), oServices ? OfObject(*oServices, oObject) : Origin());
    } catch (...) {
        return {};
    }
}

std::string PlaceOf(const Ref<PageDef>& oPageDef, std::string_view sProcedure) noexcept {
    try {
        const Ref<ServiceManager> oServices = Services();
        return Joined({}, oPageDef->PageProgID() + "." + std::string(sProcedure),
                      oServices ? OfPage(*oServices, oPageDef) : Origin());
    } catch (...) {
        return {};
    }
}

} // namespace corvane::CorvaneMain
