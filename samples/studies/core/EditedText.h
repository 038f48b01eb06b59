// Texts that a user edits in a window.
#pragma once

#include <functional>
#include <string>

namespace studies {

// Without the white space around it, as names are kept.
[[nodiscard]] std::string Trimmed(const std::string& text);

// The text, or with a number behind it, such as "text (2)", where it is taken.
[[nodiscard]] std::string FreeText(const std::string& text, const std::function<bool(const std::string&)>& isTaken);

// With a blank in place of what would look like the end of a field or line of a text with tabs.
[[nodiscard]] std::string AsField(std::string text);

// What is to be stored of a text that was read when the window opened, is edited now, and is stored otherwise by now: a
// text that no one has touched here stays as it is stored. Where both have changed it, it fails once, saying so, and
// takes over what is stored as read, so that the next call replaces it. The failure is the sentence with what is stored
// as "%1".
[[nodiscard]] std::string Merged(std::string& read, const std::string& edited, const std::string& stored,
                                 const std::string& sentence);

} // namespace studies
