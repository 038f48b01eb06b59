// What a call fails with, as one readable value.
#pragma once

#include "corvane/base/Failure.h"

#include <string>

namespace corvane::test {

// "53: text", or "no failure".
template <class F>
std::string FailureOf(F fnCall) {
    try {
        fnCall();
    } catch (const Failure& oFailure) {
        return std::to_string(oFailure.Number) + ": " + oFailure.Description;
    }
    return "no failure";
}

} // namespace corvane::test
