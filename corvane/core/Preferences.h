// Settings of one user that a service keeps between runs, as texts. Not the preference pages, which are definitions.
#pragma once

#include "corvane/base/Automation.h"
#include "corvane/base/Variant.h"

#include <string>

namespace corvane {

// Nothing is cached: every read and write goes to the store, so two objects of one service and category agree.
class __attribute__((visibility("default"))) Preferences final : public Automation<Preferences> {
public:
    // Both names are empty until then.
    void Initialize(const std::string& sService, const std::string& sCategoty = "Default");
    [[nodiscard]] const std::string& Service() const { return m_sService; }
    [[nodiscard]] const std::string& Category() const { return m_sCategory; }

    // After Initialize.
    // The text stored under the name, or the default as text. Fails with 13 for a default that has no text.
    [[nodiscard]] std::string GetValue(const std::string& sName, const Variant& vDefaultValue) const;
    // Stores the value's text, True or False for a boolean. Fails with 13 for a value that has none.
    void SetValue(const std::string& sName, const Variant& vValue);

    std::string_view TypeName() const override { return "Preferences"; }

    static constexpr auto Members =
        MemberTable(Method("Initialize", &Preferences::Initialize), Property("Service", &Preferences::Service),
                    Property("Category", &Preferences::Category), Method("GetValue", &Preferences::GetValue),
                    Method("SetValue", &Preferences::SetValue));

private:
    std::string m_sService;
    std::string m_sCategory;
};

} // namespace corvane
