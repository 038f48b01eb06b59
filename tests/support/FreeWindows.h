// For tests of windows that are free in the main window, instead of in tabs.
#pragma once

#include "adapters/files/SettingsStore.h"

namespace corvane::desktop {

// As the user chooses it in the preferences, for the next start of the application in the user's folders of the test.
inline void ChooseFreeWindows(bool areFree = true) {
    SettingsStore("App").Write("Corvane.Desktop", "Appearance", "TabbedWindows", areFree ? "False" : "True");
}

} // namespace corvane::desktop
