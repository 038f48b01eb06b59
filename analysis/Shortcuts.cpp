#include "analysis/Shortcuts.h"

#include "adapters/common/Nearest.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <vector>

namespace corvane::check {

namespace {

struct KeyName {
    std::string_view sWritten;
    std::string_view sMeant;
};

constexpr auto aModifiers = std::to_array<KeyName>(
    {{"Ctrl", "Ctrl"}, {"Control", "Ctrl"}, {"Strg", "Ctrl"}, {"Shift", "Shift"}, {"Alt", "Alt"}, {"Meta", "Meta"}});
// What hosts call keys that aren't a character. Function keys come on top.
constexpr auto aKeys = std::to_array<KeyName>({{"Delete", "Del"},
                                               {"Del", "Del"},
                                               {"Insert", "Ins"},
                                               {"Ins", "Ins"},
                                               {"Escape", "Esc"},
                                               {"Esc", "Esc"},
                                               {"PageUp", "PgUp"},
                                               {"PgUp", "PgUp"},
                                               {"PageDown", "PgDown"},
                                               {"PgDown", "PgDown"},
                                               {"Enter", "Return"},
                                               {"Return", "Return"},
                                               {"Bksp", "Backspace"},
                                               {"Backspace", "Backspace"},
                                               {"Tab", "Tab"},
                                               {"Space", "Space"},
                                               {"Home", "Home"},
                                               {"End", "End"},
                                               {"Left", "Left"},
                                               {"Right", "Right"},
                                               {"Up", "Up"},
                                               {"Down", "Down"},
                                               {"Pause", "Pause"},
                                               {"Print", "Print"},
                                               {"Menu", "Menu"},
                                               {"Help", "Help"},
                                               {"CapsLock", "CapsLock"},
                                               {"NumLock", "NumLock"},
                                               {"ScrollLock", "ScrollLock"},
                                               {"SysReq", "SysReq"},
                                               {"Clear", "Clear"},
                                               {"Back", "Back"},
                                               {"Forward", "Forward"},
                                               {"Refresh", "Refresh"},
                                               {"Search", "Search"},
                                               {"Stop", "Stop"},
                                               {"Undo", "Undo"},
                                               {"Redo", "Redo"},
                                               {"Find", "Find"},
                                               {"Cut", "Cut"},
                                               {"Copy", "Copy"},
                                               {"Paste", "Paste"},
                                               {"Open", "Open"},
                                               {"Close", "Close"},
                                               {"Save", "Save"}});
constexpr int nLastFunctionKey = 35;

const KeyName* Find(const auto& aNames, std::string_view sText) {
    const auto it = std::find_if(aNames.begin(), aNames.end(),
                                 [&](const KeyName& oName) { return EqualText(oName.sWritten, sText); });
    return it == aNames.end() ? nullptr : &*it;
}

std::vector<std::string> PartsOf(std::string_view sText) {
    std::vector<std::string> aParts(1);
    for (const char c : sText) {
        if (c == ' ')
            continue;
        if (c == '+')
            aParts.emplace_back();
        else
            aParts.back() += c;
    }
    const bool bPlusKey = aParts.size() >= 2 && aParts.back().empty() && aParts[aParts.size() - 2].empty();
    std::erase(aParts, "");
    if (bPlusKey)
        aParts.emplace_back("+");
    return aParts;
}

// One character, whatever its length in UTF-8.
bool IsCharacter(std::string_view sText) {
    const auto nBegins = std::count_if(sText.begin(), sText.end(),
                                       [](char c) { return (static_cast<unsigned char>(c) & 0xC0u) != 0x80; });
    return nBegins == 1;
}

std::optional<std::string> KeyIn(const std::string& sPart) {
    if (IsCharacter(sPart))
        return FoldText(sPart);
    if (const KeyName* pName = Find(aKeys, sPart))
        return std::string(pName->sMeant);
    const bool bDigits = sPart.size() <= 3 && std::all_of(sPart.begin() + 1, sPart.end(), [](char c) {
                             return std::isdigit(static_cast<unsigned char>(c)) != 0;
                         });
    if (bDigits && (sPart[0] == 'F' || sPart[0] == 'f'))
        if (const int nKey = std::stoi(sPart.substr(1)); nKey >= 1 && nKey <= nLastFunctionKey)
            return "F" + std::to_string(nKey);
    return std::nullopt;
}

std::string Joined(const std::vector<std::string>& aParts) {
    std::string sText;
    for (const std::string& sPart : aParts)
        sText += (sText.empty() ? "" : "+") + sPart;
    return sText;
}

} // namespace

std::optional<std::string> ShortcutIn(std::string_view sText) {
    std::vector<std::string> aParts = PartsOf(sText);
    if (aParts.empty())
        return std::nullopt;
    const std::optional<std::string> oKey = KeyIn(aParts.back());
    if (!oKey)
        return std::nullopt;
    aParts.pop_back();
    for (std::string& sPart : aParts) {
        const KeyName* pModifier = Find(aModifiers, sPart);
        if (!pModifier)
            return std::nullopt;
        sPart = pModifier->sMeant;
    }
    std::sort(aParts.begin(), aParts.end());
    aParts.erase(std::unique(aParts.begin(), aParts.end()), aParts.end());
    aParts.push_back(*oKey);
    return Joined(aParts);
}

std::optional<std::string> NearestShortcut(std::string_view sText) {
    const auto NamesOf = [](const auto& aNames) {
        std::vector<std::string> aTexts;
        for (const KeyName& oName : aNames)
            aTexts.emplace_back(oName.sWritten);
        return aTexts;
    };
    std::vector<std::string> aParts = PartsOf(sText);
    for (std::size_t i = 0; i < aParts.size(); ++i) {
        const bool bLast = i + 1 == aParts.size();
        if (bLast ? KeyIn(aParts[i]).has_value() : Find(aModifiers, aParts[i]) != nullptr)
            continue;
        const auto oNearest = Nearest(bLast ? NamesOf(aKeys) : NamesOf(aModifiers), aParts[i]);
        if (!oNearest)
            return std::nullopt;
        aParts[i] = *oNearest;
    }
    return aParts.empty() ? std::nullopt : std::optional(Joined(aParts));
}

} // namespace corvane::check
