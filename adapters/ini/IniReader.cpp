#include "adapters/ini/IniReader.h"

#include "adapters/common/Encoding.h"
#include "adapters/common/Paths.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <charconv>
#include <ini.h>
#include <limits>
#include <vector>

namespace corvane {

namespace {

std::string_view Trimmed(std::string_view sText) {
    constexpr const char* sBlanks = " \t\r\v\f";
    const std::size_t iFirst = sText.find_first_not_of(sBlanks);
    if (iFirst == std::string_view::npos)
        return {};
    return sText.substr(iFirst, sText.find_last_not_of(sBlanks) - iFirst + 1);
}

// Hands inih its lines. inih takes no more than about 200 bytes of a line, sees a comment in " ;" and a continuation in
// an indented line, none of which holds for these files: so a value waits here, and inih sees its number.
struct Lines {
    std::string_view sRest;
    std::vector<std::string_view> aValues;

    static char* Next(char* pBuffer, int nBuffer, void* pLines) {
        auto& oLines = *static_cast<Lines*>(pLines);
        if (oLines.sRest.empty())
            return nullptr;
        const std::size_t iEnd = std::min(oLines.sRest.find('\n'), oLines.sRest.size());
        const std::string_view sLine = Trimmed(oLines.sRest.substr(0, iEnd));
        oLines.sRest.remove_prefix(std::min(iEnd + 1, oLines.sRest.size()));
        std::string sGiven(sLine);
        const std::size_t iSign = sLine.find('=');
        if (iSign != std::string_view::npos && !sLine.starts_with(';') && !sLine.starts_with('[')) {
            sGiven = std::string(sLine.substr(0, iSign)) + "=" + std::to_string(oLines.aValues.size());
            oLines.aValues.push_back(Trimmed(sLine.substr(iSign + 1)));
        }
        if (sGiven.size() + 2 > static_cast<std::size_t>(nBuffer))
            sGiven.clear(); // no name is that long
        sGiven += '\n';
        sGiven.copy(pBuffer, sGiven.size());
        pBuffer[sGiven.size()] = '\0';
        return pBuffer;
    }
};

struct Search {
    Lines oLines;
    std::string_view sSection;
    std::string_view sKey;
    std::optional<std::string> oValue;

    static int OnEntry(void* pSearch, const char* sSection, const char* sKey, const char* sNumber) {
        auto& oSearch = *static_cast<Search*>(pSearch);
        if (!oSearch.oValue && EqualText(Trimmed(sSection), oSearch.sSection) && EqualText(sKey, oSearch.sKey)) {
            std::size_t i = 0;
            const std::string_view sDigits = sNumber;
            std::from_chars(sDigits.data(), sDigits.data() + sDigits.size(), i);
            if (i < oSearch.oLines.aValues.size())
                oSearch.oValue = std::string(oSearch.oLines.aValues[i]);
        }
        return 1;
    }
};

} // namespace

std::optional<std::string> IniReader::Value(std::string_view sFile, std::string_view sSection, std::string_view sKey) {
    const std::optional<std::string> oPath = FindPath(sFile);
    std::optional<std::string> oBytes = oPath ? ReadBytes(*oPath) : std::nullopt;
    if (!oBytes)
        return std::nullopt;
    std::string sText = IsUtf8(*oBytes) ? *std::move(oBytes) : DecodeWindows1252(*oBytes);
    if (sText.starts_with("\xEF\xBB\xBF"))
        sText.erase(0, 3);
    std::replace(sText.begin(), sText.end(), '\0', ' ');
    Search oSearch{{sText, {}}, sSection, sKey, std::nullopt};
    ini_parse_stream(&Lines::Next, &oSearch.oLines, &Search::OnEntry, &oSearch);
    return oSearch.oValue;
}

Long IniReader::ReadInteger(std::string_view sFile, std::string_view sSection, std::string_view sKey,
                            Long lDefault) const {
    const std::optional<std::string> oValue = Value(sFile, sSection, sKey);
    if (!oValue)
        return lDefault;
    std::string_view sDigits = *oValue;
    if (sDigits.starts_with('+') && !sDigits.starts_with("+-"))
        sDigits.remove_prefix(1);
    Long lValue = 0;
    if (std::from_chars(sDigits.data(), sDigits.data() + sDigits.size(), lValue).ec == std::errc::result_out_of_range)
        return sDigits.starts_with('-') ? std::numeric_limits<Long>::min() : std::numeric_limits<Long>::max();
    return lValue;
}

std::string IniReader::ReadString(std::string_view sFile, std::string_view sSection, std::string_view sKey,
                                  std::string_view sDefault, std::size_t nMaximum) const {
    const std::optional<std::string> oValue = Value(sFile, sSection, sKey);
    return std::string(FirstCharacters(oValue ? std::string_view(*oValue) : sDefault, nMaximum));
}

} // namespace corvane
