// What the library makes of an application, started without a display on objects that stand in for its plug-ins.
#pragma once

#include <set>
#include <string>

namespace corvane::mutation {

struct Outcome {
    bool isStarted = false;
    bool isFilled = false;           // the explorer, too
    std::string failure;             // the first that a user sees at the start, or in use; empty when there is none
    std::set<std::string> unreached; // entries and kinds of items that are in a file that counts, and nowhere on screen
    std::set<std::string> shown;     // entries, kinds of items and windows that the library has
    std::string document;            // all that is on screen
};

// Starts it, fills the explorer, chooses every command, opens every item and every window.
[[nodiscard]] Outcome Run(const std::string& folder);

} // namespace corvane::mutation
