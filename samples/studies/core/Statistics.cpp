#include "Statistics.h"

#include "Errors.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <map>
#include <set>
#include <string_view>

namespace studies {
namespace {

constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();

void SummarizeNumbers(const Column& column, ColumnSummary& summary) {
    std::vector<double> values;
    values.reserve(column.numbers.size());
    std::copy_if(column.numbers.begin(), column.numbers.end(), std::back_inserter(values),
                 [](double value) { return !std::isnan(value); });
    std::sort(values.begin(), values.end());
    summary.count = values.size();

    long double sum = 0;
    for (const double value : values)
        sum += value;
    const auto count = static_cast<long double>(values.size());
    const long double mean = sum / count;
    // Squares of differences in a second pass: the sum of squares loses the digits that matter.
    long double squares = 0;
    for (const double value : values)
        squares += (value - mean) * (value - mean);

    const bool any = !values.empty();
    summary.mean = any ? static_cast<double>(mean) : NotANumber;
    summary.deviation = values.size() > 1 ? static_cast<double>(std::sqrt(squares / (count - 1))) : NotANumber;
    summary.min = any ? values.front() : NotANumber;
    summary.q1 = Quantile(values, 0.25);
    summary.median = Quantile(values, 0.5);
    summary.q3 = Quantile(values, 0.75);
    summary.max = any ? values.back() : NotANumber;
}

void SummarizeTexts(const Column& column, ColumnSummary& summary) {
    std::map<std::string_view, std::size_t> counts;
    for (const std::string& text : column.texts)
        if (!text.empty())
            ++counts[text];
    summary.distinct = counts.size();
    for (const auto& [text, count] : counts) {
        summary.count += count;
        if (count > summary.mostFrequentCount) {
            summary.mostFrequentCount = count;
            summary.mostFrequent = text;
        }
    }
}

} // namespace

double Quantile(const std::vector<double>& sorted, double share) {
    if (sorted.empty())
        return NotANumber;
    const double place = static_cast<double>(sorted.size() - 1) * share;
    const auto below = static_cast<std::size_t>(std::floor(place));
    const std::size_t above = std::min(below + 1, sorted.size() - 1);
    return sorted[below] + (place - std::floor(place)) * (sorted[above] - sorted[below]);
}

ColumnSummary Summarize(const Column& column) {
    ColumnSummary summary;
    summary.name = column.name;
    summary.type = column.type;
    if (column.IsNumeric())
        SummarizeNumbers(column, summary);
    else
        SummarizeTexts(column, summary);
    summary.missing = (column.IsNumeric() ? column.numbers.size() : column.texts.size()) - summary.count;
    return summary;
}

TableSummary Summarize(const Table& table) {
    TableSummary summary;
    summary.rows = table.rows;
    for (const Column& column : table.columns)
        summary.columns.push_back(Summarize(column));
    return summary;
}

std::vector<GroupSummary> SummarizeByGroup(const Table& table, std::string_view column) {
    const Column* group = table.Find(column);
    if (!group)
        FailWith("The data have no column “" + std::string(column) + "”.");
    // By value for numbers, by text else; what is missing comes last.
    std::map<std::pair<double, std::string>, std::vector<std::size_t>> groupMap;
    std::vector<std::size_t> missing;
    for (std::size_t row = 0; row < table.rows; ++row) {
        if (group->IsMissing(row))
            missing.push_back(row);
        else
            groupMap[{group->IsNumeric() ? group->numbers[row] : 0, group->Text(row)}].push_back(row);
    }
    std::vector<GroupSummary> groups;
    const auto AddGroup = [&](const std::string& groupName, const std::vector<std::size_t>& rows) {
        TableSummary summary = Summarize(table.Rows(rows));
        summary.columns.erase(summary.columns.begin() + (group - table.columns.data()));
        groups.push_back({groupName, std::move(summary)});
    };
    for (const auto& [key, rows] : groupMap)
        AddGroup(key.second, rows);
    if (!missing.empty())
        AddGroup({}, missing);
    return groups;
}

std::vector<std::string> ValuesOf(const Column& column) {
    std::vector<std::string> values;
    if (column.IsNumeric()) {
        std::set<double> numbers;
        std::copy_if(column.numbers.begin(), column.numbers.end(), std::inserter(numbers, numbers.end()),
                     [](double value) { return !std::isnan(value); });
        std::transform(numbers.begin(), numbers.end(), std::back_inserter(values),
                       [&](double value) { return TextOf(value, column.decimals); });
    } else {
        const std::set<std::string_view> texts(column.texts.begin(), column.texts.end());
        for (const std::string_view text : texts)
            if (!text.empty())
                values.emplace_back(text);
    }
    return values;
}

std::vector<double> NumbersOfGroup(const Column& numbers, const Column& groups, std::string_view group) {
    std::vector<double> numberList;
    for (std::size_t row = 0; row < numbers.numbers.size(); ++row)
        if (groups.Text(row) == group)
            numberList.push_back(numbers.numbers[row]);
    return numberList;
}

std::vector<std::string> GroupColumns(const Table& table) {
    std::vector<std::string> names;
    for (const Column& column : table.columns) {
        if (column.IsNumeric())
            continue;
        const std::size_t distinct = Summarize(column).distinct;
        if (distinct > 1 && distinct * 2 < table.rows)
            names.push_back(column.name);
    }
    return names;
}

} // namespace studies
