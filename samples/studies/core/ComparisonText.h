// What a comparison and a bootstrap have found, in sentences.
#pragma once

#include "AnalysisSettings.h"
#include "Bootstrap.h"
#include "Table.h"

#include <string>

namespace studies {

// The test of the two groups that the settings name, or why there is none.
[[nodiscard]] std::string ComparisonText(const Table& table, const AnalysisSettings& settings, int decimals);

[[nodiscard]] std::string BootstrapText(const BootstrapResult& result, const AnalysisSettings& settings,
                                        const Column& column, int decimals);

} // namespace studies
