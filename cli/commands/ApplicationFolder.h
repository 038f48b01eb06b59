// The application folder that a command is given, and what to say to someone who names another folder instead.
#pragma once

#include <string>

namespace corvane::tool {

// The folder without the separators at its end.
[[nodiscard]] std::string PlainFolder(std::string folder);

// What else will do: a folder that a build turns into an application folder, or one without definition files, when the
// failure of its start is what is asked for.
enum class Also { Nothing, Sources, Incomplete };

// The folder as the first function gives it. Fails with 76 for what isn't an application folder, and says which one may
// be meant.
[[nodiscard]] std::string ApplicationFolder(const std::string& folder, Also also = Also::Nothing);

} // namespace corvane::tool
