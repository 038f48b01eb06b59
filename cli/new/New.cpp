#include "cli/new/New.h"

#include "adapters/common/Pattern.h"
#include "analysis/Application.h"
#include "analysis/MenuPlan.h"
#include "corvane/base/Failure.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
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
std::string ClassName(std::string name, const std::string& kind) {
    if (!IsIdentifier(name))
        Refuse("\"" + name + "\" can't be the name of a " + kind +
               ": write letters from A to Z and digits, a letter first");
    name[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(name[0])));
    return name;
}

// A build has a target of the application's name, and a folder beside those of services and tests.
void CheckName(const std::string& name) {
    if (!HasForm(name, "[A-Za-z][A-Za-z0-9_-]*"))
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

    // What is below the folder of that kind, or of it only what is below part.
    void Add(std::string_view kind, const Tokens& tokens, std::string_view part = {}) {
        for (const Template& fileTemplate : Templates()) {
            if (!fileTemplate.path.starts_with(kind) || !fileTemplate.path.substr(kind.size()).starts_with(part))
                continue;
            const fs::path path = m_folder / Filled(fileTemplate.path.substr(kind.size()), tokens);
            if (fs::exists(path))
                Refuse("\"" + path.string() + "\" is there already");
            m_files.emplace_back(path, Filled(fileTemplate.text, tokens));
        }
    }

    // A file that is there, with another text.
    void Replace(const fs::path& path, std::string text) { m_files.emplace_back(path, std::move(text)); }

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

void AddService(Writer& writer, const Tokens& tokens, Language language) {
    if (language == Language::Cpp) {
        writer.Add("service/", tokens);
        return;
    }
    writer.Add("service/", tokens, "app/"); // the definitions don't know the language
    writer.Add("python/", tokens);
}

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

// What the one service that starts the application has, and no other: its Start would never be called.
void AddStart(Tokens& tokens, bool isStartService) {
    const std::string service = tokens["Name"] + "Service";
    tokens["start"] = isStartService ? " IsStartService=\"True\"" : "";
    tokens["startDeclaration"] = isStartService ? "    // Called once, after all services are initialized, as the "
                                                  "definition says IsStartService.\n    void Start();\n"
                                                : "";
    tokens["startMember"] = isStartService ? "&" + service + "::Start, " : "";
    tokens["startDefinition"] =
        isStartService
            ? "void " + service + "::Start() {\n    Explorer()->Populate();\n    SetStatus(\"Ready\");\n}\n\n"
            : "";
}

std::string TextOf(const fs::path& path) {
    std::stringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

// The name of the application of a project, as its build names it.
std::string ApplicationOf(const fs::path& folder) {
    const auto match = FindForm(TextOf(folder / "CMakeLists.txt"), R"(corvane_add_application\(\s*([\w-]+))");
    if (!match)
        Fail(FailureNumber::PathNotFound,
             "\"" + folder.string() +
                 "\" isn't the source folder of an application: its CMakeLists.txt has no corvane_add_application()",
             "corvane new");
    return match->at(1);
}

// The service that gets the page: the one that is named, or the only one.
std::string ServiceFor(const fs::path& folder, const std::string& named) {
    std::vector<std::string> services;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder / "services", error))
        if (fs::exists(folder / "app" / "Services" / (entry.path().filename().string() + ".xml")))
            services.push_back(entry.path().filename());
    std::sort(services.begin(), services.end());
    std::string list;
    for (const std::string& service : services) {
        list += (list.empty() ? "" : ", ") + service;
        if (EqualText(service, named) || (named.empty() && services.size() == 1))
            return service;
    }
    if (named.empty())
        Refuse(services.empty() ? "there is no service in \"" + (folder / "services").string() + "\""
                                : "say by --service which one gets the page: " + list);
    Refuse("there is no service \"" + named + "\"; there is " + (list.empty() ? "none" : list));
}

// The definition with a window more.
std::string WithWindow(std::string xml, const fs::path& path, const std::string& service, const std::string& name) {
    if (FindForm(FoldText(xml), "<window\\s[^>]*name\\s*=\\s*\"" + FoldText(name) + "\""))
        Refuse("\"" + path.string() + "\" has a window \"" + name + "\" already");
    const std::string window = "    <Window Name=\"" + name + "\" Type=\"Dialog\" State=\"Normal\" Caption=\"" + name +
                               "\" IsMDIChild=\"False\" IsModal=\"True\">\n      <Page PageProgID=\"" + service +
                               "Svc." + name + "Page\" Caption=\"" + name +
                               "\" IsOptional=\"False\" IsResizable=\"True\"/>\n    </Window>\n";
    if (const std::size_t end = xml.rfind("</Windows>"); end != std::string::npos) {
        const std::size_t line = xml.rfind('\n', end);
        return xml.insert(line == std::string::npos ? end : line + 1, window);
    }
    const std::size_t end = xml.rfind("</Service>");
    if (end == std::string::npos)
        Refuse("\"" + path.string() + "\" has no </Service>, before which the window could be written");
    return xml.insert(end, "  <Windows>\n" + window + "  </Windows>\n");
}

// The source that lists the classes of a plug-in, with one more; its path comes with it.
std::pair<fs::path, std::string> WithClass(const fs::path& folder, const std::string& service,
                                           const std::string& name) {
    for (const auto& entry : fs::directory_iterator(folder)) {
        std::string text = entry.path().extension() == ".cpp" ? TextOf(entry.path()) : std::string();
        const std::size_t list = text.find("CORVANE_PLUGIN(");
        if (list == std::string::npos)
            continue;
        std::size_t end = text.find('(', list);
        for (int depth = 0; end < text.size(); ++end) {
            depth += text[end] == '(' ? 1 : text[end] == ')' ? -1 : 0;
            if (depth == 0)
                break;
        }
        if (end == text.size())
            Refuse("\"" + entry.path().string() + "\" has a CORVANE_PLUGIN without an end");
        text.insert(end, ",\n               Class<" + name + "Page>(\"" + service + "Svc." + name + "Page\")");
        const std::size_t include = text.rfind("#include \"", list);
        const std::size_t line = include == std::string::npos ? 0 : text.find('\n', include) + 1;
        text.insert(line, "#include \"" + name + "Page.h\"\n");
        return {entry.path(), text};
    }
    Refuse("no source in \"" + folder.string() + "\" lists its classes by CORVANE_PLUGIN");
}

} // namespace

std::vector<std::string> NewApplication(const std::string& folderPath, std::vector<std::string> services,
                                        const std::string& version, Language language) {
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
        Tokens tokens = menuBar.Take(ClassName(service, "service"));
        tokens.insert(application.begin(), application.end());
        AddStart(tokens, first);
        AddService(writer, tokens, language);
        first = false;
    }
    return writer.Write();
}

std::vector<std::string> NewService(const std::string& folder, const std::string& name, Language language) {
    const std::string application = ApplicationOf(folder);
    Tokens tokens = MenuBar((fs::path(folder) / "app").string()).Take(ClassName(name, "service"));
    tokens["app"] = application;
    AddStart(tokens, false);
    Writer writer(folder);
    AddService(writer, tokens, language);
    return writer.Write();
}

std::vector<std::string> NewPage(const std::string& folder, const std::string& name, const std::string& service) {
    const Tokens tokens{
        {"app", ApplicationOf(folder)}, {"Name", ClassName(name, "page")}, {"Service", ServiceFor(folder, service)}};
    const std::string& page = tokens.at("Name");
    const std::string& owner = tokens.at("Service");
    Writer writer(folder);
    writer.Add("page/", tokens);
    const fs::path definition = fs::path(folder) / "app" / "Services" / (owner + ".xml");
    writer.Replace(definition, WithWindow(TextOf(definition), definition, owner, page));
    const auto [source, text] = WithClass(fs::path(folder) / "services" / owner, owner, page);
    writer.Replace(source, text);
    return writer.Write();
}

} // namespace corvane::scaffold
