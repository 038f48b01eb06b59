#include "analysis/Model.h"

#include "adapters/common/Encoding.h"
#include "adapters/common/Nearest.h"
#include "analysis/Edits.h"
#include "corvane/base/TextIndex.h"

#include <algorithm>
#include <deque>
#include <tuple>
#include <unordered_map>

namespace corvane::check {

namespace {

template <class Act>
void ForEach(const Element& parent, std::string_view groupName, std::string_view name, Act act) {
    for (const Element& group : parent.Children())
        if (group.name == groupName)
            for (const Element& element : group.Children())
                if (element.name == name)
                    act(element);
}

std::size_t CountOf(const Element& parent, std::string_view group, std::string_view name) {
    std::size_t n = 0;
    ForEach(parent, group, name, [&](const Element&) { ++n; });
    return n;
}

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(blanks);
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

constexpr std::size_t longestFinding = 240;
constexpr std::size_t longestCure = 150;
constexpr std::size_t longestValue = 48;

bool IsInside(char c) { // of a character in UTF-8, behind its first byte
    return (static_cast<unsigned char>(c) & 0xC0u) == 0x80;
}

std::size_t LengthOf(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) { return !IsInside(c); }));
}

bool IsVowel(char c) {
    return std::string_view("aeiou").find(c) != std::string_view::npos;
}

// Nothing for a value that is missing or bad.
std::optional<std::string_view> GoodValue(const Element& element, std::string_view attributeName) {
    const Attribute* attribute = element.Find(attributeName);
    return attribute && !attribute->IsBad() ? std::optional(attribute->Value()) : std::nullopt;
}

class Builder {
public:
    Builder(Model& model, Report& report) : m_model(model), m_report(report) {}

    void AddFile(const File& file) {
        const Element& root = *file.root;
        Provider& service = m_model.services.emplace_back();
        Fill(service, ProviderKind::Service, file, root, root.Value("Name"), root.Value("ProgID"));
        Register(m_services, "service", service.name, file, root);
        ForEach(root, "ExplorerItems", "ExplorerItem", [&](const Element& element) {
            Provider& item = m_model.items.emplace_back();
            Fill(item, ProviderKind::ExplorerItem, file, element, element.Value("Name"), element.Value("ProgID"));
            Register(m_items, "explorer item", item.name, file, element);
        });
        ForEach(root, "Windows", "Window", [&](const Element& element) { AddWindow(file, element); });
        ForEach(root, "Preferences", "Page", [&](const Element& element) {
            Fill(m_model.preferencePages.emplace_back(), ProviderKind::PreferencePage, file, element,
                 element.Value("Caption"), element.Value("PageProgID"));
        });
    }

private:
    // What has a name, and the file in which it is.
    struct Named {
        const File* file;
        const Element* element;
    };
    using Names = std::unordered_map<std::string_view, Named, TextHash, TextEqual>;

    void AddWindow(const File& file, const Element& element) {
        Window& window = m_model.windows.emplace_back();
        window.file = &file;
        window.element = &element;
        window.name = element.Value("Name");
        Register(m_windows, "window", window.name, file, element);
        Names pages;
        for (const Element& pageElement : element.Children()) {
            if (pageElement.name != "Page")
                continue;
            Provider& page = m_model.pages.emplace_back();
            Fill(page, ProviderKind::Page, file, pageElement, pageElement.Value("Caption"),
                 pageElement.Value("PageProgID"));
            window.pages.push_back(&page);
            Register(pages, "page", Stored(m_model.memory, {page.progID, ".", page.name}), file, pageElement,
                     "PageProgID", "give it another Caption");
        }
    }

    void Fill(Provider& provider, ProviderKind kind, const File& file, const Element& element, std::string_view name,
              std::string_view progID) {
        provider.kind = kind;
        provider.file = &file;
        provider.element = &element;
        provider.name = name;
        provider.progID = progID;
        m_actions = {};
        provider.actions = {m_model.memory.RoomFor<Action>(CountOf(element, "ActionItems", "ActionItem")), 0};
        ForEach(element, "ActionItems", "ActionItem",
                [&](const Element& actionElement) { AddAction(provider, actionElement); });
        m_entries.clear();
        provider.entries = {m_model.memory.RoomFor<Entry>(CountOf(element, "Menus", "MenuItem")), 0};
        ForEach(element, "Menus", "MenuItem", [&](const Element& entryElement) { AddEntry(provider, entryElement); });
    }

    // There is room for it behind the others.
    template <class T>
    static T* Append(std::span<T>& things, const T& thing) {
        T* added = new (things.data() + things.size()) T(thing);
        things = {things.data(), things.size() + 1};
        return added;
    }

    void AddAction(Provider& provider, const Element& element) {
        const std::string_view name = element.Value("Name");
        Action* action =
            Append(provider.actions, {&element, &provider, name, element.Value("Action"), m_model.actions});
        if (Action** first = m_actions.AddOrFind(name, action, NameOf)) {
            ReportDuplicate("action", name, {provider.file, &element}, {provider.file, (*first)->element}, "Name",
                            "give one of both another name");
            provider.actions = provider.actions.first(provider.actions.size() - 1);
        } else {
            ++m_model.actions;
        }
    }

    void AddEntry(Provider& provider, const Element& element) {
        const Attribute* name = element.Find("ActionItem");
        Action** action = name ? m_actions.Find(name->Value(), NameOf) : nullptr;
        if (name && !action)
            ReportUnknownAction(provider, element, *name);
        const std::optional<std::string_view> type = GoodValue(element, "Type");
        const std::optional<std::string_view> order = GoodValue(element, "PositionOrder");
        if (!action || !type || !order)
            return;
        Entry entry{&element,
                    &provider,
                    *action,
                    MenuTypeOf(*type).value(), // a bad word has gone
                    ToSingle(Variant(*order)),
                    element.Value("Path"),
                    {},
                    m_model.entries};
        entry.key = KeyOf(entry);
        // Services have no keys of their own for their entries.
        if (provider.kind != ProviderKind::Service && !Register(m_entries, "entry", entry.key, *provider.file, element,
                                                                "ActionItem", "remove it, or give it another Path"))
            return;
        Append(provider.entries, entry);
        ++m_model.entries;
    }

    [[nodiscard]] std::string_view KeyOf(const Entry& entry) {
        const std::string_view name = entry.action->name;
        const std::string_view mark = entry.IsButton() ? "Tool." : "";
        if (entry.path.empty() && mark.empty())
            return name;
        return Stored(m_model.memory, {mark, entry.path, entry.path.empty() ? "" : ".", name});
    }

    void ReportUnknownAction(const Provider& provider, const Element& element, const Attribute& name) {
        const std::string_view written = name.Value();
        const auto nearest = NearestAction(provider, written);
        std::vector<Note> notes;
        std::string cure = nearest ? "write " + Quoted(*nearest)
                                   : "add <ActionItem Name=" + Quoted(written) + " Action=\"...\"/> there";
        std::vector<Edit> edits;
        if (nearest)
            edits = {ValueEdit(*provider.file, name, *nearest)};
        if (nearest)
            NameNearest(provider, name, *nearest, cure, notes, edits);
        for (const Action& action : provider.actions) {
            const Attribute* itsName = action.element->Find("Name");
            if (EqualText(Trimmed(action.name), Trimmed(written)) && Trimmed(action.name) != action.name && itsName) {
                notes = {{provider.file->At(itsName->AtValue()), "the Name with the blank"}};
                cure = "remove the blank from Name=" + Quoted(action.name) + ", so that it is " +
                       Quoted(Trimmed(action.name));
                edits = {ValueEdit(*provider.file, *itsName, Trimmed(action.name))};
                break;
            }
            if (!nearest && !written.empty() && EqualText(action.procedure, written)) {
                cure = "write " + Quoted(action.name) + ", the Name of the action that calls it";
                edits = {ValueEdit(*provider.file, name, action.name)};
            }
        }
        if (provider.kind != ProviderKind::Service && !nearest)
            if (const Action* action = m_model.services.back().FindAction(written)) {
                notes = {{provider.file->At(action->element->At("Name")), "an action of the service"}};
                cure = "add <ActionItem Name=" + Quoted(written) +
                       " Action=\"...\"/> there; those of the service don't count";
            }
        Finding& finding = m_report.Add(Rule::UnknownAction, provider.file->At(name.AtValue()),
                                        provider.Named() + " has no action " + Quoted(written) + " for this " +
                                            std::string(element.name) + ", so the whole file is left out (5)",
                                        cure, std::move(notes));
        finding.edits = std::move(edits);
    }

    // How often the element's entries, and their paths, say the name.
    static std::size_t UsesOf(const Element& element, std::string_view name) {
        std::size_t uses = EqualText(element.Value("DefaultAction"), name) ? 1 : 0;
        ForEach(element, "Menus", "MenuItem", [&](const Element& entry) {
            uses += EqualText(entry.Value("ActionItem"), name) ? 1 : 0;
            uses += EqualText(entry.Value("Path"), name) ? 1 : 0;
        });
        return uses;
    }

    // Of two that are as near the one to which nothing refers is likelier to be meant.
    static std::optional<std::string> NearestAction(const Provider& provider, std::string_view written) {
        std::vector<std::string> names;
        std::vector<std::string> unused;
        for (const Action& action : provider.actions) {
            names.emplace_back(action.name);
            if (UsesOf(*provider.element, action.name) == 0)
                unused.emplace_back(action.name);
        }
        const auto nearest = Nearest(names, written);
        const auto free = Nearest(unused, written);
        return free && EditDistance(*free, written) <= EditDistance(*nearest, written) ? free : nearest;
    }

    // The action that is meant. Where several places agree and nothing calls the action by its Name, that is the slip.
    static void NameNearest(const Provider& provider, const Attribute& written, const std::string& nearest,
                            std::string& cure, std::vector<Note>& notes, std::vector<Edit>& edits) {
        for (const Action& action : provider.actions) {
            const Attribute* name = action.element->Find("Name");
            if (action.name != nearest || !name)
                continue;
            notes = {{provider.file->At(name->AtValue()), "the nearest ActionItem"}};
            if (UsesOf(*provider.element, nearest) > 0 || UsesOf(*provider.element, written.Value()) < 2)
                return;
            cure = "write Name=" + Quoted(written.Value()) + " at the ActionItem " + Quoted(nearest);
            edits = {ValueEdit(*provider.file, *name, written.Value())};
            return;
        }
    }

    // False for a name that is there already. The name stays as long as the model does.
    bool Register(Names& names, std::string_view kind, std::string_view name, const File& file, const Element& element,
                  std::string_view attribute = "Name", std::string_view cure = "give one of both another name") {
        const Named thisNamed{&file, &element};
        const auto [it, isNew] = names.try_emplace(name, thisNamed);
        if (!isNew)
            ReportDuplicate(kind, name, thisNamed, it->second, attribute, cure);
        return isNew;
    }

    // What has no name at all has a finding of its own.
    void ReportDuplicate(std::string_view kind, std::string_view name, const Named& second, const Named& first,
                         std::string_view attribute, std::string_view cure) {
        const auto PlaceOf = [&](const Named& o) { return o.file->At(o.element->At(attribute)); };
        if (!name.empty())
            m_report.Add(Rule::DuplicateName, PlaceOf(second),
                         (IsVowel(kind.front()) ? "there is an " : "there is a ") + std::string(kind) + " " +
                             Quoted(name) + " already, so " +
                             (kind == "explorer item" && second.file != first.file
                                  ? "the application doesn't start (457)"
                                  : "the whole file is left out (457)"),
                         std::string(cure), {{PlaceOf(first), "the first one"}});
    }

    static std::string_view NameOf(const Action* action) { return action->name; }

    Model& m_model;
    Report& m_report;
    Names m_services;
    Names m_items;
    Names m_windows;
    TextIndex<Action*> m_actions; // of the provider at hand, as the next
    Names m_entries;
};

} // namespace

Finding& Report::Add(Rule rule, Place place, std::string text, std::string cure, std::vector<Note> notes) {
    cure = CutInTheMiddle(cure, longestCure);
    text = CutInTheMiddle(text, longestFinding - std::min(longestFinding, LengthOf(cure) + 2));
    return m_findings.emplace_back(
        Finding{rule, std::move(place), std::move(text), std::move(cure), std::move(notes), {}});
}

std::vector<Finding> Report::TakeSorted() {
    std::vector<Finding> findings = std::move(m_findings);
    const auto Key = [](const Finding& o) { return std::tie(o.place.file, o.place.at, o.rule, o.text); };
    std::stable_sort(findings.begin(), findings.end(),
                     [&](const Finding& a, const Finding& b) { return Key(a) < Key(b); });
    findings.erase(std::unique(findings.begin(), findings.end(),
                               [&](const Finding& a, const Finding& b) { return Key(a) == Key(b); }),
                   findings.end());
    return findings;
}

bool Action::PassesItself() const {
    return BooleanOf(*element, "PassActionItemParam", false);
}

std::string Entry::PositionKey() const {
    const std::string order = ToText(positionOrder);
    return IsTitle() || IsOfContextMenu() ? order : std::string(path) + "." + order;
}

Place Entry::At(std::string_view attribute) const {
    return provider->file->At(element->At(attribute));
}

std::string Entry::Named() const {
    const bool title = IsTitle() || type == MenuType::fwContextMenuTitle;
    return (title ? "the title " : IsButton() ? "the button " : "the entry ") + Quoted(key);
}

Action* Provider::FindAction(std::string_view actionName) {
    for (Action& action : actions)
        if (EqualText(action.name, actionName))
            return &action;
    return nullptr;
}

std::string Provider::Named() const {
    switch (kind) {
    case ProviderKind::Service:
        return "the service " + Quoted(name);
    case ProviderKind::ExplorerItem:
        return "the explorer item " + Quoted(name);
    case ProviderKind::Page:
    case ProviderKind::PreferencePage:
        break;
    }
    return "the page " + Quoted(name.empty() ? progID : name);
}

// Of all explorer items one is current, and of all pages one is in front.
bool Provider::MayMeet(const Provider& other) const {
    return this == &other || kind == ProviderKind::Service || kind != other.kind;
}

std::vector<Provider*> Model::MenuProviders() {
    std::vector<Provider*> providerList;
    for (auto* providers : {&services, &items, &pages})
        for (Provider& provider : *providers)
            providerList.push_back(&provider);
    return providerList;
}

void BuildModel(Model& model, Report& report) {
    Builder builder(model, report);
    for (const auto& file : model.files)
        if (file->active)
            builder.AddFile(*file);
}

bool BooleanOf(const Element& element, std::string_view attribute, bool isDefault) {
    const std::optional<std::string_view> value = GoodValue(element, attribute);
    return value ? ToBoolean(Variant(*value)) : isDefault;
}

std::string Quoted(std::string_view text) {
    return "\"" + CutInTheMiddle(text, longestValue) + "\"";
}

std::string CutInTheMiddle(std::string_view text, std::size_t most) {
    if (text.size() <= most || LengthOf(text) <= most)
        return std::string(text);
    const std::size_t atEnd = (most - 1) / 2;
    const std::string_view first = FirstCharacters(text, most - 1 - atEnd);
    std::size_t last = text.size();
    for (std::size_t n = 0; n < atEnd; ++n)
        while (last > 0 && IsInside(text[--last])) {
        }
    return std::string(first) + "\u2026" + std::string(text.substr(last));
}

std::string WriteInstead(std::span<const std::string> names, std::string_view written, const std::string& otherwise) {
    const auto nearest = Nearest(names, written);
    return nearest ? "write " + Quoted(*nearest) : otherwise;
}

} // namespace corvane::check
