// The two companions of Window: minimum sizes by window messages, and the deferred opening.
#include "corvane/windows/MinWindowSize.h"
#include "corvane/windows/frmWindowSupport.h"
#include "tests/windows/WindowsTest.h"

namespace corvane {
namespace {

using MinWindowSize::SetMinWindowSize;
using testing::NumberOf;
using testing::WindowsTest;

class MinWindowSizeTest : public WindowsTest {
protected:
    // A window whose own procedure answers every message with 7 and counts them.
    Long NewWindow() {
        static Long lLast = 1'000'000;
        m_oMessages->RegisterWindow(++lLast, [this](Long, Long, Long, std::intptr_t) -> Long {
            ++m_nReached;
            return 7;
        });
        m_oMessages->SetDefault([](Long, Long, Long, std::intptr_t) -> Long { return 8; });
        return lLast;
    }
    Long Send(Long hWnd, Long uMsg, std::intptr_t lParam = 0) {
        return m_oMessages->SendMessage(hWnd, uMsg, 0, lParam);
    }
    // The minimum tracking size that a window tells, and the answer.
    std::string MinimumOf(Long hWnd) {
        MinMaxInfo oInfo;
        oInfo.oMaxSize = {3, 4};
        const Long lAnswer = Send(hWnd, WindowMessage::GetMinMaxInfo, reinterpret_cast<std::intptr_t>(&oInfo));
        EXPECT_TRUE(oInfo.oMaxSize.lX == 3 && oInfo.oMaxSize.lY == 4);
        return std::to_string(oInfo.oMinTrackSize.lX) + "x" + std::to_string(oInfo.oMinTrackSize.lY) + " " +
               std::to_string(lAnswer);
    }
    int m_nReached = 0;
};

TEST_F(MinWindowSizeTest, TwipsBecomeWholePixelsOnce) {
    struct Case {
        Long lWidth, lHeight;
        Single fTwipsX, fTwipsY;
        const char* sExpected;
    };
    const std::vector<Case> aCases{{7500, 7509, 15, 15, "500x500 8"},
                                   {7500, 7500, 14.6F, 7.5F, "500x937 8"}, // 15 and 8
                                   {-7509, 14, 15, 15, "-500x0 8"}};
    for (const auto& [lWidth, lHeight, fTwipsX, fTwipsY, sExpected] : aCases) {
        m_oScreen->fTwipsX = fTwipsX;
        m_oScreen->fTwipsY = fTwipsY;
        const Long hWnd = NewWindow();
        SetMinWindowSize(hWnd, lWidth, lHeight);
        m_oScreen->fTwipsX = m_oScreen->fTwipsY = 1; // too late
        EXPECT_EQ(MinimumOf(hWnd), sExpected);
        Send(hWnd, WindowMessage::Close);
    }
    EXPECT_EQ(m_nReached, 0);
}

TEST_F(MinWindowSizeTest, TheFirstCloseRequestOnlyTakesTheHookAway) {
    const Long a = NewWindow();
    const Long b = NewWindow();
    SetMinWindowSize(a, 150, 150);
    SetMinWindowSize(b, 300, 300);
    const Long lHook = m_oMessages->GetWindowProc(a);
    EXPECT_EQ(lHook, m_oMessages->GetWindowProc(b));
    EXPECT_EQ(Send(a, 0x5), 7); // others go on to the window's own procedure
    EXPECT_EQ(m_nReached, 1);
    EXPECT_EQ(Send(a, WindowMessage::Close), 0);
    EXPECT_EQ(m_nReached, 1);
    EXPECT_EQ(MinimumOf(a), "0x0 7");
    EXPECT_EQ(MinimumOf(b), "20x20 8");
    EXPECT_EQ(Send(a, WindowMessage::Close), 7);
    // A caller of the hook for a window without one gets 0 in silence, beside other hooks and without any.
    for (const Long uMsg : {WindowMessage::Close, WindowMessage::GetMinMaxInfo, Long{0x5}}) {
        MinMaxInfo oInfo;
        EXPECT_EQ(m_oMessages->CallWindowProc(lHook, a, uMsg, 0, reinterpret_cast<std::intptr_t>(&oInfo)), 0);
    }
    EXPECT_EQ(Send(b, WindowMessage::Close), 0);
    EXPECT_EQ(m_oMessages->CallWindowProc(lHook, a, 0x5, 0, 0), 0);
    EXPECT_EQ(m_oUtilities->TakeLines(), std::vector<std::string>{});
    SetMinWindowSize(a, 450, 450);
    EXPECT_EQ(MinimumOf(a), "30x30 8");
    Send(a, WindowMessage::Close);
}

TEST_F(MinWindowSizeTest, AHandleThatIsHookedAlreadyIsRefused) {
    const Long a = NewWindow();
    SetMinWindowSize(a, 150, 150);
    m_oMessages->UnregisterWindow(a); // unloaded by code: no close request has come
    m_oMessages->RegisterWindow(a, [](Long, Long, Long, std::intptr_t) -> Long { return 9; });
    EXPECT_EQ(NumberOf([&] { SetMinWindowSize(a, 300, 300); }), FailureNumber::KeyInUse);
    EXPECT_EQ(m_oUtilities->TakeLines(), std::vector<std::string>{"MinWindowSize.SetMinWindowSize 457"});
    EXPECT_EQ(Send(a, 0x5), 9);
    EXPECT_EQ(NumberOf([&] { SetMinWindowSize(a + 1'000'000, 300, 300); }), FailureNumber::InvalidProcedureCall);
}

TEST_F(MinWindowSizeTest, AWindowHoldsItsOwn) {
    Define("Edit", "PageWidth='1400' PageHeight='1300' DefPageWidth='3000' DefPageHeight='3000'");
    OpenHidden("Edit");
    EXPECT_EQ(MinimumOf(LastForm().HWnd()), "100x100 0");
}

TEST_F(WindowsTest, ASupportFormShowsTheLastWindowItWasGiven) {
    Define("Edit");
    const auto oFirst = OpenHidden("Edit");
    const auto oSecond = OpenHidden("Edit");
    const auto oSupport = New<frmWindowSupport>();
    EXPECT_EQ(m_oTimers->Running(), "");
    oSupport->OpenWindowAsync(oFirst);
    oSupport->OpenWindowAsync(oSecond);
    m_oTimers->TickAll();
    EXPECT_FALSE(m_oFactory->aForms[0]->Visible());
    EXPECT_TRUE(m_oFactory->aForms[1]->Visible());
    EXPECT_EQ(test::FailureOf([&] { oSupport->OpenWindowAsync(nullptr); }, true),
              "-2147221504 (Check Parameters): oWindow is NULL.");
    EXPECT_EQ(m_oUtilities->TakeLines(), std::vector<std::string>{}); // it has no handler
}

} // namespace
} // namespace corvane
