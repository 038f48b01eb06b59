#include "adapters/messages/WindowMessages.h"
#include "corvane/base/Ref.h"
#include "tests/adapters/Failing.h"

#include <gtest/gtest.h>

using namespace corvane;
using corvane::test::FailureOf;

TEST(WindowProcedures, AHookAnswersAndPassesOn) {
    const auto messages = New<WindowMessages>();
    messages->SetDefault([](Long, Long message, Long, std::intptr_t) { return 1000 + message; });
    messages->RegisterWindow(7, [](Long handle, Long message, Long wParam, std::intptr_t lParam) {
        return handle * 100 + message + wParam + static_cast<Long>(lParam);
    });
    const Long before = messages->GetWindowProc(7);
    const Long hook = messages->RegisterProc([&](Long handle, Long message, Long wParam, std::intptr_t lParam) {
        if (message == WindowMessage::Close)
            messages->SetWindowProc(handle, before); // takes itself away while it runs
        return message == WindowMessage::GetMinMaxInfo
                   ? messages->DefWindowProc(handle, message, wParam, lParam)
                   : messages->CallWindowProc(before, handle, message, wParam, lParam);
    });
    messages->SetWindowProc(7, hook);
    EXPECT_EQ(messages->SendMessage(7, WindowMessage::GetMinMaxInfo, 0, 0), 1036);
    EXPECT_EQ(messages->SendMessage(7, 1, 2, 3), 706);
    EXPECT_EQ(messages->GetWindowProc(7), hook);
    messages->SendMessage(7, WindowMessage::Close, 0, 0);
    EXPECT_EQ(messages->GetWindowProc(7), before);
}

TEST(WindowProcedures, WhatIsNotRegisteredFails) {
    const auto messages = New<WindowMessages>();
    messages->RegisterWindow(7, [&](Long handle, Long, Long, std::intptr_t) {
        messages->UnregisterWindow(handle); // and the procedure is held until it is through
        return Long{1};
    });
    EXPECT_EQ(FailureOf([&] { messages->RegisterWindow(7, {}); }), "457: There is a window 7 already");
    EXPECT_EQ(FailureOf([&] { messages->SetWindowProc(7, 99); }), "5: There is no window procedure 99");
    const Long base = messages->GetWindowProc(7);
    EXPECT_EQ(messages->SendMessage(7, 1, 0, 0), 1);
    EXPECT_EQ(FailureOf([&] { (void)messages->GetWindowProc(7); }), "5: There is no window 7");
    EXPECT_EQ(FailureOf([&] { messages->CallWindowProc(base, 7, 1, 0, 0); }).substr(0, 2), "5:");
    messages->RegisterWindow(7, {});
    EXPECT_NE(messages->GetWindowProc(7), base);
    EXPECT_EQ(messages->SendMessage(7, 1, 0, 0), 0);
    EXPECT_EQ(messages->DefWindowProc(7, 1, 0, 0), 0);
}
