// Files that nothing reads, or whose names differ in case alone.
#include "adapters/common/Nearest.h"
#include "adapters/common/Paths.h"
#include "adapters/files/PictureLoader.h"
#include "analysis/Checks.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <map>

namespace corvane::check {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t longestBegin = 4096;

// The beginning of a regular file; nothing for others.
std::string BeginOf(const fs::path& path) {
    std::error_code error;
    if (!fs::is_regular_file(path, error))
        return {};
    std::ifstream stream(path, std::ios::binary);
    std::string text(longestBegin, '\0');
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(std::max<std::streamsize>(stream.gcount(), 0)));
    return text;
}

// Whether the first element is a Service.
bool IsDefinition(std::string_view text) {
    if (text.starts_with("\xEF\xBB\xBF"))
        text.remove_prefix(3);
    for (;;) {
        const std::size_t begin = text.find_first_not_of(" \t\r\n");
        if (begin == std::string_view::npos)
            return false;
        text.remove_prefix(begin);
        const bool isComment = text.starts_with("<!--");
        if (!isComment && !text.starts_with("<?"))
            return text.starts_with("<Service") && text.size() > 8 &&
                   (text[8] == ' ' || text[8] == '\n' || text[8] == '\r' || text[8] == '\t' || text[8] == '>' ||
                    text[8] == '/');
        const std::size_t end = text.find(isComment ? "-->" : "?>");
        if (end == std::string_view::npos)
            return false;
        text.remove_prefix(end + (isComment ? 3 : 2));
    }
}

std::string ExtensionOf(const std::string& name) {
    const std::size_t point = name.rfind('.');
    return point == std::string::npos ? std::string() : name.substr(point + 1);
}

class FileCheck {
public:
    FileCheck(std::string application, bool hasFramework, Report& report)
        : m_application(std::move(application)), m_hasFramework(hasFramework), m_report(report) {}

    void Check() {
        const std::string services = FindPath(JoinPath(m_application, "Services")).value_or("");
        for (const auto& entry : Sorted(services))
            CheckInServices(entry);
        CheckElsewhere();
        for (const char* folder : {"Services", "Images", "plugins"})
            CheckNames(FindPath(JoinPath(m_application, folder)).value_or(""));
        CheckNames(m_application);
    }

private:
    static std::vector<fs::directory_entry> Sorted(const fs::path& folder) {
        std::error_code error;
        std::vector<fs::directory_entry> entries;
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
            entries.push_back(*entry);
        std::sort(entries.begin(), entries.end());
        return entries;
    }

    void Unread(const fs::path& path, std::string text, std::string cure) {
        m_report.Add(Rule::UnreadFile, {path.string(), {}}, std::move(text), std::move(cure));
    }

    // Of a definition. Without that of the root object the application doesn't start.
    void Unread(const fs::path& path, const std::string& begin, const std::string& why, std::string cure) {
        const bool isMissed = !m_hasFramework && begin.find("\"Corvane.Framework\"") != std::string::npos;
        m_report.Add(isMissed ? Rule::FrameworkLeftOut : Rule::UnreadFile, {path.string(), {}},
                     Quoted(path.filename().string()) + why +
                         (isMissed ? " and the root object has no file: the application doesn't start (5), or with the "
                                     "host's menus instead of these"
                                   : " and its service is missing"),
                     std::move(cure));
    }

    void CheckInServices(const fs::directory_entry& entry) {
        const fs::path& path = entry.path();
        const std::string name = path.filename().string();
        const std::string extension = ExtensionOf(name);
        std::error_code error;
        const bool isXml = EqualText(extension, "xml");
        if (entry.is_directory(error)) {
            if (isXml)
                Unread(path, Quoted(name) + " is a folder, so no definition is read of it",
                       "put the definition itself at that place, as a file");
            CheckFolder(path, 0);
            return;
        }
        if (!entry.is_regular_file(error)) {
            if (isXml && !name.starts_with(".#")) // by which an editor locks a file
                Unread(path,
                       Quoted(name) +
                           (entry.is_symlink(error) ? " is a link to a file that isn't there"
                                                    : " isn't a file that can be read") +
                           ", so its service is missing without a message",
                       entry.is_symlink(error) ? "let the link name a file that exists, or remove it"
                                               : "put the definition there as a file");
            return;
        }
        if (isXml || EqualText(name, "Service.xdr"))
            return;
        const std::string text = BeginOf(path);
        if (IsDefinition(text))
            CheckExtension(path, name, text);
        else if (PictureLoader::FormatOf(text))
            Unread(path, Quoted(name) + " is a picture, and pictures are looked for in the folder Images alone",
                   "move it to Images/" + name);
    }

    // What an editor or an author keeps beside a file isn't meant to be read.
    void CheckExtension(const fs::path& path, const std::string& name, const std::string& begin) {
        static constexpr std::array backups{"bak", "orig", "old", "swp", "tmp", "rej", "off", "disabled", "xml~"};
        std::string plain = name;
        const std::string extension = ExtensionOf(name);
        const bool isBackup = std::any_of(backups.begin(), backups.end(),
                                          [&](const char* each) {
                                              const std::size_t digits =
                                                  extension.find_last_not_of("0123456789") + 1; // as in bak2
                                              return EqualText(std::string_view(extension).substr(0, digits), each);
                                          }) ||
                              name.ends_with('~') || name.starts_with(".#") || name.starts_with('#');
        const std::size_t inside = FoldText(name).rfind(".xml");
        if (inside != std::string::npos)
            plain = name.substr(0, inside) + ".xml";
        else
            plain = (extension.empty() ? name : name.substr(0, name.size() - extension.size() - 1)) + ".xml";
        if (isBackup && (name.starts_with('.') || FindPath((path.parent_path() / plain).string())))
            return;
        Unread(path, begin, " holds a definition but doesn't end in .xml, so it isn't read",
               isBackup ? "rename it to " + Quoted(plain) + ", or move it out of Services"
                        : "rename it to " + Quoted(plain));
    }

    void CheckFolder(const fs::path& folder, int depth) {
        constexpr int deepest = 3;
        for (const fs::directory_entry& entry : Sorted(folder)) {
            std::error_code error;
            const fs::path& path = entry.path();
            if (entry.is_directory(error) && depth < deepest)
                CheckFolder(path, depth + 1);
            else if (const std::string begin = BeginOf(path);
                     EqualText(ExtensionOf(path.filename().string()), "xml") && IsDefinition(begin))
                Unread(path, begin, " is in a folder of Services, and folders there aren't read,",
                       "move it to Services/" + path.filename().string());
        }
    }

    // Definitions and plug-ins that have got into the wrong folder.
    void CheckElsewhere() {
        for (const char* folder : {"", "Images", "plugins", "Service"}) {
            const auto path = *folder ? FindPath(JoinPath(m_application, folder)) : std::optional(m_application);
            if (!path)
                continue;
            for (const fs::directory_entry& each : Sorted(*path)) {
                const fs::path& file = each.path();
                const std::string name = file.filename().string();
                if (const std::string begin = BeginOf(file); EqualText(ExtensionOf(name), "xml") && IsDefinition(begin))
                    Unread(file, begin, " is a definition outside the folder Services, so it isn't read",
                           "move it to Services/" + name);
                else if (EqualText(folder, "Images") && name.ends_with(".so"))
                    Unread(file, Quoted(name) + " is a plug-in outside the folder plugins, so it isn't found",
                           "move it to plugins/" + name);
            }
        }
    }

    // Files are found without regard to case, so of two such names one is never found.
    void CheckNames(const std::string& folder) {
        std::map<std::string, std::string> names; // by folded name
        for (const fs::directory_entry& entry : Sorted(folder)) {
            const fs::path& path = entry.path();
            const std::string name = path.filename().string();
            const auto [first, isNew] = names.try_emplace(FoldText(name), name);
            std::error_code error;
            if (isNew || (folder == m_application && !entry.is_directory(error)))
                continue;
            m_report.Add(Rule::SameFileName, {path.string(), {}},
                         Quoted(first->second) + " and " + Quoted(name) +
                             " differ in case alone, so which of both is used depends on how it is written",
                         "rename or remove one of both",
                         {{{(path.parent_path() / first->second).string(), {}}, "the other one"}});
        }
    }

    std::string m_application;
    bool m_hasFramework; // a file of the root object counts
    Report& m_report;
};

} // namespace

void CheckFiles(const Model& model, const std::string& application, Report& report) {
    const bool hasFramework = std::any_of(model.services.begin(), model.services.end(), [](const Provider& service) {
        return EqualText(service.progID, frameworkProgID);
    });
    FileCheck(application, hasFramework, report).Check();
}

} // namespace corvane::check
