#include "adapters/common/Encoding.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace corvane {

namespace {

// What the bytes from 0x80 to 0x9F represent; from 0xA0 on a byte is its own code point.
constexpr std::array<std::uint16_t, 32> codePointsFrom80 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

struct Utf8Character {
    char bytes[3];
    std::uint8_t byteCount;
};

constexpr std::array<Utf8Character, 256> MakeTable() {
    std::array<Utf8Character, 256> table{};
    for (unsigned i = 0; i < 256; ++i) {
        const unsigned u = i >= 0x80 && i < 0xA0 ? codePointsFrom80[i - 0x80] : i;
        if (u < 0x80)
            table[i] = {{static_cast<char>(u)}, 1};
        else if (u < 0x800)
            table[i] = {{static_cast<char>(0xC0 | (u >> 6)), static_cast<char>(0x80 | (u & 0x3F))}, 2};
        else
            table[i] = {{static_cast<char>(0xE0 | (u >> 12)), static_cast<char>(0x80 | ((u >> 6) & 0x3F)),
                         static_cast<char>(0x80 | (u & 0x3F))},
                        3};
    }
    return table;
}
constexpr auto windows1252 = MakeTable();

std::size_t AsciiPrefix(std::string_view bytes) noexcept {
    std::size_t i = 0;
    for (; i + 8 <= bytes.size(); i += 8) {
        std::uint64_t u = 0;
        std::memcpy(&u, bytes.data() + i, 8);
        if (u & 0x8080808080808080u)
            break;
    }
    while (i < bytes.size() && static_cast<unsigned char>(bytes[i]) < 0x80)
        ++i;
    return i;
}

bool IsContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// The length of the well-formed character at the text's start, or 0.
std::size_t Utf8Length(std::string_view text) noexcept {
    const auto At = [&](std::size_t i) -> unsigned { return static_cast<unsigned char>(text[i]); };
    const unsigned c = At(0);
    const std::size_t n = c < 0x80 ? 1 : c < 0xC2 ? 0 : c < 0xE0 ? 2 : c < 0xF0 ? 3 : c < 0xF5 ? 4 : 0;
    if (n < 2 || text.size() < n)
        return n == 1 ? 1 : 0;
    for (std::size_t i = 1; i < n; ++i)
        if (!IsContinuation(text[i]))
            return 0;
    const bool overlong = (c == 0xE0 && At(1) < 0xA0) || (c == 0xF0 && At(1) < 0x90);
    const bool beyond = (c == 0xED && At(1) >= 0xA0) || (c == 0xF4 && At(1) >= 0x90);
    return overlong || beyond ? 0 : n;
}

} // namespace

bool IsAscii(std::string_view bytes) noexcept {
    return AsciiPrefix(bytes) == bytes.size();
}

std::string DecodeWindows1252(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 16);
    while (!bytes.empty()) {
        const std::size_t plain = AsciiPrefix(bytes);
        text.append(bytes.substr(0, plain));
        bytes.remove_prefix(plain);
        for (; !bytes.empty() && static_cast<unsigned char>(bytes.front()) >= 0x80; bytes.remove_prefix(1)) {
            const Utf8Character& character = windows1252[static_cast<unsigned char>(bytes.front())];
            text.append(character.bytes, character.byteCount);
        }
    }
    return text;
}

bool IsUtf8(std::string_view bytes) noexcept {
    for (;;) {
        bytes.remove_prefix(AsciiPrefix(bytes));
        if (bytes.empty())
            return true;
        const std::size_t n = Utf8Length(bytes);
        if (n == 0)
            return false;
        bytes.remove_prefix(n);
    }
}

std::string_view FirstCharacters(std::string_view text, std::size_t maximum) noexcept {
    std::size_t i = 0;
    for (std::size_t n = 0; i < text.size(); ++i)
        if (!IsContinuation(text[i]) && n++ == maximum)
            break;
    return text.substr(0, i);
}

} // namespace corvane
