// The likeliest of several names when someone has mistyped one.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace corvane {

// Edits of single letters, and swaps of two neighbours, from one text to the other, without regard to case.
[[nodiscard]] std::size_t EditDistance(std::string_view left, std::string_view right);

// The name with the fewest edits, the first of several; nothing when none is near enough to be meant. Whole words that
// both begin or end with don't make them alike: one letter may be wrong in what is left if that has at least 3, two
// from 6 and three from 10 on.
[[nodiscard]] std::optional<std::string> Nearest(std::span<const std::string> names, std::string_view written);

} // namespace corvane
