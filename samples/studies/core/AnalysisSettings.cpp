#include "AnalysisSettings.h"

#include "Errors.h"
#include "Table.h"

#include <array>
#include <tuple>
#include <utility>

namespace studies {
namespace {

struct KindWords {
    AnalysisKind eKind;
    std::string_view sName;
    std::string_view sTitle;
};

constexpr std::array<KindWords, 5> Kinds{{{AnalysisKind::Summary, "summary", "Summary"},
                                          {AnalysisKind::Histogram, "histogram", "Histogram"},
                                          {AnalysisKind::Scatter, "scatter", "Scatter plot"},
                                          {AnalysisKind::Comparison, "comparison", "Comparison"},
                                          {AnalysisKind::Bootstrap, "bootstrap", "Bootstrap"}}};

const KindWords& WordsOf(AnalysisKind eKind) {
    return Kinds[static_cast<std::size_t>(eKind)];
}

} // namespace

std::string_view NameOf(AnalysisKind eKind) {
    return WordsOf(eKind).sName;
}

AnalysisKind AnalysisKindOf(std::string_view sName) {
    for (const KindWords& oWords : Kinds)
        if (oWords.sName == sName)
            return oWords.eKind;
    FailWith("“" + std::string(sName) + "” isn't a kind of analysis that this version supports.");
}

std::string AnalysisSettings::Title(std::string_view sDataSet) const {
    std::string sTitle = std::string(WordsOf(eKind).sTitle) + " of " + std::string(sDataSet);
    if (eKind == AnalysisKind::Scatter && !sColumnX.empty() && !sColumnY.empty())
        return sTitle + ": " + SpokenName(sColumnY) + " over " + SpokenName(sColumnX);
    if (eKind != AnalysisKind::Summary && !sColumnX.empty())
        sTitle += ": " + SpokenName(sColumnX);
    if (eKind == AnalysisKind::Comparison && !sFirstGroup.empty() && !sSecondGroup.empty())
        return sTitle + ", " + sFirstGroup + " and " + sSecondGroup;
    return sGroupColumn.empty() || eKind == AnalysisKind::Bootstrap ? sTitle
                                                                    : sTitle + " by " + SpokenName(sGroupColumn);
}

bool AnalysisSettings::operator==(const AnalysisSettings& oOther) const {
    return eKind == oOther.eKind && IsLike(oOther);
}

bool AnalysisSettings::IsLike(const AnalysisSettings& oOther) const {
    const auto Parts = [](const AnalysisSettings& o) {
        return std::tie(o.sGroupColumn, o.sColumnX, o.sColumnY, o.sFirstGroup, o.sSecondGroup, o.nBins,
                        o.oBootstrap.eFigure, o.oBootstrap.nResamples, o.oBootstrap.dblConfidence, o.oBootstrap.nSeed);
    };
    return Parts(*this) == Parts(oOther);
}

} // namespace studies
