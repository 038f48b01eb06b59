#include "testing/FormPage.h"

#include "corvane/base/Text.h"
#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "headless/FormPages.h"
#include "testing/Application.h"

namespace corvane::testing {

namespace {

// The page of that caption or ProgID in one of the open windows, that of the window opened last first.
Ref<forms::FormPage> PageOf(const Application& application, const std::string& name) {
    Ref<forms::FormPage> found;
    std::string names;
    for (const auto& window : application.Windows()->Windows()) {
        for (const inspect::ShownPage& page : inspect::PagesOf(application.Host(), window)) {
            const std::string& progID = page.pageDef->PageProgID();
            const std::string className = progID.substr(progID.find('.') + 1);
            names += (names.empty() ? "" : ", ") + page.pageDef->Caption() + " (" + progID + ")";
            if (!EqualText(page.pageDef->Caption(), name) && !EqualText(progID, name) && !EqualText(className, name))
                continue;
            if (!page.problem.empty())
                Fail(FailureNumber::InvalidProcedureCall, page.problem, "Page");
            if (page.form)
                found = page.form;
        }
    }
    if (!found)
        Fail(FailureNumber::InvalidProcedureCall,
             "There is no page \"" + name + "\" with a form. Open pages: " + (names.empty() ? "none" : names), "Page");
    return found;
}

std::size_t FieldOf(const forms::FormModel& form, const std::string& name) {
    if (const auto field = form.Find(name))
        return *field;
    std::string names;
    for (const forms::FieldDef& field : form.Def().fields)
        names += (names.empty() ? "" : ", ") + field.name;
    Fail(FailureNumber::InvalidProcedureCall, "The form has no field \"" + name + "\". It has " + names, "Page");
}

void FailIf(const std::string& refused) {
    if (!refused.empty())
        Fail(FailureNumber::InvalidProcedureCall, refused, "Page");
}

} // namespace

FormPage::FormPage(const Application& application, std::string page)
    : m_application(application), m_page(std::move(page)) {}

FormPage& FormPage::Set(const std::string& field, const std::string& text) {
    const Ref<forms::FormModel> form = PageOf(m_application, m_page)->Model();
    FailIf(inspect::EnterField(*form, FieldOf(*form, field), text));
    return *this;
}

FormPage& FormPage::Set(const std::string& field, double number) {
    return Set(field, ToText(Variant(number)));
}

FormPage& FormPage::Press(const std::string& button) {
    const Ref<forms::FormModel> form = PageOf(m_application, m_page)->Model();
    FailIf(form->Press(FieldOf(*form, button)));
    return *this;
}

FormPage& FormPage::SetCell(const std::string& table, std::size_t row, std::size_t column, const std::string& text) {
    const Ref<forms::FormModel> form = PageOf(m_application, m_page)->Model();
    FailIf(form->EnterCell(FieldOf(*form, table), row, column, text));
    return *this;
}

FormPage& FormPage::SelectRow(const std::string& table, std::size_t row) {
    const Ref<forms::FormModel> form = PageOf(m_application, m_page)->Model();
    FailIf(form->SelectRow(FieldOf(*form, table), row));
    return *this;
}

std::string FormPage::Value(const std::string& field) const {
    const Ref<forms::FormModel> form = PageOf(m_application, m_page)->Model();
    return form->Text(FieldOf(*form, field));
}

std::string FormPage::Problem(const std::string& field) const {
    const Ref<forms::FormModel> form = PageOf(m_application, m_page)->Model();
    return form->ProblemOf(FieldOf(*form, field)).Text();
}

bool FormPage::IsEnabled(const std::string& field) const {
    const Ref<forms::FormModel> form = PageOf(m_application, m_page)->Model();
    return form->IsEnabled(FieldOf(*form, field));
}

bool FormPage::IsVisible(const std::string& field) const {
    const Ref<forms::FormModel> form = PageOf(m_application, m_page)->Model();
    return form->IsVisible(FieldOf(*form, field));
}

std::vector<std::string> FormPage::Choices(const std::string& field) const {
    const Ref<forms::FormModel> form = PageOf(m_application, m_page)->Model();
    std::vector<std::string> values;
    for (const forms::FormChoice& choice : form->Choices(FieldOf(*form, field)))
        values.push_back(choice.value);
    return values;
}

std::size_t FormPage::Rows(const std::string& table) const {
    const Ref<forms::FormModel> form = PageOf(m_application, m_page)->Model();
    return form->RowCount(FieldOf(*form, table));
}

std::string FormPage::Cell(const std::string& table, std::size_t row, std::size_t column) const {
    const Ref<forms::FormModel> form = PageOf(m_application, m_page)->Model();
    return form->CellText(FieldOf(*form, table), row, column);
}

bool FormPage::IsValid() const {
    return PageOf(m_application, m_page)->IsValid();
}

bool FormPage::IsChanged() const {
    return PageOf(m_application, m_page)->IsChanged();
}

} // namespace corvane::testing
