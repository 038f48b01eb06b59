// The fields of a form as the JSON document has them. Only sources of the project include it.
#pragma once

#include "forms/FormModel.h"

#include <nlohmann/json.hpp>

namespace corvane::inspect {

// An object for each field: name, kind, label, value, enabled, visible, required, readOnly, problem, changed, choices,
// rows, row. What is empty or false is left out, and so are enabled and visible where they are true.
[[nodiscard]] nlohmann::json FieldsJson(const forms::FormModel& form);

} // namespace corvane::inspect
