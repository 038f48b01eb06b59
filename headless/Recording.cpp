#include "headless/Recording.h"

namespace corvane::inspect {

void Record::Add(RecordedCall oCall) {
    aCalls.push_back(oCall);
    CallAdded.Raise(oCall);
}

std::string Record::NewId(std::string_view sProgID) {
    return std::string(sProgID) + "#" + std::to_string(++m_mapCounts[FoldText(sProgID)]);
}

std::string Record::IdOf(const Ref<Object>& oObject) const {
    if (!oObject)
        return {};
    const auto it = m_mapIds.find(oObject.Get());
    if (it != m_mapIds.end())
        return it->second;
    return oObject->TypeName() == "Framework" ? "Corvane.Framework" : "";
}

void RecordingUtilities::LogError(std::string_view /*sAppName*/, std::string_view sModule, std::string_view sProcedure,
                                  const Failure& oFailure, std::string_view sContext, bool bShow) {
    m_oRecord->aLog.push_back({std::string(sModule), std::string(sProcedure), oFailure, std::string(sContext), bShow});
}

std::string RecordingUtilities::GetAppFolder(std::string_view sName) const {
    if (!EqualText(sName, "Services") && !EqualText(sName, "Images"))
        Fail(FailureNumber::PathNotFound, "There is no application folder \"" + std::string(sName) + "\"");
    return m_sApplicationFolder + "/" + std::string(sName);
}

Ref<ITimer> ManualTimers::NewTimer() {
    return m_aTimers.emplace_back(New<ManualTimer>());
}

void ManualTimers::TickAll() {
    const auto aTimers = m_aTimers;
    for (const auto& oTimer : aTimers)
        if (oTimer->Enabled())
            oTimer->Tick.Raise();
}

namespace {

std::string SettingsKey(std::string_view sService, std::string_view sCategory, std::string_view sName) {
    return FoldText(std::string(sService) + '\0' + std::string(sCategory) + '\0' + std::string(sName));
}

} // namespace

std::string MemorySettings::Read(std::string_view sService, std::string_view sCategory, std::string_view sName,
                                 std::string_view sDefault) const {
    const auto it = m_mapValues.find(SettingsKey(sService, sCategory, sName));
    return it == m_mapValues.end() ? std::string(sDefault) : it->second;
}

void MemorySettings::Write(std::string_view sService, std::string_view sCategory, std::string_view sName,
                           std::string_view sValue) {
    m_mapValues[SettingsKey(sService, sCategory, sName)] = std::string(sValue);
}

} // namespace corvane::inspect
