// A page that is a form, as a test acts on it: app.Page("Details").Set("Title", "Sleep").
#pragma once

#include "corvane/base/Ref.h"
#include "corvane/base/Variant.h"

#include <string>
#include <vector>

namespace corvane::testing {

// Each function looks for the page again, so that it is always the one of the window that is open. All fail with 5,
// saying which pages or fields there are, when the page or the field isn't there or the page has no form. Field names
// don't distinguish case.
class FormPage {
public:
    FormPage(const class Application& application, std::string page);

    // What a user does. A text is typed as into a line, lines with "\n" between; true and false for a check box, the
    // text of a choice. Invalid text stays in the field, with its problem. Each fails with 5 and the
    // reason when a user can't do it, as to choose what isn't there, and as the page fails.
    FormPage& Set(const std::string& field, const std::string& text);
    FormPage& Set(const std::string& field, const char* text) { return Set(field, std::string(text)); }
    FormPage& Set(const std::string& field, bool checked) {
        return Set(field, std::string(checked ? "true" : "false"));
    }
    FormPage& Set(const std::string& field, int number) { return Set(field, std::to_string(number)); }
    FormPage& Set(const std::string& field, double number);
    FormPage& Press(const std::string& button);
    FormPage& SetCell(const std::string& table, std::size_t row, std::size_t column, const std::string& text); // from 0
    FormPage& SelectRow(const std::string& table, std::size_t row);                                            // from 0

    // What is shown.
    [[nodiscard]] std::string Value(const std::string& field) const;   // as it would be typed
    [[nodiscard]] std::string Problem(const std::string& field) const; // "" when the value can be accepted
    [[nodiscard]] bool IsEnabled(const std::string& field) const;
    [[nodiscard]] bool IsVisible(const std::string& field) const;
    [[nodiscard]] std::vector<std::string> Choices(const std::string& field) const;
    [[nodiscard]] std::size_t Rows(const std::string& table) const;
    [[nodiscard]] std::string Cell(const std::string& table, std::size_t row, std::size_t column) const; // from 0
    // Of the page: the form and its class together.
    [[nodiscard]] bool IsValid() const;
    [[nodiscard]] bool IsChanged() const;

private:
    const Application& m_application;
    std::string m_page;
};

} // namespace corvane::testing
