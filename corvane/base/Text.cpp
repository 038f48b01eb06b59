#include "corvane/base/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace corvane {

namespace {

constexpr std::array<unsigned char, 128> MakeSmall() {
    std::array<unsigned char, 128> aSmall{};
    for (std::size_t i = 0; i < aSmall.size(); ++i)
        aSmall[i] = static_cast<unsigned char>(i >= 'A' && i <= 'Z' ? i + 32 : i);
    return aSmall;
}
constexpr auto aSmall = MakeSmall();

constexpr bool IsAscii(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}

// Capital letters whose small ones are at one distance, or behind each of them.
struct Capitals {
    std::uint32_t uFirst, uLast;
    std::int32_t nToSmall; // 0 for pairs, the capital letter at the same parity as the first
};
constexpr Capitals aCapitals[] = {
    {0x100, 0x12F, 0},   {0x132, 0x137, 0},    {0x139, 0x148, 0},  {0x14A, 0x177, 0},  {0x178, 0x178, -121},
    {0x179, 0x17E, 0},   {0x1CD, 0x1DC, 0},    {0x1DE, 0x1EF, 0},  {0x1F8, 0x21F, 0},  {0x222, 0x233, 0},
    {0x386, 0x386, 38},  {0x388, 0x38A, 37},   {0x38C, 0x38C, 64}, {0x38E, 0x38F, 63}, {0x391, 0x3A1, 32},
    {0x3A3, 0x3AB, 32},  {0x400, 0x40F, 80},   {0x410, 0x42F, 32}, {0x460, 0x481, 0},  {0x48A, 0x4BF, 0},
    {0x4C0, 0x4C0, 15},  {0x4C1, 0x4CE, 0},    {0x4D0, 0x52F, 0},  {0x531, 0x556, 48}, {0x1E00, 0x1E95, 0},
    {0x1EA0, 0x1EFF, 0}, {0xFF21, 0xFF3A, 32},
};

std::uint32_t SmallBeyondLatin1(std::uint32_t u) noexcept {
    for (const Capitals& oRange : aCapitals) {
        if (u < oRange.uFirst)
            break;
        if (u > oRange.uLast)
            continue;
        if (oRange.nToSmall == 0)
            return u + ((u - oRange.uFirst) % 2 == 0 ? 1 : 0);
        return static_cast<std::uint32_t>(static_cast<std::int32_t>(u) + oRange.nToSmall);
    }
    return u;
}

// Reads one code point at i, folded, and moves i behind it. A byte that begins no UTF-8 sequence represents itself.
std::uint32_t NextFolded(std::string_view sText, std::size_t& i) noexcept {
    const auto c = static_cast<unsigned char>(sText[i++]);
    if (c < 0x80)
        return aSmall[c];
    const int nMore = c >= 0xF0 ? 3 : c >= 0xE0 ? 2 : c >= 0xC2 ? 1 : 0;
    if (nMore == 0 || i + static_cast<std::size_t>(nMore) > sText.size())
        return c;
    std::uint32_t u = c & (0x3Fu >> nMore);
    for (int n = 0; n < nMore; ++n)
        u = (u << 6) | (static_cast<unsigned char>(sText[i++]) & 0x3Fu);
    if (u < 0x100)
        return u >= 0xC0 && u <= 0xDE && u != 0xD7 ? u + 32 : u;
    return u < 0x1F00 || u > 0xFF00 ? SmallBeyondLatin1(u) : u;
}

std::uint64_t HashByCharacters(std::string_view sText) noexcept {
    std::uint64_t uHash = 0xCBF29CE484222325u; // FNV-1a, 64 bits
    for (std::size_t i = 0; i < sText.size();) {
        uHash ^= NextFolded(sText, i);
        uHash *= 0x100000001B3u;
    }
    return uHash;
}

void AppendUtf8(std::string& sText, std::uint32_t u) {
    if (u < 0x80) {
        sText += static_cast<char>(u);
    } else if (u < 0x800) {
        sText += static_cast<char>(0xC0 | (u >> 6));
        sText += static_cast<char>(0x80 | (u & 0x3F));
    } else if (u < 0x10000) {
        sText += static_cast<char>(0xE0 | (u >> 12));
        sText += static_cast<char>(0x80 | ((u >> 6) & 0x3F));
        sText += static_cast<char>(0x80 | (u & 0x3F));
    } else {
        sText += static_cast<char>(0xF0 | (u >> 18));
        sText += static_cast<char>(0x80 | ((u >> 12) & 0x3F));
        sText += static_cast<char>(0x80 | ((u >> 6) & 0x3F));
        sText += static_cast<char>(0x80 | (u & 0x3F));
    }
}

} // namespace

bool EqualText(std::string_view sLeft, std::string_view sRight) noexcept {
    constexpr std::uint64_t uBeyondAscii = 0x8080808080808080u;
    constexpr std::uint64_t uCaseBit = 0x2020202020202020u;
    // Eight bytes at a time, as long as they are ASCII: whoever differs in more than the bit of case is another.
    std::size_t i = 0;
    const std::size_t nShorter = std::min(sLeft.size(), sRight.size());
    while (i < nShorter) {
        std::uint64_t uLeft = 0;
        std::uint64_t uRight = 0;
        const std::size_t n = std::min(nShorter - i, sizeof uLeft);
        std::memcpy(&uLeft, sLeft.data() + i, n);
        std::memcpy(&uRight, sRight.data() + i, n);
        if (((uLeft | uRight) & uBeyondAscii) != 0)
            break;
        if (uLeft != uRight) {
            if (((uLeft ^ uRight) & ~uCaseBit) != 0)
                return false;
            break;
        }
        i += n;
    }
    return CompareText(sLeft.substr(i), sRight.substr(i)) == 0;
}

int CompareText(std::string_view sLeft, std::string_view sRight) noexcept {
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < sLeft.size() && j < sRight.size()) {
        if (sLeft[i] == sRight[j] && IsAscii(sLeft[i])) {
            ++i;
            ++j;
            continue;
        }
        const std::uint32_t uLeft = NextFolded(sLeft, i);
        const std::uint32_t uRight = NextFolded(sRight, j);
        if (uLeft != uRight)
            return uLeft < uRight ? -1 : 1;
    }
    return i < sLeft.size() ? 1 : j < sRight.size() ? -1 : 0;
}

std::size_t HashText(std::string_view sText) noexcept {
    constexpr std::uint64_t uFactor = 0x9E3779B97F4A7C15u;
    std::uint64_t uHash = sText.size() * uFactor;
    bool bAscii = true;
    // Eight bytes at a time. With this bit set, small and capital letters of ASCII are the same; a few other characters
    // become the same as well, which a hash may do.
    const auto Add = [&](std::uint64_t uBytes) {
        bAscii = bAscii && (uBytes & 0x8080808080808080u) == 0;
        uHash = (uHash ^ (uBytes | 0x2020202020202020u)) * uFactor;
        uHash ^= uHash >> 32;
    };
    std::size_t i = 0;
    for (std::uint64_t uBytes = 0; i + sizeof uBytes <= sText.size(); i += sizeof uBytes) {
        std::memcpy(&uBytes, sText.data() + i, sizeof uBytes);
        Add(uBytes);
    }
    if (i < sText.size()) {
        std::uint64_t uBytes = 0;
        std::memcpy(&uBytes, sText.data() + i, sText.size() - i);
        Add(uBytes);
    }
    if (!bAscii)
        return HashByCharacters(sText);
    // The low bits of a product know nothing of the high bits, where the last characters of a block are.
    uHash *= uFactor;
    return uHash ^ (uHash >> 32);
}

std::string FoldText(std::string_view sText) {
    std::string sFolded;
    sFolded.reserve(sText.size());
    for (std::size_t i = 0; i < sText.size();) {
        const std::size_t iBefore = i;
        const std::uint32_t u = NextFolded(sText, i);
        if (i == iBefore + 1)
            sFolded += static_cast<char>(u);
        else
            AppendUtf8(sFolded, u);
    }
    return sFolded;
}

std::string ReplaceText(std::string_view sText, char cFrom, char cTo) {
    std::string sReplaced(sText);
    std::replace(sReplaced.begin(), sReplaced.end(), cFrom, cTo);
    return sReplaced;
}

} // namespace corvane
