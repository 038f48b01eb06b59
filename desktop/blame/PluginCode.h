// Which plug-in's code an address is in, and the calls that are under way in a thread: enough to say whose code it
// was when the program died or hung.
#pragma once

#include <string>
#include <string_view>

namespace corvane::desktop {

// The name of the plug-in that a ProgID belongs to: the part in front of the point.
[[nodiscard]] inline std::string PluginOf(std::string_view progID) {
    return std::string(progID.substr(0, progID.find('.')));
}

} // namespace corvane::desktop

namespace corvane::desktop::PluginCode {

// Notes where the libraries of that folder have been loaded. After each loading.
void NoteLibraries(const std::string& folderPath);

// The name of the plug-in, such as "StudiesSvc", in whose code the innermost of the calls under way is; a null pointer
// when there is none. May be called in a signal handler.
[[nodiscard]] const char* Innermost() noexcept;

} // namespace corvane::desktop::PluginCode
