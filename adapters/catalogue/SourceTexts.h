// The texts that sources of C++ show to users by corvane::Translated, for the catalogues.
#pragma once

#include "adapters/catalogue/DefinitionTexts.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

// The key of all of them: one text has one translation, wherever the code shows it.
inline constexpr const char* sourceTextKey = "Source";

// Adds those of one file, in its order, as far as texts hasn't got them: all strings in quotes that are arguments of a
// call of Translated themselves, and not values in braces.
void AddSourceTexts(std::string_view source, const std::string& file, std::vector<DefinitionText>& texts);

} // namespace corvane
