// Window procedures by handle, under the numbers that window messages have.
#pragma once

#include "corvane/base/Failure.h"
#include "corvane/base/Object.h"

#include <cstdint>
#include <functional>

namespace corvane {

namespace WindowMessage {
inline constexpr Long Close = 0x10;
inline constexpr Long GetMinMaxInfo = 0x24;
} // namespace WindowMessage

struct MinMaxInfo {
    struct Point {
        Long lX = 0;
        Long lY = 0;
    };
    Point oReserved, oMaxSize, oMaxPosition, oMinTrackSize, oMaxTrackSize;
};

// lParam is an address for GetMinMaxInfo, so it is as wide as one.
using WindowProc = std::function<Long(Long hWnd, Long uMsg, Long wParam, std::intptr_t lParam)>;

class __attribute__((visibility("default"))) IWindowMessages : public virtual Object {
public:
    // A number that identifies a procedure. Numbers are never reused.
    [[nodiscard]] virtual Long RegisterProc(WindowProc fnProc) = 0;
    // The window's present procedure. Fails with 5 for an unknown handle.
    [[nodiscard]] virtual Long GetWindowProc(Long hWnd) const = 0;
    virtual void SetWindowProc(Long hWnd, Long lProc) = 0;
    virtual Long CallWindowProc(Long lProc, Long hWnd, Long uMsg, Long wParam, std::intptr_t lParam) = 0;
    virtual Long DefWindowProc(Long hWnd, Long uMsg, Long wParam, std::intptr_t lParam) = 0;
};

} // namespace corvane
