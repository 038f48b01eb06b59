#include "cli/commands/Commands.h"

#include <cstdlib>
#include <iostream>
#include <unistd.h>

namespace corvane::tool {

int Fails(const std::string& what, const std::string& why) {
    std::cerr << what << ": error: " << why << "\n";
    return Exit::Failed;
}

bool IsColoured(int file) {
    const char* noColour = std::getenv("NO_COLOR");
    return !(noColour && *noColour) && ::isatty(file) == 1;
}

} // namespace corvane::tool
