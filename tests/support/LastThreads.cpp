#include <chrono>
#include <filesystem>
#include <iterator>
#include <thread>

// Linked into every program that draws widgets when a sanitizer is in it.
//
// Qt paints long rows of spans on the threads of its pool. It waits for their work at the end, not for the threads
// themselves, and the leak check fails over a thread that is on its way out: the thread's last memory belongs to no one
// by then. So such a program ends when its first thread is the only one, or after two seconds when one won't go. A
// program's own statics go before those of its libraries, so the threads still have all that they need to end.

namespace {

struct LastThreads {
    ~LastThreads() {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(2);
        while (!IsAlone() && std::chrono::steady_clock::now() < end)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }

    static bool IsAlone() {
        std::error_code error; // nothing can be reported then, and nothing is waited for
        return std::distance(std::filesystem::directory_iterator("/proc/self/task", error), {}) <= 1;
    }
};

const LastThreads s_lastThreads;

} // namespace
