#include "corvane/platform/Handlers.h"

#include "corvane/platform/Platform.h"

#include <csignal>

namespace corvane {

namespace {

// What can't be logged is raised all the same: the first failure tells more than the one of the log.
Failure Log(std::string_view sModule, std::string_view sProcedure, const std::string& sContext, bool bShow,
            Long lLine = 0) {
    Failure oFailure = CurrentFailure();
    if (oFailure.Line == 0)
        oFailure.Line = lLine;
    try {
        const Ref<IUtilities> oUtilities = CurrentPlatform().oUtilities;
        oUtilities->LogError(oUtilities->AppName(), sModule, sProcedure, oFailure, sContext, bShow);
    } catch (...) {
    }
    return oFailure;
}

void BreakIfAsked() {
    bool bBreaks = false;
    try {
        const Ref<IUtilities> oUtilities = CurrentPlatform().oUtilities;
        bBreaks = oUtilities->BreakOnError() && oUtilities->IsRunningInIDE();
    } catch (...) {
    }
    if (bBreaks)
        std::raise(SIGTRAP);
}

} // namespace

void Reraise(std::string_view sModule, std::string_view sProcedure, const std::string& sContext) {
    const Failure oFailure = Log(sModule, sProcedure, sContext, false);
    BreakIfAsked();
    throw oFailure;
}

void ReraiseAt(std::string_view sModule, std::string_view sProcedure, Long lLine) {
    const Failure oFailure = Log(sModule, sProcedure, {}, false, lLine);
    BreakIfAsked();
    throw oFailure;
}

void Report(std::string_view sModule, std::string_view sProcedure, const std::string& sContext) {
    (void)Log(sModule, sProcedure, sContext, true);
    BreakIfAsked();
}

void RaiseFrom(const std::string& sPlace) {
    Failure oFailure = CurrentFailure();
    AddPlace(oFailure, sPlace);
    throw oFailure;
}

void AddPlace(Failure& oFailure, const std::string& sPlace) {
    constexpr std::size_t nLongest = 1000; // procedures that call one another without end
    if (sPlace.empty() || oFailure.Context.size() > nLongest || oFailure.Context.find(sPlace) != std::string::npos)
        return;
    if (!oFailure.Context.empty())
        oFailure.Context += ", ";
    oFailure.Context += sPlace;
}

} // namespace corvane
