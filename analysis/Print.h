// Findings and rules as text for users, and as documents for programs.
#pragma once

#include "analysis/Findings.h"

#include <span>
#include <string>

namespace corvane::check {

// A finding a line, "file:line:col: error: text: cure [rule]", with a line "note: " for each second place.
[[nodiscard]] std::string AsText(std::span<const Finding> findings, bool colours);
// {"findings": [{"rule", "severity", "file", "line", "column", "text", "cure", "notes"}]}
[[nodiscard]] std::string AsJson(std::span<const Finding> findings);
// Static Analysis Results Interchange Format 2.1.0.
[[nodiscard]] std::string AsSarif(std::span<const Finding> findings, const std::string& version);

// "2 errors, 1 warning".
[[nodiscard]] std::string CountText(std::span<const Finding> findings);

// One rule with its example, in Markdown; and all of them.
[[nodiscard]] std::string Explained(const RuleText& rule);
[[nodiscard]] std::string RulesAsMarkdown();

} // namespace corvane::check
