// What a check has found: places in files, what is wrong there, and what to do about it.
#pragma once

#include "analysis/Rules.h"
#include "corvane/base/Failure.h"

#include <cstddef>
#include <map>
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

// A change of a file's text.
struct Edit {
    std::string path;  // as a Place has it
    std::size_t begin; // in bytes, as the next
    std::size_t end;
    std::string text; // what takes the place of what is between

    friend bool operator==(const Edit&, const Edit&) = default;
};

// The bytes of files that have been changed and not saved, by the path that a Place has.
using Buffers = std::map<std::string, std::string>;

struct Finding {
    Rule rule;
    Place place;
    std::string text; // what is wrong, and what follows of it
    std::string cure; // what to do
    std::vector<Note> notes;
    std::vector<Edit> edits; // that do it; nothing where the author has to decide
};

} // namespace corvane::check
