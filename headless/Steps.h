// The steps of an inspection, one per line: actions of the user or a service.
#pragma once

#include "headless/ModelHost.h"

#include <istream>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::inspect {

struct Step {
    std::string verb;
    std::string rest; // all behind the verb's blank
    int line;
    std::string file = {};
    bool inModal = false; // is indented: for while a modal window is open
};

// Reads the steps of a file; empty lines and lines that begin with "#" are none. Fails with 5, naming file and line,
// for a step that doesn't exist or lacks a field.
[[nodiscard]] std::vector<Step> ReadSteps(std::istream& stream, const std::string& file);

// Takes a step. A failure that leaves the library is noted by the host; an expectation that isn't met, in its record.
void Take(ModelHost& host, const Step& step);
// Takes them one after another; behind the end of the application only expectations. A modal window stays open for the
// indented steps behind the one that opened it, and is closed before the next that isn't. Jobs run to their end after
// each step, unless the next one cancels.
void TakeAll(ModelHost& host, const std::vector<Step>& steps);

} // namespace corvane::inspect
