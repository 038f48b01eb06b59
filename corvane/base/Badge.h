// A parameter that only one class can supply, for members that only it may call.
#pragma once

namespace corvane {

template <class T>
class Badge {
    friend T;
    Badge() = default;
};

} // namespace corvane
