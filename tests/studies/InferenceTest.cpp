#include "Inference.h"

#include "Bootstrap.h"
#include "Chart.h"
#include "ComparisonText.h"
#include "Csv.h"
#include "Distributions.h"
#include "Figures.h"
#include "Histogram.h"
#include "Report.h"
#include "Statistics.h"
#include "corvane/base/Failure.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

using namespace studies;

namespace {

Table Penguins() {
    return ReadCsvFile(STUDIES_DATA "/penguins.csv").oTable;
}

// Values to three decimals as they stand in every printed table of the distribution.
TEST(Distributions, StudentQuantilesAgreeWithPrintedTables) {
    const struct {
        double dblFreedom;
        double dbl95;
        double dbl975;
        double dbl995;
    } aRows[] = {{1, 6.314, 12.706, 63.657}, {2, 2.920, 4.303, 9.925},  {5, 2.015, 2.571, 4.032},
                 {10, 1.812, 2.228, 3.169},  {30, 1.697, 2.042, 2.750}, {120, 1.658, 1.980, 2.617}};
    for (const auto& oRow : aRows) {
        EXPECT_NEAR(StudentQuantile(0.95, oRow.dblFreedom), oRow.dbl95, 5e-4) << oRow.dblFreedom;
        EXPECT_NEAR(StudentQuantile(0.975, oRow.dblFreedom), oRow.dbl975, 5e-4) << oRow.dblFreedom;
        EXPECT_NEAR(StudentQuantile(0.005, oRow.dblFreedom), -oRow.dbl995, 5e-4) << oRow.dblFreedom;
    }
}

// With one and two degrees of freedom there are formulas without the beta function.
TEST(Distributions, StudentTailsAgreeWithClosedForms) {
    for (const double t : {0.0, 0.1, 1.0, 2.5, 10.0, 1000.0}) {
        EXPECT_NEAR(StudentTwoSided(t, 1), 1 - 2 / std::numbers::pi * std::atan(t), 1e-13) << t;
        EXPECT_NEAR(StudentTwoSided(-t, 2), 1 - t / std::sqrt(2 + t * t), 1e-13) << t;
    }
}

// R's example t.test(extra ~ group, data = sleep), as its output is printed in its documentation.
TEST(Inference, WelchAgreesWithRsSleepExample) {
    const double aFirst[] = {0.7, -1.6, -0.2, -1.2, -0.1, 3.4, 3.7, 0.8, 0.0, 2.0};
    const double aSecond[] = {1.9, 0.8, 1.1, 0.1, -0.1, 4.4, 5.5, 1.6, 4.6, 3.4};
    const WelchTest oTest = TestMeans(aFirst, aSecond, 0.95);
    EXPECT_NEAR(oTest.dblT, -1.8608, 5e-5);
    EXPECT_NEAR(oTest.dblFreedom, 17.776, 5e-4);
    EXPECT_NEAR(oTest.dblP, 0.07939, 5e-6);
    EXPECT_NEAR(oTest.oDifference.dblLow, -3.3654832, 5e-8);
    EXPECT_NEAR(oTest.oDifference.dblHigh, 0.2054832, 5e-8);
}

// R's lm(dist ~ speed, data = cars), from the summary that its documentation prints.
TEST(Inference, RegressionAgreesWithRsCarsExample) {
    const double aSpeed[] = {4,  4,  7,  7,  8,  9,  10, 10, 10, 11, 11, 12, 12, 12, 12, 13, 13,
                             13, 13, 14, 14, 14, 14, 15, 15, 15, 16, 16, 17, 17, 17, 18, 18, 18,
                             18, 19, 19, 19, 20, 20, 20, 20, 20, 22, 23, 24, 24, 24, 24, 25};
    const double aDistance[] = {2,  10, 4,  22, 16, 10, 18, 26, 34, 17, 28, 14, 20, 24, 28,  26, 34,
                                34, 46, 26, 36, 60, 80, 20, 26, 54, 32, 40, 32, 40, 50, 42,  56, 76,
                                84, 36, 46, 68, 32, 48, 52, 56, 64, 66, 54, 70, 92, 93, 120, 85};
    const Regression oLine = FitLine(aSpeed, aDistance);
    EXPECT_NEAR(oLine.dblIntercept, -17.5791, 5e-5);
    EXPECT_NEAR(oLine.dblSlope, 3.9324, 5e-5);
    EXPECT_NEAR(oLine.dblInterceptError, 6.7584, 5e-5);
    EXPECT_NEAR(oLine.dblSlopeError, 0.4155, 5e-5);
    EXPECT_NEAR(oLine.dblResidual, 15.38, 5e-3);
    EXPECT_NEAR(oLine.dblShare, 0.6511, 5e-5);
    EXPECT_NEAR(oLine.dblP / 1.49e-12, 1, 5e-3);
    // Over the mean of x the band is the interval of a mean with the residual error.
    const Interval oMiddle = oLine.Band(oLine.dblMeanX, 0.95);
    EXPECT_NEAR((oMiddle.dblHigh - oMiddle.dblLow) / 2, StudentQuantile(0.975, 48) * oLine.dblResidual / std::sqrt(50),
                1e-12);
    EXPECT_GT(oLine.Band(25, 0.95).dblHigh - oLine.Band(25, 0.95).dblLow, oMiddle.dblHigh - oMiddle.dblLow);
}

// By Python's statistics module: variance, mean, linear_regression and correlation of the same file.
TEST(Inference, PenguinsAgreeWithPython) {
    const Table oTable = Penguins();
    const Column& oMass = *oTable.Find("body_mass_g");
    const Column& oSpecies = *oTable.Find("species");
    const WelchTest oTest =
        TestMeans(NumbersOfGroup(oMass, oSpecies, "Adelie"), NumbersOfGroup(oMass, oSpecies, "Chinstrap"), 0.95);
    EXPECT_NEAR(oTest.dblT, -0.5430902, 5e-7);
    EXPECT_NEAR(oTest.dblFreedom, 152.45476, 5e-5);
    const Regression oLine = FitLine(oTable.Find("flipper_length_mm")->aNumbers, oMass.aNumbers);
    EXPECT_EQ(oLine.nCount, 342U);
    EXPECT_NEAR(oLine.dblSlope, 49.685566, 5e-7);
    EXPECT_NEAR(oLine.dblIntercept, -5780.8313585, 5e-7);
    EXPECT_NEAR(oLine.dblShare, 0.7589925, 5e-7);
}

TEST(Inference, WhatCannotBeSaidIsRefused) {
    const double dblNone = std::nan("");
    const double aOne[] = {1, dblNone};
    const double aEqual[] = {2, 2, 2};
    const double aRising[] = {1, 2, 3};
    EXPECT_THROW((void)TestMeans(aOne, aRising, 0.95), corvane::Failure);
    EXPECT_THROW((void)TestMeans(aEqual, aEqual, 0.95), corvane::Failure);
    EXPECT_THROW((void)FitLine(aEqual, aRising), corvane::Failure);
    EXPECT_THROW((void)FitLine(aOne, aRising), corvane::Failure);
    EXPECT_DOUBLE_EQ(FitLine(aRising, aRising).dblP, 0) << "a line without residuals";
}

TEST(Histogram, PenguinsFallIntoRoundBins) {
    const Table oTable = Penguins();
    const std::vector<double>& aValues = oTable.Find("bill_length_mm")->aNumbers;
    const Bins oBins = BinsFor(aValues);
    EXPECT_EQ(oBins.dblStart, 32);
    EXPECT_EQ(oBins.dblWidth, 2);
    // By Python's collections.Counter of floor(x / 2).
    EXPECT_EQ(CountIn(oBins, aValues), (std::vector<std::size_t>{3, 19, 40, 38, 36, 31, 37, 44, 37, 39, 11, 5, 0, 2}));
    EXPECT_EQ(BinsFor(aValues, 6).dblWidth, 5);
}

TEST(Histogram, EdgesBeginTheirBins) {
    const double aTenths[] = {0.0, 0.1, 0.2, 0.3, 0.6, 0.7, 1.0, std::nan("")};
    const Bins oBins = BinsFor(aTenths, 10);
    EXPECT_EQ(CountIn(oBins, aTenths), (std::vector<std::size_t>{1, 1, 1, 1, 0, 0, 1, 1, 0, 1}));
    const double aEqual[] = {5, 5};
    EXPECT_EQ(CountIn(BinsFor(aEqual), aEqual), (std::vector<std::size_t>{2}));
    EXPECT_EQ(BinsFor({}).nCount, 0U);
}

TEST(Histogram, TicksAreRound) {
    const auto TicksAsText = [](double dblLow, double dblHigh, int nWanted) {
        std::string sText;
        for (const double dblTick : RoundTicks(dblLow, dblHigh, nWanted))
            sText += FigureText(dblTick) + " ";
        return sText;
    };
    EXPECT_EQ(TicksAsText(31.2, 60.7, 6), "35 40 45 50 55 60 ");
    EXPECT_EQ(TicksAsText(-0.3, 0.31, 6), "-0.2 0 0.2 ");
    EXPECT_EQ(TicksAsText(0, 1e6, 2), "0 500000 1000000 ");
    EXPECT_EQ(TicksAsText(3, 3, 5), "");
}

TEST(Bootstrap, AgreesWithTheFormulaOfAMeanAndRepeatsItself) {
    const Table oTable = Penguins();
    const std::vector<double>& aValues = oTable.Find("bill_length_mm")->aNumbers;
    BootstrapOptions oOptions;
    oOptions.nResamples = 4000;
    const BootstrapResult oResult = *RunBootstrap(aValues, oOptions);
    // The standard error of a mean is the standard deviation by the root of the count; 342 values make it nearly
    // normal.
    const double dblError = 5.459584 / std::sqrt(342.0);
    EXPECT_NEAR(oResult.dblFigure, 43.92193, 5e-6);
    EXPECT_NEAR(oResult.dblError, dblError, 0.04 * dblError);
    EXPECT_NEAR(oResult.oInterval.dblLow, 43.92193 - 1.96 * dblError, 0.1 * dblError);
    EXPECT_NEAR(oResult.oInterval.dblHigh, 43.92193 + 1.96 * dblError, 0.1 * dblError);
    EXPECT_EQ(RunBootstrap(aValues, oOptions)->oInterval.dblLow, oResult.oInterval.dblLow);
    oOptions.nSeed = 2;
    EXPECT_NE(RunBootstrap(aValues, oOptions)->oInterval.dblLow, oResult.oInterval.dblLow);
    oOptions.eFigure = BootstrapFigure::Median;
    const double aSample[] = {1, 9, 5, 3};
    EXPECT_EQ(RunBootstrap(aSample, oOptions)->dblFigure, 4);
}

TEST(Bootstrap, EndsWhenTheProgressSaysSo) {
    const double aSample[] = {1, 2, 3};
    int nCalls = 0;
    EXPECT_FALSE(RunBootstrap(aSample, {}, [&](int nDone) {
        nCalls = nDone;
        return nDone < 7;
    }));
    EXPECT_EQ(nCalls, 7);
    EXPECT_THROW((void)RunBootstrap(std::span(aSample, 1), {}), corvane::Failure);
}

// The heights of the stacked bars are those of the whole, and the legend names the groups.
TEST(Chart, HistogramByGroupAddsUp) {
    AnalysisSettings oSettings = FirstSettings(Penguins(), AnalysisKind::Histogram, {});
    oSettings.sGroupColumn = "species";
    const ChartScene oScene = HistogramScene(Penguins(), oSettings);
    double dblRows = 0;
    for (const ChartBar& oBar : oScene.aBars)
        dblRows += oBar.dblTop - oBar.dblBottom;
    EXPECT_EQ(dblRows, 342);
    EXPECT_EQ(oScene.aLegend.size(), 3U);
    EXPECT_EQ(oScene.oX.sLabel, "bill length (mm)");
    EXPECT_EQ(oScene.sNote, "342 of 344 rows; the others have missing values");
    oSettings.sColumnX = "species";
    EXPECT_EQ(HistogramScene(Penguins(), oSettings).sEmpty, "Choose a column of numbers.");
}

TEST(Chart, ComparisonIsSaidInSentences) {
    AnalysisSettings oSettings = FirstSettings(Penguins(), AnalysisKind::Comparison, {});
    oSettings.sColumnX = "body_mass_g";
    EXPECT_EQ(ComparisonText(Penguins(), oSettings, 1),
              "Adelie: 3,700.7 g (standard deviation 458.6, 151 values)\n"
              "Chinstrap: 3,733.1 g (standard deviation 384.3, 68 values)\n"
              "Difference: -32.4 g, 95 % confidence from -150.4 to 85.5\n"
              "Welch's t-test: t = -0.543 with 152.5 degrees of freedom, p = 0.588");
    oSettings.sSecondGroup = "Adelie";
    EXPECT_EQ(ComparisonText(Penguins(), oSettings, 1), "Choose two different groups.");
}

TEST(Chart, AComparisonBeginsWithGroupsThatCanBeCompared) {
    const Table oTable = ReadCsv("group,x\na,1\nb,\nb,2\nc,1\nc,2\nd,3\nd,4\nd,5\nd,6\n").oTable;
    AnalysisSettings oSettings = FirstSettings(oTable, AnalysisKind::Comparison, {});
    EXPECT_EQ(oSettings.sFirstGroup + oSettings.sSecondGroup, "cd") << "of the others there is one value";
    // Another kind that is looked at as a comparison gets what it needs, and keeps what was chosen.
    oSettings = FirstSettings(oTable, AnalysisKind::Bootstrap, {});
    oSettings.eKind = AnalysisKind::Comparison;
    Complete(oTable, oSettings, {});
    EXPECT_EQ(oSettings.Title("t"), "Comparison of t: x, c and d");
    oSettings.sFirstGroup = "a";
    Complete(oTable, oSettings, {});
    EXPECT_EQ(oSettings.sFirstGroup, "a");
}

} // namespace
