#include "Report.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace studies {
namespace {

std::string Counted(std::size_t n, std::string_view sOne) {
    return CountText(n) + " " + std::string(sOne) + (n == 1 ? "" : "s");
}

} // namespace

std::string FigureText(double dblValue, int nDigits) {
    if (std::isnan(dblValue))
        return "-";
    std::array<char, 32> aText{};
    const auto oResult =
        std::to_chars(aText.data(), aText.data() + aText.size(), dblValue, std::chars_format::general, nDigits);
    return {aText.data(), oResult.ptr};
}

std::string DecimalText(double dblValue, int nDecimals) {
    if (std::isnan(dblValue))
        return "-";
    const double dblSize = std::abs(dblValue);
    const double dblLeast = 0.5 * std::pow(10.0, -nDecimals);
    std::array<char, 64> aText{};
    if (dblSize >= 1e12 || (dblSize > 0 && dblSize < dblLeast)) {
        const auto oResult = std::to_chars(aText.data(), aText.data() + aText.size(), dblValue,
                                           std::chars_format::scientific, std::max(1, nDecimals));
        return {aText.data(), oResult.ptr};
    }
    const auto oResult =
        std::to_chars(aText.data(), aText.data() + aText.size(), dblValue, std::chars_format::fixed, nDecimals);
    std::string sText(aText.data(), oResult.ptr);
    const std::size_t iPoint = std::min(sText.find('.'), sText.size());
    for (std::size_t i = iPoint; i > 3 && sText[i - 4] != '-'; i -= 3)
        sText.insert(i - 3, ",");
    return sText;
}

std::string CountText(std::size_t nCount) {
    return DecimalText(static_cast<double>(nCount), 0);
}

std::string ProbabilityText(double dblP) {
    return dblP < 0.001 ? "p < 0.001" : "p = " + DecimalText(dblP, 3);
}

std::string ShareText(double dblShare) {
    return FigureText(dblShare * 100, 4) + " %";
}

std::string SizeText(std::size_t nRows, std::size_t nColumns) {
    return Counted(nRows, "row") + ", " + Counted(nColumns, "column");
}

std::string JoinLines(const std::vector<std::string>& aLines) {
    std::string sText;
    for (const std::string& sLine : aLines)
        sText += (sText.empty() ? "" : "\n") + sLine;
    return sText;
}

std::string LineText(const TableSummary& oSummary) {
    constexpr std::size_t nShown = 4;
    constexpr int nDigits = 4;
    std::string sText;
    std::size_t nNumbers = 0;
    for (const ColumnSummary& oColumn : oSummary.aColumns) {
        if (oColumn.eType == ColumnType::Text || ++nNumbers > nShown)
            continue;
        sText += (sText.empty() ? "" : ", ") + SpokenName(oColumn.sName) + " " + FigureText(oColumn.dblMean, nDigits) +
                 " \u00B1 " + FigureText(oColumn.dblDeviation, nDigits);
    }
    if (nNumbers > nShown)
        sText += ", " + std::to_string(nNumbers - nShown) + " more";
    return sText.empty() ? SizeText(oSummary.nRows, oSummary.aColumns.size()) : sText;
}

} // namespace studies
