// Text as bytes of one encoding or another.
#pragma once

#include <string>
#include <string_view>

namespace corvane {

// Every byte is a character: the five that Windows-1252 leaves undefined become the control characters of their number.
[[nodiscard]] std::string DecodeWindows1252(std::string_view sBytes);

[[nodiscard]] bool IsAscii(std::string_view sBytes) noexcept;

// Well-formed UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
[[nodiscard]] bool IsUtf8(std::string_view sBytes) noexcept;

// The first nMaximum characters of a UTF-8 text.
[[nodiscard]] std::string_view FirstCharacters(std::string_view sText, std::size_t nMaximum) noexcept;

} // namespace corvane
