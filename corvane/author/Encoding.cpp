#include "corvane/author/Encoding.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <iconv.h>
#include <memory>
#include <string_view>

namespace corvane {

namespace {

// Nothing for bytes that aren't in the encoding, if it is strict.
std::optional<std::string> Converted(std::string_view sBytes, const char* sEncoding, bool bStrict) {
    const std::unique_ptr<void, int (*)(iconv_t)> pConversion(::iconv_open("UTF-8", sEncoding), &::iconv_close);
    const std::size_t nUnit = std::string_view(sEncoding).substr(0, 6) == "UTF-16" ? 2 : 1;
    char* pIn = const_cast<char*>(sBytes.data()); // only read
    std::size_t nLeft = sBytes.size();
    std::string sText;
    std::array<char, 65536> aPiece{};
    while (nLeft > 0) {
        char* pOut = aPiece.data();
        std::size_t nSpace = aPiece.size();
        const bool bDone = ::iconv(pConversion.get(), &pIn, &nLeft, &pOut, &nSpace) != static_cast<std::size_t>(-1);
        const bool bFull = !bDone && errno == E2BIG;
        sText.append(aPiece.data(), pOut);
        if (bDone || bFull)
            continue;
        if (bStrict)
            return {};
        sText += nUnit == 1 ? std::string{'\xC2', *pIn} : "\uFFFD";
        pIn += std::min(nUnit, nLeft);
        nLeft -= std::min(nUnit, nLeft);
    }
    return sText;
}

} // namespace

std::optional<std::string> DecodeText(std::string sBytes, TextEncoding eEncoding) {
    const std::string_view sMark = std::string_view(sBytes).substr(0, 2);
    const bool bMarked = sMark == "\xFF\xFE" || sMark == "\xFE\xFF";
    if (eEncoding == TextEncoding::Utf16 || (eEncoding == TextEncoding::Automatic && bMarked))
        return Converted(std::string_view(sBytes).substr(bMarked ? 2 : 0),
                         sMark == "\xFE\xFF" ? "UTF-16BE" : "UTF-16LE", false);
    if (std::string_view(sBytes).substr(0, 3) == "\xEF\xBB\xBF")
        sBytes.erase(0, 3);
    if (eEncoding != TextEncoding::Windows1252) {
        std::optional<std::string> sText = Converted(sBytes, "UTF-8", true);
        if (sText || eEncoding == TextEncoding::Utf8)
            return sText;
    }
    return Converted(sBytes, "WINDOWS-1252", false);
}

} // namespace corvane
