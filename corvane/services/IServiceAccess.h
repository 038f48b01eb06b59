// What a service's own class offers, so that the library reaches the ServiceBase inside it.
#pragma once

#include "corvane/base/Ref.h"
#include "corvane/services/IService.h"

namespace corvane {

class __attribute__((visibility("default"))) IServiceAccess : public virtual Object {
public:
    virtual Ref<IService> Service() = 0;
};

} // namespace corvane
