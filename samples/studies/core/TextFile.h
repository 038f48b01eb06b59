// The text of a file as UTF-8, whatever program wrote it.
#pragma once

#include "corvane/author/Encoding.h"

#include <string>

namespace studies {

// Fails, saying why and what to do, for a path that is not a readable file, for an empty file, and for one that isn't
// text or not in that encoding.
[[nodiscard]] std::string ReadTextFile(const std::string& path,
                                       corvane::TextEncoding encoding = corvane::TextEncoding::Automatic);

} // namespace studies
