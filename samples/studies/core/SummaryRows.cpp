#include "SummaryRows.h"

#include "Report.h"
#include "Statistics.h"

namespace studies {
namespace {

std::vector<std::string> LineOf(const ColumnSummary& oColumn, int nDecimals) {
    std::vector<std::string> aLine{CountText(oColumn.nCount), CountText(oColumn.nMissing)};
    if (oColumn.eType == ColumnType::Text) {
        aLine.insert(aLine.end(),
                     {CountText(oColumn.nDistinct), oColumn.sMostFrequent, CountText(oColumn.nMostFrequent)});
        return aLine;
    }
    for (const double dblFigure : {oColumn.dblMean, oColumn.dblDeviation, oColumn.dblMin, oColumn.dblQ1,
                                   oColumn.dblMedian, oColumn.dblQ3, oColumn.dblMax})
        aLine.push_back(DecimalText(dblFigure, nDecimals));
    return aLine;
}

} // namespace

SummaryRows RowsOfSummary(const Table& oTable, const std::string& sGroupColumn, int nDecimals) {
    SummaryRows oRows;
    const bool bByGroup = !sGroupColumn.empty() && oTable.Find(sGroupColumn);
    std::vector<GroupSummary> aGroups;
    if (bByGroup)
        aGroups = SummarizeByGroup(oTable, sGroupColumn);
    else
        aGroups.push_back({{}, Summarize(oTable)});
    oRows.oNumbers.aNames = {{"Column", false},      {"Count", true}, {"Missing", true},      {"Mean", true},
                             {"Std. dev.", true},    {"Min", true},   {"1st quartile", true}, {"Median", true},
                             {"3rd quartile", true}, {"Max", true}};
    oRows.oTexts.aNames = {{"Column", false},  {"Count", true},          {"Missing", true},
                           {"Distinct", true}, {"Most frequent", false}, {"Frequency", true}};
    for (SummaryBlock* pBlock : {&oRows.oNumbers, &oRows.oTexts})
        if (bByGroup)
            pBlock->aNames.insert(pBlock->aNames.begin() + 1, {sGroupColumn, false});
    // By column, and in it by group, so that what is compared stands together.
    for (std::size_t i = 0; !aGroups.empty() && i < aGroups.front().oSummary.aColumns.size(); ++i)
        for (const GroupSummary& oGroup : aGroups) {
            const ColumnSummary& oColumn = oGroup.oSummary.aColumns[i];
            std::vector<std::string> aLine = LineOf(oColumn, nDecimals);
            if (bByGroup)
                aLine.insert(aLine.begin(), oGroup.sGroup.empty() ? "missing" : oGroup.sGroup);
            aLine.insert(aLine.begin(), oTable.Find(oColumn.sName)->Label());
            (oColumn.eType == ColumnType::Text ? oRows.oTexts : oRows.oNumbers).aRows.push_back(std::move(aLine));
        }
    return oRows;
}

} // namespace studies
