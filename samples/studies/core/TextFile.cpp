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

void Append(std::string& text, char32_t c) {
    const auto Add = [&](char32_t bits) { text += static_cast<char>(static_cast<unsigned char>(bits)); };
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

bool IsUtf8(std::string_view bytes) {
    std::size_t follow = 0; // bytes that the character still needs
    for (const char byte : bytes) {
        const auto c = static_cast<unsigned char>(byte);
        if (follow > 0) {
            if ((c & 0xC0) != 0x80)
                return false;
            --follow;
        } else if (c >= 0x80) {
            if (c < 0xC2 || c > 0xF4)
                return false;
            follow = c < 0xE0 ? 1 : c < 0xF0 ? 2 : 3;
        }
    }
    return follow == 0;
}

std::string FromWindows1252(std::string_view bytes) {
    // 0x80 to 0x9F; the other bytes are the characters of their number, as are the five that it leaves undefined.
    static constexpr std::array<char32_t, 32> middle{0x20AC, 0x81,   0x201A, 0x192,  0x201E, 0x2026, 0x2020, 0x2021,
                                                     0x2C6,  0x2030, 0x160,  0x2039, 0x152,  0x8D,   0x17D,  0x8F,
                                                     0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                     0x2DC,  0x2122, 0x161,  0x203A, 0x153,  0x9D,   0x17E,  0x178};
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 8);
    for (const char byte : bytes) {
        const auto c = static_cast<unsigned char>(byte);
        Append(text, c >= 0x80 && c < 0xA0 ? middle[c - 0x80U] : c);
    }
    return text;
}

std::string FromUtf16(std::string_view bytes, bool lowFirst) {
    const auto Unit = [&](std::size_t i) {
        const auto c1 = static_cast<unsigned char>(bytes[i]);
        const auto c2 = static_cast<unsigned char>(bytes[i + 1]);
        return static_cast<char32_t>(lowFirst ? c1 | c2 << 8 : c1 << 8 | c2);
    };
    std::string text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        char32_t c = Unit(i);
        if (c >= 0xD800 && c < 0xE000) { // half of a character, with the other half behind it
            const char32_t next = c < 0xDC00 && i + 3 < bytes.size() ? Unit(i + 2) : 0;
            const bool whole = next >= 0xDC00 && next < 0xE000;
            c = whole ? 0x10000 + ((c - 0xD800) << 10) + (next - 0xDC00) : 0xFFFD;
            i += whole ? 2 : 0;
        }
        Append(text, c);
    }
    return text;
}

} // namespace

std::string DecodeText(std::string bytes, const std::string& name, TextEncoding encoding) {
    const std::string_view view = bytes;
    const bool isMarked = view.substr(0, 2) == "\xFF\xFE" || view.substr(0, 2) == "\xFE\xFF";
    std::string text;
    if (isMarked && encoding == TextEncoding::Automatic)
        text = FromUtf16(view.substr(2), view[0] == '\xFF');
    else if (encoding == TextEncoding::Utf16)
        text = FromUtf16(view.substr(isMarked ? 2 : 0), !isMarked || view[0] == '\xFF');
    else if (view.substr(0, 3) == "\xEF\xBB\xBF")
        text = view.substr(3);
    else
        text = std::move(bytes);
    if (text.find('\0') != std::string::npos)
        FailWith(Translated("%1 isn't a text file. Save the table as text with commas or tabs (CSV) in the program "
                            "that it comes from, and choose that file.",
                            {name}));
    if (encoding == TextEncoding::Windows1252 || (encoding == TextEncoding::Automatic && !IsUtf8(text)))
        return FromWindows1252(text);
    if (!IsUtf8(text))
        FailWith(Translated("%1 isn't in that encoding.", {name}));
    return text;
}

std::string ReadTextFile(const std::string& path, TextEncoding encoding) {
    std::error_code ignored; // what can't be looked at can't be opened either
    if (std::filesystem::is_directory(path, ignored))
        FailWith(Translated("“%1” is a folder. Choose a file in it.", {path}));
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        if (errno == ENOENT || errno == ENOTDIR)
            FailWith(Translated("There is no file “%1”. It may have been moved or renamed; choose it again.", {path}));
        FailWith(Translated("The file “%1” can't be read: %2.", {path, std::strerror(errno)}));
    }
    std::stringstream text;
    text << stream.rdbuf();
    const std::string name = std::filesystem::path(path).filename().string();
    if (stream.bad())
        FailWith(Translated("The file “%1” can't be read to its end.", {path}));
    if (text.view().empty())
        FailWith(Translated("%1 is empty. Choose a file with a row of names and rows of values.", {name}));
    return DecodeText(std::move(text).str(), name, encoding);
}

} // namespace studies
