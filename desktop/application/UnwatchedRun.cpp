#include "desktop/application/UnwatchedRun.h"

#include "desktop/application/Application.h"
#include "desktop/jobs/DesktopJobs.h"

#include <cstdio>
#include <utility>

namespace corvane::desktop {

UnwatchedRun::UnwatchedRun(Application& application, std::deque<RunStep> steps, std::function<bool()> look)
    : m_application(application), m_steps(std::move(steps)), m_look(std::move(look)) {
    m_application.SetModalLoop([this](const auto& goesOn, const auto& end) { DuringModalForm(goesOn, end); });
}

UnwatchedRun::~UnwatchedRun() {
    m_application.SetModalLoop({});
}

bool UnwatchedRun::Run() {
    do
        Rest();
    while (TakeNextStep());
    Look();
    return m_allDone;
}

// What a job brings may start another one.
void UnwatchedRun::Rest() {
    do
        m_application.Settle();
    while (!m_application.HasEnded() && m_application.Jobs().WaitForAll());
}

bool UnwatchedRun::TakeNextStep() {
    if (m_steps.empty())
        return false;
    const RunStep step = std::move(m_steps.front());
    m_steps.pop_front();
    bool done = false;
    switch (step.kind) {
    case RunStep::Kind::Choose:
        done = m_application.Choose(step.what.toStdString());
        break;
    case RunStep::Kind::Click:
        done = m_application.ClickCommand(step.what.toStdString());
        break;
    case RunStep::Kind::Page:
        done = m_application.ShowPage(step.what.toInt());
        break;
    }
    if (!done) {
        static constexpr const char* verbs[] = {"chosen", "clicked", "shown as a page"};
        std::fprintf(stderr, "corvane-desktop: error: %s can't be %s%s\n", qUtf8Printable(step.what),
                     verbs[static_cast<int>(step.kind)],
                     m_application.HasEnded()          ? ": the application has ended"
                     : m_application.IsModalFormOpen() ? " while a modal window is open"
                                                       : "");
        m_allDone = false;
    }
    return true;
}

void UnwatchedRun::Look() {
    if (const auto look = std::exchange(m_look, nullptr))
        m_allDone = look() && m_allDone;
}

void UnwatchedRun::DuringModalForm(const std::function<bool()>& goesOn, const std::function<void()>& end) {
    Rest();
    while (goesOn() && TakeNextStep())
        Rest();
    if (!goesOn())
        return;
    Look();
    end();
}

} // namespace corvane::desktop
