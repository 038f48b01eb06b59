#include "analysis/MenuPlan.h"

#include <algorithm>

namespace corvane::check {

namespace {

constexpr const char* sMainBar = "Main";
constexpr const char* sToolbarsMenu = "View.Toolbars";
constexpr Double dblTitleWeight = 1000000;
constexpr Double dblTitleOfNobody = 500;

std::optional<Long> InRange(Double dblRank) {
    try {
        return RoundToLong(dblRank);
    } catch (const Failure&) {
        return std::nullopt;
    }
}

Double Order(const Entry& oEntry) {
    return static_cast<Double>(oEntry.fPositionOrder);
}

Double Hundredfold(const Entry& oEntry) {
    return static_cast<Double>(oEntry.fPositionOrder * 100.0F);
}

std::string_view NameOf(const Tool* pTool) {
    return pTool->sName;
}

} // namespace

MenuPlan::MenuPlan(Model& oModel) {
    for (const char* sName : {"StatusBar", "Explorer", sMainBar})
        AddBar(sName, nullptr).bOfHost = true;
    for (const char* sName : {"Separator", "WindowList"})
        AddTool(sName);
    m_aPlacings.reserve(oModel.nEntries);
    m_aByEntry.resize(oModel.nEntries);
    m_aLost.resize(oModel.nActions);
    m_aByAction.resize(oModel.nActions);
    m_aMenu.reserve(oModel.nEntries);
    ReadTitles(oModel);
    for (Provider* pProvider : oModel.MenuProviders())
        for (const Entry& oEntry : pProvider->aEntries) {
            if (oEntry.IsOfContextMenu())
                continue;
            Placing& oPlacing = m_aPlacings.emplace_back();
            oPlacing.pEntry = &oEntry;
            m_aByEntry[oEntry.iNumber] = &oPlacing;
            if (oEntry.IsButton())
                ShareButton(oPlacing);
            else
                Rank(oPlacing);
        }
    ShareRanks();
    Build();
}

void MenuPlan::ReadTitles(Model& oModel) {
    for (Provider* pProvider : oModel.MenuProviders())
        for (const Entry& oEntry : pProvider->aEntries) {
            if (!oEntry.IsTitle())
                continue;
            // A page's title on the menu bar joins one that is there; below another title it doesn't.
            if (pProvider->eKind == ProviderKind::Page && m_mapTitles.contains(oEntry.pAction->sName))
                continue;
            const auto [it, bNew] = m_mapTitles.emplace(oEntry.sKey, &oEntry);
            if (!bNew)
                m_aDoubleTitles.push_back({it->second, &oEntry});
        }
}

void MenuPlan::Rank(Placing& oPlacing) {
    const Entry& oEntry = *oPlacing.pEntry;
    if (oEntry.IsTitle() && oEntry.sPath.empty()) {
        oPlacing.oRank = InRange(Order(oEntry));
    } else {
        const bool bSamePath = m_pLastRanked && m_pLastRanked->pEntry->sPath == oEntry.sPath;
        oPlacing.pTitle = bSamePath ? m_pLastRanked->pTitle : TitleOf(oEntry.sPath);
        const Double dblTitle = oPlacing.pTitle ? Order(*oPlacing.pTitle) : dblTitleOfNobody;
        oPlacing.oRank = InRange(dblTitle * dblTitleWeight + Hundredfold(oEntry));
        m_pLastRanked = &oPlacing;
    }
    if (oPlacing.oRank)
        m_aMenu.push_back(&oPlacing);
}

void MenuPlan::Share(Placing& oPlacing, const Placing& oOwner) {
    oPlacing.pOwner = oOwner.pEntry;
    m_aShared.push_back(&oPlacing);
}

void MenuPlan::ShareButton(Placing& oPlacing) {
    const auto [it, bNew] = m_mapButtons.emplace(oPlacing.pEntry->PositionKey(), &oPlacing);
    if (!bNew)
        Share(oPlacing, *it->second);
}

// The first of a rank that was read has it.
void MenuPlan::ShareRanks() {
    // Placings stand in the order of reading.
    std::sort(m_aMenu.begin(), m_aMenu.end(), [](const Placing* a, const Placing* b) {
        return *a->oRank != *b->oRank ? *a->oRank < *b->oRank : a < b;
    });
    const Placing* pOwner = nullptr;
    std::erase_if(m_aMenu, [&](Placing* pPlacing) {
        const bool bShares = pOwner && *pOwner->oRank == *pPlacing->oRank;
        if (bShares)
            Share(*pPlacing, *pOwner);
        else
            pOwner = pPlacing;
        return bShares;
    });
    std::sort(m_aShared.begin(), m_aShared.end());
    for (const Placing* pPlacing : m_aShared)
        if (const Placing*& pLost = m_aLost[pPlacing->pEntry->pAction->iNumber];
            !pLost && !pPlacing->pEntry->IsButton())
            pLost = pPlacing;
}

void MenuPlan::Build() {
    for (Placing* pPlacing : m_aMenu)
        PlaceMenu(*pPlacing);
    for (Placing* pPlacing : m_aShared) {
        if (pPlacing->pEntry->IsButton())
            PlaceButton(*pPlacing);
        else
            PlaceMenu(*pPlacing);
    }
    for (const auto& [sText, pPlacing] : m_mapButtons)
        PlaceButton(*pPlacing);
    if (Bar* pWindows = Find("Window"))
        pWindows->aSlots.emplace_back(FindTool("WindowList"));
}

Bar& MenuPlan::AddBar(std::string_view sName, const Entry* pAsking) {
    Bar& oBar = m_mapBars[std::string(sName)];
    oBar.sName = sName;
    oBar.pFirstAsked = pAsking;
    return oBar;
}

Bar* MenuPlan::Find(std::string_view sName) {
    if (m_pLastBar && m_pLastBar->sName == sName)
        return m_pLastBar;
    const auto it = m_mapBars.find(sName);
    if (it == m_mapBars.end())
        return nullptr;
    m_pLastBar = &it->second;
    return m_pLastBar;
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

const Tool* MenuPlan::FindTool(std::string_view sName) const {
    const Tool* const* ppTool = m_oTools.Find(sName, NameOf);
    return ppTool ? *ppTool : nullptr;
}

Slot* MenuPlan::SlotOf(Bar& oBar, const Tool* pTool) {
    const auto it =
        std::find_if(oBar.aSlots.begin(), oBar.aSlots.end(), [&](const Slot& oSlot) { return oSlot.pTool == pTool; });
    return it == oBar.aSlots.end() ? nullptr : &*it;
}

// The tool of that name, which is a new one if there is none. The name stays as long as the model does.
const Tool* MenuPlan::AddTool(std::string_view sName) {
    const Tool* pNew = &m_aTools.emplace_back(Tool{sName, m_aTools.size()});
    const Tool* const* ppTool = m_oTools.AddOrFind(sName, pNew, NameOf);
    if (!ppTool)
        return pNew;
    m_aTools.pop_back();
    return *ppTool;
}

// Where entries of a path stand: a placeholder when no title is there. Nothing when the start would stop.
Bar* MenuPlan::EntryBar(std::string_view sPath, const Placing& oPlacing) {
    if (Bar* pBar = Find(sPath))
        return pBar;
    const std::size_t iPoint = sPath.find('.');
    Bar* pRoot = Find(iPoint == std::string_view::npos ? sMainBar : sPath.substr(0, iPoint));
    const bool bHasTool = FindTool(sPath) != nullptr;
    if (!pRoot && !bHasTool)
        return nullptr;
    if (!bHasTool)
        pRoot->aSlots.emplace_back(AddTool(sPath));
    return &AddBar(sPath, oPlacing.pEntry);
}

Bar* MenuPlan::ParentBar(std::string_view sPath, const Placing& oPlacing) {
    return sPath.empty() ? Find(sMainBar) : EntryBar(sPath, oPlacing);
}

// The tool that the action has already, or that of its key, or a new one.
void MenuPlan::NameTool(Placing& oPlacing) {
    const Entry& oEntry = *oPlacing.pEntry;
    const Tool*& pTool = m_aByAction[oEntry.pAction->iNumber];
    if (!ToolOf(*oEntry.pAction))
        pTool = AddTool(oEntry.sKey);
    oPlacing.pTool = pTool;
    oPlacing.bReserved = EqualText(pTool->sName, "Separator") || EqualText(pTool->sName, "WindowList");
}

void MenuPlan::PlaceMenu(Placing& oPlacing) {
    NameTool(oPlacing);
    if (oPlacing.pEntry->IsTitle()) {
        PlaceTitle(oPlacing);
    } else if (Bar* pBar = EntryBar(oPlacing.pEntry->sPath, oPlacing)) {
        PlaceEntry(oPlacing, *pBar);
    } else {
        oPlacing.bWithoutRoot = true;
    }
}

void MenuPlan::PlaceEntry(Placing& oPlacing, Bar& oBar) {
    if (!LostPlaceOf(*oPlacing.pEntry->pAction)) {
        oBar.aSlots.emplace_back(oPlacing.pTool, oPlacing.pEntry);
        oPlacing.pBar = &oBar;
    } else if (Slot* pSlot = SlotOf(oBar, oPlacing.pTool)) {
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
    Bar* pParent = ParentBar(oEntry.sPath, oPlacing);
    if (!pParent) {
        oPlacing.bWithoutRoot = true;
        return;
    }
    if (!pOwn->pTitle)
        pOwn->pTitle = &oEntry;
    Slot* pSlot = bAdopts ? SlotOf(*pParent, oPlacing.pTool) : nullptr;
    if (bAdopts && !pSlot) {
        oPlacing.bOtherTool = true;
        return;
    }
    if (pSlot)
        pSlot->aEntries.push_back(&oEntry);
    else
        pParent->aSlots.emplace_back(oPlacing.pTool, &oEntry);
    oPlacing.pBar = pParent;
}

void MenuPlan::PlaceButton(Placing& oPlacing) {
    NameTool(oPlacing);
    std::string sBar = "Toolbars.";
    sBar += oPlacing.pEntry->sPath;
    if (!Find(sBar)) {
        if (!Find(sToolbarsMenu)) {
            // The list of toolbars, for which a menu View is made when there is none.
            const Tool* pTool = AddTool(sToolbarsMenu);
            AddBar(sToolbarsMenu, oPlacing.pEntry);
            if (Bar* pView = EntryBar("View", oPlacing))
                pView->aSlots.emplace_back(pTool);
        }
        Find(sToolbarsMenu)->aSlots.emplace_back(AddTool(m_aNames.emplace_back(sBar)));
        AddBar(sBar, oPlacing.pEntry);
    }
    Bar& oBar = *Find(sBar);
    oBar.aSlots.emplace_back(oPlacing.pTool, oPlacing.pEntry);
    oPlacing.pBar = &oBar;
}

std::optional<Long> ContextRank(const Entry& oEntry) {
    return InRange(oEntry.eType == MenuType::fwContextMenuTitle ? Order(oEntry) : Hundredfold(oEntry));
}

} // namespace corvane::check
