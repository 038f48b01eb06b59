// What the commands of each kind of window do.
#include "tests/windows_host/HostRoom.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTest>

namespace corvane::desktop {
namespace {

using Command = StandardCommandConstants;

TEST_F(HostRoom, WindowOpensAmongTheMainWindowsChildrenInTheOrderOfTheRealForm) {
    Define("W", "Type='Window'", "A B");
    Start();
    const auto oWindow = Open("W", "k");
    EXPECT_EQ(m_pHeard->Take(), "A.Initialize B.Initialize A.NewWidget A.Activate");
    EXPECT_EQ(m_pApplication->Window().Area().subWindowList().size(), 1);
    EXPECT_TRUE(LastForm()->Frame()->isVisible());
    EXPECT_EQ(m_pApplication->Window().Area().activeSubWindow()->widget(), LastForm()->Body());
    EXPECT_EQ(Commands(), "") << "nothing can be saved yet";
    oWindow->SetActivePageIndex(1);
    EXPECT_EQ(m_pHeard->Take(), "A.Deactivate B.NewWidget B.Activate");
    oWindow->Terminate();
    EXPECT_EQ(m_pHeard->Take(), "B.Deactivate A.Terminate B.Terminate exit(cancelled)");
    EXPECT_EQ(Manager().Windows()->Count(), 0);
}

} // namespace
} // namespace corvane::desktop
