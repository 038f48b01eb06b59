// The bar at the bottom of the main window while a service in a process of its own doesn't answer.
#include "desktop/service/ProcessWaiting.h"

#include <QLabel>
#include <QPushButton>
#include <gtest/gtest.h>

namespace corvane::desktop {
namespace {

QPushButton* ButtonOf(const ProcessWaiting& waiting, const QString& text) {
    for (auto* button : waiting.Bar()->findChildren<QPushButton*>())
        if (button->text() == text)
            return button;
    return nullptr;
}

TEST(ProcessWaiting, OffersToWaitOrToStop) {
    QWidget window;
    window.resize(400, 300);
    window.show();
    const auto waiting = New<ProcessWaiting>(true);
    waiting->SetParentWindow(&window);
    for (int time = 0; time < 2; ++time) { // the second call that waits, as the first
        EXPECT_FALSE(waiting->Bar());
        EXPECT_TRUE(waiting->KeepsWaiting("Birds", 2000));
        ASSERT_TRUE(waiting->Bar());
        EXPECT_TRUE(waiting->Bar()->isVisible());
        EXPECT_EQ(waiting->Bar()->geometry().bottom(), window.rect().bottom());
        EXPECT_EQ(waiting->Bar()->findChild<QLabel*>()->text(), QStringLiteral("“Birds” hasn't answered for 2 s."));
        EXPECT_TRUE(waiting->KeepsWaiting("Birds", 3100));
        EXPECT_EQ(waiting->Bar()->findChild<QLabel*>()->text(), QStringLiteral("“Birds” hasn't answered for 3 s."));
        ButtonOf(*waiting, "&Stop")->click();
        EXPECT_FALSE(waiting->KeepsWaiting("Birds", 3200));
        waiting->WaitingEnds("Birds");
    }
    EXPECT_TRUE(waiting->KeepsWaiting("Birds", 2000));
    ButtonOf(*waiting, "&Wait")->click();
    EXPECT_TRUE(waiting->KeepsWaiting("Birds", 600000));
    EXPECT_FALSE(waiting->Bar()->isVisible());
    waiting->WaitingEnds("Birds");
    EXPECT_TRUE(waiting->KeepsWaiting("Birds", 2000));
    EXPECT_TRUE(waiting->Bar()->isVisible());
    waiting->WaitingEnds("Birds");
}

TEST(ProcessWaiting, HasALimitWhereNoOneWatches) {
    const auto waiting = New<ProcessWaiting>(false);
    EXPECT_TRUE(waiting->KeepsWaiting("Birds", 59999));
    EXPECT_FALSE(waiting->KeepsWaiting("Birds", 60000));
}

} // namespace
} // namespace corvane::desktop
