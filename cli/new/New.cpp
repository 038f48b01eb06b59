#include "cli/new/New.h"

#include "analysis/Application.h"
#include "analysis/MenuPlan.h"
#include "corvane/base/Failure.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <regex>
#include <set>
#include <sstream>

namespace corvane::scaffold {

namespace fs = std::filesystem;

namespace {

using Tokens = std::map<std::string, std::string>;

std::string Filled(std::string_view sText, const Tokens& mapTokens) {
    std::string sFilled;
    while (!sText.empty()) {
        const std::size_t iBegin = sText.find('@');
        const std::size_t iEnd = iBegin == std::string_view::npos ? iBegin : sText.find('@', iBegin + 1);
        const auto it = iEnd == std::string_view::npos
                            ? mapTokens.end()
                            : mapTokens.find(std::string(sText.substr(iBegin + 1, iEnd - iBegin - 1)));
        if (it == mapTokens.end()) { // an at sign that begins no token
            const std::size_t n = std::min(iBegin == std::string_view::npos ? sText.size() : iBegin + 1, sText.size());
            sFilled += sText.substr(0, n);
            sText.remove_prefix(n);
            continue;
        }
        sFilled += sText.substr(0, iBegin);
        sFilled += it->second;
        sText.remove_prefix(iEnd + 1);
    }
    return sFilled;
}

[[noreturn]] void Refuse(const std::string& sWhy) {
    Fail(FailureNumber::InvalidProcedureCall, sWhy, "corvane new");
}

bool IsIdentifier(const std::string& sName) {
    return !sName.empty() && std::isalpha(static_cast<unsigned char>(sName[0])) &&
           std::all_of(sName.begin(), sName.end(), [](char c) { return std::isalnum(static_cast<unsigned char>(c)); });
}

// "birds" as the name of a class.
std::string ServiceName(std::string sName) {
    if (!IsIdentifier(sName))
        Refuse("\"" + sName +
               "\" can't be the name of a service: write letters from A to Z and digits, a letter first");
    sName[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(sName[0])));
    return sName;
}

// A build has a target of the application's name, and a folder beside those of services and tests.
void CheckName(const std::string& sName) {
    if (!std::regex_match(sName, std::regex("[A-Za-z][A-Za-z0-9_-]*")))
        Refuse("\"" + sName +
               "\" can't be the name of an application: write letters from A to Z, digits, - and _, a letter first");
    for (const char* sTaken : {"all", "clean", "CMakeFiles", "edit_cache", "help", "install", "package", "preinstall",
                               "rebuild_cache", "services", "test", "Testing", "tests"})
        if (EqualText(sName, sTaken))
            Refuse("\"" + sName + "\" can't be the name of an application, as every build has something of that name");
}

// All or nothing: what stands in the way is found before anything is written.
class Writer {
public:
    Writer(fs::path oFolder) : m_oFolder(std::move(oFolder)) {}

    void Add(std::string_view sKind, const Tokens& mapTokens) {
        for (const Template& oTemplate : Templates()) {
            if (!oTemplate.sPath.starts_with(sKind))
                continue;
            const fs::path oPath = m_oFolder / Filled(oTemplate.sPath.substr(sKind.size()), mapTokens);
            if (fs::exists(oPath))
                Refuse("\"" + oPath.string() + "\" is there already");
            m_aFiles.emplace_back(oPath, Filled(oTemplate.sText, mapTokens));
        }
    }

    std::vector<std::string> Write() const {
        std::vector<std::string> aWritten;
        for (const auto& [oPath, sText] : m_aFiles) {
            std::error_code oError;
            fs::create_directories(oPath.parent_path(), oError);
            std::ofstream oStream(oPath, std::ios::binary);
            if (!(oStream << sText) || !oStream.flush())
                Fail(FailureNumber::FileAccess, "\"" + oPath.string() + "\" can't be written", "corvane new");
            aWritten.push_back(oPath.string());
        }
        return aWritten;
    }

private:
    fs::path m_oFolder;
    std::vector<std::pair<fs::path, std::string>> m_aFiles;
};

// Where titles of services come to stand on the menu bar, and which letters are in use there.
class MenuBar {
public:
    // Of an application that holds the shell's own titles and nothing else.
    MenuBar() : m_setOrders{100, 200, 900}, m_setLetters{"f", "v", "w"} {
        m_setNames = {"framework"};
        m_setTitles = {"file", "view", "window"};
    }

    // Of one that exists.
    explicit MenuBar(const std::string& sApplication) {
        check::Report oReport;
        check::Model oModel;
        check::ReadApplication(oModel, sApplication, oReport);
        check::BuildModel(oModel, oReport);
        const check::MenuPlan oPlan(oModel);
        for (const auto& oPlacing : oPlan.Placings()) {
            const check::Entry& oEntry = *oPlacing.pEntry;
            if (!oEntry.IsTitle())
                continue;
            m_setTitles.insert(FoldText(oEntry.sKey));
            m_setOrders.insert(static_cast<int>(oEntry.fPositionOrder));
            if (const std::size_t i = oEntry.Caption().find_first_of("#&");
                i != std::string_view::npos && oEntry.sPath.empty())
                m_setLetters.insert(FoldText(oEntry.Caption().substr(i + 1, 1)));
        }
        for (const auto& oService : oModel.aServices)
            m_setNames.insert(FoldText(oService.sName));
        for (const auto& oItem : oModel.aItems)
            m_setNames.insert(FoldText(oItem.sName));
    }

    // The tokens of a service's title, which is taken from then on.
    Tokens Take(const std::string& sName) {
        if (!m_setNames.insert(FoldText(sName)).second)
            Refuse("there is a service or explorer item \"" + sName + "\" already");
        if (!m_setTitles.insert(FoldText(sName)).second)
            Refuse("there is a menu \"" + sName + "\" already: give the service another name, as in --service My" +
                   sName);
        int nOrder = 300;
        while (!m_setOrders.insert(nOrder).second)
            nOrder += 10;
        std::string sCaption = sName;
        for (std::size_t i = 0; i < sName.size(); ++i)
            if (m_setLetters.insert(FoldText(sName.substr(i, 1))).second) {
                sCaption.insert(i, 1, '#');
                break;
            }
        return {{"Name", sName}, {"order", std::to_string(nOrder)}, {"caption", sCaption}};
    }

private:
    std::set<int> m_setOrders;
    std::set<std::string> m_setLetters;
    std::set<std::string> m_setNames; // folded, as the next
    std::set<std::string> m_setTitles;
};

// The name of the application of a project, as its build names it.
std::string ApplicationOf(const fs::path& oFolder) {
    std::stringstream oText;
    oText << std::ifstream(oFolder / "CMakeLists.txt").rdbuf();
    std::smatch oMatch;
    const std::string sText = oText.str();
    if (!std::regex_search(sText, oMatch, std::regex(R"(corvane_add_application\(\s*([\w-]+))")))
        Fail(FailureNumber::PathNotFound,
             "\"" + oFolder.string() +
                 "\" isn't the source folder of an application: its CMakeLists.txt has no corvane_add_application()",
             "corvane new");
    return oMatch[1];
}

} // namespace

std::vector<std::string> NewApplication(const std::string& sFolder, std::vector<std::string> aServices,
                                        const std::string& sVersion) {
    const fs::path oFolder = fs::absolute(sFolder).lexically_normal();
    const std::string sName = oFolder.has_filename() ? oFolder.filename() : oFolder.parent_path().filename();
    CheckName(sName);
    if (fs::exists(oFolder) && !fs::is_empty(oFolder))
        Refuse("\"" + sFolder + "\" is there already");
    if (aServices.empty()) {
        std::string sService = sName;
        std::erase_if(sService, [](char c) { return c == '-' || c == '_'; });
        aServices.push_back(sService);
    }
    const Tokens mapApplication{{"app", sName}, {"version", sVersion}};
    Writer oWriter(sFolder);
    oWriter.Add("application/", mapApplication);
    MenuBar oMenuBar;
    bool bFirst = true;
    for (const std::string& sService : aServices) {
        Tokens mapTokens = oMenuBar.Take(ServiceName(sService));
        mapTokens.insert(mapApplication.begin(), mapApplication.end());
        mapTokens["start"] = bFirst ? " IsStartService=\"True\"" : "";
        oWriter.Add("service/", mapTokens);
        bFirst = false;
    }
    return oWriter.Write();
}

std::vector<std::string> NewService(const std::string& sFolder, const std::string& sName) {
    const std::string sApplication = ApplicationOf(sFolder);
    Tokens mapTokens = MenuBar((fs::path(sFolder) / "app").string()).Take(ServiceName(sName));
    mapTokens["app"] = sApplication;
    mapTokens["start"] = "";
    Writer oWriter(sFolder);
    oWriter.Add("service/", mapTokens);
    return oWriter.Write();
}

} // namespace corvane::scaffold
