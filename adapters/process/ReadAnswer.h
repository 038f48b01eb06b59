// Reads what a process has answered, which may be anything.
#pragma once

#include "adapters/process/Process.h"

#include <nlohmann/json.hpp>

namespace corvane {

// The result of read. Fails with Process::Ended when that finds no member, or one of another type.
template <class Read>
auto ReadAnswer(const Process& process, const Read& read) {
    try {
        return read();
    } catch (const nlohmann::json::exception&) {
        Fail(Process::Ended, "The service \"" + process.Name() + "\" has answered in a wrong form", process.Name());
    }
}

} // namespace corvane
