#include "desktop/service/DefinitionTags.h"

#include <algorithm>

namespace corvane::desktop {

namespace {

bool IsSpace(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// Reads the attributes up to the tag's end and returns the place behind it; npos when there is none.
std::size_t ReadAttributes(std::string_view text, std::size_t i, DefinitionTag& tag) {
    while (true) {
        while (i < text.size() && (IsSpace(text[i]) || text[i] == '/' || text[i] == '?'))
            ++i;
        if (i >= text.size())
            return std::string_view::npos;
        if (text[i] == '>')
            return i + 1;
        const std::size_t nameIndex = i;
        while (i < text.size() && !IsSpace(text[i]) && text[i] != '=')
            ++i;
        const std::string_view name = text.substr(nameIndex, i - nameIndex);
        i = text.find('=', i);
        while (i < text.size() && text[i] != '"' && text[i] != '\'')
            ++i;
        if (i >= text.size())
            return std::string_view::npos;
        const std::size_t close = text.find(text[i], i + 1);
        if (close == std::string_view::npos)
            return close;
        tag.attributes.emplace_back(name, text.substr(i + 1, close - i - 1));
        i = close + 1;
    }
}

std::size_t Behind(std::string_view text, std::string_view end, std::size_t i) {
    const std::size_t found = text.find(end, i);
    return found == std::string_view::npos ? found : found + end.size();
}

} // namespace

std::string_view DefinitionTag::Attribute(std::string_view name) const {
    for (const auto& [key, value] : attributes)
        if (key == name)
            return value;
    return {};
}

void ForEachTag(std::string_view text, std::initializer_list<std::string_view> elements,
                const std::function<bool(const DefinitionTag&)>& see) {
    DefinitionTag tag;
    std::size_t i = 0;
    while (i != std::string_view::npos && (i = text.find('<', i)) != std::string_view::npos) {
        if (text.compare(i, 2, "<!") == 0) {
            if (text.substr(i).starts_with("<!--")) {
                i = Behind(text, "-->", i + 4);
                continue;
            }
            if (text.substr(i).starts_with("<![CDATA[")) {
                i = Behind(text, "]]>", i);
                continue;
            }
        }
        tag.begin = i++;
        std::size_t nameEnd = i;
        while (nameEnd < text.size() && !IsSpace(text[nameEnd]) && text[nameEnd] != '/' && text[nameEnd] != '>')
            ++nameEnd;
        tag.element = text.substr(i, nameEnd - i);
        // No value holds a "<", so the next one begins the next tag.
        if (std::find(elements.begin(), elements.end(), tag.element) == elements.end())
            continue;
        tag.attributes.clear();
        i = ReadAttributes(text, nameEnd, tag);
        tag.end = i;
        if (i != std::string_view::npos && !see(tag))
            return;
    }
}

std::vector<DefinitionTag> TagsIn(std::string_view text, std::initializer_list<std::string_view> elements) {
    std::vector<DefinitionTag> tags;
    ForEachTag(text, elements, [&](const DefinitionTag& tag) {
        tags.push_back(tag);
        return true;
    });
    return tags;
}

} // namespace corvane::desktop
