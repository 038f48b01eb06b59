// The public library of tests, and what our own tests need beside it.
#pragma once

#include "testing/Application.h"

#include <sstream>
#include <string>

namespace corvane::testing {

// The parts between commas, without blanks before them; none of nothing.
inline Lines Split(const std::string& text) {
    Lines parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream >> std::ws, part, ',');)
        parts.push_back(part);
    return parts;
}

} // namespace corvane::testing
