#include "adapters/messages/WindowMessages.h"
#include "corvane/base/Ref.h"
#include "tests/support/Failing.h"

#include <gtest/gtest.h>

using namespace corvane;
using corvane::test::FailureOf;

TEST(WindowProcedures, WhatIsNotRegisteredFails) {
    const auto messages = New<WindowMessages>();
    messages->RegisterWindow(7, [&](Long handle, Long message, Long wParam, std::intptr_t lParam) {
        messages->UnregisterWindow(handle); // and the procedure is held until it is through
        return handle * 100 + message + wParam + static_cast<Long>(lParam);
    });
    EXPECT_EQ(FailureOf([&] { messages->RegisterWindow(7, {}); }), "457: There is a window 7 already");
    EXPECT_EQ(FailureOf([&] { messages->SetWindowProc(7, 99); }), "5: There is no window procedure 99");
    const Long base = messages->GetWindowProc(7);
    EXPECT_EQ(messages->SendMessage(7, 1, 2, 3), 706);
    EXPECT_EQ(FailureOf([&] { (void)messages->GetWindowProc(7); }), "5: There is no window 7");
    EXPECT_EQ(FailureOf([&] { messages->CallWindowProc(base, 7, 1, 0, 0); }).substr(0, 2), "5:");
    messages->RegisterWindow(7, {});
    EXPECT_NE(messages->GetWindowProc(7), base);
    EXPECT_EQ(messages->SendMessage(7, 1, 0, 0), 0);
    EXPECT_EQ(messages->DefWindowProc(7, 1, 0, 0), 0);
}
