// The pages of open windows whose inside is a form, as steps act on them and documents print them. Only sources of the
// project include it.
#pragma once

#include "forms/FormPage.h"
#include "headless/ModelHost.h"

#include <string>
#include <vector>

namespace corvane::inspect {

struct ShownPage {
    Ref<corvane::PageDef> pageDef;
    Ref<Object> pageObj;
    Ref<forms::FormPage> form; // nothing for a page without one
    std::string problem;       // why its form can't be read
};

// In the order in which the window shows them; none for a window that has closed.
[[nodiscard]] std::vector<ShownPage> PagesOf(const ModelHost& host, const Ref<Window>& window);

// Why its form can't be read, or why its page has gone; "" for one that works.
[[nodiscard]] std::string ProblemOf(const ShownPage& page);

// The acts of a user on a form. Each returns why it can't be done, or "" when it was; a failure of the page leaves it.
// A value is typed as in a line, or a text or list of texts in JSON.
[[nodiscard]] std::string SetField(forms::FormModel& form, const std::string& field, const std::string& value);
// The same for the text itself. Invalid text stays in the field, with its problem.
[[nodiscard]] std::string EnterField(forms::FormModel& form, std::size_t field, const std::string& text);
[[nodiscard]] std::string PressButton(forms::FormModel& form, const std::string& button);
[[nodiscard]] std::string SetCell(forms::FormModel& form, const std::string& table, std::size_t row, std::size_t column,
                                  const std::string& value);
[[nodiscard]] std::string ChooseRow(forms::FormModel& form, const std::string& table, const std::string& row);

// The steps "set", "press", "cell" and "row", whose fields are the rest of the line.
[[nodiscard]] bool IsFormStep(const std::string& verb);
[[nodiscard]] std::string TakeFormStep(const ModelHost& host, const std::string& verb, const std::string& rest);

// A form as one reads it, a line for each of its parts.
[[nodiscard]] std::vector<std::string> FormLines(const forms::FormModel& form);

} // namespace corvane::inspect
