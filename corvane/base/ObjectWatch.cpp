#include "corvane/base/ObjectWatch.h"

#include <cstdio>
#include <cstdlib>
#include <map>
#include <optional>
#include <string>
#include <thread>
#include <unordered_map>

namespace corvane {

#ifdef NDEBUG

// A plug-in's debug build may ask all the same.
namespace detail {

void CheckThread(const Object& /*oObject*/) noexcept {}
void ObjectMade(const Object& /*oObject*/) noexcept {}

} // namespace detail

namespace ObjectWatch {

std::uint64_t Start() {
    return 0;
}
void Stop() {}
void NameThread(std::string /*sName*/) {}
std::vector<Ref<Object>> MadeSince(std::uint64_t /*uMark*/) {
    return {};
}

} // namespace ObjectWatch

#else

namespace {

std::optional<std::thread::id> g_oThread; // that has loaded the library; nothing while it isn't loaded
std::uint64_t g_uMade = 0;
thread_local std::string t_sThread; // as NameThread has set it

// Objects may live on in statics, which end after this.
std::unordered_map<const Object*, std::uint64_t>& Living() {
    static auto* pLiving = new std::unordered_map<const Object*, std::uint64_t>();
    return *pLiving;
}

bool IsElsewhere() {
    return g_oThread && *g_oThread != std::this_thread::get_id();
}

} // namespace

namespace detail {

void CheckThread(const Object& oObject) noexcept {
    if (!IsElsewhere())
        return;
    std::fprintf(
        stderr,
        "Assertion failed: an object of class \"%s\" is used by %s%sanother thread than the one that has loaded "
        "the library. Hand plain values to threads, and results back to that thread.\n",
        std::string(oObject.TypeName()).c_str(), t_sThread.c_str(), t_sThread.empty() ? "" : ", which is ");
    std::abort();
}

void ObjectMade(const Object& oObject) noexcept {
    if (!IsElsewhere()) // otherwise the first use ends the program and can name the class
        Living()[&oObject] = ++g_uMade;
}

} // namespace detail

namespace ObjectWatch {

std::uint64_t Start() {
    g_oThread = std::this_thread::get_id();
    return g_uMade;
}

void Stop() {
    g_oThread.reset();
}

void NameThread(std::string sName) {
    t_sThread = std::move(sName);
}

std::vector<Ref<Object>> MadeSince(std::uint64_t uMark) {
    std::map<std::uint64_t, const Object*> mapInOrder;
    for (const auto& [pObject, uMade] : Living())
        if (uMade > uMark)
            mapInOrder[uMade] = pObject;
    std::vector<Ref<Object>> aObjects;
    for (const auto& [uMade, pObject] : mapInOrder)
        aObjects.emplace_back(const_cast<Object*>(pObject));
    return aObjects;
}

void Forget(const Object& oObject) noexcept {
    if (!IsElsewhere())
        Living().erase(&oObject);
}

} // namespace ObjectWatch

#endif

} // namespace corvane
