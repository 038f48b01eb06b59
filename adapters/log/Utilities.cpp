#include "adapters/log/Utilities.h"

#include "adapters/common/Paths.h"
#include "corvane/base/Text.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace corvane {

namespace {

constexpr const char* logName = "errors.log";

std::string LogPathIn(std::string logFolder, const std::string& appName) {
    if (logFolder.empty()) {
        const std::string state = UserFolder("XDG_STATE_HOME", ".local/state");
        if (state.empty())
            return {};
        logFolder = JoinPath(JoinPath(state, "corvane"), AsFileName(appName));
    }
    return JoinPath(logFolder, logName);
}

// Local time with its distance from UTC, to a thousandth of a second.
std::string Now() {
    const auto now = std::chrono::system_clock::now();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    const auto thousandths =
        std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() % 1000;
    std::tm time{};
    ::localtime_r(&seconds, &time);
    char buffer[32];
    char zone[8];
    std::strftime(buffer, sizeof buffer, "%Y-%m-%dT%H:%M:%S", &time);
    std::strftime(zone, sizeof zone, "%z", &time);
    char all[64];
    std::snprintf(all, sizeof all, "%s.%03d%s", buffer, static_cast<int>(thousandths), zone);
    return all;
}

// Asked once, as a debugger's session is begun.
bool BreaksByEnvironment() {
    const char* value = std::getenv("CORVANE_BREAK_ON_ERROR");
    return value && *value && std::string_view(value) != "0";
}

void AppendField(std::string& line, std::string_view text) {
    line += '\t';
    for (const char c : text) {
        switch (c) {
        case '\n':
            line += "\\n";
            break;
        case '\r':
            line += "\\r";
            break;
        case '\t':
            line += "\\t";
            break;
        case '\\':
            line += "\\\\";
            break;
        default:
            line += static_cast<unsigned char>(c) < 0x20 || c == 0x7F ? '?' : c;
        }
    }
}

} // namespace

Utilities::Utilities(std::string appName, std::string appFolder, std::string logFolder)
    : m_appName(std::move(appName)), m_appFolder(std::move(appFolder)),
      m_log(LogPathIn(std::move(logFolder), m_appName)), m_breakOnError(BreaksByEnvironment()) {}

void Utilities::LogError(std::string_view appName, std::string_view module, std::string_view procedure,
                         const Failure& failure, std::string_view context, bool show) {
    std::string line = Now();
    std::string where(context);
    if (!failure.Context.empty())
        where += (where.empty() ? "" : "; ") + failure.Context;
    const std::string number = std::to_string(failure.Number);
    const std::string_view fields[] = {appName, module, procedure, number, failure.Source, failure.Description, where};
    for (const std::string_view text : fields)
        AppendField(line, text);
    m_log.Write(line);
    if (!show)
        return;
    if (m_show)
        m_show({std::string(module), std::string(procedure), failure, std::string(context), m_log.Path()});
    else
        std::fprintf(stderr, "%s: %s\n", m_appName.c_str(),
                     context.empty() ? failure.Description.c_str() : std::string(context).c_str());
}

bool Utilities::IsRunningInIDE() const {
    constexpr std::string_view field = "\nTracerPid:";
    const std::string status = ReadBytes("/proc/self/status").value_or("");
    const std::size_t i = status.find(field);
    return i != std::string::npos && std::atol(status.c_str() + i + field.size()) != 0;
}

std::string Utilities::GetAppFolder(std::string_view name) const {
    for (const char* known : {"Services", "Images"})
        if (EqualText(name, known)) {
            const std::string path = JoinPath(m_appFolder, known);
            return FindPath(path).value_or(path);
        }
    Fail(FailureNumber::PathNotFound, "An application has no folder \"" + std::string(name) + "\"");
}

} // namespace corvane
