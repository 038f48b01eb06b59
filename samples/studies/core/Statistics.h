// Summary statistics of a table, whole or by group.
#pragma once

#include "Table.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace studies {

struct ColumnSummary {
    std::string sName;
    ColumnType eType = ColumnType::Text;
    std::size_t nCount = 0; // of the values that aren't missing
    std::size_t nMissing = 0;
    // Of numbers; NaN where there are too few of them (none at all, one for the standard deviation).
    double dblMean = 0;
    double dblDeviation = 0; // of the sample: divided by n - 1
    double dblMin = 0;
    double dblQ1 = 0; // quartiles as R's type 7
    double dblMedian = 0;
    double dblQ3 = 0;
    double dblMax = 0;
    // Of text.
    std::size_t nDistinct = 0;
    std::string sMostFrequent; // the first in alphabetical order among equals
    std::size_t nMostFrequent = 0;
};

struct TableSummary {
    std::size_t nRows = 0;
    std::vector<ColumnSummary> aColumns;
};

struct GroupSummary {
    std::string sGroup; // "" for the rows whose group is missing
    TableSummary oSummary;
};

[[nodiscard]] ColumnSummary Summarize(const Column& oColumn);
[[nodiscard]] TableSummary Summarize(const Table& oTable);
// One for each value of a column, in order of the values; without that column. Fails for an unknown column.
[[nodiscard]] std::vector<GroupSummary> SummarizeByGroup(const Table& oTable, std::string_view sColumn);
// The names of the text columns that divide the table: more than one value, and fewer values than half the rows.
[[nodiscard]] std::vector<std::string> GroupColumns(const Table& oTable);

// The values that a column has, in their order, as text; without the missing one.
[[nodiscard]] std::vector<std::string> ValuesOf(const Column& oColumn);
// The numbers of the rows whose group is that text.
[[nodiscard]] std::vector<double> NumbersOfGroup(const Column& oNumbers, const Column& oGroups,
                                                 std::string_view sGroup);

// The quantile dblShare (0 to 1) of sorted values, as R's type 7; NaN for no values.
[[nodiscard]] double Quantile(const std::vector<double>& aSorted, double dblShare);

} // namespace studies
