// The global object by which clients reach the root.
#pragma once

#include "corvane/base/Ref.h"

namespace corvane {

class Framework;

class __attribute__((visibility("default"))) Singleton {
public:
    // Nothing while the library isn't loaded.
    [[nodiscard]] static Ref<corvane::Framework> Framework();
};

} // namespace corvane
