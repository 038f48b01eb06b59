// The opener of a window that is notified when it closes.
#pragma once

#include "corvane/base/Ref.h"

namespace corvane {

class Window;

class __attribute__((visibility("default"))) IWindowExitHandler : public virtual Object {
public:
    // Called once, while the window's fields are still set.
    virtual void OnExit(const Ref<Window>& oWindow, bool bWasCancelled) = 0;
};

} // namespace corvane
