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
    Silent, // not a mistake
};

struct Mutant {
    std::string family; // such as "slips in names"
    std::string kind;   // such as "slip in MenuItem.Path"
    Expected expected;
    std::string file; // below the application's folder
    std::string text; // the whole file
    Long line = 0;    // of the spoilt element; 0 where it is gone, or where the whole file is spoilt
    // It writes something that wasn't there, which should show.
    bool adds = false;
    // Where the file is afterwards, if that is the mistake; else empty.
    std::string movedTo = {};
};

// Every mutant of the file, a kind at each place where it is possible.
void ForEachMutant(const check::File& file, const std::string& path, const std::function<void(const Mutant&)>& act);

} // namespace corvane::mutation
