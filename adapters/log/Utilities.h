// The application's log and folders.
#pragma once

#include "adapters/log/LogFile.h"
#include "corvane/platform/IUtilities.h"

#include <functional>

namespace corvane {

// A failure that the user is to see.
struct ShownFailure {
    std::string module; // "" for what the host itself says
    std::string procedure;
    Failure failure;
    std::string context;
    std::string logFile; // "" when there is none
};

class Utilities final : public IUtilities {
public:
    // appFolder holds Services, Images, plugins and QRZ.INI. An empty log folder represents corvane/<application> in
    // $XDG_STATE_HOME, or in ~/.local/state.
    Utilities(std::string appName, std::string appFolder, std::string logFolder = {});

    // A line is time, application, module, procedure, number, source, description and context, with tabs between.
    // Behind the context, or in its place, stands where in a plug-in the failure happened, when that is known. In the
    // texts \n, \r, \t and \\ represent a line feed, a carriage return, a tab and a backslash. Never fails by itself; a
    // failure of the host's callback goes to the caller.
    void LogError(std::string_view appName, std::string_view module, std::string_view procedure, const Failure& failure,
                  std::string_view context, bool show) override;
    std::string AppName() const override { return m_appName; }
    // By CORVANE_BREAK_ON_ERROR in the environment, with another value than 0.
    bool BreakOnError() const override { return m_breakOnError; }
    bool IsRunningInIDE() const override;
    std::string GetAppFolder(std::string_view name) const override;
    std::string LibraryFolder() const override { return m_appFolder; }

    // For the host.
    using ShowFunction = std::function<void(const ShownFailure&)>;
    // Shows a failure and returns when the user has seen it. Without one it goes to the error stream.
    void SetShow(ShowFunction show) { m_show = std::move(show); }
    [[nodiscard]] const std::string& LogPath() const { return m_log.Path(); }

private:
    std::string m_appName;
    std::string m_appFolder;
    LogFile m_log;
    ShowFunction m_show;
    const bool m_breakOnError;
};

} // namespace corvane
