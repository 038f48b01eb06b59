#include "ComparisonText.h"

#include "Inference.h"
#include "Report.h"
#include "Statistics.h"
#include "corvane/base/Failure.h"

namespace studies {
namespace {

std::string WithUnit(double dblValue, const Column& oColumn, int nDecimals) {
    return DecimalText(dblValue, nDecimals) + (oColumn.sUnit.empty() ? "" : " " + oColumn.sUnit);
}

std::string GroupLine(const std::string& sGroup, const SampleFigures& oFigures, const Column& oColumn, int nDecimals) {
    return sGroup + ": " + WithUnit(oFigures.dblMean, oColumn, nDecimals) + " (standard deviation " +
           DecimalText(oFigures.dblDeviation, nDecimals) + ", " + CountText(oFigures.nCount) + " values)\n";
}

} // namespace

std::string ComparisonText(const Table& oTable, const AnalysisSettings& oSettings, int nDecimals) {
    const Column* pX = oTable.Find(oSettings.sColumnX);
    const Column* pGroup = oTable.Find(oSettings.sGroupColumn);
    if (!pX || !pX->IsNumeric() || !pGroup || oSettings.sFirstGroup.empty() || oSettings.sSecondGroup.empty())
        return {};
    if (oSettings.sFirstGroup == oSettings.sSecondGroup)
        return "Choose two different groups.";
    const double dblConfidence = oSettings.oBootstrap.dblConfidence;
    try {
        const WelchTest oTest = TestMeans(NumbersOfGroup(*pX, *pGroup, oSettings.sFirstGroup),
                                          NumbersOfGroup(*pX, *pGroup, oSettings.sSecondGroup), dblConfidence);
        return GroupLine(oSettings.sFirstGroup, oTest.oFirst, *pX, nDecimals) +
               GroupLine(oSettings.sSecondGroup, oTest.oSecond, *pX, nDecimals) +
               "Difference: " + WithUnit(oTest.dblDifference, *pX, nDecimals) + ", " + ShareText(dblConfidence) +
               " confidence from " + DecimalText(oTest.oDifference.dblLow, nDecimals) + " to " +
               DecimalText(oTest.oDifference.dblHigh, nDecimals) +
               "\nWelch's t-test: t = " + DecimalText(oTest.dblT, 3) + " with " + DecimalText(oTest.dblFreedom, 1) +
               " degrees of freedom, " + ProbabilityText(oTest.dblP);
    } catch (const corvane::Failure& oFailure) {
        return oFailure.Description;
    }
}

std::string BootstrapText(const BootstrapResult& oResult, const AnalysisSettings& oSettings, const Column& oColumn,
                          int nDecimals) {
    const BootstrapOptions& oOptions = oSettings.oBootstrap;
    return std::string(NameOf(oOptions.eFigure)) + " of " + SpokenName(oColumn.sName) + ": " +
           WithUnit(oResult.dblFigure, oColumn, nDecimals) + "\n" + ShareText(oOptions.dblConfidence) +
           " confidence from " + DecimalText(oResult.oInterval.dblLow, nDecimals) + " to " +
           DecimalText(oResult.oInterval.dblHigh, nDecimals) + "\nstandard error " +
           DecimalText(oResult.dblError, nDecimals) + ", " + CountText(oResult.nCount) + " values, " +
           CountText(static_cast<std::size_t>(oOptions.nResamples)) + " resamples, seed " +
           std::to_string(oOptions.nSeed);
}

} // namespace studies
