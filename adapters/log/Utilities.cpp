#include "adapters/log/Utilities.h"

#include "adapters/common/Paths.h"
#include "corvane/base/Text.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace corvane {

namespace {

constexpr const char* sLogName = "errors.log";

std::string LogPathIn(std::string sLogFolder, const std::string& sAppName) {
    if (sLogFolder.empty()) {
        const std::string sState = UserFolder("XDG_STATE_HOME", ".local/state");
        if (sState.empty())
            return {};
        sLogFolder = JoinPath(JoinPath(sState, "corvane"), AsFileName(sAppName));
    }
    return JoinPath(sLogFolder, sLogName);
}

// Local time with its distance from UTC, to a thousandth of a second.
std::string Now() {
    const auto oNow = std::chrono::system_clock::now();
    const std::time_t nSeconds = std::chrono::system_clock::to_time_t(oNow);
    const auto nThousandths =
        std::chrono::duration_cast<std::chrono::milliseconds>(oNow.time_since_epoch()).count() % 1000;
    std::tm oTime{};
    ::localtime_r(&nSeconds, &oTime);
    char aTime[32];
    char aZone[8];
    std::strftime(aTime, sizeof aTime, "%Y-%m-%dT%H:%M:%S", &oTime);
    std::strftime(aZone, sizeof aZone, "%z", &oTime);
    char aAll[64];
    std::snprintf(aAll, sizeof aAll, "%s.%03d%s", aTime, static_cast<int>(nThousandths), aZone);
    return aAll;
}

void AppendField(std::string& sLine, std::string_view sText) {
    sLine += '\t';
    for (const char c : sText) {
        switch (c) {
        case '\n':
            sLine += "\\n";
            break;
        case '\r':
            sLine += "\\r";
            break;
        case '\t':
            sLine += "\\t";
            break;
        case '\\':
            sLine += "\\\\";
            break;
        default:
            sLine += static_cast<unsigned char>(c) < 0x20 || c == 0x7F ? '?' : c;
        }
    }
}

} // namespace

Utilities::Utilities(std::string sAppName, std::string sAppFolder, std::string sLogFolder)
    : m_sAppName(std::move(sAppName)), m_sAppFolder(std::move(sAppFolder)),
      m_oLog(LogPathIn(std::move(sLogFolder), m_sAppName)) {}

void Utilities::LogError(std::string_view sAppName, std::string_view sModule, std::string_view sProcedure,
                         const Failure& oFailure, std::string_view sContext, bool bShow) {
    std::string sLine = Now();
    const std::string sNumber = std::to_string(oFailure.Number);
    const std::string_view aFields[] = {sAppName, sModule, sProcedure, sNumber, oFailure.Source, oFailure.Description,
                                        sContext};
    for (const std::string_view sText : aFields)
        AppendField(sLine, sText);
    m_oLog.Write(sLine);
    if (!bShow)
        return;
    if (m_fnShow)
        m_fnShow({std::string(sModule), std::string(sProcedure), oFailure, std::string(sContext), m_oLog.Path()});
    else
        std::fprintf(stderr, "%s: %s\n", m_sAppName.c_str(),
                     sContext.empty() ? oFailure.Description.c_str() : std::string(sContext).c_str());
}

bool Utilities::IsRunningInIDE() const {
    constexpr std::string_view sField = "\nTracerPid:";
    const std::string sStatus = ReadBytes("/proc/self/status").value_or("");
    const std::size_t i = sStatus.find(sField);
    return i != std::string::npos && std::atol(sStatus.c_str() + i + sField.size()) != 0;
}

std::string Utilities::GetAppFolder(std::string_view sName) const {
    for (const char* sKnown : {"Services", "Images"})
        if (EqualText(sName, sKnown)) {
            const std::string sPath = JoinPath(m_sAppFolder, sKnown);
            return FindPath(sPath).value_or(sPath);
        }
    Fail(FailureNumber::PathNotFound, "An application has no folder \"" + std::string(sName) + "\"");
}

} // namespace corvane
