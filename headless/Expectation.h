// What a step "expect" looks for in the document of an inspection.
#pragma once

#include "headless/ModelHost.h"

#include <string>

namespace corvane::inspect {

// rest is "PATH VALUE". Empty when the document has the value there; else what is expected and what is there.
[[nodiscard]] std::string Unmet(const ModelHost& host, const std::string& rest);

} // namespace corvane::inspect
