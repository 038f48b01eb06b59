// The two measures of this program, and the clock that they share.
#pragma once

#include <algorithm>
#include <chrono>
#include <vector>

namespace corvane::bench {

void MeasureFocus();
void MeasureCommands();

// Microseconds that fnAct takes.
template <class Act>
double Microseconds(Act&& fnAct) {
    const auto oBegin = std::chrono::steady_clock::now();
    fnAct();
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - oBegin).count();
}

inline double Median(std::vector<double> aValues) {
    const auto itMiddle = aValues.begin() + static_cast<std::ptrdiff_t>(aValues.size() / 2);
    std::nth_element(aValues.begin(), itMiddle, aValues.end());
    return *itMiddle;
}

} // namespace corvane::bench
