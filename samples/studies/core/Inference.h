// What samples say about what they were drawn from: Welch's t-test of two means, and the straight line through points.
// Values that are NaN count as missing.
#pragma once

#include <cstddef>
#include <span>

namespace studies {

// Student's t distribution. How likely a value at least that far from 0 is, to either side, with that many degrees of
// freedom, which needn't be whole; and the value with that share of the distribution below it, a share strictly between
// 0 and 1. NaN where there is no such figure.
[[nodiscard]] double StudentTwoSided(double t, double freedom);
[[nodiscard]] double StudentQuantile(double share, double freedom);

struct SampleFigures {
    std::size_t count = 0;
    double mean = 0;
    double deviation = 0;
};

[[nodiscard]] SampleFigures FiguresOf(std::span<const double> values);

struct Interval {
    double low = 0;
    double high = 0;
};

struct WelchTest {
    SampleFigures first;
    SampleFigures second;
    double differenceValue = 0; // of the means: first less second
    Interval difference;        // its confidence interval
    double t = 0;
    double freedom = 0; // by Welch and Satterthwaite
    double p = 0;       // two-sided
    double effect = 0;  // Cohen's d: the difference in pooled standard deviations
};

// Fails when a group has fewer than two values, or when neither varies. The confidence lies between 0 and 1.
[[nodiscard]] WelchTest TestMeans(std::span<const double> first, std::span<const double> second, double confidence);

struct Regression {
    std::size_t count = 0;
    double slope = 0;
    double intercept = 0;
    double slopeError = 0; // standard errors
    double interceptError = 0;
    double residual = 0; // residual standard error, with n - 2 degrees of freedom
    double share = 0;    // R squared
    double p = 0;        // of a slope of 0, two-sided
    double meanX = 0;
    double squaresX = 0; // sum of squared differences from the mean

    [[nodiscard]] double At(double x) const { return intercept + slope * x; }
    // Where the line itself is expected at that place.
    [[nodiscard]] Interval Band(double x, double confidence) const;
};

// By least squares, of the pairs that are complete. Fails for fewer than three of them, or when all stand at one x.
[[nodiscard]] Regression FitLine(std::span<const double> x, std::span<const double> y);

} // namespace studies
