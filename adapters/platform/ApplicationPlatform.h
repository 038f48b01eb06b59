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
    // appFolder holds Services, Images, plugins and QRZ.INI; it becomes absolute. An empty name represents the
    // folder's own. Fails with 76 when there is no such folder.
    explicit ApplicationPlatform(std::string appFolder, std::string appName = {});

    // All but what the host has of its own: screen, oTimers, oMessageBox and oScreenPrinter are nothing.
    [[nodiscard]] Platform MakePlatform() const;

    std::string folder;
    std::string name;
    Ref<Utilities> utilities;
    Ref<PluginFactory> plugins;
    Ref<SettingsStore> settings;
    Ref<WindowMessages> windowMessages;
};

} // namespace corvane
