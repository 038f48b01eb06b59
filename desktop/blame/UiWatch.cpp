#include "desktop/blame/UiWatch.h"

#include "desktop/blame/PluginCode.h"

#include <QAbstractEventDispatcher>
#include <csignal>
#include <semaphore.h>
#include <utility>

namespace corvane::desktop {

namespace {

// The user-interface thread answers this signal with whose code it is in.
int AskSignal() {
    return SIGRTMIN + 5;
}

std::atomic<const char*> innermostPlugin{nullptr};
sem_t answered;

void OnAsked(int) {
    const int error = errno;
    innermostPlugin = PluginCode::Innermost();
    ::sem_post(&answered);
    errno = error;
}

void InstallHandler() {
    static bool installed = false;
    if (std::exchange(installed, true))
        return;
    ::sem_init(&answered, 0, 0);
    (void)PluginCode::Innermost(); // loads what it needs, which a handler mustn't
    struct sigaction action {};
    action.sa_handler = &OnAsked;
    action.sa_flags = SA_RESTART;
    ::sigemptyset(&action.sa_mask);
    ::sigaction(AskSignal(), &action, nullptr);
}

} // namespace

UiWatch::UiWatch(Milliseconds limit, TellFunction tell)
    : m_limit(limit), m_tell(std::move(tell)), m_uiThread(::pthread_self()), m_busySince(Now()) {
    InstallHandler();
    // Each turn of a loop, of a dialog's too, says that it is alive.
    const auto* dispatcher = QAbstractEventDispatcher::instance();
    connect(
        dispatcher, &QAbstractEventDispatcher::awake, this, [this] { m_busySince = Now(); }, Qt::DirectConnection);
    connect(
        dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, [this] { m_busySince = 0; }, Qt::DirectConnection);
    m_thread = std::thread([this] { Watch(); });
}

UiWatch::~UiWatch() {
    {
        const std::lock_guard lock(m_mutex);
        m_ends = true;
    }
    m_end.notify_all();
    m_thread.join();
}

long long UiWatch::Now() {
    return std::chrono::duration_cast<Milliseconds>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

const char* UiWatch::WhoseCode() const {
    innermostPlugin = nullptr;
    while (::sem_trywait(&answered) == 0) {
    }
    if (::pthread_kill(m_uiThread, AskSignal()) != 0)
        return nullptr;
    timespec until{};
    ::clock_gettime(CLOCK_REALTIME, &until);
    until.tv_sec += 1; // a thread inside the kernel answers when it comes out
    while (::sem_timedwait(&answered, &until) != 0)
        if (errno != EINTR)
            return nullptr;
    return innermostPlugin;
}

void UiWatch::Watch() {
    long long reportedNumber = 0; // the busy time that has been reported
    const char* toldOf = nullptr;
    long long last = 0;
    std::unique_lock lock(m_mutex);
    while (!m_end.wait_for(lock, m_limit / 8, [this] { return m_ends; })) {
        const long long since = m_busySince;
        const long long now = Now();
        if (reportedNumber != 0 && since != reportedNumber) {
            m_tell(toldOf, Milliseconds(last - reportedNumber), true);
            reportedNumber = 0;
        }
        if (since == 0)
            continue;
        if (since == reportedNumber)
            last = now;
        else if (now - since >= m_limit.count()) {
            toldOf = WhoseCode();
            if (m_busySince != since)
                continue; // it came back meanwhile, and the answer is of something else
            reportedNumber = since;
            last = now;
            m_tell(toldOf, Milliseconds(now - since), false);
        }
    }
}

} // namespace corvane::desktop

#include "moc_UiWatch.cpp"
