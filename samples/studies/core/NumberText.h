// Numbers as text, for people and for files. One rule for all: an ordinary number, from 0.00001 up to below 10^15, is
// written out; only beyond that is there an exponent.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace studies {

// TextOf without an allocation, for work on millions of numbers.
class NumberLetters {
public:
    explicit NumberLetters(double value, int decimals = 0);
    operator std::string_view() const { return {m_letters.data(), m_size}; } // NOLINT(google-explicit-constructor)

private:
    std::array<char, 96> m_letters;
    std::size_t m_size;
};

// The shortest text that reads as the same number, with at least that many decimals.
[[nodiscard]] std::string TextOf(double value, int decimals = 0);
// For users, in the signs of their language: that many significant digits, without zeros at the end; "-" when it is not
// a number.
[[nodiscard]] std::string FigureText(double value, int digits = 7);
// Likewise with that many decimals, and groups of three digits; "-" when it is not a number. What all decimals would
// show as zero has an exponent, too.
[[nodiscard]] std::string DecimalText(double value, int decimals);

} // namespace studies
