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

bool Exists(const std::string& sPath) {
    std::error_code oError;
    return fs::exists(sPath, oError);
}

bool LessName(const std::string& sLeft, const std::string& sRight) {
    const int nOrder = CompareText(sLeft, sRight);
    return nOrder != 0 ? nOrder < 0 : sLeft < sRight;
}

} // namespace

std::string JoinPath(std::string_view sFolder, std::string_view sName) {
    while (!sName.empty() && IsSeparator(sName.front()))
        sName.remove_prefix(1);
    std::string sPath(sFolder);
    if (!sName.empty() && !sPath.empty() && !IsSeparator(sPath.back()))
        sPath += '/';
    return sPath.append(sName);
}

std::optional<std::string> FindPath(std::string_view sPath) {
    std::string sFound(sPath);
    if (Exists(sFound))
        return sFound;
    const std::string sAsked = ReplaceText(sPath, '\\', '/');
    sFound = sAsked.starts_with('/') ? "/" : "";
    for (std::size_t iFrom = 0; iFrom < sAsked.size();) {
        const std::size_t iTo = std::min(sAsked.find('/', iFrom), sAsked.size());
        const std::string_view sPart = std::string_view(sAsked).substr(iFrom, iTo - iFrom);
        iFrom = iTo + 1;
        if (sPart.empty())
            continue;
        std::string sNext = JoinPath(sFound, sPart);
        if (!Exists(sNext)) {
            const auto aNames = NamesIn(sFound.empty() ? "." : sFound);
            if (!aNames)
                return std::nullopt;
            const auto it = std::find_if(aNames->begin(), aNames->end(),
                                         [&](const std::string& sName) { return EqualText(sName, sPart); });
            if (it == aNames->end())
                return std::nullopt;
            sNext = JoinPath(sFound, *it);
        }
        sFound = std::move(sNext);
    }
    if (sFound.empty())
        return std::nullopt;
    return sFound;
}

std::optional<std::vector<std::string>> NamesIn(const std::string& sFolder, bool bFilesOnly) {
    std::error_code oError;
    std::vector<std::string> aNames;
    for (fs::directory_iterator it(sFolder, oError), itEnd; !oError && it != itEnd; it.increment(oError))
        if (std::error_code oIgnored; !bFilesOnly || it->is_regular_file(oIgnored))
            aNames.push_back(it->path().filename().string());
    if (oError)
        return std::nullopt;
    std::sort(aNames.begin(), aNames.end(), LessName);
    return aNames;
}

namespace {

class OpenFile {
public:
    explicit OpenFile(const std::string& sPath) : m_nFile(::open(sPath.c_str(), O_RDONLY | O_CLOEXEC)) {}
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() {
        const int nError = errno;
        if (m_nFile >= 0)
            ::close(m_nFile);
        errno = nError;
    }
    [[nodiscard]] int Get() const { return m_nFile; }

private:
    int m_nFile;
};

} // namespace

std::optional<std::string> ReadBytes(const std::string& sPath) {
    const OpenFile oFile(sPath);
    struct stat oStat {};
    if (oFile.Get() < 0 || ::fstat(oFile.Get(), &oStat) != 0)
        return std::nullopt;
    const auto nSize = static_cast<std::size_t>(std::max<off_t>(oStat.st_size, 0));
    std::string sBytes(nSize + 1, '\0'); // a read that doesn't fill it has come to the end
    for (std::size_t nRead = 0;;) {
        if (nRead == sBytes.size())
            sBytes.resize(sBytes.size() + 4096); // grown meanwhile, or a file whose size isn't told
        const ssize_t n = ::read(oFile.Get(), sBytes.data() + nRead, sBytes.size() - nRead);
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0)
            return std::nullopt;
        nRead += static_cast<std::size_t>(n);
        if (n == 0 || (S_ISREG(oStat.st_mode) && nRead == nSize)) {
            sBytes.resize(nRead);
            return sBytes;
        }
    }
}

std::string ReadFileOrFail(std::string_view sPath) {
    if (std::optional<std::string> oBytes = ReadBytes(std::string(sPath)))
        return *std::move(oBytes);
    const std::optional<std::string> oPath = FindPath(sPath);
    std::error_code oError;
    if (!oPath || fs::is_directory(*oPath, oError))
        Fail(FailureNumber::FileNotFound,
             "The file \"" + std::string(sPath) + "\" " + (oPath ? "is a folder" : "doesn't exist"));
    std::optional<std::string> oBytes = ReadBytes(*oPath);
    if (!oBytes)
        Fail(FailureNumber::FileAccess, "The file \"" + *oPath + "\" can't be read: " + std::strerror(errno));
    return *std::move(oBytes);
}

std::string UserFolder(const char* sVariable, std::string_view sBelowHome) {
    // A relative path in the variable is invalid and to be ignored.
    if (const char* sValue = std::getenv(sVariable); sValue && *sValue == '/')
        return sValue;
    const char* sHome = std::getenv("HOME");
    return sHome && *sHome ? JoinPath(sHome, sBelowHome) : std::string();
}

std::string AsFileName(std::string_view sName) {
    std::string sFileName;
    for (const char c : sName) {
        const auto u = static_cast<unsigned char>(c);
        const bool bPlain =
            u >= 0x80 || std::isalnum(u) || c == '-' || c == '_' || c == ' ' || (c == '.' && !sFileName.empty());
        if (bPlain) {
            sFileName += c;
        } else {
            static constexpr char aDigits[] = "0123456789ABCDEF";
            sFileName += '%';
            sFileName += aDigits[u >> 4];
            sFileName += aDigits[u & 15];
        }
    }
    if (sFileName.empty())
        return "%";
    constexpr std::size_t nLongest = 180; // a name may have 255 bytes, endings included
    if (sFileName.size() > nLongest)
        sFileName = sFileName.substr(0, nLongest) + "%" + std::to_string(HashText(sName));
    return sFileName;
}

} // namespace corvane
