// Calls that the host makes into plug-ins on its own account, beside those that the library makes.
#pragma once

#include "corvane/core/CorvaneMain.h"
#include "corvane/platform/Entering.h"
#include "corvane/platform/Handlers.h"
#include "corvane/platform/Platform.h"

namespace corvane::desktop {

// In a catch block: raises the failure as one that has left the procedure at that place, and logs it, as the library
// does at each of its own calls.
[[noreturn]] inline void RaiseLogged(const std::string& place, const char* procedure) {
    Failure failure = CurrentFailure();
    AddPlace(failure, place);
    if (const auto utilities = CurrentPlatform().oUtilities)
        utilities->LogError(utilities->AppName(), "Desktop", procedure, failure, {}, false);
    throw failure;
}

// Calls a procedure of the object, which is held meanwhile. What fails there says whose procedure it was.
template <class Call>
decltype(auto) CallPlugin(const Ref<Object>& object, const char* procedure, const Call& call) {
    const Ref<Object> held = object;
    const Entering entering(held);
    try {
        return call();
    } catch (...) {
        RaiseLogged(CorvaneMain::PlaceOf(held, procedure), procedure);
    }
}

} // namespace corvane::desktop
