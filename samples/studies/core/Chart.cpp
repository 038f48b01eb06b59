#include "Chart.h"

#include "Distributions.h"
#include "Histogram.h"
#include "Inference.h"
#include "Report.h"
#include "Statistics.h"
#include "corvane/base/Failure.h"

#include <algorithm>
#include <cmath>

namespace studies {
namespace {

// The rows of each group, with the names to tell them apart: one nameless group where nothing divides the table.
struct Division {
    std::vector<std::string> aNames;
    std::vector<std::size_t> aGroupOf; // for each row; NoGroup where the group is missing
    static constexpr auto NoGroup = static_cast<std::size_t>(-1);
};

Division Divide(const Table& oTable, const std::string& sGroupColumn, std::string& sNote) {
    Division oDivision;
    oDivision.aGroupOf.assign(oTable.nRows, 0);
    const Column* pGroup = oTable.Find(sGroupColumn);
    if (!pGroup)
        return oDivision;
    const std::vector<std::string> aValues = ValuesOf(*pGroup);
    if (aValues.size() > MostChartGroups) {
        sNote = pGroup->sName + " has " + CountText(aValues.size()) + " values; up to " + CountText(MostChartGroups) +
                " can be distinguished. ";
        return oDivision;
    }
    oDivision.aNames = aValues;
    for (std::size_t iRow = 0; iRow < oTable.nRows; ++iRow) {
        const auto it = std::find(aValues.begin(), aValues.end(), pGroup->Text(iRow));
        oDivision.aGroupOf[iRow] =
            it == aValues.end() ? Division::NoGroup : static_cast<std::size_t>(it - aValues.begin());
    }
    return oDivision;
}

const Column* NumbersIn(const Table& oTable, const std::string& sColumn) {
    const Column* pColumn = oTable.Find(sColumn);
    return pColumn && pColumn->IsNumeric() ? pColumn : nullptr;
}

void SetLegend(ChartScene& oScene, const Division& oDivision) {
    for (std::size_t i = 0; i < oDivision.aNames.size(); ++i)
        oScene.aLegend.emplace_back(oDivision.aNames[i], static_cast<int>(i));
}

// Some room around the values.
void SpanAxis(ChartAxis& oAxis, double dblLow, double dblHigh) {
    const double dblRange = dblHigh > dblLow ? dblHigh - dblLow : std::max(1.0, std::abs(dblLow) * 0.1);
    oAxis.dblLow = dblLow - 0.04 * dblRange;
    oAxis.dblHigh = dblHigh + 0.04 * dblRange;
}

std::string RowsNote(std::size_t nCounted, std::size_t nRows) {
    if (nCounted == nRows)
        return CountText(nRows) + (nRows == 1 ? " row" : " rows");
    return CountText(nCounted) + " of " + CountText(nRows) + " rows; the others have missing values";
}

std::string SignedText(double dblValue) {
    return (dblValue < 0 ? " \u2212 " : " + ") + FigureText(std::abs(dblValue), 5);
}

void AddLine(ChartScene& oScene, const std::vector<double>& aX, const std::vector<double>& aY, int nColor,
             const std::string& sName, double dblConfidence) {
    constexpr int nSteps = 60;
    try {
        const Regression oLine = FitLine(aX, aY);
        const auto [itLow, itHigh] = std::minmax_element(aX.begin(), aX.end());
        ChartBand oBand{{}, nColor};
        ChartLine oDrawn{{}, nColor};
        for (int n = 0; n <= nSteps; ++n) {
            const double x = *itLow + (*itHigh - *itLow) * n / nSteps;
            const Interval oInterval = oLine.Band(x, dblConfidence);
            oBand.aEdges.push_back({x, oInterval.dblLow, oInterval.dblHigh});
            oDrawn.aPoints.emplace_back(x, oLine.At(x));
        }
        oScene.aBands.push_back(std::move(oBand));
        oScene.aLines.push_back(std::move(oDrawn));
        oScene.sNote += "\n" + (sName.empty() ? std::string() : sName + ": ") +
                        "y = " + FigureText(oLine.dblIntercept, 5) + SignedText(oLine.dblSlope) +
                        " x, R\u00B2 = " + DecimalText(oLine.dblShare, 3) + ", " + ProbabilityText(oLine.dblP);
    } catch (const corvane::Failure&) {
        // Too few points for a line; the points are shown without one.
    }
}

} // namespace

ChartScene HistogramScene(const Table& oTable, const AnalysisSettings& oSettings) {
    ChartScene oScene;
    const Column* pX = NumbersIn(oTable, oSettings.sColumnX);
    if (!pX) {
        oScene.sEmpty = "Choose a column of numbers.";
        return oScene;
    }
    const Bins oBins = BinsFor(pX->aNumbers, oSettings.nBins);
    if (oBins.nCount == 0) {
        oScene.sEmpty = "All values of “" + pX->sName + "” are missing.";
        return oScene;
    }
    const Division oDivision = Divide(oTable, oSettings.sGroupColumn, oScene.sNote);
    SetLegend(oScene, oDivision);
    std::vector<std::vector<double>> aValues(std::max<std::size_t>(1, oDivision.aNames.size()));
    std::size_t nCounted = 0;
    for (std::size_t iRow = 0; iRow < oTable.nRows; ++iRow)
        if (oDivision.aGroupOf[iRow] != Division::NoGroup && !pX->IsMissing(iRow)) {
            aValues[oDivision.aGroupOf[iRow]].push_back(pX->aNumbers[iRow]);
            ++nCounted;
        }
    std::vector<double> aTops(oBins.nCount);
    for (std::size_t iGroup = 0; iGroup < aValues.size(); ++iGroup) {
        const std::vector<std::size_t> aCounts = CountIn(oBins, aValues[iGroup]);
        for (std::size_t iBin = 0; iBin < aCounts.size(); ++iBin) {
            if (aCounts[iBin] == 0)
                continue;
            const double dblBottom = aTops[iBin];
            aTops[iBin] += static_cast<double>(aCounts[iBin]);
            const std::string sGroup = oDivision.aNames.empty() ? std::string() : oDivision.aNames[iGroup] + ", ";
            oScene.aBars.push_back({oBins.Edge(iBin), oBins.Edge(iBin + 1), dblBottom, aTops[iBin],
                                    static_cast<int>(iGroup),
                                    sGroup + FigureText(oBins.Edge(iBin)) + " to " + FigureText(oBins.Edge(iBin + 1)) +
                                        " " + pX->sUnit + (pX->sUnit.empty() ? ": " : "\n") + CountText(aCounts[iBin]) +
                                        (aCounts[iBin] == 1 ? " row" : " rows")});
        }
    }
    oScene.oX = {pX->Label(), oBins.Edge(0), oBins.Edge(oBins.nCount), {}};
    oScene.oY = {"rows", 0, 1.05 * *std::max_element(aTops.begin(), aTops.end()), {}};
    oScene.sNote += RowsNote(nCounted, oTable.nRows);
    return oScene;
}

ChartScene ScatterScene(const Table& oTable, const AnalysisSettings& oSettings) {
    ChartScene oScene;
    const Column* pX = NumbersIn(oTable, oSettings.sColumnX);
    const Column* pY = NumbersIn(oTable, oSettings.sColumnY);
    if (!pX || !pY) {
        oScene.sEmpty = "Choose two columns of numbers.";
        return oScene;
    }
    const Division oDivision = Divide(oTable, oSettings.sGroupColumn, oScene.sNote);
    SetLegend(oScene, oDivision);
    std::vector<std::vector<double>> aX(std::max<std::size_t>(1, oDivision.aNames.size()));
    std::vector<std::vector<double>> aY(aX.size());
    for (std::size_t iRow = 0; iRow < oTable.nRows; ++iRow) {
        const std::size_t iGroup = oDivision.aGroupOf[iRow];
        if (iGroup == Division::NoGroup || pX->IsMissing(iRow) || pY->IsMissing(iRow))
            continue;
        aX[iGroup].push_back(pX->aNumbers[iRow]);
        aY[iGroup].push_back(pY->aNumbers[iRow]);
        oScene.aPoints.push_back({pX->aNumbers[iRow], pY->aNumbers[iRow], static_cast<int>(iGroup), iRow});
    }
    if (oScene.aPoints.empty()) {
        oScene.sEmpty = "No row has both values.";
        return oScene;
    }
    const auto ByX = [](const ChartPoint& a, const ChartPoint& b) { return a.x < b.x; };
    const auto ByY = [](const ChartPoint& a, const ChartPoint& b) { return a.y < b.y; };
    const auto [itLeft, itRight] = std::minmax_element(oScene.aPoints.begin(), oScene.aPoints.end(), ByX);
    const auto [itLow, itHigh] = std::minmax_element(oScene.aPoints.begin(), oScene.aPoints.end(), ByY);
    oScene.oX.sLabel = pX->Label();
    oScene.oY.sLabel = pY->Label();
    SpanAxis(oScene.oX, itLeft->x, itRight->x);
    SpanAxis(oScene.oY, itLow->y, itHigh->y);
    oScene.sNote += RowsNote(oScene.aPoints.size(), oTable.nRows);
    for (std::size_t iGroup = 0; iGroup < aX.size(); ++iGroup)
        AddLine(oScene, aX[iGroup], aY[iGroup], static_cast<int>(iGroup),
                oDivision.aNames.empty() ? std::string() : oDivision.aNames[iGroup],
                oSettings.oBootstrap.dblConfidence);
    return oScene;
}

ChartScene ComparisonScene(const Table& oTable, const AnalysisSettings& oSettings) {
    ChartScene oScene;
    const Column* pX = NumbersIn(oTable, oSettings.sColumnX);
    const Column* pGroup = oTable.Find(oSettings.sGroupColumn);
    if (!pX || !pGroup || oSettings.sFirstGroup.empty() || oSettings.sSecondGroup.empty()) {
        oScene.sEmpty = "Choose a column of numbers and two groups.";
        return oScene;
    }
    const double dblConfidence = oSettings.oBootstrap.dblConfidence;
    double dblLow = 0;
    double dblHigh = 0;
    for (const std::string* pName : {&oSettings.sFirstGroup, &oSettings.sSecondGroup}) {
        const SampleFigures oFigures = FiguresOf(NumbersOfGroup(*pX, *pGroup, *pName));
        if (oFigures.nCount < 2) {
            oScene.sEmpty = "A group needs at least two values to be compared; “" + *pName + "” has " +
                            CountText(oFigures.nCount) + ".";
            return oScene;
        }
        const double dblReach = StudentQuantile((1 + dblConfidence) / 2, static_cast<double>(oFigures.nCount - 1)) *
                                oFigures.dblDeviation / std::sqrt(static_cast<double>(oFigures.nCount));
        const auto nPlace = static_cast<int>(oScene.aMarks.size());
        oScene.aMarks.push_back({static_cast<double>(nPlace), oFigures.dblMean - dblReach, oFigures.dblMean,
                                 oFigures.dblMean + dblReach, nPlace,
                                 *pName + "\nmean " + FigureText(oFigures.dblMean, 6) + " " + pX->sUnit + "\n" +
                                     ShareText(dblConfidence) + " from " + FigureText(oFigures.dblMean - dblReach, 6) +
                                     " to " + FigureText(oFigures.dblMean + dblReach, 6)});
        oScene.oX.aNames.push_back(*pName);
        dblLow = nPlace == 0 ? oScene.aMarks[0].dblLow : std::min(dblLow, oScene.aMarks.back().dblLow);
        dblHigh = nPlace == 0 ? oScene.aMarks[0].dblHigh : std::max(dblHigh, oScene.aMarks.back().dblHigh);
    }
    SpanAxis(oScene.oY, dblLow, dblHigh);
    oScene.oX.sLabel = pGroup->Label();
    oScene.oX.dblLow = -0.7;
    oScene.oX.dblHigh = 1.7;
    oScene.oY.sLabel = "mean " + pX->Label();
    oScene.sNote = "Means with their " + ShareText(dblConfidence) + " confidence intervals";
    return oScene;
}

} // namespace studies
