// The two measures of this program, and the clock that they share.
#pragma once

#include <algorithm>
#include <chrono>
#include <vector>

namespace corvane::bench {

void MeasureFocus();
void MeasureCommands();

// Microseconds that act takes.
template <class Act>
double Microseconds(Act&& act) {
    const auto begin = std::chrono::steady_clock::now();
    act();
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - begin).count();
}

inline double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace corvane::bench
