// The values of a page by name, without functions that read and write them.
#pragma once

#include "corvane/author/Methods.h"

#include <span>
#include <string_view>
#include <tuple>
#include <type_traits>

namespace corvane {

// A data member as a property: what it holds is read and written under the name.
template <class C, class V>
struct ValueEntry {
    std::string_view Name;
    V C::*pValue;
    MemberInfo::Kind What = MemberInfo::Kind::Property;

    static_assert(detail::Passable<V>,
                  "a value by name is a bool, a number, a std::string, an enumeration, a Variant or "
                  "a Ref of a class");

    template <class T>
    Variant Invoke(T& oObject, std::span<const Variant> aArguments) const {
        if (!aArguments.empty())
            FailArgumentCount(oObject, Name, 0, aArguments.size());
        return detail::ToVariant(oObject.*pValue);
    }
    template <class T>
    void Put(T& oObject, const Variant& vValue) const {
        oObject.*pValue = detail::FromVariant<V>(vValue);
    }

    struct Called {
        using Parameters = std::tuple<>;
        using Result = V;
    };
    static constexpr std::size_t ParameterCount = 0;
    static constexpr bool CanWrite = true;
};

namespace detail {

template <auto Member>
consteval std::string_view ValueName() {
    std::string_view sName = MemberName<Member>();
    if (sName.substr(0, 2) == "m_")
        sName.remove_prefix(2);
    return sName;
}

template <class C, class V>
constexpr ValueEntry<C, V> ValueOf(std::string_view sName, V C::*pValue) {
    return {sName, pValue};
}

template <auto Member>
constexpr auto EntryOf() {
    if constexpr (std::is_member_function_pointer_v<decltype(Member)>)
        return Method(MemberName<Member>(), Member);
    else
        return ValueOf(ValueName<Member>(), Member);
}

} // namespace detail

// `static constexpr auto Members = Fields<&T::m_title, &T::m_start, &T::Import>();` lists data members, which a form
// reads and writes under their names without "m_", and member functions under theirs, which its buttons call. They may
// be private, and are declared before the list. Entries that need another name, and properties with functions, go into
// the parentheses, as for Methods<…>().
template <auto... Declared, class... Entries>
constexpr auto Fields(Entries... aEntries) {
    static_assert((std::is_member_pointer_v<decltype(Declared)> && ...), "Fields<…> takes members of the class");
    return MemberTable(detail::EntryOf<Declared>()..., aEntries...);
}

} // namespace corvane
