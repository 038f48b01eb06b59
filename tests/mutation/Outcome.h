// What the library makes of an application, started without a display on objects that stand in for its plug-ins.
#pragma once

#include <set>
#include <string>

namespace corvane::mutation {

struct Outcome {
    bool isStarted = false;
    bool isFilled = false;           // the explorer, too
    bool hasMessage = false;         // a failure was shown to the user
    std::set<std::string> unreached; // entries and kinds of items that are in a file that counts, and nowhere on screen
    std::string document;            // all that stands on screen
};

[[nodiscard]] Outcome Run(const std::string& folder);

} // namespace corvane::mutation
