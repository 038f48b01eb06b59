#include "cli/check/MenuPlan.h"

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
    m_setTools.insert({"Separator", "WindowList"});
    m_aByEntry.resize(oModel.nEntries);
    m_aLost.resize(oModel.nActions);
    m_aTools.resize(oModel.nActions);
    m_mapMenu.reserve(oModel.nEntries);
    m_setTools.reserve(oModel.nEntries);
    ReadTitles(oModel);
    for (Provider* pProvider : oModel.MenuProviders())
        for (const Entry& oEntry : pProvider->aEntries) {
            if (oEntry.oDef->MenuType() == MenuType::fwContextMenuItem ||
                oEntry.oDef->MenuType() == MenuType::fwContextMenuTitle)
                continue;
            Placing& oPlacing = m_aPlacings.emplace_back();
            oPlacing.pEntry = &oEntry;
            m_aByEntry[oEntry.iNumber] = &oPlacing;
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
            if (pProvider->eKind == ProviderKind::Page && m_mapTitles.contains(oEntry.pAction->oDef->Name()))
                continue;
            const auto [it, bNew] = m_mapTitles.emplace(oEntry.sKey, &oEntry);
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
        const auto [it, bNew] = m_mapButtons.emplace(oPlacing.pEntry->oDef->PositionKey(), &oPlacing);
        if (!bNew)
            Share(*it->second);
    } else if (oPlacing.oRank) {
        const auto [it, bNew] = m_mapMenu.emplace(*oPlacing.oRank, &oPlacing);
        if (!bNew) {
            Share(*it->second);
            if (const Placing*& pLost = m_aLost[oPlacing.pEntry->pAction->iNumber]; !pLost)
                pLost = &oPlacing;
        }
    }
}

void MenuPlan::Build() {
    std::vector<Placing*> aMenu;
    aMenu.reserve(m_mapMenu.size());
    for (const auto& [lRank, pPlacing] : m_mapMenu)
        aMenu.push_back(pPlacing);
    std::sort(aMenu.begin(), aMenu.end(), [](const Placing* a, const Placing* b) { return *a->oRank < *b->oRank; });
    for (Placing* pPlacing : aMenu)
        PlaceMenu(*pPlacing);
    for (Placing* pPlacing : m_aShared) {
        if (pPlacing->pEntry->oDef->MenuType() == MenuType::fwToolbarItem)
            PlaceButton(*pPlacing);
        else
            PlaceMenu(*pPlacing);
    }
    for (const auto& [sText, pPlacing] : m_mapButtons)
        PlaceButton(*pPlacing);
    if (Bar* pWindows = Find("Window"))
        pWindows->aSlots.push_back({"WindowList", {}});
}

Bar& MenuPlan::AddBar(const std::string& sName, const Entry* pAsking) {
    Bar& oBar = m_mapBars[sName];
    oBar.sName = sName;
    oBar.pFirstAsked = pAsking;
    return oBar;
}

Bar* MenuPlan::Find(std::string_view sName) {
    const auto it = m_mapBars.find(sName);
    return it == m_mapBars.end() ? nullptr : &it->second;
}

const Bar* MenuPlan::FindBar(std::string_view sName) const {
    const auto it = m_mapBars.find(sName);
    return it == m_mapBars.end() ? nullptr : &it->second;
}

const Entry* MenuPlan::TitleOf(std::string_view sPath) const {
    const auto it = m_mapTitles.find(sPath);
    return it == m_mapTitles.end() ? nullptr : it->second;
}

const Placing* MenuPlan::PlacingOf(const Entry& oEntry) const {
    return m_aByEntry[oEntry.iNumber];
}

const Placing* MenuPlan::LostPlaceOf(const Action& oAction) const {
    return m_aLost[oAction.iNumber];
}

Slot* MenuPlan::SlotOf(Bar& oBar, std::string_view sTool) {
    const auto it = std::find_if(oBar.aSlots.begin(), oBar.aSlots.end(),
                                 [&](const Slot& oSlot) { return EqualText(oSlot.sTool, sTool); });
    return it == oBar.aSlots.end() ? nullptr : &*it;
}

// A tool that no entry of the definitions makes, if it isn't there.
std::string_view MenuPlan::AddTool(std::string_view sName) {
    const auto it = m_setTools.find(sName);
    return it != m_setTools.end() ? *it : *m_setTools.insert(m_aNames.emplace_back(sName)).first;
}

// Where entries of a path stand: a placeholder when no title is there. Nothing when the start would stop.
Bar* MenuPlan::EntryBar(const std::string& sPath, const Placing& oPlacing) {
    if (Bar* pBar = Find(sPath))
        return pBar;
    const std::size_t iPoint = sPath.find('.');
    Bar* pRoot = Find(iPoint == std::string::npos ? sMainBar : sPath.substr(0, iPoint));
    const bool bHasTool = m_setTools.contains(sPath);
    if (!pRoot && !bHasTool)
        return nullptr;
    if (!bHasTool)
        pRoot->aSlots.push_back({AddTool(sPath), {}});
    return &AddBar(sPath, oPlacing.pEntry);
}

Bar* MenuPlan::ParentBar(const std::string& sPath, const Placing& oPlacing) {
    return sPath.empty() ? Find(sMainBar) : EntryBar(sPath, oPlacing);
}

// The tool that the action has already, or that of its key, or a new one.
void MenuPlan::NameTool(Placing& oPlacing) {
    const Entry& oEntry = *oPlacing.pEntry;
    std::string_view& sTool = m_aTools[oEntry.pAction->iNumber];
    if (sTool.empty())
        sTool = *m_setTools.insert(oEntry.sKey).first;
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
    if (!LostPlaceOf(*oPlacing.pEntry->pAction)) {
        oBar.aSlots.push_back({oPlacing.sTool, {oPlacing.pEntry}});
        oPlacing.pBar = &oBar;
    } else if (Slot* pSlot = SlotOf(oBar, oPlacing.sTool)) {
        pSlot->aEntries.push_back(oPlacing.pEntry);
        oPlacing.pBar = &oBar;
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
    oPlacing.pBar = pParent;
}

void MenuPlan::PlaceButton(Placing& oPlacing) {
    NameTool(oPlacing);
    const std::string sBar = "Toolbars." + oPlacing.pEntry->oDef->Path();
    if (!Find(sBar)) {
        if (!Find(sToolbarsMenu)) {
            // The list of toolbars, for which a menu View is made when there is none.
            const std::string_view sTool = AddTool(sToolbarsMenu);
            AddBar(sToolbarsMenu, oPlacing.pEntry);
            if (Bar* pView = EntryBar("View", oPlacing))
                pView->aSlots.push_back({sTool, {}});
        }
        Find(sToolbarsMenu)->aSlots.push_back({AddTool(sBar), {}});
        AddBar(sBar, oPlacing.pEntry);
    }
    Bar& oBar = *Find(sBar);
    oBar.aSlots.push_back({oPlacing.sTool, {oPlacing.pEntry}});
    oPlacing.pBar = &oBar;
}

std::optional<Long> ContextRank(const MenuItemDef& oDef) {
    return InRange(oDef.MenuType() == MenuType::fwContextMenuTitle ? static_cast<Double>(oDef.PositionOrder())
                                                                   : Hundredfold(oDef));
}

} // namespace corvane::check
