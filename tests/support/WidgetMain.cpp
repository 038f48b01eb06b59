#include <QApplication>
#include <gtest/gtest.h>

// The main of tests that draw widgets, on a screen that nobody sees.
int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    QApplication::setStyle("fusion");
    return RUN_ALL_TESTS();
}
