// Threads that take tasks from one queue. They begin when there is something to do, and their priority is below the
// user interface's, so that the window answers while all processors compute.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace corvane::jobs {

class Pool {
public:
    explicit Pool(std::size_t mostThreads) : m_mostThreads(mostThreads) {}
    ~Pool(); // waits for what still runs
    Pool(const Pool&) = delete;
    Pool& operator=(const Pool&) = delete;

    // 0: what is added is dropped, and who would add it does it himself.
    [[nodiscard]] std::size_t MostThreads() const { return m_mostThreads; }
    // From any thread. A task mustn't fail. An urgent one comes before those that wait.
    void Add(std::function<void()> task, bool urgent = false);
    // Drops the tasks that haven't begun, and all that are added later. False when one still runs after that time.
    [[nodiscard]] bool Stop(std::chrono::steady_clock::duration longest);

private:
    void Run();

    std::size_t m_mostThreads;
    std::mutex m_mutex;
    std::condition_variable m_added;
    std::deque<std::function<void()>> m_tasks;
    std::condition_variable m_gone;
    std::size_t m_living = 0; // threads
    std::size_t m_idle = 0;   // of these
    bool m_ends = false;
    std::vector<std::thread> m_threads;
};

} // namespace corvane::jobs
