#include "analysis/Arrange.h"

#include "adapters/common/Encoding.h"
#include "adapters/common/Nearest.h"
#include "adapters/common/Paths.h"
#include "analysis/Application.h"
#include "analysis/Edits.h"
#include "analysis/MenuPlan.h"
#include "analysis/Numbers.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <sstream>

namespace corvane::check {

namespace {

constexpr std::string_view separatorLine = "---";
constexpr std::string_view toolbarBars = "Toolbars.";

// One line of an outline, with all entries that share it. The one read first gives it its separators.
struct Item {
    std::string key;
    std::vector<const Entry*> entries;
    bool isLost = false;
};

struct Section {
    enum class Kind { Bar, Menu, Toolbar, Context } kind;
    std::string heading;
    const Entry* title = nullptr; // of a menu
    std::vector<Item> items;      // as they come out now
};

bool Separates(const Item& item, std::string_view where) {
    return EqualText(item.entries.front()->element->Value("Separator"), where);
}

// In hundredths, as two decimals count.
std::int64_t Hundredths(const Entry& entry) {
    return std::llround(static_cast<double>(entry.positionOrder) * 100);
}

std::string TextOfHundredths(std::int64_t hundredths) {
    return ToText(static_cast<Single>(static_cast<double>(hundredths) / 100));
}

class Arranger {
public:
    explicit Arranger(const Options& options) : m_plan(Read(options)) {
        AddBars();
        for (Provider& item : m_model.items)
            AddContext(item);
    }

    [[nodiscard]] std::string Text(bool asMeant) {
        std::string text =
            "# Move lines within their menu, add or remove lines \"---\", and give this back to corvane arrange.\n";
        for (Section& section : m_sections) {
            if (asMeant)
                std::stable_sort(section.items.begin(), section.items.end(),
                                 [&](const Item& first, const Item& second) {
                                     return MeantRank(section, first) < MeantRank(section, second);
                                 });
            text += section.heading + "\n";
            bool isSeparated = false;
            const bool hasLines = HasLines(section);
            for (const Item& item : section.items) {
                if (hasLines && (isSeparated || Separates(item, "Before")))
                    text += "  " + std::string(separatorLine) + "\n";
                text += "  " + Padded(item.key) + Comment(item) + "\n";
                isSeparated = Separates(item, "After");
            }
            if (isSeparated && hasLines)
                text += "  " + std::string(separatorLine) + "\n";
        }
        return text;
    }

    static void AddPlace(OutlineLine& line, const File& file, const Element& element) {
        line.places.push_back(file.At(element.At()));
        const Spot last = element.attributes.empty() ? element.At() : element.attributes.back().AtValue();
        line.lastLines.push_back(file.At(last).at.line);
    }

    [[nodiscard]] std::vector<OutlineLine> Lines() const {
        std::vector<OutlineLine> lines;
        for (const Section& section : m_sections) {
            const bool hasLines = HasLines(section);
            bool isSeparated = false;
            for (const Item& item : section.items) {
                if (hasLines && (isSeparated || Separates(item, "Before")))
                    lines.push_back({section.heading, {}, {}, false, {}});
                OutlineLine line{
                    section.heading, item.key, std::string(item.entries.front()->Caption()), item.isLost, {}};
                for (const Entry* entry : item.entries)
                    AddPlace(line, *entry->provider->file, *entry->element);
                for (const Entry* entry : item.entries)
                    AddPlace(line, *entry->provider->file, *entry->action->element);
                lines.push_back(std::move(line));
                isSeparated = Separates(item, "After");
            }
            if (isSeparated && hasLines)
                lines.push_back({section.heading, {}, {}, false, {}});
        }
        return lines;
    }

    std::vector<FixedFile> Apply(const std::string& outline, const std::set<std::string>& only) {
        ReadOutline(outline);
        for (const auto& file : m_model.files)
            if (only.empty() || std::any_of(only.begin(), only.end(),
                                            [&](const std::string& name) { return EqualText(name, file->name); }))
                m_free.insert(file.get());
        for (const std::string& name : only)
            if (std::none_of(m_model.files.begin(), m_model.files.end(),
                             [&](const auto& file) { return EqualText(file->name, name); }))
                Refuse(0, "there is no definition file " + Quoted(name));
        for (const Section& section : m_sections)
            for (const Item& item : section.items)
                if (item.entries.front()->IsTitle())
                    m_titleOrders[item.entries.front()] = Hundredths(*item.entries.front());
        // From the menu bar down, as the numbers of a menu's submenus hang on that of the menu.
        std::stable_sort(m_sections.begin(), m_sections.end(),
                         [](const Section& first, const Section& second) { return DepthOf(first) < DepthOf(second); });
        for (const Section& section : m_sections)
            Number(section);
        std::vector<FixedFile> files;
        for (auto& [file, edits] : m_edits)
            files.push_back({file->path, file->bytes, Edited(file->bytes, edits)});
        std::sort(files.begin(), files.end(), [](const auto& a, const auto& b) { return a.path < b.path; });
        return files;
    }

private:
    [[noreturn]] static void Refuse(std::size_t number, const std::string& why) {
        Fail(FailureNumber::InvalidProcedureCall,
             (number == 0 ? std::string() : "line " + std::to_string(number) + " of the outline: ") + why, "corvane");
    }

    Model& Read(const Options& options) {
        ReadApplication(m_model, options.application, m_report, options.buffers);
        BuildModel(m_model, m_report);
        return m_model;
    }

    static std::size_t DepthOf(const Section& section) {
        if (section.kind != Section::Kind::Menu)
            return section.kind == Section::Kind::Bar ? 0 : 100;
        return 1 + static_cast<std::size_t>(std::count(section.heading.begin(), section.heading.end(), '.'));
    }

    static bool HasLines(const Section& section) {
        return section.kind != Section::Kind::Toolbar && section.kind != Section::Kind::Bar;
    }

    static std::string Padded(const std::string& key) {
        constexpr std::size_t width = 36;
        return key + std::string(key.size() < width ? width - key.size() : 1, ' ');
    }

    static std::string Comment(const Item& item) {
        const Entry& entry = *item.entries.front();
        return "  # " + std::string(entry.Caption()) + (entry.Caption().empty() ? "" : ", ") +
               entry.provider->file->name + (item.isLost ? ", doesn't appear now" : "");
    }

    // By the number alone: of a menu by itself.
    static std::int64_t MeantRank(const Section& section, const Item& item) {
        const Entry& entry = *item.entries.front();
        const bool isContextTitle =
            section.kind == Section::Kind::Context && entry.type == MenuType::fwContextMenuTitle;
        return isContextTitle ? std::llround(static_cast<double>(Hundredths(entry)) / 100) : Hundredths(entry);
    }

    void AddBars() {
        for (const auto& [name, bar] : m_plan.Bars()) {
            const bool isToolbar = bar.name.starts_with(toolbarBars);
            const bool isMain = EqualText(bar.name, "Main");
            if (!isToolbar && !isMain && !bar.title)
                continue;
            Section section;
            section.kind = isToolbar ? Section::Kind::Toolbar : isMain ? Section::Kind::Bar : Section::Kind::Menu;
            section.heading = isToolbar ? "toolbar " + bar.name.substr(toolbarBars.size())
                              : isMain  ? "menu bar"
                                        : "menu " + bar.name;
            section.title = bar.title;
            for (const Slot& slot : bar.slots)
                for (const Entry* entry : slot.entries.All())
                    AddTo(section, *entry, false);
            AddLost(section, isMain ? std::string() : isToolbar ? bar.name.substr(toolbarBars.size()) : bar.name);
            if (!section.items.empty())
                m_sections.push_back(std::move(section));
        }
    }

    // What has the path and stands nowhere.
    void AddLost(Section& section, const std::string& path) {
        for (const Placing& placing : m_plan.Placings()) {
            const Entry& entry = *placing.entry;
            if (!placing.bar && entry.IsButton() == (section.kind == Section::Kind::Toolbar) &&
                EqualText(entry.path, path))
                AddTo(section, entry, true);
        }
    }

    static void AddTo(Section& section, const Entry& entry, bool isLost) {
        const std::string key(entry.key);
        const auto there = std::find_if(section.items.begin(), section.items.end(),
                                        [&](const Item& item) { return EqualText(item.key, key); });
        if (there != section.items.end()) {
            there->entries.push_back(&entry);
            return;
        }
        Item item{key, {&entry}, isLost};
        auto behind = section.items.end();
        if (isLost) // after the last one that its number doesn't come before
            while (behind != section.items.begin() &&
                   std::prev(behind)->entries.front()->positionOrder > entry.positionOrder)
                --behind;
        section.items.insert(behind, std::move(item));
    }

    void AddContext(Provider& provider) {
        std::vector<std::pair<std::int64_t, const Entry*>> ranks;
        for (const Entry& entry : provider.entries)
            if (entry.IsOfContextMenu())
                ranks.emplace_back(ContextRank(entry).value_or(0), &entry);
        std::stable_sort(ranks.begin(), ranks.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
        Section section;
        section.kind = Section::Kind::Context;
        section.heading = "context menu " + provider.name;
        for (const auto& [rank, entry] : ranks)
            AddTo(section, *entry, false);
        if (!section.items.empty())
            m_sections.push_back(std::move(section));
    }

    struct Line {
        const Item* item; // nothing for a separator
        std::size_t number;
    };

    void ReadOutline(const std::string& outline) {
        std::istringstream stream(outline);
        std::string text;
        Section* section = nullptr;
        std::vector<std::string> headings;
        for (const Section& each : m_sections)
            headings.push_back(each.heading);
        for (std::size_t number = 1; std::getline(stream, text); ++number) {
            if (text.ends_with('\r'))
                text.pop_back();
            const bool isIndented = text.starts_with(' ') || text.starts_with('\t');
            if (const std::size_t comment = text.find("  # "); comment != std::string::npos)
                text.resize(comment);
            const std::size_t begin = text.find_first_not_of(" \t");
            if (begin == std::string::npos || text[begin] == '#')
                continue;
            text = text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
            if (!isIndented) {
                const auto found = std::find_if(m_sections.begin(), m_sections.end(),
                                                [&](const Section& each) { return EqualText(each.heading, text); });
                if (found == m_sections.end())
                    Refuse(number, "there is no " + Quoted(text) + Hint(headings, text));
                section = &*found;
                if (m_wanted.contains(section->heading))
                    Refuse(number, Quoted(text) + " is there twice");
                m_wanted[section->heading];
            } else if (!section) {
                Refuse(number, "a menu has to be named before its entries, as in \"menu File\"");
            } else {
                m_wanted[section->heading].push_back(
                    {text == separatorLine ? nullptr : &ItemOf(*section, text, number), number});
            }
        }
        if (m_wanted.empty())
            Refuse(0,
                   "the outline names no menu; write one as corvane arrange prints it, such as \"menu File\", with its "
                   "entries below");
        for (const Section& each : m_sections)
            for (const Item& item : each.items)
                if (const auto wanted = m_wanted.find(each.heading);
                    wanted != m_wanted.end() && std::none_of(wanted->second.begin(), wanted->second.end(),
                                                             [&](const Line& one) { return one.item == &item; }))
                    Refuse(0, Quoted(item.key) + " of " + Quoted(each.heading) + " is missing in the outline");
    }

    const Item& ItemOf(const Section& section, const std::string& key, std::size_t number) {
        std::vector<std::string> keys;
        for (const Item& item : section.items) {
            keys.push_back(item.key);
            if (!EqualText(item.key, key))
                continue;
            for (const Line& before : m_wanted[section.heading])
                if (before.item == &item)
                    Refuse(number, Quoted(key) + " is there twice");
            return item;
        }
        for (const Section& other : m_sections)
            for (const Item& item : other.items)
                if (EqualText(item.key, key))
                    Refuse(number, Quoted(key) + " belongs to " + Quoted(other.heading) +
                                       ": its Path says so, and arranging changes none");
        Refuse(number, "there is no " + Quoted(key) + " in " + Quoted(section.heading) + Hint(keys, key));
    }

    static std::string Hint(const std::vector<std::string>& names, const std::string& name) {
        const auto nearest = Nearest(names, name);
        return nearest ? "; did you mean " + Quoted(*nearest) + "?" : std::string();
    }

    [[nodiscard]] bool IsFree(const Item& item) const {
        return std::all_of(item.entries.begin(), item.entries.end(),
                           [&](const Entry* entry) { return m_free.contains(entry->provider->file); });
    }

    void Number(const Section& section) {
        const auto wanted = m_wanted.find(section.heading);
        if (wanted == m_wanted.end())
            return;
        std::vector<const Item*> items;
        for (const Line& each : wanted->second)
            if (each.item)
                items.push_back(each.item);
        std::vector<NumberedPlace> places;
        const bool isBar = section.kind == Section::Kind::Bar;
        for (const Item* item : items) {
            const Entry& entry = *item->entries.front();
            NumberedPlace place;
            place.order = Hundredths(entry);
            place.isFixed = !IsFree(*item);
            place.weight = static_cast<int>(item->entries.size());
            place.isWhole = isBar || (entry.type == MenuType::fwContextMenuTitle);
            place.isKeepable = std::all_of(item->entries.begin(), item->entries.end(),
                                           [&](const Entry* each) { return Hundredths(*each) == place.order; });
            if (section.kind == Section::Kind::Context)
                place.factor = entry.type == MenuType::fwContextMenuTitle ? 1 : 100;
            if (entry.IsTitle())
                Bound(section, entry, place);
            places.push_back(place);
        }
        const auto orders = section.kind == Section::Kind::Toolbar ? NumberTexts(places) : NumberPlaces(places);
        if (!orders)
            Refuse(wanted->second.empty() ? 0 : wanted->second.front().number,
                   "the order of " + Quoted(section.heading) + " can't come out without a change of other files");
        for (std::size_t i = 0; i < items.size(); ++i) {
            for (const Entry* entry : items[i]->entries)
                if (Hundredths(*entry) != (*orders)[i])
                    Change(*entry, *entry->element->Find("PositionOrder"), TextOfHundredths((*orders)[i]));
            if (items[i]->entries.front()->IsTitle())
                m_titleOrders[items[i]->entries.front()] = (*orders)[i];
        }
        if (section.kind == Section::Kind::Menu || section.kind == Section::Kind::Context)
            Separate(wanted->second);
    }

    // A title below another needs a larger number than that, and no two titles have one.
    void Bound(const Section& section, const Entry& title, NumberedPlace& place) const {
        if (section.title)
            if (const auto above = m_titleOrders.find(section.title); above != m_titleOrders.end())
                place.least = above->second + 1;
        for (const auto& [other, order] : m_titleOrders)
            if (other != &title)
                place.taken.insert(order / 100);
        place.isWhole = true;
        constexpr std::int64_t largest = 2147 * 100;
        place.most = largest;
    }

    void Separate(const std::vector<Line>& lines) {
        const Item* before = nullptr;
        bool isWanted = false;
        for (const Line& each : lines) {
            if (!each.item) {
                isWanted = true;
                continue;
            }
            DrawLine(before, each.item, isWanted, each.number);
            before = each.item;
            isWanted = false;
        }
        if (before)
            DrawLine(before, nullptr, isWanted, lines.back().number);
    }

    // A line between two entries, in front of the first or behind the last.
    void DrawLine(const Item* before, const Item* after, bool isWanted, std::size_t number) {
        const bool isAfter = before && Separates(*before, "After");
        const bool isBefore = after && Separates(*after, "Before");
        if (isWanted == (isAfter || isBefore))
            return;
        if (!isWanted) {
            if (isAfter)
                Remove(*before->entries.front(), number);
            if (isBefore)
                Remove(*after->entries.front(), number);
            return;
        }
        const Entry* free = after && m_free.contains(after->entries.front()->provider->file) ? after->entries.front()
                            : before && m_free.contains(before->entries.front()->provider->file)
                                ? before->entries.front()
                                : nullptr;
        if (!free)
            Refuse(number, "a line here needs a change of another file");
        const bool isOfAfter = after && free == after->entries.front();
        m_edits[free->provider->file].push_back(
            SetEdit(*free->provider->file, *free->element, "Separator", isOfAfter ? "Before" : "After"));
    }

    void Remove(const Entry& entry, std::size_t number) {
        if (!m_free.contains(entry.provider->file))
            Refuse(number, "the line beside " + Quoted(entry.key) + " is asked for by another file");
        m_edits[entry.provider->file].push_back(RemovalEdit(*entry.provider->file, *entry.element->Find("Separator")));
    }

    void Change(const Entry& entry, const Attribute& attribute, const std::string& value) {
        m_edits[entry.provider->file].push_back(ValueEdit(*entry.provider->file, attribute, value));
    }

    Model m_model;
    Report m_report;
    MenuPlan m_plan;
    std::vector<Section> m_sections;
    std::map<std::string, std::vector<Line>> m_wanted; // by heading
    std::set<const File*> m_free;
    std::map<const Entry*, std::int64_t> m_titleOrders;
    std::map<const File*, std::vector<Edit>> m_edits;
};

std::string WithoutComments(const std::string& outline) {
    std::istringstream stream(outline);
    std::string text;
    std::string plain;
    for (std::string each; std::getline(stream, each);) {
        if (const std::size_t comment = each.find("  # "); comment != std::string::npos)
            each.resize(comment);
        const std::size_t end = each.find_last_not_of(" \t\r");
        if (end == std::string::npos || each.front() == '#')
            continue;
        plain += each.substr(0, end + 1) + "\n";
    }
    return plain;
}

// The sections of an outline by their headings.
std::map<std::string, std::string> SectionsOf(const std::string& outline) {
    std::istringstream stream(WithoutComments(outline));
    std::map<std::string, std::string> sections;
    std::string* section = nullptr;
    for (std::string text; std::getline(stream, text);)
        if (!text.starts_with(' '))
            section = &sections[FoldText(text)];
        else if (section)
            *section += FoldText(text) + "\n";
    return sections;
}

} // namespace

std::string Outline(const Options& options) {
    return Arranger(options).Text(false);
}

bool OutlineLine::IsAt(const Place& place) const {
    for (std::size_t i = 0; i < places.size(); ++i)
        if (places[i].file == place.file && place.at.line >= places[i].at.line && place.at.line <= lastLines[i])
            return true;
    return false;
}

std::vector<OutlineLine> OutlineLines(const Options& options) {
    return Arranger(options).Lines();
}

std::string MeantOutline(const Options& options) {
    return Arranger(options).Text(true);
}

std::string OutlineText(std::string_view bytes) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (bytes.find('\0') != std::string_view::npos)
        Fail(FailureNumber::InvalidProcedureCall, "the outline is neither UTF-8 nor Windows-1252; save it as UTF-8",
             "corvane");
    if (bytes.starts_with(mark))
        bytes.remove_prefix(mark.size());
    return IsUtf8(bytes) ? std::string(bytes) : DecodeWindows1252(bytes);
}

std::vector<FixedFile> Arrange(const Options& options, const std::string& outline, const std::set<std::string>& only) {
    auto files = Arranger(options).Apply(outline, only);
    Options arranged = options;
    for (const FixedFile& file : files)
        arranged.buffers[file.path] = file.after;
    const auto now = SectionsOf(Outline(arranged));
    for (const auto& [heading, text] : SectionsOf(outline))
        if (const auto section = now.find(heading); section == now.end() || section->second != text)
            Fail(FailureNumber::InvalidProcedureCall,
                 "the order of \"" + heading + "\" can't come out: other menus have the numbers that it needs",
                 "corvane");
    return files;
}

std::optional<std::string> FirstOutOfOrder(const std::string& outline, const std::string& bars) {
    std::map<std::string, std::map<std::string, std::size_t>> places; // by folded band and tool
    std::istringstream stream(bars);
    std::size_t number = 0;
    for (std::string text; std::getline(stream, text); ++number)
        if (const std::size_t colon = text.find(": "); colon != std::string::npos)
            places[FoldText(text.substr(0, colon))].try_emplace(FoldText(text.substr(colon + 2)), number);
        else
            return text;
    for (const auto& [heading, text] : SectionsOf(outline)) {
        const bool isMenu = heading.starts_with("menu ") && heading != "menu bar";
        if (!isMenu && heading != "menu bar")
            continue; // tools of toolbars and context menus have names of other places
        const auto& band = places[heading == "menu bar" ? "main" : heading.substr(5)];
        std::istringstream lines(text);
        std::string before;
        for (std::string key; std::getline(lines, key);) {
            key.erase(0, key.find_first_not_of(" \t"));
            const auto place = band.find(key);
            if (key == separatorLine || place == band.end())
                continue;
            if (!before.empty() && band.at(before) > place->second)
                return Quoted(before) + " comes after " + Quoted(key);
            before = key;
        }
    }
    return std::nullopt;
}

} // namespace corvane::check
