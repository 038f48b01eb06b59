// Timers of the message loop, and the loop itself.
#pragma once

#include "corvane/base/Event.h"
#include "corvane/base/Failure.h"
#include "corvane/base/Ref.h"

namespace corvane {

class __attribute__((visibility("default"))) ITimer : public virtual Object {
public:
    Event<> Tick;
    virtual void SetInterval(Long lMilliseconds) = 0;
    // Ticks again and again until disabled.
    virtual void SetEnabled(bool bEnabled) = 0;
};

class __attribute__((visibility("default"))) ITimers : public virtual Object {
public:
    // Disabled at first.
    [[nodiscard]] virtual Ref<ITimer> NewTimer() = 0;
    // Runs the message loop once: paints and delivers what is pending.
    virtual void DoEvents() = 0;
};

} // namespace corvane
