// A table of data: named columns of equal length, each of whole numbers, numbers or text.
#pragma once

#include "NumberText.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace studies {

enum class ColumnType { Whole, Number, Text, Category, Date };

[[nodiscard]] std::string_view NameOf(ColumnType type);
// The same as a user reads it.
[[nodiscard]] std::string ShownName(ColumnType type);
// Fails for a word that NameOf doesn't give.
[[nodiscard]] ColumnType ColumnTypeOf(std::string_view name);

[[nodiscard]] inline bool IsNumeric(ColumnType type) {
    return type == ColumnType::Whole || type == ColumnType::Number;
}

struct Column {
    std::string name;
    ColumnType type = ColumnType::Text;
    std::vector<std::string> texts; // of any other column; dates as "2026-11-25"; "" where the value is missing
    std::vector<double> numbers;    // of a column of numbers; NaN where the value is missing
    std::string unit = {};          // "" for none
    int decimals = 0;               // of a column of numbers: how many its values are written with at least

    [[nodiscard]] bool IsNumeric() const { return studies::IsNumeric(type); }
    [[nodiscard]] bool IsMissing(std::size_t row) const;
    // The value as text, "" where it is missing.
    [[nodiscard]] std::string Text(std::size_t row) const;
    // As it stands on an axis or over a column: "bill length (mm)".
    [[nodiscard]] std::string Label() const;
};

struct Table {
    std::vector<Column> columns;
    std::size_t rows = 0;

    // Without regard to case; a null pointer when there is none.
    [[nodiscard]] const Column* Find(std::string_view name) const;
    // The rows of these positions, in their order.
    [[nodiscard]] Table Rows(const std::vector<std::uint32_t>& rowList) const;
};

// A column's name as it is read aloud: "bill length" of "bill_length_mm".
[[nodiscard]] std::string SpokenName(std::string_view name);
// The unit that a column's name ends in, such as "mm" of "bill_length_mm"; "" when it ends in none that is known.
[[nodiscard]] std::string UnitInName(std::string_view name);
// The number that the whole text is, with the sign given as its decimal point.
[[nodiscard]] std::optional<double> NumberOf(std::string_view text, char point = '.');
// The date as "2026-11-25", of a text in that order of year, month and day, such as "dmy"; nothing for any other text.
[[nodiscard]] std::optional<std::string> DateOf(std::string_view text, std::string_view order = "ymd");
// Whether the number, read from the text, is another than the text says, as that of 12345678901234567 is.
[[nodiscard]] bool LosesDigits(std::string_view text, double value);

} // namespace studies
