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
#include <unordered_map>

namespace corvane::check {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t longestBegin = 4096;
// Files beside the folders that are read by their names.
const std::array<std::string, 4> settings{"QRZ.INI", "about.json", "standins.json", "welcome.xml"};

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
    FileCheck(const Model& model, std::string application, Report& report)
        : m_model(model), m_application(std::move(application)), m_report(report) {
        m_hasFramework = std::any_of(model.services.begin(), model.services.end(), [](const Provider& service) {
            return EqualText(service.progID, frameworkProgID);
        });
    }

    void Check() {
        const std::string services = FindPath(JoinPath(m_application, "Services")).value_or("");
        const std::vector<fs::directory_entry> files = Sorted(services);
        for (const fs::directory_entry& entry : files)
            CheckInServices(entry);
        CheckNames(services, files);
        CheckElsewhere();
        CheckForms();
        for (const char* name : {"Images", "plugins", "Forms"})
            if (const auto folder = FindPath(JoinPath(m_application, name)))
                CheckNames(*folder, Sorted(*folder));
        CheckNames(m_application, Sorted(m_application));
    }

private:
    static std::vector<fs::directory_entry> Sorted(const fs::path& folder) {
        std::error_code error;
        std::vector<fs::directory_entry> entries;
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
            entries.push_back(*entry);
        std::sort(entries.begin(), entries.end(),
                  [](const auto& first, const auto& second) { return first.path().native() < second.path().native(); });
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
        else if (EqualText(extension, "po"))
            ReportCatalogue(path);
        else if (!CheckStrayFile(path, name))
            CheckStrayForm(path);
    }

    // Settings, and plug-ins, which are looked for elsewhere.
    bool CheckStrayFile(const fs::path& path, const std::string& name) {
        const bool isPlugin = name.starts_with("lib") && name.ends_with(".so");
        const auto known = std::find_if(settings.begin(), settings.end(),
                                        [&](const std::string& each) { return EqualText(each, name); });
        if (!isPlugin && known == settings.end())
            return false;
        const std::string right = isPlugin ? "plugins/" + name : *known;
        if (!FindPath(JoinPath(m_application, right)))
            Unread(path,
                   Quoted(name) + " isn't read in this folder, as it is looked for " +
                       (isPlugin ? "in the folder plugins alone" : "beside the folder Services"),
                   "move it to " + right);
        return true;
    }

    void ReportCatalogue(const fs::path& path) {
        const std::string name = path.filename().string();
        Unread(path, Quoted(name) + " is a catalogue outside Services/translations, so its texts aren't used",
               "move it to Services/translations/" + name);
    }

    // A form of a page in a folder where nothing looks for it.
    void CheckStrayForm(const fs::path& path) {
        const std::string name = path.filename().string();
        if (EqualText(ExtensionOf(name), "ui") && IsOfPage(name))
            Unread(path, Quoted(name) + " is a form outside the folder Forms, so its page doesn't show it",
                   "move it to Forms/" + name);
    }

    // Whether the name without its ending is the class of a page.
    [[nodiscard]] bool IsOfPage(const std::string& name) const {
        const std::string stem = name.substr(0, name.rfind('.'));
        return std::any_of(m_model.pages.begin(), m_model.pages.end(),
                           [&](const Provider& page) { return EqualText(page.progID, stem); }) ||
               std::any_of(m_model.preferencePages.begin(), m_model.preferencePages.end(),
                           [&](const Provider& page) { return EqualText(page.progID, stem); });
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
            const std::string extension = ExtensionOf(path.filename().string());
            if (entry.is_directory(error) && depth < deepest)
                CheckFolder(path, depth + 1);
            else if (EqualText(extension, "po") && !EqualText(folder.filename().string(), "translations"))
                ReportCatalogue(path);
            else if (CheckStrayForm(path); !EqualText(extension, "xml"))
                continue;
            else if (const std::string begin = BeginOf(path); IsDefinition(begin))
                Unread(path, begin, " is in a folder of Services, and folders there aren't read,",
                       "move it to Services/" + path.filename().string());
        }
    }

    // What has got into the application's folder itself, or into another folder in it.
    void CheckElsewhere() {
        for (const fs::directory_entry& each : Sorted(m_application)) {
            const std::string name = each.path().filename().string();
            std::error_code error;
            if (!each.is_directory(error)) {
                CheckElsewhere(each.path(), "");
                CheckSettings(each.path(), name);
                continue;
            }
            CheckFolderName(each.path(), name);
            if (EqualText(name, "Services"))
                continue;
            for (const fs::directory_entry& file : Sorted(each.path()))
                CheckElsewhere(file.path(), name);
        }
    }

    void CheckElsewhere(const fs::path& file, const std::string& folder) {
        const std::string name = file.filename().string();
        const std::string extension = ExtensionOf(name);
        if (EqualText(extension, "xml")) {
            if (const std::string begin = BeginOf(file); IsDefinition(begin))
                Unread(file, begin, " is a definition outside the folder Services, so it isn't read",
                       "move it to Services/" + name);
        } else if (EqualText(extension, "po")) {
            ReportCatalogue(file);
        } else if (const bool isForms = EqualText(folder, "Forms");
                   !((isForms || EqualText(folder, "Images")) && CheckStrayFile(file, name)) && !isForms) {
            CheckStrayForm(file);
        }
    }

    // Forms are read out of the folder Forms itself, and end in ".ui".
    void CheckForms() {
        const auto forms = FindPath(JoinPath(m_application, "Forms"));
        if (!forms)
            return;
        for (const fs::directory_entry& each : Sorted(*forms)) {
            const std::string name = each.path().filename().string();
            std::error_code error;
            if (each.is_directory(error)) {
                for (const fs::directory_entry& below : Sorted(each.path()))
                    if (const std::string own = below.path().filename().string();
                        EqualText(ExtensionOf(own), "ui") && IsOfPage(own) && !FindPath(JoinPath(*forms, own)))
                        Unread(below.path(), Quoted(own) + " is in a folder of Forms, so its page doesn't show it",
                               "move it to Forms/" + own);
                continue;
            }
            const std::string plain = name.substr(0, name.rfind('.'));
            const std::string form = (EqualText(ExtensionOf(plain), "ui") ? plain : plain + ".ui");
            if (!EqualText(ExtensionOf(name), "ui") && IsOfPage(form) && !FindPath(JoinPath(*forms, form)) &&
                BeginOf(each.path()).find("<ui") != std::string::npos)
                Unread(each.path(), Quoted(name) + " holds a form but doesn't end in .ui, so its page doesn't show it",
                       "rename it to " + Quoted(form));
        }
    }

    // A file beside the folders that has nearly the name of one that is read.
    void CheckSettings(const fs::path& path, const std::string& name) {
        const auto Is = [&](const std::string& each) { return EqualText(each, name); };
        if (std::any_of(settings.begin(), settings.end(), Is))
            return;
        for (const std::string& each : settings) {
            const bool isLonger = name.size() > each.size() && name[each.size()] == '.' &&
                                  EqualText(std::string_view(name).substr(0, each.size()), each);
            const bool isBackup = isLonger && !EqualText(ExtensionOf(name), "txt");
            if (!isBackup && (isLonger || EditDistance(FoldText(name), FoldText(each)) == 1) &&
                !FindPath(JoinPath(m_application, each)))
                Unread(path, Quoted(name) + " isn't read, as the name that counts is " + Quoted(each),
                       "rename it to " + Quoted(each));
        }
    }

    // "Image" or "plugin" for one that isn't there.
    void CheckFolderName(const fs::path& path, const std::string& name) {
        for (const char* each : {"Images", "plugins"})
            if (!FindPath(JoinPath(m_application, each)) && EditDistance(FoldText(name), FoldText(each)) == 1)
                Unread(path,
                       "nothing looks into the folder " + Quoted(name) + ": it is " + Quoted(each) + " that counts",
                       "rename it to " + Quoted(each));
    }

    // Files are found without regard to case, so of two such names one is never found.
    void CheckNames(const std::string& folder, const std::vector<fs::directory_entry>& entries) {
        std::unordered_map<std::string, std::string> names; // by folded name
        for (const fs::directory_entry& entry : entries) {
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

    const Model& m_model;
    std::string m_application;
    bool m_hasFramework; // a file of the root object counts
    Report& m_report;
};

} // namespace

void CheckFiles(const Model& model, const std::string& application, Report& report) {
    FileCheck(model, application, report).Check();
}

} // namespace corvane::check
