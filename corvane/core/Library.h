// The loaded library: made with a platform, it creates the root object; its end unloads it.
#pragma once

#include "corvane/platform/Platform.h"

#include <cstdint>

namespace corvane {

// One at a time. The main form should have unloaded before the end. A debug build lets only the thread that has made it
// use objects, and names the objects of plug-ins that are alive at its end on standard error.
class __attribute__((visibility("default"))) Library {
public:
    explicit Library(Platform oPlatform);
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

private:
    std::uint64_t m_uMark; // of the objects that it outlives
};

} // namespace corvane
