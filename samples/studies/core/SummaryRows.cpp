#include "SummaryRows.h"

#include "Errors.h"
#include "Report.h"
#include "Statistics.h"

namespace studies {
namespace {

std::vector<std::string> LineOf(const ColumnSummary& column, int decimals) {
    std::vector<std::string> line{CountText(column.count), CountText(column.missing)};
    if (!IsNumeric(column.type)) {
        line.insert(line.end(), {CountText(column.distinct), column.mostFrequent, CountText(column.mostFrequentCount)});
        return line;
    }
    for (const double figure :
         {column.mean, column.deviation, column.min, column.q1, column.median, column.q3, column.max})
        line.push_back(DecimalText(figure, decimals));
    return line;
}

TableSummary SummarizeOnAll(const Table& table, corvane::JobProgress& progress) {
    corvane::JobGroup<ColumnSummary> group(progress);
    for (const Column& column : table.columns)
        group.Add([&column](const corvane::JobProgress& part) {
            part.StopIfCancelled();
            return Summarize(column);
        });
    return {table.rows, group.Run()};
}

} // namespace

SummaryRows RowsOfSummary(const Table& table, const std::string& groupColumn, int decimals,
                          corvane::JobProgress& progress) {
    SummaryRows rows;
    const bool byGroup = !groupColumn.empty() && table.Find(groupColumn);
    std::vector<GroupSummary> groups;
    if (byGroup)
        groups = SummarizeByGroup(table, groupColumn);
    else
        groups.push_back({{}, SummarizeOnAll(table, progress)});
    rows.numbers.names = {{Translated("Column"), false},      {Translated("Count"), true},
                          {Translated("Missing"), true},      {Translated("Mean"), true},
                          {Translated("Std. dev."), true},    {Translated("Min"), true},
                          {Translated("1st quartile"), true}, {Translated("Median"), true},
                          {Translated("3rd quartile"), true}, {Translated("Max"), true}};
    rows.texts.names = {{Translated("Column"), false},        {Translated("Count"), true},
                        {Translated("Missing"), true},        {Translated("Distinct"), true},
                        {Translated("Most frequent"), false}, {Translated("Frequency"), true}};
    for (SummaryBlock* block : {&rows.numbers, &rows.texts})
        if (byGroup)
            block->names.insert(block->names.begin() + 1, {groupColumn, false});
    // By column, and in it by group, so that what is compared stands together.
    for (std::size_t i = 0; !groups.empty() && i < groups.front().summary.columns.size(); ++i)
        for (const GroupSummary& group : groups) {
            const ColumnSummary& column = group.summary.columns[i];
            std::vector<std::string> line = LineOf(column, decimals);
            if (byGroup)
                line.insert(line.begin(), group.group.empty() ? Translated("missing") : group.group);
            line.insert(line.begin(), table.Find(column.name)->Label());
            (IsNumeric(column.type) ? rows.numbers : rows.texts).rows.push_back(std::move(line));
        }
    return rows;
}

} // namespace studies
