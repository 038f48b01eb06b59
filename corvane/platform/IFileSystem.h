// The files that the library reads.
#pragma once

#include "corvane/base/Object.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class __attribute__((visibility("default"))) IFileSystem : public virtual Object {
public:
    // The paths of a folder's files (no folders), in order of their names without regard to case. 76 when there is
    // no such folder.
    [[nodiscard]] virtual std::vector<std::string> Files(std::string_view sFolder) const = 0;
    // The last part of a path, with its extension.
    [[nodiscard]] virtual std::string FileName(std::string_view sPath) const = 0;
    // The part after the last point of the file's name; "" without one.
    [[nodiscard]] virtual std::string Extension(std::string_view sPath) const = 0;
    [[nodiscard]] virtual std::string Join(std::string_view sFolder, std::string_view sName) const = 0;
    // The file's bytes. A name that isn't there as written is found without regard to case. 53 when there is none.
    [[nodiscard]] virtual std::string ReadAll(std::string_view sPath) const = 0;
};

} // namespace corvane
