// An editor's text of a definition file, and the bytes that the library would read.
#pragma once

#include "analysis/Findings.h"

#include <optional>
#include <string>

namespace corvane::lsp {

// From 0; characters in code units of UTF-16, as the protocol counts.
struct Spot {
    std::size_t line = 0;
    std::size_t character = 0;
};

class Document {
public:
    // The text in UTF-8. An editor that took the file for UTF-8 will save it so: then the bytes are those of the text.
    Document(std::string text, bool isUtf8);

    [[nodiscard]] const std::string& Bytes() const { return m_bytes; }
    [[nodiscard]] std::size_t OffsetOf(Spot spot) const; // in the bytes
    [[nodiscard]] Spot SpotOf(std::size_t offset) const;
    // Bytes of the file, as the editor shows them.
    [[nodiscard]] std::string TextOf(std::string_view bytes) const;

private:
    std::string m_bytes;
    bool m_isUtf8;
};

// "file:///a%20b" and "/a b"; nothing for what isn't a file.
[[nodiscard]] std::optional<std::string> PathOf(const std::string& uri);
[[nodiscard]] std::string UriOf(const std::string& path);

} // namespace corvane::lsp
