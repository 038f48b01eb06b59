#include "TextFile.h"

#include "Errors.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>

namespace studies {
namespace {

void Append(std::string& sText, char32_t c) {
    const auto Add = [&](char32_t nBits) { sText += static_cast<char>(static_cast<unsigned char>(nBits)); };
    if (c < 0x80) {
        Add(c);
    } else if (c < 0x800) {
        Add(0xC0 | (c >> 6));
        Add(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        Add(0xE0 | (c >> 12));
        Add(0x80 | ((c >> 6) & 0x3F));
        Add(0x80 | (c & 0x3F));
    } else {
        Add(0xF0 | (c >> 18));
        Add(0x80 | ((c >> 12) & 0x3F));
        Add(0x80 | ((c >> 6) & 0x3F));
        Add(0x80 | (c & 0x3F));
    }
}

bool IsUtf8(std::string_view sBytes) {
    std::size_t nFollow = 0; // bytes that the character still needs
    for (const char cByte : sBytes) {
        const auto c = static_cast<unsigned char>(cByte);
        if (nFollow > 0) {
            if ((c & 0xC0) != 0x80)
                return false;
            --nFollow;
        } else if (c >= 0x80) {
            if (c < 0xC2 || c > 0xF4)
                return false;
            nFollow = c < 0xE0 ? 1 : c < 0xF0 ? 2 : 3;
        }
    }
    return nFollow == 0;
}

std::string FromWindows1252(std::string_view sBytes) {
    // 0x80 to 0x9F; the other bytes are the characters of their number, as are the five that it leaves undefined.
    static constexpr std::array<char32_t, 32> aMiddle{0x20AC, 0x81,   0x201A, 0x192,  0x201E, 0x2026, 0x2020, 0x2021,
                                                      0x2C6,  0x2030, 0x160,  0x2039, 0x152,  0x8D,   0x17D,  0x8F,
                                                      0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                      0x2DC,  0x2122, 0x161,  0x203A, 0x153,  0x9D,   0x17E,  0x178};
    std::string sText;
    sText.reserve(sBytes.size() + sBytes.size() / 8);
    for (const char cByte : sBytes) {
        const auto c = static_cast<unsigned char>(cByte);
        Append(sText, c >= 0x80 && c < 0xA0 ? aMiddle[c - 0x80U] : c);
    }
    return sText;
}

std::string FromUtf16(std::string_view sBytes, bool bLowFirst) {
    const auto Unit = [&](std::size_t i) {
        const auto c1 = static_cast<unsigned char>(sBytes[i]);
        const auto c2 = static_cast<unsigned char>(sBytes[i + 1]);
        return static_cast<char32_t>(bLowFirst ? c1 | c2 << 8 : c1 << 8 | c2);
    };
    std::string sText;
    for (std::size_t i = 0; i + 1 < sBytes.size(); i += 2) {
        char32_t c = Unit(i);
        if (c >= 0xD800 && c < 0xE000) { // half of a character, with the other half behind it
            const char32_t cNext = c < 0xDC00 && i + 3 < sBytes.size() ? Unit(i + 2) : 0;
            const bool bWhole = cNext >= 0xDC00 && cNext < 0xE000;
            c = bWhole ? 0x10000 + ((c - 0xD800) << 10) + (cNext - 0xDC00) : 0xFFFD;
            i += bWhole ? 2 : 0;
        }
        Append(sText, c);
    }
    return sText;
}

} // namespace

std::string DecodeText(std::string sBytes, const std::string& sName) {
    const std::string_view sView = sBytes;
    std::string sText;
    if (sView.substr(0, 2) == "\xFF\xFE" || sView.substr(0, 2) == "\xFE\xFF")
        sText = FromUtf16(sView.substr(2), sView[0] == '\xFF');
    else if (sView.substr(0, 3) == "\xEF\xBB\xBF")
        sText = sView.substr(3);
    else
        sText = std::move(sBytes);
    if (sText.find('\0') != std::string::npos)
        FailWith(sName + " isn't a text file. Save the table as text with commas or tabs (CSV) in the program that it "
                         "comes from, and choose that file.");
    return IsUtf8(sText) ? sText : FromWindows1252(sText);
}

std::string ReadTextFile(const std::string& sPath) {
    std::error_code oIgnored; // what can't be looked at can't be opened either
    if (std::filesystem::is_directory(sPath, oIgnored))
        FailWith("“" + sPath + "” is a folder. Choose a file in it.");
    std::ifstream oStream(sPath, std::ios::binary);
    if (!oStream) {
        if (errno == ENOENT || errno == ENOTDIR)
            FailWith("There is no file “" + sPath + "”. It may have been moved or renamed; choose it again.");
        FailWith("The file “" + sPath + "” can't be read: " + std::strerror(errno) + ".");
    }
    std::stringstream oText;
    oText << oStream.rdbuf();
    const std::string sName = std::filesystem::path(sPath).filename().string();
    if (oStream.bad())
        FailWith("The file “" + sPath + "” can't be read to its end.");
    if (oText.view().empty())
        FailWith(sName + " is empty. Choose a file with a row of names and rows of values.");
    return DecodeText(std::move(oText).str(), sName);
}

} // namespace studies
