#include "desktop/service/HostDefinitions.h"

#include "corvane/base/Failure.h"
#include "corvane/core/CorvaneMain.h"
#include "corvane/core/Framework.h"
#include "corvane/services/ExplorerItemDef.h"
#include "corvane/services/PageDef.h"
#include "corvane/services/ServiceDef.h"
#include "corvane/services/ServiceManager.h"
#include "corvane/services/WindowDef.h"
#include "desktop/service/DefinitionTags.h"
#include "desktop/service/FitDefinition.h"

#include <QFile>
#include <algorithm>

namespace corvane::desktop {

namespace {

// In the order of loading.
constexpr const char* aHostDefinitions[] = {"Corvane.Framework.xml", "Corvane.Desktop.xml"};

// What stands in the place of a definition that the application has of its own.
constexpr const char* sNothing = "<Service Active=\"false\"/>";

std::string HostDefinition(std::string_view sName) {
    QFile oFile(QStringLiteral(":/corvane/services/") + QLatin1String(sName.data(), static_cast<int>(sName.size())));
    if (!oFile.open(QIODevice::ReadOnly))
        Fail(FailureNumber::FileNotFound, "The host has no definition \"" + std::string(sName) + "\"");
    return oFile.readAll().toStdString();
}

// Calls fnSee with the attributes of the Service element, if there is one.
void SeeService(std::string_view sText, const std::function<void(const DefinitionTag&)>& fnSee) {
    ForEachTag(sText, {"Service"}, [&](const DefinitionTag& oTag) {
        fnSee(oTag);
        return false;
    });
}

bool IsTrue(std::string_view sValue) {
    try {
        return ToBoolean(Variant(std::string(sValue)));
    } catch (const Failure&) {
        return false; // the library rejects the file and says so
    }
}

// The menus of all definitions that the library has read by now.
void AddLoaded(MenusInUse& oInUse) {
    const Ref<Framework> oFramework = CorvaneMain::Framework();
    const Ref<ServiceManager> oServices = oFramework ? oFramework->ServiceManager() : nullptr;
    if (!oServices)
        return;
    for (const Ref<ServiceDef>& oService : *oServices->ServiceDefs()) {
        oInUse.Add(*oService->MenuItemDefs());
        for (const Ref<ExplorerItemDef>& oItem : *oService->ExplorerItemDefs())
            oInUse.Add(*oItem->MenuItemDefs());
    }
    for (const Ref<WindowDef>& oWindow : *oServices->WindowDefs())
        for (const Ref<PageDef>& oPage : *oWindow->PageDefs())
            oInUse.Add(*oPage->MenuItemDefs());
}

} // namespace

HostFileSystem::HostFileSystem(Ref<IFileSystem> oFiles, std::string sServicesFolder)
    : m_oFiles(std::move(oFiles)), m_sServicesFolder(std::move(sServicesFolder)) {}

std::vector<std::string> HostFileSystem::Files(std::string_view sFolder) const {
    std::vector<std::string> aPaths = m_oFiles->Files(sFolder);
    if (sFolder != m_sServicesFolder)
        return aPaths;
    for (const char* sName : aHostDefinitions) {
        const bool bReplaced = std::any_of(aPaths.begin(), aPaths.end(), [&](const std::string& sPath) {
            return EqualText(m_oFiles->FileName(sPath), sName);
        });
        if (bReplaced)
            continue;
        aPaths.push_back(m_oFiles->Join(sFolder, sName));
        m_mapOwn.try_emplace(aPaths.back(), Own{sName, {}});
    }
    return aPaths;
}

std::string HostFileSystem::ReadAll(std::string_view sPath) const {
    if (const auto it = m_mapOwn.find(std::string(sPath)); it != m_mapOwn.end()) {
        if (it->second.sText.empty())
            it->second.sText = OwnDefinition(it->second.sName);
        return it->second.sText;
    }
    std::string sText = m_oFiles->ReadAll(sPath);
    if (!m_mapOwn.empty() && sPath.starts_with(m_sServicesFolder))
        SeeService(sText, [&](const DefinitionTag& oTag) {
            m_setNames.emplace(oTag.Attribute("Name"));
            if (IsTrue(oTag.Attribute("Active")) && !oTag.Attribute("ProgID").empty())
                m_setProgIDs.emplace(oTag.Attribute("ProgID"));
        });
    return sText;
}

std::string HostFileSystem::OwnDefinition(const std::string& sName) const {
    const std::string sText = HostDefinition(sName);
    bool bReplaced = false;
    SeeService(sText, [&](const DefinitionTag& oTag) {
        bReplaced = m_setNames.contains(oTag.Attribute("Name")) || m_setProgIDs.contains(oTag.Attribute("ProgID"));
    });
    if (bReplaced)
        return sNothing;
    MenusInUse oInUse(sText);
    AddLoaded(oInUse);
    return FitDefinition(sText, std::move(oInUse));
}

Ref<Object> HostObjectFactory::Create(std::string_view sProgID) {
    const auto it = m_mapMakers.find(std::string(sProgID));
    return it == m_mapMakers.end() ? m_oPlugins->Create(sProgID) : it->second();
}

} // namespace corvane::desktop
