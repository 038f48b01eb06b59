// What a page's own class offers, so that the library reaches the PageBase inside it.
#pragma once

#include "corvane/base/Ref.h"
#include "corvane/windows/IPage.h"

namespace corvane {

class __attribute__((visibility("default"))) IPageAccess : public virtual Object {
public:
    virtual Ref<IPage> Page() = 0;
};

} // namespace corvane
