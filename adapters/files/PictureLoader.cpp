#include "adapters/files/PictureLoader.h"

#include "adapters/common/Paths.h"
#include "corvane/base/Failure.h"

#include <algorithm>
#include <cctype>
#include <cstdint>

namespace corvane {

namespace {

// n bytes at i, the lowest first; the caller knows that they are there.
std::uint32_t Little(std::string_view sBytes, std::size_t i, std::size_t n) {
    std::uint32_t u = 0;
    for (std::size_t k = n; k-- > 0;)
        u = (u << 8) | static_cast<unsigned char>(sBytes[i + k]);
    return u;
}

bool IsPng(std::string_view sBytes) {
    using namespace std::string_view_literals;
    constexpr std::size_t nHeader = 33; // the signature and the first chunk
    return sBytes.size() >= nHeader && sBytes.starts_with("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR"sv) &&
           Little(sBytes, 16, 4) != 0 && Little(sBytes, 20, 4) != 0;
}

bool IsBmp(std::string_view sBytes) {
    if (sBytes.size() < 26 || !sBytes.starts_with("BM"))
        return false;
    const std::uint32_t nPixels = Little(sBytes, 10, 4);
    const std::uint32_t nHeader = Little(sBytes, 14, 4);
    const bool bOld = nHeader == 12; // with sizes of 16 bits
    constexpr std::uint32_t aHeaders[] = {12, 40, 52, 56, 64, 108, 124};
    if (std::find(std::begin(aHeaders), std::end(aHeaders), nHeader) == std::end(aHeaders) ||
        sBytes.size() < 14 + nHeader || nPixels < 14 + nHeader || nPixels > sBytes.size())
        return false;
    const std::uint32_t nWidth = bOld ? Little(sBytes, 18, 2) : Little(sBytes, 18, 4);
    const std::uint32_t nHeight = bOld ? Little(sBytes, 20, 2) : Little(sBytes, 22, 4); // negative: from the top down
    const std::uint32_t nPlanes = Little(sBytes, bOld ? 22 : 26, 2);
    const std::uint32_t nBits = Little(sBytes, bOld ? 24 : 28, 2);
    constexpr std::uint32_t aBits[] = {1, 2, 4, 8, 16, 24, 32};
    return nWidth != 0 && nWidth < 0x80000000u && nHeight != 0 && nPlanes == 1 &&
           std::find(std::begin(aBits), std::end(aBits), nBits) != std::end(aBits);
}

bool IsIco(std::string_view sBytes) {
    if (sBytes.size() < 22 || Little(sBytes, 0, 4) != 0x00010000u)
        return false;
    const std::size_t nPictures = Little(sBytes, 4, 2);
    const std::size_t nDirectory = 6 + 16 * nPictures;
    if (nPictures == 0 || sBytes.size() < nDirectory)
        return false;
    const std::size_t nSize = Little(sBytes, 6 + 8, 4);
    const std::size_t iPicture = Little(sBytes, 6 + 12, 4);
    return nSize != 0 && iPicture >= nDirectory && iPicture <= sBytes.size() && nSize <= sBytes.size() - iPicture;
}

bool IsGif(std::string_view sBytes) {
    return sBytes.size() >= 13 && (sBytes.starts_with("GIF87a") || sBytes.starts_with("GIF89a"));
}

bool IsJpeg(std::string_view sBytes) {
    return sBytes.size() >= 4 && sBytes.starts_with("\xFF\xD8\xFF") && static_cast<unsigned char>(sBytes[3]) >= 0xC0;
}

// Drops what stands up to the mark and the mark itself; all when it doesn't come.
void DropThrough(std::string_view& sText, std::string_view sMark) {
    const std::size_t i = sText.find(sMark);
    sText.remove_prefix(i == std::string_view::npos ? sText.size() : i + sMark.size());
}

bool IsSvg(std::string_view sText) {
    if (sText.starts_with("\xEF\xBB\xBF"))
        sText.remove_prefix(3);
    for (;;) {
        while (!sText.empty() && std::isspace(static_cast<unsigned char>(sText.front())))
            sText.remove_prefix(1);
        if (sText.starts_with("<?")) {
            DropThrough(sText, "?>");
        } else if (sText.starts_with("<!--")) {
            DropThrough(sText, "-->");
        } else if (sText.starts_with("<!DOCTYPE")) {
            const std::size_t iEnd = sText.find('>');
            if (sText.find('[') < iEnd)
                DropThrough(sText, "]");
            DropThrough(sText, ">");
        } else {
            break;
        }
    }
    if (sText.starts_with("<svg:svg"))
        sText.remove_prefix(4);
    return sText.size() > 4 && (sText.starts_with("<svg") || sText.starts_with(":svg")) &&
           (std::isspace(static_cast<unsigned char>(sText[4])) || sText[4] == '>' || sText[4] == '/');
}

} // namespace

std::optional<Picture::Format> PictureLoader::FormatOf(std::string_view sBytes) {
    if (IsPng(sBytes))
        return Picture::Format::Png;
    if (IsBmp(sBytes))
        return Picture::Format::Bmp;
    if (IsIco(sBytes))
        return Picture::Format::Ico;
    if (IsGif(sBytes))
        return Picture::Format::Gif;
    if (IsJpeg(sBytes))
        return Picture::Format::Jpeg;
    if (IsSvg(sBytes))
        return Picture::Format::Svg;
    return std::nullopt;
}

Ref<Picture> PictureLoader::Load(std::string_view sPath, std::string_view sName) {
    std::string sBytes = ReadFileOrFail(sPath);
    const std::optional<Picture::Format> oFormat = FormatOf(sBytes);
    if (!oFormat)
        Fail(FailureNumber::TypeMismatch,
             "The file \"" + std::string(sPath) + "\" isn't a supported picture (PNG, BMP, ICO, GIF, JPEG or SVG)");
    return New<Picture>(std::string(sName), *oFormat, std::move(sBytes));
}

} // namespace corvane
