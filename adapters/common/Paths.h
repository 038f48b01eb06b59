// Paths as definition files and their authors write them: either separator, and names without regard to case.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

// One separator between the two, whatever they end and begin with. An empty name gives the folder.
[[nodiscard]] std::string JoinPath(std::string_view folder, std::string_view name);

// The path of what is there under the given one. As written it comes first; else each part is searched for without
// regard to case, with \ read as /. Nothing when it isn't there.
[[nodiscard]] std::optional<std::string> FindPath(std::string_view path);

// The names in a folder, in order without regard to case (by their bytes where they differ in case only), or nothing
// when there is no such folder. With filesOnly no folders are among them.
[[nodiscard]] std::optional<std::vector<std::string>> NamesIn(const std::string& folder, bool filesOnly = false);

// The bytes of a file, or nothing with errno set.
[[nodiscard]] std::optional<std::string> ReadBytes(const std::string& path);

// The bytes of a file that is found as FindPath finds it. 53 when there is none, 75 when it can't be read.
[[nodiscard]] std::string ReadFileOrFail(std::string_view pathText);

// The user's folder of a kind: the environment's variable, or the folder below the home folder ("" without a home).
[[nodiscard]] std::string UserFolder(const char* variable, std::string_view belowHome);

// A name made fit to be one part of a path.
[[nodiscard]] std::string AsFileName(std::string_view name);

} // namespace corvane
