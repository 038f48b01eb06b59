// INI files on inih. Each call reads the file, so that a change is seen at once.
#pragma once

#include "corvane/platform/IIniReader.h"

#include <optional>

namespace corvane {

// Files may be named with either separator and without regard to case. Of two equal keys the first counts. A file that
// isn't UTF-8 is read as Windows-1252. A value is what is behind the sign up to the end of the line, without the
// blanks around it.
class IniReader final : public IIniReader {
public:
    // A number that doesn't fit becomes the nearest that does.
    Long ReadInteger(std::string_view file, std::string_view section, std::string_view key,
                     Long defaultNumber) const override;
    std::string ReadString(std::string_view file, std::string_view section, std::string_view key,
                           std::string_view defaultText, std::size_t maximum) const override;

private:
    [[nodiscard]] static std::optional<std::string> Value(std::string_view file, std::string_view section,
                                                          std::string_view key);
};

} // namespace corvane
