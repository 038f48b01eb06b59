#include "adapters/platform/ApplicationPlatform.h"

#include "adapters/common/Paths.h"
#include "adapters/files/FileSystem.h"
#include "adapters/files/PictureLoader.h"
#include "adapters/ini/IniReader.h"
#include "adapters/xml/XmlService.h"

#include <filesystem>

namespace corvane {

namespace fs = std::filesystem;

ApplicationPlatform::ApplicationPlatform(std::string sAppFolder, std::string sAppName) : sName(std::move(sAppName)) {
    std::error_code oError;
    const fs::path oFolder = fs::canonical(sAppFolder.empty() ? "." : sAppFolder, oError);
    if (oError || !fs::is_directory(oFolder, oError))
        Fail(FailureNumber::PathNotFound, "There is no application folder \"" + sAppFolder + "\"");
    sFolder = oFolder.string();
    if (sName.empty())
        sName = oFolder.filename().string();
    const std::string sPlugins = JoinPath(sFolder, "plugins");
    oUtilities = New<Utilities>(sName, sFolder);
    oPlugins = New<PluginFactory>(FindPath(sPlugins).value_or(sPlugins));
    oSettings = New<SettingsStore>(sName);
    oWindowMessages = New<WindowMessages>();
}

Platform ApplicationPlatform::MakePlatform() const {
    Platform oPlatform;
    oPlatform.oUtilities = oUtilities;
    oPlatform.oXmlService = New<XmlService>();
    oPlatform.oFileSystem = New<FileSystem>();
    oPlatform.oIniReader = New<IniReader>();
    oPlatform.oObjectFactory = oPlugins;
    oPlatform.oPictureLoader = New<PictureLoader>();
    oPlatform.oSettingsStore = oSettings;
    oPlatform.oWindowMessages = oWindowMessages;
    return oPlatform;
}

} // namespace corvane
