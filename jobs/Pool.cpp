#include "jobs/Pool.h"

#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

namespace corvane::jobs {

namespace {

constexpr int niceness = 5; // above the user interface's

} // namespace

Pool::~Pool() {
    (void)Stop({});
    for (std::thread& thread : m_threads)
        thread.join();
}

bool Pool::Stop(std::chrono::steady_clock::duration longest) {
    std::deque<std::function<void()>> dropped; // may hold a lot
    std::unique_lock lock(m_mutex);
    m_ends = true;
    m_tasks.swap(dropped);
    m_added.notify_all();
    return m_gone.wait_for(lock, longest, [this] { return m_living == 0; });
}

void Pool::Add(std::function<void()> task, bool urgent) {
    {
        const std::lock_guard lock(m_mutex);
        if (m_ends || m_mostThreads == 0)
            return;
        if (urgent)
            m_tasks.push_front(std::move(task));
        else
            m_tasks.push_back(std::move(task));
        if (m_idle < m_tasks.size() && m_threads.size() < m_mostThreads) {
            ++m_living;
            m_threads.emplace_back([this] { Run(); });
        }
    }
    m_added.notify_one();
}

void Pool::Run() {
    (void)::setpriority(PRIO_PROCESS, static_cast<id_t>(::syscall(SYS_gettid)), niceness);
    std::unique_lock lock(m_mutex);
    while (true) {
        ++m_idle;
        m_added.wait(lock, [this] { return m_ends || !m_tasks.empty(); });
        --m_idle;
        if (m_ends)
            break;
        std::function<void()> task = std::move(m_tasks.front());
        m_tasks.pop_front();
        lock.unlock();
        task();
        task = nullptr;
        lock.lock();
    }
    --m_living;
    m_gone.notify_all();
}

} // namespace corvane::jobs
