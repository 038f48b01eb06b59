#include "adapters/platform/ApplicationPlatform.h"

#include "adapters/common/Paths.h"
#include "adapters/files/FileSystem.h"
#include "adapters/files/PictureLoader.h"
#include "adapters/ini/IniReader.h"
#include "adapters/xml/XmlService.h"

#include <filesystem>

namespace corvane {

namespace fs = std::filesystem;

ApplicationPlatform::ApplicationPlatform(std::string appFolder, std::string appName) : name(std::move(appName)) {
    std::error_code error;
    const fs::path folderPath = fs::canonical(appFolder.empty() ? "." : appFolder, error);
    if (error || !fs::is_directory(folderPath, error))
        Fail(FailureNumber::PathNotFound, "There is no application folder \"" + appFolder + "\"");
    folder = folderPath.string();
    if (name.empty())
        name = folderPath.filename().string();
    const std::string pluginsText = JoinPath(folder, "plugins");
    utilities = New<Utilities>(name, folder);
    plugins = New<PluginFactory>(FindPath(pluginsText).value_or(pluginsText));
    settings = New<SettingsStore>(name);
    windowMessages = New<WindowMessages>();
}

Platform ApplicationPlatform::MakePlatform() const {
    Platform platform;
    platform.oUtilities = utilities;
    platform.oXmlService = New<XmlService>();
    platform.oFileSystem = New<FileSystem>();
    platform.oIniReader = New<IniReader>();
    platform.oObjectFactory = plugins;
    platform.oPictureLoader = New<PictureLoader>();
    platform.oSettingsStore = settings;
    platform.oWindowMessages = windowMessages;
    return platform;
}

} // namespace corvane
