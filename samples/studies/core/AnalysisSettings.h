// What an analysis is about, without the data.
#pragma once

#include "Bootstrap.h"

#include <string>
#include <string_view>

namespace studies {

enum class AnalysisKind { Summary, Histogram, Scatter, Comparison, Bootstrap };

// "summary" and so on, as files have it.
[[nodiscard]] std::string_view NameOf(AnalysisKind eKind);
// Fails for a word that NameOf doesn't give.
[[nodiscard]] AnalysisKind AnalysisKindOf(std::string_view sName);

// Columns are named; "" for none. What a kind has no use for keeps what it was.
struct AnalysisSettings {
    AnalysisKind eKind = AnalysisKind::Summary;
    std::string sGroupColumn;
    std::string sColumnX; // what is counted, compared or resampled, too
    std::string sColumnY;
    std::string sFirstGroup; // the groups that are compared
    std::string sSecondGroup;
    int nBins = 0;               // 0: by the data
    BootstrapOptions oBootstrap; // its confidence is that of all kinds

    // "Histogram of penguins.csv", or with what it is by.
    [[nodiscard]] std::string Title(std::string_view sDataSet) const;
    [[nodiscard]] bool operator==(const AnalysisSettings& oOther) const;
    // The same but for the kind: pages of one window show the same settings as different kinds.
    [[nodiscard]] bool IsLike(const AnalysisSettings& oOther) const;
};

} // namespace studies
