// The jobs of services on the desktop.
#include "desktop/application/Application.h"
#include "desktop/blame/CrashMarker.h"
#include "desktop/jobs/DesktopJobs.h"
#include "desktop/platform/HostParts.h"

#include <cstdlib>

namespace corvane::desktop {

void Application::SetUpJobs() {
    DesktopJobs::Parts parts;
    parts.guard = [this](const std::function<void()>& act) { ByHost(act); };
    parts.mayDeliver = [this] { return !m_shell.IsBarShown() && !HasEnded(); };
    parts.threads = {&CrashMarker::SetThreadService, [] { CrashMarker::SetThreadService({}); }};
    parts.explorer = m_panelForm;
    parts.ask = [this](const JobQuestion& question) { return AskAboutJobs(question); };
    m_jobs = std::make_unique<DesktopJobs>(std::move(parts));
    m_mainForm->AddMember("Jobs", m_jobs->Manager());
}

// A run that no one watches is given "Wait", "Cancel" or "Stay" beforehand; otherwise the job goes on.
JobAnswer Application::AskAboutJobs(const JobQuestion& question) {
    const auto answer = m_commonDialog->TakeAnswer();
    if (!answer)
        return AskInBox(question);
    return EqualText(*answer, "Wait")     ? JobAnswer::CloseLater
           : EqualText(*answer, "Cancel") ? JobAnswer::CancelJobs
           : EqualText(*answer, "Stay")   ? JobAnswer::KeepOpen
                                          : JobAnswer::LeaveRunning;
}

// What a job still runs in is about to go: one that ignores its end ends with the program, here and now.
void Application::StopJobs() {
    std::string stillRunning;
    if (m_jobs->Stop(stillRunning))
        return;
    Note("Jobs", "The program ended although it was still working, as this didn't end: " + stillRunning);
    std::_Exit(EXIT_FAILURE);
}

} // namespace corvane::desktop
