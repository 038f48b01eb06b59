// The forms of pages: whether each can be read, is complete, and fits the class that it is bound to.
#include "adapters/catalogue/Catalogue.h"
#include "adapters/common/Nearest.h"
#include "adapters/common/Paths.h"
#include "adapters/plugins/PluginFactory.h"
#include "analysis/Checks.h"
#include "analysis/FormMembers.h"
#include "corvane/base/Text.h"
#include "forms/FormReader.h"
#include "forms/FormValue.h"

#include <algorithm>
#include <map>

namespace corvane::check {

namespace {

using forms::FieldDef;
using forms::FieldKind;
using forms::FormDef;
using forms::FormFault;
using forms::FormNode;
using forms::NodeKind;

constexpr std::string_view ending = ".ui";

Rule RuleOf(FormFault fault) {
    switch (fault) {
    case FormFault::NotReadable:
        return Rule::FormUnreadable;
    case FormFault::UnknownWidget:
    case FormFault::UnknownProperty:
    case FormFault::UnknownElement:
        return Rule::FormUnknown;
    case FormFault::BadValue:
    case FormFault::BadPattern:
        return Rule::FormBadValue;
    case FormFault::DuplicateName:
    case FormFault::MissingName:
        return Rule::FormName;
    case FormFault::BadTabOrder:
        return Rule::FormTabOrder;
    case FormFault::OutsideLayout:
    case FormFault::SharedCell:
        return Rule::FormLayout;
    }
    return Rule::FormUnknown;
}

// The texts of findings begin small and have no full stop.
std::string AsCure(std::string text) {
    if (!text.empty() && text.front() >= 'A' && text.front() <= 'Z')
        text.front() = static_cast<char>(text.front() + 32);
    if (text.ends_with('.'))
        text.pop_back();
    return text;
}

// The letter behind a single "&", in small; 0 for none.
char LetterOf(std::string_view label) {
    for (std::size_t i = 0; i + 1 < label.size(); ++i) {
        if (label[i] != '&')
            continue;
        const char letter = label[++i];
        if (letter >= 'A' && letter <= 'Z')
            return static_cast<char>(letter + 32);
        if ((letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9'))
            return letter;
    }
    return 0;
}

// The letters of the buttons that the windows of a page have, with their captions.
std::map<char, std::string> LettersOfWindows(const Model& model, const std::string& progID) {
    std::map<char, std::string> letters;
    for (const Window& window : model.windows) {
        if (std::none_of(window.pages.begin(), window.pages.end(),
                         [&](const Provider* page) { return EqualText(page->progID, progID); }))
            continue;
        const std::string_view type = window.element->Value("Type");
        if (EqualText(type, "Wizard"))
            letters.insert({{'p', "Previous"}, {'n', "Next"}, {'f', "Finish"}});
        else if (EqualText(type, "SaveDialog"))
            letters.insert({{'s', "Save"}, {'a', "Save As"}});
        else if (BooleanOf(*window.element, "IsApplyCommandShown", true))
            letters.insert({'a', "Apply"});
        if (std::any_of(window.pages.begin(), window.pages.end(), [](const Provider* page) {
                const std::string_view topic = page->element->Value("HelpContextID");
                return !topic.empty() && topic != "0";
            }))
            letters.insert({'h', "Help"});
    }
    return letters;
}

class UiCheck {
public:
    UiCheck(Model& model, const std::string& application, bool plugins, const Buffers& buffers, Report& report)
        : m_model(model), m_folder(FindPath(JoinPath(application, "Forms")).value_or("")), m_plugins(plugins),
          m_buffers(buffers), m_factory(JoinPath(application, "plugins")), m_report(report) {
        ReadCatalogues(application);
    }

    void Check() {
        if (m_folder.empty())
            return;
        for (const std::string& name : NamesIn(m_folder, true).value_or(std::vector<std::string>()))
            if (name.size() > ending.size() && EqualText(name.substr(name.size() - ending.size()), ending))
                Check(JoinPath(m_folder, name), name.substr(0, name.size() - ending.size()));
    }

private:
    void Check(const std::string& path, const std::string& progID) {
        m_path = path;
        const auto buffer = m_buffers.find(path);
        const FormDef form =
            buffer == m_buffers.end() ? forms::ReadFormFile(path) : forms::ReadForm(buffer->second, path);
        for (const forms::FormProblem& problem : form.problems)
            Add(RuleOf(problem.fault), problem.at,
                problem.text + (form.readable ? "" : ", so its page shows that in its place"), AsCure(problem.cure));
        const bool isPage = Names(m_model.pages, progID);
        const bool isPreference = Names(m_model.preferencePages, progID);
        if (!isPage && !isPreference && m_model.complete)
            ReportUnused(progID);
        if (!form.readable)
            return;
        for (const FieldDef& field : form.fields)
            CheckField(field);
        CheckBuddies(form);
        CheckMnemonics(form, progID);
        CheckTabOrder(form);
        CheckTexts(form);
        const auto* members = m_plugins ? MembersOf(progID) : nullptr;
        if (members)
            for (const FieldDef& field : form.fields)
                if (form.Find(field.name) == &field) {
                    CheckMember(field, progID, *members);
                    CheckChoices(field, progID, members);
                }
        const bool hasNoClass = isPreference && !isPage && (m_plugins ? !members : !MayHaveClass(progID));
        if (hasNoClass)
            CheckWithoutClass(form, progID);
    }

    void Add(Rule rule, forms::FormPlace at, std::string text, std::string cure, std::vector<Note> notes = {}) {
        m_report.Add(rule, {m_path, {at.line, at.column}}, std::move(text), std::move(cure), std::move(notes));
    }

    static bool Names(const std::deque<Provider>& pages, const std::string& progID) {
        return std::any_of(pages.begin(), pages.end(),
                           [&](const Provider& page) { return EqualText(page.progID, progID); });
    }

    void ReportUnused(const std::string& progID) {
        std::vector<std::string> names;
        for (const auto* pages : {&m_model.pages, &m_model.preferencePages})
            for (const Provider& page : *pages)
                names.push_back(page.progID);
        const auto nearest = Nearest(names, progID);
        Add(Rule::FormUnused, {}, "no page has the PageProgID " + Quoted(progID) + ", so the form is never shown",
            nearest ? "name the file " + Quoted(*nearest + ".ui") : "name the file after the PageProgID of its page");
    }

    void CheckField(const FieldDef& field) {
        if (field.name.empty())
            return; // which has a finding already
        const bool isList = field.kind == FieldKind::Table || field.kind == FieldKind::Tree;
        const bool isSpoken = IsEntered(field.kind) || isList || field.kind == FieldKind::Button;
        if (isSpoken && forms::PlainText(field.label.text).empty() && field.accessibleName.IsEmpty())
            Add(Rule::FormLabel, field.at,
                Quoted(field.name) + " has neither a label nor an accessible name, so nothing says what it is",
                field.kind == FieldKind::Button ? "give it a text"
                                                : "put a label in front of it, or make it the buddy of one");
        if (isList && field.columns.empty() && field.look != forms::FieldLook::TextTable)
            Add(Rule::FormIdle, field.at, Quoted(field.name) + " has no columns, so its rows are shown empty",
                "add columns in Designer, whose titles name the properties of a row");
        if (field.required && field.readOnly)
            Add(Rule::FormRequired, field.at,
                Quoted(field.name) + " is required and read-only, so an empty one can't be filled in",
                "take away one of both");
        for (std::size_t i = 1; i < field.choices.size(); ++i)
            if (std::any_of(field.choices.begin(), field.choices.begin() + static_cast<std::ptrdiff_t>(i),
                            [&](const auto& choice) { return choice.value == field.choices[i].value; }))
                Add(Rule::FormBadValue, field.choices[i].label.at,
                    Quoted(field.name) + " has the choice " + Quoted(field.choices[i].value) +
                        " twice, and the value doesn't tell which of both is chosen",
                    "give one of both another text");
        const bool isKnown = (field.kind != FieldKind::Choice || !field.choices.empty()) &&
                             field.minimum.value_or(0) <= field.maximum.value_or(field.minimum.value_or(0));
        forms::Problem problem =
            IsEntered(field.kind) && isKnown ? CheckValue(field, field.choices, field.value) : forms::Problem();
        if (problem && problem.kind != forms::ProblemKind::Required)
            Add(Rule::FormDefault, field.at,
                Quoted(field.name) + " begins with " + Quoted(forms::WriteValue(field.value)) +
                    ", which can't be accepted: " + AsCure(problem.Text()),
                "give it another value");
    }

    // A label that says to belong to what isn't there: its mnemonic leads nowhere, unless its place says what it
    // labels.
    void CheckBuddies(const FormDef& form) {
        std::vector<std::string> names;
        ForEachNode(form.root, [&](const FormNode& node) {
            if (!node.name.empty() && node.kind != NodeKind::Label)
                names.push_back(node.name);
        });
        ForEachNode(form.root, [&](const FormNode& node) {
            if (node.kind != NodeKind::Label || node.buddy.empty() ||
                std::any_of(names.begin(), names.end(), [&](const auto& name) { return EqualText(name, node.buddy); }))
                return;
            const auto nearest = Nearest(names, node.buddy);
            Add(Rule::FormBadValue, node.at,
                "the label " + Quoted(forms::PlainText(node.text.text)) + " is the buddy of " + Quoted(node.buddy) +
                    ", which isn't in the form",
                nearest ? "write " + Quoted(*nearest) : "choose the buddy again in Designer");
        });
    }

    // A list that is empty in the form, and that no member fills; without a class there is none.
    void CheckChoices(const FieldDef& field, const std::string& progID, const std::vector<MemberInfo>* members) {
        const bool isChosen = (field.kind == FieldKind::Choice && field.look != forms::FieldLook::EditableCombo) ||
                              field.kind == FieldKind::Choices;
        const std::string member = field.name + "Choices";
        if (!isChosen || !field.choices.empty() ||
            (members && std::any_of(members->begin(), members->end(),
                                    [&](const MemberInfo& each) { return EqualText(each.Name, member); })))
            return;
        Add(Rule::FormIdle, field.at,
            Quoted(field.name) + " has nothing to choose from: no entries, and " +
                (members ? "the class " + Quoted(progID) + " has no member " + Quoted(member)
                         : "no class " + Quoted(progID) + " that could say them"),
            members ? "add entries in Designer, or write " + Quoted(member) : "add entries in Designer");
    }

    // Tabs are seen one at a time, so what lies in different ones doesn't meet.
    static std::vector<std::pair<std::size_t, std::size_t>> TabsAround(const std::vector<const FormNode*>& nodes,
                                                                       const FormNode& node) {
        std::vector<std::pair<std::size_t, std::size_t>> tabs;
        for (std::size_t at = node.parent; at != forms::none; at = nodes[at]->parent)
            if (nodes[at]->kind == NodeKind::Tab)
                tabs.emplace_back(nodes[at]->parent, at);
        return tabs;
    }

    void CheckMnemonics(const FormDef& form, const std::string& progID) {
        struct Letter {
            std::string called;
            forms::FormPlace at;
            std::vector<std::pair<std::size_t, std::size_t>> tabs;
        };
        std::vector<const FormNode*> nodes;
        ForEachNode(form.root, [&](const FormNode& node) { nodes.push_back(&node); });
        const std::map<char, std::string> buttons = LettersOfWindows(m_model, progID);
        std::map<char, std::vector<Letter>> letters;
        const auto Meet = [](const Letter& left, const Letter& right) {
            return std::none_of(left.tabs.begin(), left.tabs.end(), [&](const auto& tab) {
                return std::any_of(right.tabs.begin(), right.tabs.end(), [&](const auto& other) {
                    return tab.first == other.first && tab.second != other.second;
                });
            });
        };
        const auto See = [&](const FormNode& node, const std::string& text) {
            const char letter = LetterOf(text);
            if (!letter)
                return;
            const Letter mine{forms::PlainText(text), node.at, TabsAround(nodes, node)};
            std::vector<Letter>& others = letters[letter];
            const auto other =
                std::find_if(others.begin(), others.end(), [&](const Letter& each) { return Meet(each, mine); });
            if (other != others.end())
                Add(Rule::FormMnemonic, mine.at,
                    Quoted(mine.called) + " and " + Quoted(other->called) + " both have the mnemonic " +
                        Quoted(std::string(1, letter)),
                    "mark another letter by \"&\"", {{{m_path, {other->at.line, other->at.column}}, "the other one"}});
            else if (const auto button = buttons.find(letter); button != buttons.end())
                Add(Rule::FormMnemonic, mine.at,
                    Quoted(mine.called) + " has the mnemonic of the window's button " + Quoted(button->second),
                    "mark another letter by \"&\"");
            others.push_back(mine);
        };
        for (const FormNode* node : nodes) {
            if (node->kind == NodeKind::Field && form.fields[node->field].look != forms::FieldLook::Radio &&
                (form.fields[node->field].kind == FieldKind::Button ||
                 form.fields[node->field].kind == FieldKind::Boolean))
                See(*node, form.fields[node->field].label.text);
            else if (node->kind == NodeKind::Label || node->kind == NodeKind::Radio || node->kind == NodeKind::Group ||
                     node->kind == NodeKind::Tab)
                See(*node, node->text.text);
        }
    }

    // A tab stop that lies before the one before it, as one reads the part of the form in which both are.
    void CheckTabOrder(const FormDef& form) {
        std::vector<const FormNode*> nodes;
        ForEachNode(form.root, [&](const FormNode& node) { nodes.push_back(&node); });
        const auto PathOf = [&](std::size_t field) {
            std::vector<const FormNode*> path;
            for (std::size_t at = form.fields[field].node; at != forms::none; at = nodes[at]->parent)
                path.insert(path.begin(), nodes[at]);
            return path;
        };
        for (std::size_t i = 1; i < form.tabStops; ++i) {
            const auto from = PathOf(form.tabOrder[i - 1]);
            const auto to = PathOf(form.tabOrder[i]);
            std::size_t level = 0;
            while (level < from.size() && level < to.size() && from[level] == to[level])
                ++level;
            if (level == 0 || level >= from.size() || level >= to.size())
                continue;
            const forms::GridCell& before = from[level]->cell;
            const forms::GridCell& after = to[level]->cell;
            const bool isOrdered = from[level - 1]->layout != forms::LayoutKind::None;
            const bool isBack = isOrdered ? (after.row < before.row && after.column <= before.column) ||
                                                (after.row == before.row && after.column < before.column)
                                          : to[level]->index < from[level]->index;
            if (isBack)
                return Add(Rule::FormTabOrder, form.fields[form.tabOrder[i]].at,
                           "the tab order jumps back from " + Quoted(form.fields[form.tabOrder[i - 1]].name) + " to " +
                               Quoted(form.fields[form.tabOrder[i]].name),
                           "set the tab order in Designer as the form is read");
        }
    }

    // Those catalogues that a translator has begun.
    void ReadCatalogues(const std::string& application) {
        const auto folder = FindPath(JoinPath(JoinPath(application, "Services"), "translations"));
        if (!folder)
            return;
        for (const std::string& name : NamesIn(*folder, true).value_or(std::vector<std::string>())) {
            const auto bytes = name.ends_with(".po") ? ReadBytes(JoinPath(*folder, name)) : std::nullopt;
            std::vector<CatalogueFault> faults;
            if (bytes)
                m_catalogues.emplace(name.substr(0, name.size() - 3), Catalogue::Read(*bytes, faults));
        }
    }

    void CheckTexts(const FormDef& form) {
        if (m_catalogues.empty())
            return;
        for (const forms::FormMessage& message : TextsOf(form)) {
            std::string languages;
            for (const auto& [language, catalogue] : m_catalogues)
                if (!catalogue.Find(message.key, message.text))
                    languages += (languages.empty() ? "" : ", ") + language;
            if (!languages.empty())
                Add(Rule::FormText, message.at, Quoted(message.text) + " isn't translated (" + languages + ")",
                    "run corvane translate, and fill in the catalogues");
        }
    }

    // Nothing when there is no such class.
    [[nodiscard]] const std::vector<MemberInfo>* MembersOf(const std::string& progID) {
        const std::size_t point = progID.find('.');
        if (point == 0 || point == std::string::npos || !FindPath(m_factory.PathOf(progID.substr(0, point))))
            return nullptr;
        const auto [library, isNew] = m_classes.try_emplace(FoldText(progID.substr(0, point)));
        if (isNew) {
            try {
                library->second = m_factory.Classes(progID.substr(0, point));
            } catch (const Failure&) {
                library->second.clear(); // a finding of its own
            }
        }
        const auto found = std::find_if(library->second.begin(), library->second.end(),
                                        [&](const auto& each) { return EqualText(each.progID, progID); });
        return found == library->second.end() ? nullptr : &found->members;
    }

    // Without a look into plug-ins: whether there is one of that name, or may be once it is built.
    [[nodiscard]] bool MayHaveClass(const std::string& progID) const {
        const std::string library = progID.substr(0, progID.find('.')) + ".";
        const auto IsOf = [&](const Provider& provider) {
            return EqualText(std::string_view(provider.progID).substr(0, library.size()), library);
        };
        return FindPath(m_factory.PathOf(library.substr(0, library.size() - 1))).has_value() ||
               std::any_of(m_model.services.begin(), m_model.services.end(), IsOf) ||
               std::any_of(m_model.items.begin(), m_model.items.end(), IsOf) ||
               std::any_of(m_model.pages.begin(), m_model.pages.end(), IsOf);
    }

    void CheckMember(const FieldDef& field, const std::string& progID, const std::vector<MemberInfo>& members) {
        const MemberFault fault = FaultOfMember(field, members);
        if (fault.text.empty())
            return;
        const bool isProcess = m_factory.Processes()->FileOf(progID.substr(0, progID.find('.'))).has_value();
        const bool isListed = fault.cure.starts_with("list "); // as a class in C++ does
        Add(fault.isMissing ? Rule::FormMember : Rule::FormType, field.at,
            Quoted(field.name) + ": the class " + Quoted(progID) + " " + fault.text,
            !isProcess || !isListed           ? fault.cure
            : field.kind == FieldKind::Button ? "write a procedure of that name in the class"
                                              : "declare it in the class, with its type");
    }

    // A page of the preferences that the host keeps itself.
    void CheckWithoutClass(const FormDef& form, const std::string& progID) {
        ForEachNode(form.root, [&](const FormNode& node) {
            if (node.kind == NodeKind::Place)
                Add(Rule::FormPlace, node.at,
                    "the place " + Quoted(node.name) + " stays empty, as there is no class " + Quoted(progID),
                    "write the class, or take the place away");
        });
        for (const FieldDef& field : form.fields) {
            if (field.kind == FieldKind::Button && !EqualText(field.name, "RestoreDefaults"))
                Add(Rule::FormMember, field.at,
                    "the button " + Quoted(field.name) + " fails, as there is no class " + Quoted(progID),
                    "write the class, or name the button \"RestoreDefaults\" if it does that");
            else if (field.kind == FieldKind::Table || field.kind == FieldKind::Tree)
                Add(Rule::FormIdle, field.at,
                    Quoted(field.name) + " never has rows, as there is no class " + Quoted(progID) + " to give them",
                    "write the class, or take another widget");
            else if (!field.enabled || !field.visible)
                Add(Rule::FormIdle, field.at,
                    Quoted(field.name) + " stays " + (field.visible ? "disabled" : "hidden") +
                        ", as there is no class " + Quoted(progID) + " to change that",
                    std::string("take away the property ") + (field.visible ? "enabled" : "visible"));
            CheckChoices(field, progID, nullptr);
        }
    }

    Model& m_model;
    std::string m_folder;
    bool m_plugins;
    const Buffers& m_buffers;
    PluginFactory m_factory;
    Report& m_report;
    std::string m_path;                                                     // of the form that is looked at
    std::map<std::string, std::vector<PluginFactory::ClassInfo>> m_classes; // by folded library
    std::map<std::string, Catalogue> m_catalogues;                          // by language
};

} // namespace

bool IsFormAlone(const Provider& provider, const std::string& application) {
    return provider.kind == ProviderKind::PreferencePage && !forms::FormPathOf(application, provider.progID).empty();
}

void CheckForms(Model& model, const std::string& application, bool plugins, const Buffers& buffers, Report& report) {
    UiCheck(model, application, plugins, buffers, report).Check();
}

} // namespace corvane::check
