#include "Table.h"

#include "Errors.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <span>

namespace studies {
namespace {

// In the order of the types.
constexpr std::array<std::string_view, 5> TypeNames{"whole number", "number", "text", "category", "date"};

// The digits that count in a number's text, without sign, point, exponent and the zeros at both ends.
std::string SignificantDigits(std::string_view text) {
    std::string digits;
    for (const char c : text.substr(0, text.find_first_of("eE")))
        if (c >= '0' && c <= '9' && (c != '0' || !digits.empty()))
            digits += c;
    digits.erase(digits.find_last_not_of('0') + 1);
    return digits;
}

std::string WithBlanks(std::string name) {
    std::replace(name.begin(), name.end(), '_', ' ');
    return name;
}

} // namespace

std::string_view NameOf(ColumnType type) {
    return TypeNames.at(static_cast<std::size_t>(type));
}

std::string ShownName(ColumnType type) {
    if (type == ColumnType::Text)
        return Translated("text");
    if (type == ColumnType::Category)
        return Translated("category");
    if (type == ColumnType::Date)
        return Translated("date");
    return type == ColumnType::Whole ? Translated("whole number") : Translated("number");
}

ColumnType ColumnTypeOf(std::string_view name) {
    const auto* const found = std::find(TypeNames.begin(), TypeNames.end(), name);
    if (found != TypeNames.end())
        return static_cast<ColumnType>(found - TypeNames.begin());
    FailWith(Translated("“%1” isn't a column type.", {name}));
}

bool Column::IsMissing(std::size_t row) const {
    return IsNumeric() ? std::isnan(numbers[row]) : texts[row].empty();
}

std::string Column::Text(std::size_t row) const {
    if (IsMissing(row))
        return {};
    return IsNumeric() ? TextOf(numbers[row], decimals) : texts[row];
}

std::string Column::Label() const {
    const bool unitInName = !unit.empty() && UnitInName(name) == unit;
    const std::string label = unitInName ? SpokenName(name) : WithBlanks(name);
    return unit.empty() ? label : label + " (" + unit + ")";
}

const Column* Table::Find(std::string_view name) const {
    for (const Column& column : columns)
        if (corvane::EqualText(column.name, name))
            return &column;
    return nullptr;
}

Table Table::Rows(const std::vector<std::uint32_t>& rowList) const {
    Table part;
    part.rows = rowList.size();
    for (const Column& column : columns) {
        Column cut{column.name, column.type, {}, {}, column.unit, column.decimals};
        for (const std::uint32_t row : rowList) {
            if (column.IsNumeric())
                cut.numbers.push_back(column.numbers[row]);
            else
                cut.texts.push_back(column.texts[row]);
        }
        part.columns.push_back(std::move(cut));
    }
    return part;
}

std::string UnitInName(std::string_view name) {
    static constexpr std::array<std::string_view, 22> units{"mm", "cm", "m",   "km",  "mg", "g",  "kg", "t",
                                                            "s",  "ms", "min", "h",   "d",  "Hz", "V",  "A",
                                                            "W",  "K",  "Pa",  "hPa", "ml", "l"};
    const std::size_t unitIndex = name.rfind('_');
    if (unitIndex == std::string_view::npos || unitIndex == 0)
        return {};
    const std::string_view unit = name.substr(unitIndex + 1);
    return std::find(units.begin(), units.end(), unit) == units.end() ? std::string() : std::string(unit);
}

std::string SpokenName(std::string_view name) {
    const std::size_t unit = UnitInName(name).size();
    return WithBlanks(std::string(unit > 0 ? name.substr(0, name.size() - unit - 1) : name));
}

std::optional<double> NumberOf(std::string_view text, char point) {
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    std::array<char, 64> letters{};
    if (text.size() > letters.size())
        return std::nullopt; // no one writes numbers of that length
    const std::span plain(letters.data(), std::copy(text.begin(), text.end(), letters.begin()));
    for (char& c : plain) {
        if (c == point)
            c = '.';
        else if (!((c >= '0' && c <= '9') || c == '-' || c == '+' || c == 'e' || c == 'E'))
            return std::nullopt; // also keeps out the words "inf" and "nan" and hexadecimal numbers
    }
    double value = 0;
    const char* end = plain.data() + plain.size();
    const auto result = std::from_chars(plain.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end)
        return std::nullopt;
    return value;
}

std::optional<std::string> DateOf(std::string_view text, std::string_view order) {
    std::array<int, 3> parts{}; // in the text's order
    std::size_t part = 0;
    std::size_t digits = 0;
    for (const char c : text) {
        if (c >= '0' && c <= '9' && ++digits <= 4) {
            parts[part] = parts[part] * 10 + (c - '0');
        } else if ((c == '-' || c == '.' || c == '/') && digits > 0 && part < 2) {
            ++part;
            digits = 0;
        } else {
            return std::nullopt;
        }
    }
    if (part != 2 || digits == 0)
        return std::nullopt;
    const auto In = [&](char which) {
        const std::size_t place = order.find(which);
        return place < parts.size() ? parts[place] : 0; // which is no date
    };
    const std::chrono::year_month_day date{std::chrono::year(In('y')),
                                           std::chrono::month(static_cast<unsigned>(In('m'))),
                                           std::chrono::day(static_cast<unsigned>(In('d')))};
    if (!date.ok() || In('y') < 1000)
        return std::nullopt;
    std::array<char, 16> written{};
    std::snprintf(written.data(), written.size(), "%04d-%02d-%02d", In('y'), In('m'), In('d'));
    return std::string(written.data());
}

bool LosesDigits(std::string_view text, double value) {
    constexpr std::size_t alwaysKept = 15; // digits, of which a double gives back any
    return text.size() > alwaysKept && SignificantDigits(TextOf(value)) != SignificantDigits(text);
}

} // namespace studies
