// A definition file of any bytes. Check and library read it, and neither crashes; where the check finds no error, the
// library has none to show, and the application starts.
#include "analysis/Check.h"
#include "analysis/Print.h"
#include "headless/Document.h"
#include "headless/ModelHost.h"
#include "tests/fuzz/FuzzedFolder.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

using namespace corvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize) {
    static const fuzz::FuzzedFolder oFolder;
    oFolder.Write("Fuzzed.xml", {reinterpret_cast<const char*>(pData), nSize});
    const auto aFindings = check::Check({oFolder.Path(), false});
    (void)check::AsSarif(aFindings, "0");
    const bool bErrors = std::any_of(aFindings.begin(), aFindings.end(), [](const check::Finding& o) {
        return check::TextOf(o.eRule).eSeverity == check::Severity::Error;
    });
    // The root object as its own start service calls itself until the stack is used up.
    if (std::any_of(aFindings.begin(), aFindings.end(),
                    [](const check::Finding& o) { return o.eRule == check::Rule::StartServiceFramework; }))
        return 0;
    inspect::ModelHost oHost({oFolder.Path(), true, nullptr});
    const bool bStarted = oHost.Start();
    const bool bShown = std::any_of(oHost.Recorded().aLog.begin(), oHost.Recorded().aLog.end(),
                                    [](const auto& oEntry) { return oEntry.bShown; });
    if (!bErrors && (bShown || !bStarted)) {
        std::fputs(inspect::TextDocument(oHost, {}).c_str(), stderr);
        std::abort();
    }
    return 0;
}
