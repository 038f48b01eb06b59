#include "analysis/Rules.h"

#include "analysis/RuleTable.h"

#include <algorithm>
#include <array>

namespace corvane::check {

const RuleText& TextOf(Rule rule) {
    return ruleTable[static_cast<std::size_t>(rule)];
}

bool StopsTheStart(Rule rule) {
    using enum Rule;
    constexpr std::array rules{SchemaFile,       UnknownParent,     DuplicateTitle,        PathWithoutRoot,
                               PositionOverflow, MissingNavigation, StartServiceFramework, ReservedName};
    return std::find(rules.begin(), rules.end(), rule) != rules.end();
}

bool LeavesOutTheFile(Rule rule) {
    using enum Rule;
    constexpr std::array rules{NotWellFormed,    NoServiceElement, Schema,         UnknownElement,
                               UnknownAttribute, BadWord,          BadValue,       MissingAttribute,
                               DuplicateName,    UnknownAction,    UnreadableFile, HelpWithoutAbout};
    return std::find(rules.begin(), rules.end(), rule) != rules.end();
}

std::span<const RuleText> AllRules() {
    return ruleTable;
}

std::optional<Rule> RuleNamed(std::string_view name) {
    const auto it = std::find_if(ruleTable.begin(), ruleTable.end(), [&](const RuleText& o) { return o.name == name; });
    return it == ruleTable.end() ? std::nullopt : std::optional(it->rule);
}

} // namespace corvane::check
