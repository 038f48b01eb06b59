// The machine's files. Paths may be written with either separator.
#pragma once

#include "corvane/platform/IFileSystem.h"

namespace corvane {

class FileSystem final : public IFileSystem {
public:
    std::vector<std::string> Files(std::string_view folderPath) const override;
    std::string FileName(std::string_view path) const override;
    std::string Extension(std::string_view path) const override;
    // An empty name gives the folder itself.
    std::string Join(std::string_view folder, std::string_view name) const override;
    // Fails with 75 when the file is there and can't be read.
    std::string ReadAll(std::string_view path) const override;
};

} // namespace corvane
