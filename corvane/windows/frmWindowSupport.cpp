#include "corvane/windows/frmWindowSupport.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/platform/Handlers.h"
#include "corvane/platform/Platform.h"
#include "corvane/windows/Window.h"

#include <utility>
#include <vector>

namespace corvane {

namespace {

constexpr Long lDelayMilliseconds = 50;

// No one else holds a form that waits for its tick.
std::vector<Ref<frmWindowSupport>> g_aWaiting;

} // namespace

frmWindowSupport::frmWindowSupport() : tmWindowSupport(CurrentPlatform().oTimers->NewTimer()) {
    tmWindowSupport->SetEnabled(false);
    tmWindowSupport->SetInterval(lDelayMilliseconds);
    m_oTick = tmWindowSupport->Tick.Subscribe([this] { tmWindowSupport_Timer(); });
}

frmWindowSupport::~frmWindowSupport() = default;

void frmWindowSupport::OpenWindowAsync(const Ref<Window>& oWindow) {
    if (!oWindow)
        Fail(FailureNumber::ObjectErrorBase, "oWindow is NULL.", "Check Parameters");
    std::erase(g_aWaiting, Ref<frmWindowSupport>(this));
    g_aWaiting.emplace_back(this);
    m_oWindow = oWindow;
    tmWindowSupport->SetEnabled(true);
}

void frmWindowSupport::UnloadAll() {
    for (const auto& oWaiting : std::exchange(g_aWaiting, {}))
        oWaiting->tmWindowSupport->SetEnabled(false);
}

void frmWindowSupport::tmWindowSupport_Timer() try {
    const Ref<frmWindowSupport> oSelf(this);
    std::erase(g_aWaiting, oSelf);
    tmWindowSupport->SetEnabled(false);
    if (!CorvaneMain::HasEnded())
        m_oWindow->Show();
    m_oWindow = nullptr;
} catch (...) {
    Reraise("frmWindowSupport", "tmWindowSupport_Timer");
}

} // namespace corvane
