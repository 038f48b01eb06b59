// The order of menus, toolbars and context menus as an outline to be edited, and the numbers that make it come out.
#pragma once

#include "analysis/Fix.h"

#include <optional>
#include <set>

namespace corvane::check {

// A line of an outline.
struct OutlineLine {
    std::string heading;           // of its menu, such as "menu File"
    std::string key;               // of the entry; empty for a line between two
    std::string caption;           // as it is written
    bool isLost = false;           // it doesn't appear now
    std::vector<Place> places;     // of all that share it, the first one gives it its texts; then of their actions
    std::vector<Long> lastLines{}; // of their elements

    // Whether the place is in one of its elements.
    [[nodiscard]] bool IsAt(const Place& place) const;
};

// What Outline gives, in its parts.
[[nodiscard]] std::vector<OutlineLine> OutlineLines(const Options& options);

// Each menu, toolbar and context menu with its entries by key, an entry a line, "---" for a line between two. Entries
// that have lost their place stand where their order would put them. Fails as Check does.
[[nodiscard]] std::string Outline(const Options& options);

// The same in the order that the numbers of each menu by itself ask for, whatever becomes of them when all are merged.
[[nodiscard]] std::string MeantOutline(const Options& options);

// The text of an outline that an editor has saved, as UTF-8 with or without a mark in front, or as Windows-1252, in
// which definition files are. Fails with 5 when it is neither.
[[nodiscard]] std::string OutlineText(std::string_view bytes);

// The changes of PositionOrder and Separator with which the outline comes out, as few as possible. Nothing else is
// touched, and of the files only those named in "only" where any is. Fails with 5 and the number of the outline's line
// when it names no menu, isn't an outline of the application or when no change of those files makes it come out.
[[nodiscard]] std::vector<FixedFile> Arrange(const Options& options, const std::string& outline,
                                             const std::set<std::string>& only);

// Of bars as lines "band: tool", in order, the first pair that the outline has the other way round; nothing when all
// is in order.
[[nodiscard]] std::optional<std::string> FirstOutOfOrder(const std::string& outline, const std::string& bars);

} // namespace corvane::check
