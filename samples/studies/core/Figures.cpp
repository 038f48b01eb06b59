#include "Figures.h"

#include "Statistics.h"
#include "corvane/base/Text.h"
#include "corvane/core/Preferences.h"

#include <algorithm>
#include <cmath>

namespace studies {

using namespace corvane;

namespace {

Ref<Preferences> Settings() {
    auto oSettings = New<Preferences>();
    oSettings->Initialize("Studies", "Figures");
    return oSettings;
}

std::size_t CountOf(const std::vector<double>& aNumbers) {
    return static_cast<std::size_t>(
        std::count_if(aNumbers.begin(), aNumbers.end(), [](double dbl) { return !std::isnan(dbl); }));
}

} // namespace

FigurePreferences ReadPreferences() {
    const Ref<Preferences> oSettings = Settings();
    FigurePreferences oRead;
    const FigurePreferences oDefault;
    if (const auto nDecimals = NumberOf(oSettings->GetValue("Decimals", "")))
        oRead.nDecimals = static_cast<int>(std::clamp(*nDecimals, 0.0, double{FigurePreferences::MostDecimals}));
    if (const auto dblConfidence = NumberOf(oSettings->GetValue("Confidence", "")))
        oRead.dblConfidence = *dblConfidence >= 0.5 && *dblConfidence < 1 ? *dblConfidence : oDefault.dblConfidence;
    oRead.sDefaultGroup = oSettings->GetValue("DefaultGroup", "");
    oRead.bGroupByDefault = EqualText(oSettings->GetValue("GroupByDefault", "False"), "True");
    return oRead;
}

void WritePreferences(const FigurePreferences& oPreferences) {
    const Ref<Preferences> oSettings = Settings();
    oSettings->SetValue("Decimals", Long{oPreferences.nDecimals});
    oSettings->SetValue("Confidence", TextOf(oPreferences.dblConfidence));
    oSettings->SetValue("DefaultGroup", oPreferences.sDefaultGroup);
    oSettings->SetValue("GroupByDefault", oPreferences.bGroupByDefault);
}

AnalysisSettings FirstSettings(const Table& oTable, AnalysisKind eKind, const FigurePreferences& oPreferences) {
    AnalysisSettings oSettings;
    oSettings.eKind = eKind;
    oSettings.oBootstrap.dblConfidence = oPreferences.dblConfidence;
    for (const Column& oColumn : oTable.aColumns) {
        if (!oColumn.IsNumeric())
            continue;
        if (oSettings.sColumnX.empty())
            oSettings.sColumnX = oColumn.sName;
        else if (oSettings.sColumnY.empty())
            oSettings.sColumnY = oColumn.sName;
    }
    const std::vector<std::string> aGroups = GroupColumns(oTable);
    std::string sGroup = aGroups.empty() ? std::string() : aGroups.front();
    if (oTable.Find(oPreferences.sDefaultGroup))
        sGroup = oPreferences.sDefaultGroup;
    if (oPreferences.bGroupByDefault || eKind == AnalysisKind::Comparison)
        oSettings.sGroupColumn = sGroup;
    if (eKind == AnalysisKind::Comparison && !sGroup.empty())
        ChooseGroups(oTable, oSettings);
    return oSettings;
}

void ChooseGroups(const Table& oTable, AnalysisSettings& oSettings) {
    oSettings.sFirstGroup.clear();
    oSettings.sSecondGroup.clear();
    const Column* pNumbers = oTable.Find(oSettings.sColumnX);
    const Column* pGroups = oTable.Find(oSettings.sGroupColumn);
    if (!pGroups)
        return;
    std::vector<std::string> aGroups = ValuesOf(*pGroups);
    std::stable_partition(aGroups.begin(), aGroups.end(), [&](const std::string& sGroup) {
        return pNumbers && pNumbers->IsNumeric() && CountOf(NumbersOfGroup(*pNumbers, *pGroups, sGroup)) > 1;
    });
    if (aGroups.size() < 2)
        return;
    oSettings.sFirstGroup = aGroups[0];
    oSettings.sSecondGroup = aGroups[1];
}

void Complete(const Table& oTable, AnalysisSettings& oSettings, const FigurePreferences& oPreferences) {
    const AnalysisSettings oFirst = FirstSettings(oTable, oSettings.eKind, oPreferences);
    if (oSettings.sColumnX.empty())
        oSettings.sColumnX = oFirst.sColumnX;
    if (oSettings.eKind == AnalysisKind::Scatter && oSettings.sColumnY.empty())
        oSettings.sColumnY = oFirst.sColumnY;
    if (oSettings.eKind != AnalysisKind::Comparison)
        return;
    if (oSettings.sGroupColumn.empty())
        oSettings.sGroupColumn = oFirst.sGroupColumn;
    if (oSettings.sFirstGroup.empty() || oSettings.sSecondGroup.empty())
        ChooseGroups(oTable, oSettings);
}

} // namespace studies
