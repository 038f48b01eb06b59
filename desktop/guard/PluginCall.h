// Calls that the host makes into plug-ins on its own account, beside those that the library makes.
#pragma once

#include "corvane/core/CorvaneMain.h"
#include "corvane/platform/Entering.h"
#include "corvane/platform/Handlers.h"

namespace corvane::desktop {

// Calls a procedure of the object, which is held meanwhile. What fails there says whose procedure it was.
template <class Call>
decltype(auto) CallPlugin(const Ref<Object>& object, const char* procedure, const Call& call) {
    const Ref<Object> held = object;
    const Entering entering(held);
    try {
        return call();
    } catch (...) {
        RaiseFrom(CorvaneMain::PlaceOf(held, procedure));
    }
}

} // namespace corvane::desktop
