#include "analysis/Explain.h"

#include "adapters/common/Nearest.h"
#include "analysis/Application.h"
#include "analysis/MenuPlan.h"

#include <algorithm>

namespace corvane::check {

namespace {

std::string PlaceText(const Place& oPlace) {
    return oPlace.sFile + ":" + std::to_string(oPlace.oAt.lLine) + ":" + std::to_string(oPlace.oAt.lColumn);
}

std::string Ordinal(std::size_t n) {
    const bool bTeen = n % 100 >= 11 && n % 100 <= 13;
    const char* sEnding = bTeen || n % 10 > 3 || n % 10 == 0 ? "th" : n % 10 == 1 ? "st" : n % 10 == 2 ? "nd" : "rd";
    return std::to_string(n) + sEnding;
}

std::string ContextBar(const Provider& oItem) {
    return "Context." + oItem.sName;
}

constexpr std::string_view sToolbarPrefix = "Toolbars.";

// "Standard" of "Toolbars.Standard".
std::string_view ToolbarOf(std::string_view sBar) {
    return sBar.substr(sToolbarPrefix.size());
}

// "File", "Toolbars.Standard": how a bar is spoken of.
std::string BarText(const std::string& sName) {
    if (sName == "Main")
        return "the menu bar";
    if (sName.starts_with(sToolbarPrefix))
        return "the toolbar " + Quoted(ToolbarOf(sName));
    return "the menu " + Quoted(sName);
}

class Explainer {
public:
    Explainer(Model& oModel, std::string sItem) : m_oModel(oModel), m_oPlan(oModel), m_sItem(std::move(sItem)) {}

    Explanation Run() {
        for (Provider* pProvider : m_oModel.MenuProviders()) {
            for (const Entry& oEntry : pProvider->aEntries)
                if (Is(oEntry.sKey) || Is(ToolOf(oEntry)))
                    ExplainEntry(oEntry);
            ExplainContextMenu(*pProvider);
        }
        for (const auto& [sName, oBar] : m_oPlan.Bars())
            if (Is(oBar.sName) || (oBar.sName.starts_with(sToolbarPrefix) && Is(ToolbarOf(oBar.sName))))
                ExplainBar(oBar);
        for (const Window& oWindow : m_oModel.aWindows)
            if (Is(oWindow.sName) || std::any_of(oWindow.aPages.begin(), oWindow.aPages.end(),
                                                 [&](const Provider* pPage) { return Is(pPage->sProgID); }))
                ExplainWindow(oWindow);
        for (Provider& oItem : m_oModel.aItems)
            if (Is(oItem.sName) || Is(oItem.sProgID))
                ExplainItem(oItem);
        for (Provider& oService : m_oModel.aServices)
            if (Is(oService.sName) || Is(oService.sProgID))
                ExplainService(oService);
        if (m_sText.empty())
            ExplainAction();
        if (!m_sText.empty())
            return {m_sText, {}};
        return {{}, NearestNames()};
    }

private:
    bool Is(std::string_view sName) {
        m_aNames.emplace_back(sName);
        return EqualText(sName, m_sItem);
    }

    void Heading(const std::string& sText) { m_sText += (m_sText.empty() ? "" : "\n") + sText + "\n"; }
    void Field(const std::string& sName, const std::string& sText) {
        constexpr std::size_t nWidth = 12;
        m_sText += "  " + sName + std::string(sName.size() < nWidth ? nWidth - sName.size() : 1, ' ') + sText + "\n";
    }

    [[nodiscard]] std::string ToolOf(const Entry& oEntry) const {
        const Tool* pTool = m_oPlan.ToolOf(*oEntry.pAction);
        return pTool ? std::string(pTool->sName) : ContextBar(*oEntry.pProvider) + "." + std::string(oEntry.sKey);
    }

    void ExplainEntry(const Entry& oEntry) {
        std::string sHeading = oEntry.Named().substr(4); // without "the "
        Heading(sHeading);
        Field("defined",
              PlaceText(oEntry.pProvider->pFile->At(oEntry.pElement->At())) + ", by " + oEntry.pProvider->Named());
        ExplainProcedure(oEntry);
        if (const std::string sTool = ToolOf(oEntry); !EqualText(sTool, oEntry.sKey))
            Field("tool", Quoted(sTool) + ", under which it is found and chosen");
        Field("position", ToText(oEntry.fPositionOrder) + ", position key " + Quoted(oEntry.PositionKey()));
        if (const Placing* pPlacing = m_oPlan.PlacingOf(oEntry)) {
            ExplainRank(*pPlacing);
            ExplainStand(*pPlacing);
        } else {
            const auto oRank = ContextRank(oEntry);
            const bool bTitle = oEntry.eType == MenuType::fwContextMenuTitle;
            Field("rank", oRank ? std::to_string(*oRank) + " = " + ToText(oEntry.fPositionOrder) +
                                      (bTitle ? ", rounded, because it is a title" : " x 100")
                                : "too large");
            Field("place", "in the context menu of " + oEntry.pProvider->Named());
        }
        ExplainShown(oEntry);
    }

    void ExplainProcedure(const Entry& oEntry) {
        const Action& oAction = *oEntry.pAction;
        std::string sText =
            Quoted(oAction.sName) + ", " + PlaceText(oEntry.pProvider->pFile->At(oEntry.pAction->pElement->At()));
        const bool bTitle = oEntry.eType == MenuType::fwMenuTitle || oEntry.eType == MenuType::fwContextMenuTitle;
        if (!oAction.sProcedure.empty())
            sText += ", calls " + std::string(oAction.sProcedure) + (oAction.PassesItself() ? " with itself" : "");
        else if (!bTitle)
            sText += ", calls nothing";
        Field("action", sText);
    }

    void ExplainRank(const Placing& oPlacing) {
        const Entry& oEntry = *oPlacing.pEntry;
        const std::string sOrder = ToText(oEntry.fPositionOrder);
        if (oEntry.eType == MenuType::fwToolbarItem) {
            Field("order", "by the text " + Quoted(oEntry.PositionKey()));
            return;
        }
        std::string sText = oPlacing.oRank ? std::to_string(*oPlacing.oRank) : std::string("too large");
        const std::string_view sPath = oEntry.sPath;
        if (sPath.empty() && oEntry.eType == MenuType::fwMenuTitle)
            sText += ", its order";
        else if (oPlacing.pTitle)
            sText += " = " + ToText(oPlacing.pTitle->fPositionOrder) + " x 1000000 + " + sOrder + " x 100; " +
                     ToText(oPlacing.pTitle->fPositionOrder) + " is the order of " + oPlacing.pTitle->Named() + ", " +
                     PlaceText(oPlacing.pTitle->At("PositionOrder"));
        else
            sText += " = 500 x 1000000 + " + sOrder + " x 100; there is no title " + Quoted(sPath);
        Field("rank", sText);
    }

    void ExplainStand(const Placing& oPlacing) {
        if (!oPlacing.pBar) {
            std::string sWhy = "nowhere";
            if (oPlacing.pOwner)
                sWhy += ", because " + oPlacing.pOwner->Named() + " has the same rank, " +
                        PlaceText(oPlacing.pOwner->At("PositionOrder"));
            Field("place", sWhy + "; corvane check says more");
            return;
        }
        const auto& aSlots = oPlacing.pBar->aSlots;
        const auto it = std::find_if(aSlots.begin(), aSlots.end(), [&](const Slot& oSlot) {
            const auto aEntries = oSlot.aEntries.All();
            return std::find(aEntries.begin(), aEntries.end(), oPlacing.pEntry) != aEntries.end();
        });
        const auto nPlace = static_cast<std::size_t>(it - aSlots.begin());
        std::string sText =
            Ordinal(nPlace + 1) + " of " + std::to_string(aSlots.size()) + " in " + BarText(oPlacing.pBar->sName);
        if (nPlace > 0)
            sText += ", after " + Quoted(aSlots[nPlace - 1].pTool->sName);
        if (nPlace + 1 < aSlots.size())
            sText += (nPlace > 0 ? " and before " : ", before ") + Quoted(aSlots[nPlace + 1].pTool->sName);
        if (!oPlacing.pBar->pTitle && !oPlacing.pBar->bOfHost && !oPlacing.pBar->sName.starts_with(sToolbarPrefix))
            sText += "; the menu is a hidden placeholder, because its title isn't defined";
        Field("place", sText);
        for (const Entry* pOther : it->aEntries.All())
            if (pOther != oPlacing.pEntry)
                Field("shared", "with " + pOther->pProvider->Named() + ", " + PlaceText(pOther->At("ActionItem")));
    }

    // When a person sees it.
    void ExplainShown(const Entry& oEntry) {
        const Action& oAction = *oEntry.pAction;
        std::string sText;
        switch (oEntry.pProvider->eKind) {
        case ProviderKind::Service:
            sText = "from the start";
            break;
        case ProviderKind::ExplorerItem:
            sText = oEntry.IsOfContextMenu() ? "when a user opens the context menu of such an item"
                                             : "while such an item is the active one of the explorer";
            break;
        case ProviderKind::Page:
        case ProviderKind::PreferencePage:
            sText = "while " + oEntry.pProvider->Named() + " is in front in the active window";
            break;
        }
        if (!BooleanOf(*oAction.pElement, "Visible", true))
            sText += ", once a procedure calls SetVisible(true): the definition says Visible=\"False\"";
        if (!BooleanOf(*oAction.pElement, "Enabled", true))
            sText += ", disabled until a procedure calls SetEnabled(true)";
        Field("shown", sText);
    }

    void ExplainContextMenu(Provider& oItem) {
        const bool bHasMenu = std::any_of(oItem.aEntries.begin(), oItem.aEntries.end(),
                                          [](const Entry& o) { return o.IsOfContextMenu(); });
        if (oItem.eKind != ProviderKind::ExplorerItem || !bHasMenu || !Is(ContextBar(oItem)))
            return;
        Heading("context menu of " + oItem.Named());
        Field("defined", PlaceText(oItem.pFile->At(oItem.pElement->At())));
        std::vector<const Entry*> aEntries;
        for (const Entry& oEntry : oItem.aEntries)
            if (oEntry.IsOfContextMenu())
                aEntries.push_back(&oEntry);
        std::stable_sort(aEntries.begin(), aEntries.end(), [](const Entry* a, const Entry* b) {
            return ContextRank(*a).value_or(0) < ContextRank(*b).value_or(0);
        });
        for (const Entry* pEntry : aEntries)
            Field(std::to_string(ContextRank(*pEntry).value_or(0)),
                  Quoted(pEntry->sKey) + ", " + PlaceText(pEntry->At("ActionItem")));
    }

    void ExplainBar(const Bar& oBar) {
        Heading(BarText(oBar.sName).substr(4));
        if (oBar.pTitle)
            Field("defined", "by " + oBar.pTitle->Named() + ", " + PlaceText(oBar.pTitle->At("ActionItem")));
        else if (oBar.bOfHost)
            Field("defined", "by the host");
        else if (oBar.pFirstAsked)
            Field("created", "for " + oBar.pFirstAsked->Named() + ", " + PlaceText(oBar.pFirstAsked->At("Path")) +
                                 (oBar.sName.starts_with(sToolbarPrefix) ? "" : "; its title isn't defined"));
        std::size_t nPlace = 0;
        for (const Slot& oSlot : oBar.aSlots) {
            ++nPlace;
            if (oSlot.aEntries.empty()) {
                Field(std::to_string(nPlace), Quoted(oSlot.pTool->sName) + ", created by the library");
                continue;
            }
            const Placing& oPlacing = *m_oPlan.PlacingOf(*oSlot.aEntries.front());
            Field(std::to_string(nPlace), Quoted(oSlot.pTool->sName) + ", " +
                                              (oPlacing.oRank ? "rank " + std::to_string(*oPlacing.oRank)
                                                              : "text " + Quoted(oPlacing.pEntry->PositionKey())) +
                                              ", " + PlaceText(oPlacing.pEntry->At("PositionOrder")));
        }
    }

    void ExplainWindow(const Window& oWindow) {
        Heading("window " + Quoted(oWindow.sName));
        Field("defined", PlaceText(oWindow.pFile->At(oWindow.pElement->At())));
        Field("shown", "when a procedure calls WindowManager::OpenWindow(" + Quoted(oWindow.sName) + ", ...)");
        for (const Provider* pPage : oWindow.aPages)
            Field("page", Quoted(pPage->sName) + ", " + pPage->sProgID + ", " +
                              PlaceText(pPage->pFile->At(pPage->pElement->At())));
    }

    void ExplainItem(Provider& oItem) {
        Heading("explorer item " + Quoted(oItem.sName));
        Field("defined", PlaceText(oItem.pFile->At(oItem.pElement->At())));
        const std::string_view sType = oItem.pElement->Value("Type");
        const std::string_view sParent = oItem.pElement->Value("Parent");
        if (sParent.empty() && !EqualText(sType, "Default"))
            Field("place",
                  "as a tab of its own, in order of PositionOrder, here " +
                      ToText(Variant(oItem.pElement->Find("PositionOrder") ? oItem.pElement->Value("PositionOrder")
                                                                           : "0")));
        else
            Field("place", sParent.empty() ? "nowhere, because it has no Parent" : "below " + Quoted(sParent));
        if (EqualText(sType, "Folder"))
            Field("created",
                  oItem.sProgID.empty() ? "by the library, as a plain name" : "by the library, from " + oItem.sProgID);
        else
            Field("created", "by the object above it, which provides its children");
        if (const auto sAction = oItem.pElement->Value("DefaultAction"); !sAction.empty())
            Field("dblclick", "fires " + Quoted(sAction));
        Field("shown", "when a procedure calls ExplorerManager::Populate, and its parent is open");
    }

    void ExplainService(const Provider& oService) {
        Heading("service " + Quoted(oService.sName));
        Field("defined", PlaceText(oService.pFile->At(oService.pElement->At())));
        Field("created", "from " + oService.sProgID);
        Field("contains", std::to_string(oService.aActions.size()) + " actions, " +
                              std::to_string(oService.aEntries.size()) + " places");
        if (BooleanOf(*oService.pElement, "IsStartService", false))
            Field("start", "its method Start is called when all services are initialized");
    }

    // By the action's name alone, in all services, items and pages.
    void ExplainAction() {
        for (Provider* pProvider : m_oModel.MenuProviders())
            for (const Action& oAction : pProvider->aActions) {
                if (!Is(oAction.sName))
                    continue;
                bool bPlaced = false;
                for (const Entry& oEntry : pProvider->aEntries)
                    if (oEntry.pAction == &oAction) {
                        ExplainEntry(oEntry);
                        bPlaced = true;
                    }
                if (!bPlaced) {
                    Heading("action " + Quoted(oAction.sName));
                    Field("defined",
                          PlaceText(pProvider->pFile->At(oAction.pElement->At())) + ", by " + pProvider->Named());
                    Field("place", "nowhere: no MenuItem of its provider refers to it");
                }
            }
    }

    [[nodiscard]] std::vector<std::string> NearestNames() const {
        std::vector<std::string> aNames = m_aNames;
        std::sort(aNames.begin(), aNames.end());
        aNames.erase(std::unique(aNames.begin(), aNames.end()), aNames.end());
        if (const auto oNearest = Nearest(aNames, m_sItem))
            return {*oNearest};
        // Else what contains it.
        std::erase_if(aNames, [&](const std::string& sName) {
            return FoldText(sName).find(FoldText(m_sItem)) == std::string::npos;
        });
        return aNames;
    }

    Model& m_oModel;
    MenuPlan m_oPlan;
    std::string m_sItem;
    std::string m_sText;
    std::vector<std::string> m_aNames;
};

} // namespace

Explanation Explain(const std::string& sApplication, const std::string& sItem) {
    Report oReport;
    Model oModel;
    ReadApplication(oModel, sApplication, oReport);
    BuildModel(oModel, oReport);
    return Explainer(oModel, sItem).Run();
}

} // namespace corvane::check
