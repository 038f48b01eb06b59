// Identity numbers of objects.
#pragma once

#include "corvane/base/Ref.h"

namespace corvane {

class ObjectKeyProvider final : public virtual Object {
public:
    // Unique among living objects and stable while the object lives. Fails with 91 for nothing.
    [[nodiscard]] Long ObjectKey(const Ref<Object>& oObject) const { return oObject->ObjectKey(); }
};

} // namespace corvane
