#include "cli/check/MenuPlan.h"

#include "corvane/base/Text.h"

#include <algorithm>

namespace corvane::check {

namespace {

constexpr const char* sMainBar = "Main";
constexpr const char* sToolbarsMenu = "View.Toolbars";
constexpr Double dblTitleWeight = 1000000;
constexpr Double dblTitleOfNobody = 500;

bool IsTitle(const Entry& oEntry) {
    return oEntry.oDef->MenuType() == MenuType::fwMenuTitle;
}

std::optional<Long> InRange(Double dblRank) {
    try {
        return RoundToLong(dblRank);
    } catch (const Failure&) {
        return std::nullopt;
    }
}

Double Hundredfold(const MenuItemDef& oDef) {
    return static_cast<Double>(oDef.PositionOrder() * 100.0F);
}

} // namespace

MenuPlan::MenuPlan(Model& oModel) {
    for (const char* sName : {"StatusBar", "Explorer", sMainBar})
        AddBar(sName, nullptr).bOfHost = true;
    for (const char* sName : {"Separator", "WindowList"})
        m_mapTools.emplace(FoldText(sName), sName);
    ReadTitles(oModel);
    for (Provider* pProvider : oModel.MenuProviders())
        for (const Entry& oEntry : pProvider->aEntries) {
            if (oEntry.oDef->MenuType() == MenuType::fwContextMenuItem ||
                oEntry.oDef->MenuType() == MenuType::fwContextMenuTitle)
                continue;
            Placing& oPlacing = m_aPlacings.emplace_back();
            oPlacing.pEntry = &oEntry;
            m_mapPlacings.emplace(&oEntry, &oPlacing);
            Rank(oPlacing);
            File(oPlacing);
        }
    Build();
}

void MenuPlan::ReadTitles(Model& oModel) {
    for (Provider* pProvider : oModel.MenuProviders())
        for (const Entry& oEntry : pProvider->aEntries) {
            if (!IsTitle(oEntry))
                continue;
            // A page's title on the menu bar joins one that is there; below another title it doesn't.
            if (pProvider->eKind == ProviderKind::Page && m_mapTitles.contains(FoldText(oEntry.pAction->oDef->Name())))
                continue;
            const auto [it, bNew] = m_mapTitles.emplace(FoldText(oEntry.sKey), &oEntry);
            if (!bNew)
                m_aDoubleTitles.push_back({it->second, &oEntry});
        }
}

void MenuPlan::Rank(Placing& oPlacing) const {
    const MenuItemDef& oDef = *oPlacing.pEntry->oDef;
    if (oDef.MenuType() == MenuType::fwToolbarItem)
        return;
    if (IsTitle(*oPlacing.pEntry) && oDef.Path().empty()) {
        oPlacing.oRank = InRange(static_cast<Double>(oDef.PositionOrder()));
        return;
    }
    oPlacing.pTitle = TitleOf(oDef.Path());
    const Double dblTitle =
        oPlacing.pTitle ? static_cast<Double>(oPlacing.pTitle->oDef->PositionOrder()) : dblTitleOfNobody;
    oPlacing.oRank = InRange(dblTitle * dblTitleWeight + Hundredfold(oDef));
}

void MenuPlan::File(Placing& oPlacing) {
    const auto Share = [&](const Placing& oOwner) {
        oPlacing.pOwner = oOwner.pEntry;
        m_aShared.push_back(&oPlacing);
    };
    if (oPlacing.pEntry->oDef->MenuType() == MenuType::fwToolbarItem) {
        const auto [it, bNew] = m_mapButtons.emplace(FoldText(oPlacing.pEntry->oDef->PositionKey()), &oPlacing);
        if (!bNew)
            Share(*it->second);
    } else if (oPlacing.oRank) {
        const auto [it, bNew] = m_mapMenu.emplace(*oPlacing.oRank, &oPlacing);
        if (!bNew) {
            Share(*it->second);
            m_mapLost.emplace(oPlacing.pEntry->pAction, &oPlacing);
        }
    }
}

void MenuPlan::Build() {
    for (const auto& [lRank, pPlacing] : m_mapMenu)
        PlaceMenu(*pPlacing);
    for (Placing* pPlacing : m_aShared) {
        if (pPlacing->pEntry->oDef->MenuType() == MenuType::fwToolbarItem)
            PlaceButton(*pPlacing);
        else
            PlaceMenu(*pPlacing);
    }
    std::vector<std::pair<std::string, Placing*>> aButtons(m_mapButtons.begin(), m_mapButtons.end());
    std::stable_sort(aButtons.begin(), aButtons.end(),
                     [](const auto& a, const auto& b) { return CompareText(a.first, b.first) < 0; });
    for (const auto& [sText, pPlacing] : aButtons)
        PlaceButton(*pPlacing);
    if (Bar* pWindows = Find("Window"))
        pWindows->aSlots.push_back({"WindowList", {}});
}

Bar& MenuPlan::AddBar(const std::string& sName, const Entry* pAsking) {
    Bar& oBar = m_mapBars[FoldText(sName)];
    oBar.sName = sName;
    oBar.pFirstAsked = pAsking;
    return oBar;
}

Bar* MenuPlan::Find(const std::string& sName) {
    const auto it = m_mapBars.find(FoldText(sName));
    return it == m_mapBars.end() ? nullptr : &it->second;
}

const Bar* MenuPlan::FindBar(const std::string& sName) const {
    const auto it = m_mapBars.find(FoldText(sName));
    return it == m_mapBars.end() ? nullptr : &it->second;
}

const Entry* MenuPlan::TitleOf(const std::string& sPath) const {
    const auto it = m_mapTitles.find(FoldText(sPath));
    return it == m_mapTitles.end() ? nullptr : it->second;
}

const Placing* MenuPlan::PlacingOf(const Entry& oEntry) const {
    const auto it = m_mapPlacings.find(&oEntry);
    return it == m_mapPlacings.end() ? nullptr : it->second;
}

const Placing* MenuPlan::LostPlaceOf(const Action& oAction) const {
    const auto it = m_mapLost.find(&oAction);
    return it == m_mapLost.end() ? nullptr : it->second;
}

Slot* MenuPlan::SlotOf(Bar& oBar, const std::string& sTool) {
    const auto it = std::find_if(oBar.aSlots.begin(), oBar.aSlots.end(),
                                 [&](const Slot& oSlot) { return EqualText(oSlot.sTool, sTool); });
    return it == oBar.aSlots.end() ? nullptr : &*it;
}

// Where entries of a path stand: a placeholder when no title is there. Nothing when the start would stop.
Bar* MenuPlan::EntryBar(const std::string& sPath, const Placing& oPlacing) {
    if (Bar* pBar = Find(sPath))
        return pBar;
    const std::size_t iPoint = sPath.find('.');
    Bar* pRoot = Find(iPoint == std::string::npos ? sMainBar : sPath.substr(0, iPoint));
    const bool bHasTool = m_mapTools.contains(FoldText(sPath));
    if (!pRoot && !bHasTool)
        return nullptr;
    if (!bHasTool) {
        m_mapTools.emplace(FoldText(sPath), sPath);
        pRoot->aSlots.push_back({sPath, {}});
    }
    return &AddBar(sPath, oPlacing.pEntry);
}

Bar* MenuPlan::ParentBar(const std::string& sPath, const Placing& oPlacing) {
    return sPath.empty() ? Find(sMainBar) : EntryBar(sPath, oPlacing);
}

// The tool that the action has already, or that of its key, or a new one.
void MenuPlan::NameTool(Placing& oPlacing) {
    const Entry& oEntry = *oPlacing.pEntry;
    std::string& sTool = m_mapActionTools[oEntry.pAction];
    if (sTool.empty())
        sTool = m_mapTools.emplace(FoldText(oEntry.sKey), oEntry.sKey).first->second;
    oPlacing.sTool = sTool;
    oPlacing.bReserved = EqualText(sTool, "Separator") || EqualText(sTool, "WindowList");
}

void MenuPlan::PlaceMenu(Placing& oPlacing) {
    NameTool(oPlacing);
    if (IsTitle(*oPlacing.pEntry)) {
        PlaceTitle(oPlacing);
    } else if (Bar* pBar = EntryBar(oPlacing.pEntry->oDef->Path(), oPlacing)) {
        PlaceEntry(oPlacing, *pBar);
    } else {
        oPlacing.bWithoutRoot = true;
    }
}

void MenuPlan::PlaceEntry(Placing& oPlacing, Bar& oBar) {
    if (!m_mapLost.contains(oPlacing.pEntry->pAction)) {
        oBar.aSlots.push_back({oPlacing.sTool, {oPlacing.pEntry}});
        oPlacing.sBar = oBar.sName;
    } else if (Slot* pSlot = SlotOf(oBar, oPlacing.sTool)) {
        pSlot->aEntries.push_back(oPlacing.pEntry);
        oPlacing.sBar = oBar.sName;
    }
}

void MenuPlan::PlaceTitle(Placing& oPlacing) {
    const Entry& oEntry = *oPlacing.pEntry;
    Bar* pOwn = Find(oEntry.sKey);
    const bool bAdopts = pOwn != nullptr;
    if (bAdopts && pOwn->bOfHost) {
        oPlacing.bReserved = true;
        return;
    }
    if (!bAdopts)
        pOwn = &AddBar(oEntry.sKey, nullptr);
    Bar* pParent = ParentBar(oEntry.oDef->Path(), oPlacing);
    if (!pParent) {
        oPlacing.bWithoutRoot = true;
        return;
    }
    if (!pOwn->pTitle)
        pOwn->pTitle = &oEntry;
    Slot* pSlot = bAdopts ? SlotOf(*pParent, oPlacing.sTool) : nullptr;
    if (bAdopts && !pSlot) {
        oPlacing.bOtherTool = true;
        return;
    }
    if (pSlot)
        pSlot->aEntries.push_back(&oEntry);
    else
        pParent->aSlots.push_back({oPlacing.sTool, {&oEntry}});
    oPlacing.sBar = pParent->sName;
}

void MenuPlan::PlaceButton(Placing& oPlacing) {
    NameTool(oPlacing);
    const std::string sBar = "Toolbars." + oPlacing.pEntry->oDef->Path();
    if (!Find(sBar)) {
        if (!Find(sToolbarsMenu)) {
            // The list of toolbars, for which a menu View is made when there is none.
            m_mapTools.emplace(FoldText(sToolbarsMenu), sToolbarsMenu);
            AddBar(sToolbarsMenu, oPlacing.pEntry);
            if (Bar* pView = EntryBar("View", oPlacing))
                pView->aSlots.push_back({sToolbarsMenu, {}});
        }
        Find(sToolbarsMenu)->aSlots.push_back({sBar, {}});
        m_mapTools.emplace(FoldText(sBar), sBar);
        AddBar(sBar, oPlacing.pEntry);
    }
    Bar& oBar = *Find(sBar);
    oBar.aSlots.push_back({oPlacing.sTool, {oPlacing.pEntry}});
    oPlacing.sBar = oBar.sName;
}

std::optional<Long> ContextRank(const MenuItemDef& oDef) {
    return InRange(oDef.MenuType() == MenuType::fwContextMenuTitle ? static_cast<Double>(oDef.PositionOrder())
                                                                   : Hundredfold(oDef));
}

} // namespace corvane::check
