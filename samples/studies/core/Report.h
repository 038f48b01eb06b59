// Summaries as text: aligned in columns for a report, or in one line for the status bar.
#pragma once

#include "Statistics.h"

#include <string>
#include <string_view>
#include <vector>

namespace studies {

// Up to that many significant digits; "-" for what isn't known.
[[nodiscard]] std::string FigureText(double dblValue, int nDigits = 7);

// Numbers and texts in a block each, a column of the table on each line. Ends with a line feed.
[[nodiscard]] std::string ReportText(const TableSummary& oSummary);
// The same for each group, under a line that names the group's value and its rows.
[[nodiscard]] std::string ReportText(const std::vector<GroupSummary>& aGroups, std::string_view sColumn);

// The means of the first columns of numbers, with their standard deviations, in four significant digits.
[[nodiscard]] std::string LineText(const TableSummary& oSummary);

// With a line feed between each two.
[[nodiscard]] std::string JoinLines(const std::vector<std::string>& aLines);

// "344 rows, 7 columns".
[[nodiscard]] std::string SizeText(std::size_t nRows, std::size_t nColumns);

} // namespace studies
