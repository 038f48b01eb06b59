#include "corvane/base/Variant.h"

#include "corvane/base/Text.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

namespace corvane {

Variant::Variant() noexcept = default;
Variant::Variant(bool bValue) noexcept : m_vValue(bValue) {}
Variant::Variant(Long lValue) noexcept : m_vValue(lValue) {}
Variant::Variant(std::in_place_t, LongLong nValue) noexcept : m_vValue(nValue) {}
Variant::Variant(Single fValue) noexcept : m_vValue(fValue) {}
Variant::Variant(Double dblValue) noexcept : m_vValue(dblValue) {}
Variant::Variant(std::string sValue) noexcept : m_vValue(std::move(sValue)) {}
Variant::Variant(std::string_view sValue) : m_vValue(std::string(sValue)) {}
Variant::Variant(const char* sValue) : m_vValue(std::string(sValue)) {}
Variant::Variant(Ref<Object> oValue) noexcept : m_vValue(std::move(oValue)) {}
Variant::Variant(const Variant& vOther) = default;
Variant::Variant(Variant&& vOther) noexcept = default;
Variant& Variant::operator=(const Variant& vOther) = default;
Variant& Variant::operator=(Variant&& vOther) noexcept = default;
Variant::~Variant() = default;

bool Variant::operator==(const Variant& vOther) const {
    return m_vValue == vOther.m_vValue;
}

namespace {

[[noreturn]] void FailConversion(const Variant& vValue, std::string_view sWanted) {
    std::string sWhat = "a value";
    if (const auto* pText = vValue.Get<std::string>())
        sWhat = "the text \"" + *pText + "\"";
    else if (vValue.IsObject())
        sWhat = "an object";
    Fail(FailureNumber::TypeMismatch, "Type mismatch: " + sWhat + " is not " + std::string(sWanted));
}

// The plain number in a variant; nothing for a text that is none and for an object.
std::optional<Double> Number(const Variant& vValue) {
    if (vValue.IsEmpty())
        return 0.0;
    if (const auto* pBoolean = vValue.Get<bool>())
        return *pBoolean ? -1.0 : 0.0;
    if (const auto* pLong = vValue.Get<Long>())
        return *pLong;
    if (const auto* pLongLong = vValue.Get<LongLong>())
        return static_cast<Double>(*pLongLong);
    if (const auto* pSingle = vValue.Get<Single>())
        return *pSingle;
    if (const auto* pDouble = vValue.Get<Double>())
        return *pDouble;
    if (const auto* pText = vValue.Get<std::string>())
        return NumberIn(*pText);
    return std::nullopt;
}

// Free of the user's locale, whose decimal comma nothing would read back.
std::string NumberText(Double dblValue, int nDigits) {
    if (dblValue == 0)
        dblValue = 0; // without the sign of a negative zero
    char aBuffer[40];
    const auto oEnd = std::to_chars(aBuffer, aBuffer + sizeof aBuffer, dblValue, std::chars_format::general, nDigits);
    std::string sText(aBuffer, oEnd.ptr);
    std::replace(sText.begin(), sText.end(), 'e', 'E');
    return sText;
}

} // namespace

std::optional<Double> NumberIn(std::string_view sText) noexcept {
    // Most numbers are short and whole.
    constexpr std::size_t nExactDigits = 15;
    if (!sText.empty() && sText.size() <= nExactDigits) {
        std::int64_t nValue = 0;
        std::size_t i = 0;
        for (; i < sText.size() && sText[i] >= '0' && sText[i] <= '9'; ++i)
            nValue = nValue * 10 + (sText[i] - '0');
        if (i == sText.size())
            return static_cast<Double>(nValue);
    }
    const auto IsBlank = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
    while (!sText.empty() && IsBlank(sText.front()))
        sText.remove_prefix(1);
    while (!sText.empty() && IsBlank(sText.back()))
        sText.remove_suffix(1);
    const bool bPlus = sText.starts_with('+');
    if (bPlus)
        sText.remove_prefix(1);
    // from_chars knows "inf" and "nan" and no plus sign; decimal notation is the other way about.
    const std::size_t iFirst = !bPlus && sText.starts_with('-') ? 1 : 0;
    if (iFirst >= sText.size() || !(sText[iFirst] == '.' || std::isdigit(static_cast<unsigned char>(sText[iFirst]))))
        return std::nullopt;
    Double dblValue = 0;
    const auto [pEnd, eError] = std::from_chars(sText.data(), sText.data() + sText.size(), dblValue);
    if (pEnd != sText.data() + sText.size())
        return std::nullopt;
    if (eError == std::errc::result_out_of_range) {
        const std::size_t iExponent = sText.find_first_of("eE");
        const bool bTiny = iExponent != std::string_view::npos && sText.find('-', iExponent) != std::string_view::npos;
        return bTiny ? 0.0 : (iFirst ? -1 : 1) * std::numeric_limits<Double>::infinity();
    }
    if (eError != std::errc{})
        return std::nullopt;
    return dblValue;
}

Long RoundToLong(Double dblValue) {
    const Double dblRounded = std::nearbyint(dblValue);
    if (!(dblRounded >= -2147483648.0 && dblRounded <= 2147483647.0))
        Fail(FailureNumber::Overflow);
    return static_cast<Long>(dblRounded);
}

bool ToBoolean(const Variant& vValue) {
    if (const auto* pBoolean = vValue.Get<bool>())
        return *pBoolean;
    if (const auto* pText = vValue.Get<std::string>()) {
        if (EqualText(*pText, "True"))
            return true;
        if (EqualText(*pText, "False"))
            return false;
    }
    const std::optional<Double> oNumber = Number(vValue);
    if (!oNumber)
        FailConversion(vValue, "true or false");
    return *oNumber != 0.0;
}

Long ToLong(const Variant& vValue) {
    if (const auto* pLong = vValue.Get<Long>())
        return *pLong;
    if (const auto* pLongLong = vValue.Get<LongLong>(); pLongLong && !std::in_range<Long>(*pLongLong))
        Fail(FailureNumber::Overflow);
    return RoundToLong(ToDouble(vValue));
}

LongLong ToLongLong(const Variant& vValue) {
    if (const auto* pLongLong = vValue.Get<LongLong>())
        return *pLongLong;
    if (const auto* pText = vValue.Get<std::string>()) {
        LongLong lWhole = 0;
        const char* pEnd = pText->data() + pText->size();
        if (const auto oRead = std::from_chars(pText->data(), pEnd, lWhole);
            oRead.ptr == pEnd && oRead.ec == std::errc{})
            return lWhole;
    }
    const Double dblRounded = std::nearbyint(ToDouble(vValue));
    if (!(dblRounded >= -0x1p63 && dblRounded < 0x1p63))
        Fail(FailureNumber::Overflow);
    return static_cast<LongLong>(dblRounded);
}

Single ToSingle(const Variant& vValue) {
    if (const auto* pSingle = vValue.Get<Single>())
        return *pSingle;
    const Double dblValue = ToDouble(vValue);
    if (std::abs(dblValue) > static_cast<Double>(std::numeric_limits<Single>::max()))
        Fail(FailureNumber::Overflow);
    return static_cast<Single>(dblValue);
}

Double ToDouble(const Variant& vValue) {
    const std::optional<Double> oNumber = Number(vValue);
    if (!oNumber)
        FailConversion(vValue, "a number");
    if (std::isinf(*oNumber))
        Fail(FailureNumber::Overflow);
    return *oNumber;
}

std::string ToText(const Variant& vValue) {
    if (const auto* pText = vValue.Get<std::string>())
        return *pText;
    if (vValue.IsEmpty())
        return {};
    if (const auto* pBoolean = vValue.Get<bool>())
        return *pBoolean ? "True" : "False";
    if (const auto* pLong = vValue.Get<Long>())
        return std::to_string(*pLong);
    if (const auto* pLongLong = vValue.Get<LongLong>())
        return std::to_string(*pLongLong);
    if (const auto* pSingle = vValue.Get<Single>())
        return NumberText(*pSingle, 7);
    if (const auto* pDouble = vValue.Get<Double>())
        return NumberText(*pDouble, 15);
    FailConversion(vValue, "a text");
}

Ref<Object> ToObject(const Variant& vValue) {
    if (const auto* pObject = vValue.Get<Ref<Object>>())
        return *pObject;
    if (!vValue.IsEmpty())
        FailConversion(vValue, "an object");
    return nullptr;
}

} // namespace corvane
