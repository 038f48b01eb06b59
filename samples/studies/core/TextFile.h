// The text of a file as UTF-8, whatever program wrote it.
#pragma once

#include <string>

namespace studies {

// Text with a byte order mark is in that encoding: UTF-8 or UTF-16; other text is UTF-8 or, where it can't be that,
// Windows-1252. The mark is left out. Fails, saying why and what to do, for a path that is no file that can be read,
// for an empty file, and for one that isn't text.
[[nodiscard]] std::string ReadTextFile(const std::string& path);

// The same for bytes; name is part of failures.
[[nodiscard]] std::string DecodeText(std::string bytes, const std::string& name);

} // namespace studies
