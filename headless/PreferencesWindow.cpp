#include "headless/PreferencesWindow.h"

#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/platform/Platform.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/services/WindowDef.h"

namespace corvane::inspect {

void DefinePreferencesWindow() {
    const auto manager = CorvaneMain::Framework()->ServiceManager();
    if (manager->WindowDefs()->HasKey(preferencesWindow))
        return;
    const Ref<IXmlDocument> document = CurrentPlatform().oXmlService->NewDocument();
    (void)document->LoadXml(
        std::string("<Window Name=\"") + preferencesWindow +
        R"(" Caption="Preferences" Type="Dialog" State="Normal" IsMDIChild="False" IsModal="False"/>)");
    const auto window = New<WindowDef>();
    window->Initialize(document->SelectSingleNode("/Window"));
    for (const auto& page : manager->PreferencePageDefs()) {
        std::string key = page->Key();
        while (window->PageDefs()->HasKey(key)) // two services may have a page of one class and caption
            key += "'";
        window->PageDefs()->Add(page, key);
    }
    manager->WindowDefs()->Add(window, preferencesWindow);
}

} // namespace corvane::inspect
