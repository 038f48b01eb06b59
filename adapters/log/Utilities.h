// The application's log and folders.
#pragma once

#include "adapters/log/LogFile.h"
#include "corvane/platform/IUtilities.h"

#include <functional>

namespace corvane {

// A failure that the user is to see.
struct ShownFailure {
    std::string sModule; // "" for what the host itself says
    std::string sProcedure;
    Failure oFailure;
    std::string sContext;
    std::string sLogFile; // "" when there is none
};

class Utilities final : public IUtilities {
public:
    // sAppFolder holds Services, Images, plugins and QRZ.INI. An empty log folder stands for corvane/<application> in
    // $XDG_STATE_HOME, or in ~/.local/state.
    Utilities(std::string sAppName, std::string sAppFolder, std::string sLogFolder = {});

    // A line is time, application, module, procedure, number, source, description and context, with tabs between. In
    // the texts \n, \r, \t and \\ stand for a line feed, a carriage return, a tab and a backslash. Never fails by
    // itself; a failure of the host's callback goes to the caller.
    void LogError(std::string_view sAppName, std::string_view sModule, std::string_view sProcedure,
                  const Failure& oFailure, std::string_view sContext, bool bShow) override;
    std::string AppName() const override { return m_sAppName; }
    bool BreakOnError() const override { return m_bBreakOnError; }
    bool IsRunningInIDE() const override;
    std::string GetAppFolder(std::string_view sName) const override;
    std::string LibraryFolder() const override { return m_sAppFolder; }

    // For the host.
    using ShowFunction = std::function<void(const ShownFailure&)>;
    // Shows a failure and returns when the user has seen it. Without one it goes to the error stream.
    void SetShow(ShowFunction fnShow) { m_fnShow = std::move(fnShow); }
    void SetBreakOnError(bool bBreakOnError) { m_bBreakOnError = bBreakOnError; }
    [[nodiscard]] const std::string& LogPath() const { return m_oLog.Path(); }

private:
    std::string m_sAppName;
    std::string m_sAppFolder;
    LogFile m_oLog;
    ShowFunction m_fnShow;
    bool m_bBreakOnError = false;
};

} // namespace corvane
