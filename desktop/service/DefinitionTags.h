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

// One start tag and its attributes, as they are in the text.
struct DefinitionTag {
    std::string_view element;
    std::size_t begin = 0; // of its "<"
    std::size_t end = 0;   // behind its ">"
    std::vector<std::pair<std::string_view, std::string_view>> attributes;

    [[nodiscard]] std::string_view Attribute(std::string_view name) const; // empty when it is absent
};

// Shows the start tags of those elements, in order, until it returns false; each lives until the next. Comments and
// character data are passed over; a tag that doesn't end isn't among them.
void ForEachTag(std::string_view text, std::initializer_list<std::string_view> elements,
                const std::function<bool(const DefinitionTag&)>& see);
// All of them at once.
[[nodiscard]] std::vector<DefinitionTag> TagsIn(std::string_view text,
                                                std::initializer_list<std::string_view> elements);

} // namespace corvane::desktop
