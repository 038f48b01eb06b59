// Captions, tips and names as users read and write them.
#include "adapters/common/Nearest.h"
#include "analysis/Checks.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <cctype>
#include <map>

namespace corvane::check {

namespace {

constexpr std::string_view toolbarBand = "Toolbars.";
constexpr std::string_view usualToolbar = "Standard"; // where no other name is needed
constexpr std::string_view ellipsis = "\u2026";

std::string_view WithoutBlanksAround(std::string_view text) {
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.front())))
        text.remove_prefix(1);
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back())))
        text.remove_suffix(1);
    return text;
}

bool IsLetter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || static_cast<unsigned char>(c) >= 0x80;
}

// What is wrong with the marks of a caption, and the caption as it was probably meant.
struct MarkFault {
    std::string text;
    std::string meant;
};

std::string Without(std::string text, char mark) {
    std::erase(text, mark);
    return text;
}

std::optional<MarkFault> SignFault(const std::string& caption) {
    for (std::size_t i = caption.find('&'); i != std::string::npos; i = caption.find('&', i + 1)) {
        if (i + 1 < caption.size() && caption[i + 1] == '&') {
            ++i;
            continue;
        }
        // "&Open" and "E&xit" mark a letter, "Q&A", "R&D" and "Save & Exit" mean the sign.
        const bool isLower = i + 1 < caption.size() && std::islower(static_cast<unsigned char>(caption[i + 1]));
        const bool isMark = caption.find('#') == std::string::npos && i + 1 < caption.size() &&
                            IsLetter(caption[i + 1]) && (i == 0 || caption[i - 1] == ' ' || isLower);
        std::string meant = caption;
        meant.replace(i, 1, isMark ? "#" : "&&");
        return MarkFault{"a single \"&\" isn't shown: it marks the letter behind it, as \"#\" does", meant};
    }
    return std::nullopt;
}

std::optional<MarkFault> FaultOfMarks(const std::string& caption) {
    const std::size_t first = caption.find('#');
    if (first == std::string::npos)
        return SignFault(caption);
    if (caption.find("##") != std::string::npos) {
        std::string meant = caption;
        meant.replace(meant.find("##"), 2, "#");
        return MarkFault{"\"##\" shows the sign & and marks no letter", meant};
    }
    if (caption.find('#', first + 1) != std::string::npos) {
        std::string meant = Without(caption.substr(first + 1), '#');
        return MarkFault{"only one letter can be marked, and there are several \"#\"",
                         caption.substr(0, first + 1) + meant};
    }
    if (first + 1 == caption.size())
        return MarkFault{"the \"#\" at the end marks no letter, and is shown as \"&\" or not at all",
                         Without(caption, '#')};
    const char marked = caption[first + 1];
    if (std::isspace(static_cast<unsigned char>(marked))) {
        const std::size_t letter = caption.find_first_not_of(' ', first + 1);
        std::string meant = caption.substr(0, first);
        if (letter != std::string::npos)
            meant += (meant.empty() || meant.ends_with(' ') ? "#" : " #") + caption.substr(letter);
        return MarkFault{"the \"#\" is before a blank, so no key opens the entry", meant};
    }
    if (!IsLetter(marked))
        return MarkFault{"the \"#\" marks " + Quoted(caption.substr(first + 1, 1)) + ", which isn't a letter or digit",
                         Without(caption, '#')};
    return SignFault(caption);
}

// What is left of a caption when one does not look closely.
std::string Plain(std::string_view caption) {
    std::string text = FoldText(caption);
    std::erase_if(text, [](char c) { return c == '#' || c == '&'; });
    for (std::string_view dots : {ellipsis, std::string_view("...")})
        if (text.ends_with(dots))
            text.resize(text.size() - dots.size());
    return std::string(WithoutBlanksAround(text));
}

// One letter apart, or differing in blanks and hyphens alone. Endings such as "Plot" and "Plots", "Bar 1" and "Bar 2"
// are two names.
bool AreAlike(std::string_view first, std::string_view second) {
    const auto Core = [](std::string_view name) {
        std::string core = FoldText(name);
        std::erase_if(core, [](char c) { return c == ' ' || c == '-' || c == '_' || c == '.'; });
        return core;
    };
    const std::string a = Core(first);
    const std::string b = Core(second);
    if (a == b)
        return true;
    const auto [shorter, longer] = std::minmax(a, b, [](const auto& x, const auto& y) { return x.size() < y.size(); });
    constexpr std::size_t shortest = 4;
    if (shorter.size() < shortest || longer.starts_with(shorter))
        return false;
    const auto WithoutDigits = [](std::string text) {
        std::erase_if(text, [](char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; });
        return text;
    };
    return WithoutDigits(a) != WithoutDigits(b) && EditDistance(a, b) == 1;
}

class TextCheck {
public:
    TextCheck(Model& model, const MenuPlan& plan, Report& report) : m_model(model), m_plan(plan), m_report(report) {}

    void Check() {
        for (const auto& [name, bar] : m_plan.Bars())
            for (const Slot& slot : bar.slots)
                if (!slot.entries.empty())
                    CheckCaption(*slot.entries.front());
        for (Provider* provider : m_model.MenuProviders())
            for (const Entry& entry : provider->entries) {
                if (entry.IsOfContextMenu() && provider->kind == ProviderKind::ExplorerItem)
                    CheckCaption(entry);
                CheckMarks(*provider->file, *entry.element, "Caption");
                CheckSign(*provider->file, *entry.element, "Tip", "a Tip");
                CheckTip(entry);
            }
        for (Provider* provider : m_model.MenuProviders())
            for (const Action& action : provider->actions)
                CheckSign(*provider->file, *action.element, "Description", "a Description");
        CheckPreferencePages();
        for (const Window& window : m_model.windows)
            CheckWindow(window);
        CheckToolbars();
    }

private:
    void CheckCaption(const Entry& entry) {
        if (!WithoutBlanksAround(entry.Caption()).empty())
            return;
        if (entry.IsButton() && !entry.action->element->Value("Image").empty())
            return; // its picture is enough
        m_report.Add(Rule::MissingCaption, entry.At("Caption"),
                     entry.Named() + " has no Caption, so users read the action's name, " + Quoted(entry.action->name),
                     "write Caption=\"" + std::string(entry.IsButton() ? "" : "#") + std::string(entry.action->name) +
                         "\", in the words of the user");
    }

    void CheckMarks(const File& file, const Element& element, const char* attribute) {
        const Attribute* caption = element.Find(attribute);
        if (!caption || caption->Value().find_first_of("#&") == std::string_view::npos)
            return;
        const std::string value(caption->Value());
        if (const auto fault = FaultOfMarks(value))
            m_report
                .Add(Rule::BadMnemonic, file.At(caption->AtValue()),
                     "in the Caption " + Quoted(value) + " " + fault->text, "write " + Quoted(fault->meant))
                .edits = {ValueEdit(file, *caption, fault->meant)};
    }

    // The texts of windows and pages have no marks.
    void CheckWindow(const Window& window) {
        CheckSign(*window.file, *window.element, "Caption", "the Caption of a window");
        for (const Provider* page : window.pages) {
            CheckSign(*page->file, *page->element, "Caption", "the Caption of a page");
            if (window.pages.size() > 1 && page->name.empty())
                m_report.Add(Rule::MissingCaption, page->file->At(page->element->At()),
                             page->Named() + " has no Caption, so its tab in the window " + Quoted(window.name) +
                                 " is empty",
                             "write Caption=\"...\"");
        }
    }

    // Each page of the preferences has an entry in their list.
    void CheckPreferencePages() {
        for (const Provider& page : m_model.preferencePages) {
            CheckSign(*page.file, *page.element, "Caption", "the Caption of a page");
            if (m_model.preferencePages.size() > 1 && WithoutBlanksAround(page.name).empty())
                m_report.Add(Rule::MissingCaption, page.file->At(page.element->At("Caption")),
                             "the page " + Quoted(page.progID) +
                                 " has no Caption, so users can't tell it from the other pages of the preferences",
                             "write Caption=\"...\"");
        }
    }

    void CheckSign(const File& file, const Element& element, std::string_view name, const char* where) {
        const Attribute* attribute = element.Find(name);
        const std::size_t mark = attribute ? attribute->Value().find('#') : std::string_view::npos;
        if (mark == std::string_view::npos)
            return;
        const std::string value(attribute->Value());
        if (mark + 1 >= value.size() || !IsLetter(value[mark + 1]) ||
            std::isdigit(static_cast<unsigned char>(value[mark + 1])) || (mark > 0 && value[mark - 1] == ' '))
            return; // "C#", "Run #2", "Pick a #tag" mean the sign
        m_report
            .Add(Rule::BadMnemonic, file.At(attribute->AtValue()),
                 std::string(where) + " has no marks, so users read the sign in " + Quoted(value),
                 "write " + Quoted(Without(value, '#')))
            .edits = {ValueEdit(file, *attribute, Without(value, '#'))};
    }

    void CheckTip(const Entry& entry) {
        const Attribute* tip = entry.IsButton() ? entry.element->Find("Tip") : nullptr;
        if (!tip || tip->Value().empty() || Plain(tip->Value()) != Plain(entry.Caption()))
            return;
        const std::string_view description = entry.action->element->Value("Description");
        m_report.Add(Rule::TipRepeatsCaption, entry.At("Tip"),
                     "the Tip of " + entry.Named() + " says no more than its Caption, " + Quoted(entry.Caption()),
                     description.empty() ? "write what the command does, or remove Tip"
                                         : "write Tip=" + Quoted(description));
    }

    // A toolbar comes into being with its first button, so a slip in a Path makes one more.
    void CheckToolbars() {
        std::vector<const Bar*> toolbars;
        for (const auto& [name, bar] : m_plan.Bars())
            if (bar.name.starts_with(toolbarBand) && !bar.slots.empty() && bar.slots.front().entries.front())
                toolbars.push_back(&bar);
        if (!m_plan.FindBar(std::string(toolbarBand) + std::string(usualToolbar)))
            for (const Bar* bar : toolbars)
                CheckUsual(*bar);
        for (const Bar* bar : toolbars)
            for (const Bar* other : toolbars)
                if (IsSlip(*bar, *other)) {
                    const Entry& entry = *bar->slots.front().entries.front();
                    const std::string meant = other->name.substr(toolbarBand.size());
                    std::vector<Edit> edits = PathEdits(*bar, meant);
                    const bool isClear = bar->slots.size() < other->slots.size() || EqualText(meant, usualToolbar);
                    if (!isClear)
                        edits.clear();
                    m_report
                        .Add(Rule::SimilarName, entry.At("Path"),
                             "there are two toolbars, " + Quoted(entry.path) + " and " + Quoted(meant) +
                                 "; one of both names seems to be a slip",
                             isClear ? "write " + Quoted(meant)
                                     : "write one name for both, " + Quoted(entry.path) + " or " + Quoted(meant),
                             {{other->slots.front().entries.front()->At("Path"), "the other one"}})
                        .edits = std::move(edits);
                    break;
                }
    }

    // A toolbar that is called nearly as the one that most applications have.
    void CheckUsual(const Bar& bar) {
        const Entry& entry = *bar.slots.front().entries.front();
        if (AreAlike(entry.path, usualToolbar))
            m_report
                .Add(Rule::SimilarName, entry.At("Path"),
                     "the toolbar " + Quoted(entry.path) + " has nearly the name of the usual one, " +
                         Quoted(usualToolbar) + ", which seems to be a slip",
                     "write " + Quoted(usualToolbar))
                .edits = PathEdits(bar, usualToolbar);
    }

    // All buttons of the toolbar go to another one.
    static std::vector<Edit> PathEdits(const Bar& bar, std::string_view meant) {
        std::vector<Edit> edits;
        for (const Slot& slot : bar.slots)
            for (const Entry* each : slot.entries.All())
                if (const Attribute* path = each->element->Find("Path"))
                    edits.push_back(ValueEdit(*each->provider->file, *path, meant));
        return edits;
    }

    // Fewer buttons, or as many and read later; one letter apart, or in blanks, hyphens and the like.
    static bool IsSlip(const Bar& bar, const Bar& other) {
        const auto HasBlanks = [](const Bar& each) { // which has a finding of its own
            const std::string_view name = std::string_view(each.name).substr(toolbarBand.size());
            return WithoutBlanksAround(name) != name;
        };
        if (&bar == &other || HasBlanks(bar) || HasBlanks(other))
            return false;
        const std::size_t count = bar.slots.size();
        const std::size_t otherCount = other.slots.size();
        const auto IsUsual = [](const Bar& each) {
            return EqualText(std::string_view(each.name).substr(toolbarBand.size()), usualToolbar);
        };
        const bool isFirst = bar.slots.front().entries.front()->number < other.slots.front().entries.front()->number;
        if (count > otherCount || (count == otherCount && (IsUsual(bar) || (isFirst && !IsUsual(other)))))
            return false;
        return AreAlike(std::string_view(bar.name).substr(toolbarBand.size()),
                        std::string_view(other.name).substr(toolbarBand.size()));
    }

    Model& m_model;
    const MenuPlan& m_plan;
    Report& m_report;
};

} // namespace

void CheckTexts(Model& model, const MenuPlan& plan, Report& report) {
    TextCheck(model, plan, report).Check();
}

} // namespace corvane::check
