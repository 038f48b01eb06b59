#include "Figures.h"

#include "EditedText.h"
#include "Statistics.h"
#include "corvane/base/Text.h"
#include "corvane/core/Preferences.h"

#include <algorithm>

namespace studies {

using namespace corvane;

FigurePreferences ReadPreferences() {
    const Ref<Preferences> settings = New<Preferences>();
    settings->Initialize("Studies", "Figures");
    FigurePreferences read;
    const FigurePreferences defaultPreferences;
    if (const auto decimals = NumberOf(settings->GetValue("Decimals", "")))
        read.decimals = static_cast<int>(std::clamp(*decimals, 0.0, double{FigurePreferences::MostDecimals}));
    if (const auto percent = NumberOf(settings->GetValue("ConfidencePercent", "")))
        read.confidence = *percent >= 50 && *percent < 100 ? *percent / 100 : defaultPreferences.confidence;
    read.defaultGroup = Trimmed(settings->GetValue("DefaultGroup", ""));
    read.groupByDefault = EqualText(settings->GetValue("GroupByDefault", "False"), "True");
    return read;
}

AnalysisSettings FirstSettings(const Table& table, AnalysisKind kind, const FigurePreferences& preferences) {
    AnalysisSettings settings;
    settings.kind = kind;
    settings.bootstrap.confidence = preferences.confidence;
    for (const Column& column : table.columns) {
        if (!column.IsNumeric())
            continue;
        if (settings.columnX.empty())
            settings.columnX = column.name;
        else if (settings.columnY.empty())
            settings.columnY = column.name;
    }
    const std::vector<std::string> groups = GroupColumns(table);
    std::string group = groups.empty() ? std::string() : groups.front();
    if (table.Find(preferences.defaultGroup))
        group = preferences.defaultGroup;
    if (preferences.groupByDefault || kind == AnalysisKind::Comparison)
        settings.groupColumn = group;
    if (kind == AnalysisKind::Comparison && !group.empty())
        ChooseGroups(table, settings);
    return settings;
}

void ChooseGroups(const Table& table, AnalysisSettings& settings) {
    settings.firstGroup.clear();
    settings.secondGroup.clear();
    const Column* numbers = table.Find(settings.columnX);
    const Column* groups = table.Find(settings.groupColumn);
    if (!groups)
        return;
    std::vector<std::string> groupList = ValuesOf(*groups);
    std::stable_partition(groupList.begin(), groupList.end(), [&](const std::string& group) {
        return numbers && numbers->IsNumeric() && FiguresOf(NumbersOfGroup(*numbers, *groups, group)).count > 1;
    });
    if (groupList.size() < 2)
        return;
    settings.firstGroup = groupList[0];
    settings.secondGroup = groupList[1];
}

void Complete(const Table& table, AnalysisSettings& settings, const FigurePreferences& preferences) {
    const AnalysisSettings first = FirstSettings(table, settings.kind, preferences);
    if (settings.columnX.empty())
        settings.columnX = first.columnX;
    if (settings.kind == AnalysisKind::Scatter && settings.columnY.empty())
        settings.columnY = first.columnY;
    if (settings.kind != AnalysisKind::Comparison)
        return;
    if (settings.groupColumn.empty())
        settings.groupColumn = first.groupColumn;
    if (settings.firstGroup.empty() || settings.secondGroup.empty())
        ChooseGroups(table, settings);
}

} // namespace studies
