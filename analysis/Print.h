// Findings and rules as text for users.
#pragma once

#include "analysis/Findings.h"

#include <span>
#include <string>

namespace corvane::check {

// "error", "warning" or "note".
[[nodiscard]] const char* SeverityText(Severity severity);
// The text with a capital first letter.
[[nodiscard]] std::string UpperFirst(std::string text);

// A finding a line, "file:line:col: error: text: cure [rule]", with a line "note: " for each second place.
[[nodiscard]] std::string AsText(std::span<const Finding> findings, bool colours);

// "2 errors, 1 warning".
[[nodiscard]] std::string CountText(std::span<const Finding> findings);

// One rule with its example, in Markdown; and all of them.
[[nodiscard]] std::string Explained(const RuleText& rule);
[[nodiscard]] std::string RulesAsMarkdown();

} // namespace corvane::check
