#include "desktop/application/EndSignals.h"

#include <QGuiApplication>
#include <QSessionManager>
#include <QSocketNotifier>
#include <QWidget>
#include <array>
#include <csignal>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace corvane::desktop {

namespace {

constexpr std::array aSignals{SIGTERM, SIGHUP, SIGINT};
std::array<int, 2> aEnds{-1, -1}; // a signal handler writes into the first, the event loop reads from the second

void Heard(int nSignal) {
    std::signal(nSignal, SIG_DFL); // the next one isn't answered by the program
    const char cAny = 1;
    [[maybe_unused]] const auto nWritten = ::write(aEnds[0], &cAny, 1);
}

} // namespace

EndSignals::EndSignals(QWidget* pMainWindow) : m_pMainWindow(pMainWindow) {
    connect(
        qApp, &QGuiApplication::commitDataRequest, this,
        [this](QSessionManager& oSession) {
            if (oSession.allowsInteraction() && !m_pMainWindow->close())
                oSession.cancel();
        },
        Qt::DirectConnection);
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, aEnds.data()) != 0)
        return; // the signals then end the program as they would any
    m_pNotifier = new QSocketNotifier(aEnds[1], QSocketNotifier::Read, this);
    connect(m_pNotifier, &QSocketNotifier::activated, this, &EndSignals::Arrived);
    for (const int nSignal : aSignals)
        std::signal(nSignal, &Heard);
}

EndSignals::~EndSignals() {
    if (!m_pNotifier)
        return;
    for (const int nSignal : aSignals)
        std::signal(nSignal, SIG_DFL);
    for (int& nEnd : aEnds)
        ::close(std::exchange(nEnd, -1));
}

void EndSignals::Arrived() {
    char cAny = 0;
    [[maybe_unused]] const auto nRead = ::read(aEnds[1], &cAny, 1);
    if (m_pMainWindow->close())
        return;
    for (const int nSignal : aSignals) // somebody wants to stay: the next signal asks again
        std::signal(nSignal, &Heard);
}

} // namespace corvane::desktop
