// The error convention: what a procedure does with a failure that reaches it.
#pragma once

#include "corvane/base/Failure.h"

#include <string>
#include <string_view>

namespace corvane {

// The two handlers, to be called from the catch block of a procedure. Each logs the current exception under the name
// of the module and the procedure, with a context and, if bShow, before the user's eyes.
// Reraise then raises the same failure to the caller; Report, the top-level form, shows it and ends the procedure.
[[noreturn, gnu::visibility("default")]] void Reraise(std::string_view sModule, std::string_view sProcedure,
                                                      const std::string& sContext = {});
// The same where a definition file is being read: a failure without a line gets this one.
[[noreturn, gnu::visibility("default")]] void ReraiseAt(std::string_view sModule, std::string_view sProcedure,
                                                        Long lLine);
[[gnu::visibility("default")]] void Report(std::string_view sModule, std::string_view sProcedure,
                                           const std::string& sContext = {});

} // namespace corvane
