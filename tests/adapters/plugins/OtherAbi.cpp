#include <cstdint>

// A later version may lay out the rest in any way, so here the version is all that there is.
extern "C" [[gnu::visibility("default")]] const std::uint32_t* corvane_plugin() {
    static const std::uint32_t version = 7;
    return &version;
}
