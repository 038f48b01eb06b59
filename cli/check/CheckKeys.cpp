#include "cli/check/Checks.h"
#include "cli/check/Shortcuts.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <map>

namespace corvane::check {

namespace {

bool IsTitle(const Entry& oEntry) {
    return oEntry.oDef->MenuType() == MenuType::fwMenuTitle || oEntry.oDef->MenuType() == MenuType::fwContextMenuTitle;
}

// The length of the UTF-8 character at the text's start.
std::size_t CharacterLength(std::string_view sText) {
    std::size_t n = 1;
    while (n < sText.size() && (static_cast<unsigned char>(sText[n]) & 0xC0u) == 0x80)
        ++n;
    return n;
}

// The letter that opens an entry, folded; empty for none. "&&" stands for the character itself.
std::string MnemonicOf(std::string_view sCaption) {
    for (std::size_t i = 0; i + 1 < sCaption.size(); ++i) {
        if (sCaption[i] != '&')
            continue;
        const std::string_view sRest = sCaption.substr(i + 1);
        if (sRest.front() != '&')
            return sRest.front() == ' ' ? std::string() : FoldText(sRest.substr(0, CharacterLength(sRest)));
        ++i;
    }
    return {};
}

// What stands in one menu: the entry that gives the caption, and all that share the place.
using Menu = std::vector<std::vector<const Entry*>>;

bool MayMeet(const std::vector<const Entry*>& aFirst, const std::vector<const Entry*>& aSecond) {
    for (const Entry* pFirst : aFirst)
        for (const Entry* pSecond : aSecond)
            if (pFirst->pProvider->MayMeet(*pSecond->pProvider))
                return true;
    return false;
}

// The caption with its "#" before a letter that no entry of the menu opens by; empty when all are in use.
std::string WithFreeLetter(const Menu& oMenu, const Entry& oEntry) {
    std::set<std::string> setUsed;
    for (const auto& aEntries : oMenu)
        setUsed.insert(MnemonicOf(aEntries.front()->oDef->Caption()));
    std::string sCaption = oEntry.oDef->Caption();
    std::erase(sCaption, '&');
    for (std::size_t i = 0; i < sCaption.size(); ++i) {
        const auto c = static_cast<unsigned char>(sCaption[i]);
        if (c < 0x80 && std::isalpha(c) && !setUsed.contains(FoldText(sCaption.substr(i, 1))))
            return sCaption.insert(i, 1, '#');
    }
    return {};
}

class KeyCheck {
public:
    KeyCheck(Model& oModel, const MenuPlan& oPlan, Report& oReport)
        : m_oModel(oModel), m_oPlan(oPlan), m_oReport(oReport) {}

    void CheckMnemonics() {
        for (const auto& [sName, oBar] : m_oPlan.Bars()) {
            Menu oMenu;
            for (const Slot& oSlot : oBar.aSlots)
                if (!oSlot.aEntries.empty())
                    oMenu.push_back(oSlot.aEntries);
            if (!oBar.sName.starts_with("Toolbars."))
                CheckMenu(oMenu);
        }
        for (const Provider& oItem : m_oModel.aItems) {
            std::map<Long, const Entry*> mapEntries;
            for (const Entry& oEntry : oItem.aEntries)
                if (!m_oPlan.PlacingOf(oEntry))
                    if (const auto oRank = ContextRank(*oEntry.oDef))
                        mapEntries.emplace(*oRank, &oEntry);
            Menu oMenu;
            for (const auto& [lRank, pEntry] : mapEntries)
                oMenu.push_back({pEntry});
            CheckMenu(oMenu);
        }
    }

    void CheckShortcuts() {
        for (Provider* pProvider : m_oModel.MenuProviders())
            for (const Entry& oEntry : pProvider->aEntries)
                AddShortcut(oEntry);
        for (const auto& [sShortcut, aTools] : m_mapShortcuts)
            CheckShortcut(sShortcut, aTools);
    }

private:
    void CheckMenu(const Menu& oMenu) {
        std::map<std::string, std::vector<const std::vector<const Entry*>*>> mapLetters;
        for (const auto& aEntries : oMenu) {
            const Entry& oEntry = *aEntries.front();
            const std::string sLetter = MnemonicOf(oEntry.oDef->Caption());
            if (sLetter.empty())
                continue;
            auto& aBefore = mapLetters[sLetter];
            const auto it = std::find_if(aBefore.begin(), aBefore.end(),
                                         [&](const auto* pBefore) { return MayMeet(*pBefore, aEntries); });
            if (it != aBefore.end()) {
                const std::string sFree = WithFreeLetter(oMenu, oEntry);
                m_oReport.Add(Rule::MnemonicClash, oEntry.At("Caption"),
                              oEntry.Named() + " opens by " + Quoted(sLetter) + ", as does " + (*it)->front()->Named(),
                              sFree.empty() ? "write it without #" : "write " + Quoted(sFree),
                              {{(*it)->front()->At("Caption"), "the other one"}});
            }
            aBefore.push_back(&aEntries);
        }
    }

    // All entries of one tool, under their shortcut.
    using Tools = std::vector<std::pair<std::string, std::vector<const Entry*>>>;

    void AddShortcut(const Entry& oEntry) {
        const std::string& sText = oEntry.oDef->ShortCutKey();
        if (sText.empty() || oEntry.oDef->MenuType() == MenuType::fwToolbarItem)
            return;
        const std::optional<std::string> oShortcut = ShortcutIn(sText);
        if (!oShortcut || IsTitle(oEntry)) {
            const auto oNearest = NearestShortcut(sText);
            m_oReport.Add(oShortcut ? Rule::NoEffect : Rule::ShortcutUnreadable, oEntry.At("ShortCutKey"),
                          oShortcut ? "a title has no shortcut" : "the shortcut " + Quoted(sText) + " can't be read",
                          oShortcut  ? "remove it"
                          : oNearest ? "write " + Quoted(*oNearest)
                                     : "write names joined by +, as in \"Control+Shift+S\"");
            return;
        }
        const Placing* pPlacing = m_oPlan.PlacingOf(oEntry);
        const std::string sTool =
            pPlacing ? FoldText(pPlacing->sTool) : "context." + FoldText(oEntry.pProvider->sName + "." + oEntry.sKey);
        Tools& aTools = m_mapShortcuts[*oShortcut];
        const auto it = std::find_if(aTools.begin(), aTools.end(), [&](const auto& o) { return o.first == sTool; });
        if (it == aTools.end())
            aTools.push_back({sTool, {&oEntry}});
        else
            it->second.push_back(&oEntry);
    }

    void CheckShortcut(const std::string& sShortcut, const Tools& aTools) {
        for (std::size_t i = 1; i < aTools.size(); ++i)
            for (std::size_t j = 0; j < i; ++j) {
                const auto& [sFirst, aFirst] = aTools[j];
                const auto& [sSecond, aSecond] = aTools[i];
                if (!MayMeet(aFirst, aSecond) || aFirst.front()->pAction == aSecond.front()->pAction)
                    continue;
                m_oReport.Add(Rule::ShortcutClash, aSecond.front()->At("ShortCutKey"),
                              aSecond.front()->Named() + " has the shortcut " + sShortcut + ", as has " +
                                  aFirst.front()->Named(),
                              "choose another one", {{aFirst.front()->At("ShortCutKey"), "the other one"}});
                break;
            }
    }

    Model& m_oModel;
    const MenuPlan& m_oPlan;
    Report& m_oReport;
    std::map<std::string, Tools> m_mapShortcuts;
};

} // namespace

void CheckKeys(Model& oModel, const MenuPlan& oPlan, Report& oReport) {
    KeyCheck oCheck(oModel, oPlan, oReport);
    oCheck.CheckMnemonics();
    oCheck.CheckShortcuts();
}

} // namespace corvane::check
