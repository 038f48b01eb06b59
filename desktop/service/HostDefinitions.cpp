#include "desktop/service/HostDefinitions.h"

#include "corvane/base/Failure.h"
#include "corvane/base/Text.h"
#include "desktop/service/DefinitionScan.h"

#include <QFile>
#include <algorithm>

namespace corvane::desktop {

namespace {

// In the order of loading.
constexpr const char* aHostDefinitions[] = {"Corvane.Framework.xml", "Corvane.Desktop.xml"};

std::string HostDefinition(const char* sName) {
    QFile oFile(QStringLiteral(":/corvane/services/") + QLatin1String(sName));
    if (!oFile.open(QIODevice::ReadOnly))
        Fail(FailureNumber::FileNotFound, std::string("The host has no definition \"") + sName + "\"");
    return oFile.readAll().toStdString();
}

} // namespace

HostFileSystem::HostFileSystem(Ref<IFileSystem> oFiles, std::string sServicesFolder)
    : m_oFiles(std::move(oFiles)), m_sServicesFolder(std::move(sServicesFolder)) {}

std::vector<std::string> HostFileSystem::Files(std::string_view sFolder) const {
    std::vector<std::string> aPaths = m_oFiles->Files(sFolder);
    if (sFolder != m_sServicesFolder)
        return aPaths;
    DefinitionScan oScan;
    for (const char* sName : aHostDefinitions)
        oScan.LookFor(HostDefinition(sName));
    for (const std::string& sPath : aPaths) {
        if (!EqualText(m_oFiles->Extension(sPath), "xml"))
            continue;
        try {
            std::string sBytes = m_oFiles->ReadAll(sPath);
            oScan.Add(sBytes);
            m_mapRead[sPath] = std::move(sBytes);
        } catch (const Failure&) {
            // The library meets the same failure when it reads the file, and reports it.
        }
    }
    for (const char* sName : aHostDefinitions) {
        const std::string sText = HostDefinition(sName);
        const auto aTags = TagsIn(sText, {"Service"});
        const bool bReplaced =
            oScan.HasService(aTags.front().Attribute("Name")) || oScan.HasProgID(aTags.front().Attribute("ProgID")) ||
            std::any_of(aPaths.begin(), aPaths.end(),
                        [&](const std::string& sPath) { return EqualText(m_oFiles->FileName(sPath), sName); });
        if (bReplaced)
            continue;
        aPaths.push_back(m_oFiles->Join(sFolder, sName));
        m_mapRead[aPaths.back()] = FitDefinition(sText, oScan);
    }
    return aPaths;
}

std::string HostFileSystem::ReadAll(std::string_view sPath) const {
    const auto it = m_mapRead.find(std::string(sPath));
    if (it == m_mapRead.end())
        return m_oFiles->ReadAll(sPath);
    std::string sBytes = std::move(it->second);
    m_mapRead.erase(it);
    return sBytes;
}

Ref<Object> HostObjectFactory::Create(std::string_view sProgID) {
    const auto it = m_mapMakers.find(std::string(sProgID));
    return it == m_mapMakers.end() ? m_oPlugins->Create(sProgID) : it->second();
}

} // namespace corvane::desktop
