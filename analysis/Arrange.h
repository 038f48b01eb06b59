// The order of menus, toolbars and context menus as an outline to be edited, and the numbers that make it come out.
#pragma once

#include "analysis/Fix.h"

#include <optional>
#include <set>

namespace corvane::check {

// Each menu, toolbar and context menu with its entries by key, an entry a line, "---" for a line between two. Entries
// that have lost their place stand where their order would put them. Fails as Check does.
[[nodiscard]] std::string Outline(const Options& options);

// The same in the order that the numbers of each menu by itself ask for, whatever becomes of them when all are merged.
[[nodiscard]] std::string MeantOutline(const Options& options);

// The changes of PositionOrder and Separator with which the outline comes out, as few as possible. Nothing else is
// touched, and of the files only those named in "only" where any is. Fails with 5 and the number of the outline's line
// when it isn't an outline of the application or when no change of those files makes it come out.
[[nodiscard]] std::vector<FixedFile> Arrange(const Options& options, const std::string& outline,
                                             const std::set<std::string>& only);

// Of bars as lines "band: tool", in order, the first pair that the outline has the other way round; nothing when all
// is in order.
[[nodiscard]] std::optional<std::string> FirstOutOfOrder(const std::string& outline, const std::string& bars);

} // namespace corvane::check
