#include "corvane/core/Preferences.h"

#include "corvane/platform/Handlers.h"
#include "corvane/platform/Platform.h"

namespace corvane {

void Preferences::Initialize(const std::string& sService, const std::string& sCategoty) try {
    m_sService = sService;
    m_sCategory = sCategoty;
} catch (...) {
    Reraise("Preferences", "Initialize");
}

// A default that has no text fails only where it is needed.
std::string Preferences::GetValue(const std::string& sName, const Variant& vDefaultValue) const try {
    const Ref<ISettingsStore> oStore = CurrentPlatform().oSettingsStore;
    if (!vDefaultValue.IsObject())
        return oStore->Read(m_sService, m_sCategory, sName, ToText(vDefaultValue));
    std::string sValue = oStore->Read(m_sService, m_sCategory, sName, {});
    const bool bIsAbsent = sValue.empty() && !oStore->Read(m_sService, m_sCategory, sName, "absent").empty();
    return bIsAbsent ? ToText(vDefaultValue) : sValue;
} catch (...) {
    Reraise("Preferences", "GetValue");
}

void Preferences::SetValue(const std::string& sName, const Variant& vValue) try {
    CurrentPlatform().oSettingsStore->Write(m_sService, m_sCategory, sName, ToText(vValue));
} catch (...) {
    Reraise("Preferences", "SetValue");
}

} // namespace corvane
