// What a check has found: places in files, what is wrong there, and what to do about it.
#pragma once

#include "analysis/Rules.h"
#include "corvane/base/Failure.h"

#include <string>
#include <vector>

namespace corvane::check {

// Counted from 1, in characters of the file; 0 where it isn't known.
struct Position {
    Long lLine = 0;
    Long lColumn = 0;

    friend auto operator<=>(const Position&, const Position&) = default;
};

struct Place {
    std::string sFile; // as the application folder was given, and the path below it
    Position oAt;
};

// A second place that has to do with a finding.
struct Note {
    Place oPlace;
    std::string sText;
};

struct Finding {
    Rule eRule;
    Place oPlace;
    std::string sText; // what is wrong
    std::string sCure; // what to do
    std::vector<Note> aNotes;
};

} // namespace corvane::check
