// What a check has found: places in files, what is wrong there, and what to do about it.
#pragma once

#include "analysis/Rules.h"
#include "corvane/base/Failure.h"

#include <string>
#include <vector>

namespace corvane::check {

// Counted from 1, in characters of the file; 0 where it isn't known.
struct Position {
    Long line = 0;
    Long column = 0;

    friend auto operator<=>(const Position&, const Position&) = default;
};

struct Place {
    std::string file; // as the application folder was given, and the path below it
    Position at;
};

// A second place that has to do with a finding.
struct Note {
    Place place;
    std::string text;
};

struct Finding {
    Rule rule;
    Place place;
    std::string text; // what is wrong
    std::string cure; // what to do
    std::vector<Note> notes;
};

} // namespace corvane::check
