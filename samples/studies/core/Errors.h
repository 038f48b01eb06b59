// How Studies says that something went wrong: a failure with a text that a user can act on.
#pragma once

#include "corvane/author/Translation.h"

#include <string>

namespace studies {

using corvane::Translated;

// Raises corvane::Failure with the application's own number and the source "Studies".
[[noreturn]] void FailWith(std::string text);

} // namespace studies
