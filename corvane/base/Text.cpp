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

// Reads one code point at i, folded, and moves i behind it. A byte that begins no UTF-8 sequence stands for itself.
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
    if (u >= 0xC0 && u <= 0xDE && u != 0xD7)
        return u + 32;
    switch (u) {
    case 0x152: // OE ligature
    case 0x160: // S with caron
    case 0x17D: // Z with caron
        return u + 1;
    case 0x178: // Y with diaeresis
        return 0xFF;
    default:
        return u;
    }
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
    if (sLeft == sRight)
        return true;
    return CompareText(sLeft, sRight) == 0;
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
    // The low bits of a product know nothing of the high bits, where the last characters of a block stand.
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
