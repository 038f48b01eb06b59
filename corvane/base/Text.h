// Comparison of names, keys and words: UTF-8 text, ignoring the case of Latin, Greek, Cyrillic and Armenian letters.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace corvane {

[[nodiscard, gnu::visibility("default")]] bool EqualText(std::string_view sLeft, std::string_view sRight) noexcept;

// Less than 0, 0 or more than 0, by the code points of the folded texts.
[[nodiscard, gnu::visibility("default")]] int CompareText(std::string_view sLeft, std::string_view sRight) noexcept;

[[nodiscard, gnu::visibility("default")]] std::size_t HashText(std::string_view sText) noexcept;

// The text in small letters, by the same fold.
[[nodiscard, gnu::visibility("default")]] std::string FoldText(std::string_view sText);

// Every occurrence replaced.
[[nodiscard, gnu::visibility("default")]] std::string ReplaceText(std::string_view sText, char cFrom, char cTo);

// For hash containers that ignore case and are searched without a copy of the key.
struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view sText) const noexcept { return HashText(sText); }
};
struct TextEqual {
    using is_transparent = void;
    bool operator()(std::string_view sLeft, std::string_view sRight) const noexcept { return EqualText(sLeft, sRight); }
};

} // namespace corvane
