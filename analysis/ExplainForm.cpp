#include "analysis/ExplainForm.h"

#include "adapters/common/Nearest.h"
#include "adapters/common/Paths.h"
#include "analysis/Application.h"
#include "corvane/base/Text.h"
#include "forms/FormReader.h"
#include "forms/FormValue.h"
#include "forms/PreferencesPage.h"

#include <algorithm>

namespace corvane::check {

namespace {

using forms::FieldDef;
using forms::FieldKind;
using forms::FormDef;

constexpr std::string_view beginning = "Forms/";

class FormExplainer {
public:
    FormExplainer(const Model& model, FormDef form, std::string progID)
        : m_model(model), m_form(std::move(form)), m_progID(std::move(progID)) {}

    std::string ExplainForm() {
        Heading("form " + Quoted(m_progID));
        Field("defined", m_form.file);
        if (!m_form.readable)
            Field("wrong", std::to_string(m_form.problems.front().at.line) + ":" +
                               std::to_string(m_form.problems.front().at.column) + ": " + m_form.problems.front().text);
        ExplainPages();
        for (const std::size_t field : m_form.tabOrder)
            Field("field", m_form.fields[field].name + ", " + std::string(WordOf(m_form.fields[field].kind)) + ", " +
                               Quoted(CallOf(m_form.fields[field])));
        return std::move(m_text);
    }

    std::string ExplainField(const FieldDef& field) {
        Heading("field " + Quoted(field.name) + " of the form " + Quoted(m_progID));
        Field("defined", m_form.file + ":" + std::to_string(field.at.line) + ":" + std::to_string(field.at.column));
        Field("label", CallOf(field));
        Field("kind", std::string(WordOf(field.kind)));
        Field("bound to", BoundTo(field));
        if (IsEntered(field.kind))
            Field("at first", Quoted(forms::WriteValue(field.value)));
        const std::string accepted = Accepted(field);
        if (!accepted.empty())
            Field("accepts", accepted);
        for (const forms::FormChoice& choice : field.choices)
            Field("choice", choice.value);
        for (const forms::ColumnDef& column : field.columns)
            Field("column",
                  column.name + ", " + std::string(WordOf(column.kind)) + (column.editable ? ", can be edited" : ""));
        const auto order = std::find(m_form.tabOrder.begin(), m_form.tabOrder.end(),
                                     static_cast<std::size_t>(&field - m_form.fields.data()));
        Field("tab order",
              std::to_string(order - m_form.tabOrder.begin() + 1) + " of " + std::to_string(m_form.tabOrder.size()));
        ExplainPages();
        return std::move(m_text);
    }

    [[nodiscard]] const FormDef& Form() const { return m_form; }

private:
    void Heading(const std::string& text) { m_text += text + "\n"; }
    void Field(const std::string& name, const std::string& text) {
        constexpr std::size_t width = 12;
        m_text += "  " + name + std::string(name.size() < width ? width - name.size() : 1, ' ') + text + "\n";
    }
    void ExplainPages() {
        const auto Say = [&](const Provider& page, const std::string& where) {
            if (EqualText(page.progID, m_progID)) {
                const Place place = page.At("PageProgID");
                Field("page", Quoted(page.name) + where + ", " + place.file + ":" + std::to_string(place.at.line));
            }
        };
        for (const Window& window : m_model.windows)
            for (const Provider* page : window.pages)
                Say(*page, " of the window " + Quoted(window.name));
        for (const Provider& page : m_model.preferencePages)
            Say(page, " of the preferences");
    }
    [[nodiscard]] bool IsOfPreferences() const {
        return std::any_of(m_model.preferencePages.begin(), m_model.preferencePages.end(),
                           [&](const Provider& page) { return EqualText(page.progID, m_progID); });
    }
    [[nodiscard]] std::string BoundTo(const FieldDef& field) const {
        std::string text = (field.kind == FieldKind::Button ? "the member " : "the property ") + field.name +
                           " of the class " + m_progID;
        if (IsOfPreferences() && IsEntered(field.kind))
            text += "; without such a class the preference " + field.name + " of the service " +
                    ServiceOfPreferences(m_form, m_progID) + ", category " + CategoryOfPreferences(m_form);
        return text;
    }
    [[nodiscard]] static std::string Accepted(const FieldDef& field) {
        std::string text;
        const auto Say = [&](const std::string& words) { text += (text.empty() ? "" : ", ") + words; };
        if (field.readOnly)
            Say("nothing: it is read-only");
        if (field.required)
            Say("no empty value");
        if (field.minimum)
            Say("at least " + ToText(Variant(*field.minimum)));
        if (field.maximum)
            Say("at most " + ToText(Variant(*field.maximum)));
        if (field.kind == FieldKind::Number)
            Say("at most " + std::to_string(field.decimals) + " decimal places");
        if (field.maxLength > 0)
            Say("at most " + std::to_string(field.maxLength) + " characters");
        if (!field.pattern.empty())
            Say("what matches " + field.pattern);
        return text;
    }

    const Model& m_model;
    FormDef m_form;
    std::string m_progID;
    std::string m_text;
};

// The names of the forms of an application, without their ending.
std::vector<std::string> FormsIn(const std::string& application) {
    std::vector<std::string> names;
    for (const std::string& name :
         NamesIn(FindPath(JoinPath(application, "Forms")).value_or(""), true).value_or(std::vector<std::string>()))
        if (name.size() > 3 && EqualText(name.substr(name.size() - 3), ".ui"))
            names.push_back(name.substr(0, name.size() - 3));
    return names;
}

} // namespace

bool IsFormItem(const std::string& item) {
    return EqualText(item.substr(0, beginning.size()), beginning);
}

Explanation ExplainFormItem(const std::string& application, const std::string& item) {
    Report report;
    Model model;
    ReadApplication(model, application, report);
    BuildModel(model, report);
    std::string name = item.substr(beginning.size());
    if (name.size() > 3 && EqualText(name.substr(name.size() - 3), ".ui"))
        name.resize(name.size() - 3);
    const std::vector<std::string> names = FormsIn(application);
    std::vector<std::string> fields;
    for (const std::string& form : names) {
        const bool isForm = EqualText(form, name);
        const bool isField =
            name.size() > form.size() && name[form.size()] == '.' && EqualText(name.substr(0, form.size()), form);
        if (!isForm && !isField)
            continue;
        FormExplainer explainer(model, forms::ReadFormFile(forms::FormPathOf(application, form)), form);
        if (isForm)
            return {explainer.ExplainForm(), {}};
        if (const FieldDef* field = explainer.Form().Find(name.substr(form.size() + 1)))
            return {explainer.ExplainField(*field), {}};
        for (const FieldDef& field : explainer.Form().fields)
            fields.push_back(std::string(beginning) + form + "." + field.name);
    }
    if (fields.empty())
        for (const std::string& form : names)
            fields.push_back(std::string(beginning) + form);
    const auto nearest = Nearest(fields, item);
    return {{}, nearest ? std::vector<std::string>{*nearest} : std::vector<std::string>()};
}

} // namespace corvane::check
