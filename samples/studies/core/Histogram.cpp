#include "Histogram.h"

#include "Statistics.h"

#include <algorithm>
#include <cmath>

namespace studies {

double RoundStep(double dblLeast) {
    const double dblPower = std::pow(10.0, std::floor(std::log10(dblLeast)));
    for (const double dblFactor : {1.0, 2.0, 5.0})
        if (dblFactor * dblPower >= dblLeast * (1 - 1e-9))
            return dblFactor * dblPower;
    return 10 * dblPower;
}

std::vector<double> RoundTicks(double dblLow, double dblHigh, int nWanted) {
    std::vector<double> aTicks;
    if (!(dblHigh > dblLow) || nWanted < 1)
        return aTicks;
    const double dblStep = RoundStep((dblHigh - dblLow) / nWanted);
    const double dblFirst = std::ceil(dblLow / dblStep - 1e-9);
    const double dblLast = std::floor(dblHigh / dblStep + 1e-9);
    for (double dblTick = dblFirst; dblTick <= dblLast; dblTick += 1)
        aTicks.push_back(dblTick == 0 ? 0 : dblTick * dblStep); // never -0
    return aTicks;
}

Bins BinsFor(std::span<const double> aValues, int nWanted) {
    constexpr double dblFewest = 5;
    constexpr double dblMost = 100;
    std::vector<double> aSorted;
    std::copy_if(aValues.begin(), aValues.end(), std::back_inserter(aSorted),
                 [](double dblValue) { return !std::isnan(dblValue); });
    if (aSorted.empty())
        return {};
    std::sort(aSorted.begin(), aSorted.end());
    const double dblRange = aSorted.back() - aSorted.front();
    if (!(dblRange > 0))
        return {aSorted.front() - 0.5, 1, 1};
    double dblLeast = dblRange / std::max(1, nWanted);
    if (nWanted == 0) {
        const double dblMiddle = Quantile(aSorted, 0.75) - Quantile(aSorted, 0.25);
        dblLeast = 2 * dblMiddle / std::cbrt(static_cast<double>(aSorted.size()));
        dblLeast = std::clamp(dblLeast, dblRange / dblMost, dblRange / dblFewest);
    }
    // Of the round widths the nearest one, not the next larger one.
    const double dblLarger = RoundStep(dblLeast);
    const double dblSmaller = RoundStep(dblLarger / 2.5);
    const double dblWidth = dblLeast / dblSmaller < dblLarger / dblLeast ? dblSmaller : dblLarger;
    Bins oBins;
    oBins.dblWidth = dblWidth;
    oBins.dblStart = std::floor(aSorted.front() / dblWidth + 1e-9) * dblWidth;
    oBins.nCount =
        static_cast<std::size_t>(std::max(1.0, std::ceil((aSorted.back() - oBins.dblStart) / dblWidth - 1e-9)));
    return oBins;
}

std::vector<std::size_t> CountIn(const Bins& oBins, std::span<const double> aValues) {
    std::vector<std::size_t> aCounts(oBins.nCount);
    if (aCounts.empty())
        return aCounts;
    for (const double dblValue : aValues) {
        if (std::isnan(dblValue))
            continue;
        // An edge that isn't exact in binary still begins its bin.
        const double dblPlace = std::floor((dblValue - oBins.dblStart) / oBins.dblWidth + 1e-9);
        const double dblLast = static_cast<double>(aCounts.size() - 1);
        ++aCounts[static_cast<std::size_t>(std::clamp(dblPlace, 0.0, dblLast))];
    }
    return aCounts;
}

} // namespace studies
