// A definition file of any bytes. Check and library read it, and neither crashes; where the check finds no error, the
// library has none to show, and the application starts.
#include "analysis/Check.h"
#include "cli/commands/FindingsJson.h"
#include "headless/Document.h"
#include "headless/ModelHost.h"
#include "tests/fuzz/FuzzedFolder.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

using namespace corvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::FuzzedFolder folder;
    folder.Write("Fuzzed.xml", {reinterpret_cast<const char*>(data), size});
    const auto findings = check::Check({folder.Path(), false});
    (void)tool::AsSarif(findings, "0");
    const bool errors = std::any_of(findings.begin(), findings.end(), [](const check::Finding& o) {
        return check::TextOf(o.rule).severity == check::Severity::Error;
    });
    // The root object as its own start service calls itself until the stack is used up.
    if (std::any_of(findings.begin(), findings.end(),
                    [](const check::Finding& o) { return o.rule == check::Rule::StartServiceFramework; }))
        return 0;
    inspect::ModelHost host({folder.Path(), true, nullptr});
    const bool started = host.Start();
    const bool shown = std::any_of(host.Recorded().log.begin(), host.Recorded().log.end(),
                                   [](const auto& entry) { return entry.shown; });
    if (!errors && (shown || !started)) {
        std::fputs(inspect::TextDocument(host, {}).c_str(), stderr);
        std::abort();
    }
    return 0;
}
