#include "analysis/Rules.h"

#include "analysis/RuleTable.h"

#include <algorithm>

namespace corvane::check {

const RuleText& TextOf(Rule eRule) {
    return aRuleTable[static_cast<std::size_t>(eRule)];
}

std::span<const RuleText> AllRules() {
    return aRuleTable;
}

std::optional<Rule> RuleNamed(std::string_view sName) {
    const auto it =
        std::find_if(aRuleTable.begin(), aRuleTable.end(), [&](const RuleText& o) { return o.sName == sName; });
    return it == aRuleTable.end() ? std::nullopt : std::optional(it->eRule);
}

} // namespace corvane::check
