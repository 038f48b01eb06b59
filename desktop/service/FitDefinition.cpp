#include "desktop/service/FitDefinition.h"

#include "desktop/service/DefinitionTags.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <span>

namespace corvane::desktop {

namespace {

constexpr int nLastOrder = 2146; // beyond it, entries at 9,000 and more have no rank

// The standard titles in their order on a menu bar. A title that isn't among them belongs between the two halves.
constexpr std::array aFirstTitles{"File", "Edit", "View"};
constexpr std::array aLastTitles{"Tools", "Window", "Help"};

bool IsAmong(std::span<const char* const> aTitles, std::string_view sTitle) {
    return std::any_of(aTitles.begin(), aTitles.end(), [&](const char* s) { return EqualText(s, sTitle); });
}

// A free order for a standard title: behind all that belongs before it and before all that belongs behind it, where
// there is room.
int FreeOrder(std::string_view sTitle, const MenusInUse& oInUse) {
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
    for (const auto& [sOther, nOrder] : oInUse.Titles()) {
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

std::string KeyOf(const DefinitionTag& oMenuItem) {
    const std::string_view sPath = oMenuItem.Attribute("Path");
    std::string sKey(sPath);
    if (!sPath.empty())
        sKey += '.';
    return sKey.append(oMenuItem.Attribute("ActionItem"));
}

} // namespace

MenusInUse::MenusInUse(std::string_view sDefinition) {
    for (const DefinitionTag& oTag : TagsIn(sDefinition, {"MenuItem"})) {
        m_setWantedPaths.emplace(oTag.Attribute("Path"));
        m_setWantedKeys.insert(KeyOf(oTag));
        if (const std::string_view sShortCut = oTag.Attribute("ShortCutKey"); !sShortCut.empty())
            m_setWantedShortCuts.emplace(sShortCut);
    }
}

void MenusInUse::Add(const MenuItemDefCollection& colMenuItemDefs) {
    const std::string* pPath = nullptr;
    bool bIsWanted = false;
    for (const Ref<MenuItemDef>& oDef : colMenuItemDefs) {
        if (pPath != &oDef->Path()) { // entries that stand in a row share it
            pPath = &oDef->Path();
            bIsWanted = m_setWantedPaths.contains(*pPath);
        }
        const bool bIsTitle = oDef->MenuType() == MenuType::fwMenuTitle;
        if (bIsWanted && (bIsTitle || oDef->MenuType() == MenuType::fwMenuItem))
            if (std::string sKey = oDef->Key(); m_setWantedKeys.contains(sKey))
                m_setKeys.insert(std::move(sKey));
        if (bIsTitle && pPath->empty())
            AddTitle(oDef->ActionItemDef()->Name(), static_cast<int>(std::lround(oDef->PositionOrder())));
        if (!oDef->ShortCutKey().empty() && m_setWantedShortCuts.contains(oDef->ShortCutKey()))
            m_setShortCuts.insert(oDef->ShortCutKey());
    }
}

std::string FitDefinition(std::string_view sText, MenusInUse oInUse) {
    std::string sFitted;
    std::size_t iCopied = 0;
    for (const DefinitionTag& oTag : TagsIn(sText, {"MenuItem"})) {
        sFitted += sText.substr(iCopied, oTag.iBegin - iCopied);
        iCopied = oTag.iEnd;
        if (oInUse.HasKey(KeyOf(oTag)))
            continue;
        const bool bIsTitle = EqualText(oTag.Attribute("Type"), "MenuTitle");
        const int nOrder = bIsTitle ? FreeOrder(oTag.Attribute("ActionItem"), oInUse) : 0;
        sFitted += "<MenuItem";
        for (const auto& [sName, sValue] : oTag.aAttributes) {
            if (sName == "ShortCutKey" && oInUse.HasShortCut(sValue))
                continue;
            const std::string sWritten =
                bIsTitle && sName == "PositionOrder" ? std::to_string(nOrder) : std::string(sValue);
            sFitted.append(" ").append(sName).append("=\"").append(sWritten).append("\"");
        }
        sFitted += "/>";
        if (bIsTitle)
            oInUse.AddTitle(oTag.Attribute("ActionItem"), nOrder); // the next one finds its place beside it
    }
    return sFitted.append(sText.substr(iCopied));
}

} // namespace corvane::desktop
