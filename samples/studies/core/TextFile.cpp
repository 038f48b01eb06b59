#include "TextFile.h"

#include "Errors.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>

namespace studies {

std::string ReadTextFile(const std::string& path, corvane::TextEncoding encoding) {
    std::error_code ignored; // what can't be looked at can't be opened either
    if (std::filesystem::is_directory(path, ignored))
        FailWith(Translated("“%1” is a folder. Choose a file in it.", {path}));
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        if (errno == ENOENT || errno == ENOTDIR)
            FailWith(Translated("There is no file “%1”. It may have been moved or renamed; choose it again.", {path}));
        FailWith(Translated("The file “%1” can't be read: %2.", {path, std::strerror(errno)}));
    }
    std::stringstream text;
    text << stream.rdbuf();
    const std::string name = std::filesystem::path(path).filename().string();
    if (stream.bad())
        FailWith(Translated("The file “%1” can't be read to its end.", {path}));
    if (text.view().empty())
        FailWith(Translated("%1 is empty. Choose a file with a row of names and rows of values.", {name}));
    const std::string bytes = std::move(text).str();
    std::optional<std::string> decoded = corvane::DecodeText(bytes, encoding);
    if (decoded.value_or(bytes).find('\0') != std::string::npos)
        FailWith(Translated("%1 isn't a text file. Save the table as text with commas or tabs (CSV) in the program "
                            "that it comes from, and choose that file.",
                            {name}));
    if (!decoded)
        FailWith(Translated("%1 isn't in that encoding.", {name}));
    return *std::move(decoded);
}

} // namespace studies
