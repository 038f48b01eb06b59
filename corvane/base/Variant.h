// A value of any of the system's types, and the conversions between them. Tells an object from a plain value.
#pragma once

#include "corvane/base/Ref.h"

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace corvane {

// Whole numbers of 64 bits under any of their names, and those of 32 bits that a Long can't hold.
template <class T>
concept LongLongNumber = std::integral<T> &&(sizeof(T) == 8 || std::same_as<T, std::uint32_t>);

// A number of 64 bits as a LongLong. Fails with 6 when it is too large.
template <LongLongNumber T>
[[nodiscard]] LongLong AsLongLong(T nValue) {
    if (!std::in_range<LongLong>(nValue))
        Fail(FailureNumber::Overflow);
    return static_cast<LongLong>(nValue);
}

class __attribute__((visibility("default"))) Variant {
public:
    Variant() noexcept; // empty
    Variant(bool bValue) noexcept;
    Variant(Long lValue) noexcept;
    template <LongLongNumber T>
    Variant(T nValue) : Variant(std::in_place, AsLongLong(nValue)) {}
    Variant(Single fValue) noexcept;
    Variant(Double dblValue) noexcept;
    Variant(std::string sValue) noexcept;
    Variant(std::string_view sValue);
    Variant(const char* sValue);
    Variant(Ref<Object> oValue) noexcept;
    template <class T>
    Variant(const Ref<T>& oValue) : Variant(Ref<Object>(oValue)) {}
    Variant(const void*) = delete; // a pointer isn't a boolean
    Variant(const Variant& vOther);
    Variant(Variant&& vOther) noexcept;
    Variant& operator=(const Variant& vOther);
    Variant& operator=(Variant&& vOther) noexcept;
    ~Variant();

    [[nodiscard]] bool IsEmpty() const { return std::holds_alternative<std::monostate>(m_vValue); }
    // An object reference, also one to nothing.
    [[nodiscard]] bool IsObject() const { return std::holds_alternative<Ref<Object>>(m_vValue); }
    // The held value when it is of exactly that type, else a null pointer.
    template <class T>
    [[nodiscard]] const T* Get() const {
        return std::get_if<T>(&m_vValue);
    }

    [[nodiscard]] bool operator==(const Variant& vOther) const;

private:
    Variant(std::in_place_t, LongLong nValue) noexcept;

    std::variant<std::monostate, bool, Long, Single, Double, std::string, Ref<Object>, LongLong> m_vValue;
};

// Conversions. What doesn't convert fails with 13, what doesn't fit with 6. Empty converts as false, 0 and "".
// A text converts to a number when it is one in decimal notation (sign, digits, point, exponent), blanks around it
// allowed. Whole numbers round half to even.
[[nodiscard, gnu::visibility("default")]] bool ToBoolean(const Variant& vValue);
[[nodiscard, gnu::visibility("default")]] Long ToLong(const Variant& vValue);
// Without loss beyond 53 bits, also from a text of digits.
[[nodiscard, gnu::visibility("default")]] LongLong ToLongLong(const Variant& vValue);
[[nodiscard, gnu::visibility("default")]] Single ToSingle(const Variant& vValue);
[[nodiscard, gnu::visibility("default")]] Double ToDouble(const Variant& vValue);
// True and False; a single with up to seven significant digits, a double with up to fifteen, no trailing zeros.
[[nodiscard, gnu::visibility("default")]] std::string ToText(const Variant& vValue);
// Fails with 13 for a plain value; empty is nothing.
[[nodiscard, gnu::visibility("default")]] Ref<Object> ToObject(const Variant& vValue);

// The number that a text reads as, or nothing.
[[nodiscard, gnu::visibility("default")]] std::optional<Double> NumberIn(std::string_view sText) noexcept;

// Half to even; fails with 6 outside the range of a Long.
[[nodiscard, gnu::visibility("default")]] Long RoundToLong(Double dblValue);

} // namespace corvane
