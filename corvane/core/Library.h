// The loaded library: made with a platform, it creates the root object; its end unloads it.
#pragma once

#include "corvane/platform/Platform.h"

namespace corvane {

// One at a time. The main form should have unloaded before the end.
class __attribute__((visibility("default"))) Library {
public:
    explicit Library(Platform oPlatform);
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
};

} // namespace corvane
