#include "Inference.h"

#include "Bootstrap.h"
#include "Chart.h"
#include "ComparisonText.h"
#include "Csv.h"
#include "Figures.h"
#include "Histogram.h"
#include "Report.h"
#include "Statistics.h"
#include "corvane/base/Failure.h"
#include "tests/studies/Penguins.h"
#include "tests/studies/RunAsJob.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

using namespace studies;

namespace {

TEST(Inference, StudentsDistributionIsTwoSided) {
    EXPECT_NEAR(StudentQuantile(0.005, 5), -4.032, 5e-4); // as in every printed table
    EXPECT_NEAR(StudentTwoSided(-2.5, 1), 1 - 2 / std::numbers::pi * std::atan(2.5), 1e-13);
    EXPECT_TRUE(std::isnan(StudentTwoSided(std::nan(""), 1)));
}

// R's example t.test(extra ~ group, data = sleep), as its output is printed in its documentation.
TEST(Inference, WelchAgreesWithRsSleepExample) {
    const double first[] = {0.7, -1.6, -0.2, -1.2, -0.1, 3.4, 3.7, 0.8, 0.0, 2.0};
    const double second[] = {1.9, 0.8, 1.1, 0.1, -0.1, 4.4, 5.5, 1.6, 4.6, 3.4};
    const WelchTest test = TestMeans(first, second, 0.95);
    EXPECT_NEAR(test.t, -1.8608, 5e-5);
    EXPECT_NEAR(test.freedom, 17.776, 5e-4);
    EXPECT_NEAR(test.p, 0.07939, 5e-6);
    EXPECT_NEAR(test.difference.low, -3.3654832, 5e-8);
    EXPECT_NEAR(test.difference.high, 0.2054832, 5e-8);
}

// R's lm(dist ~ speed, data = cars), from the summary that its documentation prints.
TEST(Inference, RegressionAgreesWithRsCarsExample) {
    const double speed[] = {4,  4,  7,  7,  8,  9,  10, 10, 10, 11, 11, 12, 12, 12, 12, 13, 13,
                            13, 13, 14, 14, 14, 14, 15, 15, 15, 16, 16, 17, 17, 17, 18, 18, 18,
                            18, 19, 19, 19, 20, 20, 20, 20, 20, 22, 23, 24, 24, 24, 24, 25};
    const double distance[] = {2,  10, 4,  22, 16, 10, 18, 26, 34, 17, 28, 14, 20, 24, 28,  26, 34,
                               34, 46, 26, 36, 60, 80, 20, 26, 54, 32, 40, 32, 40, 50, 42,  56, 76,
                               84, 36, 46, 68, 32, 48, 52, 56, 64, 66, 54, 70, 92, 93, 120, 85};
    const Regression line = FitLine(speed, distance);
    EXPECT_NEAR(line.intercept, -17.5791, 5e-5);
    EXPECT_NEAR(line.slope, 3.9324, 5e-5);
    EXPECT_NEAR(line.interceptError, 6.7584, 5e-5);
    EXPECT_NEAR(line.slopeError, 0.4155, 5e-5);
    EXPECT_NEAR(line.residual, 15.38, 5e-3);
    EXPECT_NEAR(line.share, 0.6511, 5e-5);
    EXPECT_NEAR(line.p / 1.49e-12, 1, 5e-3);
    // Over the mean of x the band is the interval of a mean with the residual error.
    const Interval middle = line.Band(line.meanX, 0.95);
    EXPECT_NEAR((middle.high - middle.low) / 2, StudentQuantile(0.975, 48) * line.residual / std::sqrt(50), 1e-12);
    EXPECT_GT(line.Band(25, 0.95).high - line.Band(25, 0.95).low, middle.high - middle.low);
}

// By Python's statistics module: variance, mean, linear_regression and correlation of the same file.
TEST(Inference, PenguinsAgreeWithPython) {
    const Table table = Penguins();
    const Column& mass = *table.Find("body_mass_g");
    const Column& species = *table.Find("species");
    const WelchTest test =
        TestMeans(NumbersOfGroup(mass, species, "Adelie"), NumbersOfGroup(mass, species, "Chinstrap"), 0.95);
    EXPECT_NEAR(test.t, -0.5430902, 5e-7);
    EXPECT_NEAR(test.freedom, 152.45476, 5e-5);
    const Regression line = FitLine(table.Find("flipper_length_mm")->numbers, mass.numbers);
    EXPECT_EQ(line.count, 342U);
    EXPECT_NEAR(line.slope, 49.685566, 5e-7);
    EXPECT_NEAR(line.intercept, -5780.8313585, 5e-7);
    EXPECT_NEAR(line.share, 0.7589925, 5e-7);
}

TEST(Inference, WhatCannotBeSaidIsRefused) {
    const double none = std::nan("");
    const double one[] = {1, none};
    const double equal[] = {2, 2, 2};
    const double rising[] = {1, 2, 3};
    EXPECT_THROW((void)TestMeans(one, rising, 0.95), corvane::Failure);
    EXPECT_THROW((void)TestMeans(equal, equal, 0.95), corvane::Failure);
    EXPECT_THROW((void)FitLine(equal, rising), corvane::Failure);
    EXPECT_THROW((void)FitLine(one, rising), corvane::Failure);
    EXPECT_DOUBLE_EQ(FitLine(rising, rising).p, 0) << "a line without residuals";
}

TEST(Histogram, PenguinsFallIntoRoundBins) {
    const Table table = Penguins();
    const std::vector<double>& values = table.Find("bill_length_mm")->numbers;
    const Bins bins = BinsFor(values);
    EXPECT_EQ(bins.start, 32);
    EXPECT_EQ(bins.width, 2);
    // By Python's collections.Counter of floor(x / 2).
    EXPECT_EQ(CountIn(bins, values), (std::vector<std::size_t>{3, 19, 40, 38, 36, 31, 37, 44, 37, 39, 11, 5, 0, 2}));
    EXPECT_EQ(BinsFor(values, 6).width, 5);
}

TEST(Histogram, EdgesBeginTheirBins) {
    const double tenths[] = {0.0, 0.1, 0.2, 0.3, 0.6, 0.7, 1.0, std::nan("")};
    const Bins bins = BinsFor(tenths, 10);
    EXPECT_EQ(CountIn(bins, tenths), (std::vector<std::size_t>{1, 1, 1, 1, 0, 0, 1, 1, 0, 1}));
    const double equal[] = {5, 5};
    EXPECT_EQ(CountIn(BinsFor(equal), equal), (std::vector<std::size_t>{2}));
    EXPECT_EQ(BinsFor({}).count, 0U);
}

TEST(Histogram, TicksAreRound) {
    const auto TicksAsText = [](double low, double high, int wanted) {
        std::string text;
        for (const double tick : RoundTicks(low, high, wanted))
            text += FigureText(tick) + " ";
        return text;
    };
    EXPECT_EQ(TicksAsText(31.2, 60.7, 6), "35 40 45 50 55 60 ");
    EXPECT_EQ(TicksAsText(-0.3, 0.31, 6), "-0.2 0 0.2 ");
    EXPECT_EQ(TicksAsText(0, 1e6, 2), "0 500000 1000000 ");
    EXPECT_EQ(TicksAsText(3, 3, 5), "");
}

TEST(Bootstrap, AgreesWithTheFormulaOfAMeanAndRepeatsItself) {
    const Table table = Penguins();
    const std::vector<double>& values = table.Find("bill_length_mm")->numbers;
    BootstrapOptions options;
    options.resamples = 4000;
    const BootstrapResult result = RunBootstrap(values, options);
    // The standard error of a mean is the standard deviation by the root of the count; 342 values make it nearly
    // normal.
    const double error = 5.459584 / std::sqrt(342.0);
    EXPECT_NEAR(result.figure, 43.92193, 5e-6);
    EXPECT_NEAR(result.error, error, 0.04 * error);
    EXPECT_NEAR(result.interval.low, 43.92193 - 1.96 * error, 0.1 * error);
    EXPECT_NEAR(result.interval.high, 43.92193 + 1.96 * error, 0.1 * error);
    EXPECT_EQ(RunBootstrap(values, options).interval.low, result.interval.low);
    options.seed = 2;
    EXPECT_NE(RunBootstrap(values, options).interval.low, result.interval.low);
    options.figure = BootstrapFigure::Median;
    const double sample[] = {1, 9, 5, 3};
    EXPECT_EQ(RunBootstrap(sample, options).figure, 4);
}

TEST(Bootstrap, FindsTheSameOnAnyNumberOfThreads) {
    std::vector<double> values;
    for (int i = 0; i < 501; ++i)
        values.push_back(1e6 + std::fmod(i * 37.0, 101.0));
    for (const BootstrapFigure figure : {BootstrapFigure::Mean, BootstrapFigure::Median, BootstrapFigure::Deviation}) {
        BootstrapOptions options;
        options.figure = figure;
        options.resamples = 333;
        const BootstrapResult plain = RunBootstrap(values, options);
        EXPECT_LT(plain.interval.low, plain.figure) << NameOf(figure);
        EXPECT_GT(plain.interval.high, plain.figure) << NameOf(figure);
        for (const std::size_t threads : {0U, 1U, 3U}) {
            const BootstrapResult result = *RunAsJob(
                threads, [&](corvane::JobProgress& progress) { return RunBootstrap(values, options, progress); });
            EXPECT_EQ(result.error, plain.error) << threads;
            EXPECT_EQ(result.interval.low, plain.interval.low) << threads;
            EXPECT_EQ(result.interval.high, plain.interval.high) << threads;
        }
    }
    EXPECT_THROW((void)RunBootstrap(std::span(values).first(1), {}), corvane::Failure);
}

TEST(Bootstrap, EndsSoonWhenItIsCancelled) {
    const double sample[] = {1, 2, 3};
    BootstrapOptions options;
    options.resamples = 100000;
    for (const std::size_t threads : {0U, 3U}) {
        std::optional<double> reached;
        EXPECT_FALSE(RunAsJob(
            threads, [&](corvane::JobProgress& progress) { return RunBootstrap(sample, options, progress); }, 0.1,
            &reached));
        EXPECT_GE(reached, 0.1);
        EXPECT_LT(reached, 0.2) << threads;
    }
}

// The heights of the stacked bars are those of the whole, and the legend names the groups.
TEST(Chart, HistogramByGroupAddsUp) {
    AnalysisSettings settings = FirstSettings(Penguins(), AnalysisKind::Histogram, {});
    settings.groupColumn = "species";
    const ChartScene scene = HistogramScene(Penguins(), settings);
    double rows = 0;
    for (const ChartBar& bar : scene.bars)
        rows += bar.top - bar.bottom;
    EXPECT_EQ(rows, 342);
    EXPECT_EQ(scene.legend.size(), 3U);
    EXPECT_EQ(scene.x.label, "bill length (mm)");
    EXPECT_EQ(scene.note, "342 of 344 rows; the others have missing values");
    settings.columnX = "species";
    EXPECT_EQ(HistogramScene(Penguins(), settings).empty, "Choose a column of numbers.");
}

TEST(Chart, ComparisonIsSaidInSentences) {
    AnalysisSettings settings = FirstSettings(Penguins(), AnalysisKind::Comparison, {});
    settings.columnX = "body_mass_g";
    EXPECT_EQ(ComparisonText(Penguins(), settings, 1),
              "Adelie: 3,700.7 g (standard deviation 458.6, 151 values)\n"
              "Chinstrap: 3,733.1 g (standard deviation 384.3, 68 values)\n"
              "Adelie less Chinstrap: -32.4 g, 95 % confidence from -150.4 to 85.5\n"
              "Effect size: Cohen's d = -0.07\n"
              "Welch's t-test: t = -0.543 with 152.5 degrees of freedom, p = 0.588");
    settings.secondGroup = "Adelie";
    EXPECT_EQ(ComparisonText(Penguins(), settings, 1), "Choose two different groups.");
}

TEST(Chart, ComparisonDrawsTheValuesBesideTheMeans) {
    AnalysisSettings settings = FirstSettings(Penguins(), AnalysisKind::Comparison, {});
    settings.columnX = "body_mass_g";
    settings.secondGroup = "Chinstrap";
    const ChartScene scene = ComparisonScene(Penguins(), settings);
    ASSERT_EQ(scene.boxes.size(), 2U);
    const ChartBox& box = scene.boxes[1];
    EXPECT_EQ(box.q1, 3487.5);
    EXPECT_EQ(box.median, 3700);
    EXPECT_EQ(box.q3, 3950);
    EXPECT_EQ(box.low, 2900); // 2,700 and 4,800 are more than 693.75 away from the box
    EXPECT_EQ(box.high, 4550);
    EXPECT_EQ(box.beyond, (std::vector<double>{2700, 4800}));
    EXPECT_LT(scene.y.low, 2700);
    EXPECT_LT(box.x, scene.marks[1].x);
}

TEST(Chart, BootstrapDrawsEachResampleOnce) {
    const Table table = Penguins();
    const Column& column = *table.Find("bill_length_mm");
    const BootstrapResult result = RunBootstrap(column.numbers, {});
    const ChartScene scene = BootstrapScene(result, column, {});
    double resamples = 0;
    for (const ChartBar& bar : scene.bars)
        resamples += bar.top;
    EXPECT_EQ(resamples, 1000);
    EXPECT_EQ(scene.lines.size(), 3U);
    EXPECT_FALSE(BootstrapScene({10, 1, 0.1, {0.9, 1.1}}, column, {}).empty.empty()) << "saved before it was kept";
}

TEST(Chart, AComparisonBeginsWithGroupsThatCanBeCompared) {
    const Table table = ReadCsv("group,x\na,1\nb,\nb,2\nc,1\nc,2\nd,3\nd,4\nd,5\nd,6\n").table;
    AnalysisSettings settings = FirstSettings(table, AnalysisKind::Comparison, {});
    EXPECT_EQ(settings.firstGroup + settings.secondGroup, "cd") << "of the others there is one value";
    // Another kind that is looked at as a comparison gets what it needs, and keeps what was chosen.
    settings = FirstSettings(table, AnalysisKind::Bootstrap, {});
    settings.kind = AnalysisKind::Comparison;
    Complete(table, settings, {});
    EXPECT_EQ(settings.Title("t"), "Comparison of t: x, c and d");
    settings.firstGroup = "a";
    Complete(table, settings, {});
    EXPECT_EQ(settings.firstGroup, "a");
}

} // namespace
