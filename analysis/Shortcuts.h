// Shortcuts as definitions write them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane::check {

// "Ctrl+Shift+O" in one form for all ways of writing one shortcut; nothing for a text that hosts can't read. Case and
// blanks don't count.
[[nodiscard]] std::optional<std::string> ShortcutIn(std::string_view text);

// What the text may have been meant to be; nothing when nothing is near.
[[nodiscard]] std::optional<std::string> NearestShortcut(std::string_view text);

// A readable shortcut with the words of another language in it, in those of the reference; nothing for others.
[[nodiscard]] std::optional<std::string> InOwnWords(std::string_view text);

// Why a shortcut, as ShortcutIn gives it, doesn't reach its command, or only sometimes; nothing for one that does.
[[nodiscard]] std::optional<std::string> WhoTakes(const std::string& shortcut);

} // namespace corvane::check
