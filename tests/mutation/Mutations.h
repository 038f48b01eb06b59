// One mistake at one place of a definition file.
#pragma once

#include "analysis/Model.h"

#include <functional>
#include <string>
#include <vector>

namespace corvane::mutation {

enum class Expected {
    Judged, // by what the library makes of it
    Named,  // a mistake of its author that the library can't see
    Silent, // no mistake
};

struct Mutant {
    std::string kind; // such as "slip in Path"
    Expected expected;
    std::string file;  // below the application's folder
    std::string text;  // the whole file
    Long line = 0;     // of the spoilt element
    bool adds = false; // it writes something that wasn't there, which should show
};

// Every mutant of the file, a kind at each place where it is possible.
void ForEachMutant(const check::File& file, const std::string& path, const std::function<void(const Mutant&)>& act);

} // namespace corvane::mutation
