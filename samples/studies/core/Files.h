// The files that the user names.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace studies {

[[nodiscard]] std::string FileNameOf(const std::string& path);
// Asks for a file with rows, or also one with a study; nothing when the user cancels.
[[nodiscard]] std::optional<std::string> AskForDataFile(const std::string& title, bool orStudy = false);
// Asks where to write a file, with a filter as AskSaveFile takes it and a path to begin with, in the home folder if a
// name alone is given; "" when the user cancels.
[[nodiscard]] std::string AskForSavePath(const std::string& title, const std::string& filter,
                                         const std::string& fileName);

// Asks likewise, lets write fill the file of that path, and says so in the status line; unless the user cancels.
void ExportAs(const std::string& filter, const std::string& fileName,
              const std::function<void(const std::string& path)>& write);

} // namespace studies
