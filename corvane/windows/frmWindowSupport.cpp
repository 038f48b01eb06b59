#include "corvane/windows/frmWindowSupport.h"

#include "corvane/platform/Handlers.h"
#include "corvane/platform/Platform.h"
#include "corvane/windows/Window.h"

namespace corvane {

namespace {

constexpr Long lDelayMilliseconds = 50;

} // namespace

frmWindowSupport::frmWindowSupport() : tmWindowSupport(CurrentPlatform().oTimers->NewTimer()) {
    tmWindowSupport->SetEnabled(false);
    tmWindowSupport->SetInterval(lDelayMilliseconds);
}

frmWindowSupport::~frmWindowSupport() = default;

void frmWindowSupport::OpenWindowAsync(const Ref<Window>& oWindow) {
    if (!oWindow)
        Fail(FailureNumber::ObjectErrorBase, "oWindow is NULL.", "Check Parameters");
    m_oWindow = oWindow;
    // The form holds itself by its timer until the tick has been handled.
    m_oTick =
        tmWindowSupport->Tick.Subscribe([oSelf = Ref<frmWindowSupport>(this)] { oSelf->tmWindowSupport_Timer(); });
    tmWindowSupport->SetEnabled(true);
}

void frmWindowSupport::tmWindowSupport_Timer() try {
    const Ref<frmWindowSupport> oSelf(this);
    tmWindowSupport->SetEnabled(false);
    m_oTick.Cancel();
    m_oWindow->Show();
    m_oWindow = nullptr;
} catch (...) {
    Reraise("frmWindowSupport", "tmWindowSupport_Timer");
}

} // namespace corvane
