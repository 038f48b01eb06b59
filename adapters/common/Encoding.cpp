#include "adapters/common/Encoding.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace corvane {

namespace {

// What the bytes from 0x80 to 0x9F stand for; from 0xA0 on a byte is its own code point.
constexpr std::array<std::uint16_t, 32> aHigh = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

struct Utf8Character {
    char aBytes[3];
    std::uint8_t nBytes;
};

constexpr std::array<Utf8Character, 256> MakeTable() {
    std::array<Utf8Character, 256> aTable{};
    for (unsigned i = 0; i < 256; ++i) {
        const unsigned u = i >= 0x80 && i < 0xA0 ? aHigh[i - 0x80] : i;
        if (u < 0x80)
            aTable[i] = {{static_cast<char>(u)}, 1};
        else if (u < 0x800)
            aTable[i] = {{static_cast<char>(0xC0 | (u >> 6)), static_cast<char>(0x80 | (u & 0x3F))}, 2};
        else
            aTable[i] = {{static_cast<char>(0xE0 | (u >> 12)), static_cast<char>(0x80 | ((u >> 6) & 0x3F)),
                          static_cast<char>(0x80 | (u & 0x3F))},
                         3};
    }
    return aTable;
}
constexpr auto aWindows1252 = MakeTable();

std::size_t AsciiPrefix(std::string_view sBytes) noexcept {
    std::size_t i = 0;
    for (; i + 8 <= sBytes.size(); i += 8) {
        std::uint64_t u = 0;
        std::memcpy(&u, sBytes.data() + i, 8);
        if (u & 0x8080808080808080u)
            break;
    }
    while (i < sBytes.size() && static_cast<unsigned char>(sBytes[i]) < 0x80)
        ++i;
    return i;
}

bool IsContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// The length of the well-formed character at the text's start, or 0.
std::size_t Utf8Length(std::string_view sText) noexcept {
    const auto At = [&](std::size_t i) -> unsigned { return static_cast<unsigned char>(sText[i]); };
    const unsigned c = At(0);
    const std::size_t n = c < 0x80 ? 1 : c < 0xC2 ? 0 : c < 0xE0 ? 2 : c < 0xF0 ? 3 : c < 0xF5 ? 4 : 0;
    if (n < 2 || sText.size() < n)
        return n == 1 ? 1 : 0;
    for (std::size_t i = 1; i < n; ++i)
        if (!IsContinuation(sText[i]))
            return 0;
    const bool bOverlong = (c == 0xE0 && At(1) < 0xA0) || (c == 0xF0 && At(1) < 0x90);
    const bool bBeyond = (c == 0xED && At(1) >= 0xA0) || (c == 0xF4 && At(1) >= 0x90);
    return bOverlong || bBeyond ? 0 : n;
}

} // namespace

bool IsAscii(std::string_view sBytes) noexcept {
    return AsciiPrefix(sBytes) == sBytes.size();
}

std::string DecodeWindows1252(std::string_view sBytes) {
    std::string sText;
    sText.reserve(sBytes.size() + sBytes.size() / 16);
    while (!sBytes.empty()) {
        const std::size_t nPlain = AsciiPrefix(sBytes);
        sText.append(sBytes.substr(0, nPlain));
        sBytes.remove_prefix(nPlain);
        for (; !sBytes.empty() && static_cast<unsigned char>(sBytes.front()) >= 0x80; sBytes.remove_prefix(1)) {
            const Utf8Character& oCharacter = aWindows1252[static_cast<unsigned char>(sBytes.front())];
            sText.append(oCharacter.aBytes, oCharacter.nBytes);
        }
    }
    return sText;
}

bool IsUtf8(std::string_view sBytes) noexcept {
    for (;;) {
        sBytes.remove_prefix(AsciiPrefix(sBytes));
        if (sBytes.empty())
            return true;
        const std::size_t n = Utf8Length(sBytes);
        if (n == 0)
            return false;
        sBytes.remove_prefix(n);
    }
}

std::string_view FirstCharacters(std::string_view sText, std::size_t nMaximum) noexcept {
    std::size_t i = 0;
    for (std::size_t n = 0; i < sText.size(); ++i)
        if (!IsContinuation(sText[i]) && n++ == nMaximum)
            break;
    return sText.substr(0, i);
}

} // namespace corvane
