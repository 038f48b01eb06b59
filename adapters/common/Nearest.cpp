#include "adapters/common/Nearest.h"

#include "corvane/base/Text.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <vector>

namespace corvane {

std::size_t EditDistance(std::string_view sLeft, std::string_view sRight) {
    const std::string a = FoldText(sLeft);
    const std::string b = FoldText(sRight);
    const std::size_t n = b.size() + 1;
    std::array<std::vector<std::size_t>, 3> aRows{std::vector<std::size_t>(n), std::vector<std::size_t>(n),
                                                  std::vector<std::size_t>(n)};
    auto& [aBefore, aLast, aRow] = aRows;
    std::iota(aLast.begin(), aLast.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        aRow[0] = i;
        for (std::size_t j = 1; j < n; ++j) {
            const std::size_t nChanged = aLast[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            aRow[j] = std::min({nChanged, aRow[j - 1] + 1, aLast[j] + 1});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                aRow[j] = std::min(aRow[j], aBefore[j - 2] + 1);
        }
        aBefore.swap(aLast);
        aLast.swap(aRow);
    }
    return aLast.back();
}

std::optional<std::string> Nearest(std::span<const std::string> aNames, std::string_view sWritten) {
    const std::string* pNearest = nullptr;
    std::size_t nNearest = 0;
    for (const std::string& sName : aNames) {
        // A third of the letters may be wrong, one in any case.
        const std::size_t nAllowed = std::max<std::size_t>(1, std::max(sName.size(), sWritten.size()) / 3);
        const std::size_t nLengths =
            sName.size() > sWritten.size() ? sName.size() - sWritten.size() : sWritten.size() - sName.size();
        if (nLengths > nAllowed)
            continue;
        const std::size_t nDistance = EditDistance(sName, sWritten);
        if (nDistance <= nAllowed && (!pNearest || nDistance < nNearest)) {
            pNearest = &sName;
            nNearest = nDistance;
        }
    }
    return pNearest ? std::optional(*pNearest) : std::nullopt;
}

} // namespace corvane
