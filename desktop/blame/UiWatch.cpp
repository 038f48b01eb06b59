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

std::atomic<const char*> sAnswer{nullptr};
sem_t oAnswered;

void OnAsked(int) {
    const int nError = errno;
    sAnswer = PluginCode::Innermost();
    ::sem_post(&oAnswered);
    errno = nError;
}

void InstallHandler() {
    static bool bInstalled = false;
    if (std::exchange(bInstalled, true))
        return;
    ::sem_init(&oAnswered, 0, 0);
    (void)PluginCode::Innermost(); // loads what it needs, which a handler mustn't
    struct sigaction oAction {};
    oAction.sa_handler = &OnAsked;
    oAction.sa_flags = SA_RESTART;
    ::sigemptyset(&oAction.sa_mask);
    ::sigaction(AskSignal(), &oAction, nullptr);
}

} // namespace

UiWatch::UiWatch(Milliseconds oLimit, TellFunction fnTell)
    : m_oLimit(oLimit), m_fnTell(std::move(fnTell)), m_oUiThread(::pthread_self()), m_nBusySince(Now()) {
    InstallHandler();
    // Each turn of a loop, of a dialog's too, says that it is alive.
    const auto* pDispatcher = QAbstractEventDispatcher::instance();
    connect(
        pDispatcher, &QAbstractEventDispatcher::awake, this, [this] { m_nBusySince = Now(); }, Qt::DirectConnection);
    connect(
        pDispatcher, &QAbstractEventDispatcher::aboutToBlock, this, [this] { m_nBusySince = 0; }, Qt::DirectConnection);
    m_oThread = std::thread([this] { Watch(); });
}

UiWatch::~UiWatch() {
    {
        const std::lock_guard oLock(m_oMutex);
        m_bEnds = true;
    }
    m_oEnd.notify_all();
    m_oThread.join();
}

long long UiWatch::Now() {
    return std::chrono::duration_cast<Milliseconds>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

const char* UiWatch::WhoseCode() const {
    sAnswer = nullptr;
    while (::sem_trywait(&oAnswered) == 0) {
    }
    if (::pthread_kill(m_oUiThread, AskSignal()) != 0)
        return nullptr;
    timespec oUntil{};
    ::clock_gettime(CLOCK_REALTIME, &oUntil);
    oUntil.tv_sec += 1; // a thread inside the kernel answers when it comes out
    while (::sem_timedwait(&oAnswered, &oUntil) != 0)
        if (errno != EINTR)
            return nullptr;
    return sAnswer;
}

void UiWatch::Watch() {
    long long nToldOf = 0; // the busy time that has been told of
    const char* sToldOf = nullptr;
    long long nLast = 0;
    std::unique_lock oLock(m_oMutex);
    while (!m_oEnd.wait_for(oLock, m_oLimit / 8, [this] { return m_bEnds; })) {
        const long long nSince = m_nBusySince;
        const long long nNow = Now();
        if (nToldOf != 0 && nSince != nToldOf) {
            m_fnTell(sToldOf, Milliseconds(nLast - nToldOf), true);
            nToldOf = 0;
        }
        if (nSince == 0)
            continue;
        if (nSince == nToldOf)
            nLast = nNow;
        else if (nNow - nSince >= m_oLimit.count()) {
            sToldOf = WhoseCode();
            if (m_nBusySince != nSince)
                continue; // it came back meanwhile, and the answer is of something else
            nToldOf = nSince;
            nLast = nNow;
            m_fnTell(sToldOf, Milliseconds(nNow - nSince), false);
        }
    }
}

} // namespace corvane::desktop
