// Who answers a shared command after explorer items and pages have taken turns, over the events of tree and windows.

#include "corvane/windows/Window.h"
#include "corvane/windows/WindowManager.h"
#include "tests/support/Entries.h"

#include <gtest/gtest.h>
#include <utility>

namespace corvane::testing {
namespace {

// "Copy" is everybody's, each of the others has an entry of its own beside it.
std::string Provider(const std::string& sOwn) {
    return Groups({{"MenuItem", "Copy", "Edit", "1"}, {"MenuItem", sOwn, "Edit", std::to_string(sOwn[0])}});
}

std::string Content() {
    std::string sContent = Groups(Entries("title Edit - 1; item Copy Edit 1")) +
                           "<ExplorerItems><ExplorerItem Name='Root' Type='Folder' ProgID='Root'/>";
    for (const std::string sItem : {"A", "B"})
        sContent += "<ExplorerItem Name='" + sItem + "' Type='Folder' Parent='Root' ProgID='" + sItem + "'>" +
                    Provider(sItem) + "</ExplorerItem>";
    sContent += "</ExplorerItems><Windows>";
    for (const std::string sPage : {"P", "Q"})
        sContent += "<Window Name='W" + sPage + "' Type='Window' State='Normal'><Page PageProgID='" + sPage +
                    "' IsOptional='0' IsResizable='1' HideExplorer='" + (sPage == "Q" ? "1" : "0") + "'>" +
                    Provider(sPage) + "</Page></Window>";
    return sContent + "</Windows>";
}

class Navigation : public ::testing::Test {
protected:
    void SetUp() override {
        m_oApplication.AddService("S", Content());
        ASSERT_EQ(m_oApplication.Start(), 0);
        m_oApplication.Take("populate");
    }
    // An item is chosen in the tree, or a window comes to the front.
    void Move(char cTo) {
        if (cTo == 'A' || cTo == 'B')
            m_oApplication.Take(std::string("node 0 ") + cTo);
        else
            m_oApplication.Take(std::string("open W") + cTo + " key" + cTo);
        (void)m_oApplication.TakeCalls();
    }
    // Whom a click on the shared entry reaches, and which own entries can be seen.
    [[nodiscard]] std::string Attached() {
        (void)m_oApplication.TakeCalls();
        EXPECT_EQ(m_oApplication.Click("Edit.Copy"), 0);
        std::string sAttached;
        for (const std::string& sCall : m_oApplication.TakeCalls())
            sAttached += sCall.substr(0, 1);
        sAttached += ":";
        for (const char cOwn : {'A', 'B', 'P', 'Q'})
            if (m_oApplication.MasterTool(std::string("Edit.") + cOwn)->Visible())
                sAttached += cOwn;
        return sAttached;
    }

    Application m_oApplication;
};

// The two columns are independent: an item and a page are attached at once, the one that came last answers, and the one
// that leaves takes the shared tool away from anybody.
TEST_F(Navigation, EveryPairOfMovesAndWhatTheyLeave) {
    for (const char cFirst : {'A', 'B', 'P', 'Q'})
        for (const char cSecond : {'A', 'B', 'P', 'Q'})
            for (const char cThird : {'A', 'B', 'P', 'Q'}) {
                char cItem = 0;
                char cPage = 0;
                char cOwner = 0;
                m_oApplication.Stop();
                SetUp();
                for (const char cMove : {cFirst, cSecond, cThird}) {
                    Move(cMove);
                    char& cColumn = cMove == 'A' || cMove == 'B' ? cItem : cPage;
                    if (std::exchange(cColumn, cMove) != cMove)
                        cOwner = cMove;
                }
                std::string sExpected = cOwner ? std::string(1, cOwner) + ":" : ":";
                for (const char cOwn : {'A', 'B', 'P', 'Q'})
                    if (cOwn == cItem || cOwn == cPage)
                        sExpected += cOwn;
                EXPECT_EQ(Attached(), sExpected) << cFirst << cSecond << cThird;
            }
}

TEST_F(Navigation, WhoeverLeavesTakesTheSharedToolAway) {
    Move('A');
    Move('P');
    EXPECT_EQ(Attached(), "P:AP");
    m_oApplication.Windows()->Windows()->Item("keyP")->Terminate();
    EXPECT_EQ(Attached(), ":A") << "the item is attached still, and gets the tool back when it is selected again";
    Move('B');
    EXPECT_EQ(Attached(), "B:B");
}

} // namespace
} // namespace corvane::testing
