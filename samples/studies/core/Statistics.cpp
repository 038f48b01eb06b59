#include "Statistics.h"

#include "Errors.h"
#include "Inference.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <map>
#include <set>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace studies {
namespace {

constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();

// Of the values between those two, the one that would be at that place if they were sorted; smaller ones are before it
// afterwards.
double ValueAt(std::vector<double>& values, std::size_t first, std::size_t place) {
    const auto at = [&](std::size_t i) { return values.begin() + static_cast<std::ptrdiff_t>(i); };
    std::nth_element(at(first), at(place), values.end());
    return values[place];
}

// As Quantile, of values that aren't sorted; each share is greater than the one before.
void FindQuartiles(std::vector<double>& values, ColumnSummary& summary) {
    std::size_t first = 0; // all values before it are smaller
    for (const auto& [share, quartile] : {std::pair(0.25, &summary.q1), {0.5, &summary.median}, {0.75, &summary.q3}}) {
        const double place = static_cast<double>(values.size() - 1) * share;
        const auto below = static_cast<std::size_t>(std::floor(place));
        const double low = ValueAt(values, first, below);
        first = below;
        const double high =
            below + 1 < values.size()
                ? *std::min_element(values.begin() + static_cast<std::ptrdiff_t>(below) + 1, values.end())
                : low;
        *quartile = low + (place - std::floor(place)) * (high - low);
    }
}

void SummarizeNumbers(const Column& column, ColumnSummary& summary) {
    std::vector<double> values;
    values.reserve(column.numbers.size());
    std::copy_if(column.numbers.begin(), column.numbers.end(), std::back_inserter(values),
                 [](double value) { return !std::isnan(value); });
    summary.count = values.size();
    for (double* figure :
         {&summary.mean, &summary.deviation, &summary.min, &summary.q1, &summary.median, &summary.q3, &summary.max})
        *figure = NotANumber;
    if (values.empty())
        return;
    const SampleFigures figures = FiguresOf(values);
    summary.mean = figures.mean;
    summary.deviation = figures.deviation;
    const auto [least, most] = std::minmax_element(values.begin(), values.end());
    summary.min = *least;
    summary.max = *most;
    FindQuartiles(values, summary);
}

void SummarizeTexts(const Column& column, ColumnSummary& summary) {
    std::unordered_map<std::string_view, std::size_t> counts;
    for (const std::string& text : column.texts)
        if (!text.empty())
            ++counts[text];
    summary.distinct = counts.size();
    std::string_view mostFrequent;
    for (const auto& [text, count] : counts) {
        summary.count += count;
        if (count > summary.mostFrequentCount || (count == summary.mostFrequentCount && text < mostFrequent)) {
            summary.mostFrequentCount = count;
            mostFrequent = text;
        }
    }
    summary.mostFrequent = mostFrequent;
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
        FailWith(Translated("The data have no column “%1”.", {column}));
    // By value for numbers, by text else; what is missing comes last.
    std::map<std::pair<double, std::string>, std::vector<std::uint32_t>> groupMap;
    std::vector<std::uint32_t> missing;
    for (std::uint32_t row = 0; row < table.rows; ++row) {
        if (group->IsMissing(row))
            missing.push_back(row);
        else
            groupMap[{group->IsNumeric() ? group->numbers[row] : 0, group->Text(row)}].push_back(row);
    }
    std::vector<GroupSummary> groups;
    const auto AddGroup = [&](const std::string& groupName, const std::vector<std::uint32_t>& rows) {
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
        if (distinct > 1 && (distinct * 2 < table.rows || column.type == ColumnType::Category))
            names.push_back(column.name);
    }
    return names;
}

} // namespace studies
