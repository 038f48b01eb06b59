#include "Bootstrap.h"

#include "Errors.h"
#include "Statistics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace studies {
namespace {

// Numbers that depend on seed, resample and place only, so that any thread may draw any resample. They are the steps of
// a counter, scrambled until no step shows.
class RowDrawer {
public:
    RowDrawer(std::uint64_t seed, std::uint64_t resample)
        : m_counter(Scrambled(seed + Scrambled(resample * step + 1))) {}
    // 2^64 is so much larger than any sample that rounding favours no row by any figure shown.
    std::size_t Below(std::size_t below) {
        __extension__ using Wide = unsigned __int128;
        m_counter += step;
        return static_cast<std::size_t>((static_cast<Wide>(Scrambled(m_counter)) * below) >> 64U);
    }

private:
    static constexpr std::uint64_t step = 0x9E3779B97F4A7C15U; // 2^64 by the golden ratio, odd

    static constexpr std::uint64_t Scrambled(std::uint64_t value) {
        value = (value ^ (value >> 30U)) * 0xBF58476D1CE4E5B9U;
        value = (value ^ (value >> 27U)) * 0x94D049BB133111EBU;
        return value ^ (value >> 31U);
    }

    std::uint64_t m_counter;
};

// The sample, prepared once for all resamples.
struct Sample {
    std::vector<double> sorted;
    double mean = 0;
    std::vector<double> fromMean; // each value's distance, so that squares lose no digits

    explicit Sample(std::vector<double> values) : sorted(std::move(values)) {
        std::sort(sorted.begin(), sorted.end());
        mean = FiguresOf(sorted).mean;
        fromMean.reserve(sorted.size());
        for (const double value : sorted)
            fromMean.push_back(value - mean);
    }
};

// The figures of resamples, one after another, without a copy of what is drawn.
class Resampler {
public:
    Resampler(const Sample& sample, const BootstrapOptions& options) : m_sample(sample), m_options(options) {}

    double Figure(int resample) {
        RowDrawer drawer(m_options.seed, static_cast<std::uint64_t>(resample));
        return m_options.figure == BootstrapFigure::Median ? Median(drawer) : Moments(drawer);
    }

private:
    double Moments(RowDrawer& drawer) const {
        const std::size_t count = m_sample.fromMean.size();
        double sum = 0;
        double squares = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const double value = m_sample.fromMean[drawer.Below(count)];
            sum += value;
            squares += value * value;
        }
        const auto n = static_cast<double>(count);
        if (m_options.figure == BootstrapFigure::Mean)
            return m_sample.mean + sum / n;
        return std::sqrt(std::max(0.0, (squares - sum * sum / n) / (n - 1)));
    }

    // How often each value of the sorted sample was drawn; the middle is found by counting.
    double Median(RowDrawer& drawer) {
        const std::size_t count = m_sample.sorted.size();
        m_drawn.assign(count, 0);
        for (std::size_t i = 0; i < count; ++i)
            ++m_drawn[drawer.Below(count)];
        const std::size_t lower = (count - 1) / 2; // equal to the upper one for an odd count
        const std::size_t upper = count / 2;
        std::size_t place = 0;
        std::size_t passed = m_drawn[0];
        while (passed <= lower)
            passed += m_drawn[++place];
        const double low = m_sample.sorted[place];
        while (passed <= upper)
            passed += m_drawn[++place];
        return (low + m_sample.sorted[place]) / 2;
    }

    const Sample& m_sample;
    const BootstrapOptions& m_options;
    std::vector<std::uint32_t> m_drawn;
};

// In the order of the statistics.
constexpr std::array<std::string_view, 3> figureNames{"mean", "median", "standard deviation"};

constexpr int inOnePart = 20; // resamples: many enough for the parts to cost nothing, few enough to divide well

std::vector<double> FiguresOfResamples(const Sample& sample, const BootstrapOptions& options, int first, int last,
                                       const corvane::JobProgress& progress) {
    Resampler resampler(sample, options);
    std::vector<double> figures;
    for (int resample = first; resample < last; ++resample) {
        progress.StopIfCancelled();
        figures.push_back(resampler.Figure(resample));
    }
    return figures;
}

} // namespace

std::string_view NameOf(BootstrapFigure figure) {
    return figureNames.at(static_cast<std::size_t>(figure));
}

std::string FigureOf(BootstrapFigure figure, std::string_view column) {
    if (figure == BootstrapFigure::Mean)
        return Translated("mean of %1", {column});
    return figure == BootstrapFigure::Median ? Translated("median of %1", {column})
                                             : Translated("standard deviation of %1", {column});
}

BootstrapFigure BootstrapFigureOf(std::string_view name) {
    const auto* const found = std::find(figureNames.begin(), figureNames.end(), name);
    if (found != figureNames.end())
        return static_cast<BootstrapFigure>(found - figureNames.begin());
    FailWith(Translated("“%1” isn't a statistic that can be bootstrapped.", {name}));
}

BootstrapResult RunBootstrap(std::span<const double> values, const BootstrapOptions& options,
                             corvane::JobProgress& progress) {
    std::vector<double> present;
    std::copy_if(values.begin(), values.end(), std::back_inserter(present),
                 [](double value) { return !std::isnan(value); });
    if (present.size() < 2)
        FailWith(Translated("At least two values are needed; there are %1.", {std::to_string(present.size())}));
    if (options.resamples < 2)
        FailWith(Translated("At least two resamples are needed."));
    const Sample sample(std::move(present));
    corvane::JobGroup<std::vector<double>> group(progress);
    for (int first = 0; first < options.resamples; first += inOnePart) {
        const int last = std::min(first + inOnePart, options.resamples);
        group.Add(
            [&sample, &options, first, last](const corvane::JobProgress& part) {
                return FiguresOfResamples(sample, options, first, last, part);
            },
            last - first);
    }
    std::vector<double> figures;
    for (const std::vector<double>& part : group.Run())
        figures.insert(figures.end(), part.begin(), part.end());
    BootstrapResult result;
    result.count = sample.sorted.size();
    result.figure = options.figure == BootstrapFigure::Median      ? Quantile(sample.sorted, 0.5)
                    : options.figure == BootstrapFigure::Deviation ? FiguresOf(sample.sorted).deviation
                                                                   : sample.mean;
    result.error = FiguresOf(figures).deviation;
    std::sort(figures.begin(), figures.end());
    result.interval = {Quantile(figures, (1 - options.confidence) / 2),
                       Quantile(figures, (1 + options.confidence) / 2)};
    result.bins = BinsFor(figures);
    result.counts = CountIn(result.bins, figures);
    return result;
}

} // namespace studies
