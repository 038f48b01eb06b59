#include "analysis/Checks.h"
#include "analysis/Shortcuts.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <map>

namespace corvane::check {

namespace {

// The length of the UTF-8 character at the text's start.
std::size_t CharacterLength(std::string_view text) {
    std::size_t n = 1;
    while (n < text.size() && (static_cast<unsigned char>(text[n]) & 0xC0u) == 0x80)
        ++n;
    return n;
}

bool IsMark(char c) {
    return c == '#' || c == '&';
}

// The letter that opens an entry, folded; empty for none. Two marks represent the character itself.
std::string MnemonicOf(std::string_view caption) {
    for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
        if (!IsMark(caption[i]))
            continue;
        const std::string_view rest = caption.substr(i + 1);
        if (!IsMark(rest.front()))
            return rest.front() == ' ' ? std::string() : FoldText(rest.substr(0, CharacterLength(rest)));
        ++i;
    }
    return {};
}

// All that share a place: the first one gives the caption.
using Sharers = std::span<const Entry* const>;
// What is in one menu.
using Menu = std::vector<Sharers>;

bool MayMeet(Sharers firstItems, Sharers secondItems) {
    for (const Entry* first : firstItems)
        for (const Entry* second : secondItems)
            if (first->provider->MayMeet(*second->provider))
                return true;
    return false;
}

// The caption with its "#" before a letter that no entry of the menu opens by; empty when all are in use.
std::string WithFreeLetter(const Menu& menu, const Entry& entry) {
    std::set<std::string> used;
    for (const Sharers entries : menu)
        used.insert(MnemonicOf(entries.front()->Caption()));
    std::string caption(entry.Caption());
    std::erase_if(caption, IsMark);
    for (std::size_t i = 0; i < caption.size(); ++i) {
        const auto c = static_cast<unsigned char>(caption[i]);
        if (c < 0x80 && std::isalpha(c) && !used.contains(FoldText(caption.substr(i, 1))))
            return caption.insert(i, 1, '#');
    }
    return {};
}

class KeyCheck {
public:
    KeyCheck(Model& model, const MenuPlan& plan, Report& report) : m_model(model), m_plan(plan), m_report(report) {}

    void CheckMnemonics() {
        for (const auto& [name, bar] : m_plan.Bars()) {
            if (bar.name.starts_with("Toolbars."))
                continue;
            Menu menu;
            for (const Slot& slot : bar.slots)
                if (!slot.entries.empty())
                    menu.push_back(slot.entries.All());
            CheckMenu(menu);
        }
        for (const Provider& item : m_model.items) {
            std::map<Long, const Entry*> entries;
            for (const Entry& entry : item.entries)
                if (!m_plan.PlacingOf(entry))
                    if (const auto rank = ContextRank(entry))
                        entries.emplace(*rank, &entry);
            Menu menu;
            for (const auto& [rank, entry] : entries)
                menu.emplace_back(&entry, 1);
            CheckMenu(menu);
        }
    }

    void CheckShortcuts() {
        for (Provider* provider : m_model.MenuProviders())
            for (const Entry& entry : provider->entries)
                AddShortcut(entry);
        for (const auto& [keys, tools] : m_shortcuts)
            CheckShortcut(tools);
    }

private:
    void CheckMenu(const Menu& menu) {
        std::map<std::string, std::vector<Sharers>> letters;
        for (const Sharers entries : menu) {
            const Entry& entry = *entries.front();
            const std::string letter = MnemonicOf(entry.Caption());
            if (letter.empty())
                continue;
            auto& before = letters[letter];
            const auto it =
                std::find_if(before.begin(), before.end(), [&](Sharers others) { return MayMeet(others, entries); });
            if (it != before.end()) {
                const Entry& other = *it->front();
                const std::string free = WithFreeLetter(menu, entry);
                m_report.Add(Rule::MnemonicClash, entry.At("Caption"),
                             entry.Named() + " opens by " + Quoted(letter) + ", as does " + other.Named(),
                             free.empty() ? "write it without #" : "write " + Quoted(free),
                             {{other.At("Caption"), "the other one"}});
            }
            before.push_back(entries);
        }
    }

    // All entries of one tool, under their shortcut.
    using Tools = std::vector<std::pair<std::string, std::vector<const Entry*>>>;

    void AddShortcut(const Entry& entry) {
        const std::string_view text = entry.ShortCutKey();
        if (text.empty() || entry.IsButton())
            return;
        const std::optional<std::string>& shortcut = Read(text);
        if (!shortcut || entry.IsTitle() || entry.type == MenuType::fwContextMenuTitle) {
            const auto& nearest = Nearest(text);
            m_report.Add(shortcut ? Rule::NoEffect : Rule::ShortcutUnreadable, entry.At("ShortCutKey"),
                         shortcut ? "a title has no shortcut" : "the shortcut " + Quoted(text) + " can't be read",
                         shortcut  ? "remove it"
                         : nearest ? "write " + Quoted(*nearest)
                                   : "write names joined by +, as in \"Control+Shift+S\"");
            return;
        }
        const Placing* placing = m_plan.PlacingOf(entry);
        std::string tool; // stays empty where the rank is too large for a place
        if (!placing)
            tool = "context." + FoldText(entry.provider->name + "." + std::string(entry.key));
        else if (placing->tool)
            tool = FoldText(placing->tool->name);
        Tools& tools = m_shortcuts[*shortcut];
        const auto it = std::find_if(tools.begin(), tools.end(), [&](const auto& o) { return o.first == tool; });
        if (it == tools.end())
            tools.push_back({tool, {&entry}});
        else
            it->second.push_back(&entry);
    }

    // A text that has been made of another, which many entries may have, and which takes long.
    using Made = std::unordered_map<std::string_view, std::optional<std::string>>;

    [[nodiscard]] const std::optional<std::string>& Read(std::string_view text) {
        const auto [it, isNew] = m_read.try_emplace(text);
        if (isNew)
            it->second = ShortcutIn(text);
        return it->second;
    }

    [[nodiscard]] const std::optional<std::string>& Nearest(std::string_view text) {
        const auto [it, isNew] = m_nearest.try_emplace(text);
        if (isNew)
            it->second = NearestShortcut(text);
        return it->second;
    }

    void CheckShortcut(const Tools& tools) {
        for (std::size_t i = 1; i < tools.size(); ++i)
            for (std::size_t j = 0; j < i; ++j) {
                const auto& [first, firstItems] = tools[j];
                const auto& [second, secondItems] = tools[i];
                if (!MayMeet(firstItems, secondItems) || firstItems.front()->action == secondItems.front()->action)
                    continue;
                m_report.Add(Rule::ShortcutClash, secondItems.front()->At("ShortCutKey"),
                             secondItems.front()->Named() + " has the shortcut " +
                                 std::string(secondItems.front()->ShortCutKey()) + ", as has " +
                                 firstItems.front()->Named(),
                             "choose another one", {{firstItems.front()->At("ShortCutKey"), "the other one"}});
                break;
            }
    }

    Model& m_model;
    const MenuPlan& m_plan;
    Report& m_report;
    std::map<std::string, Tools> m_shortcuts;
    Made m_read; // by what is written, as the next
    Made m_nearest;
};

} // namespace

void CheckKeys(Model& model, const MenuPlan& plan, Report& report) {
    KeyCheck check(model, plan, report);
    check.CheckMnemonics();
    check.CheckShortcuts();
}

} // namespace corvane::check
