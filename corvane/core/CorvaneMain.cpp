#include "corvane/core/CorvaneMain.h"

#include "corvane/core/Framework.h"
#include "corvane/core/Internals.h"
#include "corvane/explorer/IExplorerItemAccess.h"
#include "corvane/menus/ActionItem.h"
#include "corvane/menus/IActionsProvider.h"
#include "corvane/platform/Handlers.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/windows/IPageAccess.h"
#include "corvane/windows/frmWindowSupport.h"

#include <limits>

namespace corvane::CorvaneMain {

namespace {

Ref<corvane::Framework> g_oFramework;

Long InRange(std::int64_t nValue) {
    if (nValue < std::numeric_limits<Long>::min() || nValue > std::numeric_limits<Long>::max())
        Fail(FailureNumber::Overflow);
    return static_cast<Long>(nValue);
}

const char* AttributeOrNull(const Ref<IXmlNode>& oNode, std::string_view sName) try {
    return oNode->AttributeText(sName);
} catch (...) {
    Reraise("CorvaneMain", "XMLAttributeValue (Get)");
}

// One cast at three types: from a client's object to the library's part of it.
template <class Result, class Access, class Property>
Ref<Result> Query(const Ref<Object>& oObject, std::string_view sProcedure, std::string_view sInterface,
                  Property fnProperty) {
    try {
        const Ref<Access> oAccess = oObject.As<Access>();
        return oAccess ? fnProperty(*oAccess) : Ref<Result>();
    } catch (...) {
        const std::string sType(oObject ? oObject->TypeName() : "Nothing");
        Reraise("CorvaneMain", sProcedure,
                "Class: \"" + sType + "\" has not implemented the " + std::string(sInterface) + " interface.");
    }
}

} // namespace

void Main() {
    try {
        g_oFramework = New<corvane::Framework>();
    } catch (...) {
        Report("CorvaneMain", "Main");
    }
}

void Unload() {
    frmWindowSupport::UnloadAll();
    ActionItem::UntieAll();
    if (g_oFramework)
        g_oFramework->LetGo(); // the service manager holds the framework, too
    g_oFramework = nullptr;
}

Ref<corvane::Framework> Framework() {
    return g_oFramework;
}

bool HasEnded() noexcept {
    return g_oFramework && !g_oFramework.Get()->ServiceManager();
}

Long CenteredLeft(Long lItemWidth, Long lContainerWidth, Long lContainerLeft) try {
    const Long lFree = InRange(std::int64_t{lContainerWidth} - lItemWidth);
    return InRange(std::int64_t{lFree / 2} + lContainerLeft);
} catch (...) {
    Reraise("CorvaneMain", "CenteredLeft");
}

Long CenteredTop(Long lItemHeight, Long lContainerHeight, Long lContainerTop) try {
    constexpr Single fBelow = 0.65F;
    const Long lFree = InRange(std::int64_t{lContainerHeight} - lItemHeight);
    const Double dblAbove = static_cast<Double>(static_cast<Single>(lFree)) * (1.0 - static_cast<Double>(fBelow));
    // A half is added before the rounding, which itself rounds to the nearest.
    return InRange(std::int64_t{RoundToLong(dblAbove + 0.5)} + lContainerTop);
} catch (...) {
    Reraise("CorvaneMain", "CenteredTop");
}

Variant XMLAttributeValue(const Ref<IXmlNode>& oNode, std::string_view sName, Variant vDefault) {
    const char* sValue = AttributeOrNull(oNode, sName);
    return sValue ? Variant(sValue) : vDefault;
}

const char* XMLAttributeText(const Ref<IXmlNode>& oNode, std::string_view sName) {
    const char* sValue = AttributeOrNull(oNode, sName);
    return sValue ? sValue : "";
}

bool XMLAttributeBoolean(const Ref<IXmlNode>& oNode, std::string_view sName, bool bDefault) {
    const char* sValue = AttributeOrNull(oNode, sName);
    return sValue ? ToBoolean(sValue) : bDefault;
}

Long LineOf(const Ref<IXmlNode>& oNode) noexcept {
    return oNode ? oNode.Get()->Line() : 0;
}

bool IsActionsProvider(const Ref<Object>& oObject) noexcept {
    return static_cast<bool>(oObject.TryAs<IActionsProvider>());
}

Ref<IExplorerItem> QueryExplorerItem(const Ref<Object>& oObject) {
    return Query<IExplorerItem, IExplorerItemAccess>(oObject, "QueryExplorerItem", "IExplorerItemAccess",
                                                     [](auto& oAccess) { return oAccess.ExplorerItem(); });
}

Ref<IPage> QueryPage(const Ref<Object>& oObject) {
    return Query<IPage, IPageAccess>(oObject, "QueryPage", "IPageAccess", [](auto& oAccess) { return oAccess.Page(); });
}

Ref<IService> QueryService(const Ref<Object>& oObject) {
    return Query<IService, IServiceAccess>(oObject, "QueryService", "IServiceAccess",
                                           [](auto& oAccess) { return oAccess.Service(); });
}

} // namespace corvane::CorvaneMain
