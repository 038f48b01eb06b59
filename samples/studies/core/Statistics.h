// Summary statistics of a table, whole or by group.
#pragma once

#include "Table.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace studies {

struct ColumnSummary {
    std::string name;
    ColumnType type = ColumnType::Text;
    std::size_t count = 0; // of the values that aren't missing
    std::size_t missing = 0;
    // Of numbers; NaN where there are too few of them (none at all, one for the standard deviation).
    double mean = 0;
    double deviation = 0; // of the sample: divided by n - 1
    double min = 0;
    double q1 = 0; // quartiles as R's type 7
    double median = 0;
    double q3 = 0;
    double max = 0;
    // Of text.
    std::size_t distinct = 0;
    std::string mostFrequent; // the first in alphabetical order among equals
    std::size_t mostFrequentCount = 0;
};

struct TableSummary {
    std::size_t rows = 0;
    std::vector<ColumnSummary> columns;
};

struct GroupSummary {
    std::string group; // "" for the rows whose group is missing
    TableSummary summary;
};

[[nodiscard]] ColumnSummary Summarize(const Column& column);
[[nodiscard]] TableSummary Summarize(const Table& table);
// One for each value of a column, in order of the values; without that column. Fails for an unknown column.
[[nodiscard]] std::vector<GroupSummary> SummarizeByGroup(const Table& table, std::string_view column);
// The names of the text columns that divide the table: more than one value, and fewer values than half the rows.
[[nodiscard]] std::vector<std::string> GroupColumns(const Table& table);

// The values that a column has, in their order, as text; without the missing one.
[[nodiscard]] std::vector<std::string> ValuesOf(const Column& column);
// The numbers of the rows whose group is that text.
[[nodiscard]] std::vector<double> NumbersOfGroup(const Column& numbers, const Column& groups, std::string_view group);

// The quantile share (0 to 1) of sorted values, as R's type 7; NaN for no values.
[[nodiscard]] double Quantile(const std::vector<double>& sorted, double share);

} // namespace studies
