#include "adapters/messages/WindowMessages.h"
#include "corvane/base/Ref.h"
#include "tests/adapters/Failing.h"

#include <gtest/gtest.h>

using namespace corvane;
using corvane::test::FailureOf;

TEST(WindowProcedures, AHookAnswersAndPassesOn) {
    const auto oMessages = New<WindowMessages>();
    oMessages->SetDefault([](Long, Long uMsg, Long, std::intptr_t) { return 1000 + uMsg; });
    oMessages->RegisterWindow(7, [](Long hWnd, Long uMsg, Long wParam, std::intptr_t lParam) {
        return hWnd * 100 + uMsg + wParam + static_cast<Long>(lParam);
    });
    const Long lBefore = oMessages->GetWindowProc(7);
    const Long lHook = oMessages->RegisterProc([&](Long hWnd, Long uMsg, Long wParam, std::intptr_t lParam) {
        if (uMsg == WindowMessage::Close)
            oMessages->SetWindowProc(hWnd, lBefore); // takes itself away while it runs
        return uMsg == WindowMessage::GetMinMaxInfo ? oMessages->DefWindowProc(hWnd, uMsg, wParam, lParam)
                                                    : oMessages->CallWindowProc(lBefore, hWnd, uMsg, wParam, lParam);
    });
    oMessages->SetWindowProc(7, lHook);
    EXPECT_EQ(oMessages->SendMessage(7, WindowMessage::GetMinMaxInfo, 0, 0), 1036);
    EXPECT_EQ(oMessages->SendMessage(7, 1, 2, 3), 706);
    EXPECT_EQ(oMessages->GetWindowProc(7), lHook);
    oMessages->SendMessage(7, WindowMessage::Close, 0, 0);
    EXPECT_EQ(oMessages->GetWindowProc(7), lBefore);
}

TEST(WindowProcedures, WhatIsNotRegisteredFails) {
    const auto oMessages = New<WindowMessages>();
    oMessages->RegisterWindow(7, [&](Long hWnd, Long, Long, std::intptr_t) {
        oMessages->UnregisterWindow(hWnd); // and the procedure is held until it is through
        return Long{1};
    });
    EXPECT_EQ(FailureOf([&] { oMessages->RegisterWindow(7, {}); }), "457: There is a window 7 already");
    EXPECT_EQ(FailureOf([&] { oMessages->SetWindowProc(7, 99); }), "5: There is no window procedure 99");
    const Long lBase = oMessages->GetWindowProc(7);
    EXPECT_EQ(oMessages->SendMessage(7, 1, 0, 0), 1);
    EXPECT_EQ(FailureOf([&] { (void)oMessages->GetWindowProc(7); }), "5: There is no window 7");
    EXPECT_EQ(FailureOf([&] { oMessages->CallWindowProc(lBase, 7, 1, 0, 0); }).substr(0, 2), "5:");
    oMessages->RegisterWindow(7, {});
    EXPECT_NE(oMessages->GetWindowProc(7), lBase);
    EXPECT_EQ(oMessages->SendMessage(7, 1, 0, 0), 0);
    EXPECT_EQ(oMessages->DefWindowProc(7, 1, 0, 0), 0);
}
