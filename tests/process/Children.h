// The processes that this one has started.
#pragma once

#include <cstddef>
#include <fstream>
#include <string>
#include <sys/types.h>
#include <unistd.h>
#include <vector>

namespace corvane::testing {

inline std::vector<pid_t> AllChildren() {
    const std::string self = std::to_string(::getpid());
    std::ifstream file("/proc/self/task/" + self + "/children");
    std::vector<pid_t> children;
    for (pid_t child = 0; file >> child;)
        children.push_back(child);
    return children;
}

inline std::size_t Children() {
    return AllChildren().size();
}

inline pid_t FirstChild() {
    const auto children = AllChildren();
    return children.empty() ? 0 : children.front();
}

// One that has ended and that its parent hasn't asked after yet lives no longer.
inline bool IsAlive(pid_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string stat;
    std::getline(file, stat);
    const std::size_t name = stat.rfind(')');
    return name != std::string::npos && stat.size() > name + 2 && stat[name + 2] != 'Z';
}

} // namespace corvane::testing
