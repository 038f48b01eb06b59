#include "forms/FormPicture.h"

#include <cstdint>

namespace corvane::forms {

namespace {

constexpr std::string_view prefix = "data:image/";
constexpr std::string_view coding = ";base64,";

std::optional<std::string> Decoded(std::string_view text) {
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    while (text.ends_with('='))
        text.remove_suffix(1);
    std::string bytes;
    bytes.reserve(text.size() * 3 / 4);
    std::uint32_t bits = 0;
    int count = 0;
    for (const char c : text) {
        const std::size_t digit = digits.find(c);
        if (digit == std::string_view::npos)
            return std::nullopt;
        bits = (bits << 6U | static_cast<std::uint32_t>(digit)) & 0xFFFFFFU;
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes += static_cast<char>(bits >> static_cast<unsigned>(count) & 0xFFU);
        }
    }
    return bytes;
}

std::uint32_t NumberAt(const std::string& bytes, std::size_t place) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i)
        number = number << 8U | static_cast<unsigned char>(bytes[place + i]);
    return number;
}

} // namespace

std::optional<FormPicture> PictureIn(std::string_view text) {
    if (!text.starts_with(prefix))
        return std::nullopt;
    const std::size_t end = text.find(coding);
    if (end == std::string_view::npos)
        return std::nullopt;
    FormPicture picture{std::string(text.substr(prefix.size(), end - prefix.size())), {}};
    if (picture.format != "png" && picture.format != "jpeg" && picture.format != "svg+xml")
        return std::nullopt;
    auto bytes = Decoded(text.substr(end + coding.size()));
    if (!bytes || bytes->empty())
        return std::nullopt;
    picture.bytes = std::move(*bytes);
    return picture;
}

std::string WithoutPicture(const std::string& text) {
    const auto picture = PictureIn(text);
    if (!picture)
        return text;
    constexpr std::size_t sizeAt = 16; // of width and height behind the signature and the name of the first part
    if (picture->format == "png" && picture->bytes.size() >= sizeAt + 8)
        return "PNG picture, " + std::to_string(NumberAt(picture->bytes, sizeAt)) + " x " +
               std::to_string(NumberAt(picture->bytes, sizeAt + 4));
    return picture->format == "png" ? "PNG picture" : picture->format == "jpeg" ? "JPEG picture" : "SVG picture";
}

} // namespace corvane::forms
