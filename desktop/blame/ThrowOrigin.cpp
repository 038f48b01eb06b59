#include "desktop/blame/ThrowOrigin.h"

#include "desktop/blame/PluginCode.h"

#include <cstdlib>
#include <dlfcn.h>
#include <typeinfo>
#include <utility>

namespace corvane::desktop {

namespace {

thread_local ThrowOrigin::Mode theMode = ThrowOrigin::Mode::NotNoted;
thread_local const char* theLatest = nullptr;

} // namespace

ThrowOrigin::ThrowOrigin(Mode mode) noexcept
    : m_before(std::exchange(theMode, mode)), m_latestBefore(std::exchange(theLatest, nullptr)) {}

ThrowOrigin::~ThrowOrigin() {
    theMode = m_before;
    theLatest = m_latestBefore;
}

const char* ThrowOrigin::Latest() noexcept {
    return theLatest;
}

} // namespace corvane::desktop

namespace {

using ThrowFunction = void(void* thrown, std::type_info* type, void (*destroy)(void*));

} // namespace

// Every exception of the program and of its plug-ins is thrown by this function of the C++ run time. The program's own
// comes first when the name is looked up, and hands on to the run time's. The compiler knows the name by itself, so the
// function has another one here.
extern "C" [[noreturn, gnu::visibility("default")]] void ThrowNoted(void* thrown, std::type_info* type,
                                                                    void (*destroy)(void*)) __asm__("__cxa_throw");

void ThrowNoted(void* thrown, std::type_info* type, void (*destroy)(void*)) {
    using namespace corvane::desktop;
    if (theMode == ThrowOrigin::Mode::Noted)
        theLatest = PluginCode::Innermost();
    static auto* const real = reinterpret_cast<ThrowFunction*>(::dlsym(RTLD_NEXT, "__cxa_throw"));
    real(thrown, type, destroy);
    std::abort(); // the run time's doesn't return
}
