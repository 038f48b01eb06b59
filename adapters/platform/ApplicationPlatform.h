// The real parts of the platform for one application folder, put together.
#pragma once

#include "adapters/files/SettingsStore.h"
#include "adapters/log/Utilities.h"
#include "adapters/messages/WindowMessages.h"
#include "adapters/plugins/PluginFactory.h"
#include "corvane/platform/Platform.h"

#include <string>

namespace corvane {

// The parts of which a host needs more than the library does, and all of them as the library takes them.
struct ApplicationPlatform {
    // sAppFolder holds Services, Images, plugins and QRZ.INI; it becomes absolute. An empty name stands for the
    // folder's own. Fails with 76 when there is no such folder.
    explicit ApplicationPlatform(std::string sAppFolder, std::string sAppName = {});

    // All but what the host has of its own: oScreen, oTimers, oMessageBox and oScreenPrinter are nothing.
    [[nodiscard]] Platform MakePlatform() const;

    std::string sFolder;
    std::string sName;
    Ref<Utilities> oUtilities;
    Ref<PluginFactory> oPlugins;
    Ref<SettingsStore> oSettings;
    Ref<WindowMessages> oWindowMessages;
};

} // namespace corvane
