#include "Distributions.h"

#include <cmath>
#include <initializer_list>
#include <limits>

namespace studies {
namespace {

// The continued fraction of the incomplete beta function, evaluated from its front by Lentz's method.
double BetaFraction(double a, double b, double x) {
    constexpr int nMostTerms = 1000;
    constexpr double dblTiny = 1e-300;
    const auto AwayFromZero = [](double dblValue) { return std::abs(dblValue) < dblTiny ? dblTiny : dblValue; };
    double dblC = 1;
    double dblD = 1 / AwayFromZero(1 - (a + b) * x / (a + 1));
    double dblFraction = dblD;
    for (int n = 1; n <= nMostTerms; ++n) {
        const double m = n;
        const double dblEven = m * (b - m) * x / ((a + 2 * m - 1) * (a + 2 * m));
        const double dblOdd = -(a + m) * (a + b + m) * x / ((a + 2 * m) * (a + 2 * m + 1));
        for (const double dblTerm : {dblEven, dblOdd}) {
            dblD = 1 / AwayFromZero(1 + dblTerm * dblD);
            dblC = AwayFromZero(1 + dblTerm / dblC);
            dblFraction *= dblC * dblD;
        }
        if (std::abs(dblC * dblD - 1) < std::numeric_limits<double>::epsilon())
            break;
    }
    return dblFraction;
}

} // namespace

double IncompleteBeta(double a, double b, double x) {
    if (x <= 0)
        return 0;
    if (x >= 1)
        return 1;
    const double dblLogFront =
        std::lgamma(a + b) - std::lgamma(a) - std::lgamma(b) + a * std::log(x) + b * std::log1p(-x);
    const double dblFront = std::exp(dblLogFront);
    // The fraction converges quickly on this side of the mean only.
    if (x < (a + 1) / (a + b + 2))
        return dblFront * BetaFraction(a, b, x) / a;
    return 1 - dblFront * BetaFraction(b, a, 1 - x) / b;
}

double StudentTwoSided(double dblT, double dblFreedom) {
    if (std::isnan(dblT) || !(dblFreedom > 0))
        return std::numeric_limits<double>::quiet_NaN();
    return IncompleteBeta(dblFreedom / 2, 0.5, dblFreedom / (dblFreedom + dblT * dblT));
}

double StudentQuantile(double dblShare, double dblFreedom) {
    if (!(dblShare > 0 && dblShare < 1) || !(dblFreedom > 0))
        return std::numeric_limits<double>::quiet_NaN();
    if (dblShare < 0.5)
        return -StudentQuantile(1 - dblShare, dblFreedom);
    const double dblTails = 2 * (1 - dblShare);
    double dblLow = 0;
    double dblHigh = 1;
    while (StudentTwoSided(dblHigh, dblFreedom) > dblTails && dblHigh < 1e15)
        dblHigh *= 2;
    for (int n = 0; n < 200 && dblHigh - dblLow > 1e-15 * dblHigh; ++n) {
        const double dblMiddle = (dblLow + dblHigh) / 2;
        (StudentTwoSided(dblMiddle, dblFreedom) > dblTails ? dblLow : dblHigh) = dblMiddle;
    }
    return (dblLow + dblHigh) / 2;
}

} // namespace studies
