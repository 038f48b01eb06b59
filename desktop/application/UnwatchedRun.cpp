#include "desktop/application/UnwatchedRun.h"

#include "desktop/application/Application.h"

#include <cstdio>
#include <utility>

namespace corvane::desktop {

UnwatchedRun::UnwatchedRun(Application& oApplication, std::deque<RunStep> aSteps, std::function<bool()> fnLook)
    : m_oApplication(oApplication), m_aSteps(std::move(aSteps)), m_fnLook(std::move(fnLook)) {
    m_oApplication.SetModalLoop([this](const auto& fnGoesOn, const auto& fnEnd) { DuringModalForm(fnGoesOn, fnEnd); });
}

UnwatchedRun::~UnwatchedRun() {
    m_oApplication.SetModalLoop({});
}

bool UnwatchedRun::Run() {
    do
        m_oApplication.Settle();
    while (TakeNextStep());
    Look();
    return m_bAllDone;
}

bool UnwatchedRun::TakeNextStep() {
    if (m_aSteps.empty())
        return false;
    const RunStep oStep = std::move(m_aSteps.front());
    m_aSteps.pop_front();
    bool bDone = false;
    switch (oStep.eKind) {
    case RunStep::Kind::Choose:
        bDone = m_oApplication.Choose(oStep.sWhat.toStdString());
        break;
    case RunStep::Kind::Click:
        bDone = m_oApplication.ClickCommand(oStep.sWhat.toStdString());
        break;
    case RunStep::Kind::Page:
        bDone = m_oApplication.ShowPage(oStep.sWhat.toInt());
        break;
    }
    if (!bDone) {
        static constexpr const char* aVerbs[] = {"chosen", "clicked", "shown as a page"};
        std::fprintf(stderr, "corvane-desktop: error: %s can't be %s%s\n", qUtf8Printable(oStep.sWhat),
                     aVerbs[static_cast<int>(oStep.eKind)],
                     m_oApplication.IsModalFormOpen() ? " while a modal window is open" : "");
        m_bAllDone = false;
    }
    return true;
}

void UnwatchedRun::Look() {
    if (const auto fnLook = std::exchange(m_fnLook, nullptr))
        m_bAllDone = fnLook() && m_bAllDone;
}

void UnwatchedRun::DuringModalForm(const std::function<bool()>& fnGoesOn, const std::function<void()>& fnEnd) {
    m_oApplication.Settle();
    while (fnGoesOn() && TakeNextStep())
        m_oApplication.Settle();
    if (!fnGoesOn())
        return;
    Look();
    fnEnd();
}

} // namespace corvane::desktop
