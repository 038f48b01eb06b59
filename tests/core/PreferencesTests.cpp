#include "corvane/core/Preferences.h"
#include "tests/support/RecordingUtilities.h"

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace corvane {
namespace {

using testing::NumberOf;

class Store final : public ISettingsStore {
public:
    std::string Read(std::string_view sService, std::string_view sCategory, std::string_view sName,
                     std::string_view sDefault) const override {
        const auto it = mapValues.find(Address(sService, sCategory, sName));
        return it == mapValues.end() ? std::string(sDefault) : it->second;
    }
    void Write(std::string_view sService, std::string_view sCategory, std::string_view sName,
               std::string_view sValue) override {
        if (bIsFull)
            Fail(FailureNumber::FileAccess);
        mapValues[Address(sService, sCategory, sName)] = sValue;
    }
    static std::string Address(std::string_view sService, std::string_view sCategory, std::string_view sName) {
        return std::string(sService) + "/" + std::string(sCategory) + "/" + std::string(sName);
    }

    std::map<std::string, std::string> mapValues;
    bool bIsFull = false;
};

class PreferencesTest : public ::testing::Test {
protected:
    PreferencesTest() {
        Platform oPlatform;
        oPlatform.oUtilities = m_oUtilities;
        oPlatform.oSettingsStore = m_oStore;
        SetCurrentPlatform(std::move(oPlatform));
    }
    ~PreferencesTest() override { SetCurrentPlatform({}); }

    Ref<testing::RecordingUtilities> m_oUtilities = New<testing::RecordingUtilities>();
    Ref<Store> m_oStore = New<Store>();
};

TEST_F(PreferencesTest, AreAddressedByServiceCategoryAndName) {
    const auto oPreferences = New<Preferences>();
    oPreferences->SetValue("Width", 1); // before Initialize: no names yet
    oPreferences->Initialize("Trees");
    oPreferences->SetValue("Width", 2);
    const auto oOther = New<Preferences>();
    oOther->Initialize("Trees", "Colours");
    oOther->SetValue("Width", 3);
    oOther->SetValue("Width", 4);
    EXPECT_EQ(m_oStore->mapValues, (std::map<std::string, std::string>{
                                       {"//Width", "1"}, {"Trees/Default/Width", "2"}, {"Trees/Colours/Width", "4"}}));
    const auto oSame = New<Preferences>();
    oSame->Initialize("Trees", "Colours");
    oOther->SetValue("Width", 5);
    EXPECT_EQ(oSame->GetValue("Width", 0), "5"); // no object keeps what it has read
    EXPECT_EQ(oSame->Service() + " " + oSame->Category(), "Trees Colours");
}

TEST_F(PreferencesTest, AllValuesAreTexts) {
    struct Case {
        Variant vValue;
        std::string sText;
    };
    const std::vector<Case> aCases{{Variant(5), "5"},       {Variant(true), "True"}, {Variant(0.5), "0.5"},
                                   {Variant("ä b"), "ä b"}, {Variant(""), ""},       {Variant(), ""}};
    const auto oPreferences = New<Preferences>();
    oPreferences->Initialize("Trees");
    for (const auto& [vValue, sText] : aCases) {
        EXPECT_EQ(oPreferences->GetValue("Absent", vValue), sText);
        oPreferences->SetValue("Present", vValue);
        EXPECT_EQ(oPreferences->GetValue("Present", "another"), sText);
    }
}

TEST_F(PreferencesTest, FailuresReachTheCaller) {
    const auto oPreferences = New<Preferences>();
    oPreferences->Initialize("Trees");
    const Variant vObject = Ref<Object>(oPreferences);
    EXPECT_EQ(NumberOf([&] { (void)oPreferences->GetValue("A", vObject); }), FailureNumber::TypeMismatch);
    EXPECT_EQ(NumberOf([&] { oPreferences->SetValue("A", vObject); }), FailureNumber::TypeMismatch);
    m_oStore->bIsFull = true;
    EXPECT_EQ(NumberOf([&] { oPreferences->SetValue("A", 1); }), FailureNumber::FileAccess);
    EXPECT_EQ(m_oUtilities->TakeLines(), (std::vector<std::string>{"Preferences.GetValue 13", "Preferences.SetValue 13",
                                                                   "Preferences.SetValue 75"}));
}

} // namespace
} // namespace corvane
