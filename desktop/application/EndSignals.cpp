#include "desktop/application/EndSignals.h"

#include <QGuiApplication>
#include <QSessionManager>
#include <QSocketNotifier>
#include <QThread>
#include <QWidget>
#include <array>
#include <csignal>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace corvane::desktop {

namespace {

constexpr std::array endSignals{SIGTERM, SIGHUP, SIGINT};
std::array<int, 2> ends{-1, -1}; // a signal handler writes into the first, the event loop reads from the second

void OnSignal(int signal) {
    std::signal(signal, SIG_DFL); // the next one isn't answered by the program
    const char any = 1;
    [[maybe_unused]] const auto written = ::write(ends[0], &any, 1);
}

} // namespace

EndSignals::EndSignals(QWidget* mainWindow) : m_mainWindow(mainWindow) {
    connect(
        qApp, &QGuiApplication::commitDataRequest, this,
        [this](QSessionManager& session) {
            if (session.allowsInteraction() && !m_mainWindow->close())
                session.cancel();
        },
        Qt::DirectConnection);
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()) != 0)
        return; // the endSignals then end the program as they would any
    m_notifier = new QSocketNotifier(ends[1], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &EndSignals::Arrived);
    for (const int signal : endSignals)
        std::signal(signal, &OnSignal);
}

EndSignals::~EndSignals() {
    if (!m_notifier)
        return;
    for (const int signal : endSignals)
        std::signal(signal, SIG_DFL);
    for (int& end : ends)
        ::close(std::exchange(end, -1));
}

void EndSignals::Arrived() {
    char any = 0;
    [[maybe_unused]] const auto read = ::read(ends[1], &any, 1);
    if (m_mainWindow->close()) {
        // One that was closed before has nothing more to say, and the event loop would wait for it.
        if (QThread::currentThread()->loopLevel() > 0)
            QCoreApplication::quit();
        return;
    }
    for (const int signal : endSignals) // someone wants to stay: the next signal asks again
        std::signal(signal, &OnSignal);
}

} // namespace corvane::desktop

#include "moc_EndSignals.cpp"
