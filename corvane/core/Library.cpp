#include "corvane/core/Library.h"

#include "corvane/core/Framework.h"
#include "corvane/core/Internals.h"

namespace corvane {

Library::Library(Platform oPlatform) {
    SetCurrentPlatform(std::move(oPlatform));
    CorvaneMain::Main();
}

Library::~Library() {
    CorvaneMain::Unload();
    SetCurrentPlatform({});
}

} // namespace corvane
