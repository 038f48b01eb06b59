#include "corvane/core/Library.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"

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
