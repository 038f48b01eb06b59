#include "adapters/common/Nearest.h"

#include "corvane/base/Text.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <vector>

namespace corvane {

std::size_t EditDistance(std::string_view left, std::string_view right) {
    const std::string a = FoldText(left);
    const std::string b = FoldText(right);
    const std::size_t n = b.size() + 1;
    std::array<std::vector<std::size_t>, 3> rows{std::vector<std::size_t>(n), std::vector<std::size_t>(n),
                                                 std::vector<std::size_t>(n)};
    auto& [before, last, row] = rows;
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j < n; ++j) {
            const std::size_t changed = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            row[j] = std::min({changed, row[j - 1] + 1, last[j] + 1});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
        before.swap(last);
        last.swap(row);
    }
    return last.back();
}

std::optional<std::string> Nearest(std::span<const std::string> names, std::string_view written) {
    const std::string* nearest = nullptr;
    std::size_t nearestDistance = 0;
    for (const std::string& name : names) {
        // A third of the letters may be wrong, one in any case.
        const std::size_t allowed = std::max<std::size_t>(1, std::max(name.size(), written.size()) / 3);
        const std::size_t lengths =
            name.size() > written.size() ? name.size() - written.size() : written.size() - name.size();
        if (lengths > allowed)
            continue;
        const std::size_t distance = EditDistance(name, written);
        if (distance <= allowed && (!nearest || distance < nearestDistance)) {
            nearest = &name;
            nearestDistance = distance;
        }
    }
    return nearest ? std::optional(*nearest) : std::nullopt;
}

} // namespace corvane
