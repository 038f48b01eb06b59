#include "headless/Recording.h"

namespace corvane::inspect {

void Record::Add(RecordedCall call) {
    calls.push_back(call);
    CallAdded.Raise(call);
}

std::string Record::NewId(std::string_view progID) {
    return std::string(progID) + "#" + std::to_string(++m_counts[FoldText(progID)]);
}

std::string Record::IdOf(const Ref<Object>& object) const {
    if (!object)
        return {};
    const auto it = m_ids.find(object.Get());
    if (it != m_ids.end())
        return it->second;
    return object->TypeName() == "Framework" ? "Corvane.Framework" : "";
}

void RecordingUtilities::LogError(std::string_view /*appName*/, std::string_view module, std::string_view procedure,
                                  const Failure& failure, std::string_view context, bool show) {
    m_record->log.push_back({std::string(module), std::string(procedure), failure, std::string(context), show});
}

std::string RecordingUtilities::GetAppFolder(std::string_view name) const {
    if (!EqualText(name, "Services") && !EqualText(name, "Images"))
        Fail(FailureNumber::PathNotFound, "There is no application folder \"" + std::string(name) + "\"");
    return m_applicationFolder + "/" + std::string(name);
}

Ref<ITimer> ManualTimers::NewTimer() {
    return m_timers.emplace_back(New<ManualTimer>());
}

void ManualTimers::TickAll() {
    const auto timers = m_timers;
    for (const auto& timer : timers)
        if (timer->Enabled())
            timer->Tick.Raise();
}

namespace {

std::string SettingsKey(std::string_view service, std::string_view category, std::string_view name) {
    return FoldText(std::string(service) + '\0' + std::string(category) + '\0' + std::string(name));
}

} // namespace

std::string MemorySettings::Read(std::string_view service, std::string_view category, std::string_view name,
                                 std::string_view defaultText) const {
    const auto it = m_values.find(SettingsKey(service, category, name));
    return it == m_values.end() ? std::string(defaultText) : it->second;
}

void MemorySettings::Write(std::string_view service, std::string_view category, std::string_view name,
                           std::string_view value) {
    m_values[SettingsKey(service, category, name)] = std::string(value);
}

} // namespace corvane::inspect
