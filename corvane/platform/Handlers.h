// The error convention: what a procedure does with a failure that reaches it.
#pragma once

#include "corvane/base/Failure.h"

#include <string>
#include <string_view>

namespace corvane {

// The two handlers, to be called from the catch block of a procedure. Each logs the current exception under the name
// of the module and the procedure, with a context and, if bShow, before the user's eyes, and then stops in the
// debugger, when the application asks for it and one is attached. Reraise then raises the same failure to the caller,
// also when it couldn't be logged; Report, the top-level form, shows it and ends the procedure.
[[noreturn, gnu::visibility("default")]] void Reraise(std::string_view sModule, std::string_view sProcedure,
                                                      const std::string& sContext = {});
// The same where a definition file is being read: a failure without a line gets this one.
[[noreturn, gnu::visibility("default")]] void ReraiseAt(std::string_view sModule, std::string_view sProcedure,
                                                        Long lLine);
[[gnu::visibility("default")]] void Report(std::string_view sModule, std::string_view sProcedure,
                                           const std::string& sContext = {});

// Raises the current exception as a Failure that has left a procedure of a plug-in at this place, as
// CorvaneMain::PlaceOf tells it.
[[noreturn, gnu::visibility("default")]] void RaiseFrom(const std::string& sPlace);
// Adds the place to the failure's Context, unless it stands there already.
[[gnu::visibility("default")]] void AddPlace(Failure& oFailure, const std::string& sPlace);

} // namespace corvane
