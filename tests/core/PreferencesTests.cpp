#include "corvane/core/Preferences.h"
#include "corvane/platform/Platform.h"
#include "tests/support/Application.h"
#include "tests/support/RecordingUtilities.h"

#include <gtest/gtest.h>

namespace corvane::testing {
namespace {

class PreferencesTest : public ::testing::Test {
protected:
    void SetUp() override { m_oApplication.Load(); }
    static Ref<Preferences> Of(const std::string& sService, const std::string& sCategory = "Default") {
        auto oPreferences = New<Preferences>();
        oPreferences->Initialize(sService, sCategory);
        return oPreferences;
    }

    Application m_oApplication;
};

TEST_F(PreferencesTest, AreAddressedByServiceCategoryAndName) {
    New<Preferences>()->SetValue("Width", 1); // before Initialize: no names yet
    Of("Trees")->SetValue("Width", 2);
    const auto oColours = Of("Trees", "Colours");
    const auto oSame = Of("Trees", "Colours");
    oColours->SetValue("Width", 3);
    oColours->SetValue("Width", 4);
    EXPECT_EQ(oSame->GetValue("Width", 0), "4"); // no object keeps what it has read
    const auto Stored = [](const char* sService, const char* sCategory) {
        return CurrentPlatform().oSettingsStore->Read(sService, sCategory, "Width", "");
    };
    EXPECT_EQ(Stored("", "") + Stored("Trees", "Default") + Stored("Trees", "Colours"), "124");
    EXPECT_EQ(oSame->Service() + " " + oSame->Category(), "Trees Colours");
}

TEST_F(PreferencesTest, AllValuesAreTexts) {
    const std::pair<Variant, std::string> aCases[] = {{5, "5"},       {true, "True"}, {0.5, "0.5"},
                                                      {"ä b", "ä b"}, {"", ""},       {{}, ""}};
    const auto oPreferences = Of("Trees");
    const Variant vObject = Ref<Object>(oPreferences);
    for (const auto& [vValue, sText] : aCases) {
        EXPECT_EQ(oPreferences->GetValue("Absent", vValue), sText);
        oPreferences->SetValue("Present", vValue);
        EXPECT_EQ(oPreferences->GetValue("Present", "another"), sText);
        EXPECT_EQ(oPreferences->GetValue("Present", vObject), sText); // a default that isn't needed needs no text
    }
}

TEST_F(PreferencesTest, FailuresReachTheCaller) {
    const auto oPreferences = Of("Trees");
    const Variant vObject = Ref<Object>(oPreferences);
    EXPECT_EQ(NumberOf([&] { (void)oPreferences->GetValue("A", vObject); }), 13);
    EXPECT_EQ(NumberOf([&] { oPreferences->SetValue("A", vObject); }), 13);
    Platform oPlatform = CurrentPlatform();
    oPlatform.oSettingsStore = nullptr;
    SetCurrentPlatform(oPlatform);
    EXPECT_EQ(NumberOf([&] { (void)oPreferences->GetValue("A", vObject); }), 91); // it reads before it converts
    EXPECT_EQ(NumberOf([&] { oPreferences->SetValue("A", 1); }), 91);
    EXPECT_EQ(m_oApplication.TakeLog(), (Lines{"Preferences.GetValue 13", "Preferences.SetValue 13",
                                               "Preferences.GetValue 91", "Preferences.SetValue 91"}));
}

} // namespace
} // namespace corvane::testing
