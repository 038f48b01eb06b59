// Bins of equal width, and the round numbers that bins and axes begin at.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace studies {

// The smallest of 1, 2, 5 times a power of ten that isn't below dblLeast; dblLeast is above 0.
[[nodiscard]] double RoundStep(double dblLeast);

// Round numbers from the first to the last in the range, about nWanted of them.
[[nodiscard]] std::vector<double> RoundTicks(double dblLow, double dblHigh, int nWanted);

struct Bins {
    double dblStart = 0;
    double dblWidth = 1;
    std::size_t nCount = 0; // 0 for no values

    [[nodiscard]] double Edge(std::size_t iBin) const { return dblStart + static_cast<double>(iBin) * dblWidth; }
};

// Round bins that cover all values. Without nWanted the width follows the spread of the middle half of the values
// (Freedman and Diaconis), with at least 5 and at most 100 bins; otherwise there are about that many.
[[nodiscard]] Bins BinsFor(std::span<const double> aValues, int nWanted = 0);

// How many values fall into each bin: from its lower edge to just below its upper one, the last bin with both.
[[nodiscard]] std::vector<std::size_t> CountIn(const Bins& oBins, std::span<const double> aValues);

} // namespace studies
