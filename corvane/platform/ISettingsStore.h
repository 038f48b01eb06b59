// Texts of one user that survive the program, addressed by service, category and name.
#pragma once

#include "corvane/base/Object.h"

#include <string>
#include <string_view>

namespace corvane {

class __attribute__((visibility("default"))) ISettingsStore : public virtual Object {
public:
    // The text, or the default when there is none.
    [[nodiscard]] virtual std::string Read(std::string_view sService, std::string_view sCategory,
                                           std::string_view sName, std::string_view sDefault) const = 0;
    // Replaces any earlier text. It is on disk when the call returns; fails when it can't be.
    virtual void Write(std::string_view sService, std::string_view sCategory, std::string_view sName,
                       std::string_view sValue) = 0;
};

} // namespace corvane
