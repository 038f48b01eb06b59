#include "adapters/files/PictureLoader.h"

#include "adapters/common/Paths.h"
#include "corvane/base/Failure.h"

#include <algorithm>
#include <cctype>
#include <cstdint>

namespace corvane {

namespace {

// n bytes at i, the lowest first; the caller knows that they are there.
std::uint32_t Little(std::string_view bytes, std::size_t i, std::size_t n) {
    std::uint32_t u = 0;
    for (std::size_t k = n; k-- > 0;)
        u = (u << 8) | static_cast<unsigned char>(bytes[i + k]);
    return u;
}

bool IsPng(std::string_view bytes) {
    using namespace std::string_view_literals;
    constexpr std::size_t header = 33; // the signature and the first chunk
    return bytes.size() >= header && bytes.starts_with("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR"sv) &&
           Little(bytes, 16, 4) != 0 && Little(bytes, 20, 4) != 0;
}

bool IsBmp(std::string_view bytes) {
    if (bytes.size() < 26 || !bytes.starts_with("BM"))
        return false;
    const std::uint32_t pixels = Little(bytes, 10, 4);
    const std::uint32_t header = Little(bytes, 14, 4);
    const bool old = header == 12; // with sizes of 16 bits
    constexpr std::uint32_t headers[] = {12, 40, 52, 56, 64, 108, 124};
    if (std::find(std::begin(headers), std::end(headers), header) == std::end(headers) || bytes.size() < 14 + header ||
        pixels < 14 + header || pixels > bytes.size())
        return false;
    const std::uint32_t width = old ? Little(bytes, 18, 2) : Little(bytes, 18, 4);
    const std::uint32_t height = old ? Little(bytes, 20, 2) : Little(bytes, 22, 4); // negative: from the top down
    const std::uint32_t planes = Little(bytes, old ? 22 : 26, 2);
    const std::uint32_t bitCount = Little(bytes, old ? 24 : 28, 2);
    constexpr std::uint32_t bits[] = {1, 2, 4, 8, 16, 24, 32};
    return width != 0 && width < 0x80000000u && height != 0 && planes == 1 &&
           std::find(std::begin(bits), std::end(bits), bitCount) != std::end(bits);
}

bool IsIco(std::string_view bytes) {
    if (bytes.size() < 22 || Little(bytes, 0, 4) != 0x00010000u)
        return false;
    const std::size_t pictures = Little(bytes, 4, 2);
    const std::size_t directory = 6 + 16 * pictures;
    if (pictures == 0 || bytes.size() < directory)
        return false;
    const std::size_t size = Little(bytes, 6 + 8, 4);
    const std::size_t picture = Little(bytes, 6 + 12, 4);
    return size != 0 && picture >= directory && picture <= bytes.size() && size <= bytes.size() - picture;
}

bool IsGif(std::string_view bytes) {
    return bytes.size() >= 13 && (bytes.starts_with("GIF87a") || bytes.starts_with("GIF89a"));
}

bool IsJpeg(std::string_view bytes) {
    return bytes.size() >= 4 && bytes.starts_with("\xFF\xD8\xFF") && static_cast<unsigned char>(bytes[3]) >= 0xC0;
}

// Drops what is up to the mark and the mark itself; all when it doesn't come.
void DropThrough(std::string_view& text, std::string_view mark) {
    const std::size_t i = text.find(mark);
    text.remove_prefix(i == std::string_view::npos ? text.size() : i + mark.size());
}

bool IsSvg(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF"))
        text.remove_prefix(3);
    for (;;) {
        while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front())))
            text.remove_prefix(1);
        if (text.starts_with("<?")) {
            DropThrough(text, "?>");
        } else if (text.starts_with("<!--")) {
            DropThrough(text, "-->");
        } else if (text.starts_with("<!DOCTYPE")) {
            const std::size_t end = text.find('>');
            if (text.find('[') < end)
                DropThrough(text, "]");
            DropThrough(text, ">");
        } else {
            break;
        }
    }
    if (text.starts_with("<svg:svg"))
        text.remove_prefix(4);
    return text.size() > 4 && (text.starts_with("<svg") || text.starts_with(":svg")) &&
           (std::isspace(static_cast<unsigned char>(text[4])) || text[4] == '>' || text[4] == '/');
}

} // namespace

std::optional<Picture::Format> PictureLoader::FormatOf(std::string_view bytes) {
    if (IsPng(bytes))
        return Picture::Format::Png;
    if (IsBmp(bytes))
        return Picture::Format::Bmp;
    if (IsIco(bytes))
        return Picture::Format::Ico;
    if (IsGif(bytes))
        return Picture::Format::Gif;
    if (IsJpeg(bytes))
        return Picture::Format::Jpeg;
    if (IsSvg(bytes))
        return Picture::Format::Svg;
    return std::nullopt;
}

Ref<Picture> PictureLoader::Load(std::string_view path, std::string_view name) {
    std::string bytes = ReadFileOrFail(path);
    const std::optional<Picture::Format> format = FormatOf(bytes);
    if (!format)
        Fail(FailureNumber::TypeMismatch,
             "The file \"" + std::string(path) + "\" isn't a supported picture (PNG, BMP, ICO, GIF, JPEG or SVG)");
    return New<Picture>(std::string(name), *format, std::move(bytes));
}

} // namespace corvane
