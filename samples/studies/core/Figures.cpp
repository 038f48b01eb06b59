#include "Figures.h"

#include "Statistics.h"
#include "corvane/base/Text.h"
#include "corvane/core/Preferences.h"

#include <algorithm>

namespace studies {

using namespace corvane;

namespace {

Ref<Preferences> Settings() {
    auto oSettings = New<Preferences>();
    oSettings->Initialize("Studies", "Figures");
    return oSettings;
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
    if (eKind == AnalysisKind::Comparison && !sGroup.empty()) {
        const std::vector<std::string> aValues = ValuesOf(*oTable.Find(sGroup));
        oSettings.sFirstGroup = !aValues.empty() ? aValues[0] : "";
        oSettings.sSecondGroup = aValues.size() > 1 ? aValues[1] : "";
    }
    return oSettings;
}

} // namespace studies
