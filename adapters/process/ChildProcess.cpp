#include "adapters/process/ChildProcess.h"

#include "corvane/base/Failure.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace corvane {

namespace {

constexpr std::size_t longestMessage = 64 * 1024 * 1024;

[[noreturn]] void FailStart(const std::string& why) {
    Fail(FailureNumber::CannotCreateObject, why, "Processes");
}

void CloseAt(int& descriptor) {
    if (descriptor >= 0)
        ::close(std::exchange(descriptor, -1));
}

// Two descriptors that are closed when they aren't taken.
struct Pair {
    std::array<int, 2> ends{-1, -1};
    ~Pair() {
        CloseAt(ends[0]);
        CloseAt(ends[1]);
    }
    int Take(std::size_t end) { return std::exchange(ends[end], -1); }
};

void MakePipe(Pair& pair) {
    if (::pipe2(pair.ends.data(), O_CLOEXEC) != 0)
        FailStart(std::string("no pipe can be made: ") + std::strerror(errno));
}

// The program's path, as the process's own PATH finds it.
std::string ProgramOf(const LaunchCommand& command) {
    const std::string& program = command.words.front();
    if (program.find('/') != std::string::npos)
        return program;
    for (const std::string& entry : command.environment) {
        if (entry.compare(0, 5, "PATH=") != 0)
            continue;
        for (std::size_t begin = 5; begin <= entry.size();) {
            const std::size_t end = std::min(entry.find(':', begin), entry.size());
            std::string path = entry.substr(begin, end - begin) + "/" + program;
            if (::access(path.c_str(), X_OK) == 0)
                return path;
            begin = end + 1;
        }
    }
    FailStart("there is no program \"" + program + "\" in the PATH");
}

std::vector<char*> Pointers(const std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (const std::string& text : texts)
        pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

void Limit(decltype(RLIMIT_AS) what, std::uint64_t value) {
    const rlimit limit{value, value};
    if (value != 0)
        ::setrlimit(what, &limit);
}

// In the new process, where nothing may be allocated any more.
struct Start {
    const char* program;
    char* const* words;
    char* const* environment;
    const char* folder;
    std::uint64_t memory;
    std::uint64_t cpuSeconds;
    int socket;
    int output;
    int error;
    int report; // takes the number of the error that kept the program from running
    pid_t parent;

    [[noreturn]] void Run() const {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != parent)
            ::_exit(127);
        sigset_t none;
        sigemptyset(&none);
        ::sigprocmask(SIG_SETMASK, &none, nullptr);
        for (const int number : {SIGPIPE, SIGINT, SIGTERM, SIGHUP, SIGCHLD, SIGALRM})
            ::signal(number, SIG_DFL);
        ::setpgid(0, 0);
        // Above what they are duplicated to, so that none is overwritten.
        const int high = ::fcntl(socket, F_DUPFD_CLOEXEC, 20);
        const int highReport = ::fcntl(report, F_DUPFD_CLOEXEC, 20);
        const int highOutput = ::fcntl(output, F_DUPFD_CLOEXEC, 20);
        const int highError = ::fcntl(error, F_DUPFD_CLOEXEC, 20);
        const int nothing = ::open("/dev/null", O_RDONLY);
        if (high >= 0 && highReport >= 0 && highOutput >= 0 && highError >= 0 && ::dup2(nothing, 0) == 0 &&
            ::dup2(highOutput, 1) == 1 && ::dup2(highError, 2) == 2 &&
            ::dup2(high, ChildProcess::SocketNumber) == ChildProcess::SocketNumber && ::dup2(highReport, 4) == 4 &&
            ::fcntl(4, F_SETFD, FD_CLOEXEC) == 0 && ::chdir(folder) == 0) {
            ::syscall(SYS_close_range, 5U, ~0U, 0U);
            Limit(RLIMIT_AS, memory);
            Limit(RLIMIT_CPU, cpuSeconds);
            Limit(RLIMIT_CORE, 0);
            ::execve(program, words, environment);
        }
        const int why = errno;
        [[maybe_unused]] const auto written = ::write(4, &why, sizeof why);
        ::_exit(127);
    }
};

} // namespace

Waker::Waker() : m_descriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (m_descriptor < 0)
        FailStart(std::string("no event can be made: ") + std::strerror(errno));
}

Waker::~Waker() {
    ::close(m_descriptor);
}

void Waker::Wake() const {
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write(m_descriptor, &one, sizeof one);
}

void Waker::Calm() const {
    std::uint64_t count = 0;
    [[maybe_unused]] const auto read = ::read(m_descriptor, &count, sizeof count);
}

ChildProcess::ChildProcess(const LaunchCommand& command, SaidFunction said)
    : m_said(std::move(said)), m_lines(longestMessage) {
    Launch(command);
}

void ChildProcess::Launch(const LaunchCommand& command) {
    Pair sockets;
    Pair output;
    Pair error;
    Pair report;
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets.ends.data()) != 0)
        FailStart(std::string("no socket can be made: ") + std::strerror(errno));
    MakePipe(output);
    MakePipe(error);
    MakePipe(report);
    const std::string program = ProgramOf(command);
    const auto words = Pointers(command.words);
    const auto environment = Pointers(command.environment);
    const Start start{program.c_str(), words.data(),       environment.data(), command.folder.c_str(),
                      command.memory,  command.cpuSeconds, sockets.ends[1],    output.ends[1],
                      error.ends[1],   report.ends[1],     ::getpid()};
    m_id = ::fork();
    if (m_id == 0)
        start.Run();
    if (m_id < 0)
        FailStart(std::string("no process can be made: ") + std::strerror(errno));
    CloseAt(report.ends[1]);
    int why = 0;
    ssize_t count = 0;
    while ((count = ::read(report.ends[0], &why, sizeof why)) < 0 && errno == EINTR) {
    }
    if (count != 0) {
        ::waitpid(m_id, nullptr, 0);
        m_id = -1;
        FailStart("\"" + program + "\" in the folder \"" + command.folder + "\" can't be run: " + std::strerror(why));
    }
    m_socket = sockets.Take(0);
    m_output.descriptor = output.Take(0);
    m_error.descriptor = error.Take(0);
    for (const int descriptor : {m_socket, m_output.descriptor, m_error.descriptor})
        ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) | O_NONBLOCK);
    m_pending = ::epoll_create1(EPOLL_CLOEXEC);
    for (const int descriptor : {m_socket, m_output.descriptor, m_error.descriptor, m_waker->Descriptor()}) {
        epoll_event event{};
        event.events = EPOLLIN;
        ::epoll_ctl(m_pending, EPOLL_CTL_ADD, descriptor, &event);
    }
}

// What couldn't be written yet is something to do, too.
void ChildProcess::Watch() {
    if (m_socket < 0 || m_watchesWriting != m_outgoing.empty())
        return;
    m_watchesWriting = !m_outgoing.empty();
    epoll_event event{};
    event.events = m_watchesWriting ? EPOLLIN | EPOLLOUT : EPOLLIN;
    ::epoll_ctl(m_pending, EPOLL_CTL_MOD, m_socket, &event);
}

ChildProcess::~ChildProcess() {
    m_said = nullptr;
    (void)End();
    CloseAt(m_socket);
    CloseAt(m_output.descriptor);
    CloseAt(m_error.descriptor);
    CloseAt(m_pending);
}

void ChildProcess::Send(std::string_view line) {
    m_outgoing.append(line);
    m_outgoing += '\n';
}

void ChildProcess::Turn(int milliseconds) {
    if (!m_outgoing.empty())
        WriteSocket();
    std::array<pollfd, 4> waited{{{m_socket, POLLIN, 0},
                                  {m_output.descriptor, POLLIN, 0},
                                  {m_error.descriptor, POLLIN, 0},
                                  {m_waker->Descriptor(), POLLIN, 0}}};
    if (!m_outgoing.empty())
        waited[0].events |= POLLOUT;
    Watch();
    if (::poll(waited.data(), waited.size(), milliseconds) <= 0)
        return;
    if (waited[3].revents)
        m_waker->Calm();
    if (waited[1].revents)
        ReadOutput(m_output);
    if (waited[2].revents)
        ReadOutput(m_error);
    if (m_socket >= 0 && (waited[0].revents & POLLOUT))
        WriteSocket();
    if (m_socket >= 0 && (waited[0].revents & (POLLIN | POLLHUP | POLLERR)))
        ReadSocket();
    Watch();
}

void ChildProcess::ReadSocket() {
    std::array<char, 64 * 1024> bytes;
    for (;;) {
        const ssize_t count = ::read(m_socket, bytes.data(), bytes.size());
        if (count > 0) {
            m_lines.Add({bytes.data(), static_cast<std::size_t>(count)});
            if (m_lines.IsTooLong()) {
                CloseAt(m_socket);
                return;
            }
            if (static_cast<std::size_t>(count) < bytes.size())
                return;
        } else if (count == 0 || (errno != EAGAIN && errno != EINTR)) {
            CloseAt(m_socket);
            return;
        } else if (errno == EAGAIN) {
            return;
        }
    }
}

// What can't be sent any more is found out by reading.
void ChildProcess::WriteSocket() {
    while (m_socket >= 0 && !m_outgoing.empty()) {
        const ssize_t count = ::send(m_socket, m_outgoing.data(), m_outgoing.size(), MSG_NOSIGNAL);
        if (count < 0) {
            if (errno == EPIPE || errno == ECONNRESET)
                m_outgoing.clear();
            return;
        }
        m_outgoing.erase(0, static_cast<std::size_t>(count));
    }
}

void ChildProcess::Say(const Output& output, const std::string& line) {
    if (&output == &m_error && line.find_first_not_of(" \t\r") != std::string::npos)
        m_lastSaid = line;
    if (m_said)
        m_said(line);
}

void ChildProcess::ReadOutput(Output& output) {
    std::array<char, 16 * 1024> bytes;
    while (output.descriptor >= 0) {
        const ssize_t count = ::read(output.descriptor, bytes.data(), bytes.size());
        if (count < 0)
            return;
        output.lines.Add({bytes.data(), static_cast<std::size_t>(count)});
        while (const auto line = output.lines.Next())
            Say(output, *line);
        if (count == 0 || output.lines.IsTooLong())
            if (const std::string rest = output.lines.TakeRest(); !rest.empty())
                Say(output, rest);
        if (count == 0)
            CloseAt(output.descriptor);
    }
}

void ChildProcess::Close() {
    if (m_socket >= 0)
        ::shutdown(m_socket, SHUT_RDWR);
    CloseAt(m_socket);
}

void ChildProcess::Ended(int status, const rusage& used) {
    constexpr std::uint64_t kibibyte = 1024;
    constexpr double microsecond = 1e-6;
    m_status = status;
    m_used.memory = static_cast<std::uint64_t>(used.ru_maxrss) * kibibyte;
    m_used.seconds = static_cast<double>(used.ru_utime.tv_sec + used.ru_stime.tv_sec) +
                     static_cast<double>(used.ru_utime.tv_usec + used.ru_stime.tv_usec) * microsecond;
}

bool ChildProcess::HasEnded() {
    int status = 0;
    rusage used{};
    if (m_id > 0 && !m_status && ::wait4(m_id, &status, WNOHANG, &used) == m_id)
        Ended(status, used);
    return m_id <= 0 || m_status;
}

bool ChildProcess::WaitForEnd(int milliseconds) {
    using Clock = std::chrono::steady_clock;
    const auto until = Clock::now() + std::chrono::milliseconds(milliseconds);
    while (!HasEnded() && Clock::now() < until)
        Turn(5);
    return HasEnded();
}

void ChildProcess::Kill() {
    if (!HasEnded()) {
        ::kill(-m_id, SIGKILL); // what it has started itself, too
        ::kill(m_id, SIGKILL);
    }
}

std::string ChildProcess::End() {
    if (m_id <= 0)
        return {};
    Kill();
    int status = 0;
    rusage used{};
    while (!m_status && ::wait4(m_id, &status, 0, &used) < 0 && errno == EINTR) {
    }
    if (!m_status)
        Ended(status, used);
    ReadOutput(m_output);
    ReadOutput(m_error);
    if (WIFSIGNALED(*m_status))
        return "was killed by signal " + std::to_string(WTERMSIG(*m_status)) + " (" + ::strsignal(WTERMSIG(*m_status)) +
               ")";
    return "ended with exit code " + std::to_string(WEXITSTATUS(*m_status));
}

} // namespace corvane
