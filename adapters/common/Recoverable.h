// An object whose other half lives in a process of its own, which may end by itself and begin again.
#pragma once

#include "corvane/base/Event.h"
#include "corvane/base/Object.h"
#include "corvane/base/Variant.h"

#include <string>
#include <utility>
#include <vector>

namespace corvane {

class Recoverable : public virtual Object {
public:
    // Its process doesn't run: a call would start it.
    [[nodiscard]] virtual bool IsIdle() const = 0;
    // Why the other half has gone, in words for the user; empty while there is one, and before there has been any.
    [[nodiscard]] virtual const std::string& WhyLost() const = 0;
    // Starts the process again, and makes and initializes the other half. Fails when that isn't possible.
    virtual void Recover() = 0;

    // Writes several properties at once. Those behind one that can't be written are left out; the failure is that
    // one's.
    virtual void PutAll(const std::vector<std::pair<std::string, Variant>>& values) = 0;

    Event<> LostChanged;
    // The other half has been made again, and has been initialized: what it was given since its first initialization is
    // to be given again.
    Event<> Recovered;
};

} // namespace corvane
