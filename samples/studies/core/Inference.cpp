#include "Inference.h"

#include "Errors.h"

#include <algorithm>
#include <boost/math/distributions/students_t.hpp>
#include <cmath>
#include <limits>
#include <string>

namespace studies {
namespace {

namespace policies = boost::math::policies;
using NoFailures =
    policies::policy<policies::domain_error<policies::ignore_error>, policies::overflow_error<policies::ignore_error>>;
using Student = boost::math::students_t_distribution<double, NoFailures>;

} // namespace

double StudentTwoSided(double t, double freedom) {
    return 2 * cdf(complement(Student(freedom), std::abs(t)));
}

double StudentQuantile(double share, double freedom) {
    return quantile(Student(freedom), share);
}

SampleFigures FiguresOf(std::span<const double> values) {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    SampleFigures figures;
    long double sum = 0;
    for (const double value : values)
        if (!std::isnan(value)) {
            sum += value;
            ++figures.count;
        }
    const long double mean = sum / static_cast<long double>(figures.count);
    long double squares = 0;
    for (const double value : values)
        if (!std::isnan(value))
            squares += (value - mean) * (value - mean);
    figures.mean = figures.count > 0 ? static_cast<double>(mean) : none;
    figures.deviation = figures.count > 1
                            ? static_cast<double>(std::sqrt(squares / (static_cast<long double>(figures.count) - 1)))
                            : none;
    return figures;
}

WelchTest TestMeans(std::span<const double> first, std::span<const double> second, double confidence) {
    WelchTest test;
    test.first = FiguresOf(first);
    test.second = FiguresOf(second);
    for (const SampleFigures* figures : {&test.first, &test.second})
        if (figures->count < 2)
            FailWith(Translated("A group needs at least two values to be compared; one has %1.",
                                {std::to_string(figures->count)}));
    const auto Share = [](const SampleFigures& figures) {
        return figures.deviation * figures.deviation / static_cast<double>(figures.count);
    };
    const double firstValue = Share(test.first);
    const double secondValue = Share(test.second);
    const double error = std::sqrt(firstValue + secondValue);
    if (!(error > 0))
        FailWith(Translated("All values within each group are equal, so the groups can't be compared."));
    test.differenceValue = test.first.mean - test.second.mean;
    test.t = test.differenceValue / error;
    test.freedom = (firstValue + secondValue) * (firstValue + secondValue) /
                   (firstValue * firstValue / static_cast<double>(test.first.count - 1) +
                    secondValue * secondValue / static_cast<double>(test.second.count - 1));
    test.p = StudentTwoSided(test.t, test.freedom);
    const auto Squares = [](const SampleFigures& figures) {
        return figures.deviation * figures.deviation * static_cast<double>(figures.count - 1);
    };
    test.effect = test.differenceValue / std::sqrt((Squares(test.first) + Squares(test.second)) /
                                                   static_cast<double>(test.first.count + test.second.count - 2));
    const double reach = StudentQuantile((1 + confidence) / 2, test.freedom) * error;
    test.difference = {test.differenceValue - reach, test.differenceValue + reach};
    return test;
}

Interval Regression::Band(double x, double confidence) const {
    const double away = x - meanX;
    const double error = residual * std::sqrt(1 / static_cast<double>(count) + away * away / squaresX);
    const double reach = StudentQuantile((1 + confidence) / 2, static_cast<double>(count - 2)) * error;
    return {At(x) - reach, At(x) + reach};
}

Regression FitLine(std::span<const double> x, std::span<const double> y) {
    const std::size_t pairs = std::min(x.size(), y.size());
    const auto IsComplete = [&](std::size_t i) { return !std::isnan(x[i]) && !std::isnan(y[i]); };
    Regression line;
    long double sumX = 0;
    long double sumY = 0;
    for (std::size_t i = 0; i < pairs; ++i)
        if (IsComplete(i)) {
            sumX += x[i];
            sumY += y[i];
            ++line.count;
        }
    if (line.count < 3)
        FailWith(Translated("A regression line needs at least three rows with both values; there are %1.",
                            {std::to_string(line.count)}));
    const auto count = static_cast<long double>(line.count);
    const long double meanX = sumX / count;
    const long double meanY = sumY / count;
    long double xx = 0;
    long double xy = 0;
    long double yy = 0;
    for (std::size_t i = 0; i < pairs; ++i)
        if (IsComplete(i)) {
            const long double xValue = x[i] - meanX;
            const long double yValue = y[i] - meanY;
            xx += xValue * xValue;
            xy += xValue * yValue;
            yy += yValue * yValue;
        }
    if (!(xx > 0))
        FailWith(Translated("All rows have the same x, so there is no regression line."));
    const long double slope = xy / xx;
    const long double rest = std::max(0.0L, yy - slope * xy);
    const long double residual = std::sqrt(rest / (count - 2));
    line.meanX = static_cast<double>(meanX);
    line.squaresX = static_cast<double>(xx);
    line.slope = static_cast<double>(slope);
    line.intercept = static_cast<double>(meanY - slope * meanX);
    line.residual = static_cast<double>(residual);
    line.slopeError = static_cast<double>(residual / std::sqrt(xx));
    line.interceptError = static_cast<double>(residual * std::sqrt(1 / count + meanX * meanX / xx));
    line.share = yy > 0 ? static_cast<double>(1 - rest / yy) : 1;
    line.p =
        line.slopeError > 0 ? StudentTwoSided(line.slope / line.slopeError, static_cast<double>(line.count - 2)) : 0;
    return line;
}

} // namespace studies
