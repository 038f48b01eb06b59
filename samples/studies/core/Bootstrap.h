// Confidence intervals without a formula: the sample is drawn anew from itself many times.
#pragma once

#include "Inference.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>

namespace studies {

enum class BootstrapFigure { Mean, Median, Deviation };

[[nodiscard]] std::string_view NameOf(BootstrapFigure eFigure);
// Fails for a word that NameOf doesn't give.
[[nodiscard]] BootstrapFigure BootstrapFigureOf(std::string_view sName);

struct BootstrapOptions {
    BootstrapFigure eFigure = BootstrapFigure::Mean;
    int nResamples = 1000;
    double dblConfidence = 0.95;
    std::uint64_t nSeed = 1; // one seed, one result, on every machine
};

struct BootstrapResult {
    std::size_t nCount = 0; // of the values that aren't missing
    double dblFigure = 0;   // of the sample itself
    double dblError = 0;    // the standard deviation of the resamples' figures
    Interval oInterval;     // between quantiles of the resamples' figures
};

// Called after each resample with how many are done; false ends the work.
using BootstrapProgress = std::function<bool(int nDone)>;

// Nothing when the progress function ended it. Fails for fewer than two values, and for fewer than two resamples.
[[nodiscard]] std::optional<BootstrapResult> RunBootstrap(std::span<const double> aValues,
                                                          const BootstrapOptions& oOptions,
                                                          const BootstrapProgress& fnProgress = {});

} // namespace studies
