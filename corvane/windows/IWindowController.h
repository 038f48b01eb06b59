// What the window manager offers to its windows.
#pragma once

#include "corvane/base/Ref.h"

namespace corvane {

class Window;

class __attribute__((visibility("default"))) IWindowController : public virtual Object {
public:
    virtual void WindowInitialize(const Ref<Window>& oWindow) = 0;
    virtual void WindowTerminate(const Ref<Window>& oWindow) = 0;
    virtual void WindowActivate(const Ref<Window>& oWindow) = 0;
    virtual void WindowDeactivate(const Ref<Window>& oWindow) = 0;
    virtual void PageInitialize(const Ref<Object>& oPageObj) = 0;
    virtual void PageTerminate(const Ref<Object>& oPageObj) = 0;
    virtual void PageActivate(const Ref<Object>& oPageObj) = 0;
    virtual void PageDeactivate(const Ref<Object>& oPageObj) = 0;
};

} // namespace corvane
