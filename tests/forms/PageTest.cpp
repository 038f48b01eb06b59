// Forms in a whole application: with a class, among the preferences, and with stubs.
#include "corvane/Testing.h"
#include "corvane/author/Host.h"
#include "headless/Document.h"
#include "headless/Steps.h"

#include <gtest/gtest.h>

namespace corvane::testing {

namespace {

class Birds : public ::testing::Test {
protected:
    Birds() { EXPECT_EQ(m_application.Start(), 0) << m_application.Text(); }
    // The messages of steps that were refused.
    std::string Refused(const std::string& steps) {
        auto& missed = m_application.Host().Recorded().missed;
        missed.clear();
        m_application.Take(steps);
        std::string text;
        for (const std::string& line : missed)
            text += line + "\n";
        return text;
    }
    std::string Bird() { return ToText(CallByName(FindService("Birds"), "Bird")); }

    Application m_application{CORVANE_BIRDS};
};

} // namespace

TEST_F(Birds, AreFilledInBySteps) {
    EXPECT_EQ(Refused(R"(open Details
expect windows[Details].pages[Details].valid true
expect windows[Details].pages[0].fields[Name].value Wren
expect windows[Details].pages[0].fields[Name].required true
expect windows[Details].pages[0].fields[Sex].choices ["female", "male"]
set Details 0 Name ""
expect windows[Details].pages[0].fields[Name].problem Please enter a value.
expect windows[Details].pages[0].valid false
command Details OK
expect windows.count 1
set Details 0 Name Robin
set Details 0 Ring AB999
expect windows[Details].pages[0].fields[Ring].problem This ring is another bird's.
set Details 0 Ring AB124
set Details 0 Sex male
expect windows[Details].pages[0].fields[Sex].value male
expect windows[Details].pages[0].changed true
command Details OK
expect windows.count 0)"),
              "");
    EXPECT_EQ(m_application.TakeUnmet(), Lines());
    EXPECT_EQ(Bird(), "Robin AB124 1");
    EXPECT_EQ(
        Refused(
            "open Details\nset Details 0 Wing many\nset Details 0 Wig 3\nset Details 0 Clear x\npress Details 0 Name\n"
            "set Details 0 Sex other\nclose Details"),
        "steps:3: note: the form has no field \"Wig\"; did you mean \"Wing\"?\n"
        "steps:4: note: the field \"Clear\" takes no text\n"
        "steps:5: note: the field \"Name\" isn't a button\n"
        "steps:6: note: \"other\" can't be entered into the field \"Sex\": Please choose one of the values.\n");
}

// As a user types it: what is no value stays.
TEST_F(Birds, KeepWhatIsTypedAndIsNoValue) {
    EXPECT_EQ(Refused("open Details\nset Details 0 Wing many\n"
                      "expect windows[Details].pages[0].fields[Wing].value many\n"
                      "expect windows[Details].pages[0].fields[Wing].problem Please enter a whole number."),
              "");
    EXPECT_EQ(m_application.TakeUnmet(), Lines());
}

TEST_F(Birds, AreFilledInByTests) {
    m_application.Take("open Details");
    FormPage page = m_application.Page("Details");
    page.Set("Name", "Owl").Set("Wing", 5).Set("Seen", true);
    EXPECT_EQ(page.Problem("Wing"), "Please enter a value from 10 to 900.");
    EXPECT_FALSE(page.IsValid());
    page.Set("Wing", "many");
    EXPECT_EQ(page.Value("Wing") + ": " + page.Problem("Wing"), "many: Please enter a whole number.");
    EXPECT_THROW(page.Set("Sex", "other"), Failure) << "it can't be chosen";
    page.Set("Wing", 300).Press("Clear");
    EXPECT_EQ(page.Value("Ring"), "");
    EXPECT_TRUE(page.IsValid() && page.IsChanged());
    EXPECT_THROW(page.Set("Nam", "x"), Failure);
    EXPECT_THROW(m_application.Page("Detail").Press("Clear"), Failure);
    EXPECT_NE(m_application.Text().find("Wing: 300 mm  (changed)"), std::string::npos) << m_application.Text();
    m_application.Take("command Details Cancel");
    EXPECT_NE(Bird().substr(0, 3), "Owl");
}

TEST_F(Birds, ShowWhyAFormCannotBeRead) {
    m_application.Take("open Broken\nset Broken 0 Name Tit\nset Broken 1 Name Tit");
    EXPECT_EQ(m_application.Page("Details").Value("Name"), "Tit");
    EXPECT_NE(m_application.Text().find("BirdsSvc.BrokenPage.ui:1:"), std::string::npos) << m_application.Text();
    m_application.Take("command Broken OK");
    EXPECT_EQ(m_application.OpenWindows(), Lines());
}

TEST_F(Birds, KeepPreferencesWithoutAClass) {
    m_application.Take("open Corvane.Preferences");
    FormPage page = m_application.Page("Figures");
    EXPECT_EQ(page.Value("Decimals") + page.Value("Grid"), "2true");
    page.Set("Decimals", 4);
    m_application.Take("command Corvane.Preferences OK");
    EXPECT_EQ(m_application.Status(), "Decimals is 4");
    for (const char* service : {"Birds", "Twin", "Other"}) // the first two are one object
        EXPECT_EQ(ToLong(CallByName(FindService(service), "Heard")), 1) << service;
    m_application.Take("open Corvane.Preferences");
    EXPECT_EQ(page.Value("Decimals"), "4");
    page.Set("Grid", false).Press("RestoreDefaults");
    EXPECT_EQ(page.Value("Decimals") + page.Value("Grid"), "2true");
    m_application.Take("close Corvane.Preferences\nopen Corvane.Preferences");
    EXPECT_EQ(page.Value("Decimals"), "4");
    for (const auto& [name, value] : {std::pair("Grid", "false"), {"Decimals", "3"}}) {
        page.Set(name, value);
        m_application.Take("command Corvane.Preferences Apply");
        EXPECT_TRUE(m_application.Status().starts_with(std::string(name) + " is ")) << m_application.Status();
    }
}

// A page without a class keeps its values, and what would be called is written down.
TEST(FormsOfStubs, KeepTheirValues) {
    Application application;
    application.AddService("S", R"(<Windows><Window Name="W" Type="Dialog" State="Normal" IsMDIChild="False">
<Page IsOptional="0" IsResizable="1" PageProgID="P.One" Caption="One"/></Window></Windows>)");
    application.AddFile("Forms/P.One.ui",
                        R"(<ui version="4.0"><widget class="QWidget" name="One"><layout class="QVBoxLayout">
<item><widget class="QLineEdit" name="Title"><property name="text"><string>first</string></property></widget></item>
<item><widget class="QPushButton" name="Import"/></item></layout></widget></ui>)");
    ASSERT_EQ(application.Start(), 0);
    application.Take("open W");
    (void)application.TakeCalls();
    FormPage page = application.Page("One");
    EXPECT_EQ(page.Value("Title"), "first");
    page.Set("Title", "two  words").Press("Import");
    EXPECT_EQ(page.Value("Title"), "two  words");
    EXPECT_EQ(application.TakeCalls(), (Lines{"P.One#1 Title(two  words)", "P.One#1 Import"}));
}

} // namespace corvane::testing
