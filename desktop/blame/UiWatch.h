// Watches from a thread of its own whether the user-interface thread comes back to its event loop, and reports in whose
// code it stays away.
#pragma once

#include <QObject>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <pthread.h>
#include <thread>

namespace corvane::desktop {

class UiWatch final : public QObject {
    Q_OBJECT
public:
    using Milliseconds = std::chrono::milliseconds;
    // Called in the watching thread: the plug-in, or a null pointer for the program itself, and for how long so far.
    // Once when it has lasted for the limit and once when it is over.
    using TellFunction = std::function<void(const char* plugin, Milliseconds duration, bool over)>;

    // In the user-interface thread, whose event dispatcher must be there.
    UiWatch(Milliseconds limit, TellFunction tell);
    ~UiWatch() override;

private:
    void Watch();
    [[nodiscard]] const char* WhoseCode() const;
    [[nodiscard]] static long long Now();

    Milliseconds m_limit;
    TellFunction m_tell;
    pthread_t m_uiThread;
    std::atomic<long long> m_busySince; // milliseconds; 0 while the event loop waits
    std::mutex m_mutex;
    std::condition_variable m_end;
    bool m_ends = false;
    std::thread m_thread;
};

} // namespace corvane::desktop
