#include "desktop/service/DefinitionTags.h"

#include <algorithm>

namespace corvane::desktop {

namespace {

bool IsSpace(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// Reads the attributes up to the tag's end and returns the place behind it; npos when there is none.
std::size_t ReadAttributes(std::string_view sText, std::size_t i, DefinitionTag& oTag) {
    while (true) {
        while (i < sText.size() && (IsSpace(sText[i]) || sText[i] == '/' || sText[i] == '?'))
            ++i;
        if (i >= sText.size())
            return std::string_view::npos;
        if (sText[i] == '>')
            return i + 1;
        const std::size_t iName = i;
        while (i < sText.size() && !IsSpace(sText[i]) && sText[i] != '=')
            ++i;
        const std::string_view sName = sText.substr(iName, i - iName);
        i = sText.find('=', i);
        while (i < sText.size() && sText[i] != '"' && sText[i] != '\'')
            ++i;
        if (i >= sText.size())
            return std::string_view::npos;
        const std::size_t iClose = sText.find(sText[i], i + 1);
        if (iClose == std::string_view::npos)
            return iClose;
        oTag.aAttributes.emplace_back(sName, sText.substr(i + 1, iClose - i - 1));
        i = iClose + 1;
    }
}

std::size_t Behind(std::string_view sText, std::string_view sEnd, std::size_t i) {
    const std::size_t iFound = sText.find(sEnd, i);
    return iFound == std::string_view::npos ? iFound : iFound + sEnd.size();
}

} // namespace

std::string_view DefinitionTag::Attribute(std::string_view sName) const {
    for (const auto& [sKey, sValue] : aAttributes)
        if (sKey == sName)
            return sValue;
    return {};
}

void ForEachTag(std::string_view sText, std::initializer_list<std::string_view> aElements,
                const std::function<bool(const DefinitionTag&)>& fnSee) {
    DefinitionTag oTag;
    std::size_t i = 0;
    while (i != std::string_view::npos && (i = sText.find('<', i)) != std::string_view::npos) {
        if (sText.compare(i, 2, "<!") == 0) {
            if (sText.substr(i).starts_with("<!--")) {
                i = Behind(sText, "-->", i + 4);
                continue;
            }
            if (sText.substr(i).starts_with("<![CDATA[")) {
                i = Behind(sText, "]]>", i);
                continue;
            }
        }
        oTag.iBegin = i++;
        std::size_t iNameEnd = i;
        while (iNameEnd < sText.size() && !IsSpace(sText[iNameEnd]) && sText[iNameEnd] != '/' && sText[iNameEnd] != '>')
            ++iNameEnd;
        oTag.sElement = sText.substr(i, iNameEnd - i);
        // No value holds a "<", so the next one begins the next tag.
        if (std::find(aElements.begin(), aElements.end(), oTag.sElement) == aElements.end())
            continue;
        oTag.aAttributes.clear();
        i = ReadAttributes(sText, iNameEnd, oTag);
        oTag.iEnd = i;
        if (i != std::string_view::npos && !fnSee(oTag))
            return;
    }
}

std::vector<DefinitionTag> TagsIn(std::string_view sText, std::initializer_list<std::string_view> aElements) {
    std::vector<DefinitionTag> aTags;
    ForEachTag(sText, aElements, [&](const DefinitionTag& oTag) {
        aTags.push_back(oTag);
        return true;
    });
    return aTags;
}

} // namespace corvane::desktop
