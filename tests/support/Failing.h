// What a call fails with, as one readable value.
#pragma once

#include "corvane/base/Failure.h"

#include <string>

namespace corvane::test {

// "53: text", with its source "53 (source): text", or "no failure".
template <class F>
std::string FailureOf(F call, bool withSource = false) {
    try {
        call();
    } catch (const Failure& failure) {
        return std::to_string(failure.Number) + (withSource ? " (" + failure.Source + "): " : ": ") +
               failure.Description;
    }
    return "no failure";
}

} // namespace corvane::test
