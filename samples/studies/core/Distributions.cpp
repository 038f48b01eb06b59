#include "Distributions.h"

#include <cmath>
#include <initializer_list>
#include <limits>

namespace studies {
namespace {

// The continued fraction of the incomplete beta function, evaluated from its front by Lentz's method.
double BetaFraction(double a, double b, double x) {
    constexpr int mostTerms = 1000;
    constexpr double tiny = 1e-300;
    const auto AwayFromZero = [](double value) { return std::abs(value) < tiny ? tiny : value; };
    double c = 1;
    double d = 1 / AwayFromZero(1 - (a + b) * x / (a + 1));
    double fraction = d;
    for (int n = 1; n <= mostTerms; ++n) {
        const double m = n;
        const double even = m * (b - m) * x / ((a + 2 * m - 1) * (a + 2 * m));
        const double odd = -(a + m) * (a + b + m) * x / ((a + 2 * m) * (a + 2 * m + 1));
        for (const double term : {even, odd}) {
            d = 1 / AwayFromZero(1 + term * d);
            c = AwayFromZero(1 + term / c);
            fraction *= c * d;
        }
        if (std::abs(c * d - 1) < std::numeric_limits<double>::epsilon())
            break;
    }
    return fraction;
}

} // namespace

double IncompleteBeta(double a, double b, double x) {
    if (x <= 0)
        return 0;
    if (x >= 1)
        return 1;
    const double logFront = std::lgamma(a + b) - std::lgamma(a) - std::lgamma(b) + a * std::log(x) + b * std::log1p(-x);
    const double front = std::exp(logFront);
    // The fraction converges quickly on this side of the mean only.
    if (x < (a + 1) / (a + b + 2))
        return front * BetaFraction(a, b, x) / a;
    return 1 - front * BetaFraction(b, a, 1 - x) / b;
}

double StudentTwoSided(double t, double freedom) {
    if (std::isnan(t) || !(freedom > 0))
        return std::numeric_limits<double>::quiet_NaN();
    return IncompleteBeta(freedom / 2, 0.5, freedom / (freedom + t * t));
}

double StudentQuantile(double share, double freedom) {
    if (!(share > 0 && share < 1) || !(freedom > 0))
        return std::numeric_limits<double>::quiet_NaN();
    if (share < 0.5)
        return -StudentQuantile(1 - share, freedom);
    const double tails = 2 * (1 - share);
    double low = 0;
    double high = 1;
    while (StudentTwoSided(high, freedom) > tails && high < 1e15)
        high *= 2;
    for (int n = 0; n < 200 && high - low > 1e-15 * high; ++n) {
        const double middle = (low + high) / 2;
        (StudentTwoSided(middle, freedom) > tails ? low : high) = middle;
    }
    return (low + high) / 2;
}

} // namespace studies
