#include "desktop/blame/LeftOutServices.h"

#include "corvane/base/Failure.h"
#include "desktop/service/DefinitionTags.h"

#include <algorithm>

namespace corvane::desktop {

LeftOutServices::LeftOutServices(Ref<IFileSystem> oFiles, std::string sServicesFolder, LeftOut oLeftOut)
    : m_oFiles(std::move(oFiles)), m_sServicesFolder(std::move(sServicesFolder)), m_oLeftOut(std::move(oLeftOut)) {}

LeftOutServices::File LeftOutServices::Read(const std::string& sPath) const {
    File oFile;
    oFile.sPath = sPath;
    if (!EqualText(m_oFiles->Extension(sPath), "xml"))
        return oFile;
    std::string sText;
    try {
        sText = m_oFiles->ReadAll(sPath);
    } catch (const Failure&) {
        return oFile; // the library meets the same failure and reports it
    }
    for (const DefinitionTag& oTag : TagsIn(sText, {"Service", "ExplorerItem"})) {
        if (oTag.sElement == "Service") {
            oFile.sService = oTag.Attribute("Name");
            const std::string_view sProgID = oTag.Attribute("ProgID");
            oFile.sPlugin = sProgID.substr(0, sProgID.find('.'));
            oFile.bActive = !EqualText(oTag.Attribute("Active"), "false");
        } else {
            oFile.aItems.emplace_back(oTag.Attribute("Name"));
            oFile.aParents.emplace_back(oTag.Attribute("Parent"));
        }
    }
    return oFile;
}

void LeftOutServices::LeaveOut(std::vector<File>& aFiles) const {
    std::unordered_set<std::string, TextHash, TextEqual> setGone;
    const auto fnGo = [&](File& oFile) {
        oFile.bOut = true;
        m_aServices.push_back(oFile.sService);
        setGone.insert(oFile.aItems.begin(), oFile.aItems.end());
    };
    for (File& oFile : aFiles) {
        if (!oFile.bActive)
            continue;
        const bool bShell = oFile.sPlugin.empty() || EqualText(oFile.sPlugin, "Corvane");
        bool bNamed = false;
        for (const std::string& sName : m_oLeftOut.aNames)
            if (EqualText(sName, oFile.sService) || EqualText(sName, oFile.sPlugin)) {
                m_setUsed.insert(sName);
                bNamed = true;
            }
        if (bNamed || (m_oLeftOut.bAllPlugins && !bShell))
            fnGo(oFile);
    }
    for (bool bAgain = true; bAgain;) {
        bAgain = false;
        for (File& oFile : aFiles)
            if (oFile.bActive && !oFile.bOut &&
                std::any_of(oFile.aParents.begin(), oFile.aParents.end(),
                            [&](const std::string& sParent) { return setGone.contains(sParent); })) {
                fnGo(oFile);
                bAgain = true;
            }
    }
}

std::vector<std::string> LeftOutServices::Files(std::string_view sFolder) const {
    std::vector<std::string> aPaths = m_oFiles->Files(sFolder);
    if (sFolder != m_sServicesFolder || (m_oLeftOut.aNames.empty() && !m_oLeftOut.bAllPlugins))
        return aPaths;
    m_aServices.clear();
    std::vector<File> aFiles;
    for (const std::string& sPath : aPaths)
        aFiles.push_back(Read(sPath));
    LeaveOut(aFiles);
    std::erase_if(aPaths, [&](const std::string& sPath) {
        return std::any_of(aFiles.begin(), aFiles.end(),
                           [&](const File& oFile) { return oFile.bOut && oFile.sPath == sPath; });
    });
    return aPaths;
}

std::vector<std::string> LeftOutServices::Unknown() const {
    std::vector<std::string> aUnknown;
    for (const std::string& sName : m_oLeftOut.aNames)
        if (!m_setUsed.contains(sName))
            aUnknown.push_back(sName);
    return aUnknown;
}

} // namespace corvane::desktop
