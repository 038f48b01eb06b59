// Speaks for a process: what it is to have sent is there from the start, and it ends behind the last line.
#pragma once

#include "adapters/process/ChildProcess.h"

#include <deque>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace corvane::testing {

struct Script {
    std::deque<std::string> lines; // not read yet
    std::vector<std::string> sent; // by the application
    std::shared_ptr<const Waker> waker = std::make_shared<const Waker>();
};

class ScriptedConnection final : public Connection {
public:
    explicit ScriptedConnection(std::shared_ptr<Script> script) : m_script(std::move(script)) {}

    void Send(std::string_view line) override { m_script->sent.emplace_back(line); }
    void Turn(int /*milliseconds*/) override {}
    [[nodiscard]] int Pending() const override { return -1; }
    [[nodiscard]] const std::shared_ptr<const Waker>& WakerOfTurns() const override { return m_script->waker; }
    [[nodiscard]] std::optional<std::string> NextLine() override {
        m_script->waker->Calm(); // as the turn does that reads a line
        if (m_script->lines.empty())
            return std::nullopt;
        std::string line = std::move(m_script->lines.front());
        m_script->lines.pop_front();
        return line;
    }
    [[nodiscard]] bool HasLine() const override { return !m_script->lines.empty(); }
    [[nodiscard]] bool IsClosed() const override { return m_script->lines.empty(); }
    void Close() override {}
    bool WaitForEnd(int /*milliseconds*/) override { return true; }
    std::string End() override { return "ended"; }
    [[nodiscard]] pid_t Id() const override { return 1; }
    [[nodiscard]] const UsedUp& Used() const override { return m_used; }
    [[nodiscard]] const std::string& LastSaid() const override { return m_lastSaid; }

private:
    std::shared_ptr<Script> m_script;
    UsedUp m_used;
    std::string m_lastSaid;
};

} // namespace corvane::testing
