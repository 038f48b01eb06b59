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
    std::string_view written;
    std::string_view meant;
};

constexpr auto modifiers = std::to_array<KeyName>(
    {{"Ctrl", "Ctrl"}, {"Control", "Ctrl"}, {"Strg", "Ctrl"}, {"Shift", "Shift"}, {"Alt", "Alt"}, {"Meta", "Meta"}});
// What hosts call keys that aren't a character. Function keys come on top.
constexpr auto keyNames = std::to_array<KeyName>({{"Delete", "Del"},
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
constexpr int lastFunctionKey = 35;

const KeyName* Find(const auto& names, std::string_view text) {
    const auto it =
        std::find_if(names.begin(), names.end(), [&](const KeyName& name) { return EqualText(name.written, text); });
    return it == names.end() ? nullptr : &*it;
}

std::vector<std::string> PartsOf(std::string_view text) {
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == ' ')
            continue;
        if (c == '+')
            parts.emplace_back();
        else
            parts.back() += c;
    }
    const bool plusKey = parts.size() >= 2 && parts.back().empty() && parts[parts.size() - 2].empty();
    std::erase(parts, "");
    if (plusKey)
        parts.emplace_back("+");
    return parts;
}

// One character, whatever its length in UTF-8.
bool IsCharacter(std::string_view text) {
    const auto begins =
        std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0u) != 0x80; });
    return begins == 1;
}

std::optional<std::string> KeyIn(const std::string& part) {
    if (IsCharacter(part))
        return FoldText(part);
    if (const KeyName* name = Find(keyNames, part))
        return std::string(name->meant);
    const bool digits = part.size() <= 3 && std::all_of(part.begin() + 1, part.end(), [](char c) {
                            return std::isdigit(static_cast<unsigned char>(c)) != 0;
                        });
    if (digits && (part[0] == 'F' || part[0] == 'f'))
        if (const int key = std::stoi(part.substr(1)); key >= 1 && key <= lastFunctionKey)
            return "F" + std::to_string(key);
    return std::nullopt;
}

std::string Joined(const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts)
        text += (text.empty() ? "" : "+") + part;
    return text;
}

// What other languages, systems and toolkits say for modifiers and keys.
constexpr auto foreignNames = std::to_array<KeyName>({{"Strg", "Control"},
                                                      {"Ctl", "Control"},
                                                      {"Cntrl", "Control"},
                                                      {"Cntl", "Control"},
                                                      {"Ctr", "Control"},
                                                      {"C", "Control"},
                                                      {"^", "Control"},
                                                      {"Steuerung", "Control"},
                                                      {"Cmd", "Control"},
                                                      {"Command", "Control"},
                                                      {"Apple", "Control"},
                                                      {"CmdOrCtrl", "Control"},
                                                      {"CommandOrControl", "Control"},
                                                      {"Primary", "Control"},
                                                      {"Mod", "Control"},
                                                      {"\u2318", "Control"},
                                                      {"\u2303", "Control"},
                                                      {"Option", "Alt"},
                                                      {"Opt", "Alt"},
                                                      {"\u2325", "Alt"},
                                                      {"AltGr", "Alt"},
                                                      {"M", "Alt"},
                                                      {"Mod1", "Alt"},
                                                      {"Umschalt", "Shift"},
                                                      {"Umsch", "Shift"},
                                                      {"Maj", "Shift"},
                                                      {"Mayus", "Shift"},
                                                      {"May\u00FAs", "Shift"},
                                                      {"Maiusc", "Shift"},
                                                      {"\u21E7", "Shift"},
                                                      {"S", "Shift"},
                                                      {"Win", "Meta"},
                                                      {"Windows", "Meta"},
                                                      {"Super", "Meta"},
                                                      {"Entf", "Delete"},
                                                      {"Suppr", "Delete"},
                                                      {"Supr", "Delete"},
                                                      {"Canc", "Delete"},
                                                      {"Einfg", "Insert"},
                                                      {"Inser", "Insert"},
                                                      {"Pos1", "Home"},
                                                      {"Anfang", "Home"},
                                                      {"Debut", "Home"},
                                                      {"Inicio", "Home"},
                                                      {"Ende", "End"},
                                                      {"Fin", "End"},
                                                      {"Bildauf", "PageUp"},
                                                      {"Bild\u2191", "PageUp"},
                                                      {"Prior", "PageUp"},
                                                      {"Page_Up", "PageUp"},
                                                      {"PgeUp", "PageUp"},
                                                      {"Bildab", "PageDown"},
                                                      {"Bild\u2193", "PageDown"},
                                                      {"PgDn", "PageDown"},
                                                      {"PageDn", "PageDown"},
                                                      {"Next", "PageDown"},
                                                      {"Page_Down", "PageDown"},
                                                      {"Eingabe", "Return"},
                                                      {"Eingabetaste", "Return"},
                                                      {"Entree", "Return"},
                                                      {"Intro", "Return"},
                                                      {"CR", "Return"},
                                                      {"Enter", "Return"},
                                                      {"R\u00FCck", "Backspace"},
                                                      {"Ruecktaste", "Backspace"},
                                                      {"R\u00FCcktaste", "Backspace"},
                                                      {"BkSp", "Backspace"},
                                                      {"BS", "Backspace"},
                                                      {"Back_Space", "Backspace"},
                                                      {"Leertaste", "Space"},
                                                      {"Leer", "Space"},
                                                      {"Espace", "Space"},
                                                      {"SpaceBar", "Space"},
                                                      {"Spc", "Space"},
                                                      {"Tabulator", "Tab"},
                                                      {"Links", "Left"},
                                                      {"Rechts", "Right"},
                                                      {"Hoch", "Up"},
                                                      {"Oben", "Up"},
                                                      {"Runter", "Down"},
                                                      {"Unten", "Down"},
                                                      {"Druck", "Print"},
                                                      {"PrtSc", "Print"},
                                                      {"PrintScreen", "Print"},
                                                      {"Esc.", "Escape"},
                                                      {"Echap", "Escape"},
                                                      {"Hilfe", "Help"},
                                                      {"Plus", "+"},
                                                      {"Minus", "-"},
                                                      {"Comma", ","},
                                                      {"Komma", ","},
                                                      {"Period", "."},
                                                      {"Dot", "."},
                                                      {"Punkt", "."},
                                                      {"Slash", "/"},
                                                      {"Add", "+"},
                                                      {"Subtract", "-"}});

std::string Translated(const std::string& part) {
    const KeyName* name = Find(foreignNames, part);
    const bool isLetter = part.size() == 1 && part[0] != '^'; // as in "Ctrl+C"
    return name && !isLetter ? std::string(name->meant) : part;
}

// "Ctrl-S", "Ctrl S" and "<Ctrl>S" with "+" between.
std::string AsJoined(std::string_view text) {
    std::string joined(text);
    if (joined.find('+') != std::string::npos && joined.find('>') == std::string::npos)
        return joined;
    // "C-x" and "M-x" of an editor
    for (const auto& [letter, modifier] : {std::pair('C', "Control"), std::pair('M', "Alt"), std::pair('S', "Shift")})
        if (joined.size() > 2 && joined[0] == letter && joined[1] == '-')
            joined.replace(0, 1, modifier);
    std::string unspaced = joined;
    std::erase(unspaced, ' ');
    if (const KeyName* name = Find(foreignNames, unspaced))
        return std::string(name->meant); // "Bild auf"
    for (std::size_t i = 0; i < joined.size(); ++i)
        if (joined[i] == '<')
            joined[i] = ' ';
        else if (joined[i] == '>' || joined[i] == '|' || joined[i] == '_' ||
                 (joined[i] == '-' && i > 0 && i + 1 < joined.size()))
            joined[i] = '+';
        else if (joined[i] == '^' && joined.size() > 1)
            joined.replace(i, 1, "Control+");
    const std::size_t begin = joined.find_first_not_of(' ');
    const std::size_t last = joined.find_last_not_of(' ');
    if (begin == std::string::npos)
        return {};
    joined = joined.substr(begin, last - begin + 1);
    if (joined.find('+') == std::string::npos)
        std::replace(joined.begin(), joined.end(), ' ', '+');
    return joined;
}

} // namespace

std::optional<std::string> ShortcutIn(std::string_view text) {
    std::vector<std::string> parts = PartsOf(text);
    if (parts.empty())
        return std::nullopt;
    const std::optional<std::string> key = KeyIn(parts.back());
    if (!key)
        return std::nullopt;
    parts.pop_back();
    for (std::string& part : parts) {
        const KeyName* modifier = Find(modifiers, part);
        if (!modifier)
            return std::nullopt;
        part = modifier->meant;
    }
    std::sort(parts.begin(), parts.end());
    parts.erase(std::unique(parts.begin(), parts.end()), parts.end());
    parts.push_back(*key);
    return Joined(parts);
}

std::optional<std::string> NearestShortcut(std::string_view text) {
    const auto NamesOf = [](const auto& names) {
        std::vector<std::string> texts;
        for (const KeyName& name : names)
            texts.emplace_back(name.written);
        return texts;
    };
    // Of several shortcuts the first one.
    for (const char sign : {',', ';'})
        if (const std::size_t end = text.find(sign); end != std::string_view::npos && end > 1 && text[end - 1] != '+' &&
                                                     text.find_first_not_of(' ', end + 1) != std::string_view::npos)
            text = text.substr(0, end);
    std::vector<std::string> parts = PartsOf(AsJoined(text));
    std::vector<std::string> translated;
    for (std::string& part : parts)
        for (std::string& each : PartsOf(Translated(part)))
            translated.push_back(std::move(each));
    for (std::size_t i = 0; i < translated.size(); ++i) {
        std::string& part = translated[i];
        const bool isLast = i + 1 == translated.size();
        if (isLast ? KeyIn(part).has_value() : Find(modifiers, part) != nullptr)
            continue;
        const auto nearest = Nearest(isLast ? NamesOf(keyNames) : NamesOf(modifiers), part);
        if (!nearest)
            return std::nullopt;
        part = *nearest;
    }
    std::string nearestText = Joined(translated);
    return translated.empty() || !ShortcutIn(nearestText) ? std::nullopt : std::optional(std::move(nearestText));
}

std::optional<std::string> InOwnWords(std::string_view text) {
    bool isForeign = false;
    std::vector<std::string> parts = PartsOf(text);
    for (std::string& part : parts)
        if (EqualText(part, "Strg")) {
            isForeign = true;
            part = "Ctrl";
        }
    return isForeign ? std::optional(Joined(parts)) : std::nullopt;
}

std::optional<std::string> WhoTakes(const std::string& shortcut) {
    static constexpr auto desktop = std::to_array<KeyName>({{"Alt+F4", "closes the window"},
                                                            {"Alt+Tab", "changes to another program"},
                                                            {"Alt+Shift+Tab", "changes to another program"},
                                                            {"Alt+Esc", "changes to another program"},
                                                            {"Alt+Space", "opens the menu of the window"},
                                                            {"Alt+F1", "opens the menu of the desktop"},
                                                            {"Alt+F2", "runs a command"},
                                                            {"Ctrl+Esc", "opens the list of programs"},
                                                            {"Alt+Ctrl+Del", "ends the session"},
                                                            {"Alt+Ctrl+Backspace", "ends the session"},
                                                            {"Alt+Ctrl+Tab", "changes to another part of the desktop"},
                                                            {"Ctrl+Space", "switches the input method"},
                                                            {"Print", "takes a picture of the screen"},
                                                            {"Alt+Print", "takes a picture of the window"},
                                                            {"Ctrl+Print", "takes a picture of the screen"},
                                                            {"Shift+Print", "takes a picture of the screen"},
                                                            {"SysReq", "belongs to the system"},
                                                            {"CapsLock", "locks the capitals"},
                                                            {"NumLock", "locks the keypad"},
                                                            {"ScrollLock", "locks scrolling"},
                                                            {"Alt+Ctrl+L", "locks the screen"},
                                                            {"Alt+Ctrl+T", "opens a terminal"},
                                                            {"Alt+Ctrl+Left", "changes the workspace"},
                                                            {"Alt+Ctrl+Right", "changes the workspace"},
                                                            {"Alt+Ctrl+Up", "changes the workspace"},
                                                            {"Alt+Ctrl+Down", "changes the workspace"}});
    if (const KeyName* name = Find(desktop, shortcut))
        return "the desktop takes it: it " + std::string(name->meant);
    std::vector<std::string> parts = PartsOf(shortcut);
    if (parts.empty())
        return std::nullopt;
    const std::string key = parts.back();
    parts.pop_back();
    const auto Has = [&](const char* modifier) {
        return std::find(parts.begin(), parts.end(), modifier) != parts.end();
    };
    if (Has("Meta"))
        return "the desktop takes keys with Meta for itself";
    if (Has("Alt") && Has("Ctrl") && key.size() >= 2 && key[0] == 'F' &&
        std::isdigit(static_cast<unsigned char>(key[1])))
        return "the system changes to another console with it";
    static constexpr std::array editing{"Esc",  "Tab",   "Return", "Backspace", "Space", "Home",  "End",
                                        "Left", "Right", "Up",     "Down",      "PgUp",  "PgDown"};
    constexpr std::size_t lettersOfF25 = 3;
    if (key.size() == lettersOfF25 && key[0] == 'F' && key.substr(1) > "24")
        return "no keyboard has it";
    const bool isPlain = !Has("Ctrl") && !Has("Alt");
    if (isPlain && IsCharacter(key))
        return "in a field or table it types the character";
    if (isPlain && std::any_of(editing.begin(), editing.end(), [&](const char* each) { return key == each; }))
        return "fields, tables and trees take it for themselves";
    if (key == "Tab" && Has("Ctrl"))
        return "the host goes through the windows with it";
    if (Has("Ctrl") && !Has("Alt") &&
        (key == "Left" || key == "Right" || key == "Home" || key == "End" || key == "Backspace"))
        return "fields take it for themselves";
    return std::nullopt;
}

} // namespace corvane::check
