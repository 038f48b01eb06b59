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

void SummarizeNumbers(const Column& oColumn, ColumnSummary& oSummary) {
    std::vector<double> aValues;
    aValues.reserve(oColumn.aNumbers.size());
    std::copy_if(oColumn.aNumbers.begin(), oColumn.aNumbers.end(), std::back_inserter(aValues),
                 [](double dblValue) { return !std::isnan(dblValue); });
    std::sort(aValues.begin(), aValues.end());
    oSummary.nCount = aValues.size();

    long double dblSum = 0;
    for (const double dblValue : aValues)
        dblSum += dblValue;
    const auto dblCount = static_cast<long double>(aValues.size());
    const long double dblMean = dblSum / dblCount;
    // Squares of differences in a second pass: the sum of squares loses the digits that matter.
    long double dblSquares = 0;
    for (const double dblValue : aValues)
        dblSquares += (dblValue - dblMean) * (dblValue - dblMean);

    const bool bAny = !aValues.empty();
    oSummary.dblMean = bAny ? static_cast<double>(dblMean) : NotANumber;
    oSummary.dblDeviation =
        aValues.size() > 1 ? static_cast<double>(std::sqrt(dblSquares / (dblCount - 1))) : NotANumber;
    oSummary.dblMin = bAny ? aValues.front() : NotANumber;
    oSummary.dblQ1 = Quantile(aValues, 0.25);
    oSummary.dblMedian = Quantile(aValues, 0.5);
    oSummary.dblQ3 = Quantile(aValues, 0.75);
    oSummary.dblMax = bAny ? aValues.back() : NotANumber;
}

void SummarizeTexts(const Column& oColumn, ColumnSummary& oSummary) {
    std::map<std::string_view, std::size_t> mapCounts;
    for (const std::string& sText : oColumn.aTexts)
        if (!sText.empty())
            ++mapCounts[sText];
    oSummary.nDistinct = mapCounts.size();
    for (const auto& [sText, nCount] : mapCounts) {
        oSummary.nCount += nCount;
        if (nCount > oSummary.nMostFrequent) {
            oSummary.nMostFrequent = nCount;
            oSummary.sMostFrequent = sText;
        }
    }
}

} // namespace

double Quantile(const std::vector<double>& aSorted, double dblShare) {
    if (aSorted.empty())
        return NotANumber;
    const double dblPlace = static_cast<double>(aSorted.size() - 1) * dblShare;
    const auto iBelow = static_cast<std::size_t>(std::floor(dblPlace));
    const std::size_t iAbove = std::min(iBelow + 1, aSorted.size() - 1);
    return aSorted[iBelow] + (dblPlace - std::floor(dblPlace)) * (aSorted[iAbove] - aSorted[iBelow]);
}

ColumnSummary Summarize(const Column& oColumn) {
    ColumnSummary oSummary;
    oSummary.sName = oColumn.sName;
    oSummary.eType = oColumn.eType;
    if (oColumn.IsNumeric())
        SummarizeNumbers(oColumn, oSummary);
    else
        SummarizeTexts(oColumn, oSummary);
    oSummary.nMissing = (oColumn.IsNumeric() ? oColumn.aNumbers.size() : oColumn.aTexts.size()) - oSummary.nCount;
    return oSummary;
}

TableSummary Summarize(const Table& oTable) {
    TableSummary oSummary;
    oSummary.nRows = oTable.nRows;
    for (const Column& oColumn : oTable.aColumns)
        oSummary.aColumns.push_back(Summarize(oColumn));
    return oSummary;
}

std::vector<GroupSummary> SummarizeByGroup(const Table& oTable, std::string_view sColumn) {
    const Column* pGroup = oTable.Find(sColumn);
    if (!pGroup)
        FailWith("The data have no column “" + std::string(sColumn) + "”.");
    // By value for numbers, by text else; what is missing comes last.
    std::map<std::pair<double, std::string>, std::vector<std::size_t>> mapGroups;
    std::vector<std::size_t> aMissing;
    for (std::size_t iRow = 0; iRow < oTable.nRows; ++iRow) {
        if (pGroup->IsMissing(iRow))
            aMissing.push_back(iRow);
        else
            mapGroups[{pGroup->IsNumeric() ? pGroup->aNumbers[iRow] : 0, pGroup->Text(iRow)}].push_back(iRow);
    }
    std::vector<GroupSummary> aGroups;
    const auto AddGroup = [&](const std::string& sGroup, const std::vector<std::size_t>& aRows) {
        TableSummary oSummary = Summarize(oTable.Rows(aRows));
        oSummary.aColumns.erase(oSummary.aColumns.begin() + (pGroup - oTable.aColumns.data()));
        aGroups.push_back({sGroup, std::move(oSummary)});
    };
    for (const auto& [oKey, aRows] : mapGroups)
        AddGroup(oKey.second, aRows);
    if (!aMissing.empty())
        AddGroup({}, aMissing);
    return aGroups;
}

std::vector<std::string> ValuesOf(const Column& oColumn) {
    std::vector<std::string> aValues;
    if (oColumn.IsNumeric()) {
        std::set<double> aNumbers;
        std::copy_if(oColumn.aNumbers.begin(), oColumn.aNumbers.end(), std::inserter(aNumbers, aNumbers.end()),
                     [](double dblValue) { return !std::isnan(dblValue); });
        std::transform(aNumbers.begin(), aNumbers.end(), std::back_inserter(aValues), TextOf);
    } else {
        const std::set<std::string_view> aTexts(oColumn.aTexts.begin(), oColumn.aTexts.end());
        for (const std::string_view sText : aTexts)
            if (!sText.empty())
                aValues.emplace_back(sText);
    }
    return aValues;
}

std::vector<double> NumbersOfGroup(const Column& oNumbers, const Column& oGroups, std::string_view sGroup) {
    std::vector<double> aNumbers;
    for (std::size_t iRow = 0; iRow < oNumbers.aNumbers.size(); ++iRow)
        if (oGroups.Text(iRow) == sGroup)
            aNumbers.push_back(oNumbers.aNumbers[iRow]);
    return aNumbers;
}

std::vector<std::string> GroupColumns(const Table& oTable) {
    std::vector<std::string> aNames;
    for (const Column& oColumn : oTable.aColumns) {
        if (oColumn.IsNumeric())
            continue;
        const std::size_t nDistinct = Summarize(oColumn).nDistinct;
        if (nDistinct > 1 && nDistinct * 2 < oTable.nRows)
            aNames.push_back(oColumn.sName);
    }
    return aNames;
}

} // namespace studies
