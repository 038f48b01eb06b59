// Regular expressions as in ECMAScript. They are compiled here once, as the standard library's templates for them take
// seconds in each source that uses them.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace corvane {

// Whether the whole text is of that form. The pattern is a valid one, here and below.
[[nodiscard]] bool HasForm(const std::string& text, const std::string& pattern);

// The first place that is of that form, then the text of each group; nothing when there is no such place.
[[nodiscard]] std::optional<std::vector<std::string>> FindForm(const std::string& text, const std::string& pattern);

// The text with every such place replaced; "$1" is the first group.
[[nodiscard]] std::string ReplaceForm(const std::string& text, const std::string& pattern, const std::string& by);

} // namespace corvane
