// Whoever opened a window and wants to know of its end.
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
