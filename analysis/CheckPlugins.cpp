#include "adapters/common/Nearest.h"
#include "adapters/common/Paths.h"
#include "adapters/plugins/PluginFactory.h"
#include "analysis/Checks.h"
#include "corvane/base/PluginExport.h"
#include "corvane/base/Text.h"
#include "corvane/core/Framework.h"

#include <algorithm>
#include <map>

namespace corvane::check {

namespace {

constexpr const char* sFrameworkProgID = "Corvane.Framework";

class PluginCheck {
public:
    PluginCheck(const std::string& sApplication, Report& oReport)
        : m_oFactory(JoinPath(sApplication, "plugins")), m_oReport(oReport) {}

    void Check(const Provider& oProvider) {
        const bool bPage = oProvider.eKind == ProviderKind::Page || oProvider.eKind == ProviderKind::PreferencePage;
        const std::size_t iPoint = oProvider.sProgID.find('.');
        if (iPoint == std::string::npos || iPoint == 0)
            return;
        const Place oPlace = oProvider.At(bPage ? "PageProgID" : "ProgID");
        const Library& oLibrary = LibraryOf(oProvider.sProgID.substr(0, iPoint), oPlace);
        if (!oLibrary.bUsable)
            return;
        const auto it = std::find_if(oLibrary.aClasses.begin(), oLibrary.aClasses.end(),
                                     [&](const auto& o) { return EqualText(o.sProgID, oProvider.sProgID); });
        if (it == oLibrary.aClasses.end()) {
            // What stands before the point would make all names alike.
            std::vector<std::string> aNames;
            for (const auto& oClass : oLibrary.aClasses)
                aNames.push_back(oClass.sProgID.substr(iPoint + 1));
            const auto oNearest = Nearest(aNames, std::string_view(oProvider.sProgID).substr(iPoint + 1));
            m_oReport.Add(Rule::UnknownClass, oPlace, "the plug-in has no class " + Quoted(oProvider.sProgID),
                          oNearest ? "write " + Quoted(oProvider.sProgID.substr(0, iPoint + 1) + *oNearest)
                                   : "add it to CORVANE_PLUGIN");
            return;
        }
        CheckMembers(oProvider, *it);
    }

    void CheckFramework(const Provider& oService) {
        CheckMembers(oService, {sFrameworkProgID, Class<Framework>(sFrameworkProgID).Members()});
    }

    void CheckWindows(const Model& oModel) {
        std::vector<std::string> aTexts;
        for (const std::string& sLibrary : m_oFactory.Libraries())
            if (auto oBytes = ReadBytes(m_oFactory.PathOf(sLibrary)))
                aTexts.push_back(FoldAscii(std::move(*oBytes)));
        for (const Window& oWindow : oModel.aWindows) {
            // Compilers cut short texts into pieces of eight and of four bytes.
            const std::size_t nPiece = oWindow.sName.size() >= 8 ? 8 : 4;
            if (oWindow.sName.size() < nPiece)
                continue;
            const std::string sPiece = FoldAscii(oWindow.sName.substr(0, nPiece));
            if (std::none_of(aTexts.begin(), aTexts.end(),
                             [&](const std::string& sText) { return sText.find(sPiece) != std::string::npos; }))
                m_oReport.Add(Rule::UnreachableWindow, oWindow.pFile->At(oWindow.pElement->At("Name")),
                              "no plug-in names the window " + Quoted(oWindow.sName),
                              "open it by OpenWindow, or remove it");
        }
    }

private:
    struct Library {
        bool bUsable = false;
        std::vector<PluginFactory::ClassInfo> aClasses;
    };

    static std::string FoldAscii(std::string sText) {
        for (char& c : sText)
            if (c >= 'A' && c <= 'Z')
                c = static_cast<char>(c + 32);
        return sText;
    }

    const Library& LibraryOf(const std::string& sName, const Place& oPlace) {
        const auto [it, bNew] = m_mapLibraries.try_emplace(FoldText(sName));
        if (!bNew || !FindPath(m_oFactory.PathOf(sName)))
            return it->second; // that it is missing is told already
        try {
            it->second.aClasses = m_oFactory.Classes(sName);
            it->second.bUsable = true;
        } catch (const Failure& oFailure) {
            const std::string& sText = oFailure.Description;
            const std::size_t iWhy = sText.find(": ");
            m_oReport.Add(Rule::UnusablePlugin, oPlace, iWhy == std::string::npos ? sText : sText.substr(iWhy + 2),
                          "build the plug-in again");
        }
        return it->second;
    }

    void CheckMembers(const Provider& oProvider, const PluginFactory::ClassInfo& oClass) {
        const File& oFile = *oProvider.pFile;
        for (const Action& oAction : oProvider.aActions)
            if (!oAction.sProcedure.empty())
                CheckMember(oClass, oAction.sProcedure, oAction.PassesItself() ? 1 : 0, oFile,
                            oAction.pElement->At("Action"));
        if (oProvider.eKind == ProviderKind::Service && BooleanOf(*oProvider.pElement, "IsStartService", false))
            CheckMember(oClass, "Start", 0, oFile, oProvider.pElement->At("IsStartService"));
    }

    void CheckMember(const PluginFactory::ClassInfo& oClass, std::string_view sMember, std::size_t nArguments,
                     const File& oFile, Spot pSpot) {
        const auto it = std::find_if(oClass.aMembers.begin(), oClass.aMembers.end(),
                                     [&](const MemberInfo& o) { return EqualText(o.Name, sMember); });
        if (it == oClass.aMembers.end()) {
            std::vector<std::string> aNames;
            for (const MemberInfo& oMember : oClass.aMembers)
                aNames.emplace_back(oMember.Name);
            m_oReport.Add(Rule::UnknownMember, oFile.At(pSpot),
                          "the class " + oClass.sProgID + " has no member " + Quoted(sMember),
                          WriteInstead(aNames, sMember, "add it to its Members"));
        } else if (it->What == MemberInfo::Kind::Method && it->ParameterCount != nArguments) {
            m_oReport.Add(
                Rule::WrongArguments, oFile.At(pSpot),
                oClass.sProgID + "." + std::string(it->Name) + " takes " + std::to_string(it->ParameterCount) +
                    " arguments and is given " + std::to_string(nArguments),
                nArguments == 0 ? "write PassActionItemParam=\"True\"" : "write PassActionItemParam=\"False\"");
        }
    }

    PluginFactory m_oFactory;
    Report& m_oReport;
    std::map<std::string, Library> m_mapLibraries; // by folded name
};

} // namespace

void CheckPlugins(Model& oModel, const std::string& sApplication, bool bLoad, Report& oReport) {
    PluginCheck oCheck(sApplication, oReport);
    for (const Provider& oService : oModel.aServices) {
        if (EqualText(oService.sProgID, sFrameworkProgID))
            oCheck.CheckFramework(oService);
        else if (bLoad)
            oCheck.Check(oService);
    }
    if (!bLoad)
        return;
    // The objects of other items are made by plug-ins, as they like.
    for (const Provider& oItem : oModel.aItems)
        if (EqualText(oItem.pElement->Value("Type"), "Folder"))
            oCheck.Check(oItem);
    for (const auto* pPages : {&oModel.aPages, &oModel.aPreferencePages})
        for (const Provider& oPage : *pPages)
            oCheck.Check(oPage);
    oCheck.CheckWindows(oModel);
}

} // namespace corvane::check
