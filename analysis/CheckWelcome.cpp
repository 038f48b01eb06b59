#include "adapters/common/Nearest.h"
#include "adapters/common/Paths.h"
#include "analysis/Checks.h"
#include "corvane/base/Text.h"
#include "forms/WelcomeFile.h"

#include <algorithm>

namespace corvane::check {

namespace {

// Commands of the desktop itself that are worth a first step.
const std::vector<std::string> commandsOfHost{"Tools.CommandPalette", "Tools.Shortcuts", "Tools.Customize",
                                              "Tools.Preferences", "Help.Manual"};

class WelcomeCheck {
public:
    WelcomeCheck(Model& model, const std::string& application, Report& report)
        : m_application(application), m_isComplete(model.complete), m_report(report), m_commands(commandsOfHost) {
        for (const Provider* provider : model.MenuProviders())
            for (const Entry& entry : provider->entries)
                if (!entry.IsTitle())
                    m_commands.emplace_back(entry.key);
        for (const Provider& item : model.items)
            if (item.element->Value("Parent").empty())
                m_tabs.push_back(item.name);
        for (const Window& window : model.windows)
            m_windows.push_back(window.name);
    }

    void Check(const std::string& path, const std::string& bytes) {
        m_path = path;
        m_bytes = bytes;
        const forms::WelcomeDef welcome = forms::ReadWelcome(bytes);
        for (const forms::WelcomeProblem& problem : welcome.problems)
            Add(problem.at, problem.text, problem.cure);
        if (!welcome.window.empty())
            CheckName(m_windows, welcome.window, welcome.at, "there is no window ", ", so the page is shown instead");
        if (!welcome.open.empty())
            CheckName(m_commands, welcome.open, welcome.at, "there is no command ", ", so no file can be opened");
        for (const auto* entries : {&welcome.steps, &welcome.samples, &welcome.empties})
            for (const forms::WelcomeEntry& entry : *entries) {
                if (!entry.command.empty())
                    CheckName(m_commands, entry.command, entry.at, "there is no command ", ", so it isn't shown");
                if (entries == &welcome.empties)
                    CheckName(m_tabs, entry.file, entry.at, "the explorer has no tab ", ", so it isn't shown");
                else if (!entry.file.empty())
                    CheckSample(entry);
            }
    }

private:
    void Add(forms::FormPlace at, const std::string& text, const std::string& cure) {
        m_report.Add(Rule::Welcome, {m_path, {at.line, at.column}}, text, cure);
    }

    void CheckName(const std::vector<std::string>& names, const std::string& name, forms::FormPlace at,
                   const std::string& before, const std::string& behind) {
        const auto is = [&](const std::string& each) { return EqualText(each, name); };
        if (!m_isComplete || std::any_of(names.begin(), names.end(), is))
            return;
        const auto meant = Meant(names, name);
        Add(at, before + Quoted(name) + behind, meant ? "write " + Quoted(*meant) : "remove it");
        AddEdit(at, name, meant);
    }

    // The nearest, or the one of which the last part was written.
    static std::optional<std::string> Meant(const std::vector<std::string>& names, const std::string& written) {
        if (auto nearest = Nearest(names, written))
            return nearest;
        std::vector<std::string> found;
        for (const std::string& name : names)
            if (EqualText(std::string_view(name).substr(name.rfind('.') + 1), written))
                found.push_back(name);
        return found.size() == 1 ? std::optional(found.front()) : std::nullopt;
    }

    // Of the finding that has been added last: what is meant in place of the value, which is one of the element.
    void AddEdit(forms::FormPlace at, const std::string& written, const std::optional<std::string>& meant) {
        std::size_t begin = 0;
        for (Long line = 1; line < at.line && begin < m_bytes.size(); ++line)
            begin = std::min(m_bytes.find('\n', begin), m_bytes.size() - 1) + 1;
        if (!meant || meant->find_first_of("<&\"'") != std::string::npos)
            return;
        begin += static_cast<std::size_t>(std::max<Long>(at.column - 1, 0));
        for (const char quote : {'"', '\''}) {
            const std::size_t value = m_bytes.find("=" + (quote + written) + quote, begin);
            if (value < m_bytes.find('>', begin))
                m_report.Last().edits = {{m_path, value + 2, value + 2 + written.size(), *meant}};
        }
    }

    void CheckSample(const forms::WelcomeEntry& entry) {
        if (FindPath(JoinPath(m_application, entry.file)))
            return;
        const std::size_t slash = entry.file.rfind('/');
        const std::string folder = slash == std::string::npos ? "" : entry.file.substr(0, slash + 1);
        const std::string name = entry.file.substr(folder.size());
        const auto names = NamesIn(JoinPath(m_application, folder), true);
        const auto nearest = names ? Nearest(*names, name) : std::nullopt;
        Add(entry.at, "there is no file " + Quoted(entry.file) + ", so the sample isn't shown",
            nearest ? "write " + Quoted(folder + *nearest) : "put it there");
        AddEdit(entry.at, entry.file, nearest ? std::optional(folder + *nearest) : std::nullopt);
    }

    std::string m_application;
    bool m_isComplete; // otherwise what is missing may be in a file that can't be read
    Report& m_report;
    std::vector<std::string> m_commands;
    std::vector<std::string> m_windows;
    std::vector<std::string> m_tabs;
    std::string m_path;
    std::string_view m_bytes;
};

} // namespace

void CheckWelcome(Model& model, const std::string& application, const Buffers& buffers, Report& report) {
    const std::string path = forms::WelcomePathOf(application);
    if (path.empty())
        return;
    const auto buffer = buffers.find(path);
    const auto bytes = buffer == buffers.end() ? ReadBytes(path) : std::optional(buffer->second);
    if (bytes)
        WelcomeCheck(model, application, report).Check(path, *bytes);
    else
        report.Add(Rule::Welcome, {path, {}}, "the file can't be read", "look at its permissions");
}

} // namespace corvane::check
