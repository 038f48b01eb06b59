// The text of a file as UTF-8, whatever program wrote it.
#pragma once

#include <string>

namespace studies {

enum class TextEncoding { Automatic, Utf8, Windows1252, Utf16 };

// Automatic: text with a byte order mark is in that encoding: UTF-8 or UTF-16; other text is UTF-8 or, where it can't
// be that, Windows-1252. The mark is left out. UTF-16 without a mark has the low byte first. Fails, saying why and what
// to do, for a path that is not a readable file, for an empty file, and for one that isn't text or not in that
// encoding.
[[nodiscard]] std::string ReadTextFile(const std::string& path, TextEncoding encoding = TextEncoding::Automatic);

// The same for bytes; name is part of failures.
[[nodiscard]] std::string DecodeText(std::string bytes, const std::string& name,
                                     TextEncoding encoding = TextEncoding::Automatic);

} // namespace studies
