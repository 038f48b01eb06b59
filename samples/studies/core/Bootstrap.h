// Confidence intervals without a formula: the sample is drawn again from itself many times.
#pragma once

#include "Histogram.h"
#include "Inference.h"
#include "corvane/author/Jobs.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace studies {

enum class BootstrapFigure { Mean, Median, Deviation };

[[nodiscard]] std::string_view NameOf(BootstrapFigure figure);
// As a user reads it: "mean of bill length".
[[nodiscard]] std::string FigureOf(BootstrapFigure figure, std::string_view column);
// Fails for a word that NameOf doesn't give.
[[nodiscard]] BootstrapFigure BootstrapFigureOf(std::string_view name);

struct BootstrapOptions {
    BootstrapFigure figure = BootstrapFigure::Mean;
    int resamples = 1000;
    double confidence = 0.95;
    std::uint64_t seed = 1; // one seed, one result, on every machine
};

struct BootstrapResult {
    std::size_t count = 0; // of the values that aren't missing
    double figure = 0;     // of the sample itself
    double error = 0;      // the standard deviation of the resamples' figures
    Interval interval;     // between quantiles of the resamples' figures
    Bins bins = {};        // of the resamples' figures, and how many are in each
    std::vector<std::size_t> counts = {};
};

// As a job, with a progress, on all processors; the result is the same on any number of them, and without a job. Fails
// for fewer than two values, and for fewer than two resamples.
[[nodiscard]] BootstrapResult RunBootstrap(std::span<const double> values, const BootstrapOptions& options,
                                           corvane::JobProgress& progress = corvane::WithoutJob());

} // namespace studies
