// Sections of menus that services fill and empty.

#include "corvane/menus/MenuManager.h"
#include "corvane/menus/MenuSection.h"
#include "tests/support/Entries.h"
#include "tests/support/RecordingUtilities.h"

#include <gtest/gtest.h>

namespace corvane::testing {
namespace {

class Sections : public ::testing::Test {
protected:
    void SetUp() override {
        m_oApplication.AddService("A", Groups({{"MenuTitle", "File", "", "1"},
                                               {"MenuItem", "Open", "File", "1"},
                                               {"MenuItem", "Exit", "File", "9"}}));
        ASSERT_EQ(m_oApplication.Start(), 0);
    }
    [[nodiscard]] std::string File() const { return m_oApplication.BandText("File"); }

    struct Owner final : virtual Object {};
    Application m_oApplication;
    Ref<Owner> m_oOwner = New<Owner>();
};

TEST_F(Sections, EntriesWorkAtOnceAndGoAgain) {
    Lines aChosen;
    {
        MenuSection oRecent(*m_oOwner, "File", "Recent", "Open", true);
        // Each filling is the same as the first, also from within an entry.
        std::function<void()> fnFill = [&] {
            oRecent.Clear();
            for (const std::string& sFile : {std::string("a&b.csv"), std::string("c.csv")})
                oRecent.Add(MenuSection::Verbatim(sFile), [&, sFile] {
                    aChosen.push_back(sFile);
                    EXPECT_EQ(m_oApplication.Click("File.Open"), 0); // is dropped, as each click during an action
                    EXPECT_EQ(m_oApplication.Click("File.Recent1"), 0);
                    fnFill();
                });
        };
        for (int i = 0; i < 2; ++i) {
            fnFill();
            EXPECT_EQ(File(), "Open\n--------\na&b.csv\nc.csv\nExit\n");
            EXPECT_EQ(m_oApplication.Click("File.Recent2"), 0);
            EXPECT_EQ(m_oApplication.Click("File.Recent1"), 0);
        }
        EXPECT_EQ(aChosen, (Lines{"c.csv", "a&b.csv", "c.csv", "a&b.csv"}));
        EXPECT_EQ(m_oApplication.TakeCalls(), Lines{"A.Service#1 Initialize"});
        oRecent.Add("#&Third", [] { Fail(77); })->SetChecked(true);
        EXPECT_EQ(oRecent.Count(), 3);
        EXPECT_EQ(File(), "Open\n--------\na&b.csv\nc.csv\n#Third  (checked)\nExit\n");
        EXPECT_EQ(m_oApplication.Click("File.Recent3"), 77);
        oRecent.Clear();
        EXPECT_EQ(File(), "Open\nExit\n");
        EXPECT_EQ(m_oApplication.Click("File.Recent3"), 0); // who still holds the tool reaches nothing
        fnFill();
    }
    EXPECT_EQ(File(), "Open\nExit\n");

    // Another section of that name takes up the tools; without a place its entries come last.
    const Long lTools = m_oApplication.Host().Bar()->Tools()->Count();
    MenuSection oOther(*m_oOwner, "File", "Recent");
    oOther.Add("&Last", [&] { aChosen.emplace_back("last"); });
    EXPECT_EQ(File(), "Open\nExit\nLast\n");
    EXPECT_EQ(m_oApplication.Click("File.Recent1"), 0);
    EXPECT_EQ(aChosen.back(), "last");
    EXPECT_EQ(m_oApplication.Host().Bar()->Tools()->Count(), lTools);
}

TEST_F(Sections, LiveOnWithoutAnApplication) {
    MenuSection oSection(*m_oOwner, "File", "Recent");
    oSection.Add("a", [] {});
    m_oApplication.Stop();
    oSection.Clear();
    EXPECT_EQ(oSection.Count(), 0);
    EXPECT_EQ(NumberOf([&] { oSection.Add("a", [] {}); }), 91);
}

} // namespace
} // namespace corvane::testing
