// What a host wants to know of the processes of its services, and decides about them.
#pragma once

#include "corvane/base/Object.h"

#include <functional>
#include <memory>
#include <string_view>

namespace corvane {

class ProcessMonitor : public virtual Object {
public:
    static constexpr int Patience = 2000; // milliseconds without an answer, after which the host is asked

    // Lasts as long as this lives.
    class Listening {
    public:
        Listening() = default;
        Listening(const Listening&) = delete;
        Listening& operator=(const Listening&) = delete;
        virtual ~Listening() = default;
    };
    // A host with an event loop calls readable in it whenever the descriptor can be read. Another returns nothing, and
    // the process is looked after ten times a second.
    [[nodiscard]] virtual std::unique_ptr<Listening> Listen(int /*descriptor*/, std::function<void()> /*readable*/) {
        return nullptr;
    }
    // A line that the service's process has written to its output or error stream.
    virtual void Said(std::string_view service, std::string_view line) = 0;
    // The process has let a call wait for that long, which is more than Patience. Asked several times a second; false
    // kills the process. Nothing of the application may be called meanwhile.
    [[nodiscard]] virtual bool KeepsWaiting(std::string_view service, int milliseconds) = 0;
    // It has answered, or has ended, after KeepsWaiting had been asked.
    virtual void WaitingEnds(std::string_view service) = 0;
};

// Writes what is said into the log, and waits up to a limit.
class LoggingMonitor : public ProcessMonitor {
public:
    // The limit in milliseconds; 0 for none.
    explicit LoggingMonitor(int limit) : m_limit(limit) {}
    void Said(std::string_view service, std::string_view line) override;
    [[nodiscard]] bool KeepsWaiting(std::string_view service, int milliseconds) override;
    void WaitingEnds(std::string_view /*service*/) override {}

private:
    int m_limit;
};

} // namespace corvane
