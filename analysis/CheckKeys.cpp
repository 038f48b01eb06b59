#include "analysis/Checks.h"
#include "analysis/Shortcuts.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <map>
#include <set>

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
    if (caption.find('#') == std::string_view::npos && caption.find('&') == std::string_view::npos)
        return {}; // seen at once
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

// Captions that read the same, whatever letter they mark, have one hash.
std::size_t HashOf(std::string_view caption) {
    std::size_t hash = 14695981039346656037ULL;
    for (const char c : caption)
        if (!IsMark(c))
            hash = (hash ^ (static_cast<unsigned char>(c) | 0x20u)) * 1099511628211ULL; // folds ASCII letters
    return hash;
}

std::string WithoutMarks(std::string_view caption) {
    std::string plain(caption);
    std::erase_if(plain, IsMark);
    return plain;
}

// "New Hive" for "NewHive".
std::string WordsOf(std::string_view name) {
    std::string words;
    for (const char c : name) {
        if (std::isupper(static_cast<unsigned char>(c)) && !words.empty() &&
            std::islower(static_cast<unsigned char>(words.back())))
            words += ' ';
        words += c;
    }
    return words;
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
        ReadTitleLetters();
        for (Provider* provider : m_model.MenuProviders()) {
            m_contextMakers.clear();
            for (const Entry* entry : InOrderOfMaking(*provider))
                AddShortcut(*entry);
        }
        for (const auto& [keys, tools] : m_shortcuts)
            if (tools.size() > 1)
                CheckShortcut(keys, tools);
    }

private:
    void CheckMenu(const Menu& menu) {
        std::map<std::string, std::vector<Sharers>> letters;
        const std::vector<bool> isTwin = FindTwins(menu);
        for (std::size_t i = 0; i < menu.size(); ++i) {
            const Sharers entries = menu[i];
            const Entry& entry = *entries.front();
            if (isTwin[i])
                continue;
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
                             entry.Named() + " and " + other.Named() + " both open by " + Quoted(letter) +
                                 ", so the key only moves between them",
                             free.empty() ? "write the Caption without #" : "write " + Quoted(free),
                             {{other.At("Caption"), "the other one"}});
            }
            before.push_back(entries);
        }
    }

    // Those before which another one of the menu reads the same, and is shown with it.
    std::vector<bool> FindTwins(const Menu& menu) {
        std::vector<std::pair<std::size_t, std::size_t>> hashes;
        for (std::size_t i = 0; i < menu.size(); ++i)
            if (const std::string_view caption = menu[i].front()->Caption(); !caption.empty())
                hashes.emplace_back(HashOf(caption), i);
        std::sort(hashes.begin(), hashes.end());
        std::vector<bool> isTwin(menu.size());
        for (std::size_t i = 1; i < hashes.size(); ++i)
            for (std::size_t j = i; j-- > 0 && hashes[j].first == hashes[i].first && !isTwin[hashes[i].second];)
                isTwin[hashes[i].second] = AreTwins(menu[hashes[j].second], menu[hashes[i].second]);
        return isTwin;
    }

    // The action whose name says something else is the one that has the wrong Caption.
    bool AreTwins(Sharers before, Sharers behind) {
        const Entry& first = *before.front();
        const Entry& second = *behind.front();
        const std::string caption = WithoutMarks(second.Caption());
        if (EqualText(first.key, second.key) || !BeginsVisible(first) || !BeginsVisible(second) ||
            !MayMeet(before, behind) || !EqualText(WithoutMarks(first.Caption()), caption))
            return false;
        const auto IsNamedSo = [&](const Entry& entry) { return EqualText(WordsOf(entry.action->name), caption); };
        const bool isFirst = IsNamedSo(second) && !IsNamedSo(first);
        const Entry& wrong = isFirst ? first : second;
        const Entry& other = isFirst ? second : first;
        m_report.Add(Rule::SameCaption, wrong.At("Caption"),
                     wrong.Named() + " and " + other.Named() + " both read " + Quoted(caption) +
                         ", so users can't tell one from the other",
                     IsNamedSo(wrong) ? "give one of both another Caption"
                                      : "write another Caption, such as " + Quoted("#" + WordsOf(wrong.action->name)),
                     {{other.At("Caption"), "the other one"}});
        return true;
    }

    static bool BeginsVisible(const Entry& entry) { return BooleanOf(*entry.action->element, "Visible", true); }

    // Tools of context menus are made in the order of their ranks, behind all others.
    static std::vector<const Entry*> InOrderOfMaking(const Provider& provider) {
        std::vector<const Entry*> entries;
        std::map<Long, const Entry*> context;
        for (const Entry& entry : provider.entries)
            if (!entry.IsOfContextMenu())
                entries.push_back(&entry);
            else if (const auto rank = ContextRank(entry))
                context.emplace(*rank, &entry);
        for (const auto& [rank, entry] : context)
            entries.push_back(entry);
        return entries;
    }

    // The entry whose shortcut the tool has; nothing where the tool isn't that of a definition.
    const Entry* MakerOf(const Entry& entry) {
        const Tool* tool = m_plan.ToolOf(*entry.action);
        if (!tool && entry.IsOfContextMenu())
            tool = m_plan.FindTool(entry.key);
        if (tool)
            return tool->maker;
        return entry.IsOfContextMenu() ? m_contextMakers.try_emplace(entry.action, &entry).first->second : nullptr;
    }

    void AddShortcut(const Entry& entry) {
        const std::string_view text = entry.ShortCutKey();
        if (text.empty() && !entry.IsOfContextMenu())
            return; // as most have none
        const Entry* maker = MakerOf(entry);
        if (text.empty() || entry.IsButton() ||
            (entry.IsOfContextMenu() && entry.provider->kind != ProviderKind::ExplorerItem))
            return;
        const File& file = *entry.provider->file;
        const Attribute& attribute = *entry.element->Find("ShortCutKey");
        const std::optional<std::string>& shortcut = Read(text);
        if (!shortcut) {
            ReportUnreadable(entry, file, attribute);
            return;
        }
        if (entry.IsTitle() || entry.type == MenuType::fwContextMenuTitle) {
            m_report
                .Add(Rule::NoEffect, entry.At("ShortCutKey"),
                     "a title has no shortcut, so " + Quoted(text) + " doesn't open " + entry.Named(),
                     "remove ShortCutKey; \"#\" in the Caption opens a menu by Alt and the letter")
                .edits = {RemovalEdit(file, attribute)};
            return;
        }
        if (const auto own = InOwnWords(text))
            m_report
                .Add(Rule::ForeignShortcut, entry.At("ShortCutKey"),
                     Quoted(text) + " has a word of another language in it, which not every host reads",
                     "write " + Quoted(*own))
                .edits = {ValueEdit(file, attribute, *own)};
        if (maker && maker != &entry) {
            ReportLateShortcut(entry, *maker, file, attribute);
            return;
        }
        ReportTaken(entry, *shortcut);
        if (maker)
            m_shortcuts[*shortcut].push_back(&entry);
    }

    void ReportUnreadable(const Entry& entry, const File& file, const Attribute& attribute) {
        const auto& nearest = Nearest(entry.ShortCutKey());
        Finding& finding = m_report.Add(
            Rule::ShortcutUnreadable, entry.At("ShortCutKey"),
            "the shortcut " + Quoted(entry.ShortCutKey()) + " can't be read, so no key chooses " + entry.Named(),
            nearest ? "write " + Quoted(*nearest)
                    : "write names joined by +, as in \"Control+Shift+S\", or one function key");
        if (nearest)
            finding.edits = {ValueEdit(file, attribute, *nearest)};
    }

    // Only who makes a tool gives it its shortcut.
    void ReportLateShortcut(const Entry& entry, const Entry& maker, const File& file, const Attribute& attribute) {
        const std::string own(maker.ShortCutKey());
        const std::string written(entry.ShortCutKey());
        if (!own.empty() && Read(maker.ShortCutKey()) == Read(entry.ShortCutKey()))
            return; // said twice
        Finding& finding = m_report.Add(
            Rule::NoEffect, entry.At("ShortCutKey"),
            "the shortcut " + Quoted(written) + " does nothing here: the place that is built first, " + maker.Named() +
                (own.empty() ? ", has none" : ", gives the command " + Quoted(own)),
            own.empty() ? "move ShortCutKey=\"" + written + "\" to " + maker.Named() : "remove ShortCutKey here",
            {{maker.At(own.empty() ? "ActionItem" : "ShortCutKey"), "the place that is built first"}});
        finding.edits = {RemovalEdit(file, attribute)};
        if (own.empty())
            finding.edits.push_back(SetEdit(*maker.provider->file, *maker.element, "ShortCutKey", written));
    }

    void ReportTaken(const Entry& entry, const std::string& shortcut) {
        std::string why = WhoTakes(shortcut).value_or("");
        if (why.empty() && shortcut.starts_with("Alt+") && shortcut.size() == 5)
            if (const auto title = m_titleLetters.find(shortcut.substr(4)); title != m_titleLetters.end())
                why = "it opens the menu " + Quoted(title->second->key) + ", whose Caption marks that letter";
        if (why.empty())
            why = MeaningInFields(entry, shortcut);
        if (!why.empty())
            m_report.Add(Rule::TakenKey, entry.At("ShortCutKey"),
                         Quoted(entry.ShortCutKey()) + " doesn't always choose " + entry.Named() + ": " + why,
                         "write another, such as " + Quoted(FreeShortcut(entry, shortcut)));
    }

    // Keys of editing that users have in their fingers, for a command that doesn't seem to be the one they mean.
    static std::string MeaningInFields(const Entry& entry, const std::string& shortcut) {
        struct Meaning {
            const char* keys;
            const char* verb;
            std::vector<std::string_view> words;
        };
        static const std::vector<Meaning> meanings{
            {"Ctrl+c", "copies", {"cop", "kop", "dupl", "clip"}},
            {"Ctrl+x", "cuts", {"cut", "aus", "coup", "cort"}},
            {"Ctrl+v", "pastes", {"past", "einf", "coll", "peg", "insert"}},
            {"Ctrl+z", "undoes the last change", {"undo", "r\u00FCck", "rueck", "annul", "desh"}},
            {"Ctrl+a", "selects all", {"all", "alle", "tout", "todo"}},
        };
        const auto meaning = std::find_if(meanings.begin(), meanings.end(),
                                          [&](const Meaning& each) { return EqualText(each.keys, shortcut); });
        if (meaning == meanings.end())
            return {};
        std::string caption(entry.Caption());
        std::erase_if(caption, IsMark);
        const std::string texts =
            FoldText(std::string(entry.action->name) + " " + std::string(entry.action->procedure) + " " + caption);
        for (const std::string_view word : meaning->words)
            if (texts.find(word) != std::string::npos)
                return {};
        return std::string("in a field or table it ") + meaning->verb;
    }

    void ReadTitleLetters() {
        const Bar* bar = m_plan.FindBar("Main");
        for (const Slot& slot : bar->slots)
            if (!slot.entries.empty() && slot.entries.front()->IsTitle())
                if (const std::string letter = MnemonicOf(slot.entries.front()->Caption()); !letter.empty())
                    m_titleLetters.emplace(letter, slot.entries.front());
        for (Provider* provider : m_model.MenuProviders())
            for (const Entry& entry : provider->entries)
                if (const std::string_view text = entry.ShortCutKey(); !text.empty())
                    if (const auto& shortcut = Read(text))
                        m_inUse.insert(*shortcut);
    }

    // One like it that no command has and nothing else takes.
    [[nodiscard]] std::string FreeShortcut(const Entry& entry, const std::string& shortcut) const {
        std::string key = shortcut.substr(shortcut.ends_with('+') ? shortcut.size() - 1 : shortcut.rfind('+') + 1);
        std::vector<std::string> candidates;
        const bool isLetter = key.size() == 1 && std::isalpha(static_cast<unsigned char>(key[0]));
        if (!isLetter && !(key.size() > 1 && key[0] == 'F' && std::isdigit(static_cast<unsigned char>(key[1])))) {
            const std::string name = FoldText(entry.action->name);
            const auto first = std::find_if(name.begin(), name.end(), [](char c) { return c >= 'a' && c <= 'z'; });
            key = first == name.end() ? "k" : std::string(1, *first);
        }
        constexpr int letters = 26;
        std::string each = key;
        for (int n = 0; n <= letters; ++n) {
            for (const char* modifiers : {"Control+", "Control+Shift+", "Control+Alt+"}) {
                std::string candidate = each;
                candidate[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(candidate[0])));
                candidate.insert(0, modifiers);
                const auto read = ShortcutIn(candidate);
                static const std::set<std::string> usual{"Ctrl+c", "Ctrl+x",  "Ctrl+v", "Ctrl+z", "Ctrl+a",
                                                         "Ctrl+y", "Ctrl+q",  "Ctrl+w", "Ctrl+p", "Ctrl+Shift+p",
                                                         "Ctrl+e", "Ctrl+F4", "Ctrl+F6"};
                if (read && !m_inUse.contains(*read) && !usual.contains(*read) && !WhoTakes(*read))
                    return candidate;
            }
            const bool isLast = each == "z" || each.size() > 1;
            each = std::string(1, isLast ? 'a' : static_cast<char>(each[0] + 1));
        }
        return "Control+Shift+F12";
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

    // Everyone who answers when a tool is chosen, or keeps others from it: who has neither procedure nor a state in
    // which it can be chosen only holds the place.
    [[nodiscard]] std::vector<const Entry*> AnswererOf(const Entry& maker) {
        const Tool* tool = m_plan.ToolOf(*maker.action);
        std::vector<const Entry*> answerers;
        const auto Add = [&](const Entry& entry) {
            const Element& action = *entry.action->element;
            if (!entry.action->procedure.empty() ||
                (BooleanOf(action, "Enabled", true) && BooleanOf(action, "Visible", true)))
                answerers.push_back(&entry);
        };
        if (!tool) {
            Add(maker);
            return answerers;
        }
        if (m_answerers.empty())
            for (Provider* provider : m_model.MenuProviders())
                for (const Entry& entry : provider->entries)
                    if (const Tool* each = m_plan.ToolOf(*entry.action))
                        m_answerers[each].push_back(&entry);
        for (const Entry* entry : m_answerers[tool])
            Add(*entry);
        return answerers;
    }

    void CheckShortcut(const std::string& keys, const std::vector<const Entry*>& makers) {
        for (std::size_t i = 1; i < makers.size(); ++i)
            for (std::size_t j = 0; j < i; ++j) {
                const Entry& first = *makers[j];
                const Entry& second = *makers[i];
                if (first.action == second.action || !MayMeet(AnswererOf(first), AnswererOf(second)))
                    continue;
                m_report.Add(Rule::ShortcutClash, second.At("ShortCutKey"),
                             second.Named() + " and " + first.Named() + " both have the shortcut " +
                                 Quoted(second.ShortCutKey()) + ", which chooses one of both at most",
                             "write another at one of both, such as " + Quoted(FreeShortcut(second, keys)),
                             {{first.At("ShortCutKey"), "the other one"}});
                break;
            }
    }

    Model& m_model;
    const MenuPlan& m_plan;
    Report& m_report;
    std::map<std::string, std::vector<const Entry*>> m_shortcuts;    // with who gives them to a tool
    std::unordered_map<const Action*, const Entry*> m_contextMakers; // of the item at hand
    std::unordered_map<const Tool*, std::vector<const Entry*>> m_answerers;
    std::map<std::string, const Entry*> m_titleLetters;
    std::set<std::string> m_inUse;
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
