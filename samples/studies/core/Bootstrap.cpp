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

// A whole number below below, the same from one seed everywhere: the standard fixes the generator's numbers, but not
// those of its distributions. 2^64 is so much larger than any sample that rounding favours no row by any figure shown.
class RowDrawer {
public:
    explicit RowDrawer(std::uint64_t seed) : m_generator(seed) {}
    std::size_t Below(std::size_t below) {
        __extension__ using Wide = unsigned __int128;
        return static_cast<std::size_t>((static_cast<Wide>(m_generator()) * below) >> 64U);
    }

private:
    std::mt19937_64 m_generator;
};

// Sorts what it needs.
double MedianOf(std::vector<double>& values) {
    const auto upper = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), upper, values.end());
    if (values.size() % 2 == 1)
        return *upper;
    return (*upper + *std::max_element(values.begin(), upper)) / 2;
}

double FigureOf(std::vector<double>& values, BootstrapFigure figure) {
    switch (figure) {
    case BootstrapFigure::Median:
        return MedianOf(values);
    case BootstrapFigure::Deviation:
        return FiguresOf(values).deviation;
    case BootstrapFigure::Mean:
        break;
    }
    return FiguresOf(values).mean;
}

} // namespace

std::string_view NameOf(BootstrapFigure figure) {
    switch (figure) {
    case BootstrapFigure::Median:
        return "median";
    case BootstrapFigure::Deviation:
        return "standard deviation";
    case BootstrapFigure::Mean:
        break;
    }
    return "mean";
}

BootstrapFigure BootstrapFigureOf(std::string_view name) {
    for (const BootstrapFigure figure : {BootstrapFigure::Mean, BootstrapFigure::Median, BootstrapFigure::Deviation})
        if (name == NameOf(figure))
            return figure;
    FailWith("“" + std::string(name) + "” isn't a statistic that can be bootstrapped.");
}

std::optional<BootstrapResult> RunBootstrap(std::span<const double> values, const BootstrapOptions& options,
                                            const BootstrapProgress& progress) {
    std::vector<double> sample;
    std::copy_if(values.begin(), values.end(), std::back_inserter(sample),
                 [](double value) { return !std::isnan(value); });
    if (sample.size() < 2)
        FailWith("At least two values are needed; there are " + std::to_string(sample.size()) + ".");
    if (options.resamples < 2)
        FailWith("At least two resamples are needed.");
    RowDrawer drawer(options.seed);
    std::vector<double> drawn(sample.size());
    std::vector<double> figures;
    for (int n = 1; n <= options.resamples; ++n) {
        for (double& value : drawn)
            value = sample[drawer.Below(sample.size())];
        figures.push_back(FigureOf(drawn, options.figure));
        if (progress && !progress(n))
            return std::nullopt;
    }
    BootstrapResult result;
    result.count = sample.size();
    result.figure = FigureOf(sample, options.figure);
    result.error = FiguresOf(figures).deviation;
    std::sort(figures.begin(), figures.end());
    result.interval = {Quantile(figures, (1 - options.confidence) / 2),
                       Quantile(figures, (1 + options.confidence) / 2)};
    return result;
}

} // namespace studies
