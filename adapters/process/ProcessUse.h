// What a process has been used for since the application started, and what it takes.
#pragma once

#include "adapters/process/Connection.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <sys/types.h>

namespace corvane {

struct ProcessUse {
    pid_t id = 0; // 0 while it doesn't run
    int starts = 0;
    std::uint64_t memory = 0; // bytes: now, or at most once it has ended
    std::size_t calls = 0;    // of the application
    double milliseconds = 0;  // of all of them
    double longest = 0;       // milliseconds of the one
    std::string longestName;  // as "OnImport"

    void CountCall(const std::string& name, double duration);
    // For the details of a death: with the most that the process had in memory, where that is known.
    [[nodiscard]] std::string Text(const Connection& process) const;
};

// Bytes that the process has in memory; 0 when that isn't known.
[[nodiscard]] std::uint64_t MemoryOf(pid_t id);

} // namespace corvane
