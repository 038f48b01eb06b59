#include "analysis/Rules.h"

#include "analysis/RuleTable.h"

#include <algorithm>

namespace corvane::check {

const RuleText& TextOf(Rule rule) {
    return ruleTable[static_cast<std::size_t>(rule)];
}

std::span<const RuleText> AllRules() {
    return ruleTable;
}

std::optional<Rule> RuleNamed(std::string_view name) {
    const auto it = std::find_if(ruleTable.begin(), ruleTable.end(), [&](const RuleText& o) { return o.name == name; });
    return it == ruleTable.end() ? std::nullopt : std::optional(it->rule);
}

} // namespace corvane::check
