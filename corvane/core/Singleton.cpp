#include "corvane/core/Singleton.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"

namespace corvane {

Ref<corvane::Framework> Singleton::Framework() {
    return CorvaneMain::Framework();
}

} // namespace corvane
