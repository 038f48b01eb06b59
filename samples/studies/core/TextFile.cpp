#include "TextFile.h"

#include "Errors.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iconv.h>
#include <memory>
#include <optional>
#include <sstream>
#include <string_view>

namespace studies {
namespace {

// As UTF-8; nothing for bytes that aren't in the encoding, if it is strict. Otherwise what isn't a character of UTF-16
// becomes U+FFFD, and a byte that Windows-1252 leaves undefined the character of its number.
std::optional<std::string> Converted(std::string_view bytes, const char* encoding, bool strict) {
    const std::unique_ptr<void, int (*)(iconv_t)> conversion(::iconv_open("UTF-8", encoding), &::iconv_close);
    const std::size_t unit = std::string_view(encoding).substr(0, 6) == "UTF-16" ? 2 : 1;
    char* in = const_cast<char*>(bytes.data()); // only read
    std::size_t left = bytes.size();
    std::string text;
    std::array<char, 65536> piece{};
    while (left > 0) {
        char* out = piece.data();
        std::size_t space = piece.size();
        const bool isDone = ::iconv(conversion.get(), &in, &left, &out, &space) != static_cast<std::size_t>(-1);
        const bool isFull = !isDone && errno == E2BIG;
        text.append(piece.data(), out);
        if (isDone || isFull)
            continue;
        if (strict)
            return {};
        text += unit == 1 ? std::string{'\xC2', *in} : "\uFFFD";
        in += std::min(unit, left);
        left -= std::min(unit, left);
    }
    return text;
}

} // namespace

std::string DecodeText(std::string bytes, const std::string& name, TextEncoding encoding) {
    const std::string_view mark = std::string_view(bytes).substr(0, 2);
    const bool isMarked = mark == "\xFF\xFE" || mark == "\xFE\xFF";
    if (encoding == TextEncoding::Utf16 || (encoding == TextEncoding::Automatic && isMarked))
        bytes = *Converted(std::string_view(bytes).substr(isMarked ? 2 : 0),
                           mark == "\xFE\xFF" ? "UTF-16BE" : "UTF-16LE", false);
    else if (std::string_view(bytes).substr(0, 3) == "\xEF\xBB\xBF")
        bytes.erase(0, 3);
    if (bytes.find('\0') != std::string::npos)
        FailWith(Translated("%1 isn't a text file. Save the table as text with commas or tabs (CSV) in the program "
                            "that it comes from, and choose that file.",
                            {name}));
    if (encoding != TextEncoding::Windows1252) {
        if (std::optional<std::string> text = Converted(bytes, "UTF-8", true))
            return *std::move(text);
        if (encoding != TextEncoding::Automatic)
            FailWith(Translated("%1 isn't in that encoding.", {name}));
    }
    return *Converted(bytes, "WINDOWS-1252", false);
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
