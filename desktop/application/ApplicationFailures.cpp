#include "adapters/platform/ApplicationPlatform.h"
#include "corvane/core/Framework.h"
#include "corvane/platform/Platform.h"
#include "desktop/application/Application.h"
#include "desktop/application/ApplicationEnd.h"
#include "desktop/application/MainWindow.h"
#include "desktop/blame/Blame.h"
#include "desktop/blame/CrashMarker.h"
#include "desktop/commands/DefinitionPlaces.h"
#include "desktop/platform/HostParts.h"

#include <QFileInfo>

namespace corvane::desktop {

bool Application::HasEnded() const {
    return !m_mainForm->IsLoaded() || m_window->HasEnded();
}

void Application::SetUpFailures() {
    m_end = std::make_unique<ApplicationEnd>(m_mainForm, m_failures, *m_blame);
    m_failures.SetObserver(*this);
    m_catcher = std::make_unique<GuardedApplication::Catcher>(
        [this](const UncaughtFailure& uncaught) { ShowUncaught(uncaught); });
}

void Application::Failed(int depth) {
    m_screen->SetPointer(MousePointer::Default);
    if (depth <= m_firstClickAt)
        m_clicks = 0; // the command has failed
    // A bar that code further up the stack shows is hidden by that code.
    if (m_shell.IsHeld() && (!m_shell.IsBarShown() || !m_barShownAt || *m_barShownAt >= depth))
        m_shell.LetGo();
    m_endIsBrokenOff = m_end->SeeThrough(depth) || m_endIsBrokenOff;
}

void Application::Seen() {
    if (m_endIsBrokenOff && m_window && !m_window->HasEnded())
        m_window->EndNow();
}

// A bar that failed to show itself has disabled everything, also where its caller has caught that failure.
void Application::Returned() {
    m_clicks = 0;
    if (m_shell.IsHeld() && !m_shell.IsBarShown())
        m_shell.LetGo();
}

// The plug-in whose code it was, or else the page that was called, with the service in whose definition it is at home.
std::string Application::PlaceOf(const UncaughtFailure& uncaught) const {
    const std::string pagePlugin = uncaught.page.substr(0, uncaught.page.find('.'));
    const bool isOfPage = !pagePlugin.empty() && (uncaught.plugin.empty() || EqualText(uncaught.plugin, pagePlugin));
    CrashRecord record;
    record.plugin = isOfPage ? pagePlugin : uncaught.plugin;
    record.entered = isOfPage ? uncaught.page : std::string();
    if (record.plugin.empty())
        return {};
    const std::string folder = m_platform->utilities->GetAppFolder("Services");
    std::string service = m_blame->Who(record);
    if (EqualText(service, record.plugin))
        service = OnlyServiceOf(record.plugin, folder);
    std::string text = "in " + (isOfPage ? uncaught.page : uncaught.plugin);
    const DefinitionPlace place = DefinitionPlaces(*CurrentPlatform().oFileSystem, folder).FindService(service);
    if (place.line > 0)
        text += " (service " + service + ", Services/" +
                QFileInfo(QString::fromStdString(place.path)).fileName().toStdString() + ":" +
                std::to_string(place.line) + ")";
    return text;
}

void Application::ShowUncaught(const UncaughtFailure& uncaught) {
    const std::string place = PlaceOf(uncaught);
    m_platform->utilities->LogError(m_platform->utilities->AppName(), "Desktop", "Event", uncaught.failure, place,
                                    false);
    m_failures.ShowUncaught(
        {"",
         QCoreApplication::translate("Application", "A part of the application failed; the rest goes on.")
             .toStdString(),
         uncaught.failure, place, m_platform->utilities->LogPath()},
        !uncaught.isInput);
}

} // namespace corvane::desktop
