// A process that the application starts, with a socket to talk over and its output to be read. It ends with the
// application, whatever becomes of that.
#pragma once

#include "adapters/process/Connection.h"
#include "adapters/process/LineReader.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct rusage;

namespace corvane {

struct LaunchCommand {
    std::vector<std::string> words;       // the program, searched for in the PATH of the environment, and arguments
    std::string folder;                   // where it runs
    std::vector<std::string> environment; // all of it, "NAME=value" each
    std::uint64_t memory = 0;             // limit of its address space in bytes; 0 for none
    std::uint64_t cpuSeconds = 0;         // limit of its processor time; 0 for none
};

// Lets a turn of a process return at once. From any thread, and also when the process has ended.
class Waker {
public:
    Waker();
    ~Waker();
    Waker(const Waker&) = delete;
    Waker& operator=(const Waker&) = delete;

    void Wake() const;
    void Calm() const;
    [[nodiscard]] int Descriptor() const { return m_descriptor; }

private:
    int m_descriptor;
};

class ChildProcess final : public Connection {
public:
    static constexpr int SocketNumber = 3; // the descriptor of its socket in the process

    using SaidFunction = std::function<void(std::string_view line)>;

    // said gets each line that the process writes to its output and its error stream, during Turn. Fails with 429 when
    // the program can't be started; the description says why.
    ChildProcess(const LaunchCommand& command, SaidFunction said);
    // Kills it, if it is still there.
    ~ChildProcess() override;

    void Send(std::string_view line) override;
    void Turn(int milliseconds) override;
    [[nodiscard]] int Pending() const override { return m_pending; }
    [[nodiscard]] const std::shared_ptr<const Waker>& WakerOfTurns() const override { return m_waker; }
    [[nodiscard]] std::optional<std::string> NextLine() override { return m_lines.Next(); }
    [[nodiscard]] bool HasLine() const override { return m_lines.HasNext(); }
    [[nodiscard]] bool IsClosed() const override { return m_socket < 0; }
    void Close() override;
    bool WaitForEnd(int milliseconds) override;
    void Kill();
    std::string End() override;

    [[nodiscard]] pid_t Id() const override { return m_id; }
    [[nodiscard]] const UsedUp& Used() const override { return m_used; }
    [[nodiscard]] const std::string& LastSaid() const override { return m_lastSaid; }

private:
    struct Output {
        int descriptor = -1;
        LineReader lines{64 * 1024};
    };

    void Launch(const LaunchCommand& command);
    void Watch();
    void ReadSocket();
    void WriteSocket();
    void ReadOutput(Output& output);
    void Say(const Output& output, const std::string& line);
    [[nodiscard]] bool HasEnded();
    void Ended(int status, const rusage& used);

    SaidFunction m_said;
    pid_t m_id = -1;
    std::optional<int> m_status;
    UsedUp m_used;
    int m_pending = -1;
    std::shared_ptr<const Waker> m_waker = std::make_shared<const Waker>();
    int m_socket = -1;
    bool m_watchesWriting = false;
    std::string m_outgoing;
    LineReader m_lines;
    Output m_output;
    Output m_error;
    std::string m_lastSaid;
};

} // namespace corvane
