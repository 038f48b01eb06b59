#include "cli/commands/Commands.h"

#include <cstdlib>
#include <iostream>
#include <unistd.h>

namespace corvane::tool {

int Fails(const std::string& sWhat, const std::string& sWhy) {
    std::cerr << sWhat << ": error: " << sWhy << "\n";
    return Exit::Failed;
}

bool IsColoured(int nFile) {
    const char* sNoColour = std::getenv("NO_COLOR");
    return !(sNoColour && *sNoColour) && ::isatty(nFile) == 1;
}

} // namespace corvane::tool
