// Explains the forms of pages and their fields. Only sources of this folder include it.
#pragma once

#include "analysis/Explain.h"

#include <string>

namespace corvane::check {

// Begins with "Forms/".
[[nodiscard]] bool IsFormItem(const std::string& item);
[[nodiscard]] Explanation ExplainFormItem(const std::string& application, const std::string& item);

} // namespace corvane::check
