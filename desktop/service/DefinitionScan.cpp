#include "desktop/service/DefinitionScan.h"

#include "corvane/base/Variant.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <set>
#include <span>

namespace corvane::desktop {

namespace {

constexpr int nLastOrder = 2146; // beyond it, entries at 9,000 and more have no rank

// The standard titles in their order on a menu bar. A title that isn't among them belongs between the two halves.
constexpr std::array aFirstTitles{"File", "Edit", "View"};
constexpr std::array aLastTitles{"Tools", "Window", "Help"};

bool IsTrue(std::string_view sValue) {
    try {
        return ToBoolean(Variant(std::string(sValue)));
    } catch (const Failure&) {
        return false; // the library rejects the file and says so
    }
}

bool IsSpace(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// Reads the attributes up to the tag's end and returns the place behind it; npos when there is none. All definition
// files of an application go through here before its window can show itself.
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

int OrderOf(const DefinitionTag& oTag) {
    return static_cast<int>(std::lround(std::strtod(std::string(oTag.Attribute("PositionOrder")).c_str(), nullptr)));
}

bool IsAmong(std::span<const char* const> aTitles, std::string_view sTitle) {
    return std::any_of(aTitles.begin(), aTitles.end(), [&](const char* s) { return EqualText(s, sTitle); });
}

// A free order for a standard title: behind all that belongs before it and before all that belongs behind it, where
// there is room.
int FreeOrder(std::string_view sTitle, const DefinitionScan& oScan) {
    const auto itFirst =
        std::find_if(aFirstTitles.begin(), aFirstTitles.end(), [&](const char* s) { return EqualText(s, sTitle); });
    const bool bIsFirst = itFirst != aFirstTitles.end();
    const auto itLast =
        std::find_if(aLastTitles.begin(), aLastTitles.end(), [&](const char* s) { return EqualText(s, sTitle); });
    const std::span<const char* const> aBefore(aFirstTitles.begin(), itFirst);
    const std::span<const char* const> aBehind(itLast, aLastTitles.end());
    std::set<int> setTaken;
    int nLow = 0;
    int nHigh = nLastOrder + 1;
    for (const auto& [sOther, nOrder] : oScan.Titles()) {
        setTaken.insert(nOrder);
        const bool bIsBefore = bIsFirst ? IsAmong(aBefore, sOther) : !IsAmong(aBehind, sOther);
        if (bIsBefore)
            nLow = std::max(nLow, nOrder);
        else
            nHigh = std::min(nHigh, nOrder);
    }
    // The titles at the beginning stand close behind what is before them, those at the end close before what is behind.
    if (nLow + 1 < nHigh)
        return bIsFirst ? nLow + 1 : nHigh - 1;
    int nOrder = nLastOrder;
    while (setTaken.contains(nOrder))
        --nOrder;
    return nOrder;
}

} // namespace

std::string_view DefinitionTag::Attribute(std::string_view sName) const {
    for (const auto& [sKey, sValue] : aAttributes)
        if (sKey == sName)
            return sValue;
    return {};
}

void ForEachTag(std::string_view sText, std::initializer_list<std::string_view> aElements,
                const std::function<void(const DefinitionTag&)>& fnSee) {
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
        if (i != std::string_view::npos)
            fnSee(oTag);
    }
}

std::vector<DefinitionTag> TagsIn(std::string_view sText, std::initializer_list<std::string_view> aElements) {
    std::vector<DefinitionTag> aTags;
    ForEachTag(sText, aElements, [&](const DefinitionTag& oTag) { aTags.push_back(oTag); });
    return aTags;
}

std::string MenuKey(const DefinitionTag& oMenuItem) {
    const std::string_view sPath = oMenuItem.Attribute("Path");
    std::string sKey(sPath);
    if (!sPath.empty())
        sKey += '.';
    return sKey.append(oMenuItem.Attribute("ActionItem"));
}

void DefinitionScan::LookFor(std::string_view sDefinition) {
    m_bWantsAll = false;
    ForEachTag(sDefinition, {"MenuItem"}, [&](const DefinitionTag& oTag) {
        m_setWantedActions.emplace(oTag.Attribute("ActionItem"));
        m_setWantedShortCuts.emplace(oTag.Attribute("ShortCutKey"));
    });
}

void DefinitionScan::Add(std::string_view sText) {
    bool bActive = false;
    ForEachTag(sText, {"Service", "MenuItem"}, [&](const DefinitionTag& oTag) {
        if (oTag.sElement == "Service") {
            m_setServices.emplace(oTag.Attribute("Name"));
            bActive = IsTrue(oTag.Attribute("Active")) && !oTag.Attribute("ProgID").empty();
            if (bActive)
                m_setProgIDs.emplace(oTag.Attribute("ProgID"));
        } else if (bActive) {
            AddMenuItem(oTag, EqualText(oTag.Attribute("Type"), "MenuTitle") ? OrderOf(oTag) : 0);
        }
    });
}

void DefinitionScan::AddMenuItem(const DefinitionTag& oMenuItem, int nOrder) {
    const bool bIsTitle = EqualText(oMenuItem.Attribute("Type"), "MenuTitle");
    const bool bIsWanted = m_bWantsAll || m_setWantedActions.contains(oMenuItem.Attribute("ActionItem"));
    if (bIsWanted && (bIsTitle || EqualText(oMenuItem.Attribute("Type"), "MenuItem")))
        m_setMenuKeys.insert(MenuKey(oMenuItem));
    if (bIsTitle && oMenuItem.Attribute("Path").empty())
        m_mapTitles.emplace(oMenuItem.Attribute("ActionItem"), nOrder);
    const std::string_view sShortCut = oMenuItem.Attribute("ShortCutKey");
    if (!sShortCut.empty() && (m_bWantsAll || m_setWantedShortCuts.contains(sShortCut)))
        m_setShortCuts.emplace(sShortCut);
}

std::string FitDefinition(std::string_view sText, DefinitionScan& oScan) {
    std::string sFitted;
    std::size_t iCopied = 0;
    for (const DefinitionTag& oTag : TagsIn(sText, {"MenuItem"})) {
        sFitted += sText.substr(iCopied, oTag.iBegin - iCopied);
        iCopied = oTag.iEnd;
        if (oScan.HasMenuKey(MenuKey(oTag)))
            continue;
        const bool bIsTitle = EqualText(oTag.Attribute("Type"), "MenuTitle");
        const int nOrder = bIsTitle ? FreeOrder(oTag.Attribute("ActionItem"), oScan) : 0;
        sFitted += "<MenuItem";
        for (const auto& [sName, sValue] : oTag.aAttributes) {
            if (sName == "ShortCutKey" && oScan.HasShortCut(sValue))
                continue;
            const std::string sWritten =
                bIsTitle && sName == "PositionOrder" ? std::to_string(nOrder) : std::string(sValue);
            sFitted.append(" ").append(sName).append("=\"").append(sWritten).append("\"");
        }
        sFitted += "/>";
        oScan.AddMenuItem(oTag, nOrder); // the next title finds its place beside this one
    }
    return sFitted.append(sText.substr(iCopied));
}

} // namespace corvane::desktop
