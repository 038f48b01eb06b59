// Definition files as nearly all of them are: elements with attributes of the format, comments, and nothing but ASCII.
#pragma once

#include "analysis/Source.h"

namespace corvane::check {

// The root with all elements behind it, as ScanElements gives them, of a text that the library's XML reader takes for
// certain, and whose values read as they are written: this one pass takes a fraction of the time of that reader. A null
// pointer for every other text, which may be well formed all the same.
[[nodiscard]] const Element* ScanPlainElements(std::string_view bytes, Arena& memory);

} // namespace corvane::check
