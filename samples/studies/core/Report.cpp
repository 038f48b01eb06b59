#include "Report.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace studies {
namespace {

std::string Counted(std::size_t n, std::string_view one) {
    return CountText(n) + " " + std::string(one) + (n == 1 ? "" : "s");
}

} // namespace

std::string FigureText(double value, int digits) {
    if (std::isnan(value))
        return "-";
    std::array<char, 32> text{};
    const auto result =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, digits);
    return {text.data(), result.ptr};
}

std::string DecimalText(double value, int decimals) {
    if (std::isnan(value))
        return "-";
    const double size = std::abs(value);
    const double least = 0.5 * std::pow(10.0, -decimals);
    std::array<char, 64> buffer{};
    if (size >= 1e12 || (size > 0 && size < least)) {
        const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                          std::chars_format::scientific, std::max(1, decimals));
        return {buffer.data(), result.ptr};
    }
    const auto result =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, decimals);
    std::string text(buffer.data(), result.ptr);
    const std::size_t point = std::min(text.find('.'), text.size());
    for (std::size_t i = point; i > 3 && text[i - 4] != '-'; i -= 3)
        text.insert(i - 3, ",");
    return text;
}

std::string CountText(std::size_t count) {
    return DecimalText(static_cast<double>(count), 0);
}

std::string ProbabilityText(double p) {
    return p < 0.001 ? "p < 0.001" : "p = " + DecimalText(p, 3);
}

std::string ShareText(double share) {
    return FigureText(share * 100, 4) + " %";
}

std::string SizeText(std::size_t rows, std::size_t columns) {
    return Counted(rows, "row") + ", " + Counted(columns, "column");
}

std::string JoinLines(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += (text.empty() ? "" : "\n") + line;
    return text;
}

std::string LineText(const TableSummary& summary) {
    constexpr std::size_t shown = 4;
    constexpr int digits = 4;
    std::string text;
    std::size_t numbers = 0;
    for (const ColumnSummary& column : summary.columns) {
        if (column.type == ColumnType::Text || ++numbers > shown)
            continue;
        text += (text.empty() ? "" : ", ") + SpokenName(column.name) + " " + FigureText(column.mean, digits) +
                " \u00B1 " + FigureText(column.deviation, digits);
    }
    if (numbers > shown)
        text += ", " + std::to_string(numbers - shown) + " more";
    return text.empty() ? SizeText(summary.rows, summary.columns.size()) : text;
}

} // namespace studies
