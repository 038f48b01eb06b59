#include "corvane/base/ObjectWatch.h"

#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <list>
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

// In order of their making, so that those that earlier libraries have left cost nothing.
struct Made {
    std::uint64_t uNumber;
    const Object* pObject;
};
using Order = std::list<Made>;
struct Living {
    Order aOrder;
    std::unordered_map<const Object*, Order::iterator> mapPlaces;
};

// Objects may live on in statics, which end after this.
Living& AllLiving() {
    static auto* pLiving = new Living();
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
    if (IsElsewhere())
        return; // the first use ends the program and can name the class
    Living& oLiving = AllLiving();
    const auto itMade = oLiving.aOrder.insert(oLiving.aOrder.end(), {++g_uMade, &oObject});
    const auto [itPlace, bIsNew] = oLiving.mapPlaces.try_emplace(&oObject, itMade);
    if (!bIsNew) {
        oLiving.aOrder.erase(itPlace->second);
        itPlace->second = itMade;
    }
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
    const Order& aOrder = AllLiving().aOrder;
    auto itFirst = aOrder.end();
    while (itFirst != aOrder.begin() && std::prev(itFirst)->uNumber > uMark)
        --itFirst;
    std::vector<Ref<Object>> aObjects;
    for (; itFirst != aOrder.end(); ++itFirst)
        aObjects.emplace_back(const_cast<Object*>(itFirst->pObject));
    return aObjects;
}

void Forget(const Object& oObject) noexcept {
    if (IsElsewhere())
        return;
    Living& oLiving = AllLiving();
    if (const auto itPlace = oLiving.mapPlaces.find(&oObject); itPlace != oLiving.mapPlaces.end()) {
        oLiving.aOrder.erase(itPlace->second);
        oLiving.mapPlaces.erase(itPlace);
    }
}

} // namespace ObjectWatch

#endif

} // namespace corvane
