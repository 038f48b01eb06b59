// What the start page of an application offers: the file "welcome.xml" in its folder (docs/desktop.md), which the host
// shows, "corvane check" examines and "corvane translate" takes texts from.
#pragma once

#include "forms/FormDef.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane::forms {

struct WelcomeEntry {
    std::string command; // by its menu's path and its action, as in "File.Import"; may be empty for a file
    std::string file;    // below the application's folder, or empty
    std::string text;    // never empty
    FormPlace at;        // of the element
};

struct WelcomeProblem {
    FormPlace at;
    std::string text;
    std::string cure;
};

struct WelcomeDef {
    std::string text;   // below the application's name, or empty
    std::string window; // of the application, shown in place of the page; or empty
    std::string open;   // the command whose question for a file is answered with one of the page; or empty
    FormPlace at;       // of the root
    std::vector<WelcomeEntry> steps;
    std::vector<WelcomeEntry> samples;
    std::vector<WelcomeEntry> empties;    // what an empty tab of the explorer says; its name is in "file"
    std::vector<WelcomeProblem> problems; // what is named in them is left out
};

// Never fails; of a text that isn't well formed nothing but a problem comes.
[[nodiscard]] WelcomeDef ReadWelcome(std::string_view bytes);
// The path of the file in an application's folder, or "" when it has none.
[[nodiscard]] std::string WelcomePathOf(const std::string& application);
// The key of a text of the file in catalogues of translations, for the command or the file of its entry.
[[nodiscard]] std::string WelcomeKey(std::string_view entry);
// All texts, with the entry that WelcomeKey takes, in their order.
[[nodiscard]] std::vector<std::pair<std::string, WelcomeEntry>> WelcomeTexts(const WelcomeDef& welcome);

} // namespace corvane::forms
