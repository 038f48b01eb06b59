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
    std::vector<std::string> parts = PartsOf(text);
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const bool last = i + 1 == parts.size();
        if (last ? KeyIn(parts[i]).has_value() : Find(modifiers, parts[i]) != nullptr)
            continue;
        const auto nearest = Nearest(last ? NamesOf(keyNames) : NamesOf(modifiers), parts[i]);
        if (!nearest)
            return std::nullopt;
        parts[i] = *nearest;
    }
    return parts.empty() ? std::nullopt : std::optional(Joined(parts));
}

} // namespace corvane::check
