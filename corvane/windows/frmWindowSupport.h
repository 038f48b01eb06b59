// A form that is never shown: it shows a window a moment after it was asked to, from the message loop.
#pragma once

#include "corvane/base/Event.h"
#include "corvane/base/Ref.h"
#include "corvane/platform/ITimers.h"

namespace corvane {

class Window;

// For one opening: it waits on its own until its timer has ticked.
class frmWindowSupport final : public virtual Object {
public:
    frmWindowSupport();
    ~frmWindowSupport() override;

    // Fails with ObjectErrorBase for nothing. A second call before the tick replaces the window.
    void OpenWindowAsync(const Ref<Window>& oWindow);

    // Drops all that still wait, when the library is unloaded.
    static void UnloadAll();

    std::string_view TypeName() const override { return "frmWindowSupport"; }

private:
    void tmWindowSupport_Timer();

    Ref<ITimer> tmWindowSupport;
    Subscription m_oTick;
    Ref<Window> m_oWindow;
};

} // namespace corvane
