// What a run without a user does after the start, step by step, and what it leaves behind: a picture, a text. The
// steps go on while a modal window is open; when there are none left, a modal window is cancelled.
#pragma once

#include <QString>
#include <deque>
#include <functional>

namespace corvane::desktop {

class Application;

struct RunStep {
    enum class Kind { Choose, Click, Page };
    Kind kind;
    QString what; // a tool, a command, a page's number from 1
};

class UnwatchedRun final {
public:
    // look takes the picture and prints the text, once, when all steps are done.
    UnwatchedRun(Application& application, std::deque<RunStep> steps, std::function<bool()> look);
    ~UnwatchedRun();
    UnwatchedRun(const UnwatchedRun&) = delete;
    UnwatchedRun& operator=(const UnwatchedRun&) = delete;

    // Takes all steps. False when one of them, or looking, couldn't be done; the reason is on the error stream.
    bool Run();

private:
    void Rest(); // until nothing happens any more
    bool TakeNextStep();
    void Look();
    void DuringModalForm(const std::function<bool()>& goesOn, const std::function<void()>& end);

    Application& m_application;
    std::deque<RunStep> m_steps;
    std::function<bool()> m_look; // empty once it has looked
    bool m_allDone = true;
};

} // namespace corvane::desktop
