// How a service's process is started: the file plugin.json in its folder.
#pragma once

#include "adapters/process/ChildProcess.h"

#include <string>

namespace corvane {

struct ProcessSettings {
    std::string name; // of the plug-in: the part of its ProgIDs in front of the point
    std::string file; // path of plugin.json
    bool startsNow = false;
    LaunchCommand command;
};

// Reads the file, which lies in the plug-in's folder. Fails with 429, naming the file, the line where it isn't JSON, or
// the entry that is wrong, and what is wanted in its place.
[[nodiscard]] ProcessSettings ReadProcessSettings(const std::string& name, const std::string& file);

} // namespace corvane
