// What all measures share: the clock, and the median of several runs.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <ctime>
#include <utility>
#include <vector>

namespace corvane::bench {

// Microseconds that act takes.
template <class Act>
double Microseconds(Act&& act) {
    const auto begin = std::chrono::steady_clock::now();
    act();
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - begin).count();
}

// Milliseconds that act takes of a processor, whatever else the machine does.
template <class Act>
double ProcessorMilliseconds(Act&& act) {
    const std::clock_t begin = std::clock();
    act();
    return 1000.0 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

// The quantile: the time that a share of the runs, from 0 to 1, doesn't exceed. There must be at least one run.
inline double Quantile(std::vector<double> times, double share) {
    const auto place = static_cast<std::ptrdiff_t>(share * static_cast<double>(times.size()));
    const auto it = times.begin() + std::min(place, static_cast<std::ptrdiff_t>(times.size()) - 1);
    std::nth_element(times.begin(), it, times.end());
    return *it;
}

inline double Median(std::vector<double> times) {
    return Quantile(std::move(times), 0.5);
}

} // namespace corvane::bench
