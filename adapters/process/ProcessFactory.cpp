#include "adapters/process/ProcessFactory.h"

#include "adapters/common/Paths.h"
#include "adapters/process/ProcessObject.h"
#include "corvane/platform/Platform.h"

#include <algorithm>

namespace corvane {

void LoggingMonitor::Said(std::string_view service, std::string_view line) {
    if (const auto& utilities = CurrentPlatform().oUtilities)
        utilities->LogError(utilities->AppName(), service, "Output",
                            Failure(FailureNumber::ObjectErrorBase, std::string(line), std::string(service)), {},
                            false);
}

bool LoggingMonitor::KeepsWaiting(std::string_view /*service*/, int milliseconds) {
    return m_limit == 0 || milliseconds < m_limit;
}

ProcessFactory::ProcessFactory(std::string folder) : m_folder(std::move(folder)), m_monitor(New<LoggingMonitor>(0)) {}

ProcessFactory::~ProcessFactory() {
    for (const auto& [name, process] : m_processes)
        process->Stop();
}

std::vector<Ref<Process>> ProcessFactory::Processes() const {
    std::vector<Ref<Process>> processes;
    for (const auto& [name, process] : m_processes)
        processes.push_back(process);
    return processes;
}

bool ProcessFactory::IsAnyWaitedFor() const {
    return std::any_of(m_processes.begin(), m_processes.end(),
                       [](const auto& entry) { return entry.second->IsWaitedFor(); });
}

void ProcessFactory::Pump() const {
    for (const auto& process : Processes())
        process->Pump();
}

std::optional<std::string> ProcessFactory::FileOf(std::string_view plugin) const {
    return FindPath(JoinPath(JoinPath(m_folder, plugin), "plugin.json"));
}

std::vector<std::string> ProcessFactory::Names() const {
    std::vector<std::string> names;
    for (const std::string& name : NamesIn(m_folder).value_or(std::vector<std::string>()))
        if (FileOf(name))
            names.push_back(name);
    return names;
}

Ref<Process> ProcessFactory::ProcessOf(std::string_view plugin) {
    if (const auto it = m_processes.find(plugin); it != m_processes.end())
        return it->second;
    const auto file = FileOf(plugin);
    if (!file)
        Fail(FailureNumber::CannotCreateObject,
             "There is no file \"" + JoinPath(JoinPath(m_folder, plugin), "plugin.json") + "\"", "Processes");
    auto process = New<Process>(ReadProcessSettings(std::string(plugin), *file), m_monitor, m_marks);
    return m_processes.emplace(std::string(plugin), std::move(process)).first->second;
}

Ref<Object> ProcessFactory::Create(std::string_view plugin, std::string_view progID) {
    return New<ProcessObject>(ProcessOf(plugin), std::string(progID));
}

} // namespace corvane
