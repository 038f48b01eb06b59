// The screen: the mouse pointer and how many twips a pixel has.
#pragma once

#include "corvane/base/Failure.h"
#include "corvane/base/Object.h"

namespace corvane {

enum class MousePointer : Long { Default = 0, Hourglass = 11 };

class __attribute__((visibility("default"))) IScreen : public virtual Object {
public:
    [[nodiscard]] virtual MousePointer Pointer() const = 0;
    virtual void SetPointer(MousePointer ePointer) = 0;
    // 15 at 96 dots an inch.
    [[nodiscard]] virtual Single TwipsPerPixelX() const = 0;
    [[nodiscard]] virtual Single TwipsPerPixelY() const = 0;
};

} // namespace corvane
