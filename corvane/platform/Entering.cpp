#include "corvane/platform/Entering.h"

#include "corvane/base/Failure.h"

namespace corvane {

namespace {

constexpr int nDeepestEntering = 400;

Entering::Watcher* pTheWatcher = nullptr;
int nDepth = 0; // of the scopes that are within one another now

} // namespace

Entering::Entering(const Ref<Object>& oObject) : m_bTold(pTheWatcher && oObject) {
    if (nDepth == nDeepestEntering)
        Fail(FailureNumber::OutOfStackSpace);
    ++nDepth;
    if (m_bTold)
        pTheWatcher->Entered(*oObject);
}

Entering::~Entering() {
    --nDepth;
    if (m_bTold && pTheWatcher)
        pTheWatcher->Left();
}

void Entering::SetWatcher(Watcher* pWatcher) noexcept {
    pTheWatcher = pWatcher;
}

} // namespace corvane
