#include "corvane/core/Library.h"

#include "corvane/base/ObjectWatch.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/core/Internals.h"
#include "corvane/explorer/GenericFolder.h"
#include "corvane/explorer/IExplorerItemAccess.h"
#include "corvane/services/IServiceAccess.h"
#include "corvane/windows/IPageAccess.h"

#include <cstdio>
#include <map>

namespace corvane {

namespace {

bool IsOfPlugin(const Ref<Object>& oObject) {
    if (oObject.TryAs<Framework>() || oObject.TryAs<GenericFolder>())
        return false;
    return oObject.TryAs<IServiceAccess>() || oObject.TryAs<IExplorerItemAccess>() || oObject.TryAs<IPageAccess>();
}

// Nothing outside of the library should hold a plug-in's object by now, so they hold one another.
void NameLeftObjects(std::uint64_t uMark) {
    std::map<std::string, int> mapClasses;
    for (const auto& oObject : ObjectWatch::MadeSince(uMark))
        if (IsOfPlugin(oObject))
            ++mapClasses[std::string(oObject->TypeName())];
    for (const auto& [sClass, nObjects] : mapClasses)
        std::fprintf(stderr,
                     "Corvane: %d of class \"%s\" alive at the end of the library. A ring of references holds what is "
                     "never let go: a handler that has captured a Ref of its own object, or two objects with a Ref to "
                     "each other.\n",
                     nObjects, sClass.c_str());
}

} // namespace

Library::Library(Platform oPlatform) : m_uMark(ObjectWatch::Start()) {
    SetCurrentPlatform(std::move(oPlatform));
    CorvaneMain::Main();
}

Library::~Library() {
    CorvaneMain::Unload();
    SetCurrentPlatform({});
    NameLeftObjects(m_uMark);
    ObjectWatch::Stop();
}

} // namespace corvane
