// Findings as documents for programs.
#pragma once

#include "analysis/Findings.h"

#include <span>
#include <string>

namespace corvane::tool {

// {"findings": [{"rule", "severity", "file", "line", "column", "text", "cure", "notes"}]}
[[nodiscard]] std::string AsJson(std::span<const check::Finding> findings);
// Static Analysis Results Interchange Format 2.1.0.
[[nodiscard]] std::string AsSarif(std::span<const check::Finding> findings, const std::string& version);

} // namespace corvane::tool
