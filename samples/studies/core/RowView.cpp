#include "RowView.h"

#include "Errors.h"

#include <algorithm>
#include <array>
#include <bit>
#include <compare>
#include <functional>
#include <numeric>
#include <string_view>
#include <utility>

namespace studies {
namespace {

constexpr std::size_t RowsOfPart = 16384;

char Folded(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string FoldedText(std::string_view text) {
    std::string folded(text);
    std::transform(folded.begin(), folded.end(), folded.begin(), &Folded);
    return folded;
}

// Less than, equal to or greater than 0.
int Compare(std::string_view a, std::string_view b) {
    const auto order =
        std::lexicographical_compare_three_way(a.begin(), a.end(), b.begin(), b.end(), [](char left, char right) {
            return static_cast<unsigned char>(Folded(left)) <=> static_cast<unsigned char>(Folded(right));
        });
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

bool ContainsFolded(std::string_view text, std::string_view folded) {
    return std::search(text.begin(), text.end(), folded.begin(), folded.end(),
                       [](char a, char b) { return Folded(a) == b; }) != text.end();
}

// Of few letters, as a number has.
bool Contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

// Whether a number's text can hold it at all: no name has to be looked for in millions of numbers.
bool MayBeInNumber(std::string_view folded) {
    return folded.find_first_not_of("0123456789.-+e") == std::string_view::npos;
}

// The first six say by their bits which orders hold: less 1, equal 2, greater 4.
enum class Comparison {
    Less = 1,
    Equal = 2,
    AtMost = 3,
    Greater = 4,
    Different = 5,
    AtLeast = 6,
    Contains,
    Missing,
    Present
};

struct Filter {
    Comparison comparison = Comparison::Contains;
    std::string text; // folded
    double number = 0;
    std::string letters = {}; // of a part of numbers, as they are without the signs of the user's language
};

Filter FilterOf(const Column* column, std::string_view filter) {
    static constexpr std::array<std::pair<std::string_view, Comparison>, 6> operators{{{"<>", Comparison::Different},
                                                                                       {"<=", Comparison::AtMost},
                                                                                       {">=", Comparison::AtLeast},
                                                                                       {"=", Comparison::Equal},
                                                                                       {"<", Comparison::Less},
                                                                                       {">", Comparison::Greater}}};
    const auto* const op =
        column ? std::find_if(operators.begin(), operators.end(),
                              [&](const auto& pair) { return filter.substr(0, pair.first.size()) == pair.first; })
               : operators.end();
    if (op == operators.end())
        return {Comparison::Contains, FoldedText(filter), 0,
                corvane::PlainNumber(filter).value_or(std::string(filter))};
    std::string_view value = filter.substr(op->first.size());
    value.remove_prefix(std::min(value.find_first_not_of(' '), value.size()));
    if (value.empty() && op->second == Comparison::Equal)
        return {Comparison::Missing, {}, 0};
    if (value.empty() && op->second == Comparison::Different)
        return {Comparison::Present, {}, 0};
    if (value.empty())
        FailWith(Translated("A value is missing after “%1”.", {op->first}));
    Filter found{op->second, FoldedText(value), 0};
    if (column->IsNumeric()) {
        const std::optional<std::string> plain = corvane::PlainNumber(value);
        const std::optional<double> number = plain ? NumberOf(*plain) : std::nullopt;
        if (!number)
            FailWith(Translated("“%1” isn't a number, and “%2” is a numeric column.", {value, column->name}));
        found.number = *number;
    }
    return found;
}

bool Holds(Comparison comparison, int order) {
    const int bit = order < 0 ? 1 : order == 0 ? 2 : 4;
    return (static_cast<int>(comparison) & bit) != 0;
}

bool Matches(const Column& column, const Filter& filter, std::size_t row) {
    const bool missing = column.IsMissing(row);
    if (filter.comparison == Comparison::Missing || filter.comparison == Comparison::Present)
        return missing == (filter.comparison == Comparison::Missing);
    if (missing)
        return false;
    if (filter.comparison == Comparison::Contains)
        return column.IsNumeric() ? Contains(NumberLetters(column.numbers[row], column.decimals), filter.letters)
                                  : ContainsFolded(column.texts[row], filter.text);
    if (!column.IsNumeric())
        return Holds(filter.comparison, Compare(column.texts[row], filter.text));
    const double value = column.numbers[row];
    return Holds(filter.comparison, value < filter.number ? -1 : value > filter.number ? 1 : 0);
}

const Column* ColumnAt(const std::vector<Column>& columns, int index) {
    return index >= 0 && static_cast<std::size_t>(index) < columns.size() ? &columns[static_cast<std::size_t>(index)]
                                                                          : nullptr;
}

using Rows = std::vector<std::uint32_t>;

// Calls part for pieces of so many rows, on all processors.
std::vector<Rows> InParts(std::size_t rows, corvane::JobProgress& progress,
                          const std::function<Rows(std::size_t first, std::size_t last)>& part) {
    corvane::JobGroup<Rows> group(progress);
    for (std::size_t first = 0; first < rows; first += RowsOfPart)
        group.Add([&part, first, rows](const corvane::JobProgress& own) {
            own.StopIfCancelled();
            return part(first, std::min(first + RowsOfPart, rows));
        });
    return group.Run();
}

Rows Filtered(const Table& table, const RowView& view, corvane::JobProgress& progress) {
    Rows found;
    if (view.filter.empty()) {
        found.resize(table.rows);
        std::iota(found.begin(), found.end(), 0U);
        return found;
    }
    const Column* only = ColumnAt(table.columns, view.filterColumn);
    const Filter filter = FilterOf(only, view.filter);
    std::vector<const Column*> columns;
    for (const Column& column : table.columns)
        if (!only || only == &column)
            if (filter.comparison != Comparison::Contains || !column.IsNumeric() || MayBeInNumber(filter.text))
                columns.push_back(&column);
    for (const Rows& part : InParts(table.rows, progress, [&](std::size_t first, std::size_t last) {
             Rows rows;
             for (std::size_t row = first; row < last; ++row)
                 if (std::any_of(columns.begin(), columns.end(),
                                 [&](const Column* column) { return Matches(*column, filter, row); }))
                     rows.push_back(static_cast<std::uint32_t>(row));
             return rows;
         }))
        found.insert(found.end(), part.begin(), part.end());
    return found;
}

// What rows are sorted by: the value, as a number that grows with it, and the row, by which equal ones are in order.
struct Key {
    std::uint64_t value;
    std::uint32_t row;
};

std::uint64_t KeyOf(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value + 0.0); // so that there is one zero only
    return (bits >> 63U) != 0 ? ~bits : bits | (std::uint64_t{1} << 63U);
}

// Eight letters behind those that all texts begin with.
std::uint64_t KeyOf(std::string_view text, std::size_t first) {
    std::uint64_t key = 0;
    for (std::size_t i = first; i < first + 8; ++i)
        key = key << 8U | (i < text.size() ? static_cast<unsigned char>(Folded(text[i])) : 0U);
    return key;
}

// How many letters all of these texts begin with.
std::size_t CommonBegin(const Column& column, Rows::const_iterator row, Rows::const_iterator end) {
    if (row == end || column.IsNumeric())
        return 0;
    const std::string_view first = column.texts[*row];
    std::size_t common = first.size();
    for (; row != end && common > 0; ++row) {
        const std::string_view text = column.texts[*row];
        common = std::min(common, text.size());
        std::size_t same = 0;
        while (same < common && Folded(text[same]) == Folded(first[same]))
            ++same;
        common = same;
    }
    return common;
}

void Sort(const Column& column, bool descending, Rows& rows, corvane::JobProgress& progress) {
    const auto missing =
        std::stable_partition(rows.begin(), rows.end(), [&](std::uint32_t row) { return !column.IsMissing(row); });
    const std::size_t common = CommonBegin(column, rows.begin(), missing);
    std::vector<Key> keys;
    keys.reserve(static_cast<std::size_t>(missing - rows.begin()));
    for (auto row = rows.begin(); row != missing; ++row) {
        const std::uint64_t key = column.IsNumeric() ? KeyOf(column.numbers[*row]) : KeyOf(column.texts[*row], common);
        keys.push_back({descending ? ~key : key, *row});
    }
    const auto before = [&](const Key& a, const Key& b) {
        if (a.value != b.value)
            return a.value < b.value;
        if (!column.IsNumeric())
            if (const int order = Compare(column.texts[a.row], column.texts[b.row]); order != 0)
                return (order < 0) != descending;
        return a.row < b.row;
    };
    const auto at = [&](std::size_t i) { return keys.begin() + static_cast<std::ptrdiff_t>(i); };
    const std::size_t half = keys.size() / 2;
    corvane::JobGroup<void> group(progress);
    for (const auto& [first, last] : {std::pair(std::size_t{0}, half), {half, keys.size()}})
        group.Add([&, first = first, last = last] { std::sort(at(first), at(last), before); });
    group.Run();
    progress.StopIfCancelled();
    std::inplace_merge(keys.begin(), at(half), keys.end(), before);
    std::transform(keys.begin(), keys.end(), rows.begin(), [](const Key& key) { return key.row; });
}

} // namespace

void CheckFilter(const std::vector<Column>& columns, const RowView& view) {
    if (!view.filter.empty())
        (void)FilterOf(ColumnAt(columns, view.filterColumn), view.filter);
}

std::vector<std::uint32_t> RowsOf(const Table& table, const RowView& view, corvane::JobProgress& progress) {
    const auto steps = progress.Split({1, 1});
    Rows rows = Filtered(table, view, steps[0]);
    if (const Column* column = ColumnAt(table.columns, view.sortColumn))
        Sort(*column, view.descending, rows, steps[1]);
    return rows;
}

} // namespace studies
