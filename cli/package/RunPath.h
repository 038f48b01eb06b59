// Where a shared library looks for those that it needs itself.
#pragma once

#include <filesystem>
#include <string>

namespace corvane::package {

// Leaves only the folders of the file's run path that are relative to the file itself, as in "$ORIGIN/lib"; without any
// it is "$ORIGIN". Returns the folders removed, divided by colons; empty when there were none, and for a file that
// isn't an ELF file of this machine's word size. Fails with 75 when the file can't be read or written.
[[nodiscard]] std::string RemoveForeignRunPath(const std::filesystem::path& file);

} // namespace corvane::package
