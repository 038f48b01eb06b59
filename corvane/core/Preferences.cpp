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

std::string Preferences::GetValue(const std::string& sName, const Variant& vDefaultValue) const try {
    return CurrentPlatform().oSettingsStore->Read(m_sService, m_sCategory, sName, ToText(vDefaultValue));
} catch (...) {
    Reraise("Preferences", "GetValue");
}

void Preferences::SetValue(const std::string& sName, const Variant& vValue) try {
    CurrentPlatform().oSettingsStore->Write(m_sService, m_sCategory, sName, ToText(vValue));
} catch (...) {
    Reraise("Preferences", "SetValue");
}

} // namespace corvane
