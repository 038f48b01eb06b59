// Reads a form: a file of Qt Designer, of which a subset is known (docs/forms.md). What is outside of it is named as a
// problem of the form and left out; the rest of the form is still there.
#pragma once

#include "forms/FormDef.h"

#include <string>
#include <string_view>

namespace corvane::forms {

// Never fails. file is for messages and the keys of texts.
[[nodiscard]] FormDef ReadForm(std::string_view bytes, const std::string& file);
// The same of a file, which is found without regard to case. One that can't be read is a form that isn't readable.
[[nodiscard]] FormDef ReadFormFile(const std::string& path);

// The form of a page, "Forms/PROGID.ui" below that folder, or "" when the application has none.
[[nodiscard]] std::string FormPathOf(const std::string& application, std::string_view pageProgID);

} // namespace corvane::forms
