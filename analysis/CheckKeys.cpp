#include "analysis/Checks.h"
#include "analysis/Shortcuts.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <map>

namespace corvane::check {

namespace {

// The length of the UTF-8 character at the text's start.
std::size_t CharacterLength(std::string_view sText) {
    std::size_t n = 1;
    while (n < sText.size() && (static_cast<unsigned char>(sText[n]) & 0xC0u) == 0x80)
        ++n;
    return n;
}

bool IsMark(char c) {
    return c == '#' || c == '&';
}

// The letter that opens an entry, folded; empty for none. Two marks stand for the character itself.
std::string MnemonicOf(std::string_view sCaption) {
    for (std::size_t i = 0; i + 1 < sCaption.size(); ++i) {
        if (!IsMark(sCaption[i]))
            continue;
        const std::string_view sRest = sCaption.substr(i + 1);
        if (!IsMark(sRest.front()))
            return sRest.front() == ' ' ? std::string() : FoldText(sRest.substr(0, CharacterLength(sRest)));
        ++i;
    }
    return {};
}

// All that share a place: the first one gives the caption.
using Sharers = std::span<const Entry* const>;
// What stands in one menu.
using Menu = std::vector<Sharers>;

bool MayMeet(Sharers aFirst, Sharers aSecond) {
    for (const Entry* pFirst : aFirst)
        for (const Entry* pSecond : aSecond)
            if (pFirst->pProvider->MayMeet(*pSecond->pProvider))
                return true;
    return false;
}

// The caption with its "#" before a letter that no entry of the menu opens by; empty when all are in use.
std::string WithFreeLetter(const Menu& oMenu, const Entry& oEntry) {
    std::set<std::string> setUsed;
    for (const Sharers aEntries : oMenu)
        setUsed.insert(MnemonicOf(aEntries.front()->Caption()));
    std::string sCaption(oEntry.Caption());
    std::erase_if(sCaption, IsMark);
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
            if (oBar.sName.starts_with("Toolbars."))
                continue;
            Menu oMenu;
            for (const Slot& oSlot : oBar.aSlots)
                if (!oSlot.aEntries.empty())
                    oMenu.push_back(oSlot.aEntries.All());
            CheckMenu(oMenu);
        }
        for (const Provider& oItem : m_oModel.aItems) {
            std::map<Long, const Entry*> mapEntries;
            for (const Entry& oEntry : oItem.aEntries)
                if (!m_oPlan.PlacingOf(oEntry))
                    if (const auto oRank = ContextRank(oEntry))
                        mapEntries.emplace(*oRank, &oEntry);
            Menu oMenu;
            for (const auto& [lRank, pEntry] : mapEntries)
                oMenu.emplace_back(&pEntry, 1);
            CheckMenu(oMenu);
        }
    }

    void CheckShortcuts() {
        for (Provider* pProvider : m_oModel.MenuProviders())
            for (const Entry& oEntry : pProvider->aEntries)
                AddShortcut(oEntry);
        for (const auto& [sKeys, aTools] : m_mapShortcuts)
            CheckShortcut(aTools);
    }

private:
    void CheckMenu(const Menu& oMenu) {
        std::map<std::string, std::vector<Sharers>> mapLetters;
        for (const Sharers aEntries : oMenu) {
            const Entry& oEntry = *aEntries.front();
            const std::string sLetter = MnemonicOf(oEntry.Caption());
            if (sLetter.empty())
                continue;
            auto& aBefore = mapLetters[sLetter];
            const auto it = std::find_if(aBefore.begin(), aBefore.end(),
                                         [&](Sharers aOthers) { return MayMeet(aOthers, aEntries); });
            if (it != aBefore.end()) {
                const Entry& oOther = *it->front();
                const std::string sFree = WithFreeLetter(oMenu, oEntry);
                m_oReport.Add(Rule::MnemonicClash, oEntry.At("Caption"),
                              oEntry.Named() + " opens by " + Quoted(sLetter) + ", as does " + oOther.Named(),
                              sFree.empty() ? "write it without #" : "write " + Quoted(sFree),
                              {{oOther.At("Caption"), "the other one"}});
            }
            aBefore.push_back(aEntries);
        }
    }

    // All entries of one tool, under their shortcut.
    using Tools = std::vector<std::pair<std::string, std::vector<const Entry*>>>;

    void AddShortcut(const Entry& oEntry) {
        const std::string_view sText = oEntry.ShortCutKey();
        if (sText.empty() || oEntry.IsButton())
            return;
        const std::optional<std::string>& oShortcut = Read(sText);
        if (!oShortcut || oEntry.IsTitle() || oEntry.eType == MenuType::fwContextMenuTitle) {
            const auto& oNearest = Nearest(sText);
            m_oReport.Add(oShortcut ? Rule::NoEffect : Rule::ShortcutUnreadable, oEntry.At("ShortCutKey"),
                          oShortcut ? "a title has no shortcut" : "the shortcut " + Quoted(sText) + " can't be read",
                          oShortcut  ? "remove it"
                          : oNearest ? "write " + Quoted(*oNearest)
                                     : "write names joined by +, as in \"Control+Shift+S\"");
            return;
        }
        const Placing* pPlacing = m_oPlan.PlacingOf(oEntry);
        std::string sTool; // stays empty where the rank is too large for a place
        if (!pPlacing)
            sTool = "context." + FoldText(oEntry.pProvider->sName + "." + std::string(oEntry.sKey));
        else if (pPlacing->pTool)
            sTool = FoldText(pPlacing->pTool->sName);
        Tools& aTools = m_mapShortcuts[*oShortcut];
        const auto it = std::find_if(aTools.begin(), aTools.end(), [&](const auto& o) { return o.first == sTool; });
        if (it == aTools.end())
            aTools.push_back({sTool, {&oEntry}});
        else
            it->second.push_back(&oEntry);
    }

    // A text that has been made of another, which many entries may have, and which takes long.
    using Made = std::unordered_map<std::string_view, std::optional<std::string>>;

    [[nodiscard]] const std::optional<std::string>& Read(std::string_view sText) {
        const auto [it, bNew] = m_mapRead.try_emplace(sText);
        if (bNew)
            it->second = ShortcutIn(sText);
        return it->second;
    }

    [[nodiscard]] const std::optional<std::string>& Nearest(std::string_view sText) {
        const auto [it, bNew] = m_mapNearest.try_emplace(sText);
        if (bNew)
            it->second = NearestShortcut(sText);
        return it->second;
    }

    void CheckShortcut(const Tools& aTools) {
        for (std::size_t i = 1; i < aTools.size(); ++i)
            for (std::size_t j = 0; j < i; ++j) {
                const auto& [sFirst, aFirst] = aTools[j];
                const auto& [sSecond, aSecond] = aTools[i];
                if (!MayMeet(aFirst, aSecond) || aFirst.front()->pAction == aSecond.front()->pAction)
                    continue;
                m_oReport.Add(Rule::ShortcutClash, aSecond.front()->At("ShortCutKey"),
                              aSecond.front()->Named() + " has the shortcut " +
                                  std::string(aSecond.front()->ShortCutKey()) + ", as has " + aFirst.front()->Named(),
                              "choose another one", {{aFirst.front()->At("ShortCutKey"), "the other one"}});
                break;
            }
    }

    Model& m_oModel;
    const MenuPlan& m_oPlan;
    Report& m_oReport;
    std::map<std::string, Tools> m_mapShortcuts;
    Made m_mapRead; // by what is written, as the next
    Made m_mapNearest;
};

} // namespace

void CheckKeys(Model& oModel, const MenuPlan& oPlan, Report& oReport) {
    KeyCheck oCheck(oModel, oPlan, oReport);
    oCheck.CheckMnemonics();
    oCheck.CheckShortcuts();
}

} // namespace corvane::check
