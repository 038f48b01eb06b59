// Utilities that keep what is logged as readable lines, and a platform made of them for as long as a test runs.
#pragma once

#include "corvane/base/Failure.h"
#include "corvane/platform/Platform.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane::testing {

class RecordingUtilities final : public IUtilities {
public:
    // "Module.Procedure Number", then the context in parentheses if there is one, then "shown" if it was.
    void LogError(std::string_view /*sAppName*/, std::string_view sModule, std::string_view sProcedure,
                  const Failure& oFailure, std::string_view sContext, bool bShow) override {
        std::string sLine =
            std::string(sModule) + "." + std::string(sProcedure) + " " + std::to_string(oFailure.Number);
        if (!sContext.empty())
            sLine += " (" + std::string(sContext) + ")";
        if (bShow)
            sLine += " shown";
        m_aLines.push_back(std::move(sLine));
    }
    std::string AppName() const override { return "Tests"; }
    bool BreakOnError() const override { return false; }
    bool IsRunningInIDE() const override { return false; }
    std::string GetAppFolder(std::string_view sName) const override {
        Fail(FailureNumber::PathNotFound, "There is no folder \"" + std::string(sName) + "\"");
    }
    std::string LibraryFolder() const override { return {}; }

    // The lines since the last call.
    [[nodiscard]] std::vector<std::string> TakeLines() { return std::exchange(m_aLines, {}); }

private:
    std::vector<std::string> m_aLines;
};

// The current platform of a test: recording utilities and nothing else.
class RecordingPlatform {
public:
    RecordingPlatform() {
        Platform oPlatform;
        oPlatform.oUtilities = m_oUtilities;
        SetCurrentPlatform(std::move(oPlatform));
    }
    RecordingPlatform(const RecordingPlatform&) = delete;
    RecordingPlatform& operator=(const RecordingPlatform&) = delete;
    ~RecordingPlatform() { SetCurrentPlatform({}); }

    [[nodiscard]] std::vector<std::string> TakeLines() const { return m_oUtilities->TakeLines(); }

private:
    Ref<RecordingUtilities> m_oUtilities = New<RecordingUtilities>();
};

// The number of the failure that a call ends with; 0 when it succeeds.
template <class Call>
[[nodiscard]] Long NumberOf(Call fnCall) {
    try {
        fnCall();
        return 0;
    } catch (const Failure& oFailure) {
        return oFailure.Number;
    }
}

} // namespace corvane::testing
