#include "corvane/author/Translation.h"

#include <array>
#include <ctime>
#include <utility>
#include <vector>

namespace corvane {

namespace {

UserLanguage& Language() {
    static UserLanguage oLanguage;
    return oLanguage;
}

// In one pass, so that a value with "%1" in it stays as it is.
std::string WithValues(const std::string& sText, const std::vector<std::string_view>& aValues) {
    std::string sFilled;
    for (std::size_t i = 0; i < sText.size(); ++i) {
        const std::size_t iValue =
            sText[i] == '%' && i + 1 < sText.size() ? static_cast<std::size_t>(sText[i + 1] - '1') : aValues.size();
        if (iValue < aValues.size()) {
            sFilled += aValues[iValue];
            ++i;
        } else {
            sFilled += sText[i];
        }
    }
    return sFilled;
}

// "1.234.567" without its groups; nothing when they aren't of three digits each.
std::optional<std::string> WithoutGroups(std::string_view sWhole, std::string_view sGroup) {
    std::string sPlain;
    bool bFirst = true;
    for (;;) {
        const std::size_t iEnd = sGroup.empty() ? std::string_view::npos : sWhole.find(sGroup);
        const std::string_view sPart = sWhole.substr(0, iEnd);
        const bool bWhole = bFirst && iEnd == std::string_view::npos;
        const std::size_t nDigits = sPart.size() - (bFirst && sPart.starts_with('-') ? 1 : 0);
        if (!bWhole && (nDigits > 3 || nDigits < (bFirst ? 1U : 3U)))
            return std::nullopt;
        sPlain += sPart;
        if (iEnd == std::string_view::npos)
            return sPlain;
        sWhole.remove_prefix(iEnd + sGroup.size());
        bFirst = false;
    }
}

} // namespace

void SetUserLanguage(UserLanguage oLanguage) {
    Language() = std::move(oLanguage);
}

std::string Translated(std::string_view sText) {
    const auto& aTexts = Language().aTexts;
    const auto it = aTexts.find(std::string(sText));
    return it == aTexts.end() ? std::string(sText) : it->second;
}

std::string Translated(std::string_view sText, std::initializer_list<std::string_view> aValues) {
    return WithValues(Translated(sText), aValues);
}

std::string Translated(std::size_t nCount, std::string_view sOne, std::string_view sMany,
                       std::initializer_list<std::string_view> aValues) {
    std::string sCount = std::to_string(nCount);
    for (std::size_t i = sCount.size(); i > 3; i -= 3)
        sCount.insert(i - 3, ",");
    sCount = ShownNumber(sCount);
    std::vector<std::string_view> aAll{sCount};
    aAll.insert(aAll.end(), aValues);
    return WithValues(Translated(nCount == 1 ? sOne : sMany), aAll);
}

std::string ShownNumber(std::string_view sNumber) {
    std::string sShown;
    for (const char c : sNumber)
        if (c == '.')
            sShown += Language().sPoint;
        else if (c == ',')
            sShown += Language().sGroup;
        else
            sShown += c;
    return sShown;
}

std::optional<std::string> PlainNumber(std::string_view sShown) {
    const UserLanguage& oLanguage = Language();
    const std::size_t iPoint = sShown.find(oLanguage.sPoint);
    std::optional<std::string> sPlain = WithoutGroups(sShown.substr(0, iPoint), oLanguage.sGroup);
    if (!sPlain || sPlain->find('.') != std::string::npos)
        return std::nullopt;
    if (iPoint == std::string_view::npos)
        return sPlain;
    const std::string_view sDecimals = sShown.substr(iPoint + oLanguage.sPoint.size());
    if (sDecimals.find('.') != std::string_view::npos ||
        (!oLanguage.sGroup.empty() && sDecimals.find(oLanguage.sGroup) != std::string_view::npos))
        return std::nullopt;
    return sPlain->append(".").append(sDecimals);
}

std::string ShownTime(std::int64_t nSeconds) {
    if (Language().fnTime)
        return Language().fnTime(nSeconds);
    const auto oTime = static_cast<std::time_t>(nSeconds);
    std::tm oParts{};
    std::array<char, 32> aText{};
    const std::size_t nLength =
        std::strftime(aText.data(), aText.size(), "%Y-%m-%d %H:%M", ::localtime_r(&oTime, &oParts));
    return {aText.data(), nLength};
}

} // namespace corvane
