#include "cli/package/Package.h"

#include "corvane/base/Failure.h"

#include <array>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <optional>
#include <regex>
#include <sys/wait.h>

namespace corvane::package {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void Refuse(const std::string& sFile, const std::string& sWhy) {
    Fail(FailureNumber::InvalidProcedureCall, "\"" + sFile + "\": " + sWhy, "corvane package");
}

std::string XmlText(const std::string& sText) {
    std::string sEscaped;
    for (const char c : sText)
        sEscaped += c == '&'   ? "&amp;"
                    : c == '<' ? "&lt;"
                    : c == '>' ? "&gt;"
                    : c == '"' ? "&quot;"
                               : std::string(1, c);
    return sEscaped;
}

// A value of a desktop entry: one line.
std::string EntryText(const std::string& sText) {
    std::string sEscaped;
    for (const char c : sText)
        sEscaped += c == '\\' ? "\\\\" : c == '\n' ? "\\n" : std::string(1, c);
    return sEscaped;
}

// A line of a man page that can't be taken for a request.
std::string RoffText(const std::string& sText) {
    std::string sEscaped;
    for (const char c : sText)
        sEscaped += c == '\\' ? "\\e" : c == '-' ? "\\-" : std::string(1, c);
    return "\\&" + sEscaped;
}

std::string Today() {
    const std::time_t nNow = std::time(nullptr);
    std::tm oNow{};
    ::gmtime_r(&nNow, &oNow);
    std::array<char, 16> aText{};
    (void)std::strftime(aText.data(), aText.size(), "%Y-%m-%d", &oNow);
    return aText.data();
}

class Installer {
public:
    Installer(About oAbout, const std::string& sApplication, const std::string& sPrefix)
        : m_oAbout(std::move(oAbout)), m_oApplication(sApplication), m_oPrefix(sPrefix) {}

    Packed Run() {
        CopyApplication();
        WriteLauncher();
        const fs::path oEntry = Write("share/applications/" + m_oAbout.sId + ".desktop", DesktopEntry());
        const fs::path oMetadata = Write("share/metainfo/" + m_oAbout.sId + ".metainfo.xml", Metadata());
        Write("share/man/man1/" + Command() + ".1", ManPage());
        CopyIcon();
        Validate("desktop-file-validate", {oEntry.string()});
        Validate("appstreamcli", {"validate", "--no-net", oMetadata.string()});
        return std::move(m_oPacked);
    }

private:
    // The last part of the identifier, as a command.
    [[nodiscard]] std::string Command() const {
        std::string sCommand = m_oAbout.sId.substr(m_oAbout.sId.rfind('.') + 1);
        std::transform(sCommand.begin(), sCommand.end(), sCommand.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        return sCommand;
    }

    [[nodiscard]] fs::path Below(const std::string& sPath) {
        const fs::path oPath = m_oPrefix / sPath;
        std::error_code oError;
        fs::create_directories(oPath.parent_path(), oError);
        m_oPacked.aFiles.push_back(sPath);
        return oPath;
    }

    fs::path Write(const std::string& sPath, const std::string& sText) {
        fs::path oPath = Below(sPath);
        std::ofstream oStream(oPath, std::ios::binary);
        if (!(oStream << sText) || !oStream.flush())
            Fail(FailureNumber::FileAccess, "\"" + oPath.string() + "\" can't be written", "corvane package");
        return oPath;
    }

    void CopyApplication() {
        const fs::path oTo = m_oPrefix / "lib/corvane" / m_oAbout.sId;
        try {
            fs::remove_all(oTo);
            fs::create_directories(oTo.parent_path());
            // Links are followed: what is packed stands by itself.
            fs::copy(m_oApplication, oTo, fs::copy_options::recursive);
        } catch (const fs::filesystem_error& oError) {
            Fail(FailureNumber::FileAccess, oError.what(), "corvane package");
        }
    }

    // Finds the application from where it stands itself, so that the tree may be moved.
    void WriteLauncher() {
        const fs::path oPath = Write("bin/" + Command(), "#!/bin/sh\n"
                                                         "here=$(dirname \"$(readlink -f \"$0\")\")\n"
                                                         "exec corvane run \"$here/../lib/corvane/" +
                                                             m_oAbout.sId + "\" -- \"$@\"\n");
        fs::permissions(oPath, fs::perms(0755));
    }

    [[nodiscard]] std::string DesktopEntry() const {
        return "[Desktop Entry]\nType=Application\nName=" + EntryText(m_oAbout.sName) +
               "\nComment=" + EntryText(m_oAbout.sSummary) + "\nExec=" + Command() + "\nIcon=" + m_oAbout.sId +
               "\nTerminal=false\nCategories=" + EntryText(m_oAbout.sCategories) + "\n";
    }

    [[nodiscard]] std::string Metadata() const {
        std::string sXml =
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<component type=\"desktop-application\">\n  <id>" +
            XmlText(m_oAbout.sId) + "</id>\n  <metadata_license>CC0-1.0</metadata_license>\n" + "  <project_license>" +
            XmlText(m_oAbout.sLicense) + "</project_license>\n  <name>" + XmlText(m_oAbout.sName) +
            "</name>\n  <summary>" + XmlText(m_oAbout.sSummary) + "</summary>\n  <developer_name>" +
            XmlText(m_oAbout.sDeveloper) + "</developer_name>\n  <description>\n    <p>" +
            XmlText(m_oAbout.sDescription) + "</p>\n  </description>\n  <launchable type=\"desktop-id\">" +
            XmlText(m_oAbout.sId) + ".desktop</launchable>\n";
        if (!m_oAbout.sHomepage.empty())
            sXml += "  <url type=\"homepage\">" + XmlText(m_oAbout.sHomepage) + "</url>\n";
        return sXml + "  <content_rating type=\"oars-1.1\"/>\n  <releases>\n    <release version=\"" +
               XmlText(m_oAbout.sVersion) + "\" date=\"" + XmlText(m_oAbout.sDate) +
               "\"/>\n  </releases>\n</component>\n";
    }

    [[nodiscard]] std::string ManPage() const {
        return ".TH \"" + Command() + "\" 1 \"" + m_oAbout.sDate + "\" \"" +
               RoffText(m_oAbout.sName + " " + m_oAbout.sVersion) + "\"\n.SH NAME\n" + Command() + " \\- " +
               RoffText(m_oAbout.sSummary) + "\n.SH SYNOPSIS\n.B " + Command() + "\n.SH DESCRIPTION\n" +
               RoffText(m_oAbout.sDescription) + "\n.SH SEE ALSO\n.BR corvane (1)\n";
    }

    void CopyIcon() {
        if (m_oAbout.sIcon.empty())
            return;
        const fs::path oFrom = m_oApplication / "Images" / m_oAbout.sIcon;
        std::error_code oError;
        if (!fs::copy_file(oFrom, Below("share/icons/hicolor/scalable/apps/" + m_oAbout.sId + ".svg"),
                           fs::copy_options::overwrite_existing, oError))
            Fail(FailureNumber::FileNotFound,
                 "The icon \"" + oFrom.string() + "\" can't be copied: " + oError.message(), "corvane package");
    }

    void Validate(const std::string& sProgram, const std::vector<std::string>& aArguments) {
        const std::string sCommand = "command -v " + sProgram + " >/dev/null 2>&1";
        if (std::system(sCommand.c_str()) != 0) {
            m_oPacked.aMissing.push_back(sProgram);
            return;
        }
        std::string sLine = sProgram;
        for (const std::string& sArgument : aArguments)
            sLine += " '" + std::regex_replace(sArgument, std::regex("'"), "'\\''") + "'";
        std::string sSaid;
        FILE* pPipe = ::popen((sLine + " 2>&1").c_str(), "r");
        if (!pPipe)
            return m_oPacked.aMissing.push_back(sProgram);
        std::array<char, 512> aBuffer{};
        while (std::fgets(aBuffer.data(), static_cast<int>(aBuffer.size()), pPipe))
            sSaid += aBuffer.data();
        if (::pclose(pPipe) != 0)
            m_oPacked.aProblems.push_back(sProgram + ": " + sSaid);
    }

    About m_oAbout;
    fs::path m_oApplication;
    fs::path m_oPrefix;
    Packed m_oPacked;
};

} // namespace

About ReadAbout(const std::string& sApplication) {
    const std::string sFile = sApplication + "/about.json";
    std::ifstream oStream(sFile);
    if (!oStream)
        Fail(FailureNumber::FileNotFound,
             "There is no file \"" + sFile +
                 "\". Write {\"id\": \"org.example.Birds\", \"name\": \"Birds\", \"summary\": \"Counts birds\", "
                 "\"description\": \"...\", \"license\": \"MIT\", \"developer\": \"...\"}",
             "corvane package");
    const nlohmann::json oJson = nlohmann::json::parse(oStream, nullptr, false);
    if (!oJson.is_object())
        Refuse(sFile, "it isn't one JSON object");
    About oAbout;
    const auto Read = [&](const char* sKey, std::string& sValue, bool bNeeded) {
        if (const auto it = oJson.find(sKey); it != oJson.end() && it->is_string())
            sValue = it->get<std::string>();
        else if (it != oJson.end() || bNeeded)
            Refuse(sFile, std::string("it needs a text \"") + sKey + "\"");
    };
    Read("id", oAbout.sId, true);
    Read("name", oAbout.sName, true);
    Read("summary", oAbout.sSummary, true);
    Read("description", oAbout.sDescription, true);
    Read("license", oAbout.sLicense, true);
    Read("developer", oAbout.sDeveloper, true);
    Read("version", oAbout.sVersion, false);
    Read("homepage", oAbout.sHomepage, false);
    Read("categories", oAbout.sCategories, false);
    Read("icon", oAbout.sIcon, false);
    oAbout.sDate = Today();
    Read("date", oAbout.sDate, false);
    if (!std::regex_match(oAbout.sId, std::regex(R"([A-Za-z][\w-]*(\.[A-Za-z][\w-]*)+)")))
        Refuse(sFile, "the id \"" + oAbout.sId + "\" isn't of the form \"org.example.Birds\"");
    return oAbout;
}

Packed Install(const std::string& sApplication, const std::string& sPrefix) {
    return Installer(ReadAbout(sApplication), sApplication, sPrefix).Run();
}

} // namespace corvane::package
