#include "adapters/files/SettingsStore.h"

#include "adapters/common/Paths.h"
#include "corvane/base/Failure.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <unistd.h>
#include <vector>

namespace corvane {

namespace {

struct Setting {
    std::string category;
    std::string name;
    std::string value;
};

[[noreturn]] void FailAccess(const std::string& path, const char* what, int error) {
    Fail(FailureNumber::FileAccess, "The settings file \"" + path + "\" " + what + ": " + std::strerror(error));
}

// A descriptor that closes itself.
class Descriptor {
public:
    Descriptor(const std::string& path, int flags) : m_file(::open(path.c_str(), flags | O_CLOEXEC, 0600)) {}
    ~Descriptor() {
        if (m_file >= 0)
            ::close(m_file);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    [[nodiscard]] int Get() const { return m_file; }

private:
    int m_file;
};

// One line of any text: what would end the line or divide it is behind a backslash.
std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '\n':
            escaped += "\\n";
            break;
        case '\r':
            escaped += "\\r";
            break;
        case '\0':
            escaped += "\\0";
            break;
        case '\\':
        case '=':
        case '[':
        case ']':
        case '#':
            escaped += '\\';
            [[fallthrough]];
        default:
            escaped += c;
        }
    }
    return escaped;
}

std::string Plain(std::string_view escaped) {
    std::string text;
    for (std::size_t i = 0; i < escaped.size(); ++i) {
        if (escaped[i] != '\\' || i + 1 == escaped.size()) {
            text += escaped[i];
            continue;
        }
        const char c = escaped[++i];
        text += c == 'n' ? '\n' : c == 'r' ? '\r' : c == '0' ? '\0' : c;
    }
    return text;
}

// The first '=' that isn't escaped.
std::size_t Divide(std::string_view line) {
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '\\')
            ++i;
        else if (line[i] == '=')
            return i;
    }
    return std::string_view::npos;
}

// "[category]" and the "name=value" lines under it. Other lines are passed over.
std::vector<Setting> Parse(std::string_view text) {
    std::vector<Setting> settings;
    std::string category;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.size() >= 2 && line.front() == '[' && line.back() == ']') {
            category = Plain(line.substr(1, line.size() - 2));
        } else if (const std::size_t i = Divide(line); i != std::string_view::npos && line.front() != '#') {
            settings.push_back({category, Plain(line.substr(0, i)), Plain(line.substr(i + 1))});
        }
    }
    return settings;
}

std::string Format(std::vector<Setting> settings) {
    std::stable_sort(settings.begin(), settings.end(), [](const Setting& left, const Setting& right) {
        return CompareText(left.category, right.category) < 0;
    });
    std::string text;
    const Setting* before = nullptr;
    for (const Setting& setting : settings) {
        if (!before || !EqualText(before->category, setting.category))
            text += "[" + Escaped(setting.category) + "]\n";
        text += Escaped(setting.name) + "=" + Escaped(setting.value) + "\n";
        before = &setting;
    }
    return text;
}

Setting* Find(std::vector<Setting>& settings, std::string_view category, std::string_view name) {
    for (Setting& setting : settings)
        if (EqualText(setting.name, name) && EqualText(setting.category, category))
            return &setting;
    return nullptr;
}

std::vector<Setting> Load(const std::string& path) {
    const std::optional<std::string> text = ReadBytes(path);
    if (!text && errno != ENOENT && errno != ENOTDIR)
        FailAccess(path, "can't be read", errno);
    return text ? Parse(*text) : std::vector<Setting>();
}

// Under the lock. Whoever reads meanwhile sees the old file or the new one, whole.
void Replace(const std::string& path, std::string_view text) {
    const std::string newText = path + ".new";
    {
        const Descriptor file(newText, O_WRONLY | O_CREAT | O_TRUNC);
        if (file.Get() < 0)
            FailAccess(newText, "can't be made", errno);
        while (!text.empty()) {
            const ssize_t n = ::write(file.Get(), text.data(), text.size());
            if (n < 0 && errno != EINTR)
                FailAccess(newText, "can't be written", errno);
            text.remove_prefix(n > 0 ? static_cast<std::size_t>(n) : 0);
        }
        if (::fsync(file.Get()) != 0)
            FailAccess(newText, "can't be written", errno);
    }
    if (std::rename(newText.c_str(), path.c_str()) != 0)
        FailAccess(path, "can't be replaced", errno);
    const Descriptor folder(std::filesystem::path(path).parent_path().string(), O_RDONLY | O_DIRECTORY);
    if (folder.Get() >= 0)
        ::fsync(folder.Get()); // the values are whole either way; this only makes the name last
}

} // namespace

SettingsStore::SettingsStore(std::string_view application, std::string folder) : m_folder(std::move(folder)) {
    if (!m_folder.empty())
        return;
    if (const std::string config = UserFolder("XDG_CONFIG_HOME", ".config"); !config.empty())
        m_folder = JoinPath(JoinPath(config, "corvane"), AsFileName(application));
}

std::string SettingsStore::PathOf(std::string_view service) const {
    return JoinPath(m_folder, AsFileName(FoldText(service)) + ".settings");
}

std::string SettingsStore::Read(std::string_view service, std::string_view category, std::string_view name,
                                std::string_view defaultText) const {
    if (m_folder.empty())
        return std::string(defaultText);
    std::vector<Setting> settings = Load(PathOf(service));
    const Setting* setting = Find(settings, category, name);
    return setting ? setting->value : std::string(defaultText);
}

void SettingsStore::Write(std::string_view service, std::string_view category, std::string_view name,
                          std::string_view value) {
    if (m_folder.empty())
        Fail(FailureNumber::FileAccess,
             "The settings of \"" + std::string(service) +
                 "\" can't be written: there is no home folder. Set HOME or XDG_CONFIG_HOME.");
    const std::string path = PathOf(service);
    std::error_code error;
    std::filesystem::create_directories(m_folder, error);
    if (error)
        FailAccess(path, "has no folder", error.value());
    // The settings file itself is replaced, so the lock needs a file that stays.
    const Descriptor lock(path + ".lock", O_RDWR | O_CREAT);
    if (lock.Get() < 0)
        FailAccess(path, "can't be locked", errno);
    while (::flock(lock.Get(), LOCK_EX) != 0)
        if (errno != EINTR)
            FailAccess(path, "can't be locked", errno);

    std::vector<Setting> settings = Load(path);
    if (Setting* setting = Find(settings, category, name))
        setting->value = value;
    else
        settings.push_back({std::string(category), std::string(name), std::string(value)});
    Replace(path, Format(std::move(settings)));
}

} // namespace corvane
