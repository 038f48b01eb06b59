#include "cli/commands/Commands.h"
#include "cli/lsp/Server.h"

#include <cstdint>
#include <iostream>

namespace corvane::tool {

void AddLsp(CLI::App& app, Run& run) {
    auto* lsp =
        app.add_subcommand("lsp", "Serves editors: findings, completion, definitions, renaming (a language server)");
    lsp->add_flag_function(
        "--stdio", [](std::int64_t) {}, "As editors ask for it; there is no other way");
    lsp->callback([&run] { run = [] { return lsp::Serve(std::cin, std::cout) == 0 ? Exit::Clean : Exit::Findings; }; });
}

} // namespace corvane::tool
