#include "Bootstrap.h"

#include "Errors.h"
#include "Statistics.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

namespace studies {
namespace {

// A whole number below nBelow, the same from one seed everywhere: the standard fixes the generator's numbers, but not
// those of its distributions. 2^64 is so much larger than any sample that rounding favours no row by any figure shown.
class RowDrawer {
public:
    explicit RowDrawer(std::uint64_t nSeed) : m_oGenerator(nSeed) {}
    std::size_t Below(std::size_t nBelow) {
        __extension__ using Wide = unsigned __int128;
        return static_cast<std::size_t>((static_cast<Wide>(m_oGenerator()) * nBelow) >> 64U);
    }

private:
    std::mt19937_64 m_oGenerator;
};

// Sorts what it needs.
double MedianOf(std::vector<double>& aValues) {
    const auto itUpper = aValues.begin() + static_cast<std::ptrdiff_t>(aValues.size() / 2);
    std::nth_element(aValues.begin(), itUpper, aValues.end());
    if (aValues.size() % 2 == 1)
        return *itUpper;
    return (*itUpper + *std::max_element(aValues.begin(), itUpper)) / 2;
}

double FigureOf(std::vector<double>& aValues, BootstrapFigure eFigure) {
    switch (eFigure) {
    case BootstrapFigure::Median:
        return MedianOf(aValues);
    case BootstrapFigure::Deviation:
        return FiguresOf(aValues).dblDeviation;
    case BootstrapFigure::Mean:
        break;
    }
    return FiguresOf(aValues).dblMean;
}

} // namespace

std::string_view NameOf(BootstrapFigure eFigure) {
    switch (eFigure) {
    case BootstrapFigure::Median:
        return "median";
    case BootstrapFigure::Deviation:
        return "standard deviation";
    case BootstrapFigure::Mean:
        break;
    }
    return "mean";
}

BootstrapFigure BootstrapFigureOf(std::string_view sName) {
    for (const BootstrapFigure eFigure : {BootstrapFigure::Mean, BootstrapFigure::Median, BootstrapFigure::Deviation})
        if (sName == NameOf(eFigure))
            return eFigure;
    FailWith("“" + std::string(sName) + "” isn't a statistic that can be bootstrapped.");
}

std::optional<BootstrapResult> RunBootstrap(std::span<const double> aValues, const BootstrapOptions& oOptions,
                                            const BootstrapProgress& fnProgress) {
    std::vector<double> aSample;
    std::copy_if(aValues.begin(), aValues.end(), std::back_inserter(aSample),
                 [](double dblValue) { return !std::isnan(dblValue); });
    if (aSample.size() < 2)
        FailWith("At least two values are needed; there are " + std::to_string(aSample.size()) + ".");
    if (oOptions.nResamples < 2)
        FailWith("At least two resamples are needed.");
    RowDrawer oDrawer(oOptions.nSeed);
    std::vector<double> aDrawn(aSample.size());
    std::vector<double> aFigures;
    for (int n = 1; n <= oOptions.nResamples; ++n) {
        for (double& dblValue : aDrawn)
            dblValue = aSample[oDrawer.Below(aSample.size())];
        aFigures.push_back(FigureOf(aDrawn, oOptions.eFigure));
        if (fnProgress && !fnProgress(n))
            return std::nullopt;
    }
    BootstrapResult oResult;
    oResult.nCount = aSample.size();
    oResult.dblFigure = FigureOf(aSample, oOptions.eFigure);
    oResult.dblError = FiguresOf(aFigures).dblDeviation;
    std::sort(aFigures.begin(), aFigures.end());
    oResult.oInterval = {Quantile(aFigures, (1 - oOptions.dblConfidence) / 2),
                         Quantile(aFigures, (1 + oOptions.dblConfidence) / 2)};
    return oResult;
}

} // namespace studies
