// Regular expressions as in ECMAScript. They are compiled here once, as the standard library's templates for them take
// seconds in each source that uses them.
#pragma once

#include <memory>
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

// A pattern from outside, compiled once. It is matched without the backtracking that some patterns make endless, so it
// can't refer back to its groups.
class Pattern {
public:
    // Throws std::invalid_argument, with the reason, if the pattern can't be used.
    explicit Pattern(const std::string& pattern);
    ~Pattern();
    Pattern(const Pattern&) = delete;
    Pattern& operator=(const Pattern&) = delete;

    // Whether the whole text matches.
    [[nodiscard]] bool Matches(const std::string& text) const;

private:
    struct Compiled;
    std::unique_ptr<Compiled> m_compiled;
};

} // namespace corvane
