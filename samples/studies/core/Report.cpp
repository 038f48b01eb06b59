#include "Report.h"

#include "Errors.h"

#include <algorithm>
#include <cmath>

namespace studies {
std::string CountText(std::size_t count) {
    return DecimalText(static_cast<double>(count), 0);
}

std::string ProbabilityText(double p) {
    return p > 0 ? "p = " + FigureText(p, 3) : "p < 1e-300";
}

std::string ShareText(double share) {
    return FigureText(share * 100, 4) + " %";
}

std::string RowsText(std::size_t rows) {
    return Translated(rows, "%1 row", "%1 rows");
}

std::string SizeText(std::size_t rows, std::size_t columns) {
    return RowsText(rows) + ", " + Translated(columns, "%1 column", "%1 columns");
}

std::string FirstLines(const std::vector<std::string>& lines) {
    constexpr std::size_t mostShown = 3;
    std::string text;
    for (std::size_t i = 0; i < std::min(mostShown, lines.size()); ++i)
        text += (i > 0 ? "\n" : "") + lines[i];
    return lines.size() > mostShown ? text + "\n" + Translated("and %1 more.", {CountText(lines.size() - mostShown)})
                                    : text;
}

std::string LineText(const TableSummary& summary) {
    constexpr std::size_t shown = 4;
    constexpr int digits = 4;
    std::string text;
    std::size_t numbers = 0;
    for (const ColumnSummary& column : summary.columns) {
        if (!IsNumeric(column.type) || ++numbers > shown)
            continue;
        text += (text.empty() ? "" : ", ") + SpokenName(column.name) + " " + FigureText(column.mean, digits) +
                " \u00B1 " + FigureText(column.deviation, digits);
    }
    if (numbers > shown)
        text += ", " + Translated("%1 more", {std::to_string(numbers - shown)});
    return text.empty() ? SizeText(summary.rows, summary.columns.size()) : text;
}

} // namespace studies
