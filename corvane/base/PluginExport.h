// How a shared library offers its classes: CORVANE_PLUGIN(Class<A>("Library.A"), Class<B>("Library.B")).
#pragma once

#include "corvane/base/InterfaceHash.h"
#include "corvane/base/Ref.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <type_traits>

namespace corvane {

// The form of PluginTable itself. All other declarations are covered by the build tag.
inline constexpr std::uint32_t PluginAbiVersion = 1;

// The compiler, its standard library and their modes, as far as objects of both sides must agree, and behind the last
// blank a hash over all public declarations: a plug-in that was built with other headers is refused.
#if defined(_LIBCPP_VERSION)
#define CORVANE_DETAIL_STANDARD_LIBRARY "libc++"
#elif defined(_GLIBCXX_DEBUG)
#define CORVANE_DETAIL_STANDARD_LIBRARY "libstdc++ debug"
#else
#define CORVANE_DETAIL_STANDARD_LIBRARY "libstdc++"
#endif
inline constexpr const char* PluginBuildTag = "itanium " CORVANE_DETAIL_STANDARD_LIBRARY " " CORVANE_INTERFACE_HASH;
#undef CORVANE_DETAIL_STANDARD_LIBRARY

class IExplorerItemAccess;
class IPageAccess;
class IServiceAccess;

struct PluginClass {
    const char* ProgID;
    Object* (*Create)();                  // a new object with one reference, which the caller takes over
    std::vector<MemberInfo> (*Members)(); // without creating one
    // What the library can use its objects as.
    bool IsService;
    bool IsExplorerItem;
    bool IsPage;
};

// What the library's one function returns. Until the ABI version is known to fit, nothing behind it is read.
struct PluginTable {
    std::uint32_t AbiVersion;
    const char* BuildTag;
    const PluginClass* Classes;
    std::size_t ClassCount;
};

inline constexpr const char* PluginEntryName = "corvane_plugin";

template <class T>
constexpr PluginClass Class(const char* sProgID) {
    return {sProgID, []() -> Object* { return new T(); },
            []() -> std::vector<MemberInfo> {
                if constexpr (requires { T::Members; }) {
                    const auto aMembers = T::Members.Listed();
                    return {aMembers.begin(), aMembers.end()};
                } else {
                    return {};
                }
            },
            // A class whose file doesn't know the interface can't have it.
            std::is_convertible_v<T*, IServiceAccess*>, std::is_convertible_v<T*, IExplorerItemAccess*>,
            std::is_convertible_v<T*, IPageAccess*>};
}

} // namespace corvane

#define CORVANE_PLUGIN(...)                                                                                            \
    extern "C" [[gnu::visibility("default")]] const corvane::PluginTable* corvane_plugin() {                           \
        using corvane::Class;                                                                                          \
        static constexpr corvane::PluginClass aClasses[] = {__VA_ARGS__};                                              \
        static constexpr corvane::PluginTable oTable{corvane::PluginAbiVersion, corvane::PluginBuildTag, aClasses,     \
                                                     std::size(aClasses)};                                             \
        return &oTable;                                                                                                \
    }
