#include "desktop/failures/GuardedApplication.h"

#include <gtest/gtest.h>

// The main of tests that draw widgets, on a screen that no one sees.
int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    const corvane::desktop::GuardedApplication application(argc, argv);
    QApplication::setStyle("fusion");
    return RUN_ALL_TESTS();
}
