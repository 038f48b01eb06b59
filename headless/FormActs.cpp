#include "adapters/common/Json.h"
#include "adapters/common/Nearest.h"
#include "adapters/common/Recoverable.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/windows/WindowManager.h"
#include "headless/FormPages.h"

namespace corvane::inspect {

namespace {

using Json = nlohmann::json;

// The field of that name, or why there is none.
std::optional<std::size_t> FieldOf(const forms::FormModel& form, const std::string& name, std::string& why) {
    if (const auto field = form.Find(name))
        return field;
    std::vector<std::string> names;
    for (const forms::FieldDef& field : form.Def().fields)
        names.push_back(field.name);
    const auto nearest = Nearest(names, name);
    why = "the form has no field \"" + name + "\"" + (nearest ? "; did you mean \"" + *nearest + "\"?" : "");
    return std::nullopt;
}

// A text in JSON as it reads, the texts of a list with line breaks between; anything else as it is written.
std::string Typed(const std::string& value) {
    if (!value.starts_with('"') && !value.starts_with('['))
        return value;
    const Json json = ReadJson(value).value_or(nullptr);
    if (json.is_string())
        return json.get<std::string>();
    if (!json.is_array() || !std::all_of(json.begin(), json.end(), [](const Json& text) { return text.is_string(); }))
        return value;
    std::string lines;
    for (const Json& text : json)
        lines += (lines.empty() ? "" : "\n") + text.get<std::string>();
    return lines;
}

std::string KeyOf(const Window& window) {
    const bool hasKey = window.Key() != std::to_string(window.ObjectKey());
    return hasKey ? window.Key() : window.WindowDef()->Name();
}

// Whether users can type what is no value, which stays with its problem; of any other field it can't be chosen.
bool IsTyped(const forms::FieldDef& field) {
    switch (field.kind) {
    case forms::FieldKind::Boolean:
    case forms::FieldKind::Choice:
    case forms::FieldKind::Choices:
        return false;
    default:
        return field.look != forms::FieldLook::Slider;
    }
}

// The window whose key the text begins with, the longest one as keys may hold blanks; the rest is what is behind it.
Ref<Window> TakeWindow(std::string& rest) {
    Ref<Window> found;
    std::size_t length = 0;
    for (const auto& window : CorvaneMain::Framework()->WindowManager()->Windows()) {
        const std::string key = KeyOf(*window);
        if (key.size() >= length && rest.size() > key.size() && rest[key.size()] == ' ' &&
            EqualText(rest.substr(0, key.size()), key) && !(found && key.size() == length)) {
            found = window;
            length = key.size();
        }
    }
    if (!found)
        Fail(FailureNumber::InvalidProcedureCall, "There is no open window \"" + rest.substr(0, rest.find(' ')) + "\"",
             "Steps");
    rest.erase(0, length + 1);
    return found;
}

std::string TakeWord(std::string& rest) {
    const std::size_t blank = std::min(rest.find(' '), rest.size());
    std::string word = rest.substr(0, blank);
    rest.erase(0, blank + 1);
    return word;
}

// A whole number from 0, or none for another text.
std::size_t NumberOf(const std::string& text) {
    const auto number = NumberIn(text);
    const bool isIndex =
        number && *number >= 0 && *number < 1e9 && static_cast<Double>(static_cast<std::size_t>(*number)) == *number;
    return isIndex ? static_cast<std::size_t>(*number) : forms::none;
}

} // namespace

std::string ProblemOf(const ShownPage& page) {
    const auto recoverable = page.pageObj.TryAs<Recoverable>();
    return page.problem.empty() && recoverable ? recoverable->WhyLost() : page.problem;
}

std::string SetField(forms::FormModel& form, const std::string& field, const std::string& value) {
    std::string why;
    const auto index = FieldOf(form, field, why);
    if (!index)
        return why;
    return EnterField(form, *index, Typed(value));
}

std::string EnterField(forms::FormModel& form, std::size_t field, const std::string& text) {
    const Ref<forms::FormModel> alive(&form);
    std::string why = IsTyped(form.Field(field)) ? form.Type(field, text) : form.EnterText(field, text);
    if (why.empty())
        form.Leave(field);
    return why;
}

std::string PressButton(forms::FormModel& form, const std::string& button) {
    std::string why;
    const auto index = FieldOf(form, button, why);
    return index ? form.Press(*index) : why;
}

std::string SetCell(forms::FormModel& form, const std::string& table, std::size_t row, std::size_t column,
                    const std::string& value) {
    std::string why;
    const auto index = FieldOf(form, table, why);
    return index ? form.EnterCell(*index, row, column, Typed(value)) : why;
}

std::string ChooseRow(forms::FormModel& form, const std::string& table, const std::string& row) {
    std::string why;
    const auto index = FieldOf(form, table, why);
    if (!index)
        return why;
    const bool isNone = EqualText(row, "none");
    return NumberOf(row) == forms::none && !isNone ? "a row is a number from 0, or \"none\""
                                                   : form.SelectRow(*index, NumberOf(row));
}

bool IsFormStep(const std::string& verb) {
    return verb == "set" || verb == "press" || verb == "cell" || verb == "row";
}

std::string TakeFormStep(const ModelHost& host, const std::string& verb, const std::string& fields) {
    std::string rest = fields;
    const Ref<Window> window = TakeWindow(rest);
    const std::string page = TakeWord(rest);
    const std::vector<ShownPage> pages = PagesOf(host, window);
    if (NumberOf(page) >= pages.size())
        Fail(FailureNumber::Subscript, "The window \"" + KeyOf(*window) + "\" has no page " + page, "Steps");
    const ShownPage& shown = pages[NumberOf(page)];
    if (!shown.form)
        return "the page " + page + " of the window \"" + KeyOf(*window) + "\" has no form";
    forms::FormModel& form = *shown.form->Model();
    const std::string name = TakeWord(rest);
    if (verb == "set")
        return SetField(form, name, rest);
    if (verb == "press")
        return PressButton(form, name);
    const std::string row = TakeWord(rest);
    if (verb == "row")
        return ChooseRow(form, name, row);
    const std::size_t column = NumberOf(TakeWord(rest));
    return SetCell(form, name, NumberOf(row), column, rest);
}

} // namespace corvane::inspect
