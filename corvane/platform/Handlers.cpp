#include "corvane/platform/Handlers.h"

#include "corvane/platform/Platform.h"

#include <csignal>

namespace corvane {

namespace {

// Logs, and stops in the debugger when both the application asks for it and one is attached.
Failure Log(std::string_view sModule, std::string_view sProcedure, const std::string& sContext, bool bShow) {
    const Failure oFailure = CurrentFailure();
    const auto& oUtilities = CurrentPlatform().oUtilities;
    oUtilities->LogError(oUtilities->AppName(), sModule, sProcedure, oFailure, sContext, bShow);
    return oFailure;
}

} // namespace

void Reraise(std::string_view sModule, std::string_view sProcedure, const std::string& sContext) {
    const Failure oFailure = Log(sModule, sProcedure, sContext, false);
    const auto& oUtilities = CurrentPlatform().oUtilities;
    if (oUtilities->BreakOnError() && oUtilities->IsRunningInIDE())
        std::raise(SIGTRAP);
    throw oFailure;
}

void Report(std::string_view sModule, std::string_view sProcedure, const std::string& sContext) {
    Log(sModule, sProcedure, sContext, true);
}

} // namespace corvane
