#include "cli/lsp/Document.h"

#include "adapters/common/Encoding.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <map>

namespace corvane::lsp {

namespace {

// The bytes of Windows-1252 that stand for characters beyond 255, by the character in UTF-8.
const std::map<std::string, char>& HighBytes() {
    static const std::map<std::string, char> bytes = [] {
        std::map<std::string, char> all;
        for (int byte = 0x80; byte <= 0xFF; ++byte) {
            const char c = static_cast<char>(byte);
            all.emplace(DecodeWindows1252({&c, 1}), c);
        }
        return all;
    }();
    return bytes;
}

std::size_t LengthOfCharacter(std::string_view text) {
    std::size_t length = 1;
    while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0u) == 0x80)
        ++length;
    return length;
}

// What has no byte is written as UTF-8, and is found by the check.
std::string Encoded(std::string_view text) {
    std::string bytes;
    while (!text.empty()) {
        const std::string_view character = text.substr(0, LengthOfCharacter(text));
        const auto high = HighBytes().find(std::string(character));
        if (character.size() > 1 && high != HighBytes().end())
            bytes += high->second;
        else
            bytes.append(character);
        text.remove_prefix(character.size());
    }
    return bytes;
}

} // namespace

Document::Document(std::string text, bool isUtf8)
    : m_bytes(isUtf8 ? std::move(text) : Encoded(text)), m_isUtf8(isUtf8) {}

std::string Document::TextOf(std::string_view bytes) const {
    return m_isUtf8 ? std::string(bytes) : DecodeWindows1252(bytes);
}

std::size_t Document::OffsetOf(Spot spot) const {
    std::size_t offset = 0;
    for (std::size_t line = 0; line < spot.line; ++line) {
        const std::size_t end = m_bytes.find('\n', offset);
        if (end == std::string::npos)
            return m_bytes.size();
        offset = end + 1;
    }
    const std::size_t end = std::min(m_bytes.find('\n', offset), m_bytes.size());
    for (std::size_t character = 0; character < spot.character && offset < end;) {
        const std::size_t length = m_isUtf8 ? LengthOfCharacter(std::string_view(m_bytes).substr(offset)) : 1;
        character += length == 4 ? 2 : 1;
        offset += length;
    }
    return std::min(offset, end);
}

Spot Document::SpotOf(std::size_t offset) const {
    offset = std::min(offset, m_bytes.size());
    Spot spot;
    std::size_t begin = 0;
    for (std::size_t end; (end = m_bytes.find('\n', begin)) != std::string::npos && end < offset; begin = end + 1)
        ++spot.line;
    while (begin < offset) {
        const std::size_t length = m_isUtf8 ? LengthOfCharacter(std::string_view(m_bytes).substr(begin)) : 1;
        spot.character += length == 4 ? 2 : 1;
        begin += length;
    }
    return spot;
}

std::optional<std::string> PathOf(const std::string& uri) {
    constexpr std::string_view scheme = "file://";
    if (!uri.starts_with(scheme))
        return std::nullopt;
    std::string path;
    for (std::size_t i = uri.find('/', scheme.size()); i < uri.size(); ++i)
        if (uri[i] == '%' && i + 2 < uri.size() && std::isxdigit(static_cast<unsigned char>(uri[i + 1])) != 0 &&
            std::isxdigit(static_cast<unsigned char>(uri[i + 2])) != 0) {
            path += static_cast<char>(std::stoi(uri.substr(i + 1, 2), nullptr, 16));
            i += 2;
        } else {
            path += uri[i];
        }
    return path;
}

std::string UriOf(const std::string& path) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string uri = "file://";
    for (const char c : std::filesystem::absolute(path).lexically_normal().string()) {
        const auto byte = static_cast<unsigned char>(c);
        if (std::isalnum(byte) != 0 || std::string_view("/-._~").find(c) != std::string_view::npos)
            uri += c;
        else
            (uri += '%').append({digits[byte >> 4], digits[byte & 15u]});
    }
    return uri;
}

} // namespace corvane::lsp
