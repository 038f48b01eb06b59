// A process that the application starts, with a socket to talk over and its output to be read. It ends with the
// application, whatever becomes of that.
#pragma once

#include "adapters/process/LineReader.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace corvane {

struct LaunchCommand {
    std::vector<std::string> words;       // the program, searched for in the PATH of the environment, and arguments
    std::string folder;                   // where it runs
    std::vector<std::string> environment; // all of it, "NAME=value" each
    std::uint64_t memory = 0;             // limit of its address space in bytes; 0 for none
    std::uint64_t cpuSeconds = 0;         // limit of its processor time; 0 for none
};

class ChildProcess {
public:
    static constexpr int SocketNumber = 3; // the descriptor of its socket in the process

    using SaidFunction = std::function<void(std::string_view line)>;

    // said gets each line that the process writes to its output and its error stream, during Turn. Fails with 429 when
    // the program can't be started; the description says why.
    ChildProcess(const LaunchCommand& command, SaidFunction said);
    // Kills it, if it is still there.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // The line is sent during the next turns; a line feed is added.
    void Send(std::string_view line);
    // Waits up to that time for something to come, and moves bytes both ways.
    void Turn(int milliseconds);
    [[nodiscard]] std::optional<std::string> NextLine() { return m_lines.Next(); }
    // The process has closed its socket, or has sent a line without end. What came before can still be read.
    [[nodiscard]] bool IsClosed() const { return m_socket < 0; }
    // Closes the socket: the process shall end.
    void Close();
    // Waits up to that time for its end, while its output is read.
    bool WaitForEnd(int milliseconds);
    void Kill();
    // Kills it and says what it died of, as in "was killed by signal 6 (Aborted)".
    std::string End();

    // The last line that it wrote to its error stream, empty for none.
    [[nodiscard]] const std::string& LastSaid() const { return m_lastSaid; }

private:
    struct Output {
        int descriptor = -1;
        LineReader lines{64 * 1024};
    };

    void Launch(const LaunchCommand& command);
    void ReadSocket();
    void WriteSocket();
    void ReadOutput(Output& output);
    void Say(const Output& output, const std::string& line);
    [[nodiscard]] bool HasEnded();

    SaidFunction m_said;
    pid_t m_id = -1;
    std::optional<int> m_status;
    int m_socket = -1;
    std::string m_outgoing;
    LineReader m_lines;
    Output m_output;
    Output m_error;
    std::string m_lastSaid;
};

} // namespace corvane
