// The commands of the program. Each adds itself to the command line and leaves what it does in fnRun when it is chosen.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>

namespace corvane::tool {

// How the program ends.
enum Exit { Clean = 0, Findings = 1, Usage = 2, Failed = 3 };

using Run = std::function<int()>;

void AddInspect(CLI::App& oApp, Run& fnRun);
void AddCheck(CLI::App& oApp, Run& fnRun);
void AddNew(CLI::App& oApp, Run& fnRun);
void AddRun(CLI::App& oApp, Run& fnRun);
void AddPreview(CLI::App& oApp, Run& fnRun);
void AddPackage(CLI::App& oApp, Run& fnRun);
void AddExplain(CLI::App& oApp, Run& fnRun);
void AddTranslate(CLI::App& oApp, Run& fnRun);

// Prints "WHAT: error: WHY" and gives the exit code of a failure.
int Fails(const std::string& sWhat, const std::string& sWhy);

// Whether what is written there is coloured.
[[nodiscard]] bool IsColoured(int nFile);

} // namespace corvane::tool
