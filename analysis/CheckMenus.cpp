#include "adapters/common/Nearest.h"
#include "analysis/Checks.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <map>
#include <set>

namespace corvane::check {

namespace {

constexpr const char* sToolbarPrefix = "Toolbars.";

std::string OrderText(const Entry& oEntry) {
    return ToText(oEntry.fPositionOrder);
}

class MenuCheck {
public:
    MenuCheck(Model& oModel, const MenuPlan& oPlan, Report& oReport)
        : m_oModel(oModel), m_oPlan(oPlan), m_oReport(oReport), m_aSeen(oPlan.ToolCount()) {}

    void Check() {
        for (const auto& [pFirst, pSecond] : m_oPlan.DoubleTitles())
            m_oReport.Add(Rule::DuplicateTitle, pSecond->At("ActionItem"), "there is " + pFirst->Named() + " already",
                          "define it in one place; the others only use its Path",
                          {{pFirst->At("ActionItem"), "the first one"}});
        for (const Placing& oPlacing : m_oPlan.Placings())
            CheckPlacing(oPlacing);
        CountPaths();
        for (const auto& [sName, oBar] : m_oPlan.Bars())
            CheckBar(oBar);
        for (Provider& oItem : m_oModel.aItems)
            CheckContextMenu(oItem);
        CheckCommands();
        CheckEffects();
        CheckWindowList();
    }

private:
    void CountPaths() {
        std::pair<const std::string_view, int>* pPath = nullptr; // mostly that of the entry before
        for (const Placing& oPlacing : m_oPlan.Placings()) {
            const Entry& oEntry = *oPlacing.pEntry;
            if (oEntry.IsButton())
                continue;
            if (!pPath || pPath->first != oEntry.sPath)
                pPath = &*m_mapPaths.try_emplace(oEntry.sPath).first;
            ++pPath->second;
        }
    }

    void CheckPlacing(const Placing& oPlacing) {
        const Entry& oEntry = *oPlacing.pEntry;
        if (oPlacing.bReserved)
            m_oReport.Add(Rule::ReservedName, oEntry.At("ActionItem"),
                          "the host has something of the name " + Quoted(oEntry.sKey) + " itself",
                          "give the action another name");
        else if (oPlacing.bWithoutRoot)
            ReportWithoutRoot(oEntry);
        else if (oPlacing.bOtherTool)
            m_oReport.Add(Rule::DuplicateTitle, oEntry.At("ActionItem"),
                          "the action of " + oEntry.Named() + " belongs to another entry, " +
                              Quoted(oPlacing.pTool->sName) + ", and the menu of the title is there already",
                          "give the title an action of its own");
        else if (!oEntry.IsButton() && !oPlacing.oRank)
            ReportOverflow(oPlacing);
        else if (!oPlacing.pBar)
            ReportLost(oPlacing);
        else if (oPlacing.pOwner && oEntry.IsTitle() && oPlacing.pOwner->sKey != oEntry.sKey)
            ReportTitleBehind(oPlacing);
        else if (oPlacing.pOwner && oEntry.IsButton() && !EqualText(oPlacing.pOwner->sKey, oEntry.sKey))
            m_oReport.Add(Rule::SharedPosition, oEntry.At("PositionOrder"),
                          oEntry.Named() + " comes before all others, because " + oPlacing.pOwner->Named() +
                              " has the same order, " + OrderText(oEntry),
                          "give it another PositionOrder", {{oPlacing.pOwner->At("PositionOrder"), "the other one"}});
    }

    void ReportWithoutRoot(const Entry& oEntry) {
        const std::string_view sPath = oEntry.sPath;
        if (!m_oModel.bComplete || !m_setPaths.insert(FoldText(sPath)).second)
            return;
        m_oReport.Add(Rule::PathWithoutRoot, oEntry.At("Path"),
                      "there is nothing below " + Quoted(sPath.substr(0, sPath.find('.'))) + " when the menu " +
                          Quoted(sPath) + " is created",
                      WriteInstead(TitleKeys(), sPath, "define titles for all parts of the Path"));
    }

    void ReportOverflow(const Placing& oPlacing) {
        const Entry* pTitle = oPlacing.pTitle;
        constexpr Double dblLargest = 2147;
        if (pTitle && static_cast<Double>(pTitle->fPositionOrder) > dblLargest)
            m_oReport.Add(Rule::PositionOverflow, pTitle->At("PositionOrder"),
                          pTitle->Named() + " has entries, and their ranks are too large with the order " +
                              OrderText(*pTitle),
                          "write 2147 or less");
        else
            m_oReport.Add(Rule::PositionOverflow, oPlacing.pEntry->At("PositionOrder"),
                          "the rank of " + oPlacing.pEntry->Named() + " is too large with the order " +
                              OrderText(*oPlacing.pEntry),
                          "write a smaller one");
    }

    // Titles of one rank, whose entries may then have one rank, too.
    [[nodiscard]] static bool AreTitlesAtFault(const Placing& oPlacing, const Placing& oOwner) {
        return oPlacing.pTitle && oOwner.pTitle && oPlacing.pTitle != oOwner.pTitle && oPlacing.pTitle->sPath.empty() &&
               oOwner.pTitle->sPath.empty() && oPlacing.pTitle->fPositionOrder == oOwner.pTitle->fPositionOrder;
    }

    void ReportLost(const Placing& oPlacing) {
        const Entry& oEntry = *oPlacing.pEntry;
        if (!oPlacing.pOwner) {
            const Placing& oLost = *m_oPlan.LostPlaceOf(*oEntry.pAction);
            m_oReport.Add(Rule::VanishingEntry, oEntry.At("PositionOrder"),
                          oEntry.Named() + " doesn't appear, as its action has lost another place",
                          "give that place another PositionOrder",
                          {{oLost.pEntry->At("PositionOrder"),
                            oLost.pEntry->Named() + ", whose rank " + oLost.pOwner->Named() + " has"}});
            return;
        }
        const Entry& oOwner = *oPlacing.pOwner;
        if (AreTitlesAtFault(oPlacing, *m_oPlan.PlacingOf(oOwner)))
            return; // told with the titles
        std::string sCure = "give it another PositionOrder";
        if (EqualText(oOwner.sKey, oEntry.sKey))
            sCure += ", or remove it";
        m_oReport.Add(Rule::VanishingEntry, oEntry.At("PositionOrder"),
                      oEntry.Named() + " doesn't appear, because " + oOwner.Named() + " has the same rank, " +
                          ToText(*oPlacing.oRank),
                      sCure, {{oOwner.At("PositionOrder"), "the other one"}});
    }

    void ReportTitleBehind(const Placing& oPlacing) {
        const Entry& oTitle = *oPlacing.pEntry;
        std::vector<Note> aNotes{{oPlacing.pOwner->At("PositionOrder"), "the other one"}};
        for (const Placing& oOther : m_oPlan.Placings())
            if (!oOther.pBar && oOther.pOwner && (oOther.pTitle == &oTitle || oOther.pTitle == oPlacing.pOwner) &&
                AreTitlesAtFault(oOther, *m_oPlan.PlacingOf(*oOther.pOwner)))
                aNotes.push_back(
                    {oOther.pEntry->At("PositionOrder"), oOther.pEntry->Named() + " doesn't appear because of it"});
        m_oReport.Add(Rule::SharedPosition, oTitle.At("PositionOrder"),
                      oTitle.Named() + " comes after all others, because " + oPlacing.pOwner->Named() +
                          " has the same rank",
                      "give it another PositionOrder", std::move(aNotes));
    }

    void CheckBar(const Bar& oBar) {
        const bool bToolbar = oBar.sName.starts_with(sToolbarPrefix);
        if (!bToolbar && oBar.pTitle)
            CheckSubmenuOrder(oBar);
        if (bToolbar)
            CheckToolbarOrder(oBar);
        else if (!oBar.pTitle && !oBar.bOfHost && !EqualText(oBar.sName, "View.Toolbars"))
            ReportPlaceholder(oBar);
        else if (oBar.pTitle && oBar.aSlots.empty() && m_oModel.bComplete && !IsAskedFor(oBar.sName))
            m_oReport.Add(Rule::TitleWithoutEntries, oBar.pTitle->At("ActionItem"),
                          "there is nothing below " + oBar.pTitle->Named(),
                          "give an entry this Path, or remove the title");
        for (const Slot& oSlot : oBar.aSlots) {
            if (oSlot.aEntries.empty())
                continue;
            const Entry& oEntry = *oSlot.aEntries.front();
            Seen& oSeen = m_aSeen[oSlot.pTool->iNumber];
            const bool bNew = oSeen.pBar != &oBar;
            if (bNew)
                oSeen = {&oBar, &oEntry};
            if (!bNew && !AreRivals(*oSeen.pEntry, oEntry))
                m_oReport.Add(Rule::DuplicateEntry, oEntry.At("PositionOrder"), oEntry.Named() + " is there twice",
                              oEntry.IsButton() ? "remove one of them" : "give both one PositionOrder, or remove one",
                              {{oSeen.pEntry->At("PositionOrder"), "the first one"}});
        }
    }

    // Whether a Path is that of the title, or is meant to be: the mistake is the entry's then, and has a finding.
    [[nodiscard]] bool IsAskedFor(std::string_view sTitle) {
        if (m_mapPaths.contains(sTitle))
            return true;
        if (!m_bAskedRead)
            ReadAsked();
        return m_setAsked.contains(FoldText(sTitle));
    }

    void ReadAsked() {
        m_bAskedRead = true;
        const std::vector<std::string> aTitles = TitleKeys();
        std::set<std::string> setTitles;
        for (const std::string& sTitle : aTitles)
            setTitles.insert(FoldText(sTitle));
        for (const auto& pFile : m_oModel.aFiles)
            if (pFile->bActive)
                for (const Element& oElement : std::span(pFile->pRoot, 1 + pFile->pRoot->nBelow))
                    if (std::string sPath = FoldText(oElement.Value("Path")); m_setAsked.insert(sPath).second)
                        if (const auto oNearest = setTitles.contains(sPath) ? std::nullopt : Nearest(aTitles, sPath))
                            m_setAsked.insert(FoldText(*oNearest));
    }

    // The entries of a path that no title has. Toolbars ask for "View" without naming it.
    void ReportPlaceholder(const Bar& oBar) {
        if (!m_oModel.bComplete || !oBar.pFirstAsked)
            return;
        const Entry& oEntry = *oBar.pFirstAsked;
        if (oEntry.IsButton()) {
            m_oReport.Add(Rule::PathWithoutTitle, oEntry.At("Path"),
                          "the menu that shows and hides toolbars needs a title \"View\"", "define one");
            return;
        }
        const int nOthers = m_mapPaths[oBar.sName] - 1;
        const std::string sOthers =
            nOthers == 0 ? "" : " and " + std::to_string(nOthers) + (nOthers == 1 ? " other" : " others");
        m_oReport.Add(Rule::PathWithoutTitle, oEntry.At("Path"),
                      "there is no title " + Quoted(oBar.sName) + ", so " + oEntry.Named() + sOthers +
                          (nOthers == 0 ? " stays" : " stay") + " hidden",
                      WriteInstead(TitleKeys(), oBar.sName, PathCure(oBar.sName)));
    }

    static std::string PathCure(std::string sPath) {
        if (sPath.find_first_of("/\\>") == std::string::npos)
            return "define the title in one of the services";
        std::replace_if(
            sPath.begin(), sPath.end(), [](char c) { return c == '/' || c == '\\' || c == '>'; }, '.');
        return "write its parts with points between them, as in " + Quoted(sPath);
    }

    void CheckToolbarOrder(const Bar& oBar) {
        const Entry* pBefore = nullptr;
        for (const Slot& oSlot : oBar.aSlots) {
            const Entry* pEntry = oSlot.aEntries.front();
            if (m_oPlan.PlacingOf(*pEntry)->pOwner)
                continue; // has a finding of its own
            if (pBefore && pBefore->fPositionOrder > pEntry->fPositionOrder) {
                m_oReport.Add(Rule::ToolbarOrder, pEntry->At("PositionOrder"),
                              pEntry->Named() + " comes after " + pBefore->Named() + ", because the text " +
                                  Quoted(OrderText(*pBefore)) + " comes before " + Quoted(OrderText(*pEntry)),
                              "write orders with the same number of digits",
                              {{pBefore->At("PositionOrder"), "the other one"}});
                return;
            }
            pBefore = pEntry;
        }
    }

    // A title is placed no later than the first thing below it, whose rank comes from the title's order alone.
    void CheckSubmenuOrder(const Bar& oBar) {
        const Placing* pLowest = nullptr; // of what stands further down
        for (auto it = oBar.aSlots.rbegin(); it != oBar.aSlots.rend(); ++it) {
            const Placing* pPlacing = it->aEntries.empty() ? nullptr : m_oPlan.PlacingOf(*it->aEntries.front());
            if (!pPlacing || !pPlacing->oRank || pPlacing->pOwner)
                continue;
            const Entry& oEntry = *pPlacing->pEntry;
            if (pLowest && oEntry.IsTitle() && *pLowest->oRank < *pPlacing->oRank)
                m_oReport.Add(Rule::SubmenuOrder, oEntry.At("PositionOrder"),
                              oEntry.Named() + " comes before " + pLowest->pEntry->Named() + ", because its order, " +
                                  OrderText(oEntry) + ", isn't above " + OrderText(*oBar.pTitle) + ", the order of " +
                                  oBar.pTitle->Named(),
                              "write a higher one, and for the entries after it, too",
                              {{pLowest->pEntry->At("PositionOrder"), "what comes after it"}});
            if (!pLowest || *pPlacing->oRank < *pLowest->oRank)
                pLowest = pPlacing;
        }
    }

    // Two services that both want to answer.
    [[nodiscard]] static bool AreRivals(const Entry& oFirst, const Entry& oSecond) {
        return oFirst.pProvider != oSecond.pProvider && oFirst.pProvider->eKind == ProviderKind::Service &&
               oSecond.pProvider->eKind == ProviderKind::Service && !oFirst.pAction->sProcedure.empty() &&
               !oSecond.pAction->sProcedure.empty();
    }

    void CheckContextMenu(const Provider& oItem) {
        std::map<Long, const Entry*> mapRanks;
        for (const Entry& oEntry : oItem.aEntries) {
            if (!oEntry.IsOfContextMenu())
                continue;
            const std::optional<Long> oRank = ContextRank(oEntry);
            if (!oRank) {
                m_oReport.Add(Rule::PositionOverflow, oEntry.At("PositionOrder"),
                              "the rank of " + oEntry.Named() + " is too large", "write a smaller one");
                continue;
            }
            const auto [it, bNew] = mapRanks.emplace(*oRank, &oEntry);
            if (!bNew)
                m_oReport.Add(Rule::VanishingEntry, oEntry.At("PositionOrder"),
                              "in the context menu of " + oItem.Named() + ", " + oEntry.Named() + " and " +
                                  it->second->Named() +
                                  " have one rank: one of both may come twice and the other not at all",
                              "give it another PositionOrder", {{it->second->At("PositionOrder"), "the other one"}});
        }
    }

    // What a tool stands for: who answers, and whether anybody does.
    struct Command {
        const Entry* pFirst = nullptr;
        const Entry* pService = nullptr; // that answers
        bool bAnswered = false;
    };

    void CheckCommands() {
        m_aCommands.resize(m_oPlan.ToolCount());
        std::vector<const Command*> aOrder;
        aOrder.reserve(m_oModel.nEntries);
        for (Provider* pProvider : m_oModel.MenuProviders())
            for (const Entry& oEntry : pProvider->aEntries) {
                if (oEntry.IsTitle() || oEntry.eType == MenuType::fwContextMenuTitle)
                    continue;
                Command& oCommand = CommandOf(oEntry);
                if (!oCommand.pFirst) {
                    oCommand.pFirst = &oEntry;
                    aOrder.push_back(&oCommand);
                }
                const bool bAnswers = !oEntry.pAction->sProcedure.empty();
                oCommand.bAnswered |= bAnswers;
                if (!bAnswers || pProvider->eKind != ProviderKind::Service)
                    continue;
                if (oCommand.pService && AreRivals(*oCommand.pService, oEntry))
                    m_oReport.Add(Rule::SharedCommand, oEntry.At("ActionItem"),
                                  oEntry.Named() + " is one of " + oCommand.pService->pProvider->Named() +
                                      ", too, which then never answers",
                                  "give the action another name, or let one of both services have it",
                                  {{oCommand.pService->At("ActionItem"), "the other one"}});
                oCommand.pService = &oEntry;
            }
        for (const Command* pCommand : aOrder)
            if (!pCommand->bAnswered && m_oModel.bComplete)
                m_oReport.Add(Rule::EntryWithoutProcedure,
                              pCommand->pFirst->pProvider->pFile->At(pCommand->pFirst->pAction->pElement->At()),
                              "the action of " + pCommand->pFirst->Named() + " has no procedure", "name one as Action");
    }

    // Actions that stand in context menus alone have tools that the plan doesn't know, unless one is called the same.
    [[nodiscard]] Command& CommandOf(const Entry& oEntry) {
        const Tool* pTool = m_oPlan.ToolOf(*oEntry.pAction);
        if (pTool)
            return m_aCommands[pTool->iNumber];
        const std::string sName = "Context." + oEntry.pProvider->sName + "." + std::string(oEntry.sKey);
        pTool = m_oPlan.FindTool(sName);
        return pTool ? m_aCommands[pTool->iNumber] : m_mapContextCommands[sName];
    }

    void CheckEffects() {
        for (Provider* pProvider : m_oModel.MenuProviders())
            for (const Entry& oEntry : pProvider->aEntries) {
                if (oEntry.IsOfContextMenu() && pProvider->eKind != ProviderKind::ExplorerItem)
                    m_oReport.Add(Rule::NoEffect, oEntry.At("Type"), pProvider->Named() + " has no context menu",
                                  "move it to an explorer item, or use MenuItem");
                for (const char* sAttribute : {"ShortCutKey", "Separator"})
                    if (oEntry.IsButton() && !oEntry.pElement->Value(sAttribute).empty())
                        m_oReport.Add(Rule::NoEffect, oEntry.At(sAttribute),
                                      std::string("a button of a toolbar has no ") + sAttribute, "remove it");
            }
    }

    void CheckWindowList() {
        for (const Window& oWindow : m_oModel.aWindows) {
            if (!BooleanOf(*oWindow.pElement, "IsMDIChild", true) || BooleanOf(*oWindow.pElement, "IsModal", false))
                continue;
            if (!m_oPlan.TitleOf("Window") && m_oModel.bComplete)
                m_oReport.Add(Rule::MissingWindowList, oWindow.pFile->At(oWindow.pElement->At()),
                              "the window " + Quoted(oWindow.sName) + " is listed nowhere while it is open",
                              "define a title of the action \"Window\" on the menu bar");
            return;
        }
    }

    [[nodiscard]] std::vector<std::string> TitleKeys() {
        std::vector<std::string> aKeys;
        for (const auto& [sName, oBar] : m_oPlan.Bars())
            if (oBar.pTitle)
                aKeys.push_back(oBar.sName);
        return aKeys;
    }

    Model& m_oModel;
    const MenuPlan& m_oPlan;
    Report& m_oReport;
    // The bar that has had a tool last, and as what.
    struct Seen {
        const Bar* pBar = nullptr;
        const Entry* pEntry = nullptr;
    };
    std::vector<Seen> m_aSeen;        // by the numbers of tools, as the next
    std::vector<Command> m_aCommands; // of tools that the plan knows
    std::unordered_map<std::string, Command, TextHash, TextEqual> m_mapContextCommands;
    std::set<std::string> m_setPaths;                                          // folded, that have been reported
    std::unordered_map<std::string_view, int, TextHash, TextEqual> m_mapPaths; // how many entries have a path
    std::set<std::string> m_setAsked; // all that is written as a Path, folded, and the titles next to it
    bool m_bAskedRead = false;
};

} // namespace

void CheckMenus(Model& oModel, const MenuPlan& oPlan, Report& oReport) {
    MenuCheck(oModel, oPlan, oReport).Check();
}

} // namespace corvane::check
