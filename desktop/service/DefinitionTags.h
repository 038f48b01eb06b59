// A quick look over the text of definition files, for what the host must know beside the library. It checks nothing; a
// bad file is the library's to report.
#pragma once

#include <cstddef>
#include <functional>
#include <initializer_list>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane::desktop {

// One start tag and its attributes, as they stand in the text.
struct DefinitionTag {
    std::string_view sElement;
    std::size_t iBegin = 0; // of its "<"
    std::size_t iEnd = 0;   // behind its ">"
    std::vector<std::pair<std::string_view, std::string_view>> aAttributes;

    [[nodiscard]] std::string_view Attribute(std::string_view sName) const; // empty when it is absent
};

// Shows the start tags of those elements, in order, until it returns false; each lives until the next. Comments and
// character data are passed over; a tag that doesn't end isn't among them.
void ForEachTag(std::string_view sText, std::initializer_list<std::string_view> aElements,
                const std::function<bool(const DefinitionTag&)>& fnSee);
// All of them at once.
[[nodiscard]] std::vector<DefinitionTag> TagsIn(std::string_view sText,
                                                std::initializer_list<std::string_view> aElements);

} // namespace corvane::desktop
