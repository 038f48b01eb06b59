// Finds what is wrong with the definition files of an application, all at once, without running any of its code.
#pragma once

#include "analysis/Findings.h"

#include <string>
#include <vector>

namespace corvane::check {

struct Options {
    std::string application; // the folder
    bool plugins = false;    // also load the plug-ins, and compare them with what the definitions ask of them
    Buffers buffers = {};    // what is read in place of the files
};

// In order of files and places, each problem once. Fails with 76 when the folder isn't one of an application.
[[nodiscard]] std::vector<Finding> Check(const Options& options);

// Those in one definition file, by its name without the folder, for a host that has failed to read it.
[[nodiscard]] std::vector<Finding> CheckFile(const std::string& application, const std::string& file);

} // namespace corvane::check
