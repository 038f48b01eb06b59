#include "adapters/process/ProcessUse.h"

#include <cmath>
#include <fstream>
#include <unistd.h>

namespace corvane {

void ProcessUse::CountCall(const std::string& name, double duration) {
    ++calls;
    milliseconds += duration;
    if (duration > longest) {
        longest = duration;
        longestName = name;
    }
}

std::string ProcessUse::Text(const Connection& process) const {
    constexpr std::uint64_t mebibyte = 1024 * 1024;
    std::string text = "process " + std::to_string(process.Id()) + ", " + std::to_string(calls) + " calls";
    if (const std::uint64_t most = process.Used().memory; most > 0)
        text += ", at most " + std::to_string((most + mebibyte / 2) / mebibyte) + " MiB";
    if (calls > 0)
        text += ", the longest of " + std::to_string(std::llround(longest)) + " ms" +
                (longestName.empty() ? "" : " (" + longestName + ")");
    return text;
}

std::uint64_t MemoryOf(pid_t id) {
    std::ifstream file("/proc/" + std::to_string(id) + "/statm");
    std::uint64_t all = 0;
    std::uint64_t resident = 0;
    file >> all >> resident;
    return resident * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
}

} // namespace corvane
