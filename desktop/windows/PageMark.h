// What a window shows of one page beside the page itself: on its tab or in the list of steps.
#pragma once

#include <QString>

namespace corvane::desktop {

struct PageMark {
    QString caption;
    bool isOptional = false;
    bool isBroken = false;  // it can't be shown
    bool isInvalid = false; // it holds the window's commands back
    bool isDone = false;    // of a wizard: behind the one in front and in order
    bool isReachable = true;

    // In one sentence, for tooltips and for those who don't see the sign; empty when all is well.
    [[nodiscard]] QString Remark() const;
    bool operator==(const PageMark&) const = default;
};

} // namespace corvane::desktop
