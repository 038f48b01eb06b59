// Student's t distribution, on the regularized incomplete beta function.
#pragma once

namespace studies {

// I_x(a, b), the share of the beta distribution below x; a and b above 0, x from 0 to 1.
[[nodiscard]] double IncompleteBeta(double a, double b, double x);

// How likely a value at least that far from 0 is, to either side, with that many degrees of freedom, which needn't be
// whole.
[[nodiscard]] double StudentTwoSided(double t, double freedom);

// The value with that share of the distribution below it; a share strictly between 0 and 1.
[[nodiscard]] double StudentQuantile(double share, double freedom);

} // namespace studies
