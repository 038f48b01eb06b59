// Reads keys of INI files. A missing file, section or key gives the default.
#pragma once

#include "corvane/base/Failure.h"
#include "corvane/base/Object.h"

#include <string>
#include <string_view>

namespace corvane {

class __attribute__((visibility("default"))) IIniReader : public virtual Object {
public:
    // The leading whole number of the value; 0 for a value that begins with none.
    [[nodiscard]] virtual Long ReadInteger(std::string_view sFile, std::string_view sSection, std::string_view sKey,
                                           Long lDefault) const = 0;
    // At most nMaximum characters.
    [[nodiscard]] virtual std::string ReadString(std::string_view sFile, std::string_view sSection,
                                                 std::string_view sKey, std::string_view sDefault,
                                                 std::size_t nMaximum) const = 0;
};

} // namespace corvane
