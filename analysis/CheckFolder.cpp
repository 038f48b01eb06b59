#include "adapters/common/Paths.h"
#include "adapters/files/PictureLoader.h"
#include "adapters/plugins/PluginFactory.h"
#include "analysis/Checks.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <filesystem>
#include <unordered_map>

namespace corvane::check {

namespace {

class ImageCheck {
public:
    ImageCheck(const std::string& sApplication, Report& oReport)
        : m_sFolder(JoinPath(sApplication, "Images")), m_oReport(oReport) {}

    void Check(const File& oFile, const Element& oElement) {
        if (oElement.sName == "MenuItem")
            return;
        for (const Attribute& oAttribute : oElement.aAttributes)
            if (oAttribute.Name().starts_with("Image") && !oAttribute.Value().empty())
                CheckImage(std::string(oAttribute.Value()), oFile, oAttribute.AtValue());
        for (const Element& oChild : oElement.Children())
            Check(oFile, oChild);
    }

    // Of explorer items that name none.
    void CheckGeneric(const std::deque<Provider>& aItems) {
        for (const Provider& oItem : aItems)
            if (oItem.pElement->Value("Image").empty())
                return CheckImage("GenericExplorerItem.ico", *oItem.pFile, oItem.pElement->At());
    }

private:
    enum class State { Good, Missing, Unreadable };

    void CheckImage(const std::string& sName, const File& oFile, Spot pSpot) {
        const auto [it, bNew] = m_mapStates.try_emplace(sName, State::Good);
        if (bNew)
            it->second = StateOf(sName);
        if (it->second == State::Missing)
            m_oReport.Add(Rule::MissingImage, oFile.At(pSpot),
                          "there is no picture " + Quoted(sName) + " in the folder Images",
                          WriteInstead(Names(), sName, "put it there"));
        else if (it->second == State::Unreadable)
            m_oReport.Add(Rule::UnreadableImage, oFile.At(pSpot),
                          "the file " + Quoted(sName) + " isn't a supported picture",
                          "save it as PNG, BMP, ICO, GIF, JPEG or SVG");
    }

    [[nodiscard]] State StateOf(const std::string& sName) const {
        const std::optional<std::string> oPath = FindPath(JoinPath(m_sFolder, sName));
        std::error_code oError;
        if (!oPath || std::filesystem::is_directory(*oPath, oError))
            return State::Missing;
        const std::optional<std::string> oBytes = ReadBytes(*oPath);
        return oBytes && PictureLoader::FormatOf(*oBytes) ? State::Good : State::Unreadable;
    }

    [[nodiscard]] const std::vector<std::string>& Names() {
        if (!m_oNames)
            m_oNames = NamesIn(FindPath(m_sFolder).value_or(m_sFolder)).value_or(std::vector<std::string>());
        return *m_oNames;
    }

    std::string m_sFolder;
    Report& m_oReport;
    std::unordered_map<std::string, State, TextHash, TextEqual> m_mapStates; // by name
    std::optional<std::vector<std::string>> m_oNames;
};

class ProgIdCheck {
public:
    ProgIdCheck(const std::string& sApplication, bool bPlugins, Report& oReport)
        : m_oFactory(JoinPath(sApplication, "plugins")), m_oReport(oReport) {
        std::error_code oError;
        m_bBuilt = bPlugins || std::filesystem::is_directory(JoinPath(sApplication, "plugins"), oError);
    }

    void Check(const Provider& oProvider) {
        const std::string& sProgID = oProvider.sProgID;
        const bool bPage = oProvider.eKind == ProviderKind::Page || oProvider.eKind == ProviderKind::PreferencePage;
        if (sProgID.empty() || (oProvider.eKind == ProviderKind::Service && EqualText(sProgID, "Corvane.Framework")))
            return;
        const std::string_view sAttribute = bPage ? "PageProgID" : "ProgID";
        const std::size_t iPoint = sProgID.find('.');
        if (iPoint == 0 || iPoint == std::string::npos || iPoint + 1 == sProgID.size() ||
            sProgID.find_first_of("/\\") < iPoint) {
            m_oReport.Add(Rule::BadProgId, oProvider.At(sAttribute),
                          Quoted(sProgID) + " isn't of the form \"Library.Class\"",
                          "write the name of the plug-in, a point, and the class");
            return;
        }
        const std::string sLibrary = sProgID.substr(0, iPoint);
        if (m_bBuilt && !IsThere(sLibrary))
            m_oReport.Add(Rule::MissingPlugin, oProvider.At(sAttribute),
                          "there is no plug-in " + Quoted(m_oFactory.PathOf(sLibrary)),
                          WriteInstead(m_aLibraries, sLibrary, "build it into that folder"));
    }

private:
    [[nodiscard]] bool IsThere(const std::string& sLibrary) {
        if (!m_bRead)
            m_aLibraries = m_oFactory.Libraries();
        m_bRead = true;
        return std::any_of(m_aLibraries.begin(), m_aLibraries.end(),
                           [&](const std::string& sName) { return EqualText(sName, sLibrary); });
    }

    PluginFactory m_oFactory;
    Report& m_oReport;
    std::vector<std::string> m_aLibraries;
    bool m_bRead = false;
    bool m_bBuilt = false;
};

} // namespace

void CheckFolder(Model& oModel, const std::string& sApplication, bool bPlugins, Report& oReport) {
    ImageCheck oImages(sApplication, oReport);
    for (const auto& pFile : oModel.aFiles)
        if (pFile->bActive)
            oImages.Check(*pFile, *pFile->pRoot);
    oImages.CheckGeneric(oModel.aItems);
    ProgIdCheck oProgIds(sApplication, bPlugins, oReport);
    for (const auto* pProviders : {&oModel.aServices, &oModel.aItems, &oModel.aPages, &oModel.aPreferencePages})
        for (const Provider& oProvider : *pProviders)
            oProgIds.Check(oProvider);
}

} // namespace corvane::check
