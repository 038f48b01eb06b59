#include "adapters/process/ProcessSettings.h"

#include "adapters/common/Json.h"
#include "adapters/common/Paths.h"
#include "corvane/base/Failure.h"
#include "corvane/platform/Platform.h"

#include <algorithm>
#include <dlfcn.h>
#include <filesystem>
#include <map>
#include <unistd.h>

extern char** environ;

namespace corvane {

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

class SettingsReader {
public:
    SettingsReader(const std::string& name, const std::string& file) : m_file(file) {
        m_settings.name = name;
        m_settings.file = file;
    }

    ProcessSettings Read() {
        const std::string folder = fs::path(m_file).parent_path().string();
        const json document = Parsed();
        if (!document.is_object())
            FailHere("it isn't an object: write { \"run\": [\"python3\", \"service.py\"] }");
        for (const auto& [key, value] : document.items()) {
            if (key == "run")
                m_settings.command.words = Texts(value, key);
            else if (key == "start")
                m_settings.startsNow = IsNow(value);
            else if (key == "venv")
                m_venv = PathIn(folder, Text(value, key));
            else if (key == "folder")
                m_settings.command.folder = PathIn(folder, Text(value, key));
            else if (key == "env")
                ReadEnvironment(value);
            else if (key == "limits")
                ReadLimits(value);
            else
                FailHere("there is no entry \"" + key + "\"; the entries are run, start, venv, env, folder and limits");
        }
        if (m_settings.command.words.empty() || m_settings.command.words.front().empty())
            FailHere("\"run\" is missing: it names the program and its arguments, as in [\"python3\", \"service.py\"]");
        if (m_settings.command.folder.empty())
            m_settings.command.folder = folder;
        if (!fs::is_directory(m_settings.command.folder))
            FailHere("there is no folder \"" + m_settings.command.folder + "\"");
        FillEnvironment();
        return std::move(m_settings);
    }

private:
    [[noreturn]] void FailHere(const std::string& what) const {
        Fail(FailureNumber::CannotCreateObject, "The file \"" + m_file + "\" can't be used: " + what, "Processes");
    }

    [[nodiscard]] json Parsed() const {
        const auto bytes = ReadBytes(m_file);
        if (!bytes)
            FailHere("it can't be read");
        JsonProblem problem;
        if (auto read = ReadJson(*bytes, &problem))
            return std::move(*read);
        const auto end = bytes->begin() + static_cast<std::ptrdiff_t>(std::min(problem.byte, bytes->size()));
        FailHere("line " + std::to_string(1 + std::count(bytes->begin(), end, '\n')) + " isn't JSON");
    }

    static std::string PathIn(const std::string& folder, const std::string& path) {
        return (fs::path(folder) / path).lexically_normal().string();
    }

    std::string Text(const json& value, const std::string& key) const {
        if (!value.is_string() || value.get_ref<const std::string&>().find('\0') != std::string::npos)
            FailHere("\"" + key + "\" isn't a text");
        return value.get<std::string>();
    }

    std::vector<std::string> Texts(const json& value, const std::string& key) const {
        if (!value.is_array())
            FailHere("\"" + key + "\" isn't a list of texts");
        std::vector<std::string> texts;
        for (const json& text : value)
            texts.push_back(Text(text, key));
        return texts;
    }

    bool IsNow(const json& value) const {
        const std::string when = Text(value, "start");
        if (when != "now" && when != "needed")
            FailHere("\"start\" is \"" + when + "\"; write \"now\" or \"needed\"");
        return when == "now";
    }

    void ReadEnvironment(const json& value) {
        if (!value.is_object())
            FailHere("\"env\" isn't an object of names and texts");
        for (const auto& [key, text] : value.items())
            m_environment[key] = Text(text, "env." + key);
    }

    void ReadLimits(const json& value) {
        if (!value.is_object())
            FailHere("\"limits\" isn't an object");
        for (const auto& [key, limit] : value.items()) {
            if (key != "memory" && key != "cpu")
                FailHere("there is no limit \"" + key + "\"; the limits are memory (MiB) and cpu (seconds)");
            constexpr std::uint64_t most = 1U << 30;
            if (!limit.is_number_unsigned() || limit.get<std::uint64_t>() == 0 || limit.get<std::uint64_t>() > most)
                FailHere("the limit \"" + key + "\" isn't a whole number from 1 on");
            if (key == "memory")
                m_settings.command.memory = limit.get<std::uint64_t>() << 20;
            else
                m_settings.command.cpuSeconds = limit.get<std::uint64_t>();
        }
    }

    // The application's own environment, with the virtual environment in front, and Python's package where it is.
    void FillEnvironment() {
        std::map<std::string, std::string> all;
        for (char** entry = environ; *entry; ++entry)
            if (const std::string text = *entry; text.find('=') != std::string::npos)
                all[text.substr(0, text.find('='))] = text.substr(text.find('=') + 1);
        for (const auto& [key, text] : m_environment)
            all[key] = text;
        if (!m_venv.empty()) {
            all["VIRTUAL_ENV"] = m_venv;
            all["PATH"] = m_venv + "/bin:" + all["PATH"];
            all.erase("PYTHONHOME");
        }
        if (const std::string package = PythonFolder(); !package.empty()) {
            std::string& path = all["PYTHONPATH"];
            path = path.empty() ? package : package + ":" + path;
        }
        all["CORVANE_SOCKET"] = std::to_string(ChildProcess::SocketNumber);
        for (const auto& [key, text] : all)
            m_settings.command.environment.push_back(key + "=" + text);
    }

    // share/corvane/python of the installation or the build from which the library or the program comes; empty when it
    // isn't there.
    static std::string PythonFolder() {
        std::error_code error;
        std::vector<fs::path> files{fs::read_symlink("/proc/self/exe", error)};
        Dl_info library{};
        if (::dladdr(reinterpret_cast<const void*>(&CurrentPlatform), &library) != 0 && library.dli_fname)
            files.emplace_back(library.dli_fname);
        for (const fs::path& file : files) {
            fs::path folder = fs::weakly_canonical(file, error).parent_path();
            for (int up = 0; up < 3; ++up) {
                folder = folder.parent_path();
                if (fs::is_directory(folder / "share/corvane/python", error))
                    return fs::canonical(folder / "share/corvane/python", error).string();
            }
        }
        return {};
    }

    const std::string& m_file;
    ProcessSettings m_settings;
    std::string m_venv;
    std::map<std::string, std::string> m_environment;
};

} // namespace

ProcessSettings ReadProcessSettings(const std::string& name, const std::string& file) {
    return SettingsReader(name, file).Read();
}

} // namespace corvane
