// Runs that no one watches go on while a modal window is open, and end.
#include "desktop/application/UnwatchedRun.h"
#include "tests/windows_host/HostFixture.h"

namespace corvane::desktop {
namespace {

using Kind = RunStep::Kind;

TEST_F(HostFixture, UnwatchedRunTakesItsStepsInsideAModalWindowAndCancelsWhatIsLeft) {
    struct Case {
        std::deque<RunStep> steps;
        const char* heard;
        const char* seen; // in the text at the end
        bool allDone;
    };
    Define("M", "Type='Dialog' IsMDIChild='false' IsModal='true'", "A B");
    Start();
    const std::vector<Case> cases{
        {{},
         "A.NewWidget A.Activate A.Deactivate A.Terminate B.Terminate exit(cancelled)",
         "(dialog, modal, active)",
         true},
        {{{Kind::Page, "2"}, {Kind::Click, "OK"}},
         "A.NewWidget A.Activate A.Deactivate B.NewWidget B.Activate A.Click1 B.Click1 B.Deactivate A.Terminate "
         "B.Terminate exit(done)",
         "Menus",
         true},
        {{{Kind::Choose, "Window.CloseAll"}, {Kind::Click, "apply"}, {Kind::Page, "3"}, {Kind::Click, "close"}},
         "A.NewWidget A.Activate A.Deactivate A.Terminate B.Terminate exit(cancelled)",
         "Menus",
         false},
    };
    for (const auto& testCase : cases) {
        std::string seen;
        UnwatchedRun run(*m_application, testCase.steps, [&] {
            seen += m_application->AsText();
            return !m_application->Picture().isNull();
        });
        (void)Open("M", {}, false, true);
        m_heard->Take();
        EXPECT_EQ(run.Run(), testCase.allDone);
        EXPECT_EQ(m_heard->Take(), testCase.heard);
        EXPECT_NE(seen.find(testCase.seen), std::string::npos) << seen;
        EXPECT_EQ(seen.find("Menus"), seen.rfind("Menus")) << "it looks once";
        EXPECT_FALSE(LastForm()->IsLoaded());
    }
}

} // namespace
} // namespace corvane::desktop
