#include "adapters/common/Paths.h"

#include "corvane/base/Failure.h"
#include "corvane/base/Text.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace corvane {

namespace fs = std::filesystem;

namespace {

bool IsSeparator(char c) {
    return c == '/' || c == '\\';
}

bool Exists(const std::string& path) {
    std::error_code error;
    return fs::exists(path, error);
}

bool LessName(const std::string& left, const std::string& right) {
    const int order = CompareText(left, right);
    return order != 0 ? order < 0 : left < right;
}

} // namespace

std::string JoinPath(std::string_view folder, std::string_view name) {
    while (!name.empty() && IsSeparator(name.front()))
        name.remove_prefix(1);
    std::string path(folder);
    if (!name.empty() && !path.empty() && !IsSeparator(path.back()))
        path += '/';
    return path.append(name);
}

std::optional<std::string> FindPath(std::string_view path) {
    std::string found(path);
    if (Exists(found))
        return found;
    const std::string asked = ReplaceText(path, '\\', '/');
    found = asked.starts_with('/') ? "/" : "";
    for (std::size_t from = 0; from < asked.size();) {
        const std::size_t to = std::min(asked.find('/', from), asked.size());
        const std::string_view part = std::string_view(asked).substr(from, to - from);
        from = to + 1;
        if (part.empty())
            continue;
        std::string next = JoinPath(found, part);
        if (!Exists(next)) {
            const auto names = NamesIn(found.empty() ? "." : found);
            if (!names)
                return std::nullopt;
            const auto it = std::find_if(names->begin(), names->end(),
                                         [&](const std::string& name) { return EqualText(name, part); });
            if (it == names->end())
                return std::nullopt;
            next = JoinPath(found, *it);
        }
        found = std::move(next);
    }
    if (found.empty())
        return std::nullopt;
    return found;
}

std::optional<std::vector<std::string>> NamesIn(const std::string& folder, bool filesOnly) {
    std::error_code error;
    std::vector<std::string> names;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error))
        if (std::error_code ignored; !filesOnly || it->is_regular_file(ignored))
            names.push_back(it->path().filename().string());
    if (error)
        return std::nullopt;
    std::sort(names.begin(), names.end(), LessName);
    return names;
}

namespace {

class OpenFile {
public:
    explicit OpenFile(const std::string& path) : m_file(::open(path.c_str(), O_RDONLY | O_CLOEXEC)) {}
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() {
        const int error = errno;
        if (m_file >= 0)
            ::close(m_file);
        errno = error;
    }
    [[nodiscard]] int Get() const { return m_file; }

private:
    int m_file;
};

} // namespace

std::optional<std::string> ReadBytes(const std::string& path) {
    const OpenFile file(path);
    struct stat stat {};
    if (file.Get() < 0 || ::fstat(file.Get(), &stat) != 0)
        return std::nullopt;
    const auto size = static_cast<std::size_t>(std::max<off_t>(stat.st_size, 0));
    std::string bytes(size + 1, '\0'); // a read that doesn't fill it has come to the end
    for (std::size_t read = 0;;) {
        if (read == bytes.size())
            bytes.resize(bytes.size() + 4096); // grown meanwhile, or a file whose size isn't told
        const ssize_t n = ::read(file.Get(), bytes.data() + read, bytes.size() - read);
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0)
            return std::nullopt;
        read += static_cast<std::size_t>(n);
        if (n == 0 || (S_ISREG(stat.st_mode) && read == size)) {
            bytes.resize(read);
            return bytes;
        }
    }
}

std::string ReadFileOrFail(std::string_view pathText) {
    if (std::optional<std::string> bytes = ReadBytes(std::string(pathText)))
        return *std::move(bytes);
    const std::optional<std::string> path = FindPath(pathText);
    std::error_code error;
    if (!path || fs::is_directory(*path, error))
        Fail(FailureNumber::FileNotFound,
             "The file \"" + std::string(pathText) + "\" " + (path ? "is a folder" : "doesn't exist"));
    std::optional<std::string> bytes = ReadBytes(*path);
    if (!bytes)
        Fail(FailureNumber::FileAccess, "The file \"" + *path + "\" can't be read: " + std::strerror(errno));
    return *std::move(bytes);
}

std::string UserFolder(const char* variable, std::string_view belowHome) {
    // A relative path in the variable is invalid and to be ignored.
    if (const char* value = std::getenv(variable); value && *value == '/')
        return value;
    const char* home = std::getenv("HOME");
    return home && *home ? JoinPath(home, belowHome) : std::string();
}

std::string AsFileName(std::string_view name) {
    std::string fileName;
    for (const char c : name) {
        const auto u = static_cast<unsigned char>(c);
        const bool plain =
            u >= 0x80 || std::isalnum(u) || c == '-' || c == '_' || c == ' ' || (c == '.' && !fileName.empty());
        if (plain) {
            fileName += c;
        } else {
            static constexpr char digits[] = "0123456789ABCDEF";
            fileName += '%';
            fileName += digits[u >> 4];
            fileName += digits[u & 15];
        }
    }
    if (fileName.empty())
        return "%";
    constexpr std::size_t longest = 180; // a name may have 255 bytes, endings included
    if (fileName.size() > longest)
        fileName = fileName.substr(0, longest) + "%" + std::to_string(HashText(name));
    return fileName;
}

} // namespace corvane
