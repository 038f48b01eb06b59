// Text as bytes of one encoding or another.
#pragma once

#include <string>
#include <string_view>

namespace corvane {

// Every byte is a character: the five that Windows-1252 leaves undefined become the control characters of their number.
[[nodiscard]] std::string DecodeWindows1252(std::string_view bytes);

[[nodiscard]] bool IsAscii(std::string_view bytes) noexcept;

// Well-formed UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
[[nodiscard]] bool IsUtf8(std::string_view bytes) noexcept;

// The first maximum characters of a UTF-8 text.
[[nodiscard]] std::string_view FirstCharacters(std::string_view text, std::size_t maximum) noexcept;

} // namespace corvane
