// The table of members, made of the members alone: each is called by its own name, which is written once.
#pragma once

#include "corvane/base/Automation.h"

#include <string_view>
#include <type_traits>

namespace corvane {

namespace detail {

// Ends with "&Class::Name]", by GCC as by Clang.
template <auto Member>
consteval const char* WrittenMember() {
    return __PRETTY_FUNCTION__;
}

template <auto Member>
consteval std::string_view MemberName() {
    std::string_view sName = WrittenMember<Member>();
    sName.remove_suffix(1);
    sName.remove_prefix(sName.rfind(':') + 1);
    return sName;
}

consteval bool IsMemberName(std::string_view sName) {
    for (const char c : sName)
        if (!(Small(c) >= 'a' && Small(c) <= 'z') && !(c >= '0' && c <= '9') && c != '_')
            return false;
    return !sName.empty();
}

} // namespace detail

// `static constexpr auto Members = Methods<&T::OnOpen, &T::OnDelete>();` lists member functions under their own names;
// entries that need another name, and properties, go into the parentheses: Method("Name", …), Property("Name", …). They
// may be private: only their class names them. A name that is listed twice doesn't compile; of an overloaded function
// Method("Name", …) takes the one that is meant.
template <auto... Functions, class... Entries>
constexpr auto Methods(Entries... aEntries) {
    static_assert((std::is_member_function_pointer_v<decltype(Functions)> && ...),
                  "Methods<…> takes member functions; properties go into the parentheses");
    static_assert((detail::IsMemberName(detail::MemberName<Functions>()) && ...),
                  "a name that can't be called: write Method(\"Name\", …) in the parentheses");
    return MemberTable(Method(detail::MemberName<Functions>(), Functions)..., aEntries...);
}

} // namespace corvane
