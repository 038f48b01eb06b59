// Utilities that keep what is logged as readable lines, and a platform made of them for as long as a test runs.
#pragma once

#include "corvane/base/Failure.h"
#include "corvane/base/Variant.h"
#include "corvane/platform/Platform.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane::testing {

class RecordingUtilities final : public IUtilities {
public:
    // "Module.Procedure Number", then the context in parentheses if there is one, then "shown" if it was.
    void LogError(std::string_view /*appName*/, std::string_view module, std::string_view procedure,
                  const Failure& failure, std::string_view context, bool show) override {
        std::string line = std::string(module) + "." + std::string(procedure) + " " + std::to_string(failure.Number);
        if (!context.empty())
            line += " (" + std::string(context) + ")";
        if (show)
            line += " shown";
        m_lines.push_back(std::move(line));
    }
    std::string AppName() const override { return "Tests"; }
    bool BreakOnError() const override { return false; }
    bool IsRunningInIDE() const override { return false; }
    std::string GetAppFolder(std::string_view name) const override {
        Fail(FailureNumber::PathNotFound, "There is no folder \"" + std::string(name) + "\"");
    }
    std::string LibraryFolder() const override { return {}; }

    // The lines since the last call.
    [[nodiscard]] std::vector<std::string> TakeLines() { return std::exchange(m_lines, {}); }

private:
    std::vector<std::string> m_lines;
};

// The current platform of a test: recording utilities and nothing else.
class RecordingPlatform {
public:
    RecordingPlatform() {
        Platform platform;
        platform.oUtilities = m_utilities;
        SetCurrentPlatform(std::move(platform));
    }
    RecordingPlatform(const RecordingPlatform&) = delete;
    RecordingPlatform& operator=(const RecordingPlatform&) = delete;
    ~RecordingPlatform() { SetCurrentPlatform({}); }

    [[nodiscard]] std::vector<std::string> TakeLines() const { return m_utilities->TakeLines(); }

private:
    Ref<RecordingUtilities> m_utilities = New<RecordingUtilities>();
};

// The number of the failure that a call ends with; 0 when it succeeds.
template <class Call>
[[nodiscard]] Long NumberOf(Call call) {
    try {
        call();
        return 0;
    } catch (const Failure& failure) {
        return failure.Number;
    }
}

// What a call returns, as text, or "fails" and the number of its failure.
template <class Call>
[[nodiscard]] std::string ResultOf(Call call) {
    try {
        return ToText(call());
    } catch (const Failure& failure) {
        return "fails " + std::to_string(failure.Number);
    }
}

} // namespace corvane::testing
