// Numbers as text, for people and for files. One rule for all: an ordinary number, from 0.00001 up to below 10^15, is
// written out; only beyond that is there an exponent.
#pragma once

#include <string>

namespace studies {

// The shortest text that reads as the same number, with at least that many decimals.
[[nodiscard]] std::string TextOf(double value, int decimals = 0);
// That many significant digits, without zeros at the end; "-" when it is not a number.
[[nodiscard]] std::string FigureText(double value, int digits = 7);
// That many decimals, and "," between groups of three digits; "-" when it is not a number. What all decimals would show
// as zero has an exponent, too.
[[nodiscard]] std::string DecimalText(double value, int decimals);

} // namespace studies
