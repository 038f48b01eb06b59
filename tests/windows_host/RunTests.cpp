// Runs that nobody watches go on while a modal window is open, and end.
#include "desktop/application/UnwatchedRun.h"
#include "tests/windows_host/HostRoom.h"

namespace corvane::desktop {
namespace {

using Kind = RunStep::Kind;

TEST_F(HostRoom, UnwatchedRunTakesItsStepsInsideAModalWindowAndCancelsWhatIsLeft) {
    struct Case {
        std::deque<RunStep> aSteps;
        const char* sHeard;
        const char* sSeen; // in the text at the end
        bool bAllDone;
    };
    Define("M", "Type='Dialog' IsMDIChild='false' IsModal='true'", "A B");
    Start();
    const std::vector<Case> aCases{
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
    for (const auto& oCase : aCases) {
        std::string sSeen;
        UnwatchedRun oRun(*m_pApplication, oCase.aSteps, [&] {
            sSeen += m_pApplication->AsText();
            return !m_pApplication->Picture().isNull();
        });
        (void)Open("M", {}, false, true);
        m_pHeard->Take();
        EXPECT_EQ(oRun.Run(), oCase.bAllDone);
        EXPECT_EQ(m_pHeard->Take(), oCase.sHeard);
        EXPECT_NE(sSeen.find(oCase.sSeen), std::string::npos) << sSeen;
        EXPECT_EQ(sSeen.find("Menus"), sSeen.rfind("Menus")) << "it looks once";
        EXPECT_FALSE(LastForm()->IsLoaded());
    }
}

} // namespace
} // namespace corvane::desktop
