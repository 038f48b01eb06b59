// What samples say about what they were drawn from: Welch's t-test of two means, and the straight line through points.
// Values that are NaN count as missing.
#pragma once

#include <cstddef>
#include <span>

namespace studies {

struct SampleFigures {
    std::size_t nCount = 0;
    double dblMean = 0;
    double dblDeviation = 0;
};

[[nodiscard]] SampleFigures FiguresOf(std::span<const double> aValues);

struct Interval {
    double dblLow = 0;
    double dblHigh = 0;
};

struct WelchTest {
    SampleFigures oFirst;
    SampleFigures oSecond;
    double dblDifference = 0; // of the means: first less second
    Interval oDifference;     // its confidence interval
    double dblT = 0;
    double dblFreedom = 0; // by Welch and Satterthwaite
    double dblP = 0;       // two-sided
};

// Fails when a group has fewer than two values, or when neither varies. The confidence lies between 0 and 1.
[[nodiscard]] WelchTest TestMeans(std::span<const double> aFirst, std::span<const double> aSecond,
                                  double dblConfidence);

struct Regression {
    std::size_t nCount = 0;
    double dblSlope = 0;
    double dblIntercept = 0;
    double dblSlopeError = 0; // standard errors
    double dblInterceptError = 0;
    double dblResidual = 0; // residual standard error, with n - 2 degrees of freedom
    double dblShare = 0;    // R squared
    double dblP = 0;        // of a slope of 0, two-sided
    double dblMeanX = 0;
    double dblSquaresX = 0; // sum of squared differences from the mean

    [[nodiscard]] double At(double dblX) const { return dblIntercept + dblSlope * dblX; }
    // Where the line itself is expected at that place.
    [[nodiscard]] Interval Band(double dblX, double dblConfidence) const;
};

// By least squares, of the pairs that are complete. Fails for fewer than three of them, or when all stand at one x.
[[nodiscard]] Regression FitLine(std::span<const double> aX, std::span<const double> aY);

} // namespace studies
