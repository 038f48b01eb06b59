// Late binding: a class lists the members that can be called by name once, in a table made at compile time.
#pragma once

#include "corvane/base/Failure.h"
#include "corvane/base/Text.h"
#include "corvane/base/Variant.h"

#include <algorithm>
#include <array>
#include <concepts>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace corvane {

[[noreturn, gnu::visibility("default")]] void FailNoSuchMember(const Object& oObject, std::string_view sName);
[[noreturn, gnu::visibility("default")]] void FailArgumentCount(const Object& oObject, std::string_view sName,
                                                                std::size_t nWanted, std::size_t nGiven);

namespace detail {

template <class T>
struct IsRef : std::false_type {};
template <class T>
struct IsRef<Ref<T>> : std::true_type {
    using Pointee = T;
};

template <class T>
concept Text = std::same_as<T, std::string> || std::same_as<T, std::string_view>;

template <class T>
concept Passable = std::same_as<T, Variant> || std::same_as<T, bool> || std::is_enum_v<T> || std::same_as<T, Long> ||
    LongLongNumber<T> || std::same_as<T, Single> || std::same_as<T, Double> || Text<T> || IsRef<T>::value;

// The class's name with its namespace, as GCC and Clang write it. The class needn't be complete.
template <class T>
consteval auto ClassName() {
    const std::string_view sWritten = __PRETTY_FUNCTION__;
    const std::size_t iName = sWritten.find("T = ") + 4;
    return sWritten.substr(iName, sWritten.find_first_of(";]", iName) - iName);
}

template <class T>
constexpr ValueInfo InfoOf() {
    using Plain = std::remove_cvref_t<T>;
    if constexpr (std::is_void_v<Plain>)
        return {};
    else if constexpr (std::is_same_v<Plain, Variant>)
        return {ValueType::Any};
    else if constexpr (std::is_same_v<Plain, bool>)
        return {ValueType::Boolean};
    else if constexpr (std::is_enum_v<Plain>)
        return {ValueType::Enumeration};
    else if constexpr (std::is_same_v<Plain, Long>)
        return {ValueType::Int32};
    else if constexpr (LongLongNumber<Plain>)
        return {ValueType::Int64};
    else if constexpr (std::is_same_v<Plain, Single>)
        return {ValueType::Float32};
    else if constexpr (std::is_same_v<Plain, Double>)
        return {ValueType::Float64};
    else if constexpr (IsRef<Plain>::value)
        return {ValueType::Reference, ClassName<typename IsRef<Plain>::Pointee>()};
    else
        return {ValueType::Text};
}

// Fails with 6 when the number doesn't fit.
template <class T>
T NumberAs(LongLong lValue) {
    if (!std::in_range<T>(lValue))
        Fail(FailureNumber::Overflow);
    return static_cast<T>(lValue);
}

template <class T>
auto FromVariant(const Variant& vValue) {
    using Plain = std::remove_cvref_t<T>;
    if constexpr (std::is_same_v<Plain, Variant>)
        return vValue;
    else if constexpr (std::is_same_v<Plain, bool>)
        return ToBoolean(vValue);
    else if constexpr (std::is_enum_v<Plain>)
        return static_cast<Plain>(ToLong(vValue));
    else if constexpr (std::is_same_v<Plain, Long>)
        return ToLong(vValue);
    else if constexpr (LongLongNumber<Plain>)
        return NumberAs<Plain>(ToLongLong(vValue));
    else if constexpr (std::is_same_v<Plain, Single>)
        return ToSingle(vValue);
    else if constexpr (std::is_same_v<Plain, Double>)
        return ToDouble(vValue);
    else if constexpr (std::is_same_v<Plain, std::string> || std::is_same_v<Plain, std::string_view>)
        return ToText(vValue);
    else
        return ToObject(vValue).As<typename IsRef<Plain>::Pointee>();
}

template <class T>
Variant ToVariant(T&& vValue) {
    if constexpr (std::is_enum_v<std::remove_cvref_t<T>>)
        return Variant(static_cast<Long>(vValue));
    else
        return Variant(std::forward<T>(vValue));
}

// The parameters of a member function, const or not.
template <class F>
struct Signature;
template <class C, class R, class... P>
struct Signature<R (C::*)(P...)> {
    using Result = R;
    using Parameters = std::tuple<P...>;
    static constexpr std::size_t Count = sizeof...(P);
};
template <class C, class R, class... P>
struct Signature<R (C::*)(P...) const> : Signature<R (C::*)(P...)> {};
template <class C, class R, class... P>
struct Signature<R (C::*)(P...) noexcept> : Signature<R (C::*)(P...)> {};
template <class C, class R, class... P>
struct Signature<R (C::*)(P...) const noexcept> : Signature<R (C::*)(P...)> {};

// A parameter that a member changes in its caller can't be passed by name.
template <class T>
inline constexpr bool IsParameter = Passable<std::remove_cvref_t<T>> &&
                                    !(std::is_lvalue_reference_v<T> && !std::is_const_v<std::remove_reference_t<T>>);
template <class T>
inline constexpr bool IsResult =
    std::is_void_v<T> || Passable<std::remove_cvref_t<T>> || std::is_same_v<std::decay_t<T>, const char*>;

template <class F>
inline constexpr bool IsCallable = false;
template <class C, class R, class... P>
inline constexpr bool IsCallable<R (C::*)(P...)> = IsResult<R> && (IsParameter<P> && ...);
template <class C, class R, class... P>
inline constexpr bool IsCallable<R (C::*)(P...) const> = IsCallable<R (C::*)(P...)>;
template <class C, class R, class... P>
inline constexpr bool IsCallable<R (C::*)(P...) noexcept> = IsCallable<R (C::*)(P...)>;
template <class C, class R, class... P>
inline constexpr bool IsCallable<R (C::*)(P...) const noexcept> = IsCallable<R (C::*)(P...)>;

// Stands for a member that has been refused, so that the compiler has nothing more to say of it.
struct Refused {};

template <class F>
constexpr auto Checked(F fnMember) {
    static_assert(IsCallable<F>,
                  "What is called by name is a member function that takes and returns values of these types alone: "
                  "Variant, bool, Long, LongLong and other whole numbers of 64 bits, Single, Double, std::string, "
                  "std::string_view, enumerations, and Ref<T> to an object; parameters by value or by const reference");
    if constexpr (IsCallable<F>)
        return fnMember;
    else
        return static_cast<void (Refused::*)()>(nullptr);
}

template <class F>
using CheckedAs = decltype(Checked(std::declval<F>()));

template <class C, class F, std::size_t... I>
Variant CallMember(C& oObject, F fnMember, std::span<const Variant> aArguments, std::index_sequence<I...>) {
    using S = Signature<F>;
    if constexpr (std::is_same_v<F, void (Refused::*)()>) {
        return {};
    } else if constexpr (std::is_void_v<typename S::Result>) {
        (oObject.*fnMember)(FromVariant<std::tuple_element_t<I, typename S::Parameters>>(aArguments[I])...);
        return {};
    } else {
        return ToVariant(
            (oObject.*fnMember)(FromVariant<std::tuple_element_t<I, typename S::Parameters>>(aArguments[I])...));
    }
}

template <class Parameters>
inline constexpr auto InfosOf = nullptr;
template <class... P>
inline constexpr std::array<ValueInfo, sizeof...(P)> InfosOf<std::tuple<P...>>{InfoOf<P>()...};

constexpr char Small(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

constexpr int CompareNames(std::string_view sLeft, std::string_view sRight) {
    const std::size_t n = sLeft.size() < sRight.size() ? sLeft.size() : sRight.size();
    for (std::size_t i = 0; i < n; ++i)
        if (Small(sLeft[i]) != Small(sRight[i]))
            return Small(sLeft[i]) < Small(sRight[i]) ? -1 : 1;
    return sLeft.size() < sRight.size() ? -1 : sLeft.size() > sRight.size() ? 1 : 0;
}

} // namespace detail

// What Method and Property make: a name with the functions behind it.
template <class Call, class Write>
struct MemberEntry {
    std::string_view Name;
    Call fnCall;   // the method, or the property's getter
    Write fnWrite; // the property's setter; nullptr for a method and a property that is only read
    MemberInfo::Kind What;

    template <class C>
    Variant Invoke(C& oObject, std::span<const Variant> aArguments) const {
        constexpr std::size_t nWanted = detail::Signature<Call>::Count;
        if (aArguments.size() != nWanted)
            FailArgumentCount(oObject, Name, nWanted, aArguments.size());
        return detail::CallMember(oObject, fnCall, aArguments, std::make_index_sequence<nWanted>{});
    }
    template <class C>
    void Put(C& oObject, const Variant& vValue) const {
        if constexpr (std::is_same_v<Write, std::nullptr_t>)
            FailNoSuchMember(oObject, Name);
        else
            detail::CallMember(oObject, fnWrite, std::span(&vValue, 1), std::make_index_sequence<1>{});
    }
    static constexpr std::size_t ParameterCount = detail::Signature<Call>::Count;
    using Called = detail::Signature<Call>;
    static constexpr bool CanWrite = !std::is_same_v<Write, std::nullptr_t>;
};

// Names are of ASCII letters, digits and underscores.
template <class Call>
constexpr auto Method(std::string_view sName, Call fnCall) {
    return MemberEntry<detail::CheckedAs<Call>, std::nullptr_t>{sName, detail::Checked(fnCall), nullptr,
                                                                MemberInfo::Kind::Method};
}
template <class Get>
constexpr auto Property(std::string_view sName, Get fnGet) {
    return MemberEntry<detail::CheckedAs<Get>, std::nullptr_t>{sName, detail::Checked(fnGet), nullptr,
                                                               MemberInfo::Kind::Property};
}
template <class Get, class Set>
constexpr auto Property(std::string_view sName, Get fnGet, Set fnSet) {
    return MemberEntry<detail::CheckedAs<Get>, detail::CheckedAs<Set>>{
        sName, detail::Checked(fnGet), detail::Checked(fnSet), MemberInfo::Kind::Property};
}

namespace detail {

// The entries as bases of a table, distinguished by their positions: a compiler builds a tuple entry by entry, and a
// long one is too deep for it.
template <std::size_t I, class Entry>
struct MemberAt {
    Entry oEntry;
};

} // namespace detail

template <class Positions, class... Entries>
class MemberTableOf;

template <std::size_t... I, class... Entries>
class MemberTableOf<std::index_sequence<I...>, Entries...> : detail::MemberAt<I, Entries>... {
    template <std::size_t J, class E>
    [[nodiscard]] constexpr const E& Entry() const {
        return static_cast<const detail::MemberAt<J, E>&>(*this).oEntry;
    }
    template <class Derived, std::size_t J, class E>
    static Variant Call(Derived& oObject, std::span<const Variant> aArguments) {
        return Derived::Members.template Entry<J, E>().Invoke(oObject, aArguments);
    }
    template <class Derived, std::size_t J, class E>
    static void Write(Derived& oObject, const Variant& vValue) {
        Derived::Members.template Entry<J, E>().Put(oObject, vValue);
    }

public:
    static constexpr std::size_t Size = sizeof...(Entries);
    using ByName = std::pair<std::string_view, std::size_t>;
    std::array<ByName, Size> aByName{}; // by name, with the position among the entries

    constexpr explicit MemberTableOf(Entries... aEntries)
        : detail::MemberAt<I, Entries>{aEntries}..., aByName{ByName(aEntries.Name, I)...} {
        std::sort(aByName.begin(), aByName.end(), [](const ByName& oLeft, const ByName& oRight) {
            return detail::CompareNames(oLeft.first, oRight.first) < 0;
        });
        for (std::size_t i = 1; i < Size; ++i)
            if (detail::CompareNames(aByName[i - 1].first, aByName[i].first) == 0)
                throw "a member is listed twice";
    }

    // The position among the entries, or Size.
    [[nodiscard]] constexpr std::size_t Find(std::string_view sName) const {
        std::size_t iFrom = 0;
        std::size_t iTo = Size;
        while (iFrom < iTo) {
            const std::size_t iMiddle = (iFrom + iTo) / 2;
            const int nOrder = detail::CompareNames(sName, aByName[iMiddle].first);
            if (nOrder == 0)
                return aByName[iMiddle].second;
            if (nOrder < 0)
                iTo = iMiddle;
            else
                iFrom = iMiddle + 1;
        }
        return Size;
    }

    // In the order of the entries.
    [[nodiscard]] constexpr std::array<MemberInfo, Size> Listed() const {
        return {MemberInfo{Entry<I, Entries>().Name, Entry<I, Entries>().What,
                           Entry<I, Entries>().What == MemberInfo::Kind::Method ? Entries::ParameterCount : 0,
                           Entries::CanWrite, detail::InfosOf<typename Entries::Called::Parameters>,
                           detail::InfoOf<typename Entries::Called::Result>()}...};
    }

    template <class Derived>
    using CallFunction = Variant (*)(Derived&, std::span<const Variant>);
    template <class Derived>
    using WriteFunction = void (*)(Derived&, const Variant&);

    // By position, what calls and writes the members of a class that has this table.
    template <class Derived>
    static constexpr std::array<CallFunction<Derived>, Size> Calls{&Call<Derived, I, Entries>...};
    template <class Derived>
    static constexpr std::array<WriteFunction<Derived>, Size> Writes{&Write<Derived, I, Entries>...};
};

// A name that is listed twice doesn't compile.
template <class... Entries>
constexpr auto MemberTable(Entries... aEntries) {
    return MemberTableOf<std::index_sequence_for<Entries...>, Entries...>(aEntries...);
}

// Base of a class whose members can be called by name. Derived has a public `static constexpr auto Members`.
template <class Derived, class... Interfaces>
class Automation : public virtual Object, public Interfaces... {
public:
    Variant Invoke(std::string_view sName, std::span<const Variant> aArguments) override {
        const std::size_t i = Derived::Members.Find(sName);
        if (i == Derived::Members.Size)
            FailNoSuchMember(*this, sName);
        return Derived::Members.template Calls<Derived>[i](static_cast<Derived&>(*this), aArguments);
    }
    void Put(std::string_view sName, const Variant& vValue) override {
        const std::size_t i = Derived::Members.Find(sName);
        if (i == Derived::Members.Size)
            FailNoSuchMember(*this, sName);
        Derived::Members.template Writes<Derived>[i](static_cast<Derived&>(*this), vValue);
    }
    bool HasMember(std::string_view sName) const override {
        return Derived::Members.Find(sName) != Derived::Members.Size;
    }
    std::vector<MemberInfo> MembersByName() const override {
        const auto aMembers = Derived::Members.Listed();
        std::vector<MemberInfo> aSorted;
        aSorted.reserve(aMembers.size());
        for (const auto& [sName, i] : Derived::Members.aByName)
            aSorted.push_back(aMembers[i]);
        return aSorted;
    }
};

} // namespace corvane
