// Texts of files that other programs have written, as UTF-8.
#pragma once

#include <optional>
#include <string>

namespace corvane {

enum class TextEncoding { Automatic, Utf8, Windows1252, Utf16 };

// The bytes of a whole text as UTF-8, without the byte order mark; nothing when they aren't in that encoding.
// Automatic: text with a mark is in that encoding, UTF-8 or UTF-16; other text is UTF-8 or, where it can't be that,
// Windows-1252. UTF-16 without a mark has the low byte first, and half a character in it becomes U+FFFD. Bytes that
// Windows-1252 leaves undefined become the characters of their numbers. A character of number 0 says that the bytes are
// no text.
[[nodiscard, gnu::visibility("default")]] std::optional<std::string>
DecodeText(std::string sBytes, TextEncoding eEncoding = TextEncoding::Automatic);

} // namespace corvane
