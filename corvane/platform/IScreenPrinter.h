// Prints what is on screen.
#pragma once

#include "corvane/base/Failure.h"
#include "corvane/base/Object.h"

namespace corvane {

class __attribute__((visibility("default"))) IScreenPrinter : public virtual Object {
public:
    // lMode 0: the desktop, lHwnd 0. 1: the main form of that handle. 2: the child form of that handle.
    virtual void PrintWindow(Long lMode, Long lHwnd) = 0;
};

} // namespace corvane
