// The line between the application and the process of a service. What a process must offer to be spoken to; a test may
// speak for one.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace corvane {

class Waker;

// What a process has used until its end.
struct UsedUp {
    std::uint64_t memory = 0; // at most, in bytes
    double seconds = 0;       // of processor time
};

class Connection {
public:
    Connection() = default;
    virtual ~Connection() = default;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // The line is sent during the next turns; a line feed is added.
    virtual void Send(std::string_view line) = 0;
    // Waits up to that time for something to come, and moves bytes both ways.
    virtual void Turn(int milliseconds) = 0;
    // A descriptor that can be read as long as a turn has something to do.
    [[nodiscard]] virtual int Pending() const = 0;
    [[nodiscard]] virtual const std::shared_ptr<const Waker>& WakerOfTurns() const = 0;
    [[nodiscard]] virtual std::optional<std::string> NextLine() = 0;
    // There is one that has come already, for which the descriptor can't be read any more.
    [[nodiscard]] virtual bool HasLine() const = 0;
    // The process has closed its socket, or has sent a line without end. What came before can still be read.
    [[nodiscard]] virtual bool IsClosed() const = 0;
    // Closes the socket: the process shall end.
    virtual void Close() = 0;
    // Waits up to that time for its end, while its output is read.
    virtual bool WaitForEnd(int milliseconds) = 0;
    // Kills it and says what it died of, as in "was killed by signal 6 (Aborted)".
    virtual std::string End() = 0;

    [[nodiscard]] virtual pid_t Id() const = 0;
    // Known once End has been called.
    [[nodiscard]] virtual const UsedUp& Used() const = 0;
    // The last line that it wrote to its error stream, empty for none.
    [[nodiscard]] virtual const std::string& LastSaid() const = 0;
};

} // namespace corvane
