// What a call fails with, as one readable value.
#pragma once

#include "corvane/base/Failure.h"

#include <string>

namespace corvane::test {

// "53: text", or "no failure".
template <class F>
std::string FailureOf(F call) {
    try {
        call();
    } catch (const Failure& failure) {
        return std::to_string(failure.Number) + ": " + failure.Description;
    }
    return "no failure";
}

} // namespace corvane::test
