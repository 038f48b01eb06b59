#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    QApplication oApplication(argc, argv);
    return RUN_ALL_TESTS();
}
