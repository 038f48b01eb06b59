// What a comparison and a bootstrap have found, in sentences.
#pragma once

#include "AnalysisSettings.h"
#include "Bootstrap.h"
#include "Table.h"

#include <string>

namespace studies {

// The test of the two groups that the settings name, or why there is none.
[[nodiscard]] std::string ComparisonText(const Table& oTable, const AnalysisSettings& oSettings, int nDecimals);

[[nodiscard]] std::string BootstrapText(const BootstrapResult& oResult, const AnalysisSettings& oSettings,
                                        const Column& oColumn, int nDecimals);

} // namespace studies
