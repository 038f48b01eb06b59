// Regular expressions as in ECMAScript. They are compiled here once, as the standard library's templates for them take
// seconds in each source that uses them.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace corvane {

// Whether the whole text matches. The pattern is a valid one, here and below.
[[nodiscard]] bool HasForm(const std::string& text, const std::string& pattern);

// The first match as a whole, then the text of each of its groups; empty without a match.
[[nodiscard]] std::optional<std::vector<std::string>> FindForm(const std::string& text, const std::string& pattern);

// The text with every match replaced; "$1" is the first group.
[[nodiscard]] std::string ReplaceForm(const std::string& text, const std::string& pattern, const std::string& by);

} // namespace corvane
