#include "corvane/platform/Platform.h"

namespace corvane {

namespace {
Platform g_oPlatform;
}

const Platform& CurrentPlatform() {
    return g_oPlatform;
}

void SetCurrentPlatform(Platform oPlatform) {
    g_oPlatform = std::move(oPlatform);
}

} // namespace corvane
