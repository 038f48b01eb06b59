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

std::string Filled(std::string_view text, const Tokens& tokens) {
    std::string filled;
    while (!text.empty()) {
        const std::size_t begin = text.find('@');
        const std::size_t end = begin == std::string_view::npos ? begin : text.find('@', begin + 1);
        const auto it = end == std::string_view::npos
                            ? tokens.end()
                            : tokens.find(std::string(text.substr(begin + 1, end - begin - 1)));
        if (it == tokens.end()) { // an at sign that begins no token
            const std::size_t n = std::min(begin == std::string_view::npos ? text.size() : begin + 1, text.size());
            filled += text.substr(0, n);
            text.remove_prefix(n);
            continue;
        }
        filled += text.substr(0, begin);
        filled += it->second;
        text.remove_prefix(end + 1);
    }
    return filled;
}

[[noreturn]] void Refuse(const std::string& why) {
    Fail(FailureNumber::InvalidProcedureCall, why, "corvane new");
}

bool IsIdentifier(const std::string& name) {
    return !name.empty() && std::isalpha(static_cast<unsigned char>(name[0])) &&
           std::all_of(name.begin(), name.end(), [](char c) { return std::isalnum(static_cast<unsigned char>(c)); });
}

// "birds" as the name of a class.
std::string ServiceName(std::string name) {
    if (!IsIdentifier(name))
        Refuse("\"" + name + "\" can't be the name of a service: write letters from A to Z and digits, a letter first");
    name[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(name[0])));
    return name;
}

// A build has a target of the application's name, and a folder beside those of services and tests.
void CheckName(const std::string& name) {
    if (!std::regex_match(name, std::regex("[A-Za-z][A-Za-z0-9_-]*")))
        Refuse("\"" + name +
               "\" can't be the name of an application: write letters from A to Z, digits, - and _, a letter first");
    for (const char* taken : {"all", "clean", "CMakeFiles", "edit_cache", "help", "install", "package", "preinstall",
                              "rebuild_cache", "services", "test", "Testing", "tests"})
        if (EqualText(name, taken))
            Refuse("\"" + name + "\" can't be the name of an application, as every build has something of that name");
}

// All or nothing: what is in the way is found before anything is written.
class Writer {
public:
    Writer(fs::path folder) : m_folder(std::move(folder)) {}

    void Add(std::string_view kind, const Tokens& tokens) {
        for (const Template& fileTemplate : Templates()) {
            if (!fileTemplate.path.starts_with(kind))
                continue;
            const fs::path path = m_folder / Filled(fileTemplate.path.substr(kind.size()), tokens);
            if (fs::exists(path))
                Refuse("\"" + path.string() + "\" is there already");
            m_files.emplace_back(path, Filled(fileTemplate.text, tokens));
        }
    }

    std::vector<std::string> Write() const {
        std::vector<std::string> written;
        for (const auto& [path, text] : m_files) {
            std::error_code error;
            fs::create_directories(path.parent_path(), error);
            std::ofstream stream(path, std::ios::binary);
            if (!(stream << text) || !stream.flush())
                Fail(FailureNumber::FileAccess, "\"" + path.string() + "\" can't be written", "corvane new");
            written.push_back(path.string());
        }
        return written;
    }

private:
    fs::path m_folder;
    std::vector<std::pair<fs::path, std::string>> m_files;
};

// Where titles of services are placed on the menu bar, and which letters are in use there.
class MenuBar {
public:
    // Of an application that holds the shell's own titles and nothing else.
    MenuBar() : m_orders{100, 200, 900}, m_letters{"f", "v", "w"} {
        m_names = {"framework"};
        m_titles = {"file", "view", "window"};
    }

    // Of one that exists.
    explicit MenuBar(const std::string& application) {
        check::Report report;
        check::Model model;
        check::ReadApplication(model, application, report);
        check::BuildModel(model, report);
        const check::MenuPlan plan(model);
        for (const auto& placing : plan.Placings()) {
            const check::Entry& entry = *placing.entry;
            if (!entry.IsTitle())
                continue;
            m_titles.insert(FoldText(entry.key));
            m_orders.insert(static_cast<int>(entry.positionOrder));
            if (const std::size_t i = entry.Caption().find_first_of("#&");
                i != std::string_view::npos && entry.path.empty())
                m_letters.insert(FoldText(entry.Caption().substr(i + 1, 1)));
        }
        for (const auto& service : model.services)
            m_names.insert(FoldText(service.name));
        for (const auto& item : model.items)
            m_names.insert(FoldText(item.name));
    }

    // The tokens of a service's title, which is taken from then on.
    Tokens Take(const std::string& name) {
        if (!m_names.insert(FoldText(name)).second)
            Refuse("there is a service or explorer item \"" + name + "\" already");
        if (!m_titles.insert(FoldText(name)).second)
            Refuse("there is a menu \"" + name + "\" already: give the service another name, as in --service My" +
                   name);
        int order = 300;
        while (!m_orders.insert(order).second)
            order += 10;
        std::string caption = name;
        for (std::size_t i = 0; i < name.size(); ++i)
            if (m_letters.insert(FoldText(name.substr(i, 1))).second) {
                caption.insert(i, 1, '#');
                break;
            }
        return {{"Name", name}, {"order", std::to_string(order)}, {"caption", caption}};
    }

private:
    std::set<int> m_orders;
    std::set<std::string> m_letters;
    std::set<std::string> m_names; // folded, as the next
    std::set<std::string> m_titles;
};

// The name of the application of a project, as its build names it.
std::string ApplicationOf(const fs::path& folder) {
    std::stringstream text;
    text << std::ifstream(folder / "CMakeLists.txt").rdbuf();
    std::smatch match;
    const std::string shownText = text.str();
    if (!std::regex_search(shownText, match, std::regex(R"(corvane_add_application\(\s*([\w-]+))")))
        Fail(FailureNumber::PathNotFound,
             "\"" + folder.string() +
                 "\" isn't the source folder of an application: its CMakeLists.txt has no corvane_add_application()",
             "corvane new");
    return match[1];
}

} // namespace

std::vector<std::string> NewApplication(const std::string& folderPath, std::vector<std::string> services,
                                        const std::string& version) {
    const fs::path folder = fs::absolute(folderPath).lexically_normal();
    const std::string name = folder.has_filename() ? folder.filename() : folder.parent_path().filename();
    CheckName(name);
    if (fs::exists(folder) && !fs::is_empty(folder))
        Refuse("\"" + folderPath + "\" is there already");
    if (services.empty()) {
        std::string service = name;
        std::erase_if(service, [](char c) { return c == '-' || c == '_'; });
        services.push_back(service);
    }
    const Tokens application{{"app", name}, {"version", version}};
    Writer writer(folderPath);
    writer.Add("application/", application);
    MenuBar menuBar;
    bool first = true;
    for (const std::string& service : services) {
        Tokens tokens = menuBar.Take(ServiceName(service));
        tokens.insert(application.begin(), application.end());
        tokens["start"] = first ? " IsStartService=\"True\"" : "";
        writer.Add("service/", tokens);
        first = false;
    }
    return writer.Write();
}

std::vector<std::string> NewService(const std::string& folder, const std::string& name) {
    const std::string application = ApplicationOf(folder);
    Tokens tokens = MenuBar((fs::path(folder) / "app").string()).Take(ServiceName(name));
    tokens["app"] = application;
    tokens["start"] = "";
    Writer writer(folder);
    writer.Add("service/", tokens);
    return writer.Write();
}

} // namespace corvane::scaffold
