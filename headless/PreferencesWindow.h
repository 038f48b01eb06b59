// The window of all preferences, which a desktop host has itself.
#pragma once

#include <string>

namespace corvane::inspect {

inline constexpr const char* preferencesWindow = "Corvane.Preferences";

// Defines it, with the pages of all services, unless it is there already.
void DefinePreferencesWindow();

} // namespace corvane::inspect
