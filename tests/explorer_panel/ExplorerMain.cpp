#include <QApplication>
#include <gtest/gtest.h>

int main(int nArguments, char** pArguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&nArguments, pArguments);
    const QApplication oApplication(nArguments, pArguments);
    QApplication::setStyle("fusion");
    return RUN_ALL_TESTS();
}
