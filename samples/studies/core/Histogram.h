// Bins of equal width, and the round numbers that bins and axes begin at.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace studies {

// The smallest of 1, 2, 5 times a power of ten that isn't below least; least is above 0.
[[nodiscard]] double RoundStep(double least);

// Round numbers from the first to the last in the range, about wanted of them.
[[nodiscard]] std::vector<double> RoundTicks(double low, double high, int wanted);

struct Bins {
    double start = 0;
    double width = 1;
    std::size_t count = 0; // 0 for no values

    [[nodiscard]] double Edge(std::size_t bin) const { return start + static_cast<double>(bin) * width; }
};

// Round bins that cover all values. Without wanted the width follows the spread of the middle half of the values
// (Freedman and Diaconis), with at least 5 and at most 100 bins; otherwise there are about that many.
[[nodiscard]] Bins BinsFor(std::span<const double> values, int wanted = 0);

// How many values fall into each bin: from its lower edge to just below its upper one, the last bin with both.
[[nodiscard]] std::vector<std::size_t> CountIn(const Bins& bins, std::span<const double> values);

} // namespace studies
