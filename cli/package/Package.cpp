#include "cli/package/Package.h"

#include "adapters/common/Json.h"
#include "adapters/common/Paths.h"
#include "adapters/common/Pattern.h"
#include "cli/new/New.h"
#include "cli/package/RunPath.h"
#include "corvane/base/Failure.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sys/wait.h>
#include <tuple>

namespace corvane::package {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void Refuse(const std::string& file, const std::string& why) {
    Fail(FailureNumber::InvalidProcedureCall, "\"" + file + "\": " + why, "corvane package");
}

std::string XmlText(const std::string& text) {
    std::string escaped;
    for (const char c : text)
        escaped += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '>' ? "&gt;" : c == '"' ? "&quot;" : std::string(1, c);
    return escaped;
}

// A value of a desktop entry: one line.
std::string EntryText(const std::string& text) {
    std::string escaped;
    for (const char c : text)
        escaped += c == '\\' ? "\\\\" : c == '\n' ? "\\n" : std::string(1, c);
    return escaped;
}

// A line of a man page that can't be taken for a request.
std::string RoffText(const std::string& text) {
    std::string escaped;
    for (const char c : text)
        escaped += c == '\\' ? "\\e" : c == '-' ? "\\-" : std::string(1, c);
    return "\\&" + escaped;
}

// The time that everything made has, as builds that have to come out the same every time say it; nothing without.
std::optional<std::time_t> GivenTime() {
    const char* text = std::getenv("SOURCE_DATE_EPOCH");
    if (!text || !*text)
        return {};
    std::time_t time = 0;
    const char* end = text + std::strlen(text);
    if (const auto [last, error] = std::from_chars(text, end, time); error != std::errc() || last != end || time < 0)
        Fail(FailureNumber::InvalidProcedureCall,
             "SOURCE_DATE_EPOCH is \"" + std::string(text) + "\", which isn't a number of seconds since 1970",
             "corvane package");
    return time;
}

std::string Today() {
    const std::time_t seconds = GivenTime().value_or(std::time(nullptr));
    std::tm now{};
    ::gmtime_r(&seconds, &now);
    std::array<char, 16> text{};
    (void)std::strftime(text.data(), text.size(), "%Y-%m-%d", &now);
    return text.data();
}

// Texts that "corvane new" has written to be replaced.
void RefusePlaceholders(const std::string& file, const nlohmann::json& about) {
    const auto& templates = scaffold::Templates();
    const auto written = std::find_if(templates.begin(), templates.end(), [](const scaffold::Template& candidate) {
        return candidate.path == "application/app/about.json";
    });
    if (written == templates.end())
        return;
    const nlohmann::json placeholders = *ReadJson(written->text);
    for (const char* key : {"developer", "summary", "description", "homepage"})
        if (const auto it = about.find(key); it != about.end() && *it == placeholders.at(key))
            Refuse(file, "\"" + std::string(key) + "\" is still " + WriteJson(*it) +
                             ", as \"corvane new\" wrote it. Replace it by what is true of your application" +
                             (key == std::string_view("homepage") ? ", or remove it" : ""));
}

class Installer {
public:
    Installer(About about, const std::string& application, const std::string& prefix)
        : m_about(std::move(about)), m_application(application), m_prefix(prefix) {}

    Packed Run() {
        CopyApplication();
        WriteLauncher();
        const fs::path entry = Write("share/applications/" + m_about.id + ".desktop", DesktopEntry());
        if (!m_about.files.empty())
            Write("share/mime/packages/" + m_about.id + ".xml", FileTypes());
        const fs::path metadata = Write("share/metainfo/" + m_about.id + ".metainfo.xml", Metadata());
        Write("share/man/man1/" + Command() + ".1", ManPage());
        CopyIcon();
        for (const std::string& file : m_packed.files)
            Normalize(m_prefix / file);
        std::sort(m_packed.files.begin(), m_packed.files.end());
        Validate("desktop-file-validate", {entry.string()});
        Validate("appstreamcli", {"validate", "--no-net", metadata.string()});
        return std::move(m_packed);
    }

private:
    // The last part of the identifier, as a command.
    [[nodiscard]] std::string Command() const {
        std::string command = m_about.id.substr(m_about.id.rfind('.') + 1);
        std::transform(command.begin(), command.end(), command.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        return command;
    }

    [[nodiscard]] fs::path Below(const std::string& pathText) {
        fs::path path = m_prefix / pathText;
        std::error_code error;
        fs::create_directories(path.parent_path(), error);
        m_packed.files.push_back(pathText);
        return path;
    }

    fs::path Write(const std::string& pathText, const std::string& text) {
        fs::path path = Below(pathText);
        std::ofstream stream(path, std::ios::binary);
        if (!(stream << text) || !stream.flush())
            Fail(FailureNumber::FileAccess, "\"" + path.string() + "\" can't be written", "corvane package");
        return path;
    }

    void CopyApplication() {
        const std::string below = "lib/corvane/" + m_about.id;
        const fs::path to = m_prefix / below;
        try {
            fs::remove_all(to);
            fs::create_directories(to.parent_path());
            // Links are followed, so that what is packed doesn't need the folder that it was made from.
            fs::copy(m_application, to, fs::copy_options::recursive);
            for (const auto& entry : fs::recursive_directory_iterator(to)) {
                if (entry.is_directory())
                    fs::permissions(entry.path(), fs::perms(0755));
                else
                    m_packed.files.push_back(below + "/" + entry.path().lexically_relative(to).generic_string());
            }
            fs::permissions(to, fs::perms(0755));
        } catch (const fs::filesystem_error& error) {
            Fail(FailureNumber::FileAccess, error.what(), "corvane package");
        }
    }

    // What depends on the builder's machine goes: folders in which libraries were there, its rights and its times.
    static void Normalize(const fs::path& file) {
        try {
            const bool isProgram = (fs::status(file).permissions() & fs::perms::owner_exec) != fs::perms::none;
            fs::permissions(file, fs::perms(isProgram ? 0755 : 0644));
            (void)RemoveForeignRunPath(file);
            if (const auto time = GivenTime()) {
                const auto given = std::chrono::file_clock::from_sys(std::chrono::system_clock::from_time_t(*time));
                if (fs::last_write_time(file) > given)
                    fs::last_write_time(file, given);
            }
        } catch (const fs::filesystem_error& error) {
            Fail(FailureNumber::FileAccess, error.what(), "corvane package");
        }
    }

    // Finds the application from where it is itself, so that the tree may be moved.
    void WriteLauncher() {
        const fs::path path = Write("bin/" + Command(), "#!/bin/sh\n"
                                                        "here=$(dirname \"$(readlink -f \"$0\")\")\n"
                                                        "exec corvane-desktop \"$here/../lib/corvane/" +
                                                            m_about.id + "\" \"$@\"\n");
        fs::permissions(path, fs::perms(0755));
    }

    [[nodiscard]] std::string DesktopEntry() const {
        return "[Desktop Entry]\nType=Application\nName=" + EntryText(m_about.name) +
               "\nComment=" + EntryText(m_about.summary) + "\nExec=" + Command() +
               (m_about.files.empty() ? "" : " %F") + "\nIcon=" + m_about.id + "\nStartupWMClass=" + m_about.id +
               "\nTerminal=false\nCategories=" + EntryText(m_about.categories) + "\n" + TypesLine();
    }

    [[nodiscard]] std::string TypesLine() const {
        std::string types;
        for (const About::FileType& file : m_about.files)
            types += file.type + ";";
        return types.empty() ? types : "MimeType=" + types + "\n";
    }

    // For the shared database of types, by which file managers know the files.
    [[nodiscard]] std::string FileTypes() const {
        std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<mime-info "
                          "xmlns=\"http://www.freedesktop.org/standards/shared-mime-info\">\n";
        for (const About::FileType& file : m_about.files)
            xml += "  <mime-type type=\"" + XmlText(file.type) + "\">\n    <comment>" + XmlText(file.comment) +
                   "</comment>\n    <glob pattern=\"" + XmlText(file.pattern) + "\"/>\n    <icon name=\"" +
                   XmlText(m_about.id) + "\"/>\n  </mime-type>\n";
        return xml + "</mime-info>\n";
    }

    [[nodiscard]] std::string Metadata() const {
        std::string xml =
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<component type=\"desktop-application\">\n  <id>" +
            XmlText(m_about.id) + "</id>\n  <metadata_license>CC0-1.0</metadata_license>\n" + "  <project_license>" +
            XmlText(m_about.license) + "</project_license>\n  <name>" + XmlText(m_about.name) + "</name>\n  <summary>" +
            XmlText(m_about.summary) + "</summary>\n  <developer_name>" + XmlText(m_about.developer) +
            "</developer_name>\n  <description>\n    <p>" + XmlText(m_about.description) +
            "</p>\n  </description>\n  <launchable type=\"desktop-id\">" + XmlText(m_about.id) +
            ".desktop</launchable>\n";
        if (!m_about.homepage.empty())
            xml += "  <url type=\"homepage\">" + XmlText(m_about.homepage) + "</url>\n";
        return xml + "  <content_rating type=\"oars-1.1\"/>\n  <releases>\n    <release version=\"" +
               XmlText(m_about.version) + "\" date=\"" + XmlText(m_about.date) + "\"/>\n  </releases>\n</component>\n";
    }

    [[nodiscard]] std::string ManPage() const {
        return ".TH \"" + Command() + "\" 1 \"" + m_about.date + "\" \"" +
               RoffText(m_about.name + " " + m_about.version) + "\"\n.SH NAME\n" + Command() + " \\- " +
               RoffText(m_about.summary) + "\n.SH SYNOPSIS\n.B " + Command() +
               (m_about.files.empty() ? "" : "\n.RI [ FILE ]...") + "\n.SH DESCRIPTION\n" +
               RoffText(m_about.description) + "\n.SH SEE ALSO\n.BR corvane (1)\n";
    }

    void CopyIcon() {
        if (m_about.icon.empty())
            return;
        const fs::path from = m_application / "Images" / m_about.icon;
        std::error_code error;
        if (!fs::copy_file(from, Below("share/icons/hicolor/scalable/apps/" + m_about.id + ".svg"),
                           fs::copy_options::overwrite_existing, error))
            Fail(FailureNumber::FileNotFound, "The icon \"" + from.string() + "\" can't be copied: " + error.message(),
                 "corvane package");
    }

    void Validate(const std::string& program, const std::vector<std::string>& arguments) {
        const std::string command = "command -v " + program + " >/dev/null 2>&1";
        if (std::system(command.c_str()) != 0) {
            m_packed.missing.push_back(program);
            return;
        }
        std::string line = program;
        for (const std::string& argument : arguments)
            line += " '" + ReplaceForm(argument, "'", "'\\''") + "'";
        std::string said;
        FILE* pipe = ::popen((line + " 2>&1").c_str(), "r");
        if (!pipe)
            return m_packed.missing.push_back(program);
        std::array<char, 512> buffer{};
        while (std::fgets(buffer.data(), static_cast<int>(buffer.size()), pipe))
            said += buffer.data();
        if (::pclose(pipe) != 0)
            m_packed.problems.push_back(program + ": " + said);
    }

    About m_about;
    fs::path m_application;
    fs::path m_prefix;
    Packed m_packed;
};

} // namespace

namespace {

std::vector<About::FileType> FilesIn(const std::string& file, const nlohmann::json& json) {
    std::vector<About::FileType> types;
    if (!json.is_array())
        Refuse(file, "\"files\" isn't a list");
    for (const nlohmann::json& entry : json) {
        About::FileType type;
        for (const auto& [key, value, form] : {std::tuple("type", &type.type, R"([a-z]+/[\w.+-]+)"),
                                               {"pattern", &type.pattern, R"(\*\.[\w.-]+)"},
                                               {"comment", &type.comment, "[^\n]+"}}) {
            const auto it = entry.is_object() ? entry.find(key) : entry.end();
            if (it != entry.end() && it->is_string())
                *value = it->get<std::string>();
            if (!HasForm(*value, form))
                Refuse(file, "an entry of \"files\" needs a text \"" + std::string(key) +
                                 R"(", as in {"type": "application/x-birds", "pattern": "*.birds", )" +
                                 R"("comment": "List of birds"})");
        }
        types.push_back(std::move(type));
    }
    return types;
}

} // namespace

About ReadAbout(const std::string& application) {
    const std::string file = application + "/about.json";
    const auto bytes = ReadBytes(file);
    if (!bytes)
        Fail(FailureNumber::FileNotFound,
             "There is no file \"" + file +
                 "\". Write {\"id\": \"org.example.Birds\", \"name\": \"Birds\", \"summary\": \"Counts birds\", "
                 "\"description\": \"...\", \"license\": \"MIT\", \"developer\": \"...\"}",
             "corvane package");
    const nlohmann::json json = ReadJson(*bytes).value_or(nullptr);
    if (!json.is_object())
        Refuse(file, "it isn't one JSON object");
    About about;
    const auto Read = [&](const char* key, std::string& value, bool needed) {
        if (const auto it = json.find(key); it != json.end() && it->is_string())
            value = it->get<std::string>();
        else if (it != json.end() || needed)
            Refuse(file, std::string("it needs a text \"") + key + "\"");
    };
    Read("id", about.id, true);
    Read("name", about.name, true);
    Read("summary", about.summary, true);
    Read("description", about.description, true);
    Read("license", about.license, true);
    Read("developer", about.developer, true);
    Read("version", about.version, false);
    Read("homepage", about.homepage, false);
    Read("categories", about.categories, false);
    Read("icon", about.icon, false);
    if (const auto it = json.find("files"); it != json.end())
        about.files = FilesIn(file, *it);
    about.date = Today();
    Read("date", about.date, false);
    if (!HasForm(about.id, R"([A-Za-z][\w-]*(\.[A-Za-z][\w-]*)+)"))
        Refuse(file, "the id \"" + about.id + "\" isn't of the form \"org.example.Birds\"");
    RefusePlaceholders(file, json);
    return about;
}

Packed Install(const std::string& application, const std::string& prefix) {
    const About about = ReadAbout(application);
    const auto whole = [](const std::string& folder) { return fs::weakly_canonical(fs::absolute(folder)); };
    const fs::path inside = whole(prefix).lexically_relative(whole(application));
    if (!inside.empty() && *inside.begin() != "..")
        Fail(FailureNumber::InvalidProcedureCall,
             "The folder \"" + prefix + "\" is inside the application folder, which would be copied into itself",
             "corvane package");
    return Installer(about, application, prefix).Run();
}

} // namespace corvane::package
