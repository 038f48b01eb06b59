#include <QApplication>
#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <thread>

// The main of tests that draw widgets, on a screen that nobody sees.
//
// Qt paints long rows of spans on the threads of its pool. It waits for their work at the end, not for the threads
// themselves, and the leak check fails over a thread that is on its way out: the thread's last memory belongs to nobody
// by then. So the program ends when this thread is the only one, or after two seconds when one won't go.

namespace {

void AwaitOtherThreads() {
    namespace fs = std::filesystem;
    const auto oEnd = std::chrono::steady_clock::now() + std::chrono::seconds(2);
    const auto IsAlone = [] { return std::distance(fs::directory_iterator("/proc/self/task"), {}) <= 1; };
    while (!IsAlone() && std::chrono::steady_clock::now() < oEnd)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    const int nExit = [&] {
        const QApplication oApplication(argc, argv);
        QApplication::setStyle("fusion");
        return RUN_ALL_TESTS();
    }();
    AwaitOtherThreads();
    return nExit;
}
