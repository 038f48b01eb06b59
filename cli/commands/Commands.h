// The commands of the program. Each adds itself to the command line and leaves what it does in run when it is chosen.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>

namespace corvane::tool {

// How the program ends.
enum Exit { Clean = 0, Findings = 1, Usage = 2, Failed = 3 };

using Run = std::function<int()>;

void AddInspect(CLI::App& app, Run& run);
void AddCheck(CLI::App& app, Run& run);
void AddNew(CLI::App& app, Run& run);
void AddRun(CLI::App& app, Run& runFunction);
void AddPreview(CLI::App& app, Run& run);
void AddPackage(CLI::App& app, Run& run);
void AddArrange(CLI::App& app, Run& run);
void AddLsp(CLI::App& app, Run& run);
void AddExplain(CLI::App& app, Run& run);
void AddDescribe(CLI::App& app, Run& run);
void AddTranslate(CLI::App& app, Run& run);

// Prints "WHAT: error: WHY" and gives the exit code of a failure.
int Fails(const std::string& what, const std::string& why);

// Whether what is written there is coloured.
[[nodiscard]] bool IsColoured(int file);

} // namespace corvane::tool
