#include "Histogram.h"

#include "Statistics.h"

#include <algorithm>
#include <cmath>

namespace studies {

double RoundStep(double least) {
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * power >= least * (1 - 1e-9))
            return factor * power;
    return 10 * power;
}

std::vector<double> RoundTicks(double low, double high, int wanted) {
    std::vector<double> ticks;
    if (!(high > low) || wanted < 1)
        return ticks;
    const double step = RoundStep((high - low) / wanted);
    const double first = std::ceil(low / step - 1e-9);
    const double last = std::floor(high / step + 1e-9);
    for (double tick = first; tick <= last; tick += 1)
        ticks.push_back(tick == 0 ? 0 : tick * step); // never -0
    return ticks;
}

Bins BinsFor(std::span<const double> values, int wanted) {
    constexpr double fewest = 5;
    constexpr double most = 100;
    std::vector<double> sorted;
    std::copy_if(values.begin(), values.end(), std::back_inserter(sorted),
                 [](double value) { return !std::isnan(value); });
    if (sorted.empty())
        return {};
    std::sort(sorted.begin(), sorted.end());
    const double range = sorted.back() - sorted.front();
    if (!(range > 0))
        return {sorted.front() - 0.5, 1, 1};
    double least = range / std::max(1, wanted);
    if (wanted == 0) {
        const double middle = Quantile(sorted, 0.75) - Quantile(sorted, 0.25);
        least = 2 * middle / std::cbrt(static_cast<double>(sorted.size()));
        least = std::clamp(least, range / most, range / fewest);
    }
    // Of the round widths the nearest one, not the next larger one.
    const double larger = RoundStep(least);
    const double smaller = RoundStep(larger / 2.5);
    const double width = least / smaller < larger / least ? smaller : larger;
    Bins bins;
    bins.width = width;
    bins.start = std::floor(sorted.front() / width + 1e-9) * width;
    bins.count = static_cast<std::size_t>(std::max(1.0, std::ceil((sorted.back() - bins.start) / width - 1e-9)));
    return bins;
}

std::vector<std::size_t> CountIn(const Bins& bins, std::span<const double> values) {
    std::vector<std::size_t> counts(bins.count);
    if (counts.empty())
        return counts;
    for (const double value : values) {
        if (std::isnan(value))
            continue;
        // An edge that isn't exact in binary still begins its bin.
        const double place = std::floor((value - bins.start) / bins.width + 1e-9);
        const double last = static_cast<double>(counts.size() - 1);
        ++counts[static_cast<std::size_t>(std::clamp(place, 0.0, last))];
    }
    return counts;
}

} // namespace studies
