// Which classes an object factory has, asked before it is to make an object.
#pragma once

#include "corvane/base/Object.h"

#include <string_view>

namespace corvane {

// A factory may implement it beside IObjectFactory.
class __attribute__((visibility("default"))) IClassFinder : public virtual Object {
public:
    // False when there is no such library or class. True when that can't be found out because the library can't be
    // loaded: Create says why. Never fails.
    [[nodiscard]] virtual bool HasClass(std::string_view sProgID) = 0;
};

} // namespace corvane
