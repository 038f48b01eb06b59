#include "corvane/platform/Handlers.h"

#include "corvane/platform/Platform.h"

#include <csignal>

namespace corvane {

namespace {

Failure Log(std::string_view sModule, std::string_view sProcedure, const std::string& sContext, bool bShow,
            Long lLine = 0) {
    Failure oFailure = CurrentFailure();
    if (oFailure.Line == 0)
        oFailure.Line = lLine;
    const auto& oUtilities = CurrentPlatform().oUtilities;
    oUtilities->LogError(oUtilities->AppName(), sModule, sProcedure, oFailure, sContext, bShow);
    return oFailure;
}

// Stops in the debugger first, when the application asks for it and one is attached.
[[noreturn]] void RaiseAgain(const Failure& oFailure) {
    const auto& oUtilities = CurrentPlatform().oUtilities;
    if (oUtilities->BreakOnError() && oUtilities->IsRunningInIDE())
        std::raise(SIGTRAP);
    throw oFailure;
}

} // namespace

void Reraise(std::string_view sModule, std::string_view sProcedure, const std::string& sContext) {
    RaiseAgain(Log(sModule, sProcedure, sContext, false));
}

void ReraiseAt(std::string_view sModule, std::string_view sProcedure, Long lLine) {
    RaiseAgain(Log(sModule, sProcedure, {}, false, lLine));
}

void Report(std::string_view sModule, std::string_view sProcedure, const std::string& sContext) {
    Log(sModule, sProcedure, sContext, true);
}

} // namespace corvane
