#include "Inference.h"

#include "Distributions.h"
#include "Errors.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace studies {

SampleFigures FiguresOf(std::span<const double> aValues) {
    constexpr double dblNone = std::numeric_limits<double>::quiet_NaN();
    SampleFigures oFigures;
    long double dblSum = 0;
    for (const double dblValue : aValues)
        if (!std::isnan(dblValue)) {
            dblSum += dblValue;
            ++oFigures.nCount;
        }
    const long double dblMean = dblSum / static_cast<long double>(oFigures.nCount);
    long double dblSquares = 0;
    for (const double dblValue : aValues)
        if (!std::isnan(dblValue))
            dblSquares += (dblValue - dblMean) * (dblValue - dblMean);
    oFigures.dblMean = oFigures.nCount > 0 ? static_cast<double>(dblMean) : dblNone;
    oFigures.dblDeviation =
        oFigures.nCount > 1
            ? static_cast<double>(std::sqrt(dblSquares / (static_cast<long double>(oFigures.nCount) - 1)))
            : dblNone;
    return oFigures;
}

WelchTest TestMeans(std::span<const double> aFirst, std::span<const double> aSecond, double dblConfidence) {
    WelchTest oTest;
    oTest.oFirst = FiguresOf(aFirst);
    oTest.oSecond = FiguresOf(aSecond);
    for (const SampleFigures* pFigures : {&oTest.oFirst, &oTest.oSecond})
        if (pFigures->nCount < 2)
            FailWith("A group needs at least two values to be compared; one has " + std::to_string(pFigures->nCount) +
                     ".");
    const auto Share = [](const SampleFigures& oFigures) {
        return oFigures.dblDeviation * oFigures.dblDeviation / static_cast<double>(oFigures.nCount);
    };
    const double dblFirst = Share(oTest.oFirst);
    const double dblSecond = Share(oTest.oSecond);
    const double dblError = std::sqrt(dblFirst + dblSecond);
    if (!(dblError > 0))
        FailWith("All values within each group are equal, so the groups can't be compared.");
    oTest.dblDifference = oTest.oFirst.dblMean - oTest.oSecond.dblMean;
    oTest.dblT = oTest.dblDifference / dblError;
    oTest.dblFreedom = (dblFirst + dblSecond) * (dblFirst + dblSecond) /
                       (dblFirst * dblFirst / static_cast<double>(oTest.oFirst.nCount - 1) +
                        dblSecond * dblSecond / static_cast<double>(oTest.oSecond.nCount - 1));
    oTest.dblP = StudentTwoSided(oTest.dblT, oTest.dblFreedom);
    const double dblReach = StudentQuantile((1 + dblConfidence) / 2, oTest.dblFreedom) * dblError;
    oTest.oDifference = {oTest.dblDifference - dblReach, oTest.dblDifference + dblReach};
    return oTest;
}

Interval Regression::Band(double dblX, double dblConfidence) const {
    const double dblAway = dblX - dblMeanX;
    const double dblError = dblResidual * std::sqrt(1 / static_cast<double>(nCount) + dblAway * dblAway / dblSquaresX);
    const double dblReach = StudentQuantile((1 + dblConfidence) / 2, static_cast<double>(nCount - 2)) * dblError;
    return {At(dblX) - dblReach, At(dblX) + dblReach};
}

Regression FitLine(std::span<const double> aX, std::span<const double> aY) {
    const std::size_t nPairs = std::min(aX.size(), aY.size());
    const auto IsComplete = [&](std::size_t i) { return !std::isnan(aX[i]) && !std::isnan(aY[i]); };
    Regression oLine;
    long double dblSumX = 0;
    long double dblSumY = 0;
    for (std::size_t i = 0; i < nPairs; ++i)
        if (IsComplete(i)) {
            dblSumX += aX[i];
            dblSumY += aY[i];
            ++oLine.nCount;
        }
    if (oLine.nCount < 3)
        FailWith("A regression line needs at least three rows with both values; there are " +
                 std::to_string(oLine.nCount) + ".");
    const auto dblCount = static_cast<long double>(oLine.nCount);
    const long double dblMeanX = dblSumX / dblCount;
    const long double dblMeanY = dblSumY / dblCount;
    long double dblXX = 0;
    long double dblXY = 0;
    long double dblYY = 0;
    for (std::size_t i = 0; i < nPairs; ++i)
        if (IsComplete(i)) {
            const long double dblX = aX[i] - dblMeanX;
            const long double dblY = aY[i] - dblMeanY;
            dblXX += dblX * dblX;
            dblXY += dblX * dblY;
            dblYY += dblY * dblY;
        }
    if (!(dblXX > 0))
        FailWith("All rows have the same x, so there is no regression line.");
    const long double dblSlope = dblXY / dblXX;
    const long double dblRest = std::max(0.0L, dblYY - dblSlope * dblXY);
    const long double dblResidual = std::sqrt(dblRest / (dblCount - 2));
    oLine.dblMeanX = static_cast<double>(dblMeanX);
    oLine.dblSquaresX = static_cast<double>(dblXX);
    oLine.dblSlope = static_cast<double>(dblSlope);
    oLine.dblIntercept = static_cast<double>(dblMeanY - dblSlope * dblMeanX);
    oLine.dblResidual = static_cast<double>(dblResidual);
    oLine.dblSlopeError = static_cast<double>(dblResidual / std::sqrt(dblXX));
    oLine.dblInterceptError = static_cast<double>(dblResidual * std::sqrt(1 / dblCount + dblMeanX * dblMeanX / dblXX));
    oLine.dblShare = dblYY > 0 ? static_cast<double>(1 - dblRest / dblYY) : 1;
    oLine.dblP = oLine.dblSlopeError > 0
                     ? StudentTwoSided(oLine.dblSlope / oLine.dblSlopeError, static_cast<double>(oLine.nCount - 2))
                     : 0;
    return oLine;
}

} // namespace studies
