// Numbers for places in a given order, as few of them new as possible.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <set>
#include <vector>

namespace corvane::check {

// All numbers in hundredths.
struct NumberedPlace {
    std::int64_t order = 0; // that it has
    bool isFixed = false;   // and has to keep
    bool isKeepable = true; // all who share the place have it
    int weight = 1;         // how many numbers change with it
    bool isWhole = false;   // it may have whole numbers alone
    std::int64_t least = std::numeric_limits<std::int64_t>::min();
    std::int64_t most = 999999;
    std::set<std::int64_t> taken; // whole numbers that it can't have
    std::int64_t factor = 100;    // by which the order, as a number, becomes its rank
};

// A number for each place, so that their ranks ascend. Nothing when the fixed ones leave no room.
[[nodiscard]] std::optional<std::vector<std::int64_t>> NumberPlaces(const std::vector<NumberedPlace>& places);

// The same for ranks that are compared as texts: all numbers have equally many digits where any changes.
[[nodiscard]] std::optional<std::vector<std::int64_t>> NumberTexts(const std::vector<NumberedPlace>& places);

} // namespace corvane::check
