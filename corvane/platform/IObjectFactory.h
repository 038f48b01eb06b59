// Creation of a plug-in's object from its ProgID, "Library.Class".
#pragma once

#include "corvane/base/Ref.h"

#include <string_view>

namespace corvane {

class __attribute__((visibility("default"))) IObjectFactory : public virtual Object {
public:
    // Fails with 429 when the object can't be created; the description says which file, what was found and what was
    // wanted.
    [[nodiscard]] virtual Ref<Object> Create(std::string_view sProgID) = 0;
};

} // namespace corvane
