// Figures and summaries as text: aligned in columns, in one line for the status bar, or as a user reads them.
#pragma once

#include "NumberText.h"
#include "Statistics.h"

#include <string>
#include <string_view>
#include <vector>

namespace studies {

// "1,234" for a count.
[[nodiscard]] std::string CountText(std::size_t count);
// "p = 0.034", or "p < 0.001".
[[nodiscard]] std::string ProbabilityText(double p);
// "95 %".
[[nodiscard]] std::string ShareText(double share);

// The means of the first columns of numbers, with their standard deviations, in four significant digits.
[[nodiscard]] std::string LineText(const TableSummary& summary);

// "344 rows".
[[nodiscard]] std::string RowsText(std::size_t rows);
// "344 rows, 7 columns".
[[nodiscard]] std::string SizeText(std::size_t rows, std::size_t columns);

// The first of many lines, and how many more there are.
[[nodiscard]] std::string FirstLines(const std::vector<std::string>& lines);

} // namespace studies
