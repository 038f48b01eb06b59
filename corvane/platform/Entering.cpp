#include "corvane/platform/Entering.h"

namespace corvane {

namespace {

Entering::Watcher* pTheWatcher = nullptr;

} // namespace

Entering::Entering(const Ref<Object>& oObject) noexcept : m_bTold(pTheWatcher && oObject) {
    if (m_bTold)
        pTheWatcher->Entered(*oObject);
}

Entering::~Entering() {
    if (m_bTold && pTheWatcher)
        pTheWatcher->Left();
}

void Entering::SetWatcher(Watcher* pWatcher) noexcept {
    pTheWatcher = pWatcher;
}

} // namespace corvane
