// A value of any of the system's types, and the conversions between them. Tells an object from a plain value.
#pragma once

#include "corvane/base/Ref.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace corvane {

class __attribute__((visibility("default"))) Variant {
public:
    Variant() = default; // empty
    Variant(bool bValue) : m_vValue(bValue) {}
    Variant(Long lValue) : m_vValue(lValue) {}
    Variant(Single fValue) : m_vValue(fValue) {}
    Variant(Double dblValue) : m_vValue(dblValue) {}
    Variant(std::string sValue) : m_vValue(std::move(sValue)) {}
    Variant(std::string_view sValue) : m_vValue(std::string(sValue)) {}
    Variant(const char* sValue) : m_vValue(std::string(sValue)) {}
    Variant(Ref<Object> oValue) : m_vValue(std::move(oValue)) {}
    template <class T>
    Variant(const Ref<T>& oValue) : m_vValue(Ref<Object>(oValue)) {}
    Variant(const void*) = delete; // a pointer isn't a boolean

    [[nodiscard]] bool IsEmpty() const { return std::holds_alternative<std::monostate>(m_vValue); }
    // An object reference, also one to nothing.
    [[nodiscard]] bool IsObject() const { return std::holds_alternative<Ref<Object>>(m_vValue); }
    // The held value when it is of exactly that type, else a null pointer.
    template <class T>
    [[nodiscard]] const T* Get() const {
        return std::get_if<T>(&m_vValue);
    }

    friend bool operator==(const Variant& vLeft, const Variant& vRight) { return vLeft.m_vValue == vRight.m_vValue; }

private:
    std::variant<std::monostate, bool, Long, Single, Double, std::string, Ref<Object>> m_vValue;
};

// Conversions. What doesn't convert fails with 13, what doesn't fit with 6. Empty converts as false, 0 and "".
// A text converts to a number when it is one in decimal notation (sign, digits, point, exponent), blanks around it
// allowed. Whole numbers round half to even.
[[nodiscard, gnu::visibility("default")]] bool ToBoolean(const Variant& vValue);
[[nodiscard, gnu::visibility("default")]] Long ToLong(const Variant& vValue);
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
