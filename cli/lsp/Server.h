// The language server protocol for definition files: JSON-RPC over the standard input and output.
#pragma once

#include <iosfwd>

namespace corvane::lsp {

// Serves until "exit", or until the input ends. The exit code that the protocol asks for: 0 after "shutdown", else 1.
[[nodiscard]] int Serve(std::istream& in, std::ostream& out);

} // namespace corvane::lsp
